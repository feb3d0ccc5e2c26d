#include "kmdiarea.h"

#include <QCoreApplication>
#include <QHBoxLayout>
#include <QLabel>
#include <QMdiSubWindow>
#include <QMouseEvent>
#include <QPainter>
#include <QScrollBar>
#include <QStyleOptionTitleBar>
#include <QVBoxLayout>

#include "kabstractlistcommand.h"
#include "kapplication.h"
#include "kcommand.h"
#include "kdrawhelpfunc.h"
#include "kevent.h"
#include "kmainwindow.h"
#include "korbstyle.h"
#include "kshortcutswrapper.h"

namespace {

bool isStyle2013(const QWidget* widget)
{
    return widget->style()->styleHint(KORBStyle::KSH_StyleGeneration, nullptr, widget) == 2013;
}

// Copies the maximised state of states onto window (minimised and normal windows stay as
// they are).
void applyWindowStates(QMdiSubWindow* window, Qt::WindowStates states)
{
    if (window && (states & Qt::WindowMaximized) && !window->isMaximized())
        window->showMaximized();
}

} // namespace

// --- KSubWindow ---

KSubWindow::KSubWindow(QWidget* parent)
    : QWidget(parent)
{
    if (KApplication* app = KApplication::instance())
        m_mainWindow = app->findRelativeMainWindow(this);
    if (m_mainWindow)
        m_shortcutsWrapper = new KShortcutsWrapper(this, m_mainWindow->commands());
}

KShortcuts* KSubWindow::shortcuts() const
{
    return m_shortcutsWrapper ? m_shortcutsWrapper->shortcuts() : nullptr;
}

KMainWindow* KSubWindow::findRelativeMainWindow() const
{
    KApplication* app = KApplication::instance();
    return app ? app->findRelativeMainWindow(const_cast<KSubWindow*>(this)) : nullptr;
}

void KSubWindow::windowStateChanged(Qt::WindowStates oldState, Qt::WindowStates newState)
{
    const bool wasMax = oldState & Qt::WindowMaximized;
    const bool isMax = newState & Qt::WindowMaximized;
    if (wasMax == isMax)
        return;
    if (isMax)
        enterMaximized();
    else
        leaveMaximized();
}

// --- KMdiareaPrivate ---

KMdiareaPrivate::KMdiareaPrivate(QWidget* parent)
    : QMdiArea(parent)
{
}

// --- KNoTabPageWidget ---

KNoTabPageWidget::KNoTabPageWidget(KCommand* cmd, QWidget* parent)
    : KCommandWidgetBridge<QWidget>(cmd, parent, true)
{
    auto* outer = new QVBoxLayout(this);
    outer->addStretch(1);
    if (cmd && !cmd->text().isEmpty()) {
        auto* caption = new QLabel(cmd->text(), this);
        caption->setAlignment(Qt::AlignCenter);
        outer->addWidget(caption);
    }
    m_items = new QHBoxLayout;
    m_items->setSpacing(12);
    m_items->addStretch(1);
    m_items->addStretch(1);
    outer->addLayout(m_items);
    outer->addStretch(2);
    KCommandBridgeHelper::registerIdle(this);
}

void KNoTabPageWidget::onCommandConnected()
{
    if (auto* list = qobject_cast<KAbstractListCommand*>(command())) {
        connect(list, &KAbstractListCommand::subCommandInsert, this, &KNoTabPageWidget::onCommandInserted);
        connect(list, &KAbstractListCommand::subCommandRemove, this, &KNoTabPageWidget::onCommandRemoved);
    }
}

void KNoTabPageWidget::onCommandInserted(int index, KCommand* sub)
{
    QWidget* w = sub ? sub->requestWidget(this, 0) : nullptr;
    if (!w)
        return;
    index = qBound(0, index, m_itemWidgets.size());
    m_itemWidgets.insert(index, w);
    m_items->insertWidget(index + 1, w); // behind the leading stretch
}

void KNoTabPageWidget::onCommandRemoved(int index)
{
    if (index < 0 || index >= m_itemWidgets.size())
        return;
    QWidget* w = m_itemWidgets.takeAt(index);
    m_items->removeWidget(w);
    delete w;
}

bool KNoTabPageWidget::event(QEvent* e)
{
    if (handleCommandEvent(e))
        return true;
    return QWidget::event(e);
}

void KNoTabPageWidget::paintEvent(QPaintEvent*)
{
    const QColor background = KDrawHelpFunc::getColorFromTheme(QStringLiteral("KNoTabPageWidget"),
                                                               QStringLiteral("background"));
    if (background.isValid()) {
        QPainter p(this);
        p.fillRect(rect(), background);
    }
}

// --- KDocTabbarEx ---

KDocTabbarEx::KDocTabbarEx(QWidget* parent)
    : QWidget(parent)
{
    setAttribute(Qt::WA_TranslucentBackground);
    m_layout = new QHBoxLayout(this);
    m_layout->setSpacing(2);
    if (isStyle2013(this)) {
        m_layout->setContentsMargins(2, 0, 2, 0);
        setFixedHeight(26);
    } else {
        m_layout->setContentsMargins(2, 0, 2, 4);
        setFixedHeight(30);
    }
    m_tabbar = new KDocTabbar(this);
    m_layout->addWidget(m_tabbar, 1, Qt::AlignLeft);
    connect(m_tabbar, &KDocTabbar::currentSubWindowChanged, this, &KDocTabbarEx::currentSubWindowChanged);
    connect(m_tabbar, &KDocTabbar::subWindowRemoved, this, &KDocTabbarEx::subWindowRemoved);
    connect(m_tabbar, &KDocTabbar::rightClicked, this, &KDocTabbarEx::rightClicked);
    connect(m_tabbar, &KDocTabbar::tabRemoved, this, &KDocTabbarEx::tabRemoved);
    connect(m_tabbar, &KDocTabbar::doubleClicked, this, &KDocTabbarEx::doubleClicked);
}

void KDocTabbarEx::addSubWindow(QMdiSubWindow* subWindow, bool setCurrent)
{
    m_tabbar->addSubWindow(subWindow, setCurrent);
}

void KDocTabbarEx::insertSubWindow(int index, QMdiSubWindow* subWindow, bool setCurrent)
{
    m_tabbar->insertSubWindow(index, subWindow, setCurrent);
}

void KDocTabbarEx::removeSubWindow(QMdiSubWindow* subWindow)
{
    m_tabbar->removeSubWindow(subWindow);
}

void KDocTabbarEx::removeTab(QMdiSubWindow* subWindow)
{
    m_tabbar->removeTab(subWindow);
}

QMdiSubWindow* KDocTabbarEx::currentSubWindow() const
{
    return m_tabbar->currentSubWindow();
}

void KDocTabbarEx::setSubWindowVisible(QMdiSubWindow* subWindow, bool visible)
{
    m_tabbar->setTabVisible(subWindow, visible);
}

void KDocTabbarEx::activeNextTab()
{
    m_tabbar->activeNextTab(true);
}

void KDocTabbarEx::activePrevTab()
{
    m_tabbar->activePrevTab(true);
}

int KDocTabbarEx::count() const
{
    return m_tabbar->count();
}

int KDocTabbarEx::findSubWindow(QMdiSubWindow* subWindow) const
{
    return m_tabbar->findSubWindow(subWindow);
}

QMdiSubWindow* KDocTabbarEx::subWindowAt(int index) const
{
    return m_tabbar->subWindowAt(index);
}

KDocTab* KDocTabbarEx::tabAt(int index) const
{
    return m_tabbar->tabButton(index);
}

void KDocTabbarEx::setActiveSubWindow(QMdiSubWindow* subWindow)
{
    m_tabbar->setCurrentSubWindow(subWindow);
}

void KDocTabbarEx::addrbTabbarButton(KCommand* cmd)
{
    m_tabbar->setExtendButton(cmd);
}

void KDocTabbarEx::initStyleOption(KStyleOptionDocTabBar* option) const
{
    option->initFrom(this);
    option->tabCount = m_tabbar->count();
}

void KDocTabbarEx::paintEvent(QPaintEvent*)
{
    if (!KORBStyle::isFrameworkStyle(style()))
        return;
    KStyleOptionDocTabBar option;
    initStyleOption(&option);
    QPainter p(this);
    style()->drawComplexControl(KORBStyle::KCC_DocTabBar, &option, &p, this);
}

void KDocTabbarEx::mouseDoubleClickEvent(QMouseEvent* e)
{
    if (e->button() == Qt::LeftButton)
        Q_EMIT doubleClicked();
}

void KDocTabbarEx::mouseReleaseEvent(QMouseEvent* e)
{
    if (e->button() == Qt::RightButton)
        Q_EMIT rightClicked(-1);
}

void KDocTabbarEx::contextMenuEvent(QContextMenuEvent* e)
{
    e->accept();
}

// --- KMdiArea ---

KMdiArea::KMdiArea(QWidget* parent, bool hideTabbar)
    : QWidget(parent)
{
    m_tabbar = new KDocTabbarEx(this);
    connect(m_tabbar, &KDocTabbarEx::doubleClicked, this, &KMdiArea::doubleClicked);
    connect(m_tabbar, &KDocTabbarEx::rightClicked, this, &KMdiArea::tabBarRightClicked);

    m_area = new KMdiareaPrivate(this);
    // The area behaves as active from the start, also before its window first is.
    QEvent activate(QEvent::WindowActivate);
    QCoreApplication::sendEvent(m_area, &activate);
    _applyBackground();
    m_area->setHorizontalScrollBarPolicy(Qt::ScrollBarAsNeeded);
    m_area->setVerticalScrollBarPolicy(Qt::ScrollBarAsNeeded);
    m_area->horizontalScrollBar()->setObjectName(QStringLiteral("KMdiArea-deep"));
    m_area->verticalScrollBar()->setObjectName(QStringLiteral("KMdiArea-deep"));

    m_layout = new QVBoxLayout(this);
    m_layout->setContentsMargins(0, 0, 0, 0);
    m_layout->setSpacing(0);
    m_layout->addWidget(m_tabbar);
    if (hideTabbar) {
        m_tabbar->hide();
        m_layout->removeWidget(m_tabbar);
    }
    m_areaLayout = new QHBoxLayout;
    m_areaLayout->setContentsMargins(0, 0, 0, 0);
    m_areaLayout->setSpacing(0);
    m_areaLayout->addWidget(m_area);
    m_layout->addLayout(m_areaLayout, 1);

    m_area->installEventFilter(this);
    m_area->viewport()->installEventFilter(this);

    connect(m_area, &QMdiArea::subWindowActivated, this, &KMdiArea::syncSubWindow);
    connect(m_tabbar, &KDocTabbarEx::currentSubWindowChanged, this, &KMdiArea::syncSubWindow);
    connect(m_tabbar, &KDocTabbarEx::subWindowRemoved, this, &KMdiArea::closeSubWindow);

    if (KApplication* app = KApplication::instance())
        app->addThemeChangeWidget(this);
}

KMdiArea::~KMdiArea()
{
    // The sub-windows die with the inner area, after this object's own part: nothing of
    // the area may answer their destruction any more.
    for (QObject* object : std::as_const(m_subWindowObjects))
        disconnect(object, nullptr, this, nullptr);
    m_area->removeEventFilter(this);
    m_area->viewport()->removeEventFilter(this);
    for (QMdiSubWindow* w : m_area->subWindowList())
        w->removeEventFilter(this);
    disconnect(m_area, nullptr, this, nullptr);
    disconnect(m_tabbar, nullptr, this, nullptr);
}

void KMdiArea::_applyBackground()
{
    const QColor color = KDrawHelpFunc::getColorFromTheme(QStringLiteral("QMdiaArea"), QStringLiteral("background"));
    if (color.isValid())
        m_area->setBackground(QBrush(color));
}

bool KMdiArea::event(QEvent* e)
{
    if (e->type() == QEvent::Type(KEvent::ThemeChange))
        _applyBackground();
    return QWidget::event(e);
}

Qt::WindowStates KMdiArea::_getWindowStates(QMdiArea* area)
{
    if (QMdiSubWindow* active = area->currentSubWindow())
        return active->windowState();
    const QList<QMdiSubWindow*> list = area->subWindowList();
    return list.isEmpty() ? Qt::WindowNoState : list.first()->windowState();
}

QMdiSubWindow* KMdiArea::addSubWindow(QWidget* widget, Qt::WindowFlags flags)
{
    if (!widget)
        return nullptr;
    if (isRelativeSubWindow(widget))
        m_relativeSubWindow = nullptr;
    const Qt::WindowStates states = _getWindowStates(m_area);
    // Re-applying an arrangement moves every window: paint once, at the end. Switching
    // updates off and on walks all the area's widgets, so it is only done when needed.
    const bool freeze = m_arrangement != RearrangeNone && !(states & Qt::WindowMaximized) && updatesEnabled();
    if (freeze)
        setUpdatesEnabled(false);
    QMdiSubWindow* subWindow = m_area->addSubWindow(widget, flags);
    // Keeps QMdiArea from carrying the maximised state through every other window.
    m_area->QMdiArea::setActiveSubWindow(nullptr);
    applyWindowStates(subWindow, states);

    m_subWindowObjects.insert(subWindow, subWindow);
    connect(subWindow, &QObject::destroyed, this, &KMdiArea::onSubWindowDestroyed);
    connect(subWindow, &QMdiSubWindow::windowStateChanged, this, &KMdiArea::windowStateChanged);
    auto* document = qobject_cast<KSubWindow*>(subWindow->widget());
    if (document) {
        connect(subWindow, &QMdiSubWindow::windowStateChanged, document, &KSubWindow::windowStateChanged);
        document->windowStateChanged(Qt::WindowMaximized, Qt::WindowNoState);
    }
    const bool first = m_tabbar->count() == 0;
    m_tabbar->addSubWindow(subWindow, true);
    if (document)
        document->windowAdded();
    setNoTabPageWidgetVisible(false);
    subWindow->installEventFilter(this);
    if (!subWindow->isVisible() && isVisible())
        subWindow->show();
    setActiveSubWindow(subWindow);
    initSubWindowSize(subWindow);
    rearrangeSubWindow(true);
    Q_EMIT statusChanged(this);
    if (first)
        Q_EMIT firstSubWindowAdded();
    if (freeze)
        setUpdatesEnabled(true);
    return subWindow;
}

void KMdiArea::insertSubWindowToTabbar(QMdiSubWindow* subWindow, int index, bool current)
{
    if (!subWindow || m_tabbar->findSubWindow(subWindow) >= 0)
        return;
    m_tabbar->insertSubWindow(index, subWindow, current);
    Q_EMIT statusChanged(this);
    if (m_tabbar->count() == 1) {
        setNoTabPageWidgetVisible(false);
        Q_EMIT firstSubWindowAdded();
    }
}

void KMdiArea::removeSubWindowFromTabbar(QMdiSubWindow* subWindow)
{
    if (!subWindow)
        return;
    const bool hadTab = m_tabbar->findSubWindow(subWindow) >= 0;
    const bool wasMaximized = subWindow->isMaximized();
    m_tabbar->removeTab(subWindow);
    subWindow->hide();
    if (!currentSubWindow() && wasMaximized) {
        for (QMdiSubWindow* w : m_area->subWindowList(QMdiArea::ActivationHistoryOrder)) {
            if (w != subWindow && !w->isHidden()) {
                setActiveSubWindow(w);
                break;
            }
        }
    }
    if (!hasVisibleSubWindow())
        setNoTabPageWidgetVisible(true);
    if (hadTab && m_tabbar->count() == 0) {
        cancelCompareView();
        Q_EMIT allSubWindowClosed();
    }
}

void KMdiArea::removeSubWindow(QWidget* widget, bool deleteIt)
{
    auto* subWindow = qobject_cast<QMdiSubWindow*>(widget);
    if (!subWindow && widget)
        subWindow = qobject_cast<QMdiSubWindow*>(widget->parentWidget());
    const QList<QMdiSubWindow*> list = m_area->subWindowList();
    if (!subWindow || (!list.contains(subWindow) && m_tabbar->findSubWindow(subWindow) < 0))
        return;
    if (deleteIt)
        m_relativeSubWindow = nullptr;
    subWindow->removeEventFilter(this);
    if (subWindow->widget())
        subWindow->widget()->removeEventFilter(this);
    m_subWindowObjects.remove(subWindow);
    disconnect(subWindow, &QObject::destroyed, this, &KMdiArea::onSubWindowDestroyed);

    removeSubWindowFromTabbar(subWindow);
    if (list.contains(subWindow)) {
        const Qt::WindowStates states = _getWindowStates(m_area);
        m_area->QMdiArea::removeSubWindow(subWindow);
        applyWindowStates(m_area->currentSubWindow(), states);
        rearrangeSubWindow(true);
        if (m_area->currentSubWindow() == subWindow)
            m_area->QMdiArea::setActiveSubWindow(nullptr);
    }
    Q_EMIT statusChanged(this);
    Q_EMIT subWindowRemoved(subWindow);
}

void KMdiArea::onSubWindowDestroyed(QObject* object)
{
    // The window is half destroyed: only addresses are compared from here on. The tab bar
    // drops its tab on the same signal.
    QMdiSubWindow* subWindow = m_subWindowObjects.take(object);
    if (!subWindow)
        return;
    m_tabbar->removeTab(subWindow);
    if (!hasVisibleSubWindow())
        setNoTabPageWidgetVisible(true);
    if (m_tabbar->count() == 0) {
        cancelCompareView();
        Q_EMIT allSubWindowClosed();
    }
    Q_EMIT statusChanged(this);
    Q_EMIT subWindowRemoved(subWindow);
}

void KMdiArea::closeSubWindow(QMdiSubWindow* subWindow)
{
    if (!subWindow)
        return;
    const QPointer<QMdiSubWindow> guard(subWindow);
    // A document that refuses (unsaved changes kept) keeps its tab.
    if (subWindow->close() && guard && m_tabbar->findSubWindow(subWindow) >= 0)
        removeSubWindowFromTabbar(subWindow);
}

void KMdiArea::closeAllSubWindows()
{
    const QList<QMdiSubWindow*> list = m_area->subWindowList();
    for (QMdiSubWindow* w : list) {
        const QPointer<QMdiSubWindow> guard(w);
        if (guard && guard->close() && guard && m_tabbar->findSubWindow(w) >= 0)
            removeSubWindowFromTabbar(w);
    }
    if (m_relativeSubWindow)
        m_relativeSubWindow->close();
}

void KMdiArea::closeOtherSubWindows()
{
    QMdiSubWindow* current = currentSubWindow();
    const QList<QMdiSubWindow*> list = m_area->subWindowList();
    for (QMdiSubWindow* w : list) {
        if (w == current || w == m_relativeSubWindow)
            continue;
        const QPointer<QMdiSubWindow> guard(w);
        if (guard && guard->close() && guard && m_tabbar->findSubWindow(w) >= 0)
            removeSubWindowFromTabbar(w);
    }
}

QMdiSubWindow* KMdiArea::currentSubWindow() const
{
    if (QMdiSubWindow* w = m_area->currentSubWindow())
        return w;
    if (QMdiSubWindow* w = m_tabbar->currentSubWindow())
        return w;
    return m_relativeSubWindow.data();
}

int KMdiArea::findSubWindow(QMdiSubWindow* subWindow) const
{
    return m_tabbar->findSubWindow(subWindow);
}

QList<QMdiSubWindow*> KMdiArea::subWindowList() const
{
    return m_area->subWindowList();
}

void KMdiArea::setSubWinVisible(QMdiSubWindow* subWindow, bool visible)
{
    if (!subWindow)
        return;
    m_tabbar->setSubWindowVisible(subWindow, visible);
    subWindow->setVisible(visible);
}

bool KMdiArea::isDocTabbarVisible() const
{
    return !m_tabbar->isHidden() && m_layout->indexOf(m_tabbar) >= 0;
}

void KMdiArea::setDocTabbarVisible(bool visible)
{
    if (visible == isDocTabbarVisible())
        return;
    if (visible) {
        m_layout->insertWidget(0, m_tabbar);
        m_tabbar->show();
    } else {
        m_tabbar->hide();
        m_layout->removeWidget(m_tabbar);
    }
}

void KMdiArea::addNoTabPageWidget(KCommand* cmd)
{
    removeNoTabPageWidget();
    if (!cmd)
        return;
    m_noTabPage = new KNoTabPageWidget(cmd, this);
    m_areaLayout->addWidget(m_noTabPage);
    m_noTabPage->ensureConnectCommand();
    m_noTabPage->hide();
    setNoTabPageWidgetVisible(!hasVisibleSubWindow());
}

void KMdiArea::removeNoTabPageWidget()
{
    delete m_noTabPage.data();
    m_area->show();
}

void KMdiArea::setNoTabPageWidgetVisible(bool visible)
{
    bool show = !m_tabbar->isHidden();
    if (KMainWindow* window = KTik::findParentByType<KMainWindow>(this)) {
        const bool special = window->isVisible() || window->isEmbedding() || window->isPrintPreview();
        if (!special || window->isFullScreen())
            show = true;
    }
    if (!m_noTabPage)
        return;
    if (visible) {
        m_area->hide();
        m_noTabPage->setVisible(show);
    } else {
        m_noTabPage->hide();
        m_area->show();
    }
}

bool KMdiArea::hasVisibleSubWindow() const
{
    for (QMdiSubWindow* w : m_area->subWindowList()) {
        if (!w->isHidden())
            return true;
    }
    return false;
}

void KMdiArea::setRelativeSubWindow(QMdiSubWindow* subWindow)
{
    m_relativeSubWindow = subWindow;
}

bool KMdiArea::isRelativeSubWindow(QWidget* widget) const
{
    if (!widget || !m_relativeSubWindow)
        return false;
    return widget == m_relativeSubWindow || widget == m_relativeSubWindow->widget();
}

bool KMdiArea::hasCommonAncestorWithRelativeSubWindow(QWidget* widget) const
{
    if (!widget || !m_relativeSubWindow)
        return false;
    return m_relativeSubWindow == widget || m_relativeSubWindow->isAncestorOf(widget);
}

void KMdiArea::showNormalWithoutRearrange(QWidget* widget)
{
    if (!widget)
        return;
    const bool arranging = m_arranging;
    m_arranging = true;
    widget->showNormal();
    m_arranging = arranging;
}

void KMdiArea::addrbTabbarButton(KCommand* cmd)
{
    m_tabbar->addrbTabbarButton(cmd);
}

void KMdiArea::setActiveSubWindow(QMdiSubWindow* subWindow)
{
    if (subWindow != m_area->currentSubWindow())
        Q_EMIT curSubWindowChange();
    m_area->QMdiArea::setActiveSubWindow(subWindow);
    Q_EMIT statusChanged(this);
    m_tabbar->tabBar()->update();
}

void KMdiArea::syncSubWindow(QMdiSubWindow* subWindow)
{
    if (!subWindow)
        return;
    if (subWindow != m_area->currentSubWindow()) {
        setActiveSubWindow(subWindow);
        Q_EMIT statusChanged(this);
    }
    if (subWindow != m_tabbar->currentSubWindow() && m_tabbar->findSubWindow(subWindow) >= 0) {
        setActiveSubWindow(subWindow);
        m_tabbar->setActiveSubWindow(subWindow);
        Q_EMIT statusChanged(this);
    }
}

void KMdiArea::activateNextSubWindow()
{
    m_tabbar->activeNextTab();
}

void KMdiArea::activatePreviousSubWindow()
{
    m_tabbar->activePrevTab();
}

void KMdiArea::windowStateChanged(Qt::WindowStates oldState, Qt::WindowStates newState)
{
    // A window leaving the maximised state takes its place in the arrangement again.
    if ((oldState & Qt::WindowMaximized) && !(newState & Qt::WindowMaximized))
        rearrangeSubWindow(false);
    if ((oldState ^ newState) & (Qt::WindowMaximized | Qt::WindowMinimized))
        Q_EMIT statusChanged(this);
}

// --- arrangements ---

void KMdiArea::rearrangeSubWindow(bool activate)
{
    if (m_arranging)
        return;
    QMdiSubWindow* current = currentSubWindow();
    if (!current || current->isMaximized())
        return;
    switch (m_arrangement) {
    case HorzTile:
        horzTileSubWindows(false);
        return;
    case VertTile:
        vertTileSubWindows(false);
        return;
    case Cascade:
        cascadeSubWindows(false);
        return;
    default:
        break;
    }
    if (m_arrangement != CompareView && isCompareView(current))
        return;
    if (!m_compareLeft || !m_compareRight)
        return;
    rearrangeCompareViews(activate);
}

bool KMdiArea::isCompareView(QMdiSubWindow* subWindow) const
{
    return subWindow && (subWindow == m_compareLeft || subWindow == m_compareRight);
}

void KMdiArea::initRearrangeSubWindows(int mode)
{
    Q_UNUSED(mode);
    m_arranged.clear();
    QMdiSubWindow* current = currentSubWindow();
    for (QMdiSubWindow* w : m_area->subWindowList(QMdiArea::CreationOrder)) {
        if (w != current && !w->isHidden() && !w->isMinimized())
            m_arranged.append(w);
    }
    // The current window goes last, so that it ends on top.
    if (current && !current->isHidden() && !current->isMinimized() && m_area->subWindowList().contains(current))
        m_arranged.append(current);
}

QList<QMdiSubWindow*> KMdiArea::_arrangedWindows()
{
    // Windows that went away or were hidden leave the arrangement; new ones join at its end.
    QList<QMdiSubWindow*> result;
    QList<QPointer<QMdiSubWindow>> kept;
    const QList<QMdiSubWindow*> all = m_area->subWindowList(QMdiArea::CreationOrder);
    for (const QPointer<QMdiSubWindow>& w : std::as_const(m_arranged)) {
        if (w && all.contains(w.data()) && !w->isHidden() && !w->isMinimized()) {
            kept.append(w);
            result.append(w.data());
        }
    }
    for (QMdiSubWindow* w : all) {
        if (!result.contains(w) && !w->isHidden() && !w->isMinimized()) {
            kept.append(w);
            result.append(w);
        }
    }
    m_arranged = kept;
    return result;
}

void KMdiArea::_calcRowCol(int n, int& rows, int& columns)
{
    rows = 0;
    columns = 0;
    if (n <= 0)
        return;
    // Subtracting the odd numbers 1, 3, 5, ... counts the side of the largest square.
    int remaining = n;
    int r = 0;
    while (remaining >= 2 * r + 1) {
        remaining -= 2 * r + 1;
        ++r;
    }
    rows = r;
    columns = n / r;
}

void KMdiArea::_setGeometry(QMdiSubWindow* window, const QRect& rect)
{
    if (window->isMaximized())
        showNormalWithoutRearrange(window);
    const bool arranging = m_arranging;
    m_arranging = true;
    window->setGeometry(rect);
    m_arranging = arranging;
}

void KMdiArea::_tile(bool vertical)
{
    const QList<QMdiSubWindow*> windows = _arrangedWindows();
    if (windows.isEmpty())
        return;
    int rows = 0;
    int columns = 0;
    _calcRowCol(windows.size(), rows, columns);
    int extra = windows.size() % columns;
    const QSize area = m_area->viewport()->size();
    // Vertical tiles stand in columns; horizontal ones lie in rows (the axes swapped).
    const int along = vertical ? area.width() : area.height();
    const int across = vertical ? area.height() : area.width();
    const int lineSize = along / columns;
    int next = 0;
    for (int c = 0; c < columns; ++c) {
        const int count = windows.size() / columns + (extra > 0 ? 1 : 0);
        if (extra > 0)
            --extra;
        const int cell = across / count;
        for (int i = 0; i < count && next < windows.size(); ++i, ++next) {
            const QRect r = vertical ? QRect(c * lineSize, i * cell, lineSize, cell)
                                     : QRect(i * cell, c * lineSize, cell, lineSize);
            _setGeometry(windows.at(next), r);
        }
    }
}

void KMdiArea::horzTileSubWindows(bool init)
{
    if (init)
        initRearrangeSubWindows(HorzTile);
    if (_arrangedWindows().isEmpty())
        return;
    _tile(false);
    m_arrangement = HorzTile;
    m_savedArrangement = HorzTile;
}

void KMdiArea::vertTileSubWindows(bool init)
{
    if (init)
        initRearrangeSubWindows(VertTile);
    if (_arrangedWindows().isEmpty())
        return;
    _tile(true);
    m_arrangement = VertTile;
    m_savedArrangement = VertTile;
}

int KMdiArea::_cascadeStep() const
{
    QStyleOptionTitleBar option;
    option.initFrom(m_area);
    return qMax(8, m_area->style()->pixelMetric(QStyle::PM_TitleBarHeight, &option, m_area));
}

QSize KMdiArea::_cascadeSize() const
{
    const QSize area = m_area->viewport()->size();
    return QSize(qMax(area.width() * 2 / 3, qMin(area.width(), 200)),
                 qMax(area.height() * 2 / 3, qMin(area.height(), 150)));
}

void KMdiArea::cascadeSubWindows(bool init)
{
    if (init)
        initRearrangeSubWindows(Cascade);
    const QList<QMdiSubWindow*> windows = _arrangedWindows();
    if (windows.isEmpty())
        return;
    const QSize area = m_area->viewport()->size();
    const QSize size = _cascadeSize();
    const int step = _cascadeStep();
    const int fit = 1 + qMax(0, qMin(area.width() - size.width(), area.height() - size.height()) / step);
    for (int i = 0; i < windows.size(); ++i) {
        QMdiSubWindow* w = windows.at(i);
        if (init)
            w->raise();
        const int offset = (i % fit) * step;
        _setGeometry(w, QRect(QPoint(offset, offset), size));
    }
    m_arrangement = Cascade;
    m_savedArrangement = Cascade;
}

void KMdiArea::maxSizeSubWindows()
{
    // Maximised documents are arranged no more: a later resize must not tile them again.
    m_arrangement = RearrangeNone;
    for (QMdiSubWindow* w : m_area->subWindowList()) {
        if (!w->isHidden())
            w->showMaximized();
    }
}

void KMdiArea::rearrangeCompareViews(QMdiSubWindow* left, QMdiSubWindow* right)
{
    if (!left || !right || left == right)
        return;
    m_compareLeft = left;
    m_compareRight = right;
    rearrangeCompareViews(true);
}

void KMdiArea::rearrangeCompareViews(bool activate)
{
    if (!m_compareLeft || !m_compareRight)
        return;
    const QSize area = m_area->viewport()->size();
    QRect first;
    QRect second;
    if (m_compareVertical) {
        first = QRect(0, 0, area.width(), area.height() / 2);
        second = QRect(0, first.height(), area.width(), area.height() - first.height());
    } else {
        first = QRect(0, 0, area.width() / 2, area.height());
        second = QRect(first.width(), 0, area.width() - first.width(), area.height());
    }
    m_arrangement = CompareView;
    _setGeometry(m_compareLeft, first);
    _setGeometry(m_compareRight, second);
    m_compareLeft->raise();
    m_compareRight->raise();
    if (activate && !isCompareView(m_area->currentSubWindow()))
        setActiveSubWindow(m_compareLeft);
}

void KMdiArea::cancelCompareView()
{
    m_compareLeft = nullptr;
    m_compareRight = nullptr;
    m_compareVertical = false;
    if (m_savedArrangement != RearrangeNone && m_savedArrangement != CompareView) {
        m_arrangement = m_savedArrangement;
        rearrangeSubWindow(false);
    } else {
        m_arrangement = RearrangeNone;
    }
}

void KMdiArea::initSubWindowSize(QMdiSubWindow* subWindow)
{
    if (!subWindow || subWindow->isMaximized())
        return;
    if (m_arrangement != RearrangeNone && m_arrangement != CompareView)
        return;
    const QSize area = m_area->viewport()->size();
    const QSize size = _cascadeSize();
    const int step = _cascadeStep();
    const int fit = 1 + qMax(0, qMin(area.width() - size.width(), area.height() - size.height()) / step);
    const int offset = (qMax(0, m_area->subWindowList().size() - 1) % fit) * step;
    _setGeometry(subWindow, QRect(QPoint(offset, offset), size));
}

// --- events ---

bool KMdiArea::eventFilter(QObject* object, QEvent* event)
{
    QWidget* viewport = m_area->viewport();
    auto* subWindow = object != viewport && object != m_area ? qobject_cast<QMdiSubWindow*>(object) : nullptr;
    switch (event->type()) {
    case QEvent::MouseButtonDblClick:
        if (object == viewport && static_cast<QMouseEvent*>(event)->button() == Qt::LeftButton)
            Q_EMIT doubleClicked();
        break;
    case QEvent::Move:
    case QEvent::Resize:
        if (object == viewport) {
            rearrangeSubWindow(false);
        } else if (subWindow) {
            if (auto* document = qobject_cast<KSubWindow*>(subWindow->widget())) {
                document->synPositionToCore();
                document->synSizeToCore();
            }
            // Moving or sizing a window by hand ends the arrangement.
            if (!m_arranging && subWindow->isVisible() && !subWindow->isMaximized() && !subWindow->isMinimized()
                && m_arrangement != CompareView)
                m_arrangement = RearrangeNone;
        }
        break;
    case QEvent::WindowStateChange:
        // Maximised, restored, minimised: whatever shows the current document's state follows.
        if (subWindow)
            Q_EMIT statusChanged(this);
        break;
    case QEvent::ShowToParent:
    case QEvent::HideToParent:
        if (subWindow) {
            rearrangeSubWindow(false);
            Q_EMIT statusChanged(this);
            setNoTabPageWidgetVisible(!hasVisibleSubWindow());
        }
        break;
    case QEvent::ChildRemoved:
        if (object == viewport) {
            // A window being destroyed was handled on its destroyed() signal; what is found
            // here was taken out alive (reparented).
            QObject* child = static_cast<QChildEvent*>(event)->child();
            if (m_subWindowObjects.contains(child))
                removeSubWindow(m_subWindowObjects.value(child), false);
        }
        break;
    default:
        break;
    }
    return QWidget::eventFilter(object, event);
}

void KMdiArea::resizeEvent(QResizeEvent* e)
{
    QRect r = geometry();
    Q_EMIT resizeMdiArea(&r);
    QWidget::resizeEvent(e);
}
