#include "krblayoutwidget.h"

#include <QBoxLayout>
#include <QEvent>
#include <QGridLayout>
#include <QFrame>
#include <QStyleOptionFrame>
#include <QStylePainter>

#include <kabstractlistcommand.h>
#include <kevent.h>
#include <khotkeyevent.h>
#include <korbstyle.h>

#include "krbpaint_p.h"

KRbLayoutWidget::KRbLayoutWidget(KCommand* cmd, QWidget* parent)
    : KCommandWidgetBridge<QWidget>(cmd, parent, true)
{
    const QString name = cmd ? cmd->property("layoutName", QString()).toString().toLower() : QString();
    const int hSpacing = cmd ? cmd->property("horizontalSpacing", 0).toInt() : 0;
    const int vSpacing = cmd ? cmd->property("verticalSpacing", 0).toInt() : 0;
    if (name == QLatin1String("grid")) {
        auto* grid = new QGridLayout(this);
        grid->setHorizontalSpacing(hSpacing);
        grid->setVerticalSpacing(vSpacing);
        m_layout = grid;
    } else if (name == QLatin1String("vbox")) {
        m_layout = new QVBoxLayout(this);
        m_layout->setSpacing(vSpacing);
    } else {
        m_layout = new QHBoxLayout(this);
        m_layout->setSpacing(hSpacing);
    }
    const int left = cmd ? cmd->property("leftSpace", 0).toInt() : 0;
    const int right = cmd ? cmd->property("rightSpace", 0).toInt() : 0;
    m_layout->setContentsMargins(left + 1, 1, right + 1, 1);
    if (!cmd)
        return;
    connect(cmd, &KCommand::changed, this, &KRbLayoutWidget::syncCommand);
    syncCommand();
}

KRbLayoutWidget::~KRbLayoutWidget()
{
    KCommandBridgeHelper::unregisterIdle(this);
}

QSize KRbLayoutWidget::sizeHint() const
{
    ensureConnectCommand();
    ensurePolished();
    return m_layout->totalSizeHint();
}

QSize KRbLayoutWidget::minimumSizeHint() const
{
    ensureConnectCommand();
    ensurePolished();
    return m_layout->totalMinimumSize();
}

void KRbLayoutWidget::onCommandConnected()
{
    if (auto* list = qobject_cast<KAbstractListCommand*>(command())) {
        connect(list, &KAbstractListCommand::subCommandInsert, this, &KRbLayoutWidget::onCommandInserted);
        connect(list, &KAbstractListCommand::subCommandRemove, this, &KRbLayoutWidget::onCommandRemoved);
    }
    KCommandBridgeHelper::registerIdle(this);
}

void KRbLayoutWidget::onCommandInserted(int, KCommand* cmd)
{
    if (!cmd)
        return;
    if (QWidget* w = cmd->requestWidget(this, KCommand::PocketPurpose))
        m_layout->addWidget(w);
}

void KRbLayoutWidget::onCommandRemoved(int index)
{
    QLayoutItem* item = m_layout->takeAt(index);
    if (!item)
        return;
    if (QWidget* w = item->widget()) {
        w->hide();
        // The command keeps no reference to it: a widget left behind would only pile up.
        w->deleteLater();
    }
    delete item;
}

void KRbLayoutWidget::syncCommand()
{
    KCommand* cmd = command();
    if (!cmd)
        return;
    setEnabled(cmd->isEnabled());
    setVisibleFromCommand(cmd->isVisible());
}

bool KRbLayoutWidget::event(QEvent* e)
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

void KRbLayoutWidget::initStyleOption(KStyleOptionRbLayoutWidget* option) const
{
    option->initFrom(this);
    const QMargins margins = m_layout->contentsMargins();
    option->rect.setLeft(option->rect.left() + margins.left() - 1);
    option->rect.setRight(option->rect.right() + 1 - margins.right());
    KCommand* cmd = command();
    option->layoutOnly = cmd && cmd->property("layoutOnly", false).toBool();
}

void KRbLayoutWidget::paintEvent(QPaintEvent*)
{
    KCommand* cmd = command();
    if (cmd && cmd->property("layoutOnly", false).toBool())
        return;
    KStyleOptionRbLayoutWidget option;
    initStyleOption(&option);
    QStylePainter painter(this);
    if (!KRbPaint::isFrameworkStyle(this)) {
        QStyleOptionFrame frame;
        frame.initFrom(this);
        frame.rect = option.rect;
        frame.lineWidth = 1;
        frame.frameShape = QFrame::StyledPanel;
        painter.drawPrimitive(QStyle::PE_Frame, frame);
        return;
    }
    painter.drawComplexControl(KORBStyle::KCC_RbLayoutWidget, option);
}
