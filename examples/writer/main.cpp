// Norvik Writer: a small text editor built only on NorvikOfficeUI's public interface.
//
//   norvik-writer [FILE]                 opens FILE
//   norvik-writer --screenshot OUT.png   shows the window, waits until it is drawn and idle,
//                                        saves a picture of it and exits
//   norvik-writer --base-color "#217346" tints the theme with that colour for this run
#include <QCommandLineParser>
#include <QDir>
#include <QTextEdit>
#include <QTimer>
#include <QWindow>
#include <cstdio>

#include <kapplication.h>
#include <kapptheme.h>

#include "writerwindow.h"

namespace {

class WriterApplication : public KApplication
{
public:
    using KApplication::KApplication;
    int currentLanguage() override { return 1033; } // en_US
};

const char* const kSample =
    "# Norvik Writer\n"
    "A small editor that shows what the framework builds from a description.\n"
    "\n"
    "## Commands\n"
    "New, Open, Save and the editing commands come from ui/writer.xml.\n"
    "Undo, Redo, Cut, Copy and Paste follow the state of this document.\n"
    "\n"
    "## Format\n"
    "Bold, Italic and Underline follow the text under the cursor; save as .html to keep them.\n"
    "Recent lists the files you opened or saved, also after a restart.\n"
    "\n"
    "## Panels and colours\n"
    "The outline on the left lists the lines that start with #.\n"
    "The properties on the right count what you type.\n"
    "The Colour bar tints the whole window, and the choice is kept.\n";

} // namespace

int main(int argc, char** argv)
{
    WriterApplication app(argc, argv);
    QCoreApplication::setApplicationName(QStringLiteral("Norvik Writer"));
    app.setProductName(QStringLiteral("NorvikWriter"));

    QCommandLineParser parser;
    parser.addHelpOption();
    QCommandLineOption screenshot(QStringLiteral("screenshot"),
                                  QStringLiteral("Save a picture of the window to <file> and exit."),
                                  QStringLiteral("file"));
    parser.addOption(screenshot);
    QCommandLineOption baseColor(QStringLiteral("base-color"),
                                 QStringLiteral("Tint the theme with <color> for this run (not saved)."),
                                 QStringLiteral("color"));
    parser.addOption(baseColor);
    parser.addPositionalArgument(QStringLiteral("file"), QStringLiteral("A text file to open."));
    parser.process(app);

    if (!app.setupXml(QStringLiteral("ui/writer.xml"))) {
        std::fprintf(stderr, "norvik-writer: cannot read its description ui/writer.xml\n");
        return 1;
    }

    // The base colour the user chose last time, or the theme's own.
    app.theme()->readBaseColor();
    const QColor requested(parser.value(baseColor));
    app.setThemeBaseColor(requested.isValid() ? requested : app.theme()->getBaseColor(), false);

    WriterWindow window;
    window.polishXml();
    window.bindCommands();
    app.bringFrontMainWindow(&window);
    QObject::connect(&app, &KApplication::lastMainWindowClosed, &app, &QCoreApplication::quit);

    if (!parser.positionalArguments().isEmpty())
        window.openFile(parser.positionalArguments().constFirst());
    else
        window.editor()->setPlainText(QString::fromUtf8(kSample));
    window.editor()->document()->setModified(false);
    window.show();

    if (parser.isSet(screenshot)) {
        const QString out = parser.value(screenshot);
        auto* poll = new QTimer(&app);
        QObject::connect(poll, &QTimer::timeout, &app, [&window, poll, out] {
            if (!window.windowHandle() || !window.windowHandle()->isExposed())
                return;
            poll->stop();
            // Give the idle rounds time to bring every bar up to date before the picture.
            QTimer::singleShot(800, &window, [&window, out] {
                const bool ok = window.grab().save(out);
                std::printf("%s %s\n", ok ? "screenshot saved to" : "could not save", qPrintable(out));
                QCoreApplication::exit(ok ? 0 : 2);
            });
        });
        poll->start(50);
    }
    const int rc = app.exec();
    app.removeMainWindow(&window);
    return rc;
}
