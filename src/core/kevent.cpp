#include "kevent.h"

#include <QCoreApplication>
#include <QPointer>
#include <QWidget>

KEvent::KEvent(int type)
    : QEvent(static_cast<QEvent::Type>(type))
{
}

KEvent::~KEvent() = default;

bool sendDirectEvent(QObject* obj, QEvent* e)
{
    if (!obj || !e)
        return false;
    return QCoreApplication::sendEvent(obj, e);
}

bool sendPropagatedEvent(QObject* obj, QEvent* e, bool stopAtWindow)
{
    if (!obj || !e)
        return false;
    bool result = false;
    QPointer<QObject> current = obj;
    while (current) {
        e->setAccepted(false);
        QObject* next = current->parent();
        const QWidget* w = current->isWidgetType() ? static_cast<QWidget*>(current.data()) : nullptr;
        const bool isWindow = w && w->isWindow();
        result = QCoreApplication::sendEvent(current, e);
        if (e->isAccepted())
            break;
        if (stopAtWindow && isWindow)
            break;
        // The receiver may have deleted itself; its parent was read before delivery.
        current = current ? current->parent() : next;
    }
    return result;
}

bool sendBroadcastEvent(QObject* obj, QEvent* e)
{
    if (!obj || !e)
        return false;
    bool any = false;
    // The direct children only: a child that wants its own children to know passes it on.
    const QList<QObject*> children = obj->children();
    QList<QPointer<QObject>> guarded;
    guarded.reserve(children.size());
    for (QObject* c : children)
        guarded.append(c);
    for (const QPointer<QObject>& c : guarded) {
        if (c && QCoreApplication::sendEvent(c, e))
            any = true;
    }
    return any;
}
