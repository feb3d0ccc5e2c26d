#ifndef KXSPINBOXCTRL_H
#define KXSPINBOXCTRL_H

#include <QSpinBox>

#include <norvikofficeui_export.h>

class QRegularExpressionValidator;

namespace KxSpinCtrl {
template <typename Box, typename Number>
struct Logic;
}

/**
 * A spin box that selects its whole text when a click gives it the focus, so that the
 * number can be typed over at once.
 */
class NORVIKOFFICEUI_EXPORT KxSpinBoxSel : public QSpinBox
{
    Q_OBJECT
public:
    explicit KxSpinBoxSel(QWidget* parent = nullptr);
    ~KxSpinBoxSel() override;

protected:
    void focusInEvent(QFocusEvent* e) override;
    bool eventFilter(QObject* watched, QEvent* e) override;

private:
    bool m_selectOnRelease = false;
};

/**
 * An integer field for dialogs that checks while the user types but refuses no keystroke
 * that could make a number: a text out of range stays in the field, and the control reports
 * it by emitAddError() (emitRemoveError() once it is fine again), so that the dialog can show
 * a tip and keep its OK button off. A step, a click or a page or arrow key brings such a text
 * to the nearest limit; Return and leaving the field leave it for the dialog's check.
 *
 * Only what the pattern "[-+]?[0-9]{1,10}" can become may be typed. An empty field is an
 * error unless setErrorEmpty(false). Texts: "The input value must be between %1 and %2." and
 * "Illegal integer text.", both replaceable.
 */
class NORVIKOFFICEUI_EXPORT KxSpinBoxCtrl : public KxSpinBoxSel
{
    Q_OBJECT
public:
    explicit KxSpinBoxCtrl(QWidget* parent = nullptr);
    ~KxSpinBoxCtrl() override;

    void setMaxLength(int length);
    void setErrorEmpty(bool on) { m_errorEmpty = on; }
    bool errorEmpty() const { return m_errorEmpty; }
    /// Checks the current text again (reporting as it changes) and returns whether it is an error.
    bool checkError();
    bool hasError() const { return m_hasError; }

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
    void setValue(int value);
    /// Reports the state of text, the field's text.
    void editTextChanged(const QString& text);
    /// A value set from outside rewrote the field without telling editTextChanged(): check again.
    void valueChangedSet(int value);

protected:
    int valueFromText(const QString& text) const override;
    void mousePressEvent(QMouseEvent* e) override;
    void keyPressEvent(QKeyEvent* e) override;
    void focusOutEvent(QFocusEvent* e) override;
    void showEvent(QShowEvent* e) override;
    void hideEvent(QHideEvent* e) override;

private:
    friend struct KxSpinCtrl::Logic<KxSpinBoxCtrl, qlonglong>;

    QRegularExpressionValidator* m_validator;
    QString m_rangeErrorStr;
    QString m_illegalStr;
    bool m_errorEmpty = true;
    bool m_hasError = false;
};

#endif // KXSPINBOXCTRL_H
