#include <ktestsupport.h>

#include <QCloseEvent>
#include <QMdiSubWindow>

#include <kmainwindow.h>
#include <kmdiarea.h>
#include <ktriggercommand.h>
#include <klistcommand.h>

namespace {
// A document that may refuse to close, or close its own window from its close handler.
class Document : public QWidget
{
public:
    explicit Document(const QString& title) { setWindowTitle(title); }
    bool refuse = false;

protected:
    void closeEvent(QCloseEvent* e) override
    {
        if (refuse)
            e->ignore();
        else
            e->accept();
    }
};
}

// A host's document that counts what the area tells it.
class HostDocument : public KSubWindow
{
public:
    int entered = 0;
    int left = 0;
    int added = 0;
    int moved = 0;
    QString filePath() const override { return QString(); }
    QString documentType() const override { return QStringLiteral("test"); }
    QIcon iconForSuffix(const QString&) const override { return QIcon(); }
    void windowAdded() override { ++added; }
    void synPositionToCore() override { ++moved; }

protected:
    void enterMaximized() override { ++entered; }
    void leaveMaximized() override { ++left; }
};

class tst_KMdiArea : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init();
    void cleanup();
    void viewsAgreeAfterEveryOperation();
    void calcRowCol_data();
    void calcRowCol();
    void verticalTileOfFive();
    void tileFollowsResizeUntilMovedByHand();
    void cascadeAndCompare();
    void addedWindowStaysMaximised();
    void closeAllLeavesTheRefusingWindow();
    void closingTheLastTabShowsThePageOnce();
    void closedFromItsOwnHandlerOrDeletedFromOutside();
    void hiddenTabbar();
    void hostDocumentHearsItsWindow();
    void relativeSubWindowAndManualTabs();
    void mainWindowPassesTheStatusOn();
    void clicksOnTheStripAndTheEmptyArea();
    void hiddenSubWindowLeavesTheTabs();

private:
    // Whether the area's current window and the tab bar's current tab name the same window.
    static bool agree(KMdiArea* area)
    {
        return area->qMdiArea()->currentSubWindow() == area->tabBarEx()->currentSubWindow();
    }
    KMdiArea* m_area = nullptr;
};

void tst_KMdiArea::init()
{
    m_area = new KMdiArea;
    m_area->resize(600, 400);
    m_area->show();
    QVERIFY(QTest::qWaitForWindowExposed(m_area));
}

void tst_KMdiArea::cleanup()
{
    delete m_area;
    m_area = nullptr;
}

void tst_KMdiArea::viewsAgreeAfterEveryOperation()
{
    QList<QMdiSubWindow*> w;
    for (int i = 0; i < 4; ++i) {
        w << m_area->addSubWindow(new Document(QStringLiteral("D%1").arg(i)));
        QCOMPARE(m_area->currentSubWindow(), w.last());
        QVERIFY(agree(m_area));
    }
    // A click on a tab.
    KDocTab* tab = m_area->tabBarEx()->tabAt(1);
    QTest::mouseClick(tab, Qt::LeftButton, {}, QPoint(20, 10));
    QCOMPARE(m_area->currentSubWindow(), w.at(1));
    QVERIFY(agree(m_area));
    // The area's own activation.
    m_area->qMdiArea()->setActiveSubWindow(w.at(2));
    QCOMPARE(m_area->tabBarEx()->currentSubWindow(), w.at(2));
    // Next and previous, and a move of tabs.
    m_area->activateNextSubWindow();
    QCOMPARE(m_area->currentSubWindow(), w.at(3));
    QVERIFY(agree(m_area));
    m_area->tabBarEx()->tabBar()->moveTab(3, 0);
    m_area->activateNextSubWindow();
    QCOMPARE(m_area->currentSubWindow(), w.at(0));
    QVERIFY(agree(m_area));
    // Removing the current one.
    QSignalSpy removed(m_area, &KMdiArea::subWindowRemoved);
    m_area->removeSubWindow(w.at(0));
    QCOMPARE(removed.count(), 1);
    QCOMPARE(m_area->tabBarEx()->count(), 3);
    QVERIFY(m_area->currentSubWindow());
    QVERIFY(agree(m_area));
    delete w.at(0);
}

void tst_KMdiArea::calcRowCol_data()
{
    QTest::addColumn<int>("n");
    QTest::addColumn<int>("rows");
    QTest::addColumn<int>("columns");
    QTest::newRow("1") << 1 << 1 << 1;
    QTest::newRow("3") << 3 << 1 << 3;
    QTest::newRow("4") << 4 << 2 << 2;
    QTest::newRow("5") << 5 << 2 << 2;
    QTest::newRow("6") << 6 << 2 << 3;
    QTest::newRow("9") << 9 << 3 << 3;
    QTest::newRow("10") << 10 << 3 << 3;
}

void tst_KMdiArea::calcRowCol()
{
    QFETCH(int, n);
    int rows = -1;
    int columns = -1;
    KMdiArea::_calcRowCol(n, rows, columns);
    QTEST(rows, "rows");
    QTEST(columns, "columns");
}

void tst_KMdiArea::verticalTileOfFive()
{
    QList<QMdiSubWindow*> w;
    for (int i = 0; i < 5; ++i)
        w << m_area->addSubWindow(new Document(QStringLiteral("D%1").arg(i)));
    m_area->vertTileSubWindows(true);
    QCOMPARE(m_area->arrangement(), int(KMdiArea::VertTile));
    const QSize vp = m_area->qMdiArea()->viewport()->size();
    // Two columns; the first holds three windows, the second two; the current one last.
    QMap<int, int> perColumn;
    for (QMdiSubWindow* s : w) {
        QCOMPARE(s->width(), vp.width() / 2);
        perColumn[s->x()]++;
    }
    QCOMPARE(perColumn.value(0), 3);
    QCOMPARE(perColumn.value(vp.width() / 2), 2);
    QCOMPARE(w.at(4)->geometry(), QRect(vp.width() / 2, vp.height() / 2, vp.width() / 2, vp.height() / 2));
    QVERIFY(agree(m_area));
}

void tst_KMdiArea::tileFollowsResizeUntilMovedByHand()
{
    QMdiSubWindow* a = m_area->addSubWindow(new Document(QStringLiteral("A")));
    QMdiSubWindow* b = m_area->addSubWindow(new Document(QStringLiteral("B")));
    // Horizontal tiles lie one under the other, the full width of the area.
    m_area->horzTileSubWindows(true);
    QCOMPARE(a->height(), b->height());
    m_area->resize(800, 500);
    QTRY_COMPARE(a->width(), m_area->qMdiArea()->viewport()->width());
    QCOMPARE(a->height() + b->height(), m_area->qMdiArea()->viewport()->height());
    // A window added to a tile joins it.
    QMdiSubWindow* c = m_area->addSubWindow(new Document(QStringLiteral("C")));
    QCOMPARE(c->height(), m_area->qMdiArea()->viewport()->height() / 3);
    QCOMPARE(a->height(), c->height());
    // Moved by hand: the tile ends, and a resize leaves the windows alone.
    b->move(b->pos() + QPoint(5, 5));
    QCOMPARE(m_area->arrangement(), int(KMdiArea::RearrangeNone));
    const QRect before = b->geometry();
    m_area->resize(700, 450);
    QCoreApplication::processEvents();
    QCOMPARE(b->geometry(), before);
}

void tst_KMdiArea::cascadeAndCompare()
{
    QList<QMdiSubWindow*> w;
    for (int i = 0; i < 3; ++i)
        w << m_area->addSubWindow(new Document(QStringLiteral("D%1").arg(i)));
    m_area->cascadeSubWindows(true);
    QCOMPARE(m_area->arrangement(), int(KMdiArea::Cascade));
    const int step = w.at(1)->x() - w.at(0)->x();
    QVERIFY(step > 0);
    QCOMPARE(w.at(1)->y() - w.at(0)->y(), step);
    QCOMPARE(w.at(0)->size(), w.at(2)->size());

    m_area->rearrangeCompareViews(w.at(0), w.at(2));
    QCOMPARE(m_area->arrangement(), int(KMdiArea::CompareView));
    const QSize vp = m_area->qMdiArea()->viewport()->size();
    QCOMPARE(w.at(0)->geometry(), QRect(0, 0, vp.width() / 2, vp.height()));
    QCOMPARE(w.at(2)->x(), vp.width() / 2);
    QVERIFY(agree(m_area));
    // Cancelling goes back to the cascade.
    m_area->cancelCompareView();
    QCOMPARE(m_area->arrangement(), int(KMdiArea::Cascade));
    QVERIFY(!m_area->compareLeft());
    QCOMPARE(w.at(0)->size(), w.at(2)->size());
}

void tst_KMdiArea::addedWindowStaysMaximised()
{
    QMdiSubWindow* a = m_area->addSubWindow(new Document(QStringLiteral("A")));
    a->showMaximized();
    QMdiSubWindow* b = m_area->addSubWindow(new Document(QStringLiteral("B")));
    QVERIFY(b->isMaximized());
    QCOMPARE(m_area->currentSubWindow(), b);
    QVERIFY(agree(m_area));
}

void tst_KMdiArea::closeAllLeavesTheRefusingWindow()
{
    QList<QPointer<QMdiSubWindow>> w;
    auto* keeper = new Document(QStringLiteral("Keep"));
    keeper->refuse = true;
    w << m_area->addSubWindow(new Document(QStringLiteral("A")));
    w << m_area->addSubWindow(keeper);
    w << m_area->addSubWindow(new Document(QStringLiteral("B")));
    QSignalSpy allClosed(m_area, &KMdiArea::allSubWindowClosed);
    m_area->closeAllSubWindows();
    QCOMPARE(m_area->tabBarEx()->count(), 1);
    QCOMPARE(m_area->tabBarEx()->subWindowAt(0), w.at(1).data());
    QCOMPARE(allClosed.count(), 0);
    QTRY_VERIFY(w.at(0).isNull());
    QTRY_VERIFY(w.at(2).isNull());
    QCOMPARE(m_area->currentSubWindow(), w.at(1).data());
    QVERIFY(agree(m_area));
    keeper->refuse = false;
}

void tst_KMdiArea::closingTheLastTabShowsThePageOnce()
{
    KListCommand page(nullptr, nullptr);
    page.setText(QStringLiteral("No document"));
    m_area->addNoTabPageWidget(&page);
    QVERIFY(m_area->noTabPageWidget());
    QVERIFY(m_area->noTabPageWidget()->isVisible());
    QSignalSpy first(m_area, &KMdiArea::firstSubWindowAdded);
    QPointer<QMdiSubWindow> a = m_area->addSubWindow(new Document(QStringLiteral("A")));
    QCOMPARE(first.count(), 1);
    QVERIFY(!m_area->noTabPageWidget()->isVisible());
    QVERIFY(m_area->qMdiArea()->isVisible());

    QSignalSpy allClosed(m_area, &KMdiArea::allSubWindowClosed);
    KDocTab* tab = m_area->tabBarEx()->tabAt(0);
    QTest::mouseClick(tab, Qt::LeftButton, {}, KStyleOptionDocTab::closeRect(tab->rect()).center());
    QCOMPARE(m_area->tabBarEx()->count(), 0);
    QTRY_VERIFY(a.isNull());
    QCOMPARE(allClosed.count(), 1);
    QVERIFY(m_area->noTabPageWidget()->isVisible());
    QVERIFY(!m_area->qMdiArea()->isVisible());
    m_area->removeNoTabPageWidget();
}

void tst_KMdiArea::closedFromItsOwnHandlerOrDeletedFromOutside()
{
    QPointer<QMdiSubWindow> a = m_area->addSubWindow(new Document(QStringLiteral("A")));
    QPointer<QMdiSubWindow> b = m_area->addSubWindow(new Document(QStringLiteral("B")));
    QPointer<QMdiSubWindow> c = m_area->addSubWindow(new Document(QStringLiteral("C")));

    // The host closes the document from the tab's right-click handler.
    connect(m_area->tabBarEx(), &KDocTabbarEx::rightClicked, this, [this](int index) {
        if (QMdiSubWindow* w = m_area->tabBarEx()->subWindowAt(index))
            w->close();
    });
    QTest::mouseClick(m_area->tabBarEx()->tabAt(1), Qt::RightButton, {}, QPoint(20, 10));
    QTRY_VERIFY(b.isNull());
    QCOMPARE(m_area->tabBarEx()->count(), 2);
    QVERIFY(agree(m_area));

    // Deleted from outside, the current one and another.
    delete c.data();
    QCOMPARE(m_area->tabBarEx()->count(), 1);
    QCOMPARE(m_area->currentSubWindow(), a.data());
    QVERIFY(agree(m_area));
    QSignalSpy allClosed(m_area, &KMdiArea::allSubWindowClosed);
    delete a.data();
    QCOMPARE(m_area->tabBarEx()->count(), 0);
    QCOMPARE(allClosed.count(), 1);
    QVERIFY(!m_area->currentSubWindow());
    // The tabs went later; nothing of them is left.
    QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
    QCOMPARE(m_area->tabBarEx()->tabBar()->viewport()->findChildren<KDocTab*>().size(), 0);
}

void tst_KMdiArea::hiddenTabbar()
{
    KMdiArea area(nullptr, true);
    area.resize(300, 200);
    area.show();
    QVERIFY(QTest::qWaitForWindowExposed(&area));
    QVERIFY(!area.isDocTabbarVisible());
    QCOMPARE(area.qMdiArea()->geometry(), area.rect());
    area.setDocTabbarVisible(true);
    QVERIFY(area.isDocTabbarVisible());
}

void tst_KMdiArea::hostDocumentHearsItsWindow()
{
    auto* document = new HostDocument;
    QMdiSubWindow* w = m_area->addSubWindow(document);
    QCOMPARE(document->added, 1);
    QCOMPARE(document->left, 1); // its size state is set once, as leaving the maximised state
    w->showMaximized();
    QCOMPARE(document->entered, 1);
    w->showNormal();
    QCOMPARE(document->left, 2);
    const int moved = document->moved;
    w->move(w->pos() + QPoint(3, 3));
    QVERIFY(document->moved > moved);
}

void tst_KMdiArea::relativeSubWindowAndManualTabs()
{
    QMdiSubWindow* a = m_area->addSubWindow(new Document(QStringLiteral("A")));
    // A window without a tab: the host's relative sub-window.
    auto* panel = new QMdiSubWindow;
    panel->setWidget(new QWidget);
    m_area->qMdiArea()->addSubWindow(panel);
    m_area->setRelativeSubWindow(panel);
    QVERIFY(m_area->isRelativeSubWindow(panel->widget()));
    QVERIFY(m_area->hasCommonAncestorWithRelativeSubWindow(panel->widget()));
    QVERIFY(!m_area->isRelativeSubWindow(a));
    QCOMPARE(m_area->findSubWindow(panel), -1);

    // Taken out of the tabs and put back by hand.
    QSignalSpy allClosed(m_area, &KMdiArea::allSubWindowClosed);
    QSignalSpy first(m_area, &KMdiArea::firstSubWindowAdded);
    m_area->removeSubWindowFromTabbar(a);
    QCOMPARE(m_area->tabBarEx()->count(), 0);
    QCOMPARE(allClosed.count(), 1);
    QVERIFY(a->isHidden());
    m_area->insertSubWindowToTabbar(a, 0, true);
    m_area->insertSubWindowToTabbar(a, 0, true); // already there: nothing
    QCOMPARE(m_area->tabBarEx()->count(), 1);
    QCOMPARE(first.count(), 1);
}

void tst_KMdiArea::mainWindowPassesTheStatusOn()
{
    KMainWindow window;
    auto* area = new KMdiArea;
    QSignalSpy status(&window, &KMainWindow::mdiStatusChanged);
    window.setCentralWidget(area);
    QCOMPARE(status.count(), 1);
    QCOMPARE(status.at(0).at(0).value<KMdiArea*>(), area);
    area->addSubWindow(new Document(QStringLiteral("A")));
    QVERIFY(status.count() > 1);
}

void tst_KMdiArea::clicksOnTheStripAndTheEmptyArea()
{
    QPointer<QMdiSubWindow> a = m_area->addSubWindow(new Document(QStringLiteral("A")));
    m_area->addSubWindow(new Document(QStringLiteral("B")));
    QSignalSpy doubleClicked(m_area, &KMdiArea::doubleClicked);
    QSignalSpy rightClicked(m_area, &KMdiArea::tabBarRightClicked);
    KDocTabbarEx* strip = m_area->tabBarEx();
    // The empty strip: right of the tabs' row is the strip itself.
    const QPoint empty(strip->width() - 3, strip->height() / 2);
    QTest::mouseDClick(strip, Qt::LeftButton, {}, empty);
    QCOMPARE(doubleClicked.count(), 1);
    QTest::mouseClick(strip, Qt::RightButton, {}, empty);
    QCOMPARE(rightClicked.count(), 1);
    QCOMPARE(rightClicked.at(0).at(0).toInt(), -1);
    // A right click on a tab names it, and makes it current.
    QTest::mouseClick(strip->tabAt(0), Qt::RightButton, {}, QPoint(20, 10));
    QCOMPARE(rightClicked.count(), 2);
    QCOMPARE(rightClicked.at(1).at(0).toInt(), 0);
    QCOMPARE(m_area->currentSubWindow(), a.data());
    // The middle button closes a tab's document.
    QTest::mouseClick(strip->tabAt(0), Qt::MiddleButton, {}, QPoint(20, 10));
    QTRY_VERIFY(a.isNull());
    QCOMPARE(strip->count(), 1);
    QVERIFY(agree(m_area));
    // A double click on the empty area.
    m_area->qMdiArea()->viewport()->setFocus();
    QTest::mouseDClick(m_area->qMdiArea()->viewport(), Qt::LeftButton, {}, QPoint(590, 350));
    QVERIFY(doubleClicked.count() >= 2);
}

void tst_KMdiArea::hiddenSubWindowLeavesTheTabs()
{
    QMdiSubWindow* a = m_area->addSubWindow(new Document(QStringLiteral("A")));
    QMdiSubWindow* b = m_area->addSubWindow(new Document(QStringLiteral("B")));
    m_area->setSubWinVisible(b, false);
    QVERIFY(b->isHidden());
    QVERIFY(m_area->tabBarEx()->tabAt(1)->isHidden());
    QCOMPARE(m_area->tabBarEx()->currentSubWindow(), a);
    QVERIFY(m_area->hasVisibleSubWindow());
    m_area->setSubWinVisible(a, false);
    QVERIFY(!m_area->hasVisibleSubWindow());
    m_area->setSubWinVisible(b, true);
    QVERIFY(m_area->hasVisibleSubWindow());
}

NORVIK_TEST_MAIN(tst_KMdiArea)
#include "tst_kmdiarea.moc"
