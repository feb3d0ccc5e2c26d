#ifndef KRBCATEGORY_H
#define KRBCATEGORY_H

#include <QList>
#include <QPointer>
#include <QWidget>

#include <kcommandwidgetbridge.h>
#include <norvikofficeui_export.h>

class QHBoxLayout;
class KRbHScrollWidget;

/**
 * One page of the ribbon: its logic groups in a row, with long separators between them.
 * When the row no longer fits, after every group has given way as far as it can, the row
 * scrolls; an arrow press brings the next group's edge to the edge of the view.
 *
 * Each sub-command becomes a KRbLogicGroup, a command with a custom widget its own widget,
 * and the separator a long separator that shows only while the group before it does.
 */
class NORVIKOFFICEUI_EXPORT KRbCategory : public KCommandWidgetBridge<QWidget>
{
    Q_OBJECT
public:
    struct tagItem
    {
        KCommand* command = nullptr;
        QPointer<QWidget> widget;
    };

    KRbCategory(KCommand* cmd, QWidget* parent);
    ~KRbCategory() override;

    /// Passed on to every group, now and later.
    void setTitleVisible(bool visible);
    bool isTitleVisible() const { return m_titleVisible; }
    void setTriggerAble(bool triggerAble);
    bool isTriggerAble() const { return m_triggerAble; }

    KRbHScrollWidget* scrollWidget() const { return m_scrollWidget; }
    QWidget* contentWidget() const { return m_contentWidget; }
    int itemCount() const { return m_items.size(); }
    QWidget* itemWidget(int index) const;

    QSize sizeHint() const override;
    /// Builds the groups first, as sizeHint() does.
    QSize minimumSizeHint() const override;

    void onCommandConnected() override;
    void onCommandInserted(int index, KCommand* cmd) override;
    void onCommandRemoved(int index) override;

public Q_SLOTS:
    /**
     * Where an arrow press lands: backwards, the group cut by the left edge (or the one
     * before it) comes to rest at the left edge; forwards, the first group not fully in
     * view comes to rest at the right edge. Without such a group, 100 pixels.
     */
    void scrollLogicGroup(bool forward);
    /// A separator after the sender's item follows the sender's visibility.
    void on_logicGroup_changed();

protected:
    bool event(QEvent* e) override;
    void paintEvent(QPaintEvent* e) override;

private:
    QList<tagItem> m_items;
    QWidget* m_contentWidget;
    KRbHScrollWidget* m_scrollWidget;
    QHBoxLayout* m_contentLayout;
    QHBoxLayout* m_layout;
    bool m_titleVisible = true;
    bool m_triggerAble = true;
};

#endif // KRBCATEGORY_H
