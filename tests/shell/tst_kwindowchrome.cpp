#include <ktestsupport.h>

#include <QPointer>
#include <QPushButton>
#include <QTemporaryDir>
#include <QVBoxLayout>

#include <kapplication.h>
#include <kborderwindow.h>
#include <kdragmenubar.h>
#include <kmainwindow.h>
#include <kmainwindowshadowborder.h>
#include <kmenubar.h>
#include <kpopupwidget.h>
#include <ktriggercommand.h>
#include <kwindowtitlebar.h>
#include <kwindowtitlebuttongroup.h>

using Zone = KMainWindowShadowBorder::Zone;

class tst_KWindowChrome : public QObject
{
    Q_OBJECT
private Q_SLOTS:
    void captionButtonsActOnTheirWindow();
    void shadowZonesAndCursors_data();
    void shadowZonesAndCursors();
    void resizingStopsAtTheMinimum_data();
    void resizingStopsAtTheMinimum();
    void shadowFollowsItsHost();
    void titleMovesAndMaximisesTheWindow();
    void ownFrameAndClosingWithAMenuOpen();
    void borderWindowEmbedsItsMainWindow();
};

void tst_KWindowChrome::captionButtonsActOnTheirWindow()
{
    QWidget target;
    target.resize(300, 200);
    target.show();
    QVERIFY(QTest::qWaitForWindowExposed(&target));
    QObject owner;
    auto* command = new KTriggerCommand(&owner, &owner);
    KWindowTitleButtonGroup group(command, &target, &target);
    // Neighbours overlap by a pixel.
    QCOMPARE(group.sizeHint(), QSize(3 * 22 - 2, 21));
    group.resize(group.sizeHint());
    group.show();

    QTest::mouseClick(group.buttonAt(1), Qt::LeftButton);
    QTRY_VERIFY(target.isMaximized());
    QTest::mouseClick(group.buttonAt(1), Qt::LeftButton);
    QTRY_VERIFY(!target.isMaximized());
    QTest::mouseClick(group.buttonAt(0), Qt::LeftButton);
    QTRY_VERIFY(target.windowState() & Qt::WindowMinimized);
    target.showNormal();

    // The command shows and enables the group.
    command->setEnabled(false);
    QVERIFY(!group.isEnabled());
    command->setVisible(false);
    QVERIFY(group.isHidden());
    command->setVisible(true);
    command->setEnabled(true);

    QTest::mouseClick(group.buttonAt(2), Qt::LeftButton);
    QVERIFY(!target.isVisible());
    QVERIFY(!group.buttonAt(3));
}

void tst_KWindowChrome::shadowZonesAndCursors_data()
{
    QTest::addColumn<QPoint>("pos");
    QTest::addColumn<int>("zone");
    QTest::addColumn<int>("cursor");
    // A border of 8 around a 200 by 100 host: 216 by 116.
    QTest::newRow("top left") << QPoint(2, 2) << int(Zone::TopLeft) << int(Qt::SizeFDiagCursor);
    QTest::newRow("top") << QPoint(100, 3) << int(Zone::Top) << int(Qt::SizeVerCursor);
    QTest::newRow("top right") << QPoint(213, 1) << int(Zone::TopRight) << int(Qt::SizeBDiagCursor);
    QTest::newRow("left") << QPoint(3, 58) << int(Zone::Left) << int(Qt::SizeHorCursor);
    QTest::newRow("inside") << QPoint(100, 58) << int(Zone::NoZone) << int(Qt::ArrowCursor);
    QTest::newRow("right") << QPoint(212, 58) << int(Zone::Right) << int(Qt::SizeHorCursor);
    QTest::newRow("bottom left") << QPoint(4, 113) << int(Zone::BottomLeft) << int(Qt::SizeBDiagCursor);
    QTest::newRow("bottom") << QPoint(100, 115) << int(Zone::Bottom) << int(Qt::SizeVerCursor);
    QTest::newRow("bottom right") << QPoint(215, 115) << int(Zone::BottomRight) << int(Qt::SizeFDiagCursor);
    // Corners reach along their edges.
    QTest::newRow("left, near the top") << QPoint(2, 12) << int(Zone::TopLeft) << int(Qt::SizeFDiagCursor);
}

void tst_KWindowChrome::shadowZonesAndCursors()
{
    QFETCH(QPoint, pos);
    QFETCH(int, zone);
    QFETCH(int, cursor);
    QWidget host;
    KMainWindowShadowBorder border(&host);
    QVERIFY(border.borderThickness() > 0);
    const int t = border.borderThickness();
    border.resize(200 + 2 * t, 100 + 2 * t);
    // The table is for a thickness of 8; other thicknesses scale the points.
    const QPoint scaled(pos.x() <= 8 ? pos.x() * t / 8 : pos.x() >= 208 ? border.width() - (216 - pos.x()) * t / 8 : pos.x(),
                        pos.y() <= 8 ? pos.y() * t / 8 : pos.y() >= 108 ? border.height() - (116 - pos.y()) * t / 8 : pos.y());
    QCOMPARE(border.zoneAt(scaled), zone);
    QCOMPARE(int(KMainWindowShadowBorder::cursorOf(zone)), cursor);
}

void tst_KWindowChrome::resizingStopsAtTheMinimum_data()
{
    QTest::addColumn<int>("zone");
    QTest::addColumn<QPoint>("cursor");
    QTest::addColumn<QRect>("expected");
    const QRect g(100, 100, 400, 300); // right 499, bottom 399; the minimum is 200 by 150
    QTest::newRow("right out") << int(Zone::Right) << QPoint(600, 0) << QRect(100, 100, 501, 300);
    QTest::newRow("left in") << int(Zone::Left) << QPoint(150, 0) << QRect(150, 100, 350, 300);
    QTest::newRow("left past the minimum") << int(Zone::Left) << QPoint(450, 0) << QRect(300, 100, 200, 300);
    QTest::newRow("top past the minimum") << int(Zone::Top) << QPoint(0, 390) << QRect(100, 250, 400, 150);
    QTest::newRow("bottom right in") << int(Zone::BottomRight) << QPoint(350, 300) << QRect(100, 100, 251, 201);
    QTest::newRow("bottom right past") << int(Zone::BottomRight) << QPoint(120, 120) << QRect(100, 100, 200, 150);
    QTest::newRow("top left out") << int(Zone::TopLeft) << QPoint(50, 40) << QRect(50, 40, 450, 360);
    QTest::newRow("no zone") << int(Zone::NoZone) << QPoint(0, 0) << g;
}

void tst_KWindowChrome::resizingStopsAtTheMinimum()
{
    QFETCH(int, zone);
    QFETCH(QPoint, cursor);
    QFETCH(QRect, expected);
    QCOMPARE(KMainWindowShadowBorder::resized(QRect(100, 100, 400, 300), zone, cursor, QSize(200, 150)), expected);
}

void tst_KWindowChrome::shadowFollowsItsHost()
{
    QWidget host;
    host.setWindowFlag(Qt::FramelessWindowHint);
    host.setGeometry(100, 100, 300, 200);
    KMainWindowShadowBorder border(&host);
    QVERIFY(border.isHidden());
    host.show();
    QVERIFY(QTest::qWaitForWindowExposed(&host));
    QVERIFY(border.isVisible());
    const int t = border.borderThickness();
    QCOMPARE(border.geometry(), host.frameGeometry().adjusted(-t, -t, t, t));
    host.move(150, 120);
    QTRY_COMPARE(border.geometry(), host.frameGeometry().adjusted(-t, -t, t, t));
    // A maximised host has no shadow, and gets it back on restore.
    host.showMaximized();
    QTRY_VERIFY(border.isHidden());
    host.showNormal();
    QTRY_VERIFY(border.isVisible());
    host.hide();
    QVERIFY(border.isHidden());

    // A drag on the border moves the host's edge.
    host.show();
    QVERIFY(QTest::qWaitForWindowExposed(&host));
    QTRY_VERIFY(border.isVisible());
    const QRect before = host.geometry();
    const QPoint rightEdge(border.width() - 2, border.height() / 2);
    QTest::mousePress(&border, Qt::LeftButton, {}, rightEdge);
    QCOMPARE(border.dragZone(), int(Zone::Right));
    QMouseEvent move(QEvent::MouseMove, QPointF(rightEdge + QPoint(40, 0)),
                     QPointF(border.mapToGlobal(rightEdge + QPoint(40, 0))), Qt::NoButton, Qt::LeftButton, Qt::NoModifier);
    QCoreApplication::sendEvent(&border, &move);
    QCOMPARE(host.geometry().left(), before.left());
    QCOMPARE(host.geometry().right(), border.mapToGlobal(rightEdge + QPoint(40, 0)).x());
    QTest::mouseRelease(&border, Qt::LeftButton, {}, rightEdge);
    QCOMPARE(border.dragZone(), int(Zone::NoZone));
}

void tst_KWindowChrome::titleMovesAndMaximisesTheWindow()
{
    QWidget window;
    window.setWindowFlag(Qt::FramelessWindowHint);
    window.setWindowTitle(QStringLiteral("Letter[*] - Writer"));
    auto* column = new QVBoxLayout(&window);
    auto* title = new KWindowTitleBar(nullptr, &window);
    column->addWidget(title);
    column->addStretch();
    window.setGeometry(100, 100, 400, 300);
    window.show();
    QVERIFY(QTest::qWaitForWindowExposed(&window));
    QCOMPARE(title->caption(), QStringLiteral("Letter - Writer"));

    // No window manager on this platform: the title moves the window by hand.
    const QPoint start = window.pos();
    const QPoint grip(60, title->height() / 2);
    QTest::mousePress(title, Qt::LeftButton, {}, grip);
    QMouseEvent move(QEvent::MouseMove, QPointF(grip + QPoint(30, 20)), QPointF(title->mapToGlobal(grip + QPoint(30, 20))),
                     Qt::NoButton, Qt::LeftButton, Qt::NoModifier);
    QCoreApplication::sendEvent(title, &move);
    QCOMPARE(window.pos(), start + QPoint(30, 20));
    QTest::mouseRelease(title, Qt::LeftButton, {}, grip + QPoint(30, 20));

    QTest::mouseDClick(title, Qt::LeftButton, {}, grip);
    QTRY_VERIFY(window.isMaximized());
    QTest::mouseDClick(title, Qt::LeftButton, {}, grip);
    QTRY_VERIFY(!window.isMaximized());
}

void tst_KWindowChrome::ownFrameAndClosingWithAMenuOpen()
{
    QTemporaryDir dir;
    QVERIFY(KTestSupport::loadMainXml(dir.path(),
        "<commands>"
        "<KTriggerCommand id='New' text='New'/>"
        "<KListCommand id='FileMenu' text='File'><command idQ='New'/></KListCommand>"
        "<KListCommand id='Menu'><command idQ='FileMenu'/></KListCommand>"
        "</commands>"
        "<mainwindow><menubar cmd='Menu'/></mainwindow>"));
    auto* window = new KMainWindow;
    window->setAttribute(Qt::WA_DeleteOnClose);
    window->polishXml();
    window->setOwnFrame(true);
    window->resize(500, 300);
    window->show();
    QVERIFY(QTest::qWaitForWindowExposed(window));
    QVERIFY(window->windowFlags() & Qt::FramelessWindowHint);
    QCOMPARE(window->customFrameStruct(), QMargins(0, 0, 0, 0));
    // Without a ribbon: a title row above the menu bar, its buttons at the right.
    QWidget* row = window->titleRow();
    QVERIFY(row);
    QVERIFY(row->geometry().bottom() < window->menuBar()->mapTo(window, QPoint(0, 0)).y());
    KWindowTitleButtonGroup* buttons = window->captionButtons();
    QVERIFY(buttons);
    QCOMPARE(buttons->parentWidget(), row);
    QVERIFY(buttons->mapTo(window, QPoint(buttons->width(), 0)).x() >= window->width() - 1);

    // A menu open, then the window's own close button.
    QPointer<KMainWindow> guard(window);
    KMenuBar* bar = window->menuBar()->menuBar();
    QTest::mousePress(bar, Qt::LeftButton, {}, bar->itemAt(0)->geometry().center());
    QVERIFY(bar->itemAt(0)->isPopuping());
    buttons->buttonAt(2)->click();
    QTRY_VERIFY(!guard);
}

void tst_KWindowChrome::borderWindowEmbedsItsMainWindow()
{
    auto* main = new KMainWindow;
    KBorderWindow border(main);
    auto* ribbon = new QWidget;
    ribbon->setMinimumHeight(40);
    auto* status = new QWidget;
    status->setMinimumHeight(20);
    auto* formula = new QWidget;
    formula->setMinimumHeight(24);
    auto* overlay = new QWidget;
    border.addRbTabWidget(ribbon);
    border.addStatusBar(status);
    border.addFormulaAndEditbar(formula, overlay);
    border.resize(600, 400);
    border.show();
    QVERIFY(QTest::qWaitForWindowExposed(&border));
    QCOMPARE(border.getMainWindow(), main);
    QVERIFY(main->isEmbedding());
    QCOMPARE(main->parentWidget(), border.clipArea());
    QCOMPARE(border.clipArea()->objectName(), QStringLiteral("OleClipArea"));
    // Top to bottom: the ribbon, the formula bar, the work area, the status bar.
    const auto top = [&border](QWidget* w) { return w->mapTo(&border, QPoint(0, 0)).y(); };
    QVERIFY(top(ribbon) < top(formula));
    QVERIFY(top(formula) < top(main));
    QVERIFY(top(main) < top(status));
    QCOMPARE(overlay->parentWidget(), formula->parentWidget());
    // A widget inside finds the embedded main window, and so does the shell itself.
    QCOMPARE(KApplication::instance()->findRelativeMainWindow(formula), main);
    QCOMPARE(KApplication::instance()->findRelativeMainWindow(&border), main);
}

NORVIK_TEST_MAIN(tst_KWindowChrome)
#include "tst_kwindowchrome.moc"
