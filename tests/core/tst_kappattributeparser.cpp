#include <ktestsupport.h>

#include <QTemporaryDir>

#include <kappattributeparser.h>

class tst_KAppAttributeParser : public QObject
{
    Q_OBJECT
private Q_SLOTS:
    void parseBool_data();
    void parseBool();
    void numbers_data();
    void numbers();
    void enumNumbering();
    void typeKeywords();
    void setupMainXml_data();
    void setupMainXml();
    void parseByName();
    void parseByMetaType();

private:
    static KDomDocument loadDocument(const QString& path)
    {
        KDomDocument doc;
        if (!doc.setContent(path))
            qFatal("cannot read %s", qPrintable(path));
        return doc;
    }
    // Reads an attribute table made of the given <attribute> elements into parser.
    bool setup(KAppAttributeParser& parser, const QByteArray& attributes)
    {
        const QString path = KTestSupport::writeFile(m_dir.filePath(QString("attrs%1.xml").arg(++m_files)),
                                                     "<r><attributes>\n" + attributes + "</attributes></r>");
        return parser.setupXml(loadDocument(path));
    }
    QTemporaryDir m_dir;
    int m_files = 0;
};

void tst_KAppAttributeParser::parseBool_data()
{
    QTest::addColumn<QString>("text");
    QTest::addColumn<bool>("expected");
    QTest::newRow("empty") << QString() << false;
    QTest::newRow("double zero") << "00" << false;
    QTest::newRow("FALSE leading blank") << " FALSE" << false;
    QTest::newRow("no is true") << "no" << true;
    QTest::newRow("negative") << "-1" << true;
}

void tst_KAppAttributeParser::parseBool()
{
    QFETCH(QString, text);
    QFETCH(bool, expected);
    QCOMPARE(KAppAttributeParser::parseBool(text), expected);
}

void tst_KAppAttributeParser::numbers_data()
{
    QTest::addColumn<QString>("text");
    QTest::addColumn<int>("intValue");
    QTest::addColumn<bool>("intOk");
    QTest::addColumn<double>("doubleValue");
    QTest::addColumn<uint>("color");
    QTest::newRow("decimal") << "42" << 42 << true << 42.0 << 0x42u;
    QTest::newRow("fraction") << "2.5" << -1 << false << 2.5 << 0u;
    QTest::newRow("hex colour without alpha") << "ff0000" << -1 << false << -1.0 << 0xff0000u;
    QTest::newRow("hex colour with alpha") << "ffff0000" << -1 << false << -1.0 << 0xffff0000u;
    QTest::newRow("garbage") << "zz" << -1 << false << -1.0 << 0u;
}

void tst_KAppAttributeParser::numbers()
{
    QFETCH(QString, text);
    QFETCH(int, intValue);
    QFETCH(bool, intOk);
    QFETCH(double, doubleValue);
    QFETCH(uint, color);
    bool ok = !intOk;
    QCOMPARE(KAppAttributeParser::parseInt(text, &ok), intValue);
    QCOMPARE(ok, intOk);
    QCOMPARE(KAppAttributeParser::parseDouble(text), doubleValue);
    const QVariant c = KAppAttributeParser::parseColor(text);
    QCOMPARE(c.metaType().id(), int(QMetaType::UInt));
    QCOMPARE(c.toUInt(), color);
}

void tst_KAppAttributeParser::enumNumbering()
{
    KAppAttributeParser parser(nullptr);
    KWarningCatcher warnings;
    QVERIFY(setup(parser, R"(<attribute name="mode" type="enum">
  <item name="a"/><item name="b"/><item name="ten" value="10"/><item name="eleven"/>
  <item name="bad" value="x"/><item name="low" value="-3"/><item name="next"/>
</attribute>
)"));
    // "bad" keeps its automatic value.
    const QMap<QString, int> expected{{"a", 0},   {"b", 1},   {"ten", 10}, {"eleven", 11},
                                      {"bad", 12}, {"low", -3}, {"next", -2}};
    QCOMPARE(parser.enumItems("mode"), expected);
    // The line is that of the attribute element, not of the item.
    QCOMPARE(warnings.matching("bad format, at line: ").size(), 1);
    QVERIFY(warnings.contains("at line:  2"));

    QCOMPARE(parser.parseAttribute(QStringLiteral("mode"), "ten", nullptr), QVariant(10));
    warnings.clear();
    QVERIFY(!parser.parseAttribute(QStringLiteral("mode"), "eleventy", nullptr).isValid());
    QVERIFY(warnings.contains("Unknown enum: eleventy"));
    // The enum type alone does not know its items.
    QVERIFY(!parser.parseAttribute(KAppAttributeParser::Enum, "a", nullptr).isValid());
}

void tst_KAppAttributeParser::typeKeywords()
{
    KAppAttributeParser parser(nullptr);
    KWarningCatcher warnings;
    QVERIFY(setup(parser, R"(<attribute name="flag" type="Bool"/>
<attribute name="count" type="int"/><attribute name="count" type="double"/><attribute name="plain"/>
)"));
    QCOMPARE(warnings.count(), 0);
    QCOMPARE(parser.attributeType("flag"), -1); // a wrong keyword leaves it untyped
    QCOMPARE(parser.attributeType("count"), int(KAppAttributeParser::Double)); // last wins
    QCOMPARE(parser.attributeType("plain"), int(KAppAttributeParser::String));
}

void tst_KAppAttributeParser::setupMainXml_data()
{
    QTest::addColumn<QByteArray>("mainXml");
    QTest::addColumn<bool>("result");
    QTest::addColumn<QString>("warning");
    QTest::newRow("no attributes element") << QByteArray("<ui/>") << false << QString();
    QTest::newRow("no path") << QByteArray("<ui>\n<attributes/></ui>") << false
                             << "attributes at  2 :   need path attribute.";
    QTest::newRow("missing file") << QByteArray("<ui><attributes path=\"nope.xml\"/></ui>") << false
                                  << "KAppAttributeParser: XML: file not exist: nope.xml";
    QTest::newRow("relative to the main file")
        << QByteArray("<ui><attributes path=\"sub/attrs.xml\"/></ui>") << true << QString();
}

void tst_KAppAttributeParser::setupMainXml()
{
    QFETCH(QByteArray, mainXml);
    QFETCH(bool, result);
    QFETCH(QString, warning);
    KTestSupport::writeFile(m_dir.filePath("sub/attrs.xml"),
                            "<r><attributes><attribute name=\"n\" type=\"int\"/></attributes></r>");
    const QString mainPath = KTestSupport::writeFile(m_dir.filePath("main.xml"), mainXml);
    KAppAttributeParser parser(nullptr);
    KWarningCatcher warnings;
    QCOMPARE(parser.setupMainXml(loadDocument(mainPath)), result);
    if (warning.isEmpty())
        QCOMPARE(warnings.count(), 0);
    else
        QCOMPARE(warnings.messages(), QStringList{warning});
    QCOMPARE(parser.attributeType("n"), result ? int(KAppAttributeParser::Int) : -1);
}

void tst_KAppAttributeParser::parseByName()
{
    KAppAttributeParser parser(nullptr);
    QVERIFY(setup(parser, R"(<attribute name="b" type="bool"/><attribute name="i" type="int"/>
<attribute name="c" type="color"/><attribute name="d" type="double"/><attribute name="s" type="string"/>
<attribute name="e" type="enum"><item name="x"/><item name="y"/></attribute>
)"));
    QCOMPARE(parser.parseAttribute(QStringLiteral("b"), "no", nullptr), QVariant(true));
    QCOMPARE(parser.parseAttribute(QStringLiteral("i"), "x", nullptr), QVariant(-1));
    QCOMPARE(parser.parseAttribute(QStringLiteral("c"), "80ff0000", nullptr), QVariant(0x80ff0000u));
    QCOMPARE(parser.parseAttribute(QStringLiteral("d"), "0.25", nullptr), QVariant(0.25));
    QCOMPARE(parser.parseAttribute(QStringLiteral("s"), "text", nullptr), QVariant(QStringLiteral("text")));
    QCOMPARE(parser.parseAttribute(QStringLiteral("e"), "y", nullptr), QVariant(1));
    QVERIFY(!parser.parseAttribute(QStringLiteral("undeclared"), "1", nullptr).isValid());

    // A reset empties both tables.
    parser.resetXml();
    QVERIFY(!parser.parseAttribute(QStringLiteral("i"), "1", nullptr).isValid());
    QVERIFY(parser.enumItems("e").isEmpty());
}

void tst_KAppAttributeParser::parseByMetaType()
{
    KAppAttributeParser parser(nullptr);
    QCOMPARE(parser.parseAttribute(int(QMetaType::Int), "5", nullptr), QVariant(5));
    QCOMPARE(parser.parseAttribute(int(QMetaType::QIcon), "x", nullptr).metaType().id(),
             int(QMetaType::QIcon));
    QVERIFY(!parser.parseAttribute(int(QMetaType::QColor), "ff0000", nullptr).isValid());
    QVERIFY(!parser.parseAttribute(int(QMetaType::QSize), "1", nullptr).isValid());
}

NORVIK_TEST_MAIN(tst_KAppAttributeParser)
#include "tst_kappattributeparser.moc"
