#include "kscrollgalleryview.h"

#include <QBoxLayout>
#include <QKeyEvent>
#include <QScreen>
#include <QScrollBar>

// --- KScrollGalleryView ---

KScrollGalleryView::KScrollGalleryView(KGalleryAbstractModel* model, QWidget* parent, bool verticalLoopMove)
    : KGalleryViewBase(parent)
    , m_view(new KGalleryView(model, KGalleryViewNormal, this, verticalLoopMove))
    , m_scrollBar(new QScrollBar(Qt::Vertical, this))
    , m_layout(new QHBoxLayout(this))
{
    m_layout->setContentsMargins(1, 1, 0, 1);
    m_layout->setSpacing(0);
    m_layout->addWidget(m_view);
    m_scrollBar->hide();
    setFocusProxy(m_view);
    connect(m_view, &KGalleryView::reachToViewTop, this, &KScrollGalleryView::reachToViewTop);
    connect(m_view, &KGalleryView::reachToViewBottom, this, &KScrollGalleryView::reachToViewBottom);
    connect(m_scrollBar, &QScrollBar::valueChanged, this, &KScrollGalleryView::scrollTo);
}

KScrollGalleryView::~KScrollGalleryView() = default;

KGalleryAbstractModel* KScrollGalleryView::model() const
{
    return m_view->model();
}

void KScrollGalleryView::setMaxViewNum(int num)
{
    m_view->setMaxViewNum(num);
    updateGeometry();
}

KGalleryViewType KScrollGalleryView::viewType() const
{
    return m_view->viewType();
}

bool KScrollGalleryView::isSyncLastClickedViewport() const
{
    return m_view->isSyncLastClickedViewport();
}

void KScrollGalleryView::setSyncLastClickedViewport(bool sync)
{
    m_view->setSyncLastClickedViewport(sync);
}

void KScrollGalleryView::scrollToTop()
{
    scrollTo(0);
}

void KScrollGalleryView::scrollToIndex(int index)
{
    m_view->scrollToIndex(index);
}

int KScrollGalleryView::showItems() const
{
    return m_view->step() > 0 ? m_view->height() / m_view->step() : 0;
}

void KScrollGalleryView::scrollTo(int viewPort)
{
    m_view->setViewPort(viewPort);
}

void KScrollGalleryView::updateScroll()
{
    if (m_view->maxViewPort() == 0) {
        m_scrollBar->hide();
        m_view->setViewPort(0);
        return;
    }
    if (m_layout->indexOf(m_scrollBar) < 0)
        m_layout->addWidget(m_scrollBar);
    m_scrollBar->show();
    const QSignalBlocker blocker(m_scrollBar);
    m_scrollBar->setRange(0, m_view->maxViewPort());
    m_scrollBar->setSingleStep(m_view->step());
    m_scrollBar->setPageStep(qMax(m_view->step(), m_view->height()));
    m_scrollBar->setValue(m_view->viewPort());
}

QSize KScrollGalleryView::sizeHint() const
{
    const QMargins m = margins();
    const int minWidth = qMax(0, minimumWidth() - m.left() - m.right());
    if (m_view->minimumWidth() != minWidth) {
        m_view->setMinimumWidth(minWidth);
        // The rows depend on the width: lay them out for the new one before measuring.
        if (m_view->isReady())
            m_view->renderWidgets();
    }
    QSize hint = m_view->sizeHint().grownBy(m);
    if (m_scrollBar->isVisibleTo(this))
        hint.rwidth() += m_scrollBar->sizeHint().width();
    // A long gallery scrolls in its own band.
    const QScreen* s = screen();
    const int cap = s ? s->availableGeometry().height() / 2 : 500;
    if (hint.height() > cap) {
        hint.setHeight(cap);
        if (!m_scrollBar->isVisibleTo(this))
            hint.rwidth() += m_scrollBar->sizeHint().width();
    }
    return hint;
}

void KScrollGalleryView::showEvent(QShowEvent* e)
{
    KGalleryViewBase::showEvent(e);
    m_view->toReady();
    updateScroll();
    Q_EMIT showed();
    connect(m_view, &KGalleryView::viewPortChanged, this, &KScrollGalleryView::updateScroll, Qt::UniqueConnection);
}

void KScrollGalleryView::focusInEvent(QFocusEvent* e)
{
    KGalleryViewBase::focusInEvent(e);
    m_view->setFocus(e->reason());
}

// --- KFixedScrollGalleryView ---

KFixedScrollGalleryView::KFixedScrollGalleryView(KGalleryAbstractModel* model, QWidget* parent)
    : KGalleryViewBase(parent)
    , m_fixedModel(new KGalleryAbstractModel(this))
    , m_fixedView(new KGalleryView(m_fixedModel, KGalleryViewNormal, this, false))
    , m_scrollView(new KScrollGalleryView(model, this, false))
    , m_layout(new QVBoxLayout(this))
{
    m_layout->setContentsMargins(1, 1, 0, 1);
    m_layout->setSpacing(0);
    m_layout->addWidget(m_fixedView);
    m_layout->addWidget(m_scrollView);
    m_fixedView->hide();
    m_currentFocusView = m_scrollView;
    setFocusProxy(m_scrollView);
    m_fixedView->installEventFilter(this);
    m_scrollView->view()->installEventFilter(this);
    connect(m_fixedModel, &KGalleryAbstractModel::indexClicked, this,
            &KFixedScrollGalleryView::on_fixedModelItemIndexClick);
    connect(m_fixedView, &KGalleryView::reachToViewBottom, this, &KFixedScrollGalleryView::on_fixedView_bottom);
    connect(m_scrollView, &KScrollGalleryView::reachToViewTop, this, &KFixedScrollGalleryView::on_scrollView_top);
    connect(m_scrollView, &KScrollGalleryView::showed, this, &KFixedScrollGalleryView::showed);
}

KFixedScrollGalleryView::~KFixedScrollGalleryView() = default;

bool KFixedScrollGalleryView::insertFixedViewItem(int index, KGalleryModelAbstractItem* item)
{
    if (!item || !item->isFixed())
        return false;
    for (int i = 0; i < m_fixedModel->count(); ++i) {
        if (m_fixedModel->element(i)->text() == item->text())
            return false;
    }
    uncheckFixedItem();
    m_fixedModel->insertElement(index, item);
    if (m_fixedModel->count() > m_maxFixedItem)
        m_fixedModel->removeElement(getLastFixedViewItemIndex());
    _updateFixedHeight();
    return true;
}

bool KFixedScrollGalleryView::setMaxFixedItem(int count)
{
    if (count >= 0 && count < 9) {
        m_maxFixedItem = count;
        return true;
    }
    m_maxFixedItem = 8;
    return false;
}

void KFixedScrollGalleryView::setFixedBottom(KGalleryModelAbstractItem* item)
{
    m_fixedBottom = item;
}

int KFixedScrollGalleryView::getLastFixedViewItemIndex() const
{
    const int n = m_fixedModel->count();
    // The fixed bottom element stays: the one before it goes.
    if (m_fixedBottom && m_fixedModel->indexOf(m_fixedBottom) == n - 1)
        return n - 2;
    return n - 1;
}

bool KFixedScrollGalleryView::checkFixedItem(const QString& text)
{
    bool found = false;
    for (int i = 0; i < m_fixedModel->count(); ++i) {
        KGalleryModelAbstractItem* element = m_fixedModel->element(i);
        if (!found && element->text() == text && element->isEnabled() && !element->isChecked()) {
            m_fixedModel->setCurrentIndex(i);
            m_fixedModel->clickIndex(i);
            found = true;
            continue;
        }
        element->setHovered(false);
    }
    return found;
}

bool KFixedScrollGalleryView::checkFixedItem(KGalleryModelAbstractItem* item)
{
    if (!item || !item->isVisible() || !item->isEnabled())
        return false;
    return checkFixedItem(item->text());
}

void KFixedScrollGalleryView::uncheckFixedItem()
{
    const int current = m_fixedModel->currentIndex();
    if (current >= 1 && current < m_fixedModel->count())
        m_fixedModel->element(current)->setChecked(false);
}

void KFixedScrollGalleryView::_updateFixedHeight()
{
    m_fixedView->setVisible(m_fixedModel->count() > 0);
    m_fixedView->setFixedHeight(m_fixedView->sizeHint().height());
    updateGeometry();
}

KGalleryAbstractModel* KFixedScrollGalleryView::model() const
{
    return m_scrollView->model();
}

void KFixedScrollGalleryView::setMaxViewNum(int num)
{
    m_scrollView->setMaxViewNum(num);
}

KGalleryViewType KFixedScrollGalleryView::viewType() const
{
    return m_scrollView->viewType();
}

bool KFixedScrollGalleryView::isSyncLastClickedViewport() const
{
    return m_scrollView->isSyncLastClickedViewport();
}

void KFixedScrollGalleryView::setSyncLastClickedViewport(bool sync)
{
    m_scrollView->setSyncLastClickedViewport(sync);
}

void KFixedScrollGalleryView::scrollToTop()
{
    m_scrollView->scrollToTop();
}

void KFixedScrollGalleryView::scrollToIndex(int index)
{
    m_scrollView->scrollToIndex(index);
}

int KFixedScrollGalleryView::showItems() const
{
    return m_scrollView->showItems();
}

QSize KFixedScrollGalleryView::sizeHint() const
{
    QSize hint = m_scrollView->sizeHint().grownBy(QMargins(1, 1, 1, 1));
    if (m_fixedModel->count() > 0)
        hint.rheight() += m_fixedView->sizeHint().height();
    return hint;
}

void KFixedScrollGalleryView::on_fixedModelItemIndexClick(int index)
{
    if (index < 0 || index >= m_fixedModel->count())
        return;
    Q_EMIT fixedIdxClick(m_fixedModel->element(index)->text());
}

void KFixedScrollGalleryView::on_scrollView_top(Qt::Key)
{
    if (m_fixedModel->count() == 0)
        return;
    if (KGalleryAbstractModel* main = m_scrollView->model())
        main->hoverIndex(-1);
    m_fixedView->setFocus(Qt::OtherFocusReason);
    m_currentFocusView = m_fixedView;
    m_fixedModel->clearStatus();
    m_fixedModel->hoverIndex(m_fixedModel->count() - 1);
}

void KFixedScrollGalleryView::on_fixedView_bottom(Qt::Key)
{
    m_fixedModel->clearStatus();
    m_scrollView->view()->setFocus(Qt::OtherFocusReason);
    m_currentFocusView = m_scrollView;
    m_scrollView->view()->hoverItem(m_scrollView->view()->getFirstItem());
}

bool KFixedScrollGalleryView::eventFilter(QObject* watched, QEvent* e)
{
    if (watched == m_fixedView && (e->type() == QEvent::MouseMove || e->type() == QEvent::Leave))
        m_fixedModel->clearStatus();
    if (e->type() == QEvent::KeyPress && (watched == m_fixedView || watched == m_scrollView->view())) {
        const auto key = Qt::Key(static_cast<QKeyEvent*>(e)->key());
        switch (key) {
        case Qt::Key_Left:
        case Qt::Key_Right:
        case Qt::Key_Home:
        case Qt::Key_End:
        case Qt::Key_PageDown:
        case Qt::Key_PageUp:
            Q_EMIT shieldKeyPress(key);
            return true;
        default:
            break;
        }
    }
    return KGalleryViewBase::eventFilter(watched, e);
}

void KFixedScrollGalleryView::showEvent(QShowEvent* e)
{
    KGalleryViewBase::showEvent(e);
    _updateFixedHeight();
}
