#include "krblogicgrouplayout.h"

#include <QApplication>
#include <QStyle>
#include <QWidget>

#include <kabstractlistcommand.h>
#include <korbstyle.h>
#include <krblayoutlistcommand.h>
#include <krbtoolbarcontainer.h>
#include <ktoolbutton.h>

namespace {

constexpr int kLarge = 3;
constexpr int kSmallWithText = 2;
constexpr int kSmallHidingText = 1;
// Every style bit except the arrow (4) and the auto-hide bit (128): a group decides how its
// buttons show icon and text, the command still decides about the drop-down part.
constexpr int kLayoutBits = 123;

QWidget* makeItemWidget(KCommand* cmd, QWidget* parent)
{
    if (qobject_cast<KRbLayoutListCommand*>(cmd))
        return cmd->requestWidget(parent, KCommand::PocketPurpose);
    if (!cmd->property("embedHint", false).toBool())
        return cmd->requestWidget(parent, KCommand::PocketPurpose);
    if (cmd->inherits("KGalleryCommand") || !qobject_cast<KAbstractListCommand*>(cmd))
        return cmd->requestWidget(parent, KCommand::InlinePurpose);
    // A list embeds as a block of small buttons. Made here rather than by the command, so it
    // is tied to the command's life the way requestWidget() ties its widgets.
    auto* block = new KRbToolbarContainer(cmd, parent);
    QObject::connect(cmd, &QObject::destroyed, block, &QObject::deleteLater);
    return block;
}

int styleHintOf(const QWidget* widget, QStyle::StyleHint hint)
{
    const QStyle* style = widget ? widget->style() : QApplication::style();
    return style->styleHint(hint, nullptr, widget);
}

qint64 clampSize(qint64 v)
{
    return qMin<qint64>(v, QWIDGETSIZE_MAX);
}

// need / slack of d, rounded, computed in floating point; nothing when there is no slack.
int share(int need, int slack, int d)
{
    if (slack <= 0)
        return 0;
    return int(double(need) / double(slack) * d + 0.5);
}

} // namespace

// --- KRbLogicGroupItem ---

KRbLogicGroupItem::KRbLogicGroupItem(KCommand* cmd, QWidget* parent)
    : QWidgetItem(makeItemWidget(cmd, parent))
    , m_spaceHint(cmd->property("spaceHint", kLarge).toInt())
    , m_embedHint(cmd->property("embedHint", false).toBool())
    , m_command(cmd)
{
    auto* button = qobject_cast<KToolButton*>(widget());
    if (!button)
        return;
    const int style = button->buttonStyle();
    switch (m_spaceHint) {
    case kLarge: {
        const int extent = styleHintOf(button, KORBStyle::KSH_LargeIconSize);
        button->setIconSize(extent < 1 ? QSize(32, 32) : QSize(extent, extent));
        button->setButtonStyle((style & ~kLayoutBits) | KToolButton::StyleIcon | KToolButton::StyleText
                               | KToolButton::StyleTextUnderIcon | KToolButton::StyleLargeMargins
                               | KToolButton::StyleEvenWidth);
        // The flat look puts a large button's icon at the top of the group.
        if (styleHintOf(button, KORBStyle::KSH_StyleGeneration) == 2013)
            setAlignment(Qt::AlignTop);
        break;
    }
    case kSmallWithText:
        button->setIconSize(QSize(16, 16));
        button->setButtonStyle((style & ~kLayoutBits) | KToolButton::StyleIcon | KToolButton::StyleText);
        break;
    case kSmallHidingText:
        button->setIconSize(QSize(16, 16));
        button->setButtonStyle(style | KToolButton::StyleIcon | KToolButton::StyleText
                               | KToolButton::StyleAutoHideText);
        break;
    default:
        button->setIconSize(QSize(16, 16));
        button->setButtonStyle((style & ~kLayoutBits) | KToolButton::StyleIcon);
        break;
    }
}

bool KRbLogicGroupItem::isEmpty() const
{
    return !m_command || !m_command->isVisible();
}

QSize KRbLogicGroupItem::sizeHint() const
{
    updateVisible();
    return QWidgetItem::sizeHint();
}

void KRbLogicGroupItem::updateVisible() const
{
    QWidget* w = widget();
    if (!w)
        return;
    const bool visible = !isEmpty();
    // Hiding is immediate; showing only undoes an explicit hide, so a control that was
    // never hidden is left for its group to show.
    const bool explicitlyHidden = w->isHidden() && w->testAttribute(Qt::WA_WState_ExplicitShowHide);
    if (visible == !explicitlyHidden)
        return;
    w->setVisible(visible);
}

// --- KRbLogicGroupLayout ---

KRbLogicGroupLayout::KRbLogicGroupLayout(QWidget* parent)
    : QLayout(parent)
{
    setContentsMargins(0, 0, 0, 0);
}

KRbLogicGroupLayout::~KRbLogicGroupLayout()
{
    qDeleteAll(m_items);
}

void KRbLogicGroupLayout::setHorizontalSpacing(int spacing)
{
    if (m_horizontalSpacing == spacing)
        return;
    m_horizontalSpacing = spacing;
    invalidate();
}

void KRbLogicGroupLayout::setVerticalSpacing(int spacing)
{
    if (m_verticalSpacing == spacing)
        return;
    m_verticalSpacing = spacing;
    invalidate();
}

void KRbLogicGroupLayout::setSpacing(int spacing)
{
    if (m_horizontalSpacing == spacing && m_verticalSpacing == spacing)
        return;
    m_horizontalSpacing = spacing;
    m_verticalSpacing = spacing;
    invalidate();
}

int KRbLogicGroupLayout::spacing() const
{
    return m_horizontalSpacing == m_verticalSpacing ? m_horizontalSpacing : -1;
}

void KRbLogicGroupLayout::setLineCount(int count)
{
    if (count < 1 || m_lineCount == count)
        return;
    m_lineCount = count;
    invalidate();
}

void KRbLogicGroupLayout::insertItem(int index, KRbLogicGroupItem* item)
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

void KRbLogicGroupLayout::addItem(QLayoutItem*)
{
}

int KRbLogicGroupLayout::count() const
{
    return m_items.size();
}

QLayoutItem* KRbLogicGroupLayout::itemAt(int index) const
{
    return m_items.value(index, nullptr);
}

QLayoutItem* KRbLogicGroupLayout::takeAt(int index)
{
    if (index < 0 || index >= m_items.size())
        return nullptr;
    KRbLogicGroupItem* item = m_items.takeAt(index);
    if (QWidget* w = item->widget())
        w->deleteLater();
    invalidate();
    return item;
}

Qt::Orientations KRbLogicGroupLayout::expandingDirections() const
{
    return Qt::Horizontal | Qt::Vertical;
}

int KRbLogicGroupLayout::countOfVertLayout(int start) const
{
    int count = 0;
    int taken = 0;
    for (int i = start; i < m_items.size() && taken < m_lineCount; ++i) {
        const KRbLogicGroupItem* item = m_items.at(i);
        if (item->isLarge())
            break;
        if (!item->isEmpty())
            ++taken;
        ++count;
    }
    return count;
}

QSize KRbLogicGroupLayout::_itemSize(const KRbLogicGroupItem* item, Measure measure) const
{
    switch (measure) {
    case Hint:
        return item->sizeHint();
    case Minimum:
        return item->minimumSize();
    case Maximum:
        return item->maximumSize();
    }
    return QSize();
}

QSize KRbLogicGroupLayout::_columnSize(int start, int& count, Measure measure) const
{
    count = countOfVertLayout(start);
    if (count == 0)
        return QSize(0, 0);
    int width = 0;
    qint64 height = qint64(m_verticalSpacing) * (count - 1);
    for (int i = start; i < start + count; ++i) {
        const QSize s = _itemSize(m_items.at(i), measure);
        width = qMax(width, s.width());
        height += s.height();
    }
    return QSize(width, int(clampSize(height)));
}

QSize KRbLogicGroupLayout::vertLayoutSizeHint(int start, int& count) const
{
    return _columnSize(start, count, Hint);
}

QSize KRbLogicGroupLayout::vertLayoutMinSize(int start, int& count) const
{
    return _columnSize(start, count, Minimum);
}

QSize KRbLogicGroupLayout::vertLayoutMaxSize(int start, int& count) const
{
    return _columnSize(start, count, Maximum);
}

int KRbLogicGroupLayout::_nextElement(int index, int& count) const
{
    while (index < m_items.size() && m_items.at(index)->isEmpty())
        ++index;
    if (index < m_items.size())
        count = m_items.at(index)->isLarge() ? 1 : countOfVertLayout(index);
    return index;
}

QSize KRbLogicGroupLayout::_wholeSize(Measure measure) const
{
    if (m_items.isEmpty())
        return QSize(-1, -1);
    const int n = m_items.size();
    qint64 width = 0;
    int height = 0;
    int count = 0;
    for (int i = _nextElement(0, count); i < n; i = _nextElement(i, count)) {
        const KRbLogicGroupItem* item = m_items.at(i);
        const QSize s = item->isLarge() ? _itemSize(item, measure) : _columnSize(i, count, measure);
        width += s.width();
        height = qMax(height, s.height());
        i += count;
        if (i < n)
            width += m_horizontalSpacing;
    }
    return QSize(int(clampSize(width)), height);
}

QSize KRbLogicGroupLayout::sizeHint() const
{
    return _wholeSize(Hint);
}

QSize KRbLogicGroupLayout::minimumSize() const
{
    return _wholeSize(Minimum);
}

int KRbLogicGroupLayout::_maxLayoutWidth() const
{
    return _wholeSize(Maximum).width();
}

void KRbLogicGroupLayout::setGeometry(const QRect& rect)
{
    QLayout::setGeometry(rect);
    if (m_items.isEmpty())
        return;
    const int n = m_items.size();
    const QSize hint = sizeHint();
    // At exactly its hint the layout takes the growing branch, which is the usual one.
    const bool shrinking = rect.width() < hint.width();
    int slack = 0;
    int need = 0;
    if (shrinking) {
        slack = hint.width() - minimumSize().width();
        need = qMin(hint.width() - rect.width(), slack);
    } else {
        slack = _maxLayoutWidth() - hint.width();
        need = qMin(rect.width() - hint.width(), slack);
    }

    int offset = 0;
    int count = 0;
    for (int i = _nextElement(0, count); i < n; i = _nextElement(i, count)) {
        KRbLogicGroupItem* item = m_items.at(i);
        int hintWidth = 0;
        int limitWidth = 0;
        if (item->isLarge()) {
            hintWidth = item->sizeHint().width();
            limitWidth = shrinking ? item->minimumSize().width() : item->maximumSize().width();
        } else {
            int c = 0;
            hintWidth = vertLayoutSizeHint(i, c).width();
            limitWidth = shrinking ? vertLayoutMinSize(i, c).width() : vertLayoutMaxSize(i, c).width();
        }
        const int d = shrinking ? hintWidth - limitWidth : limitWidth - hintWidth;
        const int r = share(need, slack, d);
        const int width = shrinking ? hintWidth - r : hintWidth + r;
        // Shrinking places from the rectangle; growing from the layout's own origin.
        const QRect cell = shrinking
            ? QRect(QPoint(rect.left() + offset, rect.top()), QPoint(rect.left() + offset + width - 1, rect.bottom()))
            : QRect(QPoint(offset, 0), QPoint(offset + width - 1, rect.height() - 1));
        if (item->isLarge())
            item->setGeometry(cell);
        else
            setGeometryVert(cell, i, count);
        slack -= d;
        need -= r;
        offset += width + m_horizontalSpacing;
        i += count;
    }
}

void KRbLogicGroupLayout::setGeometryVert(const QRect& rect, int start, int& count) const
{
    const QSize hint = vertLayoutSizeHint(start, count);
    if (rect.bottom() - rect.top() >= hint.height()) {
        // The free height falls evenly into count + 1 gaps; tops count from the origin.
        const int spare = rect.bottom() - rect.top() - hint.height() + 1;
        int above = 0;
        for (int k = 1; k <= count; ++k) {
            KRbLogicGroupItem* item = m_items.at(start + k - 1);
            const QSize s = item->sizeHint();
            const int top = (k * spare) / (count + 1) + above;
            item->setGeometry(QRect(rect.left(), top, qMin(s.width(), rect.width()), s.height()));
            above += s.height() + m_verticalSpacing;
        }
        return;
    }
    // Too short: each control gives height in proportion to what it can spare.
    int c = 0;
    int slack = hint.height() - vertLayoutMinSize(start, c).height();
    int need = qMin(hint.height() - rect.height(), slack);
    int y = rect.top();
    for (int i = start; i < start + count; ++i) {
        KRbLogicGroupItem* item = m_items.at(i);
        const QSize s = item->sizeHint();
        const int d = s.height() - item->minimumSize().height();
        const int r = share(need, slack, d);
        const int height = s.height() - r;
        item->setGeometry(QRect(rect.left(), y, qMin(s.width(), rect.width()), height));
        y += height + m_verticalSpacing;
        slack -= d;
        need -= r;
    }
}
