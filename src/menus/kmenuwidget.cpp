#include "kmenuwidget.h"

#include <khotkeyevent.h>
#include <khotkeypopupassistant.h>

#include <QApplication>
#include <QCheckBox>
#include <QHBoxLayout>
#include <QKeyEvent>
#include <QPainter>
#include <QStyle>
#include <QStyleOptionMenuItem>

#include "kabstractlistcommand.h"
#include "kblockedmouseevent.h"
#include "kdrawhelpfunc.h"
#include "kevent.h"
#include "kpopupwidget.h"
#include "kseparatorcommand.h"
#include "ktriggercommand.h"

namespace {

const QString s_themeClass = QStringLiteral("KMenuWidget");

KMenuWidgetItem* createSeparatorItem(KCommand* command, KMenuWidget* menu)
{
    // A separator with transparent ends asks for the file menu's manner of drawing.
    if (auto* separator = qobject_cast<KSeparatorCommand*>(command)) {
        if (separator->getStartEndTransparent())
            menu->setObjectName(QStringLiteral("fileMenu"));
    }
    return new KMenuWidgetSeparatorItem(menu, command);
}

KMenuWidgetItem* createPopupItem(KCommand* command, KMenuWidget* menu)
{
    return command ? new KMenuWidgetPopupItem(menu, command) : nullptr;
}

// The rows every menu knows, registered when the library loads.
const KSceneItem<KMenuWidget::ItemCreator> s_separatorRow(KMenuWidget::createMenuItemScene(),
                                                          &KSeparatorCommand::staticMetaObject,
                                                          &createSeparatorItem);
const KSceneItem<KMenuWidget::ItemCreator> s_triggerRow(KMenuWidget::createMenuItemScene(),
                                                        &KTriggerCommand::staticMetaObject,
                                                        &KMenuWidgetTriggerItem::createMenuItem);
const KSceneItem<KMenuWidget::ItemCreator> s_listRow(KMenuWidget::createMenuItemScene(),
                                                     &KAbstractListCommand::staticMetaObject,
                                                     &createPopupItem);

int iconWidthOf(const KMenuWidget* menu)
{
    return menu->iconSize().width();
}

// The size of a row for the style: the content as a menu measures it (text, and the
// shortcut behind a tab, beside an icon of the menu's icon size), so that any style,
// the host's own included, makes the row wide enough.
QSize rowSize(const QStyleOptionMenuItem& option, const KMenuWidget* menu)
{
    const QFontMetrics fm(option.font);
    QString text = option.text;
    int width = 0;
    const int tab = text.indexOf(QLatin1Char('\t'));
    if (tab >= 0) {
        width += fm.horizontalAdvance(text.mid(tab + 1)) + 3 * fm.averageCharWidth();
        text.truncate(tab);
    }
    width += fm.horizontalAdvance(text.remove(QLatin1Char('&')));
    const QSize contents(width, qMax(menu->iconSize().height(), fm.height()));
    return menu->style()->sizeFromContents(QStyle::CT_MenuItem, &option, contents, menu);
}

// The measured size of a row of a command, kept in cache until the row is invalidated;
// nothing for a hidden row.
template <class Row>
QSize rowSizeHint(const Row& row, QSize& cache, const KMenuWidget* menu)
{
    if (!row.isVisible())
        return QSize(0, 0);
    if (!cache.isValid()) {
        QStyleOptionMenuItem option;
        row.initStyleOption(&option);
        cache = rowSize(option, menu);
    }
    return cache;
}

template <class Row>
void paintRow(const Row& row, QPainter& painter, KMenuWidget* menu)
{
    QStyleOptionMenuItem option;
    row.initStyleOption(&option);
    menu->style()->drawControl(QStyle::CE_MenuItem, &option, &painter, menu);
}

} // namespace

// --- KMenuWidgetLayout ---

KMenuWidgetLayout::KMenuWidgetLayout(QWidget* parent)
    : QVBoxLayout(parent)
{
    setSpacing(0);
    setContentsMargins(0, 0, 0, 0);
}

QLayoutItem* KMenuWidgetLayout::takeAt(int index)
{
    QLayoutItem* item = QVBoxLayout::takeAt(index);
    if (auto* row = dynamic_cast<KMenuWidgetItem*>(item))
        row->take();
    return item;
}

// --- KMenuWidgetItem ---

KMenuWidgetItem::KMenuWidgetItem(KMenuWidget* menu, KCommand* command)
    : m_menuWidget(menu)
    , m_command(command)
{
}

KMenuWidgetItem::~KMenuWidgetItem() = default;

void KMenuWidgetItem::take() {}
void KMenuWidgetItem::paint(QPainter&) {}
bool KMenuWidgetItem::isEnabled() const { return true; }
bool KMenuWidgetItem::isVisible() const { return true; }
void KMenuWidgetItem::onHotKeyTrigger() {}
bool KMenuWidgetItem::onKeyboard(int) { return false; }
void KMenuWidgetItem::onMouseMove(const QPoint&) {}
void KMenuWidgetItem::onMouseRelease(const QPoint&) {}
void KMenuWidgetItem::hidePopup() {}

void KMenuWidgetItem::mouseStay()
{
    setAsCurrentItem();
    unsetPopupItem();
}

bool KMenuWidgetItem::isTriggerable() const
{
    return m_command && m_command->isTriggerable();
}

void KMenuWidgetItem::invalidate()
{
    m_sizeCache = QSize();
}

bool KMenuWidgetItem::canPopup() const
{
    return m_command && m_command->count() >= 1;
}

bool KMenuWidgetItem::isCurrentItem() const
{
    return m_menuWidget->currentItem() == this;
}

bool KMenuWidgetItem::isPopupItem() const
{
    return m_menuWidget->popupItem() == this;
}

void KMenuWidgetItem::setAsCurrentItem()
{
    m_menuWidget->setCurrentItem(this);
}

void KMenuWidgetItem::setAsPopupItem()
{
    m_menuWidget->setPopupItem(this);
}

void KMenuWidgetItem::unsetAsPopupItem()
{
    if (isPopupItem())
        m_menuWidget->setPopupItem(nullptr);
}

void KMenuWidgetItem::unsetPopupItem()
{
    if (KMenuWidgetItem* open = m_menuWidget->popupItem())
        open->hidePopup();
}

void KMenuWidgetItem::initStyleOption(QStyleOptionMenuItem* option) const
{
    option->initFrom(m_menuWidget);
    option->state = QStyle::State_None;
    if (isEnabled()) {
        option->state |= QStyle::State_Enabled;
        if (isCurrentItem())
            option->state |= QStyle::State_Selected;
    }
    option->rect = m_rect;
    option->font = m_menuWidget->font();
    option->reservedShortcutWidth = m_menuWidget->tabWidth(); // the arrow strip, for the style
    const int iconWidth = iconWidthOf(m_menuWidget);
    option->maxIconWidth = iconWidth + 4 + (iconWidth >= 17 ? 4 : 0);
    option->menuRect = m_menuWidget->rect();
}

// --- KMenuWidgetTriggerItem ---

KMenuWidgetTriggerItem::KMenuWidgetTriggerItem(KMenuWidget* menu, KCommand* command)
    : QObject(menu)
    , KMenuWidgetItem(menu, command)
{
    if (command)
        connect(command, &KCommand::changed, this, &KMenuWidgetTriggerItem::onCommandChanged);
}

KMenuWidgetItem* KMenuWidgetTriggerItem::createMenuItem(KCommand* command, KMenuWidget* menu)
{
    if (!command)
        return nullptr;
    if (command->icon().isNull() && command->getDrawText().isEmpty() && !KSeparatorCommand::isSeparator(command)
        && command->count() == 0)
        return nullptr; // nothing to show
    return new KMenuWidgetTriggerItem(menu, command);
}

void KMenuWidgetTriggerItem::onCommandChanged()
{
    m_menuWidget->itemChanged();
}

bool KMenuWidgetTriggerItem::isEnabled() const
{
    return m_command && m_command->isEnabled();
}

bool KMenuWidgetTriggerItem::isVisible() const
{
    return m_command && m_command->isVisible();
}

void KMenuWidgetTriggerItem::initStyleOption(QStyleOptionMenuItem* option) const
{
    KMenuWidgetItem::initStyleOption(option);
    option->menuItemType = QStyleOptionMenuItem::Normal;
    KCommand* cmd = m_command.data();
    if (!cmd)
        return;
    option->checked = cmd->property("checkedHint").toBool();
    option->checkType = option->checked ? QStyleOptionMenuItem::NonExclusive : QStyleOptionMenuItem::NotCheckable;
    option->icon = cmd->icon();
    option->text = cmd->getDrawText();
    const QString hint = cmd->property("shortcutHint").toString();
    if (!hint.isEmpty())
        option->text += QLatin1Char('\t') + hint;
}

QSize KMenuWidgetTriggerItem::sizeHint() const
{
    return rowSizeHint(*this, m_sizeCache, m_menuWidget);
}

void KMenuWidgetTriggerItem::paint(QPainter& painter)
{
    paintRow(*this, painter, m_menuWidget);
}

void KMenuWidgetTriggerItem::onMouseRelease(const QPoint&)
{
    onHotKeyTrigger();
}

void KMenuWidgetTriggerItem::onHotKeyTrigger()
{
    // The popups go first, so that the command runs with the window as the user sees it.
    const QPointer<KCommand> cmd = m_command;
    m_menuWidget->complete();
    if (cmd)
        cmd->trigger();
}

bool KMenuWidgetTriggerItem::onKeyboard(int key)
{
    if (key != Qt::Key_Return && key != Qt::Key_Enter)
        return false;
    onHotKeyTrigger();
    return true;
}

// --- KMenuWidgetPopupItem ---

KMenuWidgetPopupItem::KMenuWidgetPopupItem(KMenuWidget* menu, KCommand* command)
    : QObject(menu)
    , KMenuWidgetItem(menu, command)
{
    if (command)
        connect(command, &KCommand::changed, this, &KMenuWidgetPopupItem::onCommandChanged);
}

KMenuWidgetPopupItem::~KMenuWidgetPopupItem()
{
    if (m_popupWidget)
        m_popupWidget->deleteLater();
}

void KMenuWidgetPopupItem::onCommandChanged()
{
    m_menuWidget->itemChanged();
}

bool KMenuWidgetPopupItem::isEnabled() const
{
    return m_command && m_command->isEnabled();
}

bool KMenuWidgetPopupItem::isVisible() const
{
    return m_command && m_command->isVisible();
}

void KMenuWidgetPopupItem::initStyleOption(QStyleOptionMenuItem* option) const
{
    KMenuWidgetItem::initStyleOption(option);
    option->menuItemType = QStyleOptionMenuItem::SubMenu;
    option->state |= QStyle::State_Children;
    if (isPopupItem())
        option->state |= QStyle::State_Sunken;
    if (isTriggerable())
        option->state |= QStyle::State_Item; // a split row: the left part triggers
    if (KCommand* cmd = m_command.data()) {
        option->icon = cmd->icon();
        option->text = cmd->getDrawText();
    }
}

QSize KMenuWidgetPopupItem::sizeHint() const
{
    return rowSizeHint(*this, m_sizeCache, m_menuWidget);
}

void KMenuWidgetPopupItem::paint(QPainter& painter)
{
    paintRow(*this, painter, m_menuWidget);
}

QPoint KMenuWidgetPopupItem::getTopRight() const
{
    if (m_menuWidget->isSubMenuAtSide())
        return m_menuWidget->mapToGlobal(QPoint(m_menuWidget->width(), 0));
    return m_menuWidget->mapToGlobal(QPoint(m_rect.right() + 1, m_rect.top()));
}

bool KMenuWidgetPopupItem::isNormalPopupWidget() const
{
    return true;
}

KPopupWidget* KMenuWidgetPopupItem::popupWidget() const
{
    return m_popupWidget.data();
}

void KMenuWidgetPopupItem::showPopup(bool selectFirst)
{
    if (isPopupItem())
        return;
    KCommand* cmd = m_command.data();
    if (!cmd || !canPopup())
        return; // a list with no items opens nothing
    setAsPopupItem();
    KPopupWidget* popup = isNormalPopupWidget() ? new KPopupWidget(m_menuWidget, Qt::Popup)
                                                : new KPopupWidgetEx(m_menuWidget, 3);
    // A submenu lives only while it is open.
    popup->setAttribute(Qt::WA_DeleteOnClose);
    m_popupWidget = popup;
    connect(popup, &KPopupWidget::aboutToHide, this, &KMenuWidgetPopupItem::popupWidgetHidden);
    connect(this, &KMenuWidgetPopupItem::hidePopups, popup, &QObject::deleteLater);
    QWidget* content = cmd->requestWidget(popup, KCommand::ExtendedPurpose);
    popup->setContentWidget(content);
    if (cmd->property("plxTransCommand").toString() == QLatin1String("true"))
        popup->setMinimumHeight(500);
    popup->show(m_menuWidget, getTopRight());
    if (selectFirst) {
        if (auto* menu = qobject_cast<KMenuWidget*>(content))
            menu->setCurrentItem(menu->getFirstEnableItem());
    }
    if (content)
        content->setFocus();
    m_menuWidget->update(m_rect);
}

void KMenuWidgetPopupItem::popupWidgetHidden()
{
    unsetAsPopupItem();
}

void KMenuWidgetPopupItem::hidePopup()
{
    if (KPopupWidget* popup = m_popupWidget.data())
        popup->hide();
    Q_EMIT hidePopups();
}

void KMenuWidgetPopupItem::mouseStay()
{
    setAsCurrentItem();
    showPopup(false);
}

void KMenuWidgetPopupItem::onHotKeyTrigger()
{
    showPopup(false);
}

void KMenuWidgetPopupItem::onMouseRelease(const QPoint& pos)
{
    if (isTriggerable() && pos.x() < m_rect.right() - m_menuWidget->tabWidth()) {
        const QPointer<KCommand> cmd = m_command;
        m_menuWidget->complete();
        if (cmd)
            cmd->trigger();
        return;
    }
    showPopup(false);
}

bool KMenuWidgetPopupItem::onKeyboard(int key)
{
    const bool enter = key == Qt::Key_Return || key == Qt::Key_Enter;
    if (enter && isTriggerable()) {
        const QPointer<KCommand> cmd = m_command;
        m_menuWidget->complete();
        if (cmd)
            cmd->trigger();
        return true;
    }
    if (enter || key == Qt::Key_Right) {
        showPopup(true);
        return true;
    }
    return false;
}

// --- KMenuWidgetSeparatorItem ---

KMenuWidgetSeparatorItem::KMenuWidgetSeparatorItem(KMenuWidget* menu, KCommand* command)
    : KMenuWidgetItem(menu, command)
{
}

bool KMenuWidgetSeparatorItem::findLeaderItem() const
{
    const int index = m_menuWidget->indexOfItem(this);
    for (int i = index - 1; i >= 0; --i) {
        KMenuWidgetItem* item = m_menuWidget->itemAt(i);
        if (dynamic_cast<KMenuWidgetSeparatorItem*>(item))
            return false;
        if (item && item->isVisible())
            return true;
    }
    return false;
}

int KMenuWidgetSeparatorItem::findLastVisibleItem() const
{
    for (int i = m_menuWidget->count() - 1; i >= 0; --i) {
        KMenuWidgetItem* item = m_menuWidget->itemAt(i);
        if (item && !dynamic_cast<KMenuWidgetSeparatorItem*>(item) && item->isVisible())
            return i;
    }
    return -1;
}

bool KMenuWidgetSeparatorItem::isVisible() const
{
    // Settled at each query, without state: no leading, trailing or doubled lines.
    return findLeaderItem() && m_menuWidget->indexOfItem(this) <= findLastVisibleItem();
}

QSize KMenuWidgetSeparatorItem::sizeHint() const
{
    if (!isVisible())
        return QSize(0, 0);
    QStyleOptionMenuItem option;
    KMenuWidgetItem::initStyleOption(&option);
    option.menuItemType = QStyleOptionMenuItem::Separator;
    return rowSize(option, m_menuWidget);
}

void KMenuWidgetSeparatorItem::paint(QPainter& painter)
{
    QStyleOptionMenuItem option;
    KMenuWidgetItem::initStyleOption(&option);
    option.menuItemType = QStyleOptionMenuItem::Separator;
    m_menuWidget->style()->drawControl(QStyle::CE_MenuItem, &option, &painter, m_menuWidget);
}

// --- KMenuWidgetEmbedWidgetItem ---

KMenuWidgetEmbedWidgetItem::KMenuWidgetEmbedWidgetItem(KMenuWidget* menu, KCommand* command)
    : KMenuWidgetItem(menu, command)
{
    QWidget* widget = command ? command->requestWidget(menu, KCommand::PocketPurpose) : nullptr;
    if (auto* box = qobject_cast<QCheckBox*>(widget)) {
        // The box lines up with the text column of the menu.
        auto* holder = new QWidget(menu);
        auto* layout = new QHBoxLayout(holder);
        layout->setContentsMargins(30, 2, 0, 2);
        layout->addWidget(box);
        widget = holder;
    }
    m_widget = widget;
    if (widget) {
        widget->setParent(menu);
        widget->setVisible(command->isVisible());
        widget->setEnabled(command->isEnabled());
        m_widgetItem = new QWidgetItem(widget);
    }
}

KMenuWidgetEmbedWidgetItem::~KMenuWidgetEmbedWidgetItem()
{
    delete m_widgetItem;
}

void KMenuWidgetEmbedWidgetItem::take()
{
    if (QWidget* w = m_widget.data())
        w->deleteLater();
}

bool KMenuWidgetEmbedWidgetItem::isEnabled() const
{
    return m_command && m_widget && m_command->isEnabled();
}

bool KMenuWidgetEmbedWidgetItem::isVisible() const
{
    return m_command && m_widget && m_command->isVisible();
}

QSize KMenuWidgetEmbedWidgetItem::sizeHint() const
{
    return m_widget && isVisible() ? m_widgetItem->sizeHint() : QSize(0, 0);
}

QSize KMenuWidgetEmbedWidgetItem::minimumSize() const
{
    return m_widget && isVisible() ? m_widgetItem->minimumSize() : QSize(0, 0);
}

QSize KMenuWidgetEmbedWidgetItem::maximumSize() const
{
    return m_widget && isVisible() ? m_widgetItem->maximumSize() : QSize(0, 0);
}

Qt::Orientations KMenuWidgetEmbedWidgetItem::expandingDirections() const
{
    return m_widget ? m_widgetItem->expandingDirections() : Qt::Orientations();
}

void KMenuWidgetEmbedWidgetItem::setGeometry(const QRect& rect)
{
    KMenuWidgetItem::setGeometry(rect);
    if (m_widget)
        m_widgetItem->setGeometry(rect);
}

// --- KMenuWidget ---

KSceneBase<KMenuWidget::ItemCreator>* KMenuWidget::createMenuItemScene()
{
    static KSceneBase<ItemCreator> scene(&KMenuWidget::createMenuItemDefault);
    return &scene;
}

KMenuWidgetItem* KMenuWidget::createMenuItemDefault(KCommand* command, KMenuWidget* menu)
{
    return command ? new KMenuWidgetEmbedWidgetItem(menu, command) : nullptr;
}

KMenuWidget::KMenuWidget(KCommand* command, QWidget* parent)
    : KCommandWidgetBridge<QWidget>(command, parent, true)
{
    m_timer.setSingleShot(true);
    m_timer.setInterval(250);
    connect(&m_timer, &QTimer::timeout, this, &KMenuWidget::mouseStay);
    m_layout = new KMenuWidgetLayout(this);
    setSizePolicy(QSizePolicy::Fixed, QSizePolicy::Fixed);
    setMouseTracking(true);
    setFocusPolicy(Qt::StrongFocus);
}

KMenuWidget::~KMenuWidget()
{
    m_timer.stop();
    KCommandBridgeHelper::unregisterIdle(this);
    // Rows hold pointers back into the menu; they go before it does.
    m_currentItem = nullptr;
    m_popupItem = nullptr;
    m_rowOfCommand.clear();
    while (QLayoutItem* item = m_layout->takeAt(0))
        delete item;
}

void KMenuWidget::onCommandConnected()
{
    KCommandBridgeHelper::registerIdle(this);
    auto* list = qobject_cast<KAbstractListCommand*>(command());
    if (!list)
        return;
    connect(list, &KAbstractListCommand::subCommandInsert, this, &KMenuWidget::onCommandInserted);
    connect(list, &KAbstractListCommand::subCommandRemove, this, &KMenuWidget::onCommandRemoved);
}

void KMenuWidget::onCommandInserted(int index, KCommand* cmd)
{
    // Not every command gets a row (one with nothing to show has none): the rows are kept
    // by the command's index, so that later insertions and removals find their place.
    index = qBound(0, index, int(m_rowOfCommand.size()));
    KMenuWidgetItem* item = createMenuItemScene()->match(cmd)(cmd, this);
    m_rowOfCommand.insert(index, item);
    if (!item)
        return;
    int position = 0;
    for (int i = 0; i < index; ++i)
        position += m_rowOfCommand.at(i) ? 1 : 0;
    m_layout->insertItem(position, item);
    itemChanged();
}

void KMenuWidget::onCommandRemoved(int index)
{
    if (index < 0 || index >= m_rowOfCommand.size())
        return;
    KMenuWidgetItem* item = m_rowOfCommand.takeAt(index);
    if (!item)
        return;
    if (m_currentItem == item)
        m_currentItem = nullptr;
    if (m_popupItem == item) {
        m_popupItem = nullptr;
        item->hidePopup();
    }
    const int position = indexOfItem(item);
    if (position >= 0)
        delete m_layout->takeAt(position);
    itemChanged();
}

int KMenuWidget::count() const
{
    return m_layout->count();
}

KMenuWidgetItem* KMenuWidget::itemAt(int index) const
{
    return dynamic_cast<KMenuWidgetItem*>(m_layout->itemAt(index));
}

KMenuWidgetItem* KMenuWidget::itemAt(const QPoint& pos) const
{
    for (int i = 0; i < m_layout->count(); ++i) {
        KMenuWidgetItem* item = itemAt(i);
        if (item && item->isVisible() && item->geometry().contains(pos))
            return item;
    }
    return nullptr;
}

int KMenuWidget::indexOfItem(const QLayoutItem* item) const
{
    for (int i = 0; i < m_layout->count(); ++i) {
        if (m_layout->itemAt(i) == item)
            return i;
    }
    return -1;
}

void KMenuWidget::setIconSize(const QSize& size)
{
    if (size == m_iconSize)
        return;
    m_iconSize = size;
    itemChanged();
}

void KMenuWidget::setTabWidth(int width)
{
    if (width == m_tabWidth)
        return;
    m_tabWidth = width;
    itemChanged();
}

void KMenuWidget::setDrawBackground(bool draw)
{
    if (draw == m_drawBackground)
        return;
    m_drawBackground = draw;
    update();
}

void KMenuWidget::setCurrentItem(KMenuWidgetItem* item)
{
    if (item == m_currentItem)
        return;
    if (m_currentItem)
        update(m_currentItem->geometry());
    m_currentItem = item;
    if (item)
        update(item->geometry());
}

void KMenuWidget::setPopupItem(KMenuWidgetItem* item)
{
    if (item == m_popupItem)
        return;
    KMenuWidgetItem* previous = m_popupItem;
    m_popupItem = item;
    if (previous) {
        previous->hidePopup();
        update(previous->geometry());
    }
    if (item)
        update(item->geometry());
}

void KMenuWidget::clearStatus()
{
    setCurrentItem(nullptr);
}

void KMenuWidget::itemChanged()
{
    for (int i = 0; i < count(); ++i) {
        if (KMenuWidgetItem* item = itemAt(i))
            item->invalidate();
    }
    m_layout->invalidate();
    updateGeometry();
    update();
}

void KMenuWidget::complete()
{
    KEvent dismiss(KEvent::Dismiss);
    sendPropagatedEvent(this, &dismiss, false);
}

bool KMenuWidget::_isItemUsable(const KMenuWidgetItem* item) const
{
    return item && item->isEnabled() && item->isVisible();
}

bool KMenuWidget::_wraps() const
{
    // The menu part of a gallery lets the focus leave at its ends instead of going round.
    return !(parentWidget() && parentWidget()->inherits("KGallery"));
}

KMenuWidgetItem* KMenuWidget::getFirstEnableItem() const
{
    for (int i = 0; i < count(); ++i) {
        if (_isItemUsable(itemAt(i)))
            return itemAt(i);
    }
    return nullptr;
}

KMenuWidgetItem* KMenuWidget::getLastEnableItem() const
{
    for (int i = count() - 1; i >= 0; --i) {
        if (_isItemUsable(itemAt(i)))
            return itemAt(i);
    }
    return nullptr;
}

KMenuWidgetItem* KMenuWidget::getNextEnableItem() const
{
    const int start = indexOfItem(m_currentItem);
    if (start < 0)
        return getFirstEnableItem();
    const int n = count();
    for (int step = 1; step < n; ++step) {
        const int i = start + step;
        if (i >= n && !_wraps())
            return nullptr;
        KMenuWidgetItem* item = itemAt(i % n);
        if (_isItemUsable(item))
            return item;
    }
    return nullptr;
}

KMenuWidgetItem* KMenuWidget::getPrewEnableItem() const
{
    const int start = indexOfItem(m_currentItem);
    if (start < 0)
        return getLastEnableItem();
    const int n = count();
    for (int step = 1; step < n; ++step) {
        const int i = start - step;
        if (i < 0 && !_wraps())
            return nullptr;
        KMenuWidgetItem* item = itemAt((i + n) % n);
        if (_isItemUsable(item))
            return item;
    }
    return nullptr;
}

// --- painting ---

void KMenuWidget::paintMenuWidgetBackground(QPainter& painter)
{
    if (!m_drawBackground)
        return;
    const QColor background = KDrawHelpFunc::getColorFromTheme(s_themeClass, QStringLiteral("background"));
    painter.fillRect(rect(), background.isValid() ? background : palette().color(QPalette::Window));
    // The strip behind the icons.
    const QRect strip(0, 0, 3 + m_iconSize.width() + 3, height());
    QGradient leader = KDrawHelpFunc::getGradientFromTheme(s_themeClass, QStringLiteral("leader"));
    if (!leader.stops().isEmpty()) {
        leader.setCoordinateMode(QGradient::ObjectBoundingMode);
        painter.fillRect(strip, QBrush(leader));
    }
}

void KMenuWidget::paintEvent(QPaintEvent* e)
{
    QPainter painter(this);
    painter.setClipRegion(e->region());
    paintMenuWidgetBackground(painter);
    // Only the rows in the region: moving the highlight repaints two rows, not the menu.
    const QRect dirty = e->rect();
    for (int i = 0; i < count(); ++i) {
        KMenuWidgetItem* item = itemAt(i);
        if (item && item->geometry().intersects(dirty) && item->isVisible())
            item->paint(painter);
    }
}

// --- mouse ---

void KMenuWidget::mouseMoveEvent(QMouseEvent* e)
{
    const QPoint pos = e->position().toPoint();
    if (!rect().contains(pos)) {
        e->ignore(); // a parent may want it
        return;
    }
    m_lastMousePos = pos;
    KMenuWidgetItem* item = itemAt(pos);
    if (item && !_isItemUsable(item))
        item = nullptr;
    if (item != m_currentItem) {
        m_timer.stop();
        if (item)
            m_timer.start();
    }
    if (item)
        item->onMouseMove(pos);
    setCurrentItem(item);
    e->accept();
}

void KMenuWidget::mouseStay()
{
    // The row under the pointer where the last move left it: the pointer has rested there
    // since, which is what the timer waited for.
    KMenuWidgetItem* item = itemAt(m_lastMousePos);
    if (item && item->isEnabled())
        item->mouseStay();
}

void KMenuWidget::mousePressEvent(QMouseEvent* e)
{
    if (e->button() != Qt::LeftButton)
        return;
    KMenuWidgetItem* item = itemAt(e->position().toPoint());
    if (_isItemUsable(item)) {
        m_timer.stop();
        item->mouseStay();
    }
}

void KMenuWidget::mouseReleaseEvent(QMouseEvent* e)
{
    if (e->button() != Qt::LeftButton)
        return;
    const QPoint pos = e->position().toPoint();
    KMenuWidgetItem* item = itemAt(pos);
    if (_isItemUsable(item))
        item->onMouseRelease(pos);
}

void KMenuWidget::leaveEvent(QEvent* e)
{
    // The row whose submenu is open stays highlighted.
    setCurrentItem(m_popupItem);
    m_timer.stop();
    QWidget::leaveEvent(e);
}

// --- keyboard ---

bool KMenuWidget::sendEventToMenuBar(QKeyEvent* e)
{
    for (QWidget* w = window(); w; w = w->parentWidget() ? w->parentWidget()->window() : nullptr) {
        if (w->inherits("KMenuBar")) {
            QCoreApplication::sendEvent(w, e);
            return true;
        }
        const QList<QWidget*> bars = w->findChildren<QWidget*>();
        for (QWidget* child : bars) {
            if (child->inherits("KMenuBar")) {
                QCoreApplication::sendEvent(child, e);
                return true;
            }
        }
    }
    return false;
}

void KMenuWidget::keyPressEvent(QKeyEvent* e)
{
    const int key = e->key();
    if (m_currentItem && m_currentItem->onKeyboard(key))
        return;
    switch (key) {
    case Qt::Key_Tab:
    case Qt::Key_Down:
        if (KMenuWidgetItem* next = getNextEnableItem())
            setCurrentItem(next);
        return;
    case Qt::Key_Backtab:
    case Qt::Key_Up:
        if (KMenuWidgetItem* prev = getPrewEnableItem())
            setCurrentItem(prev);
        return;
    case Qt::Key_Home:
        setCurrentItem(getFirstEnableItem());
        return;
    case Qt::Key_End:
        setCurrentItem(getLastEnableItem());
        return;
    case Qt::Key_Left: {
        auto* popup = qobject_cast<KPopupWidget*>(window());
        if (popup && qobject_cast<KMenuWidget*>(popup->parentWidget())) {
            popup->close(); // one level back
            return;
        }
        if (sendEventToMenuBar(e))
            return;
        break;
    }
    case Qt::Key_Right:
        if (sendEventToMenuBar(e))
            return;
        break;
    default:
        break;
    }
    QWidget::keyPressEvent(e);
}

void KMenuWidget::focusInEvent(QFocusEvent* e)
{
    if (e->reason() == Qt::TabFocusReason)
        setCurrentItem(getFirstEnableItem());
    else if (e->reason() == Qt::BacktabFocusReason)
        setCurrentItem(getLastEnableItem());
    QWidget::focusInEvent(e);
}

bool KMenuWidget::preKeyPressEvent(QKeyEvent* e)
{
    const int key = e->key();
    return key == Qt::Key_Return || key == Qt::Key_Enter || key == Qt::Key_Left || key == Qt::Key_Right;
}

bool KMenuWidget::preMouseMoveEvent(QMouseEvent* e)
{
    const QPointF global = e->globalPosition();
    for (QWidget* w = this; w; w = w->parentWidget()) {
        auto* menu = qobject_cast<KMenuWidget*>(w);
        if (!menu)
            continue;
        QMouseEvent move(QEvent::MouseMove, menu->mapFromGlobal(global), global, Qt::NoButton, Qt::NoButton,
                         e->modifiers());
        move.setAccepted(false);
        QCoreApplication::sendEvent(menu, &move);
        if (move.isAccepted())
            return true;
    }
    return false;
}

bool KMenuWidget::preMouseReleaseEvent(QMouseEvent* e, void*& item)
{
    if (e->button() != Qt::LeftButton)
        return false;
    KMenuWidgetItem* row = itemAt(e->position().toPoint());
    if (!_isItemUsable(row))
        return false;
    if (row->isTriggerable())
        item = row;
    else
        mouseReleaseEvent(e);
    return true;
}

// --- events ---

void KMenuWidget::_handleBlockedMouse(QEvent* e)
{
    auto* blocked = static_cast<KBlockedMouseEvent*>(e);
    QMouseEvent* mouse = blocked->mouseEvent();
    if (!mouse)
        return;
    const QPointF global = mouse->globalPosition();
    const QPointF local = mapFromGlobal(global);
    // A press in a menu behind an open submenu keeps the chain open: the press picks
    // another row of this menu.
    if (mouse->type() == QEvent::MouseButtonPress && rect().contains(local.toPoint()))
        blocked->setKeepOpen(true);
    QMouseEvent rebuilt(mouse->type(), local, global, mouse->button(), mouse->buttons(), mouse->modifiers());
    event(&rebuilt);
    e->accept();
}

bool KMenuWidget::event(QEvent* e)
{
    switch (int(e->type())) {
    case KEvent::Idle: {
        KCommandBridgeHelper::handleIdleEvent(command(), e);
        KCommand* cmd = command();
        if (cmd && isVisible()) {
            const int n = cmd->count();
            for (int i = 0; i < n; ++i) {
                if (KCommand* sub = cmd->subCommand(i))
                    sub->update();
            }
        }
        return true;
    }
    case KEvent::BlockedMouse:
        _handleBlockedMouse(e);
        return true;
    case KEvent::HotKeyCollect:
        _collectHotKey(static_cast<KHotKeyCollectEvent*>(e));
        return true;
    case KEvent::HotKeyTrigger:
        _triggerHotKey(static_cast<KHotKeyTriggerEvent*>(e));
        return true;
    case KEvent::HotKeyPopupSelect:
        if (!m_currentItem)
            setCurrentItem(getFirstEnableItem());
        return true;
    case QEvent::FontChange:
    case QEvent::StyleChange:
        itemChanged(); // the rows measure themselves in the menu's font and style
        break;
    case QEvent::KeyPress: {
        // Tab moves the highlight, not the focus.
        auto* key = static_cast<QKeyEvent*>(e);
        if (key->key() == Qt::Key_Tab || key->key() == Qt::Key_Backtab) {
            keyPressEvent(key);
            return true;
        }
        break;
    }
    default:
        break;
    }
    return KCommandWidgetBridge<QWidget>::event(e);
}

void KMenuWidget::hideEvent(QHideEvent* e)
{
    m_timer.stop();
    if (m_popupItem)
        m_popupItem->hidePopup();
    QWidget::hideEvent(e);
    Q_EMIT hided();
}

// --- key tips ---

void KMenuWidget::_collectHotKey(KHotKeyCollectEvent* e)
{
    KCommand* cmd = command();
    e->useAutoIndex = cmd && cmd->property("autoIndex").toBool();
    const QPoint origin = KDrawHelpFunc::getHotKeyShowPos(this, size(), -1, -1);
    for (int i = 0; i < count(); ++i) {
        KMenuWidgetItem* item = itemAt(i);
        if (!item || !item->isVisible() || dynamic_cast<KMenuWidgetSeparatorItem*>(item))
            continue;
        // At the left of the row, over the icon column, with the row's height as reference.
        const QRect row = item->geometry();
        const QSize reference(m_iconSize.width() + 12, row.height());
        const QPoint pos = KDrawHelpFunc::modifyHotkeyPos(origin + row.topLeft(), reference, 4, 5, 11);
        const QString key = item->command() ? item->command()->property("hotKey").toString() : QString();
        e->addHotKey(pos, key, this, item->isEnabled(), QVariant::fromValue(static_cast<void*>(item)));
    }
    e->useAutoIndex = false;
}

void KMenuWidget::_triggerHotKey(KHotKeyTriggerEvent* e)
{
    void* tagged = e->message ? e->message->item() : nullptr;
    KMenuWidgetItem* item = nullptr;
    for (int i = 0; i < count() && !item; ++i) {
        if (itemAt(i) == tagged)
            item = itemAt(i);
    }
    if (!item || !item->isEnabled())
        return;
    if (!e->execute) {
        // The key is shared: the selection only moves on to the next item that has it.
        setCurrentItem(item);
        e->result = 3;
        return;
    }
    KCommand* cmd = item->command();
    if (!cmd || !cmd->isExtensible()) {
        item->onHotKeyTrigger();
        e->result = 2;
        return;
    }
    hotKeyTriggerExtensibleItem(item, e);
}

void KMenuWidget::hotKeyTriggerExtensibleItem(KMenuWidgetItem* item, KHotKeyTriggerEvent* e)
{
    if (!e->quick) {
        showPopupItemWithHotkey(item, e);
        return;
    }
    setCurrentItem(item);
    item->onHotKeyTrigger();
    auto* popupItem = dynamic_cast<KMenuWidgetPopupItem*>(item);
    KPopupWidget* popup = popupItem ? popupItem->popupWidget() : nullptr;
    if (popup && popup->contentWidget())
        QCoreApplication::postEvent(popup->contentWidget(), new KHotKeyPopupSelectEvent);
}

void KMenuWidget::showPopupItemWithHotkey(KMenuWidgetItem* item, KHotKeyTriggerEvent* e)
{
    setCurrentItem(item);
    item->onHotKeyTrigger(); // opens the submenu
    auto* popupItem = dynamic_cast<KMenuWidgetPopupItem*>(item);
    QPointer<KPopupWidget> popup = popupItem ? popupItem->popupWidget() : nullptr;
    if (!popup || !popup->isVisible())
        return;
    KHotKeyPopupAssistant level(popup);
    level.collectFromContent();
    QPointer<KMenuWidget> guard(this);
    e->execResult = level.exec();
    // Escape in the submenu's level comes back to this menu's level, without the submenu.
    if (e->execResult == -2 && popup)
        popup->hide();
}
