#ifndef KMENUWIDGET_H
#define KMENUWIDGET_H

#include <QLayoutItem>
#include <QPointer>
#include <QTimer>
#include <QVector>
#include <QVBoxLayout>
#include <QWidget>

#include <kcommand.h>
#include <kcommandwidgetbridge.h>
#include <kscenebase.h>
#include <norvikofficeui_export.h>

class QStyleOptionMenuItem;
class KMenuWidget;
class KPopupWidget;
class KHotKeyCollectEvent;
class KHotKeyTriggerEvent;

/**
 * The vertical layout of a KMenuWidget. Taking an item out lets the item let go of what it
 * owns (take()).
 */
class NORVIKOFFICEUI_EXPORT KMenuWidgetLayout : public QVBoxLayout
{
    Q_OBJECT
public:
    explicit KMenuWidgetLayout(QWidget* parent);
    QLayoutItem* takeAt(int index) override;
};

/**
 * One row of a KMenuWidget: a layout item, not a widget, bound to a command. It paints
 * itself through the style and reacts to the mouse and the keyboard. State is read from the
 * command when needed; nothing is cached in the row. The command is not owned.
 */
class NORVIKOFFICEUI_EXPORT KMenuWidgetItem : public QLayoutItem
{
public:
    KMenuWidgetItem(KMenuWidget* menu, KCommand* command);
    ~KMenuWidgetItem() override;

    /// Lets go of what the row owns, as it leaves the layout; nothing by default.
    virtual void take();
    virtual void paint(QPainter& painter);
    virtual bool isEnabled() const;
    virtual bool isVisible() const;
    virtual void onHotKeyTrigger();
    /// A key for the row; true when the row used it.
    virtual bool onKeyboard(int key);
    virtual void onMouseMove(const QPoint& pos);
    virtual void onMouseRelease(const QPoint& pos);
    virtual void hidePopup();
    /// The pointer rested on the row: it becomes current, and an open sibling submenu closes.
    virtual void mouseStay();
    virtual bool isTriggerable() const;
    /// True when the command has at least one sub-command.
    virtual bool canPopup() const;

    QSize minimumSize() const override { return sizeHint(); }
    QSize maximumSize() const override { return sizeHint(); }
    Qt::Orientations expandingDirections() const override { return {}; }
    bool isEmpty() const override { return !isVisible(); }
    QRect geometry() const override { return m_rect; }
    void setGeometry(const QRect& rect) override { m_rect = rect; }
    /// Forgets the measured size; the menu calls it when a row's content may have changed.
    void invalidate() override;

    KMenuWidget* menuWidget() const { return m_menuWidget; }
    KCommand* command() const { return m_command.data(); }
    bool isCurrentItem() const;
    bool isPopupItem() const;
    void setAsCurrentItem();
    void setAsPopupItem();
    void unsetAsPopupItem();
    /// Closes the open submenu of the menu, if there is one.
    void unsetPopupItem();

protected:
    /// The common part of the style option of a row: state, rectangle, font, icon width.
    void initStyleOption(QStyleOptionMenuItem* option) const;

    KMenuWidget* m_menuWidget;
    QPointer<KCommand> m_command;
    QRect m_rect;
    mutable QSize m_sizeCache; // invalid until measured
};

/// The row of a command that triggers: icon, text, check mark, shortcut hint.
class NORVIKOFFICEUI_EXPORT KMenuWidgetTriggerItem : public QObject, public KMenuWidgetItem
{
    Q_OBJECT
public:
    KMenuWidgetTriggerItem(KMenuWidget* menu, KCommand* command);
    /// Null for a null command, and for one with neither icon nor text: nothing to show.
    static KMenuWidgetItem* createMenuItem(KCommand* command, KMenuWidget* menu);

    QSize sizeHint() const override;
    void paint(QPainter& painter) override;
    bool isEnabled() const override;
    bool isVisible() const override;
    void onHotKeyTrigger() override;
    bool onKeyboard(int key) override;
    void onMouseRelease(const QPoint& pos) override;

    void initStyleOption(QStyleOptionMenuItem* option) const;

public Q_SLOTS:
    void onCommandChanged();
};

/**
 * The row of a list: it opens the list's own menu in a further popup, beside the row. A
 * list that also triggers splits the row: the part left of the arrow strip triggers.
 */
class NORVIKOFFICEUI_EXPORT KMenuWidgetPopupItem : public QObject, public KMenuWidgetItem
{
    Q_OBJECT
public:
    KMenuWidgetPopupItem(KMenuWidget* menu, KCommand* command);
    ~KMenuWidgetPopupItem() override;

    QSize sizeHint() const override;
    void paint(QPainter& painter) override;
    bool isEnabled() const override;
    bool isVisible() const override;
    void onHotKeyTrigger() override;
    bool onKeyboard(int key) override;
    void onMouseRelease(const QPoint& pos) override;
    void hidePopup() override;
    void mouseStay() override;

    /// Where the submenu opens: the row's top right corner, global.
    virtual QPoint getTopRight() const;
    /// True for a plain popup; false for the framed panel of the file menu family.
    virtual bool isNormalPopupWidget() const;
    /// Opens the submenu (once); with selectFirst its first enabled row becomes current.
    void showPopup(bool selectFirst);
    KPopupWidget* popupWidget() const;

    void initStyleOption(QStyleOptionMenuItem* option) const;

Q_SIGNALS:
    void hidePopups();

public Q_SLOTS:
    void popupWidgetHidden();
    void onCommandChanged();

private:
    QPointer<KPopupWidget> m_popupWidget;
};

/// A separator line; it hides itself where it would stand first, last or doubled.
class NORVIKOFFICEUI_EXPORT KMenuWidgetSeparatorItem : public KMenuWidgetItem
{
public:
    KMenuWidgetSeparatorItem(KMenuWidget* menu, KCommand* command);
    QSize sizeHint() const override;
    void paint(QPainter& painter) override;
    bool isEnabled() const override { return false; }
    /// Visible with a visible row before it (back to the previous separator) and a visible
    /// row after it.
    bool isVisible() const override;

private:
    bool findLeaderItem() const;
    int findLastVisibleItem() const;
};

/**
 * Any other command: the command's own widget stands in the row. A check box is indented
 * to line up with the text column.
 */
class NORVIKOFFICEUI_EXPORT KMenuWidgetEmbedWidgetItem : public KMenuWidgetItem
{
public:
    KMenuWidgetEmbedWidgetItem(KMenuWidget* menu, KCommand* command);
    ~KMenuWidgetEmbedWidgetItem() override;

    void take() override;
    bool isEnabled() const override;
    bool isVisible() const override;
    QSize sizeHint() const override;
    QSize minimumSize() const override;
    QSize maximumSize() const override;
    Qt::Orientations expandingDirections() const override;
    void setGeometry(const QRect& rect) override;
    QWidget* widget() const override { return m_widget.data(); }

private:
    QPointer<QWidget> m_widget;
    QWidgetItem* m_widgetItem = nullptr;
};

/**
 * A menu drawn and managed by the framework: one widget bound to a list command, with one
 * row per sub-command, made by a table keyed by the command's class (see
 * createMenuItemScene()). Submenus open in further KPopupWidgets, 250 ms after the pointer
 * settles on their row or at once on a press. Keyboard: Up, Down, Tab, Home, End move the
 * highlight over enabled rows, Return triggers, Right opens a submenu, Left closes one.
 *
 * The command is not owned. Rows follow the list's insertions and removals.
 */
class NORVIKOFFICEUI_EXPORT KMenuWidget : public KCommandWidgetBridge<QWidget>
{
    Q_OBJECT
public:
    using ItemCreator = KMenuWidgetItem* (*)(KCommand* command, KMenuWidget* menu);

    KMenuWidget(KCommand* command, QWidget* parent);
    ~KMenuWidget() override;

    /// The table that makes rows; a host registers its own command classes with a
    /// KSceneItem<KMenuWidget::ItemCreator> on it.
    static KSceneBase<ItemCreator>* createMenuItemScene();
    /// The row of a command of no registered class: its own widget.
    static KMenuWidgetItem* createMenuItemDefault(KCommand* command, KMenuWidget* menu);

    int count() const;
    KMenuWidgetItem* itemAt(int index) const;
    KMenuWidgetItem* itemAt(const QPoint& pos) const;
    int indexOfItem(const QLayoutItem* item) const;
    KMenuWidgetItem* currentItem() const { return m_currentItem; }
    KMenuWidgetItem* popupItem() const { return m_popupItem; }
    KMenuWidgetLayout* menuWidgetLayout() const { return m_layout; }

    QSize iconSize() const { return m_iconSize; }
    void setIconSize(const QSize& size);
    /// The width of the arrow strip at the right of a row.
    int tabWidth() const { return m_tabWidth; }
    void setTabWidth(int width);
    bool needDrawBackground() const { return m_drawBackground; }
    void setDrawBackground(bool draw);
    void setCurrentItem(KMenuWidgetItem* item);
    /// Submenus open beside the whole menu, level with its top, instead of beside their row.
    bool isSubMenuAtSide() const { return m_subMenuAtSide; }
    void setSubMenuAtSide(bool on) { m_subMenuAtSide = on; }
    /// Drops the current row.
    void clearStatus();

    /// Sends the dismiss event up the parents: every popup on the way closes.
    void complete();

    // Key-tip hooks: the keys and moves the key-tip layer leaves to the menu.
    bool preKeyPressEvent(QKeyEvent* e);
    bool preMouseMoveEvent(QMouseEvent* e);
    bool preMouseReleaseEvent(QMouseEvent* e, void*& item);

    void onCommandConnected() override;
    void onCommandInserted(int index, KCommand* cmd) override;
    void onCommandRemoved(int index) override;

    // Used by the rows.
    void setPopupItem(KMenuWidgetItem* item);
    KMenuWidgetItem* getFirstEnableItem() const;
    KMenuWidgetItem* getLastEnableItem() const;
    KMenuWidgetItem* getNextEnableItem() const;
    KMenuWidgetItem* getPrewEnableItem() const;
    /// The rows' own state changed: repaint and measure again.
    void itemChanged();

Q_SIGNALS:
    void hided();

public Q_SLOTS:
    void mouseStay();

protected:
    bool event(QEvent* e) override;
    void paintEvent(QPaintEvent* e) override;
    void mouseMoveEvent(QMouseEvent* e) override;
    void mousePressEvent(QMouseEvent* e) override;
    void mouseReleaseEvent(QMouseEvent* e) override;
    void leaveEvent(QEvent* e) override;
    void keyPressEvent(QKeyEvent* e) override;
    void focusInEvent(QFocusEvent* e) override;
    void hideEvent(QHideEvent* e) override;

    void paintMenuWidgetBackground(QPainter& painter);
    /// The timer that opens a row's submenu once the pointer rests on the row (250 ms).
    QTimer* stayTimer() { return &m_timer; }
    /// Where the pointer was last seen; the stay timer opens the row there.
    void setLastMousePos(const QPoint& pos) { m_lastMousePos = pos; }
    /// Hands a key to the menu bar of the window this menu was opened from; false when
    /// there is none.
    bool sendEventToMenuBar(QKeyEvent* e);

private:
    bool _isItemUsable(const KMenuWidgetItem* item) const;
    bool _wraps() const;
    void _handleBlockedMouse(QEvent* e);

    QTimer m_timer;
    QPoint m_lastMousePos;
    QVector<KMenuWidgetItem*> m_rowOfCommand; // by command index; null for no row
    KMenuWidgetItem* m_currentItem = nullptr;
    KMenuWidgetItem* m_popupItem = nullptr;
    KMenuWidgetLayout* m_layout = nullptr;
    QSize m_iconSize = QSize(16, 16);
    bool m_drawBackground = true;
    bool m_subMenuAtSide = false;
    int m_tabWidth = 16;

    // key tips
    void _collectHotKey(KHotKeyCollectEvent* e);
    void _triggerHotKey(KHotKeyTriggerEvent* e);

public:
    /// A submenu's row fired by its key: opens it (quick: opens and selects its first item).
    void hotKeyTriggerExtensibleItem(KMenuWidgetItem* item, KHotKeyTriggerEvent* e);
    /// Opens the row's submenu with a key-tip level of its own on top.
    void showPopupItemWithHotkey(KMenuWidgetItem* item, KHotKeyTriggerEvent* e);
};

#endif // KMENUWIDGET_H
