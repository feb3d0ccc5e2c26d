#include <ktestsupport.h>

#include <QDialog>
#include <kmainwindow.h>
#include <QFontDatabase>
#include <QProcess>
#include <QSignalSpy>
#include <QTemporaryDir>
#include <QTimer>

// The application under test: a host that picks its language and records the documents it
// is told about, and can refuse the main document.
class TestApp : public KApplication
{
public:
    using KApplication::KApplication;

    int language = -1;
    bool refuseMain = false;
    bool failSetuped = false;
    QStringList setupedFiles;
    int mainCalls = 0;

    int currentLanguage() override { return language; }

protected:
    bool onSetupMainXml(const KDomDocument& doc) override
    {
        ++mainCalls;
        return !refuseMain && KApplication::onSetupMainXml(doc);
    }
    bool onXmlSetuped(const KDomDocument& doc) override
    {
        setupedFiles.append(QFileInfo(doc.filePath()).fileName());
        KApplication::onXmlSetuped(doc);
        return !failSetuped;
    }
};

static TestApp* testApp()
{
    return static_cast<TestApp*>(QCoreApplication::instance());
}

class tst_KApplication : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init();
    void cleanup();
    void importsLoadDepthFirst();
    void importFailuresAreSkipped();
    void importCyclesAndDepthAreRefused();
    void mainDocumentFailures();
    void mainWindowStack();
    void lastMainWindowClosed();
    void modelessDialogsHideAroundModalWindows();
    void privateFonts();
    void messageHandler();

private:
    QString writeMain(const QByteArray& body, const QString& name = "main.xml")
    {
        return KTestSupport::writeMainXml(m_dir->path(), name, body);
    }
    QString write(const QString& name, const QByteArray& text)
    {
        return KTestSupport::writeFile(m_dir->filePath(name), text);
    }
    QScopedPointer<QTemporaryDir> m_dir;
};

void tst_KApplication::init()
{
    m_dir.reset(new QTemporaryDir);
    testApp()->resetXml();
    testApp()->language = -1;
    testApp()->refuseMain = false;
    testApp()->failSetuped = false;
    testApp()->setupedFiles.clear();
    testApp()->mainCalls = 0;
}

void tst_KApplication::cleanup()
{
    while (QWidget* w = testApp()->currentMainWindow())
        testApp()->removeMainWindow(w);
}

void tst_KApplication::importsLoadDepthFirst()
{
    // main imports a and b; a imports c (in a sub folder, relative to a) and an import that
    // the language filter removes.
    write("sub/c.xml", "<ui/>");
    write("a.xml", "<ui><import path='sub/c.xml'/><import path='gone.xml' filter='lang=zh_CN'/></ui>");
    write("b.xml", "<ui/>");
    const QString main = writeMain("<import path='a.xml'/><import path='b.xml'/>");

    QSignalSpy spy(testApp(), &KApplication::xmlSetuped);
    KWarningCatcher warnings;
    QVERIFY(testApp()->setupXml(main));
    QCOMPARE(warnings.count(), 0);
    QCOMPARE(testApp()->mainCalls, 1);

    const QStringList expected = {"c.xml", "a.xml", "b.xml", "main.xml"};
    QCOMPARE(testApp()->setupedFiles, expected);
    QStringList domFiles, signalled;
    for (const KDomDocument& d : testApp()->getDoms())
        domFiles << QFileInfo(d.filePath()).fileName();
    for (const QList<QVariant>& args : std::as_const(spy))
        signalled << QFileInfo(args.at(0).value<KDomDocument>().filePath()).fileName();
    QCOMPARE(domFiles, expected);
    QCOMPARE(signalled, expected);
}

void tst_KApplication::importFailuresAreSkipped()
{
    write("a.xml", "<ui>\n<import path='missing.xml'/>\n<import/></ui>");
    write("broken.xml", "<ui><unclosed></ui>");
    const QString main = writeMain("\n<import path='a.xml'/><import path='broken.xml'/>");

    KWarningCatcher warnings;
    testApp()->failSetuped = true; // a false onXmlSetuped never fails the load
    QVERIFY(testApp()->setupXml(main));
    QCOMPARE(testApp()->setupedFiles, QStringList({"a.xml", "main.xml"}));

    for (const char* text : {"KApplication: XML: file not exist:", "KApplication: Can not load ui xml file! path:",
                             "KDomDocument:"})
        QVERIFY2(warnings.contains(text), text);
    // Both warnings about a.xml name the line of its document element, not of the import.
    const QStringList needPath = warnings.matching("import node need path attribute.");
    QCOMPARE(needPath.size(), 1);
    QVERIFY(needPath.first().contains("a.xml )"));
    QVERIFY(needPath.first().contains(" 1 :"));
    const QStringList failed = warnings.matching("Can not import sub xml.");
    QCOMPARE(failed.size(), 2); // missing.xml from a.xml, broken.xml from main.xml
    QVERIFY(failed.at(0).contains("a.xml )"));
    QVERIFY(failed.at(1).contains("main.xml )"));
}

void tst_KApplication::importCyclesAndDepthAreRefused()
{
    write("a.xml", "<ui><import path='b.xml'/></ui>");
    write("b.xml", "<ui><import path='a.xml'/></ui>");
    const QString main = writeMain("<import path='a.xml'/>");
    {
        KWarningCatcher warnings;
        QVERIFY(testApp()->setupXml(main));
        QCOMPARE(testApp()->setupedFiles, QStringList({"b.xml", "a.xml", "main.xml"}));
        const QStringList cycle = warnings.matching("import cycle");
        QCOMPARE(cycle.size(), 1);
        QVERIFY(cycle.first().contains("b.xml )"));
    }

    // A chain of 40 documents: the ones past the depth bound are refused, the rest load.
    testApp()->resetXml();
    testApp()->setupedFiles.clear();
    writeMain("<import path='d1.xml'/>", "d0.xml");
    for (int i = 1; i < 40; ++i)
        write(QString("d%1.xml").arg(i), QString("<ui><import path='d%1.xml'/></ui>").arg(i + 1).toUtf8());
    write("d40.xml", "<ui/>");
    KWarningCatcher warnings;
    QVERIFY(testApp()->setupXml(m_dir->filePath("d0.xml")));
    QCOMPARE(testApp()->setupedFiles.size(), 33);
    QCOMPARE(testApp()->setupedFiles.first(), QString("d32.xml"));
    QCOMPARE(warnings.matching("imports nested deeper than 32").size(), 1);
}

void tst_KApplication::mainDocumentFailures()
{
    KWarningCatcher warnings;
    QVERIFY(!testApp()->setupXml(m_dir->filePath("nothing.xml")));
    QVERIFY(warnings.contains("KApplication: XML: file not exist:"));
    QCOMPARE(testApp()->mainCalls, 0);

    // A refused main document follows no import and records nothing.
    write("a.xml", "<ui/>");
    const QString main = writeMain("<import path='a.xml'/>");
    testApp()->refuseMain = true;
    QVERIFY(!testApp()->setupXml(main));
    QCOMPARE(testApp()->mainCalls, 1);
    QVERIFY(testApp()->setupedFiles.isEmpty());
    QVERIFY(testApp()->getDoms().isEmpty());
}

void tst_KApplication::mainWindowStack()
{
    KApplication* app = testApp();
    QWidget a, b;
    auto* c = new QWidget;
    for (QWidget* w : {&a, c, &b, &a}) // a second time moves it to the head, not duplicated
        app->bringFrontMainWindow(w);
    QCOMPARE(app->currentMainWindow(), &a);
    app->sentBackMainWindow(&a);
    QCOMPARE(app->currentMainWindow(), &b);

    // Stack is b, c, a. A dead head gives the next live window.
    app->sentBackMainWindow(&b); // c, a, b
    QCOMPARE(app->currentMainWindow(), c);
    delete c;
    QCOMPARE(app->currentMainWindow(), &a);

    // A dead entry in the middle is not removed by reading the top.
    auto* d = new QWidget;
    app->bringFrontMainWindow(d);
    app->bringFrontMainWindow(&b); // b, d, a
    delete d;
    QCOMPARE(app->currentMainWindow(), &b);
    app->removeMainWindow(&b);
    QCOMPARE(app->currentMainWindow(), &a); // d's dead entry is skipped as head
}

void tst_KApplication::lastMainWindowClosed()
{
    KApplication* app = testApp();
    QSignalSpy spy(app, &KApplication::lastMainWindowClosed);
    QWidget a, f;
    app->bringFrontMainWindow(&a);
    app->addFreeMainWindow(&f);
    app->addFreeMainWindow(&f); // re-added, not doubled
    app->removeMainWindow(&a);
    QCOMPARE(spy.count(), 0); // a free window still counts as open
    app->removeFreeMainWindow(&f);
    QCOMPARE(spy.count(), 1);
}

// Opens a modal dialog with exec() and runs checks inside its loop.
static void runModal(QWidget* parent, const std::function<void(QDialog*)>& inside)
{
    QDialog modal(parent);
    QTimer::singleShot(0, &modal, [&] {
        inside(&modal);
        modal.reject();
    });
    modal.exec();
}

void tst_KApplication::modelessDialogsHideAroundModalWindows()
{
    KApplication* app = testApp();
    KMainWindow mainWindow;
    mainWindow.show();
    app->bringFrontMainWindow(&mainWindow);

    auto* plain = new QDialog(&mainWindow);
    auto* exempt = new QDialog(&mainWindow);
    exempt->setProperty("SelectRangeDialog", true);
    auto* owner = new QDialog(&mainWindow); // parent of the modal widget
    auto* doomed = new QDialog(&mainWindow);
    for (QDialog* d : {plain, exempt, owner, doomed})
        d->show();

    runModal(owner, [&](QDialog*) {
        QVERIFY(!plain->isVisible());
        QVERIFY(exempt->isVisible());
        QVERIFY(owner->isVisible());
        QCOMPARE(plain->property("NoModalDilogCount").toInt(), 1);
        delete doomed; // a hidden dialog may die before it comes back
        // A nested modal window: a dialog comes back only after the modal window that hid
        // it first has ended.
        runModal(&mainWindow, [&](QDialog*) {
            QVERIFY(!plain->isVisible());
            QVERIFY(!owner->isVisible());
            QCOMPARE(plain->property("NoModalDilogCount").toInt(), 2);
        });
        QVERIFY(!plain->isVisible());
        QVERIFY(owner->isVisible());
        QCOMPARE(plain->property("NoModalDilogCount").toInt(), 1);
    });
    QVERIFY(plain->isVisible());
    QVERIFY(plain->testAttribute(Qt::WA_ShowWithoutActivating));
    QCOMPARE(plain->property("NoModalDilogCount").toInt(), 0);
    app->removeMainWindow(&mainWindow);
}

void tst_KApplication::privateFonts()
{
    const QString fontDir = QCoreApplication::applicationDirPath() + "/fonts";
    const QString source = "/usr/share/fonts/truetype/dejavu/DejaVuSans.ttf";
    if (!QFile::exists(source))
        QSKIP("no DejaVu font on this machine to load");
    QDir(fontDir).removeRecursively();
    QDir().mkpath(fontDir);
    KTestSupport::writeFile(fontDir + "/aa-broken.ttf", "not a font");
    QVERIFY(QFile::copy(source, fontDir + "/zz-good.ttf"));

    const int before = QFontDatabase::families().size();
    KWarningCatcher warnings;
    loadPrivateFonts();
    QDir(fontDir).removeRecursively();
    const QStringList bad = warnings.matching("Could not load");
    QCOMPARE(bad.size(), 1);
    QVERIFY(bad.first().endsWith("aa-broken.ttf"));
    QVERIFY(QFontDatabase::families().size() >= before);
    QVERIFY(QFontDatabase::families().contains("DejaVu Sans"));
}

void tst_KApplication::messageHandler()
{
    // The test program re-runs itself in a mode that emits one message of each kind through
    // the framework's handler (see main below).
    QProcess p;
    p.start(QCoreApplication::applicationFilePath(), {"--emit-messages"});
    QVERIFY(p.waitForFinished(30000));
    const QString err = QString::fromLocal8Bit(p.readAllStandardError());
    QVERIFY2(!err.contains("a debug text"), qPrintable(err));
    QVERIFY2(!err.contains("a warning text"), qPrintable(err));
    QVERIFY2(err.contains("Critical: a critical text\n"), qPrintable(err));
    QVERIFY2(err.contains("Fatal: a fatal text\n"), qPrintable(err));
    QCOMPARE(p.exitStatus(), QProcess::CrashExit); // abort()
}

int main(int argc, char** argv)
{
    const bool emitMessages = argc > 1 && qstrcmp(argv[1], "--emit-messages") == 0;
    qputenv("QT_QPA_PLATFORM", "offscreen");
    TestApp app(argc, argv);
    if (emitMessages) {
        qDebug("a debug text");
        qWarning("a warning text");
        qCritical("a critical text");
        qFatal("a fatal text");
        return 0;
    }
    tst_KApplication tc;
    QTEST_SET_MAIN_SOURCE_PATH
    return QTest::qExec(&tc, argc, argv);
}

#include "tst_kapplication.moc"
