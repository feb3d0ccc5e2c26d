#include "krblogicgroup.h"

#include <QBoxLayout>
#include <QEvent>
#include <QGridLayout>
#include <QLabel>
#include <QStylePainter>

#include <kabstractlistcommand.h>
#include <kapplication.h>
#include <kdrawhelpfunc.h>
#include <kevent.h>
#include <khotkeyevent.h>
#include <korbstyle.h>
#include <krblogicgrouplayout.h>

#include "krbpaint_p.h"

// --- KRbLogicGroup_Button ---

KRbLogicGroup_Button::KRbLogicGroup_Button(KCommand* cmd, QWidget* parent)
    : KToolButton(parent)
{
    setFocusPolicy(Qt::NoFocus);
    KStyleOptionLogicGroupButton option;
    initStyleOption(&option);
    setFixedSize(style()->sizeFromContents(KORBStyle::KCT_LogicGroupButton, &option, QSize(16, 16), this));
    if (cmd)
        setDefaultCommand(cmd);
}

KRbLogicGroup_Button::~KRbLogicGroup_Button() = default;

QSize KRbLogicGroup_Button::sizeHint() const
{
    return minimumSize();
}

QSize KRbLogicGroup_Button::minimumSizeHint() const
{
    return minimumSize();
}

void KRbLogicGroup_Button::initStyleOption(KStyleOptionLogicGroupButton* option) const
{
    option->initFrom(this);
    if (isChecked())
        option->state |= QStyle::State_On;
    if (isDown() || isPressed())
        option->state |= QStyle::State_Sunken;
    if (!isChecked() && !isDown() && !isPressed())
        option->state |= QStyle::State_Raised;
    option->state |= QStyle::State_AutoRaise;
}

void KRbLogicGroup_Button::paintEvent(QPaintEvent*)
{
    KStyleOptionLogicGroupButton option;
    initStyleOption(&option);
    QStylePainter painter(this);
    if (KRbPaint::isFrameworkStyle(this)) {
        painter.drawComplexControl(KORBStyle::KCC_LogicGroupButton, option);
        return;
    }
    // Another style: a tool button's panel while hot, and a down arrow.
    QStyleOption stock = option;
    stock.type = QStyleOption::SO_Default;
    stock.version = QStyleOption::Version;
    if (option.state & (QStyle::State_MouseOver | QStyle::State_Sunken))
        painter.drawPrimitive(QStyle::PE_PanelButtonTool, stock);
    painter.drawPrimitive(QStyle::PE_IndicatorArrowDown, stock);
}

// --- KRbLogicGroup ---

KRbLogicGroup::KRbLogicGroup(KCommand* cmd, QWidget* parent)
    : KCommandWidgetBridge<QWidget>(cmd, parent, true)
    , m_logicLayout(new KRbLogicGroupLayout)
    , m_titleLayout(new QHBoxLayout)
    , m_gridLayout(new QGridLayout(this))
    , m_title(new QLabel(this))
{
    m_gridLayout->setContentsMargins(2, 2, 2, 3);
    m_gridLayout->setSpacing(0);
    m_gridLayout->addLayout(m_logicLayout, 0, 0);
    m_titleLayout->setContentsMargins(0, 0, 0, 0);
    m_titleLayout->setSpacing(0);
    m_titleLayout->addWidget(m_title);
    m_gridLayout->addLayout(m_titleLayout, 1, 0);

    m_title->setMinimumHeight(m_title->fontMetrics().height());
    m_title->setAlignment(Qt::AlignCenter);
    _readTitleColor();

    setSizePolicy(QSizePolicy::Maximum, QSizePolicy::Minimum);
    if (cmd) {
        m_title->setText(cmd->text());
        m_logicLayout->setHorizontalSpacing(cmd->property("horizontalSpacing", 0).toInt());
        m_logicLayout->setVerticalSpacing(cmd->property("verticalSpacing", 0).toInt());
    }
    const int lines = style()->styleHint(KORBStyle::KSH_LogicGroupLineCount, nullptr, this);
    if (lines > 0)
        m_logicLayout->setLineCount(lines);

    if (cmd && cmd->isTriggerable()) {
        m_button = new KRbLogicGroup_Button(cmd, this);
        _placeTitleButton();
    }

    KCommandBridgeHelper::registerIdle(this);
    if (KApplication* app = KApplication::instance())
        app->addThemeChangeWidget(this);
    if (cmd) {
        connect(cmd, &KCommand::changed, this, &KRbLogicGroup::syncCommand);
        syncCommand();
    }
}

KRbLogicGroup::~KRbLogicGroup()
{
    KCommandBridgeHelper::unregisterIdle(this);
    // The title row is not owned by the grid while the title is hidden.
    if (!m_titleVisible)
        delete m_titleLayout;
}

void KRbLogicGroup::_readTitleColor()
{
    const QColor color = KDrawHelpFunc::getColorFromTheme(QStringLiteral("functionPanelName"), QStringLiteral("Text"));
    if (!color.isValid())
        return; // a theme without the item leaves the palette's own text colour
    QPalette palette = m_title->palette();
    palette.setColor(QPalette::WindowText, color);
    m_title->setPalette(palette);
}

void KRbLogicGroup::_placeTitleButton()
{
    if (!m_button)
        return;
    m_titleLayout->removeWidget(m_button);
    m_gridLayout->removeWidget(m_button);
    if (m_titleVisible)
        m_titleLayout->addWidget(m_button);
    else
        m_gridLayout->addWidget(m_button, 0, 1, Qt::AlignBottom);
}

void KRbLogicGroup::setTitleVisible(bool visible)
{
    if (m_titleVisible == visible)
        return;
    m_titleVisible = visible;
    m_title->setVisible(visible);
    if (visible)
        m_gridLayout->addLayout(m_titleLayout, 1, 0);
    else
        m_gridLayout->removeItem(m_titleLayout);
    _placeTitleButton();
    updateGeometry();
}

void KRbLogicGroup::setTriggerAble(bool triggerAble)
{
    if (m_triggerAble == triggerAble)
        return;
    m_triggerAble = triggerAble;
    if (!triggerAble) {
        delete m_button;
        m_button = nullptr;
    } else if (!m_button && command() && command()->isTriggerable()) {
        m_button = new KRbLogicGroup_Button(command(), this);
        _placeTitleButton();
    }
    updateGeometry();
}

QSize KRbLogicGroup::sizeHint() const
{
    ensureConnectCommand();
    ensurePolished();
    return m_gridLayout->totalSizeHint();
}

QSize KRbLogicGroup::minimumSizeHint() const
{
    ensureConnectCommand();
    ensurePolished();
    return m_gridLayout->totalMinimumSize();
}

void KRbLogicGroup::onCommandConnected()
{
    if (auto* list = qobject_cast<KAbstractListCommand*>(command())) {
        connect(list, &KAbstractListCommand::subCommandInsert, this, &KRbLogicGroup::onCommandInserted);
        connect(list, &KAbstractListCommand::subCommandRemove, this, &KRbLogicGroup::onCommandRemoved);
    }
}

void KRbLogicGroup::onCommandInserted(int index, KCommand* cmd)
{
    if (!cmd)
        return;
    m_logicLayout->insertItem(index, new KRbLogicGroupItem(cmd, this));
    // The grid keeps what it measured until it is told: the control area just changed.
    m_gridLayout->invalidate();
}

void KRbLogicGroup::onCommandRemoved(int index)
{
    QLayoutItem* item = m_logicLayout->takeAt(index);
    if (!item)
        return;
    if (QWidget* w = item->widget())
        w->hide();
    delete item;
    m_gridLayout->invalidate();
}

void KRbLogicGroup::syncCommand()
{
    KCommand* cmd = command();
    if (!cmd)
        return;
    setVisibleFromCommand(cmd->isVisible());
    m_title->setText(cmd->text());
    updateGeometry();
}

bool KRbLogicGroup::event(QEvent* e)
{
    switch (int(e->type())) {
    case KEvent::Idle:
        if (KCommand* cmd = command())
            cmd->update();
        break;
    case KEvent::ThemeChange:
        _readTitleColor();
        break;
    case KEvent::HotKeyCollect:
        sendHotKeyEventToLayout(m_logicLayout, e, true);
        return true;
    default:
        break;
    }
    return KCommandWidgetBridge<QWidget>::event(e);
}

void KRbLogicGroup::paintEvent(QPaintEvent*)
{
    // Another style has no look for a group: the separators of the category part them.
    if (!KRbPaint::isFrameworkStyle(this))
        return;
    KStyleOptionRbLogicGroup option;
    option.initFrom(this);
    // The height of the title band at the bottom, 0 without a title: where a look draws it.
    option.value = m_titleVisible ? m_title->height() : 0;
    QStylePainter painter(this);
    painter.drawComplexControl(KORBStyle::KCC_RbLogicGroup, option);
}
