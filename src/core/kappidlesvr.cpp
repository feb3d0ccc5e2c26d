#include "kappidlesvr.h"

#include <QAbstractEventDispatcher>
#include <QCoreApplication>
#include <QGuiApplication>
#include <QMouseEvent>
#include <QTabletEvent>
#include <QWidget>

#include <dlfcn.h>

#include <xcb/xcb.h>
#include <xcb/xproto.h>
#include <X11/extensions/XI2.h>

const IDLE_DELAYPLAN KAppIdleSvr::s_immediatePlan = {0, 0};
const IDLE_DELAYPLAN KAppIdleSvr::s_delayedPlan = {100, 15};
KAppIdleSvr* KAppIdleSvr::s_instance = nullptr;

namespace {

// The slice bounds: at least this much work once the loop has gone idle, then a poll of the
// event queue at every further step of this length; the timer path stops after its own bound.
constexpr qint64 kStartSliceNs = 10 * 1000 * 1000;
constexpr qint64 kPollSliceNs = 5 * 1000 * 1000;
constexpr qint64 kTimerSliceNs = 15 * 1000 * 1000;

// Pointer positions are kept as 16.16 fixed point, the unit of XInput 2 events, so that core
// events, XInput 2 events and Qt's global positions compare alike.
constexpr qint32 kFixedOne = 65536;

// The layout of an XInput 2 device event as xcb hands it to the native filters (Qt moves the
// fields only later, for its own handling): xcb inserts full_sequence after the first 32 bytes.
struct XiDeviceEventHead
{
    uint8_t response_type;
    uint8_t extension;
    uint16_t sequence;
    uint32_t length;
    uint16_t event_type;
    uint16_t deviceid;
    uint32_t time;
    uint32_t detail;
    uint32_t root;
    uint32_t event;
    uint32_t child;
    uint32_t full_sequence;
    int32_t root_x; // 16.16 fixed point
    int32_t root_y;
};

// The glib main context answers "is anything pending" for the glib event dispatcher, which is
// the one Debian's Qt runs. glib is already loaded in that case, so the two entry points are
// looked up at run time; nothing links against glib.
using GMainContextDefaultFn = void* (*)();
using GMainContextPendingFn = int (*)(void*);
GMainContextDefaultFn s_gMainContextDefault = nullptr;
GMainContextPendingFn s_gMainContextPending = nullptr;

int glibEventsPending()
{
    return s_gMainContextPending(s_gMainContextDefault());
}

bool resolveGlibProbe(const QAbstractEventDispatcher* dispatcher)
{
    if (!dispatcher || !dispatcher->inherits("QEventDispatcherGlib"))
        return false;
    if (!s_gMainContextPending) {
        s_gMainContextDefault = reinterpret_cast<GMainContextDefaultFn>(
            dlsym(RTLD_DEFAULT, "g_main_context_default"));
        s_gMainContextPending = reinterpret_cast<GMainContextPendingFn>(
            dlsym(RTLD_DEFAULT, "g_main_context_pending"));
    }
    return s_gMainContextDefault && s_gMainContextPending;
}

// Defined at the end of the file, behind the Xlib header.
int queryXInputOpcode();

qint32 toFixed(qreal v)
{
    return static_cast<qint32>(qRound64(v * kFixedOne));
}

} // namespace

// --- the queues ---

void KAppIdleSvr::tagQueue::append(tagItem* item)
{
    item->next = nullptr;
    if (tail)
        tail->next = item;
    else
        head = item;
    tail = item;
    ++count;
}

KAppIdleSvr::tagItem* KAppIdleSvr::tagQueue::takeFirst()
{
    tagItem* item = head;
    if (!item)
        return nullptr;
    head = item->next;
    if (!head)
        tail = nullptr;
    item->next = nullptr;
    --count;
    return item;
}

void KAppIdleSvr::tagQueue::appendAll(tagQueue& other)
{
    if (other.isEmpty())
        return;
    if (tail)
        tail->next = other.head;
    else
        head = other.head;
    tail = other.tail;
    count += other.count;
    other.head = other.tail = nullptr;
    other.count = 0;
}

void KAppIdleSvr::tagQueue::clear()
{
    while (tagItem* item = takeFirst())
        delete item;
}

bool KAppIdleSvr::NativeFilter::nativeEventFilter(const QByteArray& eventType, void* message,
                                                  qintptr*)
{
    if (message && eventType == "xcb_generic_event_t")
        m_svr->_onXcbEvent(message);
    return false;
}

// --- KAppIdleSvr ---

KAppIdleSvr::KAppIdleSvr(QObject* parent)
    : QObject(parent)
    , m_nativeFilter(this)
{
    if (!s_instance)
        s_instance = this;

    m_delayTimer.setSingleShot(true);
    connect(&m_delayTimer, &QTimer::timeout, this, &KAppIdleSvr::delayIdleFired);
    m_sliceTimer.setSingleShot(true);
    m_sliceTimer.setInterval(0);
    connect(&m_sliceTimer, &QTimer::timeout, this, &KAppIdleSvr::_onSliceTimer);

    m_dispatcher = QAbstractEventDispatcher::instance();
    if (m_dispatcher) {
        connect(m_dispatcher.data(), &QAbstractEventDispatcher::aboutToBlock, this,
                &KAppIdleSvr::loopAboutToBlock);
        if (resolveGlibProbe(m_dispatcher))
            m_probe = &glibEventsPending;
    }

    // On X the raw connection shows the user's actions exactly once; on other platforms
    // (offscreen in tests) the same table runs on Qt's events.
    if (QGuiApplication::platformName() == QLatin1String("xcb")) {
        m_xinputOpcode = queryXInputOpcode();
        if (m_dispatcher)
            m_dispatcher->installNativeEventFilter(&m_nativeFilter);
    } else if (QCoreApplication::instance()) {
        QCoreApplication::instance()->installEventFilter(this);
    }
}

KAppIdleSvr::~KAppIdleSvr()
{
    if (m_dispatcher)
        m_dispatcher->removeNativeEventFilter(&m_nativeFilter);
    if (s_instance == this)
        s_instance = nullptr;
    m_waiting.clear();
    m_done.clear();
}

void KAppIdleSvr::start()
{
    m_running = true;
}

void KAppIdleSvr::stop()
{
    m_running = false;
    m_sliceTimer.stop();
}

void KAppIdleSvr::registerItem(QObject* object, bool visibleOnly)
{
    if (!object)
        return;
    unregisterItem(object);
    auto* item = new tagItem;
    item->object = object;
    item->visibleOnly = visibleOnly;
    item->pass = 0;
    item->key = object;
    m_waiting.append(item);
    m_items.insert(object, item);
}

void KAppIdleSvr::unregisterItem(QObject* object)
{
    const auto it = m_items.constFind(object);
    if (it == m_items.constEnd())
        return;
    // The item stays in its queue as an empty shell, which the next step drops without
    // spending itself on it. Unlinking it here would mean a walk over both queues, and every
    // widget unregisters in its destructor.
    tagItem* item = it.value();
    item->object = nullptr;
    item->key = nullptr;
    m_items.erase(it);
}

bool KAppIdleSvr::isRegistered(QObject* object) const
{
    const tagItem* item = m_items.value(object);
    return item && item->object == object;
}

void KAppIdleSvr::_dropItem(tagItem* item)
{
    if (item->key) {
        const auto it = m_items.find(item->key);
        if (it != m_items.end() && it.value() == item)
            m_items.erase(it);
    }
    delete item;
}

void KAppIdleSvr::resetIdle(const IDLE_DELAYPLAN* plan)
{
    const IDLE_DELAYPLAN& p = plan ? *plan : s_immediatePlan;
    if (p.threshold < 1 || p.interval < 1) {
        _restartNow();
        return;
    }
    if (m_lastReset.isValid() && p.threshold > m_lastReset.elapsed()) {
        m_delayTimer.start(p.interval);
        return;
    }
    _restartNow();
}

void KAppIdleSvr::_restartNow()
{
    // An immediate restart covers whatever a pending delayed one would have done.
    m_delayTimer.stop();
    m_waiting.appendAll(m_done);
    m_generation += m_maxPass;
    m_maxPass = 0;
    m_lastReset.start();
}

void KAppIdleSvr::delayIdleFired()
{
    resetIdle(&s_immediatePlan);
}

bool KAppIdleSvr::hasEventStopIdle() const
{
    return m_probe && m_probe() != 0;
}

bool KAppIdleSvr::needIdleEvent(tagItem& item) const
{
    if (!item.visibleOnly)
        return true;
    QObject* object = item.object;
    if (!object)
        return false;
    if (object->isWidgetType()) {
        const QWidget* w = static_cast<QWidget*>(object);
        if (w->windowFlags() & Qt::Window)
            return true;
        // The parent decides: a widget that is hidden itself may still have to learn from
        // its command that it is to be shown again.
        const QWidget* parent = w->parentWidget();
        return parent && parent->isVisible();
    }
    for (QObject* p = object->parent(); p; p = p->parent()) {
        if (p->isWidgetType())
            return static_cast<QWidget*>(p)->isVisible();
    }
    return false;
}

void KAppIdleSvr::doIdle()
{
    // Shells of unregistered objects cost no step: they are dropped here, so that the step
    // reaches the next live item. An item whose object died unnoticed still takes its step.
    tagItem* item = m_waiting.head;
    while (item && !item->key) {
        m_waiting.takeFirst();
        _dropItem(item);
        item = m_waiting.head;
    }
    if (!item)
        return;
    const QPointer<QObject> guard = item->object;
    if (!guard) {
        m_waiting.takeFirst();
        _dropItem(item);
        return;
    }

    const int pass = item->pass >= m_generation ? item->pass - m_generation : 0;
    bool wantsMore = false;
    if (needIdleEvent(*item)) {
        KIdleEvent event(pass);
        QCoreApplication::sendEvent(guard.data(), &event);
        wantsMore = !event.finished();
    }

    // The handler may have registered, unregistered or reset, or run a nested loop that
    // stepped on: only an item of the same object still at the head is ours to move.
    item = m_waiting.head;
    if (!item || !guard || item->object != guard)
        return;
    m_waiting.takeFirst();
    if (wantsMore) {
        item->pass = pass + m_generation + 1;
        m_maxPass = qMax(m_maxPass, pass + 1);
        m_waiting.append(item);
    } else {
        m_done.append(item);
    }
}

void KAppIdleSvr::doIdleLoop()
{
    if (hasEventStopIdle())
        return;
    QElapsedTimer clock;
    clock.start();
    qint64 deadline = kStartSliceNs;
    while (m_running && !m_waiting.isEmpty()) {
        doIdle();
        if (clock.nsecsElapsed() <= deadline)
            continue;
        if (!m_probe) {
            // The dispatcher cannot tell whether input waits: hand the loop back after each
            // slice and carry on from a zero-time timer once it has run.
            if (m_running && !m_waiting.isEmpty())
                m_sliceTimer.start();
            return;
        }
        if (hasEventStopIdle())
            return;
        deadline += kPollSliceNs;
    }
}

void KAppIdleSvr::loopAboutToBlock()
{
    if (!m_running || m_waiting.isEmpty())
        return;
    if (m_probe)
        doIdleLoop();
    else if (!m_sliceTimer.isActive())
        m_sliceTimer.start(); // the slice runs from the timer, after the queued input
}

void KAppIdleSvr::_onSliceTimer()
{
    doIdleLoop();
}

void KAppIdleSvr::timerIdle()
{
    QElapsedTimer clock;
    clock.start();
    if (!m_waiting.isEmpty()) {
        do {
            doIdle();
        } while (m_running && !m_waiting.isEmpty() && clock.nsecsElapsed() < kTimerSliceNs);
    }
    if (m_waiting.isEmpty())
        resetIdle(&s_immediatePlan);
}

// --- the reset filter ---

bool KAppIdleSvr::idleResetEventFilter(void* message)
{
    if (s_instance && message)
        s_instance->_onXcbEvent(message);
    return false;
}

void KAppIdleSvr::_onMotion(qint32 x, qint32 y)
{
    if (m_hasLastMotion && x == m_lastMotionX && y == m_lastMotionY)
        return;
    m_hasLastMotion = true;
    m_lastMotionX = x;
    m_lastMotionY = y;
    resetIdle(&s_delayedPlan);
}

void KAppIdleSvr::_onXcbEvent(const void* message)
{
    const auto* event = static_cast<const xcb_generic_event_t*>(message);
    switch (event->response_type & ~0x80) {
    case 0:                       // an error, not an action of the user
    case XCB_EXPOSE:              // paint traffic
    case XCB_GRAPHICS_EXPOSURE:
    case XCB_NO_EXPOSURE:
    case XCB_PROPERTY_NOTIFY:     // window-manager bookkeeping
    case 99:
        return;
    case XCB_MOTION_NOTIFY: {
        const auto* motion = static_cast<const xcb_motion_notify_event_t*>(message);
        _onMotion(qint32(motion->root_x) * kFixedOne, qint32(motion->root_y) * kFixedOne);
        return;
    }
    case XCB_CONFIGURE_NOTIFY:
        resetIdle(&s_delayedPlan);
        return;
    case XCB_GE_GENERIC:
        break;
    default:
        resetIdle(&s_immediatePlan);
        return;
    }

    // Generic events: pointer and touch input arrives through XInput 2. Its device events
    // 2 to 10 carry the numbers of their core counterparts (KeyPress .. FocusOut) and are
    // treated alike. Raw events duplicate the device events, and device, hierarchy and
    // property notifications are bookkeeping; other extensions' generic events are paint
    // or presentation traffic.
    const auto* ge = static_cast<const xcb_ge_generic_event_t*>(message);
    if (m_xinputOpcode < 0 || ge->extension != m_xinputOpcode)
        return;
    const auto* device = static_cast<const XiDeviceEventHead*>(message);
    switch (ge->event_type) {
    case XI_Motion:
        _onMotion(device->root_x, device->root_y);
        return;
    case XI_KeyPress:
    case XI_KeyRelease:
    case XI_ButtonPress:
    case XI_ButtonRelease:
    case XI_Enter:
    case XI_Leave:
    case XI_FocusIn:
    case XI_FocusOut:
    case XI_TouchBegin:
    case XI_TouchEnd:
    case XI_GesturePinchBegin:
    case XI_GesturePinchEnd:
    case XI_GestureSwipeBegin:
    case XI_GestureSwipeEnd:
        resetIdle(&s_immediatePlan);
        return;
    case XI_TouchUpdate:
    case XI_GesturePinchUpdate:
    case XI_GestureSwipeUpdate:
        resetIdle(&s_delayedPlan);
        return;
    default:
        return;
    }
}

bool KAppIdleSvr::eventFilter(QObject* watched, QEvent* event)
{
    // The same table as the X filter, in terms of Qt's events, for platforms without an X
    // connection. Only what the window system delivers counts (spontaneous events); shows,
    // hides and activation of windows stand for the X map and focus notifications.
    const bool isWindow = watched->isWidgetType() && static_cast<QWidget*>(watched)->isWindow();
    switch (event->type()) {
    case QEvent::MouseMove:
    case QEvent::TabletMove:
        if (event->spontaneous()) {
            const QPointF global = static_cast<QSinglePointEvent*>(event)->globalPosition();
            _onMotion(toFixed(global.x()), toFixed(global.y()));
        }
        break;
    case QEvent::TouchUpdate:
        if (event->spontaneous())
            resetIdle(&s_delayedPlan);
        break;
    case QEvent::Resize:
    case QEvent::Move:
        if (isWindow && event->spontaneous())
            resetIdle(&s_delayedPlan);
        break;
    case QEvent::MouseButtonPress:
    case QEvent::MouseButtonRelease:
    case QEvent::MouseButtonDblClick:
    case QEvent::KeyPress:
    case QEvent::KeyRelease:
    case QEvent::Wheel:
    case QEvent::TouchBegin:
    case QEvent::TouchEnd:
    case QEvent::TouchCancel:
    case QEvent::TabletPress:
    case QEvent::TabletRelease:
    case QEvent::InputMethod:
    case QEvent::Enter:
    case QEvent::Leave:
        if (event->spontaneous())
            resetIdle(&s_immediatePlan);
        break;
    case QEvent::Show:
    case QEvent::Hide:
    case QEvent::WindowActivate:
    case QEvent::WindowDeactivate:
        if (isWindow)
            resetIdle(&s_immediatePlan);
        break;
    default:
        break;
    }
    return false;
}

// Xlib comes last: it defines macros (None, Bool, KeyPress) that clash with Qt names.
#include <X11/Xlib.h>

namespace {
int queryXInputOpcode()
{
    auto* x11 = qApp ? qApp->nativeInterface<QNativeInterface::QX11Application>() : nullptr;
    Display* display = x11 ? x11->display() : nullptr;
    if (!display)
        return -1;
    int opcode = -1, firstEvent = 0, firstError = 0;
    if (!XQueryExtension(display, "XInputExtension", &opcode, &firstEvent, &firstError))
        return -1;
    return opcode;
}
} // namespace
