#ifndef KBLOCKEDMOUSEEVENT_H
#define KBLOCKEDMOUSEEVENT_H

#include <kevent.h>
#include <norvikofficeui_export.h>

class QMouseEvent;
class QWidget;

/**
 * A mouse event that an open popup holding the mouse grab received outside its frame,
 * handed on to the widget under the cursor. It goes up the parents until one accepts it.
 *
 * firstFlag: the receiver says it owns this click (it opened the popup, or is a target of
 * it). keepOpen: the popup must stay open. Neither the mouse event nor the popup is owned.
 */
class NORVIKOFFICEUI_EXPORT KBlockedMouseEvent : public KEvent
{
public:
    KBlockedMouseEvent(QMouseEvent* mouseEvent, QWidget* popup);
    ~KBlockedMouseEvent() override;

    bool firstFlag() const { return m_firstFlag; }
    void setFirstFlag(bool flag) { m_firstFlag = flag; }
    bool keepOpen() const { return m_keepOpen; }
    void setKeepOpen(bool keep) { m_keepOpen = keep; }
    /// The event the popup received, in the popup's coordinates.
    QMouseEvent* mouseEvent() const { return m_mouseEvent; }
    /// The popup that sent the event.
    QWidget* popup() const { return m_popup; }

private:
    bool m_firstFlag = false;
    bool m_keepOpen = false;
    QMouseEvent* m_mouseEvent;
    QWidget* m_popup;
};

#endif // KBLOCKEDMOUSEEVENT_H
