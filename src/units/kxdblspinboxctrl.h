#ifndef KXDBLSPINBOXCTRL_H
#define KXDBLSPINBOXCTRL_H

#include <QDoubleSpinBox>

#include <norvikofficeui_export.h>

class QRegularExpressionValidator;

namespace KxSpinCtrl {
template <typename Box, typename Number>
struct Logic;
}

/**
 * A double spin box that selects its whole text when a click gives it the focus, so that the
 * number can be typed over at once.
 */
class NORVIKOFFICEUI_EXPORT KxDoubleSpinBoxSel : public QDoubleSpinBox
{
    Q_OBJECT
public:
    explicit KxDoubleSpinBoxSel(QWidget* parent = nullptr);
    ~KxDoubleSpinBoxSel() override;

protected:
    void focusInEvent(QFocusEvent* e) override;
    bool eventFilter(QObject* watched, QEvent* e) override;

private:
    bool m_selectOnRelease = false;
};

/**
 * The twin of KxSpinBoxCtrl for numbers with decimals: a field for dialogs that checks
 * while the user types but refuses no keystroke that could make a number. A text out of
 * range stays in the field and is reported by emitAddError() (emitRemoveError() once it is
 * fine again); a step, a click or a page or arrow key brings it to the nearest limit; Return
 * and leaving the field leave it for the dialog's check.
 *
 * Only what the pattern "[-+]?\d+[.]?\d*" can become may be typed: a point is the decimal
 * separator whatever the locale. An empty field is an error unless setErrorEmpty(false).
 * Texts: "The input value must be between %1 and %2." and "Illegal integer text." (sic, as
 * the integer twin has it), both replaceable.
 */
class NORVIKOFFICEUI_EXPORT KxDblSpinBoxCtrl : public KxDoubleSpinBoxSel
{
    Q_OBJECT
public:
    explicit KxDblSpinBoxCtrl(QWidget* parent = nullptr);
    ~KxDblSpinBoxCtrl() override;

    void setMaxLength(int length);
    void setErrorEmpty(bool on) { m_errorEmpty = on; }
    bool errorEmpty() const { return m_errorEmpty; }
    /// Checks the current text again (reporting as it changes) and returns whether it is an error.
    bool checkError();
    bool hasError() const { return m_hasError; }
    /// The field's text as a number (the value may still be the last one taken).
    double getDoubleValue(bool* ok = nullptr) const;

    void setRangeErrorStr(const QString& text) { m_rangeErrorStr = text; }
    QString getRangeErrorStr() const { return m_rangeErrorStr; }
    void setIllegalStr(const QString& text) { m_illegalStr = text; }
    QString getIllegalStr() const { return m_illegalStr; }

    QValidator::State validate(QString& text, int& pos) const override;
    void stepBy(int steps) override;

Q_SIGNALS:
    void emitAddError(QWidget* widget, const QString& message);
    void emitRemoveError(QWidget* widget);

public Q_SLOTS:
    /// As the base class's, and checks the field again: the base class rewrites it silently
    /// even when the value stays.
    void setValue(double value);
    /// Reports the state of text, the field's text.
    void editTextChanged(const QString& text);
    /// A value set from outside rewrote the field without telling editTextChanged(): check again.
    void valueChangedSet(double value);

protected:
    double valueFromText(const QString& text) const override;
    void mousePressEvent(QMouseEvent* e) override;
    void keyPressEvent(QKeyEvent* e) override;
    void focusOutEvent(QFocusEvent* e) override;
    void showEvent(QShowEvent* e) override;
    void hideEvent(QHideEvent* e) override;

private:
    friend struct KxSpinCtrl::Logic<KxDblSpinBoxCtrl, double>;

    QRegularExpressionValidator* m_validator;
    QString m_rangeErrorStr;
    QString m_illegalStr;
    bool m_errorEmpty = true;
    bool m_hasError = false;
};

#endif // KXDBLSPINBOXCTRL_H
