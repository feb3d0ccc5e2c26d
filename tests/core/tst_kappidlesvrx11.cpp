// The idle service's reset filter on a real X server: the raw xcb events of the table, and
// real events that the server generates for pointer motion and window mapping.
#include <ktestsupport.h>

#include <QCursor>
#include <QScreen>
#include <climits>
#include <cstring>
#include <dlfcn.h>

#include <kappidlesvr.h>

#include "kidletesthelper.h"

#include <xcb/xcb.h>
#include <xcb/xproto.h>
#include <X11/extensions/XI2.h>

namespace {

// libX11 is already loaded by the platform plugin; the test needs one query of it.
int xinputOpcode()
{
    auto* x11 = qApp->nativeInterface<QNativeInterface::QX11Application>();
    void* display = x11 ? static_cast<void*>(x11->display()) : nullptr;
    using QueryExtension = int (*)(void*, const char*, int*, int*, int*);
    auto query = reinterpret_cast<QueryExtension>(dlsym(RTLD_DEFAULT, "XQueryExtension"));
    int opcode = -1, event = 0, error = 0;
    if (!display || !query || !query(display, "XInputExtension", &opcode, &event, &error))
        return -1;
    return opcode;
}

// An event as xcb hands it over, 64 bytes, zero filled.
struct RawEvent
{
    alignas(8) unsigned char bytes[64] = {};

    static RawEvent core(int type, bool sent = false)
    {
        RawEvent e;
        e.bytes[0] = static_cast<unsigned char>(type | (sent ? 0x80 : 0));
        return e;
    }
    static RawEvent coreMotion(int x, int y)
    {
        RawEvent e = core(XCB_MOTION_NOTIFY);
        reinterpret_cast<xcb_motion_notify_event_t*>(e.bytes)->root_x = static_cast<int16_t>(x);
        reinterpret_cast<xcb_motion_notify_event_t*>(e.bytes)->root_y = static_cast<int16_t>(y);
        return e;
    }
    static RawEvent generic(int extension, int eventType, int x = 0, int y = 0)
    {
        RawEvent e = core(XCB_GE_GENERIC);
        auto* ge = reinterpret_cast<xcb_ge_generic_event_t*>(e.bytes);
        ge->extension = static_cast<uint8_t>(extension);
        ge->event_type = static_cast<uint16_t>(eventType);
        // xcb's layout of an XInput 2 device event: root_x and root_y (16.16) follow
        // full_sequence at offset 32.
        const int32_t fx = x * 65536, fy = y * 65536;
        std::memcpy(e.bytes + 36, &fx, 4);
        std::memcpy(e.bytes + 40, &fy, 4);
        return e;
    }
};

enum Effect { Nothing, Delayed, Immediate };

} // namespace

Q_DECLARE_METATYPE(RawEvent)

class tst_KAppIdleSvrX11 : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void initTestCase();
    void resetTable_data();
    void resetTable();
    void motionCoordinates();
    void realEvents();

private:
    // Leaves the application's service with one item through its round, just after a restart.
    void prepare();

    KAppIdleSvr* m_svr = nullptr;
    IdleObject m_item{QStringLiteral("item")};
    int m_opcode = -1;
};

void tst_KAppIdleSvrX11::initTestCase()
{
    QCOMPARE(QGuiApplication::platformName(), QStringLiteral("xcb"));
    m_svr = KApplication::instance()->idleSvr();
    QVERIFY(m_svr);
    m_opcode = xinputOpcode();
    QVERIFY2(m_opcode > 0, "the X server has no XInput extension");
    m_svr->registerItem(&m_item, false);
}

void tst_KAppIdleSvrX11::prepare()
{
    m_svr->resetIdle(nullptr);
    drainIdle(*m_svr);
    QCOMPARE(m_svr->doneCount(), 1);
}

void tst_KAppIdleSvrX11::resetTable_data()
{
    QTest::addColumn<RawEvent>("event");
    QTest::addColumn<int>("effect");
    const int xi = xinputOpcode();
    // One row per branch of the table. Paint and property traffic, errors and unknown
    // numbers leave the round alone; motion and resizes restart at most every 100 ms;
    // everything else restarts at once. The "sent" bit is no difference.
    const auto row = [](const char* name, const RawEvent& e, Effect effect) { QTest::newRow(name) << e << int(effect); };
    row("Expose", RawEvent::core(XCB_EXPOSE), Nothing);
    row("Expose sent", RawEvent::core(XCB_EXPOSE, true), Nothing);
    row("error", RawEvent::core(0), Nothing);
    row("MotionNotify", RawEvent::coreMotion(11, 12), Delayed);
    row("ConfigureNotify", RawEvent::core(XCB_CONFIGURE_NOTIFY), Delayed);
    row("KeyPress", RawEvent::core(XCB_KEY_PRESS), Immediate);
    row("ClientMessage sent", RawEvent::core(XCB_CLIENT_MESSAGE, true), Immediate);
    // XInput 2: device events as their core counterparts, the rest is bookkeeping.
    row("XI Motion", RawEvent::generic(xi, XI_Motion, 21, 22), Delayed);
    row("XI ButtonPress", RawEvent::generic(xi, XI_ButtonPress), Immediate);
    row("XI TouchUpdate", RawEvent::generic(xi, XI_TouchUpdate), Delayed);
    row("XI RawMotion", RawEvent::generic(xi, XI_RawMotion), Nothing);
    row("other extension", RawEvent::generic(xi + 1, XI_ButtonPress), Nothing);
}

void tst_KAppIdleSvrX11::resetTable()
{
    QFETCH(RawEvent, event);
    QFETCH(int, effect);
    prepare();
    QVERIFY(!KAppIdleSvr::idleResetEventFilter(event.bytes)); // never swallows the event
    QCOMPARE(m_svr->isRestartPending(), effect == Delayed);
    QCOMPARE(m_svr->waitingCount(), effect == Immediate ? 1 : 0);
}

void tst_KAppIdleSvrX11::motionCoordinates()
{
    // Motion to the same place is no motion, whether core or XInput 2.
    prepare();
    RawEvent core = RawEvent::coreMotion(300, 301), xi = RawEvent::generic(m_opcode, XI_Motion, 300, 301),
             moved = RawEvent::generic(m_opcode, XI_Motion, 300, 302);
    KAppIdleSvr::idleResetEventFilter(core.bytes);
    QVERIFY(m_svr->isRestartPending());
    prepare();
    KAppIdleSvr::idleResetEventFilter(core.bytes);
    KAppIdleSvr::idleResetEventFilter(xi.bytes);
    QVERIFY(!m_svr->isRestartPending());
    QCOMPARE(m_svr->waitingCount(), 0);
    KAppIdleSvr::idleResetEventFilter(moved.bytes);
    QVERIFY(m_svr->isRestartPending());

    // The pending restart comes by the timer, not at once.
    QCOMPARE(m_svr->waitingCount(), 0);
    QTRY_COMPARE(m_svr->waitingCount(), 1);
    QVERIFY(!m_svr->isRestartPending());
}

void tst_KAppIdleSvrX11::realEvents()
{
    m_svr->unregisterItem(&m_item);
    drainIdle(*m_svr);
    QWidget window;
    window.setGeometry(100, 100, 300, 200);
    QList<IdleWidget*> widgets;
    for (int i = 0; i < 4; ++i)
        widgets.append(new IdleWidget(QStringLiteral("w%1").arg(i), &window));
    window.show();
    QVERIFY(QTest::qWaitForWindowExposed(&window));
    for (IdleWidget* w : widgets)
        m_svr->registerItem(w, true);
    // A new round has reached every widget once the fewest events any widget saw grows.
    const auto fewest = [&] {
        int n = INT_MAX;
        for (IdleWidget* w : widgets)
            n = qMin(n, int(w->log.passes.size()));
        return n;
    };
    const auto roundAfter = [&](int before) {
        return runLoopUntil([&] { return fewest() > before && m_svr->waitingCount() == 0; });
    };

    m_svr->start();
    QVERIFY(roundAfter(0));
    // Once through, the loop sleeps: no timer wakes it and no round runs.
    runLoopFor(100);
    const int settled = fewest();
    QVERIFY(wakeUpsDuring(200) <= 3);
    QCOMPARE(fewest(), settled);

    // The server moves the pointer into the window: the real XInput 2 pointer events (enter,
    // motion) restart the round.
    QCursor::setPos(window.screen(), window.mapToGlobal(QPoint(150, 100)));
    QVERIFY(roundAfter(settled));
    m_svr->stop();
}

NORVIK_X11_TEST_MAIN(tst_KAppIdleSvrX11)
#include "tst_kappidlesvrx11.moc"
