#include <ktestsupport.h>

#include <QLineEdit>
#include <QScreen>
#include <QSignalSpy>
#include <QStackedWidget>
#include <QStandardPaths>
#include <QStyleFactory>
#include <QTemporaryDir>

#include <kapplication.h>
#include <kcommandfactory.h>
#include <kcommands.h>
#include <kcontextcategorycommand.h>
#include <kidleevent.h>
#include <kmainwindow.h>
#include <korbstyle.h>
#include <kpopupwidget.h>
#include <krbcategory.h>
#include <krbtabbar.h>
#include <krbtabbutton.h>
#include <krbtabfilebutton.h>
#include <krbtabwidget.h>
#include <krbtabwidgetcommand.h>
#include <ksettings.h>
#include <ktriggercommand.h>

namespace {

// A category whose page is a row of line edits: a custom widget, so Tab has somewhere to go.
class EditsCategory : public KListCommand
{
public:
    using KListCommand::KListCommand;
    bool isCustomWidget() const override { return true; }
    QWidget* createInlineWidget(QWidget* parent) override
    {
        auto* page = new QWidget(parent);
        auto* row = new QHBoxLayout(page);
        for (const char* name : {"first", "second", "third"}) {
            auto* edit = new QLineEdit(page);
            edit->setObjectName(QLatin1String(name));
            row->addWidget(edit);
        }
        page->findChild<QLineEdit*>("second")->setEnabled(false);
        return page;
    }
};

// A ribbon command of plain categories named by texts; "ctx:" makes a hidden context tab.
KRbTabWidgetCommand* ribbon(const QStringList& names, QObject* owner)
{
    auto* list = new KRbTabWidgetCommand(owner, owner);
    for (const QString& name : names) {
        KListCommand* cmd = nullptr;
        if (name.startsWith("ctx:")) {
            auto* context = new KContextCategoryCommand(owner, owner);
            context->setContextName(name.mid(4));
            context->setProperty("rbContextTableButton", true);
            context->setVisible(false);
            cmd = context;
        } else if (name == "edits") {
            cmd = new EditsCategory(owner, owner);
        } else {
            cmd = new KListCommand(owner, owner);
        }
        cmd->setText(name);
        list->addSubCommand(cmd);
    }
    return list;
}

void pressTab(KRbTabWidget& w, int index)
{
    QTest::mousePress(w.tabBar()->tabButtonAt(index), Qt::LeftButton);
    QTest::mouseRelease(w.tabBar()->tabButtonAt(index), Qt::LeftButton);
}

void doubleClickTab(KRbTabWidget& w, int index)
{
    pressTab(w, index);
    pressTab(w, index); // a second press within 300 ms
}

// The plain frame, with the right 12 pixels of the file button as its arrow part.
class ArrowStyle : public KORBStyle
{
public:
    using KORBStyle::KORBStyle;
    QStyle::SubControl hitTestComplexControl_KRbTabFileButton(QStyle::ComplexControl,
                                                             const KStyleOptionRbTabFileButton* option,
                                                             const QPoint& pos, const QWidget*) const override
    {
        if (!option->rect.contains(pos))
            return SC_None;
        return pos.x() >= option->rect.right() - 11 ? KSC_FileButtonArrow : KSC_ToolButtonButton;
    }
};

} // namespace

class tst_KRbTabWidget : public QObject
{
    Q_OBJECT
private Q_SLOTS:
    void initTestCase()
    {
        QStandardPaths::setTestModeEnabled(true);
        QApplication::setStyle(new ArrowStyle(QStyleFactory::create("Fusion")));
    }

    void pagesAreMadeWhenTheirTabFirstShows();
    void collapsedRibbonMakesNoPageUntilATabIsPressed();
    void statusFollowsClicksAndDoubleClicks();
    void setCurrentItemAndSetStatus();
    void popupPanelStaysOnTheScreen();
    void removedCategoryTakesItsPage();
    void contextTabRaisesWhenItsCommandTurnsVisible();
    void groupSettingsReachEveryPage();
    void tabWalksTheControlsThenLeaves();
    void titleOfWindowTitle_data();
    void titleOfWindowTitle();
    void fileButtonTipLight();
    void mainWindowWithRibbon();

private:
};

void tst_KRbTabWidget::pagesAreMadeWhenTheirTabFirstShows()
{
    QObject owner;
    KRbTabWidgetCommand* cmd = ribbon({"Home", "Insert", "View"}, &owner);
    KRbTabWidget w(cmd, nullptr);
    QCOMPARE(w.findChildren<KRbCategory*>().size(), 0); // nothing before it shows
    w.show();
    QVERIFY(QTest::qWaitForWindowExposed(&w));
    QCOMPARE(w.status(), KRbSubTabBar::Expanded);
    QCOMPARE(w.currentIndex(), 0);
    QCOMPARE(w.pageCount(), 1);
    QVERIFY(w.pageOf(cmd->subCommand(0)));
    QVERIFY(!w.pageOf(cmd->subCommand(2)));
    QCOMPARE(w.stack()->parentWidget(), &w);
    QVERIFY(w.stack()->isVisible());

    QSignalSpy changed(&w, &KRbTabWidget::categoryChanged);
    pressTab(w, 2);
    QCOMPARE(w.currentIndex(), 2);
    QCOMPARE(changed.count(), 1);
    QCOMPARE(w.pageCount(), 2);
    QCOMPARE(w.currentPage(), w.pageOf(cmd->subCommand(2)));
    QCOMPARE(w.stack()->currentWidget(), w.currentPage());
    // Back to the first tab: its page is reused, not made again.
    QWidget* first = w.pageOf(cmd->subCommand(0));
    QTest::qWait(310); // not a double click
    pressTab(w, 0);
    QCOMPARE(w.currentPage(), first);
    QCOMPARE(w.findChildren<KRbCategory*>().size(), 2);
}

void tst_KRbTabWidget::collapsedRibbonMakesNoPageUntilATabIsPressed()
{
    QObject owner;
    KRbTabWidgetCommand* cmd = ribbon({"Home", "Insert"}, &owner);
    KRbTabWidget w(cmd, nullptr);
    w.setStatus(KRbSubTabBar::Collapsed, false);
    w.show();
    QVERIFY(QTest::qWaitForWindowExposed(&w));
    QCOMPARE(w.status(), KRbSubTabBar::Collapsed);
    QCOMPARE(w.findChildren<KRbCategory*>().size(), 0);
    QVERIFY(!w.stack()->isVisible());
    QCOMPARE(w.tipHeight(), w.titleHeight());

    pressTab(w, 1);
    QCOMPARE(w.status(), KRbSubTabBar::Popup);
    QCOMPARE(w.currentIndex(), 1);
    QCOMPARE(w.findChildren<KRbCategory*>().size(), 1);
    QVERIFY(w.pageOf(cmd->subCommand(1)));
    QVERIFY(w.popupPanel()->isVisible());
    QCOMPARE(w.popupPanel()->contentWidget(), w.stack());
    w.popupPanel()->hide();
    QCOMPARE(w.status(), KRbSubTabBar::Collapsed);
}

void tst_KRbTabWidget::statusFollowsClicksAndDoubleClicks()
{
    QObject owner;
    KRbTabWidget w(ribbon({"Home", "Insert", "View"}, &owner), nullptr);
    w.show();
    QVERIFY(QTest::qWaitForWindowExposed(&w));
    QSignalSpy status(&w, &KRbTabWidget::statusChanged);
    const int expandedHeight = w.sizeHint().height();

    // Expanded: a click on another tab keeps the ribbon open; a double click collapses it.
    pressTab(w, 1);
    QCOMPARE(w.status(), KRbSubTabBar::Expanded);
    QCOMPARE(status.count(), 0);
    QTest::qWait(310);
    doubleClickTab(w, 1);
    QCOMPARE(w.status(), KRbSubTabBar::Collapsed);
    QCOMPARE(status.count(), 1);
    QCOMPARE(status.last().at(0).toBool(), true);
    QVERIFY(w.sizeHint().height() < expandedHeight);

    // Collapsed: a click pops the page up on the tab pressed.
    QTest::qWait(310);
    pressTab(w, 2);
    QCOMPARE(w.status(), KRbSubTabBar::Popup);
    QCOMPARE(w.currentIndex(), 2);
    QVERIFY(w.popupPanel()->isVisible());
    QVERIFY(!w.stack()->isHidden());
    QCOMPARE(w.tipHeight(), w.titleHeight() + w.stack()->height());

    // Popup: a double click pins it; the page comes back into the ribbon from the panel.
    QTest::qWait(310);
    doubleClickTab(w, 2);
    QCOMPARE(w.status(), KRbSubTabBar::Expanded);
    QVERIFY(!w.popupPanel()->isVisible());
    QCOMPARE(w.stack()->parentWidget(), &w);
    QVERIFY(w.stack()->isVisible());
    QCOMPARE(w.sizeHint().height(), expandedHeight);
}

void tst_KRbTabWidget::setCurrentItemAndSetStatus()
{
    QObject owner;
    KRbTabWidget w(ribbon({"Home", "Insert"}, &owner), nullptr);
    w.show();
    QVERIFY(QTest::qWaitForWindowExposed(&w));
    QSignalSpy status(&w, &KRbTabWidget::statusChanged);

    w.setCurrentItem(-1);
    QCOMPARE(w.status(), KRbSubTabBar::Collapsed);
    QVERIFY(!w.stack()->isVisible());
    w.setCurrentItem(5); // out of range: nothing at all
    w.setCurrentItem(-2);
    QCOMPARE(w.status(), KRbSubTabBar::Collapsed);
    QCOMPARE(status.count(), 1);
    w.setCurrentItem(1);
    QCOMPARE(w.status(), KRbSubTabBar::Expanded);
    QCOMPARE(w.currentIndex(), 1);
    QVERIFY(w.stack()->isVisible());
    QCOMPARE(status.count(), 2);
    // The same status again is announced again, with who asked.
    w.setStatus(KRbSubTabBar::Expanded, false);
    QCOMPARE(status.count(), 3);
    QCOMPARE(status.last().at(0).toBool(), false);
}

void tst_KRbTabWidget::popupPanelStaysOnTheScreen()
{
    QObject owner;
    KRbTabWidget w(ribbon({"Home", "Insert"}, &owner), nullptr);
    const QRect screen = QGuiApplication::primaryScreen()->availableGeometry();
    w.resize(500, w.sizeHint().height());
    w.move(screen.right() - 250, screen.top() + 40); // half of it beyond the right edge
    w.show();
    QVERIFY(QTest::qWaitForWindowExposed(&w));
    w.setStatus(KRbSubTabBar::Collapsed, true);
    w.setStatus(KRbSubTabBar::Popup, true); // the panel comes at the next turn of the loop
    QTRY_VERIFY(w.popupPanel()->isVisible());
    const QRect panel = w.popupPanel()->geometry();
    QVERIFY2(panel.right() <= screen.right(), qPrintable(QString::number(panel.right())));
    QCOMPARE(panel.left(), w.mapToGlobal(QPoint(0, 0)).x());
    QVERIFY(panel.top() > w.tabBar()->mapToGlobal(QPoint(0, w.tabBar()->height() - 1)).y());
    QVERIFY(panel.height() >= w.stack()->sizeHint().height());
}

void tst_KRbTabWidget::removedCategoryTakesItsPage()
{
    QObject owner;
    KRbTabWidgetCommand* cmd = ribbon({"Home", "Insert"}, &owner);
    KRbTabWidget w(cmd, nullptr);
    w.show();
    QVERIFY(QTest::qWaitForWindowExposed(&w));
    QPointer<QWidget> page = w.pageOf(cmd->subCommand(0));
    QVERIFY(page);
    cmd->removeSubCommand(0);
    QCOMPARE(w.pageCount(), 0);
    QTRY_VERIFY(!page);
}

void tst_KRbTabWidget::contextTabRaisesWhenItsCommandTurnsVisible()
{
    QObject owner;
    KRbTabWidgetCommand* cmd = ribbon({"Home", "ctx:Table", "ctx:Picture"}, &owner);
    KRbTabWidget w(cmd, nullptr);
    w.show();
    QVERIFY(QTest::qWaitForWindowExposed(&w));
    auto idle = [&w] {
        KIdleEvent e(0);
        QCoreApplication::sendEvent(w.tabBar(), &e);
    };

    w.setCurrentItemByContextName("Picture");
    QCOMPARE(w.tabBar()->pendingContextIdx(), 2);
    idle();
    QCOMPARE(w.currentIndex(), 0); // still hidden: it waits
    QCOMPARE(w.tabBar()->pendingContextIdx(), 2);
    cmd->subCommand(2)->setVisible(true);
    idle();
    QCOMPARE(w.currentIndex(), 2);
    QCOMPARE(w.tabBar()->tabButtonAt(0)->checkStatus(), KRbTabButton::Normal); // the old current lets go
    QCOMPARE(w.tabBar()->pendingContextIdx(), -1);
    QVERIFY(w.tabBar()->tabButtonAt(2)->isContextTab());
    QCOMPARE(w.tabBar()->tabButtonAt(2)->getTheme(), QStringLiteral("KRbTabContextButton"));

    // An unknown name clears what was pending; an empty one changes nothing.
    w.setCurrentItemByContextName("Table");
    QCOMPARE(w.tabBar()->pendingContextIdx(), 1);
    w.setCurrentItemByContextName(QString());
    QCOMPARE(w.tabBar()->pendingContextIdx(), 1);
    w.setCurrentItemByContextName("Chart");
    QCOMPARE(w.tabBar()->pendingContextIdx(), -1);
}

void tst_KRbTabWidget::groupSettingsReachEveryPage()
{
    QObject owner;
    KRbTabWidgetCommand* cmd = ribbon({"Home", "Insert"}, &owner);
    cmd->setTitleVisible(false);
    KRbTabWidget w(cmd, nullptr);
    QVERIFY(!w.isLogicGroupTitleVisible());
    QVERIFY(w.isLogicGroupTriggerable());
    w.show();
    QVERIFY(QTest::qWaitForWindowExposed(&w));
    auto* home = qobject_cast<KRbCategory*>(w.pageOf(cmd->subCommand(0)));
    QVERIFY(home);
    QVERIFY(!home->isTitleVisible());
    w.setLogicGroupTriggerable(false);
    w.setLogicGroupTitleVisible(true);
    QVERIFY(!home->isTriggerAble());
    QVERIFY(home->isTitleVisible());
    pressTab(w, 1); // a later page takes the stored values
    auto* insert = qobject_cast<KRbCategory*>(w.pageOf(cmd->subCommand(1)));
    QVERIFY(insert);
    QVERIFY(!insert->isTriggerAble());
    QVERIFY(insert->isTitleVisible());
}

void tst_KRbTabWidget::tabWalksTheControlsThenLeaves()
{
    QObject owner;
    KRbTabWidget w(ribbon({"edits"}, &owner), nullptr);
    w.show();
    QVERIFY(QTest::qWaitForWindowExposed(&w));
    w.activateWindow();
    QVERIFY(QTest::qWaitForWindowActive(&w));
    auto* first = w.findChild<QLineEdit*>("first");
    auto* third = w.findChild<QLineEdit*>("third");
    QVERIFY(first && third);
    first->setFocus();
    QTRY_COMPARE(QApplication::focusWidget(), first);
    QTest::keyClick(first, Qt::Key_Tab); // past the disabled one
    QCOMPARE(QApplication::focusWidget(), third);
    QTest::keyClick(third, Qt::Key_Backtab);
    QCOMPARE(QApplication::focusWidget(), first);
    // Past the last control the walk does not wrap round: the focus is the document's to take,
    // and this application has no document to give it to.
    QTest::keyClick(third, Qt::Key_Tab);
    QCOMPARE(QApplication::focusWidget(), third);
}

void tst_KRbTabWidget::titleOfWindowTitle_data()
{
    QTest::addColumn<QString>("windowTitle");
    QTest::addColumn<QString>("title");
    QTest::newRow("bracketed") << "Report.txt [Read Only] - Writer" << "Read Only";
    QTest::newRow("first open, last close") << "a [b] c [d] e" << "b] c [d";
    QTest::newRow("open without close") << "Report [draft - Writer" << "Report [draft - Writer";
    QTest::newRow("close before open") << "a ] b [ c" << "a ] b [ c";
    QTest::newRow("modified mark") << "Untitled[*] - Writer" << "Untitled - Writer";
    QTest::newRow("empty") << "" << "";
}

void tst_KRbTabWidget::titleOfWindowTitle()
{
    QFETCH(QString, windowTitle);
    QFETCH(QString, title);
    QCOMPARE(KRbTabBar::titleOfWindowTitle(windowTitle), title);

    // The bar follows its window's title.
    QObject owner;
    QWidget window;
    auto* w = new KRbTabWidget(ribbon({"Home"}, &owner), &window);
    window.setWindowTitle(windowTitle);
    window.show();
    QVERIFY(QTest::qWaitForWindowExposed(&window));
    QCOMPARE(w->tabBar()->title(), title);
    window.setWindowTitle("Notes [Shared]");
    QCOMPARE(w->tabBar()->title(), QStringLiteral("Shared"));
}

void tst_KRbTabWidget::fileButtonTipLight()
{
    KSettings().clear();
    QObject owner;
    KRbTabWidgetCommand* cmd = ribbon({"Home"}, &owner);
    auto* file = new KListCommand(&owner, &owner);
    file->setText("File");
    auto* exit = new KTriggerCommand(&owner, &owner);
    exit->setText("Exit");
    file->addSubCommand(exit);
    cmd->setFileCommand(file);

    {
        KRbTabWidget w(cmd, nullptr);
        KRbTabFileButton* button = w.tabBar()->fileButton();
        QVERIFY(button);
        QCOMPARE(button->objectName(), QStringLiteral("RbTabFileButton"));
        QVERIFY(button->isTipLight());
        QCOMPARE(button->light(), KRbTabFileButton::kLightMax);
        // The pulse falls by 1.2 a step down to 8, then rises again.
        int steps = 0;
        while (button->isLightFalling() && steps < 20) {
            button->timerUpdate();
            ++steps;
        }
        QCOMPARE(steps, 8); // 34.4 / 1.2^8 = 8.0
        QVERIFY(qFuzzyCompare(button->light(), KRbTabFileButton::kLightMin));
        button->timerUpdate();
        QVERIFY(button->light() > KRbTabFileButton::kLightMin);

        w.resize(600, w.sizeHint().height());
        w.show();
        QVERIFY(QTest::qWaitForWindowExposed(&w));
        QCOMPARE(w.tabBar()->getFileButtonGeometry(), button->geometry());
        QVERIFY(button->width() >= button->fontMetrics().horizontalAdvance("File") + 56);

        // The arrow part opens the classic menu and leaves the light on.
        QTest::mousePress(button, Qt::LeftButton, {}, QPoint(button->width() - 3, button->height() / 2));
        QVERIFY(button->isClassicOpen());
        QVERIFY(button->isTipLight());
        QVERIFY(button->popup() && button->popup()->isVisible());
        button->popup()->hide();
        QVERIFY(!button->isClassicOpen());
        QVERIFY(!button->isDown());

        // The main part opens the file menu (for a plain list, its menu) and ends the light for good.
        QTest::mousePress(button, Qt::LeftButton, {}, QPoint(4, button->height() / 2));
        QVERIFY(button->popup());
        QVERIFY(button->popup()->isVisible());
        QVERIFY(!button->isTipLight());
        button->popup()->hide();
    }
    KRbTabWidget again(cmd, nullptr);
    QVERIFY(!again.tabBar()->fileButton()->isTipLight());
    KSettings().clear();
}

void tst_KRbTabWidget::mainWindowWithRibbon()
{
    // Context categories are the host's to register, as a word processor registers its own.
    KCommandFactoryItem<KContextCategoryCommand, QObject> contextItem(QStringLiteral("KContextCategoryCommand"),
                                                                      QStringLiteral("QObject"));
    QTemporaryDir dir;
    QVERIFY(KTestSupport::loadMainXml(dir.path(),
        "<commands>"
        "<KListCommand id='Home' text='Home'/>"
        "<KListCommand id='UserBars'/>"
        "<KContextCategoryCommand id='AddOns' text='Add-Ins' contextName='AddOns'><command idQ='UserBars'/>"
        "</KContextCategoryCommand>"
        "<KRbTabWidgetCommand id='Ribbon'><command idQ='Home'/><command idQ='AddOns'/></KRbTabWidgetCommand>"
        "<KTriggerCommand id='Plain' text='Plain'/>"
        "</commands>"
        "<mainwindow><krbtabwidget cmd='Ribbon'/><krbtabwidget cmd='Plain'/></mainwindow>"));
    KMainWindow window;
    QVERIFY(!window.isNeedDrawOwnBorder());
    {
        KWarningCatcher warnings;
        window.polishXml();
        QCOMPARE(warnings.messages(),
                 QStringList("krbtabwidget: the command Plain is no KRbTabWidgetCommand."));
    }
    KRbTabWidget* ribbonWidget = window.headerBar();
    QVERIFY(ribbonWidget);
    QCOMPARE(ribbonWidget->command(), window.commands()->command("Ribbon"));
    QCOMPARE(ribbonWidget->parentWidget(), &window);
    QVERIFY(window.isNeedDrawOwnBorder());
    QCOMPARE(window.customFrameStruct(), QMargins(0, 0, 0, 0));
    window.setBorderLess(true);
    QCOMPARE(window.customFrameStruct(), QMargins(-1, -1, -1, -1));

    // A ribbon window has no popup menus of the user's; the user's bars go to the add-on tab.
    QVERIFY(!window.addCustomPopupMenu());
    QWidget* bar = nullptr;
    KCommand* barCommand = nullptr;
    window.addCustomToolBar(&bar, &barCommand);
    QVERIFY(barCommand);
    QCOMPARE(bar, window.rbToolBar());
    QVERIFY(bar->isHidden());
    QCOMPARE(barCommand->property("embedHint").toBool(), true);
    QCOMPARE(window.commands()->command("UserBars")->subCommand(0), barCommand);
    QCOMPARE(window.rbToolBarCount(), 1);

    // A tool bar group number means nothing to a ribbon.
    const int group = window.toolbarGroupIndex();
    window.setToolbarGroupIndex(group + 5);
    QCOMPARE(window.toolbarGroupIndex(), group);
}

NORVIK_TEST_MAIN(tst_KRbTabWidget)
#include "tst_krbtabwidget.moc"
