#include "kabstractlistcommand.h"

#include <QPointer>

#include <kseparatorcommand.h>
#include <kmenuwidget.h>
#include <kpopupwidget.h>
#include <ktoolbutton.h>

KSubCommandParser::~KSubCommandParser() = default;

KAbstractListCommand::KAbstractListCommand(QObject* host, QObject* parent)
    : KCommand(host, parent)
{
}

KAbstractListCommand::~KAbstractListCommand() = default;

bool KAbstractListCommand::isExtensible() const
{
    return true;
}

void KAbstractListCommand::setTriggerEnabled(bool enabled)
{
    if (m_triggerEnabled == enabled)
        return;
    m_triggerEnabled = enabled;
    on_command_changed();
}

void KAbstractListCommand::setPopupEnabled(bool enabled)
{
    if (m_popupEnabled == enabled)
        return;
    m_popupEnabled = enabled;
    on_command_changed();
}

void KAbstractListCommand::setHideArrowHint(bool hide)
{
    if (m_hideArrowHint == hide)
        return;
    m_hideArrowHint = hide;
    on_command_changed();
}

void KAbstractListCommand::setDelayloadPath(const QString& path)
{
    if (m_delayloadPath == path)
        return;
    m_delayloadPath = path;
    on_command_changed();
}

bool KAbstractListCommand::isSubCommandsLoaded() const
{
    return !m_subCommandParser || m_delayloadPath.isEmpty();
}

void KAbstractListCommand::ensureSubCommandsLoaded()
{
    if (isSubCommandsLoaded())
        return;
    KSubCommandParser* parser = m_subCommandParser;
    m_subCommandParser = nullptr;
    parser->setupCommandXML(this, m_delayloadPath);
}

QWidget* KAbstractListCommand::createPocketWidget(QWidget* parent)
{
    auto* button = new KToolButton(parent);
    button->setButtonStyle(KToolButton::StyleIcon | KToolButton::StyleText | KToolButton::StyleArrow);
    button->setDefaultCommand(this);
    if (m_hideArrowHint)
        button->setButtonStyle(button->buttonStyle() & ~KToolButton::StyleArrow);
    QObject::connect(button, &KToolButton::LButtonClicked, button, [this, button] {
        if (!m_popupEnabled || count() == 0)
            return; // a list with no items opens nothing
        // One popup per button, kept between openings: its menu follows the list's changes
        // while hidden, so an opening only places and paints it.
        auto* popup = button->findChild<KPopupWidget*>(QString(), Qt::FindDirectChildrenOnly);
        if (!popup) {
            popup = new KPopupWidget(button, Qt::Popup);
            popup->setContentWidget(requestWidget(popup, KCommand::ExtendedPurpose));
            const QPointer<KToolButton> guard(button);
            QObject::connect(popup, &KPopupWidget::aboutToHide, button, [guard] {
                if (guard)
                    guard->setDown(false);
            });
        }
        if (auto* menu = qobject_cast<KMenuWidget*>(popup->contentWidget()))
            menu->clearStatus();
        popup->clearSizeAttitude(); // the list may have grown or shrunk since
        button->setDown(true);
        popup->show(button, KPopupWidget::getWidgetGlobalBottomLeftPos(button));
    });
    return button;
}

QWidget* KAbstractListCommand::createExtendedWidget(QWidget* parent)
{
    return new KMenuWidget(this, parent);
}
