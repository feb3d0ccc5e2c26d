#ifndef KCOMBOBOXCOMMAND_H
#define KCOMBOBOXCOMMAND_H

#include <QList>
#include <QPointer>
#include <QStringList>

#include <kapicommand.h>

class KComboBox;

/**
 * The command behind a combo box in a bar: the item texts, the selected text and index.
 * Every widget made from it is a KComboBox bound in both directions, so several boxes on one
 * command stay alike. A choice or a typed value in a box sets selected() and triggers the
 * command; a host sets the selection with setSelected() and setCurrentIndex().
 *
 * A host that writes a new value into the field asks isNeedUpdate() first: the answer is
 * false while a user types in one of the boxes.
 *
 * The XML attribute "items" gives the whole list, separated by ";".
 */
class NORVIKOFFICEUI_EXPORT KComboBoxCommand : public KApiCommand
{
    Q_OBJECT
    Q_PROPERTY(QString items READ items WRITE setItems)
    Q_PROPERTY(QString selected READ selected WRITE setSelected)
    Q_PROPERTY(int currentIndex READ currentIndex WRITE setCurrentIndex)
    Q_PROPERTY(int maxVisibleItems READ maxVisibleItems WRITE setMaxVisibleItems)
    Q_PROPERTY(int viewMinWidth READ viewMinWidth WRITE setViewMinWidth)
public:
    Q_INVOKABLE KComboBoxCommand(QObject* host, QObject* parent);
    ~KComboBoxCommand() override;

    /// The last text chosen or typed.
    QString selected() const { return m_selected; }
    void setSelected(const QString& selected);
    /// The last index chosen; -1 at start.
    int currentIndex() const { return m_currentIndex; }
    void setCurrentIndex(int index);
    /// Rows the drop-down shows; 12 at start.
    int maxVisibleItems() const { return m_maxVisibleItems; }
    void setMaxVisibleItems(int count);
    /// Least width of the drop-down; -1 lets the box work it out.
    int viewMinWidth() const { return m_viewMinWidth; }
    void setViewMinWidth(int width);

    /// The items joined by ";".
    QString items() const;
    QStringList itemsList() const { return m_items; }
    int itemsCount() const { return m_items.size(); }
    /// The text of item i, or an empty text out of range.
    QString itemsAt(int i) const { return m_items.value(i); }
    /// Inserts at i; an index outside 0 to itemsCount() appends.
    void insertItem(int i, const QString& text);
    /// Tells the boxes first, then removes; out of range nothing happens.
    void removeItem(int i);
    void clearItems();
    /// Out of range nothing happens.
    void setItemText(int i, const QString& text);
    /// The whole list from a ";"-separated text; empty parts are skipped, "" clears.
    void setItems(const QString& items);

    /// Binds box to this command in both directions and fills it.
    void initComboBox(KComboBox* box);
    /// A KComboBox for this command.
    QWidget* createPocketWidget(QWidget* parent) override;
    /// A combo box command with the same properties whose trigger reaches this one.
    KCommand* clone(QObject* host, QObject* parent) override;

    /// Whether boxes complete typed text from the items; false here.
    virtual bool hasCompleter() const;
    /// The live boxes bound to this command, in the order they were bound.
    QList<KComboBox*> boxes() const;

public Q_SLOTS:
    /// A box chose or took a typed text: it becomes selected, then the command triggers.
    void comboBoxTriggered(const QString& selected);
    /// A box chose an index: it is stored, nothing more.
    void comboBoxTriggered(int selectedIndex);

Q_SIGNALS:
    void notifyEditLineChange(const QString& text);
    void notifySelectedChange(int index);
    void notifyAddItems(const QStringList& items);
    void notifyClear();
    /// Asked before a host writes into the field; need ends false while a user edits.
    void isNeedUpdate(bool& need);
    void itemInsert(int index, const QString& text);
    void itemRemove(int index);
    void itemChanged(int index, const QString& text);
    void notifySetItems(const QStringList& items);

private:
    QString m_selected;
    int m_currentIndex = -1;
    int m_maxVisibleItems = 12;
    int m_viewMinWidth = -1;
    QStringList m_items;
    QList<QPointer<KComboBox>> m_boxes;
};

#endif // KCOMBOBOXCOMMAND_H
