// The main window's part in the keyboard: its accelerators (a KShortcutsWrapper with the
// window's registry), the host's own shortcuts, and the key-tip handle with the window's
// answers to the collect and trigger events.
#include "kmainwindow.h"

#include <QApplication>

#include "kapplication.h"
#include "khotkeyeventhandle.h"
#include "kshortcutswrapper.h"
#include "ktoolbar.h"

void KMainWindow::_setupKeyboard()
{
    m_shortcutsWrapper = new KShortcutsWrapper(this, m_commands);
    m_hotKeyHandle = new KHotKeyEventHandle(this);
    connect(this, &KMainWindow::sizeChange, m_hotKeyHandle, &KHotKeyEventHandle::hideHotKeyAssistant);
    qApp->installEventFilter(m_hotKeyHandle);
}

void KMainWindow::_teardownKeyboard()
{
    // The handle first: a level still on the screen ends before the window's parts go.
    delete m_hotKeyHandle;
    m_hotKeyHandle = nullptr;
    delete m_customShortcuts;
    m_customShortcuts = nullptr;
}

KShortcuts* KMainWindow::shortcuts() const
{
    return m_shortcutsWrapper ? m_shortcutsWrapper->shortcuts() : nullptr;
}

KCustomShortcuts* KMainWindow::customShortcuts()
{
    if (!m_customShortcuts)
        m_customShortcuts = new KCustomShortcuts(this);
    return m_customShortcuts;
}

QList<KShortcut*> KMainWindow::getShortcut(const QString& commandId, ShortcutCategory category) const
{
    QList<KShortcut*> found;
    KShortcuts* list = shortcuts();
    for (int i = 0; list && i < list->count(); ++i) {
        KShortcut* s = list->shortcutAt(i);
        if (s->getCommand() == commandId && s->getCategory() == category)
            found.append(s);
    }
    return found;
}

bool KMainWindow::isHotKeyShown() const
{
    return m_hotKeyHandle && m_hotKeyHandle->isHotKeyShown();
}

void KMainWindow::hideHotKey()
{
    if (!m_hotKeyHandle)
        return;
    m_hotKeyHandle->setAltState(true, false);
    // From the innermost level out.
    const QList<KHotKeyAssistant*> levels = KHotKeyAssistant::assistants();
    for (int i = levels.size() - 1; i >= 0; --i) {
        if (KHotKeyAssistant::assistants().contains(levels.at(i)))
            levels.at(i)->exit(-1);
    }
    m_hotKeyHandle->hideHotKeyAssistant();
}

bool KMainWindow::_hotKeyEvent(QEvent* e)
{
    if (int(e->type()) == KEvent::HotKeyCollect) {
        KRbTabWidget* header = headerBar();
        if (header && header->isVisible() && !isBlockHotkey()) {
            QCoreApplication::sendEvent(header, e);
            return true;
        }
        if (KDragMenuBar* bar = menuBar(); bar && bar->isVisible()) {
            QCoreApplication::sendEvent(bar, e);
            return true;
        }
        // The bars in the order of the pool, so that automatic numbers are stable.
        const QSet<KToolBar*> visible = currentVisibleBars();
        for (KToolBar* bar : std::as_const(m_toolBars)) {
            if (visible.contains(bar))
                QCoreApplication::sendEvent(bar, e);
        }
        return true;
    }
    auto* trigger = static_cast<KHotKeyTriggerEvent*>(e);
    if (trigger->result == 1 && headerBar()) {
        QCoreApplication::sendEvent(headerBar(), e);
        return true;
    }
    if (KDragMenuBar* bar = menuBar()) {
        QCoreApplication::sendEvent(bar, e);
        return true;
    }
    return false;
}
