#include "kmenucommand.h"

#include <ktriggercommand.h>

KMenuCommand::KMenuCommand(QObject* host)
    : KListCommand(host, host)
{
}

KMenuCommand::~KMenuCommand() = default;

KMenuCommand* KMenuCommand::addMenu(const QString& text)
{
    return addMenu(QIcon(), text);
}

KMenuCommand* KMenuCommand::addMenu(const QIcon& icon, const QString& text)
{
    auto* menu = new KMenuCommand(host());
    menu->setDrawText(text);
    menu->setIcon(icon);
    addSubCommand(menu);
    return menu;
}

KTriggerCommand* KMenuCommand::addMenuItem(const QString& text)
{
    return addMenuItem(QIcon(), text);
}

KTriggerCommand* KMenuCommand::addMenuItem(const QIcon& icon, const QString& text)
{
    auto* item = new KTriggerCommand(host(), host());
    item->setDrawText(text);
    item->setIcon(icon);
    addSubCommand(item);
    return item;
}
