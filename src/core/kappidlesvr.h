#ifndef KAPPIDLESVR_H
#define KAPPIDLESVR_H

#include <QAbstractNativeEventFilter>
#include <QElapsedTimer>
#include <QHash>
#include <QObject>
#include <QPointer>
#include <QTimer>

#include <kidleevent.h>
#include <norvikofficeui_export.h>

class QAbstractEventDispatcher;

/// When a restart of the idle round may happen: at most every threshold milliseconds,
/// otherwise retried after interval milliseconds. Both below 1 mean "restart now".
struct IDLE_DELAYPLAN
{
    int threshold;
    int interval;
};

/**
 * The idle service. Objects that show command state register here; whenever the event loop
 * has nothing else to do, each gets a KIdleEvent, a few at a time and in round-robin order,
 * and pulls its state from its command. One round runs over all registered objects after
 * each user action and then stops, so an idle application costs nothing.
 *
 * The work runs in slices: at least 10 ms once the loop has gone idle, after that the event
 * queue is polled every 5 ms and the slice ends as soon as something is pending. Where the
 * event dispatcher cannot be asked (the plain UNIX dispatcher), the service yields to the
 * loop after every 10 ms slice and continues from a zero-time timer.
 *
 * User input restarts the round: key presses and clicks at once, pointer motion and window
 * resizes at most every 100 ms. Paint traffic does not restart it. Input is watched on the
 * raw X connection on the xcb platform and through an application event filter elsewhere.
 *
 * The application owns one instance (KApplication::idleSvr()); KApplication::exec() starts
 * and stops it. GUI thread only.
 */
class NORVIKOFFICEUI_EXPORT KAppIdleSvr : public QObject
{
    Q_OBJECT
public:
    /// One registered object. Items are owned by the service.
    struct tagItem
    {
        QPointer<QObject> object;
        bool visibleOnly = true;
        int pass = 0;
        tagItem* next = nullptr;
        QObject* key = nullptr; // the registered address; null once unregistered
    };

    static const IDLE_DELAYPLAN s_immediatePlan; ///< 0, 0: restart now
    static const IDLE_DELAYPLAN s_delayedPlan;   ///< 100, 15: at most every 100 ms, retry in 15

    explicit KAppIdleSvr(QObject* parent);
    ~KAppIdleSvr() override;

    void start();
    void stop();
    bool isRunning() const { return m_running; }

    /**
     * Unregisters the object, then appends it to the due queue with pass 0. With visibleOnly
     * true a widget is only asked while its parent is visible (a window: always). A null
     * object is ignored.
     */
    void registerItem(QObject* object, bool visibleOnly);
    /// Removes the object from both queues; unknown objects are ignored.
    void unregisterItem(QObject* object);
    bool isRegistered(QObject* object) const;

    /// Restarts the round according to plan; null stands for the immediate plan.
    void resetIdle(const IDLE_DELAYPLAN* plan);

    /// True when the event loop has something to do (input, posted events, due timers).
    /// Always false where the dispatcher cannot be asked; see canProbePendingEvents().
    bool hasEventStopIdle() const;
    /// True when hasEventStopIdle() can really see the event queue (glib dispatcher).
    bool canProbePendingEvents() const { return m_probe != nullptr; }

    bool needIdleEvent(tagItem& item) const;
    /// One step on the head of the due queue.
    void doIdle();
    /// The slice that runs when the event loop is about to block.
    void doIdleLoop();

    /**
     * The reset filter on one raw xcb event (xcb_generic_event_t*) of the application's X
     * connection. Always false: the event goes on to Qt. Acts on the application's service.
     */
    static bool idleResetEventFilter(void* message);

    // Introspection, for diagnostics and tests. Counts include items whose object has died
    // or been unregistered until the round reaches them.
    int waitingCount() const { return m_waiting.count; }
    int doneCount() const { return m_done.count; }
    int generation() const { return m_generation; }
    int maxPass() const { return m_maxPass; }
    bool isRestartPending() const { return m_delayTimer.isActive(); }

public Q_SLOTS:
    void delayIdleFired();
    void loopAboutToBlock();
    /// Runs up to 15 ms of steps; connect it to a timer of your own (idleTimer()).
    void timerIdle();

public:
    /// A spare timer for timerIdle(); the service never starts it itself.
    QTimer* idleTimer() { return &m_idleTimer; }

protected:
    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    struct tagQueue
    {
        tagItem* head = nullptr;
        tagItem* tail = nullptr;
        int count = 0;

        bool isEmpty() const { return !head; }
        void append(tagItem* item);
        tagItem* takeFirst();
        void appendAll(tagQueue& other); // other ends up empty
        void clear();                    // deletes the items
    };

    class NativeFilter : public QAbstractNativeEventFilter
    {
    public:
        explicit NativeFilter(KAppIdleSvr* svr) : m_svr(svr) {}
        bool nativeEventFilter(const QByteArray& eventType, void* message, qintptr* result) override;

    private:
        KAppIdleSvr* m_svr;
    };

    using PendingProbe = int (*)();

    void _onXcbEvent(const void* message);
    void _onMotion(qint32 x, qint32 y);
    void _restartNow();
    void _dropItem(tagItem* item);
    void _onSliceTimer();

    bool m_running = false;
    tagQueue m_waiting;
    tagQueue m_done;
    int m_generation = 0;
    int m_maxPass = 0;
    QTimer m_delayTimer;
    QElapsedTimer m_lastReset;
    QTimer m_idleTimer;

    // Each object has at most one live item: registerItem() unregisters first.
    QHash<QObject*, tagItem*> m_items;
    QTimer m_sliceTimer; // continues a round where the dispatcher cannot be polled
    PendingProbe m_probe = nullptr;
    QPointer<QAbstractEventDispatcher> m_dispatcher;
    NativeFilter m_nativeFilter;
    bool m_hasLastMotion = false;
    qint32 m_lastMotionX = 0;
    qint32 m_lastMotionY = 0;
    int m_xinputOpcode = -1;

    static KAppIdleSvr* s_instance;
};

#endif // KAPPIDLESVR_H
