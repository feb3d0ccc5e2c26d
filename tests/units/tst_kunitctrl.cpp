// The unit control and its parts: the display names of units, the number field, the unit
// label and the list of units. Numbers come from the table's ratios (in 0.013889, cm
// 0.0352778, mm 0.352778 per pt).
#include <ktestsupport.h>

#include <QLineEdit>
#include <QSignalSpy>

#include <kdoublespinbox.h>
#include <kunitctrl.h>
#include <kunitdefine.h>
#include <kunitlabel.h>
#include <kunitlistview.h>
#include <kunitrendering.h>

namespace {

QLineEdit* editOf(QWidget* w)
{
    return w->findChild<QLineEdit*>();
}

KDoubleSpinBox* spinOf(KUnitCtrl* ctrl)
{
    return ctrl->findChild<KDoubleSpinBox*>();
}

// Replaces the field's text by typing, keystroke by keystroke, as a user would.
void retype(QWidget* spin, const QString& text)
{
    QLineEdit* edit = editOf(spin);
    edit->selectAll();
    QTest::keyClick(edit, Qt::Key_Backspace);
    QTest::keyClicks(spin, text);
}

QStringList errorTexts(const QSignalSpy& spy)
{
    QStringList texts;
    for (const QList<QVariant>& args : spy)
        texts << args.at(1).toString();
    return texts;
}

} // namespace

class tst_KUnitCtrl : public QObject
{
    Q_OBJECT
private Q_SLOTS:
    void initTestCase();
    void init();
    void renderingTable();
    void unitChoice_data();
    void unitChoice();
    void rangeDecimalsAndStep_data();
    void rangeDecimalsAndStep();
    void slotsAdjustDecimalsAndStep();
    void changingUnitKeepsTheValue();
    void typedUnitsArriveInTheDefaultUnit_data();
    void typedUnitsArriveInTheDefaultUnit();
    void badTextKeepsTheValue_data();
    void badTextKeepsTheValue();
    void stepsAtTheEdges();
    void reversal();
    void spinBoxReportsAndTexts();
    void keyEmissionAndFocus();
    void favourUnitText();
    void listChoiceAndLabel();
    void listView();

private:
    const QLocale m_english{QLocale::English, QLocale::UnitedStates};
};

void tst_KUnitCtrl::initTestCase()
{
    QLocale::setDefault(m_english);
}

void tst_KUnitCtrl::init()
{
    KUnitDefine::getFavorUnitState() = KUnitDefine::FavorUnitState{KUnitDefine::Centimeters, false};
}

void tst_KUnitCtrl::renderingTable()
{
    KUnitRendering* r = KUnitRendering::getInstance();
    QVERIFY(r->loaded());
    QCOMPARE(r->GetUnitName("in"), QString("inch"));
    QCOMPARE(r->GetUnitShortCut("in"), QString("i"));
    QCOMPARE(r->GetUnitName("ch"), QString("char"));
    QVERIFY(r->GetUnitShortCut("ch").isEmpty());
    QVERIFY(r->GetUnitName("px").isEmpty());
    QVERIFY(!r->GetUnitRenderingRec("px"));
    QCOMPARE(r->GetUnitName2("inch"), QString("in"));
    QVERIFY(r->GetUnitName2("in").isEmpty()); // a unit name is not a display name
    QCOMPARE(r->GetUnitNames({"pt", "px", "%"}), QStringList({"pt", "", "%"}));
    // Typed text: a unit's name first, then a display name, then a short form.
    QCOMPARE(r->GetUnitByText("CM"), QString("cm"));
    QCOMPARE(r->GetUnitByText("Inch"), QString("in"));
    QCOMPARE(r->GetUnitByText("p"), QString("pt"));
    QCOMPARE(r->GetUnitByText("m"), QString("mm"));
    QVERIFY(r->GetUnitByText("q").isEmpty());

    KUnitRendering own;
    QVERIFY(!own.loaded());
    own.loadUnitRendings();
    QCOMPARE(own.GetUnitName("multiple"), QString("multiple"));
    own.clearUnitRendings();
    QVERIFY(own.GetUnitName("pt").isEmpty());
}

void tst_KUnitCtrl::unitChoice_data()
{
    QTest::addColumn<QStringList>("units");
    QTest::addColumn<QString>("favourite");
    QTest::addColumn<bool>("chosen");
    QTest::addColumn<QString>("current");
    QTest::addColumn<QStringList>("list");
    QTest::addColumn<bool>("canPopup");

    QTest::newRow("lengths show the favourite") << QStringList{"pt,0,1584,0,1"} << "cm" << false << "cm"
                                                << QStringList{"pt", "inch", "cm", "mm"} << true;
    QTest::newRow("a chosen favourite") << QStringList{"pt,0,1584,0,1"} << "in" << true << "in"
                                        << QStringList{"pt", "inch", "cm", "mm"} << true;
    QTest::newRow("lengths and characters") << QStringList{"ch,1,100,0,1", "cm,2,55.88,0,0.1"} << "mm" << false
                                            << "mm" << QStringList{"char", "pt", "inch", "cm", "mm"} << true;
    QTest::newRow("no lengths: the first unit") << QStringList{"ch,1,100,0,1", "%,0,500,0,1"} << "cm" << true
                                                << "ch" << QStringList{"char", "%"} << true;
    QTest::newRow("one unit: no popup") << QStringList{"%,0,500,0,1"} << "cm" << false << "%"
                                        << QStringList{"%"} << false;
    QTest::newRow("nothing known") << QStringList{"px,0,10,0,1"} << "cm" << false << ""
                                   << QStringList{} << false;
}

void tst_KUnitCtrl::unitChoice()
{
    QFETCH(QStringList, units);
    QFETCH(QString, favourite);
    QFETCH(bool, chosen);
    QFETCH(QString, current);
    QFETCH(QStringList, list);
    QFETCH(bool, canPopup);
    KUnitDefine::getFavorUnitState() = KUnitDefine::FavorUnitState{favourite, chosen};
    KUnitCtrl ctrl;
    ctrl.setUnits(units);
    QCOMPARE(ctrl.currentUnitName(), current);
    auto* view = ctrl.findChild<KUnitListView*>();
    QVERIFY(view);
    QStringList shown;
    for (int i = 0; i < view->count(); ++i)
        shown << view->item(i)->text();
    QCOMPARE(shown, list);
    if (!current.isEmpty())
        QCOMPARE(view->currentItem()->text(), KUnitRendering::getInstance()->GetUnitName(current));
    auto* label = ctrl.findChild<KUnitLabel*>();
    QVERIFY(label);
    QCOMPARE(label->canPopup(), canPopup);
    QCOMPARE(label->text(), KUnitRendering::getInstance()->GetUnitName(current));
    // A click on the label opens the list only where there is a choice; closing it again
    // without a choice changes nothing.
    QSignalSpy changes(&ctrl, &KUnitCtrl::valueChanged);
    bool opened = false;
    QTimer::singleShot(0, &ctrl, [&opened] {
        if (QWidget* popup = QApplication::activePopupWidget()) {
            opened = true;
            popup->close();
        }
    });
    ctrl.onLabelLeftClicked();
    QCOMPARE(opened, canPopup);
    QCOMPARE(changes.count(), 0);
    QCOMPARE(ctrl.currentUnitName(), current);
}

void tst_KUnitCtrl::rangeDecimalsAndStep_data()
{
    QTest::addColumn<QString>("record");
    QTest::addColumn<QString>("shown");
    QTest::addColumn<double>("maximum");
    QTest::addColumn<int>("decimals");
    QTest::addColumn<double>("step");

    // decimals = ceil(log10(1 / c)) with c = one unit of the record in the shown unit, at
    // least the record's own; step = 10^-decimals (before that floor) * the record's step.
    QTest::newRow("pt in pt") << "pt,0,1584,0,1" << "pt" << 1584.0 << 0 << 1.0;
    QTest::newRow("pt in in") << "pt,0,1584,0,1" << "in" << 22.0 << 2 << 0.01;
    QTest::newRow("pt in cm") << "pt,0,1584,0,1" << "cm" << 55.88 << 2 << 0.01;
    QTest::newRow("pt in mm") << "pt,0,1584,0,1" << "mm" << 558.8 << 1 << 0.1;
    QTest::newRow("cm in pt: the record's decimals") << "cm,2,55.88,0,0.1" << "pt" << 1584.0 << 2 << 1.0;
    QTest::newRow("cm in in") << "cm,2,55.88,0,0.1" << "in" << 22.0 << 2 << 0.01;
    QTest::newRow("cm in cm") << "cm,2,55.88,0,0.1" << "cm" << 55.88 << 2 << 0.1;
}

void tst_KUnitCtrl::rangeDecimalsAndStep()
{
    QFETCH(QString, record);
    QFETCH(QString, shown);
    QFETCH(double, maximum);
    QFETCH(int, decimals);
    QFETCH(double, step);
    KUnitCtrl ctrl;
    ctrl.setUnits({record});
    ctrl.setCurrentUnitName(shown);
    KDoubleSpinBox* spin = spinOf(&ctrl);
    QVERIFY(spin);
    QCOMPARE(spin->maximum(), maximum);
    QCOMPARE(spin->minimum(), 0.0);
    QCOMPARE(spin->decimals(), decimals);
    QCOMPARE(spin->singleStep(), step);

    // A new offer with the same unit applies its own range.
    ctrl.setUnits({record.section(',', 0, 0) + ",2,10,5,1"});
    QVERIFY(spin->minimum() > 0);
}

void tst_KUnitCtrl::slotsAdjustDecimalsAndStep()
{
    KUnitCtrl ctrl;
    QStringList seen;
    connect(&ctrl, &KUnitCtrl::updateDecimal, this, [&seen](const QString& family, const QString& unit, int* d) {
        seen << family + "/" + unit;
        *d = 4;
    });
    connect(&ctrl, &KUnitCtrl::updateSingleStep, this, [](const QString&, const QString&, double* step) {
        *step *= 5;
    });
    ctrl.setUnits({"pt,0,1584,0,1"});
    QCOMPARE(seen, QStringList({"Device/cm"}));
    QCOMPARE(spinOf(&ctrl)->decimals(), 4);
    QCOMPARE(spinOf(&ctrl)->singleStep(), 0.05);
}

void tst_KUnitCtrl::changingUnitKeepsTheValue()
{
    KUnitCtrl ctrl;
    ctrl.setUnits({"cm,2,55.88,0,0.1"});
    ctrl.setValue(2.5);
    QCOMPARE(ctrl.getCurrentUnitValue(), 2.5);
    QSignalSpy changes(&ctrl, &KUnitCtrl::valueChanged);

    ctrl.setCurrentUnitName("in");
    QCOMPARE(changes.count(), 1);
    QCOMPARE(changes.at(0).at(1).toBool(), true);
    QCOMPARE(changes.at(0).at(0).toDouble(), ctrl.value());
    // 2.5 cm are 0.98425 in, shown with two decimals.
    QCOMPARE(ctrl.getCurrentUnitValue(), 0.98);
    QCOMPARE(ctrl.cleanText(), QString("0.98"));
    QVERIFY(qAbs(ctrl.value() - 2.5) <= 0.005 / 0.013889 * 0.0352778);
    // Back in cm the host's own number comes back, not the rounded one.
    ctrl.setCurrentUnitName("cm");
    QCOMPARE(ctrl.getCurrentUnitValue(), 2.5);
    QCOMPARE(ctrl.value(), 2.5);
    // Unknown, empty and unchanged names change nothing.
    ctrl.setCurrentUnitName("px");
    ctrl.setCurrentUnitName("");
    ctrl.setCurrentUnitName("cm");
    QCOMPARE(changes.count(), 2);
    QCOMPARE(ctrl.currentUnitName(), QString("cm"));
}

void tst_KUnitCtrl::typedUnitsArriveInTheDefaultUnit_data()
{
    QTest::addColumn<QString>("text");
    QTest::addColumn<QString>("shownAfter"); // in cm
    QTest::addColumn<double>("hostValue");   // in pt, the default unit

    QTest::newRow("bare number in the shown unit") << "3" << "3" << 3 / 0.0352778;
    QTest::newRow("inches") << "1 in" << "2.54" << 2.54 / 0.0352778;
    QTest::newRow("inches by short form") << "2i" << "5.08" << 5.08 / 0.0352778;
    QTest::newRow("points") << "72pt" << "2.54" << 2.54 / 0.0352778;
    QTest::newRow("millimetres") << "25.4 mm" << "2.54" << 2.54 / 0.0352778;
}

void tst_KUnitCtrl::typedUnitsArriveInTheDefaultUnit()
{
    QFETCH(QString, text);
    QFETCH(QString, shownAfter);
    QFETCH(double, hostValue);
    KUnitCtrl ctrl;
    ctrl.setUnits({"pt,1,1584,0,1"});
    QCOMPARE(ctrl.currentUnitName(), QString("cm"));
    QSignalSpy changes(&ctrl, &KUnitCtrl::valueChanged);
    QSignalSpy errors(&ctrl, &KUnitCtrl::emitAddError);
    KDoubleSpinBox* spin = spinOf(&ctrl);
    retype(spin, text);
    QCOMPARE(editOf(spin)->text(), text); // nothing typed was refused
    QTest::keyClick(spin, Qt::Key_Return);
    QCOMPARE(ctrl.cleanText(), shownAfter);
    QCOMPARE(ctrl.value(), hostValue);
    QVERIFY(!changes.isEmpty());
    QCOMPARE(changes.last().at(0).toDouble(), hostValue);
    QCOMPARE(changes.last().at(1).toBool(), false);
    QVERIFY(!ctrl.hasError());
}

void tst_KUnitCtrl::badTextKeepsTheValue_data()
{
    QTest::addColumn<QString>("locale");
    QTest::addColumn<QString>("text");
    QTest::addColumn<QString>("error"); // the last one reported before the text is taken

    const QString illegal = "Illegal number text.";
    const QString range = "The input value must be between 0 cm and 55.88 cm.";
    QTest::newRow("empty") << "en_US" << "" << illegal;
    QTest::newRow("only a unit") << "en_US" << "cm" << illegal;
    QTest::newRow("unknown unit") << "en_US" << "5 furlongs" << "\"furlongs\" is not a unit of this field.";
    QTest::newRow("unit without a rule") << "en_US" << "5 %" << "\"%\" is not a unit of this field.";
    QTest::newRow("comma in English") << "en_US" << "2,5" << illegal;
    QTest::newRow("point in German") << "de_DE" << "2.5" << illegal;
    QTest::newRow("negative") << "en_US" << "-3" << range;
    QTest::newRow("huge") << "en_US" << "99999999" << range;
    QTest::newRow("too large for a double") << "en_US" << "1e400" << illegal;
    QTest::newRow("huge in another unit") << "en_US" << "1e300 in" << range;
    QTest::newRow("nan") << "en_US" << "nan" << illegal;
    QTest::newRow("infinity") << "en_US" << "-inf" << illegal;
    QTest::newRow("German range") << "de_DE" << "60" << "The input value must be between 0 cm and 55,88 cm.";
}

void tst_KUnitCtrl::badTextKeepsTheValue()
{
    QFETCH(QString, locale);
    QFETCH(QString, text);
    QFETCH(QString, error);
    KUnitCtrl ctrl;
    ctrl.setLocale(QLocale(locale));
    ctrl.setUnits({"cm,2,55.88,0,0.1", "%,0,500,0,1"});
    ctrl.setValue(2.5);
    QSignalSpy changes(&ctrl, &KUnitCtrl::valueChanged);
    QSignalSpy added(&ctrl, &KUnitCtrl::emitAddError);
    QSignalSpy removed(&ctrl, &KUnitCtrl::emitRemoveError);
    KDoubleSpinBox* spin = spinOf(&ctrl);
    spin->setKeyboardTracking(false); // the value moves only when the text is taken
    retype(spin, text);
    QCOMPARE(editOf(spin)->text(), text);
    QVERIFY(ctrl.hasError());
    QVERIFY(!added.isEmpty());
    QCOMPARE(errorTexts(added).last(), error);
    QCOMPARE(added.last().at(0).value<QWidget*>(), &ctrl);
    QVERIFY(ctrl.checkError());

    // Taking the text keeps the value and shows it again, which ends the error.
    const int removedBefore = int(removed.count());
    QTest::keyClick(spin, Qt::Key_Return);
    QCOMPARE(ctrl.value(), 2.5);
    QCOMPARE(ctrl.cleanText(), QLocale(locale).toString(2.5));
    QCOMPARE(changes.count(), 0);
    QVERIFY(!ctrl.hasError());
    QCOMPARE(removed.count(), removedBefore + 1);
}

void tst_KUnitCtrl::stepsAtTheEdges()
{
    KUnitCtrl ctrl;
    ctrl.setUnits({"cm,2,5,0,0.1"});
    KDoubleSpinBox* spin = spinOf(&ctrl);
    QSignalSpy steps(&ctrl, &KUnitCtrl::doubleSpinBoxStepBy);
    ctrl.setValue(4.95);
    QSignalSpy changes(&ctrl, &KUnitCtrl::valueChanged);
    spin->stepBy(1);
    QCOMPARE(ctrl.value(), 5.0);
    spin->stepBy(1);
    QCOMPARE(ctrl.value(), 5.0);
    QCOMPARE(changes.count(), 1); // the step that went nowhere reported nothing
    ctrl.setValue(0.05);
    QTest::keyClick(spin, Qt::Key_PageDown); // ten steps down, stopped at the minimum
    QCOMPARE(ctrl.value(), 0.0);
    QCOMPARE(steps.count(), 3);
    QCOMPARE(steps.last().at(0).toInt(), -10);
    QTest::keyClick(spin, Qt::Key_Up);
    QCOMPARE(ctrl.cleanText(), QString("0.1"));
}

void tst_KUnitCtrl::reversal()
{
    KUnitCtrl ctrl;
    ctrl.setUnits({"%,0,100,0,1"});
    ctrl.setCanReverse(true);
    KDoubleSpinBox* spin = spinOf(&ctrl);
    // One extra unit at each end, which marks the turn.
    QCOMPARE(spin->minimum(), -1.0);
    QCOMPARE(spin->maximum(), 101.0);
    ctrl.setValue(0);
    QSignalSpy turns(&ctrl, &KUnitCtrl::reverseChanged);
    QSignalSpy changes(&ctrl, &KUnitCtrl::valueChanged);

    // Down from zero turns the meaning, not the sign.
    spin->stepBy(-1);
    QCOMPARE(ctrl.value(), 1.0);
    QVERIFY(ctrl.reversed());
    QCOMPARE(turns.count(), 1);
    QCOMPARE(turns.last().at(0).toBool(), true);
    spin->stepBy(1); // up, while reversed: towards zero
    QCOMPARE(ctrl.value(), 0.0);
    spin->stepBy(1);
    QCOMPARE(ctrl.value(), 1.0);
    QVERIFY(!ctrl.reversed());

    // The ends are never reported and never kept.
    ctrl.setCurrentUnitValue(100);
    spin->stepBy(1);
    QCOMPARE(ctrl.value(), 100.0);
    retype(spin, "101");
    QTest::keyClick(spin, Qt::Key_Return);
    QCOMPARE(ctrl.value(), 100.0);
    for (const QList<QVariant>& args : changes) {
        QVERIFY(args.at(0).toDouble() >= 0.0);
        QVERIFY(args.at(0).toDouble() <= 100.0);
    }
    // Beyond the extra unit a keystroke is refused.
    retype(spin, "103");
    QCOMPARE(editOf(spin)->text(), QString("10"));
}

void tst_KUnitCtrl::spinBoxReportsAndTexts()
{
    KDoubleSpinBox spin;
    spin.setRange(0, 1000);
    spin.setDecimals(2);
    QSignalSpy changes(&spin, &QDoubleSpinBox::valueChanged);
    spin.setValue(1.0);
    spin.setValue(1.001); // rounds away in the field, still reported once
    spin.setValue(1.001);
    QCOMPARE(changes.count(), 2);
    QCOMPARE(spin.text(), QString("1"));
    spin.setValue(1.5);
    QCOMPARE(spin.text(), QString("1.5"));
    spin.setDecimals(0);
    spin.setValue(100);
    QCOMPARE(spin.text(), QString("100"));

    // Clear text: the kept value shows as an empty field.
    spin.setDecimals(2);
    spin.setValue(3);
    spin.setClearText(true, false);
    QVERIFY(spin.text().isEmpty());
    spin.setValue(4);
    QCOMPARE(spin.text(), QString("4"));
    spin.setValue(3.001);
    QVERIFY(spin.text().isEmpty());

    // The unit control's setValue() ends clear text.
    KUnitCtrl ctrl;
    ctrl.setUnits({"%,0,100,0,1"});
    ctrl.setValue(7);
    ctrl.setClearText(true, false);
    QVERIFY(ctrl.cleanText().isEmpty());
    QVERIFY(!ctrl.hasError()); // empty stands for the kept value here
    ctrl.setValue(7);
    QVERIFY(!ctrl.clearText());
    QCOMPARE(ctrl.cleanText(), QString("7"));

    // Every field measures the same, whatever its range.
    KDoubleSpinBox wide;
    wide.setRange(-1e9, 1e9);
    QCOMPARE(wide.sizeHint().width(), spin.sizeHint().width());
}

void tst_KUnitCtrl::keyEmissionAndFocus()
{
    KDoubleSpinBox spin;
    spin.setRange(0, 100);
    spin.setCanKeyEmit(false);
    QSignalSpy changes(&spin, &QDoubleSpinBox::valueChanged);
    QSignalSpy focus(&spin, &KDoubleSpinBox::editFocusChanged);
    retype(&spin, "42");
    QCOMPARE(spin.value(), 42.0);
    QCOMPARE(changes.count(), 0); // typing reports nothing ...
    QTest::keyClick(&spin, Qt::Key_Up);
    QCOMPARE(changes.count(), 1); // ... the arrows do
    retype(&spin, "50");
    QFocusEvent out(QEvent::FocusOut, Qt::TabFocusReason);
    QCoreApplication::sendEvent(&spin, &out);
    QCOMPARE(changes.count(), 2); // ... and leaving the field tells what was typed
    QCOMPARE(changes.last().at(0).toDouble(), 50.0);
    QCOMPARE(focus.last().at(0).toBool(), false);

    // Return goes on to the dialog.
    QKeyEvent enter(QEvent::KeyPress, Qt::Key_Return, Qt::NoModifier);
    QCoreApplication::sendEvent(&spin, &enter);
    QVERIFY(!enter.isAccepted());

    // Losing the activation to another window leaves the text as typed; a real focus change
    // formats it.
    spin.setCanKeyEmit(true);
    spin.setDecimals(2);
    retype(&spin, "1.50");
    QFocusEvent away(QEvent::FocusOut, Qt::ActiveWindowFocusReason);
    QCoreApplication::sendEvent(&spin, &away);
    QCOMPARE(editOf(&spin)->text(), QString("1.50"));
    QCoreApplication::sendEvent(&spin, &out);
    QCOMPARE(editOf(&spin)->text(), QString("1.5"));
}

void tst_KUnitCtrl::favourUnitText()
{
    KUnitCtrl ctrl;
    ctrl.setUnits({"ch,1,100,0,1", "cm,2,55.88,0,0.1"});
    ctrl.setConvertTos({"cm,ch,2.7"});
    ctrl.setCurrentUnitName("ch");
    ctrl.setCurrentUnitValue(2);
    // 2 ch are 2 / 2.7 cm: six decimals at most, then the shortest form.
    QCOMPARE(ctrl.getFavorUnitText(), QString("0.740741 cm"));
    ctrl.setConvertTos({});
    QVERIFY(ctrl.getFavorUnitText().isEmpty()); // no way to cm: nothing rather than a wrong number
    ctrl.setConvertTos({"cm,ch,2"});
    ctrl.setClearText(true, false);
    QVERIFY(ctrl.getFavorUnitText().isEmpty()); // an empty field

    KUnitCtrl lengths;
    lengths.setUnits({"pt,1,1584,0,1"});
    QVERIFY(lengths.getFavorUnitText().isEmpty()); // no characters on offer
}

void tst_KUnitCtrl::listChoiceAndLabel()
{
    // Inside a window without a layout, so that the label's widths don't reach the window.
    QWidget window;
    window.resize(300, 60);
    KUnitCtrl& ctrl = *new KUnitCtrl(&window);
    ctrl.setUnits({"pt,1,1584,0,1"});
    ctrl.setValue(72);
    auto* view = ctrl.findChild<KUnitListView*>();
    auto* label = ctrl.findChild<KUnitLabel*>();
    QVERIFY(view);
    QVERIFY(label);
    window.show();
    QVERIFY(QTest::qWaitForWindowExposed(&window));
    QVERIFY(!view->isVisible()); // the master list is never shown itself

    // A click on the label pops the list of units up below it; a row pressed there becomes
    // the unit, and the list closes.
    QSignalSpy closes(&ctrl, &KUnitCtrl::closePopup);
    QSignalSpy changes(&ctrl, &KUnitCtrl::valueChanged);
    QPoint popupAt;
    QStringList rows;
    QTimer::singleShot(0, &ctrl, [&] {
        auto* popup = qobject_cast<KFSPopupWidget*>(QApplication::activePopupWidget());
        QVERIFY(popup);
        popupAt = popup->geometry().topLeft();
        auto* list = qobject_cast<KUnitListView*>(popup->contentWidget());
        QVERIFY(list);
        for (int i = 0; i < list->count(); ++i)
            rows << list->item(i)->text();
        const QRect inch = list->visualItemRect(list->item(1));
        QTest::mouseClick(list->viewport(), Qt::LeftButton, {}, inch.center());
    });
    QTest::mouseClick(label, Qt::LeftButton);
    QVERIFY(!QApplication::activePopupWidget());
    QCOMPARE(popupAt, label->mapToGlobal(QPoint(0, label->height())));
    QCOMPARE(rows.size(), view->count());
    QCOMPARE(ctrl.currentUnitName(), QString("in"));
    QCOMPARE(label->text(), QString("inch"));
    QCOMPARE(closes.count(), 1);
    QCOMPARE(changes.count(), 1);
    QCOMPARE(ctrl.cleanText(), QString("1"));

    // A press outside the list closes it and changes nothing.
    QTimer::singleShot(0, &ctrl, [] {
        QWidget* popup = QApplication::activePopupWidget();
        QVERIFY(popup);
        QTest::mousePress(popup, Qt::LeftButton, {}, QPoint(-20, -20));
    });
    QTest::mouseClick(label, Qt::LeftButton);
    QVERIFY(!QApplication::activePopupWidget());
    QCOMPARE(ctrl.currentUnitName(), QString("in"));

    // The label: clicks and keys (each opens the list, closed again here), and an arrow only
    // when there is a choice.
    QSignalSpy clicks(label, &KUnitLabel::clicked);
    auto closeList = [&ctrl] {
        QTimer::singleShot(0, &ctrl, [] {
            if (QWidget* popup = QApplication::activePopupWidget())
                popup->close();
        });
    };
    closeList();
    QTest::mouseClick(label, Qt::LeftButton);
    closeList();
    QTest::keyClick(label, Qt::Key_Space);
    closeList();
    QTest::keyClick(label, Qt::Key_Down);
    QTest::keyClick(label, Qt::Key_A);
    QCOMPARE(clicks.count(), 3);
    auto arrowPixels = [label] {
        const QImage image = label->grab().toImage();
        const QRect arrow(label->width() - 6, (label->height() - 3) / 2, 5, 3);
        int dark = 0;
        for (int y = arrow.top(); y <= arrow.bottom(); ++y)
            for (int x = arrow.left(); x <= arrow.right(); ++x)
                dark += qGray(image.pixel(x, y)) < 160;
        return dark;
    };
    QCOMPARE(arrowPixels(), 9);
    ctrl.setUnits({"%,0,100,0,1"});
    QCOMPARE(arrowPixels(), 0);

    // A host may line several units up; a hidden label stays hidden when the control
    // comes back.
    ctrl.setLabelFixWidth(40);
    ctrl.adjustSize();
    QCOMPARE(label->width(), 40);
    ctrl.hideLabel();
    ctrl.hide();
    ctrl.show();
    QVERIFY(!label->isVisible());
}

void tst_KUnitCtrl::listView()
{
    KUnitListView view;
    view.addItems({"pt", "inch", "cm"});
    view.setFixedSize(50, 60);
    view.setCurrentRow(0);
    view.show();
    QVERIFY(QTest::qWaitForWindowExposed(&view));
    QVERIFY(view.hasMouseTracking());

    view.onMouseEnter(view.model()->index(2, 0));
    QCOMPARE(view.currentRow(), 2);
    QSignalSpy activated(&view, &QAbstractItemView::activated);
    QSignalSpy closing(&view, &KUnitListView::aboutToClose);
    QTest::keyClick(&view, Qt::Key_Return);
    QCOMPARE(activated.count(), 1);
    QCOMPARE(activated.last().at(0).toModelIndex().row(), 2);
    QTest::keyClick(&view, Qt::Key_Escape);
    QTest::keyClick(&view, Qt::Key_Tab);
    QCOMPARE(closing.count(), 2);

    KUnitListView copy;
    copy.copyView(&view);
    QCOMPARE(copy.count(), 3);
    QCOMPARE(copy.item(1)->text(), QString("inch"));
    QCOMPARE(copy.currentRow(), 2);
    QCOMPARE(copy.size(), QSize(50, 60));
}

NORVIK_TEST_MAIN(tst_KUnitCtrl)
#include "tst_kunitctrl.moc"
