// The password field as it is made, on the offscreen platform: there is no X display, so
// Caps Lock reads as off. The field at work, with its tips, is tried on a real X server in
// tst_kpwdlineeditx11.
#include <ktestsupport.h>

#include <kpwdlineedit.h>
#include <kpwdtooltipwidget.h>

class tst_KPwdLineEdit : public QObject
{
    Q_OBJECT
private Q_SLOTS:
    void setUp();
};

void tst_KPwdLineEdit::setUp()
{
    KPwdLineEdit edit;
    QCOMPARE(edit.echoMode(), QLineEdit::Password);
    QCOMPARE(edit.maxLength(), 255);
    QVERIFY(edit.styleSheet().contains("lineedit-password-character: 42"));
    QVERIFY(!edit.isCapsLock()); // no X display here
    QCOMPARE(edit.capsLockTip()->titleText(), QString("Caps Lock On."));
    QVERIFY(edit.capsLockTip()->contentText().contains("\r\n\r\nBefore entering your password,"));
    QCOMPARE(edit.copyTip()->titleText(), QString("Not allowed."));
    QCOMPARE(edit.copyTip()->contentText(), QString("You are not allowed to copy from the password field."));
    // 0x993300 read in the order blue, green, red.
    QCOMPARE(edit.capsLockTip()->titleTextColor(), QColor(0x00, 0x33, 0x99));
    QCOMPARE(edit.copyTip()->titleTextFont().pointSize(), 12);
    QCOMPARE(edit.copyTip()->outLineColor(), QColor(Qt::black));
    QCOMPARE(edit.capsLockTip()->iconPixmap().size(), QSize(16, 16)); // the library's own image
    QCOMPARE(edit.copyTip()->iconPixmap().size(), QSize(16, 16));
    // Both tips are windows of the field, shown only when asked.
    QCOMPARE(edit.capsLockTip()->parentWidget(), &edit);
    QVERIFY(edit.capsLockTip()->isWindow());
}

NORVIK_TEST_MAIN(tst_KPwdLineEdit)
#include "tst_kpwdlineedit.moc"
