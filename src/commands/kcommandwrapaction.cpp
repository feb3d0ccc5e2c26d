#include "kcommandwrapaction.h"

#include <QSizePolicy>
#include <QWidget>

#include <ktoolbutton.h>

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
    if (auto* button = qobject_cast<KToolButton*>(widget)) {
        // The form of a button in a classic tool bar: it shows its mnemonic.
        button->setButtonStyle(button->buttonStyle() | KToolButton::StyleHotKey);
        button->setSizePolicy(QSizePolicy::Preferred, QSizePolicy::Preferred);
    }
    return widget;
}
