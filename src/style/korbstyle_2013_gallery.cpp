// The 2013 look of galleries: the up, down and extend buttons of a gallery band, the band's
// frame and the background of a dropped-down gallery. Colours come from the theme classes
// "KGalleryScrollButton", "KGalleryInline" and "common", with the palette standing in for
// items a theme leaves out.
#include "korbstyle_2013.h"

#include <QPainter>
#include <QPolygon>

#include <kstyleoption.h>

#include "korbstyle_2013_p.h"

using namespace KOrb2013;

namespace {

const QString kScrollButton = QStringLiteral("KGalleryScrollButton");

// "-disable", "-down", "-hover" or empty: the suffix of the theme items by the state.
QString stateSuffix(const QStyleOption* o)
{
    if (!isEnabled(o))
        return QStringLiteral("-disable");
    if (o->state & QStyle::State_Sunken)
        return QStringLiteral("-down");
    if (o->state & QStyle::State_MouseOver)
        return QStringLiteral("-hover");
    return QString();
}

void drawScrollButtonPanel(const QStyleOption* o, QPainter* painter)
{
    const QString suffix = stateSuffix(o);
    const QRect r = o->rect;
    if (suffix == QLatin1String("-down") || suffix == QLatin1String("-hover")) {
        drawHotPanel(painter, r, o);
        return;
    }
    const QByteArray background = (QStringLiteral("background") + suffix).toLatin1();
    QBrush fill = brush(kScrollButton, background.constData(), QBrush());
    if (fill.style() == Qt::NoBrush)
        fill = brush(kScrollButton, "background", o->palette.brush(QPalette::Button));
    painter->save();
    painter->setPen(Qt::NoPen);
    painter->setBrush(fill);
    painter->drawRect(r);
    painter->setBrush(Qt::NoBrush);
    painter->setPen(color(kScrollButton, "border-in", o->palette.color(QPalette::Light)));
    painter->drawRect(r.adjusted(1, 1, -2, -2));
    painter->setPen(color(kScrollButton, "border", o->palette.color(QPalette::Mid)));
    painter->drawRect(r.adjusted(0, 0, -1, -1));
    painter->restore();
}

// A small solid triangle; the extend button adds a bar over its down arrow.
void drawScrollButtonArrow(const KStyleOptionGalleryScrollButton* o, QPainter* painter)
{
    const bool enabled = isEnabled(o);
    QColor arrow = enabled ? color(kScrollButton, "arrow-enable", textColor(o))
                           : color(kScrollButton, "arrow-disable", o->palette.color(QPalette::Disabled, QPalette::WindowText));
    const QPoint c = o->rect.center();
    QPolygon triangle;
    if (o->buttonType == KStyleOptionGalleryScrollButton::Up)
        triangle << QPoint(c.x() - 3, c.y() + 2) << QPoint(c.x() + 3, c.y() + 2) << QPoint(c.x(), c.y() - 1);
    else
        triangle << QPoint(c.x() - 3, c.y() - 1) << QPoint(c.x() + 3, c.y() - 1) << QPoint(c.x(), c.y() + 2);
    painter->save();
    painter->setRenderHint(QPainter::Antialiasing, false);
    if (o->buttonType == KStyleOptionGalleryScrollButton::Extend) {
        triangle.translate(0, 2);
        painter->setPen(enabled ? color(kScrollButton, "arrow-line", arrow) : arrow);
        painter->drawLine(c.x() - 3, c.y() - 2, c.x() + 3, c.y() - 2);
    }
    painter->setPen(arrow);
    painter->setBrush(arrow);
    painter->drawPolygon(triangle);
    painter->restore();
}

void drawInlineFrame(const QStyleOption* o, QPainter* painter)
{
    const QString cls = QStringLiteral("KGalleryInline");
    const QColor border = isEnabled(o) ? color(cls, "border", borderColor(o))
                                       : color(cls, "border-disable", o->palette.color(QPalette::Disabled, QPalette::Mid));
    drawOutline(painter, o->rect, border);
}

void drawPanel(const QStyleOption* o, QPainter* painter)
{
    painter->fillRect(o->rect, color(QStringLiteral("common"), "background", o->palette.color(QPalette::Window)));
}

} // namespace

bool KORBStyle_2013::drawGalleryControl(ControlElement element, const QStyleOption* option, QPainter* painter,
                                        const QWidget* widget) const
{
    Q_UNUSED(widget);
    if (!option || !painter)
        return false;
    switch (uint(element)) {
    case uint(KCE_GalleryScrollButton):
        if (auto* o = qstyleoption_cast<const KStyleOptionGalleryScrollButton*>(option)) {
            drawScrollButtonPanel(o, painter);
            drawScrollButtonArrow(o, painter);
        }
        return true;
    case uint(KCE_GalleryInlineFrame):
        drawInlineFrame(option, painter);
        return true;
    case uint(KCE_GalleryPanel):
        drawPanel(option, painter);
        return true;
    default:
        return false;
    }
}
