#ifndef KLISTCOMMAND_H
#define KLISTCOMMAND_H

#include <QList>

#include <kabstractlistcommand.h>

/**
 * A list command with its own items: a menu, a tool bar, a ribbon group or tab.
 *
 * Items are not owned by the list (those read from the description are its QObject children
 * all the same); the same command may stand several times in a list and in many lists, and
 * leaves all of them when it is destroyed. Views learn of every change through
 * subCommandInsert() (the item is in place) and subCommandRemove() (the item is still there).
 *
 * Reading operations load a delayed content first; inserting does not, so a list can be
 * filled ahead of its load.
 */
class NORVIKOFFICEUI_EXPORT KListCommand : public KAbstractListCommand
{
    Q_OBJECT
public:
    Q_INVOKABLE KListCommand(QObject* host, QObject* parent);
    /// Removes every item one by one, so that each view hears of each removal.
    ~KListCommand() override;

    /// A negative index or one beyond the end appends; returns the index used.
    int insertSubCommand(int index, KCommand* cmd);
    int addSubCommand(KCommand* cmd);
    int insertSeparator(int index);
    int addSeparator();
    /// Takes the item out of the list; it is not deleted.
    void removeSubCommand(int index);
    void clear();

    int count() const override;
    KCommand* subCommand(int index) const override;
    int indexOf(KCommand* cmd) const override;

    /// A KListCommand whatever this class is, with clones of the items that can be cloned.
    KCommand* clone(QObject* host, QObject* parent) override;
    /// Empties the list (the items it owns stay its children), then resets the properties.
    void reset() override;

private Q_SLOTS:
    void onSubCommandDestroyed(QObject* obj);

private:
    QList<KCommand*> m_subCommands;
};

#endif // KLISTCOMMAND_H
