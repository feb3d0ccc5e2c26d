#ifndef WRITERWINDOW_H
#define WRITERWINDOW_H

#include <QString>
#include <kmainwindow.h>

class QPlainTextEdit;
class KCommand;

/**
 * The main window of Norvik Writer, a small text editor. Everything it shows besides the
 * editor comes from its description (ui/writer.xml); it only hangs its handlers on the
 * commands it finds there by id and keeps their states in step with the document.
 */
class WriterWindow : public KMainWindow
{
    Q_OBJECT
public:
    explicit WriterWindow(QWidget* parent = nullptr);

    /// Finds the commands of the description and connects them; call after polishXml().
    void bindCommands();

    QPlainTextEdit* editor() const { return m_editor; }
    QString filePath() const { return m_path; }

    bool openFile(const QString& path);
    bool saveFile(const QString& path);
    void newFile();

Q_SIGNALS:
    /// The document was replaced (new or opened) or saved under another name.
    void documentChanged();

private:
    KCommand* _command(const char* id) const;
    void _onOpen();
    void _onSave();
    void _onSaveAs();
    void _updateTitle();
    void _updatePaste();
    void _updateThemeChecks();

    QPlainTextEdit* m_editor;
    QString m_path;
};

#endif // WRITERWINDOW_H
