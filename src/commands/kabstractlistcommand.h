#ifndef KABSTRACTLISTCOMMAND_H
#define KABSTRACTLISTCOMMAND_H

#include <kcommand.h>

class KAbstractListCommand;

/**
 * Loads the sub-commands of a list on demand. A list keeps the parser that created it
 * together with its "delayloadPath" and asks it the first time its items are read.
 */
class NORVIKOFFICEUI_EXPORT KSubCommandParser
{
public:
    virtual ~KSubCommandParser();
    virtual void setupCommandXML(KAbstractListCommand* list, const QString& path) = 0;
};

/**
 * Base of every command that holds sub-commands: menus, tool bars, ribbon groups and tabs.
 * Reading operations load delayed sub-commands first (ensureSubCommandsLoaded()).
 * Changes to the items are announced with subCommandInsert() / subCommandRemove().
 */
class NORVIKOFFICEUI_EXPORT KAbstractListCommand : public KCommand
{
    Q_OBJECT
    Q_PROPERTY(bool hideArrowHint READ hideArrowHint WRITE setHideArrowHint)
    Q_PROPERTY(QString delayloadPath READ delayloadPath WRITE setDelayloadPath)
public:
    KAbstractListCommand(QObject* host, QObject* parent);
    ~KAbstractListCommand() override;

    bool isExtensible() const override;

    /**
     * The button of the list in a bar: a KMenuButton bound to the list, with the drop-down
     * arrow unless hideArrowHint is set, split when the list itself can be triggered. A press
     * on its drop-down part opens the list's menu (its extended widget) under the button; a
     * list with no items opens nothing.
     */
    QWidget* createPocketWidget(QWidget* parent) override;
    /// The list opens as a menu: a KMenuWidget on it.
    QWidget* createExtendedWidget(QWidget* parent) override;

    bool isTriggerEnabled() const { return m_triggerEnabled; }
    void setTriggerEnabled(bool enabled);
    bool isPopupEnabled() const { return m_popupEnabled; }
    void setPopupEnabled(bool enabled);
    bool hideArrowHint() const { return m_hideArrowHint; }
    void setHideArrowHint(bool hide);
    QString delayloadPath() const { return m_delayloadPath; }
    void setDelayloadPath(const QString& path);

    /// Not owned; the parser outlives the lists it made (it is their registry).
    void setSubCommandParser(KSubCommandParser* parser) { m_subCommandParser = parser; }
    KSubCommandParser* subCommandParser() const { return m_subCommandParser; }
    /// True when nothing waits to be loaded: no parser stored, or no path.
    bool isSubCommandsLoaded() const;
    /// Loads delayed sub-commands once; the parser is dropped first so a load cannot re-enter.
    void ensureSubCommandsLoaded();

Q_SIGNALS:
    void subCommandInsert(int idx, KCommand* subCmd);
    void subCommandRemove(int idx);

private:
    bool m_triggerEnabled = true;
    bool m_popupEnabled = true;
    bool m_hideArrowHint = false;
    QString m_delayloadPath;
    KSubCommandParser* m_subCommandParser = nullptr;
};

#endif // KABSTRACTLISTCOMMAND_H
