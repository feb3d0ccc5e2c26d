#ifndef KRBTABWIDGET_H
#define KRBTABWIDGET_H

#include <QList>
#include <QPair>
#include <QPointer>

#include <kcommandwidgetbridge.h>
#include <krbsubtabbar.h>
#include <norvikofficeui_export.h>

class QStackedWidget;
class QVBoxLayout;
class KPopupWidget;
class KHotKeyTriggerEvent;
class KRbTabBar;
class KRbTabWidgetCommand;

/**
 * The ribbon: the tab bar on top and under it the page of the current tab.
 *
 * Pages are made lazily: a category gets its widgets the first time its tab is current
 * while the ribbon shows a page, never before. The ribbon has three states, driven from the
 * tabs: Expanded (the page stands in the window's layout), Collapsed (only the tabs show)
 * and Popup (a collapsed ribbon shows the page in a popup under the tabs for one action;
 * when the popup closes, the ribbon is collapsed again). A double click on a tab switches
 * between Expanded and Collapsed.
 *
 * The widget has a fixed height, so that collapsing it gives the room to the document.
 */
class NORVIKOFFICEUI_EXPORT KRbTabWidget : public KCommandWidgetBridge<QWidget>
{
    Q_OBJECT
public:
    KRbTabWidget(KRbTabWidgetCommand* cmd, QWidget* parent);
    ~KRbTabWidget() override;

    KRbTabWidgetCommand* tabWidgetCommand() const;
    KRbTabBar* tabBar() const { return m_tabBar; }
    QStackedWidget* stack() const { return m_stack; }
    KPopupWidget* popupPanel() const { return m_popupPanel; }
    /// The page made for cmd, or null when its tab has never been current.
    QWidget* pageOf(KCommand* cmd) const;
    int pageCount() const { return m_pages.size(); }
    /// The page of the current tab, or null.
    QWidget* currentPage() const;

    /// -1 collapses the ribbon; a tab's index expands it on that tab; other values do nothing.
    void setCurrentItem(int index);
    /// Raises the context tab named so at the first idle round in which it is visible.
    void setCurrentItemByContextName(const QString& name);
    int currentIndex() const;
    KRbSubTabBar::SubTabBarStatus status() const;
    /// Always emits statusChanged(), also for the status the ribbon has already.
    void setStatus(KRbSubTabBar::SubTabBarStatus status, bool byUser);
    void setSingleLine(bool singleLine);
    bool isSingleLine() const;
    /// Shows or hides the page area (not the tabs).
    void setTabbarVisible(bool visible);
    bool isTabbarVisible() const;
    void setTitleMode(bool titleMode);
    bool isTitleMode() const { return m_titleMode; }
    /// The height of the tab bar.
    int titleHeight() const;
    /// The height the ribbon takes under the window title: the tab bar, and the page area
    /// unless the ribbon is collapsed.
    int tipHeight() const;
    bool isAloneMode() const;
    void setDisableRightCorner();
    void setLogicGroupTriggerable(bool triggerable);
    bool isLogicGroupTriggerable() const { return m_logicGroupTriggerable; }
    void setLogicGroupTitleVisible(bool visible);
    bool isLogicGroupTitleVisible() const { return m_logicGroupTitleVisible; }

    void onCommandRemoved(int index) override;
    void onCommandConnected() override;

Q_SIGNALS:
    void statusChanged(bool byUser);
    void categoryChanged();

public Q_SLOTS:
    void onAeroEffectChanged(bool enable);
    void currentCategoryChanged();
    void barStatusChanged(bool byUser = false);
    void popupPanelHided();

protected:
    virtual QWidget* createTabContent(KCommand* cmd);
    bool event(QEvent* e) override;
    bool focusNextPrevChild(bool next) override;

private:
    void showPopupPanel();

    QList<QPair<KCommand*, QPointer<QWidget>>> m_pages;
    KPopupWidget* m_popupPanel;
    QStackedWidget* m_stack;
    KRbTabBar* m_tabBar;
    bool m_titleMode = false;
    bool m_logicGroupTitleVisible = true;
    bool m_logicGroupTriggerable = true;
    // A collapsed ribbon turns to its popup before the pressed tab becomes current: the panel
    // waits for the index, so that only the pressed tab's page is made.
    bool m_popupPending = false;
    QVBoxLayout* m_layout;

    // key tips
    void _hotKeyTrigger(KHotKeyTriggerEvent* e);
};

#endif // KRBTABWIDGET_H
