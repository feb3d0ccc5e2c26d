// The key-tip overlay under a real X server (Xvfb, no compositing manager): it lies exactly
// over its window, is cut to its labels by a shape mask, and takes the keyboard by a real
// grab, so that keys typed at the main window reach the level.
#include <QtTest/QtTest>

#include <kapplication.h>
#include <khotkeyassistant.h>
#include <kmainwindow.h>
#include <krbtabwidget.h>
#include <ktestsupport.h>

#include "keytiptesthelpers.h"

using namespace KeyTipTest;

class tst_KHotKeyX11 : public QObject
{
    Q_OBJECT
private Q_SLOTS:
    void overlayLiesOverItsWindow();
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
    QRect overlay;
    QRect expected;
    bool masked = false;
    bool labelInMask = false;
    bool outsideCut = false;
    bool grabbed = false;
    Script script({[&] {
                       KHotKeyAssistant* level = topLevel();
                       QVERIFY(level);
                       QVERIFY(!level->messages().isEmpty());
                       overlay = QRect(level->mapToGlobal(QPoint()), level->size());
                       expected = QRect(window.mapToGlobal(QPoint()), window.size());
                       masked = !level->mask().isEmpty();
                       const hotkey_message first = level->messages().first();
                       const QRect label(first.pos, level->itemSizeHint(first.key));
                       labelInMask = level->mask().contains(label.center());
                       outsideCut = !level->mask().contains(QPoint(level->width() - 2, level->height() - 2));
                       grabbed = QWidget::keyboardGrabber() == level;
                       // A key typed at the main window's own X window reaches the level.
                       QTest::keyClick(window.windowHandle(), Qt::Key_Escape);
                   }});
    tapAlt(&window);
    QVERIFY(script.finished());
    QCOMPARE(overlay, expected);
    QVERIFY(masked);
    QVERIFY(labelInMask);
    QVERIFY(outsideCut);
    QVERIFY(grabbed);
    QVERIFY(KHotKeyAssistant::assistants().isEmpty());
}

NORVIK_X11_TEST_MAIN(tst_KHotKeyX11)
#include "tst_khotkeyx11.moc"
