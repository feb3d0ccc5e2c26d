#ifndef KMRUCOMMAND_H
#define KMRUCOMMAND_H

#include <QStringList>
#include <QVector>

#include <kabstractlistcommand.h>
#include <ktriggercommand.h>

class KMRUCommand;

/**
 * One entry of a most-recently-used list: its text is string number index() of the list
 * (with "n " ahead and the hot key n when the list numbers its entries), and triggering it
 * tells the list which entry was chosen.
 */
class NORVIKOFFICEUI_EXPORT KMRUItemCommand : public KTriggerCommand
{
    Q_OBJECT
public:
    /// The list is both host and parent of the item.
    KMRUItemCommand(KMRUCommand* mru, unsigned int index);
    ~KMRUItemCommand() override;

    unsigned int index() const { return m_index; }
    /// Takes the text from the list again.
    void resetText();

protected:
    void onTriggered() override;

private:
    unsigned int m_index;
};

/**
 * A list of recently used strings (file paths, say), one KMRUItemCommand per string. The
 * host keeps the strings and hands them over with setStrings(); a host subclass overrides
 * onTriggered() and reads index() to learn which entry was chosen.
 *
 * With "settingsKey" set, the strings are kept in the user's settings (KSettings) under that
 * group: they are read when the key is set and written by every setStrings(), so the list
 * survives a restart without the host storing it.
 */
class NORVIKOFFICEUI_EXPORT KMRUCommand : public KAbstractListCommand
{
    Q_OBJECT
    Q_PROPERTY(bool autoShortCut READ isAutoShortCut WRITE setAutoShortCut)
    Q_PROPERTY(int maxItems READ maxItems WRITE setMaxItems)
    Q_PROPERTY(QString settingsKey READ settingsKey WRITE setSettingsKey)
public:
    Q_INVOKABLE KMRUCommand(QObject* host, QObject* parent);
    ~KMRUCommand() override;

    /// Cut to maxItems() (when positive); items are added or dropped to match, then renamed.
    void setStrings(const QStringList& strings);
    QStringList getStrings() const { return m_strings; }
    /// The entry chosen last, -1 before any.
    int index() const { return m_index; }
    void setIndex(int index) { m_index = index; }
    /// -1 (or 0): no limit. Lowering it cuts the strings; raising it brings nothing back.
    int maxItems() const { return m_maxItems; }
    void setMaxItems(int maxItems);
    bool isAutoShortCut() const { return m_autoShortCut; }
    void setAutoShortCut(bool autoShortCut);
    QString settingsKey() const { return m_settingsKey; }
    /// A non-empty key loads the strings kept under it.
    void setSettingsKey(const QString& key);

    /// Gives each item the list's own enablement.
    void updateAllItems();
    /// Called by item number index when it is triggered.
    void onMruTriggered(unsigned int index);

    int count() const override;
    KCommand* subCommand(int index) const override;
    int indexOf(KCommand* command) const override;

private:
    void _saveStrings() const;

    QStringList m_strings;
    int m_index = -1;
    int m_maxItems = -1;
    bool m_autoShortCut = false;
    QVector<KMRUItemCommand*> m_items;
    QString m_settingsKey;
    bool m_loading = false;
};

#endif // KMRUCOMMAND_H
