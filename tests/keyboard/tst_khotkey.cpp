#include <QtTest/QtTest>

#include <kapplication.h>
#include <kdrawhelpfunc.h>
#include <khotkeyassistant.h>
#include <khotkeyevent.h>
#include <khotkeyeventhandle.h>
#include <kmainwindow.h>
#include <krbtabbar.h>
#include <krbtabfilebutton.h>
#include <krbtabwidget.h>
#include <ksettings.h>
#include <ktestsupport.h>

#include <QWindowStateChangeEvent>
#include <ktoolbutton.h>
#include <QLineEdit>
#include <kpopupwidget.h>

#include "keytiptesthelpers.h"

using namespace KeyTipTest;

namespace {

// A widget of a host that takes part in the key tips by the events alone, and notes what
// reached it.
class HostWidget : public QWidget
{
public:
    explicit HostWidget(QWidget* parent)
        : QWidget(parent)
    {
        setFixedSize(40, 30);
    }
    QStringList seen;
    int answer = 2;

protected:
    bool event(QEvent* e) override
    {
        if (int(e->type()) == KEvent::HotKeyCollect) {
            auto* collect = static_cast<KHotKeyCollectEvent*>(e);
            seen.append(QStringLiteral("collect rb=%1").arg(collect->useRbHotKey));
            collect->addHotKey(KDrawHelpFunc::getHotKeyShowPos(this, size(), 5, 0), QStringLiteral("Q"), this, true);
            return true;
        }
        if (int(e->type()) == KEvent::HotKeyTrigger) {
            auto* trigger = static_cast<KHotKeyTriggerEvent*>(e);
            seen.append(QStringLiteral("trigger %1 execute=%2").arg(trigger->message->key).arg(trigger->execute));
            trigger->result = answer;
            return true;
        }
        return QWidget::event(e);
    }
};

class HostCommand : public KTriggerCommand
{
public:
    using KTriggerCommand::KTriggerCommand;
    QPointer<HostWidget> widget;
    QWidget* createPocketWidget(QWidget* parent) override
    {
        widget = new HostWidget(parent);
        return widget;
    }
};

void attachRibbon(KMainWindow& window, Ribbon& ribbon)
{
    window.setHeaderBar(new KRbTabWidget(ribbon.tabs, &window));
}

} // namespace

class tst_KHotKey : public QObject
{
    Q_OBJECT
private Q_SLOTS:
    void init();
    void cleanup();
    void autoNumbers_data();
    void autoNumbers();
    void collectDropsWidgetsWithoutPlace();
    void search_data();
    void search();
    void firstLevelShowsTabsAndFileButton();
    void letterOpensTabAndNumbersItsControls();
    void escapeStepsBackAndAltLeaves();
    void narrowingAndFiring();
    void wrongLetterAndExits();
    void altWithLetterFiresWithoutDrawing();
    void fileButtonLevel();
    void protocolSeenFromHostWidget();
    void onlyTheCurrentWindowStarts();
    void windowClosedWhileTipsShow();
    void onlyARealStateChangeEnds();
};

void tst_KHotKey::init()
{
    KSettings().clear();
}

void tst_KHotKey::cleanup()
{
    QVERIFY(KHotKeyAssistant::assistants().isEmpty());
    QVERIFY(!QWidget::keyboardGrabber());
}

void tst_KHotKey::autoNumbers_data()
{
    QTest::addColumn<int>("count");
    QTest::addColumn<QStringList>("expectedTail");
    QTest::newRow("digits") << 3 << QStringList{"1", "2", "3"};
    QTest::newRow("tenth and eleventh") << 11 << QStringList{"9", "01", "02"};
    QTest::newRow("letters after zero") << 20 << QStringList{"09", "0A", "0B"};
    QTest::newRow("no Z, three places") << 44 << QStringList{"0X", "0Y", "001"};
}

void tst_KHotKey::autoNumbers()
{
    QFETCH(int, count);
    QFETCH(QStringList, expectedTail);
    QWidget target;
    KHotKeyCollectEvent collect;
    collect.useAutoIndex = true;
    for (int i = 0; i < count; ++i)
        collect.addHotKey(QPoint(5, 5), QString(), &target, true);
    QCOMPARE(collect.messages.size(), count);
    QStringList tail;
    for (int i = count - expectedTail.size(); i < count; ++i)
        tail.append(collect.messages.at(i).key);
    QCOMPARE(tail, expectedTail);
    QCOMPARE(collect.autoIndex, count + 1);
}

void tst_KHotKey::collectDropsWidgetsWithoutPlace()
{
    QWidget target;
    KHotKeyCollectEvent collect;
    collect.useAutoIndex = true;
    collect.addHotKey(QPoint(0, 0), QString(), &target, true); // no place: dropped, number used
    collect.addHotKey(QPoint(3, 3), QString(), &target, true);
    collect.useAutoIndex = false;
    collect.addHotKey(QPoint(3, 3), QString(), &target, true); // no key, no number: dropped
    collect.addHotKey(KDrawHelpFunc::getClassicHotKeyShowPos(), QString(), &target, true,
                      KHotKeyMarker::classicMenu());
    QCOMPARE(collect.messages.size(), 2);
    QCOMPARE(collect.messages.at(0).key, QString("2"));
    QCOMPARE(collect.messages.at(1).tag(), QString("Spacel"));
    QCOMPARE(collect.messages.at(1).pos, QPoint(-1, -1));
}

void tst_KHotKey::search_data()
{
    QTest::addColumn<QStringList>("labels"); // key, "-" before it for a disabled one
    QTest::addColumn<QString>("typed");
    QTest::addColumn<QList<int>>("results");
    QTest::addColumn<QString>("found");
    QTest::addColumn<QString>("text");
    QTest::newRow("unique letter") << QStringList{"H", "N"} << "n" << QList<int>{2} << "N" << "N";
    QTest::newRow("prefix waits") << QStringList{"AB", "AC"} << "a" << QList<int>{1} << "" << "A";
    QTest::newRow("prefix then full") << QStringList{"AB", "AC"} << "ac" << QList<int>{1, 2} << "AC" << "AC";
    QTest::newRow("wrong letter dropped") << QStringList{"AB", "AC"} << "ax" << QList<int>{1, 0} << "" << "A";
    QTest::newRow("shared key") << QStringList{"S", "S"} << "s" << QList<int>{3} << "S" << "S";
    QTest::newRow("disabled full match waits") << QStringList{"-X", "Y"} << "x" << QList<int>{1} << "" << "X";
}

void tst_KHotKey::search()
{
    QFETCH(QStringList, labels);
    QFETCH(QString, typed);
    QFETCH(QList<int>, results);
    QFETCH(QString, found);
    QFETCH(QString, text);
    QWidget host;
    KHotKeyAssistant assistant(&host, false, false);
    QWidget target;
    KHotKeyCollectEvent collect;
    for (const QString& label : labels) {
        const bool disabled = label.startsWith('-');
        collect.addHotKey(QPoint(4, 4), disabled ? label.mid(1) : label, &target, !disabled);
    }
    assistant.addHotKeyFromCollectEvent(&collect);
    QList<int> got;
    hotkey_message hit;
    for (const QChar c : typed)
        got.append(assistant.searchHotKey(QString(c), hit, nullptr));
    QCOMPARE(got, results);
    QCOMPARE(hit.key, found);
    QCOMPARE(assistant.typedText().toUpper(), text);
}

void tst_KHotKey::firstLevelShowsTabsAndFileButton()
{
    Ribbon ribbon(2, 3);
    KMainWindow window;
    attachRibbon(window, ribbon);
    QVERIFY(showCurrent(window));
    QStringList shown;
    QStringList tags;
    bool flag = false;
    Script script({[&] {
                       KHotKeyAssistant* level = topLevel();
                       QVERIFY(level);
                       shown = keys(level);
                       for (const hotkey_message& m : level->messages())
                           tags.append(m.tag());
                       flag = window.isHotKeyShown();
                       // The overlay lies over the window.
                       QCOMPARE(level->geometry(), QRect(window.mapToGlobal(QPoint()), window.size()));
                   },
                   [&] { QTest::keyClick(topLevel(), Qt::Key_Alt); }});
    tapAlt(&window);
    QVERIFY(script.finished());
    QCOMPARE(shown, (QStringList{"H", "N", "F"}));
    QCOMPARE(tags, (QStringList{"", "", "filebutton"}));
    QVERIFY(flag);
    QVERIFY(!window.isHotKeyShown());
}

void tst_KHotKey::letterOpensTabAndNumbersItsControls()
{
    Ribbon ribbon(2, 6);
    KMainWindow window;
    attachRibbon(window, ribbon);
    window.headerBar()->tabBar()->setCurrentTabIdx(1); // Insert
    QVERIFY(showCurrent(window));
    QStringList second;
    QList<QPoint> positions;
    Script script({[&] { QTest::keyClick(topLevel(), Qt::Key_H); },
                   [&] {
                       second = keys(topLevel());
                       for (const hotkey_message& m : topLevel()->messages())
                           positions.append(m.pos);
                       QTest::keyClick(topLevel(), Qt::Key_0);
                   },
                   [&] { QTest::keyClick(topLevel(), Qt::Key_2); }});
    tapAlt(&window);
    QVERIFY(script.finished());
    QCOMPARE(window.headerBar()->currentIndex(), 0);
    // Numbers run on across the groups: the eleventh control is 02.
    QCOMPARE(second.size(), 12);
    QCOMPARE(second.mid(8), (QStringList{"9", "01", "02", "03"}));
    // Each label stands beside its own button: no two share a place.
    QSet<QPoint> distinct(positions.begin(), positions.end());
    QCOMPARE(distinct.size(), positions.size());
    QCOMPARE(ribbon.buttons.at(10)->fired, 1);
    QCOMPARE(ribbon.buttons.at(1)->fired, 0);
}

void tst_KHotKey::escapeStepsBackAndAltLeaves()
{
    Ribbon ribbon(1, 3);
    KMainWindow window;
    attachRibbon(window, ribbon);
    QVERIFY(showCurrent(window));
    QStringList afterEscape;
    QStringList nested;
    int levelsInside = 0;
    Script script({[&] { QTest::keyClick(topLevel(), Qt::Key_H); },
                   [&] {
                       nested = keys(topLevel());
                       levelsInside = KHotKeyAssistant::assistants().size();
                       QTest::keyClick(topLevel(), Qt::Key_Escape);
                   },
                   [&] {
                       afterEscape = keys(topLevel());
                       QTest::keyClick(topLevel(), Qt::Key_Alt);
                   }});
    tapAlt(&window);
    QVERIFY(script.finished());
    QCOMPARE(nested, (QStringList{"1", "2", "3"}));
    QCOMPARE(levelsInside, 1); // the first level is hidden behind its loop
    QCOMPARE(afterEscape, (QStringList{"H", "N", "F"}));
    for (CountingCommand* b : ribbon.buttons)
        QCOMPARE(b->fired, 0);
}

void tst_KHotKey::narrowingAndFiring()
{
    QWidget host;
    host.resize(200, 100);
    // A popup level: a wrong letter is dropped and the level stays.
    KHotKeyAssistant level(&host, false, true);
    CountingCommand ab(QStringLiteral("ab"), nullptr);
    CountingCommand ac(QStringLiteral("ac"), nullptr);
    KToolButton first(&host);
    first.setDefaultCommand(&ab);
    first.setGeometry(10, 10, 30, 20);
    KToolButton second(&host);
    second.setDefaultCommand(&ac);
    second.setGeometry(60, 10, 30, 20);
    KHotKeyCollectEvent collect;
    collect.addHotKey(QPoint(20, 20), QStringLiteral("AB"), &first, true);
    collect.addHotKey(QPoint(70, 20), QStringLiteral("AC"), &second, true);
    level.addHotKeyFromCollectEvent(&collect);
    int code = 0;
    QStringList typedThen;
    int labelsThen = 0;
    Script script({[&] { QTest::keyClick(&level, Qt::Key_A); },
                   [&] {
                       typedThen.append(level.typedText());
                       labelsThen = level.messages().size();
                       QTest::keyClick(&level, Qt::Key_X); // dropped: matches nothing
                   },
                   [&] {
                       typedThen.append(level.typedText());
                       QTest::keyClick(&level, Qt::Key_Backspace);
                   },
                   [&] {
                       typedThen.append(level.typedText());
                       QTest::keyClick(&level, Qt::Key_A);
                   },
                   [&] { QTest::keyClick(&level, Qt::Key_B); }});
    code = level.showHotKey();
    QVERIFY(script.finished());
    QCOMPARE(typedThen, (QStringList{"A", "A", ""}));
    QCOMPARE(labelsThen, 2);
    QCOMPARE(code, -3);
    QCOMPARE(ab.fired, 1);
    QCOMPARE(ac.fired, 0);
}

void tst_KHotKey::wrongLetterAndExits()
{
    Ribbon ribbon(1, 2);
    KMainWindow window;
    attachRibbon(window, ribbon);
    auto* edit = new QLineEdit;
    window.setCentralWidget(edit);
    QVERIFY(showCurrent(window));
    edit->setFocus();
    QTRY_COMPARE(QApplication::focusWidget(), edit);

    // A letter no label carries ends the top level (no title bar takes it).
    bool shown = false;
    Script wrong({[&] {
                      shown = topLevel() != nullptr;
                      QTest::keyClick(topLevel(), Qt::Key_Z);
                  }});
    tapAlt(&window);
    QVERIFY(wrong.finished());
    QVERIFY(shown);
    QTRY_COMPARE(QApplication::focusWidget(), edit); // given back

    // Ctrl, also as the modifier of another key, cancels.
    Script ctrl({[&] { QTest::keyClick(topLevel(), Qt::Key_C, Qt::ControlModifier); }});
    tapAlt(&window);
    QVERIFY(ctrl.finished());

    // A click anywhere cancels.
    Script click({[&] { QTest::mouseClick(topLevel(), Qt::LeftButton, Qt::NoModifier, QPoint(5, 5)); }});
    tapAlt(&window);
    QVERIFY(click.finished());

    // Backspace with nothing typed steps back like Escape.
    Script back({[&] { QTest::keyClick(topLevel(), Qt::Key_Backspace); }});
    tapAlt(&window);
    QVERIFY(back.finished());
    for (CountingCommand* b : ribbon.buttons)
        QCOMPARE(b->fired, 0);
    QCOMPARE(window.headerBar()->currentIndex(), 0);
}

void tst_KHotKey::altWithLetterFiresWithoutDrawing()
{
    Ribbon ribbon(1, 2);
    KMainWindow window;
    attachRibbon(window, ribbon);
    QVERIFY(showCurrent(window));
    int shown = 0;
    connect(window.GetHotKeyHandle()->assistant(), &KHotKeyAssistant::hotKeyVisibleChage, this,
            [&shown](bool visible) { shown += visible ? 1 : 0; });
    // Alt held, N pressed: the unique Insert label fires at once; Insert has no controls, so
    // no further level comes either.
    QTest::keyPress(&window, Qt::Key_Alt);
    QKeyEvent n(QEvent::KeyPress, Qt::Key_N, Qt::AltModifier, QStringLiteral("n"));
    QApplication::sendEvent(&window, &n);
    QCOMPARE(window.headerBar()->currentIndex(), 1);
    QCOMPARE(shown, 0);
    QVERIFY(KHotKeyAssistant::assistants().isEmpty());
    // The tab change took the tips down and left Alt alone: its release shows the tabs.
    QStringList later;
    Script script({[&] {
                       later = keys(topLevel());
                       QTest::keyClick(topLevel(), Qt::Key_Escape);
                   }});
    QTest::keyRelease(&window, Qt::Key_Alt);
    QVERIFY(script.finished());
    QCOMPARE(later, (QStringList{"H", "N", "F"}));
    QCOMPARE(shown, 1);
}

void tst_KHotKey::fileButtonLevel()
{
    Ribbon ribbon(1, 1);
    KMainWindow window;
    attachRibbon(window, ribbon);
    QVERIFY(showCurrent(window));
    QStringList menuKeys;
    bool popupShown = false;
    bool buttonDown = false;
    Script script({[&] { QTest::keyClick(topLevel(), Qt::Key_F); },
                   [&] {
                       KHotKeyAssistant* level = topLevel();
                       QVERIFY(level);
                       QVERIFY(level->isPopupAssistant());
                       menuKeys = keys(level);
                       KRbTabFileButton* button = window.headerBar()->tabBar()->fileButton();
                       popupShown = button->popup() && button->popup()->isVisible();
                       buttonDown = button->isDown();
                       QTest::keyClick(level, Qt::Key_O);
                   }});
    tapAlt(&window);
    QVERIFY(script.finished());
    QCOMPARE(menuKeys, (QStringList{"N", "O"}));
    QVERIFY(popupShown);
    QVERIFY(buttonDown);
    QCOMPARE(ribbon.fileItems.at(1)->fired, 1);
    QCOMPARE(ribbon.fileItems.at(0)->fired, 0);
    QTRY_VERIFY(!window.headerBar()->tabBar()->fileButton()->popup()->isVisible());
    QVERIFY(!window.headerBar()->tabBar()->fileButton()->isDown());
}

void tst_KHotKey::protocolSeenFromHostWidget()
{
    Ribbon ribbon(0, 0);
    auto* group = new KRbLogicGroupCommand(&ribbon.owner, &ribbon.owner);
    auto* host = new HostCommand(&ribbon.owner, &ribbon.owner);
    host->setProperty("spaceHint", 2);
    group->addSubCommand(host);
    qobject_cast<KListCommand*>(ribbon.tabs->subCommand(0))->addSubCommand(group);
    KMainWindow window;
    attachRibbon(window, ribbon);
    QVERIFY(showCurrent(window));

    // Fired: result 2 ends every level.
    Script fire({[&] { QTest::keyClick(topLevel(), Qt::Key_H); },
                 [&] { QTest::keyClick(topLevel(), Qt::Key_Q); }});
    tapAlt(&window);
    QVERIFY(fire.finished());
    QVERIFY(host->widget);
    QCOMPARE(host->widget->seen, (QStringList{"collect rb=1", "trigger Q execute=1"}));

    // Result 3: the level stays and shows again, until Escape.
    host->widget->seen.clear();
    host->widget->answer = 3;
    bool stillShown = false;
    Script stay({[&] { QTest::keyClick(topLevel(), Qt::Key_H); },
                 [&] { QTest::keyClick(topLevel(), Qt::Key_Q); },
                 [&] {
                     stillShown = topLevel() && keys(topLevel()) == QStringList{"Q"};
                     QTest::keyClick(topLevel(), Qt::Key_Escape);
                 },
                 [&] { QTest::keyClick(topLevel(), Qt::Key_Escape); }});
    tapAlt(&window);
    QVERIFY(stay.finished());
    QVERIFY(stillShown);
    QCOMPARE(host->widget->seen, (QStringList{"collect rb=1", "trigger Q execute=1"}));
}

void tst_KHotKey::onlyTheCurrentWindowStarts()
{
    Ribbon first(1, 1);
    Ribbon second(1, 1);
    KMainWindow a;
    attachRibbon(a, first);
    KMainWindow b;
    attachRibbon(b, second);
    QVERIFY(showCurrent(b));
    QVERIFY(showCurrent(a)); // a is the current window
    QVERIFY(b.GetHotKeyHandle());
    int shownFor = 0;
    Script script({[&] {
                       shownFor = KHotKeyAssistant::assistants().size();
                       QCOMPARE(topLevel()->hostWidget(), &a);
                       QTest::keyClick(topLevel(), Qt::Key_Escape);
                   }});
    tapAlt(&a);
    QVERIFY(script.finished());
    QCOMPARE(shownFor, 1); // b's handle kept still
}

void tst_KHotKey::windowClosedWhileTipsShow()
{
    Ribbon ribbon(1, 3);
    auto* window = new KMainWindow;
    attachRibbon(*window, ribbon);
    QVERIFY(showCurrent(*window));
    QPointer<KMainWindow> guard(window);
    Script script({[&] { QTest::keyClick(topLevel(), Qt::Key_H); },
                   [&] { delete window; }});
    tapAlt(window);
    QVERIFY(script.finished());
    QVERIFY(!guard);
    // The nested level was left with the window; nothing is left on the screen.
    QTRY_VERIFY(KHotKeyAssistant::assistants().isEmpty());
    QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
}

void tst_KHotKey::onlyARealStateChangeEnds()
{
    // The X platform also reports a window state that stayed as it was; the labels stay then.
    Ribbon ribbon(1, 2);
    KMainWindow window;
    attachRibbon(window, ribbon);
    QVERIFY(showCurrent(window));
    bool stayed = false;
    bool left = false;
    Script script({[&] {
                       QWindowStateChangeEvent same(window.windowState());
                       QCoreApplication::sendEvent(&window, &same);
                       stayed = topLevel() && topLevel()->isRunning();
                       QWindowStateChangeEvent restored(Qt::WindowMinimized);
                       QCoreApplication::sendEvent(&window, &restored);
                       left = !topLevel() || !topLevel()->isRunning();
                   },
                   [&] {
                       if (topLevel())
                           QTest::keyClick(topLevel(), Qt::Key_Escape);
                   }});
    tapAlt(&window);
    QTRY_VERIFY(script.finished());
    QVERIFY(stayed);
    QVERIFY(left);
}

NORVIK_TEST_MAIN(tst_KHotKey)
#include "tst_khotkey.moc"
