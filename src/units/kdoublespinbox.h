#ifndef KDOUBLESPINBOX_H
#define KDOUBLESPINBOX_H

#include <QDoubleSpinBox>

#include <norvikofficeui_export.h>

/**
 * The number field of the unit control. Beside QDoubleSpinBox it has:
 *
 * - reversal (canReverse): the field shows a magnitude, and stepping down through zero turns
 *   the direction the host means (reversed) instead of the sign of the number. The limits
 *   then carry one extra unit at each end, which stepping or typing can't come to rest on;
 * - clear text: while the value equals the value kept by setClearText(), the field is empty
 *   (a selection of several different values, say);
 * - key emission: with canKeyEmit off, typing reports nothing until the focus leaves.
 *
 * Texts never end in zeros behind the decimal point. The inherited textChanged() signal is
 * also emitted, with an empty text, after each step.
 */
class NORVIKOFFICEUI_EXPORT KDoubleSpinBox : public QDoubleSpinBox
{
    Q_OBJECT
    Q_PROPERTY(bool canReverse READ canReverse WRITE setCanReverse)
    Q_PROPERTY(bool reversed READ reversed WRITE setReversed NOTIFY reverseChanged)
public:
    explicit KDoubleSpinBox(QWidget* parent = nullptr);
    ~KDoubleSpinBox() override;

    bool canReverse() const { return m_canReverse; }
    void setCanReverse(bool on);
    bool reversed() const { return m_reversed; }
    void setReversed(bool on);
    bool canKeyEmit() const { return m_canKeyEmit; }
    void setCanKeyEmit(bool on) { m_canKeyEmit = on; }
    bool clearText() const { return m_clearText; }
    /// Turns clear text on or off and keeps the current value as the one shown empty; unless
    /// keep, the field is redrawn at once.
    void setClearText(bool on, bool keep);

    /**
     * Sets the value without the base class's signal, and emits valueChanged() itself when
     * v differs from the last value set or reported: a change that rounds away in the field
     * is still reported once, and setting the same value again is not reported.
     */
    void setValue(double v);
    /// The limits as the host means them; with canReverse the field's own limits are one
    /// unit wider.
    void setMinimum2(double x);
    void setMaximum2(double x);

    QValidator::State validate(QString& text, int& pos) const override;
    QString textFromValue(double value) const override;
    void stepBy(int steps) override;
    QSize sizeHint() const override;

Q_SIGNALS:
    void reverseChanged(bool reversed);
    void editFocusChanged(bool hasFocus);
    void stepByChanged(int steps);

protected:
    void keyPressEvent(QKeyEvent* e) override;
    void focusInEvent(QFocusEvent* e) override;
    void focusOutEvent(QFocusEvent* e) override;

private:
    void onValueChanged(double v);
    template <typename Handler>
    void _keepTextAcross(QFocusEvent* e, Handler handler);

    bool m_reversed = false;
    bool m_canReverse = false;
    double m_clearValue = 0.0;
    bool m_clearText = false;
    bool m_canKeyEmit = true;
    double m_lastValue = 0.0;
    bool m_pendingReport = false; // typed with canKeyEmit off, not told yet
};

#endif // KDOUBLESPINBOX_H
