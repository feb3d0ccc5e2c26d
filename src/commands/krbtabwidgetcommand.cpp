#include "krbtabwidgetcommand.h"

#include <kcommandfactory.h>

static KCommandFactoryItem<KRbTabWidgetCommand, QObject>
    s_tabWidgetItem(QStringLiteral("KRbTabWidgetCommand"), QStringLiteral("QObject"));

KRbTabWidgetCommand::KRbTabWidgetCommand(QObject* host, QObject* parent)
    : KListCommand(host, parent)
{
}

KRbTabWidgetCommand::~KRbTabWidgetCommand() = default;
