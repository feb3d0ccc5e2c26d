#ifndef KORBSTYLE_2012_H
#define KORBSTYLE_2012_H

#include <korbstyle.h>

/**
 * The 2012 ("rainbow", "classics") look. It differs from the 2013 one by its hints (the
 * generation 2012 through KSH_StyleGeneration, three rows of small buttons, larger icons) and
 * custom metrics, and by its tool buttons, whose panel takes the rounded outline of the part
 * that lights (KOrbStyleKToolButton without the flat form). The rest is the frame's drawing.
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

    void drawComplexControl_ToolButton(const KStyleOptionToolButton* option, QPainter* painter,
                                       const QWidget* widget) const override;
    QSize sizeFromContents_ToolButton(QStyle::ContentsType type, const KStyleOptionToolButton* option,
                                      const QSize& size, const QWidget* widget) const override;
    QRect subControlRect_ToolButton(QStyle::ComplexControl control, const KStyleOptionToolButton* option,
                                    QStyle::SubControl subControl, const QWidget* widget) const override;
};

#endif // KORBSTYLE_2012_H
