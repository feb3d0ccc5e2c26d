#include "korbstyle_2013.h"

KORBStyle_2013::KORBStyle_2013(QStyle* style)
    : KORBStyle(style)
{
}

QString KORBStyle_2013::styleName() const
{
    return QStringLiteral("2013");
}

int KORBStyle_2013::pixelMetric(PixelMetric metric, const QStyleOption* option, const QWidget* widget) const
{
    // The look-dependent custom metrics; the stock ones are the frame's.
    switch (uint(metric)) {
    case uint(KPM_RbTabBarBottomLine):
        return 2;
    case uint(KPM_Reserved2):
    case uint(KPM_Reserved3):
        return 1;
    case uint(KPM_Reserved4):
        return 2;
    case uint(KPM_FileButtonMarginTop):
    case uint(KPM_FileButtonMarginLeft):
        return 4;
    case uint(KPM_FileButtonMarginBottom):
    case uint(KPM_FileButtonMarginRight):
        return 0;
    case uint(KPM_Reserved9):
        return 26;
    case uint(KPM_Reserved10):
        return 13;
    case uint(KPM_ShadowBorderWidth):
    case uint(KPM_Reserved12):
        return 15;
    default:
        return KORBStyle::pixelMetric(metric, option, widget);
    }
}

int KORBStyle_2013::styleHint(StyleHint hint, const QStyleOption* option, const QWidget* widget,
                              QStyleHintReturn* returnData) const
{
    switch (uint(hint)) {
    case uint(KSH_LogicGroupLineCount):
        return 2;
    case uint(KSH_LargeIconSize):
        return 24;
    case uint(KSH_SlideBlock):
        return 1;
    case uint(KSH_StyleGeneration):
        return 2013;
    case uint(KSH_Reserved5):
        return 1;
    default:
        return KORBStyle::styleHint(hint, option, widget, returnData);
    }
}

QSize KORBStyle_2013::sizeFromContents_KLogicGroupButton(QStyle::ContentsType, const QStyleOption*,
                                                         const QSize&, const QWidget*) const
{
    return QSize(12, 12);
}
