// The key-tip overlay under a real X server (Xvfb): it lies exactly over its window and takes
// the keyboard by a real grab, so that keys typed at the main window reach the level. Without
// a compositing manager it is cut to its labels by a shape mask; with one (xcompmgr, started
// here when it is installed) it stays whole and translucent.
#include <QtTest/QtTest>

#include <kapplication.h>
#include <khotkeyassistant.h>
#include <kmainwindow.h>
#include <krbtabwidget.h>
#include <ktestsupport.h>

#include "keytiptesthelpers.h"

using namespace KeyTipTest;

namespace {

struct LevelSeen
{
    QRect overlay;
    QRect expected;
    bool masked = false;
    bool translucent = false;
    bool labelInMask = false;
    bool outsideCut = false;
    bool grabbed = false;
};

// Shows window's first level, notes what it sees in seen, and leaves by Escape typed at the
// window; false when the level never came or never ended.
bool runLevel(KMainWindow& window, LevelSeen& seen)
{
    Script script({[&] {
        KHotKeyAssistant* level = topLevel();
        if (!level || level->messages().isEmpty())
            return;
        seen.overlay = QRect(level->mapToGlobal(QPoint()), level->size());
        seen.expected = QRect(window.mapToGlobal(QPoint()), window.size());
        seen.masked = !level->mask().isEmpty();
        seen.translucent = level->testAttribute(Qt::WA_TranslucentBackground);
        const hotkey_message first = level->messages().first();
        const QRect label(first.pos, level->itemSizeHint(first.key));
        seen.labelInMask = level->mask().contains(label.center());
        seen.outsideCut = !level->mask().contains(QPoint(level->width() - 2, level->height() - 2));
        seen.grabbed = QWidget::keyboardGrabber() == level;
        // A key typed at the main window's own X window reaches the level.
        QTest::keyClick(window.windowHandle(), Qt::Key_Escape);
    }});
    tapAlt(&window);
    return QTest::qWaitFor([&script] { return script.finished(); }, 5000) && !seen.overlay.isNull();
}

} // namespace

class tst_KHotKeyX11 : public QObject
{
    Q_OBJECT
private Q_SLOTS:
    void overlayLiesOverItsWindow();
    void overlayWithACompositingManager();
};

void tst_KHotKeyX11::overlayLiesOverItsWindow()
{
    Ribbon ribbon(2, 4);
    KMainWindow window;
    window.setHeaderBar(new KRbTabWidget(ribbon.tabs, &window));
    window.move(130, 90);
    QVERIFY(showCurrent(window));
    // The window settles first: a move or resize of it ends a level.
    QTest::qWait(200);
    LevelSeen seen;
    QVERIFY(runLevel(window, seen));
    QCOMPARE(seen.overlay, seen.expected);
    QVERIFY(seen.masked);
    QVERIFY(seen.labelInMask);
    QVERIFY(seen.outsideCut);
    QVERIFY(seen.grabbed);
    QVERIFY(KHotKeyAssistant::assistants().isEmpty());
}

void tst_KHotKeyX11::overlayWithACompositingManager()
{
    const QString program = QStandardPaths::findExecutable(QStringLiteral("xcompmgr"));
    if (program.isEmpty())
        QSKIP("xcompmgr is not installed (scripts/test installs it)");
    QProcess compositor;
    compositor.start(program, {});
    QVERIFY(compositor.waitForStarted());
    QTest::qWait(500); // it takes the screen's compositing selection as it starts
    QCOMPARE(compositor.state(), QProcess::Running);

    Ribbon ribbon(2, 4);
    KMainWindow window;
    window.setHeaderBar(new KRbTabWidget(ribbon.tabs, &window));
    window.move(60, 40);
    QVERIFY(showCurrent(window));
    QTest::qWait(200);
    LevelSeen seen;
    const bool ran = runLevel(window, seen);
    compositor.terminate();
    compositor.waitForFinished();
    QVERIFY(ran);
    QCOMPARE(seen.overlay, seen.expected);
    QVERIFY(!seen.masked); // whole, and see-through where there is no label
    QVERIFY(seen.translucent);
    QVERIFY(seen.grabbed);
    QVERIFY(KHotKeyAssistant::assistants().isEmpty());
}

NORVIK_X11_TEST_MAIN(tst_KHotKeyX11)
#include "tst_khotkeyx11.moc"
