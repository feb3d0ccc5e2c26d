// The dialog spin controls that check while the user types (integer and double twins) and the
// duration field.
#include <ktestsupport.h>

#include <QLineEdit>
#include <QSignalSpy>
#include <QStyle>
#include <QStyleOptionSpinBox>
#include <cmath>
#include <limits>

#include <ksecondsedit.h>
#include <kxdblspinboxctrl.h>
#include <kxspinboxctrl.h>

namespace {

QLineEdit* editOf(QWidget* w)
{
    return w->findChild<QLineEdit*>();
}

void retype(QWidget* spin, const QString& text)
{
    editOf(spin)->selectAll();
    QTest::keyClick(editOf(spin), Qt::Key_Backspace);
    QTest::keyClicks(spin, text);
}

QString lastError(const QSignalSpy& added)
{
    return added.isEmpty() ? QString() : added.last().at(1).toString();
}

QPoint upButton(QAbstractSpinBox* box)
{
    QStyleOptionSpinBox opt;
    opt.initFrom(box);
    opt.subControls = QStyle::SC_All;
    opt.frame = true;
    opt.buttonSymbols = box->buttonSymbols();
    return box->style()->subControlRect(QStyle::CC_SpinBox, &opt, QStyle::SC_SpinBoxUp, box).center();
}

} // namespace

class tst_KSpinBoxCtrls : public QObject
{
    Q_OBJECT
private Q_SLOTS:
    void checksWhileTyping_data();
    void checksWhileTyping();
    void outOfRangeStaysUntilSettled();
    void valuesSetFromOutside();
    void textSurvivesHideAndShow();
    void doubleTwin();
    void clickSelectsAll();
    void secondsText_data();
    void secondsText();
    void secondsValidText_data();
    void secondsValidText();
    void secondsTyped_data();
    void secondsTyped();
    void secondsSteps();
    void secondsSignals();
};

void tst_KSpinBoxCtrls::checksWhileTyping_data()
{
    QTest::addColumn<QString>("typed");
    QTest::addColumn<QString>("shown");   // what the field holds afterwards
    QTest::addColumn<QString>("error");   // the last report; empty: removed

    const QString range = "The input value must be between -20 and 100.";
    QTest::newRow("in range") << "42" << "42" << "";
    QTest::newRow("empty") << "" << "" << "Illegal integer text.";
    QTest::newRow("sign alone") << "-" << "-" << "Illegal integer text.";
    QTest::newRow("above") << "250" << "250" << range;
    QTest::newRow("below") << "-21" << "-21" << range;
    QTest::newRow("plus sign") << "+7" << "+7" << "";
    QTest::newRow("eleven digits cut to ten") << "12345678901" << "1234567890" << range;
    QTest::newRow("letters refused") << "4a2" << "42" << "";
    QTest::newRow("point refused") << "4.2" << "42" << "";
}

void tst_KSpinBoxCtrls::checksWhileTyping()
{
    QFETCH(QString, typed);
    QFETCH(QString, shown);
    QFETCH(QString, error);
    KxSpinBoxCtrl box;
    box.setRange(-20, 100);
    box.setValue(5);
    QSignalSpy added(&box, &KxSpinBoxCtrl::emitAddError);
    QSignalSpy removed(&box, &KxSpinBoxCtrl::emitRemoveError);
    retype(&box, typed);
    QCOMPARE(editOf(&box)->text(), shown);
    QCOMPARE(box.hasError(), !error.isEmpty());
    if (!error.isEmpty()) {
        QCOMPARE(lastError(added), error);
        QCOMPARE(added.last().at(0).value<QWidget*>(), &box);
    } else {
        QVERIFY(!removed.isEmpty());
    }
    QCOMPARE(box.checkError(), !error.isEmpty());

    // An empty field may be allowed.
    box.setErrorEmpty(false);
    retype(&box, "");
    QVERIFY(!box.checkError());
}

void tst_KSpinBoxCtrls::outOfRangeStaysUntilSettled()
{
    KxSpinBoxCtrl box;
    box.setRange(0, 100);
    box.setValue(50);
    box.setRangeErrorStr("From %1 to %2 only.");
    box.setKeyboardTracking(false); // so that the value taken before is easy to name
    QSignalSpy added(&box, &KxSpinBoxCtrl::emitAddError);

    // Return leaves the text for the dialog's check; the value is the one taken before.
    retype(&box, "250");
    QTest::keyClick(&box, Qt::Key_Return);
    QCOMPARE(editOf(&box)->text(), QString("250"));
    QCOMPARE(box.value(), 50);
    QVERIFY(box.checkError());
    QCOMPARE(lastError(added), QString("From 0 to 100 only."));

    // A page key brings it to the limit and ends the error.
    QTest::keyClick(&box, Qt::Key_PageUp);
    QCOMPARE(box.value(), 100);
    QCOMPARE(editOf(&box)->text(), QString("100"));
    QVERIFY(!box.hasError());

    // A step down from below the minimum stops at the minimum.
    retype(&box, "-7");
    box.stepBy(-1);
    QCOMPARE(box.value(), 0);
    QVERIFY(!box.hasError());

    // A press on the arrows settles a text that can't be read to the value kept.
    box.setValue(30);
    retype(&box, "-");
    QVERIFY(box.hasError());
    QTest::mouseClick(&box, Qt::LeftButton, Qt::NoModifier, upButton(&box));
    QCOMPARE(editOf(&box)->text(), QString::number(box.value()));
    QVERIFY(!box.hasError());
    QCOMPARE(editOf(&box)->selectedText(), editOf(&box)->text());
    // ... and a number above the maximum to the maximum.
    retype(&box, "999");
    QTest::mouseClick(&box, Qt::LeftButton, Qt::NoModifier, upButton(&box));
    QCOMPARE(box.value(), 100);
    QCOMPARE(editOf(&box)->text(), QString("100"));
}

void tst_KSpinBoxCtrls::valuesSetFromOutside()
{
    KxSpinBoxCtrl box;
    box.setRange(0, 100);
    retype(&box, "300");
    QVERIFY(box.hasError());
    QSignalSpy removed(&box, &KxSpinBoxCtrl::emitRemoveError);
    box.setValue(30); // rewrites the field without the line edit telling anyone
    QCOMPARE(editOf(&box)->text(), QString("30"));
    QVERIFY(!box.hasError());
    QCOMPARE(removed.count(), 1);
    box.setMaxLength(2);
    QCOMPARE(editOf(&box)->maxLength(), 2);
}

void tst_KSpinBoxCtrls::textSurvivesHideAndShow()
{
    QWidget window;
    auto* box = new KxSpinBoxCtrl(&window);
    box->setRange(0, 100);
    window.show();
    QVERIFY(QTest::qWaitForWindowExposed(&window));
    box->setFocus();
    retype(box, "250");
    editOf(box)->setSelection(1, 2);
    window.hide(); // the focus leaves with the window, and the field is hidden
    QCOMPARE(editOf(box)->text(), QString("250"));
    QCOMPARE(editOf(box)->selectedText(), QString("50"));
    window.show();
    QVERIFY(QTest::qWaitForWindowExposed(&window));
    QCOMPARE(editOf(box)->text(), QString("250"));
    QVERIFY(box->hasError());
}

void tst_KSpinBoxCtrls::doubleTwin()
{
    // The field reads and shows a point, whatever the user's locale.
    const QLocale before;
    QLocale::setDefault(QLocale(QLocale::German, QLocale::Germany));
    KxDblSpinBoxCtrl box;
    QLocale::setDefault(before);
    box.setRange(0, 10.5);
    box.setDecimals(2);
    box.setValue(2.5);
    QCOMPARE(editOf(&box)->text(), QString("2.50"));
    QSignalSpy added(&box, &KxDblSpinBoxCtrl::emitAddError);

    retype(&box, "1,5");
    QCOMPARE(editOf(&box)->text(), QString("15")); // the comma was refused
    QCOMPARE(lastError(added), QString("The input value must be between 0 and 10.5."));
    bool ok = false;
    QCOMPARE(box.getDoubleValue(&ok), 15.0);
    QVERIFY(ok);
    retype(&box, "1.2.3");
    QCOMPARE(editOf(&box)->text(), QString("1.23"));
    QVERIFY(!box.hasError());
    QTest::keyClick(&box, Qt::Key_Return);
    QCOMPARE(box.value(), 1.23);
    retype(&box, "");
    QCOMPARE(lastError(added), QString("Illegal integer text."));
    box.getDoubleValue(&ok);
    QVERIFY(!ok);
    retype(&box, "99");
    QTest::keyClick(&box, Qt::Key_Up);
    QCOMPARE(box.value(), 10.5);
    QVERIFY(!box.hasError());
}

void tst_KSpinBoxCtrls::clickSelectsAll()
{
    QWidget window;
    auto* other = new QLineEdit(&window);
    auto* box = new KxSpinBoxCtrl(&window);
    box->move(0, 40);
    box->setRange(0, 9999);
    box->setValue(1234);
    window.show();
    QVERIFY(QTest::qWaitForWindowActive(&window));
    other->setFocus();
    QLineEdit* edit = editOf(box);
    QTest::mousePress(edit, Qt::LeftButton, Qt::NoModifier, QPoint(3, edit->height() / 2));
    QVERIFY(box->hasFocus());
    QTest::mouseRelease(edit, Qt::LeftButton, Qt::NoModifier, QPoint(3, edit->height() / 2));
    QCOMPARE(edit->selectedText(), QString("1234"));
    // A second click in a field that has the focus places the cursor as usual.
    QTest::mouseClick(edit, Qt::LeftButton, Qt::NoModifier, QPoint(3, edit->height() / 2));
    QVERIFY(edit->selectedText().isEmpty());
}

void tst_KSpinBoxCtrls::secondsText_data()
{
    QTest::addColumn<float>("value");
    QTest::addColumn<QString>("text");
    QTest::addColumn<float>("stored");

    QTest::newRow("zero") << 0.0f << "00:00" << 0.0f;
    QTest::newRow("seconds") << 5.0f << "00:05" << 5.0f;
    QTest::newRow("tenths cut, not rounded") << 59.95f << "00:59.9" << 59.95f;
    QTest::newRow("a minute") << 60.0f << "01:00" << 60.0f;
    QTest::newRow("one decimal at most") << 90.25f << "01:30.2" << 90.25f;
    QTest::newRow("below an hour") << 3599.0f << "59:59" << 3599.0f;
    QTest::newRow("an hour") << 3600.0f << "1:00:00" << 3600.0f;
    QTest::newRow("hours, minutes, seconds, tenths") << 3661.5f << "1:01:01.5" << 3661.5f;
    QTest::newRow("the maximum") << 86399.0f << "23:59:59" << 86399.0f;
    QTest::newRow("a day is too long") << 86400.0f << "00:00" << 0.0f;
    QTest::newRow("negative") << -1.0f << "00:00" << 0.0f;
    QTest::newRow("not a number") << std::numeric_limits<float>::quiet_NaN() << "00:00" << 0.0f;
}

void tst_KSpinBoxCtrls::secondsText()
{
    QFETCH(float, value);
    QFETCH(QString, text);
    QFETCH(float, stored);
    KSecondsEdit edit;
    edit.setSeconds(value);
    QCOMPARE(editOf(&edit)->text(), text);
    QCOMPARE(edit.seconds(), stored);
}

void tst_KSpinBoxCtrls::secondsValidText_data()
{
    QTest::addColumn<QString>("text");
    QTest::addColumn<QString>("valid");

    QTest::newRow("empty") << "" << "00:00";
    QTest::newRow("seconds only") << "5" << "00:05";
    QTest::newRow("minutes and seconds") << "1:2" << "01:02";
    QTest::newRow("hours") << "1:2:3" << "01:02:03";
    QTest::newRow("tenths") << "5.5" << "00:05.5";
    QTest::newRow("empty part") << ":5" << "00:05";
    QTest::newRow("trailing colon") << "1:" << "01:00";
    QTest::newRow("long part kept") << "123" << "00:123";
}

void tst_KSpinBoxCtrls::secondsValidText()
{
    QFETCH(QString, text);
    QFETCH(QString, valid);
    QCOMPARE(KSecondsEdit::ckeckToValidText(text), valid);
}

void tst_KSpinBoxCtrls::secondsTyped_data()
{
    QTest::addColumn<QString>("typed");
    QTest::addColumn<QString>("shown");
    QTest::addColumn<float>("seconds");

    QTest::newRow("seconds carried into minutes") << "90" << "01:30" << 90.0f;
    QTest::newRow("hours") << "1:2:3" << "1:02:03" << 3723.0f;
    QTest::newRow("tenths") << "5.55" << "00:05.5" << 5.55f;
    QTest::newRow("letters refused") << "1a:b2" << "01:02" << 62.0f;
    QTest::newRow("nothing") << "" << "00:00" << 0.0f;
    QTest::newRow("a day and a second") << "23:59:60" << "00:00" << 0.0f;
    QTest::newRow("far too many digits") << "99999999999999999999" << "00:00" << 0.0f;
    QTest::newRow("two points") << "1.2.3" << "00:00" << 0.0f;
}

void tst_KSpinBoxCtrls::secondsTyped()
{
    QFETCH(QString, typed);
    QFETCH(QString, shown);
    QFETCH(float, seconds);
    KSecondsEdit edit;
    edit.setSeconds(42);
    retype(&edit, typed);
    QTest::keyClick(&edit, Qt::Key_Return);
    QCOMPARE(editOf(&edit)->text(), shown);
    QCOMPARE(edit.seconds(), seconds);
}

void tst_KSpinBoxCtrls::secondsSteps()
{
    KSecondsEdit edit;
    QSignalSpy clicks(&edit, &KSecondsEdit::stepByClick);
    edit.setSeconds(59);
    edit.stepBy(1);
    QCOMPARE(editOf(&edit)->text(), QString("01:00"));
    QCOMPARE(clicks.last().at(0).toInt(), 1);
    QCOMPARE(editOf(&edit)->selectedText(), QString("01:00"));
    // Steps count whole seconds: 1.5 rounds to 2 first.
    edit.setSeconds(1.5f);
    edit.stepBy(1);
    QCOMPARE(edit.seconds(), 3.0f);
    // A step reads what was typed.
    retype(&edit, "2:00");
    edit.stepBy(-1);
    QCOMPARE(editOf(&edit)->text(), QString("01:59"));

    // At the limits the arrows are off; ten steps past the maximum give nothing.
    edit.setSeconds(86399);
    QTest::keyClick(&edit, Qt::Key_Up);
    QCOMPARE(edit.seconds(), 86399.0f);
    edit.setSeconds(0);
    QTest::keyClick(&edit, Qt::Key_Down);
    QCOMPARE(edit.seconds(), 0.0f);
    edit.setSeconds(86395);
    QTest::keyClick(&edit, Qt::Key_PageUp);
    QCOMPARE(editOf(&edit)->text(), QString("00:00"));

    // Another range.
    edit.setMaxSeconds(120);
    edit.setMinSeconds(10);
    edit.setSeconds(5);
    QCOMPARE(editOf(&edit)->text(), QString("00:00"));
    edit.setSeconds(10);
    QTest::keyClick(&edit, Qt::Key_Down);
    QCOMPARE(edit.seconds(), 10.0f);
}

void tst_KSpinBoxCtrls::secondsSignals()
{
    KSecondsEdit edit;
    QSignalSpy typed(&edit, &KSecondsEdit::editValue);
    QList<float> atFinish;
    connect(&edit, &QAbstractSpinBox::editingFinished, this, [&] { atFinish << edit.seconds(); });
    retype(&edit, "75");
    QVERIFY(typed.count() >= 2);
    const int typedBefore = int(typed.count());
    QTest::keyClick(&edit, Qt::Key_Return);
    QCOMPARE(typed.count(), typedBefore); // Return is not typing
    // Told once, with the value already read.
    QCOMPARE(atFinish, QList<float>({75.0f}));

    retype(&edit, "3:00");
    QFocusEvent out(QEvent::FocusOut, Qt::TabFocusReason);
    QCoreApplication::sendEvent(&edit, &out);
    QCOMPARE(atFinish, QList<float>({75.0f, 180.0f}));
    QCOMPARE(editOf(&edit)->text(), QString("03:00"));
}

NORVIK_TEST_MAIN(tst_KSpinBoxCtrls)
#include "tst_kspinboxctrls.moc"
