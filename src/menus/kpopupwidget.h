#ifndef KPOPUPWIDGET_H
#define KPOPUPWIDGET_H

#include <QColor>
#include <QKeySequence>
#include <QPointer>
#include <QRect>
#include <QWidget>

#include <ksizegrip.h>
#include <norvikofficeui_export.h>

class QBoxLayout;
class QKeyEvent;
class QScrollArea;

/**
 * The one floating container of the framework: menus, drop-down panels, the panel of a
 * collapsed ribbon all open in one. It holds a single content widget and a size grip,
 * places itself against the screen and against the widget that asked for it (without
 * covering that widget where it can), falls back to scrolling when the content cannot fit
 * anywhere, and closes with the popups it was opened from.
 *
 * While it holds the mouse, presses, releases and moves outside its frame are handed to the
 * widget under the cursor as a KBlockedMouseEvent, so that hover, menu bar browsing and
 * click-through closing work through an open popup. A press outside closes the whole chain
 * of open popups, unless the widget under the cursor asks to keep it open.
 *
 * Popups are kept and reused: the content and a size the user gave with the grip survive a
 * hide. The content is not owned beyond the parent relation: replacing it hides the old
 * one, it is not deleted.
 */
class NORVIKOFFICEUI_EXPORT KPopupWidget : public QWidget
{
    Q_OBJECT
public:
    /// Bits of popupStyle().
    enum PopupStyleFlag {
        StyleBorder = 1,             ///< a border and an inner border (the layout gets a margin of 2)
        StyleTitle = 2,              ///< two lines across the top in titleColor()
        StyleAltKeepsOpen = 16,      ///< the Alt key does not dismiss the popup
        StyleMainWindowShortcuts = 32 ///< the main window's shortcuts work while it is open
    };

    /// The framework's own popups pass Qt::Popup.
    explicit KPopupWidget(QWidget* parent = nullptr, Qt::WindowFlags flags = Qt::Popup);
    ~KPopupWidget() override;

    QWidget* contentWidget() const { return m_contentWidget.data(); }
    /// Takes widget as the content (reparented, shown); the content before is hidden and
    /// left to its owner. Null leaves the popup empty.
    void setContentWidget(QWidget* widget);

    int popupStyle() const { return m_popupStyle; }
    void setPopupStyle(int style);
    QColor titleColor() const { return m_titleColor; }
    void setTitleColor(const QColor& color);

    /// The grip in use: the one set, or for AutoGrip the one the content's size policy and
    /// limits allow (both directions: bottom right; one: that edge; none: NoGrip).
    KSizeGrip::GripType sizeGripType() const;
    void setSizeGripType(KSizeGrip::GripType type);
    /// Forgets any size the popup or its user gave it: the next show uses the size hint.
    void clearSizeAttitude();

    using QWidget::show;
    /**
     * Opens at pos (global). It flips to the left of pos, or above it (less offset when
     * alignRight), where it would leave the screen and there is more room on the other side;
     * a popup in the left or upper half of the screen is only clipped. With alignRight the
     * left edge moves to pos.x() - width and the right edge stays: the popup then spans
     * twice its width.
     */
    void show(const QPoint& pos, bool alignRight, int offset);
    int exec(const QPoint& pos, bool alignRight, int offset);
    /**
     * The placement of menus and drop-downs: opens at want (global), moved off the right or
     * lower screen edge, without covering exclude (the owner's global rectangle) by more
     * than an edge. Where it does not fit, it goes to the first side of exclude with room,
     * below, above, right or left, at least at its minimum size; where no side has room, it
     * opens clipped to the screen with scroll bars.
     */
    void show(QRect exclude, QRect want);
    void show(QRect exclude, const QPoint& pos);
    int exec(QRect exclude, const QPoint& pos);
    void show(const QWidget* owner, QRect want);
    int exec(const QWidget* owner, QRect want);
    void show(const QWidget* owner, const QPoint& pos);
    int exec(const QWidget* owner, const QPoint& pos);

    static QPoint getWidgetGlobalPos(const QWidget* widget);
    static QRect getWidgetGlobalRect(const QWidget* widget);
    static QPoint getWidgetGlobalBottomLeftPos(const QWidget* widget);
    /// The available area of the screen that holds point (the primary screen's when none does).
    static QRect getAvailScreenRect(const QPoint& point);

    /// The first non-empty of: minimumSize(), minimumSizeHint(), and the content's two.
    QSize getMinimumSize() const;
    /// The size hint, or a size the content came with, or one the user gave the popup (with
    /// the grip) or the host (resize()); at least the minimum.
    QSize getPreferSize() const;
    /**
     * A rectangle of want's size on the first side of exclude (below, above, right, left)
     * where the screen has room for it, touching exclude; a null rectangle where no side has.
     */
    QRect getContaintRect(QRect exclude, QRect want) const;
    /// The key sequence of a key press; empty for a modifier alone or an unknown key.
    static QKeySequence convertToKeySequence(const QKeyEvent* e);

    /// The scroll area that holds the content while it does not fit; null otherwise.
    QScrollArea* scrollArea() const { return m_scrollArea; }
    KSizeGrip* sizeGrip() const { return m_sizeGrip; }

Q_SIGNALS:
    void aboutToHide();

protected:
    void customEvent(QEvent* e) override;
    void mousePressEvent(QMouseEvent* e) override;
    void mouseReleaseEvent(QMouseEvent* e) override;
    void mouseMoveEvent(QMouseEvent* e) override;
    void mouseDoubleClickEvent(QMouseEvent* e) override;
    void keyPressEvent(QKeyEvent* e) override;
    void showEvent(QShowEvent* e) override;
    void hideEvent(QHideEvent* e) override;
    void enterEvent(QEnterEvent* e) override;
    void paintEvent(QPaintEvent* e) override;

    /**
     * Hands e to the widget under its global position as a KBlockedMouseEvent; keepOpen and
     * firstFlag come back from the receivers (both false when nothing is under the cursor).
     */
    void sendBlockedMouseEvent(QMouseEvent* e, bool& keepOpen, bool& firstFlag);

    void createScrollWidget();
    void removeScrollWidget();
    void normalSizeGripType();
    void reverseHSizeGripType();
    void reverseVSizeGripType();
    int layoutMargin() const;
    QBoxLayout* popupLayout() const { return m_layout; }

private:
    void _setSizeGripType(KSizeGrip::GripType type);
    void _showAt(const QRect& geometry);
    int _exec();
    bool _runMainWindowShortcut(const QKeyEvent* e);
    bool _closeWindowKey(const QKeyEvent* e);

    QScrollArea* m_scrollArea = nullptr;
    QPointer<QWidget> m_contentWidget;
    QSize m_contentGivenSize; // invalid unless the content came with a size of its own
    KSizeGrip* m_sizeGrip = nullptr;
    KSizeGrip::GripType m_sizeGripType = KSizeGrip::AutoGrip;
    QBoxLayout* m_layout = nullptr;
    int m_popupStyle = StyleBorder;
    QColor m_titleColor;
};

/**
 * A popup of the file menu family: type 1 is an ordinary popup; any other type is a framed
 * panel (border "filemenu-border" of KRbFileMenu), and type 2 has a band along its top.
 */
class NORVIKOFFICEUI_EXPORT KPopupWidgetEx : public KPopupWidget
{
    Q_OBJECT
public:
    using KPopupWidgetType = int;
    KPopupWidgetEx(QWidget* parent, KPopupWidgetType type);
    KPopupWidgetType popupType() const { return m_type; }
    QMargins widgetMargins() const;

protected:
    void paintEvent(QPaintEvent* e) override;

private:
    KPopupWidgetType m_type;
};

#endif // KPOPUPWIDGET_H
