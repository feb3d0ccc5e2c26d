#include "kshortcutswrapper.h"

#include <QWidget>

#include <kapplication.h>
#include <kmainwindow.h>

KShortcutsWrapper::KShortcutsWrapper(QObject* parent)
    : QObject(parent)
{
}

KShortcutsWrapper::KShortcutsWrapper(QWidget* host, KCommands* commands)
    : QObject(host)
{
    m_shortcuts = new KShortcuts(host, commands);
}

KShortcutsWrapper::~KShortcutsWrapper()
{
    clear();
}

KShortcuts* KShortcutsWrapper::createShortcuts(QWidget* host, KCommands* commands)
{
    clear();
    m_shortcuts = new KShortcuts(host, commands);
    return m_shortcuts;
}

void KShortcutsWrapper::attach(KShortcuts* shortcuts)
{
    clear();
    m_shortcuts = shortcuts;
}

KShortcuts* KShortcutsWrapper::detach()
{
    KShortcuts* list = m_shortcuts;
    if (list)
        disconnect(list, nullptr, this, nullptr);
    m_shortcuts = nullptr;
    m_flags = 0;
    return list;
}

void KShortcutsWrapper::clear()
{
    if (!m_shortcuts)
        return;
    delete m_shortcuts;
    m_shortcuts = nullptr;
    m_flags = 0;
}

bool KShortcutsWrapper::_setupXml(KDomDocument& document, const QString& section)
{
    const KDomElement sectionElement = document.documentElement().firstChildElement(section);
    for (KDomElement child = sectionElement.firstChildElement(); !child.isNull();
         child = child.nextSiblingElement()) {
        if (child.tagName() == QLatin1String("shortcuts") && m_shortcuts)
            m_shortcuts->setupXml(child, false);
    }
    return true;
}

bool KShortcutsWrapper::_resetXml(KDomDocument& document, const QString& section)
{
    const KDomElement sectionElement = document.documentElement().firstChildElement(section);
    for (KDomElement child = sectionElement.firstChildElement(); !child.isNull();
         child = child.nextSiblingElement()) {
        if (child.tagName() == QLatin1String("shortcuts") && m_shortcuts)
            m_shortcuts->resetXml(child);
    }
    return true;
}

void KShortcutsWrapper::polishShortcutXml(const QString& section, const bool& disableEqualKeys)
{
    if (!m_shortcuts)
        return;
    if (!(m_flags & AddConnected)) {
        m_flags |= AddConnected;
        connect(m_shortcuts, &KShortcuts::beforeAddShortuct, this, &KShortcutsWrapper::disableShortcuts);
    }
    if (disableEqualKeys) {
        m_flags |= OverlayActive;
        m_switchedKeys.clear();
    }
    KApplication* app = KApplication::instance();
    if (!app)
        return;
    QList<KDomDocument> docs = app->getDoms();
    for (KDomDocument& doc : docs)
        _setupXml(doc, section);
}

void KShortcutsWrapper::unPolishShortcutXml(const QString& section, const bool& enableEqualKeys)
{
    if (!m_shortcuts)
        return;
    if (!(m_flags & RemoveConnected)) {
        m_flags |= RemoveConnected;
        connect(m_shortcuts, &KShortcuts::beforeRmShortcut, this, &KShortcutsWrapper::enableShortcuts);
    }
    if (enableEqualKeys) {
        m_flags |= OverlayRemovalActive;
        m_switchedKeys.clear();
    }
    KApplication* app = KApplication::instance();
    if (!app)
        return;
    QList<KDomDocument> docs = app->getDoms();
    for (KDomDocument& doc : docs)
        _resetXml(doc, section);
}

void KShortcutsWrapper::disableShortcuts(const QKeySequence& key, const QString&, ShortcutCategory)
{
    if (!(m_flags & OverlayActive) || !m_shortcuts)
        return;
    // Only the entries there when the overlay first touches a key go dark; the overlay's own
    // later entries with that key stay lit.
    const QString text = key.toString(QKeySequence::PortableText);
    if (m_switchedKeys.contains(text))
        return;
    m_switchedKeys.insert(text);
    m_shortcuts->setEnableShortcuts(key, false);
}

void KShortcutsWrapper::enableShortcuts(const QKeySequence& key, const QString&, ShortcutCategory)
{
    if (!(m_flags & OverlayRemovalActive) || !m_shortcuts)
        return;
    const QString text = key.toString(QKeySequence::PortableText);
    if (m_switchedKeys.contains(text))
        return;
    m_switchedKeys.insert(text);
    m_shortcuts->setEnableShortcuts(key, true);
}

// --- KCustomShortcuts ---

KCustomShortcuts::KCustomShortcuts(KMainWindow* window)
    : m_window(window)
{
}

KCustomShortcuts::~KCustomShortcuts() = default;

KShortcut* KCustomShortcuts::item(int index) const
{
    return m_shortcuts.value(index, nullptr);
}

void KCustomShortcuts::add(KShortcut* shortcut)
{
    m_shortcuts.append(shortcut);
}

KShortcut* KCustomShortcuts::shortcutAt(const QKeySequence& key) const
{
    for (KShortcut* s : m_shortcuts) {
        if (s && s->key() == key)
            return s;
    }
    return nullptr;
}

void KCustomShortcuts::remove(KShortcut* shortcut)
{
    const int i = m_shortcuts.indexOf(shortcut);
    if (i < 0)
        return;
    m_shortcuts.remove(i);
    if (m_window && m_window->shortcuts())
        m_window->shortcuts()->removeShortcut(shortcut);
}

void KCustomShortcuts::clear()
{
    _clear();
}

void KCustomShortcuts::_clear()
{
    if (m_window && m_window->shortcuts()) {
        for (KShortcut* s : m_shortcuts)
            m_window->shortcuts()->removeShortcut(s);
    }
    m_shortcuts.clear();
}
