#include "kdrawhelpfunc.h"

#include <QAbstractButton>
#include <QApplication>
#include <QFileIconProvider>
#include <QFileInfo>
#include <QPainter>
#include <QStyle>
#include <QStyleOptionButton>
#include <QUrl>
#include <QWidget>

#include <kapplication.h>
#include <kapptheme.h>

namespace {

KAppTheme* currentTheme()
{
    KApplication* app = KApplication::instance();
    return app ? app->theme() : nullptr;
}

/// The state word of a button: "-disable", "-down", "-hover" or nothing.
QString buttonStateSuffix(const QWidget* button)
{
    if (!button)
        return QString();
    if (!button->isEnabled())
        return QStringLiteral("-disable");
    auto* ab = qobject_cast<const QAbstractButton*>(button);
    if (ab && ab->isDown())
        return QStringLiteral("-down");
    if (button->underMouse())
        return QStringLiteral("-hover");
    return QString();
}

} // namespace

// --- theme access ---

QColor KDrawHelpFunc::getColorFromTheme(const QString& className, const QString& name)
{
    KAppTheme* theme = currentTheme();
    return theme ? theme->getColor(className, name, QColor()) : QColor();
}

const QGradient& KDrawHelpFunc::getGradientFromTheme(const QString& className, const QString& name)
{
    KAppTheme* theme = currentTheme();
    return theme ? theme->getGradient(className, name, KAppTheme::defaultGradient())
                 : KAppTheme::defaultGradient();
}

QImage KDrawHelpFunc::getImageFromTheme(const QString& className, const QString& name)
{
    KAppTheme* theme = currentTheme();
    return theme ? theme->getImage(className, name, QImage()) : QImage();
}

QColor KDrawHelpFunc::getButtonBoardColor(const QString& className, const QWidget* button)
{
    return getColorFromTheme(className, QStringLiteral("border") + buttonStateSuffix(button));
}

QBrush KDrawHelpFunc::getButtonBackground(const QString& className, const QWidget* button)
{
    const QString suffix = buttonStateSuffix(button);
    const QString name = QStringLiteral("background") + suffix;
    // Deliberately asymmetric: the plain and disabled backgrounds are colours, the pressed
    // and hovered ones gradients.
    if (suffix == QLatin1String("-down") || suffix == QLatin1String("-hover"))
        return QBrush(getGradientFromTheme(className, name));
    return QBrush(getColorFromTheme(className, name));
}

QColor KDrawHelpFunc::getBaseColor()
{
    return getColorFromTheme(QStringLiteral("theme"), QStringLiteral("theme1"));
}

QColor KDrawHelpFunc::getColorByDsDv(int ds, int dv)
{
    const QColor base = getBaseColor();
    if (!base.isValid())
        return QColor();
    int h = 0, s = 0, v = 0, a = 255;
    base.getHsv(&h, &s, &v, &a);
    // No clamp here, unlike the theme's relative colours: out-of-range values give an
    // invalid colour, which callers treat as "no colour".
    return QColor::fromHsv(h, s + ds, v + dv, a).toRgb();
}

void KDrawHelpFunc::getDsDvByColor(const QColor& color, int& ds, int& dv)
{
    const QColor base = getBaseColor();
    ds = color.hsvSaturation() - base.hsvSaturation();
    dv = color.value() - base.value();
}

QString KDrawHelpFunc::getScrollStyleName(const QString& name)
{
    return name.endsWith(QLatin1String("-deep")) ? QStringLiteral("-deep") : QString();
}

// --- outlines ---

QPainterPath KDrawHelpFunc::getBoundPath(const QRect& rect, int radius, int corners)
{
    const QRectF r(rect);
    const qreal d = 2.0 * radius;
    const qreal l = r.left(), t = r.top(), R = r.right(), B = r.bottom();
    QPainterPath path;
    const bool tl = (corners & 1) && radius > 0;
    const bool tr = (corners & 2) && radius > 0;
    const bool bl = (corners & 4) && radius > 0;
    const bool br = (corners & 8) && radius > 0;
    path.moveTo(tl ? l + radius : l, t);
    if (tr) {
        path.lineTo(R - radius, t);
        path.arcTo(QRectF(R - d, t, d, d), 90, -90);
    } else {
        path.lineTo(R, t);
    }
    if (br) {
        path.lineTo(R, B - radius);
        path.arcTo(QRectF(R - d, B - d, d, d), 0, -90);
    } else {
        path.lineTo(R, B);
    }
    if (bl) {
        path.lineTo(l + radius, B);
        path.arcTo(QRectF(l, B - d, d, d), 270, -90);
    } else {
        path.lineTo(l, B);
    }
    if (tl) {
        path.lineTo(l, t + radius);
        path.arcTo(QRectF(l, t, d, d), 180, -90);
    } else {
        path.lineTo(l, t);
    }
    path.closeSubpath();
    return path;
}

QPainterPath KDrawHelpFunc::getBoundPath2(const QRect& rect, int radius)
{
    return getBoundPath(rect, radius, 15);
}

QPainterPath KDrawHelpFunc::getBoundPath2(const QRect& rect)
{
    return getBoundPath4(rect, 15);
}

QPainterPath KDrawHelpFunc::getBoundPath3(const QRect& rect, int radius)
{
    const QRectF r(rect);
    const qreal d = 2.0 * radius;
    QPainterPath path;
    path.moveTo(r.left(), r.top());
    path.lineTo(r.left(), r.bottom() - radius);
    if (radius > 0)
        path.arcTo(QRectF(r.left(), r.bottom() - d, d, d), 180, 90);
    path.lineTo(r.right() - radius, r.bottom());
    if (radius > 0)
        path.arcTo(QRectF(r.right() - d, r.bottom() - d, d, d), 270, 90);
    path.lineTo(r.right(), r.top());
    return path;
}

QPainterPath KDrawHelpFunc::getBoundPath4(const QRect& rect, int corners)
{
    const QRectF r(rect);
    const qreal l = r.left(), t = r.top(), R = r.right(), B = r.bottom();
    QPainterPath path;
    if (corners & 1)
        path.moveTo(l + 1, t);
    else
        path.moveTo(l, t);
    if (corners & 2) {
        path.lineTo(R - 1, t);
        path.lineTo(R, t + 1);
    } else {
        path.lineTo(R, t);
    }
    if (corners & 8) {
        path.lineTo(R, B - 1);
        path.lineTo(R - 1, B);
    } else {
        path.lineTo(R, B);
    }
    if (corners & 4) {
        path.lineTo(l + 1, B);
        path.lineTo(l, B - 1);
    } else {
        path.lineTo(l, B);
    }
    if (corners & 1)
        path.lineTo(l, t + 1);
    path.closeSubpath();
    return path;
}

QPainterPath KDrawHelpFunc::getPopupWidgetBoundPath(const QRect& rect)
{
    const QRectF r(rect);
    const qreal l = r.left(), t = r.top(), R = r.right(), B = r.bottom();
    QPainterPath path;
    path.moveTo(l + 1, t);
    path.lineTo(R - 1, t);
    path.moveTo(R, t + 1);
    path.lineTo(R, B - 1);
    path.moveTo(R - 1, B);
    path.lineTo(l + 1, B);
    path.moveTo(l, B - 1);
    path.lineTo(l, t + 1);
    return path;
}

QPainterPath KDrawHelpFunc::getScrollBarArc_Hor(const QRect& rect, bool roundStart, bool roundEnd)
{
    const QRectF r(rect);
    const qreal d = r.height();
    const qreal rad = d / 2.0;
    QPainterPath path;
    path.moveTo(roundStart ? r.left() + rad : r.left(), r.top());
    if (roundEnd) {
        path.lineTo(r.right() - rad, r.top());
        path.arcTo(QRectF(r.right() - d, r.top(), d, d), 90, -180);
    } else {
        path.lineTo(r.right(), r.top());
        path.lineTo(r.right(), r.bottom());
    }
    if (roundStart) {
        path.lineTo(r.left() + rad, r.bottom());
        path.arcTo(QRectF(r.left(), r.top(), d, d), 270, -180);
    } else {
        path.lineTo(r.left(), r.bottom());
    }
    path.closeSubpath();
    return path;
}

QPainterPath KDrawHelpFunc::getScrollBarArc_Ver(const QRect& rect, bool roundStart, bool roundEnd)
{
    const QRectF r(rect);
    const qreal d = r.width();
    const qreal rad = d / 2.0;
    QPainterPath path;
    path.moveTo(r.right(), roundStart ? r.top() + rad : r.top());
    if (roundEnd) {
        path.lineTo(r.right(), r.bottom() - rad);
        path.arcTo(QRectF(r.left(), r.bottom() - d, d, d), 0, -180);
    } else {
        path.lineTo(r.right(), r.bottom());
        path.lineTo(r.left(), r.bottom());
    }
    if (roundStart) {
        path.lineTo(r.left(), r.top() + rad);
        path.arcTo(QRectF(r.left(), r.top(), d, d), 180, -180);
    } else {
        path.lineTo(r.left(), r.top());
    }
    path.closeSubpath();
    return path;
}

namespace {
QPolygon slantedBar(const QPoint& p, int length, int width, int dx, int dy)
{
    // A parallelogram: its long edges run along (dx, dy) per step, its short edges are
    // horizontal and width pixels wide.
    const int steps = dy != 0 ? length / dy : length;
    const QPoint end = p + QPoint(dx * steps, dy * steps);
    return QPolygon({p, p + QPoint(width, 0), end + QPoint(width, 0), end});
}
} // namespace

QPolygon KDrawHelpFunc::slashRect_Angle1(const QPoint& point, int length, int width)
{
    return slantedBar(point, length, width, 1, 2);
}

QPolygon KDrawHelpFunc::slashRect_Angle2(const QPoint& point, int length, int width)
{
    return slantedBar(point, length, width, 2, 1);
}

QPolygon KDrawHelpFunc::slashRect_Angle45(const QPoint& point, int length, int width)
{
    return slantedBar(point, length, width, 1, 1);
}

QPolygon KDrawHelpFunc::squareCornerRect(const QRect& rect, int size)
{
    const int l = rect.left(), t = rect.top(), R = rect.right(), B = rect.bottom(), s = size;
    return QPolygon({QPoint(l + s, t), QPoint(R - s, t), QPoint(R - s, t + s), QPoint(R, t + s),
                     QPoint(R, B - s), QPoint(R - s, B - s), QPoint(R - s, B), QPoint(l + s, B),
                     QPoint(l + s, B - s), QPoint(l, B - s), QPoint(l, t + s), QPoint(l + s, t + s)});
}

QLinearGradient KDrawHelpFunc::rotateLinearGradient90(const QLinearGradient& gradient)
{
    const QPointF start = gradient.start();
    const QPointF stop = gradient.finalStop();
    QLinearGradient turned(QPointF(start.y(), start.x()), QPointF(stop.y(), stop.x()));
    turned.setStops(gradient.stops());
    turned.setSpread(gradient.spread());
    turned.setCoordinateMode(gradient.coordinateMode());
    return turned;
}

QMargins KDrawHelpFunc::rotateMargins90(const QMargins& margins)
{
    return QMargins(margins.top(), margins.left(), margins.bottom(), margins.right());
}

// --- state rectangles ---

void KDrawHelpFunc::drawCheckedRect(QPainter& painter, const QRect& rect, int radius)
{
    painter.save();
    painter.setPen(getColorFromTheme(QStringLiteral("button"), QStringLiteral("border-down")));
    painter.setBrush(QBrush(getGradientFromTheme(QStringLiteral("button"), QStringLiteral("background-down"))));
    painter.drawPath(getBoundPath(rect, radius, 15));
    painter.restore();
}

void KDrawHelpFunc::drawFocusRect(QPainter& painter, const QRect& rect, int radius)
{
    painter.save();
    painter.setBrush(Qt::NoBrush);
    painter.setPen(getColorFromTheme(QStringLiteral("button"), QStringLiteral("border-hover")));
    painter.drawPath(getBoundPath(rect, radius, 15));
    painter.setPen(getColorFromTheme(QStringLiteral("button"), QStringLiteral("border-light")));
    painter.setBrush(QBrush(getGradientFromTheme(QStringLiteral("button"), QStringLiteral("background-hover"))));
    painter.drawPath(getBoundPath(rect.adjusted(1, 1, -1, -1), radius, 15));
    painter.restore();
}

// --- text ---

void KDrawHelpFunc::drawColorText(QPainter& painter, const QColor& color, const QRect& rect, int flags,
                                  const QString& text)
{
    painter.save();
    painter.setPen(color);
    painter.drawText(rect, flags, text);
    painter.restore();
}

void KDrawHelpFunc::drawColorText(QPainter& painter, const QColor& color, const QRectF& rect, int flags,
                                  const QString& text)
{
    painter.save();
    painter.setPen(color);
    painter.drawText(rect, flags, text);
    painter.restore();
}

void KDrawHelpFunc::drawColorText(QPainter& painter, const QColor& color, const QRectF& rect,
                                  const QString& text, const QTextOption& option)
{
    painter.save();
    painter.setPen(color);
    painter.drawText(rect, text, option);
    painter.restore();
}

void KDrawHelpFunc::drawText(QPainter& painter, const QRect& rect, const QString& text, int flags)
{
    drawColorText(painter, getColorFromTheme(QStringLiteral("common"), QStringLiteral("text")), rect,
                  flags, text);
}

void KDrawHelpFunc::drawShadowText(QPainter& painter, const QString& text, const QRect& rect, int flags,
                                   const QColor& color, const QColor& shadowColor)
{
    drawColorText(painter, shadowColor, rect.translated(1, 1), flags, text);
    drawColorText(painter, color, rect, flags, text);
}

void KDrawHelpFunc::DrawGlowingTextWithAero(QPainter& painter, const QString& text, QRect& rect)
{
    drawText(painter, rect, text);
}

QString KDrawHelpFunc::getDrawString(const QString& text, const QFontMetrics& metrics, const QRect& rect,
                                     const QString& suffix)
{
    QString result = text;
    bool shortened = false;
    const int suffixWidth = metrics.horizontalAdvance(suffix);
    // Halving, not the longest fit: cheap enough for every paint.
    while (metrics.horizontalAdvance(result) + (shortened ? suffixWidth : 0) > rect.width()) {
        if (result.size() <= 1)
            break;
        result = result.left(result.size() / 2);
        shortened = true;
    }
    if (shortened) {
        result += QStringLiteral("...");
        if (text.endsWith(QLatin1Char('*')))
            result += QLatin1Char('*'); // keep the mark of a changed document visible
    }
    return result;
}

// --- arrows ---

QColor KDrawHelpFunc::_arrowColor(bool enabled)
{
    const QColor c = getColorFromTheme(QStringLiteral("arrow"),
                                       QStringLiteral("arrow-%1").arg(enabled ? QStringLiteral("enable")
                                                                              : QStringLiteral("disable")));
    if (c.isValid())
        return c;
    return QApplication::palette().color(enabled ? QPalette::Active : QPalette::Disabled, QPalette::WindowText);
}

void KDrawHelpFunc::_drawArrow(QPainter& painter, const QPolygonF& triangle, const QPen& pen, const QBrush& brush)
{
    painter.save();
    painter.setPen(pen);
    painter.setBrush(brush);
    painter.drawPolygon(triangle);
    painter.restore();
}

void KDrawHelpFunc::drawLeftArraw(QPainter& painter, const QRect& rect, const QPen& pen, const QBrush& brush)
{
    const QRectF r(rect);
    _drawArrow(painter, QPolygonF({QPointF(r.right(), r.top()), QPointF(r.right(), r.bottom()),
                                   QPointF(r.left(), r.center().y())}),
               pen, brush);
}

void KDrawHelpFunc::drawLeftArraw(QPainter& painter, const QRect& rect, bool enabled)
{
    const QColor c = _arrowColor(enabled);
    drawLeftArraw(painter, rect, QPen(c), QBrush(c));
}

void KDrawHelpFunc::drawUpArraw(QPainter& painter, const QRect& rect, const QPen& pen, const QBrush& brush)
{
    const QRectF r(rect);
    _drawArrow(painter, QPolygonF({QPointF(r.left(), r.bottom()), QPointF(r.right(), r.bottom()),
                                   QPointF(r.center().x(), r.top())}),
               pen, brush);
}

void KDrawHelpFunc::drawUpArraw(QPainter& painter, const QRect& rect, bool enabled)
{
    const QColor c = _arrowColor(enabled);
    drawUpArraw(painter, rect, QPen(c), QBrush(c));
}

void KDrawHelpFunc::drawRightArraw(QPainter& painter, const QRect& rect, const QPen& pen, const QBrush& brush)
{
    const QRectF r(rect);
    _drawArrow(painter, QPolygonF({QPointF(r.left(), r.top()), QPointF(r.left(), r.bottom()),
                                   QPointF(r.right(), r.center().y())}),
               pen, brush);
}

void KDrawHelpFunc::drawRightArraw(QPainter& painter, const QRect& rect, bool enabled)
{
    const QColor c = _arrowColor(enabled);
    drawRightArraw(painter, rect, QPen(c), QBrush(c));
}

void KDrawHelpFunc::drawDownArraw(QPainter& painter, const QRect& rect, const QPen& pen, const QBrush& brush)
{
    const QRectF r(rect);
    _drawArrow(painter, QPolygonF({QPointF(r.left(), r.top()), QPointF(r.right(), r.top()),
                                   QPointF(r.center().x(), r.bottom())}),
               pen, brush);
}

void KDrawHelpFunc::drawDownArraw(QPainter& painter, const QRect& rect, bool enabled)
{
    if (enabled && rect.width() == 4 && rect.height() == 2) {
        // The tool buttons' drop-down mark is too small for a polygon to look crisp: set the
        // nine pixels of a 5-3-1 triangle one by one, each in its own theme colour.
        static const int rowStart[3] = {0, 1, 2};
        static const int rowLength[3] = {5, 3, 1};
        painter.save();
        int index = 0;
        for (int row = 0; row < 3; ++row) {
            for (int i = 0; i < rowLength[row]; ++i, ++index) {
                QColor c = getColorFromTheme(QStringLiteral("arrow"), QStringLiteral("downarrowr%1").arg(index));
                if (!c.isValid())
                    c = _arrowColor(true);
                painter.setPen(c);
                painter.drawPoint(rect.left() + rowStart[row] + i, rect.top() + row);
            }
        }
        painter.restore();
        return;
    }
    const QColor c = _arrowColor(enabled);
    drawDownArraw(painter, rect, QPen(c), QBrush(c));
}

// --- others ---

void KDrawHelpFunc::drawConnerPoints(QPainter& painter, const QRect& rect, const QPen& pen, int corners)
{
    const int l = rect.left(), t = rect.top(), R = rect.right(), B = rect.bottom();
    painter.save();
    painter.setPen(pen);
    if (corners & 1) {
        painter.drawPoint(l, t + 1);
        painter.drawPoint(l + 1, t);
    }
    if (corners & 2) {
        painter.drawPoint(R, t + 1);
        painter.drawPoint(R - 1, t);
    }
    if (corners & 4) {
        painter.drawPoint(l, B - 1);
        painter.drawPoint(l + 1, B);
    }
    if (corners & 8) {
        painter.drawPoint(R, B - 1);
        painter.drawPoint(R - 1, B);
    }
    painter.restore();
}

void KDrawHelpFunc::drawSeparator(QPainter& painter, const QRect& rect)
{
    // A dark line with a light one beside it, so the separator reads on any base colour.
    const int x = rect.left() + rect.width() / 2;
    painter.save();
    painter.setPen(getColorFromTheme(QStringLiteral("common"), QStringLiteral("border")));
    painter.drawLine(x, rect.top(), x, rect.bottom());
    painter.setPen(getColorFromTheme(QStringLiteral("common"), QStringLiteral("background")));
    painter.drawLine(x + 1, rect.top(), x + 1, rect.bottom());
    painter.restore();
}

void KDrawHelpFunc::paintContextPopupButton(QPainter& painter, const QWidget* widget, const QRect& rect,
                                            bool down, bool hover)
{
    QStyle* style = widget ? widget->style() : QApplication::style();
    QStyleOptionButton option;
    if (widget)
        option.initFrom(widget);
    option.rect = rect;
    option.state |= QStyle::State_Enabled;
    if (down)
        option.state |= QStyle::State_Sunken;
    else if (hover)
        option.state |= QStyle::State_MouseOver;
    style->drawControl(QStyle::CE_PushButtonBevel, &option, &painter, widget);
    QStyleOption arrow = option;
    arrow.type = QStyleOption::SO_Default;
    arrow.version = QStyleOption::Version;
    arrow.rect = QRect(rect.center() - QPoint(3, 3), QSize(8, 8));
    style->drawPrimitive(QStyle::PE_IndicatorArrowDown, &arrow, &painter, widget);
}

QPixmap KDrawHelpFunc::getburelage(const QColor& color)
{
    QPixmap tile(4, 4);
    tile.fill(color);
    QPainter painter(&tile);
    painter.setPen(getColorFromTheme(QStringLiteral("common"), QStringLiteral("spread")));
    painter.drawPoint(1, 0);
    painter.drawPoint(0, 1);
    painter.drawPoint(2, 1);
    painter.drawPoint(1, 2);
    return tile;
}

QIcon KDrawHelpFunc::getFileIcon(const QString& path)
{
    static QFileIconProvider s_provider;
    const QUrl url(path);
    if (path.startsWith(QLatin1String("//")) || (!url.scheme().isEmpty() && url.scheme() != QLatin1String("file")
                                                && url.scheme().size() > 1))
        return s_provider.icon(QFileIconProvider::Network);
    return s_provider.icon(QFileInfo(url.isLocalFile() ? url.toLocalFile() : path));
}

// --- key-tip placement ---

QPoint KDrawHelpFunc::getHotKeyShowPos(const QWidget* widget, const QSize& size, int alignment, int offset)
{
    if (!widget)
        return QPoint(0, 0);
    const QPoint pos = widget->mapTo(widget->window(), QPoint(0, 0));
    return modifyHotkeyPos(pos, size, alignment, offset, 0);
}

QPoint KDrawHelpFunc::modifyHotkeyPos(const QPoint& pos, const QSize& size, int alignment, int offset,
                                      int offset2)
{
    const int w = size.width();
    const int h = size.height();
    switch (alignment) {
    case 1:
        return pos + QPoint(w / 2, offset - 16);
    case 2:
        return pos + QPoint(w / 2, h - offset);
    case 3:
        return pos + QPoint(w - 8, -8);
    case 4:
        return pos + QPoint(w - 8 - offset, h - 8 - (offset2 != 0 ? offset2 : offset));
    case 5:
        return pos + QPoint(w / 2, h / 2);
    default:
        return pos;
    }
}

QPoint KDrawHelpFunc::getClassicHotKeyShowPos()
{
    return QPoint(-1, -1);
}

void KDrawHelpFunc::getStringFromAutoIndex(QString& text, int index)
{
    if (index < 0)
        return;
    if (text.isEmpty()) {
        if (index <= 9) {
            text += QString::number(index);
        } else {
            text += QLatin1Char('0');
            getStringFromAutoIndex(text, index - 9);
        }
        return;
    }
    if (index <= 9) {
        text += QString::number(index);
    } else if (index <= 34) {
        text += QChar(index + 55);
    } else {
        text += QLatin1Char('0');
        getStringFromAutoIndex(text, index - 34);
    }
}
