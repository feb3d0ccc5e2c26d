#ifndef KSHORTCUTS_H
#define KSHORTCUTS_H

#include <QKeySequence>
#include <QList>
#include <QObject>
#include <QString>

#include <kdomelement.h>
#include <kshortcut.h>
#include <norvikofficeui_export.h>

class QWidget;
class KCommands;

/**
 * The accelerators of one host widget (a main window, a sub-window, a view), in order of
 * addition. Owns its KShortcut objects; its QObject parent is the host. Entries with the
 * same key are allowed side by side: whichever Qt offers fires.
 */
class NORVIKOFFICEUI_EXPORT KShortcuts : public QObject
{
    Q_OBJECT
public:
    KShortcuts(QWidget* host, KCommands* commands);
    ~KShortcuts() override;

    QWidget* host() const { return m_host; }
    KCommands* commands() const { return m_commands; }

    /**
     * Reads a "shortcuts" element: one entry per "shortcut" child with "key" (portable text)
     * and "cmd". A fault warns with its line and skips that element only. With shieldFileKeys
     * the file keys (new, open, save, save as) are passed over silently. The command's
     * "shortcutHint" takes the key text. False only without a registry.
     */
    bool setupXml(const KDomElement& shortcuts, bool shieldFileKeys);
    /// Removes, for each "shortcut" child, the first matching entry. False without a registry.
    bool resetXml(const KDomElement& shortcuts);

    KShortcut* addShortcut(const QKeySequence& key, const QString& cmd, ShortcutCategory category,
                           Qt::ShortcutContext context = Qt::WindowShortcut);
    /// Takes the entry out and deletes it; null does nothing.
    void removeShortcut(KShortcut* shortcut);

    KShortcut* shortcutAt(int index) const;
    int count() const { return m_shortcuts.size(); }
    /// The first entry whose key equals key; null when none.
    KShortcut* shortcutAt(const QKeySequence& key) const;
    KShortcut* findFirstShortcut(const QKeySequence& key, const QString& cmd, ShortcutCategory category) const;
    /// Enables or disables every entry with that key; returns how many it changed.
    int setEnableShortcuts(const QKeySequence& key, const bool& enable);

Q_SIGNALS:
    void beforeAddShortuct(const QKeySequence& key, const QString& cmd, ShortcutCategory ct);
    void beforeRmShortcut(const QKeySequence& key, const QString& cmd, ShortcutCategory ct);

public Q_SLOTS:
    void shortcutActivated();

private:
    /// The key of a "shortcut" child, or an empty sequence after the element's warning.
    static bool _readElement(const KDomElement& child, QString& keyText, QKeySequence& key, QString& cmd,
                             bool shieldFileKeys, bool& shielded);

    QWidget* m_host;
    QList<KShortcut*> m_shortcuts;
    KCommands* m_commands;
};

Q_DECLARE_METATYPE(ShortcutCategory)

#endif // KSHORTCUTS_H
