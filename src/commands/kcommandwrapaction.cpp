#include "kcommandwrapaction.h"

#include <QDebug>
#include <QMetaObject>
#include <QSizePolicy>
#include <QVariant>
#include <QWidget>

namespace {

// The style bit that makes a tool button show its command's mnemonic.
constexpr int kHotKeyStyle = 16;

// The tool button is reached through its meta-object (property or invokable "buttonStyle",
// slot "setButtonStyle"), so that this class does not depend on the button's own files.
void addHotKeyStyle(QWidget* button)
{
    QVariant style = button->property("buttonStyle");
    if (!style.isValid()) {
        int value = 0;
        if (QMetaObject::invokeMethod(button, "buttonStyle", Qt::DirectConnection,
                                      Q_RETURN_ARG(int, value)))
            style = value;
    }
    if (!style.isValid()) {
        qWarning().noquote() << "KCommandWrapAction: cannot read the button style of"
                             << button->metaObject()->className();
        return;
    }
    const int value = style.toInt() | kHotKeyStyle;
    if (!QMetaObject::invokeMethod(button, "setButtonStyle", Qt::DirectConnection,
                                   Q_ARG(int, value)))
        button->setProperty("buttonStyle", value);
}

} // namespace

KCommandWrapAction::KCommandWrapAction(KCommand* command, QObject* parent)
    : KCommandObjectBridge<QWidgetAction>(command, parent)
{
    if (command)
        connect(command, &KCommand::changed, this, &KCommandWrapAction::syncCommand);
    syncCommand();
}

KCommandWrapAction::~KCommandWrapAction() = default;

void KCommandWrapAction::syncCommand()
{
    KCommand* cmd = command();
    if (!cmd)
        return;
    QAction::setEnabled(cmd->isEnabled());
    QAction::setVisible(cmd->isVisible());
}

QWidget* KCommandWrapAction::createWidget(QWidget* parent)
{
    KCommand* cmd = command();
    if (!cmd)
        return nullptr;
    QWidget* widget = cmd->requestWidget(parent, KCommand::PocketPurpose);
    if (widget && widget->inherits("KToolButton")) {
        addHotKeyStyle(widget);
        widget->setSizePolicy(QSizePolicy::Preferred, QSizePolicy::Preferred);
    }
    return widget;
}
