#ifndef KRBTABBUTTON_H
#define KRBTABBUTTON_H

#include <QAbstractButton>
#include <QDateTime>
#include <QPointer>

#include <kcommandwidgetbridge.h>
#include <kstyleoption.h>
#include <norvikofficeui_export.h>

class KRbSubTabBar;

/**
 * One tab of the ribbon, bound to a category command. It reacts on the press: a second
 * press within 300 ms is a double click (dblClicked()), any other press clicked() (the
 * double-click event itself adds nothing: its second press has been counted). A press
 * on a tab that is not showing its page (status 0) also triggers the command. The sub tab bar sets
 * its status: 0 normal, 1 selected, 2 selected in a popped-up ribbon.
 *
 * A tab whose command has "rbContextTableButton" is a context tab; the style colours it by
 * getTheme(). A tab never builds its category: that is the tab widget's business.
 */
class NORVIKOFFICEUI_EXPORT KRbTabButton : public KCommandWidgetBridge<QAbstractButton>
{
    Q_OBJECT
public:
    enum ButtonStatus { Normal = 0, Selected = 1, Popup = 2 };
    Q_ENUM(ButtonStatus)

    KRbTabButton(KCommand* cmd, KRbSubTabBar* tabBar);
    ~KRbTabButton() override;

    void setCheckStatus(ButtonStatus status);
    ButtonStatus checkStatus() const { return m_status; }
    /// The command's "rbHotKey".
    QString hotkey() const;
    /// "-" and the command's "id", or empty without an id.
    QString getContextName() const;
    /// The command has "rbContextTableButton", and a context category's name isn't "disable".
    bool isContextTab() const;
    /// "KRbTabContextButton" and the context name for a context tab, else empty.
    QString getTheme() const;
    KRbSubTabBar* tabBar() const;

    QSize sizeHint() const override;
    QSize minimumSizeHint() const override;

Q_SIGNALS:
    void dblClicked();

public Q_SLOTS:
    /// Text, visibility and enablement from the command.
    void syncCommand();
    /// Shows or hides the tab by its command and has the layouts above run again.
    void onVisibleChanged();

protected:
    virtual void initStyleOption(KStyleOptionKRbTabButton* option) const;
    /// True for the second press within 300 ms of the first; the time is cleared then.
    bool dealClickEvent();

    bool event(QEvent* e) override;
    void paintEvent(QPaintEvent* e) override;
    void mousePressEvent(QMouseEvent* e) override;
    void mouseDoubleClickEvent(QMouseEvent* e) override;
    void mouseReleaseEvent(QMouseEvent* e) override;

private:
    QDateTime m_lastPress;
    ButtonStatus m_status = Normal;
    QPointer<KRbSubTabBar> m_tabBar;
};

#endif // KRBTABBUTTON_H
