#include <ktestsupport.h>

#include <QCloseEvent>
#include <QKeyEvent>
#include <QLabel>
#include <QPointer>
#include <QWindow>

#include <kcommandbarprop.h>
#include <kcommands.h>
#include <kcommandwrapaction.h>
#include <kdockwidget.h>
#include <kidleevent.h>
#include <klistcommand.h>
#include <kmainwindow.h>
#include <kseparatorcommand.h>
#include <ktoolbar.h>
#include <ktriggercommand.h>

namespace {

// Counts the updates a bar asks of it at idle time.
class CountingCommand : public KTriggerCommand
{
public:
    using KTriggerCommand::KTriggerCommand;
    void update() override { ++updates; }
    int updates = 0;
};

// A command whose extended form is told apart from its other forms.
class PanelCommand : public KCommand
{
public:
    using KCommand::KCommand;
    QWidget* createExtendedWidget(QWidget* parent) override
    {
        auto* label = new QLabel(QStringLiteral("extended"), parent);
        label->setObjectName(QStringLiteral("extended"));
        return label;
    }
};

// Records the orientation broadcasts that reach it.
class DirectionProbe : public QWidget
{
public:
    QList<bool> directions;

protected:
    bool event(QEvent* e) override
    {
        if (e->type() == QEvent::Type(KWidgetExhibitDirectChangedEvent::Type))
            directions << static_cast<KWidgetExhibitDirectChangedEvent*>(e)->direction();
        return QWidget::event(e);
    }
};

} // namespace

// The classic tool bar and the dock: items following their list, needless separators, a
// floating bar that follows its window, and the dock's content.
class tst_KToolBar : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void itemsFollowTheList();
    void separatorsHideWhenNeedless_data();
    void separatorsHideWhenNeedless();
    void enablementAndForceEnable_data();
    void enablementAndForceEnable();
    void closingFloatingBarHidesCommand();
    void floatingBarFollowsItsWindow();
    void tabDoesNothing();
    void orientationIsBroadcast();
    void sizesAndClone();
    void dockShowsExtendedWidget();

private:
    // A list of trigger commands (and the shared separator for "|"), owned by window.
    static KListCommand* makeList(KMainWindow& window, const QStringList& items);
};

KListCommand* tst_KToolBar::makeList(KMainWindow& window, const QStringList& items)
{
    auto* list = new KListCommand(&window, window.commands());
    list->setProperty("id", QStringLiteral("bar"));
    for (const QString& item : items) {
        if (item == QLatin1String("|")) {
            list->addSeparator();
            continue;
        }
        auto* cmd = new CountingCommand(&window, list);
        cmd->setProperty("id", item);
        list->addSubCommand(cmd);
    }
    return list;
}

void tst_KToolBar::itemsFollowTheList()
{
    KMainWindow window;
    KListCommand* list = makeList(window, {"a", "b"});
    auto* bar = new KToolBar(list, &window);
    window.addToolBar(bar);
    QCOMPARE(bar->objectName(), QString("bar"));
    bar->ensureConnectCommand();
    QCOMPARE(bar->actions().size(), 2);

    auto idAt = [bar](int i) {
        auto* wrap = qobject_cast<KCommandWrapAction*>(bar->actions().value(i));
        return wrap && wrap->command() ? wrap->command()->property("id").toString() : QString();
    };
    auto* c = new KTriggerCommand(&window, list);
    c->setProperty("id", QStringLiteral("c"));
    list->insertSubCommand(1, c);
    list->addSubCommand(c);
    QCOMPARE(bar->actions().size(), 4);
    QCOMPARE(idAt(0), QString("a"));
    QCOMPARE(idAt(1), QString("c"));
    QCOMPARE(idAt(2), QString("b"));
    QCOMPARE(idAt(3), QString("c"));
    list->removeSubCommand(0);
    QCOMPARE(bar->actions().size(), 3);
    QCOMPARE(idAt(0), QString("c"));
}

void tst_KToolBar::separatorsHideWhenNeedless_data()
{
    // Items: a name, a name with "-" for a hidden command, "|" for a separator. The expected
    // string has one character per item: 1 for a visible action, 0 for a hidden one.
    QTest::addColumn<QString>("items");
    QTest::addColumn<QString>("expected");
    QTest::addColumn<QString>("allShown");

    QTest::newRow("all shown") << "a | b | c" << "11111" << "11111";
    QTest::newRow("hidden run between separators") << "a | b- | c" << "11001" << "11111";
    QTest::newRow("two hidden in a row") << "a | b- c- | d" << "110001" << "111111";
    QTest::newRow("nothing visible ahead") << "a- | b" << "001" << "111";
    QTest::newRow("double separator") << "a | | b" << "1101" << "1101";
    QTest::newRow("leading separator is left alone") << "| a | b" << "1111" << "1111";
    QTest::newRow("leading separator, hidden start") << "| a- | b" << "1001" << "1111";
    QTest::newRow("hidden tail keeps earlier separator") << "a | b | c-" << "11110" << "11111";
}

void tst_KToolBar::separatorsHideWhenNeedless()
{
    QFETCH(QString, items);
    QFETCH(QString, expected);
    QFETCH(QString, allShown);

    KMainWindow window;
    QStringList names;
    QStringList hidden;
    for (QString item : items.split(QLatin1Char(' '))) {
        if (item.endsWith(QLatin1Char('-'))) {
            item.chop(1);
            hidden << item;
        }
        names << item;
    }
    KListCommand* list = makeList(window, names);
    auto* bar = new KToolBar(list, &window);
    window.addToolBar(bar);
    bar->ensureConnectCommand();
    QCOMPARE(bar->actions().size(), names.size());
    for (const QString& id : std::as_const(hidden)) {
        for (int i = 0; i < list->count(); ++i) {
            if (list->subCommand(i)->property("id").toString() == id)
                list->subCommand(i)->setVisible(false);
        }
    }

    // The idle round refreshes the commands and then the separators.
    window.show();
    QVERIFY(QTest::qWaitForWindowExposed(&window));
    KIdleEvent idle(0);
    QVERIFY(QCoreApplication::sendEvent(bar, &idle));
    QString actual;
    for (QAction* a : bar->actions())
        actual += a->isVisible() ? QLatin1Char('1') : QLatin1Char('0');
    QCOMPARE(actual, expected);
    auto* last = dynamic_cast<CountingCommand*>(list->subCommand(list->count() - 1));
    QVERIFY(last);
    QVERIFY(last->updates >= 1);

    // Showing the hidden commands again brings their separators back.
    for (int i = 0; i < list->count(); ++i)
        list->subCommand(i)->setVisible(true);
    bar->updateAction(false);
    actual.clear();
    for (QAction* a : bar->actions())
        actual += a->isVisible() ? QLatin1Char('1') : QLatin1Char('0');
    QCOMPARE(actual, allShown);
}

void tst_KToolBar::enablementAndForceEnable_data()
{
    QTest::addColumn<bool>("enabled");
    QTest::addColumn<QVariant>("force");
    QTest::addColumn<bool>("barEnabled");

    QTest::newRow("enabled") << true << QVariant() << true;
    QTest::newRow("disabled") << false << QVariant() << false;
    QTest::newRow("disabled, forced") << false << QVariant(true) << true;
    QTest::newRow("disabled, force false") << false << QVariant(QStringLiteral("false")) << false;
    QTest::newRow("enabled, force false") << true << QVariant(false) << true;
}

void tst_KToolBar::enablementAndForceEnable()
{
    QFETCH(bool, enabled);
    QFETCH(QVariant, force);
    QFETCH(bool, barEnabled);

    KMainWindow window;
    KListCommand* list = makeList(window, {"a"});
    list->setText(QStringLiteral("Standard"));
    if (force.isValid())
        list->setProperty("forceToolbarEnable", force);
    auto* bar = new KToolBar(list, &window);
    window.addToolBar(bar);
    QCOMPARE(bar->windowTitle(), QString("Standard"));
    list->setEnabled(enabled);
    QCOMPARE(bar->isEnabled(), barEnabled);
}

void tst_KToolBar::closingFloatingBarHidesCommand()
{
    KMainWindow window;
    KListCommand* list = makeList(window, {"a", "b"});
    auto* bar = new KToolBar(list, &window);
    window.addToolBar(bar);
    window.show();
    QVERIFY(QTest::qWaitForWindowExposed(&window));

    bar->setFloating(true);
    QVERIFY(bar->isFloating());
    QVERIFY(bar->isWindow());
    QVERIFY(bar->isVisible());
    QVERIFY(bar->windowFlags().testFlag(Qt::WindowCloseButtonHint));
    QVERIFY(!window.hasToolbar(Qt::TopToolBarArea));

    QPointer<KToolBar> guard(bar);
    QVERIFY(bar->close());
    QVERIFY(!list->isVisible());
    QVERIFY(bar->isHidden());
    QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
    QVERIFY(guard);
    QCOMPARE(window.findToolBar(list), bar);

    // The command brings it back, still floating.
    list->setVisible(true);
    QVERIFY(bar->isVisible());
    QVERIFY(bar->isFloating());

    // A bar without a close button keeps that after being made closable and back again.
    bar->setClosable(false);
    QVERIFY(!bar->windowFlags().testFlag(Qt::WindowCloseButtonHint));
    QVERIFY(bar->isVisible());
    bar->setClosable(true);
    QVERIFY(bar->windowFlags().testFlag(Qt::WindowCloseButtonHint));

    // Docked again, the bar is a plain child for the window to place.
    bar->setFloating(false);
    QVERIFY(!bar->isWindow());
    window.addToolBar(Qt::BottomToolBarArea, bar);
    QCOMPARE(window.dockArea()->toolBarArea(bar), Qt::BottomToolBarArea);
    QVERIFY(bar->isVisible());
}

void tst_KToolBar::floatingBarFollowsItsWindow()
{
    KMainWindow window;
    KListCommand* list = makeList(window, {"a"});
    auto* bar = new KToolBar(list, &window);
    window.addToolBar(bar);
    window.show();
    QVERIFY(QTest::qWaitForWindowExposed(&window));
    bar->setFloating(true);
    QVERIFY(bar->windowHandle());
    QVERIFY(bar->windowHandle()->isVisible());

    window.hide();
    QVERIFY(!bar->windowHandle()->isVisible());
    QVERIFY(bar->isVisible()); // Qt's state says shown all along
    QVERIFY(bar->isFloatingHidden());
    QVERIFY(list->isVisible());

    window.show();
    QVERIFY(QTest::qWaitForWindowExposed(&window));
    QVERIFY(!bar->isFloatingHidden());
    QVERIFY(bar->windowHandle()->isVisible());
    QVERIFY(bar->isVisible());

    // Hiding the waiting bar on purpose is honoured when the window comes back.
    window.hide();
    bar->setVisible(false);
    QVERIFY(!bar->isFloatingHidden());
    window.show();
    QVERIFY(QTest::qWaitForWindowExposed(&window));
    QVERIFY(!bar->isVisible());

    // Shown while the window is hidden, it waits for the window.
    window.hide();
    bar->setVisible(true);
    QVERIFY(bar->isFloatingHidden());
    QVERIFY(!bar->windowHandle()->isVisible());
    window.show();
    QVERIFY(QTest::qWaitForWindowExposed(&window));
    QVERIFY(bar->windowHandle()->isVisible());
}

void tst_KToolBar::tabDoesNothing()
{
    KMainWindow window;
    KListCommand* list = makeList(window, {"a"});
    auto* bar = new KToolBar(list, &window);
    window.addToolBar(bar);
    QCOMPARE(bar->focusPolicy(), Qt::NoFocus);

    for (int key : {int(Qt::Key_Tab), int(Qt::Key_Backtab)}) {
        QKeyEvent press(QEvent::KeyPress, key, Qt::NoModifier);
        QVERIFY(QCoreApplication::sendEvent(bar, &press));
        QVERIFY(press.isAccepted());
    }
    // Other keys take the ordinary way (an unhandled key is ignored).
    QKeyEvent other(QEvent::KeyPress, Qt::Key_A, Qt::NoModifier, QStringLiteral("a"));
    QCoreApplication::sendEvent(bar, &other);
    QVERIFY(!other.isAccepted());
}

void tst_KToolBar::orientationIsBroadcast()
{
    KMainWindow window;
    auto* bar = new KToolBar(makeList(window, {}), &window);
    window.addToolBar(bar);
    auto* probe = new DirectionProbe;
    bar->addWidget(probe);
    QCOMPARE(probe->parentWidget(), bar);

    bar->setOrientation(Qt::Vertical);
    QCOMPARE(probe->directions, QList<bool>({true}));
    bar->setOrientation(Qt::Horizontal);
    QCOMPARE(probe->directions, QList<bool>({true, false}));
    // A bar moved to a side area turns vertical.
    window.addToolBar(Qt::LeftToolBarArea, bar);
    QCOMPARE(probe->directions, QList<bool>({true, false, true}));
}

void tst_KToolBar::sizesAndClone()
{
    KMainWindow window;
    KListCommand* list = makeList(window, {"a", "|", "b"});
    list->setProperty("name", QStringLiteral("Standard"));
    auto* bar = new KToolBar(list, &window);
    window.addToolBar(bar);
    bar->ensureConnectCommand();

    const QMargins m = bar->getMargins();
    const QSize extra(m.left() + m.right(), m.top() + m.bottom());
    QCOMPARE(bar->minSize(), QSize(40, 20) + extra);
    QVERIFY(bar->minimumSizeHint().width() >= bar->minSize().width());
    QVERIFY(bar->sizeHint().height() >= bar->minSize().height());
    bar->setOrientation(Qt::Vertical);
    QCOMPARE(bar->minSize(), QSize(20, 40) + QSize(bar->getMargins().left() + bar->getMargins().right(),
                                                  bar->getMargins().top() + bar->getMargins().bottom()));
    bar->setOrientation(Qt::Horizontal);

    KMainWindow other;
    KToolBar* copy = bar->clone(&other);
    QVERIFY(copy);
    QVERIFY(copy->command() != list);
    QVERIFY(copy->props());
    QVERIFY(copy->props()->getCustom());
    QCOMPARE(copy->props()->getName(), QString("Standard"));
    QCOMPARE(copy->command()->count(), 3);
    QVERIFY(KSeparatorCommand::isSeparator(copy->command()->subCommand(1)));
    // The items are copies made for the other window, not the originals.
    QVERIFY(copy->command()->subCommand(0) != list->subCommand(0));
    QCOMPARE(copy->command()->subCommand(0)->host(), &other);
    delete copy;
}

void tst_KToolBar::dockShowsExtendedWidget()
{
    KMainWindow window;
    auto* panel = new PanelCommand(&window, window.commands());
    panel->setProperty("id", QStringLiteral("Panel"));
    panel->setText(QStringLiteral("Outline"));
    window.addDockWidget(Qt::LeftDockWidgetArea, panel);
    auto* dock = qobject_cast<KDockWidget*>(window.findDockWidget(QStringLiteral("Panel")));
    QVERIFY(dock);
    QVERIFY(dock->widget());
    QCOMPARE(dock->widget()->objectName(), QString("extended"));
    QCOMPARE(dock->windowTitle(), QString("Outline"));
    QCOMPARE(window.dockWidgetArea(dock), Qt::LeftDockWidgetArea);

    window.show();
    QVERIFY(QTest::qWaitForWindowExposed(&window));
    QVERIFY(dock->isVisible());

    // A floating dock follows its window like a floating bar.
    dock->setFloating(true);
    QVERIFY(dock->isVisible());
    window.hide();
    QVERIFY(dock->isFloatingHidden());
    QVERIFY(dock->isVisible());
    QVERIFY(!dock->windowHandle()->isVisible());
    window.show();
    QVERIFY(QTest::qWaitForWindowExposed(&window));
    QVERIFY(!dock->isFloatingHidden());
    QVERIFY(dock->windowHandle()->isVisible());

    // Closing the dock hides its command; the command shows it again.
    QVERIFY(dock->close());
    QVERIFY(!panel->isVisible());
    panel->setVisible(true);
    QVERIFY(dock->isVisible());
}

NORVIK_TEST_MAIN(tst_KToolBar)
#include "tst_ktoolbar.moc"
