#ifndef KMENUCOMMAND_H
#define KMENUCOMMAND_H

#include <klistcommand.h>

class KTriggerCommand;

/**
 * A list for building menus in code rather than in the description. The host is also the
 * parent of the menu; sub-menus and items made here share the host and belong to it.
 */
class NORVIKOFFICEUI_EXPORT KMenuCommand : public KListCommand
{
    Q_OBJECT
public:
    explicit KMenuCommand(QObject* host);
    ~KMenuCommand() override;

    /// A sub-menu with its caption (an "&" marks the mnemonic), added at the end.
    KMenuCommand* addMenu(const QString& text);
    KMenuCommand* addMenu(const QIcon& icon, const QString& text);
    /// A clickable item with its caption, added at the end.
    KTriggerCommand* addMenuItem(const QString& text);
    KTriggerCommand* addMenuItem(const QIcon& icon, const QString& text);
    using KListCommand::addSeparator;
};

#endif // KMENUCOMMAND_H
