#ifndef KCOMMANDOBJECTBRIDGE_H
#define KCOMMANDOBJECTBRIDGE_H

#include <QPointer>
#include <utility>

#include <kcommand.h>

/**
 * Ties an object of Qt class T (no widget: an action, a layout item) to a KCommand. It only
 * keeps the command, handed in by the derived class, and builds nothing. The command is not
 * owned and is held through a guard: command() is null once the command is gone.
 */
template <class T>
class KCommandObjectBridge : public T
{
public:
    /// The remaining arguments construct T.
    template <class... Args>
    explicit KCommandObjectBridge(KCommand* command, Args&&... args)
        : T(std::forward<Args>(args)...)
        , m_command(command)
    {
    }

    KCommand* command() const { return m_command.data(); }

private:
    QPointer<KCommand> m_command;
};

#endif // KCOMMANDOBJECTBRIDGE_H
