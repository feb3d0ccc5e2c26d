#include "kabstractlistcommand.h"

#include <kmenubutton.h>

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
    auto* button = new KMenuButton(parent);
    button->setButtonStyle(KToolButton::StyleIcon | KToolButton::StyleText | KToolButton::StyleArrow);
    button->setDefaultCommand(this);
    button->setTriggerAble(isTriggerable());
    if (m_hideArrowHint)
        button->setButtonStyle(button->buttonStyle() & ~KToolButton::StyleArrow);
    return button;
}

QWidget* KAbstractListCommand::createExtendedWidget(QWidget* parent)
{
    return new KMenuWidget(this, parent);
}
