#include "ktoolbartoggleviewcommand.h"

#include <QDockWidget>

#include "kcommandfactory.h"
#include "kcommands.h"
#include "kmainwindow.h"
#include "ktoolbar.h"

static KCommandFactoryItem<KToolBarToggleViewCommand, QObject>
    s_toolBarToggleViewItem(QStringLiteral("KToolBarToggleViewCommand"), QStringLiteral("QObject"));

KToolBarToggleViewCommand::KToolBarToggleViewCommand(QObject* host, QObject* parent)
    : KTriggerCommand(host, parent)
{
}

void KToolBarToggleViewCommand::setToolbarName(const QString& name)
{
    if (m_toolbarName == name)
        return;
    m_toolbarName = name;
    on_command_changed();
}

void KToolBarToggleViewCommand::setGroups(const QString& groups)
{
    if (m_groups == groups)
        return;
    m_groups = groups;
    on_command_changed();
}

QAction* KToolBarToggleViewCommand::action() const
{
    if (m_action)
        return m_action;
    auto* window = qobject_cast<KMainWindow*>(host());
    if (!window)
        return nullptr;
    if (KToolBar* bar = window->findToolBar(window->commands()->command(m_toolbarName)))
        return bar->toggleViewAction();
    if (m_toolbarName == QLatin1String("ClassicalTaskpane")) {
        if (QDockWidget* dock = window->findDockWidget(QStringLiteral("KxTaskPaneContainer")))
            return dock->toggleViewAction();
    }
    return nullptr;
}

void KToolBarToggleViewCommand::update()
{
    QAction* a = action();
    if (!a) {
        setVisible(false);
        return;
    }
    if (a->isSeparator())
        return;
    setText(a->text());
    setCheckedHint(a->isChecked());
    auto* window = qobject_cast<KMainWindow*>(host());
    if (!window)
        return;
    if (m_groups.isEmpty())
        setVisible(true);
    else
        setVisible(m_groups.contains(QString::number(window->toolbarGroupIndex())));
}

void KToolBarToggleViewCommand::onTriggered()
{
    if (QAction* a = action())
        a->trigger();
}
