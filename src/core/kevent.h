#ifndef KEVENT_H
#define KEVENT_H

#include <QEvent>
#include <norvikofficeui_export.h>

/**
 * Base of the framework's own events. The type numbers are fixed: hosts and widgets match on
 * them in their event() overrides.
 */
class NORVIKOFFICEUI_EXPORT KEvent : public QEvent
{
public:
    enum KEventType {
        BlockedMouse = 32768,      // KBlockedMouseEvent: hover under a popup
        Dismiss = 32769,           // closes popups and key-tip levels on its way up the parents
        Idle = 32770,              // KIdleEvent
        ProcessUpdate = 32771,     // process-update round
        HotKeyCollect = 32772,     // KHotKeyCollectEvent
        HotKeyTrigger = 32773,     // KHotKeyTriggerEvent
        HotKeyPopupSelect = 32774, // KHotKeyPopupSelectEvent
        InnerEvent = 32775,        // a KEvent carrying another event
        ThemeChange = 32778        // KThemeChangeEvent (0x800A)
    };

    explicit KEvent(int type);
    ~KEvent() override;

    static QEvent::Type eventType(KEventType t) { return static_cast<QEvent::Type>(t); }
};

/// Delivers the event to obj alone (QCoreApplication::sendEvent); returns its result.
NORVIKOFFICEUI_EXPORT bool sendDirectEvent(QObject* obj, QEvent* e);

/**
 * Clears the accepted flag and delivers the event to obj, then to each parent in turn, until
 * one accepts it. With stopAtWindow true the walk ends after the first widget that is a
 * window. Returns the result of the last delivery (false for a null obj).
 */
NORVIKOFFICEUI_EXPORT bool sendPropagatedEvent(QObject* obj, QEvent* e, bool stopAtWindow);

/// Sends the event to every direct child of obj; true when any delivery returned true.
NORVIKOFFICEUI_EXPORT bool sendBroadcastEvent(QObject* obj, QEvent* e);

#endif // KEVENT_H
