#ifndef KGALLERYVIEW_H
#define KGALLERYVIEW_H

#include <QList>
#include <QObject>
#include <QPointer>
#include <QRect>
#include <QWidget>

#include <kgalleryabstractmodel.h>

class KHotKeyCollectEvent;
class KHotKeyTriggerEvent;

/**
 * The common face of the gallery views, so that a gallery widget or combo box can hold any
 * of them. The base answers null, false or 0 throughout.
 */
class NORVIKOFFICEUI_EXPORT KGalleryViewBase : public QWidget
{
    Q_OBJECT
public:
    /// The kinds of list a gallery combo box can make.
    enum GalleryViewType {
        ScrollView = 0,     ///< KScrollGalleryView
        FixedScrollView = 1 ///< KFixedScrollGalleryView: recently used elements above
    };

    explicit KGalleryViewBase(QWidget* parent = nullptr);
    ~KGalleryViewBase() override;

    virtual KGalleryAbstractModel* model() const;
    /// How many rows (cells) the size hint counts; -1 for all.
    virtual void setMaxViewNum(int num);
    virtual KGalleryViewType viewType() const;
    virtual bool isSyncLastClickedViewport() const;
    virtual void setSyncLastClickedViewport(bool sync);
    virtual void scrollToTop();
    virtual void scrollToIndex(int index);
    /// How many rows fit in the visible band.
    virtual int showItems() const;
};

class KGalleryView;

/**
 * One cell of one view: the element it shows and where, in the view's content coordinates
 * (before the vertical offset). Everything else is asked of the element.
 */
class NORVIKOFFICEUI_EXPORT KGalleryViewItem : public QObject
{
    Q_OBJECT
public:
    KGalleryViewItem(KGalleryModelAbstractItem* item, KGalleryView* view);
    ~KGalleryViewItem() override;

    /// Null once the element is gone.
    KGalleryModelAbstractItem* getItemModel() const { return m_item.data(); }
    QRect gemetry() const { return m_geometry; }
    void setGemetry(const QRect& rect) { m_geometry = rect; }
    int row() const { return m_row; }
    void setRow(int row) { m_row = row; }
    int coloum() const { return m_column; }
    void setColoum(int column) { m_column = column; }

    bool isExpanding(KGalleryViewType viewType) const;
    bool isVisible(KGalleryViewType viewType) const;
    bool isCheckeable() const;
    bool isHovereable() const;
    bool canPopup() const;
    int vSpace() const;
    int hSpace() const;
    bool isNewLine() const;
    QString detail() const;
    KCommand* command() const;
    QSize sizeHint() const;
    void drawItem(QPainter& painter, KGalleryViewType viewType) const;
    void prepareDrawItem(QPainter& painter, KGalleryViewType viewType);

private:
    QPointer<KGalleryModelAbstractItem> m_item;
    QRect m_geometry;
    int m_row = 0;
    int m_column = 0;
};

/**
 * Lays the elements of a model out in rows, paints the ones in sight and turns mouse and
 * keys into calls of the model. It keeps a vertical offset of its own (viewPort()) instead
 * of scrolling in a QScrollArea, so that a popup can page through it and a ribbon band can
 * step through it row by row.
 *
 * Nothing is built before the first show or size query: then the model's fecthItems()
 * runs and one cell is made per element. A click goes to the model's clickIndex(); when
 * that accepts it, the dismiss event goes up the parents and closes the popups on the way.
 *
 * The model is not owned; a model deleted first leaves an empty view.
 */
class NORVIKOFFICEUI_EXPORT KGalleryView : public KGalleryViewBase
{
    Q_OBJECT
public:
    using ViewType = KGalleryViewType;
    static constexpr ViewType Normal = KGalleryViewNormal;
    static constexpr ViewType Compact = KGalleryViewCompact;

    KGalleryView(KGalleryAbstractModel* model, ViewType viewType, QWidget* parent = nullptr,
                 bool verticalLoopMove = false);
    ~KGalleryView() override;

    KGalleryAbstractModel* model() const override;
    void setMaxViewNum(int num) override;
    ViewType viewType() const override { return m_viewType; }
    bool isSyncLastClickedViewport() const override { return m_syncLastClickedViewport; }
    void setSyncLastClickedViewport(bool sync) override;
    void scrollToTop() override;
    void scrollToIndex(int index) override;
    int showItems() const override;

    int count() const { return m_items.size(); }
    KGalleryViewItem* item(int index) const { return m_items.value(index); }
    /// Builds the cells at once (normally the first show or size query does).
    void toReady();
    bool isReady() const { return m_ready; }

    int viewPort() const { return m_viewPort; }
    void setViewPort(int viewPort);
    int maxViewPort() const { return m_maxViewPort; }
    void setMaxViewPort(int maxViewPort);
    /// Scrolls so that the cell's top is the top of the band; -1 with room to scroll does nothing.
    void setViewPortTo(int index);
    /// The offset of one wheel notch or button step: the tallest row once laid out.
    int step() const { return m_step; }
    int maxWidth() const { return m_maxWidth; }
    void clearMaxWidth() { m_maxWidth = 0; }
    int contentHeight() const { return m_contentHeight; }
    int rowHeight() const { return m_rowHeight; }
    bool isVerticalLoopMove() const { return m_verticalLoopMove; }
    /// Swallows the next mouse release (the one that closed a popup over the view).
    void setPressIgnored(bool ignored) { m_pressIgnored = ignored; }

    /// The cell index at pos (widget coordinates); -1 outside every visible cell.
    int hitTest(const QPoint& pos) const;
    /// Hovers the cell, scrolling it into sight first; a bad index hovers the first.
    void hoverItem(int index);
    /// Lays the cells out again for the present width.
    void renderWidgets();

    // Keyboard walks; -1 when there is nowhere to go.
    int getPrevItem() const;
    int getNextItem() const;
    int getLeftItem() const;
    int getRightItem() const;
    int getFirstItem() const;
    int getLastItem() const;
    int getPageDownItem() const;
    int getPageUpItem() const;

    QSize sizeHint() const override;

Q_SIGNALS:
    void viewPortChanged();
    /// Up went past the first row (no vertical loop).
    void reachToViewTop(Qt::Key key);
    /// Down went past the last row (no vertical loop).
    void reachToViewBottom(Qt::Key key);

public Q_SLOTS:
    void syncLastClickedViewPort(int index);
    void elementInserted(int idx, KGalleryModelAbstractItem* modelItem);
    void elementRemoved(int idx);
    void updateItem(int index);

protected:
    bool event(QEvent* e) override;
    void paintEvent(QPaintEvent* e) override;
    void resizeEvent(QResizeEvent* e) override;
    void showEvent(QShowEvent* e) override;
    void hideEvent(QHideEvent* e) override;
    void leaveEvent(QEvent* e) override;
    void wheelEvent(QWheelEvent* e) override;
    void mouseMoveEvent(QMouseEvent* e) override;
    void mousePressEvent(QMouseEvent* e) override;
    void mouseReleaseEvent(QMouseEvent* e) override;
    void mouseDoubleClickEvent(QMouseEvent* e) override;
    void keyPressEvent(QKeyEvent* e) override;
    void keyReleaseEvent(QKeyEvent* e) override;
    void focusInEvent(QFocusEvent* e) override;

private:
    bool _walkable(int index) const;
    int _startIndex() const;
    void _sendDismiss();
    void _collectHotKey(KHotKeyCollectEvent* e);
    void _triggerHotKey(KHotKeyTriggerEvent* e);
    void _onModelDestroyed();

    QList<KGalleryViewItem*> m_items;
    QPointer<KGalleryAbstractModel> m_model;
    bool m_ready = false;
    bool m_syncLastClickedViewport = true;
    int m_viewPort = 0;
    int m_maxViewPort = 0;
    int m_step = 15;
    int m_maxWidth = 0;
    int m_contentHeight = 0;
    int m_rowHeight = 0;
    int m_maxViewNum = -1;
    ViewType m_viewType;
    bool m_pressIgnored = false;
    bool m_verticalLoopMove;
};

#endif // KGALLERYVIEW_H
