#include <ktestsupport.h>

#include <QDockWidget>
#include <QSignalSpy>
#include <QTemporaryDir>
#include <QWindow>

#include <kcommandbarprop.h>
#include <kcommands.h>
#include <kmainwindow.h>
#include <ktoolbar.h>
#include <kuixmlparaser.h>

namespace {

// A main window that records what the parser hands to the virtuals a host may override.
class RecordingWindow : public KMainWindow
{
public:
    void hideDocTabbarEx(bool hide) override
    {
        calls << QStringLiteral("hideDocTabbarEx:%1").arg(hide);
        KMainWindow::hideDocTabbarEx(hide);
    }
    void addrbQuickToolBar(KCommand* cmd) override { record("quick", cmd); }
    void addNoTabPageWidget(KCommand* cmd) override { record("notab", cmd); }
    void addrbTabbarButton(KCommand* cmd) override { record("newbutton", cmd); }

    QStringList calls;

private:
    void record(const char* what, KCommand* cmd)
    {
        calls << QString::fromLatin1(what) + QLatin1Char(':')
                + (cmd ? cmd->property("id").toString() : QStringLiteral("null"));
    }
};

const QByteArray s_commands = "<commands>"
                              "<KListCommand id='Std' text='Standard'/>"
                              "<KListCommand id='Fmt'/>"
                              "<KListCommand id='Menu'/>"
                              "<KTriggerCommand id='Panel'/>"
                              "<KListCommand id='TrackChangesToolBar'/>"
                              "</commands>";

} // namespace

// Reading the mainwindow element: where each bar goes, what a shielded window leaves out, and
// the warnings for what cannot be read.
class tst_KUiXmlParaser : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void initTestCase();
    void cleanup();
    void toolBarPlacement_data();
    void toolBarPlacement();
    void windowAttributes();
    void popupMenusAndDocks();
    void warnings_data();
    void warnings();
    void shieldReadsReducedSet_data();
    void shieldReadsReducedSet();

private:
    // Writes a description with a mainwindow element holding body and reads it into the
    // application; false when that failed.
    bool load(const QByteArray& attributes, const QByteArray& body)
    {
        return KTestSupport::loadMainXml(m_dir.path(), "<mainwindow " + attributes + ">" + body + "</mainwindow>");
    }
    // Builds a window made after load() from the description; returns its warnings.
    static QStringList polish(KMainWindow& window);
    QTemporaryDir m_dir;
};

QStringList tst_KUiXmlParaser::polish(KMainWindow& window)
{
    KWarningCatcher warnings;
    window.polishXml();
    return warnings.messages();
}

void tst_KUiXmlParaser::initTestCase()
{
    qRegisterMetaType<QToolBar*>();
}

void tst_KUiXmlParaser::cleanup()
{
    KApplication::instance()->resetXml();
}

void tst_KUiXmlParaser::toolBarPlacement_data()
{
    QTest::addColumn<QByteArray>("attributes");
    QTest::addColumn<int>("position");
    QTest::addColumn<int>("area"); // NoToolBarArea: floating
    QTest::addColumn<bool>("lineBreak");
    QTest::addColumn<bool>("closable");
    const auto row = [](const char* name, const char* attributes, int position, Qt::ToolBarArea area, bool lineBreak,
                        bool closable) { QTest::newRow(name) << QByteArray(attributes) << position << int(area) << lineBreak << closable; };
    row("l", "area='l'", 0, Qt::LeftToolBarArea, false, true);
    row("b", "area='b'", 3, Qt::BottomToolBarArea, false, true);
    row("unknown area", "area='left'", 1, Qt::TopToolBarArea, false, true);
    row("new line", "newLine='true'", 1, Qt::TopToolBarArea, true, true);
    row("float, not closable", "float='true' closable='false'", 1, Qt::NoToolBarArea, false, false);
}

void tst_KUiXmlParaser::toolBarPlacement()
{
    QFETCH(QByteArray, attributes);
    QFETCH(int, position);
    QFETCH(int, area);
    QFETCH(bool, lineBreak);
    QFETCH(bool, closable);
    const bool floating = area == Qt::NoToolBarArea;

    // A second bar ahead of the one under test, so that a break has something to break from.
    QVERIFY(load(QByteArray(), s_commands + "<toolbar cmd='Fmt'/><toolbar cmd='Std' " + attributes + "/>"));
    RecordingWindow window;
    QSignalSpy added(&window, &KMainWindow::addToolBarSignal);
    QSignalSpy breaks(&window, &KMainWindow::insertToolBarBreakSignal);
    const QStringList warnings = polish(window);
    QVERIFY2(warnings.isEmpty(), qPrintable(warnings.join('\n')));

    KCommand* cmd = window.commands()->command("Std");
    KToolBar* bar = window.findToolBar(cmd);
    QVERIFY(bar);
    QCOMPARE(window.toolBarCount(), 2);
    KCommandBarProp props(cmd, nullptr);
    QCOMPARE(props.getType(), 1);
    QCOMPARE(props.getPosition(), position);

    QCOMPARE(bar->isFloating(), floating);
    if (!floating)
        QCOMPARE(int(window.dockArea()->toolBarArea(bar)), area);
    QCOMPARE(window.dockArea()->toolBarBreak(bar), lineBreak);
    QCOMPARE(breaks.count(), lineBreak ? 1 : 0);
    QCOMPARE(added.count(), 2); // a floating bar is placed in its area first, then taken out
    QCOMPARE(bar->isClosable(), closable);
    // The window is not shown yet: a floating bar waits for it instead of showing by itself.
    QCOMPARE(bar->isFloatingHidden(), floating);
}

void tst_KUiXmlParaser::windowAttributes()
{
    QVERIFY(load("caption='Notes' blockHotkey='true' hideDocTabbarEx='true'", s_commands));
    RecordingWindow window;
    QVERIFY(polish(window).isEmpty());
    QCOMPARE(window.windowTitle(), QString("Notes"));
    QVERIFY(window.isBlockHotkey());
    QVERIFY(window.isHideDocTabbarEx());
    QCOMPARE(window.calls, QStringList({"hideDocTabbarEx:1"}));
}

void tst_KUiXmlParaser::popupMenusAndDocks()
{
    QVERIFY(load(QByteArray(), s_commands + "<popupmenu cmd='Menu'/><dock cmd='Panel' dockArea='dockArea_left'/><dock cmd='Fmt'/>"
                                            "<KRbQuicktoolCommand cmd='Std'/><KNoTabPageCommand cmd='missing'/><KRbTabBarNewButton cmd=''/>"));
    RecordingWindow window;
    const QStringList warnings = polish(window);
    QVERIFY2(warnings.isEmpty(), qPrintable(warnings.join('\n')));

    KCommand* menu = window.commands()->command("Menu");
    QCOMPARE(window.popupMenuCount(), 1);
    QCOMPARE(window.popupMenuAt(0), menu);
    QVERIFY(!window.findToolBar(menu));
    KCommandBarProp props(menu, nullptr);
    QCOMPARE(QPoint(props.getType(), props.getPosition()), QPoint(2, 4));

    QDockWidget* panel = window.findDockWidget("Panel");
    QDockWidget* fmt = window.findDockWidget("Fmt");
    QVERIFY(panel);
    QVERIFY(fmt);
    QCOMPARE(window.dockWidgetArea(panel), Qt::LeftDockWidgetArea);
    QCOMPARE(window.dockWidgetArea(fmt), Qt::RightDockWidgetArea);
    // The host's items get the command, null when unknown, and nothing without a cmd.
    QCOMPARE(window.calls, QStringList({"quick:Std", "notab:null"}));
}

void tst_KUiXmlParaser::warnings_data()
{
    QTest::addColumn<QByteArray>("body");
    QTest::addColumn<QStringList>("expected");
    QTest::addColumn<int>("toolBars");
    const auto row = [](const char* name, const QByteArray& body, const QStringList& expected, int toolBars) {
        QTest::newRow(name) << body << expected << toolBars;
    };
    row("toolbar without cmd", s_commands + "<toolbar/><toolbar cmd='Std'/>", {"menubar no command given."}, 1);
    row("unknown command", s_commands + "<toolbar cmd='Nope'/><toolbar cmd='Std'/>", {"can not found command named: Nope"}, 1);
    // Commands must be defined ahead of the bars that name them.
    row("toolbar ahead of its commands", "<toolbar cmd='Late'/><commands><KListCommand id='Late'/></commands><toolbar cmd='Late'/>",
        {"can not found command named: Late"}, 1);
    row("dock and popup menu", s_commands + "<dock dockArea='dockArea_left'/><popupmenu cmd='Gone'/>",
        {"menubar no command given.", "can not found command named: Gone"}, 0);
    row("unknown element", s_commands + "<sidebar cmd='Std'/><toolbar cmd='Std'/>", {"can't identity element  sidebar"}, 1);
}

void tst_KUiXmlParaser::warnings()
{
    QFETCH(QByteArray, body);
    QFETCH(QStringList, expected);
    QFETCH(int, toolBars);

    QVERIFY(load(QByteArray(), body));
    RecordingWindow window;
    // A failing element is dropped with one warning each; the walk goes on.
    QCOMPARE(polish(window), expected);
    QCOMPARE(window.toolBarCount(), toolBars);
}

void tst_KUiXmlParaser::shieldReadsReducedSet_data()
{
    QTest::addColumn<bool>("shield");
    QTest::addColumn<QStringList>("expected");
    QTest::addColumn<int>("toolBars");
    QTest::addColumn<int>("docks");
    QTest::addColumn<QStringList>("hostCalls");
    QTest::newRow("ordinary") << false << QStringList({"can't identity element  sidebar"}) << 3 << 1 << QStringList({"quick:Std"});
    // The shielded window drops the filtered commands, so a bar naming one is not found.
    QTest::newRow("shielded") << true << QStringList({"can not found command named: TrackChangesToolBar"}) << 2 << 0 << QStringList();
}

void tst_KUiXmlParaser::shieldReadsReducedSet()
{
    QFETCH(bool, shield);
    QFETCH(QStringList, expected);
    QFETCH(int, toolBars);
    QFETCH(int, docks);
    QFETCH(QStringList, hostCalls);

    QVERIFY(load(QByteArray(), s_commands
                                   + "<toolbar cmd='Std'/><toolbar cmd='TrackChangesToolBar'/><popupmenu cmd='Menu'/>"
                                     "<dock cmd='Panel'/><statusbar cmd='Std'/><KRbQuicktoolCommand cmd='Std'/>"
                                     "<sidebar/><menubar cmd='Menu'/><shortcuts/><toolbar cmd='Fmt'/>"));
    RecordingWindow window;
    window.SetShieldButton(shield);
    QCOMPARE(polish(window), expected);
    QCOMPARE(window.toolBarCount(), toolBars);
    QCOMPARE(window.findChildren<QDockWidget*>().size(), docks);
    QCOMPARE(window.calls, hostCalls);
    // Both read the popup menu and the bars that follow the unknown element.
    QCOMPARE(window.popupMenuCount(), 1);
    QVERIFY(window.findToolBar(window.commands()->command("Fmt")));
    QCOMPARE(window.commands()->command("TrackChangesToolBar") == nullptr, shield);
}

NORVIK_TEST_MAIN(tst_KUiXmlParaser)
#include "tst_kuixmlparaser.moc"
