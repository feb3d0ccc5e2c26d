#include "kmrucommand.h"

#include <kcommandfactory.h>
#include <ksettings.h>

// --- the item ---

KMRUItemCommand::KMRUItemCommand(KMRUCommand* mru, unsigned int index)
    : KTriggerCommand(mru, mru)
    , m_index(index)
{
}

KMRUItemCommand::~KMRUItemCommand() = default;

void KMRUItemCommand::resetText()
{
    auto* mru = qobject_cast<KMRUCommand*>(host());
    if (!mru)
        return;
    QString text = mru->getStrings().value(int(m_index));
    if (mru->isAutoShortCut()) {
        // No cap at 9: the tenth entry's key is "10".
        const QString number = QString::number(m_index + 1);
        setProperty("hotKey", number);
        text = QStringLiteral("%1 ").arg(number) + text;
    }
    setText(text);
}

void KMRUItemCommand::onTriggered()
{
    if (auto* mru = qobject_cast<KMRUCommand*>(host()))
        mru->onMruTriggered(m_index);
}

// --- the list ---

KMRUCommand::KMRUCommand(QObject* host, QObject* parent)
    : KAbstractListCommand(host, parent)
{
}

KMRUCommand::~KMRUCommand()
{
    // Views hear of every entry going, as with the other lists; the items are children.
    while (!m_items.isEmpty()) {
        const int last = m_items.size() - 1;
        Q_EMIT subCommandRemove(last);
        delete m_items.takeLast();
    }
}

void KMRUCommand::setStrings(const QStringList& strings)
{
    m_strings = strings;
    if (m_maxItems > 0 && m_strings.size() > m_maxItems)
        m_strings = m_strings.mid(0, m_maxItems);

    // Surplus items go from the last down, each announced while still in place.
    while (m_items.size() > m_strings.size()) {
        const int last = m_items.size() - 1;
        Q_EMIT subCommandRemove(last);
        KMRUItemCommand* item = m_items.takeLast();
        item->deleteLater(); // a view may still be inside the item's trigger()
    }
    while (m_items.size() < m_strings.size()) {
        const int i = m_items.size();
        auto* item = new KMRUItemCommand(this, unsigned(i));
        item->resetText();
        m_items.append(item);
        Q_EMIT subCommandInsert(i, item);
    }
    for (KMRUItemCommand* item : qAsConst(m_items))
        item->resetText();
    if (!m_loading)
        _saveStrings();
}

void KMRUCommand::setMaxItems(int maxItems)
{
    if (m_maxItems == maxItems)
        return;
    m_maxItems = maxItems;
    if (maxItems > 0 && m_strings.size() > maxItems)
        setStrings(m_strings.mid(0, maxItems));
    on_command_changed();
}

void KMRUCommand::setAutoShortCut(bool autoShortCut)
{
    if (m_autoShortCut == autoShortCut)
        return;
    m_autoShortCut = autoShortCut;
    for (KMRUItemCommand* item : qAsConst(m_items))
        item->resetText();
    on_command_changed();
}

void KMRUCommand::setSettingsKey(const QString& key)
{
    if (m_settingsKey == key)
        return;
    m_settingsKey = key;
    if (key.isEmpty())
        return;
    // The entries are "count" and "item1".."itemN": plain names, so that the portable XML
    // form of the settings (which keeps no lists) holds them as well as the native one.
    KSettings settings;
    settings.beginGroup(key);
    const int n = settings.value(QStringLiteral("count"), 0).toInt();
    QStringList strings;
    for (int i = 1; i <= n; ++i) {
        const QString s = settings.value(QStringLiteral("item%1").arg(i)).toString();
        if (!s.isEmpty())
            strings.append(s);
    }
    settings.endGroup();
    m_loading = true;
    setStrings(strings);
    m_loading = false;
}

void KMRUCommand::_saveStrings() const
{
    if (m_settingsKey.isEmpty())
        return;
    KSettings settings;
    settings.beginGroup(m_settingsKey);
    settings.remove(QString()); // the whole group: a shorter list leaves no stale entries
    settings.setValue(QStringLiteral("count"), m_strings.size());
    for (int i = 0; i < m_strings.size(); ++i)
        settings.setValue(QStringLiteral("item%1").arg(i + 1), m_strings.at(i));
    settings.endGroup();
}

void KMRUCommand::updateAllItems()
{
    const bool enabled = isEnabled();
    for (KMRUItemCommand* item : qAsConst(m_items))
        item->setEnabled(enabled);
}

void KMRUCommand::onMruTriggered(unsigned int index)
{
    m_index = int(index);
    onTriggered();
}

int KMRUCommand::count() const
{
    return m_items.size();
}

KCommand* KMRUCommand::subCommand(int index) const
{
    return m_items.value(index, nullptr);
}

int KMRUCommand::indexOf(KCommand* command) const
{
    for (int i = 0; i < m_items.size(); ++i) {
        if (m_items.at(i) == command)
            return i;
    }
    return -1;
}
