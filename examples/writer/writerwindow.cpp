#include "writerwindow.h"

#include <QApplication>
#include <QClipboard>
#include <QDateTime>
#include <QFile>
#include <QFileDialog>
#include <QFileInfo>
#include <QLocale>
#include <QMessageBox>
#include <QTextEdit>
#include <QSaveFile>

#include <kapplication.h>
#include <kapptheme.h>
#include <kcommand.h>
#include <kcommands.h>

#include "writerdocuments.h"
#include "writerdocumentsetup.h"
#include "writerfilemenu.h"
#include "writermenus.h"
#include "writerpanels.h"
#include "writerribbon.h"
#include "writertips.h"

namespace {
bool isHtml(const QString& path)
{
    const QString suffix = QFileInfo(path).suffix().toLower();
    return suffix == QLatin1String("html") || suffix == QLatin1String("htm");
}

const char* const kFileFilter = "Text files (*.txt *.md);;Web pages (*.html *.htm);;All files (*)";
} // namespace

WriterWindow::WriterWindow(QWidget* parent)
    : KMainWindow(parent)
    , m_editor(new QTextEdit)
{
    m_editor->setObjectName(QStringLiteral("WriterEditor"));
    m_editor->setFrameShape(QFrame::StyledPanel);
    m_editor->setAcceptRichText(true);
    m_documents = new WriterDocuments(this, m_editor);
    setCentralWidget(m_documents->area());
    m_documents->newDocument();
    resize(1000, 680);
}

KCommand* WriterWindow::_command(const char* id) const
{
    return commands()->command(QString::fromLatin1(id));
}

void WriterWindow::bindCommands()
{
    auto on = [this](const char* id, auto handler) {
        if (KCommand* cmd = _command(id))
            connect(cmd, &KCommand::triggered, this, handler);
    };
    on("FileNew", [this] { newFile(); });
    on("FileOpen", [this] { _onOpen(); });
    on("FileSave", [this] { _onSave(); });
    on("FileSaveAs", [this] { _onSaveAs(); });
    // A protected document (read-only) keeps its history as it is.
    on("EditUndo", [this] { if (!m_editor->isReadOnly()) m_editor->undo(); });
    on("EditRedo", [this] { if (!m_editor->isReadOnly()) m_editor->redo(); });
    on("EditCut", [this] { m_editor->cut(); });
    on("EditCopy", [this] { m_editor->copy(); });
    on("EditPaste", [this] { m_editor->paste(); });
    on("EditSelectAll", [this] { m_editor->selectAll(); });
    on("ViewFullScreen", [this] { _setFullScreen(!isFullScreen()); });
    on("CloseFullScreen", [this] { _setFullScreen(false); });
    on("InsertDateTime", [this] {
        m_editor->insertPlainText(QLocale().toString(QDateTime::currentDateTime(), QLocale::ShortFormat));
    });
    if (KCommand* symbols = _command("InsertSymbolMenu")) {
        for (int i = 0; i < symbols->count(); ++i) {
            KCommand* symbol = symbols->subCommand(i);
            if (!symbol || !symbol->property("symbol").isValid())
                continue;
            connect(symbol, &KCommand::triggered, this,
                    [this, symbol] { m_editor->insertPlainText(symbol->property("symbol").toString()); });
        }
    }
    on("FormatBold", [this] { _toggleFormat("FormatBold"); });
    on("FormatItalic", [this] { _toggleFormat("FormatItalic"); });
    on("FormatUnderline", [this] { _toggleFormat("FormatUnderline"); });

    // The recent files: a chosen entry opens; a file that is gone is dropped from the list.
    if (auto* recent = qobject_cast<WriterRecentFilesCommand*>(_command("RecentFiles"))) {
        connect(recent, &WriterRecentFilesCommand::fileChosen, this, [this, recent](const QString& path) {
            if (openFile(path))
                return;
            QStringList files = recent->getStrings();
            files.removeAll(path);
            recent->setStrings(files);
            QMessageBox::warning(this, tr("Open"), tr("Could not read %1.").arg(path));
        });
    }
    connect(this, &WriterWindow::documentChanged, this, &WriterWindow::_rememberFile);
    m_documents->bindCommands();
    m_documentSetup = new WriterDocumentSetup(this);
    m_ribbonActions = new WriterRibbonActions(this);
    m_fileMenu = new WriterFileMenu(this);
    new WriterMenuActions(this);
    new WriterTips(this);

    // The format toggles show the format at the cursor.
    connect(m_editor, &QTextEdit::currentCharFormatChanged, this, &WriterWindow::_updateFormatChecks);
    connect(m_editor, &QTextEdit::cursorPositionChanged, this, &WriterWindow::_updateFormatChecks);
    _updateFormatChecks();

    // Each colour command carries its colour; the choice is saved and comes back next time.
    if (KCommand* bar = _command("ThemeBar")) {
        for (int i = 0; i < bar->count(); ++i) {
            KCommand* colour = bar->subCommand(i);
            if (!colour || !colour->property("baseColor").isValid())
                continue;
            connect(colour, &KCommand::triggered, this, [this, colour] {
                KApplication::instance()->setThemeBaseColor(QColor(colour->property("baseColor").toString()), true);
                _updateThemeChecks();
            });
        }
    }
    _updateThemeChecks();

    // States that follow the document: the editor announces them, the commands show them.
    auto enable = [this](const char* id, bool on) {
        if (KCommand* cmd = _command(id))
            cmd->setEnabled(on);
    };
    connect(m_editor, &QTextEdit::undoAvailable, this, [enable](bool on) { enable("EditUndo", on); });
    connect(m_editor, &QTextEdit::redoAvailable, this, [enable](bool on) { enable("EditRedo", on); });
    connect(m_editor, &QTextEdit::copyAvailable, this, [enable](bool on) {
        enable("EditCut", on);
        enable("EditCopy", on);
    });
    connect(QApplication::clipboard(), &QClipboard::dataChanged, this, &WriterWindow::_updatePaste);
    enable("EditUndo", false);
    enable("EditRedo", false);
    enable("EditCut", false);
    enable("EditCopy", false);
    _updatePaste();
    _updateTitle();
}

void WriterWindow::_setFullScreen(bool on)
{
    setFullScreen(on);
    if (KCommand* cmd = _command("ViewFullScreen"))
        cmd->setCheckedHint(isFullScreen());
}

void WriterWindow::_updateThemeChecks()
{
    KCommand* bar = _command("ThemeBar");
    const QColor current = KApplication::instance()->theme()->getBaseColor();
    for (int i = 0; bar && i < bar->count(); ++i) {
        if (KCommand* colour = bar->subCommand(i))
            colour->setCheckedHint(QColor(colour->property("baseColor").toString()) == current);
    }
}

void WriterWindow::_toggleFormat(const char* id)
{
    KCommand* cmd = _command(id);
    if (!cmd)
        return;
    // The command shows the format at the cursor; a click asks for the other one.
    const bool on = !cmd->checkedHint();
    QTextCharFormat format;
    if (qstrcmp(id, "FormatBold") == 0)
        format.setFontWeight(on ? QFont::Bold : QFont::Normal);
    else if (qstrcmp(id, "FormatItalic") == 0)
        format.setFontItalic(on);
    else
        format.setFontUnderline(on);
    m_editor->mergeCurrentCharFormat(format);
    _updateFormatChecks();
}

void WriterWindow::_updateFormatChecks()
{
    const QTextCharFormat format = m_editor->currentCharFormat();
    auto check = [this](const char* id, bool on) {
        if (KCommand* cmd = _command(id))
            cmd->setCheckedHint(on);
    };
    check("FormatBold", format.fontWeight() >= QFont::Bold);
    check("FormatItalic", format.fontItalic());
    check("FormatUnderline", format.fontUnderline());
}

void WriterWindow::_rememberFile()
{
    if (auto* recent = qobject_cast<WriterRecentFilesCommand*>(_command("RecentFiles")))
        recent->addFile(m_path);
}

void WriterWindow::_updatePaste()
{
    if (KCommand* paste = _command("EditPaste"))
        paste->setEnabled(!QApplication::clipboard()->text().isEmpty());
}

void WriterWindow::_updateTitle()
{
    const QString name = m_path.isEmpty() ? tr("Untitled") : QFileInfo(m_path).fileName();
    const QString app = caption().isEmpty() ? QStringLiteral("Norvik Writer") : caption();
    setWindowTitle(QStringLiteral("%1[*] - %2").arg(name, app));
    // Clearing the editor resets the document's flag without a signal: read it here too.
    setWindowModified(m_editor->document()->isModified());
}

void WriterWindow::setCurrentPath(const QString& path)
{
    m_path = path;
    _updateTitle();
}

void WriterWindow::newFile()
{
    m_documents->newDocument();
    m_editor->clear();
    m_editor->document()->setModified(false);
    m_path.clear();
    _updateTitle();
    Q_EMIT documentChanged();
}

bool WriterWindow::openFile(const QString& path)
{
    QFile file(path);
    if (!file.open(QIODevice::ReadOnly | QIODevice::Text))
        return false;
    const QString text = QString::fromUtf8(file.readAll());
    m_documents->pageForOpen();
    if (isHtml(path))
        m_editor->setHtml(text);
    else
        m_editor->setPlainText(text);
    _updateFormatChecks(); // the cursor may not move, yet the text under it changed
    m_editor->document()->setModified(false);
    m_path = QFileInfo(path).absoluteFilePath();
    m_documents->syncCurrentPath();
    _updateTitle();
    Q_EMIT documentChanged();
    return true;
}

bool WriterWindow::saveFile(const QString& path)
{
    QSaveFile file(path);
    if (!file.open(QIODevice::WriteOnly | QIODevice::Text))
        return false;
    file.write((isHtml(path) ? m_editor->toHtml() : m_editor->toPlainText()).toUtf8());
    if (!file.commit())
        return false;
    m_editor->document()->setModified(false);
    const QString absolute = QFileInfo(path).absoluteFilePath();
    const bool renamed = absolute != m_path;
    m_path = absolute;
    m_documents->syncCurrentPath();
    _updateTitle();
    if (renamed)
        Q_EMIT documentChanged();
    else
        _rememberFile(); // a saved file moves to the head of the recent ones
    return true;
}

void WriterWindow::_onOpen()
{
    const QString path = QFileDialog::getOpenFileName(this, tr("Open"), QString(),
                                                      tr(kFileFilter));
    if (!path.isEmpty() && !openFile(path))
        QMessageBox::warning(this, tr("Open"), tr("Could not read %1.").arg(path));
}

void WriterWindow::_onSave()
{
    if (m_path.isEmpty()) {
        _onSaveAs();
        return;
    }
    if (!saveFile(m_path))
        QMessageBox::warning(this, tr("Save"), tr("Could not write %1.").arg(m_path));
}

void WriterWindow::_onSaveAs()
{
    const QString path = QFileDialog::getSaveFileName(this, tr("Save As"), m_path,
                                                      tr(kFileFilter));
    if (!path.isEmpty() && !saveFile(path))
        QMessageBox::warning(this, tr("Save As"), tr("Could not write %1.").arg(path));
}
