#ifndef KSCROLLGALLERYVIEW_H
#define KSCROLLGALLERYVIEW_H

#include <QMargins>
#include <QPointer>

#include <kgalleryview.h>

class QHBoxLayout;
class QScrollBar;
class QVBoxLayout;

/**
 * A KGalleryView (normal view type) with a vertical scroll bar beside it, which shows only
 * while the gallery is taller than the band. The size hint is at most half the height of
 * the screen, so that a long gallery scrolls in its own band rather than in a scroll area of
 * the popup around it.
 */
class NORVIKOFFICEUI_EXPORT KScrollGalleryView : public KGalleryViewBase
{
    Q_OBJECT
public:
    KScrollGalleryView(KGalleryAbstractModel* model, QWidget* parent = nullptr, bool verticalLoopMove = false);
    ~KScrollGalleryView() override;

    KGalleryView* view() const { return m_view; }
    QScrollBar* scrollBar() const { return m_scrollBar; }
    QMargins margins() const { return QMargins(1, 1, 1, 1); }

    KGalleryAbstractModel* model() const override;
    void setMaxViewNum(int num) override;
    KGalleryViewType viewType() const override;
    bool isSyncLastClickedViewport() const override;
    void setSyncLastClickedViewport(bool sync) override;
    void scrollToTop() override;
    void scrollToIndex(int index) override;
    int showItems() const override;
    QSize sizeHint() const override;

Q_SIGNALS:
    void showed();
    void reachToViewTop(Qt::Key key);
    void reachToViewBottom(Qt::Key key);

public Q_SLOTS:
    void scrollTo(int viewPort);
    void updateScroll();

protected:
    void showEvent(QShowEvent* e) override;
    void focusInEvent(QFocusEvent* e) override;

private:
    KGalleryView* m_view;
    QScrollBar* m_scrollBar;
    QHBoxLayout* m_layout;
};

/**
 * A short gallery of recently used elements over a scrolling one; the two share the
 * keyboard: Up past the top of the scrolling gallery goes on in the short one, Down past
 * its bottom comes back. At most maxFixedItem() (8 at first) recent elements are kept,
 * newest first; a fixed bottom element, when set, stays last.
 *
 * The recent elements belong to fixedModel(): a host makes each one for that model and
 * hands it to insertFixedViewItem().
 */
class NORVIKOFFICEUI_EXPORT KFixedScrollGalleryView : public KGalleryViewBase
{
    Q_OBJECT
public:
    KFixedScrollGalleryView(KGalleryAbstractModel* model, QWidget* parent = nullptr);
    ~KFixedScrollGalleryView() override;

    KGalleryView* fixedView() const { return m_fixedView; }
    KGalleryAbstractModel* fixedModel() const { return m_fixedModel; }
    KScrollGalleryView* scrollView() const { return m_scrollView; }
    QWidget* currentFocusView() const { return m_currentFocusView; }

    /**
     * Puts item at index of the recent list. Refused (the caller keeps the item) when it is
     * null, not isFixed(), or an element of the same text is already listed. The oldest
     * element beyond maxFixedItem() goes.
     */
    bool insertFixedViewItem(int index, KGalleryModelAbstractItem* item);
    int maxFixedItem() const { return m_maxFixedItem; }
    /// Accepted below 9; otherwise 8 is kept and false returned.
    bool setMaxFixedItem(int count);
    /// An element of the recent list that stays last.
    void setFixedBottom(KGalleryModelAbstractItem* item);
    int getLastFixedViewItemIndex() const;
    /// Makes the enabled, unchecked recent element of that text current and clicks it.
    bool checkFixedItem(const QString& text);
    bool checkFixedItem(KGalleryModelAbstractItem* item);
    void uncheckFixedItem();

    KGalleryAbstractModel* model() const override;
    void setMaxViewNum(int num) override;
    KGalleryViewType viewType() const override;
    bool isSyncLastClickedViewport() const override;
    void setSyncLastClickedViewport(bool sync) override;
    void scrollToTop() override;
    void scrollToIndex(int index) override;
    int showItems() const override;
    QSize sizeHint() const override;

Q_SIGNALS:
    void showed();
    void fixedIdxClick(const QString& text);
    void shieldKeyPress(Qt::Key key);

public Q_SLOTS:
    void on_fixedModelItemIndexClick(int index);
    void on_fixedView_bottom(Qt::Key key);
    void on_scrollView_top(Qt::Key key);

protected:
    bool eventFilter(QObject* watched, QEvent* e) override;
    void showEvent(QShowEvent* e) override;

private:
    void _updateFixedHeight();

    KGalleryAbstractModel* m_fixedModel;
    KGalleryView* m_fixedView;
    KScrollGalleryView* m_scrollView;
    QVBoxLayout* m_layout;
    int m_maxFixedItem = 8;
    QPointer<QWidget> m_currentFocusView;
    QPointer<KGalleryModelAbstractItem> m_fixedBottom;
};

#endif // KSCROLLGALLERYVIEW_H
