#ifndef KCOMPOSELISTCOMMAND_H
#define KCOMPOSELISTCOMMAND_H

#include <QList>

#include <kabstractlistcommand.h>

/**
 * A list made of plain items and of whole other lists ("composed" items) spliced in at their
 * place. The original items are what the description wrote; the flat list that count() and
 * subCommand() show has the entries of each composed list in place of it, and follows that
 * list as it grows and shrinks. A composed list is held by pointer and dropped when it dies.
 */
class NORVIKOFFICEUI_EXPORT KComposeListCommand : public KAbstractListCommand
{
    Q_OBJECT
public:
    /// One original item: a command, or a list whose entries are spliced in.
    struct tagItem
    {
        KCommand* command = nullptr; ///< a KAbstractListCommand when composed
        bool composed = false;
        int count = 1; ///< flat entries it stands for
    };

    Q_INVOKABLE KComposeListCommand(QObject* host, QObject* parent);
    ~KComposeListCommand() override;

    int countOrig() const;
    KCommand* subCommandOrig(int index) const;
    bool isComposedOrig(int index) const;
    /// Inserts a plain item; an index out of range appends. Returns the index used.
    int insertSubCommandOrig(int index, KCommand* cmd);
    /// Inserts a whole list; an index out of range appends. Returns the index used.
    int insertComposedSubCommandOrig(int index, KAbstractListCommand* list);
    /// Removes an original item and all the flat entries it stands for.
    void removeSubCommandOrig(int index);
    void clear();
    /// Where original item origIndex begins in the flat list.
    int calcCommandLogicIdx(int origIndex) const;

    /// Refreshes every composed list (its update() may change its entries), then counts.
    int count() const override;
    KCommand* subCommand(int index) const override;
    int indexOf(KCommand* cmd) const override;

    void reset() override;

private Q_SLOTS:
    void onSubSubCommandInserted(int idx, KCommand* cmd);
    void onSubSubCommandRemoved(int idx);
    void onSubCommandDestroyed(QObject* obj);

private:
    void _removeOrig(int index, bool dying);

    QList<tagItem> m_origItems;
    QList<KCommand*> m_flat;
};

#endif // KCOMPOSELISTCOMMAND_H
