#include "klistcommand.h"

#include <kcommandfactory.h>
#include <kseparatorcommand.h>

static KCommandFactoryItem<KListCommand, QObject> s_listCommandItem(QStringLiteral("KListCommand"),
                                                                     QStringLiteral("QObject"));

KListCommand::KListCommand(QObject* host, QObject* parent)
    : KAbstractListCommand(host, parent)
{
}

KListCommand::~KListCommand()
{
    // One removal at a time, so that every view takes its items down in step. Connections
    // need no care here: the QObject base drops them before the owned items die.
    while (!m_subCommands.isEmpty()) {
        const int last = m_subCommands.size() - 1;
        Q_EMIT subCommandRemove(last);
        m_subCommands.removeAt(last);
    }
}

int KListCommand::insertSubCommand(int index, KCommand* cmd)
{
    if (!cmd)
        return -1;
    if (index < 0 || index > m_subCommands.size())
        index = m_subCommands.size();
    m_subCommands.insert(index, cmd);
    // The shared separators live as long as the program; every other item may die first.
    if (!qobject_cast<KSeparatorCommand*>(cmd))
        connect(cmd, &QObject::destroyed, this, &KListCommand::onSubCommandDestroyed,
                Qt::UniqueConnection);
    Q_EMIT subCommandInsert(index, cmd);
    return index;
}

int KListCommand::addSubCommand(KCommand* cmd)
{
    return insertSubCommand(-1, cmd);
}

int KListCommand::insertSeparator(int index)
{
    return insertSubCommand(index, KSeparatorCommand::instance());
}

int KListCommand::addSeparator()
{
    return insertSeparator(-1);
}

void KListCommand::removeSubCommand(int index)
{
    if (index < 0 || index >= m_subCommands.size())
        return;
    // Views hear of the removal while the item is still in place.
    Q_EMIT subCommandRemove(index);
    if (index >= m_subCommands.size())
        return; // a view took it out itself
    KCommand* cmd = m_subCommands.takeAt(index);
    if (!m_subCommands.contains(cmd))
        disconnect(cmd, &QObject::destroyed, this, &KListCommand::onSubCommandDestroyed);
}

void KListCommand::clear()
{
    while (count() > 0)
        removeSubCommand(count() - 1);
}

int KListCommand::count() const
{
    const_cast<KListCommand*>(this)->ensureSubCommandsLoaded();
    return m_subCommands.size();
}

KCommand* KListCommand::subCommand(int index) const
{
    const_cast<KListCommand*>(this)->ensureSubCommandsLoaded();
    return m_subCommands.value(index, nullptr);
}

int KListCommand::indexOf(KCommand* cmd) const
{
    const_cast<KListCommand*>(this)->ensureSubCommandsLoaded();
    return m_subCommands.indexOf(cmd);
}

KCommand* KListCommand::clone(QObject* host, QObject* parent)
{
    ensureSubCommandsLoaded();
    auto* copy = new KListCommand(host, parent);
    for (KCommand* sub : qAsConst(m_subCommands)) {
        // Items that cannot be copied (plain commands, separators) are left out.
        if (KCommand* subCopy = sub->clone(host, copy))
            copy->addSubCommand(subCopy);
    }
    copyProperties(copy);
    return copy;
}

void KListCommand::reset()
{
    clear();
    KAbstractListCommand::reset();
}

void KListCommand::onSubCommandDestroyed(QObject* obj)
{
    // The object is being destroyed: compare addresses only.
    for (int i = 0; i < m_subCommands.size();) {
        if (static_cast<QObject*>(m_subCommands.at(i)) == obj) {
            Q_EMIT subCommandRemove(i);
            m_subCommands.removeAt(i);
        } else {
            ++i;
        }
    }
}
