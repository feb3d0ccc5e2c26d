#include <ktestsupport.h>

#include <QDir>
#include <QPointer>
#include <QSignalSpy>
#include <QTemporaryDir>
#include <QWidget>

#include <kappattributeparser.h>
#include <kcommandfactory.h>
#include <kcommands.h>
#include <kcomposelistcommand.h>
#include <klistcommand.h>
#include <kseparatorcommand.h>
#include <ktriggercommand.h>

// A class whose host must be a widget: the factory refuses other hosts.
class KWidgetHostedCommand : public KTriggerCommand
{
    Q_OBJECT
public:
    KWidgetHostedCommand(QWidget* host, QObject* parent) : KTriggerCommand(host, parent) {}
};

// A class with a typed command-pointer property and a double.
class KPointerCommand : public KTriggerCommand
{
    Q_OBJECT
    Q_PROPERTY(KCommand* partner READ partner WRITE setPartner)
    Q_PROPERTY(double ratio READ ratio WRITE setRatio)
public:
    KPointerCommand(QObject* host, QObject* parent) : KTriggerCommand(host, parent) {}
    KCommand* partner() const { return m_partner; }
    void setPartner(KCommand* c) { m_partner = c; }
    double ratio() const { return m_ratio; }
    void setRatio(double r) { m_ratio = r; }
    KCommand* m_partner = nullptr;
    double m_ratio = 0;
};

static KCommandFactoryItem<KWidgetHostedCommand, QWidget> s_widgetHosted("KWidgetHostedCommand", "QWidget");
static KCommandFactoryItem<KPointerCommand, QObject> s_pointer("KPointerCommand", "QObject");

class tst_KCommands : public QObject
{
    Q_OBJECT
private Q_SLOTS:
    void initTestCase();
    void cleanupTestCase();
    void typedProperties();
    void parserWarnings_data();
    void parserWarnings();
    void scopes();
    void findCommand_data();
    void findCommand();
    void composedLists();
    void delayLoading();
    void resetXML();
    void resetCommandXML();

private:
    bool parse(KCommands& commands, const QByteArray& body, bool filtered = false);
    static QString resFile(const QString& name) { return QCoreApplication::applicationDirPath() + "/res/" + name; }
    // Writes a delay-load file beside the test program, where delayloadPath looks; returns its name.
    QString writeRes(const QString& stem, const QByteArray& text)
    {
        const QString name = QString("%1_%2.xml").arg(stem).arg(QCoreApplication::applicationPid());
        m_resFiles << resFile(name);
        KTestSupport::writeFile(resFile(name), text);
        return name;
    }

    QTemporaryDir m_dir;
    int m_files = 0;
    QStringList m_resFiles;
};

bool tst_KCommands::parse(KCommands& commands, const QByteArray& body, bool filtered)
{
    const QString path = KTestSupport::writeFile(m_dir.filePath(QString("doc%1.xml").arg(++m_files)),
                                                 "<ui>\n<commands>\n" + body + "</commands></ui>");
    KDomDocument doc;
    if (!doc.setContent(path))
        return false;
    return commands.setupXml(doc.documentElement().firstChildElement("commands"), filtered);
}

void tst_KCommands::initTestCase()
{
    QVERIFY(m_dir.isValid());
    const QString path = KTestSupport::writeFile(m_dir.filePath("attributes.xml"), R"(<r><attributes>
<attribute name="aid" type="int"/>
<attribute name="forceenabled" type="bool"/>
<attribute name="tint" type="color"/>
<attribute name="mode" type="enum"><item name="small"/><item name="large" value="5"/></attribute>
<attribute name="buddy" type="command"/>
</attributes></r>)");
    KDomDocument doc;
    QVERIFY(doc.setContent(path));
    QVERIFY(KApplication::instance()->attrParser()->setupXml(doc));
}

void tst_KCommands::cleanupTestCase()
{
    for (const QString& f : qAsConst(m_resFiles))
        QFile::remove(f);
    QDir().rmdir(QCoreApplication::applicationDirPath() + "/res");
}

void tst_KCommands::typedProperties()
{
    KCommands commands(this, nullptr, nullptr);
    KWarningCatcher warnings;
    QVERIFY(parse(commands, R"(
<KTriggerCommand id="first" text="Bold" checkedHint="1" buttonStyle="3"
    aid="42" forceenabled="false" tint="ff00ff00" mode="large" note="free text" buddy="ghost"/>
<KPointerCommand id="second" partner="first" ratio="0.5"/>
<KPointerCommand id="third" partner="later" buttonStyle="x"/>
<KTriggerCommand id="later"/>
)"));
    KCommand* first = commands.command("first");
    QVERIFY(first);
    QVERIFY(first->checkedHint());
    const QVariantList values = {first->buttonStyle(), first->property("aid"), first->property("tint"),
                                 first->property("mode"), first->property("note")};
    QCOMPARE(values, (QVariantList{3, 42, 0xff00ff00u, 5, QString("free text")}));
    QVERIFY(!first->isEnabled()); // "forceenabled" typed as bool overrides the vetoes
    // A declared attribute whose value does not convert is dropped.
    QVERIFY(!first->property("buddy").isValid());

    auto* second = qobject_cast<KPointerCommand*>(commands.command("second"));
    QVERIFY(second);
    QCOMPARE(second->partner(), first);
    QCOMPARE(second->ratio(), 0.5);

    // A reference must be defined ahead of its use.
    auto* third = qobject_cast<KPointerCommand*>(commands.command("third"));
    QVERIFY(third);
    QVERIFY(!third->partner());
    QCOMPARE(warnings.messages(), (QStringList{"can not find command named: ghost",
                                               "can not find command named: later",
                                               "Failed to set property named: partner . At line: 7"}));
    // A bad number is no fault: it reads as -1.
    QCOMPARE(third->buttonStyle(), -1);
}

void tst_KCommands::parserWarnings_data()
{
    QTest::addColumn<QByteArray>("xml");
    QTest::addColumn<QStringList>("expected");
    QTest::addColumn<int>("created"); // top-level commands in the registry afterwards

    QTest::newRow("no id") << QByteArray("<KTriggerCommand/>\n")
                           << QStringList{"you must give a topmost command an id. KTriggerCommand"} << 0;
    QTest::newRow("repeated id")
        << QByteArray("<KTriggerCommand id=\"a\"/>\n<KListCommand id=\"a\"/>\n")
        << QStringList{"id repeated: a"} << 1;
    QTest::newRow("unknown class") << QByteArray("<KNoSuchCommand id=\"a\"/>\n")
                                   << QStringList{"can not create command named: KNoSuchCommand"} << 0;
    QTest::newRow("wrong host")
        << QByteArray("<KWidgetHostedCommand id=\"a\"/>\n")
        << QStringList{"KWidgetHostedCommand need a host QWidget",
                       "can not create command named: KWidgetHostedCommand"} << 0;
    QTest::newRow("readonly") << QByteArray("<KTriggerCommand id=\"a\" host=\"x\"/>\n")
                              << QStringList{"Property named: host is readonly. At line: 3"} << 1;
    QTest::newRow("leaf with children")
        << QByteArray("<KTriggerCommand id=\"a\">\n<KTriggerCommand/></KTriggerCommand>\n")
        << QStringList{"KTriggerCommand  do not support sub elements. At line: 3"} << 1;
    QTest::newRow("separators")
        << QByteArray("<KListCommand id=\"l\">\n<separator/>\n<separator startEndTransparent=\"1\"/>\n"
                      "<separator><x/></separator>\n</KListCommand>\n")
        << QStringList{"Separator do not support attributes. At line: 5",
                       "Separator element do not support sub elements. At line: 6"} << 1;
    QTest::newRow("references")
        << QByteArray("<KTriggerCommand id=\"t\"/>\n<KListCommand id=\"l\">\n<command/>\n"
                      "<command idQ=\"ghost\"/>\n<command idQ=\"t\" text=\"x\"/>\n"
                      "<command idQ=\"t\"><x/></command>\n</KListCommand>\n")
        << QStringList{"No idQ attribute found in a command element. At line: 5",
                       "Can not find command named: ghost . At line: 6",
                       "7 Command element only support idQ attribute. At line: 7",
                       "8 Command element do not support sub elements. At line: 8"} << 2;
    QTest::newRow("compose of a leaf")
        << QByteArray("<KTriggerCommand id=\"t\"/>\n<KComposeListCommand id=\"c\">\n"
                      "<compose idQ=\"t\"/>\n</KComposeListCommand>\n")
        << QStringList{"Composed command must be a list command. At line: 5"} << 2;
    QTest::newRow("sub-command id taken in any scope")
        << QByteArray("<KTriggerCommand id=\"t\"/>\n<KListCommand id=\"l\">\n"
                      "<KTriggerCommand id=\"t\"/>\n<KNope/>\n</KListCommand>\n")
        << QStringList{"id repeated: t . At line: 5", "can not create command named: KNope"} << 2;
}

void tst_KCommands::parserWarnings()
{
    QFETCH(QByteArray, xml);
    QFETCH(QStringList, expected);
    QFETCH(int, created);
    KCommands commands(this, nullptr, nullptr);
    KWarningCatcher warnings;
    QVERIFY(parse(commands, xml)); // faults never fail a parse
    QCOMPARE(warnings.messages(), expected);
    QCOMPARE(commands.findChildren<KCommand*>(QString(), Qt::FindDirectChildrenOnly).size(), created);
}

void tst_KCommands::scopes()
{
    KCommands app(this, nullptr, nullptr);
    QObject windowHost;
    KCommands window(&windowHost, nullptr, &app);
    QVERIFY(parse(app, "<KTriggerCommand id=\"x\" text=\"app\"/>\n<KTriggerCommand id=\"shared\"/>\n"));
    KWarningCatcher warnings;
    // Top-level ids are checked in their own scope only: the window shadows "x".
    QVERIFY(parse(window, "<KTriggerCommand id=\"x\" text=\"window\"/>\n"
                          "<KListCommand id=\"menu\"><command idQ=\"shared\"/></KListCommand>\n"));
    QCOMPARE(warnings.count(), 0);
    QCOMPARE(window.command("x")->text() + app.command("x")->text(), QString("windowapp"));
    QCOMPARE(window.command("x")->host(), &windowHost);
    QCOMPARE(window.command("menu")->subCommand(0), app.command("shared"));
    QVERIFY(!app.command("menu"));
    QVERIFY(!window.existCmd(app.command("shared")));

    // A registered command that dies is forgotten, and the outer scope shows through.
    delete window.command("x");
    QCOMPARE(window.command("x"), app.command("x"));
}

void tst_KCommands::findCommand_data()
{
    QTest::addColumn<QString>("path");
    QTest::addColumn<QString>("expectedText"); // empty: null expected
    QTest::newRow("direct") << "menu" << "Menu";
    QTest::newRow("dotted id in the map wins") << "a.b.c" << "Direct";
    QTest::newRow("by id") << "menu.open" << "Open";
    QTest::newRow("tip before a later id") << "menu.dup" << "ByTip";
    QTest::newRow("two levels by tip") << "menu.sub.deepTip" << "Deep";
    QTest::newRow("missing part") << "menu.nothing" << "";
    QTest::newRow("head of the outer scope") << "outer.item" << "";
}

void tst_KCommands::findCommand()
{
    QFETCH(QString, path);
    QFETCH(QString, expectedText);
    KCommands outer(this, nullptr, nullptr);
    QVERIFY(parse(outer, "<KListCommand id=\"outer\"><KTriggerCommand id=\"item\"/></KListCommand>\n"));
    KCommands commands(this, nullptr, &outer);
    QVERIFY(parse(commands, R"(
<KTriggerCommand id="a.b.c" text="Direct"/>
<KListCommand id="menu" text="Menu">
  <separator/>
  <KTriggerCommand id="open" text="Open"/>
  <KTriggerCommand customTip="dup" text="ByTip"/>
  <KTriggerCommand id="dup" text="ById"/>
  <KListCommand id="sub"><KTriggerCommand id="deep" customTip="deepTip" text="Deep"/></KListCommand>
</KListCommand>
)"));
    KCommand* found = commands.findCommand(path);
    if (expectedText.isEmpty())
        QVERIFY(!found);
    else
        QCOMPARE(found ? found->text() : QString("<null>"), expectedText);
}

void tst_KCommands::composedLists()
{
    KCommands commands(this, nullptr, nullptr);
    QVERIFY(parse(commands, R"(
<KListCommand id="inner"><KTriggerCommand id="i1"/><KTriggerCommand id="i2"/></KListCommand>
<KTriggerCommand id="plain"/>
<KComposeListCommand id="all">
  <command idQ="plain"/>
  <compose idQ="inner"/>
  <separator/>
  <KTriggerCommand id="own"/>
</KComposeListCommand>
)"));
    auto* all = qobject_cast<KComposeListCommand*>(commands.command("all"));
    QVERIFY(all);
    QCOMPARE(all->countOrig(), 4);
    QList<KCommand*> flat;
    for (int i = 0; i < all->count(); ++i)
        flat << all->subCommand(i);
    QCOMPARE(flat, (QList<KCommand*>{commands.command("plain"), commands.command("i1"), commands.command("i2"),
                                     KSeparatorCommand::instance(), commands.command("own")}));
    QCOMPARE(commands.findCommand("all.i2"), commands.command("i2"));
}

void tst_KCommands::delayLoading()
{
    const QString fileName = writeRes("delay", R"(<ui>
<commands><KTriggerCommand id="fromFile" text="File"/></commands>
<subcommands>
  <KListCommand/>
  <KListCommand id="menuA"><KTriggerCommand id="a1"/><command idQ="fromFile"/></KListCommand>
  <KListCommand id="menuB"><KTriggerCommand id="b1"/></KListCommand>
</subcommands>
</ui>)");
    // Each file read for a list is noted, the missing one too.
    QTest::ignoreMessage(QtDebugMsg, qPrintable("delay-load ui file:  " + fileName));
    QTest::ignoreMessage(QtDebugMsg, qPrintable("delay-load ui file:  missing_" + fileName));
    KCommands commands(this, nullptr, nullptr);
    QVERIFY(parse(commands, QString(R"(
<KListCommand id="menuA" delayloadPath="%1"/>
<KListCommand id="menuB" delayloadPath="%1"/>
<KListCommand id="inline" delayloadPath="%1"><KTriggerCommand id="own"/></KListCommand>
<KListCommand id="lost" delayloadPath="missing_%1"/>
)").arg(fileName).toUtf8()));
    auto* menuA = qobject_cast<KListCommand*>(commands.command("menuA"));
    QVERIFY(menuA);
    QVERIFY(!menuA->isSubCommandsLoaded());
    QVERIFY(!commands.command("fromFile"));
    QCOMPARE(commands.command("inline")->count(), 1); // content in the description wins

    KWarningCatcher warnings;
    QSignalSpy inserts(menuA, &KAbstractListCommand::subCommandInsert);
    QCOMPARE(menuA->count(), 2);
    QCOMPARE(inserts.count(), 2);
    QCOMPARE(menuA->subCommand(1), commands.command("fromFile"));
    QCOMPARE(warnings.messages(), QStringList{"you must give a delay-loaded sub command an id. 4"}); // its line

    // The file is read once: changed on disk, the second list still gets the kept content.
    KTestSupport::writeFile(resFile(fileName), "<ui><subcommands/></ui>");
    QCOMPARE(commands.command("menuB")->count(), 1);
    QCOMPARE(commands.command("menuB")->subCommand(0), commands.command("b1"));

    // A missing file: empty, silent, and not tried again.
    warnings.clear();
    auto* lost = qobject_cast<KListCommand*>(commands.command("lost"));
    QCOMPARE(lost->count(), 0);
    QCOMPARE(warnings.count(), 0);
    QVERIFY(lost->isSubCommandsLoaded());
}

void tst_KCommands::resetXML()
{
    const QString fileName = writeRes("reset", "<ui><subcommands><KListCommand id=\"m\"><KTriggerCommand/>"
                                               "</KListCommand></subcommands></ui>");
    QTest::ignoreMessage(QtDebugMsg, qPrintable("delay-load ui file:  " + fileName));
    KCommands commands(this, nullptr, nullptr);
    const QByteArray body = QString("<KListCommand id=\"m\" delayloadPath=\"%1\"/>\n"
                                    "<KListCommand id=\"n\"><KTriggerCommand id=\"s\"/></KListCommand>\n")
                                .arg(fileName).toUtf8();
    QVERIFY(parse(commands, body));
    QCOMPARE(commands.command("m")->count(), 1);
    QPointer<KCommand> s = commands.command("s");
    QPointer<QObject> stranger = new QObject(&commands);

    commands.resetXML();
    QVERIFY(!s);
    QVERIFY(!stranger);
    QVERIFY(!commands.command("n"));
    QVERIFY(!commands.command("m"));

    // A second reading works, and the delay file stays in memory though it is gone from disk.
    QFile::remove(resFile(fileName));
    KWarningCatcher warnings;
    QVERIFY(parse(commands, body));
    QCOMPARE(warnings.count(), 0);
    QCOMPARE(commands.command("m")->count(), 1);
}

void tst_KCommands::resetCommandXML()
{
    QVERIFY(KTestSupport::loadMainXml(m_dir.path(), R"(<commands><KTriggerCommand id="appCmd" text="App"/></commands>
<mainwindow><commands>
  <KTriggerCommand id="winCmd" text="Win" checkedHint="0"/>
  <KListCommand id="winList"><KTriggerCommand text="one"/></KListCommand>
</commands></mainwindow>)"));
    KApplication* app = KApplication::instance();
    KCommands window(this, nullptr, app->commands());
    QVERIFY(window.setupXml(app->getDoms().last().documentElement().firstChildElement("mainwindow")
                                .firstChildElement("commands"), false));

    // Every command is changed, then read again from its element: values, the id and a
    // list's items come back; the application scope is not re-read this way.
    KCommand* winCmd = window.command("winCmd");
    KCommand* list = window.command("winList");
    KCommand* appCmd = app->commands()->command("appCmd");
    QVERIFY(winCmd);
    QVERIFY(list);
    QVERIFY(appCmd);
    for (KCommand* cmd : {winCmd, list, appCmd})
        cmd->setText("changed");
    winCmd->setCheckedHint(true);
    window.resetCommandXML("winCmd");
    window.resetCommandXML("winList");
    app->commands()->resetCommandXML("appCmd");
    QCOMPARE(winCmd->text(), QString("Win"));
    QVERIFY(!winCmd->checkedHint());
    QCOMPARE(winCmd->property("id"), QVariant(QString("winCmd")));
    QCOMPARE(KTestSupport::texts(list), QStringList{"one"});
    QCOMPARE(appCmd->text(), QString("changed"));
    app->resetXml();
}

NORVIK_TEST_MAIN(tst_KCommands)
#include "tst_kcommands.moc"
