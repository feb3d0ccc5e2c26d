#include <ktestsupport.h>

#include <QDir>
#include <QTemporaryDir>

#include <kapplication.h>
#include <kcommands.h>
#include <klistcommand.h>
#include <kmenuwidget.h>
#include <kpopupwidget.h>
#include <krbfilemenu.h>
#include <krbfilemenucommand.h>
#include <krbrecentfilepage.h>
#include <krbtabfilebutton.h>
#include <ktriggercommand.h>

#include "recenthost.h"

namespace {

KTriggerCommand* trigger(const QString& text, QObject* owner)
{
    auto* cmd = new KTriggerCommand(owner, owner);
    cmd->setText(text);
    return cmd;
}

// The widgets of a panel's row, left to right.
QList<QWidget*> rowWidgets(KRbFileMenu& menu)
{
    QList<QWidget*> row;
    for (QWidget* w : menu.findChildren<QWidget*>(QString(), Qt::FindDirectChildrenOnly))
        if (w != menu.bottomWidget() && w->isVisible())
            row.append(w);
    std::sort(row.begin(), row.end(), [](QWidget* l, QWidget* r) { return l->x() < r->x(); });
    return row;
}

} // namespace

class tst_KRbFileMenu : public QObject
{
    Q_OBJECT
private Q_SLOTS:
    void panelIsBuiltFromTheCommand();
    void commandReplacesTheWholePanel();
    void leftMenuOpensSubmenusBesideThePanelAfterARest();
    void arrowKeysCrossBetweenMenuAndPage();
    void openContextMenuOnThePageStopsTheLeftMenu();
    void fileButtonOpensThePanelOrTheClassicMenu();
    void commandsComeFromTheDescription();

private:
    QTemporaryDir m_dir;
    QString file(const char* name)
    {
        return QDir::toNativeSeparators(KTestSupport::writeFile(m_dir.filePath(QLatin1String(name)), "x"));
    }
};

void tst_KRbFileMenu::panelIsBuiltFromTheCommand()
{
    QObject owner;
    auto* command = new KRbFileMenuCommand(&owner, &owner);
    command->addSubCommand(trigger("New", &owner));
    command->addSubCommand(trigger("Open", &owner));
    command->setCustomCommand(trigger("Options", &owner));
    command->setQuitCommand(trigger("Exit", &owner));

    // Neither a recent page nor a switch command: the left menu alone, two buttons.
    {
        KRbFileMenu menu(nullptr);
        menu.setDefaultKCommand(command);
        menu.show();
        QVERIFY(QTest::qWaitForWindowExposed(&menu));
        QVERIFY(!menu.getRecentWidget());
        QCOMPARE(rowWidgets(menu), QList<QWidget*>({menu.getLeftMenu()}));
        QCOMPARE(menu.getLeftMenu()->count(), 2);
        QCOMPARE(menu.bottomWidget()->buttons().size(), 2);
        QCOMPARE(menu.bottomWidget()->buttons().at(0)->text(), QStringLiteral("Options"));
        QCOMPARE(menu.bottomWidget()->buttons().at(1)->text(), QStringLiteral("Exit"));
    }

    // With both: menu left of the page, the bottom row under them, switch first.
    auto* recent = new RecentHost({file("a.txt")}, &owner);
    command->setRecentFileCommand(recent);
    command->setSwitchCommand(trigger("Switch", &owner));
    KRbFileMenu menu(nullptr);
    menu.setDefaultKCommand(command);
    menu.show();
    QVERIFY(QTest::qWaitForWindowExposed(&menu));
    QVERIFY(menu.getRecentWidget());
    QCOMPARE(rowWidgets(menu), QList<QWidget*>({menu.getLeftMenu(), menu.getRecentWidget()}));
    QCOMPARE(menu.getRecentWidget()->command(), recent);
    const QList<KRbFileMenuButton*> buttons = menu.bottomWidget()->buttons();
    QCOMPARE(buttons.size(), 3);
    QCOMPARE(buttons.at(0)->text(), QStringLiteral("Switch"));
    QVERIFY(buttons.at(0)->x() < buttons.at(1)->x());
    QVERIFY(buttons.at(1)->x() < buttons.at(2)->x());
    // The buttons stand at the right, under the row.
    QVERIFY(buttons.at(2)->geometry().right() > menu.bottomWidget()->width() - 20);
    QVERIFY(menu.bottomWidget()->y() >= menu.getRecentWidget()->geometry().bottom());

    // The panel follows its command.
    command->setEnabled(false);
    QVERIFY(!menu.isEnabled());
    command->setVisible(false);
    QVERIFY(menu.isHidden());
}

void tst_KRbFileMenu::commandReplacesTheWholePanel()
{
    QObject owner;
    auto* first = new KRbFileMenuCommand(&owner, &owner);
    first->addSubCommand(trigger("New", &owner));
    first->setRecentFileCommand(new RecentHost({}, &owner));
    auto* second = new KRbFileMenuCommand(&owner, &owner);
    second->addSubCommand(trigger("Print", &owner));

    KRbFileMenu menu(nullptr);
    menu.setDefaultKCommand(first);
    QPointer<KRbFileMenuLeftMenu> left = menu.getLeftMenu();
    QPointer<KRbRecentFilePage> page = menu.getRecentWidget();
    QPointer<KRbFileMenuBottomWidget> bottom = menu.bottomWidget();
    QVERIFY(page);
    menu.setDefaultKCommand(first);
    QCOMPARE(menu.getLeftMenu(), left.data());
    QCOMPARE(menu.bottomWidget(), bottom.data());

    menu.setDefaultKCommand(second);
    QVERIFY(!left);
    QVERIFY(!page);
    QVERIFY(!bottom);
    QCOMPARE(menu.getLeftMenu()->command(), second);
    QVERIFY(!menu.getRecentWidget());
    // The old command no longer drives the panel.
    first->setEnabled(false);
    QVERIFY(menu.isEnabled());

    menu.setDefaultKCommand(nullptr);
    QVERIFY(!menu.getLeftMenu());
    QVERIFY(!menu.command());
}

void tst_KRbFileMenu::leftMenuOpensSubmenusBesideThePanelAfterARest()
{
    QObject owner;
    auto* command = new KRbFileMenuCommand(&owner, &owner);
    auto* print = new KListCommand(&owner, &owner);
    print->setText(QStringLiteral("Print"));
    print->addSubCommand(trigger("Print Preview", &owner));
    print->addSubCommand(trigger("Quick Print", &owner));
    command->addSubCommand(trigger("New", &owner));
    command->addSubCommand(print);
    command->addSubCommand(trigger("Close", &owner));
    command->setRecentFileCommand(new RecentHost({file("a.txt")}, &owner));

    KRbFileMenu menu(nullptr);
    menu.setDefaultKCommand(command);
    menu.move(40, 40);
    menu.show();
    QVERIFY(QTest::qWaitForWindowExposed(&menu));
    KRbFileMenuLeftMenu* left = menu.getLeftMenu();
    QCOMPARE(left->iconSize(), QSize(32, 32));
    QCOMPARE(left->tabWidth(), 26);
    QCOMPARE(left->hideTimer()->interval(), 150);

    const QPoint onPrint = left->itemAt(1)->geometry().center();
    QTest::mouseMove(left, onPrint);
    QCOMPARE(left->currentItem(), left->itemAt(1));
    // 250 ms is not enough on a file menu's entry; 450 ms is.
    KTestSupport::runLoopFor(300);
    QVERIFY(!left->popupItem());
    QTRY_COMPARE_WITH_TIMEOUT(left->popupItem(), left->itemAt(1), 1000);
    auto* submenu = dynamic_cast<KMenuWidgetPopupItem*>(left->itemAt(1));
    QVERIFY(submenu);
    QPointer<KPopupWidget> popup = submenu->popupWidget(); // it goes once it closes
    QVERIFY(popup);
    QTRY_VERIFY(popup->isVisible());
    // Beside the whole menu, level with its top, not with the row.
    QCOMPARE(popup->geometry().left(), left->mapToGlobal(QPoint(left->width(), 0)).x());
    QCOMPARE(popup->geometry().top(), left->mapToGlobal(QPoint(0, 0)).y());

    // Off to another entry: the open submenu goes 150 ms later.
    QTest::mouseMove(left, left->itemAt(2)->geometry().center());
    QVERIFY(popup->isVisible());
    QTRY_VERIFY_WITH_TIMEOUT(!left->popupItem(), 400);
    QVERIFY(!popup || !popup->isVisible());
}

void tst_KRbFileMenu::arrowKeysCrossBetweenMenuAndPage()
{
    QObject owner;
    auto* command = new KRbFileMenuCommand(&owner, &owner);
    for (const char* text : {"New", "Open", "Save", "Save As", "Close"})
        command->addSubCommand(trigger(QLatin1String(text), &owner));
    QStringList files;
    for (const char* name : {"a.txt", "b.txt", "c.txt", "d.txt", "e.txt", "f.txt"})
        files.append(file(name));
    command->setRecentFileCommand(new RecentHost(files, &owner));

    KRbFileMenu menu(nullptr);
    menu.setDefaultKCommand(command);
    menu.resize(menu.sizeHint());
    menu.show();
    QVERIFY(QTest::qWaitForWindowExposed(&menu));
    menu.activateWindow();
    KRbFileMenuLeftMenu* left = menu.getLeftMenu();
    KRbRecentFilePage* page = menu.getRecentWidget();
    menu.setFocus();
    QTRY_VERIFY(left->hasFocus());

    // From the fourth entry, Right lands on the row at the same height.
    left->setCurrentItem(left->itemAt(3));
    const int entryY = left->mapToGlobal(QPoint(0, left->itemAt(3)->geometry().top())).y();
    QTest::keyClick(&menu, Qt::Key_Right);
    QVERIFY(!left->currentItem());
    QVERIFY(page->listWidget()->hasFocus());
    QListWidgetItem* row = page->listWidget()->currentItem();
    QVERIFY(row);
    const QRect rowRect = page->listWidget()->visualItemRect(row);
    const int rowTop = page->listWidget()->viewport()->mapToGlobal(rowRect.topLeft()).y();
    QVERIFY(qAbs(rowTop - entryY) <= rowRect.height() + 10);
    QVERIFY(page->selectedItemViewPos() > 0);

    // Left goes back to the menu.
    QTest::keyClick(&menu, Qt::Key_Left);
    QVERIFY(left->hasFocus());
}

void tst_KRbFileMenu::openContextMenuOnThePageStopsTheLeftMenu()
{
    QObject owner;
    auto* command = new KRbFileMenuCommand(&owner, &owner);
    command->addSubCommand(trigger("New", &owner));
    command->addSubCommand(trigger("Open", &owner));
    command->setRecentFileCommand(new RecentHost({file("a.txt")}, &owner));
    KRbFileMenu menu(nullptr);
    menu.setDefaultKCommand(command);
    menu.show();
    QVERIFY(QTest::qWaitForWindowExposed(&menu));
    KRbFileMenuLeftMenu* left = menu.getLeftMenu();
    KRbRecentFilePage* page = menu.getRecentWidget();

    page->listWidget()->setCurrentItem(page->listWidget()->item(0));
    page->on_fileList_itemRightClicked(page->listWidget()->item(0));
    QVERIFY(page->hasPopupMenu());
    QTest::mouseMove(left, left->itemAt(1)->geometry().center());
    QVERIFY(!left->currentItem());

    page->findChild<KRbFilePagePopupWidget*>()->hide();
    QVERIFY(!page->hasPopupMenu());
    QTest::mouseMove(left, left->itemAt(0)->geometry().center());
    QCOMPARE(left->currentItem(), left->itemAt(0));
}

void tst_KRbFileMenu::fileButtonOpensThePanelOrTheClassicMenu()
{
    QObject owner;
    auto* classicList = new KListCommand(&owner, &owner);
    classicList->addSubCommand(trigger("New", &owner));
    auto* command = new KRbFileMenuCommand(&owner, &owner);
    command->setText(QStringLiteral("File"));
    command->addSubCommand(classicList);
    command->addSubCommand(trigger("Open", &owner));

    QWidget window;
    window.resize(400, 200);
    QWidget* pocket = command->requestWidget(&window, KCommand::PocketPurpose);
    auto* button = qobject_cast<KRbTabFileButton*>(pocket);
    QVERIFY(button);
    window.show();
    QVERIFY(QTest::qWaitForWindowExposed(&window));

    button->popupRainbowMenu();
    QVERIFY(button->popup());
    QTRY_VERIFY(button->popup()->isVisible());
    auto* panel = qobject_cast<KRbFileMenu*>(button->popup()->contentWidget());
    QVERIFY(panel);
    QCOMPARE(panel->command(), command);
    QVERIFY(button->isDown());
    button->popup()->hide();
    QVERIFY(!button->isDown());
    // The same panel at each opening.
    button->popupRainbowMenu();
    QCOMPARE(button->popup()->contentWidget(), panel);
    button->popup()->hide();

    // The arrow's menu is the classic one: the command's first list.
    button->popupClassicMenu();
    QVERIFY(button->isClassicOpen());
    auto* classic = qobject_cast<KMenuWidget*>(button->popup()->contentWidget());
    QVERIFY(classic);
    QCOMPARE(classic->command(), classicList);
    button->popup()->hide();
    QVERIFY(!button->isClassicOpen());
}

void tst_KRbFileMenu::commandsComeFromTheDescription()
{
    QTemporaryDir dir;
    QVERIFY(KTestSupport::loadMainXml(dir.path(),
        "<commands>"
        "<KTriggerCommand id='New' text='New'/>"
        "<KTriggerCommand id='Exit' text='Exit'/>"
        "<KListCommand id='HelpList'><command idQ='New'/></KListCommand>"
        "<KRBFileHelpMenuCommand id='Help' menuCommand='HelpList' extentText='Support'/>"
        "<KRbFileMenuCommand id='File' quitCommand='Exit' curentProject='Letters'>"
        "<command idQ='New'/></KRbFileMenuCommand>"
        "</commands>"));
    KCommands* commands = KApplication::instance()->commands();
    auto* file = qobject_cast<KRbFileMenuCommand*>(commands->command("File"));
    QVERIFY(file);
    QCOMPARE(file->quitCommand(), commands->command("Exit"));
    QCOMPARE(file->curentProject(), QStringLiteral("Letters"));
    auto* help = qobject_cast<KRBFileHelpMenuCommand*>(commands->command("Help"));
    QVERIFY(help);
    QWidget holder;
    auto* helpMenu = qobject_cast<KRBFileHelpMenu*>(help->requestWidget(&holder, KCommand::ExtendedPurpose));
    QVERIFY(helpMenu);
    QCOMPARE(helpMenu->title(), QStringLiteral("Support"));
    auto* inner = helpMenu->findChild<KMenuWidget*>();
    QVERIFY(inner);
    QCOMPARE(inner->command(), commands->command("HelpList"));
}

NORVIK_TEST_MAIN(tst_KRbFileMenu)
#include "tst_krbfilemenu.moc"
