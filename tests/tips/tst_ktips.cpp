// The tip catalogue: when the tip file named by the description is read, what it makes of
// each entry, and how it copes with a file that is missing, broken or odd.
#include <ktestsupport.h>

#include <QPointer>
#include <QTemporaryDir>

#include <kapplication.h>
#include <kdomdocument.h>
#include <ktip.h>
#include <ktips.h>

class tst_KTips : public QObject
{
    Q_OBJECT
private Q_SLOTS:
    void init();
    void cleanup();
    void mainElement_data();
    void mainElement();
    void readOnFirstLookUp();
    void entries_data();
    void entries();
    void idRules();
    void badFile_data();
    void badFile();
    void relativePathFromRes();
    void resetAndReload();
    void tipInstances();

private:
    KTips* tips() const { return KApplication::instance()->tips(); }
    QString writeTips(const QByteArray& body, const QString& name = QStringLiteral("tips.xml"));
    QTemporaryDir m_dir;
};

void tst_KTips::init()
{
    QVERIFY(m_dir.isValid());
    KApplication::instance()->resetXml();
}

void tst_KTips::cleanup()
{
    KApplication::instance()->resetXml();
}

QString tst_KTips::writeTips(const QByteArray& body, const QString& name)
{
    return KTestSupport::writeFile(m_dir.path() + QLatin1Char('/') + name, "<r><tips>" + body + "</tips></r>");
}

void tst_KTips::mainElement_data()
{
    QTest::addColumn<QByteArray>("element");
    QTest::addColumn<bool>("result");
    QTest::addColumn<QString>("warning");
    QTest::addColumn<QString>("path");
    QTest::newRow("none") << QByteArray() << false << QString() << QString();
    QTest::newRow("no path") << QByteArray("<tips/>") << false << QString("need path attribute.") << QString();
    QTest::newRow("empty path") << QByteArray("<tips path=''/>") << false << QString("need path attribute.")
                                << QString();
    QTest::newRow("path") << QByteArray("<tips path='/nowhere/tips.xml'/>") << true << QString()
                          << QString("/nowhere/tips.xml");
}

void tst_KTips::mainElement()
{
    QFETCH(QByteArray, element);
    QFETCH(bool, result);
    QFETCH(QString, warning);
    QFETCH(QString, path);
    KDomDocument doc;
    QVERIFY(doc.setContent(KTestSupport::writeFile(m_dir.path() + "/main.xml", "<ui>" + element + "</ui>")));
    KWarningCatcher catcher;
    QCOMPARE(tips()->setupMainXml(doc), result);
    QCOMPARE(tips()->path(), path);
    // Only the path is stored: a file that doesn't exist says nothing yet.
    QVERIFY(!tips()->isLoaded());
    if (warning.isEmpty()) {
        QCOMPARE(catcher.count(), 0);
    } else {
        QCOMPARE(catcher.count(), 1);
        QVERIFY(catcher.messages().first().startsWith("tips at "));
        QVERIFY(catcher.messages().first().endsWith(warning));
    }
    // The application takes a description without a usable tips element all the same.
    catcher.clear();
    QVERIFY(KTestSupport::loadMainXml(m_dir.path(), element));
    QCOMPARE(catcher.count(), warning.isEmpty() ? 0 : 1);
}

void tst_KTips::readOnFirstLookUp()
{
    const QString file = m_dir.path() + "/late.xml";
    QVERIFY(KTestSupport::loadMainXml(m_dir.path(), "<tips path='" + file.toUtf8() + "'/>"));
    QVERIFY(!tips()->isLoaded());
    // Written after the set-up: the catalogue reads it only when a tip is asked for.
    KTestSupport::writeFile(file, "<r><tips><KToolTip id='Bold' tipTitle='Bold' tipContent='Heavy.'/></tips></r>");
    KTip* tip = tips()->getTip("Bold");
    QVERIFY(tip);
    QVERIFY(tips()->isLoaded());
    QCOMPARE(tip->tipTitle(), QString("Bold"));
    QCOMPARE(tip->host(), static_cast<QObject*>(KApplication::instance()));
    QCOMPARE(tips()->getTip("Italic"), nullptr);
    // Read once: a change of the file later is not seen.
    KTestSupport::writeFile(file, "<r><tips><KToolTip id='Italic' tipTitle='I' tipContent='c'/></tips></r>");
    QCOMPARE(tips()->getTip("Italic"), nullptr);
    QCOMPARE(tips()->getTip("Bold"), tip);
}

void tst_KTips::entries_data()
{
    QTest::addColumn<QByteArray>("attributes");
    QTest::addColumn<QString>("title");
    QTest::addColumn<QString>("content");
    QTest::addColumn<QString>("link");
    QTest::addColumn<QString>("url");
    QTest::addColumn<QString>("picture");
    QTest::addColumn<int>("position");
    QTest::addColumn<int>("type");
    QTest::newRow("text") << QByteArray("tipTitle='T' tipContent='C'") << "T" << "C" << "" << "" << "" << 0 << 1;
    QTest::newRow("no content") << QByteArray("tipTitle='T'") << "T" << "" << "" << "" << "" << 0 << 0;
    QTest::newRow("no title, picture") << QByteArray("tipContent='C' tipPicUrl='p'") << "" << "C" << "" << ""
                                       << "p" << 0 << 0;
    QTest::newRow("link") << QByteArray("tipTitle='T' tipContent='C' tipLink='More' tipLinkUrl='http://h/x'")
                          << "T" << "C" << "More" << "http://h/x" << "" << 0 << 2;
    QTest::newRow("picture") << QByteArray("tipTitle='T' tipContent='C' tipPicUrl='bold' tipPicPosition='3'")
                             << "T" << "C" << "" << "" << "bold" << 3 << 3;
    QTest::newRow("both") << QByteArray("tipTitle='T' tipContent='C' tipPicUrl='b' tipPicPosition='2' "
                                        "tipLink='L' tipLinkUrl='file:///h.html'")
                          << "T" << "C" << "L" << "file:///h.html" << "b" << 2 << 4;
    // "#" is a tip without a link, whatever its link text says.
    QTest::newRow("hash url") << QByteArray("tipTitle='T' tipContent='C' tipLink='More' tipLinkUrl='#'")
                              << "T" << "C" << "" << "" << "" << 0 << 1;
    QTest::newRow("hash url, picture") << QByteArray("tipTitle='T' tipContent='C' tipLink='More' tipLinkUrl='#' "
                                                     "tipPicUrl='p'")
                                       << "T" << "C" << "" << "" << "p" << 0 << 3;
    QTest::newRow("line breaks kept") << QByteArray("tipTitle='T' tipContent='one#two'") << "T" << "one#two" << ""
                                      << "" << "" << 0 << 1;
    QTest::newRow("position not a number") << QByteArray("tipTitle='T' tipContent='C' tipPicUrl='p' "
                                                         "tipPicPosition='left'")
                                           << "T" << "C" << "" << "" << "p" << 0 << 3;
}

void tst_KTips::entries()
{
    QFETCH(QByteArray, attributes);
    const QString file = writeTips("<KToolTip id='t' " + attributes + "/>");
    QVERIFY(KTestSupport::loadMainXml(m_dir.path(), "<tips path='" + file.toUtf8() + "'/>"));
    KTip* tip = tips()->getTip("t");
    QVERIFY(tip);
    QTEST(tip->tipTitle(), "title");
    QTEST(tip->tipContent(), "content");
    QTEST(tip->tipLink(), "link");
    QTEST(tip->tipLinkUrl(), "url");
    QTEST(tip->tipPicUrl(), "picture");
    QTEST(tip->tipPicPosition(), "position");
    QTEST(tip->getTipType(), "type");
}

void tst_KTips::idRules()
{
    const QString file = writeTips("<KToolTip id='a' tipTitle='first' tipContent='c'/>"
                                   "<KToolTip tipTitle='nameless' tipContent='c'/>"
                                   "<KToolTip id='a' tipTitle='second' tipContent='c'/>"
                                   "<other id='b' tipTitle='not a tip'/>");
    QVERIFY(KTestSupport::loadMainXml(m_dir.path(), "<tips path='" + file.toUtf8() + "'/>"));
    KWarningCatcher catcher;
    KTip* a = tips()->getTip("a");
    QCOMPARE(catcher.messages(),
             QStringList({"KToolTip you must give a topmost tip an id.", "id repeated: a"}));
    QVERIFY(a);
    QCOMPARE(a->tipTitle(), QString("second")); // the later one replaces the first
    QVERIFY(tips()->getTip(QString()));
    QCOMPARE(tips()->getTip(QString())->tipTitle(), QString("nameless"));
    QCOMPARE(tips()->getTip("b"), nullptr);
}

void tst_KTips::badFile_data()
{
    QTest::addColumn<QByteArray>("text"); // empty: no file at all
    QTest::addColumn<QString>("warning");
    QTest::newRow("missing") << QByteArray() << "KApplication: XML: file not exist:";
    QTest::newRow("malformed") << QByteArray("<r><tips><KToolTip id='a'></tips></r>") << "KDomDocument:";
    QTest::newRow("no tips element") << QByteArray("<r><KToolTip id='a' tipTitle='T' tipContent='C'/></r>")
                                     << QString();
}

void tst_KTips::badFile()
{
    QFETCH(QByteArray, text);
    QFETCH(QString, warning);
    const QString file = m_dir.path() + "/bad.xml";
    QFile::remove(file);
    if (!text.isEmpty())
        KTestSupport::writeFile(file, text);
    QVERIFY(KTestSupport::loadMainXml(m_dir.path(), "<tips path='" + file.toUtf8() + "'/>"));
    KWarningCatcher catcher;
    QCOMPARE(tips()->getTip("a"), nullptr);
    if (warning.isEmpty()) {
        QCOMPARE(catcher.count(), 0);
    } else {
        QCOMPARE(catcher.count(), 1);
        QVERIFY2(catcher.messages().first().startsWith(warning), qPrintable(catcher.messages().first()));
    }
    // Not read again: later look-ups are silent, even once the file is fine.
    KTestSupport::writeFile(file, "<r><tips><KToolTip id='a' tipTitle='T' tipContent='C'/></tips></r>");
    QCOMPARE(tips()->getTip("a"), nullptr);
    QCOMPARE(tips()->getTip("b"), nullptr);
    QCOMPARE(catcher.count(), warning.isEmpty() ? 0 : 1);
}

void tst_KTips::relativePathFromRes()
{
    // A relative path counts from "res" beside the program, not from the description.
    const QString res = QCoreApplication::applicationDirPath() + "/res";
    const QString name = QStringLiteral("tst_ktips_%1.xml").arg(QCoreApplication::applicationPid());
    KTestSupport::writeFile(res + "/" + name,
                            "<r><tips><KToolTip id='res' tipTitle='T' tipContent='C'/></tips></r>");
    writeTips("<KToolTip id='beside' tipTitle='T' tipContent='C'/>", name);
    QVERIFY(KTestSupport::loadMainXml(m_dir.path(), "<tips path='" + name.toUtf8() + "'/>"));
    const bool found = tips()->getTip("res") != nullptr;
    const bool wrongFile = tips()->getTip("beside") != nullptr;
    QFile::remove(res + "/" + name);
    QVERIFY(found);
    QVERIFY(!wrongFile);
}

void tst_KTips::resetAndReload()
{
    const QString first = writeTips("<KToolTip id='a' tipTitle='A' tipContent='C'/>", "first.xml");
    const QString second = writeTips("<KToolTip id='b' tipTitle='B' tipContent='C'/>", "second.xml");
    QVERIFY(KTestSupport::loadMainXml(m_dir.path(), "<tips path='" + first.toUtf8() + "'/>"));
    const QPointer<KTip> a = tips()->getTip("a");
    QVERIFY(a);
    KApplication::instance()->resetXml();
    QVERIFY(a.isNull()); // deleted with the catalogue's children
    QVERIFY(tips()->path().isEmpty());
    QVERIFY(KTestSupport::loadMainXml(m_dir.path(), "<tips path='" + second.toUtf8() + "'/>"));
    QCOMPARE(tips()->getTip("a"), nullptr);
    QVERIFY(tips()->getTip("b"));
}

void tst_KTips::tipInstances()
{
    QObject owner;
    KTip* mine = tips()->getTipInstance("Made here", &owner, this);
    KTip* kept = tips()->getTipInstance("Kept", nullptr, this);
    const QString mineId = mine->property("id").toString();
    const QString keptId = kept->property("id").toString();
    QVERIFY(mineId.startsWith("custom "));
    // One counter for the process: the second id is the next number.
    QCOMPARE(keptId, QString("custom %1").arg(mineId.mid(7).toInt() + 1));
    QCOMPARE(mine->tipTitle(), QString("Made here"));
    QCOMPARE(mine->parent(), &owner);
    QCOMPARE(kept->parent(), static_cast<QObject*>(tips()));
    QCOMPARE(tips()->getTip(keptId), kept);
    // A tip that dies with its owner leaves the catalogue.
    delete mine;
    QCOMPARE(tips()->getTip(mineId), nullptr);
    QCOMPARE(tips()->getTip(keptId), kept);
}

NORVIK_TEST_MAIN(tst_KTips)
#include "tst_ktips.moc"
