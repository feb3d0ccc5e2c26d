#ifndef KSECONDSEDIT_H
#define KSECONDSEDIT_H

#include <QAbstractSpinBox>

#include <norvikofficeui_export.h>

class QRegularExpressionValidator;

/**
 * A duration field in the form [h:]mm:ss[.t]: hours only when there are any, two-digit
 * minutes and seconds, and tenths of a second when there are any ("00:00", "05:30",
 * "1:01:01.5"). Only digits, ":" and "." can be typed; what is typed is read when the user
 * presses Return or leaves the field, part by part from the right (seconds, minutes, hours),
 * and written back in the form above ("90" becomes "01:30").
 *
 * The range is 0 to 86399 seconds unless set otherwise; a value outside it shows "00:00" and
 * counts as 0. Arrow keys, the wheel and the buttons step by whole seconds.
 */
class NORVIKOFFICEUI_EXPORT KSecondsEdit : public QAbstractSpinBox
{
    Q_OBJECT
    Q_PROPERTY(float seconds READ seconds WRITE setSeconds)
    Q_PROPERTY(float minSeconds READ minSeconds WRITE setMinSeconds)
    Q_PROPERTY(float maxSeconds READ maxSeconds WRITE setMaxSeconds)
public:
    explicit KSecondsEdit(QWidget* parent = nullptr);
    ~KSecondsEdit() override;

    float seconds() const { return m_seconds; }
    void setSeconds(const float& value);
    float minSeconds() const { return m_minSeconds; }
    void setMinSeconds(const float& value) { m_minSeconds = value; }
    float maxSeconds() const { return m_maxSeconds; }
    void setMaxSeconds(const float& value) { m_maxSeconds = value; }

    /**
     * text in a form that can be read part by part: "00:00" for nothing, "00:" in front of a
     * text without ":", and each part (before its ".") made two digits long.
     */
    static QString ckeckToValidText(const QString& text);
    /// Reads the field (see ckeckToValidText()) and shows what it read, keeping the selection.
    void checkAndSetText();

    QValidator::State validate(QString& text, int& pos) const override;
    void stepBy(int steps) override;
    QSize sizeHint() const override;
    QSize minimumSizeHint() const override;

Q_SIGNALS:
    void stepByClick(int value);
    /// The user typed in the field (any key but Return and Enter).
    void editValue();

protected:
    StepEnabled stepEnabled() const override;
    void keyPressEvent(QKeyEvent* e) override;
    void keyReleaseEvent(QKeyEvent* e) override;
    void focusOutEvent(QFocusEvent* e) override;

private:
    static double _secondsOf(const QString& validText);
    void _setSecondsFrom(double seconds);

    QRegularExpressionValidator* m_validator;
    float m_seconds = 0;
    float m_minSeconds = 0;
    float m_maxSeconds = 86399;
};

#endif // KSECONDSEDIT_H
