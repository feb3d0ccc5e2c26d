#include "ksecondsedit.h"

#include <QKeyEvent>
#include <QLineEdit>
#include <QRegularExpression>
#include <QRegularExpressionValidator>
#include <QStyle>
#include <QStyleOptionSpinBox>
#include <cmath>

namespace {

QString twoDigits(int n)
{
    return QStringLiteral("%1").arg(n, 2, 10, QLatin1Char('0'));
}

// The seconds of a minute: one decimal at most, none for whole seconds, and a two-digit
// whole part ("05", "01.5").
QString secondsText(double seconds)
{
    // Asked with more decimals than are kept and then cut, so that 59.96 stays 59.9 and
    // never becomes "60.0"; six places absorb a float's error in the tenths.
    QString text = QString::number(seconds, 'f', 6);
    const int point = int(text.indexOf(QLatin1Char('.')));
    if (point >= 0)
        text.truncate(point + 2);
    if (text.endsWith(QLatin1String(".0")))
        text.chop(2);
    const int whole = int(text.indexOf(QLatin1Char('.')));
    if ((whole < 0 ? text.size() : whole) == 1)
        text.prepend(QLatin1Char('0'));
    return text;
}

} // namespace

KSecondsEdit::KSecondsEdit(QWidget* parent)
    : QAbstractSpinBox(parent)
    , m_validator(new QRegularExpressionValidator(QRegularExpression(QStringLiteral("[\\d:\\.]*")), this))
{
    setSeconds(0);
}

KSecondsEdit::~KSecondsEdit() = default;

void KSecondsEdit::setSeconds(const float& value)
{
    if (!(value >= m_minSeconds && value <= m_maxSeconds)) { // NaN too
        m_seconds = 0;
        lineEdit()->setText(QStringLiteral("00:00"));
        return;
    }
    m_seconds = value;
    const double v = value;
    const double hours = std::floor(v / 60 / 60); // a double: a host may allow years
    const double rest = v - hours * 3600.0;
    const int minutes = int(rest / 60);
    const double seconds = rest - minutes * 60.0;
    QString text = hours > 0 ? QString::number(hours, 'f', 0) + QLatin1Char(':') : QString();
    text += twoDigits(minutes) + QLatin1Char(':') + secondsText(seconds);
    lineEdit()->setText(text);
}

QString KSecondsEdit::ckeckToValidText(const QString& text)
{
    if (text.isEmpty())
        return QStringLiteral("00:00");
    QStringList parts = (text.contains(QLatin1Char(':')) ? text : QStringLiteral("00:") + text)
                            .split(QLatin1Char(':'));
    for (QString& part : parts) {
        const int point = int(part.indexOf(QLatin1Char('.')));
        const int whole = point < 0 ? int(part.size()) : point;
        if (whole < 2)
            part.prepend(QString(2 - whole, QLatin1Char('0')));
    }
    return parts.join(QLatin1Char(':'));
}

double KSecondsEdit::_secondsOf(const QString& validText)
{
    const QStringList parts = validText.split(QLatin1Char(':'));
    const int n = int(parts.size());
    const double seconds = parts.at(n - 1).toDouble();
    const double minutes = n > 1 ? parts.at(n - 2).toDouble() : 0.0;
    const double hours = n > 2 ? parts.at(n - 3).toDouble() : 0.0;
    return seconds + minutes * 60 + hours * 3600;
}

void KSecondsEdit::_setSecondsFrom(double seconds)
{
    // Whatever digits were typed, only a number in range reaches the float.
    setSeconds(seconds >= m_minSeconds && seconds <= m_maxSeconds ? float(seconds) : -1.0f);
}

void KSecondsEdit::checkAndSetText()
{
    QLineEdit* edit = lineEdit();
    const int start = edit->selectionStart();
    const int length = int(edit->selectedText().size());
    _setSecondsFrom(_secondsOf(ckeckToValidText(edit->text())));
    if (start >= 0 && start + length <= edit->text().size())
        edit->setSelection(start, length);
}

QValidator::State KSecondsEdit::validate(QString& text, int& pos) const
{
    return m_validator->validate(text, pos);
}

void KSecondsEdit::stepBy(int steps)
{
    const QStringList parts = ckeckToValidText(lineEdit()->text()).split(QLatin1Char(':'));
    const int n = int(parts.size());
    const double seconds = std::round(parts.at(n - 1).toDouble());
    const double minutes = n > 1 ? std::round(parts.at(n - 2).toDouble()) : 0.0;
    const double hours = n > 2 ? std::round(parts.at(n - 3).toDouble()) : 0.0;
    _setSecondsFrom(seconds + steps + minutes * 60 + hours * 3600);
    selectAll();
    Q_EMIT stepByClick(steps);
}

QAbstractSpinBox::StepEnabled KSecondsEdit::stepEnabled() const
{
    StepEnabled enabled = StepNone;
    if (m_maxSeconds > m_seconds)
        enabled |= StepUpEnabled;
    if (m_seconds > m_minSeconds)
        enabled |= StepDownEnabled;
    return enabled;
}

void KSecondsEdit::keyPressEvent(QKeyEvent* e)
{
    // Read before the base class takes Return: it tells editingFinished() and passes the key
    // on to the dialog's default button, both of which must see the value already read.
    if (e->key() == Qt::Key_Return || e->key() == Qt::Key_Enter)
        checkAndSetText();
    QAbstractSpinBox::keyPressEvent(e);
}

void KSecondsEdit::keyReleaseEvent(QKeyEvent* e)
{
    QAbstractSpinBox::keyReleaseEvent(e);
    if (e->key() != Qt::Key_Return && e->key() != Qt::Key_Enter)
        Q_EMIT editValue();
}

void KSecondsEdit::focusOutEvent(QFocusEvent* e)
{
    checkAndSetText();
    QAbstractSpinBox::focusOutEvent(e); // tells editingFinished()
}

QSize KSecondsEdit::sizeHint() const
{
    QStyleOptionSpinBox opt;
    initStyleOption(&opt);
    const QSize content(fontMetrics().horizontalAdvance(QStringLiteral("00:00:00.0 ")), fontMetrics().height());
    const QSize hint = style()->sizeFromContents(QStyle::CT_SpinBox, &opt, content, this);
    return QSize(hint.width(), QAbstractSpinBox::sizeHint().height());
}

QSize KSecondsEdit::minimumSizeHint() const
{
    return sizeHint();
}
