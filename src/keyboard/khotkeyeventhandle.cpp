#include "khotkeyeventhandle.h"

#include <kdragmenubar.h>

#include <QApplication>
#include <QKeyEvent>
#include <QShortcutEvent>

#include <kapplication.h>
#include <kmainwindow.h>

KHotKeyEventHandle::KHotKeyEventHandle(KMainWindow* window)
    : QObject(nullptr)
    , m_assistant(window, true, false)
{
    m_assistant.hide();
    KApplication* app = KApplication::instance();
    // Only the first window of the process reports its deactivation here.
    if (window && app && !app->currentMainWindow())
        connect(window, &KMainWindow::deactivated, this, &KHotKeyEventHandle::mainWindowDeactivated);
    connect(&m_assistant, &KHotKeyAssistant::hotKeyVisibleChage, this, &KHotKeyEventHandle::setTimerState);
    connect(&m_watchTimer, &QTimer::timeout, this, &KHotKeyEventHandle::checkMainWindowMove);
    connect(this, &KHotKeyEventHandle::windowMove, this, &KHotKeyEventHandle::hideHotKeyAssistant);
}

KHotKeyEventHandle::~KHotKeyEventHandle()
{
    if (qApp)
        qApp->removeEventFilter(this);
}

bool KHotKeyEventHandle::isHotKeyShown() const
{
    return !KHotKeyAssistant::assistants().isEmpty();
}

void KHotKeyEventHandle::setAltState(bool altAlone, bool altReleased)
{
    m_altAlone = altAlone;
    m_altReleased = altReleased;
}

bool KHotKeyEventHandle::isOnlyAltModifiersPress(int m)
{
    return m & (Qt::ShiftModifier | Qt::ControlModifier | Qt::MetaModifier);
}

bool KHotKeyEventHandle::isModefiersPressExpandsAlt(int m)
{
    return m & (Qt::ShiftModifier | Qt::ControlModifier);
}

bool KHotKeyEventHandle::_isSpecialKey(int key)
{
    return KHotKeyAssistant::isSpacelKeys(key);
}

void KHotKeyEventHandle::hideHotKeyAssistant()
{
    if (isHotKeyShown() && m_assistant.isVisible())
        m_assistant.exit(-1);
}

void KHotKeyEventHandle::setMenuBarVisible(bool visible)
{
    KApplication* app = KApplication::instance();
    auto* window = app ? qobject_cast<KMainWindow*>(app->currentMainWindow()) : nullptr;
    if (!window || !window->isBlockHotkey() || !window->headerBar() || window->headerBar()->isAloneMode())
        return;
    KDragMenuBar* bar = window->menuBar();
    KCommand* command = bar ? bar->menuCommand() : nullptr;
    if (!command)
        return;
    // A blocked window's menu bar lives only while the Alt machinery runs; its hiding waits,
    // 100 ms at a time, until its menus have closed.
    m_hideMenuBarTimer.setInterval(100);
    disconnect(&m_hideMenuBarTimer, &QTimer::timeout, this, &KHotKeyEventHandle::hideMenuBar);
    connect(&m_hideMenuBarTimer, &QTimer::timeout, this, &KHotKeyEventHandle::hideMenuBar);
    bar->setFloatable(false);
    if (visible)
        command->setVisible(true);
    else if (bar->isPopuping())
        m_hideMenuBarTimer.start();
    else
        command->setVisible(false);
}

void KHotKeyEventHandle::hideMenuBar()
{
    KApplication* app = KApplication::instance();
    auto* window = app ? qobject_cast<KMainWindow*>(app->currentMainWindow()) : nullptr;
    KDragMenuBar* bar = window ? window->menuBar() : nullptr;
    if (bar && bar->isPopuping())
        return; // a menu is still open: the timer goes on
    if (KCommand* command = bar ? bar->menuCommand() : nullptr)
        command->setVisible(false);
    m_hideMenuBarTimer.stop();
}

void KHotKeyEventHandle::mainWindowDeactivated()
{
    if (!m_altReleased)
        m_altAlone = true;
}

void KHotKeyEventHandle::checkMainWindowMove()
{
    KApplication* app = KApplication::instance();
    QWidget* window = app ? app->currentMainWindow() : nullptr;
    if (!window)
        return;
    const QPoint pos = window->mapToGlobal(QPoint(0, 0));
    if (m_firstTick) {
        m_lastX = pos.x();
        m_lastY = pos.y();
        m_firstTick = false;
        return;
    }
    if (pos.x() != m_lastX || pos.y() != m_lastY) {
        m_lastX = pos.x();
        m_lastY = pos.y();
        Q_EMIT windowMove();
    }
}

void KHotKeyEventHandle::setTimerState(bool start)
{
    if (start) {
        m_firstTick = true;
        m_watchTimer.start(100);
    } else {
        m_watchTimer.stop();
    }
}

bool KHotKeyEventHandle::eventFilter(QObject* watched, QEvent* e)
{
    // The cheap test first: most events of the program end here.
    const QEvent::Type type = e->type();
    if (type != QEvent::KeyPress && type != QEvent::KeyRelease && type != QEvent::Shortcut
        && type != QEvent::Close)
        return QObject::eventFilter(watched, e);
    KApplication* app = KApplication::instance();
    if (!app || m_assistant.hostWidget() != app->currentMainWindow())
        return false;
    switch (type) {
    case QEvent::KeyPress:
        return _keyPress(static_cast<QKeyEvent*>(e)) || QObject::eventFilter(watched, e);
    case QEvent::KeyRelease:
        return _keyRelease(static_cast<QKeyEvent*>(e)) || QObject::eventFilter(watched, e);
    case QEvent::Shortcut: {
        auto* shortcut = static_cast<QShortcutEvent*>(e);
        if (shortcut->key().toString(QKeySequence::PortableText).toLower() != QLatin1String("alt"))
            break;
        m_altAlone = false;
        m_assistant.timerStop();
        break;
    }
    case QEvent::Close:
        m_altAlone = false;
        m_assistant.timerStop();
        break;
    default:
        break;
    }
    return QObject::eventFilter(watched, e);
}

bool KHotKeyEventHandle::_keyPress(QKeyEvent* e)
{
    m_altAlone = false;
    m_altReleased = false;
    if (QGuiApplication::mouseButtons() != Qt::NoButton)
        return false;
    if (KHotKeyAssistant::checkAppFocus() == 2)
        return false;
    const int modifiers = int(e->modifiers());
    if (isOnlyAltModifiersPress(modifiers) || !m_assistant.isMessageEmpty()) {
        if (isModefiersPressExpandsAlt(modifiers) && !m_assistant.isRunning()) {
            m_altAlone = false;
            m_assistant.clearMessage();
            m_assistant.timerStop();
        }
        return false;
    }
    if (e->key() == Qt::Key_Alt) {
        m_assistant.timerStart(1000);
        m_altAlone = true;
    }
    const bool alt = e->modifiers() & Qt::AltModifier;
    // A plain letter in an open popup or menu hits a label at once, with nothing drawn.
    if (!alt && KHotKeyAssistant::checkAppFocus() == 1 && !_isSpecialKey(e->key()))
        return m_assistant.quickMatch(e->text());
    m_assistant.timerStop();
    if (e->text().isEmpty() || !alt || _isSpecialKey(e->key()) || KHotKeyAssistant::checkAppFocus() == 1)
        return false;
    // Alt and a letter together.
    setMenuBarVisible(true);
    m_assistant.collectHotkeyMessage();
    if (m_assistant.isMessageEmpty())
        return false;
    const bool result = QCoreApplication::sendEvent(&m_assistant, e);
    KApplication::instance()->focusInCurrentView();
    setMenuBarVisible(false);
    return result;
}

bool KHotKeyEventHandle::_keyRelease(QKeyEvent* e)
{
    const int f = KHotKeyAssistant::checkAppFocus();
    if (f == 0 || f == 2)
        return false;
    if (f == 1)
        m_altAlone = false;
    KApplication* app = KApplication::instance();
    QWidget* current = app->currentMainWindow();
    if (e->key() != Qt::Key_Alt || !current || QApplication::activeWindow() != current)
        return false;
    m_assistant.timerStop();
    if (m_altAlone) {
        m_assistant.setHostWidget(current);
        setMenuBarVisible(true);
        m_assistant.collectHotkeyMessage();
        if (!m_assistant.isMessageEmpty()) {
            m_assistant.setHotKetShownFlag(true);
            QPointer<KHotKeyEventHandle> guard(this);
            m_assistant.showHotKey(); // blocks in the level's loop
            if (!guard)
                return true; // the window went while its key tips showed
            m_altAlone = false;
            m_assistant.setHotKetShownFlag(false);
            app->focusInCurrentView();
            setMenuBarVisible(false);
        }
    }
    m_altReleased = true;
    return true;
}
