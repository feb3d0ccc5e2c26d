#include "ktoolbar.h"

#include <QCursor>
#include <QHoverEvent>
#include <QKeyEvent>
#include <QLayout>
#include <QMainWindow>
#include <QStyle>
#include <QStyleOptionToolBar>

#include "kappidlesvr.h"
#include "kapplication.h"
#include "kblockedmouseevent.h"
#include "kcommandbarprop.h"
#include "kcommands.h"
#include "kcommandwrapaction.h"
#include "kevent.h"
#include "klistcommand.h"
#include "kmainwindow.h"
#include "kseparatorcommand.h"
#include "ktoolbutton.h"

KToolBar::KToolBar(KMainWindow* window)
    : KCommandWidgetBridge<QToolBar>(nullptr, window, true)
{
    _init(window);
}

KToolBar::KToolBar(KListCommand* command, KMainWindow* window)
    : KCommandWidgetBridge<QToolBar>(command, window, true)
{
    if (command) {
        setObjectName(command->property("id").toString());
        m_props = new KCommandBarProp(command, window);
    }
    _init(window);
}

KToolBar::~KToolBar()
{
    delete m_props;
}

void KToolBar::_init(KMainWindow*)
{
    if (parentWidget())
        parentWidget()->installEventFilter(this);
    connect(this, &QToolBar::orientationChanged, this, &KToolBar::toolBarOrientationChanged);
    connect(this, &QToolBar::visibilityChanged, this, &KToolBar::onVisibilityChanged);
    connect(this, &QToolBar::topLevelChanged, this, [this] { _applyCloseHint(); });
    // The user's show/hide through the bar's toggle action is the command's visibility, as
    // closing the bar is: otherwise the next change of the command would bring it back.
    connect(toggleViewAction(), &QAction::triggered, this, [this](bool checked) {
        if (KCommand* cmd = command())
            cmd->setVisible(checked);
    });
    if (KCommand* cmd = command()) {
        connect(cmd, &KCommand::changed, this, &KToolBar::syncCommand);
        syncCommand();
    }
    setFocusPolicy(Qt::NoFocus);
    if (KApplication* app = KApplication::instance())
        app->idleSvr()->registerItem(this, true);
}

void KToolBar::syncCommand()
{
    KCommand* cmd = command();
    if (!cmd)
        return;
    // Showing builds the items: leave a bar that was never hidden for its window to show.
    setVisibleFromCommand(cmd->isVisible());
    bool enabled = cmd->isEnabled();
    if (!enabled) {
        // A disabled bar can keep its items clickable.
        const QVariant force = cmd->property("forceToolbarEnable");
        enabled = force.canConvert<bool>() && force.toBool();
    }
    setEnabled(enabled);
    setWindowTitle(cmd->text());
    setWindowIcon(cmd->icon());
}

void KToolBar::onCommandConnected()
{
    auto* list = qobject_cast<KAbstractListCommand*>(command());
    if (!list)
        return;
    connect(list, &KAbstractListCommand::subCommandInsert, this, &KToolBar::onCommandInserted);
    connect(list, &KAbstractListCommand::subCommandRemove, this, &KToolBar::onCommandRemoved);
}

void KToolBar::onCommandInserted(int idx, KCommand* cmd)
{
    auto* action = new KCommandWrapAction(cmd, this);
    const QList<QAction*> current = actions();
    if (idx >= current.size())
        addAction(action);
    else
        insertAction(current.at(idx), action);
}

void KToolBar::onCommandRemoved(int idx)
{
    const QList<QAction*> current = actions();
    if (idx < 0 || idx >= current.size())
        return;
    QAction* action = current.at(idx);
    removeAction(action);
    delete action;
}

void KToolBar::setFloating(bool floating)
{
    if (floating == isFloating())
        return;
    // A bar waiting for its hidden window counts as shown; the state is rebuilt below.
    const bool wasVisible = !isHidden() || m_floatingHidden;
    if (m_floatingHidden)
        setFloatingHide(false);
    if (floating) {
        if (auto* dockArea = qobject_cast<QMainWindow*>(parentWidget()))
            dockArea->removeToolBar(this);
        const QPoint origin = parentWidget() ? parentWidget()->mapToGlobal(QPoint(40, 40)) : QPoint(40, 40);
        setWindowFlags(floatingWindowFlags());
        move(origin);
        adjustSize();
    } else {
        setWindowFlags(Qt::Widget);
    }
    if (wasVisible && command() && command()->isVisible())
        setVisible(true);
}

void KToolBar::setClosable(bool closable)
{
    if (m_closable == closable)
        return;
    m_closable = closable;
    _applyCloseHint();
}

void KToolBar::_applyCloseHint()
{
    if (!isFloating())
        return;
    const bool has = windowFlags().testFlag(Qt::WindowCloseButtonHint);
    if (has == m_closable)
        return;
    const bool waitingForWindow = m_floatingHidden;
    const bool wasVisible = QToolBar::isVisible();
    setWindowFlag(Qt::WindowCloseButtonHint, m_closable);
    // Changing window flags hides a top-level widget; bring it back as it was. A bar that
    // waits for its hidden window must keep waiting, not show on its own.
    if (waitingForWindow)
        setFloatingHide(true);
    else if (wasVisible)
        QToolBar::setVisible(true);
}

void KToolBar::setFullSize(bool fullSize)
{
    if (m_fullSize == fullSize)
        return;
    m_fullSize = fullSize;
    setSizePolicy(fullSize ? QSizePolicy::Expanding : QSizePolicy::Preferred, sizePolicy().verticalPolicy());
    updateGeometry();
}

Qt::WindowFlags KToolBar::floatingWindowFlags() const
{
    Qt::WindowFlags flags = Qt::Tool | Qt::CustomizeWindowHint | Qt::WindowTitleHint;
    if (m_closable)
        flags |= Qt::WindowCloseButtonHint;
    return flags;
}

QMargins KToolBar::getMargins() const
{
    QMargins m = layout() ? layout()->contentsMargins() : QMargins();
    QStyleOptionToolBar opt;
    initStyleOption(&opt);
    const int frame = style()->pixelMetric(QStyle::PM_ToolBarFrameWidth, &opt, this);
    m += QMargins(frame, frame, frame, frame);
    if (isMovable() && !isFloating()) {
        const int handle = style()->pixelMetric(QStyle::PM_ToolBarHandleExtent, &opt, this);
        if (orientation() == Qt::Horizontal)
            m.setLeft(m.left() + handle);
        else
            m.setTop(m.top() + handle);
    }
    return m;
}

QSize KToolBar::minSize() const
{
    QSize size;
    if (isFloating())
        size = QSize(80, 20);
    else if (orientation() == Qt::Horizontal)
        size = QSize(40, 20);
    else
        size = QSize(20, 40);
    const QMargins m = getMargins();
    return size + QSize(m.left() + m.right(), m.top() + m.bottom());
}

QSize KToolBar::sizeHint() const
{
    return KCommandWidgetBridge<QToolBar>::sizeHint().expandedTo(minSize());
}

QSize KToolBar::minimumSizeHint() const
{
    return QToolBar::minimumSizeHint().expandedTo(minSize());
}

void KToolBar::updateAction(bool withUpdate)
{
    KCommand* cmd = command();
    if (!cmd)
        return;
    const QList<QAction*> acts = actions();
    const int n = cmd->count();
    for (int i = 0; i < n; ++i) {
        KCommand* sub = cmd->subCommand(i);
        if (sub && withUpdate)
            sub->update();
    }
    for (int i = 1; i < n && i < acts.size(); ++i) {
        KCommand* sub = cmd->subCommand(i);
        if (!KSeparatorCommand::isSeparator(sub))
            continue;
        // A separator shows only when the nearest visible item ahead of it is no separator;
        // earlier separators have been decided already, so their actions tell.
        bool visible = false;
        for (int j = i - 1; j >= 0; --j) {
            KCommand* before = cmd->subCommand(j);
            if (!before)
                continue;
            const bool separator = KSeparatorCommand::isSeparator(before);
            const bool shown = separator ? acts.at(j)->isVisible() : before->isVisible();
            if (!shown)
                continue;
            visible = !separator;
            break;
        }
        acts.at(i)->setVisible(visible);
    }
}

void KToolBar::setFloatingHide(bool hidden)
{
    // Qt's state says visible while nothing shows, so the bar comes back with its window.
    setAttribute(Qt::WA_WState_Visible, hidden);
    setAttribute(Qt::WA_WState_Hidden, !hidden);
    m_floatingHidden = hidden;
}

void KToolBar::setVisible(bool visible)
{
    QWidget* parent = parentWidget();
    if (visible && isFloating() && parent && !parent->isVisible()) {
        setFloatingHide(true);
        return;
    }
    if (m_floatingHidden && !visible) {
        setFloatingHide(false);
        return;
    }
    KCommandWidgetBridge<QToolBar>::setVisible(visible);
}

KToolBar* KToolBar::clone(KMainWindow* window)
{
    if (!window)
        return nullptr;
    auto* list = qobject_cast<KListCommand*>(
        window->commands()->customCommand(QStringLiteral("KListCommand"), window, window->commands()));
    if (!list)
        return nullptr;
    auto* bar = new KToolBar(list, window);
    ensureConnectCommand(); // the copy is made from this bar's items, built or not yet
    const QList<QAction*> acts = actions();
    for (QAction* a : acts) {
        auto* wrap = qobject_cast<KCommandWrapAction*>(a);
        if (!wrap || !wrap->command())
            continue;
        KCommand* sub = wrap->command();
        KCommand* copy = KSeparatorCommand::isSeparator(sub) ? sub : sub->clone(window, list);
        if (copy)
            list->addSubCommand(copy);
    }
    if (command())
        command()->copyProperties(list);
    return bar;
}

void KToolBar::toolBarOrientationChanged(Qt::Orientation orientation)
{
    KWidgetExhibitDirectChangedEvent e(orientation != Qt::Horizontal);
    sendBroadcastEvent(this, &e);
}

void KToolBar::onVisibilityChanged(bool)
{
}

bool KToolBar::event(QEvent* e)
{
    switch (static_cast<int>(e->type())) {
    case KEvent::Idle:
        if (KCommand* cmd = command()) {
            cmd->update();
            if (QToolBar::isVisible() && !m_floatingHidden)
                updateAction(true);
        }
        return true;
    case QEvent::Close:
        if (KCommand* cmd = command())
            cmd->setVisible(false);
        break;
    case QEvent::LayoutRequest:
        update();
        break;
    case KEvent::Dismiss:
        if (KApplication* app = KApplication::instance())
            app->focusInCurrentView();
        break;
    case KEvent::HotKeyCollect:
        if (isVisible()) {
            const QList<KToolButton*> buttons = findChildren<KToolButton*>(Qt::FindDirectChildrenOnly);
            for (KToolButton* button : buttons)
                QCoreApplication::sendEvent(button, e);
        }
        return true;
    case QEvent::KeyPress: {
        const int key = static_cast<QKeyEvent*>(e)->key();
        // Focus does not go round a tool bar.
        if (key == Qt::Key_Tab || key == Qt::Key_Backtab) {
            e->accept();
            return true;
        }
        break;
    }
    case KEvent::BlockedMouse: {
        // A popup holds the mouse: let hover follow the pointer over the bar all the same,
        // so that the bar looks right the moment the popup closes.
        QMouseEvent* mouse = static_cast<KBlockedMouseEvent*>(e)->mouseEvent();
        if (mouse && mouse->type() == QEvent::MouseMove) {
            const QPointF local = mapFromGlobal(QCursor::pos());
            QCoreApplication::postEvent(this, new QHoverEvent(QEvent::HoverMove, local, QCursor::pos(), local));
        }
        break;
    }
    case QEvent::ParentChange:
        if (parentWidget())
            parentWidget()->installEventFilter(this);
        break;
    case QEvent::ParentAboutToChange:
        if (parentWidget())
            parentWidget()->removeEventFilter(this);
        break;
    default:
        break;
    }
    return KCommandWidgetBridge<QToolBar>::event(e);
}

bool KToolBar::eventFilter(QObject* watched, QEvent* e)
{
    if (watched == parentWidget()) {
        if (e->type() == QEvent::Show && m_floatingHidden) {
            setFloatingHide(false);
            QToolBar::setVisible(true);
        } else if (e->type() == QEvent::Hide && isFloating() && QToolBar::isVisible()) {
            setFloatingHide(true);
            QToolBar::setVisible(false);
            setFloatingHide(true);
        }
    }
    return KCommandWidgetBridge<QToolBar>::eventFilter(watched, e);
}

void KToolBar::closeEvent(QCloseEvent* e)
{
    if (KCommand* cmd = command()) {
        if (cmd->isVisible())
            cmd->setVisible(false);
    }
    e->accept();
}

void KToolBar::showEvent(QShowEvent* e)
{
    if (KApplication* app = KApplication::instance())
        app->idleSvr()->registerItem(this, true);
    if (KCommand* cmd = command())
        cmd->setVisible(true);
    KCommandWidgetBridge<QToolBar>::showEvent(e);
}
