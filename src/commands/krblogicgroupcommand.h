#ifndef KRBLOGICGROUPCOMMAND_H
#define KRBLOGICGROUPCOMMAND_H

#include <klistcommand.h>

/**
 * A group of a ribbon tab. It shows while any of its items is visible; it reads their
 * visibility as it stands and does not update them itself (their widgets do).
 */
class NORVIKOFFICEUI_EXPORT KRbLogicGroupCommand : public KListCommand
{
    Q_OBJECT
public:
    Q_INVOKABLE KRbLogicGroupCommand(QObject* host, QObject* parent);
    ~KRbLogicGroupCommand() override;

    void update() override;
};

#endif // KRBLOGICGROUPCOMMAND_H
