#include "writerfontsize.h"

#include <QLocale>
#include <QTextEdit>

#include <kapplication.h>
#include <kcommandfactory.h>

#include "writerwindow.h"

static KCommandFactoryItem<WriterFontSizeCommand, QObject>
    s_fontSizeItem(QStringLiteral("WriterFontSizeCommand"), QStringLiteral("QObject"));

namespace {
// The range a text document takes.
constexpr qreal kMinSize = 1;
constexpr qreal kMaxSize = 1638;
} // namespace

WriterFontSizeCommand::WriterFontSizeCommand(QObject* host, QObject* parent)
    : KComboBoxCommand(host, parent)
{
}

QTextEdit* WriterFontSizeCommand::_editor() const
{
    // Described among the application's commands, the box serves the window in front.
    auto* window = qobject_cast<WriterWindow*>(host());
    if (!window) {
        KApplication* app = KApplication::instance();
        window = app ? qobject_cast<WriterWindow*>(app->currentMainWindow()) : nullptr;
    }
    return window ? window->editor() : nullptr;
}

qreal WriterFontSizeCommand::sizeAtCursor(const QTextEdit* editor)
{
    const qreal size = editor->currentCharFormat().fontPointSize();
    return size > 0 ? size : editor->document()->defaultFont().pointSizeF();
}

QString WriterFontSizeCommand::sizeText(qreal size)
{
    return QLocale::c().toString(size, 'g', 6);
}

void WriterFontSizeCommand::update()
{
    QTextEdit* editor = _editor();
    if (!editor)
        return;
    bool need = true;
    Q_EMIT isNeedUpdate(need); // what a user is typing in a box is not overwritten
    if (!need)
        return;
    const QString text = sizeText(sizeAtCursor(editor));
    setSelected(text);
    setCurrentIndex(itemsList().indexOf(text));
}

void WriterFontSizeCommand::onTriggered()
{
    QTextEdit* editor = _editor();
    if (!editor)
        return;
    bool ok = false;
    qreal size = QLocale::c().toDouble(selected().trimmed(), &ok);
    if (!ok)
        size = QLocale().toDouble(selected().trimmed(), &ok);
    if (ok && size >= kMinSize && size <= kMaxSize) {
        QTextCharFormat format;
        format.setFontPointSize(size);
        editor->mergeCurrentCharFormat(format);
    }
    // Back to the text; the box shows the size that holds now, a refused entry included.
    editor->setFocus();
    const QString text = sizeText(sizeAtCursor(editor));
    setSelected(text);
    setCurrentIndex(itemsList().indexOf(text));
}
