// The style frame: custom numbers reach their operations with their options, wrong options
// draw nothing, fallbacks paint, metrics, hints and polish.
#include <ktestsupport.h>

#include <QPainter>
#include <QStyleFactory>
#include <QTemporaryDir>
#include <QToolButton>

#include <QTreeView>
#include <memory>
#include <vector>

#include <kapptheme.h>
#include <korbstyle.h>
#include <korbstyle_2012.h>
#include <korbstyle_2013.h>

namespace {

QStringList g_calls;

// Every named drawing operation: a control element (else a complex control), its custom
// number, the operation and the option it takes.
#define STYLE_OPERATIONS(X)                                                            \
    X(false, 1, drawComplexControl_KRbTabBar, KStyleOptionRbTabBar)                    \
    X(false, 2, drawComplexControl_KRbTabButton, KStyleOptionKRbTabButton)             \
    X(false, 3, drawComplexControl_KRbCategory, KStyleOptionRbCategory)                \
    X(false, 4, drawComplexControl_KRbHScrollWidget, KStyleOptionRbHScrollWidget)      \
    X(false, 5, drawComplexControl_KRbLogicGroup, KStyleOptionRbLogicGroup)            \
    X(false, 6, drawComplexControl_KLogicGroupButton, KStyleOptionLogicGroupButton)    \
    X(false, 7, drawComplexControl_ToolButton, KStyleOptionToolButton)                 \
    X(false, 8, drawComplexControl_KSepraratorWidget, KStyleOptionSepraratorWidget)    \
    X(false, 9, drawComplexControl_KStatusBar, KStyleOptionStatusBar)                  \
    X(false, 10, drawComplexControl_KDocTabBar, KStyleOptionDocTabBar)                 \
    X(false, 11, drawComplexControl_KDocTab, KStyleOptionDocTab)                       \
    X(false, 12, drawComplexControl_KRbLayoutWidget, KStyleOptionRbLayoutWidget)       \
    X(false, 13, drawComplexControl_KRbSubTabBar, KStyleOptionRbSubTabBar)             \
    X(false, 14, drawComplexControl_KMainWindow, KStyleOptionMainWindow)               \
    X(false, 15, drawComplexControl_KRbTabFileButton, KStyleOptionRbTabFileButton)     \
    X(false, 16, drawComplexControl_KSlider, QStyleOptionSlider)                       \
    X(true, 1, drawControl_KSheetTabBarTab, KSheetTabStyleOption)                      \
    X(true, 2, drawControl_KMinimizeButton, KStyleOptionWindowTitleButton)             \
    X(true, 3, drawControl_KRestoreMaximizeButton, KStyleOptionRestoreMaximizeButton)  \
    X(true, 4, drawControl_KCloseButton, KStyleOptionWindowTitleButton)                \
    X(true, 5, drawControl_KTabBarNewButton, KStyleOptionTabBarNewButton)              \
    X(true, 6, drawControl_KZoomButton, KStyleOptionZoomButton)

/// Records which named operation a custom number reached, and with which option.
class RecordingStyle : public KORBStyle
{
public:
    RecordingStyle(QStyle* base) : KORBStyle(base) {}
    mutable const QStyleOption* lastOption = nullptr;

#define RECORD(control, number, name, Option)                                                  \
    void name(const Option* o, QPainter*, const QWidget*) const override                      \
    {                                                                                          \
        g_calls << QStringLiteral(#name);                                                      \
        lastOption = o;                                                                        \
    }
    STYLE_OPERATIONS(RECORD)
#undef RECORD
};

QImage blank()
{
    QImage image(60, 30, QImage::Format_ARGB32);
    image.fill(Qt::white);
    return image;
}

// The options have no virtual destructor: each is kept (and freed) as its own type.
std::vector<std::shared_ptr<QStyleOption>> g_options;

template <typename Option>
QStyleOption* make()
{
    auto owned = std::make_shared<Option>();
    g_options.push_back(owned);
    Option* o = owned.get();
    o->rect = QRect(0, 0, 60, 30);
    o->state = QStyle::State_Enabled;
    return o;
}

} // namespace


class tst_KORBStyle : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init();
    void cleanupTestCase() { g_options.clear(); }
    void dispatch_data();
    void dispatch();
    void wrongOptionDrawsNothing();
    void fallbacksPaint();
    void metricsAndHints_data();
    void metricsAndHints();
    void polish();
};

void tst_KORBStyle::init()
{
    g_calls.clear();
    KApplication::instance()->theme()->resetXml();
}

void tst_KORBStyle::dispatch_data()
{
    QTest::addColumn<bool>("control"); // a control element, else a complex control
    QTest::addColumn<int>("number");
    QTest::addColumn<QString>("operation");
    QTest::addColumn<void*>("option");
    const auto row = [](bool control, int n, const char* op, QStyleOption* o, const char* name = nullptr) {
        QTest::newRow(name ? name : op) << control << n << QString::fromLatin1(op) << static_cast<void*>(o);
    };
#define ROW(control, number, name, Option) row(control, number, #name, make<Option>());
    STYLE_OPERATIONS(ROW)
#undef ROW
    // The restore option is a caption-button option too, but not the other way round.
    row(true, 4, "drawControl_KCloseButton", make<KStyleOptionRestoreMaximizeButton>(), "close, restore option");
    row(true, 3, "", make<KStyleOptionWindowTitleButton>(), "restore needs its own option");
}

void tst_KORBStyle::dispatch()
{
    QFETCH(bool, control);
    QFETCH(int, number);
    QFETCH(QString, operation);
    QFETCH(void*, option);
    auto* opt = static_cast<QStyleOption*>(option);
    RecordingStyle style(QStyleFactory::create("Fusion"));
    KTestSupport::paint(QSize(60, 30), [&](QPainter& p) {
        if (control)
            style.drawControl(QStyle::ControlElement(uint(QStyle::CE_CustomBase) + number), opt, &p);
        else
            style.drawComplexControl(QStyle::ComplexControl(uint(QStyle::CC_CustomBase) + number),
                                     static_cast<QStyleOptionComplex*>(opt), &p);
    });
    QCOMPARE(g_calls, operation.isEmpty() ? QStringList() : QStringList{operation});
    if (!operation.isEmpty())
        QCOMPARE(style.lastOption, opt);
}

void tst_KORBStyle::wrongOptionDrawsNothing()
{
    // A stock option, no option, or a framework option of another element: nothing drawn,
    // nothing reaches the named operations.
    RecordingStyle recorder(QStyleFactory::create("Fusion"));
    KORBStyle style(QStyleFactory::create("Fusion"));
    QStyleOptionComplex stock;
    stock.rect = QRect(0, 0, 60, 30);
    KStyleOptionRbTabBar tabBar;
    tabBar.rect = stock.rect;
    tabBar.title = QStringLiteral("Title");
    for (int n = 1; n <= 16; ++n) {
        const auto cc = QStyle::ComplexControl(uint(QStyle::CC_CustomBase) + n);
        QList<const QStyleOptionComplex*> wrong = {&stock, nullptr};
        if (n != 1 && n != 16)
            wrong.append(&tabBar);
        for (const QStyleOptionComplex* opt : wrong) {
            const QImage image = KTestSupport::paint(QSize(60, 30), [&](QPainter& p) {
                style.drawComplexControl(cc, opt, &p);
                recorder.drawComplexControl(cc, opt, &p);
                if (n <= 6)
                    recorder.drawControl(QStyle::ControlElement(uint(QStyle::CE_CustomBase) + n), &stock, &p);
            });
            QVERIFY2(image == blank(), qPrintable(QString::number(n)));
        }
    }
    QCOMPARE(g_calls, QStringList());
}

void tst_KORBStyle::fallbacksPaint()
{
    QTemporaryDir dir;
    QVERIFY(KTestSupport::loadTheme(KTestSupport::writeFile(dir.filePath("t.xml"),
        "<r><theme><style class='common'><color name='window' value='#804020'/></style>"
        "<style class='KRbTabBar'><color name='text' value='#0000ff'/></style></theme></r>")));
    KORBStyle style(QStyleFactory::create("Fusion"));
    const auto draw = [&](int n, const QStyleOptionComplex* opt) {
        return KTestSupport::paint(QSize(60, 30), [&](QPainter& p) {
            style.drawComplexControl(QStyle::ComplexControl(uint(QStyle::CC_CustomBase) + n), opt, &p);
        });
    };

    // The main window: its rectangle less the margins, filled in "common"/"window".
    KStyleOptionMainWindow window;
    window.rect = QRect(0, 0, 60, 30);
    window.leftMargin = 5;
    window.topMargin = 4;
    window.rightMargin = 3;
    window.bottomMargin = 2;
    QImage image = draw(14, &window);
    QCOMPARE(image.pixelColor(10, 10), QColor(0x80, 0x40, 0x20));
    QCOMPARE(image.pixelColor(2, 10), QColor(Qt::white));

    // The tab bar's title in its theme colour.
    KStyleOptionRbTabBar bar;
    bar.rect = QRect(0, 0, 60, 30);
    bar.title = QStringLiteral("HHHH");
    QVERIFY(KTestSupport::anyPixel(draw(1, &bar), [](const QColor& c) { return c.blue() > 200 && c.red() < 100; }));

    // A stock-drawn one leaves a mark too.
    KStyleOptionToolButton tool;
    tool.rect = bar.rect;
    tool.text = QStringLiteral("Save");
    tool.buttonStyle = 2;
    tool.state = QStyle::State_Enabled | QStyle::State_Sunken;
    QVERIFY(draw(7, &tool) != blank());
}

void tst_KORBStyle::metricsAndHints_data()
{
    QTest::addColumn<bool>("hint"); // a style hint, else a pixel metric
    QTest::addColumn<int>("number");
    QTest::addColumn<QList<int>>("values"); // the frame's, rainbow's and 2013's
    const int proxy = INT_MIN; // "the wrapped style's value"
    const auto pm = [](const char* name, int metric, QList<int> v) { QTest::newRow(name) << false << metric << v; };
    const auto sh = [](const char* name, int hint, QList<int> v) { QTest::newRow(name) << true << hint << v; };
    const auto custom = [](int n) { return int(KORBStyle::customMetric(n)); };
    const auto customHint = [](int n) { return int(KORBStyle::customHint(n)); };
    // One row per kind: a stock metric the frame answers, custom numbers the frame leaves to
    // the wrapped style while a named style answers them, and a hint that tells the styles apart.
    pm("PM_ScrollBarExtent", QStyle::PM_ScrollBarExtent, {16, 16, 16});
    pm("PM+10", custom(10), {proxy, 15, 13});
    sh("SH+4", customHint(4), {proxy, 2012, 2013});
}

void tst_KORBStyle::metricsAndHints()
{
    QFETCH(bool, hint);
    QFETCH(int, number);
    QFETCH(QList<int>, values);
    const auto ask = [&](const QStyle& s) {
        return hint ? s.styleHint(QStyle::StyleHint(number)) : s.pixelMetric(QStyle::PixelMetric(number));
    };
    const int wrapped = ask(*std::unique_ptr<QStyle>(QStyleFactory::create("Fusion")));
    const QList<int> got = {ask(KORBStyle(QStyleFactory::create("Fusion"))),
                            ask(KORBStyle_2012(QStyleFactory::create("Fusion"))),
                            ask(KORBStyle_2013(QStyleFactory::create("Fusion")))};
    for (int& v : values)
        v = v == INT_MIN ? wrapped : v;
    QCOMPARE(got, values);
}

void tst_KORBStyle::polish()
{
    QTemporaryDir dir;
    QVERIFY(KTestSupport::loadTheme(KTestSupport::writeFile(dir.filePath("t.xml"),
        "<r><theme><style class='KDocMap'><color name='background' value='#abcdef'/></style></theme></r>")));
    KORBStyle style(QStyleFactory::create("Fusion"));

    QTreeView tree;
    QToolButton button;
    QWidget plain;
    for (QWidget* w : {static_cast<QWidget*>(&tree), static_cast<QWidget*>(&button), &plain})
        style.polish(w);
    QCOMPARE(tree.palette().color(QPalette::Base), QColor("#abcdef"));
    QVERIFY(button.testAttribute(Qt::WA_Hover) && !plain.testAttribute(Qt::WA_Hover));
    style.unpolish(&button);
    QVERIFY(!button.testAttribute(Qt::WA_Hover));
}

NORVIK_TEST_MAIN(tst_KORBStyle)
#include "tst_korbstyle.moc"
