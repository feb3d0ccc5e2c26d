// A gallery of 2,000 font rows in its popup:
//  (a) open: the full gallery made in a popup and shown, to its first paint (the cells are
//      built then, at first show);
//  (b) scroll: the open gallery stepped row by row from the top to the end, each step
//      painted at once; the time of one step and the number of rows painted per step.
// Rows count their paints: only the rows in sight may be painted.
// Runs on the offscreen platform unless QT_QPA_PLATFORM says otherwise.
#include <QElapsedTimer>
#include <QFontDatabase>
#include <QtTest/QtTest>
#include <algorithm>
#include <cstdio>
#include <functional>
#include <vector>

#include <kapplication.h>
#include <kgallery.h>
#include <kgallerycommand.h>
#include <kgallerymodeltextitem.h>
#include <kpopupwidget.h>
#include <kscrollgalleryview.h>

#include "benchsupport.h"

namespace {

constexpr int kCells = 2000;

class CountingFontItem : public KGalleryModelFontItem
{
public:
    CountingFontItem(const QString& name, KGalleryAbstractModel* model, long* paints)
        : KGalleryModelFontItem(name, model)
        , m_paints(paints)
    {
    }

    void drawItem(QPainter& painter, const QRect& rect, KGalleryViewType viewType) const override
    {
        ++*m_paints;
        KGalleryModelFontItem::drawItem(painter, rect, viewType);
    }

private:
    long* m_paints;
};

// Builds its 2,000 rows on the first showing, as a host's font list would.
class FontModel : public KGalleryAbstractModel
{
public:
    explicit FontModel(long* paints)
        : m_paints(paints)
    {
    }

    QList<KGalleryModelAbstractItem*> fecthItems() override
    {
        if (count() == 0) {
            QStringList families = QFontDatabase::families();
            if (families.isEmpty())
                families << QApplication::font().family();
            for (int i = 0; i < kCells; ++i)
                addElement(new CountingFontItem(families.at(i % families.size()), this, m_paints));
        }
        return KGalleryAbstractModel::fecthItems();
    }

private:
    long* m_paints;
};

using BenchSupport::median;
using BenchSupport::PaintWatch;
using BenchSupport::processUntil;

} // namespace

class BenchGallery : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void openPopup();
    void scrollToEnd();
    void cleanupTestCase();

private:
    // QtTest runs a benchmark function more than once; the summary is printed at the end.
    std::vector<double> m_openTimes;
    QString m_scrollSummary;
};

void BenchGallery::openPopup()
{
    QObject host;
    QWidget anchor;
    anchor.resize(200, 40);
    anchor.show();
    std::vector<double>& times = m_openTimes;
    long paints = 0;
    QBENCHMARK {
        FontModel model(&paints);
        KGalleryCommand command(&host, nullptr);
        command.setDataSource(&model);
        command.setGalleryWidth(460);
        QElapsedTimer t;
        t.start();
        auto* popup = new KPopupWidget(&anchor, Qt::Popup);
        auto* gallery = qobject_cast<KGallery*>(command.requestWidget(popup, KCommand::ExtendedPurpose));
        popup->setContentWidget(gallery);
        popup->show(&anchor, anchor.mapToGlobal(QPoint(0, anchor.height())));
        PaintWatch watch;
        static_cast<KScrollGalleryView*>(gallery->view())->view()->installEventFilter(&watch);
        processUntil([&] { return watch.painted; });
        times.push_back(t.nsecsElapsed() / 1e6);
        QCOMPARE(model.count(), kCells);
        delete popup;
    }
}

void BenchGallery::scrollToEnd()
{
    QObject host;
    QWidget anchor;
    anchor.resize(200, 40);
    anchor.show();
    long paints = 0;
    FontModel model(&paints);
    KGalleryCommand command(&host, nullptr);
    command.setDataSource(&model);
    command.setGalleryWidth(460);
    auto* popup = new KPopupWidget(&anchor, Qt::Popup);
    auto* gallery = qobject_cast<KGallery*>(command.requestWidget(popup, KCommand::ExtendedPurpose));
    popup->setContentWidget(gallery);
    popup->show(&anchor, anchor.mapToGlobal(QPoint(0, anchor.height())));
    KGalleryView* view = static_cast<KScrollGalleryView*>(gallery->view())->view();
    PaintWatch watch;
    view->installEventFilter(&watch);
    processUntil([&] { return watch.painted; });
    QVERIFY(view->maxViewPort() > 0);
    const int visibleRows = view->height() / view->step() + 1;

    std::vector<double> steps;
    std::vector<long> paintsPerStep;
    QBENCHMARK_ONCE {
        view->setViewPort(0);
        view->repaint();
        while (view->viewPort() < view->maxViewPort()) {
            const long before = paints;
            QElapsedTimer t;
            t.start();
            view->setViewPort(view->viewPort() + view->step());
            view->repaint();
            steps.push_back(t.nsecsElapsed() / 1e6);
            paintsPerStep.push_back(paints - before);
        }
    }
    QCOMPARE(view->viewPort(), view->maxViewPort());
    const long mostPaints = *std::max_element(paintsPerStep.begin(), paintsPerStep.end());
    QVERIFY(mostPaints <= visibleRows + 1);
    m_scrollSummary = QStringLiteral("scroll to the end: %1 steps, per step median %2 ms, slowest %3 ms; rows painted "
                                     "per step at most %4 (%5 in sight)")
                          .arg(steps.size())
                          .arg(median(steps), 0, 'f', 3)
                          .arg(*std::max_element(steps.begin(), steps.end()), 0, 'f', 3)
                          .arg(mostPaints)
                          .arg(visibleRows);
    delete popup;
}

void BenchGallery::cleanupTestCase()
{
    std::printf("gallery of %d font rows, popup open to first paint, median of %zu: %.3f ms\n", kCells,
                m_openTimes.size(), median(m_openTimes));
    std::printf("%s\n", qPrintable(m_scrollSummary));
    std::fflush(stdout);
}

int main(int argc, char** argv)
{
    KApplication app(argc, argv);
    BenchGallery bench;
    return QTest::qExec(&bench, argc, argv);
}

#include "bench_gallery.moc"
