// The password field at work on a real X server, where its balloons are shaped windows: the
// copy refusal, the Caps Lock tip (the lock is set through the X keyboard extension, and the
// field reads the server's indicator), and the balloon itself.
#include <ktestsupport.h>

#include <QClipboard>
#include <QDialog>
#include <QLineEdit>
#include <QScreen>
#include <QTemporaryDir>
#include <QVBoxLayout>
#include <dlfcn.h>

#include <kapptheme.h>
#include <kpwdlineedit.h>
#include <kpwdtooltipwidget.h>

namespace {

// libX11 is loaded by the platform plugin already; the test needs one call of it.
bool setCapsLock(bool on)
{
    auto* x11 = qApp->nativeInterface<QNativeInterface::QX11Application>();
    void* display = x11 ? static_cast<void*>(x11->display()) : nullptr;
    using LockModifiers = int (*)(void*, unsigned int, unsigned int, unsigned int);
    using Sync = int (*)(void*, int);
    auto lock = reinterpret_cast<LockModifiers>(dlsym(RTLD_DEFAULT, "XkbLockModifiers"));
    auto sync = reinterpret_cast<Sync>(dlsym(RTLD_DEFAULT, "XSync"));
    if (!display || !lock || !sync)
        return false;
    const unsigned int lockMask = 1u << 1;     // LockMask
    const unsigned int coreKeyboard = 0x0100;  // XkbUseCoreKbd
    if (!lock(display, coreKeyboard, lockMask, on ? lockMask : 0u))
        return false;
    sync(display, 0);
    return true;
}

} // namespace

class tst_KPwdLineEditX11 : public QObject
{
    Q_OBJECT
private Q_SLOTS:
    void initTestCase();
    void cleanup();
    void capsLockKeyShowsAndHidesTheTip();
    void focusWithCapsLockOn();
    void copyingIsRefused();
    void tipsHideWhenTheDialogMoves();
    void balloonStaysOnTheScreen_data();
    void balloonStaysOnTheScreen();
    void balloonHidesItself();
    void balloonPainting();

private:
    QRect m_screen;
};

void tst_KPwdLineEditX11::initTestCase()
{
    QCOMPARE(QGuiApplication::platformName(), QStringLiteral("xcb"));
    QVERIFY(setCapsLock(false));
    m_screen = QGuiApplication::primaryScreen()->geometry();
}

void tst_KPwdLineEditX11::cleanup()
{
    QVERIFY(setCapsLock(false)); // the server outlives the test
}

void tst_KPwdLineEditX11::capsLockKeyShowsAndHidesTheTip()
{
    QWidget window;
    auto* edit = new KPwdLineEdit(&window);
    edit->setGeometry(20, 20, 220, 26);
    window.resize(300, 80);
    window.show();
    window.activateWindow();
    QVERIFY(QTest::qWaitForWindowActive(&window));
    edit->setFocus();
    QTRY_VERIFY(edit->hasFocus());
    KPwdToolTipWidget* tip = edit->capsLockTip();
    QVERIFY(!edit->isCapsLock());
    QVERIFY(!tip->isVisible());

    QVERIFY(setCapsLock(true));
    QVERIFY(edit->isCapsLock());
    QTest::keyClick(edit, Qt::Key_CapsLock);
    QVERIFY(tip->isVisible());

    QVERIFY(setCapsLock(false));
    QVERIFY(!edit->isCapsLock());
    QTest::keyClick(edit, Qt::Key_CapsLock);
    QVERIFY(!tip->isVisible());
}

void tst_KPwdLineEditX11::focusWithCapsLockOn()
{
    QWidget window;
    auto* other = new QLineEdit(&window);
    auto* edit = new KPwdLineEdit(&window);
    edit->move(0, 40);
    window.show();
    window.activateWindow();
    QVERIFY(QTest::qWaitForWindowActive(&window));
    other->setFocus();
    QTRY_VERIFY(other->hasFocus());
    QVERIFY(setCapsLock(true));
    QVERIFY(!edit->capsLockTip()->isVisible()); // only the field with the focus warns

    edit->setFocus(Qt::TabFocusReason);
    QTRY_VERIFY(edit->capsLockTip()->isVisible());
    QVERIFY(!edit->copyTip()->isVisible());
    other->setFocus(Qt::TabFocusReason);
    QTRY_VERIFY(!edit->capsLockTip()->isVisible());
}

void tst_KPwdLineEditX11::copyingIsRefused()
{
    QWidget window;
    auto* edit = new KPwdLineEdit(&window);
    edit->setGeometry(10, 10, 200, 24);
    window.show();
    QVERIFY(QTest::qWaitForWindowExposed(&window));
    QApplication::clipboard()->setText("kept");
    QTest::keyClicks(edit, "secret");
    KPwdToolTipWidget* tip = edit->copyTip();

    // Control+X with nothing selected: nothing at all.
    QTest::keyClick(edit, Qt::Key_X, Qt::ControlModifier);
    QVERIFY(!tip->isVisible());
    QCOMPARE(edit->text(), QString("secret"));

    // Control+C: the tip, and the clipboard untouched.
    QTest::keyClick(edit, Qt::Key_C, Qt::ControlModifier);
    QVERIFY(tip->isVisible());
    QCOMPARE(QApplication::clipboard()->text(), QString("kept"));
    // The arrow points at the text cursor, half way down the field.
    const QRect cursor = edit->inputMethodQuery(Qt::ImCursorRectangle).toRect();
    QCOMPARE(tip->anchor(), edit->mapToGlobal(QPoint(cursor.left(), edit->height() / 2)));
    QCOMPARE(tip->autoHideTime(), 10000);

    // Any key takes the tip away; Control+X on a selection brings it back and cuts nothing.
    edit->selectAll();
    QTest::keyClick(edit, Qt::Key_Shift);
    QVERIFY(!tip->isVisible());
    QTest::keyClick(edit, Qt::Key_X, Qt::ControlModifier);
    QVERIFY(tip->isVisible());
    QCOMPARE(edit->text(), QString("secret"));
    QCOMPARE(QApplication::clipboard()->text(), QString("kept"));

    // Leaving the field takes the tips away.
    QFocusEvent out(QEvent::FocusOut, Qt::TabFocusReason);
    QCoreApplication::sendEvent(edit, &out);
    QVERIFY(!tip->isVisible());
    edit->copyShowPoup();
    edit->hide();
    QVERIFY(!tip->isVisible());
}

void tst_KPwdLineEditX11::tipsHideWhenTheDialogMoves()
{
    // The field stands in a frame inside the dialog: the dialog is watched as well.
    QDialog dialog;
    auto* frame = new QWidget(&dialog);
    auto* edit = new KPwdLineEdit(frame);
    (new QVBoxLayout(frame))->addWidget(edit);
    (new QVBoxLayout(&dialog))->addWidget(frame);
    dialog.show();
    QVERIFY(QTest::qWaitForWindowExposed(&dialog));

    edit->copyShowPoup();
    QVERIFY(edit->copyTip()->isVisible());
    dialog.move(dialog.pos() + QPoint(30, 20));
    QTRY_VERIFY(!edit->copyTip()->isVisible());

    edit->copyShowPoup();
    dialog.resize(dialog.size() + QSize(40, 0)); // the frame, the field's parent, resizes too
    QTRY_VERIFY(!edit->copyTip()->isVisible());

    // A tip shown already isn't moved or restarted.
    edit->setTpAutoHideTime(edit->copyTip(), 0);
    edit->copyShowPoup();
    const QRect place = edit->copyTip()->geometry();
    edit->setCursorPosition(0);
    edit->insert("abc");
    edit->copyShowPoup();
    QCOMPARE(edit->copyTip()->geometry(), place);
}

void tst_KPwdLineEditX11::balloonStaysOnTheScreen_data()
{
    QTest::addColumn<QPoint>("offset");     // from the screen's top left, or (negative) its bottom right
    QTest::addColumn<bool>("below");
    QTest::addColumn<bool>("right");

    QTest::newRow("room everywhere") << QPoint(200, 150) << true << true;
    QTest::newRow("right edge") << QPoint(-5, 150) << true << false;
    QTest::newRow("bottom edge") << QPoint(200, -5) << false << true;
    QTest::newRow("bottom right corner") << QPoint(-5, -5) << false << false;
    QTest::newRow("left edge") << QPoint(2, 150) << true << true;
}

void tst_KPwdLineEditX11::balloonStaysOnTheScreen()
{
    QFETCH(QPoint, offset);
    QFETCH(bool, below);
    QFETCH(bool, right);
    const QPoint anchor(offset.x() >= 0 ? m_screen.left() + offset.x() : m_screen.right() + offset.x() + 1,
                        offset.y() >= 0 ? m_screen.top() + offset.y() : m_screen.bottom() + offset.y() + 1);
    QWidget owner;
    KPwdToolTipWidget tip(&owner);
    tip.setTitleText("Caps Lock On.");
    tip.setContentText("A text long enough to be wrapped over more than one line in the balloon.");
    tip.show(anchor);
    const QRect place = tip.geometry();
    QVERIFY2(m_screen.contains(place), qPrintable(QString("%1,%2 %3x%4").arg(place.x()).arg(place.y())
                                                      .arg(place.width()).arg(place.height())));
    QCOMPARE(tip.isBelowAnchor(), below);
    QCOMPARE(tip.isRightOfAnchor(), right);
    QCOMPARE(tip.arrowHeight(), KPwdToolTipWidget::ArrowHeight);
    // The arrow's point touches the anchor: the balloon starts or ends on its row.
    QCOMPARE(below ? place.top() : place.bottom(), anchor.y());
    if (offset.x() > 20)
        QCOMPARE(right ? place.left() : place.right(), anchor.x() + (right ? -20 : 20));
    // The window is shaped to the balloon: the corner beside the arrow is cut away.
    const QPoint corner = below ? QPoint(right ? place.width() - 1 : 0, 0)
                                : QPoint(right ? place.width() - 1 : 0, place.height() - 1);
    QVERIFY(!tip.mask().contains(corner));
    QVERIFY(tip.mask().contains(tip.mapFromGlobal(anchor) + QPoint(1, below ? 6 : -6)));
}

void tst_KPwdLineEditX11::balloonHidesItself()
{
    QWidget owner;
    KPwdToolTipWidget tip(&owner);
    tip.setTitleText("Title");
    tip.setAutoHideTime(50);
    tip.show(QPoint(100, 100));
    QVERIFY(tip.isVisible());
    QTRY_VERIFY(!tip.isVisible());

    tip.show(QPoint(100, 100));
    QTest::mouseClick(&tip, Qt::LeftButton, Qt::NoModifier, QPoint(30, 30));
    QVERIFY(!tip.isVisible());

    tip.setAutoHideTime(0); // kept until hidden
    tip.show(QPoint(100, 100));
    KTestSupport::runLoopFor(120);
    QVERIFY(tip.isVisible());
}

void tst_KPwdLineEditX11::balloonPainting()
{
    QTemporaryDir dir;
    QVERIFY(KTestSupport::loadTheme(KTestSupport::writeFile(dir.filePath("hint.xml"),
        "<r><theme><style class='KHintBox'><color name='background' value='#ffeecc'/>"
        "<color name='border' value='#ff0000'/></style></theme></r>")));
    QWidget owner;
    KPwdLineEdit edit(&owner);
    KPwdToolTipWidget* tip = edit.capsLockTip();
    QCOMPARE(tip->outLineColor(), QColor(Qt::red)); // the theme's border, read at construction
    tip->setAutoHideTime(0);
    tip->show(QPoint(200, 150));
    const QImage image = tip->grab().toImage();
    const int arrow = KPwdToolTipWidget::ArrowHeight;
    QCOMPARE(image.pixelColor(image.width() - 5, image.height() - 5), QColor("#ffeecc"));
    QCOMPARE(image.pixelColor(0, arrow + (image.height() - arrow) / 2), QColor(Qt::red));
    // The title in its colour.
    QVERIFY(KTestSupport::anyPixel(image, [](const QColor& c) {
        return c.blue() > 0x80 && c.red() < 0x40 && c.green() < 0x60;
    }));
    KApplication::instance()->theme()->resetXml();
}

NORVIK_X11_TEST_MAIN(tst_KPwdLineEditX11)
#include "tst_kpwdlineeditx11.moc"
