#include "kpopupwidget.h"

#include <QApplication>
#include <QBoxLayout>
#include <QEventLoop>
#include <QGuiApplication>
#include <QKeyEvent>
#include <QPainter>
#include <QScreen>
#include <QScrollArea>
#include <QScrollBar>
#include <QStyle>

#include "kapplication.h"
#include "kblockedmouseevent.h"
#include "kcommand.h"
#include "kcommands.h"
#include "kdrawhelpfunc.h"
#include "kevent.h"
#include "kmainwindow.h"
#include "kshortcuts.h"

namespace {

const QString s_themeClass = QStringLiteral("KPopupWidget");

// "In the right (lower) half of the screen": measured from the screen's own edge, so that
// the rule holds on every screen of a virtual desktop, not only the one at the origin.
bool inRightHalf(int x, const QRect& avail)
{
    return x - avail.left() > avail.width() / 2;
}
bool inLowerHalf(int y, const QRect& avail)
{
    return y - avail.top() > avail.height() / 2;
}

// The overlap of two rectangles counts only when it is more than an edge.
bool overlapsMoreThanEdge(const QRect& a, const QRect& b)
{
    const QRect i = a & b;
    return i.right() - i.left() > 2 && i.bottom() - i.top() > 2;
}

QRect centredIn(const QRect& region, const QSize& size)
{
    return QRect(region.left() + (region.width() - size.width()) / 2,
                 region.top() + (region.height() - size.height()) / 2, size.width(), size.height());
}

} // namespace

KPopupWidget::KPopupWidget(QWidget* parent, Qt::WindowFlags flags)
    : QWidget(parent, flags)
{
    setMouseTracking(true);
    m_layout = new QBoxLayout(QBoxLayout::TopToBottom, this);
    m_layout->setSpacing(0);
    m_layout->setContentsMargins(2, 2, 2, 2);
    m_layout->setSizeConstraint(QLayout::SetMinAndMaxSize);
    m_sizeGrip = new KSizeGrip(this);
    m_sizeGrip->hide();
}

KPopupWidget::~KPopupWidget() = default;

// --- content and look ---

void KPopupWidget::setContentWidget(QWidget* widget)
{
    if (widget == m_contentWidget)
        return;
    if (QWidget* old = m_contentWidget.data()) {
        if (m_scrollArea && m_scrollArea->widget() == old)
            m_scrollArea->takeWidget();
        m_layout->removeWidget(old);
        old->hide();
    }
    m_contentWidget = widget;
    m_contentGivenSize = QSize();
    if (!widget)
        return;
    // A size given to the content before it came here is the caller's wish. Later sizes
    // are the layout's doing (it marks every child it places as resized), so only this
    // one counts in getPreferSize().
    if (widget->testAttribute(Qt::WA_Resized))
        m_contentGivenSize = widget->size();
    if (m_scrollArea) {
        // The scroll area belongs to the content before; the new one starts without it.
        removeScrollWidget();
    }
    widget->setParent(this);
    widget->show();
    widget->move(0, 0);
    m_layout->insertWidget(0, widget, 0);
}

void KPopupWidget::setPopupStyle(int style)
{
    if (style == m_popupStyle)
        return;
    m_popupStyle = style;
    const int margin = (style & StyleBorder) ? 2 : 0;
    m_layout->setContentsMargins(margin, margin, margin, margin);
    update();
}

void KPopupWidget::setTitleColor(const QColor& color)
{
    if (color == m_titleColor)
        return;
    m_titleColor = color;
    update();
}

int KPopupWidget::layoutMargin() const
{
    return m_layout->contentsMargins().left();
}

KSizeGrip::GripType KPopupWidget::sizeGripType() const
{
    if (m_sizeGripType != KSizeGrip::AutoGrip)
        return m_sizeGripType;
    const QWidget* content = m_contentWidget.data();
    if (!content)
        return KSizeGrip::NoGrip;
    const QSizePolicy policy = content->sizePolicy();
    const bool horizontal = policy.horizontalPolicy() != QSizePolicy::Fixed
                            && content->maximumWidth() != content->minimumWidth();
    const bool vertical = policy.verticalPolicy() != QSizePolicy::Fixed
                          && content->maximumHeight() != content->minimumHeight();
    if (horizontal && vertical)
        return KSizeGrip::BottomRight;
    if (horizontal)
        return KSizeGrip::Right;
    if (vertical)
        return KSizeGrip::Bottom;
    return KSizeGrip::NoGrip;
}

void KPopupWidget::setSizeGripType(KSizeGrip::GripType type)
{
    m_sizeGripType = type;
    _setSizeGripType(sizeGripType());
}

void KPopupWidget::_setSizeGripType(KSizeGrip::GripType type)
{
    if (m_layout->indexOf(m_sizeGrip) < 0)
        m_layout->addWidget(m_sizeGrip);
    m_sizeGrip->show();
    switch (type) {
    case KSizeGrip::Left:
        m_layout->setDirection(QBoxLayout::RightToLeft);
        m_sizeGrip->setSizePolicy(QSizePolicy::Fixed, QSizePolicy::Preferred);
        break;
    case KSizeGrip::Right:
        m_layout->setDirection(QBoxLayout::LeftToRight);
        m_sizeGrip->setSizePolicy(QSizePolicy::Fixed, QSizePolicy::Preferred);
        break;
    case KSizeGrip::Top:
    case KSizeGrip::TopLeft:
    case KSizeGrip::TopRight:
        m_layout->setDirection(QBoxLayout::BottomToTop);
        m_sizeGrip->setSizePolicy(QSizePolicy::Preferred, QSizePolicy::Fixed);
        break;
    case KSizeGrip::Bottom:
    case KSizeGrip::BottomLeft:
    case KSizeGrip::BottomRight:
        m_layout->setDirection(QBoxLayout::TopToBottom);
        m_sizeGrip->setSizePolicy(QSizePolicy::Preferred, QSizePolicy::Fixed);
        break;
    default:
        m_layout->removeWidget(m_sizeGrip);
        m_sizeGrip->hide();
        break;
    }
    m_sizeGrip->setSizeGripType(type);
}

void KPopupWidget::normalSizeGripType()
{
    _setSizeGripType(sizeGripType());
}

void KPopupWidget::reverseHSizeGripType()
{
    static const KSizeGrip::GripType flipped[] = {
        KSizeGrip::Right, KSizeGrip::Left, KSizeGrip::Top, KSizeGrip::Bottom,
        KSizeGrip::TopRight, KSizeGrip::BottomRight, KSizeGrip::TopLeft, KSizeGrip::BottomLeft};
    const KSizeGrip::GripType current = m_sizeGrip->getSizeGripType();
    if (current < KSizeGrip::NoGrip)
        _setSizeGripType(flipped[current]);
}

void KPopupWidget::reverseVSizeGripType()
{
    static const KSizeGrip::GripType flipped[] = {
        KSizeGrip::Left, KSizeGrip::Right, KSizeGrip::Bottom, KSizeGrip::Top,
        KSizeGrip::BottomLeft, KSizeGrip::TopLeft, KSizeGrip::BottomRight, KSizeGrip::TopRight};
    const KSizeGrip::GripType current = m_sizeGrip->getSizeGripType();
    if (current < KSizeGrip::NoGrip)
        _setSizeGripType(flipped[current]);
}

void KPopupWidget::clearSizeAttitude()
{
    resize(0, 0);
    setMinimumSize(0, 0);
    setAttribute(Qt::WA_Resized, false);
    m_contentGivenSize = QSize();
}

// --- sizes ---

QSize KPopupWidget::getMinimumSize() const
{
    const QWidget* content = m_contentWidget.data();
    const QSize candidates[] = {minimumSize(), minimumSizeHint(),
                                content ? content->minimumSize() : QSize(),
                                content ? content->minimumSizeHint() : QSize()};
    for (const QSize& s : candidates) {
        if (s.isValid() && !s.isNull())
            return s;
    }
    return QSize(0, 0);
}

QSize KPopupWidget::getPreferSize() const
{
    QSize size = sizeHint();
    const QWidget* content = m_contentWidget.data();
    if (content && m_contentGivenSize.isValid()) {
        const int m = 2 * layoutMargin();
        size = m_contentGivenSize + QSize(m, m);
    }
    if (testAttribute(Qt::WA_Resized) && this->size().isValid())
        size = this->size();
    return size.expandedTo(getMinimumSize());
}

// --- geometry helpers ---

QPoint KPopupWidget::getWidgetGlobalPos(const QWidget* widget)
{
    return widget ? widget->mapToGlobal(QPoint(0, 0)) : QPoint();
}

QRect KPopupWidget::getWidgetGlobalRect(const QWidget* widget)
{
    return widget ? QRect(getWidgetGlobalPos(widget), widget->size()) : QRect();
}

QPoint KPopupWidget::getWidgetGlobalBottomLeftPos(const QWidget* widget)
{
    return widget ? widget->mapToGlobal(QPoint(0, widget->height())) : QPoint();
}

QRect KPopupWidget::getAvailScreenRect(const QPoint& point)
{
    QScreen* screen = QGuiApplication::screenAt(point);
    if (!screen)
        screen = QGuiApplication::primaryScreen();
    return screen ? screen->availableGeometry() : QRect();
}

QRect KPopupWidget::getContaintRect(QRect exclude, QRect want) const
{
    // The screen of the owner decides; without an owner, the screen where want starts.
    const QRect avail = getAvailScreenRect(exclude.isValid() ? exclude.center() : want.topLeft());
    const QSize size = want.size();
    // Each region reaches from the edge line of exclude (included) to the screen's edge.
    const QRect below(avail.left(), exclude.bottom(), avail.width(), avail.bottom() - exclude.bottom() + 1);
    const QRect above(avail.left(), avail.top(), avail.width(), exclude.top() - avail.top() + 1);
    const QRect right(exclude.right(), avail.top(), avail.right() - exclude.right() + 1, avail.height());
    const QRect left(avail.left(), avail.top(), exclude.left() - avail.left() + 1, avail.height());
    const QRect regions[] = {below, above, right, left};
    for (int side = 0; side < 4; ++side) {
        const QRect& region = regions[side];
        if (size.width() > region.width() || size.height() > region.height())
            continue;
        QRect r = centredIn(region, size);
        if (side < 2) {
            // Below or above: touch exclude, then align along the screen's half.
            r.moveTop(side == 0 ? exclude.bottom() : exclude.top() - size.height() + 1);
            if (exclude.left() - avail.left() < avail.width() / 2) {
                r.moveLeft(avail.left());
                if (r.right() < exclude.right())
                    r.moveRight(exclude.right());
            } else {
                r.moveRight(avail.right());
                if (r.left() > exclude.left())
                    r.moveLeft(exclude.left());
            }
        } else {
            r.moveLeft(side == 2 ? exclude.right() : exclude.left() - size.width() + 1);
            if (exclude.top() - avail.top() < avail.height() / 2) {
                r.moveTop(avail.top());
                if (r.bottom() < exclude.bottom())
                    r.moveBottom(exclude.bottom());
            } else {
                r.moveBottom(avail.bottom());
                if (r.top() > exclude.top())
                    r.moveTop(exclude.top());
            }
        }
        return r;
    }
    return QRect();
}

// --- showing ---

void KPopupWidget::_showAt(const QRect& geometry)
{
    // Placing is not sizing: only the user (the grip) or the host makes a size stick. The
    // mark stays on through show(), which would otherwise fit an unsized window to its hint.
    const bool sized = testAttribute(Qt::WA_Resized);
    setGeometry(geometry);
    QWidget::show();
    setAttribute(Qt::WA_Resized, sized);
}

void KPopupWidget::show(const QPoint& pos, bool alignRight, int offset)
{
    normalSizeGripType();
    const QSize size = getPreferSize();
    QRect r(pos, size);
    if (alignRight)
        r.setLeft(pos.x() - size.width()); // the right edge stays: twice the width, as it always was
    const QRect avail = getAvailScreenRect(pos);
    if (r.right() > avail.right() && inRightHalf(r.left(), avail)) {
        const int newLeft = pos.x() - size.width();
        r.translate(newLeft - r.left(), 0);
        reverseHSizeGripType();
    }
    if (r.bottom() > avail.bottom() && inLowerHalf(r.top(), avail)) {
        const int newTop = pos.y() - size.height() - (alignRight ? offset : 0);
        r.translate(0, newTop - r.top());
        reverseVSizeGripType();
    }
    const QRect clipped = r & avail;
    // Content that cannot shrink to the clipped size scrolls instead of leaving the screen.
    const QSize min = getMinimumSize();
    if (clipped.width() < min.width() || clipped.height() < min.height())
        createScrollWidget();
    _showAt(clipped);
}

void KPopupWidget::show(QRect exclude, QRect want)
{
    normalSizeGripType();
    const QRect avail = getAvailScreenRect(want.topLeft());
    if (want.right() > avail.right() && inRightHalf(want.left(), avail)) {
        want.moveRight(avail.right());
        if (overlapsMoreThanEdge(want, exclude))
            want.moveRight(exclude.left());
        reverseHSizeGripType();
    }
    if (want.bottom() > avail.bottom() && inLowerHalf(want.top(), avail)) {
        want.moveBottom(avail.bottom());
        if (overlapsMoreThanEdge(want, exclude))
            want.moveBottom(exclude.top());
        reverseVSizeGripType();
    }

    QRect c = want & avail;
    const QSize min = getMinimumSize();
    QRect m(c.topLeft(), min);
    if (!min.isNull()) {
        if (c.height() < min.height()) {
            if (!c.isNull())
                m.setWidth(c.width());
            c = getContaintRect(exclude, m);
        }
        if (c.width() < min.width()) {
            if (!c.isNull())
                m.setHeight(c.height());
            c = getContaintRect(exclude, m);
        }
    }

    if (c.isNull()) {
        // No side of the owner has room even for the minimum: show what fits, and scroll.
        createScrollWidget();
        c = want & avail;
        if (QWidget* content = m_contentWidget.data())
            m_scrollArea->ensureWidgetVisible(content, min.width(), min.height());
        m_scrollArea->horizontalScrollBar()->setValue(0);
        m_scrollArea->verticalScrollBar()->setValue(0);
        const int extent = style()->pixelMetric(QStyle::PM_ScrollBarExtent, nullptr, this);
        if (c.width() < m.width())
            c.setBottom(c.bottom() + extent);
        if (c.height() < m.height())
            c.setRight(c.right() + extent);
        if (c.right() > avail.right() && inRightHalf(want.left(), avail))
            c.moveRight(avail.right());
    }
    _showAt(c);
}

void KPopupWidget::show(QRect exclude, const QPoint& pos)
{
    show(exclude, QRect(pos, getPreferSize()));
}

void KPopupWidget::show(const QWidget* owner, QRect want)
{
    show(getWidgetGlobalRect(owner), want);
}

void KPopupWidget::show(const QWidget* owner, const QPoint& pos)
{
    show(getWidgetGlobalRect(owner), QRect(pos, getPreferSize()));
}

int KPopupWidget::_exec()
{
    QEventLoop loop;
    connect(this, &KPopupWidget::aboutToHide, &loop, [&loop] { loop.quit(); });
    connect(this, &QObject::destroyed, &loop, [&loop] { loop.quit(); });
    if (!isVisible())
        return 0; // nothing was shown: there is nothing to wait for
    return loop.exec();
}

int KPopupWidget::exec(const QPoint& pos, bool alignRight, int offset)
{
    show(pos, alignRight, offset);
    return _exec();
}

int KPopupWidget::exec(QRect exclude, const QPoint& pos)
{
    show(exclude, pos);
    return _exec();
}

int KPopupWidget::exec(const QWidget* owner, QRect want)
{
    show(owner, want);
    return _exec();
}

int KPopupWidget::exec(const QWidget* owner, const QPoint& pos)
{
    show(owner, pos);
    return _exec();
}

// --- scrolling ---

void KPopupWidget::createScrollWidget()
{
    removeScrollWidget();
    QWidget* content = m_contentWidget.data();
    m_scrollArea = new QScrollArea(this);
    m_scrollArea->setFrameStyle(0);
    m_scrollArea->horizontalScrollBar()->setObjectName(QStringLiteral("KPopupWidget-deep"));
    m_scrollArea->verticalScrollBar()->setObjectName(QStringLiteral("KPopupWidget-deep"));
    m_layout->insertWidget(0, m_scrollArea);
    if (content) {
        m_layout->removeWidget(content);
        m_scrollArea->setWidget(content);
        content->show();
    }
    // The limits of the popup are now the scroll area's, not the content's.
    m_layout->activate();
}

void KPopupWidget::removeScrollWidget()
{
    if (!m_scrollArea)
        return;
    QScrollArea* area = m_scrollArea;
    m_scrollArea = nullptr;
    m_layout->removeWidget(area);
    QWidget* content = m_contentWidget.data();
    if (content && area->widget() == content) {
        area->takeWidget();
        content->setParent(this);
        m_layout->insertWidget(0, content, 0);
        content->show();
    }
    delete area;
    m_layout->activate();
}

// --- events ---

void KPopupWidget::sendBlockedMouseEvent(QMouseEvent* e, bool& keepOpen, bool& firstFlag)
{
    keepOpen = false;
    firstFlag = false;
    QWidget* target = QApplication::widgetAt(e->globalPosition().toPoint());
    if (!target)
        return;
    KBlockedMouseEvent blocked(e, this);
    sendPropagatedEvent(target, &blocked, true);
    keepOpen = blocked.keepOpen();
    firstFlag = blocked.firstFlag();
}

void KPopupWidget::mouseMoveEvent(QMouseEvent* e)
{
    if (geometry().contains(e->globalPosition().toPoint())) {
        QWidget::mouseMoveEvent(e);
        return;
    }
    bool keepOpen = false, firstFlag = false;
    sendBlockedMouseEvent(e, keepOpen, firstFlag);
}

void KPopupWidget::mouseReleaseEvent(QMouseEvent* e)
{
    if (frameGeometry().contains(e->globalPosition().toPoint())) {
        QWidget::mouseReleaseEvent(e);
        return;
    }
    bool keepOpen = false, firstFlag = false;
    sendBlockedMouseEvent(e, keepOpen, firstFlag);
}

void KPopupWidget::mouseDoubleClickEvent(QMouseEvent* e)
{
    if (geometry().contains(e->globalPosition().toPoint())) {
        QWidget::mouseDoubleClickEvent(e);
        return;
    }
    setAttribute(Qt::WA_NoMouseReplay);
    bool keepOpen = false, firstFlag = false;
    sendBlockedMouseEvent(e, keepOpen, firstFlag);
    if (!keepOpen)
        close();
}

void KPopupWidget::mousePressEvent(QMouseEvent* e)
{
    if (frameGeometry().contains(e->globalPosition().toPoint())) {
        QWidget::mousePressEvent(e);
        return;
    }
    // The press closes the popup; it must not reach the owner a second time, or the owner
    // would open the popup again at once.
    setAttribute(Qt::WA_NoMouseReplay);
    const QPointer<KPopupWidget> self(this);
    bool keepOpen = false, firstFlag = false;
    sendBlockedMouseEvent(e, keepOpen, firstFlag);
    if (keepOpen)
        return;
    if (self)
        close();
    // Then every popup still open, however deep the chain; one that refuses to close ends
    // the walk rather than the program.
    QWidget* last = nullptr;
    while (QWidget* popup = QApplication::activePopupWidget()) {
        if (popup == last)
            break;
        last = popup;
        popup->close();
    }
}

QKeySequence KPopupWidget::convertToKeySequence(const QKeyEvent* e)
{
    if (!e)
        return QKeySequence();
    const int key = e->key();
    if (key == Qt::Key_unknown || key == Qt::Key_Shift || key == Qt::Key_Control || key == Qt::Key_Alt
        || key == Qt::Key_Meta || key == Qt::Key_AltGr)
        return QKeySequence();
    return QKeySequence(QKeyCombination(e->modifiers(), Qt::Key(key)));
}

bool KPopupWidget::_closeWindowKey(const QKeyEvent* e)
{
    if (!e->matches(QKeySequence::Close))
        return false;
    KApplication* app = KApplication::instance();
    auto* window = app ? qobject_cast<KMainWindow*>(app->currentMainWindow()) : nullptr;
    KCommand* close = window ? window->commands()->command(QStringLiteral("CloseWindow")) : nullptr;
    if (!close)
        return false;
    hide();
    close->trigger();
    return true;
}

void KPopupWidget::keyPressEvent(QKeyEvent* e)
{
    if (e->key() == Qt::Key_Alt && !(m_popupStyle & StyleAltKeepsOpen)) {
        // Alt closes every popup of the chain at once.
        KEvent dismiss(KEvent::Dismiss);
        sendPropagatedEvent(this, &dismiss, false);
        e->accept();
        return;
    }
    if (!(m_popupStyle & StyleMainWindowShortcuts)) {
        QWidget::keyPressEvent(e); // Escape closes this popup, one level
        return;
    }
    if (_runMainWindowShortcut(e))
        return;
    if (_closeWindowKey(e))
        return;
    QWidget::keyPressEvent(e);
}

bool KPopupWidget::_runMainWindowShortcut(const QKeyEvent* e)
{
    // An open popup swallows key presses, so the window's accelerators are run from here.
    const QKeySequence sequence = convertToKeySequence(e);
    if (sequence.isEmpty())
        return false;
    KApplication* app = KApplication::instance();
    auto* window = app ? qobject_cast<KMainWindow*>(app->currentMainWindow()) : nullptr;
    KShortcuts* list = window ? window->shortcuts() : nullptr;
    for (int i = 0; list && i < list->count(); ++i) {
        KShortcut* shortcut = list->shortcutAt(i);
        if (shortcut->key().matches(sequence) == QKeySequence::ExactMatch) {
            hide();
            shortcut->execute();
            return true;
        }
    }
    return false;
}

void KPopupWidget::customEvent(QEvent* e)
{
    if (int(e->type()) == KEvent::Dismiss) {
        // Not accepted: the dismiss goes on up the parents and closes each popup on its way.
        setAttribute(Qt::WA_NoMouseReplay);
        close();
        return;
    }
    QWidget::customEvent(e);
}

void KPopupWidget::showEvent(QShowEvent* e)
{
    QWidget::showEvent(e);
    if (QWidget* content = m_contentWidget.data())
        content->setFocus(Qt::PopupFocusReason);
}

void KPopupWidget::enterEvent(QEnterEvent* e)
{
    QWidget::enterEvent(e);
    if (QWidget* content = m_contentWidget.data()) {
        if (!content->hasFocus() && !content->isAncestorOf(QApplication::focusWidget()))
            content->setFocus(Qt::PopupFocusReason);
    }
}

void KPopupWidget::hideEvent(QHideEvent* e)
{
    QWidget::hideEvent(e);
    // Every opening starts without scroll bars.
    removeScrollWidget();
    Q_EMIT aboutToHide();
}

void KPopupWidget::paintEvent(QPaintEvent*)
{
    QPainter painter(this);
    if (m_popupStyle & StyleBorder) {
        const QColor border = KDrawHelpFunc::getColorFromTheme(s_themeClass, QStringLiteral("border"));
        const QColor inner = KDrawHelpFunc::getColorFromTheme(s_themeClass, QStringLiteral("inner-border"));
        painter.setBrush(Qt::NoBrush);
        painter.setPen(border.isValid() ? border : palette().color(QPalette::Mid));
        painter.drawRect(rect().adjusted(0, 0, -1, -1));
        painter.setPen(inner.isValid() ? inner : palette().color(QPalette::Base));
        painter.drawRect(rect().adjusted(1, 1, -2, -2));
    }
    if ((m_popupStyle & StyleTitle) && m_titleColor.isValid()) {
        painter.setPen(m_titleColor);
        painter.drawLine(0, 0, width() - 1, 0);
        painter.drawLine(0, 1, width() - 1, 1);
    }
}

// --- KPopupWidgetEx ---

KPopupWidgetEx::KPopupWidgetEx(QWidget* parent, KPopupWidgetType type)
    : KPopupWidget(parent, Qt::Popup)
    , m_type(type)
{
    if (type != 1)
        popupLayout()->setContentsMargins(widgetMargins());
}

QMargins KPopupWidgetEx::widgetMargins() const
{
    return QMargins(1, m_type == 2 ? 2 : 1, 1, 1);
}

void KPopupWidgetEx::paintEvent(QPaintEvent* e)
{
    if (m_type == 1) {
        KPopupWidget::paintEvent(e);
        return;
    }
    QPainter painter(this);
    const QRect r = rect().marginsRemoved(widgetMargins()).adjusted(-1, -1, 0, 0);
    const QString cls = QStringLiteral("KRbFileMenu");
    const QColor border = KDrawHelpFunc::getColorFromTheme(cls, QStringLiteral("filemenu-border"));
    painter.setBrush(Qt::NoBrush);
    painter.setPen(border.isValid() ? border : palette().color(QPalette::Mid));
    painter.drawRect(r);
    if (m_type == 2) {
        const QColor top = KDrawHelpFunc::getColorFromTheme(cls, QStringLiteral("filemenu-top-border"));
        painter.setPen(top.isValid() ? top : palette().color(QPalette::Highlight));
        painter.drawLine(r.left(), r.top(), r.right() + 1, r.top());
        painter.drawLine(r.left(), r.top() - 1, r.right() + 1, r.top() - 1);
    }
}
