// Qt's own widgets in the 2013 look: which stock element goes to which drawing function, and
// the drawing itself. Flat: square corners, one-pixel borders, hover and pressed panels in the
// tool buttons' colours; every colour from the theme, with the palette where a theme lacks one.
#include "korbstyle_2013.h"
#include "korbstyle_2013_p.h"

#include <QFrame>
#include <QPainter>
#include <QStyleOption>
#include <QTabBar>

#include <kdrawhelpfunc.h>

using namespace KOrb2013;

namespace {

const QString s_toolButton = QStringLiteral("KToolButton");
const QString s_scrollBar = QStringLiteral("KScrollBar");
const QString s_tabBar = QStringLiteral("QMainWindowTabBar");

// A vertical theme gradient laid across a vertical bar runs from left to right instead.
QBrush acrossBrush(const QString& cls, const QString& item, Qt::Orientation orientation, const QBrush& fallback)
{
    if (!hasGradient(cls, item))
        return fallback;
    const QGradient& g = KDrawHelpFunc::getGradientFromTheme(cls, item);
    if (orientation == Qt::Vertical && g.type() == QGradient::LinearGradient)
        return QBrush(KDrawHelpFunc::rotateLinearGradient90(static_cast<const QLinearGradient&>(g)));
    return QBrush(g);
}

// A centred arrow of 7 by 4 (or 4 by 7) pixels pointing as type says.
void drawArrow(QPainter* painter, const QRect& box, Qt::ArrowType type, const QBrush& fill)
{
    const QPoint c = box.center();
    const QPen pen(fill.color().isValid() && fill.style() == Qt::SolidPattern ? QPen(fill.color()) : QPen(Qt::NoPen));
    switch (type) {
    case Qt::UpArrow:
        KDrawHelpFunc::drawUpArraw(*painter, QRect(c.x() - 3, c.y() - 2, 7, 4), pen, fill);
        break;
    case Qt::DownArrow:
        KDrawHelpFunc::drawDownArraw(*painter, QRect(c.x() - 3, c.y() - 1, 7, 4), pen, fill);
        break;
    case Qt::LeftArrow:
        KDrawHelpFunc::drawLeftArraw(*painter, QRect(c.x() - 2, c.y() - 3, 4, 7), pen, fill);
        break;
    default:
        KDrawHelpFunc::drawRightArraw(*painter, QRect(c.x() - 1, c.y() - 3, 4, 7), pen, fill);
        break;
    }
}

QColor arrowColor(const QStyleOption* o)
{
    const bool enabled = isEnabled(o);
    return color(QStringLiteral("arrow"), enabled ? "arrow-enable" : "arrow-disable",
                 o->palette.color(enabled ? QPalette::Active : QPalette::Disabled, QPalette::WindowText));
}

QString scrollSuffix(const QWidget* widget)
{
    return widget ? KDrawHelpFunc::getScrollStyleName(widget->objectName()) : QString();
}

} // namespace

// --- routing ---

void KORBStyle_2013::drawComplexControl(ComplexControl control, const QStyleOptionComplex* option,
                                        QPainter* painter, const QWidget* widget) const
{
    switch (control) {
    case CC_ComboBox:
        if (auto* o = qstyleoption_cast<const QStyleOptionComboBox*>(option)) {
            drawComboBox(o, painter, widget);
            return;
        }
        break;
    case CC_ScrollBar:
        if (auto* o = qstyleoption_cast<const QStyleOptionSlider*>(option)) {
            drawScrollBar(o, painter, widget);
            return;
        }
        break;
    case CC_ToolButton:
        if (auto* o = qstyleoption_cast<const QStyleOptionToolButton*>(option)) {
            // The scroll buttons of a tab bar are tool buttons whose parent is the bar.
            if (widget && qobject_cast<const QTabBar*>(widget->parentWidget()))
                drawIndicatorTabbarTearButton(o, painter, widget);
            else
                drawToolButton(o, painter, widget);
            return;
        }
        break;
    default:
        break;
    }
    KORBStyle::drawComplexControl(control, option, painter, widget);
}

QRect KORBStyle_2013::subControlRect(ComplexControl control, const QStyleOptionComplex* option,
                                     SubControl subControl, const QWidget* widget) const
{
    if (control == CC_ComboBox) {
        if (auto* o = qstyleoption_cast<const QStyleOptionComboBox*>(option))
            return getComboBoxSubControlRect(o, subControl, widget);
    } else if (control == CC_ScrollBar) {
        if (auto* o = qstyleoption_cast<const QStyleOptionSlider*>(option))
            return getScrollBarSubControlRect(o, subControl, widget);
    }
    return KORBStyle::subControlRect(control, option, subControl, widget);
}

void KORBStyle_2013::drawControl(ControlElement element, const QStyleOption* option, QPainter* painter,
                                 const QWidget* widget) const
{
    switch (element) {
    case CE_PushButtonLabel:
        if (auto* o = qstyleoption_cast<const QStyleOptionButton*>(option))
            return drawPushButtonLabel(o, painter, widget);
        break;
    case CE_TabBarTabShape:
        if (auto* o = qstyleoption_cast<const QStyleOptionTab*>(option))
            return drawTabBarTabShape(o, painter, widget);
        break;
    case CE_TabBarTabLabel:
        if (auto* o = qstyleoption_cast<const QStyleOptionTab*>(option))
            return drawTabBarTabLabel(o, painter, widget);
        break;
    case CE_MenuItem:
        if (auto* o = qstyleoption_cast<const QStyleOptionMenuItem*>(option))
            return drawMenuItem(o, painter, widget);
        break;
    case CE_MenuEmptyArea:
        return drawEmptyArea(option, painter, widget);
    case CE_Splitter:
        KORBStyle::drawControl(element, option, painter, widget);
        tryDrawMainBorder(painter, dynamic_cast<const QWidget*>(painter->device()));
        return;
    case CE_DockWidgetTitle:
        if (auto* o = qstyleoption_cast<const QStyleOptionDockWidget*>(option))
            return drawDockWidgetTitle(o, painter, widget);
        break;
    case CE_ScrollBarAddLine:
    case CE_ScrollBarSubLine:
        if (auto* o = qstyleoption_cast<const QStyleOptionSlider*>(option))
            return drawScrollBarLineButton(element, o, painter, widget);
        break;
    case CE_ScrollBarAddPage:
    case CE_ScrollBarSubPage:
        if (auto* o = qstyleoption_cast<const QStyleOptionSlider*>(option))
            return drawScrollBarPageButton(o, painter, widget);
        break;
    case CE_ScrollBarSlider:
        if (auto* o = qstyleoption_cast<const QStyleOptionSlider*>(option))
            return drawScrollBarSlider(o, painter, widget);
        break;
    case CE_ToolBar:
        if (auto* o = qstyleoption_cast<const QStyleOptionToolBar*>(option))
            return drawToolBar(o, painter, widget);
        break;
    case CE_ShapedFrame:
        if (_drawNamedLine(option, painter, widget))
            return;
        break;
    default:
        if (drawFileMenuControl(element, option, painter, widget))
            return;
        if (drawGalleryControl(element, option, painter, widget))
            return;
        break;
    }
    KORBStyle::drawControl(element, option, painter, widget);
}

void KORBStyle_2013::drawPrimitive(PrimitiveElement element, const QStyleOption* option, QPainter* painter,
                                   const QWidget* widget) const
{
    if (element == KPE_MainBorder)
        return tryDrawMainBorder(painter, widget);
    if (element == KPE_BorderShadow) {
        if (auto* o = qstyleoption_cast<const KStyleOptionMainBorder*>(option))
            drawPrimitive_BorderShadow(o, painter, widget);
        return;
    }
    switch (element) {
    case PE_PanelTipLabel: {
        const QString cls = QStringLiteral("KTipWidget");
        QColor border = color(cls, "border", option->palette.color(QPalette::Mid));
        border.setAlpha(125);
        painter->save();
        painter->setRenderHint(QPainter::Antialiasing);
        painter->setPen(border);
        painter->setBrush(brush(cls, "background", option->palette.brush(QPalette::ToolTipBase)));
        painter->drawPath(KDrawHelpFunc::getBoundPath2(option->rect.adjusted(0, 0, -1, -1), 2).translated(0.5, 0.5));
        painter->restore();
        return;
    }
    case PE_PanelItemViewItem:
        if (option->state & State_Selected) {
            painter->save();
            painter->setPen(color(s_toolButton, "border-hover", option->palette.color(QPalette::Highlight)));
            painter->setBrush(brush(s_toolButton, "background-hover", option->palette.brush(QPalette::Highlight)));
            painter->drawRect(option->rect.adjusted(0, 0, -1, -1));
            painter->restore();
            return;
        }
        break;
    case PE_PanelMenu:
        return drawPanelMenu(option, painter, widget);
    case PE_FrameMenu:
        if (auto* o = qstyleoption_cast<const QStyleOptionToolBar*>(option))
            return drawToolBarFrameMenu(o, painter, widget);
        return drawMenuFrame(option, painter, widget);
    case PE_Frame:
        return drawFrame(option, painter, widget);
    case PE_FrameDockWidget:
        return drawDockWidgetFrame(option, painter, widget);
    case PE_IndicatorTabClose:
        return drawIndicatorTabClose(option, painter, widget);
    case PE_IndicatorToolBarHandle:
        return drawIndicatorToolBarHandle(option, painter, widget);
    case PE_FrameTabBarBase:
    case PE_IndicatorBranch:
        return;
    case PE_PanelLineEdit:
        if (widget && widget->objectName() == QLatin1String("KxQedNameBoxLineEdit"))
            return;
        break;
    default:
        break;
    }
    KORBStyle::drawPrimitive(element, option, painter, widget);
}

// --- geometry ---

QRect KORBStyle_2013::getComboBoxSubControlRect(const QStyleOptionComboBox* option, SubControl subControl,
                                                const QWidget* widget) const
{
    const QRect r = option->rect;
    const int arrowWidth = qMin(16, r.width() / 2);
    QRect result;
    switch (subControl) {
    case SC_ComboBoxFrame:
    case SC_ComboBoxListBoxPopup:
        result = r;
        break;
    case SC_ComboBoxArrow:
        result = QRect(r.right() - arrowWidth, r.top() + 1, arrowWidth, r.height() - 2);
        break;
    case SC_ComboBoxEditField:
        result = QRect(r.left() + 3, r.top() + 1, r.width() - arrowWidth - 5, r.height() - 2);
        break;
    default:
        return KORBStyle::subControlRect(CC_ComboBox, option, subControl, widget);
    }
    return visualRect(option->direction, r, result);
}

QRect KORBStyle_2013::getScrollBarSubControlRect(const QStyleOptionSlider* option, SubControl subControl,
                                                 const QWidget* widget) const
{
    const QRect r = option->rect;
    const bool horizontal = option->orientation == Qt::Horizontal;
    const int extent = horizontal ? r.height() : r.width();
    const int length = horizontal ? r.width() : r.height();
    // Square line buttons at both ends; between them the groove with the slider.
    const int button = qMin(extent, length / 2);
    const int grooveStart = button;
    const int grooveLength = qMax(0, length - 2 * button);
    const int range = option->maximum - option->minimum;
    int sliderLength = grooveLength;
    if (range > 0) {
        const qint64 proportional = qint64(grooveLength) * option->pageStep / (qint64(range) + option->pageStep);
        const int least = proxy()->pixelMetric(PM_ScrollBarSliderMin, option, widget);
        sliderLength = qMin(grooveLength, qMax(int(proportional), least));
    }
    const int sliderStart = grooveStart + sliderPositionFromValue(option->minimum, option->maximum,
                                                                  option->sliderPosition,
                                                                  grooveLength - sliderLength, option->upsideDown);
    int start = 0;
    int size = 0;
    switch (subControl) {
    case SC_ScrollBarSubLine:
        size = button;
        break;
    case SC_ScrollBarAddLine:
        start = length - button;
        size = button;
        break;
    case SC_ScrollBarSubPage:
        start = grooveStart;
        size = sliderStart - grooveStart;
        break;
    case SC_ScrollBarAddPage:
        start = sliderStart + sliderLength;
        size = grooveStart + grooveLength - start;
        break;
    case SC_ScrollBarSlider:
        start = sliderStart;
        size = sliderLength;
        break;
    case SC_ScrollBarGroove:
        start = grooveStart;
        size = grooveLength;
        break;
    default:
        return QRect();
    }
    const QRect part = horizontal ? QRect(r.left() + start, r.top(), size, extent)
                                  : QRect(r.left(), r.top() + start, extent, size);
    return visualRect(option->direction, r, part);
}

QRect KORBStyle_2013::getTabBarTearIndicator(const QStyleOption* option, const QWidget*) const
{
    const QRect r = option->rect;
    return option->direction == Qt::RightToLeft ? QRect(r.right() - 3, r.top(), 4, r.height())
                                                : QRect(r.left(), r.top(), 4, r.height());
}

QRect KORBStyle_2013::getTabBarTabRightButton(const QStyleOption* option, const QWidget*) const
{
    const QRect r = option->rect;
    const int side = qMin(16, r.height() - 4);
    return QRect(r.right() - 4 - side + 1, r.top() + (r.height() - side) / 2, side, side);
}

QRect KORBStyle_2013::getTextIconRect(const QRect& rect, const QIcon& icon, const QSize& iconSize) const
{
    if (icon.isNull())
        return QRect();
    const QSize size = iconSize.isEmpty() ? QSize(16, 16) : iconSize.boundedTo(QSize(16, 16));
    return QRect(QPoint(rect.left(), rect.top() + (rect.height() - size.height()) / 2), size);
}

QRect KORBStyle_2013::getToolBarHandleRect(const QStyleOption* option, const QWidget*) const
{
    const QRect r = option->rect;
    if (option->state & State_Horizontal)
        return QRect(r.left() + (r.width() - 6) / 2, r.top() + 2, 6, r.height() - 4);
    return QRect(r.left() + 2, r.top() + (r.height() - 6) / 2, r.width() - 4, 6);
}

QColor KORBStyle_2013::getColorFromGradient(const QGradient& gradient, double position)
{
    const QGradientStops stops = gradient.stops();
    if (stops.isEmpty())
        return QColor();
    if (position <= stops.first().first)
        return stops.first().second;
    for (int i = 1; i < stops.size(); ++i) {
        if (position > stops.at(i).first)
            continue;
        const QGradientStop& a = stops.at(i - 1);
        const QGradientStop& b = stops.at(i);
        const double span = b.first - a.first;
        const double t = span > 0 ? (position - a.first) / span : 1.0;
        const auto mix = [t](int x, int y) { return qRound(x + (y - x) * t); };
        return QColor(mix(a.second.red(), b.second.red()), mix(a.second.green(), b.second.green()),
                      mix(a.second.blue(), b.second.blue()), mix(a.second.alpha(), b.second.alpha()));
    }
    return stops.last().second;
}

void KORBStyle_2013::tryDrawMainBorder(QPainter* painter, const QWidget* widget) const
{
    if (!painter || !widget)
        return;
    const QWidget* window = widget->window();
    if (!window || !window->inherits("KMainWindow"))
        return;
    const QColor c = KDrawHelpFunc::getColorFromTheme(QStringLiteral("KMainwindow"), QStringLiteral("mainborder"));
    if (!c.isValid())
        return;
    // Only the edges of the widget that lie on the window's edge carry the border.
    const QRect inWindow(widget->mapTo(window, QPoint(0, 0)), widget->size());
    const QRect r = widget->rect();
    painter->save();
    painter->setPen(c);
    if (inWindow.left() == 0)
        painter->drawLine(r.topLeft(), r.bottomLeft());
    if (inWindow.right() == window->width() - 1)
        painter->drawLine(r.topRight(), r.bottomRight());
    if (inWindow.bottom() == window->height() - 1)
        painter->drawLine(r.bottomLeft(), r.bottomRight());
    painter->restore();
}

// --- combo box ---

void KORBStyle_2013::drawComboBox(const QStyleOptionComboBox* option, QPainter* painter, const QWidget* widget) const
{
    const QString cls = QStringLiteral("KComboBox");
    const bool hot = isEnabled(option) && (option->state & (State_MouseOver | State_HasFocus | State_On));
    const QRect r = option->rect;
    painter->save();
    if (option->editable)
        painter->fillRect(r, option->palette.brush(QPalette::Base));
    else
        painter->fillRect(r, brush(cls, "background", option->palette.brush(QPalette::Button)));
    const QColor border = hot ? color(s_toolButton, "border-hover", option->palette.color(QPalette::Highlight))
                              : color(cls, "border", option->palette.color(QPalette::Mid));
    if (option->frame)
        drawOutline(painter, r, border);
    if (option->subControls & SC_ComboBoxArrow) {
        const QRect arrow = getComboBoxSubControlRect(option, SC_ComboBoxArrow, widget);
        if (hot && (option->state & (State_MouseOver | State_On))) {
            QStyleOption state = *option;
            state.state |= (option->state & State_On) ? State_Sunken : State_MouseOver;
            drawHotPanel(painter, arrow.adjusted(0, 0, -1, 0), &state, false);
            painter->setPen(border);
            painter->drawLine(arrow.left() - 1, arrow.top(), arrow.left() - 1, arrow.bottom());
        }
        const QPoint c = arrow.center();
        KDrawHelpFunc::drawDownArraw(*painter, QRect(c.x() - 2, c.y() - 1, 4, 2), isEnabled(option));
    }
    painter->restore();
}

// --- scroll bar ---

void KORBStyle_2013::drawScrollBar(const QStyleOptionSlider* option, QPainter* painter, const QWidget* widget) const
{
    painter->fillRect(option->rect, acrossBrush(s_scrollBar, QStringLiteral("background") + scrollSuffix(widget),
                                                option->orientation, option->palette.brush(QPalette::Window)));
    // Each part through its own element, in the state of the part under the mouse.
    static const struct {
        SubControl sc;
        ControlElement ce;
    } parts[] = {{SC_ScrollBarSubPage, CE_ScrollBarSubPage}, {SC_ScrollBarAddPage, CE_ScrollBarAddPage},
                 {SC_ScrollBarSubLine, CE_ScrollBarSubLine}, {SC_ScrollBarAddLine, CE_ScrollBarAddLine},
                 {SC_ScrollBarSlider, CE_ScrollBarSlider}};
    for (const auto& part : parts) {
        if (!(option->subControls & part.sc))
            continue;
        QStyleOptionSlider o = *option;
        o.rect = proxy()->subControlRect(CC_ScrollBar, option, part.sc, widget);
        o.state &= ~(State_Sunken | State_MouseOver);
        if (option->activeSubControls & part.sc)
            o.state |= (option->state & State_Sunken) ? State_Sunken : (option->state & State_MouseOver);
        if (o.rect.isValid())
            proxy()->drawControl(part.ce, &o, painter, widget);
    }
}

void KORBStyle_2013::drawScrollBarPageButton(const QStyleOptionSlider* option, QPainter* painter,
                                             const QWidget* widget) const
{
    painter->fillRect(option->rect, acrossBrush(s_scrollBar, QStringLiteral("background") + scrollSuffix(widget),
                                                option->orientation, option->palette.brush(QPalette::Window)));
    if (isEnabled(option) && (option->state & State_Sunken)) {
        const QColor shade = KDrawHelpFunc::getColorFromTheme(s_scrollBar, QStringLiteral("slider-shadow1"));
        if (shade.isValid())
            painter->fillRect(option->rect, shade);
    }
}

void KORBStyle_2013::drawScrollBarLineButton(ControlElement element, const QStyleOptionSlider* option,
                                             QPainter* painter, const QWidget* widget) const
{
    if (isHot(option) && option->maximum > option->minimum)
        drawHotPanel(painter, option->rect, option, false);
    const bool horizontal = option->orientation == Qt::Horizontal;
    Qt::ArrowType type = element == CE_ScrollBarAddLine ? (horizontal ? Qt::RightArrow : Qt::DownArrow)
                                                        : (horizontal ? Qt::LeftArrow : Qt::UpArrow);
    if (horizontal && option->direction == Qt::RightToLeft)
        type = type == Qt::RightArrow ? Qt::LeftArrow : Qt::RightArrow;
    const QString item = QStringLiteral("arrow") + scrollSuffix(widget);
    const bool usable = isEnabled(option) && option->maximum > option->minimum;
    QBrush fill = arrowColor(option);
    if (usable && hasGradient(s_scrollBar, item))
        fill = QBrush(KDrawHelpFunc::getGradientFromTheme(s_scrollBar, item));
    else if (!usable)
        fill = color(QStringLiteral("arrow"), "arrow-disable", option->palette.color(QPalette::Disabled, QPalette::WindowText));
    painter->save();
    drawArrow(painter, option->rect, type, fill);
    painter->restore();
}

void KORBStyle_2013::drawScrollBarSlider(const QStyleOptionSlider* option, QPainter* painter,
                                         const QWidget* widget) const
{
    if (!isEnabled(option) || option->maximum <= option->minimum)
        return;
    const bool horizontal = option->orientation == Qt::Horizontal;
    const QString suffix = scrollSuffix(widget);
    // A slim slab across the bar, with a short grip in its middle.
    const QRect slab = horizontal ? option->rect.adjusted(0, 3, 0, -3) : option->rect.adjusted(3, 0, -3, 0);
    painter->save();
    painter->setPen(color(s_scrollBar, "slider-border", option->palette.color(QPalette::Mid)));
    painter->setBrush(acrossBrush(s_scrollBar, QStringLiteral("slider-background") + suffix, option->orientation,
                                  option->palette.brush(QPalette::Button)));
    painter->drawRect(slab.adjusted(0, 0, -1, -1));
    const char* lineItem = (option->state & State_Sunken)
        ? "slider-centerLine-down"
        : ((option->state & State_MouseOver) ? "slider-centerLine-up" : "slider-centerLine");
    painter->setPen(color(s_scrollBar, lineItem, option->palette.color(QPalette::Dark)));
    const QPoint c = slab.center();
    const int along = horizontal ? slab.width() : slab.height();
    if (along >= 16) {
        for (int i = -2; i <= 2; i += 2) {
            if (horizontal)
                painter->drawLine(c.x() + i, slab.top() + 3, c.x() + i, slab.bottom() - 3);
            else
                painter->drawLine(slab.left() + 3, c.y() + i, slab.right() - 3, c.y() + i);
        }
    }
    painter->restore();
}

// --- tool buttons of Qt ---

void KORBStyle_2013::drawToolButton(const QStyleOptionToolButton* option, QPainter* painter,
                                    const QWidget* widget) const
{
    // A stock tool button gets the framework button's look: the same option, its flags read
    // from the stock fields.
    KStyleOptionToolButton k;
    static_cast<QStyleOptionToolButton&>(k) = *option;
    k.type = KStyleOptionToolButton::Type;
    k.version = KStyleOptionToolButton::Version;
    k.roundCorner = 0;
    const bool arrowOnly = option->features & QStyleOptionToolButton::Arrow;
    int flags = KStyleOptionToolButton::StyleHotKey;
    if (!arrowOnly && option->toolButtonStyle != Qt::ToolButtonTextOnly)
        flags |= KStyleOptionToolButton::StyleIcon;
    if (!arrowOnly && option->toolButtonStyle != Qt::ToolButtonIconOnly)
        flags |= KStyleOptionToolButton::StyleText;
    if (option->toolButtonStyle == Qt::ToolButtonTextUnderIcon)
        flags |= KStyleOptionToolButton::StyleTextUnderIcon;
    if (option->features & (QStyleOptionToolButton::MenuButtonPopup | QStyleOptionToolButton::HasMenu))
        flags |= KStyleOptionToolButton::StyleArrow;
    k.buttonStyle = flags;
    // A menu-button popup is a split button; a plain menu opens from the whole face.
    k.drawSeparator = option->features & QStyleOptionToolButton::MenuButtonPopup;
    if (arrowOnly) {
        k.icon = QIcon();
        k.text.clear();
    }
    drawComplexControl_ToolButton(&k, painter, widget);
    if (arrowOnly) {
        painter->save();
        drawArrow(painter, option->rect, option->arrowType, arrowColor(option));
        painter->restore();
    }
}

void KORBStyle_2013::drawIndicatorTabbarTearButton(const QStyleOptionToolButton* option, QPainter* painter,
                                                   const QWidget*) const
{
    // The scroll buttons of a tab bar cover the tabs that scroll under them: opaque.
    const QColor base = getColorFromGradient(KDrawHelpFunc::getGradientFromTheme(s_tabBar, QStringLiteral("background")), 0.5);
    painter->fillRect(option->rect, base.isValid() ? base : option->palette.color(QPalette::Window));
    if (isHot(option))
        drawHotPanel(painter, option->rect, option);
    painter->save();
    drawArrow(painter, option->rect, option->arrowType, arrowColor(option));
    painter->restore();
}

// --- tab bar ---

void KORBStyle_2013::drawTabBarTabShape(const QStyleOptionTab* option, QPainter* painter, const QWidget*) const
{
    const bool selected = option->state & State_Selected;
    const bool hover = isEnabled(option) && (option->state & State_MouseOver);
    if (!selected && !hover)
        return; // flat: a tab at rest is its label only
    const QRect r = option->rect.adjusted(0, 0, -1, -1);
    painter->save();
    if (selected)
        painter->fillRect(option->rect, brush(s_tabBar, "background", option->palette.brush(QPalette::Base)));
    painter->setPen(selected ? color(s_tabBar, "border", option->palette.color(QPalette::Mid))
                             : color(s_tabBar, "border-in", option->palette.color(QPalette::Midlight)));
    // Three sides: the one towards the page stays open.
    const QLine top(r.topLeft(), r.topRight()), bottom(r.bottomLeft(), r.bottomRight());
    const QLine left(r.topLeft(), r.bottomLeft()), right(r.topRight(), r.bottomRight());
    switch (option->shape) {
    case QTabBar::RoundedSouth:
    case QTabBar::TriangularSouth:
        painter->drawLines(QList<QLine>{left, bottom, right});
        break;
    case QTabBar::RoundedWest:
    case QTabBar::TriangularWest:
        painter->drawLines(QList<QLine>{top, left, bottom});
        break;
    case QTabBar::RoundedEast:
    case QTabBar::TriangularEast:
        painter->drawLines(QList<QLine>{top, right, bottom});
        break;
    default:
        painter->drawLines(QList<QLine>{left, top, right});
        break;
    }
    painter->restore();
}

void KORBStyle_2013::drawTabBarTabLabel(const QStyleOptionTab* option, QPainter* painter, const QWidget* widget) const
{
    const bool vertical = option->shape == QTabBar::RoundedWest || option->shape == QTabBar::RoundedEast
        || option->shape == QTabBar::TriangularWest || option->shape == QTabBar::TriangularEast;
    if (vertical) {
        // Turned captions keep the stock layout; only the colour is the look's.
        QStyleOptionTab o = *option;
        o.palette.setColor(QPalette::WindowText, textColor(option));
        return KORBStyle::drawControl(CE_TabBarTabLabel, &o, painter, widget);
    }
    QRect text = proxy()->subElementRect(SE_TabBarTabText, option, widget);
    painter->save();
    if (!option->icon.isNull()) {
        const QRect icon = getTextIconRect(option->rect.adjusted(6, 0, 0, 0), option->icon, option->iconSize);
        option->icon.paint(painter, icon, Qt::AlignCenter, isEnabled(option) ? QIcon::Normal : QIcon::Disabled);
        text.setLeft(qMax(text.left(), icon.right() + 5));
    }
    if (option->rightButtonSize.isValid())
        text.setRight(qMin(text.right(), getTabBarTabRightButton(option, widget).left() - 2));
    auto* bar = qobject_cast<const QTabBar*>(widget);
    const Qt::TextElideMode elide = (bar && bar->elideMode() != Qt::ElideNone) ? bar->elideMode() : Qt::ElideRight;
    const QString shown = option->fontMetrics.elidedText(option->text, elide, text.width(), Qt::TextShowMnemonic);
    painter->setPen(textColor(option));
    painter->drawText(text, Qt::AlignCenter | Qt::TextShowMnemonic, shown);
    painter->restore();
}

void KORBStyle_2013::drawIndicatorTabClose(const QStyleOption* option, QPainter* painter, const QWidget*) const
{
    if (isHot(option))
        drawHotPanel(painter, option->rect, option);
    const QRectF cross = QRectF(option->rect).adjusted(4.5, 4.5, -4.5, -4.5);
    painter->save();
    painter->setRenderHint(QPainter::Antialiasing);
    painter->setPen(QPen(color(QStringLiteral("KTabBar"), "tagCross", textColor(option)), 1.5));
    painter->drawLine(cross.topLeft(), cross.bottomRight());
    painter->drawLine(cross.topRight(), cross.bottomLeft());
    painter->restore();
}
