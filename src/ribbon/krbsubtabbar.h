#ifndef KRBSUBTABBAR_H
#define KRBSUBTABBAR_H

#include <QWidget>

#include <kcommandwidgetbridge.h>
#include <kslideblock.h>
#include <norvikofficeui_export.h>

class QHBoxLayout;
class KRbTabButton;

/**
 * The row of ribbon tabs: one KRbTabButton per category command. It owns the ribbon's
 * collapse status and its current tab.
 *
 * Status: Collapsed (only the tabs show), Expanded (the default; the page stands under the
 * tabs) and Popup (a collapsed ribbon shows a page for one action). A click on another tab
 * makes it current, and on a collapsed ribbon pops the page up; a double click pins the
 * ribbon open or collapses it. The wheel walks the visible tabs without wrapping.
 *
 * Context categories come and go with their commands' visibility: a current tab that goes
 * hidden or disabled hands over to the first tab and is remembered, so that it comes back to
 * the front when it returns ("visibleRaise" brings it to the front whenever it appears). A
 * command with "visibleAlone" shows by itself while it is visible.
 *
 * With a style that asks for it (custom hint 3), a KSlideBlock glides under the current tab.
 */
class NORVIKOFFICEUI_EXPORT KRbSubTabBar : public KCommandWidgetBridge<QWidget>
{
    Q_OBJECT
public:
    enum SubTabBarStatus { Collapsed = 0, Expanded = 1, Popup = 2 };
    Q_ENUM(SubTabBarStatus)

    KRbSubTabBar(KCommand* cmd, QWidget* parent);
    ~KRbSubTabBar() override;

    SubTabBarStatus status() const { return m_status; }
    /// Stores the status, gives the current tab its look and always emits statusChanged().
    void setStatus(SubTabBarStatus status, bool byUser);
    int currentIdx() const { return m_currentIdx; }
    /// -1 is allowed: no tab is current. Always emits currentIdxChanged().
    void setCurrentIdx(int index);
    KRbTabButton* currentButton() const { return tabButtonAt(m_currentIdx); }
    KRbTabButton* tabButtonAt(int index) const;
    int itemCount() const;
    bool isAloneMode() const { return m_aloneMode; }
    int lastIdx() const { return m_lastIdx; }
    KSlideBlock* slideBlock() const { return m_slideBlock; }

    void activePrevTab();
    void activeNextTab();
    /// Every tab's visibility from its command again; the alone mode ends.
    void updateButtonsVisible();
    /// Only the tab at index shows, and it is current.
    void setVisibleAlone(int index);
    /// The right edge of the last visible tab, 0 without one.
    int getLastButtonEndPos() const;
    /// The index of the tab w, or -1.
    int getIndex(const QWidget* w) const;
    /// The current tab is selected in place and is the next visible tab after w.
    bool isNextSelected(const QWidget* w) const;
    bool isBeforeSelected(const QWidget* w) const;
    /// The first visible context tab is the next visible tab after w.
    bool isNextContent(const QWidget* w) const;
    bool isBeforeContent(const QWidget* w) const;
    QColor getSlideBlockColor() const;
    /// True while the slide block glides: the tabs leave out their own gradient then.
    bool isHideGradient() const;

    QSize sizeHint() const override;
    QSize minimumSizeHint() const override;

    void onCommandConnected() override;
    void onCommandInserted(int index, KCommand* cmd) override;
    void onCommandRemoved(int index) override;

Q_SIGNALS:
    void subTabBarClicked();
    void currentIdxChanged();
    void statusChanged(bool byUser);
    void valueChanged();

public Q_SLOTS:
    void tabButtonClicked();
    void tabButtonDoubleClicked();
    void on_subCommand_changed();
    void onValueChanged(const KSliderData& previous, const KSliderData& current);

protected:
    bool event(QEvent* e) override;
    void paintEvent(QPaintEvent* e) override;
    void showEvent(QShowEvent* e) override;
    void wheelEvent(QWheelEvent* e) override;

private:
    void syncButtonStatus();
    int _adjacentVisible(int index, int direction) const;
    int contentIndex() const;
    bool isContentTab(int index) const;
    QSize _buttonsSize(bool minimum) const;
    void _enableFileButton(bool enabled);

    SubTabBarStatus m_status = Expanded;
    int m_currentIdx = -1;
    int m_lastIdx = -1;
    QHBoxLayout* m_layout;
    bool m_aloneMode = false;
    KSlideBlock* m_slideBlock = nullptr;
};

#endif // KRBSUBTABBAR_H
