#include "ksystemmenucommand.h"

#include <QApplication>
#include <QFileInfo>
#include <QMdiSubWindow>
#include <QStyle>

#include <kmdiarea.h>
#include <kseparatorcommand.h>

QMdiSubWindow* KMdiCommandHelp::currentSubWindow(const KCommand* command)
{
    auto* area = command ? qobject_cast<KMdiArea*>(command->host()) : nullptr;
    return area ? area->currentSubWindow() : nullptr;
}

namespace {

void setUp(KCommand* command, const char* text, QStyle::StandardPixmap pixmap)
{
    command->setText(QCoreApplication::translate("KSystemMenuCommand", text));
    command->setIcon(QApplication::style()->standardIcon(pixmap));
}

} // namespace

KMDIRestoreCommand::KMDIRestoreCommand(QObject* host, QObject* parent)
    : KTriggerCommand(host, parent)
{
    setUp(this, "Restore", QStyle::SP_TitleBarNormalButton);
}

void KMDIRestoreCommand::onTriggered()
{
    if (QMdiSubWindow* window = KMdiCommandHelp::currentSubWindow(this))
        window->showNormal();
}

KMDIMinimizeCommand::KMDIMinimizeCommand(QObject* host, QObject* parent)
    : KTriggerCommand(host, parent)
{
    setUp(this, "Minimize", QStyle::SP_TitleBarMinButton);
}

void KMDIMinimizeCommand::onTriggered()
{
    if (QMdiSubWindow* window = KMdiCommandHelp::currentSubWindow(this))
        window->showMinimized();
}

KMDIMaximizeCommand::KMDIMaximizeCommand(QObject* host, QObject* parent)
    : KTriggerCommand(host, parent)
{
    setUp(this, "Maximize", QStyle::SP_TitleBarMaxButton);
}

void KMDIMaximizeCommand::onTriggered()
{
    if (QMdiSubWindow* window = KMdiCommandHelp::currentSubWindow(this))
        window->showMaximized();
}

KMDICloseCommand::KMDICloseCommand(QObject* host, QObject* parent)
    : KTriggerCommand(host, parent)
{
    setUp(this, "Close", QStyle::SP_TitleBarCloseButton);
}

void KMDICloseCommand::onTriggered()
{
    if (QMdiSubWindow* window = KMdiCommandHelp::currentSubWindow(this))
        window->close();
}

KMDINextCommand::KMDINextCommand(QObject* host, QObject* parent)
    : KTriggerCommand(host, parent)
{
    setText(QCoreApplication::translate("KSystemMenuCommand", "Next Window"));
}

void KMDINextCommand::onTriggered()
{
    if (auto* area = qobject_cast<KMdiArea*>(host()))
        area->activateNextSubWindow();
}

KSystemMenuCommand::KSystemMenuCommand(QObject* host, QObject* parent)
    : KListCommand(host, parent)
{
    setText(QCoreApplication::translate("KSystemMenuCommand", "System Menu"));
    auto entry = [this](KCommand* command, const char* text, const char* key, bool enabled) {
        command->setText(QCoreApplication::translate("KSystemMenuCommand", text));
        command->setProperty("hotKey", QString::fromLatin1(key));
        command->setEnabled(enabled);
        addSubCommand(command);
        return command;
    };
    entry(new KMDIRestoreCommand(host, this), "Restore", "R", true);
    entry(new KTriggerCommand(host, this), "Move", "M", false);
    entry(new KTriggerCommand(host, this), "Size", "S", false);
    entry(new KMDIMinimizeCommand(host, this), "Minimize", "n", true);
    entry(new KMDIMaximizeCommand(host, this), "Maximize", "x", false);
    addSubCommand(KSeparatorCommand::instance());
    KCommand* close = entry(new KMDICloseCommand(host, this), "Close", "C", true);
    close->setShortcutHint(QStringLiteral("Ctrl+F4"));
    close->setProperty("default", true);
    addSubCommand(KSeparatorCommand::instance());
}

KSystemMenuCommand::~KSystemMenuCommand() = default;

void KSystemMenuCommand::update()
{
    QMdiSubWindow* window = KMdiCommandHelp::currentSubWindow(this);
    QIcon icon;
    // A document of the framework's shows the picture of its kind of file, as its tab does.
    if (auto* document = window ? qobject_cast<KSubWindow*>(window->widget()) : nullptr)
        icon = document->iconForSuffix(QFileInfo(document->filePath()).completeSuffix());
    if (icon.isNull() && window)
        icon = window->windowIcon();
    if (icon.isNull()) {
        if (auto* area = qobject_cast<QWidget*>(host()))
            icon = area->window()->windowIcon();
    }
    if (icon.isNull())
        icon = QApplication::style()->standardIcon(QStyle::SP_FileIcon);
    if (icon.cacheKey() != this->icon().cacheKey())
        setIcon(icon);
    KListCommand::update();
}
