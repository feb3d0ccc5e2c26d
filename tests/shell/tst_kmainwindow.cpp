#include <ktestsupport.h>

#include <QDockWidget>
#include <QMenu>
#include <QPointer>
#include <QTemporaryDir>

#include <kcommandbarprop.h>
#include <kcommands.h>
#include <klistcommand.h>
#include <kmainwindow.h>
#include <ktoolbar.h>
#include <ktoolbartoggleviewcommand.h>

namespace {

QString idOf(KCommand* cmd)
{
    return cmd ? cmd->property("id").toString() : QStringLiteral("null");
}

const QByteArray s_searchBody =
    "<mainwindow><commands>"
    "<KTriggerCommand id='New' aid='10' faceid='1' tag='file,main'/>"
    "<KTriggerCommand id='Open' aid='11' tag='File'/>"
    "<KTriggerCommand id='Hidden' aid='12' visible='false'/>"
    "<KListCommand id='Sub' tag='submenu'><command idQ='Open'/><KTriggerCommand id='Deep' faceid='1'/></KListCommand>"
    "<KListCommand id='Std'><command idQ='New'/><separator/><command idQ='Sub'/><command idQ='Hidden'/></KListCommand>"
    "<KListCommand id='Ctx'><command idQ='Open'/><KTriggerCommand id='Paste' aid='10'/></KListCommand>"
    "</commands><toolbar cmd='Std'/><popupmenu cmd='Ctx'/></mainwindow>";

} // namespace

// The main window: its dock area, full screen, searching and copying its bars, and taking
// everything back when the application resets its description.
class tst_KMainWindow : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void cleanup();
    void structureAndPool();
    void fullScreenKeepsUserHiddenBars();
    void findCommand_data();
    void findCommand();
    void syncApiBarsFromMainWindow();
    void xmlResetClearsBarsAndDocks();
    void toolBarSignalsCrossQueuedConnections();

private:
    bool load(const QByteArray& body) { return KTestSupport::loadMainXml(m_dir.path(), body); }
    QTemporaryDir m_dir;
};

void tst_KMainWindow::cleanup()
{
    KApplication::instance()->resetXml();
}

void tst_KMainWindow::structureAndPool()
{
    KMainWindow window;
    QCOMPARE(window.commands()->parentCommands(), KApplication::instance()->commands());
    QCOMPARE((new KView(window.dockArea()))->mainWindow(), &window);

    // Two bars on one command: the first one is found. A bar stands once in the pool.
    auto* list = new KListCommand(&window, window.commands());
    auto* first = new KToolBar(list, &window);
    auto* second = new KToolBar(list, &window);
    window.addToolBar(first);
    window.addToolBar(Qt::RightToolBarArea, second);
    window.addToolBar(first);
    QCOMPARE(window.toolBarCount(), 2);
    QCOMPARE(window.findToolBar(list), first);
    QVERIFY(window.hasToolbar(Qt::RightToolBarArea));
    QVERIFY(!window.hasToolbar(Qt::BottomToolBarArea));

    // A bar whose properties say floating is kept out of the dock areas.
    auto* floatingList = new KListCommand(&window, window.commands());
    KCommandBarProp(floatingList, nullptr).setPosition(4);
    QSignalSpy added(&window, &KMainWindow::addToolBarSignal);
    auto* floating = new KToolBar(floatingList, &window);
    window.addToolBar(floating);
    QCOMPARE(added.count(), 0);
    QCOMPARE(window.dockArea()->toolBarArea(floating), Qt::NoToolBarArea);
    QCOMPARE(window.toolBarCount(), 3);
    window.removeToolBar(second);
    QCOMPARE(window.toolBarCount(), 2);
    QVERIFY(!window.hasToolbar(Qt::RightToolBarArea));
    delete second;
}

void tst_KMainWindow::fullScreenKeepsUserHiddenBars()
{
    QVERIFY(load("<mainwindow><commands><KListCommand id='Std'/><KListCommand id='Fmt'/>"
                 "<KListCommand id='TBCustomizePopupMenu'/></commands><toolbar cmd='Std'/><toolbar cmd='Fmt'/></mainwindow>"));
    KMainWindow window;
    window.polishXml();
    KCommand* std = window.commands()->command("Std");
    KCommand* fmt = window.commands()->command("Fmt");
    KToolBar* stdBar = window.findToolBar(std);
    KToolBar* fmtBar = window.findToolBar(fmt);
    QVERIFY(stdBar);
    QVERIFY(fmtBar);
    QWidget* customWidget = nullptr;
    KCommand* custom = nullptr;
    window.addCustomToolBar(&customWidget, &custom);
    auto* customBar = qobject_cast<KToolBar*>(customWidget);
    QVERIFY(customBar);
    QVERIFY(custom);
    QCOMPARE(customBar->command(), custom);

    window.showMaximized();
    QVERIFY(QTest::qWaitForWindowExposed(&window));
    fmt->setVisible(false); // the user closes one bar
    window.setFullScreen(true);
    window.setAllToolBarsVisilbe(false);
    QVERIFY(window.isFullScreen());
    QVERIFY(window.windowState() & Qt::WindowFullScreen);
    QVERIFY(stdBar->isHidden());
    QVERIFY(!std->isVisible(KMultiControlBool::FullScreenControl));
    QCOMPARE(window.toolBarCount(), 3); // without a ribbon there is no full-screen bar
    QCOMPARE(window.currentVisibleBars(), QSet<KToolBar*>({customBar})); // user-made bars are left alone
    window.setFullScreen(true); // asked twice, the window state from before is kept
    QCOMPARE(window.lastState("WindowState").toInt(), int(Qt::WindowMaximized));

    window.setFullScreen(false);
    window.setAllToolBarsVisilbe(true);
    QVERIFY(!window.isFullScreen());
    QCOMPARE(window.windowState(), Qt::WindowStates(Qt::WindowMaximized));
    QVERIFY(std->isVisible());
    QVERIFY(!fmt->isVisible());
    QVERIFY(fmtBar->isHidden());
    QCOMPARE(window.currentVisibleBars(), QSet<KToolBar*>({stdBar, customBar}));

    // The dock area's menu offers the user-made bar through its toggle action.
    bool handled = false;
    QScopedPointer<QMenu> menu(window.createDockAreaPopupMenu(handled));
    QVERIFY(handled);
    QVERIFY(menu);
    QCOMPARE(menu->actions(), QList<QAction*>({customBar->toggleViewAction()}));
    window.commands()->command("TBCustomizePopupMenu")->setEnabled(false);
    handled = false;
    QVERIFY(!window.createDockAreaPopupMenu(handled));
    QVERIFY(handled);
}

void tst_KMainWindow::findCommand_data()
{
    QTest::addColumn<QString>("start");
    QTest::addColumn<int>("aid");
    QTest::addColumn<int>("faceid");
    QTest::addColumn<QString>("type");
    QTest::addColumn<QString>("tag");
    QTest::addColumn<QString>("flags"); // v: visible only, r: recursive, a: all
    QTest::addColumn<QString>("found"); // "id/parent" pairs
    const auto row = [](const char* name, const char* start, int aid, int faceid, const char* type, const char* tag,
                        const char* flags, const char* found) {
        QTest::newRow(name) << start << aid << faceid << type << tag << flags << found;
    };
    // Tool bars are searched first, then popup menus; a list's items ahead of the list.
    row("aid, all", "", 10, -1, "", "", "ra", "New/Std Paste/Ctx");
    row("aid, first", "", 10, -1, "", "", "r", "New/Std");
    row("faceid, not recursive", "", -1, 1, "", "", "a", "New/Std");
    row("visible buttons", "", -1, -1, "Button", "", "vra", "New/Std Open/Sub Deep/Sub Open/Ctx Paste/Ctx");
    row("popups", "", -1, -1, "Popup", "", "ra", "Sub/Std");
    row("tag, any case", "", -1, -1, "", "FILE", "ra", "New/Std Open/Sub Open/Ctx");
    row("under a start", "Sub", -1, -1, "Button", "", "ra", "Open/Sub Deep/Sub");
    row("nothing", "", 99, -1, "", "", "ra", "");
}

void tst_KMainWindow::findCommand()
{
    QFETCH(QString, start);
    QFETCH(int, aid);
    QFETCH(int, faceid);
    QFETCH(QString, type);
    QFETCH(QString, tag);
    QFETCH(QString, flags);
    QFETCH(QString, found);
    QVERIFY(load(s_searchBody));
    KMainWindow window;
    window.polishXml();
    KCommand* startCmd = start.isEmpty() ? nullptr : window.commands()->command(start);

    KListCommand result(nullptr, nullptr);
    QVector<KCommand*> parents;
    const bool any = window.findCommand(startCmd, aid, faceid, type, tag, flags.contains('v'), flags.contains('r'),
                                        &result, parents, flags.contains('a'));
    QStringList pairs;
    for (int i = 0; i < qMax(result.count(), int(parents.size())); ++i)
        pairs << idOf(result.subCommand(i)) + '/' + idOf(parents.value(i));
    QCOMPARE(pairs.join(' '), found);
    QCOMPARE(any, !found.isEmpty());
}

void tst_KMainWindow::syncApiBarsFromMainWindow()
{
    QVERIFY(load("<mainwindow><commands>"
                 "<KTriggerCommand id='a' text='A'/><KTriggerCommand id='b' text='B'/><KTriggerCommand id='c' text='C'/>"
                 "<KListCommand id='Std' name='Standard'><command idQ='a'/><command idQ='b'/><command idQ='c'/></KListCommand>"
                 "<KListCommand id='Ctx'><command idQ='a'/></KListCommand><KListCommand id='TBCustomizePopupMenu'/>"
                 "</commands><toolbar cmd='Std'/><popupmenu cmd='Ctx'/></mainwindow>"));
    KMainWindow source, target;
    source.polishXml();
    target.polishXml();
    KCommands* srcCmds = source.commands();
    // The windows read the same description into commands of their own.
    QVERIFY(target.commands()->command("Std") != srcCmds->command("Std"));

    // What the user changed in the first window: an item removed, one renamed, one added, a
    // bar and a popup menu of their own.
    const auto addItem = [&](QObject* parent, KCommand* list, const char* text) {
        KCommand* item = srcCmds->customCommand(QStringLiteral("KTriggerCommand"), &source, parent);
        item->setText(QString::fromLatin1(text));
        qobject_cast<KListCommand*>(list)->addSubCommand(item);
        return item;
    };
    auto* std = qobject_cast<KListCommand*>(srcCmds->command("Std"));
    std->removeSubCommand(1);
    srcCmds->command("a")->setText(QStringLiteral("Renamed"));
    KCommand* mine = addItem(srcCmds, std, "Mine");
    QWidget* barWidget = nullptr;
    KCommand* barCommand = nullptr;
    source.addCustomToolBar(&barWidget, &barCommand);
    QVERIFY(barCommand);
    addItem(barCommand, barCommand, "Tool");
    QVERIFY(source.addCustomPopupMenu());

    target.syncApiBarsFromMainWindow(&source);
    KCommand* targetStd = target.commands()->command("Std");
    QCOMPARE(KTestSupport::texts(targetStd), QStringList({"Renamed", "C", "Mine"}));
    QCOMPARE(targetStd->subCommand(0), target.commands()->command("a"));
    KCommand* copied = targetStd->subCommand(2);
    QVERIFY(copied != mine);
    QCOMPARE(copied->host(), &target);

    QCOMPARE(target.toolBarCount(), 2);
    QCOMPARE(target.findToolBar(targetStd), target.toolBarAt(0)); // no second copy of a described bar
    KToolBar* copiedBar = target.toolBarAt(1);
    QVERIFY(copiedBar->props());
    QVERIFY(copiedBar->props()->getCustom());
    QCOMPARE(KTestSupport::texts(copiedBar->command()), QStringList({"Tool"}));
    KCommand* toggles = target.commands()->command("TBCustomizePopupMenu");
    QCOMPARE(toggles->count(), 1);
    auto* toggle = qobject_cast<KToolBarToggleViewCommand*>(toggles->subCommand(0));
    QVERIFY(toggle);
    QCOMPARE(toggle->action(), copiedBar->toggleViewAction());
    QCOMPARE(target.popupMenuCount(), 2);
    QVERIFY(target.popupMenuAt(1)->property("custom").toBool());
}

void tst_KMainWindow::xmlResetClearsBarsAndDocks()
{
    const QByteArray body = "<mainwindow><commands><KListCommand id='Std'/><KTriggerCommand id='Panel'/>"
                            "<KListCommand id='Ctx'/></commands><toolbar cmd='Std'/><dock cmd='Panel'/><popupmenu cmd='Ctx'/></mainwindow>";
    QVERIFY(load(body));
    KMainWindow window;
    window.polishXml();
    QPointer<KToolBar> bar = window.findToolBar(window.commands()->command("Std"));
    QPointer<QDockWidget> dock = window.findDockWidget("Panel");
    QVERIFY(bar);
    QVERIFY(dock);
    QCOMPARE(window.popupMenuCount(), 1);

    KApplication::instance()->resetXml();
    QCOMPARE(window.toolBarCount() + window.popupMenuCount(), 0);
    QVERIFY(!window.findDockWidget("Panel"));
    QVERIFY(!window.commands()->command("Std"));
    QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
    QVERIFY(!bar);
    QVERIFY(!dock);

    // A window that exists when the application reads a description builds from it at once.
    QVERIFY(load(body));
    QCOMPARE(window.toolBarCount(), 1);
    QVERIFY(window.findDockWidget("Panel"));
}

void tst_KMainWindow::toolBarSignalsCrossQueuedConnections()
{
    KMainWindow window;
    auto* list = new KListCommand(&window, window.commands());
    auto* first = new KToolBar(list, &window);
    auto* second = new KToolBar(list, &window);

    // A receiver on a queued connection sees the real pointers, and so does a spy.
    QList<QToolBar*> added;
    QList<QPair<QToolBar*, QToolBar*>> inserted;
    QObject context;
    connect(&window, &KMainWindow::addToolBarSignal, &context,
            [&](QToolBar* bar) { added.append(bar); }, Qt::QueuedConnection);
    connect(&window, &KMainWindow::insertToolBarSignal, &context,
            [&](QToolBar* before, QToolBar* bar) { inserted.append(qMakePair(before, bar)); },
            Qt::QueuedConnection);
    QSignalSpy spy(&window, &KMainWindow::insertToolBarSignal);
    QVERIFY(spy.isValid());

    window.addToolBar(first);
    window.insertToolBar(first, second);
    QVERIFY(added.isEmpty()); // queued, not yet delivered
    QTRY_COMPARE(added, QList<QToolBar*>({first}));
    QTRY_COMPARE(inserted.size(), 1);
    QCOMPARE(inserted.first().first, static_cast<QToolBar*>(first));
    QCOMPARE(inserted.first().second, static_cast<QToolBar*>(second));
    QCOMPARE(spy.count(), 1);
    // Read as a host that never saw the class declared would: as plain objects.
    QCOMPARE(spy.first().at(0).value<QObject*>(), static_cast<QObject*>(first));
    QCOMPARE(spy.first().at(1).value<QObject*>(), static_cast<QObject*>(second));
}

NORVIK_TEST_MAIN(tst_KMainWindow)
#include "tst_kmainwindow.moc"
