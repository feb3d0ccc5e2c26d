#ifndef KDOCTABBAR_H
#define KDOCTABBAR_H

#include <QAbstractButton>
#include <QBoxLayout>
#include <QBrush>
#include <QHash>
#include <QIcon>
#include <QList>
#include <QMdiSubWindow>
#include <QPoint>
#include <QPointer>
#include <QWidget>

#include <ktoolbutton.h>
#include <norvikofficeui_export.h>

class QHBoxLayout;
class QLabel;
class QProgressBar;
class QVariantAnimation;
class KDocTab;
class KDocTabbar;
class KStyleOptionDocTab;

/// The mime format of a document tab being dragged; its data is the tab's index as text.
#define KDOCTAB_MIME_FORMAT "NorvikOfficeUI/KDocTab"

/**
 * One of the two scroll arrows of a document tab bar that no longer fits: a left-pointing or
 * a right-pointing button, chosen at construction. It paints itself from the theme class
 * "KTabBar".
 */
class NORVIKOFFICEUI_EXPORT KDocTabbarArrowButton : public QAbstractButton
{
    Q_OBJECT
public:
    KDocTabbarArrowButton(Qt::ArrowType direction, QWidget* parent);
    Qt::ArrowType direction() const { return m_direction; }
    QSize sizeHint() const override { return QSize(19, 22); }

Q_SIGNALS:
    void dblClicked();

protected:
    void paintEvent(QPaintEvent* e) override;
    void mouseDoubleClickEvent(QMouseEvent* e) override;

private:
    Qt::ArrowType m_direction;
};

/**
 * The row of tabs inside a document tab bar. While the tabs' size hints fit, each has its
 * hint; then all shrink to equal shares down to their minimums; when even the minimums don't
 * fit, the row scrolls, with an arrow at each end, and always ends at its right edge.
 */
class NORVIKOFFICEUI_EXPORT KDocTabbarLayout : public QBoxLayout
{
    Q_OBJECT
public:
    explicit KDocTabbarLayout(QWidget* parent);

    void setGeometry(const QRect& rect) override;
    QSize minimumSize() const override;
    void invalidate() override;

    int firstVisibleIndex() const { return m_firstVisible; }
    int visibleCount() const { return m_visibleCount; }
    KDocTabbarArrowButton* leftArrow() const { return m_leftArrow; }
    KDocTabbarArrowButton* rightArrow() const { return m_rightArrow; }
    /// Scrolls so that the item at index is seen (a bad index does nothing).
    void ensureVisible(int index);

Q_SIGNALS:
    void hasItemHidden(bool b);

private Q_SLOTS:
    void on_scrollLeft();
    void on_scrollRight();
    void on_scrollBegin();
    void on_scrollEnd();

private:
    void _doLayout(const QRect& rect);
    void _layoutScrolled(const QRect& rect, const QList<QLayoutItem*>& items);

    int m_sumHint = 0;
    int m_sumMinimum = 0;
    int m_firstVisible = 0;
    int m_visibleCount = 0;
    QRect m_geometry;
    KDocTabbarArrowButton* m_leftArrow = nullptr;
    KDocTabbarArrowButton* m_rightArrow = nullptr;
};

/**
 * The new-tab button at the end of a document tab bar. A click triggers its command 300 ms
 * later, and a double click in between cancels it, so that a double click on the strip never
 * opens two documents.
 */
class NORVIKOFFICEUI_EXPORT KTabBarNewButton : public KToolButton
{
    Q_OBJECT
public:
    KTabBarNewButton(QWidget* parent, KCommand* cmd);

    using KToolButton::minimumSizeHint;
    using KToolButton::sizeHint;
    QSize sizeHint() const override;
    QSize minimumSizeHint() const override { return sizeHint(); }
    /// The split form, with room for a drop-down part; the bar shows it while every tab is in view.
    void changeToSplitButton(bool split);
    bool isSplitButton() const { return buttonStyle() & KStyleOptionToolButton::StyleArrow; }
    bool isClickPending() const;

protected:
    void mouseReleaseEvent(QMouseEvent* e) override;
    void mouseDoubleClickEvent(QMouseEvent* e) override;
    void paintEvent(QPaintEvent* e) override;

private Q_SLOTS:
    void mouseClick();

private:
    QTimer* m_clickTimer = nullptr;
};

/**
 * The tab of one document: its title, icon and changed mark come from the sub-window's
 * widget, and follow it. It has a close mark, a two-pixel progress line and an upload
 * animation; it can be dragged onto another tab of its bar to reorder.
 */
class NORVIKOFFICEUI_EXPORT KDocTab : public QWidget
{
    Q_OBJECT
public:
    KDocTab(QMdiSubWindow* subWindow, KDocTabbar* tabBar, QWidget* parent);
    ~KDocTab() override;

    QString text() const { return m_text; }
    void setText(const QString& text);
    QIcon icon() const { return m_icon; }
    void setIcon(const QIcon& icon);
    QString playImage() const { return m_playImage; }
    /**
     * Plays the animation at path over the icon (an upload in progress); an empty path stops
     * it. A file that is no valid animation leaves the tab as it was.
     */
    void setPlayImage(const QString& path);
    /// Turns the icon slowly while something is uploading; a null pixmap stops it.
    void setPlayImage(QPixmap& pixmap);
    bool isPlaying() const;
    void setBackGround(const QBrush& brush);
    QMdiSubWindow* subWindow() const { return m_subWindow.data(); }
    KDocTabbar* tabBar() const { return m_tabBar; }
    bool isChecked() const { return m_checked; }
    void setChecked(bool checked);
    bool isModified() const { return m_modified; }
    /// Whether the window holding the tab is the active one.
    bool active() const;
    void setProgressBarVisible(bool visible);
    bool isProgressBarVisible() const;
    /// Values up to 99 show the progress line; 100 and above hide it for good.
    void setProgressValue(int value);
    int progressValue() const { return m_progressValue; }
    /// Deletes the tab later, or, while one of its own handlers runs, when that handler ends.
    void deleteWhenCan();

    void initStyleOption(KStyleOptionDocTab* option) const;
    QSize sizeHint() const override;
    QSize minimumSizeHint() const override;

Q_SIGNALS:
    void clicked();
    void closeBtnClicked();
    void dblClicked();
    void rightClicked();

protected:
    bool eventFilter(QObject* object, QEvent* event) override;
    void paintEvent(QPaintEvent* e) override;
    void mousePressEvent(QMouseEvent* e) override;
    void mouseReleaseEvent(QMouseEvent* e) override;
    void mouseMoveEvent(QMouseEvent* e) override;
    void mouseDoubleClickEvent(QMouseEvent* e) override;
    void enterEvent(QEnterEvent* e) override;
    void leaveEvent(QEvent* e) override;
    void dragEnterEvent(QDragEnterEvent* e) override;
    void dragLeaveEvent(QDragLeaveEvent* e) override;
    void dropEvent(QDropEvent* e) override;
    void resizeEvent(QResizeEvent* e) override;

private:
    bool _hitsClose(const QPoint& pos) const;
    void _syncFromWidget();
    void _placeProgressBar();
    /// The drag's source tab when it belongs to this bar; null for anything else.
    KDocTab* _draggedTab(const QMimeData* mime, QObject* source) const;

    QPointer<QMdiSubWindow> m_subWindow;
    QPointer<QWidget> m_watched;
    KDocTabbar* m_tabBar = nullptr;
    QString m_text;
    QIcon m_icon;
    QString m_playImage;
    QLabel* m_movieLabel = nullptr;
    QVariantAnimation* m_spin = nullptr;
    QPixmap m_spinPixmap;
    int m_progressValue = 0;
    QProgressBar* m_progressBar = nullptr;
    QBrush m_background;
    bool m_checked = false;
    bool m_modified = false;
    bool m_hover = false;
    bool m_closeHover = false;
    bool m_closeDown = false;
    bool m_dropTarget = false;
    QPoint m_pressPos;
    bool m_dragArmed = false;
    bool* m_deleteFlag = nullptr;
};

/**
 * The strip of document tabs above an MDI area: one KDocTab per QMdiSubWindow, in the order
 * of the two parallel lists it keeps. It tells which sub-window became current; the area
 * keeps its own active window in agreement (see KMdiArea).
 */
class NORVIKOFFICEUI_EXPORT KDocTabbar : public QWidget
{
    Q_OBJECT
public:
    explicit KDocTabbar(QWidget* parent = nullptr);
    ~KDocTabbar() override;

    void addSubWindow(QMdiSubWindow* subWindow, bool setCurrent);
    /// An index outside 0..count() appends.
    void insertSubWindow(int index, QMdiSubWindow* subWindow, bool setCurrent);
    void removeTab(int index);
    void removeTab(QMdiSubWindow* subWindow);
    void removeTab(KDocTab* tab);
    /**
     * Removes the tab of subWindow and announces it with subWindowRemoved(). A tab's close
     * mark announces its sub-window the same way, before anything is removed: the area
     * answers by closing the window.
     */
    void removeSubWindow(QMdiSubWindow* subWindow);
    void moveTab(int from, int to);

    int count() const { return m_tabs.size(); }
    int currentIndex() const { return m_currentIndex; }
    KDocTab* currentTab() const { return m_tabs.value(m_currentIndex); }
    QMdiSubWindow* currentSubWindow() const { return m_subWindows.value(m_currentIndex); }
    KDocTab* tabButton(int index) const { return m_tabs.value(index); }
    QMdiSubWindow* subWindowAt(int index) const { return m_subWindows.value(index); }
    /// The index of subWindow's tab, -1 when it has none. Compares addresses only.
    int findSubWindow(QMdiSubWindow* subWindow) const { return m_subWindows.indexOf(subWindow); }
    KDocTab* findSubWindowTab(QMdiSubWindow* subWindow) const;
    int indexOf(KDocTab* tab) const { return m_tabs.indexOf(tab); }
    bool isFirstTab(KDocTab* tab) const;
    bool isLastTab(KDocTab* tab) const;
    /// The next and previous tab that isn't hidden, or null.
    KDocTab* nextTab(KDocTab* tab) const;
    KDocTab* prevTab(KDocTab* tab) const;

    void setCurrentIndex(int index);
    void setCurrentTab(KDocTab* tab);
    void setCurrentSubWindow(QMdiSubWindow* subWindow);
    void activeNextTab(bool wrap);
    void activePrevTab(bool wrap);
    void activeLastActivedTab();
    void setTabVisible(QMdiSubWindow* subWindow, bool visible);
    /// Puts the new-tab button for cmd at the end of the strip (replacing any earlier one).
    void setExtendButton(KCommand* cmd);
    KTabBarNewButton* extendButton() const { return m_extendButton.data(); }

    QWidget* viewport() const { return m_viewport; }
    KDocTabbarLayout* tabLayout() const { return m_layout; }

Q_SIGNALS:
    void currentSubWindowChanged(QMdiSubWindow* subWindow);
    void subWindowRemoved(QMdiSubWindow* subWindow);
    void rightClicked(int idx);
    void tabRemoved(int index);
    /// A double click on a tab.
    void doubleClicked();

protected:
    void wheelEvent(QWheelEvent* e) override;
    void resizeEvent(QResizeEvent* e) override;

private Q_SLOTS:
    void onTabClicked();
    void onTabClosed();
    void onTabDblClicked();
    void onTabRightClicked();
    void onScrollRequested(bool forward);
    void onTabItemHidden(bool hidden);
    void onSubWindowDestroyed(QObject* object);

private:
    QPointer<KTabBarNewButton> m_extendButton;
    QWidget* m_viewport = nullptr;
    QPointer<KDocTab> m_lastActiveTab;
    KDocTabbarLayout* m_layout = nullptr;
    QHBoxLayout* m_outerLayout = nullptr;
    int m_currentIndex = -1;
    QList<QMdiSubWindow*> m_subWindows;
    QList<KDocTab*> m_tabs;
    // Each sub-window's QObject, taken while it was whole: destroyed() hands over no more.
    QHash<QMdiSubWindow*, QObject*> m_objects;
};

#endif // KDOCTABBAR_H
