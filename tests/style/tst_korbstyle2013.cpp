// The 2013 look: the tool button's parts, sizes and panels, the routing of Qt's own widgets to
// drawing from the theme, the ribbon's tab bar and file button. Colours are checked by the
// ones that show up in a rendering against a theme whose every item has its own colour.
#include <ktestsupport.h>

#include <QFrame>
#include <QStyleFactory>
#include <QTemporaryDir>

#include <kapptheme.h>
#include <korbstyle_2012.h>
#include <korbstyle_2013.h>
#include <ktoolbutton.h>

namespace {

QByteArray solid(const char* name, const char* colour)
{
    return QByteArray("<linearGradient name='") + name + "' spread='pad' start='0,0' end='0,1'><color position='0' value='"
        + colour + "'/><color position='1' value='" + colour + "'/></linearGradient>";
}

QByteArray theme(const QString& imagePath)
{
    return "<t><theme>"
           "<style class='common'><color name='text' value='#010101'/><color name='border' value='#ff00ff'/></style>"
           "<style class='KToolButton'><color name='border-down' value='#200060'/><color name='border-hover' value='#4040c0'/>"
        + solid("background-down", "#8080ff") + solid("background-hover", "#c0c0ff") + "</style>"
           "<style class='KListView'><color name='line' value='#00aa00'/></style>"
           "<style class='KTipWidget'><color name='border' value='#0000ff'/>" + solid("background", "#ffee00") + "</style>"
           "<style class='KComboBox'><color name='border' value='#112233'/>" + solid("background", "#aabbcc") + "</style>"
           "<style class='KScrollBar'><color name='slider-border' value='#556677'/>" + solid("background", "#ddeeff")
        + solid("slider-background", "#334455") + "</style>"
           "<style class='QMainWindowTabBar'><color name='border' value='#123123'/>" + solid("background", "#fedcba") + "</style>"
           "<style class='KMenuWidget'><color name='background' value='#f1f2f3'/><color name='border' value='#0a0b0c'/></style>"
           "<style class='KMenuWidgetLayoutItem'><color name='border-down' value='#b1b2b3'/>" + solid("background-down", "#a1a2a3") + "</style>"
           "<style class='QToolBarDock'>" + solid("title", "#c1c2c3") + "</style>"
           "<style class='KToolBar'><color name='border' value='#e1e2e3'/>" + solid("background-hor", "#d1d2d3") + "</style>"
           "<style class='KRbTabBar'><color name='background' value='#f0f0e0'/><color name='border' value='#404020'/>"
           "<image name='bg-image' href='" + imagePath.toUtf8() + "'/></style>"
           "<style class='KRbCategory'><image name='bg-image' href='" + imagePath.toUtf8() + "'/>"
        + solid("background", "#e0f0e0") + "</style>"
           "<style class='KRbTabFileButton'><color name='text' value='#fafafa'/><color name='lightCircle-hover' value='#ffff00'/>"
        + solid("background", "#2040a0") + "</style>"
           "<style class='KRbTabFileButton-Arrow'>" + solid("background", "#102050") + "</style>"
           "<style class='KRbTabContextButton'><color name='contextTabPen' value='#aa5500'/></style>"
           "<style class='KRbTabContextButton-t' base='KRbTabContextButton'><color name='contextTabPen' value='#00aa55'/></style>"
           "</theme></t>";
}

bool shows(const QImage& image, const QString& color)
{
    const QRgb rgb = QColor(color).rgb();
    return KTestSupport::anyPixel(image, [&](const QColor& c) { return c.rgb() == rgb; });
}

QString at(const QImage& image, int x, int y)
{
    return image.pixelColor(x, y).name();
}

// A tool-button option as KToolButton fills it.
KStyleOptionToolButton toolButton(int flags, const QString& text, const QIcon& icon, QStyle::State state)
{
    KStyleOptionToolButton o;
    o.state = state;
    o.fontMetrics = QFontMetrics(QApplication::font());
    o.text = text;
    o.icon = icon;
    o.iconSize = QSize(16, 16);
    o.buttonStyle = flags;
    o.subControls = QStyle::SC_ToolButton;
    if (flags & KStyleOptionToolButton::StyleArrow)
        o.subControls |= QStyle::SC_ToolButtonMenu;
    return o;
}

// The button's own option, as it paints with it.
struct OpenToolButton : KToolButton
{
    using KToolButton::initStyleOption;
};

constexpr QStyle::State kRest = QStyle::State_Enabled | QStyle::State_AutoRaise;

} // namespace

class tst_KORBStyle2013 : public QObject
{
    Q_OBJECT
private Q_SLOTS:
    void initTestCase();
    void cleanupTestCase() { KApplication::instance()->theme()->resetXml(); }

    void toolButtonParts_data();
    void toolButtonParts();
    void toolButtonSizes_data();
    void toolButtonSizes();
    void toolButtonCaption_data();
    void toolButtonCaption();
    void toolButtonPanels();
    void splitButtonLightsHalf();
    void largeButtonWidget();
    void customMetricsAndHints_data();
    void customMetricsAndHints();
    void routing_data();
    void routing();
    void namedLines();
    void ribbonTabBar();
    void fileButton();
    void contextTabFamilies();

private:
    QTemporaryDir m_dir;
    KORBStyle_2013* m_style = nullptr;
};

void tst_KORBStyle2013::initTestCase()
{
    QVERIFY(m_dir.isValid());
    QImage picture(8, 6, QImage::Format_ARGB32);
    picture.fill(QColor("#7a11aa"));
    const QString picturePath = m_dir.filePath("bar.png");
    QVERIFY(picture.save(picturePath));
    QVERIFY(KTestSupport::loadTheme(KTestSupport::writeFile(m_dir.filePath("theme.xml"), theme(picturePath))));
    m_style = new KORBStyle_2013(QStyleFactory::create("Fusion"));
    QApplication::setStyle(m_style); // the application owns it
}

void tst_KORBStyle2013::toolButtonParts_data()
{
    QTest::addColumn<int>("flags");
    QTest::addColumn<bool>("hasIcon");
    QTest::addColumn<bool>("hasText");
    QTest::addColumn<bool>("hideText");
    QTest::addColumn<bool>("icon");
    QTest::addColumn<bool>("text");
    // A lone part shows whatever the flags say; with both, the flags choose.
    QTest::newRow("icon only, no icon flag") << 0 << true << false << false << true << false;
    QTest::newRow("text only, no text flag") << 1 << false << true << false << false << true;
    QTest::newRow("both, icon flag") << 1 << true << true << false << true << false;
    QTest::newRow("both, text flag") << 2 << true << true << false << false << true;
    QTest::newRow("both, both flags") << 3 << true << true << false << true << true;
    QTest::newRow("both, text hidden") << 3 << true << true << true << true << false;
    QTest::newRow("text only, hidden flag ignored") << 2 << false << true << true << false << true;
}

void tst_KORBStyle2013::toolButtonParts()
{
    QFETCH(int, flags);
    QFETCH(bool, hasIcon);
    QFETCH(bool, hasText);
    QFETCH(bool, hideText);
    KStyleOptionToolButton o = toolButton(flags, hasText ? "Save" : "", hasIcon ? KTestSupport::redIcon() : QIcon(), kRest);
    o.autoHideText = hideText;
    KOrbStyleKToolButton button;
    button.initFromStyleOption(&o);
    QTEST(button.needDrawIcon(), "icon");
    QTEST(button.needDrawText(), "text");

    // What is decided is what is painted: the red icon shows exactly when its part does.
    o.rect = QRect(QPoint(0, 0), button.calcSizeHint(Qt::Horizontal));
    const QImage image = KTestSupport::paint(o.rect.size(), [&](QPainter& p) { button.paint(&p, nullptr); });
    QCOMPARE(shows(image, "#ff0000"), button.needDrawIcon());
    QCOMPARE(shows(image, "#010101"), button.needDrawText());
}

void tst_KORBStyle2013::toolButtonSizes_data()
{
    QTest::addColumn<int>("flags");
    QTest::addColumn<QSize>("iconSize");
    QTest::addColumn<bool>("wide");
    QTest::addColumn<QSize>("size");
    // 16 by 16 icon, 2 pixels around it, 1 pixel of margin: 22 by 22.
    QTest::newRow("icon") << 1 << QSize(16, 16) << false << QSize(22, 22);
    QTest::newRow("wide margins") << 1 << QSize(16, 16) << true << QSize(26, 22);
    QTest::newRow("arrow adds 10") << 5 << QSize(16, 16) << false << QSize(32, 22);
    QTest::newRow("odd width stays odd") << 1 << QSize(17, 16) << false << QSize(23, 22);
    QTest::newRow("even width flag") << (1 | 64) << QSize(17, 16) << false << QSize(24, 22);
    QTest::newRow("even width, already even") << (1 | 64) << QSize(16, 16) << false << QSize(22, 22);
    QTest::newRow("large, arrow under icon") << (1 | 4 | 8) << QSize(32, 32) << false << QSize(38, 46);
}

void tst_KORBStyle2013::toolButtonSizes()
{
    QFETCH(int, flags);
    QFETCH(QSize, iconSize);
    QFETCH(bool, wide);
    KStyleOptionToolButton o = toolButton(flags, "", KTestSupport::redIcon(), kRest);
    o.iconSize = iconSize;
    o.largeMargins = wide;
    QTEST(m_style->sizeFromContents(KORBStyle::KCT_ToolButton, &o, QSize(20, 20), nullptr), "size");
    // A vertical bar measures a button without a caption as it stands.
    o.orientation = Qt::Vertical;
    QTEST(m_style->sizeFromContents(KORBStyle::KCT_ToolButton, &o, QSize(20, 20), nullptr), "size");
}

void tst_KORBStyle2013::toolButtonCaption_data()
{
    QTest::addColumn<int>("flags");
    QTest::addColumn<QString>("text");
    QTest::addColumn<QString>("text2");
    QTest::addColumn<QStringList>("lines");
    QTest::newRow("no hot key: lone & doubled") << 3 << "Co&py" << "" << QStringList{"Co&&py"};
    QTest::newRow("no hot key: && kept") << 3 << "A&&B &x" << "" << QStringList{"A&&B &&x"};
    QTest::newRow("hot key shown") << (3 | 16) << "Co&py" << "" << QStringList{"Co&py"};
    QTest::newRow("beside the icon: one line") << 3 << "Format Painter" << "" << QStringList{"Format Painter"};
    QTest::newRow("under: two words, two lines") << (3 | 8) << "Format Painter" << "" << QStringList{"Format", "Painter"};
    QTest::newRow("under: second caption") << (3 | 8) << "Insert" << "Table" << QStringList{"Insert", "Table"};
    QTest::newRow("under: one word") << (3 | 8) << "Paste" << "" << QStringList{"Paste"};
    QTest::newRow("under: one word, arrow line") << (3 | 4 | 8) << "Paste" << "" << QStringList{"Paste", ""};
}

void tst_KORBStyle2013::toolButtonCaption()
{
    QFETCH(int, flags);
    QFETCH(QString, text);
    QFETCH(QString, text2);
    KStyleOptionToolButton o = toolButton(flags, text, KTestSupport::redIcon(), kRest);
    o.text2 = text2;
    KOrbStyleKToolButton button;
    button.initFromStyleOption(&o);
    QTEST(button.getDrawText(), "lines");
}

void tst_KORBStyle2013::toolButtonPanels()
{
    const QIcon icon = KTestSupport::redIcon();
    const auto render = [&](QStyle::State state, bool checked = false) {
        KStyleOptionToolButton o = toolButton(3, "Save", icon, state);
        if (checked)
            o.state |= QStyle::State_On;
        o.rect = QRect(0, 0, 70, 24);
        return KTestSupport::paint(o.rect.size(), [&](QPainter& p) {
            m_style->drawComplexControl(KORBStyle::KCC_ToolButton, &o, &p, nullptr);
        });
    };
    // Auto-raised at rest: no panel at all.
    QImage image = render(kRest);
    QCOMPARE(at(image, 1, 1), QString("#ffffff"));
    QCOMPARE(at(image, 0, 0), QString("#ffffff"));
    // Hovered: the hover items, the border on the edge, the fill inside.
    image = render(kRest | QStyle::State_MouseOver);
    QCOMPARE(at(image, 0, 0), QString("#4040c0"));
    QCOMPARE(at(image, 1, 1), QString("#c0c0ff"));
    // Not auto-raised at rest, and checked: the "down" items.
    image = render(QStyle::State_Enabled);
    QCOMPARE(at(image, 0, 0), QString("#200060"));
    QCOMPARE(at(image, 1, 1), QString("#8080ff"));
    image = render(kRest, true);
    QCOMPARE(at(image, 1, 1), QString("#8080ff"));
    // Disabled, even checked: no panel, and a gray caption instead of the theme's text colour.
    image = render(QStyle::State_AutoRaise, true);
    QCOMPARE(at(image, 1, 1), QString("#ffffff"));
    QVERIFY(!shows(image, "#200060"));
    QVERIFY(shows(image, QColor(Qt::gray).name()));
    QVERIFY(!shows(image, "#010101"));
}

void tst_KORBStyle2013::splitButtonLightsHalf()
{
    KStyleOptionToolButton o = toolButton(5, "", KTestSupport::redIcon(), kRest | QStyle::State_MouseOver);
    o.features = QStyleOptionToolButton::Menu;
    o.drawSeparator = true;
    o.rect = QRect(0, 0, 32, 22);
    const QRect button = m_style->subControlRect(KORBStyle::KCC_ToolButton, &o, KORBStyle::KSC_ToolButtonButton, nullptr);
    const QRect menu = m_style->subControlRect(KORBStyle::KCC_ToolButton, &o, KORBStyle::KSC_ToolButtonMenu, nullptr);
    QCOMPARE(button, QRect(0, 0, 21, 22));
    QCOMPARE(menu, QRect(21, 0, 11, 22));
    QCOMPARE(m_style->subControlRect(KORBStyle::KCC_ToolButton, &o, QStyle::SC_ToolButton, nullptr), o.rect);

    const auto render = [&](QStyle::SubControls active) {
        o.activeSubControls = active;
        return KTestSupport::paint(o.rect.size(), [&](QPainter& p) {
            m_style->drawComplexControl(KORBStyle::KCC_ToolButton, &o, &p, nullptr);
        });
    };
    QImage image = render(QStyle::SC_ToolButtonMenu);
    QCOMPARE(at(image, 28, 2), QString("#c0c0ff")); // the arrow's half lights
    QCOMPARE(at(image, 2, 2), QString("#ffffff"));  // the other half does not
    QCOMPARE(at(image, 0, 10), QString("#4040c0")); // the frame goes round both
    QCOMPARE(at(image, 21, 10), QString("#4040c0")); // with the separator between
    image = render(QStyle::SC_ToolButton);
    QCOMPARE(at(image, 2, 2), QString("#c0c0ff"));
    QCOMPARE(at(image, 28, 2), QString("#ffffff"));

    // Without the arrow bit there is no menu part.
    o.buttonStyle = 1;
    o.subControls = QStyle::SC_ToolButton;
    QCOMPARE(m_style->subControlRect(KORBStyle::KCC_ToolButton, &o, KORBStyle::KSC_ToolButtonMenu, nullptr), QRect());
}

void tst_KORBStyle2013::largeButtonWidget()
{
    // A ribbon's large button: icon on top, the caption's lines centred below, the arrow
    // part under the icon.
    OpenToolButton button;
    button.setStyle(m_style);
    QPixmap red(32, 32);
    red.fill(Qt::red);
    button.setIcon(QIcon(red));
    button.setIconSize(QSize(32, 32));
    button.setText("Insert Table");
    button.setButtonStyle(1 | 2 | 4 | 8);
    const int lineHeight = button.fontMetrics().height();
    QCOMPARE(button.sizeHint().height(), 1 + 36 + 2 * lineHeight + 1);
    button.resize(button.sizeHint());
    KStyleOptionToolButton o;
    button.initStyleOption(&o);
    QCOMPARE(m_style->subControlRect(KORBStyle::KCC_ToolButton, &o, KORBStyle::KSC_ToolButtonMenu, &button).top(), 37);
    const QImage image = button.grab().toImage();
    int iconBottom = -1;
    for (int y = 0; y < image.height(); ++y) {
        if (image.pixelColor(image.width() / 2, y) == QColor(Qt::red))
            iconBottom = y;
    }
    QCOMPARE(iconBottom, 1 + 2 + 32 - 1);
    const auto rowHasText = [&](int top) {
        for (int y = top; y < top + lineHeight; ++y)
            for (int x = 0; x < image.width(); ++x)
                if (image.pixelColor(x, y).rgb() == QColor("#010101").rgb() || image.pixelColor(x, y).lightness() < 80)
                    return true;
        return false;
    };
    QVERIFY(rowHasText(37));
    QVERIFY(rowHasText(37 + lineHeight));
}

void tst_KORBStyle2013::customMetricsAndHints_data()
{
    QTest::addColumn<bool>("hint");
    QTest::addColumn<int>("offset");
    QTest::addColumn<int>("rainbow");
    QTest::addColumn<int>("flat");
    const int frame = INT_MIN; // the frame's own answer
    const auto pm = [](int n, int v2012, int v2013) {
        QTest::addRow("metric %d", n) << false << n << v2012 << v2013;
    };
    pm(1, frame, 2);
    pm(2, 3, 1);
    pm(3, 2, 1);
    pm(4, 0, 2);
    pm(5, 0, 4);
    pm(6, 0, 4);
    pm(7, 0, 0);
    pm(8, 0, 0);
    pm(9, 26, 26);
    pm(10, 15, 13);
    pm(11, 8, 15);
    pm(12, 3, 15);
    const auto sh = [](int n, int v2012, int v2013) { QTest::addRow("hint %d", n) << true << n << v2012 << v2013; };
    sh(1, 3, 2);
    sh(2, 32, 24);
    sh(3, frame, 1);
    sh(4, 2012, 2013);
    sh(5, frame, 1);
}

void tst_KORBStyle2013::customMetricsAndHints()
{
    QFETCH(bool, hint);
    QFETCH(int, offset);
    QFETCH(int, rainbow);
    QFETCH(int, flat);
    const auto ask = [&](const QStyle& s) {
        return hint ? s.styleHint(QStyle::StyleHint(QStyle::SH_CustomBase + offset))
                    : s.pixelMetric(QStyle::PixelMetric(QStyle::PM_CustomBase + offset));
    };
    const int frame = ask(KORBStyle(QStyleFactory::create("Fusion")));
    QCOMPARE(ask(KORBStyle_2012(QStyleFactory::create("Fusion"))), rainbow == INT_MIN ? frame : rainbow);
    QCOMPARE(ask(KORBStyle_2013(QStyleFactory::create("Fusion"))), flat == INT_MIN ? frame : flat);
}

void tst_KORBStyle2013::routing_data()
{
    QTest::addColumn<QString>("part");
    QTest::addColumn<QStringList>("present");
    QTest::addColumn<QStringList>("absent");
    QTest::newRow("combo box") << "combo" << QStringList{"#aabbcc", "#112233"} << QStringList{};
    QTest::newRow("scroll bar") << "scroll" << QStringList{"#ddeeff", "#334455", "#556677"} << QStringList{};
    QTest::newRow("selected tab") << "tab" << QStringList{"#fedcba", "#123123"} << QStringList{};
    QTest::newRow("tab at rest: flat") << "tabRest" << QStringList{} << QStringList{"#fedcba", "#123123"};
    QTest::newRow("menu row, selected") << "menu" << QStringList{"#a1a2a3", "#b1b2b3", "#010101"} << QStringList{};
    QTest::newRow("menu panel") << "menuPanel" << QStringList{"#f1f2f3", "#0a0b0c"} << QStringList{};
    QTest::newRow("tip panel") << "tip" << QStringList{"#ffee00"} << QStringList{};
    QTest::newRow("selected view item") << "item" << QStringList{"#c0c0ff", "#4040c0"} << QStringList{};
    QTest::newRow("view item at rest") << "itemRest" << QStringList{} << QStringList{"#c0c0ff", "#4040c0"};
    QTest::newRow("dock title") << "dock" << QStringList{"#c1c2c3", "#ff00ff"} << QStringList{};
    QTest::newRow("tool bar") << "toolbar" << QStringList{"#d1d2d3", "#e1e2e3"} << QStringList{};
    QTest::newRow("tab bar base: nothing") << "tabBase" << QStringList{"#ffffff"} << QStringList{"#ff00ff"};
    QTest::newRow("frame") << "frame" << QStringList{"#ff00ff"} << QStringList{};
}

void tst_KORBStyle2013::routing()
{
    QFETCH(QString, part);
    QFETCH(QStringList, present);
    QFETCH(QStringList, absent);
    QWidget widget;
    const QRect rect(0, 0, 120, 40);
    const auto prepare = [&](QStyleOption& o) {
        o.initFrom(&widget);
        o.rect = rect;
        o.state = QStyle::State_Enabled;
    };
    const QImage image = KTestSupport::paint(rect.size(), [&](QPainter& p) {
        if (part == "combo") {
            QStyleOptionComboBox o;
            prepare(o);
            o.subControls = QStyle::SC_All;
            m_style->drawComplexControl(QStyle::CC_ComboBox, &o, &p, nullptr);
        } else if (part == "scroll") {
            QStyleOptionSlider o;
            prepare(o);
            o.orientation = Qt::Horizontal;
            o.rect = QRect(0, 0, 120, 16);
            o.maximum = 100;
            o.pageStep = 20;
            o.subControls = QStyle::SC_All;
            m_style->drawComplexControl(QStyle::CC_ScrollBar, &o, &p, nullptr);
        } else if (part == "tab" || part == "tabRest") {
            QStyleOptionTab o;
            prepare(o);
            if (part == "tab")
                o.state |= QStyle::State_Selected;
            m_style->drawControl(QStyle::CE_TabBarTabShape, &o, &p, nullptr);
        } else if (part == "menu") {
            QStyleOptionMenuItem o;
            prepare(o);
            o.state |= QStyle::State_Selected;
            o.text = "Copy\tCtrl+C";
            o.menuItemType = QStyleOptionMenuItem::Normal;
            m_style->drawControl(QStyle::CE_MenuItem, &o, &p, nullptr);
        } else if (part == "menuPanel") {
            QStyleOption o;
            prepare(o);
            m_style->drawPrimitive(QStyle::PE_PanelMenu, &o, &p, nullptr);
        } else if (part == "tip") {
            QStyleOption o;
            prepare(o);
            m_style->drawPrimitive(QStyle::PE_PanelTipLabel, &o, &p, nullptr);
        } else if (part == "item" || part == "itemRest") {
            QStyleOptionViewItem o;
            prepare(o);
            if (part == "item")
                o.state |= QStyle::State_Selected;
            m_style->drawPrimitive(QStyle::PE_PanelItemViewItem, &o, &p, nullptr);
        } else if (part == "dock") {
            QStyleOptionDockWidget o;
            prepare(o);
            o.title = "Navigation";
            m_style->drawControl(QStyle::CE_DockWidgetTitle, &o, &p, nullptr);
        } else if (part == "toolbar") {
            QStyleOptionToolBar o;
            prepare(o);
            o.state |= QStyle::State_Horizontal;
            m_style->drawControl(QStyle::CE_ToolBar, &o, &p, nullptr);
        } else if (part == "tabBase") {
            QStyleOptionTabBarBase o;
            prepare(o);
            m_style->drawPrimitive(QStyle::PE_FrameTabBarBase, &o, &p, nullptr);
        } else if (part == "frame") {
            QStyleOptionFrame o;
            prepare(o);
            m_style->drawPrimitive(QStyle::PE_Frame, &o, &p, nullptr);
        }
    });
    for (const QString& c : present)
        QVERIFY2(shows(image, c), qPrintable(c));
    for (const QString& c : absent)
        QVERIFY2(!shows(image, c), qPrintable(c));
}

void tst_KORBStyle2013::namedLines()
{
    // A horizontal line through the middle in "KListView"/"line": "_solid" with the light line
    // under it, "_dash" broken; any other name is the stock line.
    const auto render = [&](const QString& name) {
        QFrame frame;
        frame.setObjectName(name);
        frame.setFrameShape(QFrame::HLine);
        frame.setStyle(m_style);
        frame.resize(60, 5);
        return frame.grab().toImage();
    };
    QImage image = render("tipLine_solid");
    QCOMPARE(at(image, 30, 2), QString("#00aa00"));
    QCOMPARE(image.pixelColor(30, 3), QApplication::palette().color(QPalette::Light));
    QCOMPARE(at(image, 30, 1), at(image, 30, 0));
    image = render("tipLine_dash");
    int dark = 0;
    for (int x = 0; x < 60; ++x)
        dark += at(image, x, 2) == "#00aa00";
    QVERIFY(dark > 10);
    QVERIFY(dark < 50);
    QVERIFY(!shows(render("line"), "#00aa00"));
}

void tst_KORBStyle2013::ribbonTabBar()
{
    KStyleOptionRbTabBar o;
    o.rect = QRect(0, 0, 200, 30);
    o.state = QStyle::State_Enabled;
    const auto render = [&] {
        return KTestSupport::paint(o.rect.size(), [&](QPainter& p) {
            m_style->drawComplexControl(KORBStyle::KCC_RbTabBar, &o, &p, nullptr);
        });
    };
    QImage image = render();
    // The band, the theme's picture in its top right corner, and the bottom band of the
    // metric's height, the category's colour under the line the tabs stand on.
    QCOMPARE(at(image, 10, 10), QString("#f0f0e0"));
    QCOMPARE(at(image, 199, 0), QString("#7a11aa"));
    QCOMPARE(at(image, 192, 5), QString("#7a11aa"));
    QCOMPARE(at(image, 191, 5), QString("#f0f0e0"));
    QCOMPARE(m_style->pixelMetric(KORBStyle::KPM_RbTabBarBottomLine), 2);
    QCOMPARE(at(image, 10, 28), QString("#404020"));
    QCOMPARE(at(image, 10, 29), QString("#e0f0e0"));
    // A family colour of the current tab takes over the line.
    o.slideColor = QColor("#00ffff");
    image = render();
    QCOMPARE(at(image, 10, 28), QString("#00ffff"));

    // The category below carries the picture on at its right end, inside its border lines.
    KStyleOptionRbCategory category;
    category.rect = QRect(0, 0, 200, 60);
    category.state = QStyle::State_Enabled;
    image = KTestSupport::paint(category.rect.size(), [&](QPainter& p) {
        m_style->drawComplexControl(KORBStyle::KCC_RbCategory, &category, &p, nullptr);
    });
    QCOMPARE(at(image, 199, 1), QString("#7a11aa"));
    QCOMPARE(at(image, 10, 10), QString("#e0f0e0"));
}

void tst_KORBStyle2013::fileButton()
{
    KStyleOptionRbTabFileButton o;
    o.rect = QRect(0, 0, 60, 26);
    o.state = QStyle::State_Enabled;
    o.text = "FILE";
    const auto render = [&] {
        return KTestSupport::paint(o.rect.size(), [&](QPainter& p) {
            m_style->drawComplexControl(KORBStyle::KCC_RbTabFileButton, &o, &p, nullptr);
        });
    };
    QImage image = render();
    QCOMPARE(at(image, 2, 2), QString("#2040a0"));
    QVERIFY(shows(image, "#fafafa"));
    QVERIFY(!shows(image, "#102050"));
    // The arrow part darkens under the mouse; the glow is there only while the light is on.
    o.hitArrow = true;
    image = render();
    QCOMPARE(at(image, 57, 2), QString("#102050"));
    QCOMPARE(at(image, 2, 2), QString("#2040a0"));
    o.hitArrow = false;
    o.tipLight = true;
    o.light = 20;
    // Above the caption, 10 pixels from the centre: half way out of the glow.
    QVERIFY(render().pixelColor(30, 2).green() > 0x40 + 40);
    o.tipLight = false;
    QCOMPARE(at(render(), 30, 2), QString("#2040a0"));

    QCOMPARE(m_style->hitTestComplexControl(KORBStyle::KCC_RbTabFileButton, &o, QPoint(55, 10)),
             KORBStyle::KSC_FileButtonArrow);
    QCOMPARE(m_style->hitTestComplexControl(KORBStyle::KCC_RbTabFileButton, &o, QPoint(10, 10)),
             QStyle::SubControl(uint(QStyle::SC_CustomBase) + 1));
    QCOMPARE(m_style->hitTestComplexControl(KORBStyle::KCC_RbTabFileButton, &o, QPoint(70, 10)), QStyle::SC_None);
}

void tst_KORBStyle2013::contextTabFamilies()
{
    // A context tab takes its family's class, then the context tabs' common one.
    const auto render = [&](const QString& key) {
        KStyleOptionKRbTabButton o;
        o.rect = QRect(0, 0, 70, 24);
        o.state = QStyle::State_Enabled;
        o.text = "Design";
        o.isContext = true;
        o.themeKey = key;
        return KTestSupport::paint(o.rect.size(), [&](QPainter& p) {
            m_style->drawComplexControl(KORBStyle::KCC_RbTabButton, &o, &p, nullptr);
        });
    };
    QCOMPARE(at(render("KRbTabContextButton-t"), 10, 1), QString("#00aa55"));
    QCOMPARE(at(render("KRbTabContextButton-unknown"), 10, 1), QString("#aa5500"));
}

NORVIK_TEST_MAIN(tst_KORBStyle2013)
#include "tst_korbstyle2013.moc"
