#include <ktestsupport.h>

#include <QTemporaryDir>
#include <QTranslator>

// A translator that answers every text with "<context>|<text>", so that tests can see the
// context an attribute was translated in.
class ContextEchoTranslator : public QTranslator
{
public:
    QString translate(const char* context, const char* source, const char*, int) const override
    {
        return QString::fromUtf8(context) + QLatin1Char('|') + QString::fromUtf8(source);
    }
    bool isEmpty() const override { return false; }
};

class tst_KDomElement : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void initTestCase();
    void cleanupTestCase();
    void filters_data();
    void filters();
    void alternativesAndWalk();
    void translation();

private:
    KDomDocument load(const QByteArray& xml)
    {
        const QString path = KTestSupport::writeFile(m_dir.filePath("doc.xml"), xml);
        KDomDocument doc;
        if (!doc.setContent(path))
            qFatal("test document does not parse");
        return doc;
    }
    QTemporaryDir m_dir;
    QString m_oemIni;
};

void tst_KDomElement::initTestCase()
{
    KApplication::instance()->setCategory("pro");
    m_oemIni = QCoreApplication::applicationDirPath() + "/cfgs/oem.ini";
    QVERIFY(!QFile::exists(m_oemIni));
    KTestSupport::writeFile(m_oemIni, "[Setup]\nedition=home\n");
}

void tst_KDomElement::cleanupTestCase()
{
    QDir(QCoreApplication::applicationDirPath() + "/cfgs").removeRecursively();
}

void tst_KDomElement::filters_data()
{
    QTest::addColumn<QString>("filter");
    QTest::addColumn<QString>("found"); // name, width and text of the first item found
    QTest::addColumn<int>("warnings");

    // The test application does not override currentLanguage().
    QTest::newRow("lang match") << "lang=en_US, Unknow_Language" << "first 10 Stay" << 0;
    QTest::newRow("lang is case-sensitive") << "lang=unknow_language" << "second" << 0;
    QTest::newRow("category") << "category=home,pro" << "first 10 Stay" << 0;
    QTest::newRow("platform") << "platform=unix" << "first 10 Stay" << 0;
    QTest::newRow("oem value") << "oem_edition=home" << "first 10 Stay" << 0;
    QTest::newRow("kstyle without framework style") << "kstyle!=2013" << "first 10 Stay" << 0;
    QTest::newRow("and of conditions") << "platform=unix;lang=xx" << "second" << 0;
    QTest::newRow("malformed stops evaluation") << "a=b=c;lang=xx" << "first 10 Stay" << 0;
    QTest::newRow("unknown then failing") << "foo=1;lang=xx" << "second" << 1;
    QTest::newRow("not-equal split first") << "lang!=a=b" << "first 10 Stay" << 0;
    // An element whose filter has assignments is never hidden, whatever its conditions.
    QTest::newRow("assignments apply") << "platform=unix;kstyle!=2013:width=120;text=Go" << "first 120 Go" << 0;
    QTest::newRow("assignments, conditions fail") << "lang=xx:width=120" << "first 10 Stay" << 0;
    QTest::newRow("middle part ignored") << "platform=unix:width=1:text=Mid" << "first 10 Mid" << 0;
    QTest::newRow("piece without value") << "platform=unix:width;text=X" << "first 10 X" << 0;
}

void tst_KDomElement::filters()
{
    QFETCH(QString, filter);
    QDomDocument raw;
    raw.setContent(QString("<ui><item name='first' width='10' text='Stay' filter='%1'/><item name='second'/></ui>")
                       .arg(filter));
    KDomElement root(raw.documentElement(), QByteArray());
    KWarningCatcher catcher;
    const KDomElement item = root.firstChildElement("item");
    const QString found = QStringList{item.attribute("name"), item.attribute("width"), item.attribute("text")}
                              .join(' ').trimmed();
    QTEST(found, "found");
    QTEST(int(catcher.matching("filter format error!").size()), "warnings");
    // An assignment is written into the shared tree: a raw reader sees it too.
    QCOMPARE(raw.documentElement().firstChildElement().attribute("width"), item.attribute("width", "10"));
}

void tst_KDomElement::alternativesAndWalk()
{
    const KDomDocument doc = load(
        "<ui>\n"
        "  <button id='a' filter='lang=xx'/>\n"
        "  <button id='b' filter='lang!=xx'/>\n"
        "  <other id='o'/>\n"
        "  <button id='c' filter='platform=win'/>\n"
        "  <button id='d'/>\n"
        "</ui>");
    const KDomElement root = doc.documentElement();
    auto ids = [&root](const QString& tag) {
        QStringList out;
        for (KDomElement e = root.firstChildElement(tag); !e.isNull(); e = e.nextSiblingElement(tag))
            out << e.attribute("id");
        return out;
    };
    QCOMPARE(ids("button"), QStringList({"b", "d"}));
    QCOMPARE(ids(QString()), QStringList({"b", "o", "d"}));
    QCOMPARE(root.firstChildElement("button").lineNumber(), 3);
}

void tst_KDomElement::translation()
{
    const KDomDocument doc = load(
        "<ui tc='b'>"
        "  <group tc='a' label='@Open'>"
        "    <item label='@Save' plain='Save' at='@' empty=''/>"
        "  </group>"
        "  <sibling label='@Close'/>"
        "</ui>");
    const KDomElement root = doc.documentElement();
    const KDomElement group = root.firstChildElement("group");
    const KDomElement item = group.firstChildElement("item");
    const KDomElement sibling = group.nextSiblingElement("sibling");

    // Without a translator a text comes back without its "@".
    QCOMPARE(item.attribute("label"), QString("Save"));
    QCOMPARE(item.attribute("missing", "@Default"), QString("Default"));

    ContextEchoTranslator translator;
    QCoreApplication::installTranslator(&translator);
    QCOMPARE(item.attribute("label"), QString("b.a|Save"));
    QCOMPARE(group.attribute("label"), QString("b.a|Open")); // an element's own tc counts
    QCOMPARE(sibling.attribute("label"), QString("b|Close")); // the sibling drops "a"
    QCOMPARE(item.attribute("plain") + item.attribute("at") + item.attribute("empty"), QString("Save@"));
    QCoreApplication::removeTranslator(&translator);
}

NORVIK_TEST_MAIN(tst_KDomElement)
#include "tst_kdomelement.moc"
