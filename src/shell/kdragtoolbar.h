#ifndef KDRAGTOOLBAR_H
#define KDRAGTOOLBAR_H

#include <QPoint>
#include <QPointer>
#include <QWidget>
#include <QWidgetAction>

#include <ktoolbar.h>
#include <ktoolbutton.h>
#include <norvikofficeui_export.h>

class KCommand;
class KListCommand;
class KMainWindow;

/**
 * The grip at the head of a KDragToolBar. Pressing on it and moving the mouse moves the bar
 * (its parent widget) by the distance from the press point.
 */
class NORVIKOFFICEUI_EXPORT KDragHandler : public QWidget
{
    Q_OBJECT
public:
    explicit KDragHandler(QWidget* parent);

    QSize sizeHint() const override;
    bool isPressed() const { return m_pressed; }

protected:
    void mousePressEvent(QMouseEvent* e) override;
    void mouseMoveEvent(QMouseEvent* e) override;
    void mouseReleaseEvent(QMouseEvent* e) override;
    void enterEvent(QEnterEvent* e) override;
    void leaveEvent(QEvent* e) override;
    void paintEvent(QPaintEvent* e) override;

private:
    bool m_pressed = false;
    QPoint m_pressPoint;
    QPointer<QWidget> m_moved;
};

/// The button of a KDragToolBar: a tool button that shows its mnemonic.
class NORVIKOFFICEUI_EXPORT KDragButton : public KToolButton
{
    Q_OBJECT
public:
    explicit KDragButton(QWidget* parent);
};

/**
 * Stands for one command of a KDragToolBar: the bar shows a KDragButton bound to it. The
 * action follows the command's visibility and enablement; the command is not owned.
 */
class NORVIKOFFICEUI_EXPORT KDragToolBardWrapAction : public QWidgetAction
{
    Q_OBJECT
public:
    KDragToolBardWrapAction(KCommand* command, QObject* parent);
    KCommand* command() const { return m_command.data(); }

protected:
    QWidget* createWidget(QWidget* parent) override;

private:
    void _syncCommand();

    QPointer<KCommand> m_command;
};

/**
 * The small free-floating bar of full-screen mode: a frameless, translucent bar with a grip
 * to drag it by, followed by one button per item of its list command. It is built once from
 * the list's items; a null list gives a bar with only the grip.
 */
class NORVIKOFFICEUI_EXPORT KDragToolBar : public KToolBar
{
    Q_OBJECT
public:
    KDragToolBar(KListCommand* command, KMainWindow* window);

    /// The list the bar was built from; null when it was made over none.
    KListCommand* listCommand() const { return m_list.data(); }
    KDragHandler* handler() const { return m_handler; }

protected:
    Qt::WindowFlags floatingWindowFlags() const override;
    void paintEvent(QPaintEvent* e) override;

private:
    QPointer<KListCommand> m_list;
    KDragHandler* m_handler = nullptr;
};

#endif // KDRAGTOOLBAR_H
