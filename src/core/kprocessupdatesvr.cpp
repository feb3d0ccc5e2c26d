#include "kprocessupdatesvr.h"

#include <QCoreApplication>

#include <kevent.h>

KProcessUpdateSvr::KProcessUpdateSvr()
    : QObject(nullptr)
{
}

KProcessUpdateSvr::~KProcessUpdateSvr() = default;

void KProcessUpdateSvr::registerItem(QObject* object)
{
    if (!object || isRegistered(object))
        return;
    // Dead entries are pruned here rather than on every death.
    m_items.removeIf([](const puItem& item) { return item.object.isNull(); });
    m_items.append(puItem{object});
}

void KProcessUpdateSvr::unregisterItem(QObject* object)
{
    if (!object)
        return;
    m_items.removeIf([object](const puItem& item) { return item.object == object; });
}

bool KProcessUpdateSvr::isRegistered(QObject* object) const
{
    if (!object)
        return false;
    for (const puItem& item : m_items) {
        if (item.object == object)
            return true;
    }
    return false;
}

void KProcessUpdateSvr::onProcessUpdate()
{
    // A copy: a receiver may register or unregister while the walk runs.
    const QList<puItem> items = m_items;
    for (const puItem& item : items) {
        if (!item.object)
            continue;
        KEvent event(KEvent::ProcessUpdate);
        QCoreApplication::sendEvent(item.object.data(), &event);
    }
}
