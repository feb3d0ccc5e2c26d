#include "korbstyle_2012.h"

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
    const int n = int(metric) - int(PM_CustomBase);
    switch (n) {
    case 9:
        return 26;
    case 10:
        return 15;
    case 11:
        return 8;
    case 12:
        return 3;
    default:
        return KORBStyle::pixelMetric(metric, option, widget);
    }
}

int KORBStyle_2012::styleHint(StyleHint hint, const QStyleOption* option, const QWidget* widget,
                              QStyleHintReturn* returnData) const
{
    const int n = int(hint) - int(SH_CustomBase);
    switch (n) {
    case 1:
        return 3;
    case 2:
        return 32;
    case 4:
        return 2012;
    default:
        return KORBStyle::styleHint(hint, option, widget, returnData);
    }
}
