// The theme model: reading theme files, lookups along "base", relative colours and
// gradients, images, the base colour and its broadcast.
#include <ktestsupport.h>

#include <QImage>
#include <QLabel>
#include <QSignalSpy>
#include <QTemporaryDir>

#include <kappresourceloader.h>
#include <kapptheme.h>
#include <kdrawhelpfunc.h>
#include <korbstyle.h>
#include <korbstyle_2012.h>
#include <korbstyle_2013.h>
#include <ksettings.h>

namespace {

KAppTheme* theme()
{
    return KApplication::instance()->theme();
}

// A theme file in dir holding one class "k" with the given items.
QString writeClassK(const QTemporaryDir& dir, const QByteArray& items)
{
    return KTestSupport::writeFile(dir.filePath("k.xml"), "<r><theme><style class='k'>" + items + "</style></theme></r>");
}

/// Records the theme-change events a widget receives, in a shared order log.
class ThemeListener : public QWidget
{
public:
    ThemeListener(const QString& name, QStringList* log) : m_name(name), m_log(log) {}

protected:
    bool event(QEvent* e) override
    {
        if (int(e->type()) == int(KEvent::ThemeChange) && dynamic_cast<KThemeChangeEvent*>(e))
            m_log->append(m_name);
        if (e->type() == QEvent::UpdateRequest)
            m_log->append(m_name + QStringLiteral(":update"));
        return QWidget::event(e);
    }

private:
    QString m_name;
    QStringList* m_log;
};

} // namespace

class tst_KAppTheme : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init();
    void cleanup();
    void lookupsAndFallbacks();
    void colourValues_data();
    void colourValues();
    void relativeColoursFollowBase_data();
    void relativeColoursFollowBase();
    void gradients();
    void images();
    void mainXmlAndStyles_data();
    void mainXmlAndStyles();
    void importWarnings();
    void baseColourSettings();
    void themeChangeBroadcast();
    void writerThemeIsComplete();

private:
    QString dataFile(const char* name) const
    {
        return QStringLiteral(NORVIK_TEST_DATA_DIR "/") + QLatin1String(name);
    }
    QScopedPointer<QTemporaryDir> m_dir;
};

void tst_KAppTheme::init()
{
    m_dir.reset(new QTemporaryDir);
    theme()->resetXml();
    theme()->setBaseColor(QColor(), false);
}

void tst_KAppTheme::cleanup()
{
    theme()->resetXml();
    while (QWidget* w = KApplication::instance()->currentMainWindow())
        KApplication::instance()->removeMainWindow(w);
}

void tst_KAppTheme::lookupsAndFallbacks()
{
    KWarningCatcher warnings;
    KTestSupport::loadTheme(dataFile("test.theme.xml"));
    const QColor none(1, 2, 3), border = QColor::fromRgb(0x11, 0x22, 0x33, 0x44);
    const auto color = [&](const char* cls, const char* item) { return theme()->getColor(cls, item, none); };

    // The imported file's classes came first, so "child" could name "parent" as its base.
    QCOMPARE(color("child", "border"), border);
    QCOMPARE(color("child", "shared"), QColor(0, 0, 2)); // own item wins
    QCOMPARE(color("parent", "shared"), QColor(0, 0, 1));
    QCOMPARE(color("later", "border"), border); // through two links: later -> child -> parent
    // A base that is defined after its user is not linked.
    QCOMPARE(color("early", "own"), QColor(1, 1, 1));
    QCOMPARE(color("early", "deep"), none);
    // Misses give the default, with no message.
    QCOMPARE(color("child", "border-hover"), none); // no state fallback
    QCOMPARE(&theme()->getGradient("child", "nothing", KAppTheme::defaultGradient()), &KAppTheme::defaultGradient());
    // Elements before the first "style" are skipped; any element after it is a class.
    QVERIFY(!theme()->hasClass("notaclass"));
    QVERIFY(theme()->hasClass("later"));
    // Unknown child tags of a class are ignored: "rel" stays the relative colour.
    theme()->setBaseColor(QColor("#336699"), false);
    QVERIFY(color("child", "rel") != QColor(Qt::white));
    QCOMPARE(warnings.count(), 0);

    const QFont title = theme()->getFont("child", "title", QFont()); // inherited from "parent"
    QCOMPARE(title.family(), QStringLiteral("Serif"));
    QCOMPARE(title.pointSizeF(), 9.5);
    QVERIFY(title.bold());
    QVERIFY(!title.italic());

    // A later class of one name replaces the earlier in lookups; classes that were linked
    // to the earlier keep it as their base.
    KTestSupport::loadTheme(KTestSupport::writeFile(m_dir->filePath("replace.xml"),
        "<r><theme><style class='parent'><color name='shared' value='#000009'/></style></theme></r>"));
    QCOMPARE(color("parent", "shared"), QColor(0, 0, 9));
    QCOMPARE(color("parent", "border"), none);
    QCOMPARE(color("child", "border"), border);
}

void tst_KAppTheme::colourValues_data()
{
    QTest::addColumn<QByteArray>("attributes");
    QTest::addColumn<QColor>("expected");
    const auto row = [](const char* name, const char* attributes, const QColor& c) { QTest::newRow(name) << QByteArray(attributes) << c; };
    row("rgba", "value='#11223344'", QColor(0x11, 0x22, 0x33, 0x44));
    row("ds only reads value", "ds='20' value='#445566'", QColor(0x44, 0x55, 0x66));
    row("empty dv reads value", "ds='5' dv='' value='#010203'", QColor(1, 2, 3));
    // With base #336699.
    row("relative trans", "ds='0' dv='0' trans='128'", QColor(0x33, 0x66, 0x99, 128));
    row("relative ignores value", "ds='0' dv='0' value='#ffffff'", QColor(0x33, 0x66, 0x99));
}

void tst_KAppTheme::colourValues()
{
    QFETCH(QByteArray, attributes);
    QFETCH(QColor, expected);
    KTestSupport::loadTheme(writeClassK(*m_dir, "<color name='c' " + attributes + "/>"));
    theme()->setBaseColor(QColor("#336699"), false);
    QCOMPARE(theme()->getColor("k", "c", QColor()), expected);
}

void tst_KAppTheme::relativeColoursFollowBase_data()
{
    QTest::addColumn<QColor>("base");
    QTest::addColumn<int>("ds");
    QTest::addColumn<int>("dv");
    QTest::addColumn<int>("saturation");
    QTest::addColumn<int>("value");
    QTest::newRow("saturation clamps high") << QColor::fromHsv(100, 250, 100) << 20 << 0 << 255 << 100;
    // Value 0 is black, which has no saturation once handed out as RGB.
    QTest::newRow("value clamps low") << QColor::fromHsv(100, 100, 10) << 0 << -20 << 0 << 0;
}

void tst_KAppTheme::relativeColoursFollowBase()
{
    QFETCH(QColor, base);
    QFETCH(int, ds);
    QFETCH(int, dv);
    QFETCH(int, saturation);
    QFETCH(int, value);
    KTestSupport::loadTheme(writeClassK(*m_dir, QStringLiteral("<color name='c' ds='%1' dv='%2'/>").arg(ds).arg(dv).toUtf8()));
    // Without a base colour a relative colour has no value.
    QVERIFY(!theme()->getColor("k", "c", QColor(Qt::red)).isValid());

    theme()->setBaseColor(base, false);
    const QColor c = theme()->getColor("k", "c", QColor());
    QCOMPARE(c.hsvSaturation(), saturation);
    QCOMPARE(c.value(), value);
    if (saturation > 0)
        QVERIFY(qAbs(c.hsvHue() - base.hsvHue()) <= 2);

    // A new base re-tints at the next lookup.
    const QColor other = QColor::fromHsv((base.hsvHue() + 120) % 360, 180, 180);
    theme()->setBaseColor(other, false);
    QVERIFY(qAbs(theme()->getColor("k", "c", QColor()).hsvHue() - other.hsvHue()) <= 2);
}

void tst_KAppTheme::gradients()
{
    KTestSupport::loadTheme(dataFile("test.theme.xml"));
    theme()->setBaseColor(QColor::fromHsv(0, 100, 100), false);
    const auto gradient = [](const char* cls, const char* item) -> const QGradient& {
        return theme()->getGradient(cls, item, KAppTheme::defaultGradient());
    };
    const QGradient& lin = gradient("child", "lin");
    QCOMPARE(lin.type(), QGradient::LinearGradient);
    QCOMPARE(lin.spread(), QGradient::RepeatSpread);
    QCOMPARE(static_cast<const QLinearGradient&>(lin).finalStop(), QPointF(0, 1));
    // The <other> child is no stop; the fixed stop on position 0 wins over the relative one.
    const QGradientStops stops = lin.stops();
    QCOMPARE(stops.size(), 3);
    QCOMPARE(stops.at(0), QGradientStop(0.0, QColor(0, 255, 0)));
    QCOMPARE(stops.at(1).first, 0.5);
    QCOMPARE(stops.at(1).second.value(), 70);
    QCOMPARE(stops.at(1).second.alpha(), 200);

    // The same object is rewritten for a new base colour.
    theme()->setBaseColor(QColor::fromHsv(0, 100, 200), false);
    QCOMPARE(&gradient("child", "lin"), &lin);
    QCOMPARE(lin.stops().at(1).second.value(), 170);

    const auto& rad = static_cast<const QRadialGradient&>(gradient("later", "rad"));
    QCOMPARE(rad.type(), QGradient::RadialGradient);
    QCOMPARE(rad.focalPoint(), QPointF(0.25, 0.75));
    // An unknown spread keeps the default.
    QCOMPARE(gradient("child", "con").spread(), QGradient::PadSpread);
}

void tst_KAppTheme::images()
{
    QImage image(6, 4, QImage::Format_ARGB32);
    image.fill(Qt::blue);
    const QString abs = m_dir->filePath("img/bg.png"), gone = m_dir->filePath("none.png");
    QDir().mkpath(m_dir->filePath("img"));
    QVERIFY(image.save(abs));
    const QString rel = QDir(QCoreApplication::applicationDirPath()).relativeFilePath(abs);
    KTestSupport::loadTheme(writeClassK(*m_dir, QStringLiteral("<image name='abs' href='%1'/><image name='rel' href='%2'/>"
                                                               "<image name='gone' href='%3'/>").arg(abs, rel, gone).toUtf8()));
    QCOMPARE(theme()->getImage("k", "rel", QImage()).size(), QSize(6, 4)); // from the program's dir
    QCOMPARE(theme()->getImageHref("k", "rel", QString()), abs);
    // A missing file is a null image, not the default; its path is still known.
    QVERIFY(theme()->getImage("k", "gone", QImage(1, 1, QImage::Format_ARGB32)).isNull());
    QCOMPARE(theme()->getImageHref("k", "gone", QString()), gone);
}

void tst_KAppTheme::mainXmlAndStyles_data()
{
    QTest::addColumn<QByteArray>("mainBody");
    QTest::addColumn<QByteArray>("themeFile"); // written as t.xml beside the main file
    QTest::addColumn<bool>("result");
    QTest::addColumn<QString>("warning");
    QTest::addColumn<QString>("styleName");
    const auto row = [](const char* name, const char* body, const char* file, bool ok, const char* warning, const char* style) {
        QTest::newRow(name) << QByteArray(body) << QByteArray(file) << ok << QString(warning) << QString(style);
    };
    const char* const named = "<theme path='t.xml'/>";
    row("no theme", "", "", false, "", "");
    row("no path", "<theme/>", "", false, "need path attribute.", "");
    row("missing file", "<theme path='nofile.xml'/>", "", false, "KAppTheme: XML: file not exist:", "");
    row("no style", named, "<r><theme><style class='a'/></theme></r>", false, "KAppthem: must specify a style of theme.", "");
    row("style without name", named, "<r>\n<style/></r>", false, "KAppthem: style missing name attribute at: ", "");
    row("unknown name", named, "<r><style name='fancy'/></r>", true, "KAppthem: unknown style name.", "base");
    row("classics", named, "<r><style name='classics'/></r>", true, "", "rainbow");
    row("2013", named, "<r><style name='2013'/></r>", true, "", "2013");
}

void tst_KAppTheme::mainXmlAndStyles()
{
    QFETCH(QByteArray, mainBody);
    QFETCH(QByteArray, themeFile);
    QFETCH(bool, result);
    QFETCH(QString, warning);
    QFETCH(QString, styleName);
    if (!themeFile.isEmpty())
        KTestSupport::writeFile(m_dir->filePath("sub/t.xml"), themeFile);
    KDomDocument main;
    QVERIFY(main.setContent(KTestSupport::writeFile(m_dir->filePath("sub/main.xml"), "<ui>" + mainBody + "</ui>")));

    KWarningCatcher warnings;
    QCOMPARE(theme()->setupMainXml(main), result);
    if (warning.isEmpty())
        QCOMPARE(warnings.count(), 0);
    else
        QVERIFY2(warnings.contains(warning), qPrintable(warnings.messages().join('\n')));
    if (!styleName.isEmpty()) {
        auto* style = qobject_cast<KORBStyle*>(QApplication::style());
        QVERIFY(style);
        QCOMPARE(style->styleName(), styleName);
        // The frame wraps the plain style, never another frame.
        QVERIFY(!qobject_cast<KORBStyle*>(style->baseStyle()));
    }
}

void tst_KAppTheme::importWarnings()
{
    // A missing path and a missing file warn; the file that imports its importer is read once.
    KTestSupport::writeFile(m_dir->filePath("loop.xml"), "<r><import path='top.xml'/><theme><style class='loop'/></theme></r>");
    const QString top = KTestSupport::writeFile(m_dir->filePath("top.xml"),
        "<r><import/><import path='missing.xml'/><import path='loop.xml'/><theme><style class='top' base='loop'/></theme></r>");
    KWarningCatcher warnings;
    KTestSupport::loadTheme(top);
    QCOMPARE(warnings.matching("need path attribute.").size(), 1);
    const QStringList missing = warnings.matching("KAppTheme: XML: file not exist:");
    QCOMPARE(missing.size(), 1);
    QVERIFY(missing.first().contains("missing.xml"));
    QVERIFY(theme()->hasClass("loop"));
    QVERIFY(theme()->hasClass("top"));
}

void tst_KAppTheme::baseColourSettings()
{
    QTemporaryDir settingsDir;
    QSettings::setPath(QSettings::NativeFormat, QSettings::UserScope, settingsDir.path());
    KApplication* app = KApplication::instance();
    QCoreApplication::setOrganizationName("NorvikThemeOrg");
    app->setProductName("ThemeProduct");
    app->setProductVersion("7.1");
    app->setUiName("ribbon");
    KTestSupport::loadTheme(dataFile("test.theme.xml"));
    const QString key = QStringLiteral("7.1/%1/ribbon/Theme").arg(QCoreApplication::applicationName());

    theme()->setBaseColor(QColor("#204080"), true);
    QCOMPARE(QSettings("NorvikThemeOrg", "ThemeProduct").value(key).toString(), QStringLiteral("#204080"));
    theme()->setBaseColor(QColor(Qt::black), false); // not saved
    theme()->readBaseColor();
    QCOMPARE(theme()->getBaseColor(), QColor("#204080"));

    // A stored text that is no "#rrggbb" falls back to the theme's "theme1".
    KSettings().setValue(key, "#12345");
    theme()->readBaseColor();
    QCOMPARE(theme()->getBaseColor(), QColor("#336699"));
}

void tst_KAppTheme::themeChangeBroadcast()
{
    KTestSupport::loadTheme(dataFile("test.theme.xml"));
    KApplication* app = KApplication::instance();
    QStringList log;
    ThemeListener first("first", &log), second("second", &log), window("window", &log);
    auto* dead = new ThemeListener("dead", &log);
    app->addThemeChangeWidget(&first);
    app->addThemeChangeWidget(dead);
    app->addThemeChangeWidget(&second);
    delete dead;
    app->bringFrontMainWindow(&window);

    // Registered widgets in order, then the main window repaints; the palette's window colour
    // follows "common"/"window", relative to the new base.
    for (const QColor& base : {QColor::fromHsv(30, 120, 120), QColor::fromHsv(200, 120, 120)}) {
        log.clear();
        app->setThemeBaseColor(base, false);
        QCOMPARE(log, QStringList({"first", "second", "window:update"}));
        QCOMPARE(QApplication::palette().color(QPalette::Window), KColorItem::relativeColor(base, -20, 10, 255));
    }
}

void tst_KAppTheme::writerThemeIsComplete()
{
    // The demo theme defines every pair the drawing code asks for.
    KWarningCatcher warnings;
    QVERIFY(KTestSupport::loadTheme(QStringLiteral(NORVIK_TEST_DATA_DIR "/../../../examples/writer/ui/theme/writer.theme.xml")));
    QCOMPARE(warnings.count(), 0); // the Tango folders exist
    theme()->setBaseColor(KDrawHelpFunc::getColorFromTheme("theme", "theme1"), false);

    QFile list(dataFile("theme-vocabulary.txt"));
    QVERIFY(list.open(QIODevice::ReadOnly | QIODevice::Text));
    int pairs = 0;
    while (!list.atEnd()) {
        const QString line = QString::fromUtf8(list.readLine()).trimmed();
        if (line.isEmpty() || line.startsWith('#'))
            continue;
        const QStringList parts = line.split('|'); // class|kind|item
        QCOMPARE(parts.size(), 3);
        const QString &cls = parts.at(0), &kind = parts.at(1), &item = parts.at(2);
        const auto gradientFound = [&] {
            const QGradient& g = theme()->getGradient(cls, item, KAppTheme::defaultGradient());
            return &g != &KAppTheme::defaultGradient() && g.stops().size() >= 2;
        };
        const bool found = kind == "C"   ? theme()->getColor(cls, item, QColor()).isValid()
                           : kind == "G" ? gradientFound()
                           : kind == "I" ? !theme()->getImageHref(cls, item, QString()).isEmpty()
                           : kind == "F" ? theme()->getFont(cls, item, QFont("NoSuchDefault")).family() != "NoSuchDefault"
                                         : true;
        QVERIFY2(found, qPrintable(cls + " / " + item));
        ++pairs;
    }
    QVERIFY(pairs > 200);
    // Icons of the demo come from the Tango theme.
    QVERIFY(!KApplication::instance()->loadIcon("document-new").pixmap(QSize(16, 16)).isNull());
}

NORVIK_TEST_MAIN(tst_KAppTheme)
#include "tst_kapptheme.moc"
