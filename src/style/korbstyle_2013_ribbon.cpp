// The flat look of the ribbon: categories, logic groups and their dialog launchers, the
// scroll arrows of a category, the frames of layout widgets, the tabs and the slide block under
// them, the tab bar and the file button. Every colour comes from the theme by class and item;
// a theme that lacks one falls back on the palette.
#include "korbstyle_2013.h"
#include "korbstyle_2013_p.h"

#include <QPainter>

#include <kdrawhelpfunc.h>

using namespace KOrb2013;

namespace {

const QString s_tabButton = QStringLiteral("KRbTabButton");
const QString s_contextTab = QStringLiteral("KRbTabContextButton");

QColor arrowColor(const QStyleOption* option)
{
    const bool enabled = option->state & QStyle::State_Enabled;
    return color(QStringLiteral("arrow"), enabled ? "arrow-enable" : "arrow-disable",
                 option->palette.color(enabled ? QPalette::Active : QPalette::Disabled, QPalette::WindowText));
}

// A colour of a tab: from its own theme class (a context family's), then from the context
// tabs' common class, then from the plain tabs'.
QColor tabColor(const KStyleOptionKRbTabButton* option, const char* item, const QColor& fallback)
{
    QColor c = fallback;
    c = color(s_tabButton, item, c);
    if (option->isContext)
        c = color(s_contextTab, item, c);
    if (!option->themeKey.isEmpty())
        c = color(option->themeKey, item, c);
    return c;
}

QBrush tabBrush(const KStyleOptionKRbTabButton* option, const char* item, const QBrush& fallback)
{
    QBrush b = brush(s_tabButton, item, fallback);
    if (option->isContext)
        b = brush(s_contextTab, item, b);
    if (!option->themeKey.isEmpty())
        b = brush(option->themeKey, item, b);
    return b;
}

// The drop-down part of the file button: a strip at its right edge.
QRect fileButtonArrowRect(const QRect& r)
{
    const int width = qMin(14, r.width() / 3);
    return QRect(r.right() - width + 1, r.top(), width, r.height());
}

} // namespace

void KORBStyle_2013::drawComplexControl_KRbCategory(const KStyleOptionRbCategory* option, QPainter* painter,
                                                    const QWidget*) const
{
    const QString cls = QStringLiteral("KRbCategory");
    const QColor base = color(cls, "base", option->palette.color(QPalette::Window));
    const QRect r = option->rect;
    painter->save();
    painter->fillRect(r, brush(cls, "background", QBrush(base)));
    // The theme's picture at the right end, where the tab bar's picture leaves off.
    const QImage image = KDrawHelpFunc::getImageFromTheme(cls, QStringLiteral("bg-image"));
    if (!image.isNull()) {
        painter->setClipRect(r.adjusted(0, 1, 0, -1));
        painter->drawImage(QPoint(r.right() - image.width() + 1, r.top() + 1), image);
        painter->setClipping(false);
    }
    // A line at the top meets the tabs, one at the bottom closes the band.
    painter->setPen(color(cls, "border", option->palette.color(QPalette::Mid)));
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
        painter->setPen(color(cls, "border", option->palette.color(QPalette::Mid)));
        painter->setBrush(brush(cls, "background", option->palette.brush(QPalette::Button)));
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
    painter->setPen(color(QStringLiteral("common"), "border", option->palette.color(QPalette::Mid)));
    painter->setBrush(brush(QStringLiteral("KRbLayoutWidget"), "background", Qt::NoBrush));
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
    const QRect r = option->rect.adjusted(0, 0, -1, 0);
    const bool selected = option->status == 1 || option->status == 2;
    const bool hover = isEnabled(option) && (option->state & QStyle::State_MouseOver);
    const QColor border = tabColor(option, "border", option->palette.color(QPalette::Mid));
    painter->save();
    if (selected && !option->isHideGradient)
        painter->fillRect(r, tabBrush(option, "background", option->palette.brush(QPalette::Base)));
    if (selected || hover) {
        QColor pen = border;
        if (!selected)
            pen.setAlpha(120);
        painter->setPen(pen);
        painter->drawLine(r.bottomLeft(), r.topLeft());
        painter->drawLine(r.topLeft(), r.topRight());
        painter->drawLine(r.topRight(), r.bottomRight());
    }
    const QColor family = tabColor(option, "contextTabPen", border);
    if (option->isContext) {
        // A context tab carries its family's colour along its top.
        painter->fillRect(QRect(r.left(), r.top(), r.width(), 3), family);
    }
    // The caption of a context tab is in its family's colour, as its band.
    QColor text = textColor(option);
    if (option->isContext && isEnabled(option))
        text = tabColor(option, "text", family);
    painter->setPen(text);
    painter->drawText(r, Qt::AlignCenter | Qt::TextHideMnemonic, option->text);
    painter->restore();
}

void KORBStyle_2013::drawComplexControl_KRbTabBar(const KStyleOptionRbTabBar* option, QPainter* painter,
                                                  const QWidget* widget) const
{
    const QString cls = QStringLiteral("KRbTabBar");
    const QRect r = option->rect;
    const int band = qBound(0, proxy()->pixelMetric(KPM_RbTabBarBottomLine, option, widget), r.height());
    const QRect bottom(r.left(), r.bottom() - band + 1, r.width(), band);
    painter->save();
    painter->fillRect(r, color(cls, "background", option->palette.color(QPalette::Window)));
    // The theme's picture stands in the top right corner, behind the corner's commands.
    const QImage image = KDrawHelpFunc::getImageFromTheme(cls, QStringLiteral("bg-image"));
    if (!image.isNull()) {
        painter->setClipRect(r.adjusted(0, 0, 0, -band));
        painter->drawImage(QPoint(r.right() - image.width() + 1, r.top()), image);
        painter->setClipping(false);
    }
    // The bottom band is the top of the category below; its upper edge is the line on which
    // the tabs stand, in the current tab's family colour when it has one.
    if (band > 0) {
        const QGradient& page = KDrawHelpFunc::getGradientFromTheme(QStringLiteral("KRbCategory"), QStringLiteral("background"));
        const QColor top = getColorFromGradient(page, 0.0);
        painter->fillRect(bottom, top.isValid() ? top : color(QStringLiteral("KRbCategory"), "base", option->palette.color(QPalette::Base)));
        painter->setPen(option->slideColor.isValid() ? option->slideColor
                                                     : color(cls, "border", option->palette.color(QPalette::Mid)));
        painter->drawLine(bottom.topLeft(), bottom.topRight());
    }
    _drawRbTabBarTitle(option, painter, widget, r.adjusted(0, 0, 0, -band));
    painter->restore();
}

void KORBStyle_2013::_drawRbTabBarTitle(const KStyleOptionRbTabBar* option, QPainter* painter,
                                        const QWidget* widget, const QRect& area) const
{
    if (option->title.isEmpty())
        return;
    QRect title;
    QFont font = painter->font();
    if (option->isTitleMode) {
        title = area;
        font.setBold(true);
    } else if (!option->isSingleLine && option->topLayoutRect.height() > 0) {
        title = option->topLayoutRect;
    } else if (option->scrollerRect.isValid()) {
        // Beside the tabs: the part of the scroller that they leave free.
        int tabsRight = option->scrollerRect.left();
        if (widget) {
            for (const QWidget* tab : widget->findChildren<QWidget*>()) {
                if (tab->inherits("KRbTabButton") && tab->isVisible())
                    tabsRight = qMax(tabsRight, QRect(tab->mapTo(widget, QPoint(0, 0)), tab->size()).right());
            }
        }
        title = QRect(tabsRight + 16, area.top(), option->scrollerRect.right() - tabsRight - 24, area.height());
    }
    const QFontMetrics metrics(font);
    if (title.width() < metrics.horizontalAdvance(QLatin1Char('M')) * 4)
        return;
    painter->setFont(font);
    painter->setPen(color(QStringLiteral("KRbTabBar"), "text", textColor(option)));
    painter->drawText(title, Qt::AlignCenter | Qt::TextSingleLine,
                      metrics.elidedText(option->title, Qt::ElideMiddle, title.width()));
}

void KORBStyle_2013::drawComplexControl_KRbTabFileButton(const KStyleOptionRbTabFileButton* option,
                                                         QPainter* painter, const QWidget*) const
{
    const QString cls = QStringLiteral("KRbTabFileButton");
    const QString arrowCls = QStringLiteral("KRbTabFileButton-Arrow");
    const QRect r = option->rect;
    const bool enabled = isEnabled(option);
    const bool down = enabled && (option->isDown || option->classicOpen || (option->state & QStyle::State_Sunken));
    const bool hover = enabled && !down && (option->state & QStyle::State_MouseOver);
    const QBrush base = brush(cls, "background", option->palette.brush(QPalette::Highlight));
    painter->save();
    painter->fillRect(r, base);
    if (down)
        painter->fillRect(r, brush(cls, "background-down", base));
    else if (hover)
        painter->fillRect(r, brush(cls, "background-hover", base));
    const QColor light = color(cls, "lightCircle-hover", option->palette.color(QPalette::Light));
    if (option->tipLight && option->light > 0 && enabled) {
        // The invitation to a first use: a glow that breathes with the button's light.
        QRadialGradient glow(QRectF(r).center(), option->light);
        glow.setColorAt(0, light);
        QColor clear = light;
        clear.setAlpha(0);
        glow.setColorAt(1, clear);
        painter->fillRect(r, glow);
    }
    const QRect arrow = fileButtonArrowRect(r);
    const QColor text = enabled ? color(cls, "text", option->palette.color(QPalette::HighlightedText))
                                : option->palette.color(QPalette::Disabled, QPalette::HighlightedText);
    if (enabled && (option->hitArrow || option->classicOpen)) {
        painter->fillRect(arrow, brush(arrowCls, "background", light));
        painter->setPen(color(arrowCls, "line", text));
        painter->drawLine(arrow.topLeft(), arrow.bottomLeft());
    }
    const QPoint c = arrow.center();
    KDrawHelpFunc::drawDownArraw(*painter, QRect(c.x() - 3, c.y() - 1, 7, 4), QPen(text), QBrush(text));

    QRect content = r.adjusted(0, 0, -arrow.width(), 0);
    if (!option->icon.isNull()) {
        const QRect icon(content.left() + 6, content.top() + (content.height() - 16) / 2, 16, 16);
        option->icon.paint(painter, icon, Qt::AlignCenter, enabled ? QIcon::Normal : QIcon::Disabled);
        content.setLeft(icon.right() + 4);
    }
    painter->setPen(text);
    painter->drawText(content, Qt::AlignCenter | Qt::TextHideMnemonic | Qt::TextSingleLine, option->text);
    painter->restore();
}

QStyle::SubControl KORBStyle_2013::hitTestComplexControl_KRbTabFileButton(QStyle::ComplexControl,
                                                                          const KStyleOptionRbTabFileButton* option,
                                                                          const QPoint& pos, const QWidget*) const
{
    if (!option->rect.contains(pos))
        return SC_None;
    if (fileButtonArrowRect(option->rect).contains(pos))
        return KSC_FileButtonArrow;
    return SubControl(uint(SC_CustomBase) + 1);
}
