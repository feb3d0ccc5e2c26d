#include "kmenubar.h"

#include <QApplication>
#include <QKeyEvent>
#include <QMdiSubWindow>
#include <QPainter>
#include <QRegularExpression>
#include <QStyle>
#include <QToolTip>

#include <kabstractlistcommand.h>
#include <kblockedmouseevent.h>
#include <kcommand.h>
#include <kcommandwidgetbridge.h>
#include <kdrawhelpfunc.h>
#include <kevent.h>
#include <khotkeyevent.h>
#include <khotkeypopupassistant.h>
#include <kmdiarea.h>
#include <kmenuwidget.h>
#include <kpopupwidget.h>
#include <kseparatorcommand.h>
#include <ksystemmenucommand.h>

namespace {

const int kTextMargin = 7;   // room left and right of an entry's text
const int kLineGap = 2;      // between two lines of a wrapped bar
const int kIconItemSide = 18;

QColor themeColor(const char* cls, const QString& key, const QColor& fallback)
{
    const QColor c = KDrawHelpFunc::getColorFromTheme(QLatin1String(cls), key);
    return c.isValid() ? c : fallback;
}

} // namespace

// --- items ---

KMenuBarItem::KMenuBarItem(KCommand* command, KMenuBar* bar)
    : m_bar(bar)
    , m_command(command)
{
    m_popup = new KPopupWidget(bar, Qt::Popup);
    connect(m_popup.data(), &KPopupWidget::aboutToHide, this, &KMenuBarItem::popupWidgetHiden);
    if (command)
        connect(command, &KCommand::changed, this, &KMenuBarItem::syncCommand);
    syncCommand();
}

KMenuBarItem::~KMenuBarItem()
{
    delete m_popup.data();
}

void KMenuBarItem::setMenuItemStyle(int style)
{
    if (m_menuItemStyle == style)
        return;
    m_menuItemStyle = style;
    Q_EMIT changed();
}

bool KMenuBarItem::isPopuping() const
{
    return m_popup && m_popup->isVisible();
}

void KMenuBarItem::syncCommand()
{
    KCommand* cmd = m_command.data();
    if (!cmd)
        return;
    m_text = cmd->getDrawText();
    m_icon = cmd->icon();
    m_enabled = cmd->isEnabled();
    m_visible = cmd->isVisible();
    m_checkedHint = cmd->checkedHint();
    m_triggerable = cmd->isTriggerable();
    m_detail = cmd->getToolTip();
    m_shortcutHint = cmd->shortcutHint();
    m_separator = KSeparatorCommand::isSeparator(cmd);
    const QVariant both = cmd->property("forceShowIconAndText").isValid() ? cmd->property("forceShowIconAndText")
                                                                          : cmd->property("showIconAndText");
    if (both.toBool())
        m_menuItemStyle |= StyleIcon | StyleText;
    Q_EMIT changed();
}

bool KMenuBarItem::needDrawText() const
{
    if (m_icon.isNull())
        return !m_text.isEmpty();
    return (m_menuItemStyle & StyleText) && !m_text.isEmpty();
}

void KMenuBarItem::setHovered(bool hovered)
{
    if (m_hovered == hovered)
        return;
    m_hovered = hovered;
    if (m_bar)
        m_bar->update(m_rect);
}

bool KMenuBarItem::canPopup() const
{
    return m_enabled && m_visible && !m_separator && qobject_cast<KAbstractListCommand*>(m_command.data());
}

void KMenuBarItem::popup(Qt::Orientation orientation)
{
    KCommand* cmd = m_command.data();
    if (!cmd || !m_bar || !m_popup)
        return;
    // The menu is made afresh at each opening: the list may have changed since.
    if (QWidget* old = m_popup->contentWidget()) {
        m_popup->setContentWidget(nullptr);
        delete old;
    }
    m_popup->setContentWidget(cmd->requestWidget(m_popup, KCommand::ExtendedPurpose));
    m_popup->clearSizeAttitude();
    QRect exclude(m_bar->mapToGlobal(m_rect.topLeft()), m_rect.size());
    QPoint pos;
    if (orientation == Qt::Horizontal) {
        exclude.adjust(0, -2, 0, 2);
        pos = exclude.bottomLeft() + QPoint(0, 1);
    } else {
        exclude.adjust(-2, 0, 2, 0);
        pos = exclude.topRight() + QPoint(1, 0);
    }
    m_popup->show(exclude, pos);
    m_bar->update(m_rect);
}

void KMenuBarItem::hidePopup()
{
    if (m_popup && m_popup->isVisible())
        m_popup->hide();
}

bool KMenuBarItem::canDoubleClick() const
{
    return false;
}

void KMenuBarItem::doubleClick()
{
}

void KMenuBarItem::trigger()
{
    if (KCommand* cmd = m_command.data()) {
        if (m_enabled && m_visible)
            cmd->trigger();
    }
}

void KMenuBarItem::paintItem(QPainter& painter)
{
    if (!m_visible || m_rect.isEmpty())
        return;
    QRect rect = m_rect;
    paintBackground(painter, rect);
    if (m_separator)
        return;
    QRect content = rect.adjusted(kTextMargin, 0, -kTextMargin, 0);
    if (m_menuItemStyle & StyleIcon || !needDrawText()) {
        if (!m_icon.isNull()) {
            QRect iconRect = needDrawText() ? QRect(content.left(), content.top(), 16, content.height())
                                            : rect;
            paintIcon(painter, iconRect);
            if (needDrawText())
                content.setLeft(iconRect.right() + 4);
        }
    }
    if (needDrawText())
        paintText(painter, content);
}

void KMenuBarItem::paintBackground(QPainter& painter, QRect& rect)
{
    const char* cls = "KMenuWidgetLayoutItem";
    if (m_separator) {
        const QColor line = themeColor("KMenuWidget", QStringLiteral("border"), m_bar->palette().color(QPalette::Mid));
        painter.setPen(line);
        const int x = rect.center().x();
        painter.drawLine(x, rect.top() + 3, x, rect.bottom() - 3);
        return;
    }
    const bool down = isPopuping() || m_checkedHint;
    if (!down && !(m_hovered && m_enabled))
        return;
    const QString suffix = down ? QStringLiteral("-down") : QStringLiteral("-hover");
    const QPalette& pal = m_bar->palette();
    const QColor background = themeColor(cls, QStringLiteral("background") + suffix, pal.color(QPalette::Highlight).lighter(170));
    const QColor border = themeColor(cls, QStringLiteral("border") + suffix, pal.color(QPalette::Highlight));
    painter.save();
    painter.setPen(border);
    painter.setBrush(background);
    painter.drawRect(rect.adjusted(0, 0, -1, -1));
    painter.restore();
}

void KMenuBarItem::paintText(QPainter& painter, QRect& rect)
{
    const QPalette& pal = m_bar->palette();
    QColor text = themeColor("common", QStringLiteral("text"), pal.color(QPalette::WindowText));
    if (!m_enabled)
        text = pal.color(QPalette::Disabled, QPalette::WindowText);
    painter.setFont(m_bar->font());
    KDrawHelpFunc::drawColorText(painter, text, rect, int(Qt::AlignCenter | Qt::TextShowMnemonic), m_text);
}

void KMenuBarItem::paintIcon(QPainter& painter, QRect& rect)
{
    const QIcon::Mode mode = !m_enabled ? QIcon::Disabled : (m_hovered ? QIcon::Active : QIcon::Normal);
    m_icon.paint(&painter, rect, Qt::AlignCenter, mode);
}

QSize KMenuBarItem::sizeHint() const
{
    if (!m_visible || !m_bar)
        return QSize(0, 0);
    const QFontMetrics fm(m_bar->font());
    const int height = qMax(fm.height() + 6, 20);
    if (m_separator)
        return QSize(7, height);
    int width = 2 * kTextMargin;
    const bool text = needDrawText();
    if (!m_icon.isNull() && ((m_menuItemStyle & StyleIcon) || !text))
        width += 16 + (text ? 4 : 0);
    if (text) {
        QString plain = m_text;
        plain.remove(QRegularExpression(QStringLiteral("&(?!&)")));
        width += fm.horizontalAdvance(plain);
    }
    return QSize(width, height);
}

QSize KMenuBarItem::minimumSize() const
{
    return sizeHint();
}

QSize KMenuBarItem::maximumSize() const
{
    return QSize(0x7FFFF, sizeHint().height());
}

Qt::Orientations KMenuBarItem::expandingDirections() const
{
    return {};
}

bool KMenuBarItem::isEmpty() const
{
    return !m_visible;
}

void KMenuBarItem::setGeometry(const QRect& rect)
{
    m_rect = rect;
}

KMenuBarIconItem::KMenuBarIconItem(KCommand* command, KMenuBar* bar)
    : KMenuBarItem(command, bar)
{
    m_menuItemStyle = StyleIcon;
}

QSize KMenuBarIconItem::sizeHint() const
{
    if (!m_visible || !m_bar)
        return QSize(0, 0);
    return QSize(kIconItemSide, qMax(QFontMetrics(m_bar->font()).height() + 6, kIconItemSide));
}

bool KMenuBarIconItem::canPopup() const
{
    return false;
}

KSystemMenuBarItem::KSystemMenuBarItem(KCommand* command, KMenuBar* bar)
    : KMenuBarItem(command, bar)
{
    m_menuItemStyle = StyleIcon;
}

bool KSystemMenuBarItem::canDoubleClick() const
{
    return m_close && m_enabled && m_visible;
}

void KSystemMenuBarItem::doubleClick()
{
    hidePopup();
    if (KCommand* close = m_close.data())
        close->trigger();
}

QSize KSystemMenuBarItem::sizeHint() const
{
    if (!m_visible || !m_bar)
        return QSize(0, 0);
    return QSize(kIconItemSide + 4, qMax(QFontMetrics(m_bar->font()).height() + 6, kIconItemSide));
}

KMenuBarEmptyItem::KMenuBarEmptyItem(KMenuBar* bar)
    : KMenuBarItem(nullptr, bar)
{
    m_visible = true;
    m_enabled = true;
}

QSize KMenuBarEmptyItem::sizeHint() const
{
    return QSize(0, 0);
}

Qt::Orientations KMenuBarEmptyItem::expandingDirections() const
{
    return Qt::Horizontal;
}

// --- layout ---

KMenuBarLayout::KMenuBarLayout(QWidget* parent)
    : QLayout(parent)
{
    setContentsMargins(0, 0, 0, 0);
    setSpacing(0);
}

KMenuBarLayout::~KMenuBarLayout()
{
    // The bar owns its items; it takes them out before the layout goes.
    m_items.clear();
}

void KMenuBarLayout::setOrientation(Qt::Orientation orientation)
{
    if (m_orientation == orientation)
        return;
    m_orientation = orientation;
    invalidate();
}

void KMenuBarLayout::addItem(QLayoutItem* item)
{
    insertItem(int(m_items.size()), item);
}

void KMenuBarLayout::insertItem(int index, QLayoutItem* item)
{
    if (index < 0 || index > m_items.size())
        index = int(m_items.size());
    m_items.insert(index, item);
    invalidate();
}

QLayoutItem* KMenuBarLayout::itemAt(int index) const
{
    return m_items.value(index);
}

QLayoutItem* KMenuBarLayout::takeAt(int index)
{
    if (index < 0 || index >= m_items.size())
        return nullptr;
    QLayoutItem* item = m_items.takeAt(index);
    invalidate();
    return item;
}

int KMenuBarLayout::count() const
{
    return int(m_items.size());
}

void KMenuBarLayout::invalidate()
{
    m_sizes.clear();
    m_cachedWidth = -1;
    m_cachedHeight = -1;
    QLayout::invalidate();
}

QSize KMenuBarLayout::_itemSize(int index) const
{
    if (m_sizes.size() != m_items.size()) {
        m_sizes.clear();
        for (QLayoutItem* item : m_items)
            m_sizes.append(item->isEmpty() ? QSize(0, 0) : item->sizeHint());
    }
    const QSize s = m_sizes.value(index);
    // Along a vertical bar an entry's extent is its height.
    return m_orientation == Qt::Horizontal ? s : s.transposed();
}

int KMenuBarLayout::_place(int w, QVector<QRect>* rects) const
{
    struct Line {
        int first;
        int last; // one past
        int height;
    };
    QVector<Line> lines;
    const int n = int(m_items.size());
    int i = 0;
    while (i < n) {
        Line line{i, i, 0};
        int width = 0;
        while (i < n) {
            const QSize s = _itemSize(i);
            if (width > 0 && width + s.width() > w)
                break;
            width += s.width();
            line.height = qMax(line.height, s.height());
            ++i;
        }
        line.last = i;
        lines.append(line);
    }
    int total = 0;
    for (const Line& line : lines)
        total += line.height;
    total += kLineGap * qMax(0, int(lines.size()) - 1);
    if (!rects)
        return total;

    rects->fill(QRect(), n);
    int top = 0;
    bool rightAligned = false;
    for (int li = 0; li < lines.size(); ++li) {
        const Line& line = lines.at(li);
        const int lineTop = top + kLineGap * li;
        auto place = [&](int index, int x) {
            const QSize s = _itemSize(index);
            (*rects)[index] = QRect(x, lineTop + (line.height - s.height()) / 2, s.width(), s.height());
        };
        int spacer = -1;
        for (int k = line.first; k < line.last && !rightAligned; ++k) {
            if (m_items.at(k)->expandingDirections() & Qt::Horizontal) {
                spacer = k;
                break;
            }
        }
        const int leftEnd = rightAligned ? line.first : (spacer >= 0 ? spacer : line.last);
        int x = 0;
        for (int k = line.first; k < leftEnd; ++k) {
            place(k, x);
            x += _itemSize(k).width();
        }
        if (rightAligned || spacer >= 0) {
            // From the right edge backwards.
            int right = w;
            for (int k = line.last - 1; k >= qMax(leftEnd, spacer + 1); --k) {
                right -= _itemSize(k).width();
                place(k, right);
            }
            if (spacer >= 0)
                (*rects)[spacer] = QRect(x, lineTop, qMax(0, right - x), line.height);
            rightAligned = true;
        }
        top += line.height;
    }
    return total;
}

int KMenuBarLayout::extentFor(int w) const
{
    if (w == m_cachedWidth)
        return m_cachedHeight;
    m_cachedWidth = w;
    m_cachedHeight = _place(w, nullptr);
    return m_cachedHeight;
}

int KMenuBarLayout::heightForWidth(int width) const
{
    return m_orientation == Qt::Horizontal ? extentFor(width) : -1;
}

QSize KMenuBarLayout::sizeHint() const
{
    int along = 0;
    int across = 0;
    for (int i = 0; i < m_items.size(); ++i) {
        const QSize s = _itemSize(i);
        along += s.width();
        across = qMax(across, s.height());
    }
    return m_orientation == Qt::Horizontal ? QSize(along, across) : QSize(across, along);
}

QSize KMenuBarLayout::minimumSize() const
{
    int widest = 0;
    for (int i = 0; i < m_items.size(); ++i)
        widest = qMax(widest, _itemSize(i).width());
    const int across = extentFor(widest);
    return m_orientation == Qt::Horizontal ? QSize(widest, across) : QSize(across, widest);
}

void KMenuBarLayout::setGeometry(const QRect& rect)
{
    QLayout::setGeometry(rect);
    const int w = m_orientation == Qt::Horizontal ? rect.width() : rect.height();
    _place(w, &m_rects);
    for (int i = 0; i < m_items.size(); ++i) {
        QRect r = m_rects.value(i);
        if (m_orientation == Qt::Vertical) {
            // Lines run down the bar and stack from its right edge.
            r = QRect(rect.right() - rect.left() - r.bottom(), r.left(), r.height(), r.width());
        }
        m_items.at(i)->setGeometry(r.translated(rect.topLeft()));
    }
}

// --- bar ---

KMenuBar::KMenuBar(KCommand* command, QWidget* parent)
    : QWidget(parent)
    , m_command(command)
{
    m_layout = new KMenuBarLayout(this);
    setMouseTracking(true);
    setSizePolicy(QSizePolicy(QSizePolicy::Expanding, QSizePolicy::Preferred));
    setAttribute(Qt::WA_Hover, false);
    if (!command)
        return;
    setObjectName(command->property("id").toString());
    KCommandBridgeHelper::registerIdle(this);
    connect(command, &KCommand::changed, this, &KMenuBar::syncCommand);
    if (auto* list = qobject_cast<KAbstractListCommand*>(command)) {
        connect(list, &KAbstractListCommand::subCommandInsert, this, &KMenuBar::onSubCommandInserted);
        connect(list, &KAbstractListCommand::subCommandRemove, this, &KMenuBar::onSubCommandRemoved);
    }
    for (int i = 0; i < command->count(); ++i)
        addItem(command->subCommand(i));
    syncCommand();
}

KMenuBar::~KMenuBar()
{
    if (m_mdiArea)
        disconnect(m_mdiArea.data(), nullptr, this, nullptr);
    KCommandBridgeHelper::unregisterIdle(this);
    m_hoverItem = nullptr;
    m_popupItem = nullptr;
    while (QLayoutItem* item = m_layout->takeAt(0))
        delete static_cast<KMenuBarItem*>(item);
    qDeleteAll(m_mdiCommands);
}

void KMenuBar::syncCommand()
{
    if (KCommand* cmd = m_command.data())
        setEnabled(cmd->isEnabled());
}

void KMenuBar::addItem(KCommand* command)
{
    insertItem(count(), command);
}

void KMenuBar::addItem(KMenuBarItem* item)
{
    insertItem(count(), item);
}

void KMenuBar::insertItem(int index, KCommand* command)
{
    if (command)
        insertItem(index, new KMenuBarItem(command, this));
}

void KMenuBar::insertItem(int index, KMenuBarItem* item)
{
    if (!item)
        return;
    if (index < 0 || index > count())
        index = count();
    m_layout->insertItem(index, item);
    connect(item, &KMenuBarItem::changed, this, &KMenuBar::on_item_changed);
    connect(item, &KMenuBarItem::popupWidgetHiden, this, &KMenuBar::popupMenuHided);
    on_item_changed();
}

void KMenuBar::removeItem(int index)
{
    KMenuBarItem* item = itemAt(index);
    if (!item)
        return;
    if (item == m_hoverItem)
        m_hoverItem = nullptr;
    if (item == m_popupItem) {
        m_popupItem = nullptr;
        m_popupMode = false;
    }
    m_layout->takeAt(index);
    item->disconnect(this);
    item->hidePopup();
    item->deleteLater();
    on_item_changed();
}

void KMenuBar::removeItem(KMenuBarItem* item)
{
    removeItem(indexOf(item));
}

void KMenuBar::removeAll()
{
    while (count() > 0)
        removeItem(count() - 1);
}

int KMenuBar::count() const
{
    return m_layout->count();
}

KMenuBarItem* KMenuBar::itemAt(int index) const
{
    return static_cast<KMenuBarItem*>(m_layout->itemAt(index));
}

KMenuBarItem* KMenuBar::itemAt(const QPoint& pos) const
{
    for (int i = 0; i < count(); ++i) {
        KMenuBarItem* item = itemAt(i);
        if (item->isVisible() && !item->isSeparator() && item->geometry().contains(pos)
            && !qobject_cast<KMenuBarEmptyItem*>(item))
            return item;
    }
    return nullptr;
}

int KMenuBar::indexOf(QLayoutItem* item) const
{
    return m_layout->indexOf(item);
}

int KMenuBar::getCurrentIndex() const
{
    KMenuBarItem* current = m_popupItem ? m_popupItem : m_hoverItem;
    return current ? indexOf(current) : -1;
}

namespace {
bool usable(const KMenuBarItem* item)
{
    return item && item->isVisible() && item->isEnabled() && !item->isSeparator()
        && !qobject_cast<const KMenuBarEmptyItem*>(item);
}
} // namespace

KMenuBarItem* KMenuBar::getFirstEnableItem() const
{
    for (int i = 0; i < count(); ++i)
        if (usable(itemAt(i)))
            return itemAt(i);
    return nullptr;
}

KMenuBarItem* KMenuBar::getLastEnableItem() const
{
    for (int i = count() - 1; i >= 0; --i)
        if (usable(itemAt(i)))
            return itemAt(i);
    return nullptr;
}

KMenuBarItem* KMenuBar::getNextEnableItem() const
{
    const int current = getCurrentIndex();
    for (int step = 1; step <= count(); ++step) {
        KMenuBarItem* item = itemAt((current + step + count()) % count());
        if (usable(item))
            return item;
    }
    return nullptr;
}

KMenuBarItem* KMenuBar::getPrewEnableItem() const
{
    const int current = qMax(0, getCurrentIndex());
    for (int step = 1; step <= count(); ++step) {
        KMenuBarItem* item = itemAt((current - step + 2 * count()) % count());
        if (usable(item))
            return item;
    }
    return nullptr;
}

bool KMenuBar::isPopuping() const
{
    for (int i = 0; i < count(); ++i)
        if (itemAt(i)->isPopuping())
            return true;
    return false;
}

void KMenuBar::hoverItem(KMenuBarItem* item)
{
    if (item == m_hoverItem)
        return;
    if (m_hoverItem)
        m_hoverItem->setHovered(false);
    m_hoverItem = item;
    if (item)
        item->setHovered(true);
}

void KMenuBar::popupItem(KMenuBarItem* item)
{
    if (!m_popupMode || item == m_popupItem)
        return;
    KMenuBarItem* old = m_popupItem;
    m_popupItem = item;
    if (old) {
        // Its closing must not end the mode: another entry takes over.
        const QSignalBlocker quiet(old);
        old->hidePopup();
        update(old->geometry());
    }
    m_popupMode = true;
    if (item) {
        hoverItem(item);
        if (item->canPopup())
            item->popup(m_orientation);
    }
}

void KMenuBar::popupMenuHided()
{
    // Only the entry that is open now speaks for the bar.
    auto* item = qobject_cast<KMenuBarItem*>(sender());
    if (item && item != m_popupItem)
        return;
    KMenuBarItem* old = m_popupItem;
    popupItem(nullptr);
    m_popupMode = false;
    if (old)
        update(old->geometry());
    if (!underMouse())
        hoverItem(nullptr);
}

void KMenuBar::on_item_changed()
{
    m_layout->invalidate();
    updateGeometry();
    update();
}

void KMenuBar::onSubCommandInserted(int index, KCommand* command)
{
    // The MDI entries stand first (system menu) and last; a list's index counts without them.
    const bool mdi = !m_mdiCommands.isEmpty();
    insertItem(mdi ? index + 1 : index, command);
}

void KMenuBar::onSubCommandRemoved(int index)
{
    const bool mdi = !m_mdiCommands.isEmpty();
    removeItem(mdi ? index + 1 : index);
}

// --- MDI ---

void KMenuBar::initializeMdi(KMdiArea* area)
{
    if (!area || m_mdiArea)
        return;
    m_mdiArea = area;
    auto* system = new KSystemMenuCommand(area, nullptr);
    auto* minimize = new KMDIMinimizeCommand(area, nullptr);
    auto* restore = new KMDIRestoreCommand(area, nullptr);
    auto* close = new KMDICloseCommand(area, nullptr);
    auto* systemItem = new KSystemMenuBarItem(system, this);
    systemItem->setCloseCommand(close);
    insertItem(0, systemItem);
    addItem(new KMenuBarEmptyItem(this));
    addItem(new KMenuBarIconItem(minimize, this));
    addItem(new KMenuBarIconItem(restore, this));
    addItem(new KMenuBarIconItem(close, this));
    m_mdiCommands = {system, minimize, restore, close};
    connect(area, &KMdiArea::statusChanged, this, &KMenuBar::updateMdi);
    updateMdi();
}

void KMenuBar::updateMdi()
{
    if (!m_mdiArea || m_mdiCommands.isEmpty())
        return;
    m_mdiCommands.first()->update();
    QMdiSubWindow* current = m_mdiArea->currentSubWindow();
    const bool maximized = current && current->isMaximized();
    bool changed = false;
    for (KCommand* cmd : std::as_const(m_mdiCommands)) {
        if (cmd->isVisible() != maximized) {
            cmd->setVisible(maximized);
            changed = true;
        }
    }
    if (changed) {
        m_layout->invalidate();
        m_layout->activate();
        updateGeometry();
    }
}

// --- sizes ---

void KMenuBar::setOrientation(Qt::Orientation orientation)
{
    if (m_orientation == orientation)
        return;
    m_orientation = orientation;
    m_layout->setOrientation(orientation);
    updateGeometry();
}

QSize KMenuBar::sizeHint(Qt::Orientation orientation) const
{
    if (orientation == m_orientation)
        return sizeHint();
    return m_layout->sizeHint().transposed();
}

QSize KMenuBar::minimumSize(Qt::Orientation orientation) const
{
    return dockMinimumSizeHint(orientation);
}

QSize KMenuBar::maximumSize(Qt::Orientation) const
{
    return QWidget::maximumSize();
}

QSize KMenuBar::minimumSizeHint(Qt::Orientation orientation) const
{
    return dockMinimumSizeHint(orientation);
}

QSize KMenuBar::sizeHint() const
{
    // As wide as one line; as high as the lines need at the width the bar has now.
    QSize hint = m_layout->sizeHint();
    if (m_orientation == Qt::Horizontal && width() > 0)
        hint.setHeight(qMax(hint.height(), m_layout->extentFor(width())));
    return hint;
}

QSize KMenuBar::minimumSizeHint() const
{
    // The bar wraps rather than refuse a narrow width: one entry is all it needs.
    return dockMinimumSizeHint(m_orientation);
}

int KMenuBar::heightForWidth(int width) const
{
    return m_orientation == Qt::Horizontal ? m_layout->extentFor(width) : -1;
}

QSize KMenuBar::dockSizeHint(Qt::Orientation orientation, int extent) const
{
    if (orientation == Qt::Horizontal)
        return QSize(extent, m_layout->extentFor(extent));
    return QSize(m_layout->sizeHint().width(), extent);
}

QSize KMenuBar::dockMinimumSizeHint(Qt::Orientation orientation) const
{
    int widest = 0;
    int tallest = 0;
    for (int i = 0; i < count(); ++i) {
        const QSize s = itemAt(i)->isEmpty() ? QSize() : itemAt(i)->sizeHint();
        widest = qMax(widest, s.width());
        tallest = qMax(tallest, s.height());
    }
    return orientation == Qt::Horizontal ? QSize(widest, tallest) : QSize(tallest, widest);
}

QSize KMenuBar::floatSizeHint() const
{
    return m_layout->sizeHint();
}

// --- painting and input ---

void KMenuBar::paintEvent(QPaintEvent*)
{
    QPainter painter(this);
    for (int i = 0; i < count(); ++i)
        itemAt(i)->paintItem(painter);
}

void KMenuBar::mousePressEvent(QMouseEvent* e)
{
    if (e->button() != Qt::LeftButton) {
        QWidget::mousePressEvent(e);
        return;
    }
    const bool wasPopupMode = m_popupMode;
    m_popupMode = false;
    KMenuBarItem* item = itemAt(e->position().toPoint());
    if (!item)
        return;
    if (!item->canPopup()) {
        item->trigger();
    } else {
        m_popupMode = !wasPopupMode;
        if (item != m_popupItem)
            popupItem(item);
    }
    if (item->canDoubleClick())
        m_pressPos = e->position().toPoint();
}

void KMenuBar::maybeMouseDoubleClick(QMouseEvent* e)
{
    const QPoint pos = mapFromGlobal(e->globalPosition().toPoint());
    KMenuBarItem* item = itemAt(pos);
    if (!item || !item->canDoubleClick()) {
        m_pressPos = QPoint(-1, -1);
        return;
    }
    const int distance = QApplication::startDragDistance();
    if (m_pressPos.x() >= 0 && (pos - m_pressPos).manhattanLength() <= distance) {
        m_pressPos = QPoint(-1, -1);
        item->doubleClick();
    } else {
        m_pressPos = pos;
    }
}

void KMenuBar::mouseMoveEvent(QMouseEvent* e)
{
    KMenuBarItem* item = itemAt(e->position().toPoint());
    if (item && !item->isEnabled())
        item = nullptr;
    if (!m_popupMode)
        hoverItem(item);
    else if (item)
        popupItem(item);
    QWidget::mouseMoveEvent(e);
}

void KMenuBar::leaveEvent(QEvent* e)
{
    if (!m_popupMode)
        hoverItem(nullptr);
    QWidget::leaveEvent(e);
}

void KMenuBar::keyPressEvent(QKeyEvent* e)
{
    KMenuBarItem* current = m_popupItem ? m_popupItem : m_hoverItem;
    if (!current) {
        QWidget::keyPressEvent(e);
        return;
    }
    KMenuBarItem* pick = nullptr;
    switch (e->key()) {
    case Qt::Key_Home:
        pick = getFirstEnableItem();
        break;
    case Qt::Key_End:
        pick = getLastEnableItem();
        break;
    case Qt::Key_Left:
        pick = getPrewEnableItem();
        break;
    case Qt::Key_Right:
    case Qt::Key_Tab:
        pick = getNextEnableItem();
        break;
    case Qt::Key_Return:
    case Qt::Key_Enter:
        if (current->canPopup()) {
            m_popupMode = true;
            m_popupItem = nullptr;
            popupItem(current);
        } else {
            current->trigger();
        }
        return;
    case Qt::Key_Escape:
    case Qt::Key_Alt:
        hoverItem(nullptr);
        update();
        return;
    default:
        QWidget::keyPressEvent(e);
        return;
    }
    if (!pick)
        return;
    if (m_popupMode) {
        popupItem(pick);
        // The new menu shows its first entry, as a menu opened by the keyboard does.
        if (auto* menu = pick->popupWidget() ? qobject_cast<KMenuWidget*>(pick->popupWidget()->contentWidget())
                                             : nullptr)
            menu->setCurrentItem(menu->getFirstEnableItem());
    } else {
        hoverItem(pick);
    }
}

QRect KMenuBar::_popupExclude(const KMenuBarItem* item) const
{
    return QRect(mapToGlobal(item->geometry().topLeft()), item->geometry().size());
}

void KMenuBar::_collectHotKey(KHotKeyCollectEvent* e)
{
    if (isPopuping())
        return;
    for (int i = 0; i < count(); ++i) {
        KMenuBarItem* item = itemAt(i);
        if (!item->isVisible() || !item->command() || item->geometry().isEmpty())
            continue;
        const QPoint pos = mapTo(window(), item->geometry().center());
        e->addHotKey(pos, item->command()->property("hotKey").toString(), this, item->isEnabled(),
                     KHotKeyMarker::classicMenu());
    }
}

void KMenuBar::_triggerHotKey(KHotKeyTriggerEvent* e)
{
    if (!e->message)
        return;
    KMenuBarItem* item = itemAt(mapFrom(window(), e->message->pos));
    if (!item || !item->isEnabled())
        return;
    if (!item->canPopup()) {
        item->trigger();
        e->result = 2;
        return;
    }
    hoverItem(item);
    KCommand* cmd = item->command();
    KPopupWidget popup(this, Qt::Popup);
    KHotKeyPopupAssistant level(cmd, &popup);
    const QRect exclude = _popupExclude(item);
    const QPoint pos = m_orientation == Qt::Horizontal ? exclude.bottomLeft() + QPoint(0, 3)
                                                       : exclude.topRight() + QPoint(3, 0);
    level.show(exclude.adjusted(0, -2, 0, 2), pos);
    level.collectFromContent();
    QPointer<KMenuBar> guard(this);
    e->execResult = level.exec();
    if (guard) {
        hoverItem(nullptr);
        update();
    }
}

bool KMenuBar::event(QEvent* e)
{
    switch (int(e->type())) {
    case KEvent::BlockedMouse: {
        auto* blocked = static_cast<KBlockedMouseEvent*>(e);
        QMouseEvent* mouse = blocked->mouseEvent();
        if (!mouse)
            return true;
        const QPointF local = mapFromGlobal(mouse->globalPosition());
        if (mouse->type() == QEvent::MouseMove) {
            QMouseEvent moved(QEvent::MouseMove, local, mouse->globalPosition(), mouse->button(), mouse->buttons(),
                              mouse->modifiers());
            mouseMoveEvent(&moved);
        } else if (mouse->type() == QEvent::MouseButtonPress) {
            maybeMouseDoubleClick(mouse);
        }
        blocked->setFirstFlag(true);
        return true;
    }
    case KEvent::Idle:
        if (KCommand* cmd = m_command.data()) {
            cmd->update();
            for (int i = 0; i < cmd->count(); ++i)
                if (KCommand* sub = cmd->subCommand(i))
                    sub->update();
        }
        return true;
    case KEvent::Dismiss:
        hoverItem(nullptr);
        break;
    case KEvent::HotKeyCollect:
        _collectHotKey(static_cast<KHotKeyCollectEvent*>(e));
        return true;
    case KEvent::HotKeyTrigger:
        _triggerHotKey(static_cast<KHotKeyTriggerEvent*>(e));
        return true;
    case QEvent::ToolTip:
        if (m_hoverItem && !m_hoverItem->detail().isEmpty()) {
            auto* help = static_cast<QHelpEvent*>(e);
            QToolTip::showText(help->globalPos(), m_hoverItem->detail(), this, m_hoverItem->geometry());
            return true;
        }
        break;
    case QEvent::Resize:
        // A new width may need another number of lines.
        updateGeometry();
        break;
    case QEvent::FontChange:
    case QEvent::StyleChange:
        on_item_changed();
        break;
    default:
        break;
    }
    return QWidget::event(e);
}
