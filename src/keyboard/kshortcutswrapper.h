#ifndef KSHORTCUTSWRAPPER_H
#define KSHORTCUTSWRAPPER_H

#include <QObject>
#include <QSet>
#include <QString>

#include <kdomdocument.h>
#include <kshortcuts.h>
#include <norvikofficeui_export.h>

class QWidget;
class KCommands;

/**
 * Owns the KShortcuts of a host and lays further named sets of shortcuts over it for a
 * while: polishShortcutXml() reads the "shortcuts" of a section of every loaded document,
 * unPolishShortcutXml() takes them off again. With the flag true, the older entries of a key
 * that the overlay binds go dark while the overlay stands, and light again when it goes.
 *
 * Once an overlay of either direction has been applied with its flag true, the matching
 * switch stays live for the rest of the wrapper's life.
 */
class NORVIKOFFICEUI_EXPORT KShortcutsWrapper : public QObject
{
    Q_OBJECT
public:
    /// Without a list; attach() or createShortcuts() gives it one.
    explicit KShortcutsWrapper(QObject* parent);
    /// With a new list for host; host is the wrapper's parent too.
    KShortcutsWrapper(QWidget* host, KCommands* commands);
    ~KShortcutsWrapper() override;

    KShortcuts* createShortcuts(QWidget* host, KCommands* commands);
    void attach(KShortcuts* shortcuts);
    /// Gives the list up (the caller owns it) and zeroes the flag word.
    KShortcuts* detach();
    void clear();
    KShortcuts* shortcuts() const { return m_shortcuts; }

    void polishShortcutXml(const QString& section, const bool& disableEqualKeys);
    void unPolishShortcutXml(const QString& section, const bool& enableEqualKeys);

    bool _setupXml(KDomDocument& document, const QString& section);
    bool _resetXml(KDomDocument& document, const QString& section);

public Q_SLOTS:
    void enableShortcuts(const QKeySequence& key, const QString& cmd, ShortcutCategory ct);
    void disableShortcuts(const QKeySequence& key, const QString& cmd, ShortcutCategory ct);

private:
    enum Flag : quint32 {
        RemoveConnected = 1,
        AddConnected = 2,
        OverlayActive = 4,
        OverlayRemovalActive = 8
    };

    KShortcuts* m_shortcuts = nullptr;
    QSet<QString> m_switchedKeys;
    quint32 m_flags = 0;
};

class KMainWindow;
class KShortcut;

/**
 * The shortcuts a host made itself for one main window. The entries live in the window's
 * own list; this only remembers them, so that the host can take them off together.
 */
class NORVIKOFFICEUI_EXPORT KCustomShortcuts
{
public:
    explicit KCustomShortcuts(KMainWindow* window);
    /// Frees the record only; the shortcuts stay in the window's list.
    ~KCustomShortcuts();
    KCustomShortcuts(const KCustomShortcuts&) = delete;
    KCustomShortcuts& operator=(const KCustomShortcuts&) = delete;

    int count() const { return m_shortcuts.size(); }
    /// Null out of range.
    KShortcut* item(int index) const;
    void add(KShortcut* shortcut);
    KShortcut* shortcutAt(const QKeySequence& key) const;
    /// Forgets the entry and removes it from the window's list; unknown entries are left alone.
    void remove(KShortcut* shortcut);
    void clear();
    void _clear();

private:
    QVector<KShortcut*> m_shortcuts;
    KMainWindow* m_window;
};

#endif // KSHORTCUTSWRAPPER_H
