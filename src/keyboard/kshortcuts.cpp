#include "kshortcuts.h"

#include <QDebug>
#include <QWidget>

#include <kcommand.h>
#include <kcommands.h>

namespace {

// The keys of new, open, save and save-as; a shielded window has no accelerator for them.
// The texts are compared as written: the same key in other case isn't caught.
bool isFileKey(const QString& text)
{
    static const QStringList s_keys = {QStringLiteral("Ctrl+N"), QStringLiteral("Ctrl+Shift+E"),
                                       QStringLiteral("Ctrl+O"), QStringLiteral("F12"),
                                       QStringLiteral("Ctrl+S")};
    return s_keys.contains(text);
}

QString atLine(const KDomElement& e)
{
    return QStringLiteral(" At line: ") + QString::number(e.lineNumber());
}

} // namespace

KShortcuts::KShortcuts(QWidget* host, KCommands* commands)
    : QObject(host)
    , m_host(host)
    , m_commands(commands)
{
    qRegisterMetaType<ShortcutCategory>("ShortcutCategory");
}

KShortcuts::~KShortcuts()
{
    const QList<KShortcut*> all = m_shortcuts;
    m_shortcuts.clear();
    qDeleteAll(all);
}

bool KShortcuts::_readElement(const KDomElement& child, QString& keyText, QKeySequence& key, QString& cmd,
                              bool shieldFileKeys, bool& shielded)
{
    shielded = false;
    if (child.tagName() != QLatin1String("shortcut")) {
        qWarning().noquote() << QStringLiteral("can't identity element ") + child.tagName() + atLine(child);
        return false;
    }
    keyText = child.attribute(QStringLiteral("key"));
    if (shieldFileKeys && isFileKey(keyText)) {
        shielded = true;
        return false;
    }
    cmd = child.attribute(QStringLiteral("cmd"));
    key = QKeySequence::fromString(keyText, QKeySequence::PortableText);
    if (key.isEmpty() || key[0].toCombined() == 0 || key[0].key() == Qt::Key_unknown) {
        qWarning().noquote() << QStringLiteral("invalid shortcut key: ") + keyText + atLine(child);
        return false;
    }
    if (cmd.isEmpty()) {
        qWarning().noquote() << QStringLiteral("menubar no command given.") + atLine(child);
        return false;
    }
    return true;
}

bool KShortcuts::setupXml(const KDomElement& shortcuts, bool shieldFileKeys)
{
    if (!m_commands)
        return false;
    for (KDomElement child = shortcuts.firstChildElement(); !child.isNull(); child = child.nextSiblingElement()) {
        QString keyText;
        QString cmd;
        QKeySequence key;
        bool shielded = false;
        if (!_readElement(child, keyText, key, cmd, shieldFileKeys, shielded))
            continue;
        KCommand* command = m_commands->command(cmd);
        if (!command) {
            qWarning().noquote() << QStringLiteral("can not found command named:") + cmd + atLine(child);
            continue;
        }
        // Tool tips and menu rows read the key from here; the last one read wins.
        command->setProperty("shortcutHint", keyText);
        addShortcut(key, cmd, CommandShortcut, Qt::WindowShortcut);
    }
    return true;
}

bool KShortcuts::resetXml(const KDomElement& shortcuts)
{
    if (!m_commands)
        return false;
    for (KDomElement child = shortcuts.firstChildElement(); !child.isNull(); child = child.nextSiblingElement()) {
        QString keyText;
        QString cmd;
        QKeySequence key;
        bool shielded = false;
        if (!_readElement(child, keyText, key, cmd, false, shielded))
            continue;
        removeShortcut(findFirstShortcut(key, cmd, CommandShortcut));
    }
    return true;
}

KShortcut* KShortcuts::addShortcut(const QKeySequence& key, const QString& cmd, ShortcutCategory category,
                                   Qt::ShortcutContext context)
{
    // Announced first, so that an overlay can switch off the older entries with this key
    // while the new one doesn't exist yet.
    Q_EMIT beforeAddShortuct(key, cmd, category);
    auto* shortcut = new KShortcut(key, m_host, m_commands, cmd, category);
    if (context != Qt::WindowShortcut)
        shortcut->setContext(context);
    connect(shortcut, &QShortcut::activated, this, &KShortcuts::shortcutActivated);
    connect(shortcut, &QShortcut::activatedAmbiguously, this, &KShortcuts::shortcutActivated);
    m_shortcuts.append(shortcut);
    return shortcut;
}

void KShortcuts::removeShortcut(KShortcut* shortcut)
{
    if (!shortcut)
        return;
    // The command's text travels here, not the entry's command name; the wrapper's slots
    // read only the key.
    KCommand* cmd = shortcut->command();
    Q_EMIT beforeRmShortcut(shortcut->key(), cmd ? cmd->text() : QString(), shortcut->getCategory());
    m_shortcuts.removeOne(shortcut);
    delete shortcut;
}

KShortcut* KShortcuts::shortcutAt(int index) const
{
    return m_shortcuts.value(index);
}

KShortcut* KShortcuts::shortcutAt(const QKeySequence& key) const
{
    for (KShortcut* s : m_shortcuts) {
        if (s->key() == key)
            return s;
    }
    return nullptr;
}

KShortcut* KShortcuts::findFirstShortcut(const QKeySequence& key, const QString& cmd, ShortcutCategory category) const
{
    for (KShortcut* s : m_shortcuts) {
        if (s->key() == key && s->getCategory() == category && s->getCommand() == cmd)
            return s;
    }
    return nullptr;
}

int KShortcuts::setEnableShortcuts(const QKeySequence& key, const bool& enable)
{
    int changed = 0;
    for (KShortcut* s : m_shortcuts) {
        if (s->key() == key) {
            s->setEnabled(enable);
            ++changed;
        }
    }
    return changed;
}

void KShortcuts::shortcutActivated()
{
    auto* shortcut = qobject_cast<KShortcut*>(sender());
    if (!shortcut)
        return;
    if (shortcut->getCategory() == StyleShortcut && shortcut->command()) {
        // The one "StyleShortcut" command learns which style was asked for.
        shortcut->command()->setProperty("ShortcutKey", shortcut->getCommand());
    }
    shortcut->execute();
}
