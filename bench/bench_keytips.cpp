// Key tips over a ribbon of 300 controls (Home: 30 groups of 10 buttons): the time from the
// release of Alt to the first level on the screen (collected, shown and painted), and from
// the tab's letter to the page's level with its 300 numbered labels. Each figure is printed
// against one frame at 60 Hz (16.7 ms). Runs on the offscreen platform unless
// QT_QPA_PLATFORM says otherwise.
#include <QElapsedTimer>
#include <QtTest/QtTest>
#include <algorithm>
#include <cstdio>
#include <vector>

#include <kapplication.h>
#include <khotkeyassistant.h>
#include <kmainwindow.h>
#include <krbtabwidget.h>

#include "../tests/keyboard/keytiptesthelpers.h"

using namespace KeyTipTest;

namespace {

constexpr double kFrameMs = 1000.0 / 60.0;

double median(std::vector<double> v)
{
    std::sort(v.begin(), v.end());
    return v.empty() ? 0.0 : v[v.size() / 2];
}

} // namespace

class bench_KeyTips : public QObject
{
    Q_OBJECT
private Q_SLOTS:
    void initTestCase();
    void cleanupTestCase();
    void altReleaseToFirstLevel();
    void tabLetterToPageLevel();

private:
    Ribbon* m_ribbon = nullptr;
    KMainWindow* m_window = nullptr;
    std::vector<double> m_first;
    std::vector<double> m_second;
};

void bench_KeyTips::initTestCase()
{
    m_ribbon = new Ribbon(30, 10);
    m_window = new KMainWindow;
    m_window->setHeaderBar(new KRbTabWidget(m_ribbon->tabs, m_window));
    m_window->resize(1600, 400);
    QVERIFY(showCurrent(*m_window));
    QCOMPARE(m_ribbon->buttons.size(), 300);
}

void bench_KeyTips::cleanupTestCase()
{
    std::printf("key tips, 300 controls: Alt release to first level %.3f ms, tab letter to the page's "
                "300 labels %.3f ms; one frame is %.1f ms (%.2f and %.2f frames)\n",
                median(m_first), median(m_second), kFrameMs, median(m_first) / kFrameMs,
                median(m_second) / kFrameMs);
    delete m_window;
    delete m_ribbon;
}

void bench_KeyTips::altReleaseToFirstLevel()
{
    QBENCHMARK {
        QElapsedTimer clock;
        int labels = 0;
        QTimer::singleShot(0, this, [&] {
            KHotKeyAssistant* level = topLevel();
            level->repaint(); // the labels on the screen
            m_first.push_back(clock.nsecsElapsed() / 1e6);
            labels = level->messages().size();
            QTest::keyClick(level, Qt::Key_Escape);
        });
        QTest::keyPress(m_window, Qt::Key_Alt);
        clock.start();
        QTest::keyRelease(m_window, Qt::Key_Alt);
        QCOMPARE(labels, 3);
    }
}

void bench_KeyTips::tabLetterToPageLevel()
{
    QBENCHMARK {
        QElapsedTimer clock;
        int labels = 0;
        QTimer::singleShot(0, this, [&] {
            QTimer::singleShot(0, this, [&] {
                KHotKeyAssistant* level = topLevel();
                level->repaint();
                m_second.push_back(clock.nsecsElapsed() / 1e6);
                labels = level->messages().size();
                QTest::keyClick(level, Qt::Key_Alt); // leaves every level
            });
            clock.start();
            QTest::keyClick(topLevel(), Qt::Key_H);
        });
        tapAlt(m_window);
        QCOMPARE(labels, 300);
    }
}

int main(int argc, char** argv)
{
    KApplication app(argc, argv);
    bench_KeyTips bench;
    return QTest::qExec(&bench, argc, argv);
}
#include "bench_keytips.moc"
