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

void loadThemeFile(const QString& path)
{
    KDomDocument doc;
    if (!doc.setContent(path))
        qFatal("cannot parse %s", qPrintable(path));
    theme()->setupXml(doc);
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
    loadThemeFile(dataFile("test.theme.xml"));
    QCOMPARE(warnings.count(), 0);
    const QColor none(1, 2, 3);

    // The imported file's classes came first, so "child" could name "parent" as its base.
    QCOMPARE(theme()->getColor("child", "border", none), QColor::fromRgb(0x11, 0x22, 0x33, 0x44));
    QCOMPARE(theme()->getColor("child", "shared", none), QColor(0, 0, 2)); // own item wins
    QCOMPARE(theme()->getColor("parent", "shared", none), QColor(0, 0, 1));
    QCOMPARE(theme()->getFont("child", "title", QFont()).family(), QStringLiteral("Serif"));
    // Through two links: later -> child -> parent.
    QCOMPARE(theme()->getColor("later", "border", none), QColor::fromRgb(0x11, 0x22, 0x33, 0x44));
    // A base that is defined after its user is not linked.
    QCOMPARE(theme()->getColor("early", "own", none), QColor(1, 1, 1));
    QCOMPARE(theme()->getColor("early", "deep", none), none);
    // Misses give the default, with no message.
    QCOMPARE(theme()->getColor("nosuchclass", "border", none), none);
    QCOMPARE(theme()->getColor("child", "nosuchitem", none), none);
    QCOMPARE(theme()->getColor("child", "border-hover", none), none); // no state fallback
    QCOMPARE(theme()->getImage("child", "nothing", QImage()).isNull(), true);
    QCOMPARE(&theme()->getGradient("child", "nothing", KAppTheme::defaultGradient()),
             &KAppTheme::defaultGradient());
    // Elements before the first "style" are skipped; any element after it is a class.
    QVERIFY(!theme()->hasClass("notaclass"));
    QVERIFY(theme()->hasClass("later"));
    // Unknown child tags of a class are ignored: "rel" stays the relative colour.
    theme()->setBaseColor(QColor("#336699"), false);
    QVERIFY(theme()->getColor("child", "rel", none) != QColor(Qt::white));
    QCOMPARE(warnings.count(), 0);

    const QFont title = theme()->getFont("parent", "title", QFont());
    QCOMPARE(title.pointSizeF(), 9.5);
    QVERIFY(title.bold());
    QVERIFY(!title.italic());
    const QFont plain = theme()->getFont("child", "plain", QFont());
    QCOMPARE(plain.family(), QStringLiteral("Sans"));
    QVERIFY(!plain.bold());

    // A later class of one name replaces the earlier in lookups; classes that were linked
    // to the earlier keep it as their base.
    const QString replace = KTestSupport::writeFile(m_dir->filePath("replace.xml"),
        "<r><theme><style class='parent'><color name='shared' value='#000009'/></style></theme></r>");
    loadThemeFile(replace);
    QCOMPARE(theme()->getColor("parent", "shared", none), QColor(0, 0, 9));
    QCOMPARE(theme()->getColor("parent", "border", none), none);
    QCOMPARE(theme()->getColor("child", "border", none), QColor::fromRgb(0x11, 0x22, 0x33, 0x44));

    KDrawHelpFunc::getColorFromTheme("child", "shared"); // the helper reaches the same model
    QCOMPARE(KDrawHelpFunc::getColorFromTheme("child", "shared"), QColor(0, 0, 2));
    QVERIFY(!KDrawHelpFunc::getColorFromTheme("nosuchclass", "x").isValid());
}

void tst_KAppTheme::colourValues_data()
{
    QTest::addColumn<QByteArray>("element");
    QTest::addColumn<QColor>("expected");
    QTest::newRow("rgb") << QByteArray("<color name='c' value='#112233'/>") << QColor(0x11, 0x22, 0x33, 255);
    QTest::newRow("rgba") << QByteArray("<color name='c' value='#11223344'/>") << QColor(0x11, 0x22, 0x33, 0x44);
    QTest::newRow("name") << QByteArray("<color name='c' value='red'/>") << QColor(255, 0, 0);
    QTest::newRow("ds only reads value") << QByteArray("<color name='c' ds='20' value='#445566'/>")
                                         << QColor(0x44, 0x55, 0x66);
    QTest::newRow("empty dv reads value") << QByteArray("<color name='c' ds='5' dv='' value='#010203'/>")
                                          << QColor(1, 2, 3);
    // With base #336699 (h 210, s 170, v 153).
    QTest::newRow("relative") << QByteArray("<color name='c' ds='0' dv='0'/>") << QColor(0x33, 0x66, 0x99);
    QTest::newRow("relative trans") << QByteArray("<color name='c' ds='0' dv='0' trans='128'/>")
                                    << QColor(0x33, 0x66, 0x99, 128);
    QTest::newRow("relative ignores value") << QByteArray("<color name='c' ds='0' dv='0' value='#ffffff'/>")
                                            << QColor(0x33, 0x66, 0x99);
}

void tst_KAppTheme::colourValues()
{
    QFETCH(QByteArray, element);
    QFETCH(QColor, expected);
    loadThemeFile(KTestSupport::writeFile(m_dir->filePath("c.xml"),
                                          "<r><theme><style class='k'>" + element + "</style></theme></r>"));
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
    QTest::newRow("plain") << QColor::fromHsv(100, 100, 100) << 20 << -20 << 120 << 80;
    QTest::newRow("saturation clamps high") << QColor::fromHsv(100, 250, 100) << 20 << 0 << 255 << 100;
    // Value 0 is black, which has no saturation once handed out as RGB.
    QTest::newRow("value clamps low") << QColor::fromHsv(100, 100, 10) << 0 << -20 << 0 << 0;
    QTest::newRow("both clamp") << QColor::fromHsv(200, 5, 250) << -20 << 40 << 0 << 255;
}

void tst_KAppTheme::relativeColoursFollowBase()
{
    QFETCH(QColor, base);
    QFETCH(int, ds);
    QFETCH(int, dv);
    QFETCH(int, saturation);
    QFETCH(int, value);
    loadThemeFile(KTestSupport::writeFile(
        m_dir->filePath("r.xml"),
        QStringLiteral("<r><theme><style class='k'><color name='c' ds='%1' dv='%2'/></style></theme></r>")
            .arg(ds).arg(dv).toUtf8()));
    // Without a base colour a relative colour has no value.
    QVERIFY(!theme()->getColor("k", "c", QColor(Qt::red)).isValid());

    theme()->setBaseColor(base, false);
    const QColor c = theme()->getColor("k", "c", QColor());
    QCOMPARE(c.spec(), QColor::Rgb);
    QCOMPARE(c.hsvSaturation(), saturation);
    QCOMPARE(c.value(), value);
    if (saturation > 0)
        QVERIFY(qAbs(c.hsvHue() - base.hsvHue()) <= 2);

    // A new base re-tints at the next lookup.
    const QColor other = QColor::fromHsv((base.hsvHue() + 120) % 360, 180, 180);
    theme()->setBaseColor(other, false);
    const QColor retinted = theme()->getColor("k", "c", QColor());
    QVERIFY(retinted != c);
    QVERIFY(qAbs(retinted.hsvHue() - other.hsvHue()) <= 2);
}

void tst_KAppTheme::gradients()
{
    loadThemeFile(dataFile("test.theme.xml"));
    theme()->setBaseColor(QColor::fromHsv(0, 100, 100), false);

    const QGradient& lin = theme()->getGradient("child", "lin", KAppTheme::defaultGradient());
    QCOMPARE(lin.type(), QGradient::LinearGradient);
    QCOMPARE(lin.spread(), QGradient::RepeatSpread);
    QCOMPARE(lin.coordinateMode(), QGradient::ObjectBoundingMode);
    QCOMPARE(static_cast<const QLinearGradient&>(lin).finalStop(), QPointF(0, 1));
    QGradientStops stops = lin.stops();
    QCOMPARE(stops.size(), 3); // the <other> child is no stop
    // The fixed stop on position 0 wins over the relative one there.
    QCOMPARE(stops.at(0).first, 0.0);
    QCOMPARE(stops.at(0).second, QColor(0, 255, 0));
    QCOMPARE(stops.at(1).first, 0.5);
    QCOMPARE(stops.at(1).second.value(), 70);
    QCOMPARE(stops.at(1).second.alpha(), 200);
    QCOMPARE(stops.at(2).second, QColor(255, 0, 0));

    // The same object is rewritten for a new base colour.
    theme()->setBaseColor(QColor::fromHsv(0, 100, 200), false);
    const QGradient& again = theme()->getGradient("child", "lin", KAppTheme::defaultGradient());
    QCOMPARE(&again, &lin);
    QCOMPARE(again.stops().at(1).second.value(), 170);

    const QGradient& rad = theme()->getGradient("later", "rad", KAppTheme::defaultGradient());
    QCOMPARE(rad.type(), QGradient::RadialGradient);
    QCOMPARE(rad.spread(), QGradient::ReflectSpread);
    QCOMPARE(static_cast<const QRadialGradient&>(rad).focalPoint(), QPointF(0.25, 0.75));
    QCOMPARE(static_cast<const QRadialGradient&>(rad).radius(), 0.5);
    const QGradient& con = theme()->getGradient("child", "con", KAppTheme::defaultGradient());
    QCOMPARE(con.type(), QGradient::ConicalGradient);
    QCOMPARE(con.spread(), QGradient::PadSpread); // an unknown spread keeps the default
    QCOMPARE(static_cast<const QConicalGradient&>(con).angle(), 90.0);
    QCOMPARE(static_cast<const QConicalGradient&>(con).center(), QPointF(0.5, 0.25));
}

void tst_KAppTheme::images()
{
    QImage image(6, 4, QImage::Format_ARGB32);
    image.fill(Qt::blue);
    const QString abs = m_dir->filePath("img/bg.png");
    QDir().mkpath(m_dir->filePath("img"));
    QVERIFY(image.save(abs));
    const QString rel = QDir(QCoreApplication::applicationDirPath()).relativeFilePath(abs);
    loadThemeFile(KTestSupport::writeFile(m_dir->filePath("i.xml"),
        QStringLiteral("<r><theme><style class='k'><image name='abs' href='%1'/>"
                       "<image name='rel' href='%2'/><image name='gone' href='%3'/></style></theme></r>")
            .arg(abs, rel, m_dir->filePath("none.png")).toUtf8()));
    QCOMPARE(theme()->getImage("k", "abs", QImage()).size(), QSize(6, 4));
    QCOMPARE(theme()->getImage("k", "rel", QImage()).size(), QSize(6, 4)); // from the program's dir
    QCOMPARE(theme()->getImageHref("k", "rel", QString()), abs);
    QVERIFY(theme()->getImage("k", "gone", QImage(1, 1, QImage::Format_ARGB32)).isNull());
    QCOMPARE(theme()->getImageHref("k", "gone", QString()), m_dir->filePath("none.png"));
    QCOMPARE(KDrawHelpFunc::getImageFromTheme("k", "abs").pixelColor(0, 0), QColor(Qt::blue));
}

void tst_KAppTheme::mainXmlAndStyles_data()
{
    QTest::addColumn<QByteArray>("mainBody");
    QTest::addColumn<QByteArray>("themeFile");
    QTest::addColumn<bool>("result");
    QTest::addColumn<QString>("warning");
    QTest::addColumn<QString>("styleName");
    QTest::newRow("no theme") << QByteArray("") << QByteArray() << false << QString() << QString();
    QTest::newRow("no path") << QByteArray("<theme/>") << QByteArray() << false
                             << "need path attribute." << QString();
    QTest::newRow("missing file") << QByteArray("<theme path='nofile.xml'/>") << QByteArray() << false
                                  << "KAppTheme: XML: file not exist:" << QString();
    QTest::newRow("no style") << QByteArray("<theme path='t.xml'/>")
                              << QByteArray("<r><theme><style class='a'/></theme></r>") << false
                              << "KAppthem: must specify a style of theme." << QString();
    QTest::newRow("style without name") << QByteArray("<theme path='t.xml'/>")
                                        << QByteArray("<r>\n<style/></r>") << false
                                        << "KAppthem: style missing name attribute at: " << QString();
    QTest::newRow("unknown name") << QByteArray("<theme path='t.xml'/>")
                                  << QByteArray("<r><style name='fancy'/></r>") << true
                                  << "KAppthem: unknown style name." << "base";
    QTest::newRow("rainbow") << QByteArray("<theme path='t.xml'/>")
                             << QByteArray("<r><style name='rainbow'/></r>") << true << QString() << "rainbow";
    QTest::newRow("classics") << QByteArray("<theme path='t.xml'/>")
                              << QByteArray("<r><style name='classics'/></r>") << true << QString() << "rainbow";
    QTest::newRow("2013") << QByteArray("<theme path='t.xml'/>")
                          << QByteArray("<r><style name='2013'/></r>") << true << QString() << "2013";
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
    const QString mainPath = KTestSupport::writeFile(m_dir->filePath("sub/main.xml"), "<ui>" + mainBody + "</ui>");
    KDomDocument main;
    QVERIFY(main.setContent(mainPath));

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
        // The "kstyle" filter of descriptions reads the same name.
        const QString filtered = KTestSupport::writeFile(m_dir->filePath("f.xml"),
            QStringLiteral("<r><a filter='kstyle=%1'/></r>").arg(styleName).toUtf8());
        KDomDocument doc;
        QVERIFY(doc.setContent(filtered));
        QVERIFY(!doc.documentElement().firstChildElement("a").isNull());
    }
}

void tst_KAppTheme::importWarnings()
{
    KTestSupport::writeFile(m_dir->filePath("loop.xml"),
        "<r><import path='top.xml'/><theme><style class='loop'/></theme></r>");
    const QString top = KTestSupport::writeFile(m_dir->filePath("top.xml"),
        "<r><import/><import path='missing.xml'/><import path='loop.xml'/>"
        "<theme><style class='top' base='loop'/></theme></r>");
    KWarningCatcher warnings;
    loadThemeFile(top);
    QCOMPARE(warnings.matching("need path attribute.").size(), 1);
    QCOMPARE(warnings.matching("KAppTheme: XML: file not exist:").size(), 1);
    QVERIFY(warnings.contains("missing.xml"));
    // The file that imports its importer is read once; the cycle ends with a warning.
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
    loadThemeFile(dataFile("test.theme.xml"));

    theme()->setBaseColor(QColor("#204080"), true);
    {
        QSettings stored(QSettings::NativeFormat, QSettings::UserScope, "NorvikThemeOrg", "ThemeProduct");
        QCOMPARE(stored.value(QStringLiteral("7.1/%1/ribbon/Theme").arg(QCoreApplication::applicationName()))
                     .toString(),
                 QStringLiteral("#204080"));
    }
    theme()->setBaseColor(QColor(Qt::black), false); // not saved
    theme()->readBaseColor();
    QCOMPARE(theme()->getBaseColor(), QColor("#204080"));

    // A stored text that is no "#rrggbb" falls back to the theme's "theme1".
    {
        KSettings settings;
        settings.setValue(QStringLiteral("7.1/%1/ribbon/Theme").arg(QCoreApplication::applicationName()),
                          "#12345");
    }
    theme()->readBaseColor();
    QCOMPARE(theme()->getBaseColor(), QColor("#336699"));
    QCOMPARE(KDrawHelpFunc::getBaseColor(), QColor("#336699"));
    int ds = 0, dv = 0;
    KDrawHelpFunc::getDsDvByColor(KDrawHelpFunc::getColorByDsDv(-30, 20), ds, dv);
    QCOMPARE(ds, -30);
    QCOMPARE(dv, 20);
}

void tst_KAppTheme::themeChangeBroadcast()
{
    loadThemeFile(dataFile("test.theme.xml"));
    KApplication* app = KApplication::instance();
    QStringList log;
    ThemeListener first("first", &log);
    ThemeListener second("second", &log);
    auto* dead = new ThemeListener("dead", &log);
    ThemeListener window("window", &log);
    app->addThemeChangeWidget(&first);
    app->addThemeChangeWidget(dead);
    app->addThemeChangeWidget(&second);
    delete dead;
    app->bringFrontMainWindow(&window);

    const QColor base = QColor::fromHsv(30, 120, 120);
    app->setThemeBaseColor(base, false);
    QCOMPARE(theme()->getBaseColor(), base);
    QCOMPARE(log, QStringList({"first", "second", "window:update"}));
    // The palette's window colour follows "common"/"window", relative to the new base.
    const QColor window1 = QApplication::palette().color(QPalette::Window);
    QCOMPARE(window1, KColorItem::relativeColor(base, -20, 10, 255));

    log.clear();
    app->setThemeBaseColor(QColor::fromHsv(200, 120, 120), false);
    QCOMPARE(log, QStringList({"first", "second", "window:update"}));
    QVERIFY(QApplication::palette().color(QPalette::Window) != window1);
}

void tst_KAppTheme::writerThemeIsComplete()
{
    // The demo theme defines every pair the drawing code asks for.
    const QString path = QStringLiteral(NORVIK_TEST_DATA_DIR "/../../../examples/writer/ui/theme/writer.theme.xml");
    QVERIFY(QFile::exists(path));
    KWarningCatcher warnings;
    KDomDocument doc;
    QVERIFY(doc.setContent(path));
    QVERIFY(theme()->setupXml(doc));
    QCOMPARE(warnings.count(), 0); // the Tango folders exist
    QVERIFY(!theme()->resLoader()->iconDirs().isEmpty());
    theme()->setBaseColor(KDrawHelpFunc::getColorFromTheme("theme", "theme1"), false);
    QVERIFY(theme()->getBaseColor().isValid());

    QFile list(dataFile("theme-vocabulary.txt"));
    QVERIFY(list.open(QIODevice::ReadOnly | QIODevice::Text));
    int pairs = 0;
    while (!list.atEnd()) {
        const QString line = QString::fromUtf8(list.readLine()).trimmed();
        if (line.isEmpty() || line.startsWith('#'))
            continue;
        const QStringList parts = line.split('|');
        QCOMPARE(parts.size(), 3);
        const QString& cls = parts.at(0);
        const QString& item = parts.at(2);
        const QByteArray where = (cls + " / " + item).toUtf8();
        if (parts.at(1) == "C") {
            QVERIFY2(theme()->getColor(cls, item, QColor()).isValid(), where.constData());
        } else if (parts.at(1) == "G") {
            const QGradient& g = theme()->getGradient(cls, item, KAppTheme::defaultGradient());
            QVERIFY2(&g != &KAppTheme::defaultGradient() && g.stops().size() >= 2, where.constData());
        } else if (parts.at(1) == "I") {
            QVERIFY2(!theme()->getImageHref(cls, item, QString()).isEmpty(), where.constData());
        } else if (parts.at(1) == "F") {
            QVERIFY2(theme()->getFont(cls, item, QFont("NoSuchDefault")).family() != "NoSuchDefault",
                     where.constData());
        }
        ++pairs;
    }
    QVERIFY(pairs > 200);
    // Icons of the demo come from the Tango theme.
    QVERIFY(!KApplication::instance()->loadIcon("document-new").pixmap(QSize(16, 16)).isNull());
}

NORVIK_TEST_MAIN(tst_KAppTheme)
#include "tst_kapptheme.moc"
