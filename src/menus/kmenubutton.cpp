#include "kmenubutton.h"

#include <QMouseEvent>
#include <QStyle>

#include <kabstractlistcommand.h>
#include <kcommand.h>
#include <kcommandwidgetbridge.h>
#include <kevent.h>
#include <khotkeyevent.h>
#include <khotkeypopupassistant.h>
#include <kmenuwidget.h>
#include <korbstyle.h>
#include <kpopupwidget.h>
#include <kquickmenucommand.h>
#include <kstyleoption.h>

KMenuButton::KMenuButton(QWidget* parent)
    : KToolButton(parent)
{
    setButtonStyle(StyleIcon | StyleArrow);
    setMouseTracking(true);
    connect(this, &KMenuButton::popup, this, &KMenuButton::popupChildWidget);
}

KMenuButton::~KMenuButton()
{
    delete m_popup.data();
}

void KMenuButton::setTriggerAble(bool triggerAble)
{
    if (m_triggerAble == triggerAble)
        return;
    m_triggerAble = triggerAble;
    update();
}

void KMenuButton::getButtonArea(QRect& button, QRect& popup) const
{
    if (!m_triggerAble) {
        // Nothing to trigger: the whole face drops the menu down, arrow or not.
        button = QRect();
        popup = rect();
        return;
    }
    KStyleOptionToolButton option;
    initStyleOption(&option);
    if (KORBStyle::isFrameworkStyle(style())) {
        button = style()->subControlRect(KORBStyle::KCC_ToolButton, &option, KORBStyle::KSC_ToolButtonButton, this);
        popup = style()->subControlRect(KORBStyle::KCC_ToolButton, &option, KORBStyle::KSC_ToolButtonMenu, this);
    } else {
        // A host's own style: its stock split tool button.
        QStyleOptionToolButton stock;
        KORBStyle::_toQStyleOptionToolButton(&option, &stock);
        stock.features |= QStyleOptionToolButton::MenuButtonPopup;
        if (option.buttonStyle & StyleArrow) {
            button = style()->subControlRect(QStyle::CC_ToolButton, &stock, QStyle::SC_ToolButton, this);
            popup = style()->subControlRect(QStyle::CC_ToolButton, &stock, QStyle::SC_ToolButtonMenu, this);
        }
    }
    if (!popup.isValid()) {
        // No drop-down part in the style: a plain button.
        popup = QRect();
        button = rect();
    }
}

bool KMenuButton::isUnderPopupArea() const
{
    QRect button, popup;
    getButtonArea(button, popup);
    return popup.contains(mapFromGlobal(QCursor::pos()));
}

bool KMenuButton::isUnderBtnArea() const
{
    QRect button, popup;
    getButtonArea(button, popup);
    return button.contains(mapFromGlobal(QCursor::pos()));
}

void KMenuButton::initStyleOption(KStyleOptionToolButton* option) const
{
    KToolButton::initStyleOption(option);
    option->features |= QStyleOptionToolButton::Menu;
    option->drawSeparator = m_triggerAble;
}

void KMenuButton::popupChildWidget()
{
    KCommand* cmd = command();
    if (!cmd || m_popup)
        return;
    if (auto* list = qobject_cast<KAbstractListCommand*>(cmd); list && (!list->isPopupEnabled() || list->count() == 0))
        return; // a list with no items opens nothing
    auto* popup = new KPopupWidget(this, Qt::Popup);
    m_popup = popup;
    QWidget* content = cmd->requestWidget(popup, KCommand::ExtendedPurpose);
    if (!content) {
        delete popup;
        return;
    }
    popup->setContentWidget(content);
    const QPointer<KMenuButton> self(this);
    connect(popup, &KPopupWidget::aboutToHide, this, [self, popup] {
        popup->deleteLater();
        if (self) {
            self->setDown(false);
            self->update();
        }
    });
    setDown(true);
    popup->show(this, KPopupWidget::getWidgetGlobalBottomLeftPos(this));
}

void KMenuButton::mousePressEvent(QMouseEvent* e)
{
    KToolButton::mousePressEvent(e);
    if (e->button() != Qt::LeftButton)
        return;
    QRect button, popupArea;
    getButtonArea(button, popupArea);
    if (popupArea.contains(e->position().toPoint())) {
        setPressed(false);
        Q_EMIT popup();
    }
}

void KMenuButton::mouseReleaseEvent(QMouseEvent* e)
{
    const QPointer<KMenuButton> self(this);
    setPressed(false);
    update();
    QRect button, popupArea;
    getButtonArea(button, popupArea);
    if (!button.contains(e->position().toPoint()))
        return; // the drop-down part: the menu is open, nothing is triggered
    KEvent dismiss(KEvent::Dismiss);
    sendPropagatedEvent(this, &dismiss, false);
    if (!self)
        return;
    if (e->button() == Qt::LeftButton)
        Q_EMIT LButtonClicked();
    else if (e->button() == Qt::RightButton)
        Q_EMIT RButtonClicked();
    if (!self)
        return;
    Q_EMIT clicked();
    if (self)
        Q_EMIT trigger();
}

void KMenuButton::mouseMoveEvent(QMouseEvent* e)
{
    QWidget::mouseMoveEvent(e);
    update(); // the part under the cursor may have changed
}

bool KMenuButton::event(QEvent* e)
{
    switch (int(e->type())) {
    case QEvent::ToolTip: {
        KCommand* cmd = command();
        if (!cmd)
            break;
        // The drop-down part has a tip of its own.
        const QString key = isUnderPopupArea() && m_triggerAble ? cmd->customTip2() : cmd->customTip();
        if (KCommandBridgeHelper::showRichTip(this, cmd, key, static_cast<QHelpEvent*>(e)))
            return true;
        break;
    }
    case KEvent::HotKeyTrigger: {
        auto* trigger = static_cast<KHotKeyTriggerEvent*>(e);
        if (trigger->result == 0)
            _hotKeyTrigger(trigger);
        return true;
    }
    default:
        break;
    }
    return KToolButton::event(e);
}

void KMenuButton::_hotKeyTrigger(KHotKeyTriggerEvent* e)
{
    KCommand* cmd = command();
    if (!cmd || !isEnabled())
        return;
    // The menu opens with a key-tip level of its own, under the button.
    KPopupWidget popup(this, Qt::Popup);
    KHotKeyPopupAssistant level(cmd, &popup);
    if (!popup.contentWidget())
        return;
    level.show(this, KPopupWidget::getWidgetGlobalBottomLeftPos(this));
    level.collectFromContent();
    const QPointer<KMenuButton> self(this);
    e->execResult = level.exec();
    e->result = 2;
    if (self) {
        setDown(false);
        update();
    }
}

// --- quick menu button ---

KQuickMenuButton::KQuickMenuButton(QWidget* parent)
    : KMenuButton(parent)
{
}

bool KQuickMenuButton::isMainPartAlive() const
{
    auto* quick = qobject_cast<KQuickMenuCommand*>(command());
    KCommand* reference = quick ? quick->referenceCommand() : nullptr;
    return reference && reference->isEnabled();
}

bool KQuickMenuButton::_accepts(const QPoint& pos) const
{
    if (isMainPartAlive())
        return true;
    QRect button, popup;
    getButtonArea(button, popup);
    return isEnabled() && popup.contains(pos);
}

void KQuickMenuButton::mousePressEvent(QMouseEvent* e)
{
    if (_accepts(e->position().toPoint()))
        KMenuButton::mousePressEvent(e);
}

void KQuickMenuButton::mouseReleaseEvent(QMouseEvent* e)
{
    if (_accepts(e->position().toPoint()))
        KMenuButton::mouseReleaseEvent(e);
    else
        setPressed(false);
}

void KQuickMenuButton::mouseMoveEvent(QMouseEvent* e)
{
    if (_accepts(e->position().toPoint()))
        KMenuButton::mouseMoveEvent(e);
}

void KQuickMenuButton::initStyleOption(KStyleOptionToolButton* option) const
{
    KMenuButton::initStyleOption(option);
    option->quickCommandEnabled = isMainPartAlive();
}
