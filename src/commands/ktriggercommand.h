#ifndef KTRIGGERCOMMAND_H
#define KTRIGGERCOMMAND_H

#include <kapicommand.h>

/**
 * The ordinary clickable item of a bar or menu. Its clone is always a plain KTriggerCommand
 * that forwards its triggered() to this command's trigger(), so classes derived from it
 * keep their behaviour through the clones.
 */
class NORVIKOFFICEUI_EXPORT KTriggerCommand : public KApiCommand
{
    Q_OBJECT
public:
    Q_INVOKABLE KTriggerCommand(QObject* host, QObject* parent);
    ~KTriggerCommand() override;

    KCommand* clone(QObject* host, QObject* parent) override;

    // The button of a trigger command (createPocketWidget) comes with the framework's tool
    // button; until then the base class's widget stands in.
};

#endif // KTRIGGERCOMMAND_H
