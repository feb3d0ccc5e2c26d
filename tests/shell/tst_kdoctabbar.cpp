#include <ktestsupport.h>

#include <QMdiArea>
#include <QMdiSubWindow>
#include <QMimeData>

#include <QStyleFactory>

#include <kapptheme.h>
#include <kdoctabbar.h>
#include <korbstyle_2013.h>
#include <ktriggercommand.h>

namespace {
// A tab stand-in whose hint and minimum widths the test decides.
class FixedItem : public QWidget
{
public:
    FixedItem(int hint, int minimum, QWidget* parent)
        : QWidget(parent), m_hint(hint), m_minimum(minimum) {}
    QSize sizeHint() const override { return QSize(m_hint, 22); }
    QSize minimumSizeHint() const override { return QSize(m_minimum, 22); }

private:
    int m_hint;
    int m_minimum;
};

// A placed widget as "x+width", a hidden one as "-".
QString placement(const QWidget* w)
{
    const QRect g = w->geometry();
    return g.width() > 0 ? QStringLiteral("%1+%2").arg(g.x()).arg(g.width()) : QStringLiteral("-");
}
}

class tst_KDocTabbar : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void layout_data();
    void layout();
    void scrolledStripNeverShowsRoomAtTheEnd();
    void currentTabIsScrolledIntoView();
    void removingTheCurrentTabActivatesTheOneBefore();
    void tabClosedInItsOwnHandlerGoesAfterIt();
    void deletedSubWindowTakesItsTab();
    void dropReordersOnlyTabsOfTheSameBar();
    void progressLine();
    void wheelSwitchesTabs();
    void newButtonFiresOnceLaterAndNotOnDoubleClick();
    void titleAndChangedMarkFollowTheWidget();
    void hiddenTabsAreSkipped();
    void arrowTooSmallWarns();
    void flatLookMarksTheCheckedTabAndHitsItsClose();

private:
    struct Bar
    {
        QMdiArea area;
        KDocTabbar bar;
        QList<QMdiSubWindow*> windows;
        explicit Bar(int n)
        {
            for (int i = 0; i < n; ++i) {
                auto* w = new QWidget;
                w->setWindowTitle(QStringLiteral("Doc %1").arg(i));
                windows << area.addSubWindow(w);
                bar.addSubWindow(windows.last(), true);
            }
        }
    };
};

void tst_KDocTabbar::layout_data()
{
    QTest::addColumn<QList<int>>("sizes"); // hint, minimum, hint, minimum, ...
    QTest::addColumn<int>("width");
    QTest::addColumn<QString>("expected");
    QTest::addColumn<int>("first");
    QTest::addColumn<int>("visible");

    // The hints fit: packed from the left at their hints.
    QTest::newRow("hints fit") << QList<int>{180, 90, 180, 90} << 400 << "0+180 180+180" << 0 << 2;
    // One over by a pixel still counts as fitting.
    QTest::newRow("hints fit within one") << QList<int>{180, 90, 180, 90} << 359 << "0+180 180+180" << 0 << 2;
    // One tab with a hint of 250 in 200: its share, 200; no arrows.
    QTest::newRow("one shrunk") << QList<int>{250, 90} << 200 << "0+200" << 0 << 1;
    // 301 over 3: 100 each, the last one pixel more.
    QTest::newRow("shrunk shares") << QList<int>{180, 90, 180, 90, 180, 90} << 301
                                   << "0+100 100+100 200+101" << 0 << 3;
    // A tab wider than its share keeps its minimum and passes it on.
    QTest::newRow("share below minimum") << QList<int>{180, 60, 180, 120, 180, 60} << 300
                                         << "0+100 100+120 220+120" << 0 << 3;
    // Ten tabs of minimum 90 in 500: five visible (5 x 90 + 38 = 488), (500 - 38) / 5 = 92
    // each, the last two 93, after the 19-pixel arrow.
    QTest::newRow("scrolls")
        << QList<int>{180, 90, 180, 90, 180, 90, 180, 90, 180, 90, 180, 90, 180, 90, 180, 90, 180, 90, 180, 90}
        << 500 << "19+92 111+92 203+92 295+93 388+93 - - - - -" << 0 << 5;
}

void tst_KDocTabbar::layout()
{
    QFETCH(QList<int>, sizes);
    QFETCH(int, width);
    QFETCH(QString, expected);
    QFETCH(int, first);
    QFETCH(int, visible);

    QWidget host;
    auto* layout = new KDocTabbarLayout(&host);
    QList<QWidget*> items;
    for (int i = 0; i + 1 < sizes.size(); i += 2) {
        items << new FixedItem(sizes.at(i), sizes.at(i + 1), &host);
        layout->addWidget(items.last());
    }
    layout->setGeometry(QRect(0, 0, width, 22));

    QStringList placed;
    for (QWidget* w : items)
        placed << placement(w);
    QCOMPARE(placed.join(QLatin1Char(' ')), expected);
    QCOMPARE(layout->firstVisibleIndex(), first);
    QCOMPARE(layout->visibleCount(), visible);
    // Only the last row scrolls.
    const bool scrolling = QByteArray(QTest::currentDataTag()) == "scrolls";
    QCOMPARE(!layout->leftArrow()->isHidden(), scrolling);
    if (scrolling) {
        QCOMPARE(layout->leftArrow()->geometry(), QRect(0, 0, 19, 22));
        QCOMPARE(layout->rightArrow()->geometry(), QRect(width - 19, 0, 19, 22));
        QVERIFY(!layout->leftArrow()->isEnabled());
        QVERIFY(layout->rightArrow()->isEnabled());
    }
}

void tst_KDocTabbar::scrolledStripNeverShowsRoomAtTheEnd()
{
    QWidget host;
    auto* layout = new KDocTabbarLayout(&host);
    for (int i = 0; i < 10; ++i)
        layout->addWidget(new FixedItem(180, 90, &host));
    host.setFixedSize(500, 22);
    layout->activate();
    layout->setGeometry(QRect(0, 0, 500, 22));
    QTest::mouseClick(layout->rightArrow(), Qt::LeftButton);
    QCOMPARE(layout->firstVisibleIndex(), 1);
    for (int i = 0; i < 10; ++i)
        QTest::mouseClick(layout->rightArrow(), Qt::LeftButton);
    QCOMPARE(layout->firstVisibleIndex(), 5);
    QCOMPARE(layout->visibleCount(), 5);
    QVERIFY(!layout->rightArrow()->isEnabled());
    QVERIFY(layout->leftArrow()->isEnabled());

    // Wider, so that seven fit (7 x 90 + 38 = 668): the first comes back to 3.
    host.setFixedSize(700, 22);
    layout->setGeometry(QRect(0, 0, 700, 22));
    QCOMPARE(layout->firstVisibleIndex(), 3);
    QCOMPARE(layout->visibleCount(), 7);
}

void tst_KDocTabbar::currentTabIsScrolledIntoView()
{
    Bar b(12);
    b.bar.resize(500, 22);
    b.bar.show();
    QVERIFY(QTest::qWaitForWindowExposed(&b.bar));
    KDocTabbarLayout* layout = b.bar.tabLayout();
    b.bar.setCurrentIndex(0);
    QCOMPARE(layout->firstVisibleIndex(), 0);
    b.bar.setCurrentIndex(11);
    QCOMPARE(layout->firstVisibleIndex() + layout->visibleCount(), 12);
    QVERIFY(b.bar.tabButton(11)->geometry().right() < 500 - 19);
    QVERIFY(b.bar.tabButton(11)->width() >= 90);
    b.bar.setCurrentIndex(2);
    QCOMPARE(layout->firstVisibleIndex(), 2);
}

void tst_KDocTabbar::removingTheCurrentTabActivatesTheOneBefore()
{
    Bar b(4);
    b.bar.setCurrentIndex(1);
    b.bar.setCurrentIndex(3);
    QSignalSpy changed(&b.bar, &KDocTabbar::currentSubWindowChanged);
    QSignalSpy removed(&b.bar, &KDocTabbar::tabRemoved);
    b.bar.removeTab(3);
    QCOMPARE(b.bar.count(), 3);
    QCOMPARE(b.bar.currentSubWindow(), b.windows.at(1));
    QCOMPARE(changed.count(), 1);
    QCOMPARE(changed.at(0).at(0).value<QMdiSubWindow*>(), b.windows.at(1));
    QCOMPARE(removed.count(), 1);
    QCOMPARE(removed.at(0).at(0).toInt(), 3);
    QVERIFY(b.bar.currentTab()->isChecked());

    // Removing a tab ahead of the current one keeps the current document.
    b.bar.removeTab(0);
    QCOMPARE(b.bar.currentIndex(), 0);
    QCOMPARE(b.bar.currentSubWindow(), b.windows.at(1));
}

void tst_KDocTabbar::tabClosedInItsOwnHandlerGoesAfterIt()
{
    Bar b(2);
    b.bar.resize(400, 22);
    b.bar.show();
    QVERIFY(QTest::qWaitForWindowExposed(&b.bar));
    QPointer<KDocTab> tab = b.bar.tabButton(0);
    bool aliveInHandler = false;
    connect(&b.bar, &KDocTabbar::rightClicked, this, [&](int index) {
        b.bar.removeTab(index);
        // A nested loop, as a context menu runs, must not take the tab from under us.
        QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
        aliveInHandler = !tab.isNull();
    });
    QTest::mouseClick(tab.data(), Qt::RightButton, {}, QPoint(20, 10));
    QVERIFY(aliveInHandler);
    QTRY_VERIFY(tab.isNull());
    QCOMPARE(b.bar.count(), 1);
    QCOMPARE(b.bar.currentSubWindow(), b.windows.at(1));
}

void tst_KDocTabbar::deletedSubWindowTakesItsTab()
{
    Bar b(3);
    QPointer<KDocTab> tab = b.bar.tabButton(2);
    delete b.windows.at(2);
    QCOMPARE(b.bar.count(), 2);
    QCOMPARE(b.bar.findSubWindow(b.windows.at(1)), 1);
    QCOMPARE(b.bar.currentSubWindow(), b.windows.at(1));
    QTRY_VERIFY(tab.isNull());
}

void tst_KDocTabbar::dropReordersOnlyTabsOfTheSameBar()
{
    Bar b(3);
    Bar other(1);
    b.bar.setCurrentIndex(0);
    KDocTab* target = b.bar.tabButton(2);

    // A drop with a source tab is only possible inside a running drag; what can be checked
    // without one is that nothing foreign is taken: no source, another bar's tab, a stale
    // index, another format.
    const QList<QPair<QByteArray, QString>> foreign = {
        {"0", QStringLiteral("NorvikOfficeUI/KDocTab")},
        {"7", QStringLiteral("NorvikOfficeUI/KDocTab")},
        {"0", QStringLiteral("text/plain")},
    };
    for (const auto& f : foreign) {
        QMimeData mime;
        mime.setData(f.second, f.first);
        QDragEnterEvent enter(QPoint(5, 5), Qt::MoveAction, &mime, Qt::LeftButton, {});
        QCoreApplication::sendEvent(target, &enter);
        QVERIFY(!enter.isAccepted());
        QDropEvent drop(QPointF(5, 5), Qt::MoveAction, &mime, Qt::LeftButton, {});
        QCoreApplication::sendEvent(target, &drop);
        QVERIFY(!drop.isAccepted());
    }
    QCOMPARE(b.bar.subWindowAt(0), b.windows.at(0));
    QCOMPARE(b.bar.subWindowAt(2), b.windows.at(2));

    // moveTab, which a drop of the bar's own tab calls, keeps the current document.
    b.bar.moveTab(0, 2);
    QCOMPARE(b.bar.subWindowAt(0), b.windows.at(1));
    QCOMPARE(b.bar.subWindowAt(2), b.windows.at(0));
    QCOMPARE(b.bar.currentIndex(), 2);
    QCOMPARE(b.bar.tabLayout()->indexOf(b.bar.tabButton(2)), 2);
    b.bar.moveTab(0, 5); // out of range: nothing
    QCOMPARE(b.bar.subWindowAt(0), b.windows.at(1));
}

void tst_KDocTabbar::progressLine()
{
    Bar b(1);
    KDocTab* tab = b.bar.tabButton(0);
    tab->setProgressBarVisible(true);
    tab->setProgressValue(40);
    QVERIFY(tab->isProgressBarVisible());
    tab->setProgressValue(100);
    QVERIFY(!tab->isProgressBarVisible());
    tab->setProgressValue(50);
    QVERIFY(!tab->isProgressBarVisible());
    QCOMPARE(tab->progressValue(), 50);

    // An animation that isn't one leaves the tab as it was.
    tab->setPlayImage(QStringLiteral("/nonexistent/upload.gif"));
    QCOMPARE(tab->playImage(), QString());
    QVERIFY(!tab->isPlaying());
    QPixmap spin(16, 16);
    spin.fill(Qt::red);
    tab->setPlayImage(spin);
    QVERIFY(tab->isPlaying());
    QPixmap none;
    tab->setPlayImage(none);
    QVERIFY(!tab->isPlaying());
}

void tst_KDocTabbar::wheelSwitchesTabs()
{
    Bar one(1);
    QWheelEvent down(QPointF(5, 5), QPointF(5, 5), QPoint(), QPoint(0, -120), Qt::NoButton, {}, Qt::NoScrollPhase, false);
    QCoreApplication::sendEvent(&one.bar, &down);
    QCOMPARE(one.bar.currentIndex(), 0);

    Bar b(3);
    b.bar.setCurrentIndex(0);
    QCoreApplication::sendEvent(&b.bar, &down);
    QCOMPARE(b.bar.currentIndex(), 1);
    QWheelEvent up(QPointF(5, 5), QPointF(5, 5), QPoint(), QPoint(0, 120), Qt::NoButton, {}, Qt::NoScrollPhase, false);
    QCoreApplication::sendEvent(&b.bar, &up);
    QCoreApplication::sendEvent(&b.bar, &up);
    QCOMPARE(b.bar.currentIndex(), 0);
}

void tst_KDocTabbar::newButtonFiresOnceLaterAndNotOnDoubleClick()
{
    KDocTabbar bar;
    KTriggerCommand cmd(nullptr, nullptr);
    bar.setExtendButton(&cmd);
    KTabBarNewButton* button = bar.extendButton();
    QVERIFY(button);
    bar.resize(300, 25);
    bar.show();
    QVERIFY(QTest::qWaitForWindowExposed(&bar));
    QSignalSpy triggered(&cmd, &KCommand::triggered);

    QTest::mouseClick(button, Qt::LeftButton);
    QCOMPARE(triggered.count(), 0);
    QVERIFY(button->isClickPending());
    QTRY_COMPARE(triggered.count(), 1);

    QTest::mouseClick(button, Qt::LeftButton);
    QTest::mouseDClick(button, Qt::LeftButton);
    QTest::mouseRelease(button, Qt::LeftButton);
    KTestSupport::runLoopFor(450);
    QVERIFY(triggered.count() <= 2);

    // While every tab is seen the button has its split form; once tabs scroll out, the plain one.
    auto* area = new QMdiArea;
    for (int i = 0; i < 8; ++i) {
        auto* w = new QWidget;
        w->setWindowTitle(QStringLiteral("Doc %1").arg(i));
        bar.addSubWindow(area->addSubWindow(w), true);
        if (i == 0) {
            QTRY_VERIFY(button->isSplitButton());
            QCOMPARE(button->sizeHint(), QSize(36, 25));
        }
    }
    QTRY_VERIFY(!button->isSplitButton());
    QCOMPARE(button->sizeHint(), QSize(26, 25));
    for (int i = bar.count() - 1; i >= 0; --i)
        bar.removeTab(i);
    delete area;
}

void tst_KDocTabbar::titleAndChangedMarkFollowTheWidget()
{
    Bar b(1);
    KDocTab* tab = b.bar.tabButton(0);
    QCOMPARE(tab->text(), QStringLiteral("Doc 0"));
    QWidget* w = b.windows.at(0)->widget();
    w->setWindowTitle(QStringLiteral("Letter[*]"));
    w->setWindowModified(true);
    QCOMPARE(tab->text(), QStringLiteral("Letter"));
    QVERIFY(tab->isModified());
    QCOMPARE(tab->toolTip(), QStringLiteral("Letter"));
    w->setWindowModified(false);
    QVERIFY(!tab->isModified());
}

void tst_KDocTabbar::hiddenTabsAreSkipped()
{
    Bar b(4);
    b.bar.resize(800, 22);
    b.bar.show();
    QVERIFY(QTest::qWaitForWindowExposed(&b.bar));
    b.bar.setCurrentIndex(0);
    b.bar.setTabVisible(b.windows.at(1), false);
    b.bar.activeNextTab(false);
    QCOMPARE(b.bar.currentIndex(), 2);
    QCOMPARE(b.bar.prevTab(b.bar.currentTab()), b.bar.tabButton(0));
    // The hidden tab takes no room: the others are packed at their hints.
    QTRY_COMPARE(b.bar.tabButton(2)->x(), b.bar.tabButton(0)->width());
    // Hiding the current one goes back to the one used before it.
    b.bar.setTabVisible(b.windows.at(2), false);
    QCOMPARE(b.bar.currentIndex(), 0);
    b.bar.setTabVisible(b.windows.at(2), true);
    b.bar.setCurrentIndex(3);
    b.bar.activeNextTab(true);
    QCOMPARE(b.bar.currentIndex(), 0);
}

void tst_KDocTabbar::arrowTooSmallWarns()
{
    KDocTabbarArrowButton arrow(Qt::LeftArrow, nullptr);
    arrow.resize(5, 5);
    KWarningCatcher warnings;
    arrow.grab();
    QCOMPARE(warnings.count(), 1);
    QVERIFY(warnings.contains(QStringLiteral("KDocTabbar::Arrow too small, can't not draw complete..")));
    warnings.clear();
    arrow.resize(19, 22);
    arrow.grab();
    QCOMPARE(warnings.count(), 0);
}

void tst_KDocTabbar::flatLookMarksTheCheckedTabAndHitsItsClose()
{
    QTemporaryDir dir;
    QVERIFY(KTestSupport::loadTheme(KTestSupport::writeFile(
        dir.filePath("theme.xml"),
        "<t><style name='2013'/><theme><style class='theme'><color name='theme1' value='#c01010'/></style>"
        "</theme></t>")));
    KORBStyle_2013 style(QStyleFactory::create(QStringLiteral("Fusion")));
    KStyleOptionDocTab option;
    option.rect = QRect(0, 0, 180, 22);
    option.text = QStringLiteral("Letter");
    option.fontMetrics = QFontMetrics(QApplication::font());
    auto band = [&](bool checked) {
        option.isChecked = checked;
        const QImage image = KTestSupport::paint(QSize(180, 22), [&](QPainter& p) {
            style.drawComplexControl(KORBStyle::KCC_DocTab, &option, &p, nullptr);
        });
        return image.pixelColor(90, 0);
    };
    QCOMPARE(band(true), QColor("#c01010"));
    QVERIFY(band(false) != QColor("#c01010"));
    const QRect close = KStyleOptionDocTab::closeRect(option.rect);
    QCOMPARE(style.hitTestComplexControl(KORBStyle::KCC_DocTab, &option, close.center(), nullptr),
             KORBStyle::KSC_DocTabClose);
    QVERIFY(style.hitTestComplexControl(KORBStyle::KCC_DocTab, &option, QPoint(30, 10), nullptr)
            != KORBStyle::KSC_DocTabClose);
    KApplication::instance()->theme()->resetXml();
}

NORVIK_TEST_MAIN(tst_KDocTabbar)
#include "tst_kdoctabbar.moc"
