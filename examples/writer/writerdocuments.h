#ifndef WRITERDOCUMENTS_H
#define WRITERDOCUMENTS_H

#include <QList>
#include <QObject>
#include <QPointer>
#include <QTextCursor>

#include <kmdiarea.h>

class QTextDocument;
class QTextEdit;
class QVBoxLayout;
class WriterWindow;

/**
 * One open document of the writer: its text, its file and the place of the cursor. The
 * window's one editor moves into the page of the current document (see WriterDocuments).
 */
class WriterDocumentPage : public KSubWindow
{
    Q_OBJECT
public:
    WriterDocumentPage(WriterWindow* window, QWidget* parent = nullptr);

    QTextDocument* document() const { return m_document; }
    QString path() const { return m_path; }
    void setPath(const QString& path);
    int cursorPosition() const { return m_cursorPosition; }
    void setCursorPosition(int position) { m_cursorPosition = position; }
    /// A page never saved and never typed into, which Open may fill instead of adding one.
    bool isPristine() const;
    void holdEditor(QTextEdit* editor);

    QString filePath() const override { return m_path; }
    QString documentType() const override { return QStringLiteral("text"); }
    QIcon iconForSuffix(const QString& suffix) const override;

protected:
    void closeEvent(QCloseEvent* e) override;
    void enterMaximized() override {}
    void leaveMaximized() override {}

private:
    void _updateTitle();

    WriterWindow* m_window;
    QTextDocument* m_document;
    QString m_path;
    int m_cursorPosition = 0;
    QVBoxLayout* m_layout;
};

/**
 * The writer's documents: a KMdiArea with one tab per open document. New and Open add a tab
 * (Open fills an untouched empty one); a tab closes with its button, asking to save a
 * changed document; tabs reorder by drag. With no document the no-tab page shows.
 *
 * The window keeps one editor. The current page holds it, with the page's own text
 * document set on it, so everything bound to the editor follows the current document.
 */
class WriterDocuments : public QObject
{
    Q_OBJECT
public:
    WriterDocuments(WriterWindow* window, QTextEdit* editor);
    ~WriterDocuments() override;

    KMdiArea* area() const { return m_area; }
    WriterDocumentPage* currentPage() const { return m_current.data(); }
    QList<WriterDocumentPage*> pages() const;
    /// A new, empty document in a new tab, made current.
    WriterDocumentPage* newDocument();
    /// The page a file is to be read into: the current one when it is untouched, else a new one.
    WriterDocumentPage* pageForOpen();
    /// Notes the window's file path on the current page (after Open, Save As).
    void syncCurrentPath();
    /// The new-tab button and the no-tab page, from the window's commands.
    void bindCommands();
    /// Takes the editor out of page, which is about to close, when page holds it.
    void release(WriterDocumentPage* page);

private:
    void _makeCurrent(QMdiSubWindow* subWindow);
    void _detach();

    WriterWindow* m_window;
    QPointer<QTextEdit> m_editor;
    QPointer<KMdiArea> m_area;
    QPointer<WriterDocumentPage> m_current;
    QPointer<QTextDocument> m_spare; // the editor's text while no document is open
};

#endif // WRITERDOCUMENTS_H
