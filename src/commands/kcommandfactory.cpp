#include "kcommandfactory.h"

#include <QMap>

#include <kcommand.h>

namespace {

// A function-local static: items are registered from static initialisers of any
// translation unit, in an order nobody controls.
QMap<QString, KCommandFactoryItemBase*>& factoryMap()
{
    static QMap<QString, KCommandFactoryItemBase*> s_map;
    return s_map;
}

} // namespace

KCommandFactoryItemBase::KCommandFactoryItemBase(const QString& className)
    : m_className(className)
{
}

KCommandFactoryItemBase::~KCommandFactoryItemBase() = default;

void KCommandFactory::registerCommand(KCommandFactoryItemBase* item)
{
    if (item)
        factoryMap().insert(item->className(), item);
}

void KCommandFactory::unregisterCommand(KCommandFactoryItemBase* item)
{
    if (!item)
        return;
    QMap<QString, KCommandFactoryItemBase*>& map = factoryMap();
    const auto it = map.find(item->className());
    // A replaced item must not take its replacement with it.
    if (it != map.end() && it.value() == item)
        map.erase(it);
}

KCommand* KCommandFactory::createCommand(const QString& className, QObject* host, QObject* parent)
{
    KCommandFactoryItemBase* item = factoryMap().value(className, nullptr);
    return item ? item->create(host, parent) : nullptr;
}

KCommandFactoryItemBase* KCommandFactory::item(const QString& className)
{
    return factoryMap().value(className, nullptr);
}
