// The key-tip labels of the overlay: a rounded border, a background and the key in capitals,
// the typed letters set apart from those still to type. Colours come from the theme class
// "KHotKeyAssistant" ("border", "background", "-disable" for a label that can't be fired)
// and from the common text colour; nothing is a constant here.
#include "korbstyle.h"

#include <QFontMetrics>
#include <QPainter>
#include <QPainterPath>

#include "kdrawhelpfunc.h"
#include "kstyleoptionhotkey.h"

namespace {

const QString s_class = QStringLiteral("KHotKeyAssistant");

QString stateSuffix(const KStyleOptionHotKey* option)
{
    return (option->state & QStyle::State_Enabled) ? QString() : QStringLiteral("-disable");
}

QBrush labelBackground(const KStyleOptionHotKey* option)
{
    const QString name = QStringLiteral("background") + stateSuffix(option);
    const QGradient& gradient = KDrawHelpFunc::getGradientFromTheme(s_class, name);
    // Every gradient the theme reads is object-bounding; the stand-in for a missing one is not.
    if (gradient.coordinateMode() == QGradient::ObjectBoundingMode && !gradient.stops().isEmpty()) {
        // Theme gradients are given in the unit square of the label.
        QLinearGradient scaled(option->rect.topLeft(), option->rect.bottomLeft());
        scaled.setStops(gradient.stops());
        return scaled;
    }
    QColor color = KDrawHelpFunc::getColorFromTheme(s_class, name);
    if (!color.isValid())
        color = KDrawHelpFunc::getColorFromTheme(s_class, QStringLiteral("background"));
    if (!color.isValid())
        color = KDrawHelpFunc::getColorFromTheme(QStringLiteral("common"), QStringLiteral("background"));
    return color;
}

QColor labelBorder(const KStyleOptionHotKey* option)
{
    QColor color = KDrawHelpFunc::getColorFromTheme(s_class, QStringLiteral("border") + stateSuffix(option));
    if (!color.isValid())
        color = KDrawHelpFunc::getColorFromTheme(s_class, QStringLiteral("border"));
    if (!color.isValid())
        color = KDrawHelpFunc::getColorFromTheme(QStringLiteral("common"), QStringLiteral("border"));
    return color;
}

} // namespace

void KORBStyle::paintHotKeyItem(const KStyleOptionHotKey* option, QPainter* painter, int radius)
{
    if (!option || !painter)
        return;
    const QRect r = option->rect;
    painter->save();
    painter->setRenderHint(QPainter::Antialiasing, true);
    const QPainterPath outer = KDrawHelpFunc::getBoundPath(r.adjusted(0, 0, -1, -1), radius, 15);
    const QPainterPath inner = KDrawHelpFunc::getBoundPath(r.adjusted(2, 2, -2, -2), radius, 15);
    painter->fillPath(outer, labelBorder(option));
    painter->fillPath(inner, labelBackground(option));
    painter->setRenderHint(QPainter::Antialiasing, false);

    const QColor text = KDrawHelpFunc::getColorFromTheme(QStringLiteral("common"), QStringLiteral("text"));
    const QString key = option->key.toUpper();
    const QString typed = option->typed.toUpper();
    const bool enabled = option->state & QStyle::State_Enabled;
    if (!enabled || typed.isEmpty() || !key.startsWith(typed)) {
        QColor c = text;
        if (!enabled)
            c.setAlpha(110);
        KDrawHelpFunc::drawColorText(*painter, c, r, Qt::AlignCenter, key);
    } else {
        // The letters that are done in the theme's base colour, the rest in the text colour.
        const int typedWidth = option->fontMetrics.horizontalAdvance(typed);
        QRect done = r;
        done.setLeft(r.left() + 3);
        KDrawHelpFunc::drawColorText(*painter, KDrawHelpFunc::getBaseColor(), done,
                                     Qt::AlignLeft | Qt::AlignVCenter, typed);
        QRect rest = r;
        rest.setLeft(r.left() + typedWidth + 3);
        KDrawHelpFunc::drawColorText(*painter, text, rest, Qt::AlignLeft | Qt::AlignVCenter, key.mid(typed.size()));
    }
    painter->restore();
}

void KORBStyle::drawControl_KHotKeyItem(const KStyleOptionHotKey* option, QPainter* painter, const QWidget*) const
{
    paintHotKeyItem(option, painter, 3);
}
