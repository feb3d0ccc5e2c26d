#include "krblayoutlistcommand.h"

#include <kcommandfactory.h>
#include <kmainwindow.h>
#include <krblayoutwidget.h>

static KCommandFactoryItem<KRbLayoutListCommand, KMainWindow>
    s_layoutListItem(QStringLiteral("KRbLayoutListCommand"), QStringLiteral("KMainWindow"));

KRbLayoutListCommand::KRbLayoutListCommand(QObject* host, QObject* parent)
    : KListCommand(host, parent)
{
}

KRbLayoutListCommand::~KRbLayoutListCommand() = default;

void KRbLayoutListCommand::setLayoutName(const QString& name)
{
    if (m_layoutName == name)
        return;
    m_layoutName = name;
    on_command_changed();
}

int KRbLayoutListCommand::spacing() const
{
    return m_horizontalSpacing == m_verticalSpacing ? m_horizontalSpacing : -1;
}

void KRbLayoutListCommand::setSpacing(int spacing)
{
    if (m_horizontalSpacing == spacing && m_verticalSpacing == spacing)
        return;
    m_horizontalSpacing = spacing;
    m_verticalSpacing = spacing;
    on_command_changed();
}

void KRbLayoutListCommand::setHorizontalSpacing(int spacing)
{
    if (m_horizontalSpacing == spacing)
        return;
    m_horizontalSpacing = spacing;
    on_command_changed();
}

void KRbLayoutListCommand::setVerticalSpacing(int spacing)
{
    if (m_verticalSpacing == spacing)
        return;
    m_verticalSpacing = spacing;
    on_command_changed();
}

void KRbLayoutListCommand::setLeftSpacing(int spacing)
{
    if (m_leftSpacing == spacing)
        return;
    m_leftSpacing = spacing;
    on_command_changed();
}

void KRbLayoutListCommand::setRightSpacing(int spacing)
{
    if (m_rightSpacing == spacing)
        return;
    m_rightSpacing = spacing;
    on_command_changed();
}

void KRbLayoutListCommand::setLayoutOnly(bool layoutOnly)
{
    if (m_layoutOnly == layoutOnly)
        return;
    m_layoutOnly = layoutOnly;
    on_command_changed();
}

QWidget* KRbLayoutListCommand::createPocketWidget(QWidget* parent)
{
    return new KRbLayoutWidget(this, parent);
}
