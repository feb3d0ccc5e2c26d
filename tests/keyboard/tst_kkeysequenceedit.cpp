#include <QtTest/QtTest>

#include <kkeysequenceedit.h>
#include <kkeysequencehelper.h>
#include <ktestsupport.h>
#include <QLineEdit>
#include <QShortcut>

class tst_KKeySequenceEdit : public QObject
{
    Q_OBJECT
private Q_SLOTS:
    void textForms_data();
    void textForms();
    void roundTrip_data();
    void roundTrip();
    void processOrgKey_data();
    void processOrgKey();
    void capture();
};

void tst_KKeySequenceEdit::textForms_data()
{
    QTest::addColumn<int>("key");
    QTest::addColumn<int>("modifiers");
    QTest::addColumn<QString>("display");
    QTest::addColumn<QString>("store");
    QTest::newRow("ctrl letter") << int(Qt::Key_B) << int(Qt::ControlModifier) << "Ctrl + B" << "Ctrl+B";
    QTest::newRow("all three") << int(Qt::Key_S) << int(Qt::ControlModifier | Qt::ShiftModifier | Qt::AltModifier)
                               << "Ctrl + Shift + Alt + S" << "Ctrl+Shift+Alt+S";
    QTest::newRow("navigation: shift first in store") << int(Qt::Key_PageUp)
                                                      << int(Qt::ControlModifier | Qt::ShiftModifier)
                                                      << "Ctrl + Shift + Page Up" << "Shift+Ctrl+PgUp";
    QTest::newRow("insert") << int(Qt::Key_Insert) << int(Qt::AltModifier) << "Alt + Insert" << "Alt+Ins";
    QTest::newRow("keypad digit") << int(Qt::Key_7) << int(Qt::KeypadModifier) << "Num 7" << "Num 7";
    QTest::newRow("function key") << int(Qt::Key_F12) << 0 << "F12" << "F12";
    QTest::newRow("sign") << int(Qt::Key_Backslash) << int(Qt::ControlModifier) << "Ctrl + \\" << "Ctrl+\\";
    QTest::newRow("no name") << int(Qt::Key_Space) << int(Qt::ControlModifier) << "Ctrl + " << "Ctrl+";
}

void tst_KKeySequenceEdit::textForms()
{
    QFETCH(int, key);
    QFETCH(int, modifiers);
    QFETCH(QString, display);
    QFETCH(QString, store);
    const auto mods = Qt::KeyboardModifiers(modifiers);
    QCOMPARE(KKeySequenceHelper::mapModifiersToStrForDisplay(mods, key) + KKeySequenceHelper::mapKeyToStrForDisplay(key),
             display);
    QCOMPARE(KKeySequenceHelper::keyAndModifiersToString(key, mods), store);
}

void tst_KKeySequenceEdit::roundTrip_data()
{
    QTest::addColumn<QString>("text");
    QTest::addColumn<int>("key");
    QTest::addColumn<int>("modifiers");
    QTest::newRow("ctrl+b") << "Ctrl+B" << int(Qt::Key_B) << int(Qt::ControlModifier);
    QTest::newRow("pgdown alias") << "Shift+Ctrl+PgDown" << int(Qt::Key_PageDown)
                                  << int(Qt::ShiftModifier | Qt::ControlModifier);
    QTest::newRow("num lock is a key") << "Alt+Num Lock" << int(Qt::Key_NumLock) << int(Qt::AltModifier);
    QTest::newRow("keypad") << "Ctrl+Num 5" << int(Qt::Key_5) << int(Qt::ControlModifier | Qt::KeypadModifier);
    QTest::newRow("f5") << "F5" << int(Qt::Key_F5) << 0;
    QTest::newRow("unknown name") << "Ctrl+Frob" << 0 << 0;
}

void tst_KKeySequenceEdit::roundTrip()
{
    QFETCH(QString, text);
    QFETCH(int, key);
    QFETCH(int, modifiers);
    int gotKey = -1;
    Qt::KeyboardModifiers gotMods;
    QCOMPARE(KKeySequenceHelper::stringToKeyAndModifiers(text, gotKey, gotMods), key != 0);
    QCOMPARE(gotKey, key);
    QCOMPARE(int(gotMods), modifiers);
    QCOMPARE(KKeySequenceHelper::stringToKey(text), key ? key | modifiers : 0);
    if (!key)
        return;
    KKeySequenceEdit edit;
    edit.setString(text);
    QCOMPARE(edit.key(), key);
    QCOMPARE(int(edit.modifiers()), modifiers);
    KKeySequenceEdit again;
    again.setString(edit.toString());
    QCOMPARE(again.key(), key);
    QCOMPARE(int(again.modifiers()), modifiers);
}

void tst_KKeySequenceEdit::processOrgKey_data()
{
    QTest::addColumn<int>("key");
    QTest::addColumn<int>("modifiers");
    QTest::addColumn<int>("outKey");
    QTest::addColumn<int>("outModifiers");
    QTest::newRow("bare letter takes alt") << int(Qt::Key_A) << 0 << int(Qt::Key_A) << int(Qt::AltModifier);
    QTest::newRow("shifted sign") << int(Qt::Key_Exclam) << int(Qt::ShiftModifier | Qt::ControlModifier)
                                  << int(Qt::Key_1) << int(Qt::ShiftModifier | Qt::ControlModifier);
    QTest::newRow("crossed tilde") << int(Qt::Key_AsciiTilde) << int(Qt::ControlModifier) << int(Qt::Key_Apostrophe)
                                   << int(Qt::ControlModifier);
    QTest::newRow("bare f5 stays") << int(Qt::Key_F5) << 0 << int(Qt::Key_F5) << 0;
    QTest::newRow("keypad digit stays") << int(Qt::Key_7) << int(Qt::KeypadModifier) << int(Qt::Key_7)
                                        << int(Qt::KeypadModifier);
    QTest::newRow("ctrl pause") << int(Qt::Key_Pause) << int(Qt::ControlModifier) << 0 << int(Qt::ControlModifier);
    QTest::newRow("ctrl shift pause") << int(Qt::Key_Pause) << int(Qt::ControlModifier | Qt::ShiftModifier)
                                      << int(Qt::Key_ScrollLock) << int(Qt::ControlModifier | Qt::ShiftModifier);
    QTest::newRow("delete") << int(Qt::Key_Delete) << int(Qt::ControlModifier) << 0 << int(Qt::ControlModifier);
    QTest::newRow("keypad home") << int(Qt::Key_Home) << int(Qt::KeypadModifier | Qt::ControlModifier)
                                 << int(Qt::Key_Home) << int(Qt::ControlModifier);
}

void tst_KKeySequenceEdit::processOrgKey()
{
    QFETCH(int, key);
    QFETCH(int, modifiers);
    QFETCH(int, outKey);
    QFETCH(int, outModifiers);
    int scan = 0;
    auto mods = Qt::KeyboardModifiers(modifiers);
    KKeySequenceHelper::processOrgKey(key, scan, mods);
    QCOMPARE(key, outKey);
    QCOMPARE(int(mods), outModifiers);
}

void tst_KKeySequenceEdit::capture()
{
    QWidget window;
    auto* edit = new KKeySequenceEdit(&window);
    auto* other = new QLineEdit(&window);
    other->move(0, 40);
    edit->setDefaultText(QStringLiteral("Press a key"));
    int accelerator = 0;
    auto* shortcut = new QShortcut(QKeySequence("Ctrl+K"), &window);
    connect(shortcut, &QShortcut::activated, this, [&accelerator] { ++accelerator; });
    window.show();
    QVERIFY(QTest::qWaitForWindowActive(&window));
    edit->setFocus();
    QTRY_VERIFY(edit->hasFocus());
    QVERIFY(edit->isCursorVisible());
    QSignalSpy changed(edit, &KKeySequenceEdit::keyChanged);

    // A combination is shown and stored; no accelerator fires while the field has the focus,
    // even for a key sent to another widget.
    QTest::keyClick(other, Qt::Key_K, Qt::ControlModifier);
    QCOMPARE(accelerator, 0);
    QCOMPARE(edit->text(), QString("Ctrl + K"));
    QCOMPARE(edit->keySequence(), QKeySequence("Ctrl+K"));
    QVERIFY(changed.count() >= 1);

    // Alt alone shows its prefix and stores nothing; the release restores the text.
    QTest::keyPress(edit, Qt::Key_Alt);
    QCOMPARE(edit->text(), QString("Alt + "));
    QCOMPARE(edit->keySequence(), QKeySequence("Ctrl+K"));
    QTest::keyRelease(edit, Qt::Key_Alt);
    QCOMPARE(edit->text(), QString("Ctrl + K"));

    // A bare letter is taken with Alt; a bare F5 stays as it is.
    QTest::keyClick(edit, Qt::Key_A);
    QCOMPARE(edit->text(), QString("Alt + A"));
    QTest::keyClick(edit, Qt::Key_F5);
    QCOMPARE(edit->toString(), QString("F5"));

    // Escape leaves the field with the stored key.
    QTest::keyClick(edit, Qt::Key_Escape);
    QVERIFY(!edit->hasFocus());
    QCOMPARE(edit->toString(), QString("F5"));
    QVERIFY(!edit->isCursorVisible());
    // Without the focus the accelerators work again.
    other->setFocus();
    QTest::keyClick(other, Qt::Key_K, Qt::ControlModifier);
    QCOMPARE(accelerator, 1);
}

NORVIK_TEST_MAIN(tst_KKeySequenceEdit)
#include "tst_kkeysequenceedit.moc"
