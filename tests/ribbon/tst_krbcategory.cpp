#include <ktestsupport.h>

#include <QSignalSpy>
#include <QStyleFactory>
#include <QWheelEvent>

#include <korbstyle.h>
#include <krbcategory.h>
#include <krbhscrollwidget.h>
#include <krblogicgroup.h>
#include <krblogicgroupcommand.h>
#include <krblogicgrouplayout.h>
#include <kseparatorcommand.h>

#include "ribbontesthelpers.h"

using namespace RibbonTest;

namespace {

// Counts the resize events of the widgets it watches.
class ResizeCounter : public QObject
{
public:
    QMap<QObject*, int> resizes;

protected:
    bool eventFilter(QObject* watched, QEvent* e) override
    {
        if (e->type() == QEvent::Resize)
            ++resizes[watched];
        return false;
    }
};

// A category of groups given as control lists, separated by "|", with separators between
// them; titles hidden, so that sizes are the controls' own plus the margins 2, 2, 2, 3.
KListCommand* categoryCommand(const QString& groups, QObject* owner)
{
    auto* list = new KListCommand(owner, owner);
    for (const QString& g : groups.split('|')) {
        if (list->count())
            list->addSeparator();
        list->addSubCommand(group(g.trimmed(), owner));
    }
    return list;
}

// True when the scroller took the notch; an ignored one goes on to the parent.
bool sendWheel(QWidget* w, int delta)
{
    QWheelEvent e(QPointF(5, 5), w->mapToGlobal(QPointF(5, 5)), QPoint(), QPoint(0, delta), Qt::NoButton,
                  Qt::NoModifier, Qt::NoScrollPhase, false);
    QCoreApplication::sendEvent(w, &e);
    return e.isAccepted();
}

} // namespace

class tst_KRbCategory : public QObject
{
    Q_OBJECT
private Q_SLOTS:
    // The frame style draws every ribbon element; under it no custom hint is set.
    void initTestCase() { QApplication::setStyle(new KORBStyle(new FixedStyle(QStyleFactory::create("Fusion")))); }
    void init() { m_warnings.reset(new KWarningCatcher); }
    void cleanup()
    {
        const QStringList messages = m_warnings->messages();
        m_warnings.reset();
        QCOMPARE(messages, QStringList());
    }

    void layout_data();
    void layout();
    void scrollSteps_data();
    void scrollSteps();
    void arrowPressScrollsByGroup();
    void wheel();
    void ensureWidgetVisible();
    void wideningFollowsAtTheRightEnd();
    void narrowContentNeverScrolls();
    void relayoutTouchesOnlyWhatChanged();
    void separatorsFollowTheirGroup();
    void groupSettingsPassOn();

private:
    // Shows a category of groups at width w and lets it settle.
    KRbCategory* show(const QString& groups, int w)
    {
        m_owner.reset(new QObject);
        m_window.reset(new QWidget);
        auto* category = new KRbCategory(categoryCommand(groups, m_owner.data()), m_window.data());
        category->setTitleVisible(false);
        category->setGeometry(0, 0, w, 80);
        m_window->resize(w, 80);
        m_window->show();
        if (!QTest::qWaitForWindowExposed(m_window.data()))
            return nullptr;
        QCoreApplication::sendPostedEvents();
        return category;
    }

    QScopedPointer<KWarningCatcher> m_warnings;
    QScopedPointer<QObject> m_owner;
    QScopedPointer<QWidget> m_window;
};

void tst_KRbCategory::layout_data()
{
    QTest::addColumn<int>("width");
    QTest::addColumn<QString>("expected"); // x,width of each item: group, separator, ...
    QTest::addColumn<bool>("leftArrow");
    QTest::addColumn<bool>("rightArrow");
    QTest::addColumn<int>("contentWidth");

    // Groups of 100 (can give 40), 90 (can give 10) and 50 (fixed), separators of 4, spacing
    // 1, margins 3 + 3 and the end spacings 4 + 4: hint 266, minimum 216.
    QTest::newRow("wider than the hint") << 300 << "3,100 104,4 109,90 200,4 205,50" << false << false << 300;
    QTest::newRow("at the hint") << 266 << "3,100 104,4 109,90 200,4 205,50" << false << false << 266;
    // 10 short: the two groups that can give, give 5 each.
    QTest::newRow("both give way") << 256 << "3,95 99,4 104,85 190,4 195,50" << false << false << 256;
    // 30 short: 15 each would take the second below its minimum; it stops at 80, the first
    // gives the other 20.
    QTest::newRow("second reaches its minimum") << 236 << "3,80 84,4 89,80 170,4 175,50" << false << false << 236;
    QTest::newRow("at the minimum") << 216 << "3,60 64,4 69,80 150,4 155,50" << false << false << 216;
    // Below the minimum nothing gives any more: the row scrolls.
    QTest::newRow("below the minimum: scrolls") << 150 << "3,60 64,4 69,80 150,4 155,50" << false << true << 216;
}

void tst_KRbCategory::layout()
{
    QFETCH(int, width);
    QFETCH(QString, expected);
    QFETCH(bool, leftArrow);
    QFETCH(bool, rightArrow);
    QFETCH(int, contentWidth);

    KRbCategory* category = show("L96x60-56x60 | L86x60-76x60 | L46x60", width);
    QVERIFY(category);
    QCOMPARE(category->sizeHint().width(), 266);
    QCOMPARE(category->itemCount(), 5);
    const QList<QRect> wanted = rects(QString(expected).replace(QRegularExpression("(\\d+),(\\d+)"), "\\1,0,\\2,0"));
    for (int i = 0; i < wanted.size(); ++i) {
        QCOMPARE(category->itemWidget(i)->x(), wanted.at(i).x());
        QCOMPARE(category->itemWidget(i)->width(), wanted.at(i).width());
    }
    KRbHScrollWidget* scroller = category->scrollWidget();
    QCOMPARE(scroller->leftArrow()->isVisible(), leftArrow);
    QCOMPARE(scroller->rightArrow()->isVisible(), rightArrow);
    QCOMPARE(scroller->contentOffset(), 0);
    QCOMPARE(category->contentWidget()->width(), contentWidth);
}

void tst_KRbCategory::scrollSteps_data()
{
    QTest::addColumn<QString>("groups");
    QTest::addColumn<QList<bool>>("presses"); // true: forward
    QTest::addColumn<QList<int>>("offsets");  // where each press comes to rest

    // Five groups of 100 at x 3, 109, 215, 321, 427, separators of 4 between, in 300 pixels.
    const QString five = "L96x60 | L96x60 | L96x60 | L96x60 | L96x60";
    // Forward: the first item reaching past width() + |offset| ends at the right edge: the
    // third group (215 + 100 > 300), then the separator after it (316 + 4 > 315).
    QTest::newRow("forward") << five << QList<bool>{true, true} << QList<int>{-15, -20};
    // Back: the last item left of |offset| comes to the left edge; with none, 100 pixels.
    QTest::newRow("back to the group at the left edge")
        << five << QList<bool>{true, true, false, false} << QList<int>{-15, -20, -3, 0};
    QTest::newRow("one group wider than the view")
        << "L396x60" << QList<bool>{true} << QList<int>{-103};
}

void tst_KRbCategory::scrollSteps()
{
    QFETCH(QString, groups);
    QFETCH(QList<bool>, presses);
    QFETCH(QList<int>, offsets);

    KRbCategory* category = show(groups, 300);
    QVERIFY(category);
    KRbHScrollWidget* scroller = category->scrollWidget();
    for (int i = 0; i < presses.size(); ++i) {
        category->scrollLogicGroup(presses.at(i));
        QTRY_COMPARE(scroller->contentOffset(), offsets.at(i));
        QTRY_COMPARE(category->contentWidget()->x(), offsets.at(i));
    }
    QCOMPARE(scroller->leftArrow()->isVisible(), offsets.constLast() != 0);
}

void tst_KRbCategory::arrowPressScrollsByGroup()
{
    KRbCategory* category = show("L96x60 | L96x60 | L96x60 | L96x60 | L96x60", 300);
    QVERIFY(category);
    KRbHScrollWidget* scroller = category->scrollWidget();
    QCOMPARE(scroller->step(), 0); // the category decides where a press lands
    QSignalSpy requests(scroller, &KRbHScrollWidget::scrollRequested);
    QVERIFY(scroller->rightArrow()->isVisible());
    QVERIFY(!scroller->leftArrow()->isVisible());
    QTest::mousePress(scroller->rightArrow(), Qt::LeftButton);
    QTest::mouseRelease(scroller->rightArrow(), Qt::LeftButton);
    QCOMPARE(requests.count(), 1);
    QCOMPARE(requests.at(0).at(0).toBool(), true);
    QTRY_COMPARE(scroller->contentOffset(), -15);
    // The left arrow came, and with it the view lost 15 pixels at the left.
    QVERIFY(scroller->leftArrow()->isVisible());
    QTRY_COMPARE(scroller->viewport()->width(), 270);

    QTest::mousePress(scroller->leftArrow(), Qt::LeftButton);
    QTest::mouseRelease(scroller->leftArrow(), Qt::LeftButton);
    QCOMPARE(requests.at(1).at(0).toBool(), false);
    QTRY_COMPARE(scroller->contentOffset(), -3);
}

void tst_KRbCategory::wheel()
{
    KRbCategory* category = show("L96x60 | L96x60 | L96x60 | L96x60 | L96x60", 300);
    QVERIFY(category);
    KRbHScrollWidget* scroller = category->scrollWidget();

    // At the left end a notch up goes on to the parent.
    QVERIFY(!sendWheel(scroller, 120));
    // A notch down moves 120 pixels at rate 1.
    QVERIFY(sendWheel(scroller, -120));
    QTRY_COMPARE(scroller->contentOffset(), -120);
    // At rate 0.5 a notch up moves 60.
    scroller->setWheelRate(0.5);
    QVERIFY(sendWheel(scroller, 120));
    QTRY_COMPARE(scroller->contentOffset(), -60);
    // Ignoring the wheel hands every notch to the parent.
    scroller->ignoreWheelEvent(true);
    QVERIFY(!sendWheel(scroller, -120));
    QCOMPARE(scroller->contentOffset(), -60);
    // A long way down stops at the right end: there the right arrow goes, and the view beside
    // the left arrow is 285 wide. A notch further goes on to the parent.
    scroller->ignoreWheelEvent(false);
    scroller->setWheelRate(10);
    QVERIFY(sendWheel(scroller, -120));
    QTRY_COMPARE(scroller->contentOffset(), 285 - 538);
    QVERIFY(!scroller->rightArrow()->isVisible());
    QVERIFY(!sendWheel(scroller, -120));
}

void tst_KRbCategory::ensureWidgetVisible()
{
    KRbCategory* category = show("L96x60 | L96x60 | L96x60 | L96x60 | L96x60", 300);
    QVERIFY(category);
    KRbHScrollWidget* scroller = category->scrollWidget();
    // The last group (427 to 527) into the view of 285 beside the right arrow; no animation.
    scroller->ensureWidgetVisible(category->itemWidget(8));
    QCOMPARE(scroller->contentOffset(), 285 - 527);
    QVERIFY(scroller->leftArrow()->isVisible());
    QVERIFY(!scroller->rightArrow()->isVisible()); // -242 is not above 300 - 538
    // The first back to the left edge.
    scroller->ensureWidgetVisible(category->itemWidget(0));
    QCOMPARE(scroller->contentOffset(), -3);
    // A widget outside the content changes nothing.
    QWidget stranger;
    scroller->ensureWidgetVisible(&stranger);
    QCOMPARE(scroller->contentOffset(), -3);
}

void tst_KRbCategory::wideningFollowsAtTheRightEnd()
{
    KRbCategory* category = show("L96x60 | L96x60 | L96x60 | L96x60 | L96x60", 300);
    QVERIFY(category);
    KRbHScrollWidget* scroller = category->scrollWidget();
    scroller->ensureWidgetVisible(category->itemWidget(8));
    QCOMPARE(scroller->contentOffset(), -242);
    // 400 wide: the view beside the left arrow is 385, so the content may rest at 385 - 538.
    category->resize(400, 80);
    QCOMPARE(scroller->contentOffset(), -153);
    QCOMPARE(category->contentWidget()->x(), -153);
    QVERIFY(!scroller->rightArrow()->isVisible());
    QVERIFY(scroller->leftArrow()->isVisible());
    // Wide enough for everything: back at the start, no arrow.
    category->resize(600, 80);
    QCOMPARE(scroller->contentOffset(), 0);
    QVERIFY(!scroller->leftArrow()->isVisible());
    QVERIFY(!scroller->rightArrow()->isVisible());
}

void tst_KRbCategory::narrowContentNeverScrolls()
{
    KRbCategory* category = show("L96x60 | L96x60", 400);
    QVERIFY(category);
    KRbHScrollWidget* scroller = category->scrollWidget();
    QVERIFY(!scroller->rightArrow()->isVisible());
    scroller->scrollTo(-50);
    QTest::qWait(400);
    QCOMPARE(scroller->contentOffset(), 0);
    QVERIFY(!scroller->leftArrow()->isVisible());
    QCOMPARE(scroller->fixedOffset(-50), 0);
    QCOMPARE(scroller->minimumSizeHint().width(), 30);
}

void tst_KRbCategory::relayoutTouchesOnlyWhatChanged()
{
    // Groups of 100, 100 (can give 40) and 50: hint 276.
    KRbCategory* category = show("L96x60 | L96x60-56x60 | L46x60", 400);
    QVERIFY(category);
    ResizeCounter counter;
    QList<QWidget*> watched;
    for (int i = 0; i < category->itemCount(); i += 2) {
        auto* group = qobject_cast<KRbLogicGroup*>(category->itemWidget(i));
        QVERIFY(group);
        watched << group << group->logicLayout()->itemAt(0)->widget();
    }
    for (QWidget* w : watched)
        w->installEventFilter(&counter);

    // Still wider than the hint: no group and no control is laid out again.
    category->resize(300, 80);
    QCoreApplication::sendPostedEvents(nullptr, QEvent::LayoutRequest);
    QCOMPARE(counter.resizes.size(), 0);
    // 24 short: only the group that can give changes size, and only its control with it.
    category->resize(252, 80);
    QCoreApplication::sendPostedEvents(nullptr, QEvent::LayoutRequest);
    QCOMPARE(counter.resizes.value(watched.at(0)), 0);
    QCOMPARE(counter.resizes.value(watched.at(1)), 0);
    QCOMPARE(counter.resizes.value(watched.at(2)), 1);
    QCOMPARE(counter.resizes.value(watched.at(3)), 1);
    QCOMPARE(counter.resizes.value(watched.at(4)), 0);
    QCOMPARE(watched.at(2)->width(), 76);
    QCOMPARE(watched.at(3)->width(), 72);
}

void tst_KRbCategory::separatorsFollowTheirGroup()
{
    QObject owner;
    auto* list = new KListCommand(&owner, &owner);
    KRbLogicGroupCommand* first = group("L46x60", &owner);
    // A group shows while one of its controls does.
    KRbLogicGroupCommand* hidden = group("H46x60", &owner);
    list->addSubCommand(first);
    list->addSeparator();
    list->addSubCommand(hidden);
    list->addSeparator();
    list->addSubCommand(group("L46x60", &owner));
    QWidget window;
    KRbCategory category(list, &window);
    category.ensureConnectCommand();
    QCOMPARE(category.itemCount(), 5);
    QVERIFY(qobject_cast<KSeparatorWidget*>(category.itemWidget(1)));
    QVERIFY(qobject_cast<KSeparatorWidget*>(category.itemWidget(1))->isLongSeparator());
    // A separator after a hidden group starts hidden, like its group.
    QVERIFY(!category.itemWidget(1)->isHidden());
    QVERIFY(category.itemWidget(2)->isHidden());
    QVERIFY(category.itemWidget(3)->isHidden());

    hidden->subCommand(0)->setVisible(true);
    hidden->update();
    QVERIFY(!category.itemWidget(2)->isHidden());
    QVERIFY(!category.itemWidget(3)->isHidden());
    first->setVisible(false);
    QVERIFY(category.itemWidget(0)->isHidden());
    QVERIFY(category.itemWidget(1)->isHidden());

    // A removed group leaves the row, its widget goes later.
    QPointer<QWidget> removed = category.itemWidget(2);
    list->removeSubCommand(2);
    QCOMPARE(category.itemCount(), 4);
    QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
    QVERIFY(!removed);
    QCOMPARE(category.contentWidget()->layout()->count(), 4 + 3); // and the end spacings
}

void tst_KRbCategory::groupSettingsPassOn()
{
    QObject owner;
    auto* list = new KListCommand(&owner, &owner);
    list->addSubCommand(group("L46x60", &owner));
    QWidget window;
    KRbCategory category(list, &window);
    category.ensureConnectCommand();
    auto* existing = qobject_cast<KRbLogicGroup*>(category.itemWidget(0));
    QVERIFY(existing);
    category.setTitleVisible(false);
    category.setTriggerAble(false);
    QVERIFY(!existing->isTitleVisible());
    QVERIFY(!existing->isTriggerAble());
    // A group made later takes the stored values.
    list->addSubCommand(group("L46x60", &owner));
    auto* later = qobject_cast<KRbLogicGroup*>(category.itemWidget(1));
    QVERIFY(later);
    QVERIFY(!later->isTitleVisible());
    QVERIFY(!later->isTriggerAble());
}

NORVIK_TEST_MAIN(tst_KRbCategory)
#include "tst_krbcategory.moc"
