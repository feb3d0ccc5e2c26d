#ifndef KTOOLBARPOPUPMENUCOMMAND_H
#define KTOOLBARPOPUPMENUCOMMAND_H

#include <klistcommand.h>

/**
 * A drop-down list in a tool bar. It updates its items and hides itself when none of them
 * is visible; it never shows itself again, so once hidden it stays hidden until something
 * else shows it.
 */
class NORVIKOFFICEUI_EXPORT KToolBarPopupMenuCommand : public KListCommand
{
    Q_OBJECT
public:
    Q_INVOKABLE KToolBarPopupMenuCommand(QObject* host, QObject* parent);
    ~KToolBarPopupMenuCommand() override;

    void update() override;
};

#endif // KTOOLBARPOPUPMENUCOMMAND_H
