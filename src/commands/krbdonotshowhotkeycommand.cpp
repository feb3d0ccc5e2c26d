#include "krbdonotshowhotkeycommand.h"

#include <kcommandfactory.h>
#include <krbdonotshowhotkeytoolbutton.h>

static KCommandFactoryItem<KRbDonotShowHotKeyCommand, QObject>
    s_donotShowHotKeyItem(QStringLiteral("KRbDonotShowHotKeyCommand"), QStringLiteral("QObject"));

KRbDonotShowHotKeyCommand::KRbDonotShowHotKeyCommand(QObject* host, QObject* parent)
    : KTriggerCommand(host, parent)
{
}

KRbDonotShowHotKeyCommand::~KRbDonotShowHotKeyCommand() = default;

QWidget* KRbDonotShowHotKeyCommand::createPocketWidget(QWidget* parent)
{
    return adoptButton(new KRbDonotShowHotKeyToolButton(parent));
}
