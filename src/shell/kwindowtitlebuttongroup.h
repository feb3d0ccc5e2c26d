#ifndef KWINDOWTITLEBUTTONGROUP_H
#define KWINDOWTITLEBUTTONGROUP_H

#include <QAbstractButton>
#include <QPointer>
#include <QStyle>

#include <norvikofficeui_export.h>

class KCommand;
class KStyleOptionWindowTitleButton;

/**
 * One caption button of a window that draws its own frame: minimise, restore or maximise,
 * close. The style draws its glyph; getPicName() names the state it is drawn in.
 */
class NORVIKOFFICEUI_EXPORT KWindowTitleButton : public QAbstractButton
{
    Q_OBJECT
public:
    explicit KWindowTitleButton(QWidget* parent);
    QSize sizeHint() const override { return QSize(22, 21); }
    /// "Press" while down, "Hover" under the cursor, else empty.
    QString getPicName() const;

protected:
    virtual QStyle::ControlElement element() const = 0;
    virtual void initStyleOption(KStyleOptionWindowTitleButton* option) const;
    void paintEvent(QPaintEvent* e) override;
    void enterEvent(QEnterEvent* e) override;
    void leaveEvent(QEvent* e) override;
};

/**
 * The three caption buttons of target, side by side with their borders overlapping by one
 * pixel: minimise, restore or maximise (by the target's state), close. A command, when given,
 * shows and enables the group.
 */
class NORVIKOFFICEUI_EXPORT KWindowTitleButtonGroup : public QWidget
{
    Q_OBJECT
public:
    KWindowTitleButtonGroup(KCommand* command, QWidget* target, QWidget* parent);
    ~KWindowTitleButtonGroup() override;

    /// 0 minimise, 1 restore or maximise, 2 close.
    KWindowTitleButton* buttonAt(int index) const;
    QWidget* target() const { return m_target.data(); }
    QSize sizeHint() const override;

private Q_SLOTS:
    void _minimize();
    void _restoreOrMaximize();
    void _close();
    void on_commandChange();

private:
    KWindowTitleButton* m_buttons[3] = {nullptr, nullptr, nullptr};
    QPointer<QWidget> m_target;
    QPointer<KCommand> m_command;
};

#endif // KWINDOWTITLEBUTTONGROUP_H
