#ifndef KGALLERYGROUP_H
#define KGALLERYGROUP_H

#include <QList>
#include <QMap>
#include <QObject>
#include <QVector>

#include <kgallerycombobox.h>

class QShortcut;

/**
 * A named slice of a gallery combo box's one model: theme colours, standard colours, recent
 * colours. A group can be filled, hidden and changed on its own; the combo box it belongs to
 * (KGalleryGroupCombobox) keeps the model in step through itemChange().
 *
 * The elements are made for the combo box's model and belong to it. A group that is in no
 * combo box deletes what it pops.
 */
class NORVIKOFFICEUI_EXPORT KGalleryGroup : public QObject
{
    Q_OBJECT
public:
    enum GroupItemChangeMode {
        Removed = 0,
        Inserted = 1,
        Reset = 2, ///< with -1, after a whole group came in
        CurrentIndexChanged = 3
    };
    Q_ENUM(GroupItemChangeMode)

    /// Bits of flag(); the rest are the host's.
    enum GroupFlag { SeparatorGroup = 0x1 };

    KGalleryGroup(KGalleryAbstractModel* model, int flag = 0);
    /// A group of the one element item; separator marks it as a separator between groups.
    KGalleryGroup(KGalleryAbstractModel* model, KGalleryModelAbstractItem* item, bool separator);
    ~KGalleryGroup() override;

    /// A running number, one per group made.
    static int getUniqueId();
    int uniqueId() const { return m_uniqueId; }
    int flag() const { return m_flag; }
    bool isSeparator() const { return m_flag & SeparatorGroup; }
    KGalleryAbstractModel* model() const { return m_model; }

    KGalleryModelAbstractItem* getItem(int index) const { return m_items.value(index); }
    int itemCount() const { return m_items.size(); }
    int indexOf(const KGalleryModelAbstractItem* item) const;
    void pushItem(KGalleryModelAbstractItem* item);
    void popItem();
    /// An index outside 0..itemCount() appends.
    void insertItem(int index, KGalleryModelAbstractItem* item);
    void clear();
    /// -1 or an element of the group becomes the current one of the combo box; -1 also
    /// unchecks every enabled element of the group.
    void setCurrentIndex(int index);
    /// Checks or unchecks an enabled element; checked with makeCurrent it becomes current.
    void setChecked(int index, bool checked, bool makeCurrent);
    /// The text of the element at index.
    void setSubText(const QString& text, int index);
    /// A unique group checks one element at a time, whatever the other groups do.
    void setGroupUnique(bool unique);
    bool isGroupUnique() const { return m_unique; }
    /// Whether any element shows in a popup.
    bool isVisible() const;
    void setVisible(bool visible);
    /// Emits itemClick(item) when item belongs to the group.
    void subItemClick(KGalleryModelAbstractItem* item);

    /// May draw the combo box's field for the group's current element (at indexInGroup);
    /// false here, and the combo box draws it.
    virtual bool DoComboEditFieldDraw(QPainter& painter, const QRect& rect, int indexInGroup);

Q_SIGNALS:
    void itemChange(KGalleryGroup::GroupItemChangeMode mode, int indexInGroup);
    void itemClick(KGalleryModelAbstractItem* item);

private:
    void _adopt(KGalleryModelAbstractItem* item);

    QVector<KGalleryModelAbstractItem*> m_items;
    int m_uniqueId;
    int m_flag;
    KGalleryAbstractModel* m_model;
    bool m_unique = false;
};

/**
 * A gallery combo box whose elements stand in groups (KGalleryGroup), end to end in the
 * model in group order. The box keeps the model in step with its groups, hides separators
 * that have nothing to separate, and turns an "&" mnemonic of an element into a shortcut
 * that acts while the list is open.
 *
 * The groups are owned.
 */
class NORVIKOFFICEUI_EXPORT KGalleryGroupCombobox : public KGalleryComboBox
{
    Q_OBJECT
public:
    explicit KGalleryGroupCombobox(QWidget* parent = nullptr);
    ~KGalleryGroupCombobox() override;

    /// Inserts group at index (-1 or out of range: at the end).
    void addGroup(KGalleryGroup* group, int index = -1);
    /// A new group of the one element.
    KGalleryGroup* addGroup(KGalleryModelAbstractItem* item);
    /// A new separator group of item (a new KxSeparatorItem for null).
    KGalleryGroup* addSeparatorToGroup(KGalleryModelAbstractItem* item = nullptr);
    void insertGroup(int index, KGalleryGroup* group);
    void removeGroup(int index);
    void clear();
    int groupCount() const { return m_groups.size(); }
    KGalleryGroup* group(int index) const { return m_groups.value(index); }
    int indexOfGroup(const KGalleryGroup* group) const;
    /// The group of the current element, and its index in the group; null when none.
    KGalleryGroup* currentGroup(int* indexInGroup = nullptr) const;
    /// Where the group's first element stands in the model.
    int startInModel(int group) const;
    QRect getEditFieldRect() const;

    void resetShortCutList();
    void clearShortCut();
    QList<QShortcut*> shortcuts() const { return m_shortcuts.keys(); }
    /// Hides separator groups at either end, next to another, or between empty or hidden groups.
    void separatorVisibleCheck();

Q_SIGNALS:
    void groupItemClicked(KGalleryGroup* group, KGalleryModelAbstractItem* item);

public Q_SLOTS:
    void on_groupItemClicked(int index);
    void on_groupItemChanged(KGalleryGroup::GroupItemChangeMode mode, int indexInGroup);
    void setViewMinHeight(int index, KGalleryModelAbstractItem* item);
    void resetViewMinHeight(int index);
    void statusChanged(int index);
    void shortCutPress();

protected:
    bool eventFilter(QObject* watched, QEvent* e) override;
    void paintEvent(QPaintEvent* e) override;

private:
    void _activateMnemonic(KGalleryModelAbstractItem* item);
    void _groupChanged(KGalleryGroup* group, KGalleryGroup::GroupItemChangeMode mode, int indexInGroup);

    QList<KGalleryGroup*> m_groups;
    QMap<QShortcut*, KGalleryModelAbstractItem*> m_shortcuts;
};

#endif // KGALLERYGROUP_H
