#include "khotkeyevent.h"

#include <QCoreApplication>
#include <QLayout>

#include <kdrawhelpfunc.h>

QString hotkey_message::tag() const
{
    return prop.typeId() == QMetaType::QString ? prop.toString() : QString();
}

void* hotkey_message::item() const
{
    return prop.typeId() == QMetaType::VoidStar ? prop.value<void*>() : nullptr;
}

KHotKeyCollectEvent::KHotKeyCollectEvent()
    : KEvent(KEvent::HotKeyCollect)
{
}

KHotKeyCollectEvent::~KHotKeyCollectEvent() = default;

void KHotKeyCollectEvent::addHotKey(const QPoint& pos, const QString& key, QWidget* target, bool enabled,
                                    const QVariant& prop)
{
    QString text = key;
    if (text.isEmpty() && useAutoIndex) {
        KDrawHelpFunc::getStringFromAutoIndex(text, autoIndex);
        ++autoIndex;
    }
    if (pos == QPoint(0, 0))
        return; // a widget with no place drops out
    const bool classic = prop.typeId() == QMetaType::QString && prop.toString() == KHotKeyMarker::classicMenu();
    if (text.isEmpty() && !classic)
        return;
    hotkey_message message;
    message.pos = pos;
    message.key = text;
    message.target = target;
    message.enabled = enabled;
    message.prop = prop;
    messages.append(message);
}

KHotKeyTriggerEvent::KHotKeyTriggerEvent()
    : KEvent(KEvent::HotKeyTrigger)
{
}

KHotKeyTriggerEvent::~KHotKeyTriggerEvent() = default;

KHotKeyPopupSelectEvent::KHotKeyPopupSelectEvent()
    : KEvent(KEvent::HotKeyPopupSelect)
{
}

KHotKeyPopupSelectEvent::~KHotKeyPopupSelectEvent() = default;

KHotKeyInnerEvent::KHotKeyInnerEvent(QEvent* inner)
    : KEvent(KEvent::InnerEvent)
    , m_inner(inner)
{
}

KHotKeyInnerEvent::~KHotKeyInnerEvent() = default;

bool sendHotKeyEventToLayout(QLayout* layout, QEvent* e, bool visibleOnly)
{
    if (!layout || !e)
        return false;
    bool any = false;
    for (int i = 0; i < layout->count(); ++i) {
        QLayoutItem* item = layout->itemAt(i);
        if (!item)
            continue;
        if (QWidget* w = item->widget()) {
            if (!visibleOnly || w->isVisible())
                any = QCoreApplication::sendEvent(w, e) || any;
        } else if (QLayout* inner = item->layout()) {
            any = sendHotKeyEventToLayout(inner, e, visibleOnly) || any;
        }
    }
    return any;
}
