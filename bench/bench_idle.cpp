// The idle service under load: 10,000 registered widgets (half of them in a hidden window),
// one user action, then
//  (a) how long input waits while the round runs (events posted from another thread, as the
//      X connection's reader does),
//  (b) the cost of a whole round against the bare cost of sending 10,000 events,
//  (c) what the process spends once the round is through (CPU time and loop wake-ups).
// Runs on the offscreen platform unless QT_QPA_PLATFORM says otherwise.
#include <QAbstractEventDispatcher>
#include <QElapsedTimer>
#include <QEventLoop>
#include <QThread>
#include <QTimer>
#include <QWidget>
#include <QtTest/QtTest>
#include <algorithm>
#include <atomic>
#include <cstdio>
#include <ctime>
#include <memory>
#include <vector>

#include <kappidlesvr.h>
#include <kapplication.h>
#include <kcommand.h>
#include <ktestsupport.h>

namespace {

constexpr int kWidgets = 10000;

void spin(int microseconds)
{
    if (microseconds <= 0)
        return;
    QElapsedTimer t;
    t.start();
    while (t.nsecsElapsed() < qint64(microseconds) * 1000) {
    }
}

// A command whose update() costs what the host's document query costs.
class BenchCommand : public KCommand
{
public:
    BenchCommand() : KCommand(nullptr, nullptr) {}
    void update() override { spin(s_updateCost); }
    static int s_updateCost;
};
int BenchCommand::s_updateCost = 0;

// What a command widget does with the idle event: pull the command's state.
class BenchWidget : public QWidget
{
public:
    BenchWidget(KCommand* command, QWidget* parent) : QWidget(parent), m_command(command) {}
    int events = 0;

protected:
    bool event(QEvent* e) override
    {
        if (e->type() == KEvent::eventType(KEvent::Idle)) {
            ++events;
            m_command->update();
            setEnabled(m_command->isEnabled());
            return true;
        }
        return QWidget::event(e);
    }

private:
    KCommand* m_command;
};

// An input event posted from another thread, stamped with the time it was posted.
class ProbeEvent : public QEvent
{
public:
    explicit ProbeEvent(qint64 postedAtUs)
        : QEvent(QEvent::Type(QEvent::User + 1)), postedAt(postedAtUs) {}
    qint64 postedAt;
};

// Receives the probe events and records how long each waited in the queue.
class Probe : public QObject
{
public:
    QElapsedTimer clock;
    std::vector<qint64> waits; // microseconds

protected:
    bool event(QEvent* e) override
    {
        if (e->type() == QEvent::User + 1) {
            waits.push_back(clock.nsecsElapsed() / 1000 - static_cast<ProbeEvent*>(e)->postedAt);
            return true;
        }
        return QObject::event(e);
    }
};

double processCpuMs()
{
    timespec ts{};
    clock_gettime(CLOCK_PROCESS_CPUTIME_ID, &ts);
    return ts.tv_sec * 1000.0 + ts.tv_nsec / 1e6;
}

using KTestSupport::runLoopUntil;

} // namespace

class BenchIdle : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void initTestCase();
    void cleanupTestCase();
    void inputWaitDuringRound_data();
    void inputWaitDuringRound();
    void roundCost_data();
    void roundCost();
    void bareSendCost();
    void idleCostsNothing();

private:
    int deliveredTotal() const;

    std::unique_ptr<QWidget> m_shown;
    std::unique_ptr<QWidget> m_hidden;
    std::vector<BenchWidget*> m_widgets;
    std::vector<std::unique_ptr<BenchCommand>> m_commands;
    KAppIdleSvr* m_svr = nullptr;
};

int BenchIdle::deliveredTotal() const
{
    int n = 0;
    for (BenchWidget* w : m_widgets)
        n += w->events;
    return n;
}

void BenchIdle::initTestCase()
{
    m_svr = KApplication::instance()->idleSvr();
    m_shown = std::make_unique<QWidget>();
    m_hidden = std::make_unique<QWidget>();
    for (int i = 0; i < kWidgets; ++i) {
        m_commands.push_back(std::make_unique<BenchCommand>());
        QWidget* parent = (i % 2) ? m_hidden.get() : m_shown.get();
        m_widgets.push_back(new BenchWidget(m_commands.back().get(), parent));
    }
    m_shown->show();
    QVERIFY(QTest::qWaitForWindowExposed(m_shown.get()));
    for (BenchWidget* w : m_widgets)
        m_svr->registerItem(w, true);
    std::printf("platform %s, dispatcher %s, pending-event probe: %s\n",
                qPrintable(QGuiApplication::platformName()),
                QAbstractEventDispatcher::instance()->metaObject()->className(),
                m_svr->canProbePendingEvents() ? "yes" : "no (zero-timer slices)");
}

void BenchIdle::cleanupTestCase()
{
    m_svr->stop();
    m_widgets.clear();
    m_shown.reset();
    m_hidden.reset();
}

void BenchIdle::inputWaitDuringRound_data()
{
    QTest::addColumn<int>("updateCost");
    QTest::newRow("update 0 us") << 0;
    QTest::newRow("update 5 us") << 5;
    QTest::newRow("update 20 us") << 20;
}

void BenchIdle::inputWaitDuringRound()
{
    QFETCH(int, updateCost);
    BenchCommand::s_updateCost = updateCost;

    // Let the previous round end, then one user action: a key press on the window.
    m_svr->start();
    QVERIFY(runLoopUntil([&] { return m_svr->waitingCount() == 0; }, 60000));
    const int before = deliveredTotal();
    QTest::keyClick(m_shown.get(), Qt::Key_A);
    QVERIFY(m_svr->waitingCount() == kWidgets);

    // Input keeps arriving from another thread, every 2 ms, while the round runs.
    Probe probe;
    probe.clock.start();
    std::atomic<bool> stop{false};
    std::unique_ptr<QThread> feeder(QThread::create([&] {
        while (!stop.load()) {
            QCoreApplication::postEvent(&probe, new ProbeEvent(probe.clock.nsecsElapsed() / 1000));
            QThread::usleep(2000);
        }
    }));
    QElapsedTimer round;
    round.start();
    feeder->start();
    QVERIFY(runLoopUntil([&] { return m_svr->waitingCount() == 0; }, 120000));
    const double roundMs = round.nsecsElapsed() / 1e6;
    stop = true;
    feeder->wait();
    QCoreApplication::sendPostedEvents(&probe);
    m_svr->stop();

    QCOMPARE(deliveredTotal() - before, kWidgets / 2); // the hidden half costs no event
    std::sort(probe.waits.begin(), probe.waits.end());
    const qint64 worst = probe.waits.empty() ? 0 : probe.waits.back();
    const qint64 median = probe.waits.empty() ? 0 : probe.waits.at(probe.waits.size() / 2);
    std::printf("(a) update %2d us: round %.1f ms wall, %zu input events during it, wait median "
                "%.2f ms, worst %.2f ms\n",
                updateCost, roundMs, probe.waits.size(), median / 1000.0, worst / 1000.0);
    QVERIFY2(worst <= 15000 + 2000, "input waited longer than the slice bound");
}

void BenchIdle::roundCost_data()
{
    QTest::addColumn<int>("updateCost");
    QTest::newRow("update 0 us") << 0;
    QTest::newRow("update 5 us") << 5;
}

void BenchIdle::roundCost()
{
    // The service's own work for a whole round, stepped by hand: 10,000 items, 5,000 events.
    QFETCH(int, updateCost);
    BenchCommand::s_updateCost = updateCost;
    QBENCHMARK {
        m_svr->resetIdle(nullptr);
        while (m_svr->waitingCount() > 0)
            m_svr->doIdle();
    }
}

void BenchIdle::bareSendCost()
{
    // The floor: the same events sent straight to the visible half, no queue, no checks.
    BenchCommand::s_updateCost = 0;
    QBENCHMARK {
        for (int i = 0; i < kWidgets; i += 2) {
            KIdleEvent e(0);
            QCoreApplication::sendEvent(m_widgets[i], &e);
        }
    }
}

void BenchIdle::idleCostsNothing()
{
    BenchCommand::s_updateCost = 0;
    m_svr->start();
    QTest::keyClick(m_shown.get(), Qt::Key_B);
    QVERIFY(runLoopUntil([&] { return m_svr->waitingCount() == 0; }, 60000));

    // One second of an idle event loop with the service running.
    int wakeUps = 0;
    const QMetaObject::Connection c = connect(QAbstractEventDispatcher::instance(),
                                              &QAbstractEventDispatcher::awake, this,
                                              [&] { ++wakeUps; });
    const int before = deliveredTotal();
    const double cpuBefore = processCpuMs();
    QEventLoop loop;
    QTimer::singleShot(1000, &loop, &QEventLoop::quit);
    loop.exec();
    const double cpu = processCpuMs() - cpuBefore;
    disconnect(c);
    m_svr->stop();
    std::printf("(c) idle second: %.2f ms process CPU, %d loop wake-ups, %d idle events\n", cpu,
                wakeUps, deliveredTotal() - before);
    QCOMPARE(deliveredTotal(), before);
    QVERIFY(wakeUps <= 3);
}

int main(int argc, char** argv)
{
    if (qEnvironmentVariableIsEmpty("QT_QPA_PLATFORM"))
        qputenv("QT_QPA_PLATFORM", "offscreen");
    KApplication app(argc, argv);
    BenchIdle bench;
    return QTest::qExec(&bench, argc, argv);
}

#include "bench_idle.moc"
