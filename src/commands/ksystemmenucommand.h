#ifndef KSYSTEMMENUCOMMAND_H
#define KSYSTEMMENUCOMMAND_H

#include <klistcommand.h>
#include <ktriggercommand.h>

class KMdiArea;
class QMdiSubWindow;

/**
 * The window commands of an MDI area's current document, for the menu bar of a maximised
 * document. The host is the KMdiArea; with no current document they do nothing.
 */
class NORVIKOFFICEUI_EXPORT KMDIRestoreCommand : public KTriggerCommand
{
    Q_OBJECT
public:
    KMDIRestoreCommand(QObject* host, QObject* parent);

protected:
    void onTriggered() override;
};

class NORVIKOFFICEUI_EXPORT KMDIMinimizeCommand : public KTriggerCommand
{
    Q_OBJECT
public:
    KMDIMinimizeCommand(QObject* host, QObject* parent);

protected:
    void onTriggered() override;
};

class NORVIKOFFICEUI_EXPORT KMDIMaximizeCommand : public KTriggerCommand
{
    Q_OBJECT
public:
    KMDIMaximizeCommand(QObject* host, QObject* parent);

protected:
    void onTriggered() override;
};

class NORVIKOFFICEUI_EXPORT KMDICloseCommand : public KTriggerCommand
{
    Q_OBJECT
public:
    KMDICloseCommand(QObject* host, QObject* parent);

protected:
    void onTriggered() override;
};

/// Makes the area's next document current.
class NORVIKOFFICEUI_EXPORT KMDINextCommand : public KTriggerCommand
{
    Q_OBJECT
public:
    KMDINextCommand(QObject* host, QObject* parent);

protected:
    void onTriggered() override;
};

/**
 * The system menu of a maximised document: Restore, Move, Size, Minimize, Maximize, Close.
 * Its icon is the current document's.
 */
class NORVIKOFFICEUI_EXPORT KSystemMenuCommand : public KListCommand
{
    Q_OBJECT
public:
    KSystemMenuCommand(QObject* host, QObject* parent);
    ~KSystemMenuCommand() override;
    void update() override;
};

namespace KMdiCommandHelp {
/// The current document of the area that hosts command; null without one.
NORVIKOFFICEUI_EXPORT QMdiSubWindow* currentSubWindow(const KCommand* command);
}

#endif // KSYSTEMMENUCOMMAND_H
