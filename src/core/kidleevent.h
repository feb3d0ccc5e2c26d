#ifndef KIDLEEVENT_H
#define KIDLEEVENT_H

#include <kevent.h>

/**
 * Sent by KAppIdleSvr to each registered object when the event loop goes idle. The receiver
 * pulls its state from its command. pass() says how many times the object has already been
 * asked in the current round; a receiver that has more to do calls setFinished(false) and is
 * asked again later in the same round.
 */
class NORVIKOFFICEUI_EXPORT KIdleEvent : public KEvent
{
public:
    explicit KIdleEvent(int pass)
        : KEvent(KEvent::Idle), m_pass(pass) {}

    int pass() const { return m_pass; }
    bool finished() const { return m_finished; }
    void setFinished(bool finished) { m_finished = finished; }

private:
    int m_pass = 0;
    bool m_finished = true;
};

#endif // KIDLEEVENT_H
