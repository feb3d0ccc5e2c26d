#include "ktriggercommand.h"

#include <kcommandfactory.h>
#include <ktoolbutton.h>

static KCommandFactoryItem<KTriggerCommand, QObject>
    s_triggerCommandItem(QStringLiteral("KTriggerCommand"), QStringLiteral("QObject"));

KTriggerCommand::KTriggerCommand(QObject* host, QObject* parent)
    : KApiCommand(host, parent)
{
}

KTriggerCommand::~KTriggerCommand() = default;

KCommand* KTriggerCommand::clone(QObject* host, QObject* parent)
{
    // Always a plain trigger command: the behaviour of a derived class stays with the
    // source, which the clone's triggered() reaches. The source's delegate is reached the
    // same way; giving the clone the delegate as well would run the host's action twice.
    auto* copy = new KTriggerCommand(host, parent);
    copyProperties(copy);
    connect(copy, &KCommand::triggered, this, &KCommand::trigger, Qt::UniqueConnection);
    return copy;
}

QWidget* KTriggerCommand::createPocketWidget(QWidget* parent)
{
    return adoptButton(new KToolButton(parent));
}

QWidget* KTriggerCommand::adoptButton(KToolButton* button)
{
    button->setDefaultCommand(this);
    m_lastButton = button;
    return button;
}
