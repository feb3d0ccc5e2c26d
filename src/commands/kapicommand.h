#ifndef KAPICOMMAND_H
#define KAPICOMMAND_H

#include <QPointer>

#include <kcommand.h>

/**
 * A clickable leaf whose action a host may hand to one of its own command classes: a macro
 * ("KxMacroActionButtonCommand"), a picture insertion or a hyperlink. Those classes belong
 * to the host; while none is registered the command triggers as a plain command.
 *
 * The settings live in the dynamic properties "action" and "hyperlink".
 */
class NORVIKOFFICEUI_EXPORT KApiCommand : public KCommand
{
    Q_OBJECT
public:
    KApiCommand(QObject* host, QObject* parent);
    ~KApiCommand() override;

    bool isTriggerable() const override;

    QString action() const;
    QString hyperlink() const;
    /// "insertpicture" and "open" hand the action to a host class; any other value does not.
    void setHyperlink(const QString& link);
    void setDetail(const QString& detail) override;
    /// Also clears the delegate.
    void reset() override;
    /// The command the action is handed to, or null.
    KCommand* delegateCommand() const { return m_delegate; }

public Q_SLOTS:
    void trigger() override;

public:
    /// A non-empty action is run by the host's macro command class.
    virtual void setMacroAction(const QString& action);

private:
    KCommand* _createDelegate(const char* className);
    QPointer<KCommand> m_delegate;
};

#endif // KAPICOMMAND_H
