#include "krblogicgroupcommand.h"

#include <kcommandfactory.h>

static KCommandFactoryItem<KRbLogicGroupCommand, QObject>
    s_logicGroupItem(QStringLiteral("KRbLogicGroupCommand"), QStringLiteral("QObject"));

KRbLogicGroupCommand::KRbLogicGroupCommand(QObject* host, QObject* parent)
    : KListCommand(host, parent)
{
}

KRbLogicGroupCommand::~KRbLogicGroupCommand() = default;

void KRbLogicGroupCommand::update()
{
    bool anyVisible = false;
    const int n = count();
    for (int i = 0; i < n && !anyVisible; ++i) {
        KCommand* sub = subCommand(i);
        anyVisible = sub && sub->isVisible();
    }
    setVisible(anyVisible);
}
