#include "kdragtoolbar.h"

#include <QMouseEvent>
#include <QPainter>
#include <QPainterPath>

#include "kdrawhelpfunc.h"
#include "klistcommand.h"
#include "kseparatorcommand.h"

namespace {

const QString s_themeClass = QStringLiteral("KToolBar");

// A theme gradient spread over the painted shape, or the plain colour of the same name.
QBrush themeBrush(const QString& name)
{
    const QColor color = KDrawHelpFunc::getColorFromTheme(s_themeClass, name);
    if (color.isValid())
        return color;
    QGradient gradient = KDrawHelpFunc::getGradientFromTheme(s_themeClass, name);
    if (gradient.stops().isEmpty())
        return QBrush();
    gradient.setCoordinateMode(QGradient::ObjectBoundingMode);
    return QBrush(gradient);
}

} // namespace

// --- KDragHandler ---

KDragHandler::KDragHandler(QWidget* parent)
    : QWidget(parent), m_moved(parent)
{
    setCursor(Qt::SizeAllCursor);
    setSizePolicy(QSizePolicy::Fixed, QSizePolicy::Fixed);
    setAttribute(Qt::WA_Hover);
}

QSize KDragHandler::sizeHint() const
{
    return QSize(10, 24);
}

void KDragHandler::mousePressEvent(QMouseEvent* e)
{
    if (e->button() != Qt::LeftButton) {
        QWidget::mousePressEvent(e);
        return;
    }
    m_pressed = true;
    m_pressPoint = e->position().toPoint();
    e->accept();
}

void KDragHandler::mouseMoveEvent(QMouseEvent* e)
{
    if (!m_pressed || !m_moved) {
        QWidget::mouseMoveEvent(e);
        return;
    }
    // The grip moves with the bar, so the press point stays under the cursor in the grip's
    // own coordinates: the distance from it is the step still to go.
    m_moved->move(m_moved->pos() + (e->position().toPoint() - m_pressPoint));
    e->accept();
}

void KDragHandler::mouseReleaseEvent(QMouseEvent* e)
{
    if (e->button() == Qt::LeftButton)
        m_pressed = false;
    QWidget::mouseReleaseEvent(e);
}

void KDragHandler::enterEvent(QEnterEvent* e)
{
    update();
    QWidget::enterEvent(e);
}

void KDragHandler::leaveEvent(QEvent* e)
{
    update();
    QWidget::leaveEvent(e);
}

void KDragHandler::paintEvent(QPaintEvent*)
{
    // Two columns of dots; brighter while the mouse is over the grip.
    QPainter painter(this);
    painter.setRenderHint(QPainter::Antialiasing);
    const bool hot = underMouse() || m_pressed;
    QColor dot = KDrawHelpFunc::getColorFromTheme(QStringLiteral("KToolButton"),
                                                  hot ? QStringLiteral("border-hover") : QStringLiteral("border"));
    if (!dot.isValid())
        dot = palette().color(QPalette::Mid);
    painter.setPen(Qt::NoPen);
    painter.setBrush(dot);
    const int rows = qMax(1, (height() - 6) / 4);
    const int top = (height() - rows * 4) / 2 + 1;
    const int left = (width() - 6) / 2;
    for (int r = 0; r < rows; ++r) {
        painter.drawEllipse(QRectF(left, top + r * 4, 2, 2));
        painter.drawEllipse(QRectF(left + 4, top + r * 4, 2, 2));
    }
}

// --- KDragButton ---

KDragButton::KDragButton(QWidget* parent)
    : KToolButton(parent)
{
}

// --- KDragToolBardWrapAction ---

KDragToolBardWrapAction::KDragToolBardWrapAction(KCommand* command, QObject* parent)
    : QWidgetAction(parent), m_command(command)
{
    if (command)
        connect(command, &KCommand::changed, this, &KDragToolBardWrapAction::_syncCommand);
    _syncCommand();
}

void KDragToolBardWrapAction::_syncCommand()
{
    if (!m_command)
        return;
    setEnabled(m_command->isEnabled());
    setVisible(m_command->isVisible());
}

QWidget* KDragToolBardWrapAction::createWidget(QWidget* parent)
{
    auto* button = new KDragButton(parent);
    button->setButtonStyle(button->buttonStyle() | KToolButton::StyleHotKey);
    button->setDefaultCommand(m_command.data());
    return button;
}

// --- KDragToolBar ---

KDragToolBar::KDragToolBar(KListCommand* command, KMainWindow* window)
    : KToolBar(window), m_list(command)
{
    // Only the bar's rounded panel is painted; around it the screen shows through.
    setAttribute(Qt::WA_TranslucentBackground);
    m_handler = new KDragHandler(this);
    addWidget(m_handler);
    if (!command)
        return;
    const int n = command->count();
    for (int i = 0; i < n; ++i) {
        KCommand* sub = command->subCommand(i);
        if (KSeparatorCommand::isSeparator(sub))
            addSeparator(); // a line, not a button with nothing on it
        else if (sub)
            addAction(new KDragToolBardWrapAction(sub, this));
    }
}

Qt::WindowFlags KDragToolBar::floatingWindowFlags() const
{
    // No title bar: the grip moves the bar.
    return Qt::Tool | Qt::FramelessWindowHint;
}

void KDragToolBar::paintEvent(QPaintEvent*)
{
    QPainter painter(this);
    painter.setRenderHint(QPainter::Antialiasing);
    const QRectF panel = QRectF(rect()).adjusted(0.5, 0.5, -0.5, -0.5);
    QPainterPath path;
    path.addRoundedRect(panel, 3, 3);
    QBrush background = themeBrush(QStringLiteral("background-hor"));
    if (background.style() == Qt::NoBrush)
        background = palette().window();
    painter.fillPath(path, background);
    QColor border = KDrawHelpFunc::getColorFromTheme(s_themeClass, QStringLiteral("border"));
    if (!border.isValid())
        border = palette().color(QPalette::Mid);
    painter.setPen(border);
    painter.drawPath(path);
}
