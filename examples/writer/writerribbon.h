#ifndef WRITERRIBBON_H
#define WRITERRIBBON_H

#include <QObject>

class KCommand;
class QTextEdit;
class WriterWindow;

/**
 * The editor's actions behind the ribbon: character and paragraph formats, find and replace,
 * tables, pictures, links, zoom, and the Table tab that shows while the cursor stands in a
 * table. The commands exist in both forms of the window; without a ribbon the ones only it
 * shows are simply not reachable.
 */
class WriterRibbonActions : public QObject
{
    Q_OBJECT
public:
    explicit WriterRibbonActions(WriterWindow* window);

    /// Zoom steps away from the normal size (positive: larger).
    int zoom() const { return m_zoom; }

    /// Finds text after the cursor, wrapping round to the start once; false when it is nowhere.
    bool findNext(const QString& text);
    /// Replaces every occurrence of text, as one step of the undo history; returns how many.
    int replaceAll(const QString& text, const QString& replacement);
    /// Puts a table of rows by columns at the cursor.
    void insertTable(int rows, int columns);
    /// Puts a link at the cursor; the selection, if any, becomes its text.
    void insertLink(const QString& url);
    /// Puts the picture of the file at the cursor, no wider than the page's text; false when
    /// the file is no picture.
    bool insertPicture(const QString& path);

private:
    KCommand* _command(const char* id) const;
    QTextEdit* _editor() const;
    void _setAlignment(Qt::Alignment alignment);
    void _toggleList(int style);
    void _indent(int delta);
    void _changeFontSize(int delta);
    void _clearFormatting();
    void _strike();
    void _find();
    void _replace();
    void _pictureDialog();
    void _linkDialog();
    void _pageBreak();
    void _zoomBy(int steps);
    void _toggleStatusBar();
    void _toggleRibbonCollapse();
    void _tableEdit(int what);
    void _updateChecks();
    void _updateTableTab();
    void _updateCollapseCommands();

    WriterWindow* m_window;
    int m_zoom = 0;
};

#endif // WRITERRIBBON_H
