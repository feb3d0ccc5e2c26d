#ifndef KORBSTYLE_H
#define KORBSTYLE_H

#include <QProxyStyle>

#include <kstyleoption.h>
#include <norvikofficeui_export.h>

/**
 * The frame of the framework's styles: a QProxyStyle that owns the numbering of the custom
 * elements, hands every custom number with its typed option to a named virtual operation,
 * and draws a plain fallback for each. KORBStyle_2012 and KORBStyle_2013 draw the real looks.
 *
 * Widgets call only the stock QStyle entry points with the numbers below. A custom number
 * with an option of the wrong type draws nothing (the cast fails and the call returns).
 * Every other number goes on to the wrapped style. The wrapped style never sees the
 * framework's own numbers, which it could not handle: the slider reaches it as CC_Slider.
 */
class KStyleOptionHotKey;

class NORVIKOFFICEUI_EXPORT KORBStyle : public QProxyStyle
{
    Q_OBJECT
public:
    // Complex controls: CC_CustomBase + n.
    static constexpr ComplexControl KCC_RbTabBar = ComplexControl(CC_CustomBase + 1);
    static constexpr ComplexControl KCC_RbTabButton = ComplexControl(CC_CustomBase + 2);
    static constexpr ComplexControl KCC_RbCategory = ComplexControl(CC_CustomBase + 3);
    static constexpr ComplexControl KCC_RbHScrollWidget = ComplexControl(CC_CustomBase + 4);
    static constexpr ComplexControl KCC_RbLogicGroup = ComplexControl(CC_CustomBase + 5);
    static constexpr ComplexControl KCC_LogicGroupButton = ComplexControl(CC_CustomBase + 6);
    static constexpr ComplexControl KCC_ToolButton = ComplexControl(CC_CustomBase + 7);
    static constexpr ComplexControl KCC_SepraratorWidget = ComplexControl(CC_CustomBase + 8);
    static constexpr ComplexControl KCC_StatusBar = ComplexControl(CC_CustomBase + 9);
    static constexpr ComplexControl KCC_DocTabBar = ComplexControl(CC_CustomBase + 10);
    static constexpr ComplexControl KCC_DocTab = ComplexControl(CC_CustomBase + 11);
    static constexpr ComplexControl KCC_RbLayoutWidget = ComplexControl(CC_CustomBase + 12);
    static constexpr ComplexControl KCC_RbSubTabBar = ComplexControl(CC_CustomBase + 13);
    static constexpr ComplexControl KCC_MainWindow = ComplexControl(CC_CustomBase + 14);
    static constexpr ComplexControl KCC_RbTabFileButton = ComplexControl(CC_CustomBase + 15);
    static constexpr ComplexControl KCC_Slider = ComplexControl(CC_CustomBase + 16);

    // Control elements: CE_CustomBase + n.
    static constexpr ControlElement KCE_SheetTabBarTab = ControlElement(CE_CustomBase + 1);
    static constexpr ControlElement KCE_MinimizeButton = ControlElement(CE_CustomBase + 2);
    static constexpr ControlElement KCE_RestoreMaximizeButton = ControlElement(CE_CustomBase + 3);
    static constexpr ControlElement KCE_CloseButton = ControlElement(CE_CustomBase + 4);
    static constexpr ControlElement KCE_TabBarNewButton = ControlElement(CE_CustomBase + 5);
    static constexpr ControlElement KCE_ZoomButton = ControlElement(CE_CustomBase + 6);

    // Contents types and sub-controls.
    static constexpr ContentsType KCT_ToolButton = ContentsType(CT_CustomBase + 1);
    static constexpr ContentsType KCT_LogicGroupButton = ContentsType(CT_CustomBase + 2);
    /// The button part and the drop-down part of a tool button (complex control 7).
    static constexpr SubControl KSC_ToolButtonButton = SubControl(uint(SC_CustomBase) + 1);
    static constexpr SubControl KSC_ToolButtonMenu = SubControl(uint(SC_CustomBase) + 2);
    /// The close mark of a document tab (complex control 11).
    static constexpr SubControl KSC_DocTabClose = SubControl(uint(SC_CustomBase) + 4);
    /// The arrow part of the ribbon's file button (complex control 15).
    static constexpr SubControl KSC_FileButtonArrow = SubControl(uint(SC_CustomBase) + 5);

    // Primitives: PE_CustomBase + n (PE_CustomBase is 0x0F000000, unlike the other ranges).
    static constexpr PrimitiveElement KPE_MainBorder = PrimitiveElement(PE_CustomBase + 1);
    static constexpr PrimitiveElement KPE_BorderShadow = PrimitiveElement(PE_CustomBase + 2);

    // Pixel metrics: PM_CustomBase + n. The "reserved" ones have values in the looks but no
    // reader yet; they keep their numbers for the widgets that will read them.
    /// Height of the bottom band of the ribbon's tab bar.
    static constexpr PixelMetric KPM_RbTabBarBottomLine = PixelMetric(PM_CustomBase + 1);
    static constexpr PixelMetric KPM_Reserved2 = PixelMetric(PM_CustomBase + 2);
    static constexpr PixelMetric KPM_Reserved3 = PixelMetric(PM_CustomBase + 3);
    static constexpr PixelMetric KPM_Reserved4 = PixelMetric(PM_CustomBase + 4);
    /// The margins around the ribbon's file button.
    static constexpr PixelMetric KPM_FileButtonMarginTop = PixelMetric(PM_CustomBase + 5);
    static constexpr PixelMetric KPM_FileButtonMarginLeft = PixelMetric(PM_CustomBase + 6);
    static constexpr PixelMetric KPM_FileButtonMarginBottom = PixelMetric(PM_CustomBase + 7);
    static constexpr PixelMetric KPM_FileButtonMarginRight = PixelMetric(PM_CustomBase + 8);
    static constexpr PixelMetric KPM_Reserved9 = PixelMetric(PM_CustomBase + 9);
    static constexpr PixelMetric KPM_Reserved10 = PixelMetric(PM_CustomBase + 10);
    /// Thickness of the shadow border around a main window (2013 look).
    static constexpr PixelMetric KPM_ShadowBorderWidth = PixelMetric(PM_CustomBase + 11);
    static constexpr PixelMetric KPM_Reserved12 = PixelMetric(PM_CustomBase + 12);

    // Style hints: SH_CustomBase + n. A foreign style answers 0 to each.
    /// Rows of small buttons in a ribbon logic group.
    static constexpr StyleHint KSH_LogicGroupLineCount = StyleHint(SH_CustomBase + 1);
    /// Icon size of a large ribbon button.
    static constexpr StyleHint KSH_LargeIconSize = StyleHint(SH_CustomBase + 2);
    /// Not 0: the ribbon's tabs have a slide block.
    static constexpr StyleHint KSH_SlideBlock = StyleHint(SH_CustomBase + 3);
    /// The generation of the look: 2012 or 2013 (flat, square buttons).
    static constexpr StyleHint KSH_StyleGeneration = StyleHint(SH_CustomBase + 4);
    static constexpr StyleHint KSH_Reserved5 = StyleHint(SH_CustomBase + 5);

    /// Wraps style (the application's current one when null); the proxy takes ownership of it.
    explicit KORBStyle(QStyle* style = nullptr);
    ~KORBStyle() override;

    void polish(QWidget* widget) override;
    void unpolish(QWidget* widget) override;
    using QProxyStyle::polish;
    using QProxyStyle::unpolish;
    void drawPrimitive(PrimitiveElement element, const QStyleOption* option, QPainter* painter,
                       const QWidget* widget = nullptr) const override;
    void drawControl(ControlElement element, const QStyleOption* option, QPainter* painter,
                     const QWidget* widget = nullptr) const override;
    QRect subElementRect(SubElement element, const QStyleOption* option,
                         const QWidget* widget) const override;
    void drawComplexControl(ComplexControl control, const QStyleOptionComplex* option,
                            QPainter* painter, const QWidget* widget = nullptr) const override;
    SubControl hitTestComplexControl(ComplexControl control, const QStyleOptionComplex* option,
                                     const QPoint& pos, const QWidget* widget = nullptr) const override;
    QRect subControlRect(ComplexControl control, const QStyleOptionComplex* option,
                         SubControl subControl, const QWidget* widget) const override;
    int pixelMetric(PixelMetric metric, const QStyleOption* option = nullptr,
                    const QWidget* widget = nullptr) const override;
    QSize sizeFromContents(ContentsType type, const QStyleOption* option, const QSize& size,
                           const QWidget* widget) const override;
    int styleHint(StyleHint hint, const QStyleOption* option = nullptr, const QWidget* widget = nullptr,
                  QStyleHintReturn* returnData = nullptr) const override;

    /**
     * Whether style draws the framework's custom elements: a KORBStyle, or a chain of
     * QProxyStyle that ends in one. Any other style (a host's own, or a stock one) knows only
     * the stock elements, and the framework's widgets draw their stock counterparts with it.
     */
    static bool isFrameworkStyle(const QStyle* style);

    /// "base" here; "rainbow" in KORBStyle_2012, "2013" in KORBStyle_2013.
    Q_INVOKABLE virtual QString styleName() const;

    virtual void drawComplexControl_ToolButton(const KStyleOptionToolButton* option, QPainter* painter,
                                               const QWidget* widget) const;
    virtual QSize sizeFromContents_ToolButton(QStyle::ContentsType type, const KStyleOptionToolButton* option,
                                              const QSize& size, const QWidget* widget) const;
    virtual QRect subControlRect_ToolButton(QStyle::ComplexControl control, const KStyleOptionToolButton* option,
                                            QStyle::SubControl subControl, const QWidget* widget) const;
    virtual void drawComplexControl_KRbTabBar(const KStyleOptionRbTabBar* option, QPainter* painter,
                                              const QWidget* widget) const;
    virtual void drawComplexControl_KRbTabButton(const KStyleOptionKRbTabButton* option, QPainter* painter,
                                                 const QWidget* widget) const;
    virtual void drawComplexControl_KRbCategory(const KStyleOptionRbCategory* option, QPainter* painter,
                                                const QWidget* widget) const;
    virtual void drawComplexControl_KRbHScrollWidget(const KStyleOptionRbHScrollWidget* option,
                                                     QPainter* painter, const QWidget* widget) const;
    virtual void drawComplexControl_KRbLogicGroup(const KStyleOptionRbLogicGroup* option, QPainter* painter,
                                                  const QWidget* widget) const;
    virtual void drawComplexControl_KLogicGroupButton(const KStyleOptionLogicGroupButton* option,
                                                      QPainter* painter, const QWidget* widget) const;
    virtual QSize sizeFromContents_KLogicGroupButton(QStyle::ContentsType type, const QStyleOption* option,
                                                     const QSize& size, const QWidget* widget) const;
    virtual void drawComplexControl_KSepraratorWidget(const KStyleOptionSepraratorWidget* option,
                                                      QPainter* painter, const QWidget* widget) const;
    virtual void drawComplexControl_KStatusBar(const KStyleOptionStatusBar* option, QPainter* painter,
                                               const QWidget* widget) const;
    virtual void drawComplexControl_KDocTabBar(const KStyleOptionDocTabBar* option, QPainter* painter,
                                               const QWidget* widget) const;
    virtual void drawComplexControl_KDocTab(const KStyleOptionDocTab* option, QPainter* painter,
                                            const QWidget* widget) const;
    virtual QStyle::SubControl hitTestComplexControl_KDocTab(QStyle::ComplexControl control,
                                                             const KStyleOptionDocTab* option,
                                                             const QPoint& pos, const QWidget* widget) const;
    virtual QStyle::SubControl hitTestComplexControl_KRbTabFileButton(QStyle::ComplexControl control,
                                                                      const KStyleOptionRbTabFileButton* option,
                                                                      const QPoint& pos,
                                                                      const QWidget* widget) const;
    virtual void drawComplexControl_KRbLayoutWidget(const KStyleOptionRbLayoutWidget* option,
                                                    QPainter* painter, const QWidget* widget) const;
    virtual void drawComplexControl_KRbSubTabBar(const KStyleOptionRbSubTabBar* option, QPainter* painter,
                                                 const QWidget* widget) const;
    virtual void drawComplexControl_KMainWindow(const KStyleOptionMainWindow* option, QPainter* painter,
                                                const QWidget* widget) const;
    virtual void drawControl_KSheetTabBarTab(const KSheetTabStyleOption* option, QPainter* painter,
                                             const QWidget* widget) const;
    virtual void drawComplexControl_KRbTabFileButton(const KStyleOptionRbTabFileButton* option,
                                                     QPainter* painter, const QWidget* widget) const;
    virtual void drawControl_KCloseButton(const KStyleOptionWindowTitleButton* option, QPainter* painter,
                                          const QWidget* widget) const;
    virtual void drawControl_KRestoreMaximizeButton(const KStyleOptionRestoreMaximizeButton* option,
                                                    QPainter* painter, const QWidget* widget) const;
    virtual void drawControl_KMinimizeButton(const KStyleOptionWindowTitleButton* option, QPainter* painter,
                                             const QWidget* widget) const;
    virtual void drawControl_KTabBarNewButton(const KStyleOptionTabBarNewButton* option, QPainter* painter,
                                              const QWidget* widget) const;
    virtual void drawComplexControl_KSlider(const QStyleOptionSlider* option, QPainter* painter,
                                            const QWidget* widget) const;

    // The rows of the framework's menu (KMenuWidget); other menus go to the wrapped style.
    /// Whether widget is a menu of the framework, whose rows this style draws itself.
    static bool isFrameworkMenu(const QWidget* widget);
    virtual void drawControl_MenuItem(const QStyleOptionMenuItem* option, QPainter* painter,
                                      const QWidget* widget) const;
    virtual QSize sizeFromContents_MenuItem(const QStyleOptionMenuItem* option, const QSize& size,
                                            const QWidget* widget) const;
    virtual void drawControl_KZoomButton(const KStyleOptionZoomButton* option, QPainter* painter,
                                         const QWidget* widget) const;

    /**
     * The stock tool-button option for a framework one: the common fields are copied, the
     * features, arrow and button style follow the option's flag word (buttonStyle).
     */
    static void _toQStyleOptionToolButton(const KStyleOptionToolButton* in, QStyleOptionToolButton* out);

protected:
    /**
     * The parts of drawComplexControl_ToolButton, in painting order: the panel behind the
     * button, the drop-down part (separator and arrow; only with the arrow bit) and the
     * label (icon and caption). A look overrides the parts it draws differently.
     */
    virtual void drawToolButtonPanel(const KStyleOptionToolButton* option, QPainter* painter,
                                     const QWidget* widget) const;
    virtual void drawToolButtonArrow(const KStyleOptionToolButton* option, QPainter* painter,
                                     const QWidget* widget) const;
    virtual void drawToolButtonLabel(const KStyleOptionToolButton* option, QPainter* painter,
                                     const QWidget* widget) const;

    /// Where the plain frame puts a document tab's close mark.
    static QRect _docTabCloseRect(const QRect& tabRect);

public:
    // --- key tips (korbstyle_keytips.cpp) ---
    /// One key-tip label of the overlay, with a KStyleOptionHotKey.
    static constexpr ControlElement KCE_HotKeyItem = ControlElement(CE_CustomBase + 0x20);
    /**
     * A rounded label in the theme's "KHotKeyAssistant" colours ("border", "background",
     * with "-disable" for a label that can't be fired), the key in capitals. Also what the
     * overlay draws under a foreign style.
     */
    static void paintHotKeyItem(const KStyleOptionHotKey* option, QPainter* painter, int radius);
    virtual void drawControl_KHotKeyItem(const KStyleOptionHotKey* option, QPainter* painter,
                                         const QWidget* widget) const;
};

#endif // KORBSTYLE_H
