#include "krbcategory.h"

#include <QCoreApplication>

#include <QBoxLayout>
#include <QStyleOptionTabWidgetFrame>
#include <QStylePainter>

#include <kabstractlistcommand.h>
#include <kevent.h>
#include <khotkeyevent.h>
#include <korbstyle.h>
#include <krbhscrollwidget.h>
#include <krblogicgroup.h>
#include <kseparatorcommand.h>

#include "krbpaint_p.h"

KRbCategory::KRbCategory(KCommand* cmd, QWidget* parent)
    : KCommandWidgetBridge<QWidget>(cmd, parent, true)
    , m_contentWidget(new QWidget(this))
    , m_scrollWidget(new KRbHScrollWidget(this, m_contentWidget))
    , m_contentLayout(new QHBoxLayout(m_contentWidget))
    , m_layout(new QHBoxLayout(this))
{
    m_contentLayout->setSpacing(1);
    m_contentLayout->setContentsMargins(3, 1, 3, 0);
    m_contentLayout->setSizeConstraint(QLayout::SetMinAndMaxSize);
    m_contentLayout->addSpacing(4);
    m_contentLayout->addStretch();
    m_contentLayout->addSpacing(4);

    // The category decides how far an arrow press goes.
    m_scrollWidget->setStep(0);
    connect(m_scrollWidget, &KRbHScrollWidget::scrollRequested, this, &KRbCategory::scrollLogicGroup);

    m_layout->setSpacing(0);
    m_layout->setContentsMargins(0, 0, 0, 0);
    m_layout->addWidget(m_scrollWidget, 1);
    m_layout->addStretch();
}

KRbCategory::~KRbCategory() = default;

QWidget* KRbCategory::itemWidget(int index) const
{
    return index >= 0 && index < m_items.size() ? m_items.at(index).widget.data() : nullptr;
}

void KRbCategory::setTitleVisible(bool visible)
{
    if (m_titleVisible == visible)
        return;
    m_titleVisible = visible;
    for (const tagItem& item : std::as_const(m_items)) {
        if (auto* group = qobject_cast<KRbLogicGroup*>(item.widget.data()))
            group->setTitleVisible(visible);
    }
}

void KRbCategory::setTriggerAble(bool triggerAble)
{
    if (m_triggerAble == triggerAble)
        return;
    m_triggerAble = triggerAble;
    for (const tagItem& item : std::as_const(m_items)) {
        if (auto* group = qobject_cast<KRbLogicGroup*>(item.widget.data()))
            group->setTriggerAble(triggerAble);
    }
}

QSize KRbCategory::sizeHint() const
{
    ensureConnectCommand();
    ensurePolished();
    return m_layout->sizeHint();
}

QSize KRbCategory::minimumSizeHint() const
{
    ensureConnectCommand();
    ensurePolished();
    return m_layout->totalMinimumSize();
}

void KRbCategory::onCommandConnected()
{
    if (auto* list = qobject_cast<KAbstractListCommand*>(command())) {
        connect(list, &KAbstractListCommand::subCommandInsert, this, &KRbCategory::onCommandInserted);
        connect(list, &KAbstractListCommand::subCommandRemove, this, &KRbCategory::onCommandRemoved);
    }
}

void KRbCategory::onCommandInserted(int index, KCommand* cmd)
{
    if (!cmd)
        return;
    if (index < 0 || index > m_items.size())
        index = m_items.size();
    QWidget* widget = nullptr;
    bool visible = cmd->isVisible();
    if (KSeparatorCommand::isSeparator(cmd)) {
        widget = cmd->requestWidget(m_contentWidget, KCommand::PocketPurpose);
        if (auto* separator = qobject_cast<KSeparatorWidget*>(widget))
            separator->setLongSeparator(true);
        if (widget)
            widget->setContentsMargins(0, 2, 0, 2);
        // The separator goes with the group before it. The separator command is shared by
        // every list, so it is the widget that follows, never the command.
        if (index > 0 && !KSeparatorCommand::isSeparator(m_items.at(index - 1).command))
            visible = m_items.at(index - 1).command->isVisible();
    } else if (cmd->isCustomWidget()) {
        widget = cmd->requestWidget(m_contentWidget, KCommand::PocketPurpose);
    } else {
        auto* group = new KRbLogicGroup(cmd, m_contentWidget);
        group->setTitleVisible(m_titleVisible);
        group->setTriggerAble(m_triggerAble);
        widget = group;
    }
    if (!widget)
        return;
    if (!visible)
        widget->hide();
    m_items.insert(index, tagItem{cmd, widget});
    m_contentLayout->insertWidget(index, widget);
    if (!KSeparatorCommand::isSeparator(cmd))
        connect(cmd, &KCommand::changed, this, &KRbCategory::on_logicGroup_changed, Qt::UniqueConnection);
}

void KRbCategory::onCommandRemoved(int index)
{
    if (index < 0 || index >= m_items.size())
        return;
    const tagItem item = m_items.takeAt(index);
    delete m_contentLayout->takeAt(index);
    if (QWidget* w = item.widget.data()) {
        w->hide();
        // Later: the removal may come from a handler that runs inside this very widget.
        w->deleteLater();
    }
    bool stillListed = false;
    for (const tagItem& other : std::as_const(m_items))
        stillListed = stillListed || other.command == item.command;
    if (item.command && !stillListed)
        disconnect(item.command, &KCommand::changed, this, &KRbCategory::on_logicGroup_changed);
}

void KRbCategory::on_logicGroup_changed()
{
    auto* sender = qobject_cast<KCommand*>(QObject::sender());
    if (!sender)
        return;
    for (int i = 0; i + 1 < m_items.size(); ++i) {
        if (m_items.at(i).command != sender || !KSeparatorCommand::isSeparator(m_items.at(i + 1).command))
            continue;
        // A group that disappears takes its right separator with it.
        if (QWidget* separator = m_items.at(i + 1).widget.data())
            separator->setVisible(sender->isVisible());
    }
}

void KRbCategory::scrollLogicGroup(bool forward)
{
    const int o = m_scrollWidget->contentOffset();
    int target = 0;
    if (!forward) {
        target = o + 100;
        for (const tagItem& item : std::as_const(m_items)) {
            QWidget* w = item.widget.data();
            if (w && !w->isHidden() && w->x() < qAbs(o))
                target = -w->x(); // the last one left of the view wins
        }
    } else {
        target = o - 100;
        const int edge = width() + qAbs(o);
        for (const tagItem& item : std::as_const(m_items)) {
            QWidget* w = item.widget.data();
            if (!w || w->isHidden())
                continue;
            const int right = w->x() + w->sizeHint().width();
            if (right > edge) {
                target = width() - right;
                break;
            }
        }
    }
    m_scrollWidget->scrollTo(target);
}

void KRbCategory::paintEvent(QPaintEvent*)
{
    QStylePainter painter(this);
    if (!KRbPaint::isFrameworkStyle(this)) {
        QStyleOptionTabWidgetFrame frame;
        frame.initFrom(this);
        painter.drawPrimitive(QStyle::PE_FrameTabWidget, frame);
        return;
    }
    KStyleOptionRbCategory option;
    option.initFrom(this);
    painter.drawComplexControl(KORBStyle::KCC_RbCategory, option);
}

// --- key tips ---

bool KRbCategory::event(QEvent* e)
{
    if (int(e->type()) != KEvent::HotKeyCollect)
        return KCommandWidgetBridge<QWidget>::event(e);
    // A page that has just come up hasn't been laid out yet: the labels need its positions.
    m_layout->activate();
    m_contentLayout->activate();
    QCoreApplication::sendPostedEvents(nullptr, QEvent::LayoutRequest);
    auto* collect = static_cast<KHotKeyCollectEvent*>(e);
    collect->useRbHotKey = true;
    collect->useAutoIndex = true;
    for (const tagItem& item : std::as_const(m_items)) {
        if (item.widget && item.widget->isVisible())
            QCoreApplication::sendEvent(item.widget, e);
    }
    collect->useRbHotKey = false;
    collect->useAutoIndex = false;
    return true;
}
