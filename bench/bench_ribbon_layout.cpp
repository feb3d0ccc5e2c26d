// Cost of fitting a ribbon category to its window, against a floor: the same 100 tool
// buttons in plain QHBoxLayout / QVBoxLayout columns.
//
// The category has 10 logic groups of 10 controls each: one large button, three small ones
// with text and six icon-only ones; in two of the groups the small ones are a tool-bar block
// of nine buttons with a separator instead. It is resized from 1400 pixels down to 500 in 40
// steps and back up in 40, and each step is laid out and painted before the next (resize,
// pending layout requests, a synchronous repaint). The floor is resized the same way.
//
//   bench_ribbon_layout                     per-step times of both (median and worst) and the ratio
//   bench_ribbon_layout -callgrind ribbon   instructions of one cycle of 80 steps (under valgrind);
//   bench_ribbon_layout -callgrind floor    divide by 80 for a step
//
// Runs on the offscreen platform unless QT_QPA_PLATFORM says otherwise; the look is the 2013
// style with the demo's theme colours.
#include <QBoxLayout>
#include <QElapsedTimer>
#include <QFile>
#include <QStyleFactory>
#include <QtTest/QtTest>
#include <algorithm>
#include <cstdio>

#include <kapplication.h>
#include <kapptheme.h>
#include <kdomdocument.h>
#include <klistcommand.h>
#include <korbstyle_2013.h>
#include <krbcategory.h>
#include <krbhscrollwidget.h>
#include <krblogicgroupcommand.h>
#include <ktoolbutton.h>
#include <ktriggercommand.h>

namespace {

constexpr int kGroups = 10;
constexpr int kStepsEachWay = 40;
constexpr int kWidest = 1400;
constexpr int kNarrowest = 500;
constexpr int kHeight = 100;

const char* const kIcons[] = {"edit-copy", "edit-cut", "edit-paste", "document-new", "document-open",
                              "document-save", "format-text-bold", "format-text-italic",
                              "format-justify-left", "format-justify-center"};

QIcon tangoIcon(int n)
{
    QIcon icon;
    const QString name = QString::fromLatin1(kIcons[n % 10]);
    for (const char* size : {"16x16", "32x32"}) {
        const QString path = QString("/usr/share/icons/Tango/%1/actions/%2.png").arg(size, name);
        if (QFile::exists(path))
            icon.addFile(path);
    }
    return icon;
}

// What a control of the category is; the floor makes the same buttons from it.
struct Control
{
    QString text;
    int spaceHint; // 3 large, 2 small with text, 0 icon only
    bool inBlock;
};

QList<Control> groupControls(int g)
{
    QList<Control> controls;
    controls.append({QString("Paste %1").arg(g), 3, false});
    const bool block = g == 3 || g == 7;
    for (int i = 0; i < 9; ++i) {
        if (block)
            controls.append({QString("Tool %1").arg(i), 0, true});
        else if (i < 3)
            controls.append({QString("Item %1").arg(i), 2, false});
        else
            controls.append({QString("Icon %1").arg(i), 0, false});
    }
    return controls;
}

KListCommand* buildCategoryCommand(QObject* owner)
{
    auto* category = new KListCommand(owner, owner);
    int n = 0;
    for (int g = 0; g < kGroups; ++g) {
        auto* group = new KRbLogicGroupCommand(owner, owner);
        group->setText(QString("Group %1").arg(g));
        KListCommand* block = nullptr;
        for (const Control& c : groupControls(g)) {
            auto* cmd = new KTriggerCommand(owner, owner);
            cmd->setText(c.text);
            cmd->setIcon(tangoIcon(n++));
            cmd->setProperty("spaceHint", c.spaceHint);
            if (!c.inBlock) {
                group->addSubCommand(cmd);
                continue;
            }
            if (!block) {
                block = new KListCommand(owner, owner);
                block->setProperty("embedHint", true);
                group->addSubCommand(block);
            } else if (block->count() == 5) {
                block->addSeparator();
            }
            block->addSubCommand(cmd);
        }
        if (g)
            category->addSeparator();
        category->addSubCommand(group);
    }
    return category;
}

// The floor: the same buttons, large ones in a column of their own, the others two to a
// column (the line count of the 2013 look), all columns in one row.
QWidget* buildFloor(QWidget* parent)
{
    auto* floor = new QWidget(parent);
    auto* row = new QHBoxLayout(floor);
    row->setContentsMargins(0, 0, 0, 0);
    row->setSpacing(0);
    int n = 0;
    for (int g = 0; g < kGroups; ++g) {
        QVBoxLayout* column = nullptr;
        for (const Control& c : groupControls(g)) {
            auto* button = new KToolButton(floor);
            button->setText(c.text);
            button->setIcon(tangoIcon(n++));
            if (c.spaceHint == 3) {
                button->setIconSize(QSize(24, 24));
                button->setButtonStyle(107);
                row->addWidget(button);
                column = nullptr;
                continue;
            }
            button->setButtonStyle(c.spaceHint == 2 ? 3 : 1);
            if (!column || column->count() == 2) {
                column = new QVBoxLayout;
                column->setSpacing(0);
                row->addLayout(column);
            }
            column->addWidget(button);
        }
    }
    return floor;
}

int stepWidth(int step)
{
    // 0 .. 39 going down, 40 .. 79 coming back.
    const int down = step < kStepsEachWay ? step + 1 : 2 * kStepsEachWay - step - 1;
    return kWidest - (kWidest - kNarrowest) * down / kStepsEachWay;
}

// One step: the new width, the layouts it sets off, and the painting, all done now.
void runStep(QWidget* subject, int step)
{
    subject->resize(stepWidth(step), kHeight);
    QCoreApplication::sendPostedEvents(nullptr, QEvent::LayoutRequest);
    subject->repaint();
}

void runCycle(QWidget* subject, QList<qint64>* stepNs = nullptr)
{
    QElapsedTimer t;
    for (int step = 0; step < 2 * kStepsEachWay; ++step) {
        t.start();
        runStep(subject, step);
        if (stepNs)
            stepNs->append(t.nsecsElapsed());
    }
}

} // namespace

class bench_RibbonLayout : public QObject
{
    Q_OBJECT
private Q_SLOTS:
    void initTestCase();
    void cleanupTestCase();
    void ribbon();
    void floor();
    void summary();

private:
    QObject m_owner;
    QWidget* m_window = nullptr;
    KRbCategory* m_category = nullptr;
    QWidget* m_floor = nullptr;
};

void bench_RibbonLayout::initTestCase()
{
    // The demo's theme colours and the look it names.
    KDomDocument theme;
    QVERIFY(theme.setContent(QStringLiteral(NORVIK_SOURCE_DIR "/examples/writer/ui/theme/writer.theme.xml")));
    QVERIFY(KApplication::instance()->theme()->setupXml(theme));
    KApplication::instance()->theme()->setBaseColor(QColor("#2b579a"), false);
    QApplication::setStyle(new KORBStyle_2013(QStyleFactory::create("Fusion")));

    m_window = new QWidget;
    m_window->resize(kWidest + 20, 2 * kHeight + 20);
    m_category = new KRbCategory(buildCategoryCommand(&m_owner), m_window);
    m_category->setGeometry(0, 0, kWidest, kHeight);
    m_floor = buildFloor(m_window);
    m_floor->setGeometry(0, kHeight + 10, kWidest, kHeight);
    m_window->show();
    QVERIFY(QTest::qWaitForWindowExposed(m_window));
    QCoreApplication::processEvents();

    QCOMPARE(m_category->findChildren<KToolButton*>().size(), 100);
    QCOMPARE(m_floor->findChildren<KToolButton*>().size(), 100);
    const QSize hint = m_category->sizeHint();
    qInfo("category: hint %d x %d, content minimum %d; floor: hint %d", hint.width(), hint.height(),
          m_category->scrollWidget()->minimumContentWidth(), m_floor->sizeHint().width());
    // A warm-up cycle of each: first paints load icons and glyphs.
    runCycle(m_category);
    runCycle(m_floor);
}

void bench_RibbonLayout::cleanupTestCase()
{
    delete m_window;
}

void bench_RibbonLayout::ribbon()
{
    QBENCHMARK {
        runCycle(m_category);
    }
}

void bench_RibbonLayout::floor()
{
    QBENCHMARK {
        runCycle(m_floor);
    }
}

void bench_RibbonLayout::summary()
{
    // Both alternate cycle by cycle in this one process, so that they meet the same machine.
    QList<qint64> ribbonNs, floorNs;
    for (int cycle = 0; cycle < 15; ++cycle) {
        runCycle(m_category, &ribbonNs);
        runCycle(m_floor, &floorNs);
    }
    auto median = [](QList<qint64> v) {
        std::sort(v.begin(), v.end());
        return v.at(v.size() / 2) / 1e6;
    };
    auto worst = [](const QList<qint64>& v) { return *std::max_element(v.begin(), v.end()) / 1e6; };
    // The 99th percentile tells a slow step of the code from one the machine's scheduler made.
    auto p99 = [](QList<qint64> v) {
        std::sort(v.begin(), v.end());
        return v.at(v.size() * 99 / 100) / 1e6;
    };
    const double rm = median(ribbonNs), fm = median(floorNs);
    qInfo("steps: %lld each, %d px down to %d and back in %d steps each way", qint64(ribbonNs.size()), kWidest,
          kNarrowest, kStepsEachWay);
    qInfo("ribbon: median %.3f ms, 99%% %.3f ms, worst %.3f ms per step", rm, p99(ribbonNs), worst(ribbonNs));
    qInfo("floor:  median %.3f ms, 99%% %.3f ms, worst %.3f ms per step", fm, p99(floorNs), worst(floorNs));
    qInfo("ratio of medians %.2f", rm / fm);
    QVERIFY(worst(ribbonNs) > 0);
}

int main(int argc, char** argv)
{
    KApplication app(argc, argv);
    bench_RibbonLayout bench;
    return QTest::qExec(&bench, argc, argv);
}

#include "bench_ribbon_layout.moc"
