#ifndef KUNITLISTVIEW_H
#define KUNITLISTVIEW_H

#include <QListWidget>

#include <norvikofficeui_export.h>

/**
 * The list of units of a unit control: frameless, uniform rows, single selection, no scroll
 * bars. The row under the mouse becomes current as the mouse moves; Return activates the
 * current row (activated()); Escape, Tab and Backtab emit aboutToClose().
 */
class NORVIKOFFICEUI_EXPORT KUnitListView : public QListWidget
{
    Q_OBJECT
public:
    explicit KUnitListView(QWidget* parent = nullptr);
    ~KUnitListView() override;

    /// Takes the items, the current row and the fixed size of other (null: nothing).
    void copyView(const KUnitListView* other);

Q_SIGNALS:
    void aboutToClose();

public Q_SLOTS:
    void onEnterPressed(const QModelIndex& index);
    void onMouseEnter(const QModelIndex& index);

protected:
    bool event(QEvent* e) override;
    void keyPressEvent(QKeyEvent* e) override;
};

#endif // KUNITLISTVIEW_H
