#ifndef KRBLOGICGROUP_H
#define KRBLOGICGROUP_H

#include <QWidget>

#include <kcommandwidgetbridge.h>
#include <kstyleoption.h>
#include <ktoolbutton.h>
#include <norvikofficeui_export.h>

class QGridLayout;
class QHBoxLayout;
class QLabel;
class KRbLogicGroupLayout;

/**
 * The dialog launcher in the corner of a logic group. It triggers the group's command; the
 * style sizes it once (custom contents type 2 from a proposed 16 by 16) and draws it.
 */
class NORVIKOFFICEUI_EXPORT KRbLogicGroup_Button : public KToolButton
{
    Q_OBJECT
public:
    /// Binds cmd (not owned) and fixes the size the style gives.
    KRbLogicGroup_Button(KCommand* cmd, QWidget* parent);
    ~KRbLogicGroup_Button() override;

    QSize sizeHint() const override;
    QSize minimumSizeHint() const override;
    using KToolButton::maximumSize;
    using KToolButton::minimumSize;
    using KToolButton::sizeHint;
    using KToolButton::minimumSizeHint;

protected:
    using KToolButton::initStyleOption;
    /// The state as a tool button has it: on when checked, sunken when down or pressed.
    virtual void initStyleOption(KStyleOptionLogicGroupButton* option) const;
    void paintEvent(QPaintEvent* e) override;
};

/**
 * A titled cluster of controls in a ribbon category, bound to a KRbLogicGroupCommand. The
 * controls stand in a KRbLogicGroupLayout; under them the title, and beside the title the
 * corner button (the dialog launcher) when the command is triggerable. Without a title the
 * corner button moves up beside the controls, at the bottom, so it stays reachable.
 *
 * The line count of the columns comes from the style (custom hint 1) when it gives one;
 * "horizontalSpacing" and "verticalSpacing" of the command set the layout's spacings.
 * A group never collapses: it gives way only by the proportional shrinking of its layout.
 */
class NORVIKOFFICEUI_EXPORT KRbLogicGroup : public KCommandWidgetBridge<QWidget>
{
    Q_OBJECT
public:
    KRbLogicGroup(KCommand* cmd, QWidget* parent);
    ~KRbLogicGroup() override;

    void setTitleVisible(bool visible);
    bool isTitleVisible() const { return m_titleVisible; }
    /// Without it the corner button goes; with it a triggerable command gets one.
    void setTriggerAble(bool triggerAble);
    bool isTriggerAble() const { return m_triggerAble; }
    bool hasTitleButton() const { return m_button != nullptr; }

    KRbLogicGroupLayout* logicLayout() const { return m_logicLayout; }
    KRbLogicGroup_Button* titleButton() const { return m_button; }
    QLabel* titleLabel() const { return m_title; }

    QSize sizeHint() const override;
    /// Builds the controls first, as sizeHint() does: a layout may ask for the minimum first.
    QSize minimumSizeHint() const override;

    void onCommandConnected() override;
    void onCommandInserted(int index, KCommand* cmd) override;
    void onCommandRemoved(int index) override;

public Q_SLOTS:
    /// Visibility and title from the command.
    void syncCommand();

protected:
    bool event(QEvent* e) override;
    void paintEvent(QPaintEvent* e) override;

private:
    void _placeTitleButton();
    void _readTitleColor();

    KRbLogicGroupLayout* m_logicLayout;
    QHBoxLayout* m_titleLayout;
    QGridLayout* m_gridLayout;
    KRbLogicGroup_Button* m_button = nullptr;
    QLabel* m_title;
    bool m_titleVisible = true;
    bool m_triggerAble = true;
};

#endif // KRBLOGICGROUP_H
