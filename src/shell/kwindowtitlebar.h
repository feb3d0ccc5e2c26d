#ifndef KWINDOWTITLEBAR_H
#define KWINDOWTITLEBAR_H

#include <QPointer>
#include <QWidget>

#include <kcommandwidgetbridge.h>
#include <klistcommand.h>
#include <kmenubutton.h>

/**
 * The title of a window that draws its own frame: the window's icon and title, and the button
 * of the command's first item after them. The title follows the window's; a press and drag on
 * it moves the window, a double click maximises or restores it.
 */
class NORVIKOFFICEUI_EXPORT KWindowTitleBar : public KCommandWidgetBridge<QWidget>
{
    Q_OBJECT
public:
    KWindowTitleBar(KCommand* command, QWidget* parent);
    ~KWindowTitleBar() override;

    QWidget* childButton() const { return m_child.data(); }
    /// The caption drawn: the window's title without its modification mark.
    QString caption() const;
    QSize sizeHint() const override;
    QSize minimumSizeHint() const override;

protected:
    bool event(QEvent* e) override;
    void paintEvent(QPaintEvent* e) override;
    void resizeEvent(QResizeEvent* e) override;

private:
    QFont _titleFont() const;
    QPointer<QWidget> m_child;
};

/// The menu button beside a window's title.
class NORVIKOFFICEUI_EXPORT KWindowTitleBarButton : public KMenuButton
{
    Q_OBJECT
public:
    explicit KWindowTitleBarButton(QWidget* parent);
};

/// A list whose pocket widget is a KWindowTitleBar over it.
class NORVIKOFFICEUI_EXPORT KWindowTitleBarCommand : public KListCommand
{
    Q_OBJECT
public:
    Q_INVOKABLE KWindowTitleBarCommand(QObject* host, QObject* parent);
    QWidget* createPocketWidget(QWidget* parent) override;
};

/// A list whose pocket widget is a KWindowTitleBarButton bound to it.
class NORVIKOFFICEUI_EXPORT KWindowTitleBarButtonCommand : public KListCommand
{
    Q_OBJECT
public:
    Q_INVOKABLE KWindowTitleBarButtonCommand(QObject* host, QObject* parent);
    QWidget* createPocketWidget(QWidget* parent) override;
};

/**
 * Makes the empty area of the widgets it watches a handle of their window, as a title bar is:
 * a press and drag moves the window (through the window manager when there is one, by hand
 * otherwise), a double click maximises or restores it. Presses on a child widget belong to it.
 */
class NORVIKOFFICEUI_EXPORT KWindowMover : public QObject
{
    Q_OBJECT
public:
    explicit KWindowMover(QObject* parent);
    void watch(QWidget* handle);
    /// Whether the last drag moved the window by hand (no window manager took it).
    bool movedByHand() const { return m_byHand; }

protected:
    bool eventFilter(QObject* watched, QEvent* e) override;

private:
    QPointer<QWidget> m_dragging;
    QPoint m_offset;
    bool m_byHand = false;
};

#endif // KWINDOWTITLEBAR_H
