// Libraries, icons and translators: the services that turn sections of the description into
// loaded things.
#include <ktestsupport.h>

#include <QImage>
#include <QLibrary>
#include <QLibraryInfo>
#include <QPainter>
#include <QTemporaryDir>

#include <kapplibraries.h>
#include <kappresourceloader.h>
#include <kapptheme.h>
#include <kapptranslators.h>

namespace {

KApplication* app()
{
    return KApplication::instance();
}

KDomDocument loadDoc(const QString& path)
{
    KDomDocument doc;
    if (!doc.setContent(path))
        qFatal("cannot parse %s", qPrintable(path));
    return doc;
}

void writePng(const QString& path, int side, QColor color)
{
    QImage image(side, side, QImage::Format_ARGB32);
    image.fill(color);
    QDir().mkpath(QFileInfo(path).absolutePath());
    if (!image.save(path, "PNG"))
        qFatal("cannot write %s", qPrintable(path));
}

bool sizeLess(const QSize& a, const QSize& b)
{
    return a.width() < b.width();
}

} // namespace

class tst_KAppResources : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void cleanup();
    void libraries();
    void iconFoldersAndWarnings();
    void iconsLoadLazilyAndOnce();
    void iconNames();
    void resetLeavesIconsUsable();
    void translatorsWithoutLanguage();

private:
    QString writeResourceTheme(const QTemporaryDir& dir, const QStringList& folders);
};

void tst_KAppResources::cleanup()
{
    app()->theme()->resetXml();
    app()->libraries()->resetXml();
}

QString tst_KAppResources::writeResourceTheme(const QTemporaryDir& dir, const QStringList& folders)
{
    QByteArray xml = "<themefile><resource><other/><icon>";
    for (const QString& f : folders)
        xml += "<path path=\"" + f.toUtf8() + "\"/>";
    xml += "</icon></resource></themefile>";
    return KTestSupport::writeFile(dir.filePath(QStringLiteral("res.xml")), xml);
}

void tst_KAppResources::libraries()
{
    QTemporaryDir dir;
    const QString qtLibs = QLibraryInfo::path(QLibraryInfo::LibrariesPath);
    const QString xml = QStringLiteral(
        "<ui><libraries>"
        "<library name=\"Qt6Xml\" path=\"%1\"/>"
        "<library name=\"Qt6Xml\" path=\"/nowhere\"/>"
        "<library name=\"norvik_no_such_lib\"/>"
        "</libraries></ui>").arg(qtLibs);
    const QString path = KTestSupport::writeFile(dir.filePath(QStringLiteral("ui.xml")), xml.toUtf8());

    KAppLibraries* libraries = app()->libraries();
    QVERIFY(libraries);
    KWarningCatcher catcher;
    QVERIFY(libraries->setupXml(loadDoc(path)));

    QCOMPARE(libraries->count(), 1);
    QLibrary* lib = libraries->item(QStringLiteral("Qt6Xml"));
    QVERIFY(lib);
    QVERIFY(lib->isLoaded());
    QCOMPARE(lib->fileName().startsWith(qtLibs), true);
    QVERIFY(!libraries->item(QStringLiteral("norvik_no_such_lib")));

    // The second entry of one name is refused whatever its path says.
    QCOMPARE(catcher.matching(QStringLiteral("is already loaded.")).size(), 1);
    QVERIFY(catcher.contains(QStringLiteral("Qt6Xml")));
    // Without a path the library is looked for beside the program.
    const QStringList failed = catcher.matching(QStringLiteral("Can't load library:"));
    QCOMPARE(failed.size(), 1);
    QVERIFY(failed.first().contains(QCoreApplication::applicationDirPath() + QStringLiteral("/./norvik_no_such_lib"))
            || failed.first().contains(QCoreApplication::applicationDirPath() + QStringLiteral("/norvik_no_such_lib")));

    // A document without a libraries section changes nothing.
    const QString empty = KTestSupport::writeFile(dir.filePath(QStringLiteral("empty.xml")), "<ui/>");
    QVERIFY(libraries->setupXml(loadDoc(empty)));
    QCOMPARE(libraries->count(), 1);

    libraries->resetXml();
    QCOMPARE(libraries->count(), 0);
    QVERIFY(!libraries->item(QStringLiteral("Qt6Xml")));
}

void tst_KAppResources::iconFoldersAndWarnings()
{
    QTemporaryDir dir;
    QDir(dir.path()).mkpath(QStringLiteral("a"));
    QDir(dir.path()).mkpath(QStringLiteral("b"));
    const QString themePath = writeResourceTheme(dir, {dir.filePath(QStringLiteral("a")),
                                                        dir.filePath(QStringLiteral("missing")),
                                                        dir.filePath(QStringLiteral("b"))});
    KWarningCatcher catcher;
    QVERIFY(app()->theme()->setupXml(loadDoc(themePath)));
    const QStringList warnings = catcher.matching(QStringLiteral("Resource Loader: Dir"));
    QCOMPARE(warnings.size(), 1);
    QVERIFY(warnings.first().contains(dir.filePath(QStringLiteral("missing"))));
    QVERIFY(warnings.first().contains(QStringLiteral("is not exist")));
    QCOMPARE(app()->theme()->resLoader()->iconDirs(),
             QStringList({dir.filePath(QStringLiteral("a")), dir.filePath(QStringLiteral("b"))}));
}

void tst_KAppResources::iconsLoadLazilyAndOnce()
{
    QTemporaryDir dir;
    const QString small = dir.filePath(QStringLiteral("16"));
    const QString large = dir.filePath(QStringLiteral("32"));
    QDir().mkpath(small);
    QDir().mkpath(large);
    QVERIFY(app()->theme()->setupXml(loadDoc(writeResourceTheme(dir, {small, large}))));

    // The icons are handed out before their files exist: had loadIcon looked at the folders,
    // these icons would come out empty.
    QIcon first = app()->loadIcon(QStringLiteral("doc-new"));
    const QIcon neverShown = app()->loadIcon(QStringLiteral("never-shown"));
    QVERIFY(!first.isNull());
    writePng(small + QStringLiteral("/doc-new.png"), 16, Qt::red);
    writePng(large + QStringLiteral("/doc-new.png"), 32, Qt::blue);
    writePng(small + QStringLiteral("/never-shown.png"), 16, Qt::green);

    // Both folders contribute their size to one icon.
    QList<QSize> sizes = first.availableSizes();
    std::sort(sizes.begin(), sizes.end(), sizeLess);
    QCOMPARE(sizes, QList<QSize>({QSize(16, 16), QSize(32, 32)}));
    QCOMPARE(first.pixmap(QSize(16, 16)).toImage().pixelColor(8, 8), QColor(Qt::red));
    QCOMPARE(first.pixmap(QSize(32, 32)).toImage().pixelColor(8, 8), QColor(Qt::blue));

    // Every lookup of a name shares the one icon, and it is read once: with its files gone
    // a later lookup still paints the loaded images.
    const QIcon again = app()->loadIcon(QStringLiteral("doc-new"));
    QCOMPARE(again.cacheKey(), first.cacheKey());
    QVERIFY(QFile::remove(small + QStringLiteral("/doc-new.png")));
    QVERIFY(QFile::remove(large + QStringLiteral("/doc-new.png")));
    QImage canvas(16, 16, QImage::Format_ARGB32);
    canvas.fill(Qt::white);
    {
        QPainter p(&canvas);
        again.paint(&p, canvas.rect());
    }
    QCOMPARE(canvas.pixelColor(8, 8), QColor(Qt::red));

    // An icon of a file that exists nowhere is null once it was looked for.
    const QIcon ghost = app()->loadIcon(QStringLiteral("no-such-icon"));
    QVERIFY(ghost.pixmap(QSize(16, 16)).isNull());
    QVERIFY(ghost.isNull());
    QVERIFY(ghost.availableSizes().isEmpty());
    Q_UNUSED(neverShown);
}

void tst_KAppResources::iconNames()
{
    const QIcon icon = app()->loadIcon(QStringLiteral("x"));
    QCOMPARE(app()->iconName(icon), QStringLiteral("x"));
    QCOMPARE(icon.name(), QStringLiteral("x"));
    QCOMPARE(app()->iconName(app()->loadIcon(QStringLiteral("y"))), QStringLiteral("y"));
    QPixmap foreignPixmap(4, 4);
    foreignPixmap.fill(Qt::black);
    QCOMPARE(app()->iconName(QIcon(foreignPixmap)), QString());
    QCOMPARE(app()->iconName(QIcon()), QString());
}

void tst_KAppResources::resetLeavesIconsUsable()
{
    QTemporaryDir dir;
    const QString folder = dir.filePath(QStringLiteral("icons"));
    writePng(folder + QStringLiteral("/shown.png"), 16, Qt::red);
    writePng(folder + QStringLiteral("/late.png"), 16, Qt::red);
    QVERIFY(app()->theme()->setupXml(loadDoc(writeResourceTheme(dir, {folder}))));

    const QIcon shown = app()->loadIcon(QStringLiteral("shown"));
    const QIcon late = app()->loadIcon(QStringLiteral("late"));
    QVERIFY(!shown.pixmap(QSize(16, 16)).isNull());

    app()->theme()->resetXml();
    QVERIFY(app()->theme()->resLoader()->iconDirs().isEmpty());
    // A loaded icon keeps its images; one not loaded yet now finds no folder.
    QVERIFY(!shown.pixmap(QSize(16, 16)).isNull());
    QVERIFY(late.pixmap(QSize(16, 16)).isNull());
    // The cache is gone too: the name gives a new icon.
    QVERIFY(app()->loadIcon(QStringLiteral("shown")).cacheKey() != shown.cacheKey());
}

void tst_KAppResources::translatorsWithoutLanguage()
{
    // The test host keeps the base currentLanguage() of -1: the folder "-1" holds nothing.
    QCOMPARE(app()->currentLanguage(), -1);
    QVERIFY(app()->setupTranslator());
    QCOMPARE(app()->translator()->count(), 0);
    app()->translator()->reset();
    QCOMPARE(app()->translator()->count(), 0);
}

NORVIK_TEST_MAIN(tst_KAppResources)
#include "tst_kappresources.moc"
