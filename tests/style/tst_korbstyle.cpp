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
#define STYLE_OPERATIONS(X)                                                                          \
    X(false, KCC_RbTabBar, drawComplexControl_KRbTabBar, KStyleOptionRbTabBar)                       \
    X(false, KCC_RbTabButton, drawComplexControl_KRbTabButton, KStyleOptionKRbTabButton)             \
    X(false, KCC_RbCategory, drawComplexControl_KRbCategory, KStyleOptionRbCategory)                 \
    X(false, KCC_RbHScrollWidget, drawComplexControl_KRbHScrollWidget, KStyleOptionRbHScrollWidget)  \
    X(false, KCC_RbLogicGroup, drawComplexControl_KRbLogicGroup, KStyleOptionRbLogicGroup)           \
    X(false, KCC_LogicGroupButton, drawComplexControl_KLogicGroupButton, KStyleOptionLogicGroupButton) \
    X(false, KCC_ToolButton, drawComplexControl_ToolButton, KStyleOptionToolButton)                  \
    X(false, KCC_SepraratorWidget, drawComplexControl_KSepraratorWidget, KStyleOptionSepraratorWidget) \
    X(false, KCC_StatusBar, drawComplexControl_KStatusBar, KStyleOptionStatusBar)                    \
    X(false, KCC_DocTabBar, drawComplexControl_KDocTabBar, KStyleOptionDocTabBar)                    \
    X(false, KCC_DocTab, drawComplexControl_KDocTab, KStyleOptionDocTab)                             \
    X(false, KCC_RbLayoutWidget, drawComplexControl_KRbLayoutWidget, KStyleOptionRbLayoutWidget)     \
    X(false, KCC_RbSubTabBar, drawComplexControl_KRbSubTabBar, KStyleOptionRbSubTabBar)              \
    X(false, KCC_MainWindow, drawComplexControl_KMainWindow, KStyleOptionMainWindow)                 \
    X(false, KCC_RbTabFileButton, drawComplexControl_KRbTabFileButton, KStyleOptionRbTabFileButton)  \
    X(false, KCC_Slider, drawComplexControl_KSlider, QStyleOptionSlider)                             \
    X(true, KCE_SheetTabBarTab, drawControl_KSheetTabBarTab, KSheetTabStyleOption)                   \
    X(true, KCE_MinimizeButton, drawControl_KMinimizeButton, KStyleOptionWindowTitleButton)          \
    X(true, KCE_RestoreMaximizeButton, drawControl_KRestoreMaximizeButton, KStyleOptionRestoreMaximizeButton) \
    X(true, KCE_CloseButton, drawControl_KCloseButton, KStyleOptionWindowTitleButton)                \
    X(true, KCE_TabBarNewButton, drawControl_KTabBarNewButton, KStyleOptionTabBarNewButton)          \
    X(true, KCE_ZoomButton, drawControl_KZoomButton, KStyleOptionZoomButton)

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
    void wrappedStyleSeesOnlyStockNumbers();
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
    QTest::addColumn<uint>("number");
    QTest::addColumn<QString>("operation");
    QTest::addColumn<void*>("option");
    const auto row = [](bool control, uint n, const char* op, QStyleOption* o, const char* name = nullptr) {
        QTest::newRow(name ? name : op) << control << n << QString::fromLatin1(op) << static_cast<void*>(o);
    };
#define ROW(control, number, name, Option) row(control, uint(KORBStyle::number), #name, make<Option>());
    STYLE_OPERATIONS(ROW)
#undef ROW
    // The restore option is a caption-button option too, but not the other way round.
    row(true, uint(KORBStyle::KCE_CloseButton), "drawControl_KCloseButton", make<KStyleOptionRestoreMaximizeButton>(),
        "close, restore option");
    row(true, uint(KORBStyle::KCE_RestoreMaximizeButton), "", make<KStyleOptionWindowTitleButton>(),
        "restore needs its own option");
}

void tst_KORBStyle::dispatch()
{
    QFETCH(bool, control);
    QFETCH(uint, number);
    QFETCH(QString, operation);
    QFETCH(void*, option);
    auto* opt = static_cast<QStyleOption*>(option);
    RecordingStyle style(QStyleFactory::create("Fusion"));
    KTestSupport::paint(QSize(60, 30), [&](QPainter& p) {
        if (control)
            style.drawControl(QStyle::ControlElement(number), opt, &p);
        else
            style.drawComplexControl(QStyle::ComplexControl(number), static_cast<QStyleOptionComplex*>(opt), &p);
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
    for (uint n = uint(KORBStyle::KCC_RbTabBar); n <= uint(KORBStyle::KCC_Slider); ++n) {
        const auto cc = QStyle::ComplexControl(n);
        QList<const QStyleOptionComplex*> wrong = {&stock, nullptr};
        if (cc != KORBStyle::KCC_RbTabBar && cc != KORBStyle::KCC_Slider)
            wrong.append(&tabBar);
        for (const QStyleOptionComplex* opt : wrong) {
            const QImage image = KTestSupport::paint(QSize(60, 30), [&](QPainter& p) {
                style.drawComplexControl(cc, opt, &p);
                recorder.drawComplexControl(cc, opt, &p);
            });
            QVERIFY2(image == blank(), qPrintable(QString::number(n - uint(QStyle::CC_CustomBase))));
        }
    }
    for (uint n = uint(KORBStyle::KCE_SheetTabBarTab); n <= uint(KORBStyle::KCE_ZoomButton); ++n) {
        const QImage image = KTestSupport::paint(QSize(60, 30), [&](QPainter& p) {
            recorder.drawControl(QStyle::ControlElement(n), &stock, &p);
        });
        QVERIFY2(image == blank(), qPrintable(QString::number(n - uint(QStyle::CE_CustomBase))));
    }
    QCOMPARE(g_calls, QStringList());
}

void tst_KORBStyle::wrappedStyleSeesOnlyStockNumbers()
{
    // The wrapped style cannot handle the framework's numbers: the slider reaches it as the
    // stock slider, and the other controls' hit tests and parts stay in the frame, silently.
    KWarningCatcher warnings;
    KORBStyle style(QStyleFactory::create("Fusion"));
    std::unique_ptr<QStyle> fusion(QStyleFactory::create("Fusion"));
    QStyleOptionSlider slider;
    slider.rect = QRect(0, 0, 60, 30);
    slider.state = QStyle::State_Enabled | QStyle::State_Horizontal;
    slider.orientation = Qt::Horizontal;
    slider.maximum = 10;
    slider.sliderPosition = slider.sliderValue = 5;
    slider.subControls = QStyle::SC_SliderGroove | QStyle::SC_SliderHandle;
    const QImage stock = KTestSupport::paint(QSize(60, 30), [&](QPainter& p) {
        fusion->drawComplexControl(QStyle::CC_Slider, &slider, &p);
    });
    const QImage framework = KTestSupport::paint(QSize(60, 30), [&](QPainter& p) {
        style.drawComplexControl(KORBStyle::KCC_Slider, &slider, &p);
    });
    QCOMPARE(framework, stock);
    QVERIFY(stock != blank());
    const QRect handle = fusion->subControlRect(QStyle::CC_Slider, &slider, QStyle::SC_SliderHandle);
    QCOMPARE(style.subControlRect(KORBStyle::KCC_Slider, &slider, QStyle::SC_SliderHandle, nullptr), handle);
    QCOMPARE(style.hitTestComplexControl(KORBStyle::KCC_Slider, &slider, handle.center()), QStyle::SC_SliderHandle);

    QStyleOptionComplex plain;
    plain.rect = slider.rect;
    for (uint n = uint(KORBStyle::KCC_RbTabBar); n < uint(KORBStyle::KCC_Slider); ++n) {
        const auto cc = QStyle::ComplexControl(n);
        if (cc == KORBStyle::KCC_ToolButton) // the one control whose parts the frame knows
            continue;
        QCOMPARE(style.subControlRect(cc, &plain, QStyle::SC_ComboBoxArrow, nullptr), QRect());
        if (cc != KORBStyle::KCC_DocTab && cc != KORBStyle::KCC_RbTabFileButton)
            QCOMPARE(style.hitTestComplexControl(cc, &plain, QPoint(5, 5)), QStyle::SC_None);
    }
    QCOMPARE(warnings.messages(), QStringList());
}

void tst_KORBStyle::fallbacksPaint()
{
    QTemporaryDir dir;
    QVERIFY(KTestSupport::loadTheme(KTestSupport::writeFile(dir.filePath("t.xml"),
        "<r><theme><style class='common'><color name='window' value='#804020'/></style>"
        "<style class='KRbTabBar'><color name='text' value='#0000ff'/></style></theme></r>")));
    KORBStyle style(QStyleFactory::create("Fusion"));
    const auto draw = [&](QStyle::ComplexControl cc, const QStyleOptionComplex* opt) {
        return KTestSupport::paint(QSize(60, 30), [&](QPainter& p) { style.drawComplexControl(cc, opt, &p); });
    };

    // The main window: its rectangle less the margins, filled in "common"/"window".
    KStyleOptionMainWindow window;
    window.rect = QRect(0, 0, 60, 30);
    window.leftMargin = 5;
    window.topMargin = 4;
    window.rightMargin = 3;
    window.bottomMargin = 2;
    QImage image = draw(KORBStyle::KCC_MainWindow, &window);
    QCOMPARE(image.pixelColor(10, 10), QColor(0x80, 0x40, 0x20));
    QCOMPARE(image.pixelColor(2, 10), QColor(Qt::white));

    // The tab bar's title in its theme colour.
    KStyleOptionRbTabBar bar;
    bar.rect = QRect(0, 0, 60, 30);
    bar.title = QStringLiteral("HHHH");
    QVERIFY(KTestSupport::anyPixel(draw(KORBStyle::KCC_RbTabBar, &bar), [](const QColor& c) { return c.blue() > 200 && c.red() < 100; }));

    // A stock-drawn one leaves a mark too.
    KStyleOptionToolButton tool;
    tool.rect = bar.rect;
    tool.text = QStringLiteral("Save");
    tool.buttonStyle = KStyleOptionToolButton::StyleText;
    tool.state = QStyle::State_Enabled | QStyle::State_Sunken;
    QVERIFY(draw(KORBStyle::KCC_ToolButton, &tool) != blank());
}

void tst_KORBStyle::metricsAndHints_data()
{
    QTest::addColumn<bool>("hint"); // a style hint, else a pixel metric
    QTest::addColumn<int>("number");
    QTest::addColumn<QList<int>>("values"); // the frame's, rainbow's and 2013's
    const int proxy = INT_MIN; // "the wrapped style's value"
    const auto pm = [](const char* name, int metric, QList<int> v) { QTest::newRow(name) << false << metric << v; };
    const auto sh = [](const char* name, int hint, QList<int> v) { QTest::newRow(name) << true << hint << v; };
    // One row per kind: a stock metric the frame answers, custom numbers the frame leaves to
    // the wrapped style while a named style answers them, and a hint that tells the styles apart.
    pm("PM_ScrollBarExtent", QStyle::PM_ScrollBarExtent, {16, 16, 16});
    pm("KPM_Reserved10", KORBStyle::KPM_Reserved10, {proxy, 15, 13});
    sh("KSH_StyleGeneration", KORBStyle::KSH_StyleGeneration, {proxy, 2012, 2013});
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
    QVERIFY(button.testAttribute(Qt::WA_Hover));
    QVERIFY(!plain.testAttribute(Qt::WA_Hover));
    style.unpolish(&button);
    QVERIFY(!button.testAttribute(Qt::WA_Hover));
}

NORVIK_TEST_MAIN(tst_KORBStyle)
#include "tst_korbstyle.moc"
