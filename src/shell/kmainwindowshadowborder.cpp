#include "kmainwindowshadowborder.h"

#include <QMouseEvent>
#include <QPainter>
#include <QStyle>
#include <QWindow>

#include <korbstyle.h>
#include <korbstyle_2013.h>
#include <kstyleoption.h>

KMainWindowShadowBorder::KMainWindowShadowBorder(QWidget* host, QWidget* parent)
    : QWidget(parent, Qt::Tool | Qt::FramelessWindowHint)
    , m_host(host)
{
    setAttribute(Qt::WA_TranslucentBackground);
    setAttribute(Qt::WA_ShowWithoutActivating);
    setMouseTracking(true);
    m_thickness = style()->pixelMetric(KORBStyle::KPM_ShadowBorderWidth, nullptr, this);
    if (m_thickness <= 0)
        m_thickness = 8;
    hide();
    if (host) {
        host->installEventFilter(this);
        if (host->isVisible())
            _follow();
    }
}

KMainWindowShadowBorder::~KMainWindowShadowBorder() = default;

bool KMainWindowShadowBorder::isWanted(const QStyle* style)
{
    for (const QStyle* s = style; s;) {
        if (qobject_cast<const KORBStyle_2013*>(s))
            return true;
        auto* proxy = qobject_cast<const QProxyStyle*>(s);
        s = proxy && proxy->baseStyle() != s ? proxy->baseStyle() : nullptr;
    }
    return false;
}

void KMainWindowShadowBorder::_follow()
{
    QWidget* host = m_host.data();
    if (!host)
        return;
    if (!host->isVisible() || host->isMaximized() || host->isFullScreen() || host->isMinimized()) {
        hide();
        return;
    }
    const int t = m_thickness;
    setGeometry(host->frameGeometry().adjusted(-t, -t, t, t));
    if (isHidden()) {
        show();
        lower();
    }
}

bool KMainWindowShadowBorder::eventFilter(QObject* watched, QEvent* e)
{
    if (watched != m_host.data())
        return QWidget::eventFilter(watched, e);
    switch (e->type()) {
    case QEvent::Show:
        _follow();
        show();
        lower(); // under the host, every time
        break;
    case QEvent::Hide:
        hide();
        break;
    case QEvent::Move:
    case QEvent::Resize:
    case QEvent::WindowStateChange:
        _follow();
        break;
    default:
        break;
    }
    return QWidget::eventFilter(watched, e);
}

int KMainWindowShadowBorder::zoneAt(const QPoint& pos) const
{
    const int t = m_thickness;
    // Corners reach twice the thickness along their edges, so that they are easy to catch.
    const int corner = 2 * t;
    const bool left = pos.x() < t;
    const bool right = pos.x() >= width() - t;
    const bool top = pos.y() < t;
    const bool bottom = pos.y() >= height() - t;
    const bool nearLeft = pos.x() < corner;
    const bool nearRight = pos.x() >= width() - corner;
    const bool nearTop = pos.y() < corner;
    const bool nearBottom = pos.y() >= height() - corner;
    if ((top && nearLeft) || (left && nearTop))
        return TopLeft;
    if ((top && nearRight) || (right && nearTop))
        return TopRight;
    if ((bottom && nearLeft) || (left && nearBottom))
        return BottomLeft;
    if ((bottom && nearRight) || (right && nearBottom))
        return BottomRight;
    if (left)
        return Left;
    if (right)
        return Right;
    if (top)
        return Top;
    if (bottom)
        return Bottom;
    return NoZone;
}

Qt::CursorShape KMainWindowShadowBorder::cursorOf(int zone)
{
    switch (zone) {
    case TopLeft:
    case BottomRight:
        return Qt::SizeFDiagCursor;
    case TopRight:
    case BottomLeft:
        return Qt::SizeBDiagCursor;
    case Top:
    case Bottom:
        return Qt::SizeVerCursor;
    case Left:
    case Right:
        return Qt::SizeHorCursor;
    default:
        return Qt::ArrowCursor;
    }
}

QRect KMainWindowShadowBorder::resized(const QRect& geometry, int zone, const QPoint& cursor, const QSize& minimum)
{
    QRect r = geometry;
    const bool left = zone == Left || zone == TopLeft || zone == BottomLeft;
    const bool right = zone == Right || zone == TopRight || zone == BottomRight;
    const bool top = zone == Top || zone == TopLeft || zone == TopRight;
    const bool bottom = zone == Bottom || zone == BottomLeft || zone == BottomRight;
    const int minW = qMax(1, minimum.width());
    const int minH = qMax(1, minimum.height());
    if (left)
        r.setLeft(qMin(cursor.x(), geometry.right() - minW + 1));
    if (right)
        r.setRight(qMax(cursor.x(), geometry.left() + minW - 1));
    if (top)
        r.setTop(qMin(cursor.y(), geometry.bottom() - minH + 1));
    if (bottom)
        r.setBottom(qMax(cursor.y(), geometry.top() + minH - 1));
    return r;
}

void KMainWindowShadowBorder::paintEvent(QPaintEvent*)
{
    QPainter painter(this);
    KStyleOptionMainBorder option;
    option.initFrom(this);
    option.borderWidth = m_thickness;
    style()->drawPrimitive(KORBStyle::KPE_BorderShadow, &option, &painter, this);
}

void KMainWindowShadowBorder::mousePressEvent(QMouseEvent* e)
{
    if (e->button() != Qt::LeftButton)
        return;
    const int zone = zoneAt(e->position().toPoint());
    Qt::Edges edges;
    if (zone == Left || zone == TopLeft || zone == BottomLeft)
        edges |= Qt::LeftEdge;
    if (zone == Right || zone == TopRight || zone == BottomRight)
        edges |= Qt::RightEdge;
    if (zone == Top || zone == TopLeft || zone == TopRight)
        edges |= Qt::TopEdge;
    if (zone == Bottom || zone == BottomLeft || zone == BottomRight)
        edges |= Qt::BottomEdge;
    // A window manager resizes the window itself; without one the drag does it by hand.
    QWidget* host = m_host.data();
    if (edges && host && host->windowHandle() && host->windowHandle()->startSystemResize(edges))
        return;
    m_dragZone = zone;
}

void KMainWindowShadowBorder::mouseMoveEvent(QMouseEvent* e)
{
    QWidget* host = m_host.data();
    if (m_dragZone == NoZone || !host || !(e->buttons() & Qt::LeftButton)) {
        const int zone = zoneAt(e->position().toPoint());
        if (zone != m_hoverZone) {
            m_hoverZone = zone;
            setCursor(cursorOf(zone));
        }
        return;
    }
    const QRect frame = host->frameGeometry();
    const QMargins decoration(host->geometry().left() - frame.left(), host->geometry().top() - frame.top(),
                              frame.right() - host->geometry().right(), frame.bottom() - host->geometry().bottom());
    const QRect wanted = resized(frame, m_dragZone, e->globalPosition().toPoint(), host->minimumSize());
    host->setGeometry(wanted - decoration);
}

void KMainWindowShadowBorder::mouseReleaseEvent(QMouseEvent* e)
{
    if (e->button() == Qt::LeftButton)
        m_dragZone = NoZone;
}
