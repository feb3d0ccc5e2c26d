#ifndef KRBFILEMENUCOMMAND_H
#define KRBFILEMENUCOMMAND_H

#include <QPointer>

#include <klistcommand.h>

/**
 * The file menu of the ribbon: its items make the left menu; the recent file command's
 * page fills the right side; switch, custom and quit commands make the bottom row.
 */
class NORVIKOFFICEUI_EXPORT KRbFileMenuCommand : public KListCommand
{
    Q_OBJECT
    Q_PROPERTY(KCommand* recentFileCommand READ recentFileCommand WRITE setRecentFileCommand)
    Q_PROPERTY(KCommand* switchCommand READ switchCommand WRITE setSwitchCommand)
    Q_PROPERTY(KCommand* customCommand READ customCommand WRITE setCustomCommand)
    Q_PROPERTY(KCommand* quitCommand READ quitCommand WRITE setQuitCommand)
    Q_PROPERTY(KCommand* classicCommand READ classicCommand WRITE setClassicCommand)
    Q_PROPERTY(QString curentProject READ curentProject WRITE setCurentProject)
public:
    Q_INVOKABLE KRbFileMenuCommand(QObject* host, QObject* parent);
    ~KRbFileMenuCommand() override;

    KCommand* recentFileCommand() const { return m_recentFileCommand.data(); }
    void setRecentFileCommand(KCommand* cmd) { m_recentFileCommand = cmd; }
    KCommand* switchCommand() const { return m_switchCommand.data(); }
    void setSwitchCommand(KCommand* cmd) { m_switchCommand = cmd; }
    KCommand* customCommand() const { return m_customCommand.data(); }
    void setCustomCommand(KCommand* cmd) { m_customCommand = cmd; }
    KCommand* quitCommand() const { return m_quitCommand.data(); }
    void setQuitCommand(KCommand* cmd) { m_quitCommand = cmd; }
    KCommand* classicCommand() const { return m_classicCommand.data(); }
    void setClassicCommand(KCommand* cmd) { m_classicCommand = cmd; }
    QString curentProject() const { return m_curentProject; }
    void setCurentProject(const QString& text) { m_curentProject = text; }

    QWidget* createPocketWidget(QWidget* parent) override;
    QWidget* createExtendedWidget(QWidget* parent) override;

private:
    QPointer<KCommand> m_recentFileCommand;
    QPointer<KCommand> m_switchCommand;
    QPointer<KCommand> m_customCommand;
    QPointer<KCommand> m_quitCommand;
    QPointer<KCommand> m_classicCommand;
    QString m_curentProject;
};

/// A titled menu for the right side of the file menu: menuCommand under extentText.
class NORVIKOFFICEUI_EXPORT KRBFileHelpMenuCommand : public KListCommand
{
    Q_OBJECT
    Q_PROPERTY(KCommand* menuCommand READ menuCommand WRITE setMenuCommand)
    Q_PROPERTY(QString extentText READ extentText WRITE setExtentText)
public:
    Q_INVOKABLE KRBFileHelpMenuCommand(QObject* host, QObject* parent);
    ~KRBFileHelpMenuCommand() override;

    KCommand* menuCommand() const { return m_menuCommand.data(); }
    void setMenuCommand(KCommand* cmd) { m_menuCommand = cmd; }
    QString extentText() const { return m_extentText; }
    void setExtentText(const QString& text) { m_extentText = text; }

    QWidget* createExtendedWidget(QWidget* parent) override;

private:
    QPointer<KCommand> m_menuCommand;
    QString m_extentText;
};

#endif // KRBFILEMENUCOMMAND_H
