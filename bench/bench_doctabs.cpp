// Cost of a document area with many open documents, against one frame (16.7 ms).
//
// A KMdiArea of 1200 x 800 holds 199 documents (a text edit each, maximised, as a program
// with tabs shows them); then
//   open     adds the 200th document, lays out and paints the area, and takes it out again
//            (only the adding, layout and paint are timed);
//   switch   makes another tab current (the area follows), lays out and paints.
// The tab strip has long since stopped shrinking and scrolls. The floor is a plain QMdiArea
// with the same 199 maximised documents, switched by setActiveSubWindow(): what Qt's own
// area costs, without tabs.
//
//   bench_doctabs             QBENCHMARK figures of both, then a summary: median, 99th
//                             percentile and worst per operation, and the frame they must fit
//
// Runs on the offscreen platform unless QT_QPA_PLATFORM says otherwise; the look is the 2013
// style with the demo's theme colours.
#include <QElapsedTimer>
#include <QMdiArea>
#include <QMdiSubWindow>
#include <QStyleFactory>
#include <QTextEdit>
#include <QtTest/QtTest>
#include <algorithm>

#include <kapplication.h>
#include <kapptheme.h>
#include <kdomdocument.h>
#include <kmdiarea.h>
#include <korbstyle_2013.h>

namespace {
constexpr int kOpen = 199;
constexpr double kFrameMs = 1000.0 / 60.0;
}

class bench_DocTabs : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void initTestCase();
    void cleanupTestCase();
    void open();
    void switchTabs();
    void summary();

private:
    qint64 openOne();
    qint64 switchOnce();
    void settle();

    qint64 floorSwitchOnce();

    KMdiArea* m_area = nullptr;
    QMdiArea* m_floor = nullptr;
    int m_floorNext = 0;
    int m_next = 0;
    int m_serial = 0;
};

void bench_DocTabs::initTestCase()
{
    KDomDocument theme;
    QVERIFY(theme.setContent(QStringLiteral(NORVIK_SOURCE_DIR "/examples/writer/ui/theme/writer.theme.xml")));
    QVERIFY(KApplication::instance()->theme()->setupXml(theme));
    QApplication::setStyle(new KORBStyle_2013(QStyleFactory::create("Fusion")));

    m_area = new KMdiArea;
    m_area->resize(1200, 800);
    m_area->show();
    QVERIFY(QTest::qWaitForWindowExposed(m_area));
    for (int i = 0; i < kOpen; ++i) {
        auto* edit = new QTextEdit;
        edit->setWindowTitle(QStringLiteral("Document %1").arg(i + 1));
        QMdiSubWindow* w = m_area->addSubWindow(edit);
        if (i == 0)
            w->showMaximized();
    }
    settle();
    QCOMPARE(m_area->tabBarEx()->count(), kOpen);
    KDocTabbarLayout* layout = m_area->tabBarEx()->tabBar()->tabLayout();
    QVERIFY(!layout->leftArrow()->isHidden());
    m_floor = new QMdiArea;
    m_floor->resize(1200, 826);
    m_floor->show();
    QVERIFY(QTest::qWaitForWindowExposed(m_floor));
    for (int i = 0; i < kOpen; ++i) {
        auto* edit = new QTextEdit;
        edit->setWindowTitle(QStringLiteral("Document %1").arg(i + 1));
        m_floor->addSubWindow(edit)->showMaximized();
    }
    QCoreApplication::sendPostedEvents();
    qInfo("%d documents open; the strip shows %d tabs from index %d", kOpen, layout->visibleCount(),
          layout->firstVisibleIndex());
}

void bench_DocTabs::cleanupTestCase()
{
    delete m_area;
    delete m_floor;
}

qint64 bench_DocTabs::floorSwitchOnce()
{
    const QList<QMdiSubWindow*> list = m_floor->subWindowList();
    m_floorNext = (m_floorNext + 37) % list.size();
    QElapsedTimer timer;
    timer.start();
    m_floor->setActiveSubWindow(list.at(m_floorNext));
    QCoreApplication::sendPostedEvents();
    m_floor->repaint();
    return timer.nsecsElapsed();
}

void bench_DocTabs::settle()
{
    QCoreApplication::sendPostedEvents();
    QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
    m_area->repaint();
}

qint64 bench_DocTabs::openOne()
{
    auto* edit = new QTextEdit;
    edit->setWindowTitle(QStringLiteral("New %1").arg(++m_serial));
    QElapsedTimer timer;
    timer.start();
    QMdiSubWindow* w = m_area->addSubWindow(edit);
    QCoreApplication::sendPostedEvents();
    m_area->repaint();
    const qint64 ns = timer.nsecsElapsed();
    m_area->removeSubWindow(w);
    delete w;
    settle();
    return ns;
}

qint64 bench_DocTabs::switchOnce()
{
    KDocTabbar* bar = m_area->tabBarEx()->tabBar();
    // Strides of 37 reach far and near tabs alike.
    m_next = (m_next + 37) % bar->count();
    QElapsedTimer timer;
    timer.start();
    bar->setCurrentIndex(m_next);
    QCoreApplication::sendPostedEvents();
    m_area->repaint();
    return timer.nsecsElapsed();
}

void bench_DocTabs::open()
{
    QBENCHMARK {
        openOne();
    }
    QCOMPARE(m_area->tabBarEx()->count(), kOpen);
}

void bench_DocTabs::switchTabs()
{
    QBENCHMARK {
        switchOnce();
    }
    QCOMPARE(m_area->currentSubWindow(), m_area->tabBarEx()->currentSubWindow());
}

void bench_DocTabs::summary()
{
    QList<qint64> openNs, switchNs, floorNs;
    for (int i = 0; i < 60; ++i) {
        openNs << openOne();
        switchNs << switchOnce();
        floorNs << floorSwitchOnce();
    }
    auto at = [](QList<qint64> v, int percent) {
        std::sort(v.begin(), v.end());
        return v.at(qMin(v.size() - 1, v.size() * percent / 100)) / 1e6;
    };
    qInfo("open the 200th: median %.3f ms, 99%% %.3f ms, worst %.3f ms", at(openNs, 50), at(openNs, 99),
          at(openNs, 100));
    qInfo("switch tabs:    median %.3f ms, 99%% %.3f ms, worst %.3f ms", at(switchNs, 50), at(switchNs, 99),
          at(switchNs, 100));
    qInfo("floor switch:   median %.3f ms, 99%% %.3f ms, worst %.3f ms", at(floorNs, 50), at(floorNs, 99),
          at(floorNs, 100));
    qInfo("one frame: %.1f ms", kFrameMs);
    QVERIFY(at(openNs, 50) > 0);
}

int main(int argc, char** argv)
{
    KApplication app(argc, argv);
    bench_DocTabs bench;
    return QTest::qExec(&bench, argc, argv);
}

#include "bench_doctabs.moc"
