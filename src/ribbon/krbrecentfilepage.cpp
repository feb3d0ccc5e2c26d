#include "krbrecentfilepage.h"

#include <QDir>
#include <QFileInfo>
#include <QKeyEvent>
#include <QLabel>
#include <QPainter>
#include <QScrollBar>
#include <QVBoxLayout>

#include <kdrawhelpfunc.h>
#include <kevent.h>
#include <khotkeyevent.h>
#include <klistcommand.h>
#include <kmenuwidget.h>
#include <korbstyle_2013.h>
#include <krecentfilepagecommand.h>
#include <ktriggercommand.h>

#include "krbpictures_p.h"

// --- pin, cross, items ---

KFilePageFixedButton::KFilePageFixedButton(KFilePageListWidgetItem* item, QWidget* parent)
    : KToolButton(parent)
    , m_item(item)
{
    setButtonStyle(StyleIcon);
    setIcon(KRbPictures::icon(item && item->isFixed() ? QStringLiteral("filepagefixed") : QStringLiteral("filepageunfixed"),
                              this));
    setToolTip(item && item->isFixed() ? tr("Unfixed From The Listing") : tr("Fixed To The Listing"));
    connect(this, &KToolButton::LButtonClicked, this, &KFilePageFixedButton::onClicked);
}

void KFilePageFixedButton::onClicked()
{
    Q_EMIT itemClicked(m_item);
}

void KFilePageFixedButton::moveToItemEnd()
{
    auto* list = m_item ? qobject_cast<QListWidget*>(m_item->listWidget()) : nullptr;
    if (!list)
        return;
    const QRect row = list->visualItemRect(m_item);
    const QSize size = sizeHint();
    resize(size);
    move(row.right() - size.width() - 2, row.top() + (row.height() - size.height()) / 2);
    setVisible(row.bottom() >= 0 && row.top() < list->viewport()->height());
}

KFilePageCloseButton::KFilePageCloseButton(QWidget* parent)
    : KToolButton(parent)
{
    setButtonStyle(StyleIcon);
    setToolTip(tr("Clear record from list"));
    setIcon(KRbPictures::icon(QStringLiteral("DeleteRecordNormal"), this));
    connect(this, &KToolButton::LButtonClicked, this, [this]() {
        if (m_item)
            Q_EMIT onItemRemoved(m_item);
    });
}

void KFilePageCloseButton::enterEvent(QEnterEvent* e)
{
    setIcon(KRbPictures::icon(QStringLiteral("DeleteRecord"), this));
    KToolButton::enterEvent(e);
}

void KFilePageCloseButton::leaveEvent(QEvent* e)
{
    setIcon(KRbPictures::icon(QStringLiteral("DeleteRecordNormal"), this));
    KToolButton::leaveEvent(e);
}

KFilePageListWidgetItem::KFilePageListWidgetItem() = default;

KFilePageListWidgetItem::~KFilePageListWidgetItem()
{
    delete m_fixedButton;
}

void KFilePageListWidgetItem::setup(int index, const QString& name, const QIcon& icon, const QString& path, bool fixed)
{
    m_path = path;
    m_fixed = fixed;
    setData(Qt::UserRole, index);
    setData(Qt::DisplayRole, name);
    setData(Qt::DecorationRole, icon);
    const bool missing = !QFileInfo::exists(path);
    setData(MissingRole, missing);
    setToolTip(missing ? QObject::tr("This document no longer exists: %1").arg(path) : path);
}

KFilePageFixedButton* KFilePageListWidgetItem::addFixedButton()
{
    if (!m_fixedButton && listWidget())
        m_fixedButton = new KFilePageFixedButton(this, listWidget()->viewport());
    return m_fixedButton;
}

// --- separators and rows ---

FixedItemSeparater::FixedItemSeparater(QWidget* parent)
    : QWidget(parent)
{
    setFixedHeight(3);
    setAttribute(Qt::WA_TransparentForMouseEvents);
}

void FixedItemSeparater::paintEvent(QPaintEvent*)
{
    QPainter painter(this);
    QStyleOption option;
    option.initFrom(this);
    option.state |= QStyle::State_On;
    style()->drawControl(KORBStyle_2013::KCE_RecentPageSeparator, &option, &painter, this);
}

KRbRecentFilePageSeparater::KRbRecentFilePageSeparater(QWidget* parent)
    : QWidget(parent)
{
    setFixedHeight(5);
}

void KRbRecentFilePageSeparater::paintEvent(QPaintEvent*)
{
    QPainter painter(this);
    QStyleOption option;
    option.initFrom(this);
    style()->drawControl(KORBStyle_2013::KCE_RecentPageSeparator, &option, &painter, this);
}

void FilePageListItemDelegate::paint(QPainter* painter, const QStyleOptionViewItem& option,
                                     const QModelIndex& index) const
{
    painter->save();
    const bool hot = option.state & (QStyle::State_MouseOver | QStyle::State_Selected);
    if (hot) {
        const QString cls = QStringLiteral("KToolButton");
        QBrush background(KDrawHelpFunc::getGradientFromTheme(cls, QStringLiteral("background-hover")));
        if (KDrawHelpFunc::getGradientFromTheme(cls, QStringLiteral("background-hover")).coordinateMode()
            != QGradient::ObjectBoundingMode)
            background = option.palette.highlight();
        painter->fillRect(option.rect.adjusted(0, 0, -1, -1), background);
        QColor border = KDrawHelpFunc::getColorFromTheme(cls, QStringLiteral("border-hover"));
        painter->setPen(border.isValid() ? border : option.palette.color(QPalette::Highlight));
        painter->drawRect(option.rect.adjusted(0, 0, -1, -1));
    }
    const QIcon icon = index.data(Qt::DecorationRole).value<QIcon>();
    const QRect iconRect(option.rect.left() + 4, option.rect.top() + (option.rect.height() - 16) / 2, 16, 16);
    icon.paint(painter, iconRect);
    // The pin takes the right end of the row.
    const QRect textRect = option.rect.adjusted(26, 0, -28, 0);
    QString text = index.data(Qt::DisplayRole).toString();
    const bool missing = index.data(KFilePageListWidgetItem::MissingRole).toBool();
    if (missing)
        text += QObject::tr(" (not found)");
    const QString shown = option.fontMetrics.elidedText(text, Qt::ElideMiddle, textRect.width());
    painter->setPen(option.palette.color(missing ? QPalette::Disabled : QPalette::Active, QPalette::WindowText));
    painter->drawText(textRect, Qt::AlignVCenter | Qt::AlignLeft, shown);
    painter->restore();
}

QSize FilePageListItemDelegate::sizeHint(const QStyleOptionViewItem& option, const QModelIndex& index) const
{
    const QString text = index.data(Qt::DisplayRole).toString();
    return QSize(option.fontMetrics.horizontalAdvance(text) + 54, qMax(22, option.fontMetrics.height() + 8));
}

KRbFilePagePopupWidget::KRbFilePagePopupWidget(QWidget* owner)
    : KPopupWidget(owner, Qt::Popup)
{
}

// --- list ---

KFilePageListWidget::KFilePageListWidget(QWidget* parent)
    : QListWidget(parent)
{
    setMouseTracking(true);
    setAutoScroll(false);
    setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
    setVerticalScrollBarPolicy(Qt::ScrollBarAsNeeded);
    setFrameShape(QFrame::NoFrame);
    setItemDelegate(new FilePageListItemDelegate(this));
    m_separator = new FixedItemSeparater(viewport());
    m_separator->hide();
    connect(this, &QListWidget::itemEntered, this, &KFilePageListWidget::on_item_Enter);
    connect(this, &QListWidget::itemSelectionChanged, this, &KFilePageListWidget::on_item_selectionChanged);
    connect(verticalScrollBar(), &QScrollBar::valueChanged, this, &KFilePageListWidget::scrollBarMove);
}

void KFilePageListWidget::on_item_Enter(QListWidgetItem* item)
{
    Q_EMIT mouseEnter(item);
}

void KFilePageListWidget::on_item_rbuttonClick(QListWidgetItem* item)
{
    Q_UNUSED(item);
    m_menuOpen = true;
}

void KFilePageListWidget::popuMenuHide()
{
    m_menuOpen = false;
}

void KFilePageListWidget::on_item_selectionChanged()
{
    const QList<QListWidgetItem*> selected = selectedItems();
    if (selected.isEmpty()) {
        if (m_closeButton)
            m_closeButton->hide();
        return;
    }
    if (!m_closeButton) {
        m_closeButton = new KFilePageCloseButton(viewport());
        connect(m_closeButton, &KFilePageCloseButton::onItemRemoved, this, &KFilePageListWidget::itemRemoved);
    }
    QListWidgetItem* item = selected.first();
    m_closeButton->setItem(item);
    scrollToItem(item);
    const QRect row = visualItemRect(item);
    const QSize size = m_closeButton->sizeHint();
    m_closeButton->resize(size);
    // Left of the pin.
    m_closeButton->move(row.right() - 2 * size.width() - 4, row.top() + (row.height() - size.height()) / 2);
    m_closeButton->show();
    m_closeButton->raise();
}

void KFilePageListWidget::updateItemFixedButtonPos()
{
    for (int i = 0; i < count(); ++i) {
        auto* it = static_cast<KFilePageListWidgetItem*>(item(i));
        if (it->fixedButton())
            it->fixedButton()->moveToItemEnd();
    }
    updateSeparaterPos();
}

void KFilePageListWidget::setSeparatorItem(QListWidgetItem* item)
{
    m_separatorItem = item;
    updateSeparaterPos();
}

void KFilePageListWidget::updateSeparaterPos()
{
    if (!m_separatorItem) {
        m_separator->hide();
        return;
    }
    const QRect row = visualItemRect(m_separatorItem);
    m_separator->setGeometry(0, row.bottom() - 1, viewport()->width(), 3);
    m_separator->show();
}

void KFilePageListWidget::resizeEvent(QResizeEvent* e)
{
    const bool before = verticalScrollBar()->isVisible();
    QListWidget::resizeEvent(e);
    updateItemFixedButtonPos();
    if (before != verticalScrollBar()->isVisible())
        Q_EMIT vScrollBarVisible(verticalScrollBar()->isVisible());
}

void KFilePageListWidget::scrollContentsBy(int dx, int dy)
{
    QListWidget::scrollContentsBy(dx, dy);
    updateItemFixedButtonPos();
    on_item_selectionChanged();
}

// --- page ---

KRbRecentFilePage::KRbRecentFilePage(KRecentFilePageCommand* command, QWidget* parent)
    : QWidget(parent)
    , m_command(command)
{
    setObjectName(QStringLiteral("RbRecentFilePage"));
    m_layout = new QVBoxLayout(this);
    m_layout->setSpacing(0);
    m_layout->setContentsMargins(8, 8, 4, 4);
    m_title = new QLabel(tr("Recent Documents: "), this);
    QFont bold = m_title->font();
    bold.setBold(true);
    m_title->setFont(bold);
    m_list = new KFilePageListWidget(this);
    m_layout->addWidget(m_title);
    m_layout->addWidget(new KRbRecentFilePageSeparater(this));
    m_layout->addWidget(m_list, 1);

    connect(m_list, &QListWidget::itemActivated, this, &KRbRecentFilePage::on_fileList_itemActivated);
    connect(m_list, &QListWidget::itemPressed, this, &KRbRecentFilePage::on_fileList_itemPressed);
    connect(m_list, &KFilePageListWidget::itemRemoved, this, &KRbRecentFilePage::on_fileList_itemRemoved);
    connect(this, &KRbRecentFilePage::itemRightClicked, m_list, &KFilePageListWidget::on_item_rbuttonClick);
    m_list->installEventFilter(this);
    m_list->viewport()->installEventFilter(this);

    auto* open = new KTriggerCommand(this, this);
    open->setText(tr("Open"));
    auto* remove = new KTriggerCommand(this, this);
    remove->setText(tr("Delete From The Listing"));
    auto* clear = new KTriggerCommand(this, this);
    clear->setText(tr("Clear All"));
    auto* folder = new KTriggerCommand(this, this);
    folder->setText(tr("Open Folder"));
    m_fixCommand = new KTriggerCommand(this, this);
    m_clearGroupCommand = new KTriggerCommand(this, this);
    m_menuCommand = new KListCommand(this, this);
    m_menuCommand->addSubCommand(open);
    m_menuCommand->addSubCommand(m_fixCommand);
    m_menuCommand->addSubCommand(remove);
    m_menuCommand->addSubCommand(clear);
    m_menuCommand->addSubCommand(m_clearGroupCommand);
    m_menuCommand->addSubCommand(folder);
    connect(open, &KCommand::triggered, this, &KRbRecentFilePage::on_fileList_openItem);
    connect(m_fixCommand, &KCommand::triggered, this, &KRbRecentFilePage::on_fileList_fixedOrUnfixed);
    connect(remove, &KCommand::triggered, this, &KRbRecentFilePage::on_fileList_deleteItem);
    connect(clear, &KCommand::triggered, this, &KRbRecentFilePage::on_fileList_clear);
    connect(m_clearGroupCommand, &KCommand::triggered, this, &KRbRecentFilePage::on_fileList_clearFixedOrUnfixed);
    connect(folder, &KCommand::triggered, this, &KRbRecentFilePage::on_fileList_openfolder);

    setFixedWidth(296);
}

KRbRecentFilePage::~KRbRecentFilePage() = default;

void KRbRecentFilePage::reloadFileList()
{
    KRecentFilePageCommand* cmd = m_command.data();
    m_list->setSeparatorItem(nullptr);
    m_list->clear();
    if (!cmd) {
        Q_EMIT reloadFinished();
        return;
    }
    setEnabled(cmd->isEnabled());
    const QStringList files = cmd->fileList();
    QList<KFilePageListWidgetItem*> fixed;
    QList<KFilePageListWidgetItem*> unfixed;
    const QStringList pinned = cmd->fixedFileList();
    for (int i = 0; i < files.size(); ++i) {
        const QFileInfo info(files.at(i));
        const QString path = QDir::toNativeSeparators(info.absoluteFilePath());
        auto* item = new KFilePageListWidgetItem;
        const bool isFixed = pinned.contains(path, Qt::CaseSensitive) || pinned.contains(files.at(i), Qt::CaseSensitive);
        item->setup(i, info.fileName(), KDrawHelpFunc::getFileIcon(path), path, isFixed);
        (isFixed ? fixed : unfixed).append(item);
    }
    // Pinned rows in pin order.
    QList<KFilePageListWidgetItem*> ordered;
    for (const QString& p : cmd->fixedFileList()) {
        for (int i = 0; i < fixed.size(); ++i) {
            const QString native = QDir::toNativeSeparators(QFileInfo(p).absoluteFilePath());
            if (fixed.at(i)->absoluteFileName() == native) {
                ordered.append(fixed.takeAt(i));
                break;
            }
        }
    }
    ordered += fixed; // pinned by a path the list spells otherwise: after the others
    const int fixedCount = int(ordered.size());
    ordered += unfixed;
    addItems(ordered);
    m_list->setSeparatorItem(fixedCount > 0 ? m_list->item(fixedCount - 1) : nullptr);
    m_list->updateItemFixedButtonPos();
    m_list->scrollToTop();
    Q_EMIT reloadFinished();
}

void KRbRecentFilePage::addItems(QList<KFilePageListWidgetItem*>& items)
{
    for (KFilePageListWidgetItem* item : items) {
        m_list->addItem(item);
        if (KFilePageFixedButton* pin = item->addFixedButton()) {
            connect(pin, &KFilePageFixedButton::itemClicked, this, &KRbRecentFilePage::setFixedFileItem);
            pin->show();
        }
    }
}

void KRbRecentFilePage::_removeItem(KFilePageListWidgetItem* item)
{
    KRecentFilePageCommand* cmd = m_command.data();
    if (!item || !cmd)
        return;
    const int index = item->data(Qt::UserRole).toInt();
    const QString path = item->absoluteFileName();
    cmd->removeFile(index);
    cmd->unfixFile(path);
}

void KRbRecentFilePage::removeFiles(QStringList& paths)
{
    // Highest index first, so that the host's indexes stay valid while the list shrinks.
    QList<KFilePageListWidgetItem*> doomed;
    for (const QString& p : paths) {
        const QString native = QDir::toNativeSeparators(QFileInfo(p).absoluteFilePath());
        for (int i = 0; i < m_list->count(); ++i) {
            auto* item = static_cast<KFilePageListWidgetItem*>(m_list->item(i));
            if (item->absoluteFileName() == native)
                doomed.append(item);
        }
    }
    std::sort(doomed.begin(), doomed.end(), [](KFilePageListWidgetItem* a, KFilePageListWidgetItem* b) {
        return a->data(Qt::UserRole).toInt() > b->data(Qt::UserRole).toInt();
    });
    for (KFilePageListWidgetItem* item : doomed)
        _removeItem(item);
}

KFilePageListWidgetItem* KRbRecentFilePage::_selected() const
{
    const QList<QListWidgetItem*> selected = m_list->selectedItems();
    return selected.isEmpty() ? nullptr : static_cast<KFilePageListWidgetItem*>(selected.first());
}

void KRbRecentFilePage::on_fileList_itemPressed(QListWidgetItem* item)
{
    on_fileList_itemActivated(item);
}

void KRbRecentFilePage::on_fileList_itemActivated(QListWidgetItem* item)
{
    KRecentFilePageCommand* cmd = m_command.data();
    if (!item || !cmd)
        return;
    const int index = item->data(Qt::UserRole).toInt();
    // The file menu closes first: opening may take a while, or ask something.
    if (QWidget* p = parentWidget()) {
        KEvent dismiss(KEvent::Dismiss);
        sendPropagatedEvent(p, &dismiss, false);
    }
    cmd->openFile(index);
    if (m_command)
        m_command->trigger();
}

void KRbRecentFilePage::on_fileList_itemRemoved(QListWidgetItem* item)
{
    _removeItem(static_cast<KFilePageListWidgetItem*>(item));
    reloadFileList();
}

void KRbRecentFilePage::on_fileList_deleteItem()
{
    if (KFilePageListWidgetItem* item = _selected())
        on_fileList_itemRemoved(item);
}

void KRbRecentFilePage::on_fileList_openItem()
{
    on_fileList_itemActivated(_selected());
}

void KRbRecentFilePage::on_fileList_clear()
{
    if (!m_command)
        return;
    m_command->clearFiles();
    reloadFileList();
}

void KRbRecentFilePage::on_fileList_openfolder()
{
    KFilePageListWidgetItem* item = _selected();
    if (!item || !m_command)
        return;
    if (!m_command->openFolder(item->absoluteFileName()))
        on_fileList_itemRemoved(item);
}

void KRbRecentFilePage::setFixedFileItem(QListWidgetItem* item)
{
    auto* it = static_cast<KFilePageListWidgetItem*>(item);
    if (!it || !m_command)
        return;
    if (it->isFixed())
        m_command->unfixFile(it->absoluteFileName());
    else
        m_command->fixFile(it->absoluteFileName());
    reloadFileList();
}

void KRbRecentFilePage::on_fileList_fixedOrUnfixed()
{
    setFixedFileItem(_selected());
}

void KRbRecentFilePage::on_fileList_clearFixedOrUnfixed()
{
    KFilePageListWidgetItem* item = _selected();
    if (!item || !m_command)
        return;
    QStringList group = item->isFixed() ? m_command->fixedFileList() : m_command->unfixedFileList();
    removeFiles(group);
    reloadFileList();
}

void KRbRecentFilePage::on_fileList_itemRightClicked(QListWidgetItem* item)
{
    KFilePageListWidgetItem* first = _selected();
    if (!first || !m_command || m_popupMenu)
        return;
    Q_UNUSED(item);
    const bool fixed = first->isFixed();
    m_fixCommand->setText(fixed ? tr("Unfixed From The Listing") : tr("Fixed To The Listing"));
    m_clearGroupCommand->setText(fixed ? tr("Clear All Fixed Files") : tr("Clear All Unfixed Files"));
    const bool both = !m_command->fixedFileList().isEmpty() && !m_command->unfixedFileList().isEmpty();
    m_clearGroupCommand->setVisible(both);
    m_list->setCurrentItem(first);

    auto* popup = new KRbFilePagePopupWidget(this);
    popup->setAttribute(Qt::WA_DeleteOnClose);
    auto* menu = new KMenuWidget(m_menuCommand, popup);
    popup->setContentWidget(menu);
    connect(popup, &KPopupWidget::aboutToHide, m_list, &KFilePageListWidget::popuMenuHide);
    connect(popup, &KPopupWidget::aboutToHide, this, &KRbRecentFilePage::popuMenuHide);
    connect(popup, &KPopupWidget::aboutToHide, popup, &QWidget::deleteLater);
    m_popupMenu = true;
    popup->show(QCursor::pos(), false, 0);
    Q_EMIT itemRightClicked(first);
}

void KRbRecentFilePage::popuMenuHide()
{
    m_popupMenu = false;
}

void KRbRecentFilePage::setSelectedItem(int y)
{
    const QPoint inList = m_list->viewport()->mapFromGlobal(QPoint(0, y));
    QListWidgetItem* item = m_list->itemAt(QPoint(4, inList.y()));
    if (item)
        m_list->setCurrentItem(item);
}

int KRbRecentFilePage::selectedItemViewPos() const
{
    KFilePageListWidgetItem* item = _selected();
    if (!item)
        return 0;
    const QRect row = m_list->visualItemRect(item);
    return m_list->viewport()->mapTo(window(), row.topLeft()).y();
}

void KRbRecentFilePage::showEvent(QShowEvent* e)
{
    reloadFileList();
    QWidget::showEvent(e);
}

void KRbRecentFilePage::focusInEvent(QFocusEvent* e)
{
    QWidget::focusInEvent(e);
    m_list->setFocus(e->reason());
}

bool KRbRecentFilePage::eventFilter(QObject* watched, QEvent* e)
{
    if (watched == m_list->viewport()) {
        switch (e->type()) {
        case QEvent::MouseButtonPress:
        case QEvent::MouseButtonRelease:
        case QEvent::MouseButtonDblClick: {
            auto* mouse = static_cast<QMouseEvent*>(e);
            if (mouse->button() == Qt::LeftButton)
                break;
            // The right button selects and opens the menu; it never reaches the press that
            // would open the document.
            if (e->type() == QEvent::MouseButtonPress && mouse->button() == Qt::RightButton) {
                if (QListWidgetItem* item = m_list->itemAt(mouse->position().toPoint()))
                    m_list->setCurrentItem(item);
                if (KFilePageListWidgetItem* item = _selected())
                    on_fileList_itemRightClicked(item);
            }
            return true;
        }
        case QEvent::KeyPress: {
            const int key = static_cast<QKeyEvent*>(e)->key();
            if (key == Qt::Key_Return || key == Qt::Key_Enter) {
                if (KFilePageListWidgetItem* item = _selected())
                    on_fileList_itemActivated(item);
                return true;
            }
            break;
        }
        default:
            break;
        }
    } else if (watched == m_list) {
        if (e->type() == QEvent::FocusIn && m_list->count() == 0) {
            focusNextChild();
            return true;
        }
        if (e->type() == QEvent::KeyPress) {
            const int key = static_cast<QKeyEvent*>(e)->key();
            if ((key == Qt::Key_Return || key == Qt::Key_Enter) && _selected()) {
                on_fileList_itemActivated(_selected());
                return true;
            }
        }
    } else if (e->type() == QEvent::KeyPress || e->type() == QEvent::KeyRelease) {
        // Up and Down in a neighbour (the file menu's left menu) browse here while the
        // cursor is over the page.
        const int key = static_cast<QKeyEvent*>(e)->key();
        if ((key == Qt::Key_Up || key == Qt::Key_Down) && rect().contains(mapFromGlobal(QCursor::pos()))) {
            if (_selected())
                sendDirectEvent(m_list, e);
            return true;
        }
    }
    return QWidget::eventFilter(watched, e);
}

bool KRbRecentFilePage::event(QEvent* e)
{
    if (int(e->type()) == KEvent::HotKeyCollect) {
        auto* collect = static_cast<KHotKeyCollectEvent*>(e);
        const bool autoIndex = collect->useAutoIndex;
        collect->useAutoIndex = true;
        for (int i = 0; i < m_list->count(); ++i) {
            QListWidgetItem* item = m_list->item(i);
            const QRect row = m_list->visualItemRect(item);
            if (row.bottom() < 0 || row.bottom() >= m_list->viewport()->height())
                continue;
            // The number sits on the row's icon, at its lower right.
            const QPoint origin = m_list->viewport()->mapTo(window(), row.topLeft());
            const QPoint pos = KDrawHelpFunc::modifyHotkeyPos(origin, QSize(row.height(), row.height()), 4, 2, 0);
            collect->addHotKey(pos, QString(), this, isEnabled(), QVariant::fromValue(static_cast<void*>(item)));
        }
        collect->useAutoIndex = autoIndex;
        return true;
    }
    if (int(e->type()) == KEvent::HotKeyTrigger) {
        auto* trigger = static_cast<KHotKeyTriggerEvent*>(e);
        auto* item = trigger->message ? static_cast<QListWidgetItem*>(trigger->message->item()) : nullptr;
        if (item && isEnabled()) {
            on_fileList_itemActivated(item);
            trigger->result = 2;
        }
        return true;
    }
    return QWidget::event(e);
}
