#include <ktestsupport.h>

#include <QLabel>
#include <QPointer>
#include <QTemporaryDir>

#include <kcommands.h>
#include <kdragtoolbar.h>
#include <klistcommand.h>
#include <kmainwindow.h>
#include <ktriggercommand.h>

// The floating bar of full-screen mode: built from a list, moved by its grip, made by the
// main window from the "Full Screen" command when a window with a header bar goes full
// screen.
class tst_KDragToolBar : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void cleanup();
    void buildsButtonsFromTheList();
    void handlerMovesTheBar();
    void fullScreenMakesTheBar();
    void fullScreenWithoutTheCommand();

private:
    QTemporaryDir m_dir;
};

void tst_KDragToolBar::cleanup()
{
    KApplication::instance()->resetXml();
}

void tst_KDragToolBar::buildsButtonsFromTheList()
{
    KMainWindow window;
    auto* list = new KListCommand(&window, window.commands());
    auto* close = new KTriggerCommand(&window, list);
    close->setText(QStringLiteral("Close Full Screen"));
    auto* save = new KTriggerCommand(&window, list);
    save->setText(QStringLiteral("Save"));
    list->addSubCommand(close);
    list->addSeparator();
    list->addSubCommand(save);

    KDragToolBar bar(list, &window);
    QVERIFY(bar.testAttribute(Qt::WA_TranslucentBackground));
    QCOMPARE(bar.listCommand(), list);
    QVERIFY(!bar.command()); // nothing is built lazily from a command, and no props exist
    QVERIFY(!bar.props());
    const QList<QAction*> actions = bar.actions();
    QCOMPARE(actions.size(), 4);
    QVERIFY(actions.at(2)->isSeparator()); // a separator is a line, not an empty button
    QCOMPARE(bar.widgetForAction(actions.at(0)), static_cast<QWidget*>(bar.handler()));
    QCOMPARE(bar.handler()->cursor().shape(), Qt::SizeAllCursor);

    bar.show();
    auto* first = qobject_cast<KDragButton*>(bar.widgetForAction(actions.at(1)));
    QVERIFY(first);
    QCOMPARE(first->command(), static_cast<KCommand*>(close));
    QVERIFY(first->buttonStyle() & KToolButton::StyleHotKey);
    QCOMPARE(first->text(), QStringLiteral("Close Full Screen"));

    // A click on a button triggers its command; a hidden command hides its button.
    QSignalSpy triggered(save, &KCommand::triggered);
    auto* second = qobject_cast<KDragButton*>(bar.widgetForAction(actions.at(3)));
    QVERIFY(second);
    QTest::mouseClick(second, Qt::LeftButton);
    QCOMPARE(triggered.count(), 1);
    save->setVisible(false);
    QVERIFY(!actions.at(3)->isVisible());
}

void tst_KDragToolBar::handlerMovesTheBar()
{
    QWidget host;
    host.resize(400, 300);
    auto* moved = new QWidget(&host);
    moved->setGeometry(50, 50, 100, 30);
    auto* handler = new KDragHandler(moved);
    handler->setGeometry(0, 0, 10, 30);
    host.show();
    QVERIFY(QTest::qWaitForWindowExposed(&host));

    // A move without a press does nothing; a press and moves drag the parent along by the
    // distance from the press point; after the release moves do nothing again.
    QTest::mouseMove(handler, QPoint(5, 10));
    QCOMPARE(moved->pos(), QPoint(50, 50));
    QTest::mousePress(handler, Qt::LeftButton, Qt::NoModifier, QPoint(5, 10));
    QVERIFY(handler->isPressed());
    QTest::mouseMove(handler, QPoint(25, 40));
    QCOMPARE(moved->pos(), QPoint(70, 80));
    QTest::mouseMove(handler, QPoint(0, 10)); // the grip moved with it: (-5, 0) from the press
    QCOMPARE(moved->pos(), QPoint(65, 80));
    QTest::mouseRelease(handler, Qt::LeftButton, Qt::NoModifier, QPoint(0, 10));
    QVERIFY(!handler->isPressed());
    QTest::mouseMove(handler, QPoint(9, 20));
    QCOMPARE(moved->pos(), QPoint(65, 80));
}

void tst_KDragToolBar::fullScreenMakesTheBar()
{
    QVERIFY(KTestSupport::loadMainXml(m_dir.path(),
        "<commands><KTriggerCommand id='CloseFull' text='Close Full Screen'/>"
        "<KListCommand id='Full Screen'><command idQ='CloseFull'/></KListCommand></commands>"
        "<mainwindow/>"));
    KMainWindow window;
    window.polishXml();
    QPointer<KRbTabWidget> header = new KRbTabWidget(nullptr, nullptr);
    window.setHeaderBar(header);
    QCOMPARE(window.headerBar(), header.data());
    QCOMPARE(header->parentWidget(), &window);
    window.showMaximized();
    QVERIFY(QTest::qWaitForWindowExposed(&window));
    QVERIFY(!window.fullScreenBar());

    QSignalSpy added(&window, &KMainWindow::addToolBarSignal);
    window.setFullScreen(true);
    KDragToolBar* bar = window.fullScreenBar();
    QVERIFY(bar);
    QCOMPARE(bar->listCommand(), window.commands()->command("Full Screen"));
    QCOMPARE(bar->actions().size(), 2); // the grip and one button
    QCOMPARE(added.count(), 1);
    QVERIFY(bar->isFloating());
    QVERIFY(!bar->isClosable());
    QCOMPARE(bar->allowedAreas(), Qt::NoToolBarArea);
    QCOMPARE(bar->property("cmd").toString(), QStringLiteral("Full Screen"));
    QVERIFY(bar->windowFlags().testFlag(Qt::FramelessWindowHint));
    QVERIFY(header->isHidden());
    QVERIFY(bar->isVisible());

    // Leaving gives the header bar its place back and hides the floating bar; the next
    // time the same bar comes back.
    window.setFullScreen(false);
    QVERIFY(!header->isHidden());
    QVERIFY(bar->isHidden());
    window.setFullScreen(true);
    QCOMPARE(window.fullScreenBar(), bar);
    QVERIFY(bar->isVisible());
    window.setFullScreen(false);

    // Taking the description back takes the header bar and the floating bar with it.
    QPointer<KDragToolBar> guard = bar;
    KApplication::instance()->resetXml();
    QVERIFY(!window.headerBar());
    QVERIFY(!window.fullScreenBar());
    QTRY_VERIFY(!guard);
    QTRY_VERIFY(!header);
}

void tst_KDragToolBar::fullScreenWithoutTheCommand()
{
    // No "Full Screen" list: the bar comes all the same, quietly, with only its grip.
    QVERIFY(KTestSupport::loadMainXml(m_dir.path(), "<mainwindow/>"));
    KMainWindow window;
    window.polishXml();
    window.setHeaderBar(new KRbTabWidget(nullptr, nullptr));
    window.show();
    QVERIFY(QTest::qWaitForWindowExposed(&window));
    window.setFullScreen(true);
    KDragToolBar* bar = window.fullScreenBar();
    QVERIFY(bar);
    QVERIFY(!bar->listCommand());
    QCOMPARE(bar->actions().size(), 1);
    QVERIFY(bar->isVisible());
}

NORVIK_TEST_MAIN(tst_KDragToolBar)
#include "tst_kdragtoolbar.moc"
