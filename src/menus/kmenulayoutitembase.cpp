#include "kmenulayoutitembase.h"

#include <QFontMetrics>
#include <QLayout>
#include <QWidget>

#include "kseparatorcommand.h"

namespace {
QWidget* customWidgetOf(KCommand* command, QWidget* parent)
{
    return command && command->isCustomWidget() ? command->requestWidget(parent, KCommand::PocketPurpose) : nullptr;
}
} // namespace

KMenuLayoutItemBase::KMenuLayoutItemBase(KCommand* command, QWidget* parent)
    : KCommandObjectBridge<QObject>(command)
    , QWidgetItem(customWidgetOf(command, parent))
    , m_customWidget(QWidgetItem::widget())
    , m_parent(parent)
{
    if (!command)
        return;
    m_lastEnabled = isEnabled();
    m_lastVisible = isVisible();
    connect(command, &KCommand::changed, this, &KMenuLayoutItemBase::_onCommandChanged);
}

KMenuLayoutItemBase::~KMenuLayoutItemBase() = default;

bool KMenuLayoutItemBase::isVisible() const
{
    KCommand* cmd = command();
    return cmd && cmd->isVisible();
}

bool KMenuLayoutItemBase::isEnabled() const
{
    KCommand* cmd = command();
    return cmd && cmd->isEnabled();
}

bool KMenuLayoutItemBase::isSeparator() const
{
    return KSeparatorCommand::isSeparator(command());
}

bool KMenuLayoutItemBase::isValidItem() const
{
    KCommand* cmd = command();
    return cmd && !isSeparator() && isEnabled() && isVisible() && (cmd->isTriggerable() || cmd->isExtensible());
}

void KMenuLayoutItemBase::deleteThorough()
{
    delete m_customWidget.data();
    delete this;
}

void KMenuLayoutItemBase::_onCommandChanged()
{
    const bool enabled = isEnabled();
    const bool visible = isVisible();
    if (enabled != m_lastEnabled) {
        m_lastEnabled = enabled;
        onEnabledChanged();
    }
    if (visible != m_lastVisible) {
        m_lastVisible = visible;
        onVisibleChanged();
    }
}

void KMenuLayoutItemBase::onEnabledChanged()
{
    if (QWidget* parent = m_parent.data())
        parent->update(geometry());
}

void KMenuLayoutItemBase::onVisibleChanged()
{
    QWidget* parent = m_parent.data();
    if (!parent)
        return;
    parent->update(geometry());
    if (QLayout* layout = parent->layout())
        layout->invalidate();
}

QSize KMenuLayoutItemBase::sizeHint() const
{
    if (m_customWidget)
        return QWidgetItem::sizeHint();
    if (isSeparator())
        return QSize(3, 3);
    if (!isVisible())
        return QSize(0, 0);
    const QFontMetrics fm = m_parent ? m_parent->fontMetrics() : QFontMetrics(QFont());
    const QRect text = fm.boundingRect(command()->getDrawText());
    return text.size() + QSize(29, 13);
}

QSize KMenuLayoutItemBase::minimumSize() const
{
    return m_customWidget ? QWidgetItem::minimumSize() : sizeHint();
}

QSize KMenuLayoutItemBase::maximumSize() const
{
    if (m_customWidget)
        return QWidgetItem::maximumSize();
    if (!isVisible())
        return QSize(0, 0);
    return QSize(0x7FFFF, sizeHint().height());
}

Qt::Orientations KMenuLayoutItemBase::expandingDirections() const
{
    return m_customWidget ? QWidgetItem::expandingDirections() : Qt::Horizontal;
}

bool KMenuLayoutItemBase::isEmpty() const
{
    return m_customWidget ? QWidgetItem::isEmpty() : !isVisible();
}

void KMenuLayoutItemBase::setGeometry(const QRect& rect)
{
    if (m_customWidget) {
        QWidgetItem::setGeometry(rect);
        return;
    }
    if (rect == m_rect)
        return;
    // The old place and the new one both need painting.
    if (QWidget* parent = m_parent.data()) {
        parent->update(m_rect);
        parent->update(rect);
    }
    m_rect = rect;
}

QRect KMenuLayoutItemBase::geometry() const
{
    return m_customWidget ? QWidgetItem::geometry() : m_rect;
}

bool KMenuLayoutItemBase::hasHeightForWidth() const
{
    return m_customWidget ? QWidgetItem::hasHeightForWidth() : false;
}

int KMenuLayoutItemBase::heightForWidth(int width) const
{
    return m_customWidget ? QWidgetItem::heightForWidth(width) : -1;
}

QSizePolicy::ControlTypes KMenuLayoutItemBase::controlTypes() const
{
    return m_customWidget ? QWidgetItem::controlTypes() : QSizePolicy::DefaultType;
}
