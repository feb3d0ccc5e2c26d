#include <ktestsupport.h>

#include <QMdiSubWindow>
#include <QPointer>
#include <QTemporaryDir>
#include <QTextEdit>

#include <kapplication.h>
#include <kblockedmouseevent.h>
#include <kcommands.h>
#include <kdragmenubar.h>
#include <khotkeyevent.h>
#include <khotkeyeventhandle.h>
#include <klistcommand.h>
#include <kmainwindow.h>
#include <kmdiarea.h>
#include <kmenubar.h>
#include <kmenuwidget.h>
#include <kpopupwidget.h>
#include <ksystemmenucommand.h>
#include <ktriggercommand.h>

namespace {

struct Menus {
    QObject owner;
    KListCommand* bar = nullptr;
    QList<KListCommand*> lists;
    KTriggerCommand* help = nullptr;
    int helpTriggered = 0;

    explicit Menus(const QStringList& names)
    {
        bar = new KListCommand(&owner, &owner);
        for (const QString& name : names) {
            auto* list = new KListCommand(&owner, &owner);
            list->setText(name);
            auto* entry = new KTriggerCommand(&owner, &owner);
            entry->setText(name + QStringLiteral(" entry"));
            list->addSubCommand(entry);
            bar->addSubCommand(list);
            lists << list;
        }
        help = new KTriggerCommand(&owner, &owner);
        help->setText(QStringLiteral("About"));
        QObject::connect(help, &KCommand::triggered, &owner, [this] { ++helpTriggered; });
        bar->addSubCommand(help);
    }
};

QPoint centre(KMenuBarItem* item)
{
    return item->geometry().center();
}

// What a popup holding the mouse grab hands on when the pointer is over the bar.
void blocked(KMenuBar* bar, QEvent::Type type, const QPoint& local, QWidget* popup)
{
    const QPoint global = bar->mapToGlobal(local);
    QMouseEvent mouse(type, QPointF(popup->mapFromGlobal(global)), QPointF(global), Qt::LeftButton,
                      type == QEvent::MouseMove ? Qt::NoButton : Qt::LeftButton, Qt::NoModifier);
    KBlockedMouseEvent event(&mouse, popup);
    QCoreApplication::sendEvent(bar, &event);
}

} // namespace

class tst_KMenuBar : public QObject
{
    Q_OBJECT
private Q_SLOTS:
    void wrapsAndRightAlignsAfterTheSpacer();
    void pressOpensAndBrowsesAndCloses();
    void keysMoveAlongTheBar();
    void narrowBarStillOpensEveryMenu();
    void maximisedDocumentBringsItsWindowItems();
    void descriptionPlacesTheMenuBar();
    void keyTipsOfTheBar();
    void closingTheWindowWithAMenuOpen();
    void blockedRibbonWindowShowsItsMenuBarWhileAltRuns();
};

void tst_KMenuBar::wrapsAndRightAlignsAfterTheSpacer()
{
    Menus menus({"File", "Edit", "Format", "View", "Window"});
    KMenuBar bar(menus.bar, nullptr);
    QCOMPARE(bar.count(), 6);
    QList<int> widths;
    for (int i = 0; i < bar.count(); ++i)
        widths << bar.itemAt(i)->sizeHint().width();
    const int height = bar.itemAt(0)->sizeHint().height();
    const int all = std::accumulate(widths.begin(), widths.end(), 0);
    KMenuBarLayout* layout = bar.menuBarLayout();

    // Wide enough: one line, left to right.
    bar.resize(all + 50, height);
    layout->setGeometry(bar.rect());
    QCOMPARE(layout->extentFor(all + 50), height);
    QCOMPARE(bar.itemAt(0)->geometry().topLeft(), QPoint(0, 0));
    QCOMPARE(bar.itemAt(1)->geometry().left(), widths.at(0));

    // Room for three at a time: two lines, 2 pixels apart.
    const int three = qMax(widths.at(0) + widths.at(1) + widths.at(2), widths.at(3) + widths.at(4) + widths.at(5));
    QVERIFY(three < widths.at(0) + widths.at(1) + widths.at(2) + widths.at(3));
    layout->setGeometry(QRect(0, 0, three, 2 * height + 2));
    QCOMPARE(layout->extentFor(three), 2 * height + 2);
    QCOMPARE(bar.itemAt(2)->geometry().top(), 0);
    QCOMPARE(bar.itemAt(3)->geometry().topLeft(), QPoint(0, height + 2));
    // Narrower than any entry: each on its own line.
    QCOMPARE(layout->extentFor(5), 6 * height + 5 * 2);

    // A spacer after Edit: what follows it stands at the right, and so does the next line.
    bar.insertItem(2, new KMenuBarEmptyItem(&bar));
    const int w = all + 30;
    layout->setGeometry(QRect(0, 0, w, height));
    QCOMPARE(bar.itemAt(1)->geometry().left(), widths.at(0));
    QCOMPARE(bar.itemAt(6)->geometry().right(), w - 1); // About, last
    QCOMPARE(bar.itemAt(3)->geometry().left(), w - (all - widths.at(0) - widths.at(1)));
    QCOMPARE(bar.itemAt(2)->geometry().width(), 30);
    const int narrow = widths.at(0) + widths.at(1) + widths.at(2) + 10;
    layout->setGeometry(QRect(0, 0, narrow, 3 * height + 4));
    QCOMPARE(bar.itemAt(3)->geometry().right(), narrow - 1); // Format, still on the first line
    QVERIFY(bar.itemAt(4)->geometry().top() > 0);              // View starts the next line...
    QCOMPARE(bar.itemAt(5)->geometry().right(), narrow - 1);   // ...which ends at the right
}

void tst_KMenuBar::pressOpensAndBrowsesAndCloses()
{
    Menus menus({"File", "Edit", "View"});
    KMenuBar bar(menus.bar, nullptr);
    bar.resize(400, 24);
    bar.show();
    QVERIFY(QTest::qWaitForWindowExposed(&bar));
    KMenuBarItem* file = bar.itemAt(0);
    KMenuBarItem* edit = bar.itemAt(1);

    QTest::mousePress(&bar, Qt::LeftButton, {}, centre(file));
    QVERIFY(file->isPopuping());
    QVERIFY(bar.isPopupMode());
    auto* menu = qobject_cast<KMenuWidget*>(file->popupWidget()->contentWidget());
    QVERIFY(menu);
    QCOMPARE(menu->command(), menus.lists.at(0));
    // Below the entry.
    const int entryBottom = bar.mapToGlobal(file->geometry().bottomLeft()).y();
    QVERIFY(file->popupWidget()->y() > entryBottom);
    QVERIFY(file->popupWidget()->y() <= entryBottom + 4);
    QCOMPARE(file->popupWidget()->x(), bar.mapToGlobal(file->geometry().topLeft()).x());

    // The pointer crosses to Edit through the open menu's grab: Edit opens at once.
    blocked(&bar, QEvent::MouseMove, centre(edit), file->popupWidget());
    QVERIFY(!file->isPopuping());
    QVERIFY(edit->isPopuping());
    QCOMPARE(bar.currentPopupItem(), edit);

    // A press on the open entry closes it; the bar is idle again.
    blocked(&bar, QEvent::MouseButtonPress, centre(edit), edit->popupWidget());
    edit->popupWidget()->hide();
    QVERIFY(!bar.isPopupMode());
    QVERIFY(!bar.currentPopupItem());
    // Moving about now only marks entries.
    QTest::mouseMove(&bar, centre(file));
    QCOMPARE(bar.hoveredItem(), file);
    QVERIFY(!file->isPopuping());

    // An entry that is no list is triggered by the press, and opens nothing.
    QTest::mousePress(&bar, Qt::LeftButton, {}, centre(bar.itemAt(3)));
    QCOMPARE(menus.helpTriggered, 1);
    QVERIFY(!bar.isPopuping());
}

void tst_KMenuBar::keysMoveAlongTheBar()
{
    Menus menus({"File", "Edit", "View"});
    menus.lists.at(1)->setEnabled(false);
    KMenuBar bar(menus.bar, nullptr);
    bar.resize(400, 24);
    bar.show();
    QVERIFY(QTest::qWaitForWindowExposed(&bar));

    // Without a menu open the keys move the mark, over the disabled entry.
    bar.hoverItem(bar.itemAt(0));
    QTest::keyClick(&bar, Qt::Key_Right);
    QCOMPARE(bar.hoveredItem(), bar.itemAt(2));
    QTest::keyClick(&bar, Qt::Key_End);
    QCOMPARE(bar.hoveredItem(), bar.itemAt(3));
    QTest::keyClick(&bar, Qt::Key_Right); // round to the first
    QCOMPARE(bar.hoveredItem(), bar.itemAt(0));
    QVERIFY(!bar.isPopuping());

    // Return opens; then Left and Right open their neighbours' menus, as a menu's own
    // Left and Right (handed to the bar) do.
    QTest::keyClick(&bar, Qt::Key_Return);
    QVERIFY(bar.itemAt(0)->isPopuping());
    QTest::keyClick(&bar, Qt::Key_Left);
    QCOMPARE(bar.currentPopupItem(), bar.itemAt(3));
    QVERIFY(!bar.itemAt(3)->isPopuping()); // About has no menu to open
    QTest::keyClick(&bar, Qt::Key_Left);
    QCOMPARE(bar.currentPopupItem(), bar.itemAt(2));
    QVERIFY(bar.itemAt(2)->isPopuping());
    QVERIFY(!bar.itemAt(0)->isPopuping());
    bar.itemAt(2)->popupWidget()->hide();
    QVERIFY(!bar.isPopupMode());
}

void tst_KMenuBar::narrowBarStillOpensEveryMenu()
{
    Menus menus({"File", "Edit", "Format", "View", "Window", "Help"});
    KMenuBar bar(menus.bar, nullptr);
    const int narrow = bar.itemAt(0)->sizeHint().width() + bar.itemAt(1)->sizeHint().width();
    bar.resize(narrow, 200);
    bar.show();
    QVERIFY(QTest::qWaitForWindowExposed(&bar));
    // The bar asks for the height of all its lines at this width.
    QCOMPARE(bar.sizeHint().height(), bar.heightForWidth(narrow));
    QVERIFY(bar.heightForWidth(narrow) > 2 * bar.itemAt(0)->sizeHint().height());
    for (int i = 0; i < menus.lists.size(); ++i) {
        KMenuBarItem* item = bar.itemAt(i);
        QVERIFY(bar.rect().contains(item->geometry()));
        QTest::mousePress(&bar, Qt::LeftButton, {}, centre(item));
        QVERIFY2(item->isPopuping(), qPrintable(item->text()));
        item->popupWidget()->hide();
    }
}

void tst_KMenuBar::maximisedDocumentBringsItsWindowItems()
{
    Menus menus({"File", "Edit"});
    QWidget holder;
    auto* column = new QVBoxLayout(&holder);
    auto* bar = new KMenuBar(menus.bar, &holder);
    auto* area = new KMdiArea(&holder);
    column->addWidget(bar);
    column->addWidget(area);
    holder.resize(600, 400);
    holder.show();
    QVERIFY(QTest::qWaitForWindowExposed(&holder));
    QPointer<QMdiSubWindow> doc = area->addSubWindow(new QTextEdit);
    doc->show();
    bar->initializeMdi(area);
    QCOMPARE(bar->count(), 3 + 5);
    auto* system = qobject_cast<KSystemMenuBarItem*>(bar->itemAt(0));
    QVERIFY(system);
    QCOMPARE(bar->mdiCommands().size(), 4);
    QVERIFY(!system->isVisible());
    QVERIFY(!bar->itemAt(bar->count() - 1)->isVisible());

    doc->showMaximized();
    QTRY_VERIFY(system->isVisible());
    for (KCommand* cmd : bar->mdiCommands())
        QVERIFY(cmd->isVisible());
    // The window buttons at the right end, in the order minimise, restore, close.
    bar->menuBarLayout()->setGeometry(bar->rect());
    KMenuBarItem* close = bar->itemAt(bar->count() - 1);
    QCOMPARE(close->geometry().right(), bar->width() - 1);
    QCOMPARE(close->command()->text(), QStringLiteral("Close"));
    QCOMPARE(bar->itemAt(bar->count() - 2)->command()->text(), QStringLiteral("Restore"));
    QCOMPARE(bar->itemAt(bar->count() - 3)->command()->text(), QStringLiteral("Minimize"));
    QStringList entries;
    for (int i = 0; i < system->command()->count(); ++i)
        entries << system->command()->subCommand(i)->text();
    QCOMPARE(entries, QStringList({"Restore", "Move", "Size", "Minimize", "Maximize", "", "Close", ""}));

    // Restore: the items go.
    bar->itemAt(bar->count() - 2)->trigger();
    QTRY_VERIFY(!system->isVisible());
    QVERIFY(!doc->isMaximized());

    // Maximised again: a press opens the system menu, a second press there closes the document.
    doc->showMaximized();
    QTRY_VERIFY(system->isVisible());
    bar->menuBarLayout()->setGeometry(bar->rect());
    QTest::mousePress(bar, Qt::LeftButton, {}, centre(system));
    QVERIFY(system->isPopuping());
    blocked(bar, QEvent::MouseButtonPress, centre(system), system->popupWidget());
    QTRY_VERIFY(!doc);
}

void tst_KMenuBar::descriptionPlacesTheMenuBar()
{
    QTemporaryDir dir;
    QVERIFY(KTestSupport::loadMainXml(dir.path(),
        "<commands>"
        "<KTriggerCommand id='New' text='New' hotKey='N'/>"
        "<KListCommand id='FileMenu' text='File' hotKey='F'><command idQ='New'/></KListCommand>"
        "<KListCommand id='Menu'><command idQ='FileMenu'/></KListCommand>"
        "<KListCommand id='Hidden' visible='false'><command idQ='FileMenu'/></KListCommand>"
        "<KListCommand id='Bar' text='Bar'><command idQ='New'/></KListCommand>"
        "</commands>"
        "<mainwindow><toolbar cmd='Bar'/><menubar cmd='Menu'/></mainwindow>"));
    KMainWindow window;
    window.polishXml();
    window.resize(500, 300);
    window.show();
    QVERIFY(QTest::qWaitForWindowExposed(&window));
    KDragMenuBar* bar = window.menuBar();
    QVERIFY(bar);
    QCOMPARE(bar->objectName(), QStringLiteral("Menu"));
    QCOMPARE(bar->menuBar()->count(), 1);
    QVERIFY(bar->isVisible());
    // Above the tool bar, in a row of its own, as wide as the window.
    KToolBar* tools = window.toolBarAt(0);
    QVERIFY(tools);
    QVERIFY(bar->geometry().bottom() < tools->geometry().top());
    QVERIFY(bar->width() > window.width() - 20);
    // Not among the tool bars the user switches.
    QVERIFY(!window.currentVisibleBars().contains(bar));

    // A ribbon window has no custom menu bar; this one trades its bar and back.
    KDragMenuBar* custom = window.setCustomMenuBar(false);
    QVERIFY(custom);
    QVERIFY(custom != bar);
    QVERIFY(bar->isHidden());
    QCOMPARE(window.setCustomMenuBar(true), bar);
    QVERIFY(!bar->isHidden());
}

void tst_KMenuBar::keyTipsOfTheBar()
{
    Menus menus({"File", "Edit"});
    menus.lists.at(0)->setProperty("hotKey", QStringLiteral("F"));
    menus.lists.at(1)->setProperty("hotKey", QStringLiteral("E"));
    KMenuBar bar(menus.bar, nullptr);
    bar.resize(300, 24);
    bar.show();
    QVERIFY(QTest::qWaitForWindowExposed(&bar));
    KHotKeyCollectEvent collect;
    QCoreApplication::sendEvent(&bar, &collect);
    QStringList keys;
    for (const hotkey_message& m : collect.messages) {
        keys << m.key;
        QCOMPARE(m.tag(), KHotKeyMarker::classicMenu());
    }
    QCOMPARE(keys, QStringList({"F", "E", ""})); // About has no key, and still takes part

    // A label of an entry that is no list fires it.
    KHotKeyCollectEvent withAbout;
    menus.help->setProperty("hotKey", QStringLiteral("A"));
    QCoreApplication::sendEvent(&bar, &withAbout);
    KHotKeyTriggerEvent fire;
    fire.message = &withAbout.messages[2];
    QCoreApplication::sendEvent(&bar, &fire);
    QCOMPARE(fire.result, 2);
    QCOMPARE(menus.helpTriggered, 1);

    // While a menu is open the bar offers no labels.
    QTest::mousePress(&bar, Qt::LeftButton, {}, centre(bar.itemAt(0)));
    KHotKeyCollectEvent during;
    QCoreApplication::sendEvent(&bar, &during);
    QVERIFY(during.messages.isEmpty());
    bar.itemAt(0)->popupWidget()->hide();
}

void tst_KMenuBar::closingTheWindowWithAMenuOpen()
{
    Menus menus({"File", "Edit"});
    auto* window = new QWidget;
    window->setAttribute(Qt::WA_DeleteOnClose);
    auto* bar = new KMenuBar(menus.bar, window);
    bar->resize(300, 24);
    window->show();
    QVERIFY(QTest::qWaitForWindowExposed(window));
    QPointer<QWidget> guard(window);
    QTest::mousePress(bar, Qt::LeftButton, {}, centre(bar->itemAt(1)));
    QVERIFY(bar->itemAt(1)->isPopuping());
    window->close();
    QTRY_VERIFY(!guard);
    // The commands outlive the bar and its menus.
    QCOMPARE(menus.bar->count(), 3);
}

void tst_KMenuBar::blockedRibbonWindowShowsItsMenuBarWhileAltRuns()
{
    QTemporaryDir dir;
    QVERIFY(KTestSupport::loadMainXml(dir.path(),
        "<commands>"
        "<KTriggerCommand id='RbNew' text='New' hotKey='N'/>"
        "<KListCommand id='Home' text='Home'><command idQ='RbNew'/></KListCommand>"
        "<KRbTabWidgetCommand id='Ribbon'><command idQ='Home'/></KRbTabWidgetCommand>"
        "<KListCommand id='RbFileMenu' text='File' hotKey='F'><command idQ='RbNew'/></KListCommand>"
        "<KListCommand id='RbMenu' visible='false'><command idQ='RbFileMenu'/></KListCommand>"
        "</commands>"
        "<mainwindow><krbtabwidget cmd='Ribbon'/><menubar cmd='RbMenu'/></mainwindow>"));
    KMainWindow window;
    window.polishXml();
    window.blockHotkey(true);
    window.resize(500, 300);
    KApplication::instance()->bringFrontMainWindow(&window);
    window.show();
    QVERIFY(QTest::qWaitForWindowExposed(&window));
    KDragMenuBar* bar = window.menuBar();
    QVERIFY(bar);
    QVERIFY(bar->isHidden());
    KHotKeyEventHandle* handle = window.GetHotKeyHandle();
    QVERIFY(handle);

    handle->setMenuBarVisible(true);
    QVERIFY(bar->menuCommand()->isVisible());
    QVERIFY(bar->isVisible());
    QVERIFY(!bar->isFloatable());
    // A menu of the bar is open as the Alt machinery ends: the bar waits for it to close.
    KMenuBar* menuBar = bar->menuBar();
    QTest::mousePress(menuBar, Qt::LeftButton, {}, menuBar->itemAt(0)->geometry().center());
    QVERIFY(menuBar->isPopuping());
    handle->setMenuBarVisible(false);
    QVERIFY(bar->isVisible());
    KTestSupport::runLoopFor(250);
    QVERIFY(bar->isVisible());
    menuBar->itemAt(0)->popupWidget()->hide();
    QTRY_VERIFY(bar->isHidden());
    QVERIFY(!bar->menuCommand()->isVisible());

    // An ordinary window keeps its menu bar as the description made it.
    window.blockHotkey(false);
    handle->setMenuBarVisible(true);
    QVERIFY(bar->isHidden());
}

NORVIK_TEST_MAIN(tst_KMenuBar)
#include "tst_kmenubar.moc"
