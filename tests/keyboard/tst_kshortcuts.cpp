#include <QtTest/QtTest>

#include <kapplication.h>
#include <kcommands.h>
#include <kmainwindow.h>
#include <kshortcuts.h>
#include <kshortcutswrapper.h>
#include <ktestsupport.h>

#include "keytiptesthelpers.h"

using namespace KeyTipTest;

namespace {

const QByteArray s_commands = "<commands>"
                              "<KTriggerCommand id='Bold' text='Bold'/>"
                              "<KTriggerCommand id='Italic' text='Italic'/>"
                              "<KTriggerCommand id='New' text='New'/>"
                              "</commands>";

struct Counter
{
    int count = 0;
    void watch(KCommand* cmd, QObject* context)
    {
        QObject::connect(cmd, &KCommand::triggered, context, [this] { ++count; });
    }
};

} // namespace

class tst_KShortcuts : public QObject
{
    Q_OBJECT
private Q_SLOTS:
    void cleanup();
    void readElement_data();
    void readElement();
    void firesInTheActiveWindowOnly();
    void disabledCommandConsumesKey();
    void overlayDisablesAndRestores();
    void resetRemovesFirstMatch();
    void categoriesAndCustomList();
};

void tst_KShortcuts::cleanup()
{
    KApplication::instance()->resetXml();
}

void tst_KShortcuts::readElement_data()
{
    QTest::addColumn<QByteArray>("shortcuts");
    QTest::addColumn<bool>("shield");
    QTest::addColumn<QStringList>("keys");
    QTest::addColumn<QStringList>("warnings");
    QTest::newRow("good") << QByteArray("<shortcut key='Ctrl+B' cmd='Bold'/><shortcut key='Ctrl+I' cmd='Italic'/>")
                          << false << QStringList{"Ctrl+B", "Ctrl+I"} << QStringList();
    QTest::newRow("unknown command") << QByteArray("<shortcut key='Ctrl+B' cmd='Nope'/>\n<shortcut key='Ctrl+I' cmd='Italic'/>")
                                     << false << QStringList{"Ctrl+I"}
                                     << QStringList{"can not found command named:Nope At line: 1"};
    QTest::newRow("malformed key") << QByteArray("<shortcut key='Ctrl+Frob' cmd='Bold'/><shortcut key='' cmd='Bold'/>")
                                   << false << QStringList()
                                   << QStringList{"invalid shortcut key: Ctrl+Frob At line: 1",
                                                  "invalid shortcut key:  At line: 1"};
    QTest::newRow("no command") << QByteArray("<shortcut key='Ctrl+B'/>") << false << QStringList()
                                << QStringList{"menubar no command given. At line: 1"};
    QTest::newRow("other element") << QByteArray("<key name='x'/><shortcut key='Ctrl+B' cmd='Bold'/>") << false
                                   << QStringList{"Ctrl+B"} << QStringList{"can't identity element key At line: 1"};
    QTest::newRow("duplicate key kept") << QByteArray("<shortcut key='Ctrl+B' cmd='Bold'/><shortcut key='Ctrl+B' cmd='Italic'/>")
                                        << false << QStringList{"Ctrl+B", "Ctrl+B"} << QStringList();
    QTest::newRow("shielded file keys") << QByteArray("<shortcut key='Ctrl+N' cmd='New'/><shortcut key='ctrl+n' cmd='New'/>")
                                        << true << QStringList{"Ctrl+N"} << QStringList();
    QTest::newRow("file key unshielded") << QByteArray("<shortcut key='Ctrl+N' cmd='New'/>") << false
                                         << QStringList{"Ctrl+N"} << QStringList();
}

void tst_KShortcuts::readElement()
{
    QFETCH(QByteArray, shortcuts);
    QFETCH(bool, shield);
    QFETCH(QStringList, keys);
    QFETCH(QStringList, warnings);
    QTemporaryDir dir;
    QVERIFY(KTestSupport::loadMainXml(dir.path(), s_commands + "<mainwindow/>"));
    KMainWindow window;
    window.SetShieldButton(shield);
    window.polishXml();
    QDomDocument doc;
    QVERIFY(doc.setContent(QByteArray("<shortcuts>") + shortcuts + "</shortcuts>"));
    KWarningCatcher catcher;
    QVERIFY(window.shortcuts()->setupXml(KDomElement(doc.documentElement(), QByteArray()), shield));
    QCOMPARE(catcher.messages(), warnings);
    QStringList got;
    for (int i = 0; i < window.shortcuts()->count(); ++i)
        got.append(window.shortcuts()->shortcutAt(i)->key().toString(QKeySequence::PortableText));
    QCOMPARE(got, keys);
}

void tst_KShortcuts::firesInTheActiveWindowOnly()
{
    QTemporaryDir dir;
    // Each window reads its own commands, so that each has a Bold of its own.
    QVERIFY(KTestSupport::loadMainXml(dir.path(), "<mainwindow>" + s_commands
                                      + "<shortcuts><shortcut key='Ctrl+B' cmd='Bold'/>"
                                        "<shortcut key='Ctrl+Shift+B' cmd='Bold'/></shortcuts></mainwindow>"));
    KMainWindow a;
    KMainWindow b;
    a.polishXml();
    b.polishXml();
    Counter inA;
    Counter inB;
    inA.watch(a.commands()->command("Bold"), this);
    inB.watch(b.commands()->command("Bold"), this);
    QVERIFY(a.commands()->command("Bold") != b.commands()->command("Bold"));
    // The hint is the text as written; the later key wins.
    QCOMPARE(a.commands()->command("Bold")->shortcutHint(), QString("Ctrl+Shift+B"));
    QVERIFY(showCurrent(b));
    QVERIFY(showCurrent(a));
    QTest::keyClick(&a, Qt::Key_B, Qt::ControlModifier);
    QCOMPARE(inA.count, 1);
    QCOMPARE(inB.count, 0);
    QVERIFY(showCurrent(b));
    QTest::keyClick(&b, Qt::Key_B, Qt::ControlModifier | Qt::ShiftModifier);
    QCOMPARE(inA.count, 1);
    QCOMPARE(inB.count, 1);
    QCOMPARE(a.getShortcut("Bold", CommandShortcut).size(), 2);
    QCOMPARE(a.getShortcut("Bold", MacroShortcut).size(), 0);
}

void tst_KShortcuts::disabledCommandConsumesKey()
{
    QTemporaryDir dir;
    QVERIFY(KTestSupport::loadMainXml(dir.path(), s_commands
                                      + "<mainwindow><shortcuts><shortcut key='Ctrl+I' cmd='Italic'/></shortcuts>"
                                        "</mainwindow>"));
    KMainWindow window;
    window.polishXml();
    KCommand* italic = window.commands()->command("Italic");
    Counter fired;
    fired.watch(italic, this);
    QVERIFY(showCurrent(window));
    italic->setEnabled(false);
    QTest::keyClick(&window, Qt::Key_I, Qt::ControlModifier);
    QCOMPARE(fired.count, 0);
    italic->setEnabled(true);
    QTest::keyClick(&window, Qt::Key_I, Qt::ControlModifier);
    QCOMPARE(fired.count, 1);
}

void tst_KShortcuts::overlayDisablesAndRestores()
{
    QTemporaryDir dir;
    QVERIFY(KTestSupport::loadMainXml(dir.path(), s_commands
                                      + "<mainwindow><shortcuts><shortcut key='Ctrl+B' cmd='Bold'/></shortcuts>"
                                        "</mainwindow>"
                                        "<reading><shortcuts><shortcut key='Ctrl+B' cmd='Italic'/>"
                                        "<shortcut key='Ctrl+B' cmd='New'/></shortcuts></reading>"));
    KMainWindow window;
    window.polishXml();
    KShortcuts* list = window.shortcuts();
    window.shortcutsWrapper()->polishShortcutXml(QStringLiteral("reading"), true);
    QCOMPARE(list->count(), 3);
    QVERIFY(!list->shortcutAt(0)->isEnabled()); // the window's own went dark once
    QVERIFY(list->shortcutAt(1)->isEnabled());  // both of the overlay stay lit
    QVERIFY(list->shortcutAt(2)->isEnabled());
    window.shortcutsWrapper()->unPolishShortcutXml(QStringLiteral("reading"), true);
    QCOMPARE(list->count(), 1);
    QCOMPARE(list->shortcutAt(0)->getCommand(), QString("Bold"));
    QVERIFY(list->shortcutAt(0)->isEnabled());
}

void tst_KShortcuts::resetRemovesFirstMatch()
{
    QWidget host;
    KCommands commands(&host, &host, nullptr);
    auto* bold = new CountingCommand("Bold", &commands);
    commands.addCommand(QStringLiteral("Bold"), bold);
    KShortcuts list(&host, &commands);
    QSignalSpy removed(&list, &KShortcuts::beforeRmShortcut);
    KShortcut* first = list.addShortcut(QKeySequence("Ctrl+B"), "Bold", CommandShortcut);
    KShortcut* second = list.addShortcut(QKeySequence("Ctrl+B"), "Bold", CommandShortcut);
    QDomDocument doc;
    QVERIFY(doc.setContent(QByteArray("<shortcuts><shortcut key='Ctrl+B' cmd='Bold'/></shortcuts>")));
    QVERIFY(list.resetXml(KDomElement(doc.documentElement(), QByteArray())));
    QCOMPARE(list.count(), 1);
    QCOMPARE(list.shortcutAt(0), second);
    Q_UNUSED(first);
    QCOMPARE(removed.count(), 1);
    QCOMPARE(removed.at(0).at(1).toString(), QString("Bold")); // the command's text
    list.removeShortcut(nullptr);
    QCOMPARE(removed.count(), 1);
}

void tst_KShortcuts::categoriesAndCustomList()
{
    QWidget host;
    KCommands commands(&host, &host, nullptr);
    auto* style = new CountingCommand("Styles", &commands);
    commands.addCommand(QStringLiteral("StyleShortcut"), style);
    KShortcuts list(&host, &commands);
    KShortcut* heading = list.addShortcut(QKeySequence("Ctrl+Alt+1"), "Heading 1", StyleShortcut);
    QCOMPARE(heading->command(), style);
    KShortcut* macro = list.addShortcut(QKeySequence("Alt+F8"), "RunMacro", MacroShortcut);
    QVERIFY(macro->command());
    QCOMPARE(macro->command()->parent(), &host);
    KShortcut* unknown = list.addShortcut(QKeySequence("F9"), "Nothing", ShortcutCategory(9));
    QVERIFY(!unknown->command());
    unknown->execute(); // does nothing
    // Activation tells the style command which style was asked for.
    Q_EMIT heading->activated();
    QCOMPARE(style->property("ShortcutKey").toString(), QString("Heading 1"));
    QCOMPARE(style->fired, 1);

    KMainWindow window;
    KCustomShortcuts* custom = window.customShortcuts();
    QCOMPARE(window.customShortcuts(), custom);
    KShortcut* mine = window.shortcuts()->addShortcut(QKeySequence("Ctrl+F2"), "x", CommandShortcut);
    custom->add(mine);
    QVERIFY(!custom->item(-1));
    QVERIFY(!custom->item(1));
    QCOMPARE(custom->shortcutAt(QKeySequence("Ctrl+F2")), mine);
    custom->clear();
    QCOMPARE(custom->count(), 0);
    QCOMPARE(window.shortcuts()->count(), 0);
}

NORVIK_TEST_MAIN(tst_KShortcuts)
#include "tst_kshortcuts.moc"
