#ifndef KORBSTYLE_2012_H
#define KORBSTYLE_2012_H

#include <korbstyle.h>

/**
 * The 2012 ("rainbow", "classics") look. It reports the generation 2012 through the custom
 * hint KSH_StyleGeneration and its own custom metrics; its drawing is the frame's until the
 * look itself is written.
 */
class NORVIKOFFICEUI_EXPORT KORBStyle_2012 : public KORBStyle
{
    Q_OBJECT
public:
    explicit KORBStyle_2012(QStyle* style = nullptr);

    QString styleName() const override;
    int pixelMetric(PixelMetric metric, const QStyleOption* option = nullptr,
                    const QWidget* widget = nullptr) const override;
    int styleHint(StyleHint hint, const QStyleOption* option = nullptr, const QWidget* widget = nullptr,
                  QStyleHintReturn* returnData = nullptr) const override;
};

#endif // KORBSTYLE_2012_H
