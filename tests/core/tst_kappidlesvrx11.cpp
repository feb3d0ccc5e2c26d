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
        auto* m = reinterpret_cast<xcb_motion_notify_event_t*>(e.bytes);
        m->root_x = static_cast<int16_t>(x);
        m->root_y = static_cast<int16_t>(y);
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
    // Paint and property traffic leave the round alone.
    QTest::newRow("Expose") << RawEvent::core(XCB_EXPOSE) << int(Nothing);
    QTest::newRow("GraphicsExpose") << RawEvent::core(XCB_GRAPHICS_EXPOSURE) << int(Nothing);
    QTest::newRow("NoExpose") << RawEvent::core(XCB_NO_EXPOSURE) << int(Nothing);
    QTest::newRow("PropertyNotify") << RawEvent::core(XCB_PROPERTY_NOTIFY) << int(Nothing);
    QTest::newRow("99") << RawEvent::core(99) << int(Nothing);
    QTest::newRow("error") << RawEvent::core(0) << int(Nothing);
    // Motion and resizes restart at most every 100 ms.
    QTest::newRow("MotionNotify") << RawEvent::coreMotion(11, 12) << int(Delayed);
    QTest::newRow("ConfigureNotify") << RawEvent::core(XCB_CONFIGURE_NOTIFY) << int(Delayed);
    // Everything else restarts at once, sent events included.
    QTest::newRow("KeyPress") << RawEvent::core(XCB_KEY_PRESS) << int(Immediate);
    QTest::newRow("ButtonRelease") << RawEvent::core(XCB_BUTTON_RELEASE) << int(Immediate);
    QTest::newRow("MapNotify") << RawEvent::core(XCB_MAP_NOTIFY) << int(Immediate);
    QTest::newRow("ClientMessage sent") << RawEvent::core(XCB_CLIENT_MESSAGE, true) << int(Immediate);
    QTest::newRow("Expose sent") << RawEvent::core(XCB_EXPOSE, true) << int(Nothing);
    // XInput 2: device events as their core counterparts, the rest is bookkeeping.
    QTest::newRow("XI Motion") << RawEvent::generic(xi, XI_Motion, 21, 22) << int(Delayed);
    QTest::newRow("XI ButtonPress") << RawEvent::generic(xi, XI_ButtonPress) << int(Immediate);
    QTest::newRow("XI KeyPress") << RawEvent::generic(xi, XI_KeyPress) << int(Immediate);
    QTest::newRow("XI Enter") << RawEvent::generic(xi, XI_Enter) << int(Immediate);
    QTest::newRow("XI TouchBegin") << RawEvent::generic(xi, XI_TouchBegin) << int(Immediate);
    QTest::newRow("XI TouchUpdate") << RawEvent::generic(xi, XI_TouchUpdate) << int(Delayed);
    QTest::newRow("XI RawMotion") << RawEvent::generic(xi, XI_RawMotion) << int(Nothing);
    QTest::newRow("XI PropertyEvent") << RawEvent::generic(xi, XI_PropertyEvent) << int(Nothing);
    QTest::newRow("XI HierarchyChanged") << RawEvent::generic(xi, XI_HierarchyChanged) << int(Nothing);
    QTest::newRow("other extension") << RawEvent::generic(xi + 1, XI_ButtonPress) << int(Nothing);
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
    const int wakeUps = wakeUpsDuring(200);
    QVERIFY2(wakeUps <= 3, qPrintable(QString::number(wakeUps)));
    QCOMPARE(fewest(), settled);

    // The server moves the pointer into the window: the real XInput 2 pointer events (enter,
    // motion) restart the round.
    QCursor::setPos(window.screen(), window.mapToGlobal(QPoint(150, 100)));
    QVERIFY(roundAfter(settled));

    // Mapping another window is a real MapNotify: an immediate restart.
    runLoopFor(150);
    const int beforeMap = fewest();
    QWidget other;
    other.setGeometry(500, 100, 50, 50);
    other.show();
    QVERIFY(roundAfter(beforeMap));
    m_svr->stop();
}

NORVIK_X11_TEST_MAIN(tst_KAppIdleSvrX11)
#include "tst_kappidlesvrx11.moc"
