#include <ktestsupport.h>

#include <QAbstractButton>
#include <QCheckBox>
#include <QComboBox>
#include <QDockWidget>
#include <QHelpEvent>
#include <QLabel>
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
    LoggingCommand(const QString& text, QStringList* log = nullptr) : KCommand(nullptr, nullptr), m_log(log)
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
    int updates = 0;
    std::function<void()> onUpdate;

private:
    QStringList* m_log;
};

// A list command of the test's own: items in a plain list.
class TestListCommand : public KAbstractListCommand
{
public:
    TestListCommand(std::initializer_list<KCommand*> items = {}) : KAbstractListCommand(nullptr, nullptr)
    {
        for (KCommand* c : items)
            append(c);
    }
    int count() const override { return ++countCalls, m_items.size(); }
    KCommand* subCommand(int index) const override { return m_items.value(index); }
    void append(KCommand* command) { m_items.append(command); }
    mutable int countCalls = 0;

private:
    QList<KCommand*> m_items;
};

// A bridge over T that records its callbacks.
template <class T>
class Recorder : public KCommandWidgetBridge<T>
{
public:
    Recorder(KCommand* command, QWidget* parent, QStringList* log, bool autoConnect = true)
        : KCommandWidgetBridge<T>(command, parent, autoConnect), m_log(log) {}
    void onCommandConnected() override { m_log->append(QStringLiteral("connected")); }
    void onCommandInserted(int index, KCommand* sub) override
    {
        m_log->append(QStringLiteral("insert:%1:%2").arg(index).arg(sub->text()));
    }

protected:
    void paintEvent(QPaintEvent*) override {} // QAbstractButton leaves painting to subclasses

private:
    QStringList* m_log;
};

// A widget that follows the contract for command widgets.
class ContractWidget : public KCommandWidgetBridge<QWidget>
{
public:
    ContractWidget(KCommand* command, QWidget* parent) : KCommandWidgetBridge<QWidget>(command, parent, true)
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

protected:
    bool event(QEvent* e) override { return handleCommandEvent(e) || KCommandWidgetBridge<QWidget>::event(e); }
};

// A command whose pocket widget is a tool button with a style of its own (icon and arrow).
class ButtonCommand : public KCommand
{
public:
    ButtonCommand() : KCommand(nullptr, nullptr) {}
    QWidget* createPocketWidget(QWidget* parent) override
    {
        auto* button = new KToolButton(parent);
        button->setButtonStyle(KToolButton::StyleIcon | KToolButton::StyleArrow);
        button->setDefaultCommand(this);
        return button;
    }
};

// Showing or measuring builds once, in order; constructing and hiding never build.
template <class T>
void checkLazy()
{
    const char* base = T::staticMetaObject.className();
    QStringList log;
    LoggingCommand a(QStringLiteral("a"), &log), b(QStringLiteral("b"), &log);
    TestListCommand list{&a, &b};
    QWidget container;
    auto* w = new Recorder<T>(&list, &container, &log);
    w->hide();
    QVERIFY2(log.isEmpty(), base);
    QVERIFY2(list.countCalls == 0, base);
    QVERIFY2(!w->isCommandConnected(), base);

    w->setVisible(true);
    const QStringList expected = {"connected", "update:a", "insert:0:a", "update:b", "insert:1:b"};
    QVERIFY2(log == expected, base);
    QVERIFY2(list.countCalls == 1, base);
    w->setVisible(false);
    w->setVisible(true);
    (void)w->sizeHint();
    QVERIFY2(log == expected, base);

    log.clear();
    Recorder<T> measured(&list, nullptr, &log);
    QVERIFY2(log.isEmpty(), base);
    (void)measured.sizeHint();
    QVERIFY2(log == expected, base);
}

template <class... T>
void checkLazyOverEach()
{
    (void)((checkLazy<T>(), !QTest::currentTestFailed()) && ...);
}

} // namespace

class tst_KCommandWidgetBridge : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void lazyConnection();
    void childrenBuildWhenShownByParent();
    void firstBuildReadsTheListOnce();
    void contractWidget();
    void richToolTip();
    void wrapAction();
};

void tst_KCommandWidgetBridge::lazyConnection()
{
    checkLazyOverEach<QWidget, QAbstractButton, QCheckBox, QComboBox, QToolBar, QDockWidget>();
    if (QTest::currentTestFailed())
        return;

    // Without a command or without autoConnect nothing is ever built.
    QStringList log;
    LoggingCommand a(QStringLiteral("a"), &log);
    TestListCommand list{&a};
    Recorder<QWidget> noCommand(nullptr, nullptr, &log);
    Recorder<QWidget> noAuto(&list, nullptr, &log, false);
    for (Recorder<QWidget>* w : {&noCommand, &noAuto}) {
        w->show();
        (void)w->sizeHint();
        w->ensureConnectCommand();
    }
    QVERIFY(log.isEmpty());
    QVERIFY(!noAuto.isCommandConnected());
    QCOMPARE(list.countCalls, 0);
}

void tst_KCommandWidgetBridge::childrenBuildWhenShownByParent()
{
    // Showing a window builds its children, grandchildren in a layout included; a child
    // hidden on purpose stays unbuilt.
    QStringList log;
    LoggingCommand a(QStringLiteral("a"), &log), b(QStringLiteral("b"), &log);
    TestListCommand inner{&a}, hiddenList{&b};
    QWidget window;
    auto* innerWidget = new Recorder<QWidget>(&inner, nullptr, &log);
    (new QVBoxLayout(&window))->addWidget(innerWidget);
    auto* hiddenWidget = new Recorder<QWidget>(&hiddenList, &window, &log);
    hiddenWidget->hide();
    QVERIFY(log.isEmpty());

    window.show();
    QVERIFY(QTest::qWaitForWindowExposed(&window));
    QVERIFY(innerWidget->isCommandConnected());
    QVERIFY(!hiddenWidget->isCommandConnected());
    QCOMPARE(log, QStringList({"connected", "update:a", "insert:0:a"}));
}

void tst_KCommandWidgetBridge::firstBuildReadsTheListOnce()
{
    // The first build makes what the list holds then, items appended before it included. An
    // item appended while the children are made is left to the list's signal: the build loop
    // does not make it a second time.
    QStringList log;
    LoggingCommand a(QStringLiteral("a"), &log), b(QStringLiteral("b"), &log), late(QStringLiteral("late"), &log);
    TestListCommand list{&a};
    Recorder<QWidget> w(&list, nullptr, &log);
    list.append(&b);
    a.onUpdate = [&] { list.append(&late); };
    (void)w.sizeHint();
    QCOMPARE(log, QStringList({"connected", "update:a", "insert:0:a", "update:b", "insert:1:b"}));
}

void tst_KCommandWidgetBridge::contractWidget()
{
    LoggingCommand a(QStringLiteral("a"));
    TestListCommand list{&a};
    QWidget container;
    auto* w = new ContractWidget(&list, &container);
    QCOMPARE(w->syncs, 1);
    QCOMPARE(w->connects, 0); // the constructor's sync did not show, so did not build
    QVERIFY(KApplication::instance()->idleSvr()->isRegistered(w));

    list.setEnabled(false);
    list.setVisible(false);
    QVERIFY(!w->isEnabled());
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

void tst_KCommandWidgetBridge::richToolTip()
{
    using Call = std::tuple<QWidget*, KCommand*, QString, QPoint>;
    static QList<Call> s_calls;
    s_calls.clear();
    const auto catalogueHandler = KCommandBridgeHelper::richTipHandler();
    KCommandBridgeHelper::setRichTipHandler([](QWidget* w, KCommand* c, const QString& key, const QPoint& pos) {
        s_calls.append({w, c, key, pos});
        return true;
    });
    KCommand withTip(nullptr, nullptr), withoutTip(nullptr, nullptr);
    withTip.setCustomTip(QStringLiteral("Bold"));
    QWidget parent;
    ContractWidget tipped(&withTip, &parent), plain(&withoutTip, &parent);

    QHelpEvent help(QEvent::ToolTip, QPoint(5, 5), QPoint(105, 205));
    QVERIFY(QCoreApplication::sendEvent(&tipped, &help));
    QCoreApplication::sendEvent(&plain, &help); // no custom tip: not asked
    KCommandBridgeHelper::setRichTipHandler(nullptr);
    QCoreApplication::sendEvent(&tipped, &help); // no handler: not asked
    QCOMPARE(s_calls, QList<Call>({Call(&tipped, &withTip, QString("Bold"), QPoint(105, 205))}));
    KCommandBridgeHelper::setRichTipHandler(catalogueHandler);
}

void tst_KCommandWidgetBridge::wrapAction()
{
    KCommand cmd(nullptr, nullptr);
    cmd.setEnabled(false);
    cmd.setVisible(false);
    KCommandWrapAction action(&cmd, nullptr);
    const auto state = [&] { return QPair<bool, bool>(action.isVisible(), action.isEnabled()); };
    QCOMPARE(state(), qMakePair(false, false));
    cmd.setVisible(true);
    QCOMPARE(state(), qMakePair(true, false));
    cmd.setEnabled(true);
    cmd.setVisible(false); // a hidden action also counts as disabled in Qt
    cmd.setVisible(true);
    QCOMPARE(state(), qMakePair(true, true));

    // In a tool bar: the command's pocket widget, as it made it.
    QToolBar bar;
    bar.addAction(&action);
    auto* label = qobject_cast<QLabel*>(bar.widgetForAction(&action));
    QVERIFY(label);
    QCOMPARE(label->sizePolicy(), QLabel().sizePolicy());

    // A tool button shows the mnemonic and takes the preferred size.
    ButtonCommand buttonCmd;
    KCommandWrapAction buttonAction(&buttonCmd, nullptr);
    bar.addAction(&buttonAction);
    auto* button = qobject_cast<KToolButton*>(bar.widgetForAction(&buttonAction));
    QVERIFY(button);
    QCOMPARE(button->buttonStyle(), KToolButton::StyleIcon | KToolButton::StyleArrow | KToolButton::StyleHotKey);
    QCOMPARE(button->sizePolicy(), QSizePolicy(QSizePolicy::Preferred, QSizePolicy::Preferred));
}

NORVIK_TEST_MAIN(tst_KCommandWidgetBridge)
#include "tst_kcommandwidgetbridge.moc"
