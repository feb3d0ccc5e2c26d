#include "writerdocumentsetup.h"

#include <QCryptographicHash>
#include <QTextBlock>
#include <QTextCursor>
#include <QTextDocument>
#include <QTextEdit>
#include <QTextFrame>

#include <kcommand.h>
#include <kcommands.h>

#include "writerwindow.h"

namespace {
// Marks a root frame that carries the page margins; Qt resets the frame when the text is
// replaced, and the mark goes with it.
const int kMarginsSet = QTextFormat::UserProperty + 0x5751;
// The veto bit that protection sets on the format commands.
const auto kProtectionControl = static_cast<KMultiControlBool::ControlType>(3);
const char* const kFormatCommands[] = {"FormatBold", "FormatItalic", "FormatUnderline"};
} // namespace

WriterDocumentSetup::WriterDocumentSetup(WriterWindow* window)
    : QObject(window)
    , m_window(window)
{
    if (KCommand* cmd = window->commands()->command(QStringLiteral("FilePageSetup")))
        connect(cmd, &KCommand::triggered, this, &WriterDocumentSetup::pageSetup);
    if (KCommand* cmd = window->commands()->command(QStringLiteral("FileProtect")))
        connect(cmd, &KCommand::triggered, this, &WriterDocumentSetup::protection);
    connect(&m_autoSave, &QTimer::timeout, this, &WriterDocumentSetup::autoSaveNow);
    // Through the editor: it follows whichever document is current.
    connect(window->editor(), &QTextEdit::textChanged, this, &WriterDocumentSetup::_onContentsChanged);
    _onContentsChanged();
}

WriterDocumentSetup::~WriterDocumentSetup() = default;

WriterPageSettings WriterDocumentSetup::pageSettings() const
{
    WriterPageSettings s = m_settings;
    const QTextEdit* editor = m_window->editor();
    const QTextFrameFormat frame = editor->document()->rootFrame()->frameFormat();
    const double toPoints = 72.0 / editor->logicalDpiX();
    s.marginTop = frame.topMargin() * toPoints;
    s.marginBottom = frame.bottomMargin() * toPoints;
    s.marginLeft = frame.leftMargin() * toPoints;
    s.marginRight = frame.rightMargin() * toPoints;
    const QTextBlockFormat block = editor->textCursor().blockFormat();
    s.lineSpacing = block.lineHeightType() == QTextBlockFormat::ProportionalHeight ? block.lineHeight() / 100.0 : 1.0;
    s.autoSaveSeconds = autoSaveInterval();
    return s;
}

void WriterDocumentSetup::_applyMargins(const WriterPageSettings& settings)
{
    QTextDocument* doc = m_window->editor()->document();
    const double toPixels = m_window->editor()->logicalDpiX() / 72.0;
    QTextFrameFormat frame = doc->rootFrame()->frameFormat();
    frame.setTopMargin(settings.marginTop * toPixels);
    frame.setBottomMargin(settings.marginBottom * toPixels);
    frame.setLeftMargin(settings.marginLeft * toPixels);
    frame.setRightMargin(settings.marginRight * toPixels);
    frame.setProperty(kMarginsSet, true);
    doc->rootFrame()->setFrameFormat(frame);
}

void WriterDocumentSetup::applyPageSettings(const WriterPageSettings& settings)
{
    m_settings = settings;
    QTextCursor cursor(m_window->editor()->document());
    cursor.beginEditBlock(); // one step for Undo
    _applyMargins(settings);
    cursor.select(QTextCursor::Document);
    QTextBlockFormat spacing;
    spacing.setLineHeight(settings.lineSpacing * 100.0, QTextBlockFormat::ProportionalHeight);
    cursor.mergeBlockFormat(spacing);
    cursor.endEditBlock();
    if (settings.autoSaveSeconds > 0)
        m_autoSave.start(settings.autoSaveSeconds * 1000);
    else
        m_autoSave.stop();
}

void WriterDocumentSetup::_onContentsChanged()
{
    QTextDocument* doc = m_window->editor()->document();
    if (doc->rootFrame()->frameFormat().hasProperty(kMarginsSet))
        return;
    // A new text came in (New, Open, the first text): it gets the margins, and that is no
    // edit of it. Only replacing the text loses the mark, and that also empties the history,
    // so clearing it here takes nothing from the user.
    const bool modified = doc->isModified();
    _applyMargins(m_settings); // tells contentsChanged() again, which finds the mark
    doc->clearUndoRedoStacks();
    doc->setModified(modified);
}

void WriterDocumentSetup::autoSaveNow()
{
    const QString path = m_window->filePath();
    if (path.isEmpty() || !m_window->editor()->document()->isModified())
        return;
    m_window->saveFile(path); // a failure is tried again at the next turn
}

QByteArray WriterDocumentSetup::_hash(const QString& password) const
{
    return QCryptographicHash::hash(password.toUtf8(), QCryptographicHash::Sha256);
}

void WriterDocumentSetup::protect(const QString& password)
{
    if (password.isEmpty())
        return;
    m_passwordHash = _hash(password);
    m_window->editor()->setReadOnly(true);
    for (const char* id : kFormatCommands) {
        if (KCommand* cmd = m_window->commands()->command(QString::fromLatin1(id)))
            cmd->setEnabled(kProtectionControl, false);
    }
    if (KCommand* cmd = m_window->commands()->command(QStringLiteral("FileProtect")))
        cmd->setCheckedHint(true);
}

bool WriterDocumentSetup::unprotect(const QString& password)
{
    if (!isProtected() || _hash(password) != m_passwordHash)
        return false;
    m_passwordHash.clear();
    m_window->editor()->setReadOnly(false);
    for (const char* id : kFormatCommands) {
        if (KCommand* cmd = m_window->commands()->command(QString::fromLatin1(id)))
            cmd->setEnabled(kProtectionControl, true);
    }
    if (KCommand* cmd = m_window->commands()->command(QStringLiteral("FileProtect")))
        cmd->setCheckedHint(false);
    return true;
}

void WriterDocumentSetup::pageSetup()
{
    WriterPageSetupDialog dialog(pageSettings(), m_window);
    if (dialog.exec() == QDialog::Accepted)
        applyPageSettings(dialog.settings());
}

void WriterDocumentSetup::protection()
{
    if (isProtected()) {
        WriterProtectDialog dialog(WriterProtectDialog::Unprotect,
                                   [this](const QString& password) { return _hash(password) == m_passwordHash; },
                                   m_window);
        if (dialog.exec() == QDialog::Accepted)
            unprotect(dialog.password());
        return;
    }
    WriterProtectDialog dialog(WriterProtectDialog::Protect, {}, m_window);
    if (dialog.exec() == QDialog::Accepted)
        protect(dialog.password());
}
