#ifndef KRBLAYOUTWIDGET_H
#define KRBLAYOUTWIDGET_H

#include <QWidget>

#include <kcommandwidgetbridge.h>
#include <kstyleoption.h>
#include <norvikofficeui_export.h>

class QLayout;

/**
 * The pocket widget of a KRbLayoutListCommand: its items in a QGridLayout ("grid"), a
 * QVBoxLayout ("vbox") or a QHBoxLayout (any other layoutName), with the spacings and side
 * spaces of the command, and a frame drawn by the style unless the command is layoutOnly.
 *
 * Items are appended in the order they arrive whatever their index, so a grid fills by its
 * own rule. The settings are read once, when the widget is made. A command without these
 * properties gives a row with no spacing.
 */
class NORVIKOFFICEUI_EXPORT KRbLayoutWidget : public KCommandWidgetBridge<QWidget>
{
    Q_OBJECT
public:
    KRbLayoutWidget(KCommand* cmd, QWidget* parent);
    ~KRbLayoutWidget() override;

    QLayout* itemLayout() const { return m_layout; }

    QSize sizeHint() const override;
    /// Builds the items first, as sizeHint() does.
    QSize minimumSizeHint() const override;

    void onCommandConnected() override;
    void onCommandInserted(int index, KCommand* cmd) override;
    /// Takes the layout's item at index out, hides its widget and deletes it later.
    void onCommandRemoved(int index) override;

public Q_SLOTS:
    void syncCommand();

protected:
    bool event(QEvent* e) override;
    void paintEvent(QPaintEvent* e) override;
    /// The frame hugs the content: just outside the command's left and right spaces.
    virtual void initStyleOption(KStyleOptionRbLayoutWidget* option) const;

private:
    QLayout* m_layout = nullptr;
};

#endif // KRBLAYOUTWIDGET_H
