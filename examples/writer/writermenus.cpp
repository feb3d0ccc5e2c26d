#include "writermenus.h"

#include <QDesktopServices>
#include <QMdiSubWindow>
#include <QMessageBox>

#include <kcommand.h>
#include <kcommands.h>
#include <kmdiarea.h>

#include "writerdocuments.h"
#include "writertips.h"
#include "writerwindow.h"

WriterMenuActions::WriterMenuActions(WriterWindow* window)
    : QObject(window)
    , m_window(window)
{
    KMdiArea* area = window->documents()->area();
    auto on = [this](const char* id, auto handler) {
        if (KCommand* cmd = m_window->commands()->command(QLatin1String(id)))
            connect(cmd, &KCommand::triggered, this, handler);
    };
    on("WindowNext", [area] { area->activateNextSubWindow(); });
    on("WindowPrevious", [area] { area->activatePreviousSubWindow(); });
    on("WindowCascade", [area] { area->cascadeSubWindows(true); });
    on("WindowTileH", [area] { area->horzTileSubWindows(true); });
    on("WindowTileV", [area] { area->vertTileSubWindows(true); });
    on("WindowMaximize", [area] { area->maxSizeSubWindows(); });
    on("WindowCloseAll", [area] { area->closeAllSubWindows(); });
    on("HelpContents", [] { QDesktopServices::openUrl(WriterTips::helpPage(QUrl())); });
    on("HelpAbout", [this] { QMessageBox::about(m_window, tr("About Norvik Writer"), aboutText()); });
}

QString WriterMenuActions::aboutText()
{
    return tr("<p><b>Norvik Writer</b></p>"
              "<p>A small text editor that shows what NorvikOfficeUI builds from a description: "
              "the ribbon or the classic menus and tool bars, documents in tabs, key tips, rich "
              "tips and the file menu.</p>");
}
