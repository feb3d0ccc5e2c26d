// The style frame: custom numbers reach their operations with their options, wrong options
// draw nothing, fallbacks paint, metrics, hints and polish.
#include <ktestsupport.h>

#include <QCommonStyle>
#include <QListView>
#include <QPainter>
#include <QStyleFactory>
#include <QTemporaryDir>
#include <QToolButton>

#include <memory>
#include <vector>
#include <QTreeView>

#include <kapptheme.h>
#include <korbstyle.h>
#include <korbstyle_2012.h>
#include <korbstyle_2013.h>

namespace {

QStringList g_calls;

/// Records which named operation a custom number reached, and with which option.
class RecordingStyle : public KORBStyle
{
public:
    RecordingStyle(QStyle* base) : KORBStyle(base) {}
    mutable const QStyleOption* lastOption = nullptr;

#define RECORD(name, Option)                                                                   \
    void name(const Option* o, QPainter*, const QWidget*) const override                      \
    {                                                                                          \
        g_calls << QStringLiteral(#name);                                                      \
        lastOption = o;                                                                        \
    }
    RECORD(drawComplexControl_KRbTabBar, KStyleOptionRbTabBar)
    RECORD(drawComplexControl_KRbTabButton, KStyleOptionKRbTabButton)
    RECORD(drawComplexControl_KRbCategory, KStyleOptionRbCategory)
    RECORD(drawComplexControl_KRbHScrollWidget, KStyleOptionRbHScrollWidget)
    RECORD(drawComplexControl_KRbLogicGroup, KStyleOptionRbLogicGroup)
    RECORD(drawComplexControl_KLogicGroupButton, KStyleOptionLogicGroupButton)
    RECORD(drawComplexControl_ToolButton, KStyleOptionToolButton)
    RECORD(drawComplexControl_KSepraratorWidget, KStyleOptionSepraratorWidget)
    RECORD(drawComplexControl_KStatusBar, KStyleOptionStatusBar)
    RECORD(drawComplexControl_KDocTabBar, KStyleOptionDocTabBar)
    RECORD(drawComplexControl_KDocTab, KStyleOptionDocTab)
    RECORD(drawComplexControl_KRbLayoutWidget, KStyleOptionRbLayoutWidget)
    RECORD(drawComplexControl_KRbSubTabBar, KStyleOptionRbSubTabBar)
    RECORD(drawComplexControl_KMainWindow, KStyleOptionMainWindow)
    RECORD(drawComplexControl_KRbTabFileButton, KStyleOptionRbTabFileButton)
    RECORD(drawComplexControl_KSlider, QStyleOptionSlider)
    RECORD(drawControl_KSheetTabBarTab, KSheetTabStyleOption)
    RECORD(drawControl_KMinimizeButton, KStyleOptionWindowTitleButton)
    RECORD(drawControl_KRestoreMaximizeButton, KStyleOptionRestoreMaximizeButton)
    RECORD(drawControl_KCloseButton, KStyleOptionWindowTitleButton)
    RECORD(drawControl_KTabBarNewButton, KStyleOptionTabBarNewButton)
    RECORD(drawControl_KZoomButton, KStyleOptionZoomButton)
#undef RECORD
};

/// The wrapped style: records the complex controls that get through to it.
class BaseRecorder : public QCommonStyle
{
public:
    mutable QList<uint> controls;
    void drawComplexControl(ComplexControl cc, const QStyleOptionComplex* opt, QPainter* p,
                            const QWidget* w) const override
    {
        controls << uint(cc);
        QCommonStyle::drawComplexControl(cc, opt, p, w);
    }
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
    void complexDispatch_data();
    void complexDispatch();
    void controlDispatch_data();
    void controlDispatch();
    void wrongOptionDrawsNothing();
    void sliderAlsoReachesProxy();
    void fallbacksPaint();
    void toolButtonConversion_data();
    void toolButtonConversion();
    void otherEntryPoints();
    void metricsAndHints_data();
    void metricsAndHints();
    void polish();
    void optionTypes();
};

void tst_KORBStyle::init()
{
    g_calls.clear();
    KApplication::instance()->theme()->resetXml();
}

void tst_KORBStyle::complexDispatch_data()
{
    QTest::addColumn<int>("number");
    QTest::addColumn<QString>("operation");
    QTest::addColumn<void*>("option");
    const auto row = [](int n, const char* op, QStyleOption* o) {
        QTest::newRow(op) << n << QString::fromLatin1(op) << static_cast<void*>(o);
    };
    row(1, "drawComplexControl_KRbTabBar", make<KStyleOptionRbTabBar>());
    row(2, "drawComplexControl_KRbTabButton", make<KStyleOptionKRbTabButton>());
    row(3, "drawComplexControl_KRbCategory", make<KStyleOptionRbCategory>());
    row(4, "drawComplexControl_KRbHScrollWidget", make<KStyleOptionRbHScrollWidget>());
    row(5, "drawComplexControl_KRbLogicGroup", make<KStyleOptionRbLogicGroup>());
    row(6, "drawComplexControl_KLogicGroupButton", make<KStyleOptionLogicGroupButton>());
    row(7, "drawComplexControl_ToolButton", make<KStyleOptionToolButton>());
    row(8, "drawComplexControl_KSepraratorWidget", make<KStyleOptionSepraratorWidget>());
    row(9, "drawComplexControl_KStatusBar", make<KStyleOptionStatusBar>());
    row(10, "drawComplexControl_KDocTabBar", make<KStyleOptionDocTabBar>());
    row(11, "drawComplexControl_KDocTab", make<KStyleOptionDocTab>());
    row(12, "drawComplexControl_KRbLayoutWidget", make<KStyleOptionRbLayoutWidget>());
    row(13, "drawComplexControl_KRbSubTabBar", make<KStyleOptionRbSubTabBar>());
    row(14, "drawComplexControl_KMainWindow", make<KStyleOptionMainWindow>());
    row(15, "drawComplexControl_KRbTabFileButton", make<KStyleOptionRbTabFileButton>());
    row(16, "drawComplexControl_KSlider", make<QStyleOptionSlider>());
}

void tst_KORBStyle::complexDispatch()
{
    QFETCH(int, number);
    QFETCH(QString, operation);
    QFETCH(void*, option);
    auto* opt = static_cast<QStyleOptionComplex*>(static_cast<QStyleOption*>(option));
    RecordingStyle style(QStyleFactory::create("Fusion"));
    QImage image = blank();
    QPainter painter(&image);
    style.drawComplexControl(QStyle::ComplexControl(uint(QStyle::CC_CustomBase) + number), opt, &painter);
    QCOMPARE(g_calls, QStringList{operation});
    QCOMPARE(style.lastOption, static_cast<const QStyleOption*>(opt));
}

void tst_KORBStyle::controlDispatch_data()
{
    QTest::addColumn<int>("number");
    QTest::addColumn<QString>("operation");
    QTest::addColumn<void*>("option");
    QTest::newRow("sheet tab") << 1 << "drawControl_KSheetTabBarTab" << static_cast<void*>(make<KSheetTabStyleOption>());
    QTest::newRow("minimize") << 2 << "drawControl_KMinimizeButton" << static_cast<void*>(make<KStyleOptionWindowTitleButton>());
    QTest::newRow("restore") << 3 << "drawControl_KRestoreMaximizeButton" << static_cast<void*>(make<KStyleOptionRestoreMaximizeButton>());
    QTest::newRow("close") << 4 << "drawControl_KCloseButton" << static_cast<void*>(make<KStyleOptionWindowTitleButton>());
    // The restore option is a caption-button option too.
    QTest::newRow("close with restore option") << 4 << "drawControl_KCloseButton" << static_cast<void*>(make<KStyleOptionRestoreMaximizeButton>());
    QTest::newRow("new tab") << 5 << "drawControl_KTabBarNewButton" << static_cast<void*>(make<KStyleOptionTabBarNewButton>());
    QTest::newRow("zoom") << 6 << "drawControl_KZoomButton" << static_cast<void*>(make<KStyleOptionZoomButton>());
    QTest::newRow("restore needs its own") << 3 << QString() << static_cast<void*>(make<KStyleOptionWindowTitleButton>());
}

void tst_KORBStyle::controlDispatch()
{
    QFETCH(int, number);
    QFETCH(QString, operation);
    QFETCH(void*, option);
    auto* opt = static_cast<QStyleOption*>(option);
    RecordingStyle style(QStyleFactory::create("Fusion"));
    QImage image = blank();
    QPainter painter(&image);
    style.drawControl(QStyle::ControlElement(uint(QStyle::CE_CustomBase) + number), opt, &painter);
    QCOMPARE(g_calls, operation.isEmpty() ? QStringList() : QStringList{operation});
}

void tst_KORBStyle::wrongOptionDrawsNothing()
{
    KORBStyle style(QStyleFactory::create("Fusion"));
    QStyleOptionComplex stock;
    stock.rect = QRect(0, 0, 60, 30);
    KStyleOptionRbTabBar tabBar;
    tabBar.rect = stock.rect;
    tabBar.title = QStringLiteral("Title");
    for (int n = 1; n <= 16; ++n) {
        for (const QStyleOptionComplex* opt : {static_cast<const QStyleOptionComplex*>(&stock),
                                               static_cast<const QStyleOptionComplex*>(nullptr)}) {
            QImage image = blank();
            QPainter painter(&image);
            style.drawComplexControl(QStyle::ComplexControl(uint(QStyle::CC_CustomBase) + n), opt, &painter);
            painter.end();
            QVERIFY2(image == blank(), qPrintable(QString::number(n)));
        }
        if (n == 1 || n == 16)
            continue;
        // A framework option of another element is no better than a stock one.
        QImage image = blank();
        QPainter painter(&image);
        style.drawComplexControl(QStyle::ComplexControl(uint(QStyle::CC_CustomBase) + n), &tabBar, &painter);
        painter.end();
        QVERIFY2(image == blank(), qPrintable(QString::number(n)));
    }
    RecordingStyle recorder(QStyleFactory::create("Fusion"));
    QImage image = blank();
    QPainter painter(&image);
    for (int n = 1; n <= 16; ++n)
        recorder.drawComplexControl(QStyle::ComplexControl(uint(QStyle::CC_CustomBase) + n), &stock, &painter);
    for (int n = 1; n <= 6; ++n)
        recorder.drawControl(QStyle::ControlElement(uint(QStyle::CE_CustomBase) + n), &stock, &painter);
    QCOMPARE(g_calls, QStringList());
}

void tst_KORBStyle::sliderAlsoReachesProxy()
{
    auto* base = new BaseRecorder;
    RecordingStyle style(base);
    QImage image = blank();
    QPainter painter(&image);
    QStyleOptionSlider slider;
    slider.rect = QRect(0, 0, 60, 30);
    style.drawComplexControl(KORBStyle::KCC_Slider, &slider, &painter);
    QCOMPARE(g_calls, QStringList{"drawComplexControl_KSlider"});
    QCOMPARE(base->controls, QList<uint>{uint(KORBStyle::KCC_Slider)});

    // The other custom controls stay with the frame.
    base->controls.clear();
    KStyleOptionStatusBar bar;
    style.drawComplexControl(KORBStyle::KCC_StatusBar, &bar, &painter);
    QVERIFY(base->controls.isEmpty());
    // Stock numbers go on to the wrapped style.
    QStyleOptionSlider stockSlider;
    stockSlider.rect = QRect(0, 0, 60, 30);
    stockSlider.maximum = 10;
    style.drawComplexControl(QStyle::CC_Slider, &stockSlider, &painter);
    QCOMPARE(base->controls, QList<uint>{uint(QStyle::CC_Slider)});
}

void tst_KORBStyle::fallbacksPaint()
{
    QTemporaryDir dir;
    KDomDocument doc;
    QVERIFY(doc.setContent(KTestSupport::writeFile(dir.filePath("t.xml"),
        "<r><theme><style class='common'><color name='window' value='#804020'/></style>"
        "<style class='KRbTabBar'><color name='text' value='#0000ff'/></style></theme></r>")));
    KApplication::instance()->theme()->setupXml(doc);
    KORBStyle style(QStyleFactory::create("Fusion"));

    // The main window: its rectangle less the margins, filled in "common"/"window".
    KStyleOptionMainWindow window;
    window.rect = QRect(0, 0, 60, 30);
    window.leftMargin = 5;
    window.topMargin = 4;
    window.rightMargin = 3;
    window.bottomMargin = 2;
    QImage image = blank();
    {
        QPainter painter(&image);
        style.drawComplexControl(KORBStyle::KCC_MainWindow, &window, &painter);
    }
    QCOMPARE(image.pixelColor(10, 10), QColor(0x80, 0x40, 0x20));
    QCOMPARE(image.pixelColor(2, 10), QColor(Qt::white));
    QCOMPARE(image.pixelColor(10, 1), QColor(Qt::white));
    QCOMPARE(image.pixelColor(58, 10), QColor(Qt::white));

    // The tab bar's title in its theme colour.
    KStyleOptionRbTabBar bar;
    bar.rect = QRect(0, 0, 60, 30);
    bar.title = QStringLiteral("HHHH");
    image = blank();
    {
        QPainter painter(&image);
        style.drawComplexControl(KORBStyle::KCC_RbTabBar, &bar, &painter);
    }
    bool blue = false;
    for (int x = 0; x < image.width() && !blue; ++x)
        for (int y = 0; y < image.height() && !blue; ++y)
            blue = image.pixelColor(x, y).blue() > 200 && image.pixelColor(x, y).red() < 100;
    QVERIFY(blue);

    // The stock-drawn ones leave a mark too.
    const QList<QPair<int, QStyleOptionComplex*>> drawn = {
        {2, static_cast<QStyleOptionComplex*>(make<KStyleOptionKRbTabButton>())},
        {4, static_cast<QStyleOptionComplex*>(make<KStyleOptionRbHScrollWidget>())},
        {6, static_cast<QStyleOptionComplex*>(make<KStyleOptionLogicGroupButton>())},
        {7, static_cast<QStyleOptionComplex*>(make<KStyleOptionToolButton>())},
        {11, static_cast<QStyleOptionComplex*>(make<KStyleOptionDocTab>())},
    };
    for (const auto& entry : drawn) {
        if (auto* tab = qstyleoption_cast<KStyleOptionKRbTabButton*>(entry.second))
            tab->text = QStringLiteral("Home");
        if (auto* tool = qstyleoption_cast<KStyleOptionToolButton*>(entry.second)) {
            tool->text = QStringLiteral("Save");
            tool->buttonStyle = 2;
            tool->state |= QStyle::State_Sunken;
        }
        if (auto* doc = qstyleoption_cast<KStyleOptionDocTab*>(entry.second))
            doc->text = QStringLiteral("Document");
        image = blank();
        {
            QPainter painter(&image);
            style.drawComplexControl(QStyle::ComplexControl(uint(QStyle::CC_CustomBase) + entry.first),
                                     entry.second, &painter);
        }
        QVERIFY2(image != blank(), qPrintable(QString::number(entry.first)));
    }
}

void tst_KORBStyle::toolButtonConversion_data()
{
    QTest::addColumn<int>("flags");
    QTest::addColumn<bool>("icon");
    QTest::addColumn<int>("features");
    QTest::addColumn<int>("buttonStyle");
    QTest::newRow("icon only") << 1 << true << 0 << int(Qt::ToolButtonIconOnly);
    QTest::newRow("icon, arrow") << (1 | 4) << true << int(QStyleOptionToolButton::MenuButtonPopup)
                                 << int(Qt::ToolButtonIconOnly);
    QTest::newRow("text beside") << (1 | 2) << true << 0 << int(Qt::ToolButtonTextBesideIcon);
    QTest::newRow("text under") << (1 | 2 | 8) << true << 0 << int(Qt::ToolButtonTextUnderIcon);
    QTest::newRow("no icon") << 1 << false << 0 << int(Qt::ToolButtonTextBesideIcon);
    QTest::newRow("no icon, large") << (1 | 8) << false << 0 << int(Qt::ToolButtonTextUnderIcon);
}

void tst_KORBStyle::toolButtonConversion()
{
    QFETCH(int, flags);
    QFETCH(bool, icon);
    QFETCH(int, features);
    QFETCH(int, buttonStyle);
    KStyleOptionToolButton in;
    in.buttonStyle = flags;
    in.rect = QRect(1, 2, 30, 20);
    in.text = QStringLiteral("Cut");
    in.state = QStyle::State_Enabled | QStyle::State_Sunken;
    if (icon) {
        QPixmap p(16, 16);
        p.fill(Qt::red);
        in.icon = QIcon(p);
    }
    QStyleOptionToolButton out;
    KORBStyle::_toQStyleOptionToolButton(&in, &out);
    QCOMPARE(out.type, int(QStyleOption::SO_ToolButton));
    QVERIFY(qstyleoption_cast<const QStyleOptionToolButton*>(&out));
    QCOMPARE(int(out.features), features);
    QCOMPARE(int(out.toolButtonStyle), buttonStyle);
    QCOMPARE(out.rect, in.rect);
    QCOMPARE(out.text, in.text);
    QCOMPARE(out.state, in.state);
}

void tst_KORBStyle::otherEntryPoints()
{
    KORBStyle style(QStyleFactory::create("Fusion"));
    // The tool button's two parts.
    KStyleOptionToolButton button;
    button.rect = QRect(0, 0, 40, 22);
    button.buttonStyle = 1 | 4;
    button.subControls = QStyle::SC_ToolButton | QStyle::SC_ToolButtonMenu;
    QPixmap p(16, 16);
    p.fill(Qt::red);
    button.icon = QIcon(p);
    button.iconSize = QSize(16, 16);
    const QRect menu = style.subControlRect(KORBStyle::KCC_ToolButton, &button, KORBStyle::KSC_ToolButtonMenu, nullptr);
    const QRect main = style.subControlRect(KORBStyle::KCC_ToolButton, &button, KORBStyle::KSC_ToolButtonButton, nullptr);
    QVERIFY(menu.isValid() && main.isValid());
    QVERIFY(!menu.intersects(main));
    QVERIFY(menu.left() > main.left());
    QStyleOptionComplex stock;
    QVERIFY(style.subControlRect(KORBStyle::KCC_ToolButton, &stock, KORBStyle::KSC_ToolButtonMenu, nullptr).isNull());

    // Sizes.
    const QSize size = style.sizeFromContents(KORBStyle::KCT_ToolButton, &button, QSize(20, 20), nullptr);
    QVERIFY(size.width() >= 20 && size.height() >= 20);
    QCOMPARE(style.sizeFromContents(KORBStyle::KCT_ToolButton, &stock, QSize(20, 20), nullptr), QSize(20, 20));
    QCOMPARE(style.sizeFromContents(KORBStyle::KCT_LogicGroupButton, &stock, QSize(16, 16), nullptr), QSize(16, 16));
    KORBStyle_2013 flat(QStyleFactory::create("Fusion"));
    QCOMPARE(flat.sizeFromContents(KORBStyle::KCT_LogicGroupButton, &stock, QSize(16, 16), nullptr), QSize(12, 12));

    // The document tab's close mark.
    KStyleOptionDocTab tab;
    tab.rect = QRect(0, 0, 120, 24);
    QCOMPARE(style.hitTestComplexControl(KORBStyle::KCC_DocTab, &tab, QPoint(110, 12), nullptr),
             KORBStyle::KSC_DocTabClose);
    QVERIFY(style.hitTestComplexControl(KORBStyle::KCC_DocTab, &tab, QPoint(10, 12), nullptr)
            != KORBStyle::KSC_DocTabClose);
    QCOMPARE(style.hitTestComplexControl(KORBStyle::KCC_DocTab, &stock, QPoint(110, 12), nullptr),
             QStyle::SC_None);

    // The primitive + 1 draws nothing in the frame.
    QImage image = blank();
    QPainter painter(&image);
    QStyleOption plain;
    plain.rect = image.rect();
    style.drawPrimitive(KORBStyle::KPE_MainBorder, &plain, &painter);
    painter.end();
    QVERIFY(image == blank());
}

void tst_KORBStyle::metricsAndHints_data()
{
    QTest::addColumn<QString>("kind");
    QTest::addColumn<int>("number"); // custom offset, or -1 with a stock enum in "stock"
    QTest::addColumn<int>("stock");
    QTest::addColumn<int>("frame");
    QTest::addColumn<int>("v2012");
    QTest::addColumn<int>("v2013");
    const int proxy = INT_MIN; // "the wrapped style's value"
    QTest::newRow("PM_ButtonMargin") << "pm" << -1 << int(QStyle::PM_ButtonMargin) << 4 << 4 << 4;
    QTest::newRow("PM_DefaultFrameWidth") << "pm" << -1 << int(QStyle::PM_DefaultFrameWidth) << 2 << 2 << 2;
    QTest::newRow("PM_ScrollBarExtent") << "pm" << -1 << int(QStyle::PM_ScrollBarExtent) << 16 << 16 << 16;
    QTest::newRow("PM_TabBarTabOverlap") << "pm" << -1 << int(QStyle::PM_TabBarTabOverlap) << 1 << 1 << 1;
    QTest::newRow("PM_MenuHMargin") << "pm" << -1 << int(QStyle::PM_MenuHMargin) << 0 << 0 << 0;
    QTest::newRow("PM_MenuPanelWidth") << "pm" << -1 << int(QStyle::PM_MenuPanelWidth) << 2 << 2 << 2;
    QTest::newRow("PM_ToolTipLabelFrameWidth") << "pm" << -1 << int(QStyle::PM_ToolTipLabelFrameWidth) << 4 << 4 << 4;
    QTest::newRow("PM+1") << "pm" << 1 << 0 << proxy << proxy << 2;
    QTest::newRow("PM+2") << "pm" << 2 << 0 << 3 << 3 << 1;
    QTest::newRow("PM+3") << "pm" << 3 << 0 << 2 << 2 << 1;
    QTest::newRow("PM+4") << "pm" << 4 << 0 << 0 << 0 << 2;
    QTest::newRow("PM+5") << "pm" << 5 << 0 << 0 << 0 << 4;
    QTest::newRow("PM+8") << "pm" << 8 << 0 << 0 << 0 << 0;
    QTest::newRow("PM+9") << "pm" << 9 << 0 << 0 << 26 << 26;
    QTest::newRow("PM+10") << "pm" << 10 << 0 << proxy << 15 << 13;
    QTest::newRow("PM+11") << "pm" << 11 << 0 << proxy << 8 << 15;
    QTest::newRow("PM+12") << "pm" << 12 << 0 << proxy << 3 << 15;
    QTest::newRow("SH+1") << "sh" << 1 << 0 << proxy << 3 << 2;
    QTest::newRow("SH+2") << "sh" << 2 << 0 << proxy << 32 << 24;
    QTest::newRow("SH+3") << "sh" << 3 << 0 << proxy << proxy << 1;
    QTest::newRow("SH+4") << "sh" << 4 << 0 << proxy << 2012 << 2013;
    QTest::newRow("SH+5") << "sh" << 5 << 0 << proxy << proxy << 1;
    QTest::newRow("SH_Menu_AllowActiveAndDisabled") << "sh" << -1 << int(QStyle::SH_Menu_AllowActiveAndDisabled)
                                                    << 0 << 0 << 0;
}

void tst_KORBStyle::metricsAndHints()
{
    QFETCH(QString, kind);
    QFETCH(int, number);
    QFETCH(int, stock);
    QFETCH(int, frame);
    QFETCH(int, v2012);
    QFETCH(int, v2013);
    QStyle* fusion = QStyleFactory::create("Fusion");
    KORBStyle base(QStyleFactory::create("Fusion"));
    KORBStyle_2012 s2012(QStyleFactory::create("Fusion"));
    KORBStyle_2013 s2013(QStyleFactory::create("Fusion"));
    auto ask = [&](const QStyle* s) {
        if (kind == "pm") {
            const auto m = number < 0 ? QStyle::PixelMetric(stock) : KORBStyle::customMetric(number);
            return s->pixelMetric(m);
        }
        const auto h = number < 0 ? QStyle::StyleHint(stock) : KORBStyle::customHint(number);
        return s->styleHint(h);
    };
    const int wrapped = ask(fusion);
    QCOMPARE(ask(&base), frame == INT_MIN ? wrapped : frame);
    QCOMPARE(ask(&s2012), v2012 == INT_MIN ? wrapped : v2012);
    QCOMPARE(ask(&s2013), v2013 == INT_MIN ? wrapped : v2013);
    delete fusion;

    QCOMPARE(base.styleName(), QStringLiteral("base"));
    QCOMPARE(s2012.styleName(), QStringLiteral("rainbow"));
    QCOMPARE(s2013.styleName(), QStringLiteral("2013"));
}

void tst_KORBStyle::polish()
{
    QTemporaryDir dir;
    KDomDocument doc;
    QVERIFY(doc.setContent(KTestSupport::writeFile(dir.filePath("t.xml"),
        "<r><theme><style class='KDocMap'><color name='background' value='#abcdef'/></style></theme></r>")));
    KApplication::instance()->theme()->setupXml(doc);
    KORBStyle style(QStyleFactory::create("Fusion"));

    QTreeView tree;
    QListView list;
    QToolButton button;
    QWidget plain;
    style.polish(&tree);
    style.polish(&list);
    style.polish(&button);
    style.polish(&plain);
    QCOMPARE(tree.palette().color(QPalette::Base), QColor("#abcdef"));
    QCOMPARE(list.palette().color(QPalette::Base), QColor(Qt::white));
    QCOMPARE(list.palette().color(QPalette::HighlightedText), QColor(Qt::black));
    QVERIFY(button.testAttribute(Qt::WA_Hover));
    QVERIFY(!plain.testAttribute(Qt::WA_Hover));
    style.unpolish(&button);
    QVERIFY(!button.testAttribute(Qt::WA_Hover));

    // Scroll bars: 18 more than the wrapped style's minimum slider length outside a KTik.
    QStyle* fusion = QStyleFactory::create("Fusion");
    QCOMPARE(style.pixelMetric(QStyle::PM_ScrollBarSliderMin, nullptr, &plain),
             fusion->pixelMetric(QStyle::PM_ScrollBarSliderMin, nullptr, &plain) + 18);
    QWidget tabs;
    tabs.setObjectName("kytabbar");
    QCOMPARE(style.pixelMetric(QStyle::PM_TabBarTabHSpace, nullptr, &tabs), 10);
    QStyleOptionButton pushButton;
    QCOMPARE(style.pixelMetric(QStyle::PM_DefaultFrameWidth, &pushButton), 1);
    QCOMPARE(style.pixelMetric(QStyle::PM_TabBarBaseHeight), fusion->pixelMetric(QStyle::PM_DefaultFrameWidth));
    delete fusion;
}

void tst_KORBStyle::optionTypes()
{
    QCOMPARE(int(KStyleOptionRbTabBar::Type), 3841);
    QCOMPARE(int(KStyleOptionToolButton::Type), 3847);
    QCOMPARE(int(KStyleOptionMainWindow::Type), 3854);
    QCOMPARE(int(KStyleOptionMainBorder::Type), 3861);
    QCOMPARE(int(KStyleOptionRbLogicGroup::Type), int(KStyleOptionRbHScrollWidget::Type));
    KStyleOptionRestoreMaximizeButton restore;
    QCOMPARE(restore.type, 3858);
    QCOMPARE(restore.version, 2);
    KStyleOptionToolButton tool;
    QCOMPARE(tool.type, 3847);
    QCOMPARE(tool.orientation, int(Qt::Horizontal));
    QVERIFY(tool.quickCommandEnabled);
    QCOMPARE(tool.bgBrush.style(), Qt::NoBrush);
    QVERIFY(!qstyleoption_cast<const QStyleOptionToolButton*>(&tool));
    KStyleOptionKRbTabButton tab;
    QCOMPARE(tab.status, -1);
    KSheetTabStyleOption sheet;
    QCOMPARE(sheet.shape, 3);
    // The logic group and the scroller share a number: each cast accepts the other.
    KStyleOptionRbLogicGroup group;
    QVERIFY(qstyleoption_cast<const KStyleOptionRbHScrollWidget*>(&group));
}

NORVIK_TEST_MAIN(tst_KORBStyle)
#include "tst_korbstyle.moc"
