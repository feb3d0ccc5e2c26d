#ifndef KORBSTYLE_2013_H
#define KORBSTYLE_2013_H

#include <QMargins>
#include <QPainterPath>
#include <QRect>
#include <QSize>
#include <QStringList>

#include <korbstyle.h>

/**
 * The measuring and painting of one framework tool button (KStyleOptionToolButton), made on
 * the stack for one paint or one size query; it holds no heap data and does not own the
 * option, which must outlive it.
 *
 * The parts: an icon, a caption (one line beside the icon, up to two lines under it with
 * the flag StyleTextUnderIcon) and a drop-down arrow (StyleArrow). A button that has only an
 * icon or only a caption always shows it, whatever the flags say. The colours come from the
 * theme class "KToolButton", by the items "background-" and "border-" completed with a state
 * word ("down" or "hover"), unless the option carries colours of its own.
 */
class NORVIKOFFICEUI_EXPORT KOrbStyleKToolButton
{
public:
    /// Around the content, and the wide ones for StyleLargeMargins.
    static constexpr QMargins s_normalMargins{1, 1, 1, 1};
    static constexpr QMargins s_wideMargins{3, 1, 3, 1};
    /// Around the arrow, which is s_arrowSize itself.
    static constexpr QMargins s_arrowMargins{3, 3, 3, 3};
    /// Around the icon and around the caption.
    static constexpr QMargins s_furtherMargins{2, 2, 2, 2};
    static constexpr QSize s_arrowSize{4, 2};
    static constexpr QSize s_standardIconSize{16, 16};

    KOrbStyleKToolButton() = default;

    /// The flat form: square panel from the hover rectangle; the 2013 look always sets it.
    void setOngmaniStyle(bool on) { m_ongmaniStyle = on; }
    /// Decides which parts exist and measures them; a null option leaves an empty button.
    void initFromStyleOption(const KStyleOptionToolButton* option);

    /// Panel, separator, icon, caption and arrow, in this order. widget may be null.
    void paint(QPainter* painter, const QWidget* widget) const;
    /// The content plus the margins; with StyleEvenWidth an odd width grows by one.
    QSize calcSizeHint(Qt::Orientation orientation) const;
    /// Icon, caption and arrow laid out, without the button's margins.
    QSize contentSizeHint(Qt::Orientation orientation) const;
    /// The button part and the drop-down part; menu is null when there is no arrow.
    void getButtonArea(QRect& button, QRect& menu) const;
    /// Where the icon, the caption and the arrow go (null rectangles for absent parts).
    void getDrawArea(QRect& icon, QRect& text, QRect& arrow) const;
    /**
     * The part that lights: the inside of the whole button, or on a split button under the
     * mouse (not pressed, not checked) the inside of the half that the cursor is over.
     */
    QRect getHoverRect(const QWidget* widget) const;
    /// The outline of getHoverRect(), with the option's rounded corners.
    QPainterPath getHoverPath(const QWidget* widget) const;
    /**
     * The caption's lines as they are drawn: one beside the icon; under the icon the caption
     * and text2, or the caption broken at the space that balances the two lines best. Without
     * the hot-key flag every lone "&" is doubled, so that no mnemonic shows.
     */
    QStringList getDrawText() const;

    bool isDown() const;
    bool isHover() const;
    bool isChecked() const;
    bool isPressed() const;
    bool isEnabled() const;
    bool isAutoRaise() const;
    bool isTextUnderIcon() const;
    bool needDrawIcon() const { return m_drawIcon; }
    bool needDrawText() const { return m_drawText; }
    bool needDrawArrow() const { return m_drawArrow; }
    bool needShowHotkey() const;
    bool needDrawSperatorLine() const;

    QBrush bgBrush() const;
    QColor borderColor() const;
    QColor textColor() const;

private:
    /// "down" when sunken, "hover" under the mouse, and "down" again for any other panel.
    QString _getProp() const;
    QSize _getTextDrawSize(Qt::Orientation orientation) const;
    QMargins _margins() const;
    bool _isSplit() const;
    /// The rectangle that the parts are laid out in: the option's, turned for a vertical bar.
    QRect _layoutRect() const;
    /// A rectangle of the layout frame in the button's coordinates.
    QRect _toButton(const QRect& layout) const;
    /// getButtonArea() in the layout frame.
    void _parts(QRect& button, QRect& menu) const;
    bool _isRotated() const;
    void _paintPanel(QPainter* painter, const QWidget* widget) const;
    void _paintCaption(QPainter* painter, const QRect& text, const QRect& arrow) const;

    const KStyleOptionToolButton* m_option = nullptr;
    QSize m_iconSize;
    QSize m_textSize;
    QSize m_arrowSize;
    bool m_drawText = false;
    bool m_drawIcon = false;
    bool m_drawArrow = false;
    bool m_ongmaniStyle = false;
};

/**
 * The 2013 (flat) look: square panels, thin borders, every colour from the theme. Qt's own
 * widgets (combo boxes, scroll bars, tab bars, menus, tool bars, dock widgets, frames) are
 * routed to the drawing functions below; the framework's own controls to the overrides of
 * the frame's operations. It reports the generation 2013 through KSH_StyleGeneration.
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

    // --- the routing of Qt's own widgets (korbstyle_2013_widgets.cpp) ---
    void drawPrimitive(PrimitiveElement element, const QStyleOption* option, QPainter* painter,
                       const QWidget* widget = nullptr) const override;
    void drawControl(ControlElement element, const QStyleOption* option, QPainter* painter,
                     const QWidget* widget = nullptr) const override;
    void drawComplexControl(ComplexControl control, const QStyleOptionComplex* option,
                            QPainter* painter, const QWidget* widget = nullptr) const override;
    QRect subControlRect(ComplexControl control, const QStyleOptionComplex* option,
                         SubControl subControl, const QWidget* widget) const override;

    // --- the tool button (korbstyle_2013_toolbutton.cpp) ---
    void drawComplexControl_ToolButton(const KStyleOptionToolButton* option, QPainter* painter,
                                       const QWidget* widget) const override;
    QSize sizeFromContents_ToolButton(QStyle::ContentsType type, const KStyleOptionToolButton* option,
                                      const QSize& size, const QWidget* widget) const override;
    QRect subControlRect_ToolButton(QStyle::ComplexControl control, const KStyleOptionToolButton* option,
                                    QStyle::SubControl subControl, const QWidget* widget) const override;

    // --- the ribbon's body: category, groups, scroll arrows, layout frames, tabs, tab bar and
    //     file button (korbstyle_2013_ribbon.cpp) ---
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
    void drawComplexControl_KRbTabBar(const KStyleOptionRbTabBar* option, QPainter* painter,
                                      const QWidget* widget) const override;
    void drawComplexControl_KRbTabFileButton(const KStyleOptionRbTabFileButton* option, QPainter* painter,
                                             const QWidget* widget) const override;
    QStyle::SubControl hitTestComplexControl_KRbTabFileButton(QStyle::ComplexControl control,
                                                              const KStyleOptionRbTabFileButton* option,
                                                              const QPoint& pos,
                                                              const QWidget* widget) const override;

    // --- geometry of Qt's widgets in this look ---
    QRect getComboBoxSubControlRect(const QStyleOptionComboBox* option, SubControl subControl,
                                    const QWidget* widget) const;
    QRect getScrollBarSubControlRect(const QStyleOptionSlider* option, SubControl subControl,
                                     const QWidget* widget) const;
    /// The tear indicator of a scrolled tab bar: a strip of 4 pixels at the side the tabs leave.
    QRect getTabBarTearIndicator(const QStyleOption* option, const QWidget* widget) const;
    /// Where a tab's right button (its close button) goes: a square at the right edge.
    QRect getTabBarTabRightButton(const QStyleOption* option, const QWidget* widget) const;
    /// The icon (16 by 16 at the most) at the left of rect, vertically centred; null without icon.
    QRect getTextIconRect(const QRect& rect, const QIcon& icon, const QSize& iconSize) const;
    /// The handle of a tool bar: 6 pixels across, at its start.
    QRect getToolBarHandleRect(const QStyleOption* option, const QWidget* widget) const;
    /// The colour of gradient at position (0..1), interpolated between its stops.
    static QColor getColorFromGradient(const QGradient& gradient, double position);
    /// The one-pixel border of a framework main window, on the widget's edges that meet it.
    void tryDrawMainBorder(QPainter* painter, const QWidget* widget) const;

    // --- drawing of Qt's widgets in this look ---
    void drawDockWidgetFrame(const QStyleOption* option, QPainter* painter, const QWidget* widget) const;
    void drawDockWidgetTitle(const QStyleOptionDockWidget* option, QPainter* painter,
                             const QWidget* widget) const;
    void drawToolBarFrameMenu(const QStyleOptionToolBar* option, QPainter* painter, const QWidget* widget) const;
    void drawScrollBarPageButton(const QStyleOptionSlider* option, QPainter* painter,
                                 const QWidget* widget) const;
    void drawScrollBarLineButton(ControlElement element, const QStyleOptionSlider* option,
                                 QPainter* painter, const QWidget* widget) const;
    void drawScrollBarSlider(const QStyleOptionSlider* option, QPainter* painter, const QWidget* widget) const;
    void drawScrollBar(const QStyleOptionSlider* option, QPainter* painter, const QWidget* widget) const;
    void drawPanelMenu(const QStyleOption* option, QPainter* painter, const QWidget* widget) const;
    void drawMenuFrame(const QStyleOption* option, QPainter* painter, const QWidget* widget) const;
    void drawEmptyArea(const QStyleOption* option, QPainter* painter, const QWidget* widget) const;
    void drawMenuItem(const QStyleOptionMenuItem* option, QPainter* painter, const QWidget* widget) const;
    void drawToolButton(const QStyleOptionToolButton* option, QPainter* painter, const QWidget* widget) const;
    void drawIndicatorTabbarTearButton(const QStyleOptionToolButton* option, QPainter* painter,
                                       const QWidget* widget) const;
    void drawTabBarTabLabel(const QStyleOptionTab* option, QPainter* painter, const QWidget* widget) const;
    void drawTabBarTabShape(const QStyleOptionTab* option, QPainter* painter, const QWidget* widget) const;
    void drawIndicatorTabClose(const QStyleOption* option, QPainter* painter, const QWidget* widget) const;
    void drawFrame(const QStyleOption* option, QPainter* painter, const QWidget* widget) const;
    void drawComboBox(const QStyleOptionComboBox* option, QPainter* painter, const QWidget* widget) const;
    void drawIndicatorToolBarHandle(const QStyleOption* option, QPainter* painter, const QWidget* widget) const;
    void drawPushButtonLabel(const QStyleOptionButton* option, QPainter* painter, const QWidget* widget) const;
    /// A shadow that fades out over width pixels outside rect.
    void drawShadowBorder(QPainter* painter, const QRect& rect, int width) const;
    void drawToolBar(const QStyleOptionToolBar* option, QPainter* painter, const QWidget* widget) const;
    void drawPrimitive_BorderShadow(const KStyleOptionMainBorder* option, QPainter* painter,
                                    const QWidget* widget) const;

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

private:
    /// The title of the ribbon's tab bar, in area (the band above its bottom line).
    void _drawRbTabBarTitle(const KStyleOptionRbTabBar* option, QPainter* painter, const QWidget* widget,
                            const QRect& area) const;
    /// "_dash" and "_solid" lines; false for any other frame, which the frame class draws.
    bool _drawNamedLine(const QStyleOption* option, QPainter* painter, const QWidget* widget) const;

public:
    // --- key tips (korbstyle_2013_keytips.cpp) ---
    void drawControl_KHotKeyItem(const KStyleOptionHotKey* option, QPainter* painter,
                                 const QWidget* widget) const override;

public:
    // --- quick access bar, file menu and recent file page (korbstyle_2013_filemenu.cpp) ---
    /// The arrow of the quick access bar (a QStyleOption; State_Sunken while pressed).
    static constexpr ControlElement KCE_QuickToolbarArrow = ControlElement(CE_CustomBase + 0x30);
    /// The frame and background of the quick access bar's overflow panel.
    static constexpr ControlElement KCE_QuickToolbarPanel = ControlElement(CE_CustomBase + 0x31);
    /// The background of the file menu's left menu.
    static constexpr ControlElement KCE_FileMenuLeft = ControlElement(CE_CustomBase + 0x32);
    /// The band of buttons along the bottom of the file menu.
    static constexpr ControlElement KCE_FileMenuBottom = ControlElement(CE_CustomBase + 0x33);
    /// A line of the recent file page: under its title (State_None) or under the pinned rows.
    static constexpr ControlElement KCE_RecentPageSeparator = ControlElement(CE_CustomBase + 0x34);
    /// Draws one of the elements above; false for any other element.
    bool drawFileMenuControl(ControlElement element, const QStyleOption* option, QPainter* painter,
                             const QWidget* widget) const;

public:
    // --- galleries: the band's buttons and frame, the full gallery's panel
    //     (korbstyle_2013_gallery.cpp) ---
    /// A button of a gallery band (KStyleOptionGalleryScrollButton).
    static constexpr ControlElement KCE_GalleryScrollButton = ControlElement(CE_CustomBase + 0x40);
    /// The frame of a gallery band (a QStyleOption; State_Enabled as the band is).
    static constexpr ControlElement KCE_GalleryInlineFrame = ControlElement(CE_CustomBase + 0x41);
    /// The background of a dropped-down gallery.
    static constexpr ControlElement KCE_GalleryPanel = ControlElement(CE_CustomBase + 0x42);
    /// Draws one of the elements above; false for any other element.
    bool drawGalleryControl(ControlElement element, const QStyleOption* option, QPainter* painter,
                            const QWidget* widget) const;
};

#endif // KORBSTYLE_2013_H
