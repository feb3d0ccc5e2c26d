// The 2013 look of the quick access bar's arrow and panel, the file menu's left menu and
// bottom band, and the lines of the recent file page. Colours come from the theme, with the
// palette standing in for items a theme leaves out.
#include "korbstyle_2013.h"

#include <QPainter>
#include <QPainterPath>
#include <QRadialGradient>

#include "korbstyle_2013_p.h"

using namespace KOrb2013;

namespace {

void drawQuickToolbarArrow(const QStyleOption* o, QPainter* painter)
{
    const QString cls = QStringLiteral("KRbQuickToolbarArrowButton");
    const bool enabled = isEnabled(o);
    const bool down = enabled && (o->state & QStyle::State_Sunken);
    const bool hover = enabled && (o->state & QStyle::State_MouseOver);
    painter->save();
    painter->setRenderHint(QPainter::Antialiasing);
    if (down || hover || !enabled) {
        const char* suffix = !enabled ? "-disable" : down ? "-down" : "-hover";
        const QByteArray borderItem = QByteArray("border") + suffix;
        const QString backgroundItem = QStringLiteral("background") + QLatin1String(suffix);
        // The pressed look keeps more of the border band than the hovered one.
        const QRect outer = o->rect.adjusted(0, 1, -1, -2);
        const QRect inner = down ? outer.adjusted(1, 1, -1, -1) : outer.adjusted(2, 2, -2, -2);
        painter->setPen(Qt::NoPen);
        painter->setBrush(color(cls, borderItem.constData(), o->palette.color(QPalette::Mid)));
        painter->drawPath(KDrawHelpFunc::getBoundPath(outer, 3, 15));
        QBrush background = brush(cls, backgroundItem, QBrush());
        if (background.style() == Qt::NoBrush)
            background = color(cls, backgroundItem.toLatin1().constData(), o->palette.color(QPalette::Button));
        painter->setBrush(background);
        painter->drawPath(KDrawHelpFunc::getBoundPath(inner, 3, 15));
    }
    // A short bar over a down arrow: "more of these".
    const QColor mark = textColor(o);
    const int cx = o->rect.center().x() + 1;
    const int cy = o->rect.center().y();
    painter->setPen(QPen(mark, 1));
    painter->drawLine(cx - 3, cy - 3, cx + 2, cy - 3);
    QPolygon arrow;
    arrow << QPoint(cx - 3, cy) << QPoint(cx + 3, cy) << QPoint(cx, cy + 3);
    painter->setPen(Qt::NoPen);
    painter->setBrush(mark);
    painter->drawPolygon(arrow);
    painter->restore();
}

void drawQuickToolbarPanel(const QStyleOption* o, QPainter* painter)
{
    const QString popup = QStringLiteral("KPopupWidget");
    painter->save();
    QBrush background = brush(QStringLiteral("KTabBar"), "tabbarBgGrad", QBrush());
    if (background.style() == Qt::NoBrush)
        background = color(QStringLiteral("KTabBar"), "tabbarBgGrad", o->palette.color(QPalette::Window));
    painter->fillRect(o->rect, background);
    painter->setBrush(Qt::NoBrush);
    painter->setPen(color(popup, "inner-border", o->palette.color(QPalette::Light)));
    painter->drawRect(o->rect.adjusted(1, 1, -2, -2));
    painter->setPen(color(popup, "border", o->palette.color(QPalette::Mid)));
    painter->drawRect(o->rect.adjusted(0, 0, -1, -1));
    painter->restore();
}

void drawFileMenuLeft(const QStyleOption* o, QPainter* painter)
{
    const QString cls = QStringLiteral("KRbFileMenu");
    const QRect r = o->rect;
    painter->save();
    painter->fillRect(r, color(cls, "left-background", o->palette.color(QPalette::Window)));
    // A soft light from a third of the way down, a half of the extent wide.
    const QPointF centre(r.left() + r.width() / 2.0, r.top() + r.height() / 3.0);
    const qreal radius = qMax(r.width(), r.height()) / 2.0;
    QRadialGradient light(centre, radius);
    light.setColorAt(0.0, color(cls, "left-background-circle-inside", o->palette.color(QPalette::Light)));
    light.setColorAt(1.0, color(cls, "left-background-circle-outside", o->palette.color(QPalette::Window)));
    painter->fillRect(r, light);
    const QRect strip(r.right() - 4, r.top(), 5, r.height());
    painter->fillRect(strip, brush(cls, "left-background-right", o->palette.color(QPalette::Mid)));
    painter->restore();
}

void drawFileMenuBottom(const QStyleOption* o, QPainter* painter)
{
    const QString cls = QStringLiteral("KRbFileMenu");
    painter->save();
    painter->fillRect(o->rect, brush(cls, "bottom-background", o->palette.color(QPalette::Window)));
    painter->setPen(color(cls, "bottom-top-border", o->palette.color(QPalette::Mid)));
    painter->drawLine(o->rect.topLeft(), o->rect.topRight());
    painter->restore();
}

void drawRecentPageSeparator(const QStyleOption* o, QPainter* painter)
{
    painter->save();
    const QColor line = color(QStringLiteral("KRbFileMenu"), "bottom-top-border", o->palette.color(QPalette::Mid));
    const int y = o->rect.center().y();
    if (o->state & QStyle::State_On) {
        // Under the pinned rows: a dotted line.
        painter->setPen(QPen(line, 1, Qt::DotLine));
    } else {
        painter->setPen(line);
    }
    painter->drawLine(o->rect.left(), y, o->rect.right(), y);
    painter->restore();
}

} // namespace

bool KORBStyle_2013::drawFileMenuControl(ControlElement element, const QStyleOption* option, QPainter* painter,
                                         const QWidget* widget) const
{
    Q_UNUSED(widget);
    if (!option || !painter)
        return false;
    switch (uint(element)) {
    case uint(KCE_QuickToolbarArrow):
        drawQuickToolbarArrow(option, painter);
        return true;
    case uint(KCE_QuickToolbarPanel):
        drawQuickToolbarPanel(option, painter);
        return true;
    case uint(KCE_FileMenuLeft):
        drawFileMenuLeft(option, painter);
        return true;
    case uint(KCE_FileMenuBottom):
        drawFileMenuBottom(option, painter);
        return true;
    case uint(KCE_RecentPageSeparator):
        drawRecentPageSeparator(option, painter);
        return true;
    default:
        return false;
    }
}
