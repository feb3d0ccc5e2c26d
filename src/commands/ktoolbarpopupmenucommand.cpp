#include "ktoolbarpopupmenucommand.h"

#include <kcommandfactory.h>

static KCommandFactoryItem<KToolBarPopupMenuCommand, QObject>
    s_toolBarPopupMenuItem(QStringLiteral("KToolBarPopupMenuCommand"), QStringLiteral("QObject"));

KToolBarPopupMenuCommand::KToolBarPopupMenuCommand(QObject* host, QObject* parent)
    : KListCommand(host, parent)
{
}

KToolBarPopupMenuCommand::~KToolBarPopupMenuCommand() = default;

void KToolBarPopupMenuCommand::update()
{
    int visible = 0;
    const int n = count();
    for (int i = 0; i < n; ++i) {
        KCommand* sub = subCommand(i);
        if (!sub)
            continue;
        sub->update();
        if (sub->isVisible())
            ++visible;
    }
    if (visible == 0)
        setVisible(false);
}
