#include "krbfilemenu.h"

#include <QBoxLayout>
#include <QKeyEvent>
#include <QPainter>
#include <QStyleOption>

#include <kdrawhelpfunc.h>
#include <kevent.h>
#include <korbstyle_2013.h>
#include <krbfilemenucommand.h>
#include <krbrecentfilepage.h>
#include <kstyleoption.h>

// --- left menu ---

KRbFileMenuLeftMenu::KRbFileMenuLeftMenu(KCommand* command, QWidget* parent, KRbRecentFilePage* recent)
    : KMenuWidget(command, parent)
    , m_recent(recent)
{
    setContentsMargins(0, 10, 2, 1);
    setIconSize(QSize(32, 32));
    setTabWidth(26);
    // A file menu's entries are large: the pointer crosses them slowly, so a submenu waits
    // longer before it opens, and it opens beside the whole panel.
    stayTimer()->setInterval(450);
    setSubMenuAtSide(true);
    m_hideTimer.setSingleShot(true);
    m_hideTimer.setInterval(150);
    connect(&m_hideTimer, &QTimer::timeout, this, &KRbFileMenuLeftMenu::hideSubMenu);
    setMouseTracking(true);
}

void KRbFileMenuLeftMenu::hideSubMenu()
{
    // The pointer left the open entry and has not come back: its submenu goes.
    if (popupItem() && popupItem() != currentItem())
        setPopupItem(nullptr);
    m_hideTimer.stop();
}

void KRbFileMenuLeftMenu::mouseMoveEvent(QMouseEvent* e)
{
    const QPoint pos = e->position().toPoint();
    if (!rect().contains(pos) || (m_recent && m_recent->hasPopupMenu())) {
        e->ignore();
        return;
    }
    KMenuWidgetItem* item = itemAt(pos);
    if (item && !(item->isVisible() && item->isEnabled()))
        item = nullptr;
    setLastMousePos(pos);
    if (item != currentItem()) {
        stayTimer()->stop();
        m_hideTimer.stop();
        m_hideTimer.start();
        if (item)
            stayTimer()->start();
    }
    if (item)
        item->onMouseMove(pos);
    setCurrentItem(item);
    e->accept();
}

void KRbFileMenuLeftMenu::leaveEvent(QEvent* e)
{
    m_hideTimer.stop();
    KMenuWidget::leaveEvent(e);
}

bool KRbFileMenuLeftMenu::event(QEvent* e)
{
    if (int(e->type()) == KEvent::BlockedMouse && m_recent && m_recent->hasPopupMenu())
        return false;
    return KMenuWidget::event(e);
}

void KRbFileMenuLeftMenu::paintEvent(QPaintEvent*)
{
    QPainter painter(this);
    QStyleOption option;
    option.initFrom(this);
    style()->drawControl(KORBStyle_2013::KCE_FileMenuLeft, &option, &painter, this);
    for (int i = 0; i < count(); ++i) {
        KMenuWidgetItem* item = itemAt(i);
        if (item && item->isVisible())
            item->paint(painter);
    }
}

// --- bottom row ---

KRbFileMenuButton::KRbFileMenuButton(QWidget* parent)
    : KToolButton(parent)
{
}

QSize KRbFileMenuButton::sizeHint() const
{
    return KToolButton::sizeHint() + QSize(10, 4);
}

void KRbFileMenuButton::initStyleOption(KStyleOptionToolButton* option) const
{
    KToolButton::initStyleOption(option);
    QString suffix;
    if (!isEnabled())
        suffix = QStringLiteral("-disable");
    else if (isDown() || isChecked() || isPressed())
        suffix = QStringLiteral("-down");
    else if (underMouse())
        suffix = QStringLiteral("-hover");
    option->state &= ~QStyle::StateFlag(0x1000);
    const QString cls = QStringLiteral("KRbFileMenuButton");
    option->borderColor = KDrawHelpFunc::getColorFromTheme(cls, QStringLiteral("border") + suffix);
    option->borderInColor = KDrawHelpFunc::getColorFromTheme(cls, QStringLiteral("border-in") + suffix);
    option->bgBrush = QBrush(KDrawHelpFunc::getGradientFromTheme(cls, QStringLiteral("background") + suffix));
}

KRbFileMenuBottomWidget::KRbFileMenuBottomWidget(KRbFileMenuCommand* command, QWidget* parent)
    : QWidget(parent)
{
    if (!command)
        return;
    auto* row = new QHBoxLayout(this);
    row->setContentsMargins(0, 4, 10, 3);
    row->setSpacing(10);
    row->addStretch();
    const QList<KCommand*> cmds{command->switchCommand(), command->customCommand(), command->quitCommand()};
    for (int i = 0; i < cmds.size(); ++i) {
        KCommand* cmd = cmds.at(i);
        if (i == 0 && !cmd)
            continue;
        auto* button = new KRbFileMenuButton(this);
        if (cmd)
            button->setDefaultCommand(cmd);
        button->setButtonStyle(3);
        row->addWidget(button);
        m_buttons.append(button);
    }
}

bool KRbFileMenuBottomWidget::event(QEvent* e)
{
    if (int(e->type()) == KEvent::HotKeyCollect || int(e->type()) == KEvent::HotKeyTrigger) {
        for (QObject* child : children())
            sendDirectEvent(child, e);
        return true;
    }
    return QWidget::event(e);
}

void KRbFileMenuBottomWidget::paintEvent(QPaintEvent*)
{
    QPainter painter(this);
    QStyleOption option;
    option.initFrom(this);
    style()->drawControl(KORBStyle_2013::KCE_FileMenuBottom, &option, &painter, this);
}

// --- panel ---

KRbFileMenu::KRbFileMenu(QWidget* parent)
    : QWidget(parent)
{
    setObjectName(QStringLiteral("RbFileMenu"));
    m_mainLayout = new QVBoxLayout(this);
    m_mainLayout->setContentsMargins(0, 1, 0, 0);
    m_mainLayout->setSpacing(0);
    m_rowLayout = new QHBoxLayout;
    m_rowLayout->setContentsMargins(0, 0, 0, 0);
    m_rowLayout->setSpacing(0);
    m_mainLayout->addLayout(m_rowLayout);
    setFocusPolicy(Qt::StrongFocus);
}

KRbFileMenu::~KRbFileMenu() = default;

void KRbFileMenu::setDefaultKCommand(KRbFileMenuCommand* command)
{
    if (command == m_command.data())
        return;
    if (m_command) {
        if (m_recent) {
            m_rowLayout->removeWidget(m_recent);
            delete m_recent.data();
        }
        if (m_leftMenu) {
            m_rowLayout->removeWidget(m_leftMenu);
            delete m_leftMenu.data();
        }
        if (m_bottom) {
            m_mainLayout->removeWidget(m_bottom);
            delete m_bottom.data();
        }
        disconnect(m_command.data(), &KCommand::changed, this, &KRbFileMenu::syncCommand);
    }
    m_command = command;
    if (!command)
        return;
    if (KCommand* recent = command->recentFileCommand())
        m_recent = qobject_cast<KRbRecentFilePage*>(recent->requestWidget(this, KCommand::ExtendedPurpose));
    m_leftMenu = new KRbFileMenuLeftMenu(command, this, m_recent.data());
    m_rowLayout->addWidget(m_leftMenu);
    if (m_recent)
        m_rowLayout->addWidget(m_recent);
    m_bottom = new KRbFileMenuBottomWidget(command, this);
    m_mainLayout->addWidget(m_bottom);
    syncCommand();
    connect(command, &KCommand::changed, this, &KRbFileMenu::syncCommand);
    if (m_recent)
        m_leftMenu->installEventFilter(m_recent);
}

void KRbFileMenu::syncCommand()
{
    if (!m_command)
        return;
    setVisible(m_command->isVisible());
    setEnabled(m_command->isEnabled());
}

void KRbFileMenu::clearStatus()
{
    if (m_leftMenu)
        m_leftMenu->clearStatus();
}

void KRbFileMenu::paintEvent(QPaintEvent*)
{
    QPainter painter(this);
    painter.setPen(Qt::NoPen);
    painter.fillRect(rect(), Qt::white);
}

bool KRbFileMenu::event(QEvent* e)
{
    const int type = int(e->type());
    if (type == KEvent::HotKeyCollect || type == KEvent::HotKeyTrigger) {
        for (QObject* child : children())
            sendDirectEvent(child, e);
        return true;
    }
    if (type == KEvent::HotKeyPopupSelect) {
        if (m_leftMenu)
            sendDirectEvent(m_leftMenu, e);
        return true;
    }
    return QWidget::event(e);
}

void KRbFileMenu::focusInEvent(QFocusEvent* e)
{
    if (m_leftMenu)
        m_leftMenu->setFocus(e->reason());
    QWidget::focusInEvent(e);
}

void KRbFileMenu::keyPressEvent(QKeyEvent* e)
{
    if (e->key() == Qt::Key_Left || e->key() == Qt::Key_Right) {
        focusNextPrevChild(true);
        return;
    }
    QWidget::keyPressEvent(e);
}

bool KRbFileMenu::focusNextPrevChild(bool next)
{
    QWidget* focus = focusWidget();
    bool inLeft = false;
    for (QWidget* w = focus; w; w = w->parentWidget()) {
        if (w == m_leftMenu) {
            inLeft = true;
            break;
        }
    }
    if (inLeft && m_recent) {
        // The page's row level with the menu's current entry, or with the focus widget.
        QPoint at = focus->mapToGlobal(QPoint(0, 10));
        if (KMenuWidgetItem* item = m_leftMenu->currentItem())
            at = m_leftMenu->mapToGlobal(item->geometry().topLeft() + QPoint(0, 10));
        const int y = at.y();
        m_leftMenu->clearStatus();
        m_recent->setFocus(next ? Qt::TabFocusReason : Qt::BacktabFocusReason);
        m_recent->setSelectedItem(y);
    } else if (m_leftMenu) {
        m_leftMenu->setFocus(next ? Qt::TabFocusReason : Qt::BacktabFocusReason);
    }
    return true;
}

// --- titled help menu ---

KRBFileHelpMenu::KRBFileHelpMenu(QWidget* parent, const QString& title, KCommand* menuCommand)
    : QWidget(parent)
    , m_title(title)
{
    auto* column = new QVBoxLayout(this);
    column->setContentsMargins(0, 0, 0, 0);
    column->setSpacing(0);
    column->addSpacerItem(new QSpacerItem(121, fontMetrics().height() + 10, QSizePolicy::Expanding, QSizePolicy::Fixed));
    column->addWidget(new KMenuWidget(menuCommand, this));
    column->addSpacerItem(new QSpacerItem(121, 121, QSizePolicy::Expanding, QSizePolicy::Expanding));
}

void KRBFileHelpMenu::paintEvent(QPaintEvent*)
{
    QPainter painter(this);
    painter.fillRect(rect(), Qt::white);
    const int h = fontMetrics().height();
    painter.fillRect(QRect(0, 0, width(), h + 9), Qt::red);
    KDrawHelpFunc::drawColorText(painter, isEnabled() ? Qt::black : Qt::gray, QRect(5, 5, width() - 5, h + 4),
                                 int(Qt::AlignLeft | Qt::AlignVCenter), m_title);
}
