// The settings object: the native form on a normal installation, the XML file beside the
// program on a portable one.
#include <ktestsupport.h>

#include <QBuffer>
#include <QDomDocument>
#include <QProcess>
#include <QTemporaryDir>

#include <ksettings.h>

namespace {

const char* const kChildVariable = "NORVIK_KSETTINGS_PORTABLE_CHILD";

QSettings::SettingsMap readBack(const QByteArray& xml, bool* ok)
{
    QBuffer buffer;
    buffer.setData(xml);
    buffer.open(QIODevice::ReadOnly);
    QSettings::SettingsMap map;
    *ok = _Xml::readXmlFile(buffer, map);
    return map;
}

QByteArray write(const QSettings::SettingsMap& map)
{
    QBuffer buffer;
    buffer.open(QIODevice::WriteOnly);
    if (!_Xml::writeXmlFile(buffer, map))
        return QByteArray();
    return buffer.data();
}

} // namespace

class tst_KSettings : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void xmlRoundTrip_data();
    void xmlRoundTrip();
    void xmlReading_data();
    void xmlReading();
    void nativeForm();
    void portableForm();

private:
    void portableChild();
};

void tst_KSettings::xmlRoundTrip_data()
{
    QTest::addColumn<QVariantMap>("written");
    QTest::addColumn<QVariantMap>("read");
    QTest::newRow("top-level key")
        << QVariantMap{{"top", "x"}, {"g/k", true}} << QVariantMap{{"top", "x"}, {"g/k", "true"}};
    QTest::newRow("nested groups")
        << QVariantMap{{"2013/app/Theme", "#336699"}, {"2013/app/ui/x", 2}, {"2013/y", "z"}}
        << QVariantMap{{"2013/app/Theme", "#336699"}, {"2013/app/ui/x", "2"}, {"2013/y", "z"}};
    // Groups are looked up among all descendants, so "a/c" finds the group "c" made for
    // "a/b/c" first, and y is read back under that path: files of earlier releases look so.
    QTest::newRow("descendant group lookup")
        << QVariantMap{{"a/b/c/x", 1}, {"a/c/y", 2}}
        << QVariantMap{{"a/b/c/x", "1"}, {"a/b/c/y", "2"}};
}

void tst_KSettings::xmlRoundTrip()
{
    QFETCH(QVariantMap, written);
    QFETCH(QVariantMap, read);
    QSettings::SettingsMap map;
    for (auto it = written.constBegin(); it != written.constEnd(); ++it)
        map.insert(it.key(), it.value());
    const QByteArray xml = write(map);
    QVERIFY(xml.startsWith("<?xml version=\"1.0\" encoding=\"UTF-8\"?>"));
    bool ok = false;
    const QSettings::SettingsMap back = readBack(xml, &ok);
    QVERIFY(ok);
    QVariantMap got;
    for (auto it = back.constBegin(); it != back.constEnd(); ++it) {
        QCOMPARE(it.value().metaType().id(), QMetaType::QString); // the format keeps no types
        got.insert(it.key(), it.value());
    }
    QCOMPARE(got, read);
}

void tst_KSettings::xmlReading_data()
{
    QTest::addColumn<QByteArray>("xml");
    QTest::addColumn<bool>("ok");
    QTest::addColumn<QStringList>("keys");
    QTest::newRow("not registry") << QByteArray("<settings a='1'/>") << false << QStringList();
    QTest::newRow("broken") << QByteArray("<registry>") << false << QStringList();
    QTest::newRow("id is no value")
        << QByteArray("<registry id='r' v='1'><key id='g' id2='2'><other x='1'/></key></registry>")
        << true << QStringList({"g/id2", "v"});
}

void tst_KSettings::xmlReading()
{
    QFETCH(QByteArray, xml);
    QFETCH(bool, ok);
    QFETCH(QStringList, keys);
    bool result = !ok;
    const QSettings::SettingsMap map = readBack(xml, &result);
    QCOMPARE(result, ok);
    QCOMPARE(QStringList(map.keys()), keys);
}

void tst_KSettings::nativeForm()
{
    // No "cfgs/setup.cfg" beside the test program: a normal installation.
    QVERIFY(!_Version::IsUsbVersion());
    QTemporaryDir dir;
    QSettings::setPath(QSettings::NativeFormat, QSettings::UserScope, dir.path());
    QCoreApplication::setOrganizationName(QStringLiteral("NorvikOrg"));
    KApplication::instance()->setProductName(QStringLiteral("NorvikProduct"));
    QSettings("NorvikOrg", "NorvikProduct").setValue("group/key", 42);

    KSettings settings;
    QCOMPARE(settings.format(), QSettings::NativeFormat);
    QCOMPARE(settings.value("group/key").toInt(), 42);
    QCOMPARE(KSettings::XmlFormat, QSettings::InvalidFormat); // never registered here
}

void tst_KSettings::portableForm()
{
    if (qEnvironmentVariableIsSet(kChildVariable))
        return portableChild();
    // The portable switch lies beside the program and is read once per process: run a copy
    // of this test program from a folder that carries the switch.
    QTemporaryDir dir;
    const QString copy = dir.filePath("tst_ksettings_copy");
    QVERIFY(QFile::copy(QCoreApplication::applicationFilePath(), copy));
    KTestSupport::writeFile(dir.filePath("cfgs/setup.cfg"), "[Local]\nUSBVersion=true\n");
    QProcess child;
    QProcessEnvironment env = QProcessEnvironment::systemEnvironment();
    env.insert(kChildVariable, "1");
    env.insert("QT_QPA_PLATFORM", "offscreen");
    child.setProcessEnvironment(env);
    child.setProcessChannelMode(QProcess::MergedChannels);
    child.start(copy, {"portableForm"});
    QVERIFY(child.waitForFinished(120000));
    const QByteArray output = child.readAll();
    QVERIFY2(child.exitStatus() == QProcess::NormalExit, output.constData());
    QVERIFY2(child.exitCode() == 0, output.constData());
    QVERIFY2(output.contains("PASS   : tst_KSettings::portableForm()"), output.constData());

    // The file the child wrote, read here without the framework.
    QFile file(dir.filePath("cfgs/shell.cfg"));
    QVERIFY(file.open(QIODevice::ReadOnly));
    QDomDocument doc;
    QVERIFY(doc.setContent(&file));
    QDomElement a = doc.documentElement().firstChildElement("key");
    while (!a.isNull() && a.attribute("id") != QLatin1String("a"))
        a = a.nextSiblingElement("key");
    QCOMPARE(a.attribute("b"), QStringLiteral("1"));
}

void tst_KSettings::portableChild()
{
    QVERIFY(_Version::IsUsbVersion());
    KApplication::instance()->setProductName(QStringLiteral("ignored"));
    {
        KSettings settings;
        QVERIFY(KSettings::XmlFormat != QSettings::InvalidFormat);
        QCOMPARE(settings.format(), KSettings::XmlFormat);
        QCOMPARE(settings.fileName(), QCoreApplication::applicationDirPath() + QStringLiteral("/cfgs/shell.cfg"));
        settings.setValue("a/b", 1);
        settings.setValue("2013/Theme", "#336699");
    }
    const QSettings::Format registered = KSettings::XmlFormat;
    KSettings settings;
    QCOMPARE(settings.value("2013/Theme").toString(), QStringLiteral("#336699"));
    QCOMPARE(KSettings::XmlFormat, registered); // registered once per process
}

NORVIK_TEST_MAIN(tst_KSettings)
#include "tst_ksettings.moc"
