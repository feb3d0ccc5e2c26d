// Not part of the public interface: theme look-ups shared by the files of the 2013 look.
#ifndef KORBSTYLE_2013_P_H
#define KORBSTYLE_2013_P_H

#include <QBrush>
#include <QColor>
#include <QGradient>
#include <QPainter>
#include <QString>
#include <QStyle>
#include <QStyleOption>

#include <kdrawhelpfunc.h>

namespace KOrb2013 {

/// The theme's colour, or fallback (from the palette) when the theme lacks it.
inline QColor color(const QString& cls, const char* item, const QColor& fallback)
{
    const QColor c = KDrawHelpFunc::getColorFromTheme(cls, QLatin1String(item));
    return c.isValid() ? c : fallback;
}

/// Whether the theme defines the gradient: every gradient that the theme reads is
/// object-bounding, while the empty one handed out for a miss is not.
inline bool hasGradient(const QString& cls, const QString& item)
{
    return KDrawHelpFunc::getGradientFromTheme(cls, item).coordinateMode() == QGradient::ObjectBoundingMode;
}

/// The theme's gradient as a brush, or fallback when the theme lacks it.
inline QBrush brush(const QString& cls, const QString& item, const QBrush& fallback)
{
    if (!hasGradient(cls, item))
        return fallback;
    return QBrush(KDrawHelpFunc::getGradientFromTheme(cls, item));
}

inline QBrush brush(const QString& cls, const char* item, const QBrush& fallback)
{
    return brush(cls, QLatin1String(item), fallback);
}

inline bool isEnabled(const QStyleOption* o)
{
    return o->state & QStyle::State_Enabled;
}

inline bool isHot(const QStyleOption* o)
{
    return isEnabled(o) && (o->state & (QStyle::State_MouseOver | QStyle::State_Sunken));
}

inline QColor textColor(const QStyleOption* o)
{
    if (!isEnabled(o))
        return o->palette.color(QPalette::Disabled, QPalette::WindowText);
    return color(QStringLiteral("common"), "text", o->palette.color(QPalette::WindowText));
}

inline QColor borderColor(const QStyleOption* o)
{
    return color(QStringLiteral("common"), "border", o->palette.color(QPalette::Mid));
}

// The panel of a hovered or pressed small part, as a tool button has it.
inline void drawHotPanel(QPainter* painter, const QRect& rect, const QStyleOption* o, bool withBorder = true)
{
    const bool down = o->state & QStyle::State_Sunken;
    QColor highlight = o->palette.color(QPalette::Highlight);
    const QColor border = color(QStringLiteral("KToolButton"), down ? "border-down" : "border-hover", highlight);
    highlight.setAlpha(down ? 110 : 60);
    painter->save();
    painter->setPen(withBorder ? QPen(border) : QPen(Qt::NoPen));
    painter->setBrush(brush(QStringLiteral("KToolButton"), down ? "background-down" : "background-hover", highlight));
    painter->drawRect(rect.adjusted(0, 0, withBorder ? -1 : 0, withBorder ? -1 : 0));
    painter->restore();
}

inline void drawOutline(QPainter* painter, const QRect& rect, const QColor& pen)
{
    painter->save();
    painter->setPen(pen);
    painter->setBrush(Qt::NoBrush);
    painter->drawRect(rect.adjusted(0, 0, -1, -1));
    painter->restore();
}

} // namespace KOrb2013

#endif // KORBSTYLE_2013_P_H
