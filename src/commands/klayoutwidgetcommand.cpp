#include "klayoutwidgetcommand.h"

#include <QWidget>

#include <kcommandfactory.h>

static KCommandFactoryItem<KLayoutWidgetCommand, QObject>
    s_layoutWidgetItem(QStringLiteral("KLayoutWidgetCommand"), QStringLiteral("QObject"));

KLayoutWidgetCommand::KLayoutWidgetCommand(QObject* host, QObject* parent)
    : KCommand(host, parent)
{
}

KLayoutWidgetCommand::~KLayoutWidgetCommand() = default;

void KLayoutWidgetCommand::setFixedHeight(int height)
{
    if (m_fixedHeight == height)
        return;
    m_fixedHeight = height;
    on_command_changed();
}

void KLayoutWidgetCommand::setFixedWidth(int width)
{
    if (m_fixedWidth == width)
        return;
    m_fixedWidth = width;
    on_command_changed();
}

QWidget* KLayoutWidgetCommand::createPocketWidget(QWidget* parent)
{
    auto* spacer = new QWidget(parent);
    spacer->setFixedSize(qMax(0, m_fixedWidth), qMax(0, m_fixedHeight));
    return spacer;
}
