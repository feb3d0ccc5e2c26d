#include "kpwdtooltipwidget.h"

#include <QGuiApplication>
#include <QPainter>
#include <QPainterPath>
#include <QPainterPathStroker>
#include <QScreen>

#include <kapptheme.h>
#include <kdrawhelpfunc.h>

namespace {
const int Margin = 8;        // around the contents
const int IconSize = 16;
const int Gap = 6;           // between the icon and the texts
const int LineGap = 4;       // between the title and the content
const int MaxTextWidth = 260;
const int ArrowOffset = 20;  // from the balloon's near edge to the arrow's point
const int ArrowHalfBase = 8;
const int Radius = 4;
} // namespace

KPwdToolTipWidget::KPwdToolTipWidget(QWidget* parent)
    : QWidget(parent, Qt::ToolTip | Qt::FramelessWindowHint)
{
    setAttribute(Qt::WA_ShowWithoutActivating);
    setFocusPolicy(Qt::NoFocus);
    m_titleTextFont = font();
    m_contentTextFont = font();
    m_titleTextColor = palette().color(QPalette::ToolTipText);
    m_contentTextColor = palette().color(QPalette::ToolTipText);
    m_outLineColor = palette().color(QPalette::ToolTipText);
    m_timer.setSingleShot(true);
    connect(&m_timer, &QTimer::timeout, this, &KPwdToolTipWidget::timeoutslot);
}

KPwdToolTipWidget::~KPwdToolTipWidget() = default;

void KPwdToolTipWidget::setTitleText(const QString& text)
{
    if (m_titleText == text)
        return;
    m_titleText = text;
    _relayout();
}

void KPwdToolTipWidget::setContentText(const QString& text)
{
    if (m_contentText == text)
        return;
    m_contentText = text;
    _relayout();
}

void KPwdToolTipWidget::setIconPixmap(const QPixmap& pixmap)
{
    m_iconPixmap = pixmap;
    update();
}

void KPwdToolTipWidget::setOutLineColor(const QColor& color)
{
    if (m_outLineColor == color)
        return;
    m_outLineColor = color;
    update();
}

void KPwdToolTipWidget::setTitleTextColor(const QColor& color)
{
    if (m_titleTextColor == color)
        return;
    m_titleTextColor = color;
    update();
}

void KPwdToolTipWidget::setContentTextColor(const QColor& color)
{
    if (m_contentTextColor == color)
        return;
    m_contentTextColor = color;
    update();
}

void KPwdToolTipWidget::setTitleTextFont(const QFont& font)
{
    if (m_titleTextFont == font)
        return;
    m_titleTextFont = font;
    _relayout();
}

void KPwdToolTipWidget::setContentTextFont(const QFont& font)
{
    if (m_contentTextFont == font)
        return;
    m_contentTextFont = font;
    _relayout();
}

int KPwdToolTipWidget::_textWidth() const
{
    int widest = QFontMetrics(m_titleTextFont).horizontalAdvance(m_titleText);
    const QFontMetrics content(m_contentTextFont);
    for (const QString& line : m_contentText.split(QLatin1Char('\n')))
        widest = qMax(widest, content.horizontalAdvance(line.trimmed()));
    return qMin(widest, MaxTextWidth);
}

QSize KPwdToolTipWidget::_bodySize() const
{
    const int textWidth = _textWidth();
    const int titleHeight = QFontMetrics(m_titleTextFont).height();
    int height = Margin + qMax(IconSize, titleHeight) + Margin;
    if (!m_contentText.isEmpty()) {
        const QRect wrapped = QFontMetrics(m_contentTextFont)
                                  .boundingRect(QRect(0, 0, textWidth, 100000), Qt::TextWordWrap, m_contentText);
        height += LineGap + wrapped.height();
    }
    return QSize(Margin + IconSize + Gap + textWidth + Margin, height);
}

QRect KPwdToolTipWidget::judgePosition(const QPoint& anchor)
{
    const QSize body = _bodySize();
    const QSize total(body.width(), body.height() + m_arrowHeight);
    QScreen* screen = QGuiApplication::screenAt(anchor);
    if (!screen)
        screen = QGuiApplication::primaryScreen();
    const QRect area = screen ? screen->geometry() : QRect(anchor, total);

    m_right = anchor.x() - ArrowOffset + total.width() - 1 <= area.right();
    m_below = anchor.y() + total.height() - 1 <= area.bottom();
    int x = m_right ? anchor.x() - ArrowOffset : anchor.x() + ArrowOffset - total.width() + 1;
    int y = m_below ? anchor.y() : anchor.y() - total.height() + 1;
    // Wholly on the screen, even where the anchor sits in a corner.
    x = qMax(area.left(), qMin(x, area.right() - total.width() + 1));
    y = qMax(area.top(), qMin(y, area.bottom() - total.height() + 1));
    return QRect(QPoint(x, y), total);
}

void KPwdToolTipWidget::show(const QPoint& anchor)
{
    m_arrowHeight = ArrowHeight;
    m_anchor = anchor;
    setGeometry(judgePosition(anchor));
    _relayout();
    QWidget::show(); // a window just mapped stands on top of the others
}

void KPwdToolTipWidget::_relayout()
{
    if (m_arrowHeight > 0 && isVisible()) {
        const QRect place = judgePosition(m_anchor);
        if (place != geometry())
            setGeometry(place);
    }
    // Shaped to the balloon: without a compositor a window can't be see-through.
    QPainterPathStroker stroker;
    stroker.setWidth(2);
    const QPainterPath outline = _balloonPath().united(stroker.createStroke(_balloonPath())).simplified();
    QRegion region;
    for (const QPolygonF& polygon : outline.toFillPolygons())
        region += QRegion(polygon.toPolygon(), Qt::WindingFill);
    setMask(region);
    update();
}

QRect KPwdToolTipWidget::_bodyRect() const
{
    const int bodyHeight = height() - m_arrowHeight;
    return m_below ? QRect(0, m_arrowHeight, width(), bodyHeight) : QRect(0, 0, width(), bodyHeight);
}

QPainterPath KPwdToolTipWidget::_balloonPath() const
{
    const QRectF body = QRectF(_bodyRect()).adjusted(0.5, 0.5, -0.5, -0.5);
    QPainterPath path;
    path.addRoundedRect(body, Radius, Radius);
    if (m_arrowHeight <= 0)
        return path;
    // The point is the anchor; the base sits on the balloon's edge, inside its corners.
    const QPointF point = QPointF(m_anchor - geometry().topLeft()) + QPointF(0.5, 0.5);
    const qreal low = body.left() + Radius + ArrowHalfBase;
    const qreal high = body.right() - Radius - ArrowHalfBase;
    const qreal centre = low <= high ? qBound(low, point.x(), high) : body.center().x();
    const qreal baseY = m_below ? body.top() + 1 : body.bottom() - 1;
    const qreal pointY = m_below ? 0.5 : height() - 0.5;
    QPainterPath arrow;
    arrow.moveTo(centre - ArrowHalfBase, baseY);
    arrow.lineTo(point.x(), pointY);
    arrow.lineTo(centre + ArrowHalfBase, baseY);
    arrow.closeSubpath();
    return path.united(arrow);
}

void KPwdToolTipWidget::paintEvent(QPaintEvent*)
{
    QPainter painter(this);
    painter.setRenderHint(QPainter::Antialiasing);
    const QString themeClass = QStringLiteral("KHintBox");
    // The theme may give a colour or a gradient; without either, the palette's tip colour.
    const QColor colour = KDrawHelpFunc::getColorFromTheme(themeClass, QStringLiteral("background"));
    QBrush background = palette().toolTipBase();
    if (colour.isValid()) {
        background = colour;
    } else {
        const QGradient& gradient = KDrawHelpFunc::getGradientFromTheme(themeClass, QStringLiteral("background"));
        if (&gradient != &KAppTheme::defaultGradient() && !gradient.stops().isEmpty())
            background = QBrush(gradient);
    }
    painter.setPen(QPen(m_outLineColor, 1));
    painter.setBrush(background);
    painter.drawPath(_balloonPath());

    const QRect body = _bodyRect();
    const int textLeft = body.left() + Margin + IconSize + Gap;
    const int textWidth = body.right() - Margin - textLeft + 1;
    const int titleHeight = QFontMetrics(m_titleTextFont).height();
    if (!m_iconPixmap.isNull())
        painter.drawPixmap(QRect(body.left() + Margin, body.top() + Margin, IconSize, IconSize), m_iconPixmap);
    painter.setPen(m_titleTextColor);
    painter.setFont(m_titleTextFont);
    painter.drawText(QRect(textLeft, body.top() + Margin, textWidth, qMax(IconSize, titleHeight)),
                     Qt::AlignLeft | Qt::AlignVCenter, m_titleText);
    painter.setPen(m_contentTextColor);
    painter.setFont(m_contentTextFont);
    const int contentTop = body.top() + Margin + qMax(IconSize, titleHeight) + LineGap;
    painter.drawText(QRect(textLeft, contentTop, textWidth, body.bottom() - Margin - contentTop + 1),
                     Qt::AlignLeft | Qt::AlignTop | Qt::TextWordWrap, m_contentText);
}

void KPwdToolTipWidget::showEvent(QShowEvent* e)
{
    QWidget::showEvent(e);
    if (m_autoHideTime > 0)
        m_timer.start(m_autoHideTime);
    else
        m_timer.stop();
}

void KPwdToolTipWidget::mousePressEvent(QMouseEvent*)
{
    hide();
}

void KPwdToolTipWidget::resizeEvent(QResizeEvent* e)
{
    QWidget::resizeEvent(e);
    _relayout();
}

void KPwdToolTipWidget::timeoutslot()
{
    hide();
}
