#include <ktestsupport.h>

#include <QCloseEvent>
#include <QKeyEvent>
#include <QLabel>
#include <QPointer>
#include <QWindow>

#include <kblockedmouseevent.h>
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
    void orientationIsBroadcast();
    void sizesAndClone();
    void dockShowsExtendedWidget();
    void hoverFollowsUnderAPopup();

private:
    // A bar in window for a list of counting commands with the given ids ("|" stands for the
    // shared separator); the list is the bar's command().
    static KToolBar* addBar(KMainWindow& window, const QStringList& items);
    static QString visibility(KToolBar* bar); // one 1 or 0 per action
    static bool showAndWait(KMainWindow& window)
    {
        window.show();
        return QTest::qWaitForWindowExposed(&window);
    }
};

KToolBar* tst_KToolBar::addBar(KMainWindow& window, const QStringList& items)
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
    auto* bar = new KToolBar(list, &window);
    window.addToolBar(bar);
    return bar;
}

QString tst_KToolBar::visibility(KToolBar* bar)
{
    QString out;
    for (QAction* a : bar->actions())
        out += a->isVisible() ? QLatin1Char('1') : QLatin1Char('0');
    return out;
}

void tst_KToolBar::itemsFollowTheList()
{
    KMainWindow window;
    KToolBar* bar = addBar(window, {"a", "b"});
    auto* list = static_cast<KListCommand*>(bar->command());
    list->setText(QStringLiteral("Standard"));
    QCOMPARE(bar->windowTitle(), QString("Standard"));
    bar->ensureConnectCommand();
    auto* c = new KTriggerCommand(&window, list);
    c->setProperty("id", QStringLiteral("c"));
    list->insertSubCommand(1, c);
    list->addSubCommand(c);
    QCOMPARE(KTestSupport::actionIds(bar), QStringList({"a", "c", "b", "c"}));
    list->removeSubCommand(0);
    QCOMPARE(KTestSupport::actionIds(bar), QStringList({"c", "b", "c"}));
}

void tst_KToolBar::separatorsHideWhenNeedless_data()
{
    // Items: a name, a name with "-" for a hidden command, "|" for a separator. The expected
    // string has one character per item: 1 for a visible action, 0 for a hidden one.
    QTest::addColumn<QString>("items");
    QTest::addColumn<QString>("expected");
    QTest::addColumn<QString>("allShown");

    QTest::newRow("two hidden in a row") << "a | b- c- | d" << "110001" << "111111";
    QTest::newRow("nothing visible ahead") << "a- | b" << "001" << "111";
    QTest::newRow("double separator") << "a | | b" << "1101" << "1101";
    QTest::newRow("leading separator, hidden start") << "| a- | b" << "1001" << "1111";
    QTest::newRow("hidden tail keeps earlier separator") << "a | b | c-" << "11110" << "11111";
}

void tst_KToolBar::separatorsHideWhenNeedless()
{
    QFETCH(QString, items);
    KMainWindow window;
    QStringList names = items.split(QLatin1Char(' '));
    for (QString& name : names)
        name.remove(QLatin1Char('-'));
    KToolBar* bar = addBar(window, names);
    KCommand* list = bar->command();
    bar->ensureConnectCommand();
    QCOMPARE(bar->actions().size(), names.size());
    for (int i = 0; i < list->count(); ++i)
        list->subCommand(i)->setVisible(!items.split(QLatin1Char(' ')).at(i).endsWith(QLatin1Char('-')));

    // The idle round refreshes the commands and then the separators.
    QVERIFY(showAndWait(window));
    KIdleEvent idle(0);
    QVERIFY(QCoreApplication::sendEvent(bar, &idle));
    QTEST(visibility(bar), "expected");
    auto* last = dynamic_cast<CountingCommand*>(list->subCommand(list->count() - 1));
    QVERIFY(last);
    QVERIFY(last->updates >= 1);

    // Showing the hidden commands again brings their separators back.
    for (int i = 0; i < list->count(); ++i)
        list->subCommand(i)->setVisible(true);
    bar->updateAction(false);
    QTEST(visibility(bar), "allShown");
}

void tst_KToolBar::enablementAndForceEnable_data()
{
    QTest::addColumn<bool>("enabled");
    QTest::addColumn<QVariant>("force");
    QTest::addColumn<bool>("barEnabled");

    QTest::newRow("disabled") << false << QVariant() << false;
    QTest::newRow("disabled, forced") << false << QVariant(true) << true;
    QTest::newRow("disabled, force false") << false << QVariant(QStringLiteral("false")) << false;
}

void tst_KToolBar::enablementAndForceEnable()
{
    QFETCH(bool, enabled);
    QFETCH(QVariant, force);
    KMainWindow window;
    KToolBar* bar = addBar(window, {"a"});
    if (force.isValid())
        bar->command()->setProperty("forceToolbarEnable", force);
    bar->command()->setEnabled(enabled);
    QTEST(bar->isEnabled(), "barEnabled");
}

void tst_KToolBar::closingFloatingBarHidesCommand()
{
    KMainWindow window;
    KToolBar* bar = addBar(window, {"a", "b"});
    KCommand* list = bar->command();
    QVERIFY(showAndWait(window));
    bar->setFloating(true);
    QVERIFY(bar->isWindow());
    QVERIFY(bar->isVisible());
    QVERIFY(!window.hasToolbar(Qt::TopToolBarArea));

    // Closing hides the command and keeps the bar; the command brings it back, still floating.
    QPointer<KToolBar> guard(bar);
    QVERIFY(bar->close());
    QVERIFY(!list->isVisible());
    QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
    QVERIFY(guard);
    QCOMPARE(window.findToolBar(list), bar);
    list->setVisible(true);
    QVERIFY(bar->isVisible());
    QVERIFY(bar->isFloating());
    // Hiding through the toggle action hides the command too, so a later change of the
    // command does not bring the bar back.
    bar->toggleViewAction()->trigger();
    QVERIFY(!list->isVisible());
    list->setText(QStringLiteral("renamed"));
    QVERIFY(bar->isHidden());
    bar->toggleViewAction()->trigger();
    QVERIFY(list->isVisible());
    QVERIFY(bar->isVisible());

    // The close button goes and comes back with the closable flag.
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
    KToolBar* bar = addBar(window, {"a"});
    QVERIFY(showAndWait(window));
    bar->setFloating(true);
    QVERIFY(bar->windowHandle());
    QVERIFY(bar->windowHandle()->isVisible());

    window.hide();
    QVERIFY(!bar->windowHandle()->isVisible());
    QVERIFY(bar->isFloatingHidden());
    QVERIFY(bar->isVisible());
    QVERIFY(bar->command()->isVisible()); // Qt's state says shown all along
    QVERIFY(showAndWait(window));
    QVERIFY(!bar->isFloatingHidden());
    QVERIFY(bar->windowHandle()->isVisible());

    // Hiding the waiting bar on purpose is honoured when the window comes back.
    window.hide();
    bar->setVisible(false);
    QVERIFY(!bar->isFloatingHidden());
    QVERIFY(showAndWait(window));
    QVERIFY(!bar->isVisible());

    // Shown while the window is hidden, it waits for the window.
    window.hide();
    bar->setVisible(true);
    QVERIFY(bar->isFloatingHidden());
    QVERIFY(!bar->windowHandle()->isVisible());
    QVERIFY(showAndWait(window));
    QVERIFY(bar->windowHandle()->isVisible());
}

void tst_KToolBar::orientationIsBroadcast()
{
    KMainWindow window;
    KToolBar* bar = addBar(window, {});
    auto* probe = new DirectionProbe;
    bar->addWidget(probe);
    bar->setOrientation(Qt::Vertical);
    bar->setOrientation(Qt::Horizontal);
    // A bar moved to a side area turns vertical.
    window.addToolBar(Qt::LeftToolBarArea, bar);
    QCOMPARE(probe->directions, QList<bool>({true, false, true}));
}

void tst_KToolBar::sizesAndClone()
{
    KMainWindow window;
    KToolBar* bar = addBar(window, {"a", "|", "b"});
    KCommand* list = bar->command();
    list->setProperty("name", QStringLiteral("Standard"));
    bar->ensureConnectCommand();

    KMainWindow other;
    QScopedPointer<KToolBar> copy(bar->clone(&other));
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
    QVERIFY(showAndWait(window));

    // A floating dock follows its window like a floating bar.
    dock->setFloating(true);
    window.hide();
    QVERIFY(dock->isFloatingHidden());
    QVERIFY(showAndWait(window));
    QVERIFY(!dock->isFloatingHidden());
    QVERIFY(dock->windowHandle()->isVisible());

    // Closing the dock hides its command; the command shows it again.
    QVERIFY(dock->close());
    QVERIFY(!panel->isVisible());
    panel->setVisible(true);
    QVERIFY(dock->isVisible());
}

void tst_KToolBar::hoverFollowsUnderAPopup()
{
    // A move that an open popup hands on makes the bar look at the pointer again (a hover
    // move at the cursor), so that it looks right the moment the popup closes.
    KMainWindow window;
    auto* bar = new KToolBar(new KListCommand(&window, window.commands()), &window);
    window.addToolBar(bar);
    window.show();
    QVERIFY(QTest::qWaitForWindowExposed(&window));
    int hoverMoves = 0;
    struct Watch : QObject
    {
        int* count;
        bool eventFilter(QObject*, QEvent* e) override
        {
            if (e->type() == QEvent::HoverMove)
                ++*count;
            return false;
        }
    } watch;
    watch.count = &hoverMoves;
    bar->installEventFilter(&watch);
    QMouseEvent move(QEvent::MouseMove, QPointF(1, 1), QPointF(bar->mapToGlobal(QPoint(1, 1))), Qt::NoButton,
                     Qt::NoButton, Qt::NoModifier);
    KBlockedMouseEvent blocked(&move, nullptr);
    QCoreApplication::sendEvent(bar, &blocked);
    QMouseEvent press(QEvent::MouseButtonPress, QPointF(1, 1), QPointF(bar->mapToGlobal(QPoint(1, 1))),
                      Qt::LeftButton, Qt::LeftButton, Qt::NoModifier);
    KBlockedMouseEvent blockedPress(&press, nullptr);
    QCoreApplication::sendEvent(bar, &blockedPress);
    QTRY_COMPARE(hoverMoves, 1);
}

NORVIK_TEST_MAIN(tst_KToolBar)
#include "tst_ktoolbar.moc"
