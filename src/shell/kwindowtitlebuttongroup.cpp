#include "kwindowtitlebuttongroup.h"

#include <QEvent>
#include <QHBoxLayout>
#include <QStylePainter>

#include <kcommand.h>
#include <korbstyle.h>
#include <kstyleoption.h>

namespace {

class KMinimizeButton : public KWindowTitleButton
{
public:
    using KWindowTitleButton::KWindowTitleButton;

protected:
    QStyle::ControlElement element() const override { return KORBStyle::KCE_MinimizeButton; }
};

// Shows restore on a maximised target, maximise otherwise.
class KRestoreMaximizeButton : public KWindowTitleButton
{
public:
    KRestoreMaximizeButton(QWidget* target, QWidget* parent)
        : KWindowTitleButton(parent)
        , m_target(target)
    {
        if (target)
            target->installEventFilter(this);
    }

protected:
    QStyle::ControlElement element() const override { return KORBStyle::KCE_RestoreMaximizeButton; }
    void paintEvent(QPaintEvent*) override
    {
        QStylePainter painter(this);
        KStyleOptionRestoreMaximizeButton option;
        initStyleOption(&option);
        option.isMaximized = m_target && m_target->isMaximized();
        painter.drawControl(element(), option);
    }
    bool eventFilter(QObject* watched, QEvent* e) override
    {
        if (watched == m_target.data() && e->type() == QEvent::WindowStateChange)
            update();
        return KWindowTitleButton::eventFilter(watched, e);
    }

private:
    QPointer<QWidget> m_target;
};

class KCloseButton : public KWindowTitleButton
{
public:
    using KWindowTitleButton::KWindowTitleButton;

protected:
    QStyle::ControlElement element() const override { return KORBStyle::KCE_CloseButton; }
};

} // namespace

KWindowTitleButton::KWindowTitleButton(QWidget* parent)
    : QAbstractButton(parent)
{
    setFocusPolicy(Qt::NoFocus);
    setAttribute(Qt::WA_Hover);
}

QString KWindowTitleButton::getPicName() const
{
    if (isDown())
        return QStringLiteral("Press");
    if (underMouse())
        return QStringLiteral("Hover");
    return QString();
}

void KWindowTitleButton::initStyleOption(KStyleOptionWindowTitleButton* option) const
{
    option->initFrom(this);
    option->isActiveWindow = window()->isActiveWindow();
    if (isDown())
        option->state |= QStyle::State_Sunken;
    if (underMouse())
        option->state |= QStyle::State_MouseOver;
}

void KWindowTitleButton::paintEvent(QPaintEvent*)
{
    QStylePainter painter(this);
    KStyleOptionWindowTitleButton option;
    initStyleOption(&option);
    painter.drawControl(element(), option);
}

void KWindowTitleButton::enterEvent(QEnterEvent* e)
{
    update();
    QAbstractButton::enterEvent(e);
}

void KWindowTitleButton::leaveEvent(QEvent* e)
{
    update();
    QAbstractButton::leaveEvent(e);
}

KWindowTitleButtonGroup::KWindowTitleButtonGroup(KCommand* command, QWidget* target, QWidget* parent)
    : QWidget(parent)
    , m_target(target)
    , m_command(command)
{
    auto* row = new QHBoxLayout(this);
    row->setContentsMargins(0, 0, 0, 0);
    row->setSpacing(0);
    m_buttons[0] = new KMinimizeButton(this);
    m_buttons[1] = new KRestoreMaximizeButton(target, this);
    m_buttons[2] = new KCloseButton(this);
    m_buttons[0]->setToolTip(tr("Minimize"));
    m_buttons[1]->setToolTip(tr("Restore Down / Maximize"));
    m_buttons[2]->setToolTip(tr("Close"));
    row->addWidget(m_buttons[0]);
    row->addSpacing(-1);
    row->addWidget(m_buttons[1]);
    row->addSpacing(-1);
    row->addWidget(m_buttons[2]);
    connect(m_buttons[0], &QAbstractButton::clicked, this, &KWindowTitleButtonGroup::_minimize);
    connect(m_buttons[1], &QAbstractButton::clicked, this, &KWindowTitleButtonGroup::_restoreOrMaximize);
    connect(m_buttons[2], &QAbstractButton::clicked, this, &KWindowTitleButtonGroup::_close);
    setSizePolicy(QSizePolicy::Fixed, QSizePolicy::Fixed);
    if (command)
        connect(command, &KCommand::changed, this, &KWindowTitleButtonGroup::on_commandChange);
    on_commandChange();
}

KWindowTitleButtonGroup::~KWindowTitleButtonGroup() = default;

KWindowTitleButton* KWindowTitleButtonGroup::buttonAt(int index) const
{
    return index >= 0 && index < 3 ? m_buttons[index] : nullptr;
}

QSize KWindowTitleButtonGroup::sizeHint() const
{
    int width = 0;
    for (KWindowTitleButton* b : m_buttons)
        width += b->sizeHint().width();
    return QSize(width - 2, m_buttons[0]->sizeHint().height());
}

void KWindowTitleButtonGroup::_minimize()
{
    if (m_target)
        m_target->showMinimized();
}

void KWindowTitleButtonGroup::_restoreOrMaximize()
{
    if (!m_target)
        return;
    if (m_target->isMaximized())
        m_target->showNormal();
    else
        m_target->showMaximized();
}

void KWindowTitleButtonGroup::_close()
{
    // The target may go with its close: nothing here is touched afterwards.
    if (QWidget* target = m_target.data())
        target->close();
}

void KWindowTitleButtonGroup::on_commandChange()
{
    if (!m_command)
        return;
    setVisible(m_command->isVisible());
    setEnabled(m_command->isEnabled());
}
