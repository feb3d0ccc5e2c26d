#include "kblockedmouseevent.h"

#include "qtoolbaritemwidget.h"

KBlockedMouseEvent::KBlockedMouseEvent(QMouseEvent* mouseEvent, QWidget* popup)
    : KEvent(KEvent::BlockedMouse)
    , m_mouseEvent(mouseEvent)
    , m_popup(popup)
{
}

KBlockedMouseEvent::~KBlockedMouseEvent() = default;

// The interface has no source of its own; its key function lives here.
QToolBarItemWidget::~QToolBarItemWidget() = default;
