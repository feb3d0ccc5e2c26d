#include <ktestsupport.h>

#include <QAbstractButton>
#include <QAbstractEventDispatcher>
#include <QCheckBox>
#include <QComboBox>
#include <QDockWidget>
#include <QHelpEvent>
#include <QLabel>
#include <QPixmap>
#include <QToolBar>
#include <QVBoxLayout>
#include <functional>

#include <kabstractlistcommand.h>
#include <kappidlesvr.h>
#include <kcommandwidgetbridge.h>
#include <kcommandwrapaction.h>
#include <kevent.h>
#include <ktoolbutton.h>

namespace {

// A command that writes its update() calls into a shared log.
class LoggingCommand : public KCommand
{
public:
    LoggingCommand(const QString& text, QStringList* log, QObject* parent = nullptr)
        : KCommand(nullptr, parent), m_log(log)
    {
        setText(text);
    }
    void update() override
    {
        ++updates;
        if (m_log)
            m_log->append(QStringLiteral("update:") + text());
        if (onUpdate)
            onUpdate();
    }
    QWidget* createPocketWidget(QWidget* parent) override
    {
        auto* label = new QLabel(text(), parent);
        label->setObjectName(text());
        return label;
    }

    int updates = 0;
    std::function<void()> onUpdate;

private:
    QStringList* m_log;
};

// A list command of the test's own: items in a plain list, changes announced by the signals.
class TestListCommand : public KAbstractListCommand
{
public:
    explicit TestListCommand(QObject* parent = nullptr) : KAbstractListCommand(nullptr, parent) {}

    int count() const override
    {
        ++countCalls;
        return m_items.size();
    }
    KCommand* subCommand(int index) const override
    {
        return index >= 0 && index < m_items.size() ? m_items.at(index) : nullptr;
    }
    void insert(int index, KCommand* command)
    {
        m_items.insert(index, command);
        Q_EMIT subCommandInsert(index, command);
    }
    void append(KCommand* command) { insert(m_items.size(), command); }
    void remove(int index)
    {
        m_items.removeAt(index);
        Q_EMIT subCommandRemove(index);
    }

    mutable int countCalls = 0;

private:
    QList<KCommand*> m_items;
};

// A bridge over T that records its callbacks.
template <class T>
class Recorder : public KCommandWidgetBridge<T>
{
public:
    Recorder(KCommand* command, QWidget* parent, bool autoConnect, QStringList* log)
        : KCommandWidgetBridge<T>(command, parent, autoConnect), m_log(log) {}

    void onCommandConnected() override
    {
        if (m_log)
            m_log->append(QStringLiteral("connected"));
    }
    void onCommandInserted(int index, KCommand* sub) override
    {
        if (m_log)
            m_log->append(QStringLiteral("insert:%1:%2").arg(index).arg(sub->text()));
    }

protected:
    // QAbstractButton leaves painting to its subclasses.
    void paintEvent(QPaintEvent*) override {}

private:
    QStringList* m_log;
};

// A container that follows its list command: one label per sub-command, in list order.
class ListWidget : public KCommandWidgetBridge<QWidget>
{
public:
    explicit ListWidget(KCommand* command, QWidget* parent = nullptr)
        : KCommandWidgetBridge<QWidget>(command, parent, true)
    {
        new QVBoxLayout(this);
    }

    void onCommandConnected() override
    {
        auto* list = qobject_cast<KAbstractListCommand*>(command());
        QObject::connect(list, &KAbstractListCommand::subCommandInsert, this,
                         [this](int index, KCommand* sub) { onCommandInserted(index, sub); });
        QObject::connect(list, &KAbstractListCommand::subCommandRemove, this,
                         [this](int index) { onCommandRemoved(index); });
    }
    void onCommandInserted(int index, KCommand* sub) override
    {
        // An item inserted while the first build runs arrives ahead of those before it.
        QWidget* w = sub->requestWidget(this, KCommand::PocketPurpose);
        static_cast<QVBoxLayout*>(layout())->insertWidget(qMin(index, layout()->count()), w);
    }
    void onCommandRemoved(int index) override
    {
        QLayoutItem* item = layout()->takeAt(index);
        QVERIFY(item && item->widget());
        delete item->widget();
        delete item;
    }

    QStringList names() const
    {
        QStringList result;
        for (int i = 0; i < layout()->count(); ++i)
            result.append(layout()->itemAt(i)->widget()->objectName());
        return result;
    }
};

// A widget that follows the contract for command widgets.
class ContractWidget : public KCommandWidgetBridge<QWidget>
{
public:
    ContractWidget(KCommand* command, QWidget* parent)
        : KCommandWidgetBridge<QWidget>(command, parent, true)
    {
        connect(command, &KCommand::changed, this, [this] { syncCommand(); });
        syncCommand();
        KCommandBridgeHelper::registerIdle(this);
    }

    void syncCommand()
    {
        ++syncs;
        setEnabled(command()->isEnabled());
        setVisibleFromCommand(command()->isVisible());
    }
    void onCommandConnected() override { ++connects; }

    int syncs = 0;
    int connects = 0;
    int themeEvents = 0;

protected:
    bool event(QEvent* e) override
    {
        if (handleCommandEvent(e))
            return true;
        if (e->type() == KEvent::eventType(KEvent::ThemeChange))
            ++themeEvents;
        return KCommandWidgetBridge<QWidget>::event(e);
    }
};

// Runs a real event loop (the idle service works when the loop is about to block) until
// pred holds, checking each time the loop is about to block.
template <class Pred>
bool runLoopUntil(Pred pred, int timeoutMs = 5000)
{
    if (pred())
        return true;
    QEventLoop loop;
    QTimer timeout;
    timeout.setSingleShot(true);
    QObject::connect(&timeout, &QTimer::timeout, &loop, &QEventLoop::quit);
    const QMetaObject::Connection c =
        QObject::connect(QAbstractEventDispatcher::instance(), &QAbstractEventDispatcher::aboutToBlock,
                         &loop, [&] {
                             if (pred())
                                 loop.quit();
                         });
    timeout.start(timeoutMs);
    loop.exec();
    QObject::disconnect(c);
    return pred();
}

} // namespace

namespace {
// A command whose pocket widget is a tool button with a style of its own (icon and arrow).
class ButtonCommand : public KCommand
{
public:
    ButtonCommand() : KCommand(nullptr, nullptr) {}
    QWidget* createPocketWidget(QWidget* parent) override
    {
        auto* button = new KToolButton(parent);
        button->setButtonStyle(5);
        button->setDefaultCommand(this);
        return button;
    }
};
} // namespace

class tst_KCommandWidgetBridge : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void lazyConnection_data();
    void lazyConnection();
    void noConnectionWithoutCommandOrAutoConnect();
    void childShownByParent();
    void captionAndIcon();
    void listChangesFollowSignals();
    void insertDuringConnection();
    void contractWidget();
    void idleEventPullsUpdate();
    void richToolTip();
    void wrapActionFollowsCommand();
    void wrapActionMakesToolBarButton();

private:
    template <class T>
    void checkLazy();
};

void tst_KCommandWidgetBridge::lazyConnection_data()
{
    QTest::addColumn<QString>("base");
    QTest::newRow("QWidget") << "QWidget";
    QTest::newRow("QAbstractButton") << "QAbstractButton";
    QTest::newRow("QCheckBox") << "QCheckBox";
    QTest::newRow("QComboBox") << "QComboBox";
    QTest::newRow("QToolBar") << "QToolBar";
    QTest::newRow("QDockWidget") << "QDockWidget";
}

template <class T>
void tst_KCommandWidgetBridge::checkLazy()
{
    QStringList log;
    TestListCommand list;
    LoggingCommand a(QStringLiteral("a"), &log), b(QStringLiteral("b"), &log);
    list.append(&a);
    list.append(&b);

    QWidget container;
    auto* w = new Recorder<T>(&list, &container, true, &log);
    QVERIFY(log.isEmpty());
    QCOMPARE(list.countCalls, 0); // the constructor did not even look at the list

    w->setVisible(false);
    w->hide();
    QVERIFY(log.isEmpty());
    QVERIFY(!w->isCommandConnected());

    w->setVisible(true);
    const QStringList expected = {"connected", "update:a", "insert:0:a", "update:b", "insert:1:b"};
    QCOMPARE(log, expected);
    QCOMPARE(list.countCalls, 1);

    w->setVisible(true);
    w->setVisible(false);
    w->setVisible(true);
    (void)w->sizeHint();
    QCOMPARE(log, expected);

    // Measuring builds too.
    log.clear();
    Recorder<T> measured(&list, nullptr, true, &log);
    QVERIFY(log.isEmpty());
    (void)measured.sizeHint();
    QCOMPARE(log, expected);
}

void tst_KCommandWidgetBridge::lazyConnection()
{
    QFETCH(QString, base);
    if (base == "QWidget")
        checkLazy<QWidget>();
    else if (base == "QAbstractButton")
        checkLazy<QAbstractButton>();
    else if (base == "QCheckBox")
        checkLazy<QCheckBox>();
    else if (base == "QComboBox")
        checkLazy<QComboBox>();
    else if (base == "QToolBar")
        checkLazy<QToolBar>();
    else if (base == "QDockWidget")
        checkLazy<QDockWidget>();
    else
        QFAIL("unknown base");
}

void tst_KCommandWidgetBridge::noConnectionWithoutCommandOrAutoConnect()
{
    QStringList log;
    TestListCommand list;
    LoggingCommand a(QStringLiteral("a"), &log);
    list.append(&a);

    Recorder<QWidget> noCommand(nullptr, nullptr, true, &log);
    noCommand.show();
    (void)noCommand.sizeHint();
    noCommand.ensureConnectCommand();
    Recorder<QWidget> noAuto(&list, nullptr, false, &log);
    noAuto.show();
    (void)noAuto.sizeHint();
    noAuto.ensureConnectCommand();
    QVERIFY(log.isEmpty());
    QVERIFY(!noAuto.isCommandConnected());
    QCOMPARE(list.countCalls, 0);
}

void tst_KCommandWidgetBridge::childShownByParent()
{
    // A hidden container builds none of its children; showing it builds them all, including
    // grandchildren in a layout, and a child hidden on purpose stays unbuilt.
    QStringList log;
    TestListCommand outer, inner, hiddenList;
    LoggingCommand a(QStringLiteral("a"), &log), b(QStringLiteral("b"), &log);
    inner.append(&a);
    hiddenList.append(&b);

    QWidget window;
    auto* layout = new QVBoxLayout(&window);
    auto* innerWidget = new Recorder<QWidget>(&inner, nullptr, true, &log);
    layout->addWidget(innerWidget);
    auto* hiddenWidget = new Recorder<QWidget>(&hiddenList, &window, true, &log);
    hiddenWidget->hide();
    QVERIFY(log.isEmpty());

    window.show();
    QVERIFY(QTest::qWaitForWindowExposed(&window));
    QVERIFY(innerWidget->isCommandConnected());
    QVERIFY(!hiddenWidget->isCommandConnected());
    QVERIFY(!log.contains("insert:0:b"));
    QVERIFY(log.contains("insert:0:a"));
}

void tst_KCommandWidgetBridge::captionAndIcon()
{
    KCommand cmd(nullptr, nullptr);
    cmd.setText(QStringLiteral("Bold"));
    QPixmap pm(16, 16);
    pm.fill(Qt::red);
    cmd.setIcon(QIcon(pm));

    Recorder<QCheckBox> box(&cmd, nullptr, true, nullptr);
    QCOMPARE(box.text(), QStringLiteral("Bold"));
    QVERIFY(!box.icon().isNull());
    Recorder<QWidget> plain(&cmd, nullptr, true, nullptr);
    QCOMPARE(plain.property("text").toString(), QStringLiteral("Bold"));
    QVERIFY(!plain.property("icon").value<QIcon>().isNull());

    // Empty text and null icon leave the properties alone.
    KCommand bare(nullptr, nullptr);
    Recorder<QWidget> untouched(&bare, nullptr, true, nullptr);
    QVERIFY(!untouched.property("text").isValid());
    QVERIFY(!untouched.property("icon").isValid());
}

void tst_KCommandWidgetBridge::listChangesFollowSignals()
{
    TestListCommand list;
    LoggingCommand a(QStringLiteral("a"), nullptr), b(QStringLiteral("b"), nullptr),
        c(QStringLiteral("c"), nullptr), d(QStringLiteral("d"), nullptr);
    list.append(&a);
    list.append(&b);

    ListWidget w(&list);
    list.append(&c); // before the connection: reaches the widget through the first build
    QCOMPARE(w.layout()->count(), 0);
    w.show();
    QCOMPARE(w.names(), QStringList({"a", "b", "c"}));

    list.insert(1, &d);
    QCOMPARE(w.names(), QStringList({"a", "d", "b", "c"}));
    list.remove(0);
    QCOMPARE(w.names(), QStringList({"d", "b", "c"}));
    list.remove(2);
    QCOMPARE(w.names(), QStringList({"d", "b"}));
    list.insert(2, &a);
    QCOMPARE(w.names(), QStringList({"d", "b", "a"}));
}

void tst_KCommandWidgetBridge::insertDuringConnection()
{
    // A sub-command appended while the children are being made arrives once, by the signal,
    // and the loop does not make it a second time.
    TestListCommand list;
    LoggingCommand a(QStringLiteral("a"), nullptr), b(QStringLiteral("b"), nullptr),
        late(QStringLiteral("late"), nullptr);
    list.append(&a);
    list.append(&b);
    a.onUpdate = [&] {
        if (list.count() == 2)
            list.append(&late);
    };
    ListWidget w(&list);
    (void)w.sizeHint();
    QCOMPARE(w.names(), QStringList({"a", "b", "late"}));
}

void tst_KCommandWidgetBridge::contractWidget()
{
    TestListCommand list;
    LoggingCommand a(QStringLiteral("a"), nullptr);
    list.append(&a);

    QWidget container;
    auto* w = new ContractWidget(&list, &container);
    QCOMPARE(w->syncs, 1);
    QCOMPARE(w->connects, 0); // the constructor's sync did not show, so did not build
    QVERIFY(KApplication::instance()->idleSvr()->isRegistered(w));

    list.setEnabled(false);
    QVERIFY(!w->isEnabled());
    list.setVisible(false);
    QVERIFY(w->isHidden());
    container.show();
    QVERIFY(!w->isVisible());
    QCOMPARE(w->connects, 0); // hidden by its command: still nothing built

    list.setVisible(true);
    list.setEnabled(true);
    QVERIFY(w->isVisible());
    QVERIFY(w->isEnabled());
    QCOMPARE(w->connects, 1);
}

void tst_KCommandWidgetBridge::idleEventPullsUpdate()
{
    KAppIdleSvr* svr = KApplication::instance()->idleSvr();
    QVERIFY(svr);
    LoggingCommand shown(QStringLiteral("shown"), nullptr), hidden(QStringLiteral("hidden"), nullptr);

    QWidget window;
    new QVBoxLayout(&window);
    auto* shownWidget = new ContractWidget(&shown, &window);
    window.layout()->addWidget(shownWidget);
    QWidget hiddenWindow;
    auto* hiddenWidget = new ContractWidget(&hidden, &hiddenWindow);
    window.show();
    QVERIFY(QTest::qWaitForWindowExposed(&window));

    svr->resetIdle(nullptr);
    svr->start();
    const bool pulled = runLoopUntil([&] { return shown.updates > 0 && svr->waitingCount() == 0; });
    svr->stop();
    QVERIFY(pulled);
    QCOMPARE(hidden.updates, 0); // its parent is not visible
    QVERIFY(svr->isRegistered(hiddenWidget));

    // Once the round is through, nothing more happens until the user acts; a click is
    // user activity and runs the round again.
    const int before = shown.updates;
    svr->start();
    QTest::mouseClick(shownWidget, Qt::LeftButton);
    const bool again = runLoopUntil([&] { return shown.updates > before; });
    svr->stop();
    QVERIFY(again);
    QCOMPARE(hidden.updates, 0);
}

void tst_KCommandWidgetBridge::richToolTip()
{
    struct Call
    {
        QWidget* widget = nullptr;
        KCommand* command = nullptr;
        QPoint pos;
        int count = 0;
    };
    static Call s_call;
    s_call = Call();
    KCommandBridgeHelper::setRichTipHandler([](QWidget* w, KCommand* c, const QPoint& pos) {
        s_call.widget = w;
        s_call.command = c;
        s_call.pos = pos;
        ++s_call.count;
        return true;
    });

    KCommand withTip(nullptr, nullptr);
    withTip.setCustomTip(QStringLiteral("Bold"));
    KCommand withoutTip(nullptr, nullptr);
    QWidget parent;
    ContractWidget tipped(&withTip, &parent);
    ContractWidget plain(&withoutTip, &parent);

    QHelpEvent help(QEvent::ToolTip, QPoint(5, 5), QPoint(105, 205));
    QVERIFY(QCoreApplication::sendEvent(&tipped, &help));
    QCOMPARE(s_call.count, 1);
    QCOMPARE(s_call.widget, &tipped);
    QCOMPARE(s_call.command, &withTip);
    QCOMPARE(s_call.pos, QPoint(105, 205));

    QCoreApplication::sendEvent(&plain, &help);
    QCOMPARE(s_call.count, 1);

    KCommandBridgeHelper::setRichTipHandler(nullptr);
    QCoreApplication::sendEvent(&tipped, &help);
    QCOMPARE(s_call.count, 1);

    QCOMPARE(KCommandBridgeHelper::richTipTitle("Bold", "Ctrl+B"), QStringLiteral("Bold (Ctrl+B)"));
    QCOMPARE(KCommandBridgeHelper::richTipTitle("Bold", QString()), QStringLiteral("Bold"));
}

void tst_KCommandWidgetBridge::wrapActionFollowsCommand()
{
    KCommand cmd(nullptr, nullptr);
    cmd.setEnabled(false);
    cmd.setVisible(false);
    KCommandWrapAction action(&cmd, nullptr);
    QVERIFY(!action.isEnabled());
    QVERIFY(!action.isVisible());
    cmd.setVisible(true);
    QVERIFY(action.isVisible());
    QVERIFY(!action.isEnabled());
    cmd.setEnabled(true);
    QVERIFY(action.isEnabled());
    cmd.setVisible(false); // a hidden action also counts as disabled in Qt
    QVERIFY(!action.isVisible());
    cmd.setVisible(true);
    QVERIFY(action.isVisible());
    QVERIFY(action.isEnabled());

    QToolBar bar;
    bar.addAction(&action);
    bar.show();
    QWidget* w = bar.widgetForAction(&action);
    QVERIFY(w);
    QCOMPARE(w->metaObject()->className(), "QLabel"); // the command's pocket widget
    QCOMPARE(w->sizePolicy().horizontalPolicy(), QLabel().sizePolicy().horizontalPolicy());
}

void tst_KCommandWidgetBridge::wrapActionMakesToolBarButton()
{
    ButtonCommand cmd;
    KCommandWrapAction action(&cmd, nullptr);
    QToolBar bar;
    bar.addAction(&action);
    auto* button = qobject_cast<KToolButton*>(bar.widgetForAction(&action));
    QVERIFY(button);
    QVERIFY(button->inherits("KToolButton"));
    QCOMPARE(button->buttonStyle(), 5 | 16);
    QCOMPARE(button->sizePolicy().horizontalPolicy(), QSizePolicy::Preferred);
    QCOMPARE(button->sizePolicy().verticalPolicy(), QSizePolicy::Preferred);
}

NORVIK_TEST_MAIN(tst_KCommandWidgetBridge)
#include "tst_kcommandwidgetbridge.moc"
