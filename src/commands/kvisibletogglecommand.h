#ifndef KVISIBLETOGGLECOMMAND_H
#define KVISIBLETOGGLECOMMAND_H

#include <QPointer>

#include <ktriggercommand.h>

/**
 * Flips the visibility of another command ("defaultCommand"), for example a dock's or a tool
 * bar's; its checked state shows whether that command is visible.
 */
class NORVIKOFFICEUI_EXPORT KVisibleToggleCommand : public KTriggerCommand
{
    Q_OBJECT
    Q_PROPERTY(KCommand* defaultCommand READ defaultCommand WRITE setDefaultCommand)
public:
    Q_INVOKABLE KVisibleToggleCommand(QObject* host, QObject* parent);

    KCommand* defaultCommand() const { return m_defaultCommand; }
    void setDefaultCommand(KCommand* command);

    void update() override;

protected:
    void onTriggered() override;

private:
    QPointer<KCommand> m_defaultCommand;
};

#endif // KVISIBLETOGGLECOMMAND_H
