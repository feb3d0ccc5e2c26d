#include <ktestsupport.h>

#include <QLabel>
#include <QPointer>
#include <QScrollArea>
#include <QScrollBar>
#include <QStyle>

#include <kblockedmouseevent.h>
#include <kevent.h>
#include <kpopupwidget.h>

// Two screens side by side, so that placement is checked on a virtual desktop as well:
// "left" 800 x 600 at (0, 0) and "right" 1024 x 768 at (800, 0).
static const bool s_twoScreens =
    qputenv("QT_QPA_PLATFORM", "offscreen:configfile=" NORVIK_TEST_DATA_DIR "/screens.json");

namespace {

// Content whose size hint and minimum the test chooses; fixed unless told otherwise.
class Content : public QWidget
{
public:
    Content(const QSize& hint, const QSize& minimum, bool fixed = true)
        : m_hint(hint)
    {
        setMinimumSize(minimum);
        if (fixed)
            setSizePolicy(QSizePolicy::Fixed, QSizePolicy::Fixed);
    }
    QSize sizeHint() const override { return m_hint; }

private:
    QSize m_hint;
};

// A widget that records the blocked mouse events reaching it and answers with the flags
// it is told to set.
class Probe : public QWidget
{
public:
    QList<QEvent::Type> received;
    bool setKeepOpen = false;
    bool setFirst = false;

protected:
    bool event(QEvent* e) override
    {
        if (int(e->type()) != KEvent::BlockedMouse)
            return QWidget::event(e);
        auto* blocked = static_cast<KBlockedMouseEvent*>(e);
        received << blocked->mouseEvent()->type();
        blocked->setKeepOpen(setKeepOpen);
        blocked->setFirstFlag(setFirst);
        e->accept();
        return true;
    }
};

// A popup with fixed content of the given size; the popup adds its border of 2 all round.
KPopupWidget* popupOf(QWidget* parent, const QSize& hint, const QSize& minimum = QSize())
{
    auto* popup = new KPopupWidget(parent, Qt::Popup);
    popup->setContentWidget(new Content(hint, minimum.isValid() ? minimum : hint));
    return popup;
}

} // namespace

class tst_KPopupWidget : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init();
    void cleanup();
    void screens();
    void showAtPoint_data();
    void showAtPoint();
    void showAgainstOwner_data();
    void showAgainstOwner();
    void scrollsWhenNoSideHasRoom();
    void sizeGripFollowsContentAndFlips();
    void gripResizesAndTheSizeSticks();
    void outsideMouseGoesToTheWidgetBelow();
    void pressOutsideClosesTheChain();
    void keysAndDismiss();
    void deletedContentOrOwner();

private:
    QScopedPointer<QWidget> m_host;
    QPointer<Probe> m_probe;
};

void tst_KPopupWidget::init()
{
    // A window under the popups, with a probe at its top left to be clicked through.
    m_host.reset(new QWidget);
    m_host->setGeometry(0, 0, 800, 600);
    m_probe = new Probe;
    m_probe->setParent(m_host.data());
    m_probe->setGeometry(0, 0, 200, 100);
    m_host->show();
    QVERIFY(QTest::qWaitForWindowExposed(m_host.data()));
}

void tst_KPopupWidget::cleanup()
{
    while (QWidget* popup = QApplication::activePopupWidget())
        popup->close();
    m_host.reset();
}

void tst_KPopupWidget::screens()
{
    QCOMPARE(QGuiApplication::screens().size(), 2);
    QCOMPARE(KPopupWidget::getAvailScreenRect(QPoint(10, 10)), QRect(0, 0, 800, 600));
    QCOMPARE(KPopupWidget::getAvailScreenRect(QPoint(1000, 700)), QRect(800, 0, 1024, 768));
}

void tst_KPopupWidget::showAtPoint_data()
{
    QTest::addColumn<QSize>("content");
    QTest::addColumn<bool>("fixed");
    QTest::addColumn<QPoint>("pos");
    QTest::addColumn<bool>("alignRight");
    QTest::addColumn<int>("offset");
    QTest::addColumn<QRect>("expected");
    QTest::addColumn<bool>("scrolls");

    // The popup is the content plus 2 on every side: 100 x 80 gives 104 x 84.
    const QSize small(100, 80);
    QTest::newRow("plain") << small << true << QPoint(10, 10) << false << 0 << QRect(10, 10, 104, 84) << false;
    QTest::newRow("fits the right edge exactly")
        << small << true << QPoint(696, 10) << false << 0 << QRect(696, 10, 104, 84) << false;
    QTest::newRow("one past: flips left")
        << small << true << QPoint(697, 10) << false << 0 << QRect(593, 10, 104, 84) << false;
    QTest::newRow("left half: clipped, not flipped")
        << QSize(500, 80) << true << QPoint(350, 10) << false << 0 << QRect(350, 10, 450, 84) << true;
    QTest::newRow("bottom: flips up")
        << small << true << QPoint(10, 560) << false << 0 << QRect(10, 476, 104, 84) << false;
    QTest::newRow("upper half: clipped, not flipped")
        << QSize(100, 500) << true << QPoint(10, 250) << false << 0 << QRect(10, 250, 104, 350) << true;
    // Right aligned, the left edge moves and the right one stays: a popup that can grow
    // spans twice its width, a fixed one ends at the point.
    QTest::newRow("right aligned spans twice")
        << small << false << QPoint(300, 100) << true << 0 << QRect(196, 100, 208, 84) << false;
    QTest::newRow("right aligned, fixed: ends at the point")
        << small << true << QPoint(300, 100) << true << 0 << QRect(196, 100, 104, 84) << false;
    QTest::newRow("right aligned, flipped up less the offset")
        << small << false << QPoint(300, 560) << true << 5 << QRect(196, 471, 208, 84) << false;
    // The second screen measures its halves from its own left edge (800) and top.
    QTest::newRow("second screen: flips left at its right edge")
        << small << true << QPoint(1750, 10) << false << 0 << QRect(1646, 10, 104, 84) << false;
    QTest::newRow("second screen: left half only clipped")
        << QSize(1000, 80) << true << QPoint(900, 10) << false << 0 << QRect(900, 10, 924, 84) << true;
    QTest::newRow("second screen: flips up at its bottom")
        << small << true << QPoint(1000, 700) << false << 0 << QRect(1000, 616, 104, 84) << false;
}

void tst_KPopupWidget::showAtPoint()
{
    QFETCH(QSize, content);
    QFETCH(bool, fixed);
    QFETCH(QPoint, pos);
    QFETCH(bool, alignRight);
    QFETCH(int, offset);
    QFETCH(QRect, expected);
    QFETCH(bool, scrolls);
    auto* popup = new KPopupWidget(m_host.data(), Qt::Popup);
    popup->setContentWidget(new Content(content, content, fixed));
    popup->setSizeGripType(KSizeGrip::NoGrip);
    popup->show(pos, alignRight, offset);
    QVERIFY(popup->isVisible());
    QCOMPARE(popup->geometry(), expected);
    QCOMPARE(bool(popup->scrollArea()), scrolls);
}

void tst_KPopupWidget::showAgainstOwner_data()
{
    QTest::addColumn<QSize>("content");
    QTest::addColumn<QSize>("minimum");
    QTest::addColumn<QRect>("owner");
    QTest::addColumn<QPoint>("pos");
    QTest::addColumn<QRect>("expected");

    const QSize small(100, 80);
    QTest::newRow("under the owner") << small << small << QRect(10, 10, 50, 20) << QPoint(10, 30)
                                     << QRect(10, 30, 104, 84);
    QTest::newRow("right edge: moved in") << small << small << QRect(760, 10, 40, 20) << QPoint(760, 30)
                                          << QRect(696, 30, 104, 84);
    QTest::newRow("moved onto the owner: beside it") << small << small << QRect(760, 10, 40, 20)
                                                     << QPoint(760, 20) << QRect(657, 20, 104, 84);
    QTest::newRow("an overlap of 2 is an edge") << small << small << QRect(760, 10, 40, 20) << QPoint(760, 27)
                                                << QRect(696, 27, 104, 84);
    QTest::newRow("bottom edge: above the owner") << small << small << QRect(10, 560, 50, 20)
                                                  << QPoint(10, 580) << QRect(10, 477, 104, 84);
    // Too tall for above or below: the first side with room is the right one, at the top
    // half's rule (owner not above the middle: bottom-aligned with the screen).
    QTest::newRow("tall: beside the owner") << QSize(100, 500) << QSize(100, 500) << QRect(10, 300, 50, 20)
                                            << QPoint(10, 320) << QRect(59, 96, 104, 504);
    QTest::newRow("clipped to the minimum below")
        << QSize(100, 1000) << QSize(100, 100) << QRect(10, 100, 50, 20) << QPoint(10, 120)
        << QRect(10, 120, 104, 480);
}

void tst_KPopupWidget::showAgainstOwner()
{
    QFETCH(QSize, content);
    QFETCH(QSize, minimum);
    QFETCH(QRect, owner);
    QFETCH(QPoint, pos);
    QFETCH(QRect, expected);
    auto* popup = new KPopupWidget(m_host.data(), Qt::Popup);
    popup->setContentWidget(new Content(content, minimum, content == minimum));
    popup->setSizeGripType(KSizeGrip::NoGrip);
    popup->show(owner, pos);
    QCOMPARE(popup->geometry(), expected);
    QVERIFY(!popup->scrollArea());
}

void tst_KPopupWidget::scrollsWhenNoSideHasRoom()
{
    // Taller than the screen at its minimum: it opens clipped, with scroll bars, and the
    // next opening starts without them.
    auto* content = new Content(QSize(100, 700), QSize(100, 700));
    auto* popup = new KPopupWidget(m_host.data(), Qt::Popup);
    popup->setContentWidget(content);
    popup->show(QRect(10, 300, 50, 20), QPoint(10, 320));
    QVERIFY(popup->scrollArea());
    QCOMPARE(popup->scrollArea()->widget(), static_cast<QWidget*>(content));
    const int extent = popup->style()->pixelMetric(QStyle::PM_ScrollBarExtent, nullptr, popup);
    QCOMPARE(popup->geometry(), QRect(10, 0, 104 + extent, 301));
    QCOMPARE(popup->scrollArea()->verticalScrollBar()->objectName(), QStringLiteral("KPopupWidget-deep"));
    popup->close();
    QVERIFY(!popup->scrollArea());
    QCOMPARE(content->parentWidget(), static_cast<QWidget*>(popup));
    QCOMPARE(popup->contentWidget(), static_cast<QWidget*>(content));
}

void tst_KPopupWidget::sizeGripFollowsContentAndFlips()
{
    // The automatic grip: a content that can grow both ways gets the bottom right corner,
    // one way that edge, neither no grip at all.
    auto* popup = new KPopupWidget(m_host.data(), Qt::Popup);
    auto* content = new Content(QSize(100, 80), QSize(50, 40), false);
    popup->setContentWidget(content);
    QCOMPARE(popup->sizeGripType(), KSizeGrip::BottomRight);
    content->setFixedWidth(100);
    QCOMPARE(popup->sizeGripType(), KSizeGrip::Bottom);
    content->setFixedHeight(80);
    QCOMPARE(popup->sizeGripType(), KSizeGrip::NoGrip);
    popup->setSizeGripType(KSizeGrip::Left);
    QCOMPARE(popup->sizeGripType(), KSizeGrip::Left);

    // Flipped to the left of the point and above it, the corner grip follows to the top left.
    content->setMinimumSize(50, 40);
    content->setMaximumSize(QWIDGETSIZE_MAX, QWIDGETSIZE_MAX);
    content->setSizePolicy(QSizePolicy::Preferred, QSizePolicy::Preferred);
    popup->setSizeGripType(KSizeGrip::AutoGrip);
    popup->show(QPoint(790, 590), false, 0);
    QCOMPARE(popup->sizeGrip()->getSizeGripType(), KSizeGrip::TopLeft);
    QVERIFY(popup->sizeGrip()->isVisible());
    QVERIFY(popup->sizeGrip()->y() < content->y()); // the grip stands above the content now
    popup->close();
    popup->show(QPoint(10, 10), false, 0);
    QCOMPARE(popup->sizeGrip()->getSizeGripType(), KSizeGrip::BottomRight);
}

void tst_KPopupWidget::gripResizesAndTheSizeSticks()
{
    auto* popup = new KPopupWidget(m_host.data(), Qt::Popup);
    popup->setContentWidget(new Content(QSize(100, 80), QSize(60, 50), false));
    popup->show(QPoint(100, 100), false, 0);
    const QRect before = popup->geometry();
    KSizeGrip* grip = popup->sizeGrip();
    QCOMPARE(grip->getSizeGripType(), KSizeGrip::BottomRight);
    const QPoint corner = grip->controlRect().center();
    QTest::mousePress(grip, Qt::LeftButton, {}, corner);
    QTest::mouseMove(grip, corner + QPoint(40, 30));
    QTest::mouseRelease(grip, Qt::LeftButton, {}, corner + QPoint(40, 30));
    QCOMPARE(popup->geometry(), before.adjusted(0, 0, 40, 30));

    // Dragged below the minimum, the edge stops there and the opposite one stays.
    QTest::mousePress(grip, Qt::LeftButton, {}, grip->controlRect().center());
    QTest::mouseMove(grip, grip->controlRect().center() - QPoint(500, 500));
    QTest::mouseRelease(grip, Qt::LeftButton);
    QCOMPARE(popup->geometry().topLeft(), before.topLeft());
    QCOMPARE(popup->size(), popup->minimumSize());

    // The size the user gave comes back at the next opening, until it is forgotten.
    QTest::mousePress(grip, Qt::LeftButton, {}, grip->controlRect().center());
    QTest::mouseMove(grip, grip->controlRect().center() + QPoint(90, 70));
    QTest::mouseRelease(grip, Qt::LeftButton);
    const QSize userSize = popup->size();
    popup->close();
    popup->show(QPoint(100, 100), false, 0);
    QCOMPARE(popup->size(), userSize);
    popup->close();
    popup->clearSizeAttitude();
    popup->show(QPoint(100, 100), false, 0);
    QCOMPARE(popup->size(), before.size());

    // A grip of no type takes no drag.
    popup->setSizeGripType(KSizeGrip::NoGrip);
    QVERIFY(grip->isHidden());
    QVERIFY(grip->controlRect().isNull());
}

void tst_KPopupWidget::outsideMouseGoesToTheWidgetBelow()
{
    KPopupWidget* popup = popupOf(m_host.data(), QSize(100, 80));
    popup->show(QPoint(300, 300), false, 0);
    const QPoint onProbe = popup->mapFromGlobal(m_probe->mapToGlobal(QPoint(20, 20)));

    // Moves and releases outside reach the widget below and leave the popup open.
    QTest::mouseMove(popup, onProbe);
    QTest::mouseRelease(popup, Qt::LeftButton, {}, onProbe);
    QCOMPARE(m_probe->received, QList<QEvent::Type>({QEvent::MouseMove, QEvent::MouseButtonRelease}));
    QVERIFY(popup->isVisible());

    // A widget that asks to keep the popup open on its press gets its way.
    m_probe->setKeepOpen = true;
    QTest::mousePress(popup, Qt::LeftButton, {}, onProbe);
    QVERIFY(popup->isVisible());
    // Otherwise the press closes it, and is not played again to the widget below.
    m_probe->setKeepOpen = false;
    QTest::mousePress(popup, Qt::LeftButton, {}, onProbe);
    QVERIFY(!popup->isVisible());
    QVERIFY(popup->testAttribute(Qt::WA_NoMouseReplay));
    QCOMPARE(m_probe->received.size(), 4);

    // A double click outside closes too.
    popup->show(QPoint(300, 300), false, 0);
    QTest::mouseDClick(popup, Qt::LeftButton, {}, onProbe);
    QVERIFY(!popup->isVisible());
    QCOMPARE(m_probe->received.last(), QEvent::MouseButtonDblClick);
}

void tst_KPopupWidget::pressOutsideClosesTheChain()
{
    // A chain: the second popup opened from the content of the first.
    KPopupWidget* first = popupOf(m_host.data(), QSize(100, 80));
    first->show(QPoint(300, 300), false, 0);
    KPopupWidget* second = popupOf(first->contentWidget(), QSize(100, 80));
    second->show(QPoint(420, 300), false, 0);
    QCOMPARE(QApplication::activePopupWidget(), static_cast<QWidget*>(second));

    // A press on the first popup, outside the second, reaches the first: a widget there that
    // keeps the chain open (as a parent menu does) keeps both.
    auto* keeper = new Probe;
    keeper->setKeepOpen = true;
    keeper->setFixedSize(100, 80);
    first->setContentWidget(keeper);
    QTRY_COMPARE(keeper->geometry(), QRect(2, 2, 100, 80));
    const QPoint onFirst = second->mapFromGlobal(first->mapToGlobal(QPoint(20, 20)));
    QTest::mousePress(second, Qt::LeftButton, {}, onFirst);
    QCOMPARE(keeper->received, QList<QEvent::Type>({QEvent::MouseButtonPress}));
    QVERIFY(second->isVisible());
    QVERIFY(first->isVisible());

    // A press anywhere else closes every popup of the chain, and so does one on nothing.
    QTest::mousePress(second, Qt::LeftButton, {}, second->mapFromGlobal(m_probe->mapToGlobal(QPoint(5, 5))));
    QVERIFY(!second->isVisible());
    QVERIFY(!first->isVisible());
    QVERIFY(!QApplication::activePopupWidget());

    first->show(QPoint(300, 300), false, 0);
    second->show(QPoint(420, 300), false, 0);
    QTest::mousePress(second, Qt::LeftButton, {}, second->mapFromGlobal(QPoint(1700, 700))); // no window there
    QVERIFY(!first->isVisible());
    QVERIFY(!QApplication::activePopupWidget());
}

void tst_KPopupWidget::keysAndDismiss()
{
    KPopupWidget* first = popupOf(m_host.data(), QSize(100, 80));
    first->show(QPoint(300, 300), false, 0);
    KPopupWidget* second = popupOf(first->contentWidget(), QSize(100, 80));
    second->show(QPoint(420, 300), false, 0);
    QSignalSpy hidden(first, &KPopupWidget::aboutToHide);

    // Escape closes one level.
    QTest::keyClick(second, Qt::Key_Escape);
    QVERIFY(!second->isVisible());
    QVERIFY(first->isVisible());

    // Alt closes the whole nest, unless the popup keeps open on Alt.
    second->show(QPoint(420, 300), false, 0);
    second->setPopupStyle(second->popupStyle() | KPopupWidget::StyleAltKeepsOpen);
    QTest::keyClick(second, Qt::Key_Alt);
    QVERIFY(second->isVisible());
    second->setPopupStyle(KPopupWidget::StyleBorder);
    QTest::keyClick(second, Qt::Key_Alt);
    QVERIFY(!second->isVisible());
    QVERIFY(!first->isVisible());
    QCOMPARE(hidden.count(), 1);

    // The dismiss event, sent up from deep inside, closes each popup on its way.
    first->show(QPoint(300, 300), false, 0);
    second->show(QPoint(420, 300), false, 0);
    KEvent dismiss(KEvent::Dismiss);
    sendPropagatedEvent(second->contentWidget(), &dismiss, false);
    QVERIFY(!second->isVisible());
    QVERIFY(!first->isVisible());

    // exec() returns when the popup hides.
    QTimer::singleShot(0, first, [first] { first->close(); });
    QCOMPARE(first->exec(QPoint(300, 300), false, 0), 0);
    QVERIFY(!first->isVisible());
}

void tst_KPopupWidget::deletedContentOrOwner()
{
    // Content deleted while open: the popup closes and reopens empty without harm.
    KPopupWidget* popup = popupOf(m_host.data(), QSize(100, 80));
    popup->show(QPoint(300, 300), false, 0);
    delete popup->contentWidget();
    QVERIFY(!popup->contentWidget());
    popup->close();
    popup->show(QPoint(300, 300), false, 0);
    QVERIFY(popup->isVisible());
    popup->close();

    // The owner deleted while a popup it opened runs exec(): the loop ends.
    auto* owner = new QWidget(m_host.data());
    QPointer<KPopupWidget> owned = popupOf(owner, QSize(100, 80));
    QTimer::singleShot(0, owner, [owner] { delete owner; });
    owned->exec(QPoint(300, 300), false, 0);
    QVERIFY(!owned);
    QVERIFY(!QApplication::activePopupWidget());
}

NORVIK_TEST_MAIN(tst_KPopupWidget)
#include "tst_kpopupwidget.moc"
