#ifndef KRBTABWIDGETCOMMAND_H
#define KRBTABWIDGETCOMMAND_H

#include <QPointer>

#include <klistcommand.h>

/**
 * The ribbon as a command: its sub-commands are the categories, one tab each. It names the
 * file button's command and the two commands of the tab row's right corner, and says whether
 * the groups show their titles and their corner (dialog launcher) buttons.
 *
 *     <KRbTabWidgetCommand id="Ribbon" fileCommand="FileMenu" rightCornerCommand="Help">
 *       <command idQ="HomeTab"/> ...
 *     </KRbTabWidgetCommand>
 */
class NORVIKOFFICEUI_EXPORT KRbTabWidgetCommand : public KListCommand
{
    Q_OBJECT
    Q_PROPERTY(KCommand* fileCommand READ fileCommand WRITE setFileCommand)
    Q_PROPERTY(bool titleVisible READ titleVisible WRITE setTitleVisible)
    Q_PROPERTY(bool arrowVisible READ arrowVisible WRITE setArrowVisible)
    Q_PROPERTY(KCommand* rightCornerExtentCommand READ rightCornerExtentCommand WRITE setRightCornerExtentCommand)
    Q_PROPERTY(KCommand* rightCornerCommand READ rightCornerCommand WRITE setRightCornerCommand)
public:
    Q_INVOKABLE KRbTabWidgetCommand(QObject* host, QObject* parent);
    ~KRbTabWidgetCommand() override;

    /// The file menu's command; without it the ribbon has no file button.
    KCommand* fileCommand() const { return m_fileCommand.data(); }
    void setFileCommand(KCommand* cmd) { m_fileCommand = cmd; }
    /// The groups show their titles (default true).
    bool titleVisible() const { return m_titleVisible; }
    void setTitleVisible(bool visible) { m_titleVisible = visible; }
    /// The groups show their corner buttons (default true).
    bool arrowVisible() const { return m_arrowVisible; }
    void setArrowVisible(bool visible) { m_arrowVisible = visible; }
    /// A bar of commands in the tab row, at its right end.
    KCommand* rightCornerExtentCommand() const { return m_rightCornerExtentCommand.data(); }
    void setRightCornerExtentCommand(KCommand* cmd) { m_rightCornerExtentCommand = cmd; }
    /// A command whose widget stands at the right of the top row.
    KCommand* rightCornerCommand() const { return m_rightCornerCommand.data(); }
    void setRightCornerCommand(KCommand* cmd) { m_rightCornerCommand = cmd; }

private:
    QPointer<KCommand> m_fileCommand;
    bool m_titleVisible = true;
    bool m_arrowVisible = true;
    QPointer<KCommand> m_rightCornerExtentCommand;
    QPointer<KCommand> m_rightCornerCommand;
};

#endif // KRBTABWIDGETCOMMAND_H
