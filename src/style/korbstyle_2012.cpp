#include "korbstyle_2012.h"

#include <korbstyle_2013.h>

KORBStyle_2012::KORBStyle_2012(QStyle* style)
    : KORBStyle(style)
{
}

QString KORBStyle_2012::styleName() const
{
    return QStringLiteral("rainbow");
}

int KORBStyle_2012::pixelMetric(PixelMetric metric, const QStyleOption* option, const QWidget* widget) const
{
    // The look-dependent custom metrics; the stock ones are the frame's.
    switch (uint(metric)) {
    case uint(KPM_Reserved9):
        return 26;
    case uint(KPM_Reserved10):
        return 15;
    case uint(KPM_ShadowBorderWidth):
        return 8;
    case uint(KPM_Reserved12):
        return 3;
    default:
        return KORBStyle::pixelMetric(metric, option, widget);
    }
}

int KORBStyle_2012::styleHint(StyleHint hint, const QStyleOption* option, const QWidget* widget,
                              QStyleHintReturn* returnData) const
{
    switch (uint(hint)) {
    case uint(KSH_LogicGroupLineCount):
        return 3;
    case uint(KSH_LargeIconSize):
        return 32;
    case uint(KSH_StyleGeneration):
        return 2012;
    default:
        return KORBStyle::styleHint(hint, option, widget, returnData);
    }
}

// The tool button goes the 2013 way, without the flat form.

void KORBStyle_2012::drawComplexControl_ToolButton(const KStyleOptionToolButton* option, QPainter* painter,
                                                   const QWidget* widget) const
{
    KOrbStyleKToolButton button;
    button.initFromStyleOption(option);
    button.paint(painter, widget);
}

QSize KORBStyle_2012::sizeFromContents_ToolButton(QStyle::ContentsType, const KStyleOptionToolButton* option,
                                                  const QSize&, const QWidget*) const
{
    KOrbStyleKToolButton button;
    button.initFromStyleOption(option);
    return button.calcSizeHint(Qt::Orientation(option->orientation));
}

QRect KORBStyle_2012::subControlRect_ToolButton(QStyle::ComplexControl, const KStyleOptionToolButton* option,
                                                QStyle::SubControl subControl, const QWidget*) const
{
    KOrbStyleKToolButton button;
    button.initFromStyleOption(option);
    QRect buttonPart, menuPart;
    button.getButtonArea(buttonPart, menuPart);
    if (subControl == KSC_ToolButtonButton)
        return buttonPart;
    if (subControl == KSC_ToolButtonMenu)
        return menuPart;
    return option->rect;
}
