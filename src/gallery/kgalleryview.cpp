#include "kgalleryview.h"

#include <QCoreApplication>
#include <QKeyEvent>
#include <QPainter>
#include <QPaintEvent>
#include <QToolTip>
#include <QWheelEvent>

#include <kapplication.h>
#include <kcommand.h>
#include <kdrawhelpfunc.h>
#include <kevent.h>
#include <khotkeyevent.h>

// --- KGalleryViewBase ---

KGalleryViewBase::KGalleryViewBase(QWidget* parent)
    : QWidget(parent)
{
}

KGalleryViewBase::~KGalleryViewBase() = default;

KGalleryAbstractModel* KGalleryViewBase::model() const
{
    return nullptr;
}

void KGalleryViewBase::setMaxViewNum(int)
{
}

KGalleryViewType KGalleryViewBase::viewType() const
{
    return KGalleryViewNormal;
}

bool KGalleryViewBase::isSyncLastClickedViewport() const
{
    return false;
}

void KGalleryViewBase::setSyncLastClickedViewport(bool)
{
}

void KGalleryViewBase::scrollToTop()
{
}

void KGalleryViewBase::scrollToIndex(int)
{
}

int KGalleryViewBase::showItems() const
{
    return 0;
}

// --- KGalleryViewItem ---

KGalleryViewItem::KGalleryViewItem(KGalleryModelAbstractItem* item, KGalleryView* view)
    : QObject(view)
    , m_item(item)
{
}

KGalleryViewItem::~KGalleryViewItem() = default;

bool KGalleryViewItem::isExpanding(KGalleryViewType viewType) const
{
    return m_item && m_item->isExpanding(viewType);
}

bool KGalleryViewItem::isVisible(KGalleryViewType viewType) const
{
    return m_item && m_item->isVisible(viewType);
}

bool KGalleryViewItem::isCheckeable() const
{
    return m_item && m_item->isCheckeable();
}

bool KGalleryViewItem::isHovereable() const
{
    return m_item && m_item->isEnabled();
}

bool KGalleryViewItem::canPopup() const
{
    return m_item && m_item->contextMenuCommand();
}

int KGalleryViewItem::vSpace() const
{
    return m_item ? m_item->vSpace() : 0;
}

int KGalleryViewItem::hSpace() const
{
    return m_item ? m_item->hSpace() : 0;
}

bool KGalleryViewItem::isNewLine() const
{
    return m_item && m_item->isNewLine();
}

QString KGalleryViewItem::detail() const
{
    return m_item ? m_item->detail() : QString();
}

KCommand* KGalleryViewItem::command() const
{
    return m_item ? m_item->command() : nullptr;
}

QSize KGalleryViewItem::sizeHint() const
{
    return m_item ? m_item->sizeHint() : QSize(0, 0);
}

void KGalleryViewItem::drawItem(QPainter& painter, KGalleryViewType viewType) const
{
    if (isVisible(viewType))
        m_item->drawItem(painter, m_geometry, viewType);
}

void KGalleryViewItem::prepareDrawItem(QPainter& painter, KGalleryViewType viewType)
{
    if (isVisible(viewType))
        m_item->prepareDrawItem(painter, m_geometry, viewType);
}

// --- KGalleryView ---

KGalleryView::KGalleryView(KGalleryAbstractModel* model, ViewType viewType, QWidget* parent, bool verticalLoopMove)
    : KGalleryViewBase(parent)
    , m_model(model)
    , m_viewType(viewType)
    , m_verticalLoopMove(verticalLoopMove)
{
    if (KApplication* app = KApplication::instance())
        app->addThemeChangeWidget(this);
    setMouseTracking(true);
    setFocusPolicy(Qt::StrongFocus);
    if (model)
        connect(model, &QObject::destroyed, this, &KGalleryView::_onModelDestroyed);
}

KGalleryView::~KGalleryView() = default;

KGalleryAbstractModel* KGalleryView::model() const
{
    return m_model.data();
}

void KGalleryView::setMaxViewNum(int num)
{
    if (num == m_maxViewNum)
        return;
    m_maxViewNum = num;
    updateGeometry();
}

void KGalleryView::setSyncLastClickedViewport(bool sync)
{
    m_syncLastClickedViewport = sync;
}

void KGalleryView::scrollToTop()
{
    setViewPort(0);
}

void KGalleryView::scrollToIndex(int index)
{
    setViewPortTo(index);
}

int KGalleryView::showItems() const
{
    return m_step > 0 ? height() / m_step : 0;
}

void KGalleryView::toReady()
{
    if (m_ready)
        return;
    m_ready = true;
    KGalleryAbstractModel* model = m_model.data();
    if (!model)
        return;
    // A lazy model builds its list here, on the first showing.
    model->fecthItems();
    // One cell per element and one layout: a cell per insertion would lay the whole list
    // out again each time.
    const QList<KGalleryModelAbstractItem*> elements = model->elements();
    for (KGalleryModelAbstractItem* element : elements)
        m_items.append(new KGalleryViewItem(element, this));
    connect(model, &KGalleryAbstractModel::currentIndexChanged, this, &KGalleryView::syncLastClickedViewPort);
    connect(model, &KGalleryAbstractModel::statusChanged, this, &KGalleryView::updateItem);
    connect(model, &KGalleryAbstractModel::changed, this, &KGalleryView::renderWidgets);
    connect(model, &KGalleryAbstractModel::elementInserted, this, &KGalleryView::elementInserted);
    connect(model, &KGalleryAbstractModel::elementRemoved, this, &KGalleryView::elementRemoved);
    renderWidgets();
}

void KGalleryView::_onModelDestroyed()
{
    qDeleteAll(m_items);
    m_items.clear();
    m_contentHeight = 0;
    setMaxViewPort(0);
    setViewPort(0);
    updateGeometry();
    update();
}

void KGalleryView::elementInserted(int idx, KGalleryModelAbstractItem* modelItem)
{
    if (idx < 0 || idx > m_items.size())
        idx = m_items.size();
    m_items.insert(idx, new KGalleryViewItem(modelItem, this));
    renderWidgets();
    updateGeometry();
}

void KGalleryView::elementRemoved(int idx)
{
    if (idx < 0 || idx >= m_items.size())
        return;
    delete m_items.takeAt(idx);
    renderWidgets();
    updateGeometry();
}

void KGalleryView::updateItem(int index)
{
    if (KGalleryViewItem* cell = m_items.value(index))
        update(cell->gemetry().translated(0, -m_viewPort));
}

void KGalleryView::renderWidgets()
{
    const bool resized = testAttribute(Qt::WA_Resized);
    const int w = qMax(resized ? width() : 400, minimumWidth());
    const bool fixedSize = m_model && m_model->isFixedSize();
    const QSize hintBefore(m_maxWidth, m_contentHeight);
    int x = 0;
    int y = 0;
    int lineHeight = 0;
    int row = 0;
    int column = 0;
    m_rowHeight = 0;
    for (KGalleryViewItem* cell : std::as_const(m_items)) {
        if (!cell->isVisible(m_viewType)) {
            cell->setGemetry(QRect());
            continue;
        }
        const QSize size = cell->sizeHint();
        if (cell->isExpanding(m_viewType)) {
            // A row of its own, even in mid-line: the open line is closed first, so that no
            // other cell shares its row number.
            if (column > 0)
                ++row;
            cell->setGemetry(QRect(0, y + lineHeight, w, size.height()));
            cell->setRow(row);
            cell->setColoum(0);
            y += size.height() + cell->vSpace() + lineHeight;
            ++row;
            x = 0;
            lineHeight = 0;
            column = 0;
            m_maxWidth = qMax(m_maxWidth, size.width());
            m_rowHeight = qMax(m_rowHeight, size.height() + cell->vSpace());
            continue;
        }
        const bool overflow = x + size.width() > w && !fixedSize;
        if (column > 0 && (overflow || cell->isNewLine())) {
            y += lineHeight;
            ++row;
            lineHeight = 0;
            x = 0;
            column = 0;
        }
        cell->setGemetry(QRect(x, y, size.width(), size.height()));
        cell->setRow(row);
        cell->setColoum(column);
        ++column;
        x += size.width() + cell->hSpace();
        m_maxWidth = qMax(m_maxWidth, x);
        lineHeight = qMax(lineHeight, size.height() + cell->vSpace());
        m_rowHeight = qMax(m_rowHeight, size.height() + cell->vSpace());
    }
    m_contentHeight = y + lineHeight;
    setMaxViewPort(resized ? m_contentHeight - height() : 0);
    if (m_viewPort > m_maxViewPort)
        setViewPort(m_maxViewPort);
    if (m_rowHeight != 0)
        m_step = m_rowHeight;
    // Hidden or shown elements change the size the view asks for.
    if (QSize(m_maxWidth, m_contentHeight) != hintBefore)
        updateGeometry();
    update();
}

void KGalleryView::setViewPort(int viewPort)
{
    viewPort = qBound(0, viewPort, m_maxViewPort);
    if (viewPort == m_viewPort)
        return;
    m_viewPort = viewPort;
    update();
    Q_EMIT viewPortChanged();
}

void KGalleryView::setMaxViewPort(int maxViewPort)
{
    maxViewPort = qMax(0, maxViewPort);
    if (maxViewPort == m_maxViewPort)
        return;
    m_maxViewPort = maxViewPort;
    Q_EMIT viewPortChanged();
}

void KGalleryView::setViewPortTo(int index)
{
    KGalleryViewItem* cell = m_items.value(index);
    if (!cell) {
        if (index == -1 && m_maxViewPort == 0)
            setViewPort(0);
        return;
    }
    setViewPort(cell->gemetry().top());
}

QSize KGalleryView::sizeHint() const
{
    const_cast<KGalleryView*>(this)->toReady();
    int height = m_contentHeight;
    if (m_maxViewNum >= 0) {
        // The bottom of the first maxViewNum rows.
        height = 0;
        for (const KGalleryViewItem* cell : m_items) {
            if (cell->isVisible(m_viewType) && cell->row() < m_maxViewNum)
                height = qMax(height, cell->gemetry().bottom() + 1 + cell->vSpace());
        }
    }
    return QSize(m_maxWidth, height);
}

void KGalleryView::syncLastClickedViewPort(int index)
{
    KGalleryViewItem* cell = m_items.value(index);
    if (!cell || !m_syncLastClickedViewport)
        return;
    const QRect r = cell->gemetry().translated(0, -m_viewPort);
    if (!rect().contains(r))
        setViewPortTo(index);
}

int KGalleryView::hitTest(const QPoint& pos) const
{
    const QPoint p(pos.x(), pos.y() + m_viewPort);
    for (int i = 0; i < m_items.size(); ++i) {
        const KGalleryViewItem* cell = m_items.at(i);
        if (cell->isVisible(m_viewType) && cell->gemetry().contains(p))
            return i;
    }
    return -1;
}

void KGalleryView::hoverItem(int index)
{
    if (m_items.isEmpty())
        return;
    if (index < 0 || index >= m_items.size())
        index = 0;
    const QRect r = m_items.at(index)->gemetry();
    if (r.bottom() - m_viewPort > height() - 1)
        setViewPort(r.bottom() - height() + 1);
    if (r.top() - m_viewPort < 0)
        setViewPort(r.top());
    if (m_model)
        m_model->hoverIndex(index);
}

// --- keyboard walks ---

bool KGalleryView::_walkable(int index) const
{
    const KGalleryViewItem* cell = m_items.value(index);
    return cell && cell->isVisible(m_viewType) && cell->isHovereable();
}

int KGalleryView::_startIndex() const
{
    if (!m_model)
        return -1;
    int start = m_model->getHoveredIndex();
    if (start < 0 || start >= m_items.size())
        start = m_model->currentIndex();
    return start >= 0 && start < m_items.size() ? start : -1;
}

int KGalleryView::getPrevItem() const
{
    const int n = m_items.size();
    int start = _startIndex();
    int row = 0;
    int column = 0;
    if (start < 0) {
        start = 0;
    } else {
        row = m_items.at(start)->row();
        column = m_items.at(start)->coloum();
    }
    // Backward to the start of the list: the nearest cell of an earlier row at or left of
    // the start's column.
    for (int i = start - 1; i >= 0; --i) {
        if (_walkable(i) && m_items.at(i)->row() < row && m_items.at(i)->coloum() <= column)
            return i;
    }
    if (!m_verticalLoopMove)
        return -1;
    // Round from the end: the same column of a later row.
    for (int i = n - 1; i > start; --i) {
        if (_walkable(i) && m_items.at(i)->coloum() == column)
            return i;
    }
    return -1;
}

int KGalleryView::getNextItem() const
{
    const int start = _startIndex();
    if (start < 0)
        return getFirstItem();
    const KGalleryViewItem* from = m_items.at(start);
    const QRect span = from->gemetry();
    for (int i = start + 1; i < m_items.size(); ++i) {
        const KGalleryViewItem* cell = m_items.at(i);
        if (!_walkable(i) || cell->row() <= from->row())
            continue;
        const QRect g = cell->gemetry();
        if (g.left() <= span.right() && g.right() >= span.left())
            return i;
    }
    if (!m_verticalLoopMove)
        return -1;
    for (int i = 0; i < start; ++i) {
        if (_walkable(i) && m_items.at(i)->coloum() == from->coloum())
            return i;
    }
    return -1;
}

int KGalleryView::getLeftItem() const
{
    const int n = m_items.size();
    const int start = _startIndex();
    if (start < 0)
        return getLastItem();
    for (int k = 1; k < n; ++k) {
        const int i = (start - k + n) % n;
        if (_walkable(i))
            return i;
    }
    return -1;
}

int KGalleryView::getRightItem() const
{
    const int n = m_items.size();
    const int start = _startIndex();
    if (start < 0)
        return getFirstItem();
    for (int k = 1; k < n; ++k) {
        const int i = (start + k) % n;
        if (_walkable(i))
            return i;
    }
    return -1;
}

int KGalleryView::getFirstItem() const
{
    for (int i = 0; i < m_items.size(); ++i) {
        if (_walkable(i))
            return i;
    }
    return -1;
}

int KGalleryView::getLastItem() const
{
    for (int i = m_items.size() - 1; i >= 0; --i) {
        if (_walkable(i))
            return i;
    }
    return -1;
}

int KGalleryView::getPageDownItem() const
{
    const int start = _startIndex();
    if (start < 0)
        return getFirstItem();
    const KGalleryViewItem* from = m_items.at(start);
    for (int i = start + 1; i < m_items.size(); ++i) {
        const KGalleryViewItem* cell = m_items.at(i);
        if (_walkable(i) && cell->coloum() <= from->coloum()
            && cell->gemetry().top() >= from->gemetry().top() + height() - cell->gemetry().height())
            return i;
    }
    return getLastItem();
}

int KGalleryView::getPageUpItem() const
{
    const int start = _startIndex();
    if (start < 0)
        return getLastItem();
    const KGalleryViewItem* from = m_items.at(start);
    for (int i = start - 1; i >= 0; --i) {
        const KGalleryViewItem* cell = m_items.at(i);
        if (_walkable(i) && cell->coloum() <= from->coloum()
            && cell->gemetry().top() <= from->gemetry().top() - height() + cell->gemetry().height())
            return i;
    }
    return getFirstItem();
}

// --- events ---

void KGalleryView::_sendDismiss()
{
    if (QWidget* parent = parentWidget()) {
        KEvent dismiss(KEvent::Dismiss);
        sendPropagatedEvent(parent, &dismiss, false);
    }
}

bool KGalleryView::event(QEvent* e)
{
    switch (int(e->type())) {
    case QEvent::ToolTip: {
        const int hovered = m_model ? m_model->getHoveredIndex() : -1;
        KGalleryViewItem* cell = m_items.value(hovered);
        const QString tip = cell ? cell->detail() : QString();
        if (tip.isEmpty()) {
            QToolTip::hideText();
            e->ignore();
            return true;
        }
        const QRect r = cell->gemetry().translated(0, -m_viewPort);
        QToolTip::showText(static_cast<QHelpEvent*>(e)->globalPos(), tip, this, r);
        return true;
    }
    case KEvent::ThemeChange:
        for (KGalleryViewItem* cell : std::as_const(m_items)) {
            if (KGalleryModelAbstractItem* element = cell->getItemModel())
                element->resetImage();
        }
        update();
        return true;
    case KEvent::HotKeyCollect:
        _collectHotKey(static_cast<KHotKeyCollectEvent*>(e));
        return true;
    case KEvent::HotKeyTrigger:
        _triggerHotKey(static_cast<KHotKeyTriggerEvent*>(e));
        return true;
    default:
        break;
    }
    return KGalleryViewBase::event(e);
}

void KGalleryView::_collectHotKey(KHotKeyCollectEvent* e)
{
    const QPoint origin = KDrawHelpFunc::getHotKeyShowPos(this, size(), -1, -1);
    const bool autoIndex = e->useAutoIndex;
    // Only cells that stand for a command with a "hotKey" take part; an empty key is numbered.
    e->useAutoIndex = true;
    for (KGalleryViewItem* cell : std::as_const(m_items)) {
        KCommand* cmd = cell->command();
        if (!cmd || !cell->isVisible(m_viewType))
            continue;
        const QVariant key = cmd->property("hotKey");
        if (!key.isValid())
            continue;
        const QRect r = cell->gemetry().translated(0, -m_viewPort);
        if (!rect().intersects(r))
            continue;
        e->addHotKey(origin + QPoint(r.center().x(), r.bottom() - 4), key.toString(), this, cell->isHovereable(),
                     QVariant::fromValue(static_cast<void*>(cell)));
    }
    e->useAutoIndex = autoIndex;
}

void KGalleryView::_triggerHotKey(KHotKeyTriggerEvent* e)
{
    void* tagged = e->message ? e->message->item() : nullptr;
    int index = -1;
    for (int i = 0; i < m_items.size() && index < 0; ++i) {
        if (m_items.at(i) == tagged)
            index = i;
    }
    if (index < 0 || !m_model)
        return;
    if (!e->execute) {
        hoverItem(index);
        e->result = 3;
        return;
    }
    const QPointer<KGalleryView> guard(this);
    if (m_model->clickIndex(index) && guard)
        _sendDismiss();
    e->result = 2;
}

void KGalleryView::paintEvent(QPaintEvent* e)
{
    KGalleryAbstractModel* model = m_model.data();
    if (model)
        model->prepareItems();
    QPainter painter(this);
    const bool enabled = !m_items.isEmpty() && model && model->isEnable();
    QColor background = model ? model->getBackColor(enabled) : QColor();
    if (!background.isValid())
        background = palette().color(QPalette::Base);
    painter.setClipRegion(e->region());
    painter.fillRect(e->rect(), background);
    painter.setClipRect(rect());
    painter.translate(0, -m_viewPort);
    // Cells out of sight are not touched: a long gallery costs what the band shows.
    const QRegion region = e->region().translated(0, m_viewPort);
    for (KGalleryViewItem* cell : std::as_const(m_items)) {
        const QRect g = cell->gemetry();
        if (g.isEmpty() || !region.intersects(g))
            continue;
        cell->prepareDrawItem(painter, m_viewType);
        cell->drawItem(painter, m_viewType);
    }
}

void KGalleryView::resizeEvent(QResizeEvent* e)
{
    KGalleryViewBase::resizeEvent(e);
    if (!m_ready)
        return;
    renderWidgets();
    if (m_viewPort > m_maxViewPort)
        setViewPort(m_maxViewPort);
}

void KGalleryView::showEvent(QShowEvent* e)
{
    toReady();
    KGalleryViewBase::showEvent(e);
    if (m_model) {
        m_model->hoverIndex(-1);
        m_model->on_galleryView_show();
    }
}

void KGalleryView::hideEvent(QHideEvent* e)
{
    KGalleryViewBase::hideEvent(e);
    if (m_model) {
        m_model->hoverIndex(-1);
        m_model->on_galleryView_hide();
    }
}

void KGalleryView::leaveEvent(QEvent* e)
{
    KGalleryViewBase::leaveEvent(e);
    if (m_model)
        m_model->hoverIndex(-1);
}

void KGalleryView::wheelEvent(QWheelEvent* e)
{
    const int delta = e->angleDelta().y();
    // A negative delta scrolls down. At an end the event stays ignored, for the parent.
    if (delta < 0 && m_viewPort < m_maxViewPort) {
        setViewPort(m_viewPort + m_step);
        e->accept();
    } else if (delta > 0 && m_viewPort > 0) {
        setViewPort(m_viewPort - m_step);
        e->accept();
    } else {
        e->ignore();
    }
}

void KGalleryView::mouseMoveEvent(QMouseEvent* e)
{
    const int index = hitTest(e->position().toPoint());
    // Between cells the hover stays until the mouse leaves.
    if (index < 0 || !m_model)
        return;
    if (index != m_model->getHoveredIndex())
        m_model->hoverIndex(index);
}

void KGalleryView::mousePressEvent(QMouseEvent* e)
{
    m_pressIgnored = false;
    e->accept();
}

void KGalleryView::mouseReleaseEvent(QMouseEvent* e)
{
    if (m_pressIgnored) {
        m_pressIgnored = false;
        return;
    }
    const int index = hitTest(e->position().toPoint());
    KGalleryViewItem* cell = m_items.value(index);
    if (!cell || !m_model)
        return;
    if (e->button() == Qt::RightButton) {
        if (cell->canPopup())
            m_model->popupItemContextMenu(this, index);
        return;
    }
    if (e->button() != Qt::LeftButton)
        return;
    // The host hears of the click first and may change the gallery; the popup closes after.
    const QPointer<KGalleryView> guard(this);
    if (m_model->clickIndex(index) && guard)
        _sendDismiss();
}

void KGalleryView::mouseDoubleClickEvent(QMouseEvent* e)
{
    const int index = hitTest(e->position().toPoint());
    if (index < 0 || !m_model || e->button() != Qt::LeftButton)
        return;
    const QPointer<KGalleryView> guard(this);
    if (m_model->dblClickIndex(index) && guard)
        _sendDismiss();
}

void KGalleryView::keyPressEvent(QKeyEvent* e)
{
    const int key = e->key();
    if (e->modifiers() == Qt::NoModifier && key >= Qt::Key_A && key <= Qt::Key_Z) {
        // A plain letter acts as Alt+letter: it goes to the key-tip machine.
        QCoreApplication::postEvent(this, new QKeyEvent(e->type(), key, Qt::AltModifier, e->text(),
                                                        e->isAutoRepeat(), ushort(e->count())));
        return;
    }
    int target = -1;
    switch (key) {
    case Qt::Key_Right:
        target = getRightItem();
        break;
    case Qt::Key_Left:
        target = getLeftItem();
        break;
    case Qt::Key_Up:
        target = getPrevItem();
        if (target < 0) {
            Q_EMIT reachToViewTop(Qt::Key_Up);
            return;
        }
        break;
    case Qt::Key_Down:
        target = getNextItem();
        if (target < 0) {
            Q_EMIT reachToViewBottom(Qt::Key_Down);
            return;
        }
        break;
    case Qt::Key_Home:
        target = getFirstItem();
        break;
    case Qt::Key_End:
        target = getLastItem();
        break;
    case Qt::Key_PageDown:
        target = getPageDownItem();
        break;
    case Qt::Key_PageUp:
        target = getPageUpItem();
        break;
    default:
        KGalleryViewBase::keyPressEvent(e);
        return;
    }
    if (target >= 0)
        hoverItem(target);
}

void KGalleryView::keyReleaseEvent(QKeyEvent* e)
{
    switch (e->key()) {
    case Qt::Key_Tab:
        if (parentWidget()) {
            _sendDismiss();
            if (KApplication* app = KApplication::instance())
                app->focusInCurrentView();
        }
        return;
    case Qt::Key_Return:
    case Qt::Key_Enter: {
        if (!m_model)
            return;
        int index = m_model->getHoveredIndex();
        if (index < 0)
            index = m_model->currentIndex();
        if (index < 0)
            return;
        const QPointer<KGalleryView> guard(this);
        if (m_model->clickIndex(index) && guard)
            _sendDismiss();
        return;
    }
    default:
        KGalleryViewBase::keyReleaseEvent(e);
    }
}

void KGalleryView::focusInEvent(QFocusEvent* e)
{
    KGalleryViewBase::focusInEvent(e);
    int target = -1;
    if (e->reason() == Qt::TabFocusReason)
        target = getFirstItem();
    else if (e->reason() == Qt::BacktabFocusReason)
        target = getLastItem();
    if (target >= 0)
        hoverItem(target);
}
