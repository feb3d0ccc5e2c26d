#include "kstyleoption.h"

// Each option carries its own version and type number; QStyleOption(version, type) sets them.

KStyleOptionRbTabBar::KStyleOptionRbTabBar()
    : QStyleOptionComplex(Version, Type)
{
}

KStyleOptionKRbTabButton::KStyleOptionKRbTabButton()
    : QStyleOptionComplex(Version, Type)
{
}

KStyleOptionRbCategory::KStyleOptionRbCategory()
    : QStyleOptionComplex(Version, Type)
{
}

KStyleOptionRbHScrollWidget::KStyleOptionRbHScrollWidget()
    : QStyleOptionComplex(Version, Type)
{
}

KStyleOptionRbLogicGroup::KStyleOptionRbLogicGroup()
    : QStyleOptionComplex(Version, Type)
{
}

KStyleOptionLogicGroupButton::KStyleOptionLogicGroupButton()
    : QStyleOptionComplex(Version, Type)
{
}

KStyleOptionToolButton::KStyleOptionToolButton()
{
    version = Version;
    type = Type;
}

KStyleOptionSepraratorWidget::KStyleOptionSepraratorWidget()
    : QStyleOptionComplex(Version, Type)
{
}

KStyleOptionStatusBar::KStyleOptionStatusBar()
    : QStyleOptionComplex(Version, Type)
{
}

KStyleOptionDocTabBar::KStyleOptionDocTabBar()
    : QStyleOptionComplex(Version, Type)
{
}

KStyleOptionDocTab::KStyleOptionDocTab()
    : QStyleOptionComplex(Version, Type)
{
}

KStyleOptionRbLayoutWidget::KStyleOptionRbLayoutWidget()
    : QStyleOptionComplex(Version, Type)
{
}

KStyleOptionRbSubTabBar::KStyleOptionRbSubTabBar()
    : QStyleOptionComplex(Version, Type)
{
}

KStyleOptionMainWindow::KStyleOptionMainWindow()
    : QStyleOptionComplex(Version, Type)
{
}

KSheetTabStyleOption::KSheetTabStyleOption()
    : QStyleOption(Version, Type)
{
}

KStyleOptionRbTabFileButton::KStyleOptionRbTabFileButton()
    : QStyleOptionComplex(Version, Type)
{
}

KStyleOptionWindowTitleButton::KStyleOptionWindowTitleButton(int version, int type)
    : QStyleOption(version, type)
{
}

KStyleOptionRestoreMaximizeButton::KStyleOptionRestoreMaximizeButton()
    : KStyleOptionWindowTitleButton(Version, Type)
{
}

KStyleOptionTabBarNewButton::KStyleOptionTabBarNewButton()
    : QStyleOption(Version, Type)
{
}

KStyleOptionZoomButton::KStyleOptionZoomButton()
    : QStyleOption(Version, Type)
{
}

KStyleOptionMainBorder::KStyleOptionMainBorder()
    : QStyleOption(Version, Type)
{
}

KStyleOptionGalleryScrollButton::KStyleOptionGalleryScrollButton()
    : QStyleOption(Version, Type)
{
}
