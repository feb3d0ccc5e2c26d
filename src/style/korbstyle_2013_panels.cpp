// The panels of Qt's widgets in the 2013 look: menus, frames and lines, dock widgets, tool
// bars, push-button captions and the shadow around a main window.
#include "korbstyle_2013.h"
#include "korbstyle_2013_p.h"
#include "korbstyle_p.h"

#include <QFrame>
#include <QPainter>
#include <QPainterPath>
#include <QStyleOption>

#include <kdrawhelpfunc.h>

using namespace KOrb2013;

namespace {

const QString s_menu = QStringLiteral("KMenuWidget");
const QString s_menuRow = QStringLiteral("KMenuWidgetLayoutItem");
const QString s_toolBar = QStringLiteral("KToolBar");

constexpr int kMenuTextGap = 6;     // icon column to text
constexpr int kMenuArrowWidth = 14; // the strip of a submenu's arrow

} // namespace

// --- menus ---

void KORBStyle_2013::drawPanelMenu(const QStyleOption* option, QPainter* painter, const QWidget* widget) const
{
    painter->fillRect(option->rect, color(s_menu, "background", option->palette.color(QPalette::Base)));
    drawMenuFrame(option, painter, widget);
}

void KORBStyle_2013::drawMenuFrame(const QStyleOption* option, QPainter* painter, const QWidget*) const
{
    drawOutline(painter, option->rect, color(s_menu, "border", option->palette.color(QPalette::Mid)));
}

void KORBStyle_2013::drawToolBarFrameMenu(const QStyleOptionToolBar* option, QPainter* painter, const QWidget*) const
{
    painter->fillRect(option->rect, brush(s_toolBar, "background-hor", option->palette.brush(QPalette::Window)));
    drawOutline(painter, option->rect, color(s_toolBar, "border", option->palette.color(QPalette::Mid)));
}

void KORBStyle_2013::drawEmptyArea(const QStyleOption* option, QPainter* painter, const QWidget*) const
{
    painter->fillRect(option->rect, color(s_menu, "background", option->palette.color(QPalette::Base)));
}

void KORBStyle_2013::drawMenuItem(const QStyleOptionMenuItem* option, QPainter* painter, const QWidget* widget) const
{
    // The framework's own menu lays its rows out differently (the frame draws them).
    if (isFrameworkMenu(widget))
        return drawControl_MenuItem(option, painter, widget);
    const QRect r = option->rect;
    const bool enabled = isEnabled(option);
    const int iconColumn = qMax(option->maxIconWidth, 16) + 8;
    painter->save();
    painter->fillRect(r, color(s_menu, "background", option->palette.color(QPalette::Base)));
    if (option->menuItemType == QStyleOptionMenuItem::Separator) {
        painter->setPen(color(s_menu, "border", option->palette.color(QPalette::Mid)));
        const int y = r.top() + r.height() / 2;
        painter->drawLine(r.left() + iconColumn, y, r.right() - 2, y);
        painter->restore();
        return;
    }
    if (enabled && (option->state & State_Selected)) {
        const QRect band = r.adjusted(1, 0, -1, 0);
        painter->fillRect(band, brush(s_menuRow, "background-down", option->palette.brush(QPalette::Highlight)));
        drawOutline(painter, band, color(s_menuRow, "border-down", option->palette.color(QPalette::Highlight)));
    }
    const QColor text = textColor(option);
    const QRect iconBox(r.left() + (iconColumn - 16) / 2, r.top() + (r.height() - 16) / 2, 16, 16);
    if (option->checkType != QStyleOptionMenuItem::NotCheckable && option->checked) {
        KDrawHelpFunc::drawCheckedRect(*painter, iconBox.adjusted(-2, -2, 2, 2), 0);
        if (option->icon.isNull())
            KOrbPaint::drawCheckMark(painter, iconBox, text);
    }
    if (!option->icon.isNull())
        option->icon.paint(painter, iconBox, Qt::AlignCenter, enabled ? QIcon::Normal : QIcon::Disabled);

    const int tab = option->text.indexOf(QLatin1Char('\t'));
    const QString label = tab < 0 ? option->text : option->text.left(tab);
    const QRect textRect(r.left() + iconColumn + kMenuTextGap, r.top(),
                         r.width() - iconColumn - kMenuTextGap - kMenuArrowWidth, r.height());
    int flags = Qt::AlignVCenter | Qt::TextShowMnemonic | Qt::TextSingleLine;
    if (!proxy()->styleHint(SH_UnderlineShortcut, option, widget))
        flags |= Qt::TextHideMnemonic;
    painter->setPen(text);
    painter->setFont(option->font);
    painter->drawText(textRect, Qt::AlignLeft | flags, label);
    if (tab >= 0)
        painter->drawText(textRect, Qt::AlignRight | flags, option->text.mid(tab + 1));
    if (option->menuItemType == QStyleOptionMenuItem::SubMenu) {
        const QRect arrow(r.right() - kMenuArrowWidth / 2 - 2, r.top() + (r.height() - 8) / 2, 4, 8);
        KDrawHelpFunc::drawRightArraw(*painter, arrow, enabled);
    }
    painter->restore();
}

// --- frames and lines ---

void KORBStyle_2013::drawFrame(const QStyleOption* option, QPainter* painter, const QWidget*) const
{
    const bool focus = isEnabled(option) && (option->state & State_HasFocus);
    drawOutline(painter, option->rect,
                focus ? color(QStringLiteral("KToolButton"), "border-hover", option->palette.color(QPalette::Highlight))
                      : borderColor(option));
}

bool KORBStyle_2013::_drawNamedLine(const QStyleOption* option, QPainter* painter, const QWidget* widget) const
{
    auto* frame = qstyleoption_cast<const QStyleOptionFrame*>(option);
    if (!frame || !widget || (frame->frameShape != QFrame::HLine && frame->frameShape != QFrame::VLine))
        return false;
    const QString name = widget->objectName();
    const bool solid = name.endsWith(QLatin1String("_solid"));
    const bool dash = name.endsWith(QLatin1String("_dash"));
    if (!solid && !dash)
        return false;
    const bool horizontal = frame->frameShape == QFrame::HLine;
    const QRect r = option->rect;
    const QPoint c = r.center();
    const QLine line = horizontal ? QLine(r.left(), c.y(), r.right(), c.y()) : QLine(c.x(), r.top(), c.x(), r.bottom());
    QPen pen(color(QStringLiteral("KListView"), "line", option->palette.color(QPalette::Mid)), 1,
             dash ? Qt::DashLine : Qt::SolidLine, Qt::FlatCap, Qt::MiterJoin);
    painter->save();
    painter->setRenderHint(QPainter::Antialiasing, false);
    painter->setPen(pen);
    painter->drawLine(line);
    if (solid) {
        // The light line under (or beside) the dark one makes the engraved separator.
        pen.setColor(option->palette.color(QPalette::Light));
        painter->setPen(pen);
        painter->drawLine(line.translated(horizontal ? QPoint(0, 1) : QPoint(1, 0)));
    }
    painter->restore();
    return true;
}

// --- dock widgets ---

void KORBStyle_2013::drawDockWidgetFrame(const QStyleOption* option, QPainter* painter, const QWidget*) const
{
    drawOutline(painter, option->rect, borderColor(option));
}

void KORBStyle_2013::drawDockWidgetTitle(const QStyleOptionDockWidget* option, QPainter* painter,
                                         const QWidget* widget) const
{
    if (option->verticalTitleBar)
        return KORBStyle::drawControl(CE_DockWidgetTitle, option, painter, widget);
    const QRect r = option->rect;
    painter->save();
    painter->fillRect(r, brush(QStringLiteral("QToolBarDock"), "title", option->palette.brush(QPalette::Window)));
    painter->setPen(borderColor(option));
    painter->drawLine(r.bottomLeft(), r.bottomRight());
    if (!option->title.isEmpty()) {
        const QRect text = proxy()->subElementRect(SE_DockWidgetTitleBarText, option, widget).adjusted(2, 0, -2, 0);
        painter->setPen(textColor(option));
        painter->drawText(text, Qt::AlignLeft | Qt::AlignVCenter | Qt::TextShowMnemonic,
                          option->fontMetrics.elidedText(option->title, Qt::ElideRight, text.width()));
    }
    painter->restore();
}

// --- tool bars ---

void KORBStyle_2013::drawToolBar(const QStyleOptionToolBar* option, QPainter* painter, const QWidget*) const
{
    const bool horizontal = option->state & State_Horizontal;
    const QRect r = option->rect;
    painter->save();
    painter->fillRect(r, brush(s_toolBar, horizontal ? "background-hor" : "background-ver",
                               option->palette.brush(QPalette::Window)));
    // One line on the side that faces the document.
    painter->setPen(color(s_toolBar, "border", option->palette.color(QPalette::Mid)));
    if (horizontal)
        painter->drawLine(r.bottomLeft(), r.bottomRight());
    else
        painter->drawLine(r.topRight(), r.bottomRight());
    painter->restore();
}

void KORBStyle_2013::drawIndicatorToolBarHandle(const QStyleOption* option, QPainter* painter,
                                                const QWidget* widget) const
{
    // A row of small squares along the handle.
    const QRect handle = getToolBarHandleRect(option, widget);
    const bool horizontal = option->state & State_Horizontal;
    const QColor dots = color(s_toolBar, "border", option->palette.color(QPalette::Mid));
    const int length = horizontal ? handle.height() : handle.width();
    for (int i = 1; i + 2 <= length; i += 4) {
        const QRect dot = horizontal ? QRect(handle.left() + 2, handle.top() + i, 2, 2)
                                     : QRect(handle.left() + i, handle.top() + 2, 2, 2);
        painter->fillRect(dot, dots);
    }
}

// --- push buttons ---

void KORBStyle_2013::drawPushButtonLabel(const QStyleOptionButton* option, QPainter* painter,
                                         const QWidget* widget) const
{
    QRect r = option->rect;
    int flags = Qt::AlignCenter | Qt::TextShowMnemonic;
    if (!proxy()->styleHint(SH_UnderlineShortcut, option, widget))
        flags |= Qt::TextHideMnemonic;
    if (option->features & QStyleOptionButton::HasMenu)
        r.setRight(r.right() - proxy()->pixelMetric(PM_MenuButtonIndicator, option, widget));
    painter->save();
    if (!option->icon.isNull()) {
        // Icon and caption centred together.
        const int textWidth = option->text.isEmpty() ? 0 : option->fontMetrics.size(flags, option->text).width() + 4;
        const int groupWidth = option->iconSize.width() + textWidth;
        const QRect start(r.left() + (r.width() - groupWidth) / 2, r.top(), groupWidth, r.height());
        const QRect icon = QRect(QPoint(start.left(), start.top() + (start.height() - option->iconSize.height()) / 2),
                                 option->iconSize);
        option->icon.paint(painter, icon, Qt::AlignCenter, isEnabled(option) ? QIcon::Normal : QIcon::Disabled,
                           (option->state & State_On) ? QIcon::On : QIcon::Off);
        r = QRect(icon.right() + 5, r.top(), textWidth, r.height());
    }
    if (option->state & (State_On | State_Sunken))
        r.translate(proxy()->pixelMetric(PM_ButtonShiftHorizontal, option, widget),
                    proxy()->pixelMetric(PM_ButtonShiftVertical, option, widget));
    painter->setPen(isEnabled(option) ? color(QStringLiteral("common"), "text", option->palette.color(QPalette::ButtonText))
                                      : option->palette.color(QPalette::Disabled, QPalette::ButtonText));
    painter->drawText(r, flags, option->text);
    painter->restore();
}

// --- the main window's shadow ---

void KORBStyle_2013::drawShadowBorder(QPainter* painter, const QRect& rect, int width) const
{
    QColor shade = KDrawHelpFunc::getColorFromTheme(QStringLiteral("KMainwindow"), QStringLiteral("mainborder"));
    if (!shade.isValid() || width <= 0)
        return;
    // Rings around rect, fading out towards the outside.
    const int strongest = qMin(shade.alpha(), 90);
    painter->save();
    painter->setBrush(Qt::NoBrush);
    for (int i = 0; i < width; ++i) {
        const int alpha = strongest * (width - i) * (width - i) / (width * width);
        shade.setAlpha(alpha);
        painter->setPen(shade);
        painter->drawRect(rect.adjusted(-i - 1, -i - 1, i, i));
    }
    painter->restore();
}

void KORBStyle_2013::drawPrimitive_BorderShadow(const KStyleOptionMainBorder* option, QPainter* painter,
                                                const QWidget* widget) const
{
    const int width = option->borderWidth >= 0 ? option->borderWidth
                                               : proxy()->pixelMetric(KPM_ShadowBorderWidth, option, widget);
    const QRect inner = option->rect.adjusted(width, width, -width, -width);
    if (!inner.isValid())
        return;
    drawShadowBorder(painter, inner, width);
    drawOutline(painter, inner, color(QStringLiteral("KMainwindow"), "mainborder", option->palette.color(QPalette::Mid)));
}
