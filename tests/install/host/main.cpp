// The smallest host: an application object, a description, a window, the event loop.
#include <norvikofficeui.h>

#include <QFile>
#include <QTemporaryDir>
#include <QTimer>
#include <QWidget>
#include <cstdio>

int main(int argc, char** argv)
{
    KApplication app(argc, argv);
    QTemporaryDir dir;
    const QString path = dir.filePath("ui.xml");
    QFile f(path);
    if (!f.open(QIODevice::WriteOnly))
        return 2;
    f.write("<ui><commands/></ui>");
    f.close();
    if (!app.setupXml(path))
        return 3;
    KCommand command(&app, nullptr);
    command.setDrawText("Sa&ve...");
    if (command.getDrawText() != QLatin1String("Sa&ve..."))
        return 4;
    QWidget window;
    window.show();
    QTimer::singleShot(0, &app, &QCoreApplication::quit);
    const int rc = app.exec();
    std::printf("installed host ran with %d document(s)\n", int(app.getDoms().size()));
    return rc;
}
