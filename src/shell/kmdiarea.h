#ifndef KMDIAREA_H
#define KMDIAREA_H

#include <QHash>
#include <QList>
#include <QMdiArea>
#include <QPointer>
#include <QWidget>

#include <kcommandwidgetbridge.h>
#include <kdoctabbar.h>
#include <norvikofficeui_export.h>

class QHBoxLayout;
class QMdiSubWindow;
class QVBoxLayout;
class KCommand;
class KMainWindow;
class KShortcuts;
class KStyleOptionDocTabBar;

/// Small helpers over the object tree.
namespace KTik {
/// The nearest parent of object (object itself excluded) that is a T, or null.
template <class T>
T* findParentByType(QObject* object)
{
    for (QObject* p = object ? object->parent() : nullptr; p; p = p->parent()) {
        if (T* t = qobject_cast<T*>(p))
            return t;
    }
    return nullptr;
}
} // namespace KTik

/**
 * The base of a host's document widget inside a sub-window of a KMdiArea. The document tab
 * asks it for the document's file path and for the icon of a file type; the area tells it
 * when its sub-window is maximised or leaves that state, and when it was moved or sized.
 */
class NORVIKOFFICEUI_EXPORT KSubWindow : public QWidget
{
    Q_OBJECT
public:
    explicit KSubWindow(QWidget* parent = nullptr);

    /// The main window the document stands in (found again each time); null when none.
    KMainWindow* findRelativeMainWindow() const;
    /// The document's own accelerators, against its window's registry; null without a window.
    KShortcuts* shortcuts() const;

    /// The path of the document's file; empty for a document never saved.
    virtual QString filePath() const = 0;
    /// A short name of the kind of document, for the host's own use.
    virtual QString documentType() const = 0;
    /// The icon that stands for files with suffix (as "txt" or "tar.gz").
    virtual QIcon iconForSuffix(const QString& suffix) const = 0;
    /// Called once when the widget's sub-window has been added to an area.
    virtual void windowAdded() {}
    /// Called when the sub-window was moved or sized.
    virtual void synPositionToCore() {}
    virtual void synSizeToCore() {}

public Q_SLOTS:
    void windowStateChanged(Qt::WindowStates oldState, Qt::WindowStates newState);

protected:
    /// The sub-window went to the maximised state.
    virtual void enterMaximized() = 0;
    /// The sub-window left the maximised state.
    virtual void leaveMaximized() = 0;

private:
    QPointer<KMainWindow> m_mainWindow;
    class KShortcutsWrapper* m_shortcutsWrapper = nullptr;
};

/// The QMdiArea inside a KMdiArea. It only opens the protected parts of QMdiArea to the area.
class NORVIKOFFICEUI_EXPORT KMdiareaPrivate : public QMdiArea
{
    Q_OBJECT
public:
    explicit KMdiareaPrivate(QWidget* parent);
    using QMdiArea::viewportEvent;
    using QMdiArea::setViewportMargins;
};

/**
 * The page that stands in the area's place while no document is open: the items of a list
 * command (as "New" and "Open") under its caption.
 */
class NORVIKOFFICEUI_EXPORT KNoTabPageWidget : public KCommandWidgetBridge<QWidget>
{
    Q_OBJECT
public:
    KNoTabPageWidget(KCommand* cmd, QWidget* parent);

    void onCommandConnected() override;
    void onCommandInserted(int index, KCommand* sub) override;
    void onCommandRemoved(int index) override;

protected:
    bool event(QEvent* e) override;
    void paintEvent(QPaintEvent* e) override;

private:
    QHBoxLayout* m_items = nullptr;
    QList<QWidget*> m_itemWidgets;
};

/**
 * The strip above the area: the document tab bar, and, at its right end, room for a host's
 * buttons. It draws its background with the style; a double click or a right click on the
 * empty strip is announced.
 */
class NORVIKOFFICEUI_EXPORT KDocTabbarEx : public QWidget
{
    Q_OBJECT
public:
    explicit KDocTabbarEx(QWidget* parent);

    KDocTabbar* tabBar() const { return m_tabbar; }

    void addSubWindow(QMdiSubWindow* subWindow, bool setCurrent);
    void insertSubWindow(int index, QMdiSubWindow* subWindow, bool setCurrent);
    void removeSubWindow(QMdiSubWindow* subWindow);
    void removeTab(QMdiSubWindow* subWindow);
    QMdiSubWindow* currentSubWindow() const;
    void setSubWindowVisible(QMdiSubWindow* subWindow, bool visible);
    void activeNextTab();
    void activePrevTab();
    int count() const;
    int findSubWindow(QMdiSubWindow* subWindow) const;
    QMdiSubWindow* subWindowAt(int index) const;
    KDocTab* tabAt(int index) const;
    void setActiveSubWindow(QMdiSubWindow* subWindow);
    /// The new-tab button at the end of the tabs, for cmd.
    void addrbTabbarButton(KCommand* cmd);

    void initStyleOption(KStyleOptionDocTabBar* option) const;

Q_SIGNALS:
    void currentSubWindowChanged(QMdiSubWindow* subWindow);
    void subWindowRemoved(QMdiSubWindow* subWindow);
    void doubleClicked();
    void rightClicked(int index);
    void tabRemoved(int index);

protected:
    void paintEvent(QPaintEvent* e) override;
    void mouseDoubleClickEvent(QMouseEvent* e) override;
    void mouseReleaseEvent(QMouseEvent* e) override;
    void contextMenuEvent(QContextMenuEvent* e) override;

private:
    QHBoxLayout* m_layout = nullptr;
    KDocTabbar* m_tabbar = nullptr;
};

/**
 * The document area: a QMdiArea with a document tab bar above it. The area keeps three views
 * of the current document in agreement: the QMdiArea's active sub-window, the tab bar's
 * current tab and the compare partner. It arranges the sub-windows (tiles, cascade, compare)
 * and applies the arrangement again when the area is resized or a window comes or goes.
 *
 * A sub-window may be closed from anywhere (its own close handler, closeAllSubWindows(), a
 * delete from outside): its tab goes with it. The area's destructor closes nothing; a host
 * closes its documents first.
 */
class NORVIKOFFICEUI_EXPORT KMdiArea : public QWidget
{
    Q_OBJECT
public:
    enum Rearrange { RearrangeNone = 0, HorzTile = 1, VertTile = 2, Cascade = 3, CompareView = 4 };

    explicit KMdiArea(QWidget* parent = nullptr, bool hideTabbar = false);
    ~KMdiArea() override;

    KMdiareaPrivate* qMdiArea() const { return m_area; }
    KDocTabbarEx* tabBarEx() const { return m_tabbar; }
    KNoTabPageWidget* noTabPageWidget() const { return m_noTabPage.data(); }

    /**
     * Puts widget into a new sub-window (or adds widget itself when it is one), gives it a
     * tab and makes it current. A maximised area stays maximised. Returns the sub-window.
     */
    QMdiSubWindow* addSubWindow(QWidget* widget, Qt::WindowFlags flags = Qt::WindowFlags());
    /// Takes widget's sub-window out of the area and its tab; the window isn't deleted.
    void removeSubWindow(QWidget* widget, bool deleteIt = false);
    void insertSubWindowToTabbar(QMdiSubWindow* subWindow, int index, bool current);
    void removeSubWindowFromTabbar(QMdiSubWindow* subWindow);
    /// The area's current sub-window; else the tab bar's; else the relative sub-window.
    QMdiSubWindow* currentSubWindow() const;
    /// The index of subWindow's tab, -1 for none.
    int findSubWindow(QMdiSubWindow* subWindow) const;
    QList<QMdiSubWindow*> subWindowList() const;
    void setSubWinVisible(QMdiSubWindow* subWindow, bool visible);
    bool isDocTabbarVisible() const;
    void setDocTabbarVisible(bool visible);
    void addNoTabPageWidget(KCommand* cmd);
    void removeNoTabPageWidget();
    void setNoTabPageWidgetVisible(bool visible);
    bool hasVisibleSubWindow() const;
    void rearrangeSubWindow(bool activate);
    int arrangement() const { return m_arrangement; }
    void setRelativeSubWindow(QMdiSubWindow* subWindow);
    QMdiSubWindow* relativeSubWindow() const { return m_relativeSubWindow.data(); }
    bool isRelativeSubWindow(QWidget* widget) const;
    bool hasCommonAncestorWithRelativeSubWindow(QWidget* widget) const;
    void showNormalWithoutRearrange(QWidget* widget);
    void addrbTabbarButton(KCommand* cmd);

    virtual void horzTileSubWindows(bool init);
    virtual void vertTileSubWindows(bool init);
    virtual void cascadeSubWindows(bool init);
    virtual void maxSizeSubWindows();
    /// Remembers the two views of a compare; rearrangeCompareViews(bool) lays them out.
    virtual void rearrangeCompareViews(QMdiSubWindow* left, QMdiSubWindow* right);
    virtual void rearrangeCompareViews(bool activate);
    virtual void cancelCompareView();
    /// One over the other (true) or side by side (false, the default).
    void setCompareVertical(bool vertical) { m_compareVertical = vertical; }
    QMdiSubWindow* compareLeft() const { return m_compareLeft.data(); }
    QMdiSubWindow* compareRight() const { return m_compareRight.data(); }
    bool isCompareView(QMdiSubWindow* subWindow) const;

    /// Rows and columns of a tile of n windows: rows is the side of the largest square
    /// that n fills, columns n / rows.
    static void _calcRowCol(int n, int& rows, int& columns);

public Q_SLOTS:
    virtual void setActiveSubWindow(QMdiSubWindow* subWindow);
    /// Closes every sub-window that agrees to close, then the relative one.
    virtual void closeAllSubWindows();
    virtual void closeOtherSubWindows();
    void activateNextSubWindow();
    void activatePreviousSubWindow();
    void windowStateChanged(Qt::WindowStates oldState, Qt::WindowStates newState);

Q_SIGNALS:
    void statusChanged(KMdiArea* area);
    void doubleClicked();
    void allSubWindowClosed();
    void firstSubWindowAdded();
    void curSubWindowChange();
    void tabBarRightClicked(int index);
    void resizeMdiArea(QRect* rect);
    void subWindowRemoved(QMdiSubWindow* subWindow);

protected:
    bool event(QEvent* e) override;
    bool eventFilter(QObject* object, QEvent* event) override;
    void resizeEvent(QResizeEvent* e) override;

    void initRearrangeSubWindows(int mode);
    void initSubWindowSize(QMdiSubWindow* subWindow);

private Q_SLOTS:
    void syncSubWindow(QMdiSubWindow* subWindow);
    void closeSubWindow(QMdiSubWindow* subWindow);
    void onSubWindowDestroyed(QObject* object);

private:
    void _applyBackground();
    void _tile(bool vertical);
    QList<QMdiSubWindow*> _arrangedWindows();
    void _setGeometry(QMdiSubWindow* window, const QRect& rect);
    QSize _cascadeSize() const;
    int _cascadeStep() const;
    static Qt::WindowStates _getWindowStates(QMdiArea* area);

    KMdiareaPrivate* m_area = nullptr;
    KDocTabbarEx* m_tabbar = nullptr;
    QPointer<KNoTabPageWidget> m_noTabPage;
    QVBoxLayout* m_layout = nullptr;
    QHBoxLayout* m_areaLayout = nullptr;
    int m_arrangement = RearrangeNone;
    QPointer<QMdiSubWindow> m_relativeSubWindow;
    QList<QPointer<QMdiSubWindow>> m_arranged;
    QPointer<QMdiSubWindow> m_compareLeft;
    QPointer<QMdiSubWindow> m_compareRight;
    bool m_compareVertical = false;
    int m_savedArrangement = RearrangeNone;
    bool m_arranging = false;
    // The sub-windows by their QObject address, for the moment one is being destroyed and
    // may no longer be touched as a widget.
    QHash<QObject*, QMdiSubWindow*> m_subWindowObjects;
};

#endif // KMDIAREA_H
