#include "krecentfilepagecommand.h"

#include <krbrecentfilepage.h>

KRecentFilePageCommand::KRecentFilePageCommand(QObject* host, QObject* parent)
    : KCommand(host, parent)
{
}

KRecentFilePageCommand::~KRecentFilePageCommand() = default;

bool KRecentFilePageCommand::isTriggerable() const
{
    return true;
}

QWidget* KRecentFilePageCommand::createExtendedWidget(QWidget* parent)
{
    return new KRbRecentFilePage(this, parent);
}

bool KRecentFilePageCommand::isFileFixed(const QString& path)
{
    return fixedFileList().contains(path, Qt::CaseSensitive);
}
