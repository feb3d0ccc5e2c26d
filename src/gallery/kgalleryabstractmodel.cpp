#include "kgalleryabstractmodel.h"

#include <QApplication>
#include <QCursor>
#include <QFontMetrics>
#include <QPainter>

#include <kdrawhelpfunc.h>
#include <kgallerymodeltextitem.h>
#include <klistcommand.h>
#include <kmenuwidget.h>
#include <kpopupwidget.h>

namespace {

// Text is measured and drawn inside these, as is the icon strip at the left of a cell.
constexpr QMargins kTextMargins(5, 5, 5, 5);
constexpr QMargins kIconMargins(5, 5, 5, 1);
constexpr int kIconExtent = 16;
// The rounding of the hover and check backgrounds of a cell.
constexpr int kStateRadius = 2;

} // namespace

// --- KGalleryModelAbstractItem ---

KGalleryModelAbstractItem::KGalleryModelAbstractItem(KGalleryAbstractModel* model)
    : QObject(model)
{
}

KGalleryModelAbstractItem::KGalleryModelAbstractItem(const QString& text, const QIcon& icon,
                                                     KGalleryAbstractModel* model, bool newLine)
    : QObject(model)
    , m_newLine(newLine)
    , m_text(text)
    , m_icon(icon)
{
}

KGalleryModelAbstractItem::~KGalleryModelAbstractItem() = default;

KGalleryAbstractModel* KGalleryModelAbstractItem::model() const
{
    return qobject_cast<KGalleryAbstractModel*>(parent());
}

void KGalleryModelAbstractItem::setFixed(bool fixed)
{
    if (fixed == m_fixed)
        return;
    m_fixed = fixed;
    Q_EMIT changed();
}

void KGalleryModelAbstractItem::setToNewLine(bool newLine)
{
    if (newLine == m_newLine)
        return;
    m_newLine = newLine;
    Q_EMIT changed();
}

void KGalleryModelAbstractItem::setHovered(bool hovered)
{
    if (hovered == m_hovered)
        return;
    m_hovered = hovered;
    Q_EMIT statusChanged();
}

void KGalleryModelAbstractItem::setChecked(bool checked)
{
    if (checked == m_checked)
        return;
    m_checked = checked;
    Q_EMIT statusChanged();
}

void KGalleryModelAbstractItem::setVisible(bool visible)
{
    if (visible == m_visible)
        return;
    m_visible = visible;
    Q_EMIT changed();
}

void KGalleryModelAbstractItem::setEnabled(bool enabled)
{
    if (enabled == m_enabled)
        return;
    m_enabled = enabled;
    Q_EMIT statusChanged();
}

void KGalleryModelAbstractItem::setHSpace(int space)
{
    if (space == m_hSpace)
        return;
    m_hSpace = space;
    Q_EMIT changed();
}

void KGalleryModelAbstractItem::setVSpace(int space)
{
    if (space == m_vSpace)
        return;
    m_vSpace = space;
    Q_EMIT changed();
}

void KGalleryModelAbstractItem::setText(const QString& text)
{
    if (text == m_text)
        return;
    m_text = text;
    Q_EMIT changed();
}

void KGalleryModelAbstractItem::setIcon(const QIcon& icon)
{
    m_icon = icon;
    Q_EMIT changed();
}

KListCommand* KGalleryModelAbstractItem::contextMenuCommand() const
{
    return m_contextMenuCommand.data();
}

void KGalleryModelAbstractItem::setContextMenuCommand(KListCommand* command)
{
    m_contextMenuCommand = command;
}

bool KGalleryModelAbstractItem::isExpanding(KGalleryViewType) const
{
    return true;
}

QSize KGalleryModelAbstractItem::sizeHint() const
{
    QSize textSize;
    if (!m_text.isEmpty()) {
        const QFontMetrics fm(QApplication::font());
        textSize = fm.boundingRect(m_text).size().grownBy(kTextMargins);
    }
    const QSize iconSize = m_icon.isNull() ? QSize() : QSize(kIconExtent, kIconExtent);
    // Side by side: the widths add up, the taller one gives the height.
    return QSize(qMax(0, textSize.width()) + qMax(0, iconSize.width()),
                 qMax(textSize.height(), iconSize.height()));
}

void KGalleryModelAbstractItem::prepareDrawItem(QPainter&, const QRect&, KGalleryViewType)
{
}

void KGalleryModelAbstractItem::drawBackGround(QPainter& painter, const QRect& rect) const
{
    if (!m_hovered && !m_checked && !m_contextShown)
        return;
    const QRect r = rect.adjusted(0, 0, -1, -1);
    if (m_checked)
        KDrawHelpFunc::drawCheckedRect(painter, r, kStateRadius);
    else
        KDrawHelpFunc::drawFocusRect(painter, r, kStateRadius);
}

void KGalleryModelAbstractItem::drawItem(QPainter& painter, const QRect& rect, KGalleryViewType) const
{
    drawBackGround(painter, rect);
    QRect textRect = rect;
    if (!m_icon.isNull()) {
        const int strip = kIconExtent + kIconMargins.left() + kIconMargins.right();
        const QRect iconArea = QRect(rect.left(), rect.top(), strip, rect.height()) - kIconMargins;
        m_icon.paint(&painter, iconArea, Qt::AlignCenter, isEnabled() ? QIcon::Normal : QIcon::Disabled);
        textRect.setLeft(rect.left() + strip);
    }
    if (m_text.isEmpty())
        return;
    const QColor pen = isEnabled() ? QColor(Qt::black) : QColor(Qt::gray);
    KDrawHelpFunc::drawColorText(painter, pen, textRect - kTextMargins, Qt::AlignLeft | Qt::AlignVCenter, m_text);
}

bool KGalleryModelAbstractItem::isVisible(KGalleryViewType) const
{
    return m_visible;
}

bool KGalleryModelAbstractItem::isEnabled() const
{
    return m_enabled;
}

bool KGalleryModelAbstractItem::isCheckeable() const
{
    return true;
}

bool KGalleryModelAbstractItem::isTriggerable() const
{
    return true;
}

void KGalleryModelAbstractItem::popupContextMenu(QWidget* widget)
{
    KListCommand* command = m_contextMenuCommand.data();
    if (!command)
        return;
    m_contextShown = true;
    auto* popup = new KPopupWidget(widget, Qt::Popup);
    popup->setAttribute(Qt::WA_DeleteOnClose);
    popup->setContentWidget(new KMenuWidget(command, popup));
    connect(popup, &KPopupWidget::aboutToHide, this, &KGalleryModelAbstractItem::contextMenuHided);
    Q_EMIT statusChanged();
    popup->show(QCursor::pos(), false, 0);
}

void KGalleryModelAbstractItem::resetImage()
{
}

KCommand* KGalleryModelAbstractItem::command() const
{
    return nullptr;
}

void KGalleryModelAbstractItem::contextMenuHided()
{
    if (!m_contextShown)
        return;
    m_contextShown = false;
    Q_EMIT statusChanged();
}

// --- KGalleryAbstractModel ---

KGalleryAbstractModel::KGalleryAbstractModel(QObject* parent)
    : QObject(parent)
{
}

KGalleryAbstractModel::~KGalleryAbstractModel()
{
    // The elements are children and go with the QObject base; they must not report back to
    // a model that is half gone.
    const QList<KGalleryModelAbstractItem*> items = m_items;
    m_items.clear();
    for (KGalleryModelAbstractItem* item : items)
        disconnect(item, nullptr, this, nullptr);
}

int KGalleryAbstractModel::indexOf(const KGalleryModelAbstractItem* item) const
{
    return m_items.indexOf(const_cast<KGalleryModelAbstractItem*>(item));
}

int KGalleryAbstractModel::addElement(KGalleryModelAbstractItem* item)
{
    return insertElement(-1, item);
}

int KGalleryAbstractModel::addHeader(const QString& text)
{
    return insertHeader(-1, text);
}

int KGalleryAbstractModel::insertElement(int index, KGalleryModelAbstractItem* item)
{
    if (!item || m_items.contains(item))
        return -1;
    if (index < 0 || index > m_items.size())
        index = m_items.size();
    if (item->parent() != this)
        item->setParent(this);
    m_items.insert(index, item);
    connect(item, &KGalleryModelAbstractItem::changed, this, &KGalleryAbstractModel::changed);
    connect(item, &KGalleryModelAbstractItem::statusChanged, this, &KGalleryAbstractModel::on_elementStatusChanged);
    connect(item, &QObject::destroyed, this, &KGalleryAbstractModel::_onElementDestroyed);
    // Indexes behind the insertion move on by one.
    if (m_currentIndex >= index)
        ++m_currentIndex;
    if (m_hoveredIndex >= index)
        ++m_hoveredIndex;
    Q_EMIT elementInserted(index, item);
    return index;
}

int KGalleryAbstractModel::insertHeader(int index, const QString& text)
{
    return insertElement(index, new KGalleryModelTitleItem(text, this));
}

void KGalleryAbstractModel::moveElement(int from, int to)
{
    if (from < 0 || from >= m_items.size() || to < 0 || to >= m_items.size() || from == to)
        return;
    KGalleryModelAbstractItem* item = m_items.at(from);
    const int current = m_currentIndex == from ? to : -2;
    const int hovered = m_hoveredIndex == from ? to : -2;
    Q_EMIT elementRemoved(from);
    m_items.move(from, to);
    if (current != -2)
        m_currentIndex = current;
    else if (m_currentIndex >= 0)
        m_currentIndex = indexOf(m_items.value(m_currentIndex));
    if (hovered != -2)
        m_hoveredIndex = hovered;
    Q_EMIT elementInserted(to, item);
}

KGalleryModelAbstractItem* KGalleryAbstractModel::takeAt(int index)
{
    if (index < 0 || index >= m_items.size())
        return nullptr;
    // The status goes first, while the element is still in the list.
    if (index == m_hoveredIndex)
        hoverIndex(-1);
    if (index == m_currentIndex)
        setCurrentIndex(-1);
    KGalleryModelAbstractItem* item = m_items.takeAt(index);
    _detach(item);
    if (m_currentIndex > index)
        --m_currentIndex;
    if (m_hoveredIndex > index)
        --m_hoveredIndex;
    Q_EMIT elementRemoved(index);
    return item;
}

KGalleryModelAbstractItem* KGalleryAbstractModel::takeAt(KGalleryModelAbstractItem* item)
{
    return takeAt(indexOf(item));
}

void KGalleryAbstractModel::removeElement(int index)
{
    KGalleryModelAbstractItem* item = takeAt(index);
    delete item;
}

void KGalleryAbstractModel::removeElement(KGalleryModelAbstractItem* item)
{
    removeElement(indexOf(item));
}

void KGalleryAbstractModel::_detach(KGalleryModelAbstractItem* item)
{
    disconnect(item, nullptr, this, nullptr);
}

void KGalleryAbstractModel::_onElementDestroyed(QObject* object)
{
    // An element deleted behind the model's back leaves the list like a removed one. Only
    // the address is compared: the element is gone.
    for (int i = 0; i < m_items.size(); ++i) {
        if (static_cast<QObject*>(m_items.at(i)) != object)
            continue;
        m_items.removeAt(i);
        if (m_currentIndex == i)
            m_currentIndex = -1;
        else if (m_currentIndex > i)
            --m_currentIndex;
        if (m_hoveredIndex == i)
            m_hoveredIndex = -1;
        else if (m_hoveredIndex > i)
            --m_hoveredIndex;
        Q_EMIT elementRemoved(i);
        return;
    }
}

void KGalleryAbstractModel::clearStatus()
{
    for (KGalleryModelAbstractItem* item : std::as_const(m_items)) {
        item->setChecked(false);
        item->setHovered(false);
    }
    m_currentIndex = -1;
    m_hoveredIndex = -1;
}

void KGalleryAbstractModel::setFixedSize(bool fixed)
{
    if (fixed == m_fixedSize)
        return;
    m_fixedSize = fixed;
    Q_EMIT changed();
}

QList<KGalleryModelAbstractItem*> KGalleryAbstractModel::fecthItems()
{
    return m_items;
}

void KGalleryAbstractModel::on_galleryView_show()
{
}

void KGalleryAbstractModel::on_galleryView_hide()
{
}

bool KGalleryAbstractModel::isFixedSize() const
{
    return m_fixedSize;
}

void KGalleryAbstractModel::setCurrentIndex(int index)
{
    if (index < 0 || index >= m_items.size()) {
        // The check marks stay as they are.
        m_currentIndex = -1;
        Q_EMIT currentIndexChanged(-1);
        return;
    }
    m_currentIndex = index;
    Q_EMIT currentIndexChanged(index);
    KGalleryModelAbstractItem* current = m_items.value(index);
    if (!current || !current->isCheckeable())
        return;
    // Group 0 spans the whole list; two different non-zero groups leave each other alone.
    const int group = current->groupIndex();
    const QList<KGalleryModelAbstractItem*> items = m_items;
    for (KGalleryModelAbstractItem* other : items) {
        if (group != 0 && other->groupIndex() != 0 && other->groupIndex() != group)
            continue;
        if (other != current)
            other->setChecked(false);
    }
    current->setChecked(true);
}

void KGalleryAbstractModel::setCurrentIndex(const QString&)
{
}

int KGalleryAbstractModel::currentIndex() const
{
    return m_currentIndex;
}

bool KGalleryAbstractModel::clickIndex(int index)
{
    if (index < 0 || index >= m_items.size()) {
        clearStatus();
        Q_EMIT indexClicked(-1);
        return true;
    }
    KGalleryModelAbstractItem* item = m_items.at(index);
    if (!item->isEnabled() || !item->isTriggerable())
        return false;
    setCurrentIndex(index);
    Q_EMIT indexClicked(index);
    return true;
}

bool KGalleryAbstractModel::dblClickIndex(int index)
{
    if (index < 0 || index >= m_items.size()) {
        Q_EMIT indexClicked(-1);
        return false;
    }
    KGalleryModelAbstractItem* item = m_items.at(index);
    if (!item->isEnabled() || !item->isTriggerable())
        return false;
    setCurrentIndex(index);
    Q_EMIT indexDblClicked(index);
    return true;
}

void KGalleryAbstractModel::hoverIndex(int index)
{
    if (index == m_hoveredIndex)
        return;
    const int asked = index;
    if (index < 0 || index >= m_items.size() || !m_items.at(index)->isEnabled())
        index = -1;
    if (m_hoveredIndex >= 0 && m_hoveredIndex < m_items.size())
        m_items.at(m_hoveredIndex)->setHovered(false);
    m_hoveredIndex = index;
    if (index >= 0)
        m_items.at(index)->setHovered(true);
    Q_EMIT indexHovered(asked);
}

QColor KGalleryAbstractModel::getBackColor(bool enabled)
{
    return KDrawHelpFunc::getColorFromTheme(QStringLiteral("KGalleryModel"),
                                            enabled ? QStringLiteral("background")
                                                    : QStringLiteral("background-disable"));
}

void KGalleryAbstractModel::popupItemContextMenu(QWidget* widget, int index)
{
    if (index < 0 || index >= m_items.size()) {
        Q_EMIT indexClicked(-1);
        return;
    }
    KGalleryModelAbstractItem* item = m_items.at(index);
    if (item->contextMenuCommand())
        item->popupContextMenu(widget);
}

void KGalleryAbstractModel::clear()
{
    while (!m_items.isEmpty())
        removeElement(0);
    m_hoveredIndex = -1;
    m_dirty = false;
}

bool KGalleryAbstractModel::isEnable()
{
    return true;
}

void KGalleryAbstractModel::prepareItems()
{
}

void KGalleryAbstractModel::on_elementStatusChanged()
{
    auto* item = qobject_cast<KGalleryModelAbstractItem*>(sender());
    const int index = indexOf(item);
    if (index >= 0)
        Q_EMIT statusChanged(index);
}
