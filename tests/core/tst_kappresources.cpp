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

// A theme file in dir whose resource section lists the icon folders; read into the theme.
bool loadIconFolders(const QTemporaryDir& dir, const QStringList& folders)
{
    QByteArray xml = "<themefile><resource><other/><icon>";
    for (const QString& f : folders)
        xml += "<path path=\"" + f.toUtf8() + "\"/>";
    return KTestSupport::loadTheme(KTestSupport::writeFile(dir.filePath("res.xml"), xml + "</icon></resource></themefile>"));
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
    void resetLeavesIconsUsable();
};

void tst_KAppResources::cleanup()
{
    app()->theme()->resetXml();
    app()->libraries()->resetXml();
}

void tst_KAppResources::libraries()
{
    QTemporaryDir dir;
    const QString qtLibs = QLibraryInfo::path(QLibraryInfo::LibrariesPath);
    const QString path = KTestSupport::writeFile(dir.filePath("ui.xml"), QStringLiteral(
        "<ui><libraries><library name=\"Qt6Xml\" path=\"%1\"/><library name=\"Qt6Xml\" path=\"/nowhere\"/>"
        "<library name=\"norvik_no_such_lib\"/></libraries></ui>").arg(qtLibs).toUtf8());
    KAppLibraries* libraries = app()->libraries();
    KWarningCatcher catcher;
    QVERIFY(libraries->setupXml(loadDoc(path)));
    QCOMPARE(libraries->count(), 1);
    QLibrary* lib = libraries->item(QStringLiteral("Qt6Xml"));
    QVERIFY(lib);
    QVERIFY(lib->isLoaded());
    QVERIFY(lib->fileName().startsWith(qtLibs));

    // The second entry of one name is refused whatever its path says; without a path the
    // library is looked for beside the program.
    const QStringList twice = catcher.matching(QStringLiteral("is already loaded."));
    QCOMPARE(twice.size(), 1);
    QVERIFY(twice.first().contains(QStringLiteral("Qt6Xml")));
    const QStringList failed = catcher.matching(QStringLiteral("Can't load library:"));
    QCOMPARE(failed.size(), 1);
    QVERIFY(QDir::cleanPath(failed.first()).contains(QCoreApplication::applicationDirPath() + "/norvik_no_such_lib"));

    libraries->resetXml();
    QCOMPARE(libraries->count(), 0);
    QVERIFY(!libraries->item(QStringLiteral("Qt6Xml")));
}

void tst_KAppResources::iconFoldersAndWarnings()
{
    QTemporaryDir dir;
    QDir(dir.path()).mkpath("a");
    QDir(dir.path()).mkpath("b");
    KWarningCatcher catcher;
    QVERIFY(loadIconFolders(dir, {dir.filePath("a"), dir.filePath("missing"), dir.filePath("b")}));
    const QStringList warnings = catcher.matching(QStringLiteral("Resource Loader: Dir"));
    QCOMPARE(warnings.size(), 1);
    QVERIFY(warnings.first().contains(dir.filePath("missing")));
    QVERIFY(warnings.first().contains("is not exist"));
    QCOMPARE(app()->theme()->resLoader()->iconDirs(), QStringList({dir.filePath("a"), dir.filePath("b")}));
}

void tst_KAppResources::iconsLoadLazilyAndOnce()
{
    QTemporaryDir dir;
    const QString small = dir.filePath("16"), large = dir.filePath("32");
    QDir().mkpath(small);
    QDir().mkpath(large);
    QVERIFY(loadIconFolders(dir, {small, large}));

    // The icon is handed out before its files exist: had loadIcon looked at the folders, it
    // would come out empty.
    const QIcon first = app()->loadIcon(QStringLiteral("doc-new"));
    QVERIFY(!first.isNull());
    writePng(small + "/doc-new.png", 16, Qt::red);
    writePng(large + "/doc-new.png", 32, Qt::blue);

    // Both folders contribute their size to one icon.
    QList<QSize> sizes = first.availableSizes();
    std::sort(sizes.begin(), sizes.end(), [](const QSize& a, const QSize& b) { return a.width() < b.width(); });
    QCOMPARE(sizes, QList<QSize>({QSize(16, 16), QSize(32, 32)}));
    QCOMPARE(first.pixmap(QSize(32, 32)).toImage().pixelColor(8, 8), QColor(Qt::blue));

    // Every lookup of a name shares the one icon, and it is read once: with its files gone
    // a later lookup still paints the loaded images.
    const QIcon again = app()->loadIcon(QStringLiteral("doc-new"));
    QCOMPARE(again.cacheKey(), first.cacheKey());
    QVERIFY(QFile::remove(small + "/doc-new.png"));
    QVERIFY(QFile::remove(large + "/doc-new.png"));
    const QImage canvas = KTestSupport::paint(QSize(16, 16), [&](QPainter& p) { again.paint(&p, QRect(0, 0, 16, 16)); });
    QCOMPARE(canvas.pixelColor(8, 8), QColor(Qt::red));

    // An icon of a file that exists nowhere is null once it was looked for.
    const QIcon ghost = app()->loadIcon(QStringLiteral("no-such-icon"));
    QVERIFY(ghost.pixmap(QSize(16, 16)).isNull());
    QVERIFY(ghost.isNull());
}

void tst_KAppResources::resetLeavesIconsUsable()
{
    QTemporaryDir dir;
    const QString folder = dir.filePath("icons");
    writePng(folder + "/shown.png", 16, Qt::red);
    writePng(folder + "/late.png", 16, Qt::red);
    QVERIFY(loadIconFolders(dir, {folder}));
    const QIcon shown = app()->loadIcon(QStringLiteral("shown"));
    const QIcon late = app()->loadIcon(QStringLiteral("late"));
    QVERIFY(!shown.pixmap(QSize(16, 16)).isNull());

    app()->theme()->resetXml();
    QVERIFY(app()->theme()->resLoader()->iconDirs().isEmpty());
    // A loaded icon keeps its images; one not loaded yet now finds no folder; the cache is
    // gone too, so the name gives a new icon.
    QVERIFY(!shown.pixmap(QSize(16, 16)).isNull());
    QVERIFY(late.pixmap(QSize(16, 16)).isNull());
    QVERIFY(app()->loadIcon(QStringLiteral("shown")).cacheKey() != shown.cacheKey());
}

NORVIK_TEST_MAIN(tst_KAppResources)
#include "tst_kappresources.moc"
