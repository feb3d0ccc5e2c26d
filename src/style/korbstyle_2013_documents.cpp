// The flat look of the document strip and the status bar: the strip's band, the document
// tabs with their icon, changed mark and close cross, the new-tab button, and the status
// bar's band. Every colour comes from the theme by class and item; a theme that lacks one
// falls back on the palette.
#include "korbstyle_2013.h"

#include <QPainter>

#include <kdrawhelpfunc.h>

namespace {

const QString s_tabBarClass = QStringLiteral("KTabBar");

QColor themeColor(const QString& cls, const char* item, const QColor& fallback)
{
    const QColor c = KDrawHelpFunc::getColorFromTheme(cls, QLatin1String(item));
    return c.isValid() ? c : fallback;
}

// An item that the theme may give as a gradient or as a plain colour.
QBrush themeBrush(const QString& cls, const char* item, const QBrush& fallback)
{
    const QGradient& gradient = KDrawHelpFunc::getGradientFromTheme(cls, QLatin1String(item));
    if (gradient.coordinateMode() == QGradient::ObjectBoundingMode)
        return QBrush(gradient);
    const QColor c = KDrawHelpFunc::getColorFromTheme(cls, QLatin1String(item));
    return c.isValid() ? QBrush(c) : fallback;
}

void drawCross(QPainter* painter, const QRect& rect, const QColor& color)
{
    const QRect r = rect.adjusted(4, 4, -4, -4);
    painter->save();
    painter->setRenderHint(QPainter::Antialiasing);
    painter->setPen(QPen(color, 1.4));
    painter->drawLine(QPointF(r.left(), r.top()), QPointF(r.right() + 1, r.bottom() + 1));
    painter->drawLine(QPointF(r.right() + 1, r.top()), QPointF(r.left(), r.bottom() + 1));
    painter->restore();
}

} // namespace

void KORBStyle_2013::drawComplexControl_KDocTabBar(const KStyleOptionDocTabBar* option, QPainter* painter,
                                                   const QWidget*) const
{
    const QRect r = option->rect;
    painter->fillRect(r, themeBrush(s_tabBarClass, "tabbarBgGrad", option->palette.window()));
    // The line under the strip, which the checked tab breaks.
    painter->setPen(themeColor(s_tabBarClass, "tabbar-botton-line-edge", option->palette.color(QPalette::Mid)));
    painter->drawLine(r.left(), r.bottom(), r.right(), r.bottom());
}

void KORBStyle_2013::drawComplexControl_KDocTab(const KStyleOptionDocTab* option, QPainter* painter,
                                                const QWidget*) const
{
    using M = KStyleOptionDocTab;
    const QRect r = option->rect;
    const bool dropTarget = option->state & State_Sunken;
    // Panel: the checked tab stands out in the window colour with an edge, joined to the
    // document below; a hovered one is lit.
    if (option->isChecked) {
        painter->fillRect(r, themeBrush(s_tabBarClass, "tagBaseColor", option->palette.base()));
        painter->setPen(themeColor(s_tabBarClass, "tagEdgeColor", option->palette.color(QPalette::Mid)));
        painter->drawLine(r.topLeft(), r.bottomLeft());
        painter->drawLine(r.topLeft(), r.topRight());
        painter->drawLine(r.topRight(), r.bottomRight());
    } else if (option->isHover || dropTarget) {
        painter->fillRect(r.adjusted(0, 1, 0, -1), themeBrush(s_tabBarClass, "tagBgGrad", option->palette.button()));
    }
    if (option->background.style() != Qt::NoBrush)
        painter->fillRect(r.adjusted(1, 1, -1, -1), option->background);
    if (option->isChecked) {
        // A band of the theme colour at the top marks the current document.
        painter->fillRect(QRect(r.left() + 1, r.top(), r.width() - 2, 2),
                          themeColor(QStringLiteral("theme"), "theme1", option->palette.color(QPalette::Highlight)));
    }

    // Label: icon, text (with the changed mark), close cross.
    QRect content = r.adjusted(M::MarginLeft, M::MarginTop, -M::MarginRight, -M::MarginBottom);
    if (!option->icon.isNull()) {
        const QRect icon(content.left(), r.top() + (r.height() - M::IconSize) / 2, M::IconSize, M::IconSize);
        option->icon.paint(painter, icon, Qt::AlignCenter,
                           (option->state & State_Enabled) ? QIcon::Normal : QIcon::Disabled);
    }
    content.setLeft(content.left() + M::IconSize + M::TextSpacingLeft);
    const QRect close = M::closeRect(r);
    content.setRight(close.left() - M::TextSpacingRight);
    const QColor text = themeColor(QStringLiteral("common"), "text", option->palette.color(QPalette::WindowText));
    const QString mark = option->isModified ? QStringLiteral(" *") : QString();
    const int markWidth = option->fontMetrics.horizontalAdvance(mark);
    const QString label = KDrawHelpFunc::getDrawString(option->text, option->fontMetrics,
                                                       content.adjusted(0, 0, -markWidth, 0), QString());
    KDrawHelpFunc::drawColorText(*painter, text, content, Qt::AlignLeft | Qt::AlignVCenter, label + mark);

    if (option->isChecked || option->isHover) {
        if (option->isCloseHover || option->isCloseDown) {
            QColor hot = themeColor(QStringLiteral("theme"), "theme1", option->palette.color(QPalette::Highlight));
            hot.setAlpha(option->isCloseDown ? 110 : 50);
            painter->fillRect(close, hot);
        }
        drawCross(painter, close, themeColor(s_tabBarClass, "tagCross", text));
    }
}

QStyle::SubControl KORBStyle_2013::hitTestComplexControl_KDocTab(QStyle::ComplexControl,
                                                                 const KStyleOptionDocTab* option,
                                                                 const QPoint& pos, const QWidget*) const
{
    if (KStyleOptionDocTab::closeRect(option->rect).contains(pos))
        return KSC_DocTabClose;
    return option->rect.contains(pos) ? SubControl(uint(SC_CustomBase) + 1) : SC_None;
}

void KORBStyle_2013::drawControl_KTabBarNewButton(const KStyleOptionTabBarNewButton* option, QPainter* painter,
                                                  const QWidget*) const
{
    const QRect r = option->rect.adjusted(1, 2, -1, -2);
    if (option->isDown || option->isHover) {
        painter->fillRect(r, themeBrush(s_tabBarClass, option->isDown ? "NewButtonBackground" : "NewButtonBackground-Light",
                                        option->palette.button()));
        painter->setPen(themeColor(s_tabBarClass, "tagEdgeColor", option->palette.color(QPalette::Mid)));
        painter->drawRect(r.adjusted(0, 0, -1, -1));
    }
    // The plus sign.
    const QColor color = themeColor(QStringLiteral("common"), "text", option->palette.color(QPalette::WindowText));
    const QPoint c = r.center();
    painter->fillRect(QRect(c.x() - 5, c.y(), 11, 1), color);
    painter->fillRect(QRect(c.x(), c.y() - 5, 1, 11), color);
}

void KORBStyle_2013::drawComplexControl_KStatusBar(const KStyleOptionStatusBar* option, QPainter* painter,
                                                   const QWidget*) const
{
    const QString cls = QStringLiteral("KStatusBar");
    const QRect r = option->rect;
    painter->fillRect(r, themeBrush(cls, "background", option->palette.window()));
    painter->setPen(themeColor(cls, "border", option->palette.color(QPalette::Mid)));
    painter->drawLine(r.topLeft(), r.topRight());
}
