#ifndef KMENUBAR_H
#define KMENUBAR_H

#include <QIcon>
#include <QLayout>
#include <QPointer>
#include <QVector>
#include <QWidget>

#include <norvikofficeui_export.h>
#include <kpopupwidget.h>
#include <qtoolbaritemwidget.h>

class KCommand;
class KMdiArea;
class KMenuBar;
class KHotKeyCollectEvent;
class KHotKeyTriggerEvent;

/**
 * One entry of the classic menu bar: a layout item bound to a command. A list opens its
 * menu below the entry (beside it in a vertical bar), built afresh at each opening; any
 * other command is triggered by a press. The command is not owned.
 */
class NORVIKOFFICEUI_EXPORT KMenuBarItem : public QObject, public QLayoutItem
{
    Q_OBJECT
public:
    enum ItemStyle { StyleIcon = 1, StyleText = 2 };

    KMenuBarItem(KCommand* command, KMenuBar* bar);
    ~KMenuBarItem() override;

    KCommand* command() const { return m_command.data(); }
    KMenuBar* menuBar() const { return m_bar; }
    int menuItemStyle() const { return m_menuItemStyle; }
    void setMenuItemStyle(int style);
    QString text() const { return m_text; }
    QIcon icon() const { return m_icon; }
    QString detail() const { return m_detail; }
    QString shortcutHint() const { return m_shortcutHint; }
    bool isTriggerable() const { return m_triggerable; }
    bool isCheckedHint() const { return m_checkedHint; }
    bool isVisible() const { return m_visible; }
    bool isEnabled() const { return m_enabled; }
    bool isHovered() const { return m_hovered; }
    bool isSeparator() const { return m_separator; }
    /// The menu is open.
    bool isPopuping() const;
    KPopupWidget* popupWidget() const { return m_popup.data(); }
    /// With a null icon, whenever there is text; otherwise only with the text bit.
    bool needDrawText() const;

    virtual void setHovered(bool hovered);
    virtual void popup(Qt::Orientation orientation);
    virtual void hidePopup();
    virtual bool canPopup() const;
    virtual bool canDoubleClick() const;
    virtual void doubleClick();
    virtual void paintItem(QPainter& painter);
    virtual void paintBackground(QPainter& painter, QRect& rect);
    virtual void paintText(QPainter& painter, QRect& rect);
    virtual void paintIcon(QPainter& painter, QRect& rect);
    virtual void trigger();

    // QLayoutItem
    QSize sizeHint() const override;
    QSize minimumSize() const override;
    QSize maximumSize() const override;
    Qt::Orientations expandingDirections() const override;
    bool isEmpty() const override;
    void setGeometry(const QRect& rect) override;
    QRect geometry() const override { return m_rect; }

Q_SIGNALS:
    void changed();
    void popupWidgetHiden();

public Q_SLOTS:
    virtual void syncCommand();

protected:
    KMenuBar* m_bar;
    QRect m_rect;
    int m_menuItemStyle = StyleText;
    QPointer<KCommand> m_command;
    QString m_text;
    QIcon m_icon;
    QString m_shortcutHint;
    QString m_detail;
    bool m_triggerable = false;
    bool m_checkedHint = false;
    bool m_visible = false;
    bool m_enabled = false;
    bool m_hovered = false;
    bool m_separator = false;
    QPointer<KPopupWidget> m_popup; // a child of the bar, which may go first
};

/// A square icon button of the bar (the window buttons of a maximised document): 18 wide.
class NORVIKOFFICEUI_EXPORT KMenuBarIconItem : public KMenuBarItem
{
    Q_OBJECT
public:
    KMenuBarIconItem(KCommand* command, KMenuBar* bar);
    QSize sizeHint() const override;
    bool canPopup() const override;
};

/// The system menu of a maximised document; a double click on it runs the close command.
class NORVIKOFFICEUI_EXPORT KSystemMenuBarItem : public KMenuBarItem
{
    Q_OBJECT
public:
    KSystemMenuBarItem(KCommand* command, KMenuBar* bar);
    void setCloseCommand(KCommand* close) { m_close = close; }
    KCommand* closeCommand() const { return m_close.data(); }
    bool canDoubleClick() const override;
    void doubleClick() override;
    QSize sizeHint() const override;

private:
    QPointer<KCommand> m_close;
};

/// The spacer: what follows it in its line, and every later line, stands at the right.
class NORVIKOFFICEUI_EXPORT KMenuBarEmptyItem : public KMenuBarItem
{
    Q_OBJECT
public:
    explicit KMenuBarEmptyItem(KMenuBar* bar);
    QSize sizeHint() const override;
    Qt::Orientations expandingDirections() const override;
    bool isEmpty() const override { return false; }
    bool canPopup() const override { return false; }
    void trigger() override {}
    void paintItem(QPainter&) override {}
    void syncCommand() override {}
};

/**
 * The bar's layout: items in lines, a new line when the next item would overflow (every line
 * holds one item at least), lines 2 pixels apart, and everything after a spacer right-aligned.
 * A vertical bar runs its lines from top to bottom and stacks them from the right.
 */
class NORVIKOFFICEUI_EXPORT KMenuBarLayout : public QLayout
{
    Q_OBJECT
public:
    explicit KMenuBarLayout(QWidget* parent);
    ~KMenuBarLayout() override;

    Qt::Orientation orientation() const { return m_orientation; }
    void setOrientation(Qt::Orientation orientation);

    void addItem(QLayoutItem* item) override;
    void insertItem(int index, QLayoutItem* item);
    QLayoutItem* itemAt(int index) const override;
    QLayoutItem* takeAt(int index) override;
    int count() const override;
    QSize sizeHint() const override;
    QSize minimumSize() const override;
    void setGeometry(const QRect& rect) override;
    bool hasHeightForWidth() const override { return true; }
    int heightForWidth(int width) const override;
    void invalidate() override;
    /// The height (across the bar) needed at extent w along it.
    int extentFor(int w) const;

private:
    int _place(int w, QVector<QRect>* rects) const;
    QSize _itemSize(int index) const;

    Qt::Orientation m_orientation = Qt::Horizontal;
    QVector<QLayoutItem*> m_items;
    mutable QVector<QSize> m_sizes;
    QVector<QRect> m_rects;
    mutable int m_cachedWidth = -1;
    mutable int m_cachedHeight = -1;
};

/**
 * The classic menu bar: one entry per sub-command of its list, wrapping over several lines.
 * A press opens an entry's menu; while one is open the pointer browses from entry to entry,
 * and Left, Right, Home, End and Tab move along the bar. Over an MDI area a maximised
 * document's system menu and window buttons join it.
 */
class NORVIKOFFICEUI_EXPORT KMenuBar : public QWidget, public QToolBarItemWidget
{
    Q_OBJECT
public:
    KMenuBar(KCommand* command, QWidget* parent);
    ~KMenuBar() override;

    KCommand* command() const { return m_command.data(); }
    void addItem(KCommand* command);
    void addItem(KMenuBarItem* item);
    void insertItem(int index, KCommand* command);
    void insertItem(int index, KMenuBarItem* item);
    void removeItem(int index);
    void removeItem(KMenuBarItem* item);
    void removeAll();
    int count() const;
    KMenuBarItem* itemAt(int index) const;
    KMenuBarItem* itemAt(const QPoint& pos) const;
    int indexOf(QLayoutItem* item) const;
    int getCurrentIndex() const;
    KMenuBarItem* getFirstEnableItem() const;
    KMenuBarItem* getLastEnableItem() const;
    KMenuBarItem* getPrewEnableItem() const;
    KMenuBarItem* getNextEnableItem() const;
    KMenuBarItem* hoveredItem() const { return m_hoverItem; }
    KMenuBarItem* currentPopupItem() const { return m_popupItem; }
    bool isPopupMode() const { return m_popupMode; }
    /// A menu of the bar is open.
    bool isPopuping() const;
    void hoverItem(KMenuBarItem* item);
    void popupItem(KMenuBarItem* item);
    KMenuBarLayout* menuBarLayout() const { return m_layout; }

    void initializeMdi(KMdiArea* area);
    void updateMdi();
    KMdiArea* mdiArea() const { return m_mdiArea.data(); }
    QList<KCommand*> mdiCommands() const { return m_mdiCommands; }

    QSize dockSizeHint(Qt::Orientation orientation, int extent) const;
    QSize dockMinimumSizeHint(Qt::Orientation orientation) const;
    QSize floatSizeHint() const;

    // QToolBarItemWidget
    Qt::Orientation orientation() const override { return m_orientation; }
    void setOrientation(Qt::Orientation orientation) override;
    QSize sizeHint(Qt::Orientation orientation) const override;
    QSize minimumSize(Qt::Orientation orientation) const override;
    QSize maximumSize(Qt::Orientation orientation) const override;
    QSize minimumSizeHint(Qt::Orientation orientation) const override;
    using QWidget::maximumSize;
    using QWidget::minimumSize;
    using QWidget::minimumSizeHint;
    using QWidget::sizeHint;
    QSize sizeHint() const override;
    QSize minimumSizeHint() const override;
    bool hasHeightForWidth() const override { return true; }
    int heightForWidth(int width) const override;

public Q_SLOTS:
    void syncCommand();
    void onSubCommandInserted(int index, KCommand* command);
    void onSubCommandRemoved(int index);
    void on_item_changed();
    void popupMenuHided();

protected:
    bool event(QEvent* e) override;
    void paintEvent(QPaintEvent* e) override;
    void mousePressEvent(QMouseEvent* e) override;
    void mouseMoveEvent(QMouseEvent* e) override;
    void leaveEvent(QEvent* e) override;
    void keyPressEvent(QKeyEvent* e) override;
    /// A press that reached the bar through an open menu's grab: the second press of a
    /// double click on the system entry closes the document.
    void maybeMouseDoubleClick(QMouseEvent* e);

private:
    void _collectHotKey(KHotKeyCollectEvent* e);
    void _triggerHotKey(KHotKeyTriggerEvent* e);
    QRect _popupExclude(const KMenuBarItem* item) const;

    QPoint m_pressPos = QPoint(-1, -1);
    KMenuBarItem* m_hoverItem = nullptr;
    KMenuBarItem* m_popupItem = nullptr;
    KMenuBarLayout* m_layout = nullptr;
    Qt::Orientation m_orientation = Qt::Horizontal;
    QPointer<KMdiArea> m_mdiArea;
    QPointer<KCommand> m_command;
    QList<KCommand*> m_mdiCommands;
    bool m_popupMode = false;
};

#endif // KMENUBAR_H
