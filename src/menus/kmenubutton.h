#ifndef KMENUBUTTON_H
#define KMENUBUTTON_H

#include <QPointer>

#include <kpopupwidget.h>
#include <ktoolbutton.h>

class KHotKeyTriggerEvent;

/**
 * The split button that a list stands as in a bar: a main part that acts as the button and a
 * drop-down part that opens the list's menu under the button, on the press. A list that can't
 * be triggered has no main part: the whole button drops the menu down. The menu is made for
 * each opening and goes when it closes.
 */
class NORVIKOFFICEUI_EXPORT KMenuButton : public KToolButton
{
    Q_OBJECT
public:
    explicit KMenuButton(QWidget* parent);
    ~KMenuButton() override;

    /// A main part that triggers the command (a split button); false by default.
    bool isTriggerAble() const { return m_triggerAble; }
    void setTriggerAble(bool triggerAble);
    /// Whether the cursor is over the drop-down part, or over the main part.
    bool isUnderPopupArea() const;
    bool isUnderBtnArea() const;
    /// The two parts; a null rectangle for a part there is none of.
    void getButtonArea(QRect& button, QRect& popup) const;
    /// The menu while it is open; null otherwise.
    KPopupWidget* popupWidget() const { return m_popup.data(); }

Q_SIGNALS:
    void popup();
    void trigger();

public Q_SLOTS:
    /// Opens the command's menu under the button; the button stays down while it is open.
    void popupChildWidget();

protected:
    bool event(QEvent* e) override;
    void mousePressEvent(QMouseEvent* e) override;
    void mouseReleaseEvent(QMouseEvent* e) override;
    void mouseMoveEvent(QMouseEvent* e) override;
    void initStyleOption(KStyleOptionToolButton* option) const override;

private:
    void _hotKeyTrigger(KHotKeyTriggerEvent* e);

    bool m_triggerAble = false;
    QPointer<KPopupWidget> m_popup;
};

/**
 * The menu button of a KQuickMenuCommand: while the command behind its main part is disabled,
 * the main part is dead to the mouse and only the drop-down part opens.
 */
class NORVIKOFFICEUI_EXPORT KQuickMenuButton : public KMenuButton
{
    Q_OBJECT
public:
    explicit KQuickMenuButton(QWidget* parent);

protected:
    void mousePressEvent(QMouseEvent* e) override;
    void mouseReleaseEvent(QMouseEvent* e) override;
    void mouseMoveEvent(QMouseEvent* e) override;
    void initStyleOption(KStyleOptionToolButton* option) const override;
    /// Whether the main part may act: the quick command exists and is enabled.
    bool isMainPartAlive() const;

private:
    bool _accepts(const QPoint& pos) const;
};

#endif // KMENUBUTTON_H
