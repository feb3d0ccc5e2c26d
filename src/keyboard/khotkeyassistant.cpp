#include "khotkeyassistant.h"

#include <QWindowStateChangeEvent>

#include <QApplication>
#include <QBitmap>
#include <QComboBox>
#include <QEventLoop>
#include <QKeyEvent>
#include <QMenu>
#include <QPainter>
#include <QPixmap>

#include <kapplication.h>
#include <kcommand.h>
#include <kmainwindow.h>
#include <kmenuwidget.h>
#include <korbstyle.h>
#include <kpopupwidget.h>
#include <kstyleoptionhotkey.h>

#include "kx11overlay_p.h"

QList<KHotKeyAssistant*> KHotKeyAssistant::m_assistants;

KHotKeyAssistant::KHotKeyAssistant(QWidget* host, bool isTopLevel, bool isPopup)
    : QWidget(nullptr, Qt::Tool | Qt::FramelessWindowHint | Qt::WindowStaysOnTopHint | Qt::X11BypassWindowManagerHint)
    , m_isTopLevel(isTopLevel)
    , m_isPopup(isPopup)
    , m_host(host)
{
    setAttribute(Qt::WA_TranslucentBackground);
    setAttribute(Qt::WA_ShowWithoutActivating);
    setFocusPolicy(Qt::NoFocus);
    connect(&m_timer, &QTimer::timeout, this, &KHotKeyAssistant::timeoutShow);
    _watchHost();
}

void KHotKeyAssistant::_watchHost()
{
    // A level whose host goes (its window closed while the labels show) ends at once.
    if (m_host)
        connect(m_host.data(), &QObject::destroyed, this, &KHotKeyAssistant::_hostDestroyed, Qt::UniqueConnection);
}

void KHotKeyAssistant::_hostDestroyed()
{
    if (isRunning() || isVisible())
        exit(-1);
}

KHotKeyAssistant::~KHotKeyAssistant()
{
    m_assistants.removeAll(this);
    if (m_filterInstalled)
        qApp->removeEventFilter(this);
    // A level destroyed while its loop runs (its window closed) leaves the loop at once.
    for (QEventLoop* loop : std::as_const(m_loops))
        loop->exit(-1);
    if (QWidget::keyboardGrabber() == this)
        releaseKeyboard();
}

void KHotKeyAssistant::setVisible(bool visible)
{
    QWidget::setVisible(visible);
    m_assistants.removeAll(this);
    if (visible)
        m_assistants.append(this);
}

void KHotKeyAssistant::setHostWidget(QWidget* host)
{
    if (m_host == host)
        return;
    if (m_host)
        disconnect(m_host.data(), &QObject::destroyed, this, &KHotKeyAssistant::_hostDestroyed);
    m_host = host;
    _watchHost();
}

void KHotKeyAssistant::timerStart(int ms)
{
    m_timer.start(ms);
}

void KHotKeyAssistant::timerStop()
{
    m_timer.stop();
}

// --- labels ---

void KHotKeyAssistant::addHotKey(const QPoint& pos, const QString& key)
{
    hotkey_message message;
    message.pos = pos;
    message.key = key;
    m_messages.append(message);
}

void KHotKeyAssistant::addHotKeyFromCollectEvent(KHotKeyCollectEvent* event)
{
    if (event)
        m_messages.append(event->messages);
}

void KHotKeyAssistant::collectHotkeyMessage()
{
    KHotKeyCollectEvent collect;
    if (m_host)
        QCoreApplication::sendEvent(m_host, &collect);
    m_messages = collect.messages;
}

void KHotKeyAssistant::clearMessage()
{
    m_messages.clear();
    m_text.clear();
}

int KHotKeyAssistant::checkAppFocus()
{
    QWidget* focus = QApplication::focusWidget();
    if (!focus)
        return QApplication::activeWindow() ? 3 : 0;
    if (qobject_cast<QComboBox*>(focus))
        return 2;
    if (qobject_cast<KPopupWidget*>(focus->window()) || qobject_cast<QMenu*>(focus))
        return 1;
    return 3;
}

bool KHotKeyAssistant::isSpacelKeys(int key)
{
    switch (key) {
    case Qt::Key_Down:
    case Qt::Key_Up:
    case Qt::Key_Right:
    case Qt::Key_Left:
    case Qt::Key_Return:
    case Qt::Key_Enter:
    case Qt::Key_End:
    case Qt::Key_Home:
    case Qt::Key_PageDown:
    case Qt::Key_PageUp:
    case Qt::Key_Tab:
        return true;
    default:
        return false;
    }
}

bool KHotKeyAssistant::_isFirstClassic() const
{
    return !m_messages.isEmpty() && m_messages.first().tag() == KHotKeyMarker::classicMenu();
}

QString KHotKeyAssistant::getInputTextFormKey(const QKeyEvent* event)
{
    const int key = event->key();
    if (key >= Qt::Key_0 && key <= Qt::Key_9)
        return event->text();
    if (key >= Qt::Key_A && key <= Qt::Key_Z)
        return QString(QChar(key));
    // Another layout: the physical key decides, so that letters match all the same.
    const quint32 native = event->nativeVirtualKey();
    if (native >= 65 && native <= 90)
        return QString(QChar(char16_t(native)));
    return QString();
}

int KHotKeyAssistant::searchHotKey(const QString& text, hotkey_message& found, void* item)
{
    if (text.isEmpty())
        return 0;
    m_text += text;
    QList<int> before;
    QList<int> after;
    int current = -1;
    bool met = item == nullptr;
    int state = 0;
    for (int i = 0; i < m_messages.size(); ++i) {
        const hotkey_message& m = m_messages.at(i);
        if (!met && m.item() == item) {
            current = i;
            met = true;
        }
        bool full = false;
        if (i != current && m.enabled && m.key.compare(m_text, Qt::CaseInsensitive) == 0) {
            (met ? after : before).append(i);
            state = 2;
            full = true;
        }
        if (!full && state == 0 && m.key.left(m_text.size()).compare(m_text, Qt::CaseInsensitive) == 0)
            state = 1;
    }
    const bool currentFull = current >= 0
                             && m_messages.at(current).key.compare(m_text, Qt::CaseInsensitive) == 0;
    const int total = after.size() + before.size() + (currentFull ? 1 : 0);
    if (total < 1) {
        // A wrong letter is dropped and doesn't spoil what was typed.
        if (state == 0)
            m_text.chop(text.size());
        return state;
    }
    if (!after.isEmpty())
        found = m_messages.at(after.first());
    else if (!before.isEmpty())
        found = m_messages.at(before.first());
    else
        found = m_messages.at(current);
    return total == 1 ? 2 : 3;
}

bool KHotKeyAssistant::quickMatch(const QString& text)
{
    QWidget* focus = QApplication::focusWidget();
    if (!focus)
        return false;
    KHotKeyCollectEvent collect;
    QCoreApplication::sendEvent(focus, &collect);
    m_messages = collect.messages;
    if (m_messages.isEmpty())
        return false;
    auto* menu = qobject_cast<KMenuWidget*>(focus);
    void* item = menu ? static_cast<void*>(menu->currentItem()) : nullptr;
    hotkey_message found;
    const int result = searchHotKey(text, found, item);
    clearMessage();
    if (result == 0 || !found.target || !found.enabled)
        return false;
    KHotKeyTriggerEvent trigger;
    trigger.message = &found;
    trigger.quick = true;
    trigger.execute = result == 2;
    return QCoreApplication::sendEvent(found.target, &trigger);
}

// --- showing and leaving ---

int KHotKeyAssistant::exec()
{
    QEventLoop loop;
    m_loops.append(&loop);
    QPointer<KHotKeyAssistant> guard(this);
    const int code = loop.exec();
    if (guard)
        m_loops.removeOne(&loop);
    return code;
}

int KHotKeyAssistant::showHotKey()
{
    if (qobject_cast<KMainWindow*>(m_host.data()))
        m_shown = true;
    handleMousePressEvent(true);
    grabKeyboard();
    raise();
    show();
    if (!m_isPopup) {
        QWidget* focus = QApplication::focusWidget();
        if (focus != this)
            m_focusWidget = focus;
        setFocus(Qt::OtherFocusReason);
    }
    return exec();
}

void KHotKeyAssistant::hideHotKey()
{
    if (qobject_cast<KMainWindow*>(m_host.data()))
        m_shown = false;
    handleMousePressEvent(false);
    releaseKeyboard();
    hide();
    // The focus goes back after the overlay is gone: a platform that activated the overlay
    // on showing hands the activation back to the host's window first.
    if (!m_isPopup) {
        if (QWidget* focus = m_focusWidget.data()) {
            if (QApplication::activeWindow() == this || !QApplication::activeWindow())
                QApplication::setActiveWindow(focus->window());
            focus->setFocus(Qt::OtherFocusReason);
        }
        m_focusWidget = nullptr;
    }
}

void KHotKeyAssistant::handleMousePressEvent(bool install)
{
    if (install == m_filterInstalled)
        return;
    m_filterInstalled = install;
    if (install)
        qApp->installEventFilter(this);
    else
        qApp->removeEventFilter(this);
}

void KHotKeyAssistant::preExit(int code)
{
    const bool classic = _isFirstClassic();
    QWidget* classicTarget = classic ? m_messages.first().target.data() : nullptr;
    if (code == -1 || code == -4) {
        if (classicTarget) {
            QKeyEvent alt(QEvent::KeyPress, Qt::Key_Alt, Qt::NoModifier);
            QCoreApplication::sendEvent(classicTarget, &alt);
        }
    } else if (code == -2) {
        QWidget* target = classic ? classicTarget : m_host.data();
        if (target) {
            QKeyEvent escape(QEvent::KeyPress, Qt::Key_Escape, Qt::NoModifier);
            QCoreApplication::sendEvent(target, &escape);
        }
    }
}

void KHotKeyAssistant::exit(int code)
{
    preExit(code);
    hideHotKey();
    clearMessage();
    // Every loop of this level ends: a level shown again nests on the same object.
    for (QEventLoop* loop : std::as_const(m_loops))
        loop->exit(code);
}

void KHotKeyAssistant::exit()
{
    exit(-1);
}

void KHotKeyAssistant::hidePopupSlot()
{
    exit(-2);
}

void KHotKeyAssistant::timeoutShow()
{
    m_timer.stop();
    collectHotkeyMessage();
    exit(showHotKey());
}

// --- keys ---

void KHotKeyAssistant::handleKeyPress(QKeyEvent* e)
{
    const int key = e->key();
    if (key == Qt::Key_Escape || key == Qt::Key_Shift)
        return; // Escape acts on release
    if (key == Qt::Key_Alt) {
        exit(-4);
        return;
    }
    if (isSpacelKeys(key)) {
        if (handleSpacelKeys(e))
            return;
        QWidget* target = nullptr;
        if (_isFirstClassic()) {
            target = m_messages.first().target.data();
        } else if (m_host) {
            QWidget* focus = m_host->focusWidget();
            target = (focus && focus != this) ? focus : m_host.data();
        }
        if (target)
            QCoreApplication::sendEvent(target, e);
        return;
    }
    if (key == Qt::Key_Backspace) {
        handleBackSpaceKey();
        return;
    }
    collectNextLevel(e);
}

void KHotKeyAssistant::handleKeyRelease(QKeyEvent* e)
{
    if (e->key() == Qt::Key_Escape) {
        exit(-2);
        return;
    }
    QWidget* focus = m_host ? m_host->focusWidget() : nullptr;
    if (focus && focus != this && (e->key() == Qt::Key_Return || e->key() == Qt::Key_Enter)) {
        QCoreApplication::sendEvent(focus, e);
        return;
    }
    QWidget::event(e);
}

bool KHotKeyAssistant::handleSpacelKeys(QKeyEvent* e)
{
    // In a menu level the moves the menu doesn't leave to the key-tip layer go to the menu
    // directly, and the labels follow its selection.
    auto* menu = qobject_cast<KMenuWidget*>(m_host.data());
    if (!menu || menu->preKeyPressEvent(e))
        return false;
    QCoreApplication::sendEvent(menu, e);
    update();
    return true;
}

void KHotKeyAssistant::handleBackSpaceKey()
{
    if (m_text.isEmpty()) {
        exit(-2);
        return;
    }
    m_text.chop(1);
    _updateMask();
    update();
}

void KHotKeyAssistant::collectNextLevel(QKeyEvent* e)
{
    void* item = nullptr;
    if (m_isPopup) {
        if (auto* menu = qobject_cast<KMenuWidget*>(m_host.data()))
            item = menu->currentItem();
    }
    const QString text = getInputTextFormKey(e);
    hotkey_message found;
    const int r = searchHotKey(text, found, item);
    switch (r) {
    case 1:
        _updateMask();
        update();
        break;
    case 0:
        if (m_isTopLevel) {
            hideHotKey();
            handleNullSearched(text);
        } else if (!m_isPopup) {
            exit(-1);
        }
        break;
    default:
        if (found.enabled) {
            hideHotKey();
            handleFullSearched(found, r == 2);
        }
        break;
    }
}

void KHotKeyAssistant::handleFullSearched(const hotkey_message& message, bool execute)
{
    hotkey_message fired = message;
    KHotKeyTriggerEvent trigger;
    trigger.message = &fired;
    trigger.execute = execute;
    QPointer<KHotKeyAssistant> guard(this);
    if (fired.target)
        QCoreApplication::sendEvent(fired.target, &trigger);
    if (!guard)
        return;
    if (checkHotkeyTiggerEventResult(&trigger) || !guard)
        return;
    showNextLevelAssistant(&trigger);
    if (guard && !checkHotkeyPopExecResult(&trigger))
        exit(-1);
}

void KHotKeyAssistant::handleNullSearched(const QString& text)
{
    // Text that no label carries is offered to the title bar's level.
    hotkey_message message;
    message.key = text;
    message.target = m_host;
    message.prop = KHotKeyMarker::titleBar();
    KHotKeyTriggerEvent trigger;
    trigger.message = &message;
    trigger.result = 1;
    QPointer<KHotKeyAssistant> guard(this);
    if (m_host)
        QCoreApplication::sendEvent(m_host, &trigger);
    if (!guard)
        return;
    showNextLevelAssistant(&trigger);
    if (guard && !checkHotkeyPopExecResult(&trigger))
        exit(-1);
}

bool KHotKeyAssistant::checkHotkeyTiggerEventResult(KHotKeyTriggerEvent* e)
{
    switch (e->result) {
    case 2:
        exit(-3);
        return true;
    case 3:
        showHotKey();
        return true;
    case 1:
        if (m_host)
            QCoreApplication::sendEvent(m_host, e);
        return false;
    default:
        return false;
    }
}

bool KHotKeyAssistant::checkHotkeyPopExecResult(KHotKeyTriggerEvent* e)
{
    switch (e->execResult) {
    case -3:
    case -4:
    case -1:
        exit(e->execResult);
        return true;
    case -2:
        showHotKey(); // Escape in a nested level comes back to this one
        return true;
    default:
        return false;
    }
}

void KHotKeyAssistant::showNextLevelAssistant(KHotKeyTriggerEvent* e)
{
    if (e->execResult < 0 || e->collect.messages.isEmpty())
        return;
    auto* next = new KHotKeyAssistant(m_host, false, false);
    next->addHotKeyFromCollectEvent(&e->collect);
    QPointer<KHotKeyAssistant> guard(next);
    e->execResult = next->showHotKey();
    if (guard)
        next->deleteLater();
}

// --- events ---

bool KHotKeyAssistant::event(QEvent* e)
{
    switch (int(e->type())) {
    case QEvent::KeyPress:
        handleKeyPress(static_cast<QKeyEvent*>(e));
        return true;
    case QEvent::KeyRelease:
        handleKeyRelease(static_cast<QKeyEvent*>(e));
        return true;
    case KEvent::Dismiss:
        exit(-3);
        break;
    case QEvent::WindowActivate:
        // The overlay is never the active window (a platform may activate it on showing):
        // the host's window keeps its active look and, once the labels go, its focus.
        if (QWidget* hostWindow = m_host ? m_host->window() : nullptr)
            QApplication::setActiveWindow(hostWindow);
        return true;
    default:
        break;
    }
    return QWidget::event(e);
}

bool KHotKeyAssistant::eventFilter(QObject* watched, QEvent* e)
{
    KApplication* app = KApplication::instance();
    QWidget* current = app ? app->currentMainWindow() : nullptr;
    if (!current || !m_host || app->findRelativeMainWindow(m_host) != current)
        return false;
    switch (int(e->type())) {
    case QEvent::Move:
    case QEvent::Resize:
        if (watched == m_host.data()) {
            exit(-1);
            return true;
        }
        break;
    case QEvent::KeyPress:
    case QEvent::KeyRelease:
    case QEvent::ShortcutOverride: {
        auto* key = static_cast<QKeyEvent*>(e);
        if ((key->modifiers() & Qt::ControlModifier) || key->key() == Qt::Key_Control)
            exit(-1);
        break;
    }
    case QEvent::Shortcut:
        exit(-1); // an accelerator always comes with Ctrl here; the key tips make way for it
        break;
    case KEvent::HotKeyTrigger:
        if (watched != this && !m_loops.isEmpty() && isVisible())
            exit(-1);
        break;
    case QEvent::MouseButtonPress: {
        auto* mouse = static_cast<QMouseEvent*>(e);
        const QRect hostRect(m_host->mapToGlobal(QPoint(0, 0)), m_host->size());
        if (m_isPopup && hostRect.contains(mouse->globalPosition().toPoint()))
            hideHotKey();
        else
            exit(-1);
        return false;
    }
    case QEvent::MouseButtonRelease: {
        auto* menu = qobject_cast<KMenuWidget*>(m_host.data());
        auto* mouse = static_cast<QMouseEvent*>(e);
        if (!menu || mouse->button() != Qt::LeftButton || watched != menu)
            break;
        void* item = nullptr;
        if (!menu->preMouseReleaseEvent(mouse, item))
            break;
        for (const hotkey_message& m : std::as_const(m_messages)) {
            if (m.item() == item) {
                const hotkey_message hit = m;
                hideHotKey();
                handleFullSearched(hit, true);
                return true;
            }
        }
        return true;
    }
    case QEvent::MouseMove: {
        auto* menu = qobject_cast<KMenuWidget*>(m_host.data());
        if (!menu || watched != menu)
            break;
        auto* mouse = static_cast<QMouseEvent*>(e);
        if (KMenuWidgetItem* row = menu->itemAt(mouse->position().toPoint())) {
            if (row->command() && row->command()->isExtensible())
                hideHotKey();
            else
                menu->setCurrentItem(row);
            return true;
        }
        return menu->preMouseMoveEvent(mouse);
    }
    case QEvent::WindowDeactivate:
        if (!QApplication::activeWindow())
            exit(-1);
        break;
    case QEvent::WindowStateChange: {
        // Only a real change of a window: the X platform also reports a state that stayed
        // what it was (a window manager's property write, or none at all under a bare X
        // server), and a maximized document of an MDI area reports one on every resize.
        auto* widget = qobject_cast<QWidget*>(watched);
        const auto* change = static_cast<QWindowStateChangeEvent*>(e);
        if (isRunning() && widget && widget->isWindow() && change->oldState() != widget->windowState())
            exit(-1);
        break;
    }
    case KEvent::InnerEvent: {
        auto* inner = static_cast<KHotKeyInnerEvent*>(e);
        return inner->innerEvent() ? event(inner->innerEvent()) : false;
    }
    case QEvent::Wheel:
        return true;
    default:
        break;
    }
    return QWidget::eventFilter(watched, e);
}

void KHotKeyAssistant::mousePressEvent(QMouseEvent*)
{
    exit(-1);
}

void KHotKeyAssistant::showEvent(QShowEvent* e)
{
    QWidget* hostWindow = m_host ? m_host->window() : nullptr;
    if (hostWindow) {
        // The overlay covers the host's whole window; the labels are placed in its coordinates.
        resize(hostWindow->size());
        move(hostWindow->mapToGlobal(QPoint(0, 0)));
    }
    m_text.clear();
    _updateMask();
    if (hostWindow)
        QApplication::setActiveWindow(hostWindow); // the window keeps its active look
    QWidget::showEvent(e);
    Q_EMIT hotKeyVisibleChage(true);
}

void KHotKeyAssistant::hideEvent(QHideEvent* e)
{
    KApplication* app = KApplication::instance();
    if (QWidget* current = app ? app->currentMainWindow() : nullptr)
        QApplication::setActiveWindow(current);
    QWidget::hideEvent(e);
    Q_EMIT hotKeyVisibleChage(false);
}

void KHotKeyAssistant::_updateMask()
{
    if (!isVisible() && !testAttribute(Qt::WA_WState_ExplicitShowHide))
        return;
    // Without a compositing manager the translucent window can't be had: the window is cut
    // to the labels instead, which render on a blue ground that the mask leaves out.
    if (KX11Overlay::isCompositingManagerRunning()) {
        if (!mask().isEmpty())
            clearMask();
        return;
    }
    clearMask();
    QPixmap pixmap(size());
    pixmap.fill(Qt::blue);
    render(&pixmap, QPoint(), QRegion(), QWidget::DrawWindowBackground | QWidget::DrawChildren);
    setMask(pixmap.createMaskFromColor(Qt::blue));
}

// --- painting ---

QSize KHotKeyAssistant::itemSizeHint(const QString& key) const
{
    const QFontMetrics fm = fontMetrics();
    return QSize(qMax(16, fm.horizontalAdvance(key.toUpper()) + 6), qMax(16, fm.height()));
}

void KHotKeyAssistant::paintEvent(QPaintEvent*)
{
    KApplication* app = KApplication::instance();
    auto* current = app ? qobject_cast<KMainWindow*>(app->currentMainWindow()) : nullptr;
    if (current && current->isBlockHotkey())
        return; // the machine runs on invisibly
    QPainter painter(this);
    for (const hotkey_message& m : std::as_const(m_messages))
        drawHotKeyItem(painter, m);
}

void KHotKeyAssistant::drawHotKeyItem(QPainter& painter, const hotkey_message& message)
{
    if (message.key.isEmpty() || !message.key.startsWith(m_text, Qt::CaseInsensitive)
        || message.tag() == KHotKeyMarker::doNotShow())
        return;
    KStyleOptionHotKey option;
    option.initFrom(this);
    option.rect = QRect(message.pos, itemSizeHint(message.key));
    option.key = message.key;
    option.typed = m_text;
    if (message.enabled)
        option.state |= QStyle::State_Enabled;
    else
        option.state &= ~QStyle::State_Enabled;
    if (qobject_cast<KORBStyle*>(style()))
        style()->drawControl(KORBStyle::KCE_HotKeyItem, &option, &painter, this);
    else
        KORBStyle::paintHotKeyItem(&option, &painter, 3);
}
