// The smallest host: an application object, a description, a window, the event loop.
#include <norvikofficeui.h>

#include <QFile>
#include <QHBoxLayout>
#include <QProxyStyle>
#include <QStyleFactory>
#include <QTemporaryDir>
#include <QTimer>
#include <QWidget>
#include <cstdio>

namespace {

QStringList s_warnings;

void collectWarnings(QtMsgType type, const QMessageLogContext&, const QString& message)
{
    // The offscreen platform's notes on what it cannot do are no fault of the program.
    if (type == QtWarningMsg && !message.startsWith(QLatin1String("This plugin does not support")))
        s_warnings << message;
}

// The host's own style, which knows nothing of the framework.
class HostStyle : public QProxyStyle
{
public:
    HostStyle() : QProxyStyle(QStyleFactory::create(QStringLiteral("Fusion"))) {}
};

// A framework button in the host's layout and under the host's style: it draws the stock
// button without complaint, and an icon it gains widens it. 0 when all holds.
int checkButtonUnderHostStyle()
{
    HostStyle style;
    QWidget box;
    auto* layout = new QHBoxLayout(&box);
    auto* button = new KToolButton;
    button->setStyle(&style);
    button->setButtonStyle(KToolButton::StyleIcon | KToolButton::StyleText);
    button->setText(QStringLiteral("Save"));
    layout->addWidget(button);
    layout->addStretch();
    box.show();
    QCoreApplication::processEvents();
    const int textOnly = button->width();
    QPixmap red(16, 16);
    red.fill(Qt::red);
    button->setIcon(QIcon(red));
    QCoreApplication::processEvents();
    if (button->width() <= textOnly) {
        std::fprintf(stderr, "button kept its width %d after gaining an icon\n", textOnly);
        return 6;
    }
    const QImage image = button->grab().toImage();
    bool redDrawn = false;
    for (int y = 0; y < image.height() && !redDrawn; ++y)
        for (int x = 0; x < image.width() && !redDrawn; ++x)
            redDrawn = image.pixelColor(x, y) == QColor(Qt::red);
    if (!redDrawn) {
        std::fprintf(stderr, "the button under the host's style drew no icon\n");
        return 7;
    }
    if (!s_warnings.isEmpty()) {
        std::fprintf(stderr, "warnings: %s\n", qPrintable(s_warnings.join(QLatin1String("; "))));
        return 8;
    }
    return 0;
}

} // namespace

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
    qInstallMessageHandler(collectWarnings);
    if (const int failed = checkButtonUnderHostStyle())
        return failed;
    QWidget window;
    window.show();
    QTimer::singleShot(0, &app, &QCoreApplication::quit);
    const int rc = app.exec();
    std::printf("installed host ran with %d document(s)\n", int(app.getDoms().size()));
    return rc;
}
