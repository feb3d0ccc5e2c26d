#include "korbstyle.h"

#include <functional>
#include "kstyleoptionhotkey.h"

#include <QAbstractItemView>
#include <QApplication>
#include <QFontMetrics>
#include <QPainter>
#include <QStyleOptionTab>
#include <QTabBar>
#include <QToolButton>
#include <QTreeView>

#include <kdrawhelpfunc.h>

namespace {

bool hasAncestor(const QWidget* widget, const char* className)
{
    for (const QObject* o = widget ? widget->parent() : nullptr; o; o = o->parent()) {
        if (o->inherits(className))
            return true;
    }
    return false;
}

bool wantsHover(const QWidget* widget)
{
    return qobject_cast<const QTabBar*>(widget) || qobject_cast<const QToolButton*>(widget)
        || widget->inherits("KGalleryComboBox");
}

QColor themeOr(const char* className, const char* item, const QColor& fallback)
{
    const QColor c = KDrawHelpFunc::getColorFromTheme(QLatin1String(className), QLatin1String(item));
    return c.isValid() ? c : fallback;
}

// The framework's own complex controls. The wrapped style cannot handle their numbers (a
// stock style prints "not handled" for them), so none of them is handed on as it is.
bool isFrameworkControl(QStyle::ComplexControl control)
{
    return uint(control) > uint(QStyle::CC_CustomBase) && uint(control) <= uint(KORBStyle::KCC_Slider);
}

} // namespace

bool KORBStyle::isFrameworkStyle(const QStyle* style)
{
    // A host may wrap the framework's style in a proxy of its own: the custom elements still
    // reach it through the chain.
    while (style) {
        if (qobject_cast<const KORBStyle*>(style))
            return true;
        auto* proxy = qobject_cast<const QProxyStyle*>(style);
        style = proxy ? proxy->baseStyle() : nullptr;
    }
    return false;
}

KORBStyle::KORBStyle(QStyle* style)
    : QProxyStyle(style)
{
}

KORBStyle::~KORBStyle() = default;

QString KORBStyle::styleName() const
{
    return QStringLiteral("base");
}

// --- polish ---

void KORBStyle::polish(QWidget* widget)
{
    if (!widget)
        return;
    if (wantsHover(widget)) {
        widget->setAttribute(Qt::WA_Hover);
        QProxyStyle::polish(widget);
        return;
    }
    if (auto* view = qobject_cast<QAbstractItemView*>(widget)) {
        QPalette palette = view->viewport()->palette();
        if (qobject_cast<QTreeView*>(view)
            || (view->parent() && view->parent()->inherits("KRbFileMenu"))) {
            palette.setColor(QPalette::Base,
                             KDrawHelpFunc::getColorFromTheme(QStringLiteral("KDocMap"),
                                                              QStringLiteral("background")));
        } else {
            palette.setColor(QPalette::Base, Qt::white);
        }
        palette.setBrush(QPalette::HighlightedText, QBrush(Qt::black));
        view->setPalette(palette);
        QProxyStyle::polish(widget);
        return;
    }
    QProxyStyle::polish(widget);
}

void KORBStyle::unpolish(QWidget* widget)
{
    if (widget && wantsHover(widget))
        widget->setAttribute(Qt::WA_Hover, false);
    QProxyStyle::unpolish(widget);
}

// --- dispatch ---

void KORBStyle::drawPrimitive(PrimitiveElement element, const QStyleOption* option, QPainter* painter,
                              const QWidget* widget) const
{
    if (element == KPE_MainBorder)
        return; // drawn by the looks that have a main border; nothing in the frame
    QProxyStyle::drawPrimitive(element, option, painter, widget);
}

void KORBStyle::drawControl(ControlElement element, const QStyleOption* option, QPainter* painter,
                            const QWidget* widget) const
{
    switch (uint(element)) {
    case uint(KCE_SheetTabBarTab):
        if (auto* o = qstyleoption_cast<const KSheetTabStyleOption*>(option))
            drawControl_KSheetTabBarTab(o, painter, widget);
        return;
    case uint(KCE_MinimizeButton):
        if (auto* o = qstyleoption_cast<const KStyleOptionWindowTitleButton*>(option))
            drawControl_KMinimizeButton(o, painter, widget);
        return;
    case uint(KCE_RestoreMaximizeButton):
        if (auto* o = qstyleoption_cast<const KStyleOptionRestoreMaximizeButton*>(option))
            drawControl_KRestoreMaximizeButton(o, painter, widget);
        return;
    case uint(KCE_CloseButton):
        if (auto* o = qstyleoption_cast<const KStyleOptionWindowTitleButton*>(option))
            drawControl_KCloseButton(o, painter, widget);
        return;
    case uint(KCE_TabBarNewButton):
        if (auto* o = qstyleoption_cast<const KStyleOptionTabBarNewButton*>(option))
            drawControl_KTabBarNewButton(o, painter, widget);
        return;
    case uint(KCE_ZoomButton):
        if (auto* o = qstyleoption_cast<const KStyleOptionZoomButton*>(option))
            drawControl_KZoomButton(o, painter, widget);
        return;
    case uint(KCE_HotKeyItem):
        if (auto* o = qstyleoption_cast<const KStyleOptionHotKey*>(option))
            drawControl_KHotKeyItem(o, painter, widget);
        return;
    case uint(CE_MenuItem):
        if (auto* o = qstyleoption_cast<const QStyleOptionMenuItem*>(option); o && isFrameworkMenu(widget)) {
            drawControl_MenuItem(o, painter, widget);
            return;
        }
        break;
    default:
        break;
    }
    QProxyStyle::drawControl(element, option, painter, widget);
}

QRect KORBStyle::subElementRect(SubElement element, const QStyleOption* option, const QWidget* widget) const
{
    return QProxyStyle::subElementRect(element, option, widget);
}

// One case of the dispatcher: the option must be of the element's type, or nothing happens.
#define KORB_DISPATCH(number, OptionType, operation)                                         \
    case uint(number):                                                                           \
        if (auto* o = qstyleoption_cast<const OptionType*>(option))                           \
            operation(o, painter, widget);                                                    \
        return;

void KORBStyle::drawComplexControl(ComplexControl control, const QStyleOptionComplex* option,
                                   QPainter* painter, const QWidget* widget) const
{
    switch (uint(control)) {
        KORB_DISPATCH(KCC_RbTabBar, KStyleOptionRbTabBar, drawComplexControl_KRbTabBar)
        KORB_DISPATCH(KCC_RbTabButton, KStyleOptionKRbTabButton, drawComplexControl_KRbTabButton)
        KORB_DISPATCH(KCC_RbCategory, KStyleOptionRbCategory, drawComplexControl_KRbCategory)
        KORB_DISPATCH(KCC_RbHScrollWidget, KStyleOptionRbHScrollWidget, drawComplexControl_KRbHScrollWidget)
        KORB_DISPATCH(KCC_RbLogicGroup, KStyleOptionRbLogicGroup, drawComplexControl_KRbLogicGroup)
        KORB_DISPATCH(KCC_LogicGroupButton, KStyleOptionLogicGroupButton, drawComplexControl_KLogicGroupButton)
        KORB_DISPATCH(KCC_ToolButton, KStyleOptionToolButton, drawComplexControl_ToolButton)
        KORB_DISPATCH(KCC_SepraratorWidget, KStyleOptionSepraratorWidget, drawComplexControl_KSepraratorWidget)
        KORB_DISPATCH(KCC_StatusBar, KStyleOptionStatusBar, drawComplexControl_KStatusBar)
        KORB_DISPATCH(KCC_DocTabBar, KStyleOptionDocTabBar, drawComplexControl_KDocTabBar)
        KORB_DISPATCH(KCC_DocTab, KStyleOptionDocTab, drawComplexControl_KDocTab)
        KORB_DISPATCH(KCC_RbLayoutWidget, KStyleOptionRbLayoutWidget, drawComplexControl_KRbLayoutWidget)
        KORB_DISPATCH(KCC_RbSubTabBar, KStyleOptionRbSubTabBar, drawComplexControl_KRbSubTabBar)
        KORB_DISPATCH(KCC_MainWindow, KStyleOptionMainWindow, drawComplexControl_KMainWindow)
        KORB_DISPATCH(KCC_RbTabFileButton, KStyleOptionRbTabFileButton, drawComplexControl_KRbTabFileButton)
    case uint(KCC_Slider):
        // The slider is the one custom control that the wrapped style also sees: the slider
        // widgets rely on its painting of the stock parts. It gets them as the stock slider,
        // the one number of the two that it can draw.
        if (auto* o = qstyleoption_cast<const QStyleOptionSlider*>(option)) {
            drawComplexControl_KSlider(o, painter, widget);
            QProxyStyle::drawComplexControl(CC_Slider, o, painter, widget);
        }
        return;
    default:
        break;
    }
    QProxyStyle::drawComplexControl(control, option, painter, widget);
}

#undef KORB_DISPATCH

QStyle::SubControl KORBStyle::hitTestComplexControl(ComplexControl control, const QStyleOptionComplex* option,
                                                    const QPoint& pos, const QWidget* widget) const
{
    if (control == KCC_DocTab) {
        auto* o = qstyleoption_cast<const KStyleOptionDocTab*>(option);
        return o ? hitTestComplexControl_KDocTab(control, o, pos, widget) : SC_None;
    }
    if (control == KCC_RbTabFileButton) {
        auto* o = qstyleoption_cast<const KStyleOptionRbTabFileButton*>(option);
        return o ? hitTestComplexControl_KRbTabFileButton(control, o, pos, widget) : SC_None;
    }
    if (control == KCC_Slider) {
        auto* o = qstyleoption_cast<const QStyleOptionSlider*>(option);
        return o ? QProxyStyle::hitTestComplexControl(CC_Slider, o, pos, widget) : SC_None;
    }
    if (isFrameworkControl(control))
        return SC_None; // no parts to hit in the plain frame
    return QProxyStyle::hitTestComplexControl(control, option, pos, widget);
}

QRect KORBStyle::subControlRect(ComplexControl control, const QStyleOptionComplex* option,
                                SubControl subControl, const QWidget* widget) const
{
    if (control == KCC_ToolButton) {
        auto* o = qstyleoption_cast<const KStyleOptionToolButton*>(option);
        return o ? subControlRect_ToolButton(control, o, subControl, widget) : QRect();
    }
    if (control == KCC_Slider) {
        auto* o = qstyleoption_cast<const QStyleOptionSlider*>(option);
        return o ? QProxyStyle::subControlRect(CC_Slider, o, subControl, widget) : QRect();
    }
    if (isFrameworkControl(control))
        return QRect(); // no parts in the plain frame
    return QProxyStyle::subControlRect(control, option, subControl, widget);
}

QSize KORBStyle::sizeFromContents(ContentsType type, const QStyleOption* option, const QSize& size,
                                  const QWidget* widget) const
{
    if (type == KCT_ToolButton) {
        auto* o = qstyleoption_cast<const KStyleOptionToolButton*>(option);
        return o ? sizeFromContents_ToolButton(type, o, size, widget) : size;
    }
    if (type == KCT_LogicGroupButton)
        return sizeFromContents_KLogicGroupButton(type, option, size, widget);
    if (type == CT_MenuItem && isFrameworkMenu(widget)) {
        if (auto* o = qstyleoption_cast<const QStyleOptionMenuItem*>(option))
            return sizeFromContents_MenuItem(o, size, widget);
    }
    return QProxyStyle::sizeFromContents(type, option, size, widget);
}

int KORBStyle::styleHint(StyleHint hint, const QStyleOption* option, const QWidget* widget,
                         QStyleHintReturn* returnData) const
{
    if (hint == SH_Menu_AllowActiveAndDisabled)
        return 0;
    return QProxyStyle::styleHint(hint, option, widget, returnData);
}

int KORBStyle::pixelMetric(PixelMetric metric, const QStyleOption* option, const QWidget* widget) const
{
    switch (metric) {
    case PM_ButtonMargin:
        return 4;
    case PM_DefaultFrameWidth:
        return qstyleoption_cast<const QStyleOptionButton*>(option) ? 1 : 2;
    case PM_ScrollBarExtent:
        return 16;
    case PM_ScrollBarSliderMin: {
        const int base = QProxyStyle::pixelMetric(metric, option, widget);
        if (!hasAncestor(widget, "KTik"))
            return base + 18;
        if (option) {
            const int available = option->rect.height() - 2 * proxy()->pixelMetric(PM_ScrollBarExtent, option, widget);
            if (available >= 1)
                return qMin(base, available);
        }
        return base;
    }
    case PM_TabBarTabOverlap:
        return 1;
    case PM_TabBarTabHSpace:
    case PM_TabBarTabVSpace:
        if (widget && widget->objectName() == QLatin1String("kytabbar"))
            return 10;
        return QProxyStyle::pixelMetric(metric, option, widget);
    case PM_TabBarBaseHeight:
        return QProxyStyle::pixelMetric(PM_DefaultFrameWidth, option, widget);
    case PM_MenuHMargin:
    case PM_MenuVMargin:
        return 0;
    case PM_MenuPanelWidth:
        return 2;
    case PM_ToolTipLabelFrameWidth:
        return 4;
    default:
        break;
    }
    // The custom numbers lie outside the enum's named values: compared as numbers.
    switch (uint(metric)) {
    case uint(KPM_Reserved2):
        return 3;
    case uint(KPM_Reserved3):
        return 2;
    case uint(KPM_Reserved4):
    case uint(KPM_FileButtonMarginTop):
    case uint(KPM_FileButtonMarginLeft):
    case uint(KPM_FileButtonMarginBottom):
    case uint(KPM_FileButtonMarginRight):
    case uint(KPM_Reserved9):
        return 0;
    default:
        return QProxyStyle::pixelMetric(metric, option, widget);
    }
}

// --- the tool button ---

void KORBStyle::_toQStyleOptionToolButton(const KStyleOptionToolButton* in, QStyleOptionToolButton* out)
{
    if (!in || !out)
        return;
    *out = static_cast<const QStyleOptionToolButton&>(*in);
    // The copy carried the framework's type number; the stock style must see its own.
    out->type = QStyleOptionToolButton::Type;
    out->version = QStyleOptionToolButton::Version;
    const int flags = in->buttonStyle;
    // The drop-down part is the stock "menu button popup" feature.
    out->features = (flags & KStyleOptionToolButton::StyleArrow)
        ? QStyleOptionToolButton::ToolButtonFeatures(QStyleOptionToolButton::MenuButtonPopup)
        : QStyleOptionToolButton::ToolButtonFeatures(QStyleOptionToolButton::None);
    out->arrowType = Qt::NoArrow;
    if (!(flags & KStyleOptionToolButton::StyleText) && !in->icon.isNull())
        out->toolButtonStyle = Qt::ToolButtonIconOnly;
    else
        out->toolButtonStyle = (flags & KStyleOptionToolButton::StyleTextUnderIcon) ? Qt::ToolButtonTextUnderIcon
                                                                                   : Qt::ToolButtonTextBesideIcon;
}

// The framework's tool button is drawn here, from the theme's "KToolButton" colours, so
// that every look has a proper button even before it draws one of its own. Layout, in the
// button's rectangle: margins, the icon, the caption beside or under it, and the drop-down
// part at the right edge when the style word has the arrow bit.
namespace {

constexpr int kToolButtonArrowWidth = 13;
constexpr int kToolButtonSpacing = 4;

struct ToolButtonParts
{
    bool showIcon = false;
    bool showText = false;
    bool under = false;
    bool arrow = false;
    int hMargin = 3;
    int vMargin = 3;
};

ToolButtonParts toolButtonParts(const KStyleOptionToolButton* o)
{
    ToolButtonParts parts;
    const int flags = o->buttonStyle;
    const bool hasIcon = !o->icon.isNull();
    const bool hasText = !o->text.isEmpty();
    // The rules of the widget's needDrawText(): text without an icon always shows; with
    // an icon it takes the text bit and a screen that is wide enough.
    parts.showText = hasText && (!hasIcon || (!o->autoHideText && (flags & KStyleOptionToolButton::StyleText)));
    parts.showIcon = hasIcon && ((flags & KStyleOptionToolButton::StyleIcon) || !parts.showText);
    parts.under = (flags & KStyleOptionToolButton::StyleTextUnderIcon) && parts.showIcon && parts.showText;
    parts.arrow = flags & KStyleOptionToolButton::StyleArrow;
    if (o->largeMargins) {
        parts.hMargin = 6;
        parts.vMargin = 4;
    }
    return parts;
}

// A gradient of the theme, or no brush when the theme lacks it: every gradient the theme
// reads is object-bounding, while the empty one handed out for a miss is not.
QBrush themeGradient(const QString& cls, const char* name)
{
    const QGradient& gradient = KDrawHelpFunc::getGradientFromTheme(cls, QLatin1String(name));
    if (gradient.coordinateMode() != QGradient::ObjectBoundingMode)
        return QBrush();
    return QBrush(gradient);
}

// The panel of a tool button in its state: no brush for an idle auto-raised button.
struct ToolButtonPanel
{
    QBrush background;
    QColor border;
};

ToolButtonPanel toolButtonPanel(const KStyleOptionToolButton* option)
{
    const bool enabled = option->state & QStyle::State_Enabled;
    const bool sunken = option->state & QStyle::State_Sunken;
    const bool checked = option->state & QStyle::State_On;
    const bool hover = enabled && (option->state & QStyle::State_MouseOver);
    const bool autoRaise = option->state & QStyle::State_AutoRaise;
    const QString cls = QStringLiteral("KToolButton");

    ToolButtonPanel panel;
    const auto fromTheme = [&](const char* background, const char* border) {
        panel.background = themeGradient(cls, background);
        panel.border = KDrawHelpFunc::getColorFromTheme(cls, QLatin1String(border));
    };
    if (!enabled && checked)
        fromTheme("background-disable", "border-disable");
    else if (enabled && (sunken || (checked && hover)))
        fromTheme("background-down", "border-down");
    else if (enabled && checked)
        // Checked and at rest: the pressed colours, a shade lighter by the hover border.
        fromTheme("background-down", "border-hover");
    else if (hover || !autoRaise)
        fromTheme("background-hover", "border-hover");

    // A theme without the button's items: the palette's highlight stands in.
    const bool wantsBackground = (!enabled && checked) || (enabled && (sunken || checked || hover)) || !autoRaise;
    if (wantsBackground && panel.background.style() == Qt::NoBrush) {
        QColor fill = option->palette.color(QPalette::Highlight);
        fill.setAlpha(sunken || checked ? 110 : 60);
        panel.background = QBrush(fill);
        if (!panel.border.isValid())
            panel.border = option->palette.color(QPalette::Highlight);
    }
    return panel;
}

// "&" marks a mnemonic only when the button shows one.
int toolButtonTextFlags(const KStyleOptionToolButton* o)
{
    return (o->buttonStyle & KStyleOptionToolButton::StyleHotKey) ? int(Qt::TextShowMnemonic)
                                                                  : int(Qt::TextHideMnemonic);
}

QSize toolButtonTextSize(const KStyleOptionToolButton* o)
{
    QSize size = o->fontMetrics.size(toolButtonTextFlags(o), o->text);
    if (!o->text2.isEmpty()) {
        const QSize second = o->fontMetrics.size(toolButtonTextFlags(o), o->text2);
        size = QSize(qMax(size.width(), second.width()), size.height() + second.height());
    }
    return size;
}

} // namespace

void KORBStyle::drawComplexControl_ToolButton(const KStyleOptionToolButton* option, QPainter* painter,
                                              const QWidget* widget) const
{
    drawToolButtonPanel(option, painter, widget);
    if (option->buttonStyle & KStyleOptionToolButton::StyleArrow)
        drawToolButtonArrow(option, painter, widget);
    drawToolButtonLabel(option, painter, widget);
}

void KORBStyle::drawToolButtonPanel(const KStyleOptionToolButton* option, QPainter* painter,
                                    const QWidget*) const
{
    const ToolButtonPanel panel = toolButtonPanel(option);
    if (panel.background.style() == Qt::NoBrush)
        return;
    painter->save();
    painter->setPen(panel.border.isValid() ? QPen(panel.border) : QPen(Qt::NoPen));
    painter->setBrush(panel.background);
    const QRect frame = option->rect.adjusted(0, 0, -1, -1);
    if (option->roundCorner) {
        painter->setRenderHint(QPainter::Antialiasing);
        const QPainterPath path = KDrawHelpFunc::getBoundPath(frame, 2, option->roundCorner);
        painter->drawPath(path.translated(0.5, 0.5));
    } else {
        painter->drawRect(frame);
    }
    painter->restore();
}

void KORBStyle::drawToolButtonArrow(const KStyleOptionToolButton* option, QPainter* painter,
                                    const QWidget* widget) const
{
    const QRect menu = proxy()->subControlRect(KCC_ToolButton, option, KSC_ToolButtonMenu, widget);
    if (!menu.isValid())
        return;
    painter->save();
    // The line between the two parts, where the panel has a border to draw it with.
    const ToolButtonPanel panel = toolButtonPanel(option);
    if (option->drawSeparator && panel.background.style() != Qt::NoBrush && panel.border.isValid()) {
        const QRect frame = option->rect.adjusted(0, 0, -1, -1);
        painter->setPen(panel.border);
        painter->drawLine(menu.left(), frame.top() + 1, menu.left(), frame.bottom() - 1);
    }
    const bool enabled = option->state & State_Enabled;
    const QRect arrow(menu.center().x() - 3, menu.center().y() - 1, 7, 4);
    const QColor arrowColor = enabled ? option->palette.color(QPalette::WindowText)
                                      : option->palette.color(QPalette::Disabled, QPalette::WindowText);
    KDrawHelpFunc::drawDownArraw(*painter, arrow, QPen(arrowColor), QBrush(arrowColor));
    painter->restore();
}

void KORBStyle::drawToolButtonLabel(const KStyleOptionToolButton* option, QPainter* painter,
                                    const QWidget* widget) const
{
    const ToolButtonParts parts = toolButtonParts(option);
    QRect content = option->rect.adjusted(parts.hMargin, parts.vMargin, -parts.hMargin, -parts.vMargin);
    if (parts.arrow) {
        const QRect menu = proxy()->subControlRect(KCC_ToolButton, option, KSC_ToolButtonMenu, widget);
        if (menu.isValid())
            content.setRight(menu.left() - 1);
    }

    const bool enabled = option->state & State_Enabled;
    const bool hover = enabled && (option->state & State_MouseOver);
    const QIcon::Mode mode = !enabled ? QIcon::Disabled : (hover ? QIcon::Active : QIcon::Normal);
    const QIcon::State state = (option->state & State_On) ? QIcon::On : QIcon::Off;
    QColor textColor = KDrawHelpFunc::getColorFromTheme(QStringLiteral("common"), QStringLiteral("text"));
    if (!textColor.isValid())
        textColor = option->palette.color(QPalette::WindowText);
    if (!enabled)
        textColor = option->palette.color(QPalette::Disabled, QPalette::WindowText);
    const int textFlags = toolButtonTextFlags(option);
    const QSize iconSize = option->iconSize.isValid() ? option->iconSize : QSize(16, 16);

    painter->save();
    painter->setPen(textColor);
    if (parts.under) {
        const QRect iconRect(content.left() + (content.width() - iconSize.width()) / 2, content.top(),
                             iconSize.width(), iconSize.height());
        option->icon.paint(painter, iconRect, Qt::AlignCenter, mode, state);
        const QRect textRect(content.left(), iconRect.bottom() + 1 + 2, content.width(),
                             content.bottom() - iconRect.bottom() - 2);
        QString caption = option->text;
        if (!option->text2.isEmpty())
            caption += QLatin1Char('\n') + option->text2;
        painter->drawText(textRect, int(Qt::AlignHCenter | Qt::AlignTop) | textFlags, caption);
    } else {
        int x = content.left();
        if (parts.showIcon) {
            const int width = parts.showText ? iconSize.width() : content.width();
            option->icon.paint(painter, QRect(x, content.top(), width, content.height()), Qt::AlignCenter, mode,
                               state);
            x += iconSize.width() + kToolButtonSpacing;
        }
        if (parts.showText) {
            const QRect textRect(x, content.top(), content.right() - x + 1, content.height());
            const int align = parts.showIcon ? int(Qt::AlignLeft | Qt::AlignVCenter) : int(Qt::AlignCenter);
            painter->drawText(textRect, align | textFlags, option->text);
        }
    }
    painter->restore();
}

QSize KORBStyle::sizeFromContents_ToolButton(QStyle::ContentsType, const KStyleOptionToolButton* option,
                                             const QSize& size, const QWidget*) const
{
    const ToolButtonParts parts = toolButtonParts(option);
    const QSize iconSize = option->iconSize.isValid() ? option->iconSize : QSize(16, 16);
    const QSize textSize = parts.showText ? toolButtonTextSize(option) : QSize();
    int width = 0;
    int height = 0;
    if (parts.under) {
        width = qMax(iconSize.width(), textSize.width());
        height = iconSize.height() + 2 + textSize.height();
    } else {
        if (parts.showIcon) {
            width += iconSize.width();
            height = iconSize.height();
        }
        if (parts.showText) {
            width += (parts.showIcon ? kToolButtonSpacing : 0) + textSize.width();
            height = qMax(height, textSize.height());
        }
    }
    width += 2 * parts.hMargin;
    height += 2 * parts.vMargin;
    if (parts.arrow)
        width += kToolButtonArrowWidth;
    // The proposed size is the least a button takes: a square for an icon alone.
    width = qMax(width, parts.showText ? 0 : size.width());
    height = qMax(height, size.height() + (parts.under ? 0 : 2));
    if ((option->buttonStyle & KStyleOptionToolButton::StyleEvenWidth) && (width % 2))
        ++width;
    return QSize(width, height);
}

QRect KORBStyle::subControlRect_ToolButton(QStyle::ComplexControl, const KStyleOptionToolButton* option,
                                           QStyle::SubControl subControl, const QWidget*) const
{
    const QRect r = option->rect;
    const bool arrow = (option->buttonStyle & KStyleOptionToolButton::StyleArrow)
        && (option->subControls & SC_ToolButtonMenu);
    if (subControl == KSC_ToolButtonMenu || subControl == SC_ToolButtonMenu) {
        if (!arrow)
            return QRect();
        return QRect(r.right() - kToolButtonArrowWidth + 1, r.top(), kToolButtonArrowWidth, r.height());
    }
    if (arrow)
        return r.adjusted(0, 0, -kToolButtonArrowWidth, 0);
    return r;
}

// --- fallbacks of the plain frame ---

void KORBStyle::drawComplexControl_KRbTabBar(const KStyleOptionRbTabBar* option, QPainter* painter,
                                             const QWidget*) const
{
    painter->save();
    QFont font = painter->font();
    font.setBold(true);
    painter->setFont(font);
    const QFontMetrics metrics(font);
    const QString text = metrics.elidedText(option->title, Qt::ElideRight, option->rect.width());
    painter->setPen(themeOr("KRbTabBar", "text", option->palette.color(QPalette::WindowText)));
    painter->drawText(option->rect, Qt::AlignCenter, text);
    painter->restore();
}

void KORBStyle::drawComplexControl_KRbTabButton(const KStyleOptionKRbTabButton* option, QPainter* painter,
                                                const QWidget* widget) const
{
    QStyleOptionTab tab;
    static_cast<QStyleOption&>(tab) = static_cast<const QStyleOption&>(*option);
    tab.type = QStyleOptionTab::Type;
    tab.version = QStyleOptionTab::Version;
    tab.text = option->text;
    tab.shape = QTabBar::RoundedNorth;
    tab.position = QStyleOptionTab::Middle;
    proxy()->drawControl(CE_TabBarTab, &tab, painter, widget);
}

void KORBStyle::drawComplexControl_KRbCategory(const KStyleOptionRbCategory* option, QPainter* painter,
                                               const QWidget* widget) const
{
    proxy()->drawPrimitive(PE_FrameTabWidget, option, painter, widget);
}

void KORBStyle::drawComplexControl_KRbHScrollWidget(const KStyleOptionRbHScrollWidget* option,
                                                    QPainter* painter, const QWidget* widget) const
{
    proxy()->drawPrimitive(PE_Frame, option, painter, widget);
    PrimitiveElement arrow = PE_IndicatorArrowRight;
    switch (option->arrowType) {
    case Qt::LeftArrow:
        arrow = PE_IndicatorArrowLeft;
        break;
    case Qt::UpArrow:
        arrow = PE_IndicatorArrowUp;
        break;
    case Qt::DownArrow:
        arrow = PE_IndicatorArrowDown;
        break;
    default:
        break;
    }
    proxy()->drawPrimitive(arrow, option, painter, widget);
}

void KORBStyle::drawComplexControl_KRbLogicGroup(const KStyleOptionRbLogicGroup* option, QPainter* painter,
                                                 const QWidget* widget) const
{
    proxy()->drawPrimitive(PE_FrameWindow, option, painter, widget);
}

void KORBStyle::drawComplexControl_KLogicGroupButton(const KStyleOptionLogicGroupButton* option,
                                                     QPainter* painter, const QWidget* widget) const
{
    proxy()->drawPrimitive(PE_Frame, option, painter, widget);
    proxy()->drawPrimitive(PE_IndicatorArrowDown, option, painter, widget);
}

QSize KORBStyle::sizeFromContents_KLogicGroupButton(QStyle::ContentsType, const QStyleOption*,
                                                    const QSize& size, const QWidget*) const
{
    return size;
}

void KORBStyle::drawComplexControl_KSepraratorWidget(const KStyleOptionSepraratorWidget* option,
                                                     QPainter* painter, const QWidget* widget) const
{
    QStyleOption stock = *option;
    stock.type = QStyleOption::SO_Default;
    stock.version = QStyleOption::Version;
    if (option->orientation == Qt::Horizontal)
        stock.state |= State_Horizontal;
    else
        stock.state &= ~State_Horizontal;
    proxy()->drawPrimitive(PE_IndicatorToolBarSeparator, &stock, painter, widget);
}

void KORBStyle::drawComplexControl_KStatusBar(const KStyleOptionStatusBar* option, QPainter* painter,
                                              const QWidget* widget) const
{
    proxy()->drawPrimitive(PE_PanelStatusBar, option, painter, widget);
}

void KORBStyle::drawComplexControl_KDocTabBar(const KStyleOptionDocTabBar* option, QPainter* painter,
                                              const QWidget* widget) const
{
    proxy()->drawPrimitive(PE_FrameWindow, option, painter, widget);
}

QRect KORBStyle::_docTabCloseRect(const QRect& tabRect)
{
    const int side = qMin(16, tabRect.height());
    return QRect(tabRect.right() - 4 - side + 1, tabRect.top() + (tabRect.height() - side) / 2, side, side);
}

void KORBStyle::drawComplexControl_KDocTab(const KStyleOptionDocTab* option, QPainter* painter,
                                           const QWidget* widget) const
{
    proxy()->drawPrimitive(PE_Frame, option, painter, widget);
    const QRect close = _docTabCloseRect(option->rect);
    QRect content = option->rect.adjusted(4, 0, 0, 0);
    content.setRight(close.left() - 2);
    if (!option->icon.isNull()) {
        const QRect iconRect(content.left(), content.top() + (content.height() - 16) / 2, 16, 16);
        option->icon.paint(painter, iconRect);
        content.setLeft(iconRect.right() + 4);
    }
    const QColor textColor = option->palette.color(QPalette::WindowText);
    const QString text = KDrawHelpFunc::getDrawString(option->text, option->fontMetrics, content, QString());
    KDrawHelpFunc::drawColorText(*painter, textColor, content, Qt::AlignLeft | Qt::AlignVCenter, text);
    KDrawHelpFunc::drawColorText(*painter, textColor, close, Qt::AlignCenter, QStringLiteral("c"));
}

QStyle::SubControl KORBStyle::hitTestComplexControl_KDocTab(QStyle::ComplexControl, const KStyleOptionDocTab* option,
                                                            const QPoint& pos, const QWidget*) const
{
    if (_docTabCloseRect(option->rect).contains(pos))
        return KSC_DocTabClose;
    return option->rect.contains(pos) ? SubControl(uint(SC_CustomBase) + 1) : SC_None;
}

QStyle::SubControl KORBStyle::hitTestComplexControl_KRbTabFileButton(QStyle::ComplexControl,
                                                                     const KStyleOptionRbTabFileButton* option,
                                                                     const QPoint& pos, const QWidget*) const
{
    // The plain frame draws no arrow part: the whole button is its button part.
    return option->rect.contains(pos) ? SubControl(uint(SC_CustomBase) + 1) : SC_None;
}

void KORBStyle::drawComplexControl_KRbLayoutWidget(const KStyleOptionRbLayoutWidget*, QPainter*,
                                                   const QWidget*) const
{
}

void KORBStyle::drawComplexControl_KRbSubTabBar(const KStyleOptionRbSubTabBar*, QPainter*, const QWidget*) const
{
}

void KORBStyle::drawComplexControl_KMainWindow(const KStyleOptionMainWindow* option, QPainter* painter,
                                               const QWidget*) const
{
    const QRect inner = option->rect.adjusted(option->leftMargin, option->topMargin,
                                              -option->rightMargin, -option->bottomMargin);
    painter->save();
    painter->setPen(Qt::NoPen);
    painter->setBrush(themeOr("common", "window", option->palette.color(QPalette::Window)));
    painter->drawRect(inner);
    painter->restore();
}

void KORBStyle::drawControl_KSheetTabBarTab(const KSheetTabStyleOption*, QPainter*, const QWidget*) const
{
}

void KORBStyle::drawComplexControl_KRbTabFileButton(const KStyleOptionRbTabFileButton*, QPainter*,
                                                    const QWidget*) const
{
}

namespace {

// The face of a caption button: a tint while hovered or pressed (the close button's own
// tint when given), then the glyph in the title's text colour.
void captionButtonFace(const KStyleOptionWindowTitleButton* option, QPainter* painter, bool close,
                       const std::function<void(QPainter*, const QRectF&)>& glyph)
{
    const bool pressed = option->state & QStyle::State_Sunken;
    const bool hovered = option->state & QStyle::State_MouseOver;
    const bool enabled = option->state & QStyle::State_Enabled;
    painter->save();
    QColor text = themeOr("KWindowTitleButton", "glyph", option->palette.color(QPalette::WindowText));
    if (enabled && (pressed || hovered)) {
        QColor tint = option->palette.color(QPalette::Highlight);
        tint.setAlpha(pressed ? 110 : 60);
        const char* key = close ? (pressed ? "close-background-down" : "close-background-hover")
                                : (pressed ? "background-down" : "background-hover");
        tint = themeOr("KWindowTitleButton", key, tint);
        painter->fillRect(option->rect, tint);
        if (close)
            text = themeOr("KWindowTitleButton", "close-glyph-hover", text);
    }
    if (!enabled || !option->isActiveWindow)
        text = option->palette.color(QPalette::Disabled, QPalette::WindowText);
    painter->setRenderHint(QPainter::Antialiasing);
    painter->setPen(QPen(text, 1.0));
    painter->setBrush(Qt::NoBrush);
    const QRectF box(option->rect.center().x() - 4.5, option->rect.center().y() - 4.5, 10, 10);
    glyph(painter, box);
    painter->restore();
}

} // namespace

void KORBStyle::drawControl_KCloseButton(const KStyleOptionWindowTitleButton* option, QPainter* painter,
                                         const QWidget*) const
{
    captionButtonFace(option, painter, true, [](QPainter* p, const QRectF& r) {
        p->drawLine(r.topLeft(), r.bottomRight());
        p->drawLine(r.bottomLeft(), r.topRight());
    });
}

void KORBStyle::drawControl_KRestoreMaximizeButton(const KStyleOptionRestoreMaximizeButton* option,
                                                   QPainter* painter, const QWidget*) const
{
    const bool maximized = option->isMaximized;
    captionButtonFace(option, painter, false, [maximized](QPainter* p, const QRectF& r) {
        if (!maximized) {
            p->drawRect(r.adjusted(0.5, 0.5, -0.5, -0.5));
            return;
        }
        // Two windows, the front one lower left.
        const QRectF front = r.adjusted(0.5, 2.5, -2.5, -0.5);
        p->drawRect(front);
        p->drawPolyline(QPolygonF({QPointF(front.left() + 2, front.top()), QPointF(front.left() + 2, r.top() + 0.5),
                                   QPointF(r.right() - 0.5, r.top() + 0.5), QPointF(r.right() - 0.5, front.bottom() - 2),
                                   QPointF(front.right(), front.bottom() - 2)}));
    });
}

void KORBStyle::drawControl_KMinimizeButton(const KStyleOptionWindowTitleButton* option, QPainter* painter,
                                            const QWidget*) const
{
    captionButtonFace(option, painter, false, [](QPainter* p, const QRectF& r) {
        const qreal y = r.center().y() + 0.5;
        p->drawLine(QPointF(r.left(), y), QPointF(r.right(), y));
    });
}

void KORBStyle::drawControl_KTabBarNewButton(const KStyleOptionTabBarNewButton*, QPainter*, const QWidget*) const
{
}

void KORBStyle::drawComplexControl_KSlider(const QStyleOptionSlider*, QPainter*, const QWidget*) const
{
}

void KORBStyle::drawControl_KZoomButton(const KStyleOptionZoomButton*, QPainter*, const QWidget*) const
{
}
