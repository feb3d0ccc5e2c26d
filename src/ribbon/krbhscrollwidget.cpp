#include "krbhscrollwidget.h"

#include <QBoxLayout>
#include <QEvent>
#include <QPropertyAnimation>
#include <QResizeEvent>
#include <QStylePainter>
#include <QWheelEvent>

#include <korbstyle.h>

#include "krbpaint_p.h"

namespace {
constexpr int kArrowWidth = 15;
}

// --- KRbHScrollWidgetArrow ---

KRbHScrollWidgetArrow::KRbHScrollWidgetArrow(Qt::ArrowType type, QWidget* parent)
    : QAbstractButton(parent)
    , m_arrowType(type)
{
    setAutoRepeat(true);
    setFixedWidth(kArrowWidth);
    setSizePolicy(QSizePolicy::Fixed, QSizePolicy::Expanding);
    setFocusPolicy(Qt::NoFocus);
    setAttribute(Qt::WA_Hover);
}

KRbHScrollWidgetArrow::~KRbHScrollWidgetArrow() = default;

QSize KRbHScrollWidgetArrow::sizeHint() const
{
    return QSize(kArrowWidth, kArrowWidth);
}

void KRbHScrollWidgetArrow::initStyleOption(KStyleOptionRbHScrollWidget* option) const
{
    option->initFrom(this);
    option->arrowType = m_arrowType;
    if (isDown())
        option->state |= QStyle::State_Sunken;
}

void KRbHScrollWidgetArrow::hideEvent(QHideEvent* e)
{
    // An arrow that goes while held must not come back pressed.
    setDown(false);
    QAbstractButton::hideEvent(e);
}

void KRbHScrollWidgetArrow::paintEvent(QPaintEvent*)
{
    KStyleOptionRbHScrollWidget option;
    initStyleOption(&option);
    QStylePainter painter(this);
    if (KRbPaint::isFrameworkStyle(this)) {
        painter.drawComplexControl(KORBStyle::KCC_RbHScrollWidget, option);
        return;
    }
    QStyleOption stock = option;
    stock.type = QStyleOption::SO_Default;
    stock.version = QStyleOption::Version;
    painter.drawPrimitive(QStyle::PE_PanelButtonTool, stock);
    painter.drawPrimitive(m_arrowType == Qt::LeftArrow ? QStyle::PE_IndicatorArrowLeft : QStyle::PE_IndicatorArrowRight,
                          stock);
}

// --- KRbHScrollWidget ---

KRbHScrollWidget::KRbHScrollWidget(QWidget* parent, QWidget* content)
    : QWidget(parent)
    , m_animation(new QPropertyAnimation(this, "m_contentOffset", this))
    , m_viewport(new QWidget(this))
    , m_content(content)
    , m_layout(new QHBoxLayout(this))
    , m_leftArrow(new KRbHScrollWidgetArrow(Qt::LeftArrow, this))
    , m_rightArrow(new KRbHScrollWidgetArrow(Qt::RightArrow, this))
{
    m_layout->setContentsMargins(0, 0, 0, 0);
    m_layout->setSpacing(0);
    m_layout->addWidget(m_leftArrow);
    m_layout->addWidget(m_viewport);
    m_layout->addWidget(m_rightArrow);
    m_leftArrow->hide();
    m_rightArrow->hide();
    connect(m_leftArrow, &QAbstractButton::pressed, this, &KRbHScrollWidget::leftButtonClicked);
    connect(m_rightArrow, &QAbstractButton::pressed, this, &KRbHScrollWidget::rightButtonClicked);

    QSizePolicy::Policy vertical = QSizePolicy::Preferred;
    if (content) {
        content->setParent(m_viewport);
        content->move(0, 0);
        content->installEventFilter(this);
        vertical = content->sizePolicy().verticalPolicy();
    }
    setSizePolicy(QSizePolicy::Preferred, vertical);
}

KRbHScrollWidget::~KRbHScrollWidget()
{
    m_animation->stop();
}

int KRbHScrollWidget::contentWidth() const
{
    return m_content ? m_content->sizeHint().width() : 0;
}

int KRbHScrollWidget::minimumContentWidth() const
{
    return m_content ? m_content->minimumSizeHint().width() : 0;
}

void KRbHScrollWidget::ignoreWheelEvent(bool ignore)
{
    m_ignoreWheelEvent = ignore;
}

void KRbHScrollWidget::setStep(int step)
{
    m_step = step;
}

void KRbHScrollWidget::setWheelRate(double rate)
{
    m_wheelRate = rate;
}

int KRbHScrollWidget::_viewportWidth(bool leftShown, bool rightShown) const
{
    return width() - (leftShown ? kArrowWidth : 0) - (rightShown ? kArrowWidth : 0);
}

// The width the content needs: its hint while there is room for it; below that, the width it
// is laid out at, which is the widget's own down to the content's minimum. So the row scrolls
// only once its groups cannot give way any further, and never over the stretch at its end.
int KRbHScrollWidget::_contentExtent() const
{
    return m_content ? qMin(m_content->width(), contentWidth()) : 0;
}

int KRbHScrollWidget::_lowestOffset() const
{
    return qMin(0, _viewportWidth(!m_leftArrow->isHidden(), !m_rightArrow->isHidden()) - _contentExtent());
}

void KRbHScrollWidget::_fitContent()
{
    if (!m_content)
        return;
    // The content's layout holds it at its minimum width at least.
    m_content->resize(size());
}

void KRbHScrollWidget::_applyOffset(int offset)
{
    m_contentOffset = offset;
    updateArrowDisplay();
    if (m_content)
        m_content->move(m_contentOffset, 0);
}

int KRbHScrollWidget::fixedOffset(int offset) const
{
    int o = qMin(offset, 0);
    const bool leftShown = !m_leftArrow->isHidden();
    const bool rightShown = !m_rightArrow->isHidden();
    const int extent = _contentExtent();
    const int limit = _viewportWidth(leftShown, rightShown) - extent;
    // An arrow that is about to appear or go takes or gives back its width at the view's
    // edge: correct by as much so that the content stays where the eye sees it.
    const bool leftWanted = o != 0;
    if (leftWanted != leftShown)
        o += leftWanted ? -kArrowWidth : kArrowWidth;
    const bool rightWanted = m_contentOffset > limit;
    if (rightWanted != rightShown)
        o += rightWanted ? -kArrowWidth : kArrowWidth;
    const int newLimit = _viewportWidth(leftWanted, rightWanted) - extent;
    return qMin(qMax(o, newLimit), 0);
}

void KRbHScrollWidget::setContentOffset(int offset)
{
    _applyOffset(fixedOffset(offset));
}

void KRbHScrollWidget::updateArrowDisplay()
{
    const bool right = m_contentOffset > width() - _contentExtent();
    const bool left = m_contentOffset != 0;
    if (m_rightArrow->isHidden() == right)
        m_rightArrow->setVisible(right);
    if (m_leftArrow->isHidden() == left)
        m_leftArrow->setVisible(left);
}

void KRbHScrollWidget::scrollTo(int target)
{
    m_animation->stop();
    disconnect(m_animation, &QAbstractAnimation::finished, this, &KRbHScrollWidget::scrollBack);
    m_animation->setStartValue(m_contentOffset);
    m_animation->setEndValue(target);
    connect(m_animation, &QAbstractAnimation::finished, this, &KRbHScrollWidget::scrollBack);
    m_animation->start();
}

void KRbHScrollWidget::scrollBack()
{
    const int clamped = qMin(qMax(m_contentOffset, _lowestOffset()), 0);
    if (clamped == m_contentOffset)
        return;
    m_animation->stop();
    disconnect(m_animation, &QAbstractAnimation::finished, this, &KRbHScrollWidget::scrollBack);
    m_animation->setStartValue(m_contentOffset);
    m_animation->setEndValue(clamped);
    m_animation->start();
}

void KRbHScrollWidget::leftButtonClicked()
{
    scrollTo(m_contentOffset + m_step);
    Q_EMIT scrollRequested(false);
}

void KRbHScrollWidget::rightButtonClicked()
{
    scrollTo(m_contentOffset - m_step);
    Q_EMIT scrollRequested(true);
}

void KRbHScrollWidget::ensureWidgetVisible(const QWidget* w)
{
    if (!m_content || !w || !m_content->isAncestorOf(w))
        return;
    const int x1 = w->mapTo(m_content, QPoint(0, 0)).x();
    const int x2 = x1 + w->width();
    const int view = _viewportWidth(!m_leftArrow->isHidden(), !m_rightArrow->isHidden());
    int offset = m_contentOffset;
    if (offset + x1 < 0)
        offset = -x1;
    if (offset + x2 > view)
        offset = view - x2;
    m_animation->stop();
    _applyOffset(offset);
}

QSize KRbHScrollWidget::sizeHint() const
{
    return m_content ? m_content->sizeHint() : QSize(0, 0);
}

QSize KRbHScrollWidget::minimumSizeHint() const
{
    return QSize(30, m_content ? m_content->minimumSizeHint().height() : 0);
}

void KRbHScrollWidget::resizeEvent(QResizeEvent* e)
{
    _fitContent();
    QWidget::resizeEvent(e);
    int offset = m_contentOffset;
    if (_contentExtent() <= width()) {
        offset = 0; // everything fits: nothing to scroll
    } else if (!m_leftArrow->isHidden()) {
        // Widening at the right end: the content follows the growing view.
        const int limit = _viewportWidth(true, !m_rightArrow->isHidden()) - _contentExtent();
        if (limit > offset)
            offset = qMin(limit, 0);
    }
    _applyOffset(offset);
}

void KRbHScrollWidget::showEvent(QShowEvent* e)
{
    QWidget::showEvent(e);
    int offset = m_contentOffset;
    if (_contentExtent() <= width()) {
        offset = 0;
    } else if (!m_leftArrow->isHidden()) {
        const int limit = _viewportWidth(true, !m_rightArrow->isHidden()) - _contentExtent();
        if (limit > offset)
            offset = qMin(limit, 0);
    }
    _applyOffset(offset);
}

bool KRbHScrollWidget::eventFilter(QObject* watched, QEvent* e)
{
    if (watched == m_content && e->type() == QEvent::LayoutRequest) {
        // The content's minimum may have moved: let its layout apply it now, lay it at our
        // width again, and tell our own parent that the hint changed.
        if (QLayout* contentLayout = m_content->layout())
            contentLayout->activate();
        _fitContent();
        updateArrowDisplay();
        m_layout->invalidate();
        m_layout->activate();
        updateGeometry();
    }
    return QWidget::eventFilter(watched, e);
}

void KRbHScrollWidget::wheelEvent(QWheelEvent* e)
{
    if (m_ignoreWheelEvent) {
        QWidget::wheelEvent(e);
        return;
    }
    int delta = e->angleDelta().y();
    if (delta == 0)
        delta = e->angleDelta().x();
    // A notch that cannot move the content belongs to the parent.
    if (delta == 0 || (delta > 0 && m_contentOffset >= 0) || (delta < 0 && m_contentOffset <= _lowestOffset())) {
        QWidget::wheelEvent(e);
        return;
    }
    scrollTo(int(m_contentOffset + delta * m_wheelRate));
    e->accept();
}
