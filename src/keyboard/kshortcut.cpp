#include "kshortcut.h"

#include <QPointer>
#include <QWidget>

#include <kapicommand.h>
#include <kcommand.h>
#include <kcommandfactory.h>
#include <kcommands.h>
#include <ktriggercommand.h>

struct KShortcut::Private
{
    QWidget* parent = nullptr;
    ShortcutCategory category = CommandShortcut;
    QString name;
    QString param;
    KCommands* commands = nullptr;
    QPointer<KCommand> command;
};

KShortcut::KShortcut(const QKeySequence& key, QWidget* parent, KCommands* commands, const QString& name,
                     ShortcutCategory category)
    : QShortcut(key, parent)
    , d(new Private)
{
    setContext(Qt::WindowShortcut);
    d->parent = parent;
    d->category = category;
    d->name = name;
    d->commands = commands;
    switch (category) {
    case CommandShortcut:
        d->command = commands ? commands->command(name) : nullptr;
        break;
    case MacroShortcut: {
        KCommand* made = KCommandFactory::createCommand(QStringLiteral("KTriggerCommand"), parent, parent);
        if (auto* trigger = qobject_cast<KTriggerCommand*>(made)) {
            trigger->setMacroAction(name);
            trigger->setEnabled(true);
            d->command = trigger;
        } else {
            delete made;
        }
        break;
    }
    case StyleShortcut:
        d->command = commands ? commands->command(QStringLiteral("StyleShortcut")) : nullptr;
        break;
    case SymbolShortcut:
        d->command = KCommandFactory::createCommand(QStringLiteral("KxSymbolButtonCommand"), parent, parent);
        break;
    }
}

KShortcut::~KShortcut()
{
    delete d;
}

KCommand* KShortcut::command() const
{
    return d->command.data();
}

ShortcutCategory KShortcut::getCategory() const
{
    return d->category;
}

void KShortcut::setCateory(ShortcutCategory category)
{
    d->category = category;
}

QString KShortcut::getCommand() const
{
    return d->name;
}

void KShortcut::setCommand(const QString& name)
{
    d->name = name;
}

QString KShortcut::getCommandParam() const
{
    return d->param;
}

void KShortcut::setCommandParam(const QString& param)
{
    d->param = param;
}

void KShortcut::execute()
{
    KCommand* cmd = d->command.data();
    if (!cmd)
        return;
    // The refresh comes first: a command whose state update() computes is judged as of now.
    cmd->update();
    if (!cmd->isTriggerable() || !cmd->isEnabled())
        return;
    cmd->trigger();
}
