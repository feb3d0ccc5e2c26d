// The 2013 look of the ribbon's body: every part takes its colours from the theme, by class
// and item; checked by the colours that show up, not by pixel positions.
#include <ktestsupport.h>

#include <QStyleFactory>
#include <QTemporaryDir>

#include <kapptheme.h>
#include <korbstyle_2013.h>

namespace {

const QByteArray kTheme = R"(<t><style name='2013'/><theme>
<style class='KRbCategory'><color name='base' value='#fefefe'/><color name='border' value='#00ff00'/>
  <linearGradient name='background' spread='pad' start='0,0' end='0,1'><color position='0' value='#ff0000'/><color position='1' value='#ff0000'/></linearGradient></style>
<style class='KRbHScrollWidgetArrow'><color name='border' value='#00ffff'/>
  <linearGradient name='background' spread='pad' start='0,0' end='0,1'><color position='0' value='#ffff00'/><color position='1' value='#ffff00'/></linearGradient></style>
<style class='arrow'><color name='arrow-enable' value='#0000ff'/><color name='arrow-disable' value='#808080'/></style>
<style class='common'><color name='border' value='#ff00ff'/><color name='text' value='#010101'/></style>
<style class='KRbLayoutWidget'>
  <linearGradient name='background' spread='pad' start='0,0' end='0,1'><color position='0' value='#00ff80'/><color position='1' value='#00ff80'/></linearGradient></style>
<style class='KRbTabButton'><color name='border' value='#800000'/><color name='contextTabPen' value='#008000'/>
  <linearGradient name='background' spread='pad' start='0,0' end='0,1'><color position='0' value='#ffff80'/><color position='1' value='#ffff80'/></linearGradient></style>
<style class='KToolButton'><color name='border-hover' value='#4040c0'/><color name='border-down' value='#202060'/>
  <linearGradient name='background-hover' spread='pad' start='0,0' end='0,1'><color position='0' value='#c0c0ff'/><color position='1' value='#c0c0ff'/></linearGradient>
  <linearGradient name='background-down' spread='pad' start='0,0' end='0,1'><color position='0' value='#8080ff'/><color position='1' value='#8080ff'/></linearGradient></style>
</theme></t>)";

bool shows(const QImage& image, const QColor& color)
{
    return KTestSupport::anyPixel(image, [&](const QColor& c) { return c.rgb() == color.rgb(); });
}

} // namespace

class tst_KORBStyle2013Ribbon : public QObject
{
    Q_OBJECT
private Q_SLOTS:
    void initTestCase()
    {
        QVERIFY(m_dir.isValid());
        QVERIFY(KTestSupport::loadTheme(KTestSupport::writeFile(m_dir.filePath("theme.xml"), kTheme)));
    }
    void cleanupTestCase() { KApplication::instance()->theme()->resetXml(); }

    void colours_data();
    void colours();

private:
    QTemporaryDir m_dir;
};

void tst_KORBStyle2013Ribbon::colours_data()
{
    QTest::addColumn<QString>("part");
    QTest::addColumn<int>("state"); // QStyle::State bits added to enabled
    QTest::addColumn<QStringList>("present");
    QTest::addColumn<QStringList>("absent");

    QTest::newRow("category band and its lines") << "category" << 0 << QStringList{"#ff0000", "#00ff00"} << QStringList{};
    QTest::newRow("scroll arrow at rest") << "arrow" << 0 << QStringList{"#ffff00", "#00ffff", "#0000ff"}
                                          << QStringList{"#c0c0ff"};
    QTest::newRow("scroll arrow under the mouse") << "arrow" << int(QStyle::State_MouseOver)
                                                  << QStringList{"#c0c0ff", "#4040c0", "#0000ff"}
                                                  << QStringList{"#ffff00"};
    QTest::newRow("launcher at rest") << "launcher" << 0 << QStringList{"#0000ff"} << QStringList{"#4040c0"};
    QTest::newRow("launcher pressed") << "launcher" << int(QStyle::State_Sunken)
                                      << QStringList{"#8080ff", "#202060", "#0000ff"} << QStringList{};
    QTest::newRow("layout frame") << "layout" << 0 << QStringList{"#ff00ff", "#00ff80"} << QStringList{};
    QTest::newRow("layout without frame") << "layoutOnly" << 0 << QStringList{"#ffffff"}
                                          << QStringList{"#ff00ff", "#00ff80"};
    QTest::newRow("selected tab") << "tab" << 0 << QStringList{"#800000", "#ffff80", "#010101"}
                                  << QStringList{"#008000"};
    // A context tab's caption is in its family's colour, as its band.
    QTest::newRow("context tab at rest") << "contextTab" << 0 << QStringList{"#008000"}
                                         << QStringList{"#800000", "#ffff80", "#010101"};
    QTest::newRow("slide block") << "slide" << 0 << QStringList{"#123456", "#654321"} << QStringList{};
    QTest::newRow("logic group: flat, nothing") << "group" << 0 << QStringList{"#ffffff"}
                                                << QStringList{"#ff00ff", "#ff0000"};
}

void tst_KORBStyle2013Ribbon::colours()
{
    QFETCH(QString, part);
    QFETCH(int, state);
    QFETCH(QStringList, present);
    QFETCH(QStringList, absent);

    KORBStyle_2013 style(QStyleFactory::create("Fusion"));
    QWidget widget;
    widget.resize(80, 40);
    const QRect rect(0, 0, 80, 40);
    const QImage image = KTestSupport::paint(rect.size(), [&](QPainter& p) {
        const auto prepare = [&](QStyleOption& o) {
            o.initFrom(&widget);
            o.rect = rect;
            o.state |= QStyle::State(state) | QStyle::State_Enabled;
        };
        if (part == "category") {
            KStyleOptionRbCategory o;
            prepare(o);
            style.drawComplexControl(KORBStyle::KCC_RbCategory, &o, &p);
        } else if (part == "arrow") {
            KStyleOptionRbHScrollWidget o;
            prepare(o);
            o.arrowType = Qt::RightArrow;
            style.drawComplexControl(KORBStyle::KCC_RbHScrollWidget, &o, &p);
        } else if (part == "launcher") {
            KStyleOptionLogicGroupButton o;
            prepare(o);
            o.rect = QRect(0, 0, 12, 12);
            style.drawComplexControl(KORBStyle::KCC_LogicGroupButton, &o, &p);
        } else if (part == "layout" || part == "layoutOnly") {
            KStyleOptionRbLayoutWidget o;
            prepare(o);
            o.layoutOnly = part == "layoutOnly";
            style.drawComplexControl(KORBStyle::KCC_RbLayoutWidget, &o, &p);
        } else if (part == "tab" || part == "contextTab") {
            KStyleOptionKRbTabButton o;
            prepare(o);
            o.text = "Home";
            o.status = part == "tab" ? 1 : 0;
            o.isContext = part == "contextTab";
            style.drawComplexControl(KORBStyle::KCC_RbTabButton, &o, &p);
        } else if (part == "slide") {
            KStyleOptionRbSubTabBar o;
            prepare(o);
            o.slideRect = QRect(10, 5, 40, 30);
            o.slideColor = QColor("#123456");
            o.slideBorderColor = QColor("#654321");
            style.drawComplexControl(KORBStyle::KCC_RbSubTabBar, &o, &p);
        } else if (part == "group") {
            KStyleOptionRbLogicGroup o;
            prepare(o);
            style.drawComplexControl(KORBStyle::KCC_RbLogicGroup, &o, &p);
        }
    });
    for (const QString& c : present)
        QVERIFY2(shows(image, QColor(c)), qPrintable(c));
    for (const QString& c : absent)
        QVERIFY2(!shows(image, QColor(c)), qPrintable(c));
}

NORVIK_TEST_MAIN(tst_KORBStyle2013Ribbon)
#include "tst_korbstyle2013ribbon.moc"
