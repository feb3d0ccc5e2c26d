#include "kdoublespinbox.h"

#include <QFocusEvent>
#include <QKeyEvent>
#include <QLineEdit>
#include <QSignalBlocker>
#include <QStyle>
#include <QStyleOptionSpinBox>

KDoubleSpinBox::KDoubleSpinBox(QWidget* parent)
    : QDoubleSpinBox(parent)
    , m_lastValue(value())
{
    // Connected first, so that the reversal clamp runs before anyone else hears of a value.
    connect(this, &QDoubleSpinBox::valueChanged, this, &KDoubleSpinBox::onValueChanged);
}

KDoubleSpinBox::~KDoubleSpinBox() = default;

void KDoubleSpinBox::setCanReverse(bool on)
{
    m_canReverse = on;
}

void KDoubleSpinBox::setReversed(bool on)
{
    if (m_reversed == on)
        return;
    m_reversed = on;
    Q_EMIT reverseChanged(on);
}

void KDoubleSpinBox::setClearText(bool on, bool keep)
{
    m_clearText = on;
    m_clearValue = value();
    if (!keep)
        QDoubleSpinBox::setValue(value()); // redraws the text, emits nothing
}

void KDoubleSpinBox::setValue(double v)
{
    {
        const QSignalBlocker blocker(this);
        QDoubleSpinBox::setValue(v);
    }
    if (qFuzzyCompare(v, m_lastValue))
        return;
    m_lastValue = v;
    Q_EMIT valueChanged(v);
}

void KDoubleSpinBox::onValueChanged(double v)
{
    m_lastValue = v;
    if (!m_canReverse)
        return;
    // The extra unit at each end only marks the turn; the value never rests there.
    if (v > maximum() - 1)
        setValue(maximum() - 1);
    else if (v < minimum() + 1)
        setValue(minimum() + 1);
}

void KDoubleSpinBox::setMinimum2(double x)
{
    setMinimum(m_canReverse ? x - 1 : x);
}

void KDoubleSpinBox::setMaximum2(double x)
{
    setMaximum(m_canReverse ? x + 1 : x);
}

QValidator::State KDoubleSpinBox::validate(QString& text, int& pos) const
{
    if (m_canReverse) {
        bool ok = false;
        const double n = locale().toDouble(text.trimmed(), &ok);
        if (ok && (n < minimum() - 1 || n > maximum() + 1))
            return QValidator::Invalid;
    }
    return QDoubleSpinBox::validate(text, pos);
}

QString KDoubleSpinBox::textFromValue(double value) const
{
    const QLocale loc = locale();
    if (m_clearText && loc.toString(value, 'f', decimals()) == loc.toString(m_clearValue, 'f', decimals()))
        return QString();
    QString text = QDoubleSpinBox::textFromValue(value);
    const QString point = loc.decimalPoint();
    if (text.contains(point)) {
        while (text.endsWith(loc.zeroDigit()))
            text.chop(loc.zeroDigit().size());
        if (text.endsWith(point))
            text.chop(point.size());
    }
    return text;
}

void KDoubleSpinBox::stepBy(int steps)
{
    if (m_canReverse) {
        // At zero the direction of the step chooses what the magnitude means.
        if (!(value() > 0)) {
            m_reversed = steps < 0;
            Q_EMIT reverseChanged(m_reversed);
        }
        if (m_reversed)
            steps = -steps;
    }
    QDoubleSpinBox::stepBy(steps);
    lineEdit()->deselect();
    Q_EMIT textChanged(QString());
    Q_EMIT stepByChanged(steps);
}

QSize KDoubleSpinBox::sizeHint() const
{
    // One width for every such field of the process, so that dialogs line them up.
    static int s_textWidth = -1;
    if (s_textWidth < 0)
        s_textWidth = fontMetrics().horizontalAdvance(QStringLiteral("0.000000"));
    const QSize base = QDoubleSpinBox::sizeHint();
    QStyleOptionSpinBox opt;
    initStyleOption(&opt);
    const QSize content(s_textWidth + 2, fontMetrics().height()); // 2: the text cursor
    const int width = style()->sizeFromContents(QStyle::CT_SpinBox, &opt, content, this).width();
    return QSize(width, base.height());
}

void KDoubleSpinBox::keyPressEvent(QKeyEvent* e)
{
    const int key = e->key();
    if (!m_canKeyEmit && key != Qt::Key_Up && key != Qt::Key_Down) {
        const double before = value();
        {
            const QSignalBlocker blocker(this);
            QDoubleSpinBox::keyPressEvent(e);
        }
        if (value() != before)
            m_pendingReport = true;
    } else {
        QDoubleSpinBox::keyPressEvent(e);
    }
    // The dialog's default button takes Return as well.
    if (key == Qt::Key_Return || key == Qt::Key_Enter)
        e->ignore();
}

template <typename Handler>
void KDoubleSpinBox::_keepTextAcross(QFocusEvent* e, Handler handler)
{
    QLineEdit* edit = lineEdit();
    const QString text = edit->text();
    const int start = edit->selectionStart();
    const int length = int(edit->selectedText().size());
    const int cursor = edit->cursorPosition();
    handler();
    // Another window took or gave back the activation: what the user typed and selected
    // stays as it was, unformatted.
    if (e->reason() == Qt::ActiveWindowFocusReason) {
        if (edit->text() != text)
            edit->setText(text);
        if (start >= 0)
            edit->setSelection(start, length);
        else
            edit->setCursorPosition(cursor);
    }
}

void KDoubleSpinBox::focusInEvent(QFocusEvent* e)
{
    _keepTextAcross(e, [this, e] { QDoubleSpinBox::focusInEvent(e); });
    Q_EMIT editFocusChanged(true);
}

void KDoubleSpinBox::focusOutEvent(QFocusEvent* e)
{
    _keepTextAcross(e, [this, e] { QDoubleSpinBox::focusOutEvent(e); });
    // Typing with canKeyEmit off changed the value silently; the change is told now.
    if (m_pendingReport && e->reason() != Qt::ActiveWindowFocusReason) {
        m_pendingReport = false;
        if (!qFuzzyCompare(value(), m_lastValue))
            Q_EMIT valueChanged(value());
    }
    Q_EMIT editFocusChanged(false);
}
