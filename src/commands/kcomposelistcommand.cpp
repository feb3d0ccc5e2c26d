#include "kcomposelistcommand.h"

#include <kcommandfactory.h>
#include <kseparatorcommand.h>

static KCommandFactoryItem<KComposeListCommand, QObject>
    s_composeListCommandItem(QStringLiteral("KComposeListCommand"), QStringLiteral("QObject"));

KComposeListCommand::KComposeListCommand(QObject* host, QObject* parent)
    : KAbstractListCommand(host, parent)
{
}

KComposeListCommand::~KComposeListCommand()
{
    // As a plain list does: views hear of every entry going.
    while (!m_origItems.isEmpty())
        removeSubCommandOrig(m_origItems.size() - 1);
}

int KComposeListCommand::countOrig() const
{
    const_cast<KComposeListCommand*>(this)->ensureSubCommandsLoaded();
    return m_origItems.size();
}

KCommand* KComposeListCommand::subCommandOrig(int index) const
{
    const_cast<KComposeListCommand*>(this)->ensureSubCommandsLoaded();
    if (index < 0 || index >= m_origItems.size())
        return nullptr;
    return m_origItems.at(index).command;
}

bool KComposeListCommand::isComposedOrig(int index) const
{
    if (index < 0 || index >= m_origItems.size())
        return false;
    return m_origItems.at(index).composed;
}

int KComposeListCommand::calcCommandLogicIdx(int origIndex) const
{
    int flat = 0;
    const int end = qMin(origIndex, int(m_origItems.size()));
    for (int i = 0; i < end; ++i)
        flat += m_origItems.at(i).count;
    return flat;
}

int KComposeListCommand::insertSubCommandOrig(int index, KCommand* cmd)
{
    if (!cmd)
        return -1;
    if (index < 0 || index > m_origItems.size())
        index = m_origItems.size();
    tagItem item;
    item.command = cmd;
    m_origItems.insert(index, item);
    const int flat = calcCommandLogicIdx(index);
    m_flat.insert(flat, cmd);
    Q_EMIT subCommandInsert(flat, cmd);
    if (!qobject_cast<KSeparatorCommand*>(cmd))
        connect(cmd, &QObject::destroyed, this, &KComposeListCommand::onSubCommandDestroyed,
                Qt::UniqueConnection);
    return index;
}

int KComposeListCommand::insertComposedSubCommandOrig(int index, KAbstractListCommand* list)
{
    if (!list)
        return -1;
    if (index < 0 || index > m_origItems.size())
        index = m_origItems.size();
    // count() first: it loads a delayed list, whose own insertions we must not hear twice.
    const int n = list->count();
    tagItem item;
    item.command = list;
    item.composed = true;
    item.count = n;
    m_origItems.insert(index, item);
    const int flat = calcCommandLogicIdx(index);
    for (int k = 0; k < n; ++k) {
        KCommand* sub = list->subCommand(k);
        m_flat.insert(flat + k, sub);
        Q_EMIT subCommandInsert(flat + k, sub);
    }
    connect(list, &KAbstractListCommand::subCommandInsert, this,
            &KComposeListCommand::onSubSubCommandInserted, Qt::UniqueConnection);
    connect(list, &KAbstractListCommand::subCommandRemove, this,
            &KComposeListCommand::onSubSubCommandRemoved, Qt::UniqueConnection);
    connect(list, &QObject::destroyed, this, &KComposeListCommand::onSubCommandDestroyed,
            Qt::UniqueConnection);
    return index;
}

void KComposeListCommand::removeSubCommandOrig(int index)
{
    _removeOrig(index, false);
}

void KComposeListCommand::_removeOrig(int index, bool dying)
{
    if (index < 0 || index >= m_origItems.size())
        return;
    const tagItem item = m_origItems.at(index);
    const int flat = calcCommandLogicIdx(index);
    for (int k = 0; k < item.count; ++k) {
        Q_EMIT subCommandRemove(flat);
        m_flat.removeAt(flat);
    }
    m_origItems.removeAt(index);

    for (const tagItem& other : qAsConst(m_origItems)) {
        if (other.command == item.command)
            return; // still referenced elsewhere: keep listening
    }
    // A dying object drops its connections itself, and is no longer of its class.
    if (dying)
        return;
    if (item.composed) {
        auto* list = static_cast<KAbstractListCommand*>(item.command);
        disconnect(list, &KAbstractListCommand::subCommandInsert, this,
                   &KComposeListCommand::onSubSubCommandInserted);
        disconnect(list, &KAbstractListCommand::subCommandRemove, this,
                   &KComposeListCommand::onSubSubCommandRemoved);
    }
    disconnect(item.command, &QObject::destroyed, this, &KComposeListCommand::onSubCommandDestroyed);
}

void KComposeListCommand::clear()
{
    while (countOrig() > 0)
        removeSubCommandOrig(0);
}

int KComposeListCommand::count() const
{
    auto* self = const_cast<KComposeListCommand*>(this);
    self->ensureSubCommandsLoaded();
    // A composed list may change its entries in its update(); its signals keep the flat
    // list in step. Indexes, not iterators: the handlers change the items' counts.
    for (int i = 0; i < m_origItems.size(); ++i) {
        if (m_origItems.at(i).composed)
            m_origItems.at(i).command->update();
    }
    return m_flat.size();
}

KCommand* KComposeListCommand::subCommand(int index) const
{
    const_cast<KComposeListCommand*>(this)->ensureSubCommandsLoaded();
    return m_flat.value(index, nullptr);
}

int KComposeListCommand::indexOf(KCommand* cmd) const
{
    const_cast<KComposeListCommand*>(this)->ensureSubCommandsLoaded();
    return m_flat.indexOf(cmd);
}

void KComposeListCommand::reset()
{
    clear();
    KAbstractListCommand::reset();
}

void KComposeListCommand::onSubSubCommandInserted(int idx, KCommand* cmd)
{
    QObject* list = sender();
    // The same list may be composed more than once; each place follows it.
    int start = 0;
    for (int i = 0; i < m_origItems.size(); ++i) {
        tagItem& item = m_origItems[i];
        if (item.composed && item.command == list && idx >= 0 && idx <= item.count) {
            const int pos = start + idx;
            m_flat.insert(pos, cmd);
            ++item.count;
            Q_EMIT subCommandInsert(pos, cmd);
        }
        start += m_origItems.at(i).count;
    }
}

void KComposeListCommand::onSubSubCommandRemoved(int idx)
{
    QObject* list = sender();
    int start = 0;
    for (int i = 0; i < m_origItems.size(); ++i) {
        tagItem& item = m_origItems[i];
        if (item.composed && item.command == list && idx >= 0 && idx < item.count) {
            const int pos = start + idx;
            Q_EMIT subCommandRemove(pos);
            m_flat.removeAt(pos);
            --item.count;
        }
        start += m_origItems.at(i).count;
    }
}

void KComposeListCommand::onSubCommandDestroyed(QObject* obj)
{
    for (int i = 0; i < m_origItems.size();) {
        if (static_cast<QObject*>(m_origItems.at(i).command) == obj)
            _removeOrig(i, true);
        else
            ++i;
    }
}
