#include "krbtabbutton.h"

#include <QMouseEvent>
#include <QStyleOptionTab>
#include <QStylePainter>
#include <QTabBar>

#include <kblockedmouseevent.h>
#include <kcontextcategorycommand.h>
#include <kevent.h>
#include <khotkeyevent.h>
#include <korbstyle.h>
#include <krbsubtabbar.h>

#include "krbpaint_p.h"

namespace {
// The "no press yet" time: far enough back that no press counts as a second one.
QDateTime noPress()
{
    return QDateTime::fromMSecsSinceEpoch(0, Qt::UTC);
}
} // namespace

KRbTabButton::KRbTabButton(KCommand* cmd, KRbSubTabBar* tabBar)
    : KCommandWidgetBridge<QAbstractButton>(cmd, tabBar, false) // a tab builds nothing of its category
    , m_lastPress(noPress())
    , m_tabBar(tabBar)
{
    setFocusPolicy(Qt::NoFocus);
    setSizePolicy(QSizePolicy::Maximum, QSizePolicy::Preferred);
    setMouseTracking(true);
    setAttribute(Qt::WA_Hover);
    setMinimumWidth(minimumSizeHint().width());
    KCommandBridgeHelper::registerIdle(this);
    if (cmd) {
        connect(cmd, &KCommand::changed, this, &KRbTabButton::syncCommand);
        syncCommand();
    }
}

KRbTabButton::~KRbTabButton()
{
    KCommandBridgeHelper::unregisterIdle(this);
}

KRbSubTabBar* KRbTabButton::tabBar() const
{
    return m_tabBar.data();
}

void KRbTabButton::setCheckStatus(ButtonStatus status)
{
    if (m_status == status)
        return;
    m_status = status;
    update();
}

QString KRbTabButton::hotkey() const
{
    KCommand* cmd = command();
    return cmd ? cmd->property("rbHotKey", QString()).toString() : QString();
}

QString KRbTabButton::getContextName() const
{
    KCommand* cmd = command();
    const QString id = cmd ? cmd->property("id", QString()).toString() : QString();
    return id.isEmpty() ? QString() : QStringLiteral("-") + id;
}

bool KRbTabButton::isContextTab() const
{
    KCommand* cmd = command();
    if (!cmd || !cmd->property("rbContextTableButton", false).toBool())
        return false;
    if (auto* context = qobject_cast<KContextCategoryCommand*>(cmd))
        return context->contextName().compare(QLatin1String("disable"), Qt::CaseInsensitive) != 0;
    return true;
}

QString KRbTabButton::getTheme() const
{
    return isContextTab() ? QStringLiteral("KRbTabContextButton") + getContextName() : QString();
}

QSize KRbTabButton::sizeHint() const
{
    const QFontMetrics metrics = fontMetrics();
    return QSize(metrics.horizontalAdvance(text() + QLatin1Char(' ')) + 28, metrics.height() + 13)
        .expandedTo(minimumSize());
}

QSize KRbTabButton::minimumSizeHint() const
{
    const QFontMetrics metrics = fontMetrics();
    return QSize(metrics.horizontalAdvance(text()) + 10, metrics.height() + 13).expandedTo(minimumSize());
}

void KRbTabButton::syncCommand()
{
    KCommand* cmd = command();
    if (!cmd)
        return;
    if (text() != cmd->text()) {
        setText(cmd->text());
        setMinimumWidth(0);
        setMinimumWidth(minimumSizeHint().width());
    }
    setEnabled(cmd->isEnabled());
    setVisibleFromCommand(cmd->isVisible());
}

void KRbTabButton::onVisibleChanged()
{
    if (KCommand* cmd = command())
        setVisible(cmd->isVisible());
    // Every layout above has to measure again.
    for (QWidget* w = parentWidget(); w; w = w->parentWidget())
        w->updateGeometry();
}

bool KRbTabButton::dealClickEvent()
{
    const QDateTime now = QDateTime::currentDateTime();
    if (m_lastPress.msecsTo(now) < 300) {
        m_lastPress = noPress();
        return true;
    }
    m_lastPress = now;
    return false;
}

void KRbTabButton::mousePressEvent(QMouseEvent* e)
{
    if (e->button() != Qt::LeftButton) {
        e->ignore();
        return;
    }
    e->accept();
    // A press on a tab that is not the shown one is an action of the category too.
    if (m_status == Normal) {
        if (KCommand* cmd = command())
            cmd->trigger();
    }
    if (dealClickEvent())
        Q_EMIT dblClicked();
    else
        Q_EMIT clicked(false);
}

void KRbTabButton::mouseDoubleClickEvent(QMouseEvent* e)
{
    // The second press of a double click has come as a press already, and dealClickEvent()
    // told it from a first one; this event would count it twice.
    e->accept();
}

void KRbTabButton::mouseReleaseEvent(QMouseEvent* e)
{
    // The tab acted on the press already.
    e->accept();
}

bool KRbTabButton::event(QEvent* e)
{
    switch (int(e->type())) {
    case KEvent::Idle:
        if (KCommand* cmd = command())
            cmd->update();
        return true;
    case KEvent::BlockedMouse: {
        auto* blocked = static_cast<KBlockedMouseEvent*>(e);
        QMouseEvent* mouse = blocked->mouseEvent();
        if (m_status == Popup && mouse
            && (mouse->type() == QEvent::MouseButtonPress || mouse->type() == QEvent::MouseButtonDblClick)) {
            // A double click comes after its second press: only the presses count.
            if (mouse->type() == QEvent::MouseButtonPress)
                mousePressEvent(mouse);
            blocked->setFirstFlag(true);
            return true;
        }
        break;
    }
    case KEvent::HotKeyTrigger: {
        // The tab opens; the host is asked for the page's labels.
        click();
        if (KCommand* cmd = command())
            cmd->trigger();
        static_cast<KHotKeyTriggerEvent*>(e)->result = 1;
        return true;
    }
    default:
        break;
    }
    return KCommandWidgetBridge<QAbstractButton>::event(e);
}

void KRbTabButton::initStyleOption(KStyleOptionKRbTabButton* option) const
{
    option->initFrom(this);
    option->text = text();
    option->status = m_status;
    option->themeKey = getTheme();
    option->isContext = isContextTab();
    if (KRbSubTabBar* bar = m_tabBar.data()) {
        option->isBeforeSelected = bar->isBeforeSelected(this);
        option->isNextSelected = bar->isNextSelected(this);
        option->isBeforeContext = bar->isBeforeContent(this);
        option->isNextContext = bar->isNextContent(this);
        option->isHideGradient = bar->isHideGradient();
    }
}

void KRbTabButton::paintEvent(QPaintEvent*)
{
    KStyleOptionKRbTabButton option;
    initStyleOption(&option);
    QStylePainter painter(this);
    if (KRbPaint::isFrameworkStyle(this)) {
        painter.drawComplexControl(KORBStyle::KCC_RbTabButton, option);
        return;
    }
    // Another style: a stock tab, selected while the tab is current.
    QStyleOptionTab tab;
    tab.initFrom(this);
    tab.text = option.text;
    tab.shape = QTabBar::RoundedNorth;
    tab.position = QStyleOptionTab::Middle;
    if (m_status != Normal)
        tab.state |= QStyle::State_Selected;
    painter.drawControl(QStyle::CE_TabBarTab, tab);
}
