#ifndef KDOCKWIDGET_H
#define KDOCKWIDGET_H

#include <QDockWidget>

#include <kcommandwidgetbridge.h>
#include <norvikofficeui_export.h>

/**
 * A dock whose content is the extended widget of its command. Like a tool bar, a floating
 * dock hides while its main window is hidden and comes back with it.
 */
class NORVIKOFFICEUI_EXPORT KDockWidget : public KCommandWidgetBridge<QDockWidget>
{
    Q_OBJECT
public:
    KDockWidget(KCommand* command, QWidget* parent);

    bool isFloatingHidden() const { return m_floatingHidden; }

public Q_SLOTS:
    void syncCommand();
    void setVisible(bool visible) override;

protected:
    bool event(QEvent* e) override;
    bool eventFilter(QObject* watched, QEvent* e) override;
    void closeEvent(QCloseEvent* e) override;
    void paintEvent(QPaintEvent* e) override;

private:
    void _setFloatingHide(bool hidden);
    bool m_floatingHidden = false;
};

#endif // KDOCKWIDGET_H
