// The rows of the framework's own menu (KMenuWidget), drawn in the theme's colours: an icon
// strip, the text column, the shortcut column at the right and the arrow strip of a submenu.
// The menu puts the width of its arrow strip in reservedShortcutWidth; the shortcut is part
// of the text, behind a tab.
#include "korbstyle.h"
#include "korbstyle_p.h"

#include <QPainter>
#include <QPainterPath>
#include <QStyleOptionMenuItem>

#include "kdrawhelpfunc.h"

namespace {

const QString s_rowClass = QStringLiteral("KMenuWidgetLayoutItem");
const QString s_menuClass = QStringLiteral("KMenuWidget");

constexpr int kStripPadding = 3;   // each side of the icon in its strip
constexpr int kTextGap = 7;        // strip to text
constexpr int kShortcutGap = 28;   // text to shortcut
constexpr int kRightPadding = 6;   // before the arrow strip
constexpr int kSeparatorHeight = 7;

// The icon width the menu asked for, recovered from the option's maxIconWidth (the icon
// width plus 4, plus 4 more for icons of 17 pixels and wider).
int iconWidthOf(const QStyleOptionMenuItem* o)
{
    const int w = o->maxIconWidth - 4;
    return w >= 17 ? w - 4 : w;
}

int stripWidthOf(const QStyleOptionMenuItem* o)
{
    return kStripPadding + iconWidthOf(o) + kStripPadding;
}

struct RowText
{
    QString label;
    QString shortcut;
};

RowText splitText(const QString& text)
{
    const int tab = text.indexOf(QLatin1Char('\t'));
    if (tab < 0)
        return {text, QString()};
    return {text.left(tab), text.mid(tab + 1)};
}

QColor themeColor(const QString& cls, const char* name, const QColor& fallback)
{
    const QColor c = KDrawHelpFunc::getColorFromTheme(cls, QLatin1String(name));
    return c.isValid() ? c : fallback;
}

QBrush themeBrush(const QString& cls, const char* name, const QColor& fallback)
{
    QGradient g = KDrawHelpFunc::getGradientFromTheme(cls, QLatin1String(name));
    if (g.stops().isEmpty())
        return fallback;
    g.setCoordinateMode(QGradient::ObjectBoundingMode);
    return QBrush(g);
}

} // namespace

void KOrbPaint::drawCheckMark(QPainter* painter, const QRect& box, const QColor& color)
{
    const QRectF r = QRectF(box).adjusted(box.width() * 0.25, box.height() * 0.3, -box.width() * 0.25,
                                          -box.height() * 0.3);
    QPainterPath path;
    path.moveTo(r.left(), r.center().y());
    path.lineTo(r.left() + r.width() * 0.38, r.bottom());
    path.lineTo(r.right(), r.top());
    painter->save();
    painter->setRenderHint(QPainter::Antialiasing);
    painter->setPen(QPen(color, 1.6, Qt::SolidLine, Qt::RoundCap, Qt::RoundJoin));
    painter->setBrush(Qt::NoBrush);
    painter->drawPath(path);
    painter->restore();
}

bool KORBStyle::isFrameworkMenu(const QWidget* widget)
{
    return widget && widget->inherits("KMenuWidget");
}

QSize KORBStyle::sizeFromContents_MenuItem(const QStyleOptionMenuItem* option, const QSize& size,
                                           const QWidget*) const
{
    if (option->menuItemType == QStyleOptionMenuItem::Separator)
        return QSize(stripWidthOf(option) + 2 * kTextGap, kSeparatorHeight);
    const QFontMetrics fm(option->font);
    const RowText text = splitText(option->text);
    int width = stripWidthOf(option) + kTextGap
                + fm.horizontalAdvance(QString(text.label).remove(QLatin1Char('&')));
    if (!text.shortcut.isEmpty())
        width += kShortcutGap + fm.horizontalAdvance(text.shortcut);
    width += kRightPadding + option->reservedShortcutWidth;
    // The content height is the taller of the icon and the text line.
    const int height = qMax(size.height() + 6, fm.height() + 8);
    return QSize(width, height);
}

void KORBStyle::drawControl_MenuItem(const QStyleOptionMenuItem* option, QPainter* painter,
                                     const QWidget*) const
{
    const QRect r = option->rect;
    const int strip = stripWidthOf(option);
    const bool enabled = option->state & State_Enabled;
    const QColor border = themeColor(s_menuClass, "border", option->palette.color(QPalette::Mid));

    if (option->menuItemType == QStyleOptionMenuItem::Separator) {
        painter->save();
        painter->setPen(border);
        const int y = r.top() + r.height() / 2;
        painter->drawLine(r.left() + strip + 2, y, r.right() - 2, y);
        painter->restore();
        return;
    }

    painter->save();
    const bool hot = enabled && (option->state & (State_Selected | State_Sunken));
    if (hot) {
        const QRect band = r.adjusted(2, 1, -2, -1);
        painter->fillRect(band, themeBrush(s_rowClass, "background-down", option->palette.color(QPalette::Highlight)));
        painter->setPen(themeColor(s_rowClass, "border-down", option->palette.color(QPalette::Highlight)));
        painter->drawRect(band.adjusted(0, 0, -1, -1));
        // A split row: the line between the part that triggers and the arrow strip.
        if (option->menuItemType == QStyleOptionMenuItem::SubMenu && (option->state & State_Item))
            painter->drawLine(r.right() - option->reservedShortcutWidth - 1, band.top() + 2, r.right() - option->reservedShortcutWidth - 1,
                              band.bottom() - 2);
    }

    // The icon, framed when the command is checked; a check mark where there is no icon.
    const int iconWidth = iconWidthOf(option);
    const QRect iconBox(r.left() + kStripPadding, r.top() + (r.height() - iconWidth) / 2, iconWidth, iconWidth);
    const QColor textColor = enabled ? themeColor(s_menuClass, "text", option->palette.color(QPalette::Text))
                                     : option->palette.color(QPalette::Disabled, QPalette::Text);
    if (option->checked) {
        KDrawHelpFunc::drawCheckedRect(*painter, iconBox.adjusted(-2, -2, 1, 1), 2);
        if (option->icon.isNull())
            KOrbPaint::drawCheckMark(painter, iconBox, textColor);
    }
    if (!option->icon.isNull()) {
        const QIcon::Mode mode = enabled ? QIcon::Normal : QIcon::Disabled;
        const QPixmap pixmap = option->icon.pixmap(QSize(iconWidth, iconWidth), painter->device()->devicePixelRatio(), mode);
        painter->drawPixmap(iconBox.topLeft(), pixmap);
    }

    // Text and shortcut.
    const RowText text = splitText(option->text);
    painter->setPen(textColor);
    painter->setFont(option->font);
    const int right = r.right() - option->reservedShortcutWidth - kRightPadding;
    const QRect textRect(r.left() + strip + kTextGap, r.top(), right - (r.left() + strip + kTextGap), r.height());
    painter->drawText(textRect, Qt::AlignLeft | Qt::AlignVCenter | Qt::TextShowMnemonic | Qt::TextSingleLine,
                      text.label);
    if (!text.shortcut.isEmpty())
        painter->drawText(textRect, Qt::AlignRight | Qt::AlignVCenter | Qt::TextSingleLine, text.shortcut);

    if (option->menuItemType == QStyleOptionMenuItem::SubMenu) {
        const QRect tab(r.right() - option->reservedShortcutWidth, r.top(), option->reservedShortcutWidth, r.height());
        const QRect arrow(tab.center().x() - 2, tab.center().y() - 4, 4, 8);
        KDrawHelpFunc::drawRightArraw(*painter, arrow, enabled);
    }
    painter->restore();
}
