#include "kvisibletogglecommand.h"

#include "kcommandfactory.h"

static KCommandFactoryItem<KVisibleToggleCommand, QObject>
    s_visibleToggleItem(QStringLiteral("KVisibleToggleCommand"), QStringLiteral("QObject"));

KVisibleToggleCommand::KVisibleToggleCommand(QObject* host, QObject* parent)
    : KTriggerCommand(host, parent)
{
}

void KVisibleToggleCommand::setDefaultCommand(KCommand* command)
{
    if (m_defaultCommand == command)
        return;
    if (m_defaultCommand)
        disconnect(m_defaultCommand, &KCommand::changed, this, &KVisibleToggleCommand::update);
    m_defaultCommand = command;
    if (command)
        connect(command, &KCommand::changed, this, &KVisibleToggleCommand::update);
    update();
    on_command_changed();
}

void KVisibleToggleCommand::update()
{
    if (m_defaultCommand)
        setCheckedHint(m_defaultCommand->isVisible());
}

void KVisibleToggleCommand::onTriggered()
{
    if (m_defaultCommand)
        m_defaultCommand->setVisible(!m_defaultCommand->isVisible());
}
