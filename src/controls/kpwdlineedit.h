#ifndef KPWDLINEEDIT_H
#define KPWDLINEEDIT_H

#include <QLineEdit>

#include <norvikofficeui_export.h>

class KPwdToolTipWidget;

/**
 * A password field (echo mode Password, "*" for each character, 255 characters at most) with
 * two balloon tips: one warns that Caps Lock is on, while the field has the focus; the other
 * tells the user that copying and cutting are refused (Control+C, Control+X on a selection).
 *
 * Caps Lock is read from the X server's keyboard indicators; without an X display it counts
 * as off. The tips hide when a key is pressed, the field loses the focus, or its parent or
 * the dialog that holds it is moved, resized or hidden, and after 10 seconds by themselves.
 */
class NORVIKOFFICEUI_EXPORT KPwdLineEdit : public QLineEdit
{
    Q_OBJECT
public:
    explicit KPwdLineEdit(QWidget* parent = nullptr);
    ~KPwdLineEdit() override;

    /// Whether Caps Lock is on (false without an X display).
    bool isCapsLock() const;

    KPwdToolTipWidget* capsLockTip() const { return m_capsLockTip; }
    KPwdToolTipWidget* copyTip() const { return m_copyTip; }

    /// Shows tip with its arrow at the text cursor, half way down the field, unless it is
    /// shown already. Null does nothing.
    void showPoup(KPwdToolTipWidget* tip);
    /// Hides both tips.
    void hidePoup();
    void capsLockShowPoup();
    void copyShowPoup();

    // The looks of a tip; a null tip is ignored.
    void setTpTitleText(KPwdToolTipWidget* tip, const QString& text);
    void setTpContentText(KPwdToolTipWidget* tip, const QString& text);
    void setTpTitleColor(KPwdToolTipWidget* tip, const QColor& color);
    void setTpContentColor(KPwdToolTipWidget* tip, const QColor& color);
    void setTpTitleFont(KPwdToolTipWidget* tip, const QFont& font);
    void setTpContentFont(KPwdToolTipWidget* tip, const QFont& font);
    void setTpIconPixmap(KPwdToolTipWidget* tip, const QPixmap& pixmap);
    /// The time after which a shown tip hides itself (10000 ms at first), shared by both
    /// tips: the field hands it to each tip it shows.
    void setTpAutoHideTime(KPwdToolTipWidget* tip, int ms);
    int autoHideTime() const { return m_autoHideTime; }
    void setTpOutLineColor(KPwdToolTipWidget* tip, const QColor& color);

protected:
    bool eventFilter(QObject* watched, QEvent* e) override;
    void keyPressEvent(QKeyEvent* e) override;
    void keyReleaseEvent(QKeyEvent* e) override;
    void focusInEvent(QFocusEvent* e) override;
    void focusOutEvent(QFocusEvent* e) override;
    void showEvent(QShowEvent* e) override;
    void hideEvent(QHideEvent* e) override;

private:
    void installEventFilterOfDialog();

    KPwdToolTipWidget* m_capsLockTip;
    KPwdToolTipWidget* m_copyTip;
    int m_autoHideTime = 10000;
    bool m_dialogFilterInstalled = false;
};

#endif // KPWDLINEEDIT_H
