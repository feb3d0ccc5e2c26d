#include "ksizegrip.h"

#include <QMouseEvent>
#include <QPainter>

#include "kdrawhelpfunc.h"

namespace {

const QString s_themeClass = QStringLiteral("KSizeGrip");

bool movesLeft(KSizeGrip::GripType t)
{
    return t == KSizeGrip::Left || t == KSizeGrip::TopLeft || t == KSizeGrip::BottomLeft;
}
bool movesRight(KSizeGrip::GripType t)
{
    return t == KSizeGrip::Right || t == KSizeGrip::TopRight || t == KSizeGrip::BottomRight;
}
bool movesTop(KSizeGrip::GripType t)
{
    return t == KSizeGrip::Top || t == KSizeGrip::TopLeft || t == KSizeGrip::TopRight;
}
bool movesBottom(KSizeGrip::GripType t)
{
    return t == KSizeGrip::Bottom || t == KSizeGrip::BottomLeft || t == KSizeGrip::BottomRight;
}

QColor themeColor(const char* name, const QColor& fallback)
{
    const QColor c = KDrawHelpFunc::getColorFromTheme(s_themeClass, QLatin1String(name));
    return c.isValid() ? c : fallback;
}

} // namespace

KSizeGrip::KSizeGrip(QWidget* parent)
    : QWidget(parent)
{
    setMinimumSize(10, 10);
    setMouseTracking(true);
}

QSize KSizeGrip::sizeHint() const
{
    return QSize(10, 10);
}

void KSizeGrip::setSizeGripType(GripType type)
{
    if (type == m_type)
        return;
    m_type = type;
    m_pressed = false;
    _updateControlRect();
    unsetCursor();
    update();
}

void KSizeGrip::_updateControlRect()
{
    switch (m_type) {
    case Left:
    case Right:
    case Top:
    case Bottom:
        m_controlRect = rect();
        break;
    case TopLeft:
    case BottomLeft:
    case TopRight:
    case BottomRight: {
        const int side = qMin(width(), height());
        const int x = movesLeft(m_type) ? 0 : width() - side;
        const int y = movesTop(m_type) ? 0 : height() - side;
        m_controlRect = QRect(x, y, side, side);
        break;
    }
    default:
        m_controlRect = QRect();
        break;
    }
}

Qt::CursorShape KSizeGrip::_cursorShape() const
{
    switch (m_type) {
    case Left:
    case Right:
        return Qt::SizeHorCursor;
    case Top:
    case Bottom:
        return Qt::SizeVerCursor;
    case TopLeft:
    case BottomRight:
        return Qt::SizeFDiagCursor;
    default:
        return Qt::SizeBDiagCursor;
    }
}

void KSizeGrip::resizeEvent(QResizeEvent* e)
{
    _updateControlRect();
    QWidget::resizeEvent(e);
}

void KSizeGrip::mousePressEvent(QMouseEvent* e)
{
    const QPoint pos = e->position().toPoint();
    QWidget* target = parentWidget();
    if (e->button() != Qt::LeftButton || !target || !m_controlRect.contains(pos)) {
        QWidget::mousePressEvent(e);
        return;
    }
    setCursor(_cursorShape());
    m_pressed = true;
    // The moved edges keep their distance from the cursor, so the press makes no jump.
    const QPoint global = e->globalPosition().toPoint();
    const QRect g = target->geometry();
    const QPoint origin = target->isWindow() || !target->parentWidget()
                              ? QPoint()
                              : target->parentWidget()->mapToGlobal(QPoint());
    const QRect edges = g.translated(origin);
    m_pressedOffsetX = movesLeft(m_type) ? global.x() - edges.left() : movesRight(m_type) ? global.x() - edges.right() : 0;
    m_pressedOffsetY = movesTop(m_type) ? global.y() - edges.top() : movesBottom(m_type) ? global.y() - edges.bottom() : 0;
    e->accept();
}

void KSizeGrip::mouseMoveEvent(QMouseEvent* e)
{
    if (!m_pressed) {
        if (m_controlRect.contains(e->position().toPoint()))
            setCursor(_cursorShape());
        else
            unsetCursor();
        QWidget::mouseMoveEvent(e);
        return;
    }
    resizeParentWidget(e->globalPosition().toPoint() - QPoint(m_pressedOffsetX, m_pressedOffsetY));
    e->accept();
}

void KSizeGrip::mouseReleaseEvent(QMouseEvent* e)
{
    if (e->button() == Qt::LeftButton && m_pressed) {
        m_pressed = false;
        if (!m_controlRect.contains(e->position().toPoint()))
            unsetCursor();
        e->accept();
        return;
    }
    QWidget::mouseReleaseEvent(e);
}

void KSizeGrip::resizeParentWidget(const QPoint& globalPos)
{
    QWidget* target = parentWidget();
    if (!target || m_type >= NoGrip)
        return;
    // Work in the coordinates of the parent's own geometry: global for a window.
    const QPoint pos = target->isWindow() || !target->parentWidget() ? globalPos
                                                                     : target->parentWidget()->mapFromGlobal(globalPos);
    QSize minimum = target->minimumSize();
    if (minimum.isEmpty())
        minimum = minimum.expandedTo(target->minimumSizeHint());
    const QRect old = target->geometry();
    QRect g = old;
    if (movesLeft(m_type))
        g.setLeft(qMin(pos.x(), old.right() - minimum.width() + 1));
    if (movesRight(m_type))
        g.setRight(qMax(pos.x(), old.left() + minimum.width() - 1));
    if (movesTop(m_type))
        g.setTop(qMin(pos.y(), old.bottom() - minimum.height() + 1));
    if (movesBottom(m_type))
        g.setBottom(qMax(pos.y(), old.top() + minimum.height() - 1));
    if (g != old)
        target->setGeometry(g);
}

void KSizeGrip::paintEvent(QPaintEvent*)
{
    if (m_type >= NoGrip)
        return;
    QPainter painter(this);
    QGradient gradient = KDrawHelpFunc::getGradientFromTheme(s_themeClass, QStringLiteral("border-grad"));
    if (!gradient.stops().isEmpty()) {
        gradient.setCoordinateMode(QGradient::ObjectBoundingMode);
        painter.fillRect(rect(), QBrush(gradient));
    }
    // Dots: a light one under a dark one, so that they read on any background.
    const QColor darker = themeColor("darker", palette().color(QPalette::Dark));
    const QColor lighter = themeColor("lighter", palette().color(QPalette::Light));
    auto dot = [&](int x, int y) {
        painter.fillRect(x + 1, y + 1, 2, 2, lighter);
        painter.fillRect(x, y, 2, 2, darker);
    };
    const QRect r = m_controlRect.isValid() ? m_controlRect : rect();
    if (m_type <= Bottom) {
        // A row (or column) of three dots in the middle of the edge.
        const bool horizontalEdge = m_type == Top || m_type == Bottom;
        const QPoint c = r.center();
        for (int i = -1; i <= 1; ++i) {
            if (horizontalEdge)
                dot(c.x() + i * 4 - 1, c.y() - 1);
            else
                dot(c.x() - 1, c.y() + i * 4 - 1);
        }
        return;
    }
    // A corner: a triangle of six dots pointing at the corner.
    const int right = r.right() - 3;
    const int bottom = r.bottom() - 3;
    for (int row = 0; row < 3; ++row) {
        for (int col = 0; col <= row; ++col) {
            int x = right - col * 4;
            int y = bottom - (2 - row) * 4;
            if (movesLeft(m_type))
                x = r.left() + (r.right() - 3 - x);
            if (movesTop(m_type))
                y = r.top() + (r.bottom() - 3 - y);
            dot(x, y);
        }
    }
}
