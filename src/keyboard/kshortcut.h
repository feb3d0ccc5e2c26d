#ifndef KSHORTCUT_H
#define KSHORTCUT_H

#include <QKeySequence>
#include <QShortcut>
#include <QString>

#include <norvikofficeui_export.h>

class KCommand;
class KCommands;

/// How a shortcut finds the command that it fires. Other values leave it without command.
enum ShortcutCategory {
    CommandShortcut = 1, ///< the command of that name in the registry; all of the description
    MacroShortcut = 2,   ///< a new trigger command running the named macro action
    StyleShortcut = 5,   ///< the registry's "StyleShortcut" command, told the name on activation
    SymbolShortcut = 6   ///< a new "KxSymbolButtonCommand"
};

/**
 * One accelerator: a QShortcut (window context) that knows which command it fires. The
 * command is settled once, in the constructor, by the category; it may be null, and then
 * the shortcut still takes its key but execute() does nothing. Neither the parent widget nor
 * the registry is owned; a command made for categories 2 and 6 belongs to the parent widget.
 */
class NORVIKOFFICEUI_EXPORT KShortcut : public QShortcut
{
    Q_OBJECT
public:
    KShortcut(const QKeySequence& key, QWidget* parent, KCommands* commands, const QString& name,
              ShortcutCategory category);
    ~KShortcut() override;

    KCommand* command() const;
    ShortcutCategory getCategory() const;
    /// Changes the field only; the command is not looked up again.
    void setCateory(ShortcutCategory category);
    QString getCommand() const;
    void setCommand(const QString& name);
    QString getCommandParam() const;
    void setCommandParam(const QString& param);

    /// Refreshes the command (update()) and triggers it when it is triggerable and enabled.
    void execute();

private:
    struct Private;
    Private* d;
};

#endif // KSHORTCUT_H
