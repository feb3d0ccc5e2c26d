// The flat look of the ribbon's body: categories, logic groups and their dialog launchers,
// the scroll arrows of a category, the frames of layout widgets, the tabs and the slide block
// under them. Every colour comes from the theme by class and item; a theme that lacks one
// falls back on the palette.
#include "korbstyle_2013.h"

#include <QPainter>

#include <kdrawhelpfunc.h>

namespace {

QColor themeColor(const QString& cls, const char* item, const QColor& fallback)
{
    const QColor c = KDrawHelpFunc::getColorFromTheme(cls, QLatin1String(item));
    return c.isValid() ? c : fallback;
}

// A theme gradient as a brush, or fallback when the theme has none: every gradient that the
// theme reads is object-bounding, while the empty one handed out for a miss is not.
QBrush themeBrush(const QString& cls, const char* item, const QBrush& fallback)
{
    const QGradient& gradient = KDrawHelpFunc::getGradientFromTheme(cls, QLatin1String(item));
    if (gradient.coordinateMode() != QGradient::ObjectBoundingMode)
        return fallback;
    return QBrush(gradient);
}

// The panel of a small hovered or pressed part, as the tool buttons of the look have it.
void drawHotPanel(QPainter* painter, const QRect& rect, const QStyleOption* option)
{
    const bool sunken = option->state & QStyle::State_Sunken;
    const QString cls = QStringLiteral("KToolButton");
    QColor highlight = option->palette.color(QPalette::Highlight);
    const QColor border = themeColor(cls, sunken ? "border-down" : "border-hover", highlight);
    highlight.setAlpha(sunken ? 110 : 60);
    const QBrush fill = themeBrush(cls, sunken ? "background-down" : "background-hover", QBrush(highlight));
    painter->setPen(border);
    painter->setBrush(fill);
    painter->drawRect(rect.adjusted(0, 0, -1, -1));
}

bool isHot(const QStyleOption* option)
{
    return (option->state & QStyle::State_Enabled)
        && (option->state & (QStyle::State_MouseOver | QStyle::State_Sunken));
}

QColor arrowColor(const QStyleOption* option)
{
    const bool enabled = option->state & QStyle::State_Enabled;
    return themeColor(QStringLiteral("arrow"), enabled ? "arrow-enable" : "arrow-disable",
                      option->palette.color(enabled ? QPalette::Active : QPalette::Disabled, QPalette::WindowText));
}

} // namespace

void KORBStyle_2013::drawComplexControl_KRbCategory(const KStyleOptionRbCategory* option, QPainter* painter,
                                                    const QWidget*) const
{
    const QString cls = QStringLiteral("KRbCategory");
    const QColor base = themeColor(cls, "base", option->palette.color(QPalette::Window));
    const QRect r = option->rect;
    painter->save();
    painter->fillRect(r, themeBrush(cls, "background", QBrush(base)));
    // A line at the top meets the tabs, one at the bottom closes the band.
    painter->setPen(themeColor(cls, "border", option->palette.color(QPalette::Mid)));
    painter->drawLine(r.topLeft(), r.topRight());
    painter->drawLine(r.bottomLeft(), r.bottomRight());
    painter->restore();
}

void KORBStyle_2013::drawComplexControl_KRbHScrollWidget(const KStyleOptionRbHScrollWidget* option,
                                                         QPainter* painter, const QWidget*) const
{
    const QString cls = QStringLiteral("KRbHScrollWidgetArrow");
    const QRect r = option->rect;
    painter->save();
    if (isHot(option)) {
        drawHotPanel(painter, r, option);
    } else {
        painter->setPen(themeColor(cls, "border", option->palette.color(QPalette::Mid)));
        painter->setBrush(themeBrush(cls, "background", option->palette.brush(QPalette::Button)));
        painter->drawRect(r.adjusted(0, 0, -1, -1));
    }
    const QColor color = arrowColor(option);
    const QRect arrow(r.center().x() - 1, r.center().y() - 3, 4, 7);
    if (option->arrowType == Qt::LeftArrow)
        KDrawHelpFunc::drawLeftArraw(*painter, arrow, QPen(color), QBrush(color));
    else
        KDrawHelpFunc::drawRightArraw(*painter, arrow, QPen(color), QBrush(color));
    painter->restore();
}

void KORBStyle_2013::drawComplexControl_KRbLogicGroup(const KStyleOptionRbLogicGroup*, QPainter*,
                                                      const QWidget*) const
{
    // Flat: a group has no panel of its own; the long separators of the category part them.
}

void KORBStyle_2013::drawComplexControl_KLogicGroupButton(const KStyleOptionLogicGroupButton* option,
                                                          QPainter* painter, const QWidget*) const
{
    const QRect r = option->rect;
    painter->save();
    if (isHot(option))
        drawHotPanel(painter, r, option);
    // The launcher's mark: a corner at the top left and an arrow that leaves it towards the
    // bottom right, in the arrows' colour.
    const QRect g = r.adjusted(2, 2, -3, -3);
    painter->setRenderHint(QPainter::Antialiasing, false);
    painter->setPen(arrowColor(option));
    const int arm = qMax(2, g.width() / 2);
    painter->drawLine(g.left(), g.top(), g.left() + arm, g.top());
    painter->drawLine(g.left(), g.top(), g.left(), g.top() + arm);
    painter->drawLine(g.left() + 2, g.top() + 2, g.right(), g.bottom());
    painter->drawLine(g.right() - 3, g.bottom(), g.right(), g.bottom());
    painter->drawLine(g.right(), g.bottom() - 3, g.right(), g.bottom());
    painter->restore();
}

void KORBStyle_2013::drawComplexControl_KRbLayoutWidget(const KStyleOptionRbLayoutWidget* option,
                                                        QPainter* painter, const QWidget*) const
{
    if (option->layoutOnly)
        return;
    painter->save();
    painter->setPen(themeColor(QStringLiteral("common"), "border", option->palette.color(QPalette::Mid)));
    painter->setBrush(themeBrush(QStringLiteral("KRbLayoutWidget"), "background", Qt::NoBrush));
    painter->drawRect(option->rect.adjusted(0, 0, -1, -1));
    painter->restore();
}

void KORBStyle_2013::drawComplexControl_KRbSubTabBar(const KStyleOptionRbSubTabBar* option, QPainter* painter,
                                                     const QWidget*) const
{
    if (!option->slideRect.isValid())
        return;
    const QRect r = option->slideRect.adjusted(0, 0, -1, 0);
    const QColor fill = option->slideColor.isValid() ? option->slideColor : option->palette.color(QPalette::Base);
    const QColor border = option->slideBorderColor.isValid() ? option->slideBorderColor
                                                             : option->palette.color(QPalette::Mid);
    painter->save();
    painter->fillRect(r, fill);
    // A tab's shape: open at the bottom, where it joins the page.
    painter->setPen(border);
    painter->drawLine(r.bottomLeft(), r.topLeft());
    painter->drawLine(r.topLeft(), r.topRight());
    painter->drawLine(r.topRight(), r.bottomRight());
    painter->restore();
}

void KORBStyle_2013::drawComplexControl_KRbTabButton(const KStyleOptionKRbTabButton* option, QPainter* painter,
                                                     const QWidget*) const
{
    const QString cls = option->themeKey.isEmpty() ? QStringLiteral("KRbTabButton") : option->themeKey;
    const QString fallbackCls = QStringLiteral("KRbTabButton");
    const QRect r = option->rect.adjusted(0, 0, -1, 0);
    const bool selected = option->status == 1 || option->status == 2;
    const QColor border = themeColor(cls, "border", themeColor(fallbackCls, "border", option->palette.color(QPalette::Mid)));
    painter->save();
    if (selected && !option->isHideGradient) {
        const QBrush fill = themeBrush(cls, "background", themeBrush(fallbackCls, "background",
                                                                     option->palette.brush(QPalette::Base)));
        painter->fillRect(r, fill);
    }
    if (selected || (option->state & QStyle::State_MouseOver)) {
        QColor pen = border;
        if (!selected)
            pen.setAlpha(120);
        painter->setPen(pen);
        painter->drawLine(r.bottomLeft(), r.topLeft());
        painter->drawLine(r.topLeft(), r.topRight());
        painter->drawLine(r.topRight(), r.bottomRight());
    }
    if (option->isContext) {
        // A context tab carries its family's colour along its top.
        painter->fillRect(QRect(r.left(), r.top(), r.width(), 3),
                          themeColor(cls, "contextTabPen", themeColor(fallbackCls, "contextTabPen", border)));
    }
    const bool enabled = option->state & QStyle::State_Enabled;
    const QColor text = enabled ? themeColor(QStringLiteral("common"), "text", option->palette.color(QPalette::WindowText))
                                : option->palette.color(QPalette::Disabled, QPalette::WindowText);
    painter->setPen(text);
    painter->drawText(r, Qt::AlignCenter | Qt::TextHideMnemonic, option->text);
    painter->restore();
}
