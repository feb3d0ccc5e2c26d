#ifndef KSTYLEOPTION_H
#define KSTYLEOPTION_H

#include <QBrush>
#include <QColor>
#include <QIcon>
#include <QRect>
#include <QSize>
#include <QString>
#include <QStyleOption>
#include <QStyleOptionComplex>

#include <norvikofficeui_export.h>

/*
 * The style options of the framework's own widgets. A widget fills one of these and hands
 * it to the style with the custom element number of its kind (see KORBStyle); the style
 * recognises an option by its type number through qstyleoption_cast. The numbers start at
 * QStyleOption::SO_CustomBase (3840). All have version 1 unless noted.
 */

/// The ribbon's tab bar (complex control 1).
class NORVIKOFFICEUI_EXPORT KStyleOptionRbTabBar : public QStyleOptionComplex
{
public:
    enum StyleOptionType { Type = SO_CustomBase + 1 };
    enum StyleOptionVersion { Version = 1 };
    KStyleOptionRbTabBar();

    QString title;
    QRect scrollerRect;
    QRect topLayoutRect;
    QRect fileButtonRect;
    QRect rightCornerRect;
    bool isSingleLine = false;
    bool isTitleMode = false;
    bool isAloneMode = false;
    int status = 0;
    int reserved1 = 0;
    int reserved2 = 0;
    QColor slideColor;
};

/// One tab of the ribbon's tab bar (complex control 2).
class NORVIKOFFICEUI_EXPORT KStyleOptionKRbTabButton : public QStyleOptionComplex
{
public:
    enum StyleOptionType { Type = SO_CustomBase + 2 };
    enum StyleOptionVersion { Version = 1 };
    KStyleOptionKRbTabButton();

    QString text;
    bool isFirstTabMaximized = false;
    bool isContext = false;
    bool isBeforeSelected = false;
    bool isNextSelected = false;
    bool isBeforeContext = false;
    bool isNextContext = false;
    bool isHideGradient = false;
    QString themeKey;
    int status = -1;
};

/// A ribbon category page (complex control 3).
class NORVIKOFFICEUI_EXPORT KStyleOptionRbCategory : public QStyleOptionComplex
{
public:
    enum StyleOptionType { Type = SO_CustomBase + 3 };
    enum StyleOptionVersion { Version = 1 };
    KStyleOptionRbCategory();
};

/// An arrow of the ribbon's horizontal scroller (complex control 4); arrowType is a Qt::ArrowType.
class NORVIKOFFICEUI_EXPORT KStyleOptionRbHScrollWidget : public QStyleOptionComplex
{
public:
    enum StyleOptionType { Type = SO_CustomBase + 4 };
    enum StyleOptionVersion { Version = 1 };
    KStyleOptionRbHScrollWidget();

    int arrowType = Qt::NoArrow;
};

/**
 * A ribbon logic group (complex control 5). It carries the same type number as
 * KStyleOptionRbHScrollWidget and the same layout, so either cast accepts the other.
 */
class NORVIKOFFICEUI_EXPORT KStyleOptionRbLogicGroup : public QStyleOptionComplex
{
public:
    enum StyleOptionType { Type = SO_CustomBase + 4 };
    enum StyleOptionVersion { Version = 1 };
    KStyleOptionRbLogicGroup();

    int value = 0;
};

/// The dialog launcher in a logic group's corner (complex control 6).
class NORVIKOFFICEUI_EXPORT KStyleOptionLogicGroupButton : public QStyleOptionComplex
{
public:
    enum StyleOptionType { Type = SO_CustomBase + 6 };
    enum StyleOptionVersion { Version = 1 };
    KStyleOptionLogicGroupButton();
};

/**
 * The framework's tool button (complex control 7, contents type 1). buttonStyle carries the
 * widget's button-style word unchanged, a combination of ButtonStyleFlag; the widget and the
 * style both read it by these names.
 */
class NORVIKOFFICEUI_EXPORT KStyleOptionToolButton : public QStyleOptionToolButton
{
public:
    enum StyleOptionType { Type = SO_CustomBase + 7 };
    enum StyleOptionVersion { Version = 1 };

    /// The bits of buttonStyle.
    enum ButtonStyleFlag {
        StyleIcon = 0x01,          ///< draw the icon also when there is text
        StyleText = 0x02,          ///< draw the text also when there is an icon
        StyleArrow = 0x04,         ///< a drop-down part with an arrow
        StyleTextUnderIcon = 0x08, ///< large button, text below the icon
        StyleHotKey = 0x10,        ///< the caption shows its mnemonic
        StyleLargeMargins = 0x20,  ///< the style's larger margins
        StyleEvenWidth = 0x40,     ///< odd widths are rounded up to even ones
        StyleAutoHideText = 0x80   ///< no text on a narrow screen (together with StyleText)
    };

    KStyleOptionToolButton();

    QString text2;
    int buttonStyle = 0;
    int roundCorner = 0;
    int orientation = Qt::Horizontal;
    bool autoHideText = false;
    bool largeMargins = false;
    bool drawSeparator = false;
    bool quickCommandEnabled = true;
    bool isDown = false;
    QColor borderColor;
    QColor borderInColor;
    QColor textColor;
    QBrush bgBrush;
};

/// A separator widget (complex control 8).
class NORVIKOFFICEUI_EXPORT KStyleOptionSepraratorWidget : public QStyleOptionComplex
{
public:
    enum StyleOptionType { Type = SO_CustomBase + 8 };
    enum StyleOptionVersion { Version = 1 };
    KStyleOptionSepraratorWidget();

    int longWidth = 0;
    int longHeight = 0;
    int shortWidth = 0;
    int shortHeight = 0;
    QBrush background;
    QBrush foreground;
    int orientation = Qt::Vertical;
    int isLong = 0;
};

/// The status bar (complex control 9).
class NORVIKOFFICEUI_EXPORT KStyleOptionStatusBar : public QStyleOptionComplex
{
public:
    enum StyleOptionType { Type = SO_CustomBase + 9 };
    enum StyleOptionVersion { Version = 1 };
    KStyleOptionStatusBar();
};

/// The document tab bar (complex control 10).
class NORVIKOFFICEUI_EXPORT KStyleOptionDocTabBar : public QStyleOptionComplex
{
public:
    enum StyleOptionType { Type = SO_CustomBase + 10 };
    enum StyleOptionVersion { Version = 1 };
    KStyleOptionDocTabBar();

    int tabCount = 0;
};

/// One document tab (complex control 11; the close mark is sub-control SC_CustomBase + 4).
class NORVIKOFFICEUI_EXPORT KStyleOptionDocTab : public QStyleOptionComplex
{
public:
    enum StyleOptionType { Type = SO_CustomBase + 11 };
    enum StyleOptionVersion { Version = 1 };
    KStyleOptionDocTab();

    /// The measures of a tab's content, shared by the tab (its size hints) and the styles.
    enum Metrics {
        IconSize = 16,
        CloseSize = 16,
        MarginLeft = 4,
        MarginTop = 2,
        MarginRight = 4,
        MarginBottom = 2,
        TextSpacingLeft = 3,  ///< between the icon and the text
        TextSpacingRight = 2, ///< between the text and the close mark
        CloseMarginLeft = 0,
        CloseMarginTop = 2
    };
    /// Where a tab of rect puts its close mark: at the right margin, centred vertically.
    static QRect closeRect(const QRect& rect)
    {
        return QRect(rect.right() - MarginRight - CloseSize + 1, rect.top() + (rect.height() - CloseSize) / 2,
                     CloseSize, CloseSize);
    }

    QIcon icon;
    QBrush background;
    QString text;
    bool isChecked = false;
    bool isActive = false;
    bool isHover = false;
    bool isCloseHover = false;
    bool isCloseDown = false;
    bool showProgress = false;
    bool isModified = false;
};

/// A ribbon layout widget's frame (complex control 12).
class NORVIKOFFICEUI_EXPORT KStyleOptionRbLayoutWidget : public QStyleOptionComplex
{
public:
    enum StyleOptionType { Type = SO_CustomBase + 12 };
    enum StyleOptionVersion { Version = 1 };
    KStyleOptionRbLayoutWidget();

    int layoutOnly = 0;
};

/// The slide block under the ribbon's tabs (complex control 13).
class NORVIKOFFICEUI_EXPORT KStyleOptionRbSubTabBar : public QStyleOptionComplex
{
public:
    enum StyleOptionType { Type = SO_CustomBase + 13 };
    enum StyleOptionVersion { Version = 1 };
    KStyleOptionRbSubTabBar();

    QRect slideRect;
    QColor slideColor;
    QColor slideBorderColor;
    QString themeKey;
};

/// The main window's background (complex control 14).
class NORVIKOFFICEUI_EXPORT KStyleOptionMainWindow : public QStyleOptionComplex
{
public:
    enum StyleOptionType { Type = SO_CustomBase + 14 };
    enum StyleOptionVersion { Version = 1 };
    KStyleOptionMainWindow();

    int leftMargin = 0;
    int topMargin = 0;
    int rightMargin = 0;
    int bottomMargin = 0;
    QRect dockAreaRect;
    QRect statusBarRect;
    bool isAero = false;
    bool drawOwnBorder = false;
    int flags = 0;
    int titleHeight = 0;
};

/// A sheet tab (control element 1).
class NORVIKOFFICEUI_EXPORT KSheetTabStyleOption : public QStyleOption
{
public:
    enum StyleOptionType { Type = SO_CustomBase + 15 };
    enum StyleOptionVersion { Version = 1 };
    KSheetTabStyleOption();

    bool isSelected = false;
    bool isHover = false;
    bool isFirst = false;
    QString text;
    QColor tabColor;
    int shape = 3;
    int position = 0;
};

/// The ribbon's file button (complex control 15).
class NORVIKOFFICEUI_EXPORT KStyleOptionRbTabFileButton : public QStyleOptionComplex
{
public:
    enum StyleOptionType { Type = SO_CustomBase + 16 };
    enum StyleOptionVersion { Version = 1 };
    KStyleOptionRbTabFileButton();

    bool isDown = false;
    bool hitArrow = false;
    bool classicOpen = false;
    bool tipLight = false;
    int light = 0;
    int shadow = 0;
    QIcon icon;
    /// The caption of the button ("File" in most hosts), from its command.
    QString text;
};

/// A caption button of the window chrome (control elements 2 and 4).
class NORVIKOFFICEUI_EXPORT KStyleOptionWindowTitleButton : public QStyleOption
{
public:
    enum StyleOptionType { Type = SO_CustomBase + 17 };
    enum StyleOptionVersion { Version = 1 };
    KStyleOptionWindowTitleButton(int version = Version, int type = Type);

    bool isActiveWindow = true;
};

/// The restore/maximise caption button (control element 3); version 2.
class NORVIKOFFICEUI_EXPORT KStyleOptionRestoreMaximizeButton : public KStyleOptionWindowTitleButton
{
public:
    enum StyleOptionType { Type = SO_CustomBase + 18 };
    enum StyleOptionVersion { Version = 2 };
    KStyleOptionRestoreMaximizeButton();

    bool isMaximized = false;
};

/// The document tab bar's new-tab button (control element 5).
class NORVIKOFFICEUI_EXPORT KStyleOptionTabBarNewButton : public QStyleOption
{
public:
    enum StyleOptionType { Type = SO_CustomBase + 19 };
    enum StyleOptionVersion { Version = 1 };
    KStyleOptionTabBarNewButton();

    bool isHover = false;
    bool isDown = false;
};

/// A zoom button of the status bar (control element 6).
class NORVIKOFFICEUI_EXPORT KStyleOptionZoomButton : public QStyleOption
{
public:
    enum StyleOptionType { Type = SO_CustomBase + 20 };
    enum StyleOptionVersion { Version = 1 };
    KStyleOptionZoomButton();

    int buttonType = 0;
    QString text;
};

/// The shadow border around a main window (primitive PE_CustomBase + 2).
class NORVIKOFFICEUI_EXPORT KStyleOptionMainBorder : public QStyleOption
{
public:
    enum StyleOptionType { Type = SO_CustomBase + 21 };
    enum StyleOptionVersion { Version = 1 };
    KStyleOptionMainBorder();

    int borderWidth = -1;
};

/**
 * A button of a gallery band (control element KORBStyle_2013::KCE_GalleryScrollButton):
 * buttonType says which of the three it is.
 */
class NORVIKOFFICEUI_EXPORT KStyleOptionGalleryScrollButton : public QStyleOption
{
public:
    enum StyleOptionType { Type = SO_CustomBase + 22 };
    enum StyleOptionVersion { Version = 1 };
    /// The values of buttonType.
    enum ButtonType { Up = 0, Down = 1, Extend = 2 };
    KStyleOptionGalleryScrollButton();

    int buttonType = Up;
};

// The restore/maximise option is a caption-button option too: casting it to its base works,
// which the generic cast (exact type match) would refuse.
template <>
inline const KStyleOptionWindowTitleButton* qstyleoption_cast<const KStyleOptionWindowTitleButton*>(const QStyleOption* opt)
{
    if (opt && opt->version >= KStyleOptionWindowTitleButton::Version
        && (opt->type == KStyleOptionWindowTitleButton::Type
            || opt->type == KStyleOptionRestoreMaximizeButton::Type))
        return static_cast<const KStyleOptionWindowTitleButton*>(opt);
    return nullptr;
}

template <>
inline KStyleOptionWindowTitleButton* qstyleoption_cast<KStyleOptionWindowTitleButton*>(QStyleOption* opt)
{
    return const_cast<KStyleOptionWindowTitleButton*>(
        qstyleoption_cast<const KStyleOptionWindowTitleButton*>(static_cast<const QStyleOption*>(opt)));
}

#endif // KSTYLEOPTION_H
