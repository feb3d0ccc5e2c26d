// Shared by the ribbon's tests: controls of exactly known sizes, described by short texts,
// so that layout tables can be computed by hand.
#ifndef RIBBONTESTHELPERS_H
#define RIBBONTESTHELPERS_H

#include <QProxyStyle>
#include <QRegularExpression>
#include <QStringList>
#include <QWidget>

#include <kcommand.h>
#include <klistcommand.h>
#include <krblogicgroupcommand.h>

namespace RibbonTest {

/// A widget that reports fixed hints.
class SizedWidget : public QWidget
{
public:
    SizedWidget(const QSize& hint, const QSize& minimum, QWidget* parent)
        : QWidget(parent), m_hint(hint), m_minimum(minimum) {}
    QSize sizeHint() const override { return m_hint; }
    QSize minimumSizeHint() const override { return m_minimum; }

private:
    QSize m_hint;
    QSize m_minimum;
};

/// A command whose pocket widget is a SizedWidget; its inline widget is named "inline".
class SizedCommand : public KCommand
{
public:
    SizedCommand(const QSize& hint, const QSize& minimum, const QSize& maximum, QObject* owner)
        : KCommand(owner, owner), m_hint(hint), m_minimum(minimum), m_maximum(maximum) {}
    QWidget* createPocketWidget(QWidget* parent) override
    {
        auto* w = new SizedWidget(m_hint, m_minimum, parent);
        if (m_maximum.isValid())
            w->setMaximumSize(m_maximum);
        return w;
    }
    QWidget* createInlineWidget(QWidget* parent) override
    {
        QWidget* w = createPocketWidget(parent);
        w->setObjectName(QStringLiteral("inline"));
        return w;
    }

private:
    QSize m_hint, m_minimum, m_maximum;
};

inline QSize parseSize(const QString& text)
{
    const QStringList wh = text.split(QLatin1Char('x'));
    return wh.size() == 2 ? QSize(wh.at(0).toInt(), wh.at(1).toInt()) : QSize();
}

/**
 * One control from a short text: a kind letter, then hint[-minimum[-maximum]] as WxH.
 * L: large (spaceHint 3); S: small (spaceHint 2); H: small and hidden. The minimum defaults
 * to the hint, the maximum to no limit.
 */
inline SizedCommand* control(const QString& spec, QObject* owner)
{
    const QStringList sizes = spec.mid(1).split(QLatin1Char('-'));
    const QSize hint = parseSize(sizes.value(0));
    const QSize minimum = sizes.size() > 1 ? parseSize(sizes.at(1)) : hint;
    const QSize maximum = sizes.size() > 2 ? parseSize(sizes.at(2)) : QSize();
    auto* cmd = new SizedCommand(hint, minimum, maximum, owner);
    cmd->setProperty("spaceHint", spec.startsWith(QLatin1Char('L')) ? 3 : 2);
    if (spec.startsWith(QLatin1Char('H')))
        cmd->setVisible(false);
    return cmd;
}

/// A logic group command with the controls of a space-separated list of specs.
inline KRbLogicGroupCommand* group(const QString& specs, QObject* owner)
{
    auto* cmd = new KRbLogicGroupCommand(owner, owner);
    for (const QString& spec : specs.split(QLatin1Char(' '), Qt::SkipEmptyParts))
        cmd->addSubCommand(control(spec, owner));
    return cmd;
}

inline QRect parseRect(const QString& text)
{
    const QStringList v = text.split(QLatin1Char(','));
    return v.size() == 4 ? QRect(v.at(0).toInt(), v.at(1).toInt(), v.at(2).toInt(), v.at(3).toInt()) : QRect();
}

/// Rectangles "x,y,w,h" separated by spaces; "-" stands for one that is not checked.
inline QList<QRect> rects(const QString& text)
{
    QList<QRect> result;
    for (const QString& r : text.split(QLatin1Char(' '), Qt::SkipEmptyParts))
        result.append(r == QLatin1String("-") ? QRect() : parseRect(r));
    return result;
}

/// A style with a separator 4 pixels thick and no opinion on the ribbon's custom hints.
class FixedStyle : public QProxyStyle
{
public:
    using QProxyStyle::QProxyStyle;
    int pixelMetric(PixelMetric metric, const QStyleOption* option = nullptr,
                    const QWidget* widget = nullptr) const override
    {
        if (metric == PM_ToolBarSeparatorExtent)
            return 4;
        return QProxyStyle::pixelMetric(metric, option, widget);
    }
};

} // namespace RibbonTest

#endif // RIBBONTESTHELPERS_H
