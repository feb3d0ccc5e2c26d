// Norvik Writer: a small text editor built only on NorvikOfficeUI's public interface.
//
//   norvik-writer [FILE...]              opens each FILE in a tab of its own
//   norvik-writer --screenshot OUT.png   shows the window, waits until it is drawn and idle,
//                                        saves a picture of it and exits
//   norvik-writer --base-color "#217346" tints the theme with that colour for this run
//   norvik-writer --classic              menus and tool bars instead of the ribbon
//   norvik-writer --system-frame         the window manager's frame instead of the program's
//   norvik-writer --width 1000 --screenshot-state table --screenshot OUT.png
//                                        a picture at that width, in one of the states
//                                        "collapsed", "popup" (collapsed, a tab opened),
//                                        "table" (the cursor in a table: the Table tab shows),
//                                        "filemenu" (the file menu open), "quickbar" (the
//                                        quick access bar overflowing, its panel open),
//                                        "menu" (with --classic: the Format menu open),
//                                        "tabN" (the N-th tab current, from 0), "keytips" (Alt
//                                        tapped), "keytips2" (then H: the Home tab's keys),
//                                        "keytipsF" (then F: the file menu's keys), "tip" (the
//                                        Bold button's rich tip), "styles" (a heading styled
//                                        from the styles gallery), "stylespopup" (the full
//                                        styles gallery open) or "colorpopup" (the font
//                                        colour's list open)
#include <QApplication>
#include <QCommandLineParser>
#include <QKeyEvent>
#include <QMouseEvent>
#include <QPixmap>
#include <QSignalBlocker>
#include <QScreen>
#include <QTextCursor>
#include <QDir>
#include <QFile>
#include <QTextEdit>
#include <QTimer>
#include <QWindow>
#include <cstdio>

#include <kapplication.h>
#include <kapptheme.h>
#include <kcolorctrl.h>
#include <kgallery.h>
#include <kgallerycommand.h>

#include <kcommand.h>
#include <kcommands.h>
#include <ktoolbutton.h>
#include <kmenubar.h>
#include <krbquicktoolbar.h>
#include <krbtabbar.h>
#include <krbtabfilebutton.h>
#include <krbtabbutton.h>
#include <krbtabwidget.h>
#include <kpopupwidget.h>

#include "writerfilemenu.h"
#include "writerribbon.h"
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
    "## The ribbon\n"
    "Home, Insert, Layout and View come from ui/writer.xml; a page is made when its tab first shows.\n"
    "Put the cursor in a table (Insert, Table) and the Table tab comes forward.\n"
    "Double-click a tab, or the arrow at the right, to collapse the ribbon.\n"
    "\n"
    "## Format\n"
    "Bold, Italic, Underline and the paragraph buttons follow the text under the cursor;\n"
    "save as .html to keep them. Recent lists the files you opened or saved.\n"
    "\n"
    "## Panels and colours\n"
    "The outline on the left lists the lines that start with #.\n"
    "The properties on the right count what you type.\n"
    "Layout, Colour tints the whole window, and the choice is kept.\n";

// Brings the window into the state a picture is asked of.
void prepareScreenshotState(WriterWindow& window, const QString& state)
{
    KRbTabWidget* ribbon = window.headerBar();
    bool isTabNumber = false;
    const int tab = state.startsWith(QLatin1String("tab")) ? state.mid(3).toInt(&isTabNumber) : -1;
    if (ribbon && isTabNumber) {
        ribbon->setCurrentItem(tab);
    } else if (state.startsWith(QLatin1String("keytips"))) {
        // Alt tapped as the user taps it; for the second level, then the Home tab's letter
        // ("keytips2") or the file button's ("keytipsF").
        auto key = [](QWidget* target, int code, Qt::KeyboardModifiers pressed, const QString& text) {
            QKeyEvent press(QEvent::KeyPress, code, pressed, text);
            QApplication::sendEvent(target, &press);
            QKeyEvent release(QEvent::KeyRelease, code, Qt::NoModifier, text);
            QApplication::sendEvent(target, &release);
        };
        if (state == QLatin1String("keytips2") || state == QLatin1String("keytipsF")) {
            const bool file = state == QLatin1String("keytipsF");
            QTimer::singleShot(300, &window, [&window, key, file] {
                QWidget* grabber = QWidget::keyboardGrabber();
                key(grabber ? grabber : &window, file ? Qt::Key_F : Qt::Key_H, Qt::NoModifier,
                    file ? QStringLiteral("f") : QStringLiteral("h"));
            });
        }
        window.activateWindow();
        // Once the window is active (the key tips leave when it is not), Alt as the X server
        // tells it: the press before Alt is down, the release with it.
        auto* poll = new QTimer(&window);
        QObject::connect(poll, &QTimer::timeout, &window, [&window, poll] {
            if (QApplication::activeWindow() != &window)
                return;
            poll->deleteLater();
            poll->stop();
            QWidget* target = QApplication::focusWidget() ? QApplication::focusWidget() : &window;
            QKeyEvent press(QEvent::KeyPress, Qt::Key_Alt, Qt::NoModifier);
            QApplication::sendEvent(target, &press);
            QKeyEvent release(QEvent::KeyRelease, Qt::Key_Alt, Qt::AltModifier);
            QApplication::sendEvent(target, &release);
        });
        poll->start(20);
    } else if (state == QLatin1String("tip")) {
        // The mouse resting on the Bold button: its rich tip comes up.
        KCommand* bold = window.commands()->command(QStringLiteral("FormatBold"));
        for (KToolButton* button : window.findChildren<KToolButton*>()) {
            if (button->command() != bold || !button->isVisible())
                continue;
            const QPoint centre = button->rect().center();
            QHelpEvent help(QEvent::ToolTip, centre, button->mapToGlobal(centre));
            QApplication::sendEvent(button, &help);
            break;
        }
    } else if (ribbon && state == QLatin1String("filemenu")) {
        // The file button pressed: the file menu drops down over the window.
        if (auto* button = ribbon->tabBar()->findChild<KRbTabFileButton*>())
            button->popupRainbowMenu();
    } else if (!ribbon && state == QLatin1String("menu")) {
        // The classic form's Format menu, opened by a press as the user's.
        if (auto* bar = window.findChild<KMenuBar*>()) {
            for (int i = 0; i < bar->count(); ++i) {
                KMenuBarItem* item = bar->itemAt(i);
                if (!item->command() || item->command()->property("id").toString() != QLatin1String("MenuFormat"))
                    continue;
                const QPointF centre = QRectF(item->geometry()).center();
                QMouseEvent press(QEvent::MouseButtonPress, centre, bar->mapToGlobal(centre), Qt::LeftButton,
                                  Qt::LeftButton, Qt::NoModifier);
                QApplication::sendEvent(bar, &press);
            }
        }
    } else if (ribbon && state == QLatin1String("quickbar")) {
        // A bar fuller than its room, its overflow panel open. Shown for the picture only:
        // with the bar's signals blocked, the user's saved bar stays as it is.
        if (KRbQuickToolbar* bar = window.fileMenu()->quickBar()) {
            const QSignalBlocker quiet(bar);
            for (const char* id : {"FileOpen", "FileNew", "EditCut", "EditCopy", "EditPaste", "FormatBold",
                                   "FormatItalic", "FormatUnderline", "InsertTable", "InsertPicture",
                                   "InsertLink", "EditFind", "ViewZoomIn", "ViewZoomOut", "FilePrintPreview"})
                bar->showCommand(window.commands()->command(QLatin1String(id)), -1);
            QTimer::singleShot(300, bar, [bar] { bar->showQuickPanel(); });
        }
    } else if (state == QLatin1String("styles") || state == QLatin1String("stylespopup")) {
        // A heading made by the gallery, as a click on its cell makes it.
        if (auto* styles = qobject_cast<KGalleryCommand*>(window.commands()->command(QStringLiteral("FormatStyles")))) {
            window.editor()->moveCursor(QTextCursor::Start);
            if (KGalleryAbstractModel* model = styles->dataSource()) {
                model->fecthItems();
                model->clickIndex(1);
            }
        }
        if (state == QLatin1String("stylespopup")) {
            for (KGalleryInline* band : window.findChildren<KGalleryInline*>()) {
                if (band->isVisible())
                    band->extendButtonClicked();
            }
        }
    } else if (state == QLatin1String("colorpopup")) {
        for (KColorCtrl* ctrl : window.findChildren<KColorCtrl*>()) {
            if (ctrl->isVisible()) {
                ctrl->popup();
                break;
            }
        }
    } else if (state == QLatin1String("table")) {
        window.editor()->moveCursor(QTextCursor::End);
        window.editor()->append(QString());
        window.ribbonActions()->insertTable(3, 3);
        window.editor()->insertPlainText(QStringLiteral("Chapter"));
    } else if (ribbon && (state == QLatin1String("collapsed") || state == QLatin1String("popup"))) {
        ribbon->setStatus(KRbSubTabBar::Collapsed, true);
        // A press on the Insert tab, as the user's: the page floats over the document.
        if (KRbTabButton* tab = state == QLatin1String("popup") ? ribbon->tabBar()->tabButtonAt(1) : nullptr) {
            const QPointF centre = QRectF(tab->rect()).center();
            QMouseEvent press(QEvent::MouseButtonPress, centre, tab->mapToGlobal(centre), Qt::LeftButton,
                              Qt::LeftButton, Qt::NoModifier);
            QApplication::sendEvent(tab, &press);
            QMouseEvent release(QEvent::MouseButtonRelease, centre, tab->mapToGlobal(centre), Qt::LeftButton,
                                Qt::NoButton, Qt::NoModifier);
            QApplication::sendEvent(tab, &release);
        }
    }
}

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
    QCommandLineOption classic(QStringLiteral("classic"), QStringLiteral("Menus and tool bars instead of the ribbon."));
    parser.addOption(classic);
    QCommandLineOption systemFrame(QStringLiteral("system-frame"),
                                   QStringLiteral("The window manager's frame instead of the program's own."));
    parser.addOption(systemFrame);
    QCommandLineOption width(QStringLiteral("width"), QStringLiteral("Start <pixels> wide."), QStringLiteral("pixels"));
    parser.addOption(width);
    QCommandLineOption state(QStringLiteral("screenshot-state"),
                             QStringLiteral("Before the picture: \"collapsed\", \"popup\", \"table\", \"tabN\", "
                                            "\"keytips\", \"keytips2\", \"keytipsF\", \"tip\", \"filemenu\", \"quickbar\", "
                                            "\"menu\" (classic form), \"styles\", \"stylespopup\" or \"colorpopup\"."),
                             QStringLiteral("state"));
    parser.addOption(state);
    parser.addPositionalArgument(QStringLiteral("files"), QStringLiteral("Text files to open, each in a tab."),
                                 QStringLiteral("[files...]"));
    parser.process(app);

    // The description holds both forms; the category picks one while it loads.
    if (parser.isSet(classic))
        app.setCategory(QStringLiteral("classic"));
    if (!app.setupXml(QStringLiteral("ui/writer.xml"))) {
        std::fprintf(stderr, "norvik-writer: cannot read its description ui/writer.xml\n");
        return 1;
    }

    // The base colour the user chose last time, or the theme's own.
    app.theme()->readBaseColor();
    const QColor requested(parser.value(baseColor));
    app.setThemeBaseColor(requested.isValid() ? requested : app.theme()->getBaseColor(), false);

    // The program's picture, from the icon theme the package list installs.
    for (int size : {16, 22, 32}) {
        const QString path = QStringLiteral("/usr/share/icons/Tango/%1x%1/apps/accessories-text-editor.png").arg(size);
        if (QFile::exists(path)) {
            QIcon icon = QApplication::windowIcon();
            icon.addFile(path);
            QApplication::setWindowIcon(icon);
        }
    }

    WriterWindow window;
    window.polishXml();
    window.bindCommands();
    // The program draws its own frame: caption buttons in the tab row (or a title row of
    // their own in the classic form), a title to move it by, a shadow to resize it by.
    window.setOwnFrame(!parser.isSet(systemFrame));
    app.bringFrontMainWindow(&window);
    QObject::connect(&app, &KApplication::lastMainWindowClosed, &app, &QCoreApplication::quit);

    for (const QString& file : parser.positionalArguments()) {
        if (!window.openFile(file))
            std::fprintf(stderr, "norvik-writer: cannot read %s\n", qPrintable(file));
    }
    if (parser.positionalArguments().isEmpty())
        window.editor()->setPlainText(QString::fromUtf8(kSample));
    window.editor()->document()->setModified(false);
    if (parser.isSet(width))
        window.resize(parser.value(width).toInt(), window.height());
    window.show();

    if (parser.isSet(screenshot)) {
        const QString out = parser.value(screenshot);
        const QString shotState = parser.value(state);
        auto* poll = new QTimer(&app);
        QObject::connect(poll, &QTimer::timeout, &app, [&window, poll, out, shotState] {
            if (!window.windowHandle() || !window.windowHandle()->isExposed())
                return;
            poll->stop();
            prepareScreenshotState(window, shotState);
            // Give the idle rounds time to bring every bar up to date before the picture.
            QTimer::singleShot(800, &window, [&window, out, shotState] {
                // A popped-up ribbon floats in a window of its own: take the screen there.
                const bool floating = shotState == QLatin1String("popup") || shotState == QLatin1String("tip")
                    || shotState == QLatin1String("filemenu") || shotState == QLatin1String("quickbar")
                    || shotState == QLatin1String("menu") || shotState == QLatin1String("stylespopup")
                    || shotState == QLatin1String("colorpopup")
                    || shotState.startsWith(QLatin1String("keytips"));
                // The window and whatever floats over or beside it.
                QRect area = window.frameGeometry();
                for (QWidget* top : QApplication::topLevelWidgets())
                    if (top != &window && top->isVisible())
                        area |= top->frameGeometry();
                const QPixmap picture = floating && window.screen()
                    ? window.screen()->grabWindow(0, area.x(), area.y(), area.width(), area.height())
                    : window.grab();
                const bool ok = picture.save(out);
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
