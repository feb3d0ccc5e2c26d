#ifndef KMAINWINDOW_H
#define KMAINWINDOW_H

#include <QMainWindow>
#include <QMap>
#include <QMargins>
#include <QPointer>
#include <QSet>
#include <QToolBar>
#include <QVariant>
#include <QVector>
#include <QWidget>

#include <kdomdocument.h>
#include <kdragmenubar.h>
#include <kmainwindowshadowborder.h>
#include <kwindowtitlebuttongroup.h>
#include <krbtabwidget.h>
#include <kmdiarea.h>
#include <khotkeyevent.h>
#include <norvikofficeui_export.h>

class QBoxLayout;
class QDockWidget;
class QMenu;
class QVBoxLayout;
class KCommand;
class KCommands;
class KListCommand;
class KDragToolBar;
class KToolBar;
class KStyleOptionMainWindow;
class KStatusBar;
class KShortcut;
class KShortcuts;
class KShortcutsWrapper;
class KCustomShortcuts;
class KHotKeyEventHandle;
#include <kshortcut.h>

/**
 * The QMainWindow that holds a main window's tool bars, docks and central widget. It is a
 * plain child of KMainWindow, which keeps the ribbon above it and the status bar below.
 */
class NORVIKOFFICEUI_EXPORT KMainDockArea : public QMainWindow
{
    Q_OBJECT
public:
    explicit KMainDockArea(QWidget* parent);
};

/**
 * The top-level window of a program. It reads its bars from the "mainwindow" element of the
 * description (when the application announces a document, or from polishXml() for a window
 * created later), owns a command registry of its own chained to the application's, and keeps
 * the pool of tool bars, popup menus and docks through which the bar properties of commands
 * and the host's customise dialogs reach the bars.
 *
 * Tool bars and docks live in a KMainDockArea child, so that the ribbon can stand above the
 * docks and the status bar below them.
 */
class NORVIKOFFICEUI_EXPORT KMainWindow : public QWidget
{
    Q_OBJECT
public:
    /// The search condition of findCommand(); -1 and empty texts match anything.
    struct NORVIKOFFICEUI_EXPORT MatchOption
    {
        int aid = -1;
        int faceid = -1;
        QString type;
        QString tag;
        bool visibleOnly = false;
        bool match(KCommand* cmd) const;
    };

    explicit KMainWindow(QWidget* parent = nullptr);
    ~KMainWindow() override;

    KCommands* commands() const { return m_commands; }
    QString caption() const { return m_caption; }
    void setCaption(const QString& caption);

    /// Reads every document the application has loaded so far; for windows created after
    /// setupXml(). Called once by the host.
    void polishXml();
    bool isXmlPolished() const { return m_xmlPolished; }

    // --- tool bars ---
    void addToolBar(KToolBar* bar);
    void addToolBar(Qt::ToolBarArea area, KToolBar* bar);
    void insertToolBar(KToolBar* before, KToolBar* bar);
    void addToolBarBreak(Qt::ToolBarArea area = Qt::TopToolBarArea);
    void insertToolBarBreak(KToolBar* before);
    void removeToolBar(KToolBar* bar);
    /// The first bar of the pool that shows cmd.
    KToolBar* findToolBar(KCommand* cmd) const;
    bool hasToolbar(Qt::ToolBarArea area) const;
    int toolBarCount() const { return m_toolBars.size(); }
    KToolBar* toolBarAt(int index) const { return m_toolBars.value(index); }
    /// Hides (false) or shows again the description's tool bars through the full-screen
    /// controller, so that a bar hidden by the user stays hidden afterwards.
    void setAllToolBarsVisilbe(bool visible);
    QSet<KToolBar*> currentVisibleBars() const;

    // --- header bar ---
    /**
     * Puts bar (the ribbon) above the dock area, taking it over as a child; the header bar
     * there before is hidden and deleted later. Null only removes the one there is. A window
     * with a ribbon paints its own frame.
     */
    virtual void setHeaderBar(KRbTabWidget* bar);
    KRbTabWidget* headerBar() const { return m_headerBar.data(); }
    void removeHeaderBar();
    /// The widths of the frame the window paints itself; -1 for none (the default).
    void setCustomFrameStruct(int left, int top, int right, int bottom);
    QMargins customFrameStruct() const { return m_customFrame; }

    // --- the window's own frame ---
    /**
     * The window draws its own frame (true): no frame of the window manager's, the caption
     * buttons at the right of the ribbon's tab row (or, without a ribbon, in a title row of
     * their own above the bars), a title that moves the window, and with the 2013 look a
     * shadow border to resize it by.
     */
    void setOwnFrame(bool on);
    bool hasOwnFrame() const { return m_ownFrame; }
    KWindowTitleButtonGroup* captionButtons() const { return m_captionButtons.data(); }
    /// The title row of a window without a ribbon; null otherwise.
    QWidget* titleRow() const { return m_titleRow.data(); }
    KMainWindowShadowBorder* shadowBorder() const { return m_shadow.data(); }

    // --- classic menu bar ---
    /**
     * Puts bar (the classic menu bar) at the top of the dock area, taking it over; the menu
     * bar there before is hidden and deleted later. Null only removes the one there is.
     */
    virtual void setMenuBar(KDragMenuBar* bar);
    KDragMenuBar* menuBar() const { return m_menuBar.data(); }
    void removeMenuBar();
    /**
     * The user's own menu bar in place of the description's (false), or the description's
     * back (true). Returns the bar now shown; null for a window with a ribbon, which has none.
     */
    KDragMenuBar* setCustomMenuBar(bool custom);
    /// The system menu and window buttons of a maximised document of area join the menu bar.
    void initializeMdiMenuBar(KMdiArea* area);
    /// The menu bar follows the MDI area's current document.
    void updateMenubar();

    // --- status bar ---
    /**
     * Puts bar at the foot of the window, taking it over as a child; the status bar there
     * before is hidden and deleted later. Null only removes the one there is.
     */
    void setStatusBar(KStatusBar* bar);
    KStatusBar* statusBar() const;
    void removeStatusBar();

    // --- central widget and docks ---
    /// A KMdiArea as central widget passes its statusChanged() on as mdiStatusChanged(),
    /// which is emitted once at once.
    void setCentralWidget(QWidget* widget);
    QWidget* centralWidget() const;
    virtual void addDockWidget(Qt::DockWidgetArea area, QDockWidget* dock);
    virtual void addDockWidget(Qt::DockWidgetArea area, KCommand* command);
    QDockWidget* findDockWidget(const QString& objectName) const;
    Qt::DockWidgetArea dockWidgetArea(QDockWidget* dock) const;
    void splitDockWidget(QDockWidget* first, QDockWidget* second, Qt::Orientation orientation);
    KMainDockArea* dockArea() const { return m_dockArea; }

    // --- popup menus and user-made bars ---
    void addPopupMenu(KCommand* cmd);
    void removePopupMenu(KCommand* cmd);
    int popupMenuCount() const { return m_popupMenus.size(); }
    KCommand* popupMenuAt(int index) const { return m_popupMenus.value(index); }
    /// A new user-made popup menu command.
    KCommand* addCustomPopupMenu();
    /// A new user-made tool bar; both out-arguments stay unchanged when none can be made.
    void addCustomToolBar(QWidget** bar, KCommand** command);
    /// The placeholder that stands for the user-made bars of a ribbon (they live in its
    /// add-on tab); made hidden on demand.
    QWidget* rbToolBar();
    int rbToolBarCount() const { return m_rbToolBars.size(); }
    KCommand* rbToolBarAt(int index) const { return m_rbToolBars.value(index); }
    void removeRbToolBar(KCommand* cmd);
    /// The dock area's context menu: one entry per tool bar of the "TBCustomizePopupMenu"
    /// list. Null without that list or when it is disabled.
    virtual QMenu* createDockAreaPopupMenu(bool& handled);

    // --- modes ---
    /**
     * Enters or leaves full-screen mode. With a header bar, the header bar gives way to the
     * small floating bar made from the "Full Screen" list command (made the first time,
     * see fullScreenBar()), and comes back as it was when the mode ends. The window state
     * before the mode is restored when it ends.
     */
    virtual void setFullScreen(bool on);
    /// The floating bar of full-screen mode; null until a window with a header bar first
    /// went full screen.
    KDragToolBar* fullScreenBar() const;
    virtual bool isFullScreen() const { return m_fullScreen; }
    virtual void setPrintPreview(bool on) { m_printPreview = on; }
    virtual bool isPrintPreview() const { return m_printPreview; }
    virtual void hideDocTabbarEx(bool hide) { m_hideDocTabbarEx = hide; }
    bool isHideDocTabbarEx() const { return m_hideDocTabbarEx; }
    void setBorderLess(bool borderLess);
    bool isBorderLess() const { return m_borderLess; }
    void setEmbedding(bool embedding) { m_embedding = embedding; }
    bool isEmbedding() const { return m_embedding; }
    bool isNeedDrawOwnBorder() const;
    void blockHotkey(bool block) { m_blockHotkey = block; }
    bool isBlockHotkey() const { return m_blockHotkey; }
    /// A shielded window reads a reduced description: no status bar, docks or host items.
    void SetShieldButton(bool shield) { m_shield = shield; }
    bool GetShieldButton() const { return m_shield; }
    virtual void setToolbarGroupIndex(int index);
    int toolbarGroupIndex() const { return m_toolbarGroupIndex; }
    bool isAeroEnabled() const { return false; }
    void resetAeroEffect() {}

    void setLastState(const QString& key, const QVariant& value) { m_lastStates[key] = value; }
    QVariant lastState(const QString& key) const { return m_lastStates.value(key); }

    // --- searching and copying ---
    /**
     * Searches the bars (or only under start) for commands matching the condition. Hits are
     * appended to result and their parents to parents; with all false the first hit ends the
     * search. Returns whether anything matched.
     */
    bool findCommand(KCommand* start, int aid, int faceid, const QString& type, const QString& tag,
                     bool visibleOnly, bool recursive, KListCommand* result,
                     QVector<KCommand*>& parents, bool all);
    /// Makes this window's bars look like source's, as far as the user changed them.
    void syncApiBarsFromMainWindow(KMainWindow* source);

    // --- items a main window with a ribbon implements; empty here ---
    virtual void addrbQuickToolBar(KCommand*) {}
    virtual void addNoTabPageWidget(KCommand*) {}
    virtual void addrbTabbarButton(KCommand*) {}
    virtual bool indicateActiveState() { return isActiveWindow(); }
    /// Fills the option with which the style paints the window's background and frame.
    virtual void initStyleOption(KStyleOptionMainWindow* option) const;

    // --- keyboard: accelerators and key tips ---
    /// The window's accelerators (read from the description's "shortcuts").
    KShortcuts* shortcuts() const;
    KShortcutsWrapper* shortcutsWrapper() const { return m_shortcutsWrapper; }
    /// The host's own shortcuts of this window; made on first use.
    KCustomShortcuts* customShortcuts();
    /// Every entry of shortcuts() for the command commandId in that category.
    QList<KShortcut*> getShortcut(const QString& commandId, ShortcutCategory category) const;
    KHotKeyEventHandle* GetHotKeyHandle() const { return m_hotKeyHandle; }
    bool isHotKeyShown() const;
    /// Ends every key-tip level that is on the screen, from the innermost out.
    Q_INVOKABLE void hideHotKey();

public Q_SLOTS:
    void updateCommandBarArea(KCommand* cmd);
    void updateCommandBarRect(KCommand* cmd);
    void updateCommandBarRowIndex(KCommand* cmd);
    void updateCommandBarProtection(KCommand* cmd);

Q_SIGNALS:
    void mdiStatusChanged(KMdiArea* area);
    void deactivated();
    void sizeChange();
    void menuBarCreated();
    void aeroEffectChanged(bool enable);
    void addToolBarBreakSignal(Qt::ToolBarArea area);
    void insertToolBarBreakSignal(QToolBar* before);
    void addToolBarSignal(QToolBar* toolbar);
    void insertToolBarSignal(QToolBar* before, QToolBar* toolbar);

protected Q_SLOTS:
    void onXmlSetuped(const KDomDocument& doc);
    void onXmlReseted();

protected:
    /// Called first and last by polishXml(); empty.
    virtual void beforePolishXml() {}
    virtual void afterPolishXml() {}

    bool event(QEvent* e) override;
    void resizeEvent(QResizeEvent* e) override;
    void paintEvent(QPaintEvent* e) override;

    void _setupXml(const KDomDocument& doc);
    void _resetXml();
    bool _addToToolBarPool(KToolBar* bar);
    KListCommand* _toolBarListCommand();
    void _addToToolBarPopupMenu(KToolBar* bar);
    void _removeFromToolBarPopupMenu(KToolBar* bar);
    void _addRbToolBar(KCommand* cmd);
    KListCommand* _rbToolBarCommand();
    void _syncListCommand(KCommand* source, KCommand* target, bool recursive);

private:
    void _placeToolBar(KToolBar* bar, int position, bool moveExisting);
    void _placeFullScreenBar();
    void _setStatusBarFullScreen(bool on);

    QVBoxLayout* m_outerLayout = nullptr;
    QPointer<KRbTabWidget> m_headerBar;
    QPointer<KDragMenuBar> m_menuBar;
    bool m_ownFrame = false;
    QPointer<KWindowTitleButtonGroup> m_captionButtons;
    QPointer<QWidget> m_titleRow;
    QPointer<KMainWindowShadowBorder> m_shadow;
    void _placeCaption();
    QPointer<KDragMenuBar> m_customMenuBar;
    QMargins m_customFrame = QMargins(-1, -1, -1, -1);
    QPointer<QWidget> m_rbToolBarWidget;
    QPointer<QWidget> m_statusBar; // a KStatusBar
    QPointer<KToolBar> m_fullScreenBar; // a KDragToolBar
    KMainDockArea* m_dockArea = nullptr;
    QString m_caption;
    bool m_xmlPolished = false;
    QVector<KToolBar*> m_toolBars;
    QVector<KCommand*> m_popupMenus;
    QVector<KCommand*> m_rbToolBars;
    QSet<QDockWidget*> m_dockWidgets;
    KListCommand* m_rbToolBarCommand = nullptr;
    QPointer<KListCommand> m_toolBarListCommand;
    int m_toolbarGroupIndex = -1;
    KCommands* m_commands = nullptr;
    bool m_borderLess = false;
    bool m_shield = false;
    bool m_printPreview = false;
    bool m_fullScreen = false;
    bool m_blockHotkey = false;
    bool m_hideDocTabbarEx = false;
    bool m_embedding = false;
    QMap<QString, QVariant> m_lastStates;
    // keyboard (kmainwindow_keyboard.cpp)
    void _setupKeyboard();
    void _teardownKeyboard();
    bool _hotKeyEvent(QEvent* e);
    KShortcutsWrapper* m_shortcutsWrapper = nullptr;
    KHotKeyEventHandle* m_hotKeyHandle = nullptr;
    KCustomShortcuts* m_customShortcuts = nullptr;
};

/**
 * The host's document view. It knows the main window it stands in.
 */
class NORVIKOFFICEUI_EXPORT KView : public QWidget
{
    Q_OBJECT
public:
    explicit KView(QWidget* parent = nullptr);
    KMainWindow* mainWindow() const { return m_mainWindow; }
    /// The view's own accelerators, against its window's registry; null without a window.
    KShortcuts* shortcuts() const;

private:
    QPointer<KMainWindow> m_mainWindow;
    KShortcutsWrapper* m_shortcutsWrapper = nullptr;
};

#endif // KMAINWINDOW_H
