#ifndef KTOOLBARTOGGLEVIEWCOMMAND_H
#define KTOOLBARTOGGLEVIEWCOMMAND_H

#include <QAction>
#include <QPointer>

#include <ktriggercommand.h>

/**
 * Shows or hides a tool bar (or the task pane dock) through its toggle-view action. Its text
 * and checked state follow the action at each update(); with "groups" set it shows only in
 * the tool bar groups listed there (a string of group numbers, "12" for groups 1 and 2).
 */
class NORVIKOFFICEUI_EXPORT KToolBarToggleViewCommand : public KTriggerCommand
{
    Q_OBJECT
    Q_PROPERTY(QString toolbarName READ toolbarName WRITE setToolbarName)
    Q_PROPERTY(QString groups READ groups WRITE setGroups)
public:
    Q_INVOKABLE KToolBarToggleViewCommand(QObject* host, QObject* parent);

    QString toolbarName() const { return m_toolbarName; }
    void setToolbarName(const QString& name);
    QString groups() const { return m_groups; }
    void setGroups(const QString& groups);

    /// The fixed action, or the toggle action of the bar named by toolbarName (looked up
    /// afresh each time).
    QAction* action() const;
    void setAction(QAction* action) { m_action = action; }

    void update() override;

protected:
    void onTriggered() override;

private:
    QString m_toolbarName;
    QString m_groups;
    QPointer<QAction> m_action;
};

#endif // KTOOLBARTOGGLEVIEWCOMMAND_H
