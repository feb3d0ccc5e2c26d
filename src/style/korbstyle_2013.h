#ifndef KORBSTYLE_2013_H
#define KORBSTYLE_2013_H

#include <korbstyle.h>

/**
 * The 2013 (flat) look. It reports the generation 2013 through the custom hint
 * KSH_StyleGeneration and its own custom metrics; its drawing is the frame's until the look
 * itself is written.
 */
class NORVIKOFFICEUI_EXPORT KORBStyle_2013 : public KORBStyle
{
    Q_OBJECT
public:
    explicit KORBStyle_2013(QStyle* style = nullptr);

    QString styleName() const override;
    int pixelMetric(PixelMetric metric, const QStyleOption* option = nullptr,
                    const QWidget* widget = nullptr) const override;
    int styleHint(StyleHint hint, const QStyleOption* option = nullptr, const QWidget* widget = nullptr,
                  QStyleHintReturn* returnData = nullptr) const override;
    QSize sizeFromContents_KLogicGroupButton(QStyle::ContentsType type, const QStyleOption* option,
                                             const QSize& size, const QWidget* widget) const override;

    // --- the ribbon's body: category, groups, scroll arrows, layout frames, tabs
    //     (korbstyle_2013_ribbon.cpp) ---
    void drawComplexControl_KRbCategory(const KStyleOptionRbCategory* option, QPainter* painter,
                                        const QWidget* widget) const override;
    void drawComplexControl_KRbHScrollWidget(const KStyleOptionRbHScrollWidget* option, QPainter* painter,
                                             const QWidget* widget) const override;
    void drawComplexControl_KRbLogicGroup(const KStyleOptionRbLogicGroup* option, QPainter* painter,
                                          const QWidget* widget) const override;
    void drawComplexControl_KLogicGroupButton(const KStyleOptionLogicGroupButton* option, QPainter* painter,
                                              const QWidget* widget) const override;
    void drawComplexControl_KRbLayoutWidget(const KStyleOptionRbLayoutWidget* option, QPainter* painter,
                                            const QWidget* widget) const override;
    void drawComplexControl_KRbSubTabBar(const KStyleOptionRbSubTabBar* option, QPainter* painter,
                                         const QWidget* widget) const override;
    void drawComplexControl_KRbTabButton(const KStyleOptionKRbTabButton* option, QPainter* painter,
                                         const QWidget* widget) const override;

    // --- documents: the document tab bar, its tabs and new-tab button, the status bar
    //     (korbstyle_2013_documents.cpp) ---
    void drawComplexControl_KDocTabBar(const KStyleOptionDocTabBar* option, QPainter* painter,
                                       const QWidget* widget) const override;
    void drawComplexControl_KDocTab(const KStyleOptionDocTab* option, QPainter* painter,
                                    const QWidget* widget) const override;
    QStyle::SubControl hitTestComplexControl_KDocTab(QStyle::ComplexControl control, const KStyleOptionDocTab* option,
                                                     const QPoint& pos, const QWidget* widget) const override;
    void drawControl_KTabBarNewButton(const KStyleOptionTabBarNewButton* option, QPainter* painter,
                                      const QWidget* widget) const override;
    void drawComplexControl_KStatusBar(const KStyleOptionStatusBar* option, QPainter* painter,
                                       const QWidget* widget) const override;
};

#endif // KORBSTYLE_2013_H
