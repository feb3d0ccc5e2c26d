// Cost of turning a large "commands" section into command objects, against a floor: the same
// file read into a DOM with one plain QObject per element carrying its attributes as dynamic
// properties.
//
//   bench_commandparse                   wall-clock times of both, and their ratio
//   bench_commandparse -callgrind parse  instructions of one parse (under valgrind)
#include <QDir>
#include <QDomDocument>
#include <QElapsedTimer>
#include <QFile>
#include <QTemporaryDir>
#include <QtTest/QtTest>

#include <malloc.h>

#include <ktestsupport.h>

#include <kapplication.h>
#include <kappattributeparser.h>
#include <kcommands.h>
#include <kdomdocument.h>

namespace {

constexpr int kTabs = 40;
constexpr int kGroupsPerTab = 10;
constexpr int kButtonsPerGroup = 8;
constexpr int kSharedButtons = 200;
constexpr int kDelayItems = 300;

QByteArray button(const QString& id, int n)
{
    return QString("      <KTriggerCommand id=\"%1\" text=\"Button %2\" customTip=\"tip%2\" "
                   "checkedHint=\"%3\" aid=\"%2\" tag=\"t%2\" mode=\"%4\" tint=\"ff%5\"/>\n")
        .arg(id).arg(n).arg(n % 2).arg(n % 3 ? "large" : "small")
        .arg(n % 0xffffff, 6, 16, QLatin1Char('0'))
        .toUtf8();
}

// One QObject per element, attributes as dynamic properties: what any reader of the file
// into objects must at least pay.
void buildFloor(const QDomElement& element, QObject* parent)
{
    for (QDomElement child = element.firstChildElement(); !child.isNull();
         child = child.nextSiblingElement()) {
        auto* obj = new QObject(parent);
        const QDomNamedNodeMap attrs = child.attributes();
        for (int i = 0; i < attrs.count(); ++i) {
            const QDomNode a = attrs.item(i);
            obj->setProperty(a.nodeName().toLatin1().constData(), a.nodeValue());
        }
        buildFloor(child, obj);
    }
}

int countElements(const QDomElement& element)
{
    int n = 0;
    for (QDomElement c = element.firstChildElement(); !c.isNull(); c = c.nextSiblingElement())
        n += 1 + countElements(c);
    return n;
}

size_t heapInUse()
{
    return mallinfo2().uordblks;
}

using KTestSupport::writeFile;

} // namespace

class bench_CommandParse : public QObject
{
    Q_OBJECT
private Q_SLOTS:
    void initTestCase();
    void cleanupTestCase();
    void parse();
    void floor();
    void summary();

private:
    int parseOnce(bool keepAlive, size_t* heapBytes = nullptr);

    QTemporaryDir m_dir;
    QString m_mainPath;
    QString m_delayPath;
    int m_commandCount = 0;
    int m_elementCount = 0;
};

void bench_CommandParse::initTestCase()
{
    QVERIFY(m_dir.isValid());
    writeFile(m_dir.filePath("attributes.xml"), R"(<r><attributes>
<attribute name="aid" type="int"/>
<attribute name="tag" type="string"/>
<attribute name="tint" type="color"/>
<attribute name="mode" type="enum"><item name="small"/><item name="large"/></attribute>
</attributes></r>)");

    const QString delayName = QString("bench_delay_%1.xml").arg(QCoreApplication::applicationPid());
    m_delayPath = QCoreApplication::applicationDirPath() + "/res/" + delayName;
    QByteArray delay = "<ui>\n<subcommands>\n  <KListCommand id=\"delayed\">\n";
    for (int i = 0; i < kDelayItems; ++i)
        delay += button(QString("delay_%1").arg(i), 100000 + i);
    delay += "  </KListCommand>\n</subcommands>\n</ui>\n";
    writeFile(m_delayPath, delay);

    QByteArray xml = "<ui>\n<attributes path=\"attributes.xml\"/>\n<commands>\n";
    for (int i = 0; i < kSharedButtons; ++i)
        xml += button(QString("shared_%1").arg(i), i);
    xml += QString("  <KListCommand id=\"delayed\" delayloadPath=\"%1\"/>\n").arg(delayName).toUtf8();
    int n = 1000;
    for (int t = 0; t < kTabs; ++t) {
        xml += QString("  <KListCommand id=\"tab_%1\" text=\"Tab %1\">\n").arg(t).toUtf8();
        for (int g = 0; g < kGroupsPerTab; ++g) {
            xml += QString("    <KListCommand id=\"group_%1_%2\" text=\"Group\">\n").arg(t).arg(g).toUtf8();
            for (int b = 0; b < kButtonsPerGroup; ++b, ++n)
                xml += button(QString("btn_%1").arg(n), n);
            xml += "      <separator/>\n";
            xml += QString("      <command idQ=\"shared_%1\"/>\n").arg((t * kGroupsPerTab + g) % kSharedButtons).toUtf8();
            xml += QString("      <KListCommand id=\"more_%1_%2\" text=\"More\">\n").arg(t).arg(g).toUtf8();
            for (int b = 0; b < 3; ++b, ++n)
                xml += button(QString("btn_%1").arg(n), n);
            xml += "      </KListCommand>\n";
            xml += "    </KListCommand>\n";
        }
        xml += "  </KListCommand>\n";
    }
    xml += "  <KComposeListCommand id=\"composed\">\n";
    for (int t = 0; t < kTabs; ++t)
        xml += QString("    <compose idQ=\"tab_%1\"/>\n").arg(t).toUtf8();
    xml += "  </KComposeListCommand>\n</commands>\n</ui>\n";
    m_mainPath = m_dir.filePath("main.xml");
    writeFile(m_mainPath, xml);

    KDomDocument main;
    QVERIFY(main.setContent(m_mainPath));
    KApplication* app = KApplication::instance();
    QVERIFY(app->attrParser()->setupMainXml(main));

    // Sanity: everything parses and the delay file loads.
    m_commandCount = parseOnce(false);
    QDomDocument a, b;
    QFile fa(m_mainPath), fb(m_delayPath);
    QVERIFY(fa.open(QIODevice::ReadOnly));
    QVERIFY(fb.open(QIODevice::ReadOnly));
    QVERIFY(a.setContent(&fa));
    QVERIFY(b.setContent(&fb));
    m_elementCount = countElements(a.documentElement()) + countElements(b.documentElement());
    qInfo("%d command objects from %d elements", m_commandCount, m_elementCount);
    QVERIFY(m_commandCount >= 5000);
}

void bench_CommandParse::cleanupTestCase()
{
    QFile::remove(m_delayPath);
    QDir().rmdir(QFileInfo(m_delayPath).absolutePath());
}

// Reads the file, parses its commands into a fresh registry and loads the delay file; the
// number of command objects made.
int bench_CommandParse::parseOnce(bool keepAlive, size_t* heapBytes)
{
    KApplication* app = KApplication::instance();
    const size_t before = heapInUse();
    auto* commands = new KCommands(app, nullptr, nullptr);
    {
        KDomDocument doc;
        doc.setContent(m_mainPath);
        commands->setupXml(doc.documentElement().firstChildElement("commands"), false);
    }
    commands->command("delayed")->count();
    const int made = commands->findChildren<KCommand*>().size();
    if (heapBytes)
        *heapBytes = heapInUse() - before;
    if (!keepAlive)
        delete commands;
    else
        commands->deleteLater();
    return made;
}

void bench_CommandParse::parse()
{
    QBENCHMARK {
        parseOnce(false);
    }
}

void bench_CommandParse::floor()
{
    QBENCHMARK {
        QObject root;
        for (const QString& path : {m_mainPath, m_delayPath}) {
            QDomDocument doc;
            QFile file(path);
            file.open(QIODevice::ReadOnly);
            doc.setContent(&file);
            buildFloor(doc.documentElement(), &root);
        }
    }
}

void bench_CommandParse::summary()
{
    // Medians of several runs of both, in one process, so that they can be compared.
    auto median = [](QList<qint64> v) {
        std::sort(v.begin(), v.end());
        return v.at(v.size() / 2);
    };
    QList<qint64> parseNs, floorNs;
    QElapsedTimer t;
    for (int i = 0; i < 9; ++i) {
        t.start();
        parseOnce(false);
        parseNs << t.nsecsElapsed();
        t.start();
        {
            QObject root;
            for (const QString& path : {m_mainPath, m_delayPath}) {
                QDomDocument doc;
                QFile file(path);
                file.open(QIODevice::ReadOnly);
                doc.setContent(&file);
                buildFloor(doc.documentElement(), &root);
            }
        }
        floorNs << t.nsecsElapsed();
    }
    size_t heap = 0;
    parseOnce(true, &heap);
    size_t floorHeap = 0;
    {
        const size_t before = heapInUse();
        QObject root;
        for (const QString& path : {m_mainPath, m_delayPath}) {
            QDomDocument doc;
            QFile file(path);
            file.open(QIODevice::ReadOnly);
            doc.setContent(&file);
            buildFloor(doc.documentElement(), &root);
        }
        floorHeap = heapInUse() - before;
    }
    const double p = median(parseNs) / 1e6, f = median(floorNs) / 1e6;
    qInfo("commands: %d, elements: %d", m_commandCount, m_elementCount);
    qInfo("parse: %.2f ms, floor: %.2f ms, ratio %.2f", p, f, p / f);
    qInfo("heap kept per command: parse %.0f bytes, floor %.0f bytes per element",
          double(heap) / m_commandCount, double(floorHeap) / m_elementCount);
}

int main(int argc, char** argv)
{
    KApplication app(argc, argv);
    bench_CommandParse bench;
    return QTest::qExec(&bench, argc, argv);
}

#include "bench_commandparse.moc"
