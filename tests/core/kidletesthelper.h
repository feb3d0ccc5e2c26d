// Shared by the idle-service tests: receivers that log their idle events, and a way to run a
// real event loop (the service works only when the loop is about to block).
#ifndef KIDLETESTHELPER_H
#define KIDLETESTHELPER_H

#include <QAbstractEventDispatcher>
#include <QElapsedTimer>
#include <QEventLoop>
#include <QStringList>
#include <QTimer>
#include <QWidget>
#include <functional>

#include <kappidlesvr.h>

// What one receiver saw; wantMore asks for that many further passes in the round.
struct IdleLog
{
    QList<int> passes;
    int wantMore = 0;
    int busyMicroseconds = 0; // simulated cost of one event
    QStringList* order = nullptr;
    std::function<void()> hook;

    bool handle(QObject* self, QEvent* e)
    {
        if (e->type() != KEvent::eventType(KEvent::Idle))
            return false;
        auto* idle = static_cast<KIdleEvent*>(e);
        passes.append(idle->pass());
        if (order)
            order->append(self->objectName());
        if (wantMore > 0) {
            --wantMore;
            idle->setFinished(false);
        }
        if (busyMicroseconds > 0) {
            QElapsedTimer t;
            t.start();
            while (t.nsecsElapsed() < qint64(busyMicroseconds) * 1000) {
            }
        }
        if (hook)
            hook();
        return true;
    }
};

class IdleObject : public QObject
{
public:
    explicit IdleObject(const QString& name, QObject* parent = nullptr) : QObject(parent)
    {
        setObjectName(name);
    }
    IdleLog log;

protected:
    bool event(QEvent* e) override { return log.handle(this, e) || QObject::event(e); }
};

class IdleWidget : public QWidget
{
public:
    explicit IdleWidget(const QString& name, QWidget* parent = nullptr) : QWidget(parent)
    {
        setObjectName(name);
    }
    IdleLog log;

protected:
    bool event(QEvent* e) override { return log.handle(this, e) || QWidget::event(e); }
};

// Steps the due queue by hand until it is empty; returns the number of steps.
inline int drainIdle(KAppIdleSvr& svr)
{
    int steps = 0;
    while (svr.waitingCount() > 0 && steps < 100000) {
        svr.doIdle();
        ++steps;
    }
    return steps;
}

// Runs a real event loop until pred holds (checked each time the loop is about to block,
// after the idle service has had its turn) or the time is up.
template <class Pred>
bool runLoopUntil(Pred pred, int timeoutMs = 5000)
{
    if (pred())
        return true;
    QEventLoop loop;
    QTimer timeout;
    timeout.setSingleShot(true);
    QObject::connect(&timeout, &QTimer::timeout, &loop, &QEventLoop::quit);
    const QMetaObject::Connection c = QObject::connect(
        QAbstractEventDispatcher::instance(), &QAbstractEventDispatcher::aboutToBlock, &loop, [&] {
            if (pred())
                loop.quit();
        });
    timeout.start(timeoutMs);
    loop.exec();
    QObject::disconnect(c);
    return pred();
}

// Runs a real event loop for ms milliseconds: the way to show that nothing happens.
inline void runLoopFor(int ms)
{
    QEventLoop loop;
    QTimer::singleShot(ms, &loop, &QEventLoop::quit);
    loop.exec();
}

#endif // KIDLETESTHELPER_H
