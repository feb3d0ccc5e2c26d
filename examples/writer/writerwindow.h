#ifndef WRITERWINDOW_H
#define WRITERWINDOW_H

#include <QString>
#include <kmainwindow.h>

class QTextEdit;
class KCommand;
class WriterDocumentSetup;
class WriterDocuments;
class WriterFileMenu;
class WriterRibbonActions;

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

    QTextEdit* editor() const { return m_editor; }
    /// Page setup, protection and auto-save of the document; made by bindCommands().
    WriterDocumentSetup* documentSetup() const { return m_documentSetup; }
    QString filePath() const { return m_path; }
    /// The open documents; the editor shows the current one.
    WriterDocuments* documents() const { return m_documents; }
    /// The editor's actions behind the ribbon; made by bindCommands().
    WriterRibbonActions* ribbonActions() const { return m_ribbonActions; }
    /// Print preview, close and exit, and the user's quick access bar; made by bindCommands().
    WriterFileMenu* fileMenu() const { return m_fileMenu; }
    /// The file of the document that became current (empty for an unsaved one).
    void setCurrentPath(const QString& path);

    /// Opens a text file (".html" and ".htm" as rich text, anything else as plain text).
    bool openFile(const QString& path);
    /// Saves as rich text for ".html" / ".htm", as plain text otherwise.
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
    void _setFullScreen(bool on);
    void _updateThemeChecks();
    void _updateFormatChecks();
    void _toggleFormat(const char* id);
    void _rememberFile();

    QTextEdit* m_editor;
    QString m_path;
    WriterDocumentSetup* m_documentSetup = nullptr;
    WriterDocuments* m_documents = nullptr;
    WriterRibbonActions* m_ribbonActions = nullptr;
    WriterFileMenu* m_fileMenu = nullptr;
};

#endif // WRITERWINDOW_H
