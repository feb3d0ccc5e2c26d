// Not part of the public interface: the checks the integer and the double spin control share.
#ifndef KXSPINBOXCTRL_P_H
#define KXSPINBOXCTRL_P_H

#include <QKeyEvent>
#include <QLineEdit>
#include <QString>
#include <cmath>

namespace KxSpinCtrl {

inline bool read(const QString& text, qlonglong* n)
{
    bool ok = false;
    *n = text.toLongLong(&ok);
    return ok;
}

inline bool read(const QString& text, double* n)
{
    bool ok = false;
    *n = text.toDouble(&ok);
    return ok && std::isfinite(*n);
}

inline QString rangeText(const QString& pattern, int low, int high)
{
    return pattern.arg(low, 0, 10, QLatin1Char(' ')).arg(high, 0, 10, QLatin1Char(' '));
}

inline QString rangeText(const QString& pattern, double low, double high)
{
    return pattern.arg(low, 0, 'g', -1, QLatin1Char(' ')).arg(high, 0, 'g', -1, QLatin1Char(' '));
}

/*
 * Box is KxSpinBoxCtrl or KxDblSpinBoxCtrl, Number the type its text is read as. Each box
 * befriends Logic and keeps the members named here.
 */
template <typename Box, typename Number>
struct Logic
{
    static void setError(Box* box, const QString& message)
    {
        box->m_hasError = !message.isEmpty();
        if (box->m_hasError)
            Q_EMIT box->emitAddError(box, message);
        else
            Q_EMIT box->emitRemoveError(box);
    }

    static void checkText(Box* box, const QString& text)
    {
        if (text.isEmpty()) {
            setError(box, box->m_errorEmpty ? box->m_illegalStr : QString());
            return;
        }
        Number n = 0;
        if (!read(text, &n)) {
            setError(box, box->m_illegalStr);
            return;
        }
        if (n >= box->minimum() && n <= box->maximum())
            setError(box, QString());
        else
            setError(box, rangeText(box->m_rangeErrorStr, box->minimum(), box->maximum()));
    }

    // What the base class's valueFromText() may see: a number in range, else the value kept.
    static bool takes(const Box* box, const QString& text)
    {
        Number n = 0;
        return read(text, &n) && n >= box->minimum() && n <= box->maximum();
    }

    // After a step: a typed number beyond the limit it stepped towards stops at that limit.
    static void clampAfterStep(Box* box, const QString& before, int steps)
    {
        Number n = 0;
        if (before.isEmpty() || !read(before, &n))
            return;
        if (steps < 0 && n < box->minimum())
            box->setValue(box->minimum());
        else if (steps > 0 && n > box->maximum())
            box->setValue(box->maximum());
    }

    // After a press or a page or arrow key: the text becomes a number the box can take.
    static void settleText(Box* box, const QString& before)
    {
        Number n = 0;
        if (!read(before, &n))
            box->setValue(box->value());
        else if (n > box->maximum())
            box->setValue(box->maximum());
        else if (n < box->minimum())
            box->setValue(box->minimum());
        else
            return;
        box->selectAll();
        setError(box, QString());
    }

    // Runs the base class's handler and puts back the text it rewrote; the selection too
    // where the user would expect it to survive.
    template <typename Handler>
    static void keepText(QLineEdit* edit, bool keepSelection, Handler handler)
    {
        const QString text = edit->text();
        const int start = edit->selectionStart();
        const int length = int(edit->selectedText().size());
        handler();
        if (edit->text() != text)
            edit->setText(text);
        if (keepSelection && start >= 0)
            edit->setSelection(start, length);
    }

    static bool isStepKey(int key)
    {
        return key == Qt::Key_PageUp || key == Qt::Key_PageDown || key == Qt::Key_Up || key == Qt::Key_Down;
    }

    static bool isReturnKey(int key) { return key == Qt::Key_Return || key == Qt::Key_Enter; }
};

} // namespace KxSpinCtrl

#endif // KXSPINBOXCTRL_P_H
