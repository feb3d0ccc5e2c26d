#include "khotkeypopupassistant.h"

#include <QCoreApplication>

#include <kcommand.h>
#include <kpopupwidget.h>
#include <ktoolbutton.h>

KHotKeyPopupAssistant::KHotKeyPopupAssistant(KCommand* command, KPopupWidget* popup)
    : m_popup(popup)
    , m_assistant(nullptr, false, true)
{
    QWidget* content = (command && popup) ? command->requestWidget(popup, 2) : nullptr;
    if (content) {
        popup->setContentWidget(content);
        QCoreApplication::postEvent(content, new KHotKeyPopupSelectEvent);
    }
    m_assistant.setHostWidget(content);
}

KHotKeyPopupAssistant::KHotKeyPopupAssistant(KPopupWidget* popup)
    : m_popup(popup)
    , m_assistant(popup ? popup->contentWidget() : nullptr, false, true)
{
    if (QWidget* content = m_assistant.hostWidget())
        QCoreApplication::postEvent(content, new KHotKeyPopupSelectEvent);
}

void KHotKeyPopupAssistant::addHotKeyFromCollectEvent(KHotKeyCollectEvent* event)
{
    m_assistant.addHotKeyFromCollectEvent(event);
}

void KHotKeyPopupAssistant::collectFromContent()
{
    m_assistant.collectHotkeyMessage();
}

void KHotKeyPopupAssistant::show(const QPoint& pos)
{
    if (m_popup)
        m_popup->show(pos, false, 0);
}

void KHotKeyPopupAssistant::show(const QRect& exclude, const QPoint& pos)
{
    if (m_popup)
        m_popup->show(exclude, pos);
}

void KHotKeyPopupAssistant::show(QWidget* owner, const QPoint& pos)
{
    if (m_popup)
        m_popup->show(owner, pos);
}

int KHotKeyPopupAssistant::exec()
{
    if (!m_popup || !m_popup->isVisible())
        return -1;
    // A menu button stays down while its popup's level runs.
    auto* button = qobject_cast<KToolButton*>(m_popup->parentWidget());
    const bool menuButton = button && button->inherits("KMenuButton");
    if (menuButton)
        button->setDown(true);
    QObject::connect(m_popup.data(), &KPopupWidget::aboutToHide, &m_assistant,
                     qOverload<>(&KHotKeyAssistant::exit));
    const int code = m_assistant.showHotKey();
    if (menuButton)
        button->setDown(false);
    if (m_popup && m_popup->parentWidget())
        m_popup->parentWidget()->update();
    return code;
}
