#ifndef KRBLOGICGROUPLAYOUT_H
#define KRBLOGICGROUPLAYOUT_H

#include <QLayout>
#include <QList>
#include <QPointer>
#include <QWidgetItem>

#include <kcommand.h>
#include <norvikofficeui_export.h>

/**
 * One control of a logic group. The command's "spaceHint" (default 3) says how it stands:
 * 3 large, in a column of its own; 2 small with text; 1 small, its text the first to go on
 * a narrow screen; anything else an icon alone. A tool button gets the icon size and button
 * style of its kind. With "embedHint" a list command becomes a tool-bar block
 * (KRbToolbarContainer) instead of a drop-down button.
 *
 * The item is empty while its command is hidden, and each size query carries the command's
 * visibility over to the widget.
 */
class NORVIKOFFICEUI_EXPORT KRbLogicGroupItem : public QWidgetItem
{
public:
    KRbLogicGroupItem(KCommand* cmd, QWidget* parent);

    int spaceHint() const { return m_spaceHint; }
    bool embedHint() const { return m_embedHint; }
    KCommand* command() const { return m_command.data(); }
    /// Space hint 3: the control takes a column of its own.
    bool isLarge() const { return m_spaceHint == 3; }

    /// True while the command is hidden (or gone).
    bool isEmpty() const override;
    /// Brings the widget's visibility in line with the command first.
    QSize sizeHint() const override;
    void updateVisible() const;

private:
    int m_spaceHint;
    bool m_embedHint;
    QPointer<KCommand> m_command;
};

/**
 * The control area of a logic group. Small controls stack in columns of up to lineCount()
 * (3 by default; hidden ones do not count), a large control takes a column of its own, and
 * the columns stand side by side, horizontalSpacing() apart.
 *
 * Given less width than its hint, every column and large control gives up width in
 * proportion to what it can spare down to its minimum; given more, it takes width in
 * proportion to what it can take up to its maximum. Rounding is carried to the next
 * element. In a column the free height falls evenly into the gaps above, between and below
 * the controls, which keep their own widths, left-aligned.
 *
 * Positions, except those of the shrinking case, count from the layout's own origin: a
 * group's margins at the left and top do not move its controls. Nothing is cached.
 * Items enter only through insertItem(); addItem() ignores what it is given.
 */
class NORVIKOFFICEUI_EXPORT KRbLogicGroupLayout : public QLayout
{
    Q_OBJECT
public:
    explicit KRbLogicGroupLayout(QWidget* parent = nullptr);
    ~KRbLogicGroupLayout() override;

    int horizontalSpacing() const { return m_horizontalSpacing; }
    void setHorizontalSpacing(int spacing);
    int verticalSpacing() const { return m_verticalSpacing; }
    void setVerticalSpacing(int spacing);
    /// Both spacings.
    void setSpacing(int spacing) override;
    /// The spacing when both are equal, else -1.
    int spacing() const override;
    int lineCount() const { return m_lineCount; }
    /// The most small controls in one column; values below 1 are refused.
    void setLineCount(int count);

    /// Takes ownership of item; a bad index appends.
    void insertItem(int index, KRbLogicGroupItem* item);
    KRbLogicGroupItem* logicItemAt(int index) const { return m_items.value(index, nullptr); }

    /**
     * How many items form the column that starts at start: up to the end, up to a large
     * item, or until lineCount() visible items are taken (hidden ones belong to the column
     * but do not count).
     */
    int countOfVertLayout(int start) const;
    /// The column at start: count is set; width the widest hint, height the hints and spacings.
    QSize vertLayoutSizeHint(int start, int& count) const;
    QSize vertLayoutMinSize(int start, int& count) const;
    QSize vertLayoutMaxSize(int start, int& count) const;
    /// The width of the whole at the maximum sizes of its elements.
    int _maxLayoutWidth() const;
    /// Places the column at start in rect; count is set to its length.
    virtual void setGeometryVert(const QRect& rect, int start, int& count) const;

    /// Does nothing, deliberately: a control of a group always comes with its command.
    void addItem(QLayoutItem* item) override;
    int count() const override;
    QLayoutItem* itemAt(int index) const override;
    /// Removes the item and deletes its widget later; the caller owns the item.
    QLayoutItem* takeAt(int index) override;
    /// (-1, -1) without items.
    QSize sizeHint() const override;
    QSize minimumSize() const override;
    Qt::Orientations expandingDirections() const override;
    void setGeometry(const QRect& rect) override;

private:
    enum Measure { Hint, Minimum, Maximum };
    QSize _itemSize(const KRbLogicGroupItem* item, Measure measure) const;
    QSize _columnSize(int start, int& count, Measure measure) const;
    QSize _wholeSize(Measure measure) const;
    /// The next element from index on: skips hidden items; count is 1 for a large item.
    int _nextElement(int index, int& count) const;

    QList<KRbLogicGroupItem*> m_items;
    int m_horizontalSpacing = 0;
    int m_verticalSpacing = 0;
    int m_lineCount = 3;
};

#endif // KRBLOGICGROUPLAYOUT_H
