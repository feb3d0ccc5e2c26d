#ifndef KTOOLBAR_H
#define KTOOLBAR_H

#include <QMargins>
#include <QToolBar>

#include <kcommandwidgetbridge.h>
#include <norvikofficeui_export.h>

class KCommandBarProp;
class KListCommand;
class KMainWindow;

/**
 * The classic tool bar: shows a list command in the dock area of a main window. Its items are
 * made the first time the bar is shown or measured. Separators with nothing visible in front
 * of them hide themselves; a floating bar hides while its main window is hidden and comes back
 * with it. Closing a floating bar hides its command; the bar itself stays.
 */
class NORVIKOFFICEUI_EXPORT KToolBar : public KCommandWidgetBridge<QToolBar>
{
    Q_OBJECT
public:
    /// A bar with no command (nothing is built lazily and it has no props).
    explicit KToolBar(KMainWindow* window);
    KToolBar(KListCommand* command, KMainWindow* window);
    ~KToolBar() override;

    /// The bar properties of its command; null without a command.
    KCommandBarProp* props() const { return m_props; }

    /**
     * Takes the bar out of its dock area into a small tool window of its own (true), or
     * makes it a plain child again (false), for the main window to place.
     */
    void setFloating(bool floating);
    /// Whether a floating bar offers a close button; true by default.
    void setClosable(bool closable);
    bool isClosable() const { return m_closable; }
    /// A full-size bar spans the whole row of its area.
    void setFullSize(bool fullSize);
    bool isFullSize() const { return m_fullSize; }
    /// The space around the items: layout margins plus the handle and the frame.
    QMargins getMargins() const;

    /// The least useful size: (40, 20) horizontal, (20, 40) vertical, (80, 20) floating,
    /// plus the margins.
    QSize minSize() const;
    QSize sizeHint() const override;
    QSize minimumSizeHint() const override;

    /// Refreshes the items (with withUpdate, their commands first) and hides needless
    /// separators.
    void updateAction(bool withUpdate);
    void setFloatingHide(bool hidden);
    bool isFloatingHidden() const { return m_floatingHidden; }
    /// A user-made copy of this bar for another window.
    KToolBar* clone(KMainWindow* window);

    void onCommandConnected() override;
    void onCommandInserted(int idx, KCommand* cmd) override;
    void onCommandRemoved(int idx) override;

public Q_SLOTS:
    void syncCommand();
    void setVisible(bool visible) override;

protected Q_SLOTS:
    void toolBarOrientationChanged(Qt::Orientation orientation);
    void onVisibilityChanged(bool value);

protected:
    /// The window flags of the bar while it floats: a tool window with a title, and a close
    /// button when closable.
    virtual Qt::WindowFlags floatingWindowFlags() const;

    bool event(QEvent* e) override;
    bool eventFilter(QObject* watched, QEvent* e) override;
    void closeEvent(QCloseEvent* e) override;
    void showEvent(QShowEvent* e) override;

private:
    void _init(KMainWindow* window);
    void _applyCloseHint();

    KCommandBarProp* m_props = nullptr;
    bool m_floatingHidden = false;
    bool m_closable = true;
    bool m_fullSize = false;
};

/**
 * Sent to every child of a tool bar when its orientation changes; direction() is true for a
 * vertical bar.
 */
class NORVIKOFFICEUI_EXPORT KWidgetExhibitDirectChangedEvent : public QEvent
{
public:
    enum { Type = 33024 };
    explicit KWidgetExhibitDirectChangedEvent(bool direction)
        : QEvent(static_cast<QEvent::Type>(Type)), m_direction(direction) {}
    bool direction() const { return m_direction; }

private:
    bool m_direction;
};

#endif // KTOOLBAR_H
