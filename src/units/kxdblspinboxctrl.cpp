#include "kxdblspinboxctrl.h"

#include <QFocusEvent>
#include <QMouseEvent>
#include <QRegularExpressionValidator>

#include "kxspinboxctrl_p.h"

using DoubleLogic = KxSpinCtrl::Logic<KxDblSpinBoxCtrl, double>;

KxDoubleSpinBoxSel::KxDoubleSpinBoxSel(QWidget* parent)
    : QDoubleSpinBox(parent)
{
    // A click on the text goes to the line edit, not to the spin box.
    lineEdit()->installEventFilter(this);
}

KxDoubleSpinBoxSel::~KxDoubleSpinBoxSel() = default;

void KxDoubleSpinBoxSel::focusInEvent(QFocusEvent* e)
{
    QDoubleSpinBox::focusInEvent(e);
    // The press that gave the focus puts the cursor where it landed: select on its release.
    m_selectOnRelease = e->reason() == Qt::MouseFocusReason;
}

bool KxDoubleSpinBoxSel::eventFilter(QObject* watched, QEvent* e)
{
    if (watched == lineEdit() && e->type() == QEvent::MouseButtonRelease && m_selectOnRelease) {
        m_selectOnRelease = false;
        selectAll(); // a release doesn't move the cursor, so the selection stays
    }
    return QDoubleSpinBox::eventFilter(watched, e);
}

KxDblSpinBoxCtrl::KxDblSpinBoxCtrl(QWidget* parent)
    : KxDoubleSpinBoxSel(parent)
    , m_validator(new QRegularExpressionValidator(QRegularExpression(QStringLiteral("[-+]?\\d+[.]?\\d*")), this))
    , m_rangeErrorStr(tr("The input value must be between %1 and %2."))
    , m_illegalStr(tr("Illegal integer text."))
{
    // The pattern and the checks read plain digits and a point; the field shows them so.
    setLocale(QLocale::c());
    connect(lineEdit(), &QLineEdit::textChanged, this, &KxDblSpinBoxCtrl::editTextChanged);
    connect(this, &QDoubleSpinBox::valueChanged, this, &KxDblSpinBoxCtrl::valueChangedSet);
}

KxDblSpinBoxCtrl::~KxDblSpinBoxCtrl() = default;

void KxDblSpinBoxCtrl::setMaxLength(int length)
{
    lineEdit()->setMaxLength(length);
}

double KxDblSpinBoxCtrl::getDoubleValue(bool* ok) const
{
    double n = 0.0;
    const bool read = KxSpinCtrl::read(lineEdit()->text(), &n);
    if (ok)
        *ok = read;
    return read ? n : 0.0;
}

bool KxDblSpinBoxCtrl::checkError()
{
    editTextChanged(lineEdit()->text());
    return m_hasError;
}

QValidator::State KxDblSpinBoxCtrl::validate(QString& text, int& pos) const
{
    // The pattern alone: a number out of range may be typed, and is reported.
    return m_validator->validate(text, pos);
}

void KxDblSpinBoxCtrl::setValue(double value)
{
    KxDoubleSpinBoxSel::setValue(value);
    editTextChanged(lineEdit()->text());
}

void KxDblSpinBoxCtrl::editTextChanged(const QString& text)
{
    DoubleLogic::checkText(this, text);
}

void KxDblSpinBoxCtrl::valueChangedSet(double)
{
    editTextChanged(lineEdit()->text());
}

double KxDblSpinBoxCtrl::valueFromText(const QString& text) const
{
    return DoubleLogic::takes(this, text) ? QDoubleSpinBox::valueFromText(text) : value();
}

void KxDblSpinBoxCtrl::stepBy(int steps)
{
    const QString before = lineEdit()->text();
    KxDoubleSpinBoxSel::stepBy(steps);
    DoubleLogic::clampAfterStep(this, before, steps);
    DoubleLogic::setError(this, QString());
}

void KxDblSpinBoxCtrl::mousePressEvent(QMouseEvent* e)
{
    const QString before = lineEdit()->text();
    KxDoubleSpinBoxSel::mousePressEvent(e);
    DoubleLogic::settleText(this, before);
}

void KxDblSpinBoxCtrl::keyPressEvent(QKeyEvent* e)
{
    const QString before = lineEdit()->text();
    KxDoubleSpinBoxSel::keyPressEvent(e);
    if (DoubleLogic::isStepKey(e->key()))
        DoubleLogic::settleText(this, before);
    else if (DoubleLogic::isReturnKey(e->key()) && lineEdit()->text() != before)
        lineEdit()->setText(before); // kept as typed, for the dialog's check to report
}

void KxDblSpinBoxCtrl::focusOutEvent(QFocusEvent* e)
{
    // The base class would write the value kept over a text out of range while the error
    // still stands: the text stays, for the dialog's check to report.
    const bool keepSelection = e->reason() == Qt::ActiveWindowFocusReason || e->reason() == Qt::PopupFocusReason;
    DoubleLogic::keepText(lineEdit(), keepSelection, [this, e] { KxDoubleSpinBoxSel::focusOutEvent(e); });
}

void KxDblSpinBoxCtrl::showEvent(QShowEvent* e)
{
    // The base class writes the value into the field again; what was typed stays.
    DoubleLogic::keepText(lineEdit(), false, [this, e] { KxDoubleSpinBoxSel::showEvent(e); });
}

void KxDblSpinBoxCtrl::hideEvent(QHideEvent* e)
{
    DoubleLogic::keepText(lineEdit(), true, [this, e] { KxDoubleSpinBoxSel::hideEvent(e); });
}
