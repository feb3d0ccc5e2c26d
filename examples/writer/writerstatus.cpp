#include "writerstatus.h"

#include <QAbstractTextDocumentLayout>
#include <QRegularExpression>
#include <QTextBlock>
#include <QTextEdit>

#include <kcommandfactory.h>

#include "writerdocumentsetup.h"
#include "writerwindow.h"

static KCommandFactoryItem<WriterPositionCommand, QObject>
    s_positionItem(QStringLiteral("WriterPositionCommand"), QStringLiteral("QObject"));
static KCommandFactoryItem<WriterWordCountCommand, QObject>
    s_wordCountItem(QStringLiteral("WriterWordCountCommand"), QStringLiteral("QObject"));
static KCommandFactoryItem<WriterAutoSaveCommand, QObject>
    s_autoSaveItem(QStringLiteral("WriterAutoSaveCommand"), QStringLiteral("QObject"));

WriterStatusItem::WriterStatusItem(QObject* host, QObject* parent)
    : KStatusItemCommand(host, parent)
{
}

WriterWindow* WriterStatusItem::window() const
{
    return qobject_cast<WriterWindow*>(host());
}

QTextEdit* WriterStatusItem::editor() const
{
    WriterWindow* w = window();
    return w ? w->editor() : nullptr;
}

WriterPositionCommand::WriterPositionCommand(QObject* host, QObject* parent)
    : WriterStatusItem(host, parent)
{
}

void WriterPositionCommand::update()
{
    QTextEdit* edit = editor();
    if (!edit)
        return;
    const QTextCursor cursor = edit->textCursor();
    const QTextBlock block = cursor.block();
    const double top = edit->document()->documentLayout()->blockBoundingRect(block).top();
    const double pageHeight = 297.0 / 25.4 * edit->logicalDpiY();
    const int page = int(top / pageHeight) + 1;
    // Lines as the editor wraps them, counted from the top of the document.
    int line = block.firstLineNumber();
    if (QTextLayout* layout = block.layout()) {
        const QTextLine textLine = layout->lineForTextPosition(cursor.positionInBlock());
        if (textLine.isValid())
            line += textLine.lineNumber();
    }
    setText(tr("Page %1   Line %2   Col %3").arg(page).arg(line + 1).arg(cursor.positionInBlock() + 1));
}

WriterWordCountCommand::WriterWordCountCommand(QObject* host, QObject* parent)
    : WriterStatusItem(host, parent)
{
}

QWidget* WriterWordCountCommand::createPocketWidget(QWidget* parent)
{
    return adoptButton(new KWordCountStatusButton(parent));
}

void WriterWordCountCommand::update()
{
    QTextEdit* edit = editor();
    setEnabled(edit != nullptr);
    if (!edit)
        return;
    QTextDocument* doc = edit->document();
    if (doc == m_document && doc->revision() == m_revision)
        return;
    m_document = doc;
    m_revision = doc->revision();
    static const QRegularExpression s_word(QStringLiteral("\\S+"));
    int words = 0;
    for (auto it = s_word.globalMatch(doc->toPlainText()); it.hasNext(); it.next())
        ++words;
    setText(words == 1 ? tr("1 word") : tr("%1 words").arg(words));
}

WriterAutoSaveCommand::WriterAutoSaveCommand(QObject* host, QObject* parent)
    : WriterStatusItem(host, parent)
{
    setNeedLight(true);
}

QWidget* WriterAutoSaveCommand::createPocketWidget(QWidget* parent)
{
    m_button = new KAutoBackupControlButton(parent);
    return adoptButton(m_button);
}

void WriterAutoSaveCommand::update()
{
    WriterWindow* w = window();
    WriterDocumentSetup* setup = w ? w->documentSetup() : nullptr;
    const bool on = setup && setup->autoSaveInterval() > 0 && !w->filePath().isEmpty();
    setCheckedHint(on);
    setText(on ? tr("Auto-save on") : tr("Auto-save off"));
    if (m_button)
        m_button->setWaitingSaveState(on && w->editor()->document()->isModified());
}

void WriterAutoSaveCommand::onTriggered()
{
    WriterWindow* w = window();
    if (w && w->documentSetup())
        w->documentSetup()->autoSaveNow();
}
