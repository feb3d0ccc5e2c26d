#ifndef KRBTOOLBARCONTAINER_H
#define KRBTOOLBARCONTAINER_H

#include <QLayout>
#include <QList>
#include <QPointer>
#include <QVector>
#include <QWidget>
#include <QWidgetItem>

#include <kcommand.h>
#include <kcommandwidgetbridge.h>
#include <norvikofficeui_export.h>

/**
 * One control of a tool-bar block: the pocket widget of its command. A tool button gets
 * icon and text when the command asks for it: "forceShowIconAndText" always, or
 * "showIconAndText" with the text hiding on a narrow screen.
 */
class NORVIKOFFICEUI_EXPORT KRbToolbarContainerItem : public QWidgetItem
{
public:
    KRbToolbarContainerItem(KCommand* cmd, QWidget* parent);

    KCommand* command() const { return m_command.data(); }
    /// True for the shared separator, which may close a row.
    bool isSeparator() const;

private:
    QPointer<KCommand> m_command;
};

/**
 * Packs a block of small controls into exactly two rows. The width of the block is the
 * narrowest width at which the items fit in two rows, found by bisection; rows break
 * preferably just after a separator, unless that wastes more than the waste proportion
 * (1.3 by default) over half the total width, and anywhere otherwise.
 *
 * The block's size is fixed by its content: minimumSize() and maximumSize() are sizeHint().
 * Nothing is cached; every query and every setGeometry() computes afresh from the items.
 * Items enter only through insertItem(); addItem() ignores what it is given.
 */
class NORVIKOFFICEUI_EXPORT KRbToolbarContainerLayout : public QLayout
{
    Q_OBJECT
public:
    explicit KRbToolbarContainerLayout(QWidget* parent = nullptr);
    ~KRbToolbarContainerLayout() override;

    /// Takes ownership of item; a bad index appends.
    void insertItem(int index, KRbToolbarContainerItem* item);
    double wasteProportion() const { return m_wasteProportion; }
    void setWasteProportion(double proportion);

    /// The sum of the widths.
    int totalWidth(const QVector<QSize>& sizes) const;
    /// The item's sizeHint() held between its minimumSize() and maximumSize() (the minimum wins).
    QSize itemSizeHint(int index) const;
    /**
     * Fills two rows of at most width each, the second continuing where the first ended;
     * returns the end index (exclusive) of each row. All items are placed when the second
     * end equals the number of items.
     */
    QVector<int> tryLayout(const QVector<QSize>& sizes, int width, bool breakAtSeparator) const;
    /// The size of the narrowest two-row packing; (0, 0) when there is none.
    QSize _sizeHint(const QVector<QSize>& sizes, bool breakAtSeparator) const;

    void addItem(QLayoutItem* item) override;
    int count() const override;
    QLayoutItem* itemAt(int index) const override;
    /// Removes the item and deletes its widget later; the caller owns the item.
    QLayoutItem* takeAt(int index) override;
    QSize sizeHint() const override;
    QSize minimumSize() const override;
    QSize maximumSize() const override;
    Qt::Orientations expandingDirections() const override;
    void setGeometry(const QRect& rect) override;

private:
    QVector<QSize> _itemSizes() const;
    bool _isSeparatorAt(int index) const;

    QList<KRbToolbarContainerItem*> m_items;
    double m_wasteProportion = 1.3;
};

/**
 * The block of small buttons into which a list command turns inside a logic group (the
 * command's "embedHint"). Its children are built when it is first shown or measured, and
 * follow the list's insertions and removals. It paints nothing itself.
 */
class NORVIKOFFICEUI_EXPORT KRbToolbarContainer : public KCommandWidgetBridge<QWidget>
{
    Q_OBJECT
public:
    /// Reads the command's "WasteProportion" (default 1.3).
    KRbToolbarContainer(KCommand* cmd, QWidget* parent);
    ~KRbToolbarContainer() override;

    KRbToolbarContainerLayout* containerLayout() const { return m_layout; }

    /// Both build the buttons first: a layout may ask for the minimum before the hint.
    QSize sizeHint() const override;
    QSize minimumSizeHint() const override;

    void onCommandConnected() override;
    void onCommandInserted(int index, KCommand* cmd) override;
    void onCommandRemoved(int index) override;

public Q_SLOTS:
    /// Enabled and visible from the command.
    void syncCommand();

protected:
    bool event(QEvent* e) override;
    void paintEvent(QPaintEvent* e) override;

private:
    KRbToolbarContainerLayout* m_layout;
};

#endif // KRBTOOLBARCONTAINER_H
