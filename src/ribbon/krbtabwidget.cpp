#include "krbtabwidget.h"

#include <QApplication>
#include <QKeyEvent>
#include <QStackedWidget>
#include <QVBoxLayout>

#include <kabstractlistcommand.h>
#include <kapplication.h>
#include <kevent.h>
#include <khotkeyassistant.h>
#include <khotkeyevent.h>
#include <kpopupwidget.h>
#include <krbcategory.h>
#include <krbtabbar.h>
#include <krbtabwidgetcommand.h>

KRbTabWidget::KRbTabWidget(KRbTabWidgetCommand* cmd, QWidget* parent)
    : KCommandWidgetBridge<QWidget>(cmd, parent, true)
    , m_popupPanel(new KPopupWidget(this, Qt::Popup))
    , m_stack(new QStackedWidget(this))
    , m_tabBar(new KRbTabBar(cmd, this))
    , m_layout(new QVBoxLayout(this))
{
    setObjectName(QStringLiteral("KRbTabWidget"));
    m_popupPanel->setPopupStyle(m_popupPanel->popupStyle() & ~KPopupWidget::StyleBorder);
    m_popupPanel->setSizeGripType(KSizeGrip::NoGrip);
    m_stack->hide();
    if (cmd) {
        m_logicGroupTitleVisible = cmd->titleVisible();
        m_logicGroupTriggerable = cmd->arrowVisible();
    }
    m_layout->setSpacing(0);
    m_layout->setContentsMargins(0, 0, 0, 0);
    m_layout->addWidget(m_tabBar);
    setSizePolicy(QSizePolicy::Preferred, QSizePolicy::Fixed);

    connect(m_tabBar, &KRbTabBar::currentIdxChanged, this, &KRbTabWidget::currentCategoryChanged);
    connect(m_tabBar, &KRbTabBar::statusChanged, this, &KRbTabWidget::barStatusChanged);
    connect(m_popupPanel, &KPopupWidget::aboutToHide, this, &KRbTabWidget::popupPanelHided);
}

KRbTabWidget::~KRbTabWidget()
{
    // The panel is a top-level child: it goes first, so that its hiding finds a whole ribbon.
    disconnect(m_popupPanel, nullptr, this, nullptr);
    delete m_popupPanel;
}

KRbTabWidgetCommand* KRbTabWidget::tabWidgetCommand() const
{
    return qobject_cast<KRbTabWidgetCommand*>(command());
}

void KRbTabWidget::onCommandConnected()
{
    // Pages come when their tab is current, so an insertion makes nothing here.
    if (auto* list = qobject_cast<KAbstractListCommand*>(command()))
        connect(list, &KAbstractListCommand::subCommandRemove, this, &KRbTabWidget::onCommandRemoved);
}

void KRbTabWidget::onCommandRemoved(int index)
{
    KCommand* list = command();
    KCommand* cmd = list ? list->subCommand(index) : nullptr;
    for (int i = 0; i < m_pages.size(); ++i) {
        if (m_pages.at(i).first != cmd)
            continue;
        if (QWidget* page = m_pages.at(i).second.data()) {
            m_stack->removeWidget(page);
            page->deleteLater();
        }
        m_pages.removeAt(i);
        return;
    }
}

QWidget* KRbTabWidget::pageOf(KCommand* cmd) const
{
    for (const auto& page : m_pages) {
        if (page.first == cmd)
            return page.second.data();
    }
    return nullptr;
}

QWidget* KRbTabWidget::currentPage() const
{
    KCommand* list = command();
    const int index = currentIndex();
    return list && index >= 0 ? pageOf(list->subCommand(index)) : nullptr;
}

QWidget* KRbTabWidget::createTabContent(KCommand* cmd)
{
    if (cmd->isCustomWidget())
        return cmd->requestWidget(this, KCommand::InlinePurpose);
    auto* category = new KRbCategory(cmd, this);
    category->setTitleVisible(m_logicGroupTitleVisible);
    category->setTriggerAble(m_logicGroupTriggerable);
    return category;
}

void KRbTabWidget::currentCategoryChanged()
{
    KCommand* list = command();
    const int index = m_tabBar->currentTabIdx();
    KCommand* cmd = list && index >= 0 ? list->subCommand(index) : nullptr;
    // A collapsed ribbon shows no page, so it makes none: the page comes when it shows.
    if (!cmd || status() == KRbSubTabBar::Collapsed)
        return;
    QWidget* page = pageOf(cmd);
    if (!page) {
        page = createTabContent(cmd);
        if (!page)
            return;
        for (auto& entry : m_pages) {
            if (entry.first == cmd) {
                entry.second = page;
                break;
            }
        }
        if (!pageOf(cmd))
            m_pages.append(qMakePair(cmd, QPointer<QWidget>(page)));
        m_stack->addWidget(page);
    }
    m_stack->setCurrentWidget(page);
    Q_EMIT categoryChanged();
    if (m_popupPending)
        showPopupPanel();
    // A new tab clears the key tips of the window.
    if (KApplication* app = KApplication::instance()) {
        QWidget* window = app->currentMainWindow();
        if (window && window->metaObject()->indexOfMethod("hideHotKey()") >= 0)
            QMetaObject::invokeMethod(window, "hideHotKey");
    }
}

int KRbTabWidget::currentIndex() const
{
    return m_tabBar->currentTabIdx();
}

KRbSubTabBar::SubTabBarStatus KRbTabWidget::status() const
{
    return m_tabBar->status();
}

void KRbTabWidget::setStatus(KRbSubTabBar::SubTabBarStatus status, bool byUser)
{
    m_tabBar->setStatus(status, byUser);
}

void KRbTabWidget::barStatusChanged(bool byUser)
{
    const KRbSubTabBar::SubTabBarStatus current = status();
    m_popupPending = false;
    if (current == KRbSubTabBar::Expanded && !m_stack->currentWidget())
        currentCategoryChanged(); // the page of the current tab, now that it shows
    switch (current) {
    case KRbSubTabBar::Expanded:
        if (m_popupPanel->contentWidget() == m_stack)
            m_popupPanel->setContentWidget(nullptr);
        m_popupPanel->hide();
        m_stack->setParent(this);
        m_stack->show();
        m_layout->addWidget(m_stack);
        break;
    case KRbSubTabBar::Popup:
        m_popupPending = true;
        QMetaObject::invokeMethod(this, &KRbTabWidget::showPopupPanel, Qt::QueuedConnection);
        break;
    default:
        m_popupPanel->hide();
        m_stack->hide();
        break;
    }
    updateGeometry();
    Q_EMIT statusChanged(byUser);
}

void KRbTabWidget::showPopupPanel()
{
    if (!m_popupPending || status() != KRbSubTabBar::Popup)
        return;
    m_popupPending = false;
    KCommand* list = command();
    KCommand* cmd = list && currentIndex() >= 0 ? list->subCommand(currentIndex()) : nullptr;
    if (!m_stack->currentWidget() || m_stack->currentWidget() != pageOf(cmd))
        currentCategoryChanged();
    m_layout->removeWidget(m_stack);
    m_stack->show();
    m_popupPanel->setContentWidget(m_stack);
    const QRect global = KPopupWidget::getWidgetGlobalRect(this);
    const QRect screen = KPopupWidget::getAvailScreenRect(global.topLeft());
    QRect panel;
    panel.setLeft(global.left());
    panel.setTop(global.bottom() + 1);
    panel.setRight(qMin(global.left() + global.width() - 1, screen.right()));
    panel.setHeight(qMax(m_stack->height(), m_stack->sizeHint().height()));
    m_popupPanel->clearSizeAttitude();
    m_popupPanel->show(m_tabBar, panel);
}

void KRbTabWidget::popupPanelHided()
{
    if (status() != KRbSubTabBar::Expanded)
        setStatus(KRbSubTabBar::Collapsed, true);
}

void KRbTabWidget::setCurrentItem(int index)
{
    if (index == -1) {
        setStatus(KRbSubTabBar::Collapsed, true);
        return;
    }
    KCommand* list = command();
    if (!list || index < 0 || index >= list->count())
        return;
    setStatus(KRbSubTabBar::Expanded, true);
    m_tabBar->setCurrentTabIdx(index);
}

void KRbTabWidget::setCurrentItemByContextName(const QString& name)
{
    if (!name.isEmpty())
        m_tabBar->setCurrentTabByContext(name);
}

void KRbTabWidget::setSingleLine(bool singleLine)
{
    m_tabBar->setSingleLine(singleLine);
}

bool KRbTabWidget::isSingleLine() const
{
    return m_tabBar->isSingleLine();
}

void KRbTabWidget::setTabbarVisible(bool visible)
{
    m_stack->setVisible(visible);
    updateGeometry();
}

bool KRbTabWidget::isTabbarVisible() const
{
    return m_stack->isVisibleTo(this);
}

void KRbTabWidget::setTitleMode(bool titleMode)
{
    m_titleMode = titleMode;
    m_tabBar->setTitleMode(titleMode);
}

int KRbTabWidget::titleHeight() const
{
    return m_tabBar->height();
}

int KRbTabWidget::tipHeight() const
{
    if (status() == KRbSubTabBar::Collapsed)
        return m_tabBar->height();
    return m_tabBar->height() + m_stack->height();
}

bool KRbTabWidget::isAloneMode() const
{
    return m_tabBar->isAloneMode();
}

void KRbTabWidget::setDisableRightCorner()
{
    m_tabBar->setDisableRightCorner();
}

void KRbTabWidget::setLogicGroupTriggerable(bool triggerable)
{
    m_logicGroupTriggerable = triggerable;
    for (const auto& page : m_pages) {
        if (auto* category = qobject_cast<KRbCategory*>(page.second.data()))
            category->setTriggerAble(triggerable);
    }
}

void KRbTabWidget::setLogicGroupTitleVisible(bool visible)
{
    m_logicGroupTitleVisible = visible;
    for (const auto& page : m_pages) {
        if (auto* category = qobject_cast<KRbCategory*>(page.second.data()))
            category->setTitleVisible(visible);
    }
}

void KRbTabWidget::onAeroEffectChanged(bool enable)
{
    m_tabBar->onAeroEffectChanged(enable);
}

bool KRbTabWidget::event(QEvent* e)
{
    if (int(e->type()) == KEvent::HotKeyCollect) {
        QCoreApplication::sendEvent(m_tabBar, e);
        return true;
    }
    if (int(e->type()) == KEvent::HotKeyTrigger) {
        _hotKeyTrigger(static_cast<KHotKeyTriggerEvent*>(e));
        return true;
    }
    if (e->type() == QEvent::KeyPress) {
        const int key = static_cast<QKeyEvent*>(e)->key();
        if (key == Qt::Key_Tab || key == Qt::Key_Backtab) {
            e->accept();
            return true;
        }
    }
    return KCommandWidgetBridge<QWidget>::event(e);
}

bool KRbTabWidget::focusNextPrevChild(bool next)
{
    const QList<QWidget*> children = findChildren<QWidget*>();
    const int count = children.size();
    const int from = children.indexOf(QApplication::focusWidget());
    const int step = next ? 1 : -1;
    for (int i = from + step; i >= 0 && i < count; i += step) {
        QWidget* w = children.at(i);
        if ((w->focusPolicy() & Qt::TabFocus) == Qt::TabFocus && !w->focusProxy() && w->isVisibleTo(this)
            && w->isEnabled()) {
            w->setFocus(next ? Qt::TabFocusReason : Qt::BacktabFocusReason);
            return true;
        }
    }
    // Past the last control the focus goes back to the document.
    if (KApplication* app = KApplication::instance())
        app->focusInCurrentView();
    return true;
}

// --- key tips ---

void KRbTabWidget::_hotKeyTrigger(KHotKeyTriggerEvent* e)
{
    if (e->result != 1)
        return;
    const QString tag = e->message ? e->message->tag() : QString();
    if (tag == KHotKeyMarker::fileButton() || tag == KHotKeyMarker::titleBar()) {
        QCoreApplication::sendEvent(m_tabBar, e);
        return;
    }
    // A folded ribbon's panel comes up later by itself; the next level needs it now.
    if (m_popupPending)
        showPopupPanel();
    if (!m_stack->isVisible() && !m_popupPanel->isVisible())
        return;
    if (QWidget* page = currentPage()) {
        // A page made by this very trigger has not been laid out yet: its controls take their
        // places first, or they would have no labels, or labels in the wrong places.
        QCoreApplication::sendPostedEvents(nullptr, QEvent::LayoutRequest);
        QCoreApplication::sendEvent(page, &e->collect);
    }
    if (status() != KRbSubTabBar::Popup || e->execResult < 0 || e->collect.messages.isEmpty())
        return;
    // The folded ribbon runs the page's level over its panel itself.
    auto* level = new KHotKeyAssistant(m_popupPanel, false, false);
    level->addHotKeyFromCollectEvent(&e->collect);
    e->collect.messages.clear();
    QPointer<KHotKeyAssistant> guard(level);
    e->execResult = level->showHotKey();
    if (guard)
        level->deleteLater();
    if (e->execResult != -1)
        m_popupPanel->hide();
}
