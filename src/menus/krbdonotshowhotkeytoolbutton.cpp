#include "krbdonotshowhotkeytoolbutton.h"

#include <kevent.h>

KRbDonotShowHotKeyToolButton::KRbDonotShowHotKeyToolButton(QWidget* parent)
    : KToolButton(parent)
{
}

KRbDonotShowHotKeyToolButton::~KRbDonotShowHotKeyToolButton() = default;

bool KRbDonotShowHotKeyToolButton::event(QEvent* e)
{
    // Swallowed before the base can add a key tip for it.
    if (e->type() == KEvent::eventType(KEvent::HotKeyCollect))
        return true;
    return KToolButton::event(e);
}

void KRbDonotShowHotKeyToolButton::paintEvent(QPaintEvent*)
{
}
