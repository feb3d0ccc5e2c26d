// The gallery views: the row layout at given widths, the vertical offset and its steps,
// hover and click by mouse and keys, the keyboard walks, painting only what is in sight,
// and models that change or go away under a view.
#include <ktestsupport.h>

#include <QScrollBar>
#include <QSignalSpy>

#include <kevent.h>
#include <khotkeyevent.h>
#include <ktriggercommand.h>
#include <kgalleryview.h>
#include <kpopupwidget.h>
#include <kscrollgalleryview.h>

#include "gallerytesthelpers.h"

namespace {

// A view of width w (resized, so that the layout uses it) on model, built.
KGalleryView* makeView(KGalleryAbstractModel* model, int w, int h, QWidget* parent = nullptr, bool loop = false)
{
    auto* view = new KGalleryView(model, KGalleryViewNormal, parent, loop);
    view->resize(w, h);
    view->toReady();
    return view;
}

QRect geometryOf(KGalleryView* view, int i)
{
    return view->item(i)->gemetry();
}

// A cell that stands for a command, as the cells of a host's command gallery do.
class CommandItem : public BoxItem
{
public:
    CommandItem(KCommand* command, KGalleryAbstractModel* model)
        : BoxItem(QSize(40, 30), model)
        , m_command(command)
    {
    }
    KCommand* command() const override { return m_command; }

private:
    KCommand* m_command;
};

} // namespace

class tst_KGalleryView : public QObject
{
    Q_OBJECT
private Q_SLOTS:
    void layoutAtWidths_data();
    void layoutAtWidths();
    void expandingTakesItsOwnRow();
    void fixedSizeNeverWraps();
    void unresizedUsesDefaultWidth();
    void scrolling();
    void wheel();
    void hoverAndClickByMouse();
    void clickClosesPopup();
    void rightClickWithoutMenu();
    void keyboardWalks();
    void verticalLoop();
    void returnClicksHovered();
    void paintsOnlyVisibleCells();
    void followsModelChanges();
    void modelDeletedBeforeView();
    void emptyModel();
    void scrollGalleryView();
    void fixedScrollGalleryView();
    void keyTips();
};

void tst_KGalleryView::layoutAtWidths_data()
{
    QTest::addColumn<int>("width");
    QTest::addColumn<int>("hSpace");
    QTest::addColumn<QList<QPoint>>("positions");
    QTest::addColumn<int>("contentHeight");
    const auto p = [](int x, int y) { return QPoint(x, y); };
    // Five cells of 40 by 30.
    QTest::newRow("all in one row") << 200 << 0 << QList<QPoint>{p(0, 0), p(40, 0), p(80, 0), p(120, 0), p(160, 0)} << 30;
    QTest::newRow("exact fit of two") << 80 << 0 << QList<QPoint>{p(0, 0), p(40, 0), p(0, 30), p(40, 30), p(0, 60)} << 90;
    QTest::newRow("one pixel short") << 119 << 0 << QList<QPoint>{p(0, 0), p(40, 0), p(0, 30), p(40, 30), p(0, 60)} << 90;
    QTest::newRow("narrower than a cell") << 30 << 0 << QList<QPoint>{p(0, 0), p(0, 30), p(0, 60), p(0, 90), p(0, 120)} << 150;
    // The spacing counts after each cell: 40+5+40 = 85 fits 90, a third does not.
    QTest::newRow("with spacing") << 90 << 5 << QList<QPoint>{p(0, 0), p(45, 0), p(0, 30), p(45, 30), p(0, 60)} << 90;
}

void tst_KGalleryView::layoutAtWidths()
{
    QFETCH(int, width);
    QFETCH(int, hSpace);
    QFETCH(QList<QPoint>, positions);
    QFETCH(int, contentHeight);
    KGalleryAbstractModel model;
    fillBoxes(&model, 5, QSize(40, 30));
    for (int i = 0; i < model.count(); ++i)
        model.element(i)->setHSpace(hSpace);
    QScopedPointer<KGalleryView> view(makeView(&model, width, 50));
    QCOMPARE(view->count(), 5);
    for (int i = 0; i < positions.size(); ++i) {
        QCOMPARE(geometryOf(view.data(), i).topLeft(), positions.at(i));
        QCOMPARE(geometryOf(view.data(), i).size(), QSize(40, 30));
    }
    QCOMPARE(view->contentHeight(), contentHeight);
    QCOMPARE(view->maxViewPort(), qMax(0, contentHeight - 50));
    QCOMPARE(view->step(), 30);
}

void tst_KGalleryView::expandingTakesItsOwnRow()
{
    KGalleryAbstractModel model;
    model.addElement(new BoxItem(QSize(40, 30), &model));
    model.addElement(new BoxItem(QSize(40, 20), &model, true));
    model.addElement(new BoxItem(QSize(40, 30), &model));
    auto* newLine = new BoxItem(QSize(40, 30), &model);
    newLine->setToNewLine(true);
    model.addElement(newLine);
    model.element(1)->setVSpace(4);
    QScopedPointer<KGalleryView> view(makeView(&model, 300, 50));
    QCOMPARE(geometryOf(view.data(), 0), QRect(0, 0, 40, 30));
    // Mid-line, the expanding cell starts below the open line and spans the width.
    QCOMPARE(geometryOf(view.data(), 1), QRect(0, 30, 300, 20));
    QCOMPARE(geometryOf(view.data(), 2), QRect(0, 54, 40, 30));
    QCOMPARE(geometryOf(view.data(), 3), QRect(0, 84, 40, 30));
    // No cell shares the row of an expanding one.
    QCOMPARE(view->item(0)->row(), 0);
    QCOMPARE(view->item(1)->row(), 1);
    QCOMPARE(view->item(2)->row(), 2);
    QCOMPARE(view->item(3)->row(), 3);
    QCOMPARE(view->contentHeight(), 114);
}

void tst_KGalleryView::fixedSizeNeverWraps()
{
    KGalleryAbstractModel model;
    model.setFixedSize(true);
    fillBoxes(&model, 4, QSize(40, 30));
    model.element(3)->setToNewLine(true);
    QScopedPointer<KGalleryView> view(makeView(&model, 50, 30));
    QCOMPARE(geometryOf(view.data(), 2).topLeft(), QPoint(80, 0));
    QCOMPARE(geometryOf(view.data(), 3).topLeft(), QPoint(0, 30));
}

void tst_KGalleryView::unresizedUsesDefaultWidth()
{
    KGalleryAbstractModel model;
    fillBoxes(&model, 12, QSize(40, 30));
    KGalleryView view(&model, KGalleryViewNormal, nullptr, false);
    // Not resized yet: 400 wide, ten cells a row, and no offset.
    const QSize hint = view.sizeHint();
    QCOMPARE(hint, QSize(400, 60));
    QCOMPARE(view.maxViewPort(), 0);
    view.setMaxViewNum(1);
    QCOMPARE(view.sizeHint().height(), 30);
}

void tst_KGalleryView::scrolling()
{
    KGalleryAbstractModel model;
    fillBoxes(&model, 10, QSize(100, 25));
    QScopedPointer<KGalleryView> view(makeView(&model, 100, 60));
    QCOMPARE(view->contentHeight(), 250);
    QCOMPARE(view->maxViewPort(), 190);
    QSignalSpy moved(view.data(), &KGalleryView::viewPortChanged);
    view->setViewPort(500);
    QCOMPARE(view->viewPort(), 190);
    view->setViewPort(-3);
    QCOMPARE(view->viewPort(), 0);
    QCOMPARE(moved.count(), 2);
    view->setViewPort(0);
    QCOMPARE(moved.count(), 2);

    view->setViewPortTo(4);
    QCOMPARE(view->viewPort(), 100);
    view->setViewPortTo(-1); // room to scroll: nothing
    QCOMPARE(view->viewPort(), 100);
    // A cell below the band is scrolled into sight when it becomes current.
    view->setViewPort(0);
    model.setCurrentIndex(7);
    QCOMPARE(view->viewPort(), 175);
    // A visible one leaves the offset alone.
    model.setCurrentIndex(8);
    QCOMPARE(view->viewPort(), 175);
    view->setSyncLastClickedViewport(false);
    model.setCurrentIndex(0);
    QCOMPARE(view->viewPort(), 175);

    // Growing the band clamps the offset.
    view->show();
    QVERIFY(QTest::qWaitForWindowExposed(view.data()));
    view->resize(100, 200);
    QCOMPARE(view->maxViewPort(), 50);
    QCOMPARE(view->viewPort(), 50);
}

void tst_KGalleryView::wheel()
{
    KGalleryAbstractModel model;
    fillBoxes(&model, 10, QSize(100, 25));
    QScopedPointer<KGalleryView> view(makeView(&model, 100, 60));
    const QPointF pos(10, 10);
    QWheelEvent up(pos, view->mapToGlobal(pos), QPoint(), QPoint(0, 120), Qt::NoButton, Qt::NoModifier,
                   Qt::NoScrollPhase, false);
    QApplication::sendEvent(view.data(), &up);
    QVERIFY(!up.isAccepted());
    QCOMPARE(view->viewPort(), 0);
    QWheelEvent down(pos, view->mapToGlobal(pos), QPoint(), QPoint(0, -120), Qt::NoButton, Qt::NoModifier,
                     Qt::NoScrollPhase, false);
    QApplication::sendEvent(view.data(), &down);
    QVERIFY(down.isAccepted());
    QCOMPARE(view->viewPort(), 25);
    view->setViewPort(view->maxViewPort());
    QWheelEvent further(pos, view->mapToGlobal(pos), QPoint(), QPoint(0, -120), Qt::NoButton, Qt::NoModifier,
                        Qt::NoScrollPhase, false);
    QApplication::sendEvent(view.data(), &further);
    QVERIFY(!further.isAccepted());
}

void tst_KGalleryView::hoverAndClickByMouse()
{
    KGalleryAbstractModel model;
    fillBoxes(&model, 6, QSize(40, 30));
    QScopedPointer<KGalleryView> view(makeView(&model, 120, 30));
    view->show();
    QVERIFY(QTest::qWaitForWindowExposed(view.data()));
    QSignalSpy clicked(&model, &KGalleryAbstractModel::indexClicked);
    QTest::mouseMove(view.data(), QPoint(50, 10));
    QCOMPARE(model.getHoveredIndex(), 1);
    QCOMPARE(view->hitTest(QPoint(119, 29)), 2);
    QCOMPARE(view->hitTest(QPoint(121, 5)), -1);
    // With the band scrolled one row, the same point is the cell below.
    view->setViewPort(30);
    QCOMPARE(view->hitTest(QPoint(50, 10)), 4);
    QTest::mouseClick(view.data(), Qt::LeftButton, Qt::NoModifier, QPoint(50, 10));
    QCOMPARE(clicked.count(), 1);
    QCOMPARE(clicked.at(0).at(0).toInt(), 4);
    QCOMPARE(model.currentIndex(), 4);
    // A release that closed a popup doesn't count.
    view->setPressIgnored(true);
    QTest::mouseRelease(view.data(), Qt::LeftButton, Qt::NoModifier, QPoint(10, 10));
    QCOMPARE(clicked.count(), 1);
    // Leaving drops the hover.
    QEvent leave(QEvent::Leave);
    QApplication::sendEvent(view.data(), &leave);
    QCOMPARE(model.getHoveredIndex(), -1);
}

void tst_KGalleryView::clickClosesPopup()
{
    KGalleryAbstractModel model;
    fillBoxes(&model, 4, QSize(40, 30));
    KPopupWidget popup;
    auto* view = new KGalleryView(&model, KGalleryViewNormal, &popup, false);
    view->setMinimumSize(160, 30);
    popup.setContentWidget(view);
    popup.show(QPoint(100, 100), false, 0);
    QVERIFY(QTest::qWaitForWindowExposed(&popup));
    QVERIFY(popup.isVisible());
    // A disabled cell: nothing happens and the popup stays.
    model.element(0)->setEnabled(false);
    QTest::mouseClick(view, Qt::LeftButton, Qt::NoModifier, geometryOf(view, 0).center());
    QVERIFY(popup.isVisible());
    QSignalSpy clicked(&model, &KGalleryAbstractModel::indexClicked);
    QTest::mouseClick(view, Qt::LeftButton, Qt::NoModifier, geometryOf(view, 2).center());
    QCOMPARE(clicked.count(), 1);
    QCOMPARE(clicked.at(0).at(0).toInt(), 2);
    QVERIFY(!popup.isVisible());
}

void tst_KGalleryView::rightClickWithoutMenu()
{
    KGalleryAbstractModel model;
    fillBoxes(&model, 2, QSize(40, 30));
    QScopedPointer<KGalleryView> view(makeView(&model, 100, 30));
    QSignalSpy clicked(&model, &KGalleryAbstractModel::indexClicked);
    QTest::mouseClick(view.data(), Qt::RightButton, Qt::NoModifier, QPoint(10, 10));
    QCOMPARE(clicked.count(), 0);
    QCOMPARE(model.currentIndex(), -1);
    QVERIFY(!view->item(0)->canPopup());
}

void tst_KGalleryView::keyboardWalks()
{
    // Three rows of three, the middle one of the last row disabled.
    KGalleryAbstractModel model;
    fillBoxes(&model, 9, QSize(40, 30));
    model.element(7)->setEnabled(false);
    QScopedPointer<KGalleryView> view(makeView(&model, 120, 90));
    QCOMPARE(view->getFirstItem(), 0);
    QCOMPARE(view->getLastItem(), 8);
    // With neither hover nor current, Down starts at the first cell.
    QCOMPARE(view->getNextItem(), 0);
    model.hoverIndex(4);
    QCOMPARE(view->getRightItem(), 5);
    QCOMPARE(view->getLeftItem(), 3);
    QCOMPARE(view->getPrevItem(), 1);
    // Below 4 is the disabled 7: the walk goes on to the next row's overlapping cell, none.
    QCOMPARE(view->getNextItem(), -1);
    model.hoverIndex(8);
    QCOMPARE(view->getRightItem(), 0); // wraps
    model.hoverIndex(0);
    QCOMPARE(view->getLeftItem(), 8);
    QCOMPARE(view->getNextItem(), 3);

    QSignalSpy top(view.data(), &KGalleryView::reachToViewTop);
    QSignalSpy bottom(view.data(), &KGalleryView::reachToViewBottom);
    QTest::keyClick(view.data(), Qt::Key_Up);
    QCOMPARE(top.count(), 1);
    QCOMPARE(top.at(0).at(0).value<Qt::Key>(), Qt::Key_Up);
    QCOMPARE(model.getHoveredIndex(), 0);
    QTest::keyClick(view.data(), Qt::Key_Down);
    QCOMPARE(model.getHoveredIndex(), 3);
    QTest::keyClick(view.data(), Qt::Key_End);
    QCOMPARE(model.getHoveredIndex(), 8);
    QTest::keyClick(view.data(), Qt::Key_Down);
    QCOMPARE(bottom.count(), 1);
    QTest::keyClick(view.data(), Qt::Key_Home);
    QCOMPARE(model.getHoveredIndex(), 0);
}

void tst_KGalleryView::verticalLoop()
{
    KGalleryAbstractModel model;
    fillBoxes(&model, 9, QSize(40, 30));
    QScopedPointer<KGalleryView> view(makeView(&model, 120, 40, nullptr, true));
    QSignalSpy top(view.data(), &KGalleryView::reachToViewTop);
    model.hoverIndex(1);
    QTest::keyClick(view.data(), Qt::Key_Up);
    QCOMPARE(top.count(), 0);
    // The same column of the last row, scrolled into sight.
    QCOMPARE(model.getHoveredIndex(), 7);
    QCOMPARE(view->viewPort(), 90 - 40);
    QTest::keyClick(view.data(), Qt::Key_Down);
    QCOMPARE(model.getHoveredIndex(), 1);
    QCOMPARE(view->viewPort(), 0);
    // Page down from the first row of a 40-high band goes to the second row.
    QCOMPARE(view->getPageDownItem(), 3);
}

void tst_KGalleryView::returnClicksHovered()
{
    KGalleryAbstractModel model;
    fillBoxes(&model, 3, QSize(40, 30));
    QScopedPointer<KGalleryView> view(makeView(&model, 120, 30));
    QSignalSpy clicked(&model, &KGalleryAbstractModel::indexClicked);
    QTest::keyClick(view.data(), Qt::Key_Return);
    QCOMPARE(clicked.count(), 0); // neither hover nor current
    model.setCurrentIndex(2);
    QTest::keyClick(view.data(), Qt::Key_Return);
    QCOMPARE(clicked.count(), 1);
    QCOMPARE(clicked.at(0).at(0).toInt(), 2);
    model.hoverIndex(1);
    QTest::keyClick(view.data(), Qt::Key_Enter);
    QCOMPARE(clicked.count(), 2);
    QCOMPARE(clicked.at(1).at(0).toInt(), 1);
}

void tst_KGalleryView::paintsOnlyVisibleCells()
{
    KGalleryAbstractModel model;
    for (int i = 0; i < 200; ++i)
        model.addElement(new BoxItem(QSize(100, 20), &model, true));
    QScopedPointer<KGalleryView> view(makeView(&model, 100, 100));
    const auto paintCount = [&model](int i) { return static_cast<BoxItem*>(model.element(i))->paints; };
    view->grab();
    for (int i = 0; i < 5; ++i)
        QCOMPARE(paintCount(i), 1);
    QCOMPARE(paintCount(5), 0);
    QCOMPARE(paintCount(199), 0);
    view->setViewPort(view->maxViewPort());
    view->grab();
    QCOMPARE(paintCount(199), 1);
    QCOMPARE(paintCount(195), 1);
    QCOMPARE(paintCount(194), 0);
    QCOMPARE(paintCount(100), 0);
}

void tst_KGalleryView::followsModelChanges()
{
    KGalleryAbstractModel model;
    fillBoxes(&model, 4, QSize(40, 30));
    QScopedPointer<KGalleryView> view(makeView(&model, 80, 30));
    view->show();
    QVERIFY(QTest::qWaitForWindowExposed(view.data()));
    model.hoverIndex(3);
    model.insertElement(0, new BoxItem(QSize(40, 30), &model));
    QCOMPARE(view->count(), 5);
    QCOMPARE(geometryOf(view.data(), 4).topLeft(), QPoint(0, 60));
    QCOMPARE(model.getHoveredIndex(), 4);
    model.removeElement(4);
    QCOMPARE(view->count(), 4);
    QCOMPARE(model.getHoveredIndex(), -1);
    // A size change lays the cells out again.
    model.element(0)->setHSpace(50);
    QCOMPARE(geometryOf(view.data(), 1).topLeft(), QPoint(0, 30));
    // A deleted element leaves the view as well.
    delete model.element(1);
    QCOMPARE(view->count(), 3);
    view->grab();
    model.clear();
    QCOMPARE(view->count(), 0);
    QCOMPARE(view->maxViewPort(), 0);
    QTest::keyClick(view.data(), Qt::Key_Down);
    QTest::mouseClick(view.data(), Qt::LeftButton, Qt::NoModifier, QPoint(5, 5));
}

void tst_KGalleryView::modelDeletedBeforeView()
{
    auto* model = new KGalleryAbstractModel;
    fillBoxes(model, 20, QSize(40, 30));
    QScopedPointer<KGalleryView> view(makeView(model, 80, 60));
    view->show();
    QVERIFY(QTest::qWaitForWindowExposed(view.data()));
    view->setViewPort(60);
    delete model;
    QCOMPARE(view->count(), 0);
    QCOMPARE(view->model(), nullptr);
    QCOMPARE(view->viewPort(), 0);
    view->grab();
    QTest::keyClick(view.data(), Qt::Key_Down);
    QTest::keyClick(view.data(), Qt::Key_Return);
    QTest::mouseClick(view.data(), Qt::LeftButton, Qt::NoModifier, QPoint(5, 5));
    view->hide();
}

void tst_KGalleryView::emptyModel()
{
    KGalleryAbstractModel model;
    QScopedPointer<KGalleryView> view(makeView(&model, 80, 60));
    QCOMPARE(view->sizeHint(), QSize(0, 0));
    QCOMPARE(view->getFirstItem(), -1);
    QCOMPARE(view->getNextItem(), -1);
    QCOMPARE(view->getPrevItem(), -1);
    QCOMPARE(view->getPageDownItem(), -1);
    view->hoverItem(3);
    QCOMPARE(model.getHoveredIndex(), -1);
    QTest::keyClick(view.data(), Qt::Key_PageDown);
    view->grab();
}

void tst_KGalleryView::scrollGalleryView()
{
    KGalleryAbstractModel model;
    fillBoxes(&model, 3, QSize(40, 30));
    KScrollGalleryView scroll(&model);
    scroll.resize(200, 40);
    scroll.show();
    QVERIFY(QTest::qWaitForWindowExposed(&scroll));
    // One row: nothing to scroll, the bar stays hidden.
    QCOMPARE(scroll.view()->maxViewPort(), 0);
    QVERIFY(!scroll.scrollBar()->isVisible());
    QCOMPARE(scroll.view()->viewPort(), 0);

    fillBoxes(&model, 20, QSize(40, 30));
    QVERIFY(scroll.scrollBar()->isVisible());
    QCOMPARE(scroll.scrollBar()->maximum(), scroll.view()->maxViewPort());
    QCOMPARE(scroll.scrollBar()->singleStep(), 30);
    scroll.scrollBar()->setValue(45);
    QCOMPARE(scroll.view()->viewPort(), 45);
    scroll.view()->setViewPort(90);
    QCOMPARE(scroll.scrollBar()->value(), 90);
    QCOMPARE(scroll.showItems(), scroll.view()->height() / 30);
    // Back to one row: the bar goes and the offset returns to the top.
    while (model.count() > 2)
        model.removeElement(model.count() - 1);
    QVERIFY(!scroll.scrollBar()->isVisible());
    QCOMPARE(scroll.view()->viewPort(), 0);
}

void tst_KGalleryView::fixedScrollGalleryView()
{
    KGalleryAbstractModel model;
    fillBoxes(&model, 5, QSize(100, 20));
    KFixedScrollGalleryView view(&model);
    QVERIFY(!view.setMaxFixedItem(9));
    QCOMPARE(view.maxFixedItem(), 8);
    QVERIFY(view.setMaxFixedItem(3));

    const auto recent = [&view](const QString& text) {
        auto* item = new BoxItem(QSize(100, 20), view.fixedModel(), true, text);
        item->setFixed(true);
        return item;
    };
    auto* notFixed = new BoxItem(QSize(100, 20), nullptr, true, QStringLiteral("x"));
    QVERIFY(!view.insertFixedViewItem(0, notFixed));
    delete notFixed;
    QVERIFY(!view.insertFixedViewItem(0, nullptr));

    auto* bottom = recent(QStringLiteral("More"));
    QVERIFY(view.insertFixedViewItem(0, bottom));
    view.setFixedBottom(bottom);
    QVERIFY(view.insertFixedViewItem(0, recent(QStringLiteral("a"))));
    auto* duplicate = recent(QStringLiteral("a"));
    QVERIFY(!view.insertFixedViewItem(0, duplicate));
    delete duplicate;
    QVERIFY(view.insertFixedViewItem(0, recent(QStringLiteral("b"))));
    QCOMPARE(view.fixedModel()->count(), 3);
    // The fourth pushes out the oldest, never the bottom element.
    QVERIFY(view.insertFixedViewItem(0, recent(QStringLiteral("c"))));
    QCOMPARE(view.fixedModel()->count(), 3);
    QCOMPARE(view.fixedModel()->element(0)->text(), QStringLiteral("c"));
    QCOMPARE(view.fixedModel()->element(1)->text(), QStringLiteral("b"));
    QCOMPARE(view.fixedModel()->element(2)->text(), QStringLiteral("More"));

    QSignalSpy fixedClick(&view, &KFixedScrollGalleryView::fixedIdxClick);
    QVERIFY(view.checkFixedItem(QStringLiteral("b")));
    QCOMPARE(fixedClick.count(), 1);
    QCOMPARE(fixedClick.at(0).at(0).toString(), QStringLiteral("b"));
    QVERIFY(!view.checkFixedItem(QStringLiteral("b"))); // already checked
    QVERIFY(!view.checkFixedItem(QStringLiteral("zzz")));

    // Up past the top of the long list goes on in the short one, Down comes back.
    view.resize(200, 200);
    view.show();
    QVERIFY(QTest::qWaitForWindowExposed(&view));
    KGalleryView* inner = view.scrollView()->view();
    model.hoverIndex(0);
    QTest::keyClick(inner, Qt::Key_Up);
    QCOMPARE(view.currentFocusView(), view.fixedView());
    QCOMPARE(view.fixedModel()->getHoveredIndex(), 2);
    QCOMPARE(model.getHoveredIndex(), -1);
    view.fixedModel()->hoverIndex(2);
    QTest::keyClick(view.fixedView(), Qt::Key_Down);
    QCOMPARE(view.currentFocusView(), view.scrollView());
    QCOMPARE(model.getHoveredIndex(), 0);
    // Sideways keys are shielded.
    QSignalSpy shielded(&view, &KFixedScrollGalleryView::shieldKeyPress);
    QTest::keyClick(inner, Qt::Key_End);
    QCOMPARE(shielded.count(), 1);
    QCOMPARE(model.getHoveredIndex(), 0);
}

void tst_KGalleryView::keyTips()
{
    QObject host;
    KTriggerCommand withKey(&host, nullptr);
    withKey.setProperty("hotKey", QStringLiteral("Q"));
    KTriggerCommand numbered(&host, nullptr);
    numbered.setProperty("hotKey", QString());
    KTriggerCommand withoutKey(&host, nullptr);
    KGalleryAbstractModel model;
    model.addElement(new BoxItem(QSize(40, 30), &model)); // no command: no label
    model.addElement(new CommandItem(&withKey, &model));
    model.addElement(new CommandItem(&withoutKey, &model)); // no "hotKey": no label
    model.addElement(new CommandItem(&numbered, &model));
    QScopedPointer<KGalleryView> view(makeView(&model, 200, 40));
    view->show();
    QVERIFY(QTest::qWaitForWindowExposed(view.data()));

    KHotKeyCollectEvent collect;
    QApplication::sendEvent(view.data(), &collect);
    QCOMPARE(collect.messages.size(), 2);
    QCOMPARE(collect.messages.at(0).key, QStringLiteral("Q"));
    QCOMPARE(collect.messages.at(1).key, QStringLiteral("1")); // an empty key is numbered
    QCOMPARE(collect.messages.at(0).target.data(), view.data());
    QVERIFY(!collect.useAutoIndex); // left as it was found

    // Firing a label clicks its cell.
    QSignalSpy clicked(&model, &KGalleryAbstractModel::indexClicked);
    KHotKeyTriggerEvent trigger;
    trigger.message = &collect.messages[1];
    QApplication::sendEvent(view.data(), &trigger);
    QCOMPARE(trigger.result, 2);
    QCOMPARE(clicked.count(), 1);
    QCOMPARE(clicked.at(0).at(0).toInt(), 3);
    // A shared key only moves the hover.
    KHotKeyTriggerEvent select;
    select.message = &collect.messages[0];
    select.execute = false;
    QApplication::sendEvent(view.data(), &select);
    QCOMPARE(select.result, 3);
    QCOMPARE(model.getHoveredIndex(), 1);
    QCOMPARE(clicked.count(), 1);
}

NORVIK_TEST_MAIN(tst_KGalleryView)
#include "tst_kgalleryview.moc"
