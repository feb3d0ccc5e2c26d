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
    const int n = int(metric) - int(PM_CustomBase);
    switch (n) {
    case 1:
        return 2;
    case 2:
    case 3:
        return 1;
    case 4:
        return 2;
    case 5:
    case 6:
        return 4;
    case 7:
    case 8:
        return 0;
    case 9:
        return 26;
    case 10:
        return 13;
    case 11:
    case 12:
        return 15;
    default:
        return KORBStyle::pixelMetric(metric, option, widget);
    }
}

int KORBStyle_2013::styleHint(StyleHint hint, const QStyleOption* option, const QWidget* widget,
                              QStyleHintReturn* returnData) const
{
    const int n = int(hint) - int(SH_CustomBase);
    switch (n) {
    case 1:
        return 2;
    case 2:
        return 24;
    case 3:
        return 1;
    case 4:
        return 2013;
    case 5:
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
