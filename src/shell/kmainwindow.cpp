#include "kmainwindow.h"

#include <kmenubar.h>
#include <krbtabbar.h>
#include <kwindowtitlebar.h>

#include <QApplication>
#include <QDockWidget>
#include <QHBoxLayout>
#include <QMenu>
#include <QPainter>
#include <QResizeEvent>
#include <QScreen>
#include <QVBoxLayout>

#include "kapplication.h"
#include "kcommandbarprop.h"
#include "kcommands.h"
#include "kcomposelistcommand.h"
#include "kcontextcategorycommand.h"
#include "korbstyle.h"
#include "kstyleoption.h"
#include "kdockwidget.h"
#include "kdragtoolbar.h"
#include "kmdiarea.h"
#include "kstatusbar.h"
#include "klistcommand.h"
#include "kseparatorcommand.h"
#include "ktoolbar.h"
#include "ktoolbartoggleviewcommand.h"
#include "ktriggercommand.h"
#include "kuixmlparaser.h"
#include "kshortcutswrapper.h"

namespace {

struct AreaPlacement
{
    Qt::ToolBarArea area;
    bool floating;
};

// Maps a bar position of KCommandBarProp to the dock area's tool bar area.
AreaPlacement placementOf(int position)
{
    switch (position) {
    case KCommandBarProp::PosLeft:
        return {Qt::LeftToolBarArea, false};
    case KCommandBarProp::PosRight:
        return {Qt::RightToolBarArea, false};
    case KCommandBarProp::PosBottom:
        return {Qt::BottomToolBarArea, false};
    case KCommandBarProp::PosFloating:
        return {Qt::TopToolBarArea, true};
    default:
        return {Qt::TopToolBarArea, false};
    }
}

bool isListCommand(KCommand* cmd)
{
    return qobject_cast<KListCommand*>(cmd) || qobject_cast<KComposeListCommand*>(cmd);
}

} // namespace

KMainDockArea::KMainDockArea(QWidget* parent)
    : QMainWindow(parent, Qt::WindowFlags())
{
    setAccessibleName(QStringLiteral("KMainDockArea"));
    setWindowFlags(Qt::WindowFlags());
}

// --- KMainWindow ---

KMainWindow::KMainWindow(QWidget* parent)
    : QWidget(parent)
{
    setFocusPolicy(Qt::NoFocus);
    setAttribute(Qt::WA_CanHostQMdiSubWindowTitleBar);

    m_outerLayout = new QVBoxLayout(this);
    m_outerLayout->setContentsMargins(0, 0, 0, 0);
    m_outerLayout->setSpacing(0);

    m_dockArea = new KMainDockArea(this);
    auto* inner = new QHBoxLayout;
    inner->setContentsMargins(0, 0, 0, 0);
    inner->setSpacing(0);
    inner->addWidget(m_dockArea);
    m_outerLayout->addLayout(inner);

    KApplication* app = KApplication::instance();
    m_commands = new KCommands(this, this, app ? app->commands() : nullptr);
    _setupKeyboard();

    if (app) {
        connect(app, &KApplication::xmlSetuped, this, &KMainWindow::onXmlSetuped);
        connect(app, &KApplication::xmlReseted, this, &KMainWindow::onXmlReseted);
    }
}

KMainWindow::~KMainWindow()
{
    // Documents closing with the window change the area's state: nobody here listens then.
    if (QWidget* central = centralWidget())
        disconnect(central, nullptr, this, nullptr);
    _teardownKeyboard();
    if (KApplication* app = KApplication::instance())
        app->removeMainWindow(this);
}

void KMainWindow::setCaption(const QString& caption)
{
    if (m_caption == caption)
        return;
    m_caption = caption;
    setWindowTitle(caption);
}

// --- description ---

void KMainWindow::onXmlSetuped(const KDomDocument& doc)
{
    _setupXml(doc);
}

void KMainWindow::onXmlReseted()
{
    _resetXml();
}

void KMainWindow::_setupXml(const KDomDocument& doc)
{
    KUiXmlParaser parser;
    const KDomElement element = doc.documentElement().firstChildElement(QStringLiteral("mainwindow"));
    if (!element.isNull())
        parser.setupUiByXml(this, element);
}

void KMainWindow::polishXml()
{
    beforePolishXml();
    if (KApplication* app = KApplication::instance()) {
        const QList<KDomDocument> docs = app->getDoms();
        for (const KDomDocument& doc : docs)
            _setupXml(doc);
    }
    afterPolishXml();
    m_xmlPolished = true;
}

void KMainWindow::_resetXml()
{
    removeMenuBar();
    for (KToolBar* bar : std::as_const(m_toolBars))
        bar->deleteLater();
    m_toolBars.clear();
    m_popupMenus.clear();
    m_rbToolBars.clear();
    for (QDockWidget* dock : std::as_const(m_dockWidgets))
        dock->deleteLater();
    m_dockWidgets.clear();
    removeHeaderBar();
    m_fullScreenBar = nullptr; // it was in the pool
    m_toolBarListCommand = nullptr;
    m_rbToolBarCommand = nullptr;
    m_commands->resetXML();
}

// --- tool bars ---

bool KMainWindow::_addToToolBarPool(KToolBar* bar)
{
    if (!bar || bar->inherits("KDragMenuBar") || m_toolBars.contains(bar))
        return false;
    m_toolBars.append(bar);
    return true;
}

void KMainWindow::_placeToolBar(KToolBar* bar, int position, bool moveExisting)
{
    const AreaPlacement place = placementOf(position);
    // Only a bar that showed comes back after the move: showing a hidden one would lift the
    // vetoes on its command (the user's choice, full screen) for good.
    const bool wasShown = !bar->isHidden();
    if (moveExisting)
        bar->hide();
    if (place.floating) {
        bar->setFloatable(true);
        if (moveExisting)
            bar->setFloating(true);
    } else {
        m_dockArea->addToolBar(place.area, bar);
        Q_EMIT addToolBarSignal(bar);
    }
    if (moveExisting && wasShown)
        bar->show();
}

void KMainWindow::addToolBar(KToolBar* bar)
{
    if (!bar)
        return;
    _addToToolBarPool(bar);
    const int position = bar->props() ? bar->props()->getPosition() : int(KCommandBarProp::PosTop);
    _placeToolBar(bar, position, false);
}

void KMainWindow::addToolBar(Qt::ToolBarArea area, KToolBar* bar)
{
    if (!bar)
        return;
    _addToToolBarPool(bar);
    m_dockArea->addToolBar(area, bar);
    Q_EMIT addToolBarSignal(bar);
}

void KMainWindow::insertToolBar(KToolBar* before, KToolBar* bar)
{
    if (!bar)
        return;
    _addToToolBarPool(bar);
    m_dockArea->insertToolBar(before, bar);
    Q_EMIT insertToolBarSignal(before, bar);
}

void KMainWindow::addToolBarBreak(Qt::ToolBarArea area)
{
    m_dockArea->addToolBarBreak(area);
    Q_EMIT addToolBarBreakSignal(area);
}

void KMainWindow::insertToolBarBreak(KToolBar* before)
{
    m_dockArea->insertToolBarBreak(before);
    Q_EMIT insertToolBarBreakSignal(before);
}

void KMainWindow::removeToolBar(KToolBar* bar)
{
    if (!bar)
        return;
    m_toolBars.removeAll(bar);
    _removeFromToolBarPopupMenu(bar);
    m_dockArea->removeToolBar(bar);
}

KToolBar* KMainWindow::findToolBar(KCommand* cmd) const
{
    if (!cmd)
        return nullptr; // not the first bar that shows nothing
    for (KToolBar* bar : m_toolBars) {
        if (bar->command() == cmd)
            return bar;
    }
    return nullptr;
}

bool KMainWindow::hasToolbar(Qt::ToolBarArea area) const
{
    for (KToolBar* bar : m_toolBars) {
        if (!bar->isFloating() && m_dockArea->toolBarArea(bar) == area)
            return true;
    }
    return false;
}

void KMainWindow::setAllToolBarsVisilbe(bool visible)
{
    for (KToolBar* bar : std::as_const(m_toolBars)) {
        KCommandBarProp* props = bar->props();
        if (!props || props->getCustom() || !bar->command())
            continue;
        bar->command()->setVisible(KMultiControlBool::FullScreenControl, visible);
    }
}

QSet<KToolBar*> KMainWindow::currentVisibleBars() const
{
    QSet<KToolBar*> bars;
    for (KToolBar* bar : m_toolBars) {
        if (!bar->isHidden())
            bars.insert(bar);
    }
    return bars;
}

void KMainWindow::updateCommandBarArea(KCommand* cmd)
{
    KToolBar* bar = findToolBar(cmd);
    if (!bar)
        return;
    KCommandBarProp props(cmd, nullptr);
    _placeToolBar(bar, props.getPosition(), true);
}

void KMainWindow::updateCommandBarRect(KCommand* cmd)
{
    KToolBar* bar = findToolBar(cmd);
    if (!bar)
        return;
    KCommandBarProp props(cmd, nullptr);
    bar->setGeometry(props.getLeft(), props.getTop(), props.getWidth(), props.getHeight());
}

void KMainWindow::updateCommandBarRowIndex(KCommand*)
{
}

void KMainWindow::updateCommandBarProtection(KCommand* cmd)
{
    KToolBar* bar = findToolBar(cmd);
    if (!bar)
        return;
    KCommandBarProp props(cmd, nullptr);
    switch (props.getProtection()) {
    case KCommandBarProp::NotMovable:
        bar->setMovable(false);
        break;
    case KCommandBarProp::DockNowhere:
        bar->setMovable(true);
        bar->setAllowedAreas(Qt::NoToolBarArea);
        break;
    case KCommandBarProp::DockTopBottom:
        bar->setMovable(true);
        bar->setAllowedAreas(Qt::TopToolBarArea | Qt::BottomToolBarArea);
        break;
    case KCommandBarProp::DockLeftRight:
        bar->setMovable(true);
        bar->setAllowedAreas(Qt::LeftToolBarArea | Qt::RightToolBarArea);
        break;
    default:
        bar->setMovable(true);
        bar->setAllowedAreas(Qt::AllToolBarAreas);
        break;
    }
}

// --- central widget and docks ---

void KMainWindow::setOwnFrame(bool on)
{
    if (m_ownFrame == on)
        return;
    m_ownFrame = on;
    const bool shown = isVisible();
    setWindowFlag(Qt::FramelessWindowHint, on);
    // The window paints the whole frame itself: no borders of a window manager to allow for.
    if (on)
        setCustomFrameStruct(0, 0, 0, 0);
    else if (!m_headerBar)
        setCustomFrameStruct(-1, -1, -1, -1);
    if (on) {
        m_captionButtons = new KWindowTitleButtonGroup(nullptr, this, this);
        if (KMainWindowShadowBorder::isWanted(style()))
            m_shadow = new KMainWindowShadowBorder(this);
        _placeCaption();
    } else {
        delete m_captionButtons.data();
        delete m_titleRow.data();
        delete m_shadow.data();
    }
    if (shown)
        show();
}

void KMainWindow::_placeCaption()
{
    KWindowTitleButtonGroup* buttons = m_captionButtons.data();
    if (!m_ownFrame || !buttons)
        return;
    if (KRbTabWidget* ribbon = headerBar()) {
        // The tab row is the title: the buttons at its right, its empty part the handle.
        delete m_titleRow.data();
        KRbTabBar* tabBar = ribbon->tabBar();
        tabBar->setCaptionWidget(buttons);
        // One mover per tab row: a second would move the window twice per step.
        if (!tabBar->findChild<KWindowMover*>(QString(), Qt::FindDirectChildrenOnly))
            (new KWindowMover(tabBar))->watch(tabBar);
        return;
    }
    if (!m_titleRow) {
        auto* row = new QWidget(this);
        row->setObjectName(QStringLiteral("KMainWindowTitleRow"));
        auto* layout = new QHBoxLayout(row);
        layout->setContentsMargins(0, 0, 0, 0);
        layout->setSpacing(0);
        layout->addWidget(new KWindowTitleBar(nullptr, row), 1);
        m_titleRow = row;
        m_outerLayout->insertWidget(0, row);
    }
    buttons->setParent(m_titleRow);
    static_cast<QHBoxLayout*>(m_titleRow->layout())->addWidget(buttons, 0, Qt::AlignTop);
    buttons->show();
}

void KMainWindow::setMenuBar(KDragMenuBar* bar)
{
    if (bar == m_menuBar)
        return;
    removeMenuBar();
    m_menuBar = bar;
    if (!bar)
        return;
    // The menu bar stands in a row of its own above every tool bar of the top area.
    KToolBar* firstTop = nullptr;
    for (KToolBar* tool : std::as_const(m_toolBars)) {
        if (!tool->isFloating() && m_dockArea->toolBarArea(tool) == Qt::TopToolBarArea) {
            firstTop = tool;
            break;
        }
    }
    if (firstTop) {
        m_dockArea->insertToolBar(firstTop, bar);
        m_dockArea->insertToolBarBreak(firstTop);
    } else {
        m_dockArea->addToolBar(Qt::TopToolBarArea, bar);
        m_dockArea->addToolBarBreak(Qt::TopToolBarArea); // the tool bars that come later
    }
    Q_EMIT menuBarCreated();
    Q_EMIT addToolBarSignal(bar);
    if (auto* area = qobject_cast<KMdiArea*>(centralWidget()))
        initializeMdiMenuBar(area);
}

void KMainWindow::removeMenuBar()
{
    KDragMenuBar* bar = m_menuBar.data();
    if (!bar)
        return;
    m_menuBar = nullptr;
    m_dockArea->removeToolBar(bar);
    bar->hide();
    bar->deleteLater();
}

KDragMenuBar* KMainWindow::setCustomMenuBar(bool custom)
{
    if (m_headerBar)
        return nullptr; // a ribbon window has no menu bar
    if (KDragMenuBar* old = m_customMenuBar.data()) {
        m_customMenuBar = nullptr;
        m_dockArea->removeToolBar(old);
        old->hide();
        old->deleteLater();
    }
    if (custom) {
        KDragMenuBar* bar = m_menuBar.data();
        if (!bar)
            return nullptr;
        m_dockArea->addToolBar(Qt::TopToolBarArea, bar);
        bar->show();
        Q_EMIT addToolBarSignal(bar);
        return bar;
    }
    if (m_menuBar)
        m_menuBar->hide();
    KCommand* command = m_commands->customCommand(QStringLiteral("KListCommand"), this, m_commands);
    auto* bar = new KDragMenuBar(command, this);
    m_customMenuBar = bar;
    m_dockArea->addToolBar(Qt::TopToolBarArea, bar);
    bar->show();
    Q_EMIT addToolBarSignal(bar);
    return bar;
}

void KMainWindow::initializeMdiMenuBar(KMdiArea* area)
{
    if (!m_menuBar || !area)
        return;
    m_menuBar->menuBar()->initializeMdi(area);
}

void KMainWindow::updateMenubar()
{
    if (m_menuBar)
        m_menuBar->menuBar()->updateMdi();
}

void KMainWindow::setCentralWidget(QWidget* widget)
{
    m_dockArea->setCentralWidget(widget);
    if (auto* area = qobject_cast<KMdiArea*>(widget)) {
        connect(area, &KMdiArea::statusChanged, this, &KMainWindow::mdiStatusChanged, Qt::UniqueConnection);
        initializeMdiMenuBar(area);
        Q_EMIT mdiStatusChanged(area);
    }
}

void KMainWindow::setStatusBar(KStatusBar* bar)
{
    if (bar == m_statusBar)
        return;
    removeStatusBar();
    m_statusBar = bar;
    if (!bar)
        return;
    bar->setParent(this);
    m_outerLayout->addWidget(bar);
    if (!bar->statusCommand() || bar->statusCommand()->isVisible())
        bar->show();
}

KStatusBar* KMainWindow::statusBar() const
{
    return static_cast<KStatusBar*>(m_statusBar.data());
}

void KMainWindow::removeStatusBar()
{
    QWidget* bar = m_statusBar.data();
    m_statusBar = nullptr;
    if (!bar)
        return;
    m_outerLayout->removeWidget(bar);
    bar->hide();
    bar->deleteLater();
}

void KMainWindow::_setStatusBarFullScreen(bool on)
{
    // Through the full-screen controller: a bar the user hid stays hidden afterwards.
    if (KStatusBar* bar = statusBar(); bar && bar->statusCommand())
        bar->statusCommand()->setVisible(KMultiControlBool::FullScreenControl, !on);
}

QWidget* KMainWindow::centralWidget() const
{
    return m_dockArea->centralWidget();
}

void KMainWindow::addDockWidget(Qt::DockWidgetArea area, QDockWidget* dock)
{
    if (!dock)
        return;
    m_dockWidgets.insert(dock);
    m_dockArea->addDockWidget(area, dock);
}

void KMainWindow::addDockWidget(Qt::DockWidgetArea area, KCommand* command)
{
    if (!command)
        return;
    addDockWidget(area, new KDockWidget(command, this));
}

QDockWidget* KMainWindow::findDockWidget(const QString& objectName) const
{
    for (QDockWidget* dock : m_dockWidgets) {
        if (dock->objectName() == objectName)
            return dock;
    }
    return nullptr;
}

Qt::DockWidgetArea KMainWindow::dockWidgetArea(QDockWidget* dock) const
{
    return m_dockArea->dockWidgetArea(dock);
}

void KMainWindow::splitDockWidget(QDockWidget* first, QDockWidget* second, Qt::Orientation orientation)
{
    m_dockArea->splitDockWidget(first, second, orientation);
}

// --- popup menus and user-made bars ---

void KMainWindow::addPopupMenu(KCommand* cmd)
{
    if (cmd && !m_popupMenus.contains(cmd))
        m_popupMenus.append(cmd);
}

void KMainWindow::removePopupMenu(KCommand* cmd)
{
    m_popupMenus.removeAll(cmd);
}

KCommand* KMainWindow::addCustomPopupMenu()
{
    if (m_headerBar)
        return nullptr; // a ribbon has no popup menus of the user's
    KCommand* cmd = m_commands->customCommand(QStringLiteral("KListCommand"), this, m_commands);
    addPopupMenu(cmd);
    return cmd;
}

void KMainWindow::addCustomToolBar(QWidget** bar, KCommand** command)
{
    if (m_headerBar) {
        // A ribbon keeps the user's bars in its add-on tab.
        if (!_rbToolBarCommand())
            return;
        KCommand* custom = m_commands->customCommand(QStringLiteral("KListCommand"), this, m_commands);
        if (!custom)
            return;
        custom->setProperty("embedHint", true);
        _addRbToolBar(custom);
        if (command)
            *command = custom;
        if (bar)
            *bar = rbToolBar();
        return;
    }
    auto* list = qobject_cast<KListCommand*>(
        m_commands->customCommand(QStringLiteral("KListCommand"), this, m_commands));
    if (!list)
        return;
    auto* toolBar = new KToolBar(list, this);
    addToolBar(toolBar);
    _addToToolBarPopupMenu(toolBar);
    if (command)
        *command = toolBar->command();
    if (bar)
        *bar = toolBar;
}

void KMainWindow::removeRbToolBar(KCommand* cmd)
{
    m_rbToolBars.removeAll(cmd);
    if (KListCommand* list = _rbToolBarCommand()) {
        const int i = list->indexOf(cmd);
        if (i >= 0)
            list->removeSubCommand(i);
    }
}

KListCommand* KMainWindow::_rbToolBarCommand()
{
    // User bars go to the add-on tab of a ribbon, the last context tab named "AddOns"; a
    // window without a ribbon has none.
    if (m_rbToolBarCommand || !m_headerBar)
        return m_rbToolBarCommand;
    KCommand* ribbon = m_headerBar->command();
    for (int i = ribbon ? ribbon->count() - 1 : -1; i >= 0; --i) {
        auto* tab = qobject_cast<KContextCategoryCommand*>(ribbon->subCommand(i));
        if (!tab || tab->contextName() != QLatin1String("AddOns"))
            continue;
        m_rbToolBarCommand = tab->count() > 0 ? qobject_cast<KListCommand*>(tab->subCommand(0)) : nullptr;
        break;
    }
    return m_rbToolBarCommand;
}

QWidget* KMainWindow::rbToolBar()
{
    if (!m_rbToolBarWidget) {
        m_rbToolBarWidget = new QWidget(this);
        m_rbToolBarWidget->setObjectName(QStringLiteral("RbToolBar"));
        m_rbToolBarWidget->hide();
    }
    return m_rbToolBarWidget.data();
}

void KMainWindow::_addRbToolBar(KCommand* cmd)
{
    if (!cmd || m_rbToolBars.contains(cmd))
        return;
    if (KListCommand* list = _rbToolBarCommand()) {
        if (!m_rbToolBars.isEmpty())
            list->addSeparator();
        list->addSubCommand(cmd);
    }
    m_rbToolBars.append(cmd);
}

KListCommand* KMainWindow::_toolBarListCommand()
{
    if (!m_toolBarListCommand)
        m_toolBarListCommand = qobject_cast<KListCommand*>(m_commands->command(QStringLiteral("TBCustomizePopupMenu")));
    return m_toolBarListCommand;
}

void KMainWindow::_addToToolBarPopupMenu(KToolBar* bar)
{
    KListCommand* list = _toolBarListCommand();
    if (!list || !bar)
        return;
    auto* toggle = new KToolBarToggleViewCommand(this, list);
    toggle->setAction(bar->toggleViewAction());
    list->addSubCommand(toggle);
}

void KMainWindow::_removeFromToolBarPopupMenu(KToolBar* bar)
{
    KListCommand* list = _toolBarListCommand();
    if (!list || !bar)
        return;
    for (int i = 0; i < list->count(); ++i) {
        auto* toggle = qobject_cast<KToolBarToggleViewCommand*>(list->subCommand(i));
        if (toggle && toggle->action() == bar->toggleViewAction()) {
            list->removeSubCommand(i);
            toggle->deleteLater();
            return;
        }
    }
}

QMenu* KMainWindow::createDockAreaPopupMenu(bool& handled)
{
    handled = true;
    KListCommand* list = _toolBarListCommand();
    if (!list || !list->isEnabled())
        return nullptr;
    auto* menu = new QMenu(this);
    for (int i = 0; i < list->count(); ++i) {
        auto* toggle = qobject_cast<KToolBarToggleViewCommand*>(list->subCommand(i));
        if (!toggle || !toggle->action())
            continue;
        toggle->update();
        toggle->action()->setEnabled(toggle->isEnabled());
        toggle->action()->setVisible(toggle->isVisible());
        menu->addAction(toggle->action());
    }
    return menu;
}

// --- modes ---

void KMainWindow::setHeaderBar(KRbTabWidget* bar)
{
    if (bar == m_headerBar)
        return;
    removeHeaderBar();
    m_headerBar = bar;
    if (!bar)
        return;
    bar->setParent(this);
    m_outerLayout->insertWidget(0, bar);
    setCustomFrameStruct(0, 0, 0, 0);
    connect(this, &KMainWindow::aeroEffectChanged, bar, &KRbTabWidget::onAeroEffectChanged);
    m_rbToolBarCommand = nullptr; // the add-on tab is the new ribbon's
    bar->show();
    _placeCaption();
}

void KMainWindow::removeHeaderBar()
{
    KRbTabWidget* bar = m_headerBar.data();
    if (!bar)
        return;
    m_headerBar = nullptr;
    m_rbToolBarCommand = nullptr;
    m_outerLayout->removeWidget(bar);
    bar->hide();
    disconnect(this, nullptr, bar, nullptr);
    bar->deleteLater();
}

void KMainWindow::setCustomFrameStruct(int left, int top, int right, int bottom)
{
    const QMargins frame(left, top, right, bottom);
    if (frame == m_customFrame)
        return;
    m_customFrame = frame;
    update();
}

void KMainWindow::setFullScreen(bool on)
{
    if (m_fullScreen == on)
        return;
    m_fullScreen = on;
    if (QWidget* header = m_headerBar.data()) {
        bool headerVisible = false;
        if (on)
            setLastState(QStringLiteral("HeaderBarVisible"), header->isVisibleTo(this));
        else
            headerVisible = lastState(QStringLiteral("HeaderBarVisible")).toBool();
        header->setVisible(headerVisible);

        if (!m_fullScreenBar) {
            // A missing "Full Screen" command gives a bar with only its grip.
            auto* list = qobject_cast<KListCommand*>(m_commands->command(QStringLiteral("Full Screen")));
            auto* bar = new KDragToolBar(list, this);
            addToolBar(bar);
            bar->setClosable(false);
            bar->setFloating(true);
            bar->setAllowedAreas(Qt::NoToolBarArea);
            bar->setProperty("cmd", QStringLiteral("Full Screen"));
            m_fullScreenBar = bar;
        }
        m_fullScreenBar->setVisible(!headerVisible);
        if (!headerVisible)
            _placeFullScreenBar();
    }
    _setStatusBarFullScreen(on);
    // The menu bar goes through the same controller: hidden by the user, it stays hidden.
    if (KDragMenuBar* bar = menuBar(); bar && bar->menuCommand())
        bar->menuCommand()->setVisible(KMultiControlBool::FullScreenControl, !on);
    if (on) {
        setLastState(QStringLiteral("WindowState"), int(windowState()));
        showFullScreen();
    } else {
        setWindowState(Qt::WindowStates(lastState(QStringLiteral("WindowState")).toInt()));
    }
}

KDragToolBar* KMainWindow::fullScreenBar() const
{
    return static_cast<KDragToolBar*>(m_fullScreenBar.data());
}

void KMainWindow::_placeFullScreenBar()
{
    // At the head of the screen, centred: where the header bar stood.
    KToolBar* bar = m_fullScreenBar.data();
    QScreen* screen = this->screen();
    if (!bar || !screen)
        return;
    bar->adjustSize();
    const QRect area = screen->geometry();
    bar->move(area.center().x() - bar->width() / 2, area.top() + 4);
}

void KMainWindow::setBorderLess(bool borderLess)
{
    if (m_borderLess == borderLess)
        return;
    m_borderLess = borderLess;
    if (borderLess)
        setCustomFrameStruct(-1, -1, -1, -1);
    else if (m_headerBar)
        setCustomFrameStruct(0, 0, 0, 0);
    update();
}

bool KMainWindow::isNeedDrawOwnBorder() const
{
    // Only a window with a ribbon paints its own frame.
    return m_headerBar && !m_embedding;
}

void KMainWindow::setToolbarGroupIndex(int index)
{
    // A ribbon has no tool bar groups. Elsewhere groups are numbered from 1 by callers and
    // kept from 0.
    if (m_headerBar)
        return;
    m_toolbarGroupIndex = index - 1;
}

// --- searching ---

bool KMainWindow::MatchOption::match(KCommand* cmd) const
{
    if (!cmd)
        return false;
    if (!type.isEmpty()) {
        if (type == QLatin1String("Button") && !qobject_cast<KTriggerCommand*>(cmd))
            return false;
        if (type == QLatin1String("Popup") && !isListCommand(cmd))
            return false;
        if (type == QLatin1String("SplitButtonPopup") && !cmd->inherits("KQuickMenuCommand")
            && !cmd->inherits("KGalleryCommand"))
            return false;
    }
    if (!tag.isEmpty()) {
        const QVariant v = cmd->property("tag");
        if (!v.canConvert<QString>() || !v.toString().toLower().contains(tag.toLower()))
            return false;
    }
    if (visibleOnly && !cmd->isVisible())
        return false;
    if (aid != -1) {
        bool ok = false;
        const int value = cmd->property("aid").toInt(&ok);
        if (!ok || value != aid)
            return false;
    }
    if (faceid != -1) {
        bool ok = false;
        const int value = cmd->property("faceid").toInt(&ok);
        if (!ok || value != faceid)
            return false;
    }
    return true;
}

namespace {

// One search of findCommand(): the condition, where the hits go, and how far it walks.
struct CommandSearch
{
    const KMainWindow::MatchOption& option;
    KListCommand* result;
    QVector<KCommand*>& parents;
    bool recursive; // into lists below the first level
    bool all;       // on past the first hit
};

// Walks cmd and, at depth 0 or when recursive, the commands of its list; a hit is a command
// below the start that is no separator and matches. True when something matched.
bool findCommandIn(const CommandSearch& search, KCommand* parent, KCommand* cmd, int depth)
{
    if (!cmd)
        return false;
    bool found = false;
    if (search.recursive || depth == 0) {
        // A composed list is searched in its own items, not in the commands it shows.
        auto* compose = qobject_cast<KComposeListCommand*>(cmd);
        const bool isList = compose || qobject_cast<KListCommand*>(cmd);
        const int count = compose ? compose->countOrig() : (isList ? cmd->count() : 0);
        for (int i = 0; i < count; ++i) {
            KCommand* sub = compose ? compose->subCommandOrig(i) : cmd->subCommand(i);
            if (findCommandIn(search, cmd, sub, depth + 1)) {
                found = true;
                if (!search.all)
                    return true;
            }
        }
    }
    if (parent && !KSeparatorCommand::isSeparator(cmd) && search.option.match(cmd)) {
        if (search.result)
            search.result->addSubCommand(cmd);
        search.parents.append(parent);
        found = true;
    }
    return found;
}

} // namespace

bool KMainWindow::findCommand(KCommand* start, int aid, int faceid, const QString& type, const QString& tag,
                              bool visibleOnly, bool recursive, KListCommand* result,
                              QVector<KCommand*>& parents, bool all)
{
    MatchOption option;
    option.aid = aid;
    option.faceid = faceid;
    option.type = type;
    option.tag = tag;
    option.visibleOnly = visibleOnly;
    const CommandSearch search{option, result, parents, recursive, all};

    if (start)
        return findCommandIn(search, nullptr, start, 0);

    QVector<KCommand*> roots;
    for (KToolBar* bar : std::as_const(m_toolBars))
        if (bar->command())
            roots.append(bar->command());
    roots += m_rbToolBars;
    roots += m_popupMenus;
    bool found = false;
    for (KCommand* root : std::as_const(roots)) {
        if (findCommandIn(search, nullptr, root, 0)) {
            found = true;
            if (!all)
                return true;
        }
    }
    return found;
}

// --- copying a window's user changes ---

void KMainWindow::_syncListCommand(KCommand* sourceCmd, KCommand* targetCmd, bool recursive)
{
    auto* source = qobject_cast<KListCommand*>(sourceCmd);
    auto* target = qobject_cast<KListCommand*>(targetCmd);
    if (!source || !target)
        return;
    for (int i = 0; i < source->count(); ++i) {
        KCommand* sub = source->subCommand(i);
        if (!sub)
            continue;
        if (sub->property("custom").toBool()) {
            if (KCommand* copy = sub->clone(this, target))
                target->insertSubCommand(i, copy);
            continue;
        }
        // Entries the user removed from the source go from the target too; an entry is
        // matched by its position and id.
        while (i < target->count()) {
            KCommand* other = target->subCommand(i);
            if (other && other->property("id") == sub->property("id")) {
                sub->copyProperties(other);
                if (recursive)
                    _syncListCommand(sub, other, recursive);
                break;
            }
            target->removeSubCommand(i);
        }
    }
    source->copyProperties(target);
}

void KMainWindow::syncApiBarsFromMainWindow(KMainWindow* source)
{
    if (!source || source == this)
        return;
    for (KToolBar* bar : std::as_const(source->m_toolBars)) {
        KCommandBarProp* props = bar->props();
        if (props && props->getCustom()) {
            if (KToolBar* copy = bar->clone(this)) {
                addToolBar(copy);
                _addToToolBarPopupMenu(copy);
            }
            continue;
        }
        const QString name = props ? props->getName().toLower() : QString();
        for (KToolBar* mine : std::as_const(m_toolBars)) {
            if (mine->props() && mine->props()->getName().toLower() == name) {
                _syncListCommand(bar->command(), mine->command(), name != QLatin1String("shortcut menus"));
                break;
            }
        }
    }
    if (_rbToolBarCommand()) {
        for (KCommand* cmd : std::as_const(source->m_rbToolBars)) {
            if (!cmd->property("custom").toBool())
                continue;
            if (KCommand* copy = cmd->clone(this, m_commands))
                _addRbToolBar(copy);
        }
    }
    for (KCommand* menu : std::as_const(source->m_popupMenus)) {
        if (menu->property("custom").toBool()) {
            if (KCommand* copy = menu->clone(this, m_commands))
                m_popupMenus.append(copy);
            continue;
        }
        const QString name = KCommandBarProp(menu, nullptr).getName().toLower();
        for (KCommand* mine : std::as_const(m_popupMenus)) {
            if (KCommandBarProp(mine, nullptr).getName().toLower() == name) {
                _syncListCommand(menu, mine, true);
                break;
            }
        }
    }
}

// --- events ---

bool KMainWindow::event(QEvent* e)
{
    if (int(e->type()) == KEvent::HotKeyCollect || int(e->type()) == KEvent::HotKeyTrigger)
        return _hotKeyEvent(e);
    switch (e->type()) {
    case QEvent::WindowStateChange: {
        auto* change = static_cast<QWindowStateChangeEvent*>(e);
        KApplication* app = KApplication::instance();
        if ((change->oldState() & Qt::WindowMinimized) && windowState() == Qt::WindowNoState && app
            && app->currentMainWindow() == this)
            activateWindow();
        resetAeroEffect();
        break;
    }
    case QEvent::WindowDeactivate:
        Q_EMIT deactivated();
        break;
    default:
        break;
    }
    return QWidget::event(e);
}

void KMainWindow::initStyleOption(KStyleOptionMainWindow* option) const
{
    option->initFrom(this);
    option->isAero = isAeroEnabled();
    option->drawOwnBorder = isNeedDrawOwnBorder() && !option->isAero && !isMaximized();
    const QMargins margins = contentsMargins();
    option->leftMargin = margins.left();
    option->topMargin = margins.top();
    option->rightMargin = margins.right();
    option->bottomMargin = margins.bottom();
    option->dockAreaRect = m_dockArea->geometry();
    option->flags = 7;
    if (m_headerBar)
        option->titleHeight = m_headerBar->titleHeight();
    if (m_statusBar)
        option->statusBarRect = m_statusBar->geometry();
}

void KMainWindow::paintEvent(QPaintEvent*)
{
    // The framework's style paints the background behind the bars in theme colours; any
    // other style leaves the window's own palette background.
    if (!qobject_cast<KORBStyle*>(style()))
        return;
    KStyleOptionMainWindow option;
    initStyleOption(&option);
    QPainter painter(this);
    style()->drawComplexControl(KORBStyle::KCC_MainWindow, &option, &painter, this);
}

void KMainWindow::resizeEvent(QResizeEvent* e)
{
    QWidget::resizeEvent(e);
    Q_EMIT sizeChange();
}

// --- KView ---

KView::KView(QWidget* parent)
    : QWidget(parent)
{
    if (KApplication* app = KApplication::instance())
        m_mainWindow = app->findRelativeMainWindow(this);
    if (m_mainWindow)
        m_shortcutsWrapper = new KShortcutsWrapper(this, m_mainWindow->commands());
}

KShortcuts* KView::shortcuts() const
{
    return m_shortcutsWrapper ? m_shortcutsWrapper->shortcuts() : nullptr;
}
