// Shared by the idle-service tests: receivers that log their idle events. The service works
// only when the event loop is about to block, hence the real loops of KTestSupport.
#ifndef KIDLETESTHELPER_H
#define KIDLETESTHELPER_H

#include <QAbstractEventDispatcher>
#include <QElapsedTimer>
#include <QWidget>
#include <functional>
#include <memory>
#include <vector>

#include <kappidlesvr.h>
#include <ktestsupport.h>

using KTestSupport::runLoopFor;
using KTestSupport::runLoopUntil;

// What one receiver saw; wantMore asks for that many further passes in the round.
struct IdleLog
{
    QList<int> passes;
    int wantMore = 0;
    int busyMicroseconds = 0; // simulated cost of one event
    QStringList* order = nullptr;
    std::function<void()> hook;
};

// A QObject or QWidget that logs its idle events under its object name.
template <class Base>
class IdleReceiver : public Base
{
public:
    explicit IdleReceiver(const QString& name, Base* parent = nullptr) : Base(parent) { this->setObjectName(name); }
    IdleLog log;

protected:
    bool event(QEvent* e) override
    {
        if (e->type() != KEvent::eventType(KEvent::Idle))
            return Base::event(e);
        auto* idle = static_cast<KIdleEvent*>(e);
        log.passes.append(idle->pass());
        if (log.order)
            log.order->append(this->objectName());
        if (log.wantMore > 0) {
            --log.wantMore;
            idle->setFinished(false);
        }
        QElapsedTimer busy;
        busy.start();
        while (busy.nsecsElapsed() < qint64(log.busyMicroseconds) * 1000) {
        }
        if (log.hook)
            log.hook();
        return true;
    }
};
using IdleObject = IdleReceiver<QObject>;
using IdleWidget = IdleReceiver<QWidget>;

// n plain receivers, each busy for busyMicroseconds per event, registered with svr.
struct IdleCrowd
{
    IdleCrowd(KAppIdleSvr& svr, int n, int busyMicroseconds)
    {
        for (int i = 0; i < n; ++i) {
            objects.push_back(std::make_unique<IdleObject>(QStringLiteral("o%1").arg(i)));
            objects.back()->log.busyMicroseconds = busyMicroseconds;
            svr.registerItem(objects.back().get(), false);
        }
    }
    IdleLog& log(int i) { return objects.at(i)->log; }
    int delivered() const
    {
        int n = 0;
        for (const auto& o : objects)
            n += o->log.passes.size();
        return n;
    }
    std::vector<std::unique_ptr<IdleObject>> objects;
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

// Counts the times the event loop wakes up while it runs for ms milliseconds.
inline int wakeUpsDuring(int ms)
{
    int wakeUps = 0;
    QObject context;
    QObject::connect(QAbstractEventDispatcher::instance(), &QAbstractEventDispatcher::awake, &context,
                     [&] { ++wakeUps; });
    runLoopFor(ms);
    return wakeUps;
}

#endif // KIDLETESTHELPER_H
