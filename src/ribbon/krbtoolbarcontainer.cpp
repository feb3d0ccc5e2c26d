#include "krbtoolbarcontainer.h"

#include <QEvent>

#include <kabstractlistcommand.h>
#include <kevent.h>
#include <khotkeyevent.h>
#include <kseparatorcommand.h>
#include <ktoolbutton.h>

// --- KRbToolbarContainerItem ---

KRbToolbarContainerItem::KRbToolbarContainerItem(KCommand* cmd, QWidget* parent)
    : QWidgetItem(cmd->requestWidget(parent, KCommand::PocketPurpose))
    , m_command(cmd)
{
    auto* button = qobject_cast<KToolButton*>(widget());
    if (!button)
        return;
    constexpr int iconAndText = KToolButton::StyleIcon | KToolButton::StyleText;
    if (cmd->property("forceShowIconAndText", false).toBool())
        button->setButtonStyle((button->buttonStyle() & ~(iconAndText | KToolButton::StyleAutoHideText))
                               | iconAndText);
    else if (cmd->property("showIconAndText", false).toBool())
        button->setButtonStyle(button->buttonStyle() | iconAndText | KToolButton::StyleAutoHideText);
}

bool KRbToolbarContainerItem::isSeparator() const
{
    return m_command && m_command.data() == KSeparatorCommand::instance();
}

// --- KRbToolbarContainerLayout ---

KRbToolbarContainerLayout::KRbToolbarContainerLayout(QWidget* parent)
    : QLayout(parent)
{
    // Positions count from the block's own origin; the block has no margins of its own.
    setContentsMargins(0, 0, 0, 0);
}

KRbToolbarContainerLayout::~KRbToolbarContainerLayout()
{
    qDeleteAll(m_items);
}

void KRbToolbarContainerLayout::insertItem(int index, KRbToolbarContainerItem* item)
{
    if (!item)
        return;
    if (index < 0 || index > m_items.size())
        index = m_items.size();
    m_items.insert(index, item);
    if (QWidget* w = item->widget())
        addChildWidget(w);
    invalidate();
}

void KRbToolbarContainerLayout::setWasteProportion(double proportion)
{
    if (m_wasteProportion == proportion)
        return;
    m_wasteProportion = proportion;
    invalidate();
}

void KRbToolbarContainerLayout::addItem(QLayoutItem*)
{
    // Deliberately nothing: an item of the block always comes with its command.
}

int KRbToolbarContainerLayout::count() const
{
    return m_items.size();
}

QLayoutItem* KRbToolbarContainerLayout::itemAt(int index) const
{
    return m_items.value(index, nullptr);
}

QLayoutItem* KRbToolbarContainerLayout::takeAt(int index)
{
    if (index < 0 || index >= m_items.size())
        return nullptr;
    KRbToolbarContainerItem* item = m_items.takeAt(index);
    if (QWidget* w = item->widget())
        w->deleteLater();
    invalidate();
    return item;
}

int KRbToolbarContainerLayout::totalWidth(const QVector<QSize>& sizes) const
{
    int total = 0;
    for (const QSize& s : sizes)
        total += s.width();
    return total;
}

QSize KRbToolbarContainerLayout::itemSizeHint(int index) const
{
    const QLayoutItem* item = m_items.value(index, nullptr);
    if (!item)
        return QSize();
    const QSize hint = item->sizeHint();
    const QSize minimum = item->minimumSize();
    const QSize maximum = item->maximumSize();
    return QSize(qMax(minimum.width(), qMin(hint.width(), maximum.width())),
                 qMax(minimum.height(), qMin(hint.height(), maximum.height())));
}

bool KRbToolbarContainerLayout::_isSeparatorAt(int index) const
{
    const KRbToolbarContainerItem* item = m_items.value(index, nullptr);
    return item && item->isSeparator();
}

QVector<int> KRbToolbarContainerLayout::tryLayout(const QVector<QSize>& sizes, int width,
                                                  bool breakAtSeparator) const
{
    const int n = sizes.size();
    QVector<int> ends(2, 0);
    int start = 0;
    for (int row = 0; row < 2; ++row) {
        int sum = 0;
        int i = start;
        while (i < n && sum + sizes.at(i).width() <= width) {
            sum += sizes.at(i).width();
            ++i;
        }
        int end = i;
        if (i < n) {
            // i is the breaking item: the first one that no longer fits.
            if (_isSeparatorAt(i)) {
                end = i + 1; // a separator closes the row it would overflow
            } else if (breakAtSeparator) {
                // Back to just after a separator. Without one this reaches 0, and the
                // attempt fails: that is what sends the search to a wider row.
                while (end > 0 && !_isSeparatorAt(end - 1))
                    --end;
            }
        }
        ends[row] = end;
        start = end;
    }
    return ends;
}

QSize KRbToolbarContainerLayout::_sizeHint(const QVector<QSize>& sizes, bool breakAtSeparator) const
{
    const int n = sizes.size();
    int hi = totalWidth(sizes) + 1;
    int lo = 0;
    int mid = hi / 2;
    QVector<int> best;
    while (hi - lo > 1) {
        const QVector<int> rows = tryLayout(sizes, mid, breakAtSeparator);
        if (rows.at(1) == n) {
            best = rows;
            hi = mid;
        } else {
            lo = mid;
        }
        mid = (hi + lo) / 2;
    }
    if (best.isEmpty())
        return QSize(0, 0);

    int width = 0;
    int height = 0;
    int start = 0;
    for (int end : best) {
        int rowWidth = 0;
        int rowHeight = 0;
        for (int i = start; i < end; ++i) {
            if (i == end - 1 && _isSeparatorAt(i))
                break; // a separator at the row's end is not drawn
            rowWidth += sizes.at(i).width();
        }
        for (int i = start; i < end; ++i)
            rowHeight = qMax(rowHeight, sizes.at(i).height());
        width = qMax(width, rowWidth);
        height += rowHeight;
        start = end;
    }
    return QSize(width, height);
}

QVector<QSize> KRbToolbarContainerLayout::_itemSizes() const
{
    QVector<QSize> sizes;
    sizes.reserve(m_items.size());
    for (int i = 0; i < m_items.size(); ++i)
        sizes.append(itemSizeHint(i));
    return sizes;
}

QSize KRbToolbarContainerLayout::sizeHint() const
{
    const QVector<QSize> sizes = _itemSizes();
    const int total = totalWidth(sizes);
    const QSize atSeparators = _sizeHint(sizes, true);
    // Half the total is the ideal two-row width; a break at separators may cost up to the
    // waste proportion over it.
    if (0.5 * total * m_wasteProportion >= atSeparators.width())
        return atSeparators;
    return _sizeHint(sizes, false);
}

QSize KRbToolbarContainerLayout::minimumSize() const
{
    return sizeHint();
}

QSize KRbToolbarContainerLayout::maximumSize() const
{
    return sizeHint();
}

Qt::Orientations KRbToolbarContainerLayout::expandingDirections() const
{
    return {};
}

void KRbToolbarContainerLayout::setGeometry(const QRect& rect)
{
    QLayout::setGeometry(rect);
    const QVector<QSize> sizes = _itemSizes();
    const int n = sizes.size();
    QVector<int> rows = tryLayout(sizes, rect.width(), true);
    if (rows.at(1) != n)
        rows = tryLayout(sizes, rect.width(), false);

    // A row's height is the tallest item from the very first up to its end, so the second
    // row also measures the first row's items. Kept as it is: blocks line up across groups.
    QVector<int> heights(rows.size(), 0);
    int used = 0;
    for (int r = 0; r < rows.size(); ++r) {
        for (int i = 0; i < rows.at(r); ++i)
            heights[r] = qMax(heights[r], sizes.at(i).height());
        used += heights[r];
    }
    const int spare = rect.height() - used;

    int start = 0;
    int above = 0;
    for (int r = 0; r < rows.size(); ++r) {
        // The free height falls into equal gaps above, between and below the rows.
        const int top = (spare * (r + 1)) / (int(rows.size()) + 1) + above;
        const int end = rows.at(r);
        int x = 0;
        for (int i = start; i < end; ++i) {
            KRbToolbarContainerItem* item = m_items.at(i);
            if (i == end - 1 && _isSeparatorAt(i)) {
                item->setGeometry(QRect()); // a separator never dangles at a row's end
                continue;
            }
            // Relative to the block's origin: the block's own contents rectangle starts there.
            item->setGeometry(QRect(x, top, sizes.at(i).width(), heights.at(r)));
            x += sizes.at(i).width();
        }
        above += heights.at(r);
        start = end;
    }
    // Items that found no row (a block narrower than its content) are not shown anywhere.
    for (int i = start; i < n; ++i)
        m_items.at(i)->setGeometry(QRect());
}

// --- KRbToolbarContainer ---

KRbToolbarContainer::KRbToolbarContainer(KCommand* cmd, QWidget* parent)
    : KCommandWidgetBridge<QWidget>(cmd, parent, true)
    , m_layout(new KRbToolbarContainerLayout(this))
{
    if (!cmd)
        return;
    m_layout->setWasteProportion(cmd->property("WasteProportion", 1.3).toDouble());
    connect(cmd, &KCommand::changed, this, &KRbToolbarContainer::syncCommand);
    syncCommand();
}

KRbToolbarContainer::~KRbToolbarContainer()
{
    KCommandBridgeHelper::unregisterIdle(this);
}

QSize KRbToolbarContainer::sizeHint() const
{
    ensureConnectCommand();
    return m_layout->totalSizeHint();
}

QSize KRbToolbarContainer::minimumSizeHint() const
{
    ensureConnectCommand();
    return m_layout->totalMinimumSize();
}

void KRbToolbarContainer::onCommandConnected()
{
    if (auto* list = qobject_cast<KAbstractListCommand*>(command())) {
        connect(list, &KAbstractListCommand::subCommandInsert, this, &KRbToolbarContainer::onCommandInserted);
        connect(list, &KAbstractListCommand::subCommandRemove, this, &KRbToolbarContainer::onCommandRemoved);
    }
    KCommandBridgeHelper::registerIdle(this);
}

void KRbToolbarContainer::onCommandInserted(int index, KCommand* cmd)
{
    if (!cmd)
        return;
    m_layout->insertItem(index, new KRbToolbarContainerItem(cmd, this));
}

void KRbToolbarContainer::onCommandRemoved(int index)
{
    QLayoutItem* item = m_layout->takeAt(index);
    if (!item)
        return;
    if (QWidget* w = item->widget())
        w->hide();
    delete item;
}

void KRbToolbarContainer::syncCommand()
{
    KCommand* cmd = command();
    if (!cmd)
        return;
    setEnabled(cmd->isEnabled());
    setVisibleFromCommand(cmd->isVisible());
}

bool KRbToolbarContainer::event(QEvent* e)
{
    if (int(e->type()) == KEvent::HotKeyCollect) {
        sendHotKeyEventToLayout(m_layout, e, false);
        return true;
    }
    if (e->type() == KEvent::eventType(KEvent::Idle)) {
        if (KCommand* cmd = command())
            cmd->update();
        return true;
    }
    return KCommandWidgetBridge<QWidget>::event(e);
}

void KRbToolbarContainer::paintEvent(QPaintEvent*)
{
    // The block has no look of its own: its buttons draw themselves.
}
