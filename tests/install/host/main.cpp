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
    QFile attributes(dir.filePath("attributes.xml"));
    QFile theme(dir.filePath("theme.xml"));
    QFile f(path);
    if (!f.open(QIODevice::WriteOnly) || !attributes.open(QIODevice::WriteOnly)
        || !theme.open(QIODevice::WriteOnly))
        return 2;
    attributes.write("<r><attributes/></r>");
    attributes.close();
    theme.write("<t><style name='2013'/><theme><style class='common'>"
                "<color name='window' ds='0' dv='0'/></style></theme></t>");
    theme.close();
    f.write("<ui><attributes path='attributes.xml'/><theme path='theme.xml'/>"
            "<commands><KTriggerCommand id='Save' text='Save'/></commands></ui>");
    f.close();
    if (!app.setupXml(path))
        return 3;
    app.setThemeBaseColor(QColor("#336699"), false);
    if (app.theme()->getColor("common", "window", QColor()) != QColor("#336699"))
        return 5;
    KCommand* save = app.commands()->command("Save");
    if (!save || save->text() != QLatin1String("Save"))
        return 4;
    QWidget window;
    window.show();
    QTimer::singleShot(0, &app, &QCoreApplication::quit);
    const int rc = app.exec();
    std::printf("installed host ran with %d document(s)\n", int(app.getDoms().size()));
    return rc;
}
