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

QStringList idsOf(const QVector<KCommand*>& commands)
{
    QStringList ids;
    for (KCommand* cmd : commands)
        ids << (cmd ? cmd->property("id").toString() : QStringLiteral("null"));
    return ids;
}

QStringList idsOf(KCommand* list)
{
    QVector<KCommand*> items;
    for (int i = 0; list && i < list->count(); ++i)
        items << list->subCommand(i);
    return idsOf(items);
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
    void initTestCase();
    void cleanup();
    void structureAndPool();
    void fullScreenKeepsUserHiddenBars();
    void findCommand_data();
    void findCommand();
    void syncApiBarsFromMainWindow();
    void xmlResetClearsBarsAndDocks();

private:
    bool load(const QByteArray& body);
    QTemporaryDir m_dir;
};

bool tst_KMainWindow::load(const QByteArray& body)
{
    return KApplication::instance()->setupXml(
        KTestSupport::writeMainXml(m_dir.path(), QStringLiteral("main.xml"), body));
}

void tst_KMainWindow::initTestCase()
{
    qRegisterMetaType<QToolBar*>();
}

void tst_KMainWindow::cleanup()
{
    KApplication::instance()->resetXml();
}

void tst_KMainWindow::structureAndPool()
{
    KMainWindow window;
    KMainDockArea* area = window.dockArea();
    QVERIFY(area);
    QCOMPARE(area->parentWidget(), &window);
    QVERIFY(!area->isWindow());
    QCOMPARE(area->accessibleName(), QString("KMainDockArea"));
    QCOMPARE(window.commands()->parentCommands(), KApplication::instance()->commands());
    QCOMPARE(window.focusPolicy(), Qt::NoFocus);

    auto* view = new KView(area);
    QCOMPARE(view->mainWindow(), &window);

    // Two bars on one command: the first one is found.
    auto* list = new KListCommand(&window, window.commands());
    auto* first = new KToolBar(list, &window);
    auto* second = new KToolBar(list, &window);
    window.addToolBar(first);
    window.addToolBar(Qt::RightToolBarArea, second);
    window.addToolBar(first); // a bar stands once in the pool
    QCOMPARE(window.toolBarCount(), 2);
    QCOMPARE(window.findToolBar(list), first);
    QVERIFY(window.hasToolbar(Qt::TopToolBarArea));
    QVERIFY(window.hasToolbar(Qt::RightToolBarArea));
    QVERIFY(!window.hasToolbar(Qt::BottomToolBarArea));

    // A bar whose properties say floating is kept out of the dock areas.
    auto* floatingList = new KListCommand(&window, window.commands());
    KCommandBarProp(floatingList, nullptr).setPosition(4);
    QSignalSpy added(&window, &KMainWindow::addToolBarSignal);
    auto* floating = new KToolBar(floatingList, &window);
    window.addToolBar(floating);
    QCOMPARE(added.count(), 0);
    QVERIFY(floating->isFloatable());
    QCOMPARE(window.dockArea()->toolBarArea(floating), Qt::NoToolBarArea);
    QCOMPARE(window.toolBarCount(), 3);

    window.removeToolBar(second);
    QCOMPARE(window.toolBarCount(), 2);
    QVERIFY(!window.hasToolbar(Qt::RightToolBarArea));
    delete second;

    window.setToolbarGroupIndex(3);
    QCOMPARE(window.toolbarGroupIndex(), 2);
}

void tst_KMainWindow::fullScreenKeepsUserHiddenBars()
{
    QVERIFY(load("<mainwindow><commands><KListCommand id='Std'/><KListCommand id='Fmt'/>"
                 "<KListCommand id='TBCustomizePopupMenu'/></commands>"
                 "<toolbar cmd='Std'/><toolbar cmd='Fmt'/></mainwindow>"));
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
    QVERIFY(window.windowState() & Qt::WindowMaximized);
    // The user closes one bar.
    fmt->setVisible(false);
    QVERIFY(fmtBar->isHidden());

    window.setFullScreen(true);
    window.setAllToolBarsVisilbe(false);
    QVERIFY(window.isFullScreen());
    QVERIFY(window.windowState() & Qt::WindowFullScreen);
    QVERIFY(stdBar->isHidden());
    QVERIFY(!std->isVisible(KMultiControlBool::FullScreenControl));
    QVERIFY(!customBar->isHidden()); // user-made bars are left alone
    QCOMPARE(window.toolBarCount(), 3); // without a ribbon there is no full-screen bar
    QCOMPARE(window.currentVisibleBars(), QSet<KToolBar*>({customBar}));
    // Asked twice, the window state from before is kept.
    window.setFullScreen(true);
    QCOMPARE(window.lastState("WindowState").toInt(), int(Qt::WindowMaximized));

    window.setFullScreen(false);
    window.setAllToolBarsVisilbe(true);
    QVERIFY(!window.isFullScreen());
    QCOMPARE(window.windowState(), Qt::WindowStates(Qt::WindowMaximized));
    QVERIFY(!stdBar->isHidden());
    QVERIFY(std->isVisible());
    QVERIFY(fmtBar->isHidden());
    QVERIFY(!fmt->isVisible());
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
    QTest::addColumn<bool>("visibleOnly");
    QTest::addColumn<bool>("recursive");
    QTest::addColumn<bool>("all");
    QTest::addColumn<QStringList>("found");
    QTest::addColumn<QStringList>("parents");

    // Tool bars are searched first, then popup menus; a list's items ahead of the list.
    QTest::newRow("aid, all") << "" << 10 << -1 << "" << "" << false << true << true
                              << QStringList({"New", "Paste"}) << QStringList({"Std", "Ctx"});
    QTest::newRow("aid, first") << "" << 10 << -1 << "" << "" << false << true << false
                                << QStringList({"New"}) << QStringList({"Std"});
    QTest::newRow("faceid, recursive") << "" << -1 << 1 << "" << "" << false << true << true
                                       << QStringList({"New", "Deep"}) << QStringList({"Std", "Sub"});
    QTest::newRow("faceid, not recursive") << "" << -1 << 1 << "" << "" << false << false << true
                                           << QStringList({"New"}) << QStringList({"Std"});
    QTest::newRow("buttons") << "" << -1 << -1 << "Button" << "" << false << true << true
                             << QStringList({"New", "Open", "Deep", "Hidden", "Open", "Paste"})
                             << QStringList({"Std", "Sub", "Sub", "Std", "Ctx", "Ctx"});
    QTest::newRow("visible buttons") << "" << -1 << -1 << "Button" << "" << true << true << true
                                     << QStringList({"New", "Open", "Deep", "Open", "Paste"})
                                     << QStringList({"Std", "Sub", "Sub", "Ctx", "Ctx"});
    QTest::newRow("popups") << "" << -1 << -1 << "Popup" << "" << false << true << true << QStringList({"Sub"})
                            << QStringList({"Std"});
    QTest::newRow("split buttons") << "" << -1 << -1 << "SplitButtonPopup" << "" << false << true << true
                                   << QStringList() << QStringList();
    QTest::newRow("tag, any case") << "" << -1 << -1 << "" << "FILE" << false << true << true
                                   << QStringList({"New", "Open", "Open"}) << QStringList({"Std", "Sub", "Ctx"});
    QTest::newRow("tag and aid") << "" << 11 << -1 << "" << "file" << false << true << true
                                 << QStringList({"Open", "Open"}) << QStringList({"Sub", "Ctx"});
    QTest::newRow("under a start") << "Sub" << -1 << -1 << "Button" << "" << false << true << true
                                   << QStringList({"Open", "Deep"}) << QStringList({"Sub", "Sub"});
    QTest::newRow("start, not recursive") << "Std" << -1 << -1 << "Popup" << "" << false << false << true
                                          << QStringList({"Sub"}) << QStringList({"Std"});
    QTest::newRow("nothing") << "" << 99 << -1 << "" << "" << false << true << true << QStringList()
                             << QStringList();
}

void tst_KMainWindow::findCommand()
{
    QFETCH(QString, start);
    QFETCH(int, aid);
    QFETCH(int, faceid);
    QFETCH(QString, type);
    QFETCH(QString, tag);
    QFETCH(bool, visibleOnly);
    QFETCH(bool, recursive);
    QFETCH(bool, all);
    QFETCH(QStringList, found);
    QFETCH(QStringList, parents);

    QVERIFY(load(s_searchBody));
    KMainWindow window;
    window.polishXml();
    QCOMPARE(window.toolBarCount(), 1);
    QCOMPARE(window.popupMenuCount(), 1);
    KCommand* startCmd = start.isEmpty() ? nullptr : window.commands()->command(start);
    QCOMPARE(startCmd == nullptr, start.isEmpty());

    KListCommand result(nullptr, nullptr);
    QVector<KCommand*> parentList;
    const bool any = window.findCommand(startCmd, aid, faceid, type, tag, visibleOnly, recursive, &result,
                                        parentList, all);
    QCOMPARE(any, !found.isEmpty());
    QCOMPARE(idsOf(&result), found);
    QCOMPARE(idsOf(parentList), parents);
}

void tst_KMainWindow::syncApiBarsFromMainWindow()
{
    QVERIFY(load("<mainwindow><commands>"
                 "<KTriggerCommand id='a' text='A'/><KTriggerCommand id='b'/><KTriggerCommand id='c'/>"
                 "<KListCommand id='Std' name='Standard'><command idQ='a'/><command idQ='b'/><command idQ='c'/>"
                 "</KListCommand>"
                 "<KListCommand id='Ctx'><command idQ='a'/></KListCommand>"
                 "<KListCommand id='TBCustomizePopupMenu'/>"
                 "</commands><toolbar cmd='Std'/><popupmenu cmd='Ctx'/></mainwindow>"));
    KMainWindow source;
    source.polishXml();
    KMainWindow target;
    target.polishXml();
    KCommands* srcCmds = source.commands();
    // The windows read the same description into commands of their own.
    QVERIFY(target.commands()->command("Std") != srcCmds->command("Std"));

    // What the user changed in the first window: an item removed, one renamed, one added, a
    // bar and a popup menu of their own.
    auto* std = qobject_cast<KListCommand*>(srcCmds->command("Std"));
    std->removeSubCommand(1);
    srcCmds->command("a")->setText(QStringLiteral("Renamed"));
    KCommand* mine = srcCmds->customCommand(QStringLiteral("KTriggerCommand"), &source, srcCmds);
    mine->setText(QStringLiteral("Mine"));
    std->addSubCommand(mine);
    QWidget* barWidget = nullptr;
    KCommand* barCommand = nullptr;
    source.addCustomToolBar(&barWidget, &barCommand);
    QVERIFY(barCommand);
    KCommand* tool = srcCmds->customCommand(QStringLiteral("KTriggerCommand"), &source, barCommand);
    tool->setText(QStringLiteral("Tool"));
    qobject_cast<KListCommand*>(barCommand)->addSubCommand(tool);
    QVERIFY(source.addCustomPopupMenu());

    target.syncApiBarsFromMainWindow(&source);

    KCommand* targetStd = target.commands()->command("Std");
    QCOMPARE(targetStd->count(), 3);
    QCOMPARE(targetStd->subCommand(0)->property("id").toString(), QString("a"));
    QCOMPARE(targetStd->subCommand(1)->property("id").toString(), QString("c"));
    QCOMPARE(targetStd->subCommand(0)->text(), QString("Renamed"));
    QCOMPARE(targetStd->subCommand(0), target.commands()->command("a"));
    KCommand* copied = targetStd->subCommand(2);
    QVERIFY(copied != mine);
    QCOMPARE(copied->text(), QString("Mine"));
    QCOMPARE(copied->host(), &target);

    QCOMPARE(target.toolBarCount(), 2);
    KToolBar* copiedBar = target.toolBarAt(1);
    QVERIFY(copiedBar->props());
    QVERIFY(copiedBar->props()->getCustom());
    QCOMPARE(copiedBar->command()->count(), 1);
    QCOMPARE(copiedBar->command()->subCommand(0)->text(), QString("Tool"));
    auto* toggles = target.commands()->command("TBCustomizePopupMenu");
    QCOMPARE(toggles->count(), 1);
    auto* toggle = qobject_cast<KToolBarToggleViewCommand*>(toggles->subCommand(0));
    QVERIFY(toggle);
    QCOMPARE(toggle->action(), copiedBar->toggleViewAction());

    QCOMPARE(target.popupMenuCount(), 2);
    QVERIFY(target.popupMenuAt(1)->property("custom").toBool());
    // Syncing again adds no second copy of the described bars.
    QCOMPARE(target.findToolBar(targetStd), target.toolBarAt(0));
}

void tst_KMainWindow::xmlResetClearsBarsAndDocks()
{
    const QByteArray body = "<mainwindow><commands><KListCommand id='Std'/><KTriggerCommand id='Panel'/>"
                            "<KListCommand id='Ctx'/></commands>"
                            "<toolbar cmd='Std'/><dock cmd='Panel'/><popupmenu cmd='Ctx'/></mainwindow>";
    QVERIFY(load(body));
    KMainWindow window;
    window.polishXml();
    QPointer<KToolBar> bar = window.findToolBar(window.commands()->command("Std"));
    QPointer<QDockWidget> dock = window.findDockWidget("Panel");
    QVERIFY(bar);
    QVERIFY(dock);
    QCOMPARE(window.popupMenuCount(), 1);

    KApplication::instance()->resetXml();
    QCOMPARE(window.toolBarCount(), 0);
    QCOMPARE(window.popupMenuCount(), 0);
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

NORVIK_TEST_MAIN(tst_KMainWindow)
#include "tst_kmainwindow.moc"
