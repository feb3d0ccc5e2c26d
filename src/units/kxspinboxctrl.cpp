#include "kxspinboxctrl.h"

#include <QFocusEvent>
#include <QMouseEvent>
#include <QRegularExpressionValidator>

#include "kxspinboxctrl_p.h"

using IntLogic = KxSpinCtrl::Logic<KxSpinBoxCtrl, qlonglong>;

KxSpinBoxSel::KxSpinBoxSel(QWidget* parent)
    : QSpinBox(parent)
{
    // A click on the text goes to the line edit, not to the spin box.
    lineEdit()->installEventFilter(this);
}

KxSpinBoxSel::~KxSpinBoxSel() = default;

void KxSpinBoxSel::focusInEvent(QFocusEvent* e)
{
    QSpinBox::focusInEvent(e);
    // The press that gave the focus puts the cursor where it landed: select on its release.
    m_selectOnRelease = e->reason() == Qt::MouseFocusReason;
}

bool KxSpinBoxSel::eventFilter(QObject* watched, QEvent* e)
{
    if (watched == lineEdit() && e->type() == QEvent::MouseButtonRelease && m_selectOnRelease) {
        m_selectOnRelease = false;
        selectAll(); // a release doesn't move the cursor, so the selection stays
    }
    return QSpinBox::eventFilter(watched, e);
}

KxSpinBoxCtrl::KxSpinBoxCtrl(QWidget* parent)
    : KxSpinBoxSel(parent)
    , m_validator(new QRegularExpressionValidator(QRegularExpression(QStringLiteral("[-+]?[0-9]{1,10}")), this))
    , m_rangeErrorStr(tr("The input value must be between %1 and %2."))
    , m_illegalStr(tr("Illegal integer text."))
{
    // The pattern and the checks read plain digits; the field shows them in the same way.
    setLocale(QLocale::c());
    connect(lineEdit(), &QLineEdit::textChanged, this, &KxSpinBoxCtrl::editTextChanged);
    connect(this, &QSpinBox::valueChanged, this, &KxSpinBoxCtrl::valueChangedSet);
}

KxSpinBoxCtrl::~KxSpinBoxCtrl() = default;

void KxSpinBoxCtrl::setMaxLength(int length)
{
    lineEdit()->setMaxLength(length);
}

bool KxSpinBoxCtrl::checkError()
{
    editTextChanged(lineEdit()->text());
    return m_hasError;
}

QValidator::State KxSpinBoxCtrl::validate(QString& text, int& pos) const
{
    // The pattern alone: a number out of range may be typed, and is reported.
    return m_validator->validate(text, pos);
}

void KxSpinBoxCtrl::setValue(int value)
{
    KxSpinBoxSel::setValue(value);
    editTextChanged(lineEdit()->text());
}

void KxSpinBoxCtrl::editTextChanged(const QString& text)
{
    IntLogic::checkText(this, text);
}

void KxSpinBoxCtrl::valueChangedSet(int)
{
    editTextChanged(lineEdit()->text());
}

int KxSpinBoxCtrl::valueFromText(const QString& text) const
{
    return IntLogic::takes(this, text) ? QSpinBox::valueFromText(text) : value();
}

void KxSpinBoxCtrl::stepBy(int steps)
{
    const QString before = lineEdit()->text();
    KxSpinBoxSel::stepBy(steps);
    IntLogic::clampAfterStep(this, before, steps);
    IntLogic::setError(this, QString());
}

void KxSpinBoxCtrl::mousePressEvent(QMouseEvent* e)
{
    const QString before = lineEdit()->text();
    KxSpinBoxSel::mousePressEvent(e);
    IntLogic::settleText(this, before);
}

void KxSpinBoxCtrl::keyPressEvent(QKeyEvent* e)
{
    const QString before = lineEdit()->text();
    KxSpinBoxSel::keyPressEvent(e);
    if (IntLogic::isStepKey(e->key()))
        IntLogic::settleText(this, before);
    else if (IntLogic::isReturnKey(e->key()) && lineEdit()->text() != before)
        lineEdit()->setText(before); // kept as typed, for the dialog's check to report
}

void KxSpinBoxCtrl::focusOutEvent(QFocusEvent* e)
{
    // The base class would write the value kept over a text out of range while the error
    // still stands: the text stays, for the dialog's check to report.
    const bool keepSelection = e->reason() == Qt::ActiveWindowFocusReason || e->reason() == Qt::PopupFocusReason;
    IntLogic::keepText(lineEdit(), keepSelection, [this, e] { KxSpinBoxSel::focusOutEvent(e); });
}

void KxSpinBoxCtrl::showEvent(QShowEvent* e)
{
    // The base class writes the value into the field again; what was typed stays.
    IntLogic::keepText(lineEdit(), false, [this, e] { KxSpinBoxSel::showEvent(e); });
}

void KxSpinBoxCtrl::hideEvent(QHideEvent* e)
{
    IntLogic::keepText(lineEdit(), true, [this, e] { KxSpinBoxSel::hideEvent(e); });
}
