#ifndef KRBRECENTFILEPAGE_H
#define KRBRECENTFILEPAGE_H

#include <QListWidget>
#include <QPointer>
#include <QStyledItemDelegate>

#include <kpopupwidget.h>
#include <krecentfilepagecommand.h>
#include <ktoolbutton.h>
#include <norvikofficeui_export.h>

class QLabel;
class QVBoxLayout;
class KListCommand;
class KRecentFilePageCommand;
class KTriggerCommand;
class KFilePageListWidgetItem;

/// The pin at the right end of a row.
class NORVIKOFFICEUI_EXPORT KFilePageFixedButton : public KToolButton
{
    Q_OBJECT
public:
    KFilePageFixedButton(KFilePageListWidgetItem* item, QWidget* parent);
    KFilePageListWidgetItem* item() const { return m_item; }
    /// At the right end of its row, centred in its height.
    void moveToItemEnd();

Q_SIGNALS:
    void itemClicked(QListWidgetItem* item);

public Q_SLOTS:
    void onClicked();

private:
    KFilePageListWidgetItem* m_item;
};

/// The cross on the selected row, which drops the document from the list.
class NORVIKOFFICEUI_EXPORT KFilePageCloseButton : public KToolButton
{
    Q_OBJECT
public:
    explicit KFilePageCloseButton(QWidget* parent);
    void setItem(QListWidgetItem* item) { m_item = item; }
    QListWidgetItem* item() const { return m_item; }

Q_SIGNALS:
    void onItemRemoved(QListWidgetItem* item);

protected:
    void enterEvent(QEnterEvent* e) override;
    void leaveEvent(QEvent* e) override;

private:
    QListWidgetItem* m_item = nullptr;
};

/// One document: its absolute path, whether it is pinned, and its pin.
class NORVIKOFFICEUI_EXPORT KFilePageListWidgetItem : public QListWidgetItem
{
public:
    /// The item tells a document that no longer exists by this role (a bool).
    static constexpr int MissingRole = Qt::UserRole + 1;

    KFilePageListWidgetItem();
    ~KFilePageListWidgetItem() override;
    void setup(int index, const QString& name, const QIcon& icon, const QString& path, bool fixed);
    QString absoluteFileName() const { return m_path; }
    bool isFixed() const { return m_fixed; }
    KFilePageFixedButton* fixedButton() const { return m_fixedButton; }
    KFilePageFixedButton* addFixedButton();

private:
    QString m_path;
    bool m_fixed = false;
    // Guarded: the list's viewport, the button's parent, may go before the list's items.
    QPointer<KFilePageFixedButton> m_fixedButton;
};

/// The line under the last pinned row.
class NORVIKOFFICEUI_EXPORT FixedItemSeparater : public QWidget
{
    Q_OBJECT
public:
    explicit FixedItemSeparater(QWidget* parent);

protected:
    void paintEvent(QPaintEvent* e) override;
};

/// The line under the page's title.
class NORVIKOFFICEUI_EXPORT KRbRecentFilePageSeparater : public QWidget
{
    Q_OBJECT
public:
    explicit KRbRecentFilePageSeparater(QWidget* parent);
    QSize sizeHint() const override { return QSize(10, 5); }

protected:
    void paintEvent(QPaintEvent* e) override;
};

/// A row: the icon, the name elided in the middle, hover and selection in the button colours.
class NORVIKOFFICEUI_EXPORT FilePageListItemDelegate : public QStyledItemDelegate
{
    Q_OBJECT
public:
    using QStyledItemDelegate::QStyledItemDelegate;
    void paint(QPainter* painter, const QStyleOptionViewItem& option, const QModelIndex& index) const override;
    QSize sizeHint(const QStyleOptionViewItem& option, const QModelIndex& index) const override;
};

/// The holder of the page's context menu.
class NORVIKOFFICEUI_EXPORT KRbFilePagePopupWidget : public KPopupWidget
{
    Q_OBJECT
public:
    explicit KRbFilePagePopupWidget(QWidget* owner);
};

class NORVIKOFFICEUI_EXPORT KFilePageListWidget : public QListWidget
{
    Q_OBJECT
public:
    explicit KFilePageListWidget(QWidget* parent);
    KFilePageCloseButton* closeButton() const { return m_closeButton; }
    FixedItemSeparater* fixedSeparator() const { return m_separator; }
    /// The separator goes under item; null hides it.
    void setSeparatorItem(QListWidgetItem* item);

Q_SIGNALS:
    void itemRemoved(QListWidgetItem* item);
    void vScrollBarVisible(bool visible);
    void scrollBarMove();
    void mouseEnter(QListWidgetItem* item);

public Q_SLOTS:
    void on_item_Enter(QListWidgetItem* item);
    void on_item_rbuttonClick(QListWidgetItem* item);
    void popuMenuHide();
    void on_item_selectionChanged();
    void updateItemFixedButtonPos();
    void updateSeparaterPos();

protected:
    void resizeEvent(QResizeEvent* e) override;
    void scrollContentsBy(int dx, int dy) override;

private:
    QPointer<KFilePageCloseButton> m_closeButton;
    FixedItemSeparater* m_separator = nullptr;
    QListWidgetItem* m_separatorItem = nullptr;
    bool m_menuOpen = false;
};

/**
 * The right side of the file menu: the recent documents of the host, pinned ones first in
 * pin order and the others in the host's order. A press on a row opens the document at once;
 * the pin, the cross and a context menu pin, drop, clear and open the folder. Everything is
 * asked afresh from the command each time the page shows and after each change.
 */
class NORVIKOFFICEUI_EXPORT KRbRecentFilePage : public QWidget
{
    Q_OBJECT
public:
    KRbRecentFilePage(KRecentFilePageCommand* command, QWidget* parent);
    ~KRbRecentFilePage() override;

    void reloadFileList();
    void addItems(QList<KFilePageListWidgetItem*>& items);
    void removeFiles(QStringList& paths);
    /// The row at height y of the window becomes current.
    void setSelectedItem(int y);
    /// The height of the selected row in the window; 0 with none.
    int selectedItemViewPos() const;
    bool hasPopupMenu() const { return m_popupMenu; }

    KFilePageListWidget* listWidget() const { return m_list; }
    QLabel* titleLabel() const { return m_title; }
    KListCommand* menuCommand() const { return m_menuCommand; }
    KTriggerCommand* fixCommand() const { return m_fixCommand; }
    KTriggerCommand* clearGroupCommand() const { return m_clearGroupCommand; }
    KRecentFilePageCommand* command() const { return m_command.data(); }

Q_SIGNALS:
    void itemRightClicked(QListWidgetItem* item);
    void reloadFinished();

public Q_SLOTS:
    void on_fileList_itemPressed(QListWidgetItem* item);
    void on_fileList_itemActivated(QListWidgetItem* item);
    void on_fileList_itemRemoved(QListWidgetItem* item);
    void on_fileList_itemRightClicked(QListWidgetItem* item);
    void on_fileList_clear();
    void on_fileList_openfolder();
    void on_fileList_deleteItem();
    void on_fileList_openItem();
    void on_fileList_fixedOrUnfixed();
    void on_fileList_clearFixedOrUnfixed();
    void popuMenuHide();
    void setFixedFileItem(QListWidgetItem* item);

protected:
    bool event(QEvent* e) override;
    bool eventFilter(QObject* watched, QEvent* e) override;
    void showEvent(QShowEvent* e) override;
    void focusInEvent(QFocusEvent* e) override;

private:
    KFilePageListWidgetItem* _selected() const;
    void _removeItem(KFilePageListWidgetItem* item);

    QVBoxLayout* m_layout = nullptr;
    KFilePageListWidget* m_list = nullptr;
    QPointer<KRecentFilePageCommand> m_command;
    KListCommand* m_menuCommand = nullptr;
    QLabel* m_title = nullptr;
    bool m_popupMenu = false;
    KTriggerCommand* m_fixCommand = nullptr;
    KTriggerCommand* m_clearGroupCommand = nullptr;
};

#endif // KRBRECENTFILEPAGE_H
