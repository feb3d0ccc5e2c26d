#include "writertips.h"

#include <QCoreApplication>
#include <QDesktopServices>

#include <kcommand.h>
#include <kcommands.h>

#include "writerwindow.h"

namespace {
const char* const kHelpScheme = "writerhelp";
} // namespace

WriterTips::WriterTips(WriterWindow* window)
    : QObject(window)
{
    QSet<KCommand*> seen;
    if (KCommand* ribbon = window->commands()->command(QStringLiteral("Ribbon")))
        _nameTips(ribbon, seen);
    QDesktopServices::setUrlHandler(QLatin1String(kHelpScheme), this, "openHelp");
}

WriterTips::~WriterTips()
{
    QDesktopServices::unsetUrlHandler(QLatin1String(kHelpScheme));
}

void WriterTips::_nameTips(KCommand* command, QSet<KCommand*>& seen)
{
    if (!command || seen.contains(command))
        return;
    seen.insert(command);
    const QString id = command->property("id").toString();
    // Only the lookup key is set here; the file is read when the first tip is asked for.
    if (!id.isEmpty() && command->customTip().isEmpty())
        command->setCustomTip(id);
    for (int i = 0; i < command->count(); ++i)
        _nameTips(command->subCommand(i), seen);
}

QUrl WriterTips::helpPage(const QUrl& link)
{
    QUrl page = QUrl::fromLocalFile(QCoreApplication::applicationDirPath() + QStringLiteral("/res/help/index.html"));
    if (!link.path().isEmpty())
        page.setFragment(link.path());
    return page;
}

void WriterTips::openHelp(const QUrl& link)
{
    QDesktopServices::openUrl(helpPage(link));
}
