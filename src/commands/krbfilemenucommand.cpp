#include "krbfilemenucommand.h"

#include <kcommandfactory.h>
#include <krbfilemenu.h>
#include <krbtabfilebutton.h>

static KCommandFactoryItem<KRbFileMenuCommand, QObject>
    s_fileMenuItem(QStringLiteral("KRbFileMenuCommand"), QStringLiteral("QObject"));
static KCommandFactoryItem<KRBFileHelpMenuCommand, QObject>
    s_fileHelpMenuItem(QStringLiteral("KRBFileHelpMenuCommand"), QStringLiteral("QObject"));

KRbFileMenuCommand::KRbFileMenuCommand(QObject* host, QObject* parent)
    : KListCommand(host, parent)
{
}

KRbFileMenuCommand::~KRbFileMenuCommand() = default;

QWidget* KRbFileMenuCommand::createPocketWidget(QWidget* parent)
{
    return new KRbTabFileButton(this, parent);
}

QWidget* KRbFileMenuCommand::createExtendedWidget(QWidget* parent)
{
    auto* menu = new KRbFileMenu(parent);
    menu->setDefaultKCommand(this);
    return menu;
}

KRBFileHelpMenuCommand::KRBFileHelpMenuCommand(QObject* host, QObject* parent)
    : KListCommand(host, parent)
{
}

KRBFileHelpMenuCommand::~KRBFileHelpMenuCommand() = default;

QWidget* KRBFileHelpMenuCommand::createExtendedWidget(QWidget* parent)
{
    return new KRBFileHelpMenu(parent, m_extentText, m_menuCommand.data());
}
