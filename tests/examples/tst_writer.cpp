#include <ktestsupport.h>

#include <QDockWidget>
#include <QListWidget>
#include <QTextEdit>
#include <QStandardPaths>
#include <QTemporaryDir>
#include <QToolBar>

#include <kapptheme.h>
#include <ksettings.h>
#include <ktoolbutton.h>
#include <kcommands.h>
#include <kdrawhelpfunc.h>
#include <kcommandwrapaction.h>
#include <ktoolbar.h>

#include "writerpanels.h"
#include "writerwindow.h"

// Starts Norvik Writer's main window from its real description and drives it through the
// commands the description declares.
class tst_Writer : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void initTestCase();
    void barsAndDocksFromTheDescription();
    void commandsReachTheHost();
    void statesFollowTheDocument();
    void togglesShowAndHidePanels();
    void themeColoursRetintAndPersist();
    void buttonsShowCommands();
    void formatTogglesFollowTheCursor();
    void richTextRoundTrip();
    void recentFilesSurviveARestart();

private:
    QStringList actionIds(QToolBar* bar) const;
    QScopedPointer<WriterWindow> m_window;
};

void tst_Writer::initTestCase()
{
    QStandardPaths::setTestModeEnabled(true); // the chosen colour is saved in the settings
    KSettings().remove(QStringLiteral("Writer/RecentFiles")); // left by an earlier run
    KWarningCatcher warnings;
    QVERIFY(KApplication::instance()->setupXml(QStringLiteral(NORVIK_WRITER_UI_DIR "/writer.xml")));
    m_window.reset(new WriterWindow);
    m_window->polishXml();
    m_window->bindCommands();
    // The description is clean: nothing in it draws a warning.
    QVERIFY2(warnings.messages().isEmpty(), qPrintable(warnings.messages().join('\n')));
    m_window->show();
    QVERIFY(QTest::qWaitForWindowExposed(m_window.data()));
}

QStringList tst_Writer::actionIds(QToolBar* bar) const
{
    QStringList ids;
    for (QAction* a : bar->actions()) {
        auto* wrap = qobject_cast<KCommandWrapAction*>(a);
        ids << (wrap && wrap->command() ? wrap->command()->property("id").toString() : QStringLiteral("?"));
    }
    return ids;
}

void tst_Writer::barsAndDocksFromTheDescription()
{
    WriterWindow* w = m_window.data();
    QCOMPARE(w->caption(), QString("Norvik Writer"));
    QCOMPARE(w->toolBarCount(), 5);
    KToolBar* file = w->findToolBar(w->commands()->command("FileBar"));
    KToolBar* edit = w->findToolBar(w->commands()->command("EditBar"));
    QVERIFY(file && edit);
    QCOMPARE(w->dockArea()->toolBarArea(file), Qt::TopToolBarArea);
    QCOMPARE(actionIds(file), QStringList({"FileNew", "FileOpen", "FileSave", "FileSaveAs", "", "RecentFiles"}));
    // Separators are shared commands without an id.
    QCOMPARE(actionIds(edit), QStringList({"EditUndo", "EditRedo", "", "EditCut", "EditCopy", "EditPaste", "",
                                           "EditSelectAll"}));

    QDockWidget* outline = w->findDockWidget("OutlinePanel");
    QDockWidget* properties = w->findDockWidget("PropertiesPanel");
    QVERIFY(outline && properties);
    QCOMPARE(w->dockWidgetArea(outline), Qt::LeftDockWidgetArea);
    QCOMPARE(w->dockWidgetArea(properties), Qt::RightDockWidgetArea);
    QVERIFY(qobject_cast<WriterOutlineView*>(outline->widget()));
    QCOMPARE(outline->windowTitle(), QString("Outline"));

    // Window commands shadow nothing of the application's, and reach its commands.
    QVERIFY(w->commands()->command("FileNew"));
    QVERIFY(!KApplication::instance()->commands()->command("OutlinePanel"));
}

void tst_Writer::commandsReachTheHost()
{
    WriterWindow* w = m_window.data();
    QTemporaryDir dir;
    const QString path = KTestSupport::writeFile(dir.filePath("notes.txt"), "# Title\nbody\n## Part\n");
    QVERIFY(w->openFile(path));
    auto* outline = qobject_cast<WriterOutlineView*>(w->findDockWidget("OutlinePanel")->widget());
    QVERIFY(outline);
    QCOMPARE(outline->list()->count(), 2);
    QCOMPARE(outline->list()->item(1)->text().trimmed(), QString("Part"));

    w->editor()->append("more");
    w->commands()->command("FileSave")->trigger();
    QFile saved(path);
    QVERIFY(saved.open(QIODevice::ReadOnly));
    QVERIFY(saved.readAll().endsWith("more"));
    QVERIFY(!w->editor()->document()->isModified());

    w->commands()->command("FileNew")->trigger();
    QVERIFY(w->editor()->toPlainText().isEmpty());
    QVERIFY(w->filePath().isEmpty());
}

void tst_Writer::statesFollowTheDocument()
{
    WriterWindow* w = m_window.data();
    KCommands* cmds = w->commands();
    w->newFile();
    QVERIFY(!cmds->command("EditUndo")->isEnabled());
    QVERIFY(!cmds->command("EditCopy")->isEnabled());
    QTest::keyClicks(w->editor(), "hello");
    QVERIFY(cmds->command("EditUndo")->isEnabled());
    w->editor()->selectAll();
    QVERIFY(cmds->command("EditCopy")->isEnabled());
    cmds->command("EditCut")->trigger();
    QVERIFY(w->editor()->toPlainText().isEmpty());
    QVERIFY(cmds->command("EditPaste")->isEnabled());
    cmds->command("EditPaste")->trigger();
    QCOMPARE(w->editor()->toPlainText(), QString("hello"));
}

void tst_Writer::togglesShowAndHidePanels()
{
    WriterWindow* w = m_window.data();
    KCommand* panel = w->commands()->command("OutlinePanel");
    KCommand* toggle = w->commands()->command("ViewOutline");
    QDockWidget* dock = w->findDockWidget("OutlinePanel");
    QVERIFY(dock->isVisible());
    toggle->trigger();
    QVERIFY(!panel->isVisible());
    QVERIFY(!dock->isVisible());
    toggle->trigger();
    QVERIFY(dock->isVisible());

    KCommand* barToggle = w->commands()->command("ViewEditBar");
    KToolBar* edit = w->findToolBar(w->commands()->command("EditBar"));
    barToggle->trigger();
    QVERIFY(edit->isHidden());
    barToggle->trigger();
    QVERIFY(!edit->isHidden());
}

void tst_Writer::themeColoursRetintAndPersist()
{
    WriterWindow* w = m_window.data();
    KAppTheme* theme = KApplication::instance()->theme();
    KCommand* green = w->commands()->command("ThemeGreen");
    KCommand* blue = w->commands()->command("ThemeBlue");
    QVERIFY(green && blue);

    blue->trigger();
    const QColor blueWindow = KDrawHelpFunc::getColorFromTheme("common", "window");
    green->trigger();
    QCOMPARE(theme->getBaseColor(), QColor("#217346"));
    QVERIFY(green->checkedHint());
    QVERIFY(!blue->checkedHint());
    // Colours relative to the base follow it, and so does the application palette.
    const QColor greenWindow = KDrawHelpFunc::getColorFromTheme("common", "window");
    QVERIFY(greenWindow != blueWindow);
    QCOMPARE(QApplication::palette().color(QPalette::Window), greenWindow);

    // What the next start reads back.
    theme->setBaseColor(QColor("#123456"), false);
    theme->readBaseColor();
    QCOMPARE(theme->getBaseColor(), QColor("#217346"));
}

// The first tool button of the bar of listId that stands for the command cmdId.
static KToolButton* buttonFor(WriterWindow* w, const char* listId, const char* cmdId)
{
    KToolBar* bar = w->findToolBar(w->commands()->command(listId));
    if (!bar)
        return nullptr;
    for (QAction* a : bar->actions()) {
        auto* wrap = qobject_cast<KCommandWrapAction*>(a);
        if (wrap && wrap->command() && wrap->command()->property("id").toString() == QLatin1String(cmdId))
            return qobject_cast<KToolButton*>(bar->widgetForAction(a));
    }
    return nullptr;
}

void tst_Writer::buttonsShowCommands()
{
    WriterWindow* w = m_window.data();
    KToolButton* save = buttonFor(w, "FileBar", "FileSave");
    KToolButton* undo = buttonFor(w, "EditBar", "EditUndo");
    KToolButton* selectAll = buttonFor(w, "EditBar", "EditSelectAll");
    QVERIFY(save && undo && selectAll);
    // Icons come from the theme's icon folders; the caption shows its mnemonic in a bar.
    QVERIFY(!save->icon().isNull());
    QCOMPARE(save->text(), QString("&Save"));
    QVERIFY(!undo->needDrawText()); // icon only
    QVERIFY(save->width() > undo->width());

    // A click on the bar's button runs its command.
    w->newFile();
    QTest::keyClicks(w->editor(), "x");
    QTest::mouseClick(selectAll, Qt::LeftButton);
    QCOMPARE(w->editor()->textCursor().selectedText(), QString("x"));
}

void tst_Writer::formatTogglesFollowTheCursor()
{
    WriterWindow* w = m_window.data();
    KCommand* bold = w->commands()->command("FormatBold");
    KCommand* italic = w->commands()->command("FormatItalic");
    KToolButton* boldButton = buttonFor(w, "FormatBar", "FormatBold");
    QVERIFY(bold && italic && boldButton);
    w->newFile();
    QTest::keyClicks(w->editor(), "plain ");
    QVERIFY(!bold->checkedHint());
    QTest::mouseClick(boldButton, Qt::LeftButton);
    QVERIFY(bold->checkedHint());
    QVERIFY(boldButton->isChecked());
    QTest::keyClicks(w->editor(), "strong");
    italic->trigger();
    QTest::keyClicks(w->editor(), "both");

    // Bold and italic toggles as the cursor stands inside "plain", "strong" and "both".
    auto formatsAt = [&](int position) {
        QTextCursor cursor = w->editor()->textCursor();
        cursor.setPosition(position);
        w->editor()->setTextCursor(cursor);
        return QString("%1%2%3").arg(bold->checkedHint()).arg(boldButton->isChecked()).arg(italic->checkedHint());
    };
    QCOMPARE(formatsAt(3), QString("000"));
    QCOMPARE(formatsAt(9), QString("110"));
    QCOMPARE(formatsAt(w->editor()->toPlainText().size()), QString("111"));
    // Toggling again takes the format off for what comes next.
    bold->trigger();
    QVERIFY(!bold->checkedHint());
}

void tst_Writer::richTextRoundTrip()
{
    WriterWindow* w = m_window.data();
    QTemporaryDir dir;
    w->newFile();
    QTest::keyClicks(w->editor(), "a ");
    w->commands()->command("FormatBold")->trigger();
    QTest::keyClicks(w->editor(), "bold");
    const QString html = dir.filePath("page.html");
    const QString text = dir.filePath("page.txt");
    QVERIFY(w->saveFile(html));
    QVERIFY(w->saveFile(text));
    QFile plain(text);
    QVERIFY(plain.open(QIODevice::ReadOnly));
    QCOMPARE(plain.readAll(), QByteArray("a bold"));

    QVERIFY(w->openFile(html));
    QCOMPARE(w->editor()->toPlainText(), QString("a bold"));
    QTextCursor cursor = w->editor()->textCursor();
    cursor.setPosition(4);
    w->editor()->setTextCursor(cursor);
    QVERIFY(w->commands()->command("FormatBold")->checkedHint());
    // A plain text file stays plain, markup and all.
    KTestSupport::writeFile(text, "<b>not bold</b>");
    QVERIFY(w->openFile(text));
    QCOMPARE(w->editor()->toPlainText(), QString("<b>not bold</b>"));
}

void tst_Writer::recentFilesSurviveARestart()
{
    WriterWindow* w = m_window.data();
    auto* recent = qobject_cast<WriterRecentFilesCommand*>(w->commands()->command("RecentFiles"));
    QVERIFY(recent);
    recent->setStrings({});
    QTemporaryDir dir;
    const QString a = KTestSupport::writeFile(dir.filePath("a.txt"), "alpha");
    const QString b = KTestSupport::writeFile(dir.filePath("b.txt"), "beta");
    QVERIFY(w->openFile(a));
    QVERIFY(w->openFile(b));
    QVERIFY(w->openFile(a));
    QCOMPARE(recent->getStrings(), QStringList({QFileInfo(a).absoluteFilePath(), QFileInfo(b).absoluteFilePath()}));
    // Numbered entries, as the description asks.
    QCOMPARE(recent->subCommand(1)->text(), QString("2 ") + QFileInfo(b).absoluteFilePath());

    // Choosing an entry opens its file.
    recent->subCommand(1)->trigger();
    QCOMPARE(w->editor()->toPlainText(), QString("beta"));
    QCOMPARE(w->filePath(), QFileInfo(b).absoluteFilePath());

    // The next start reads the same list from the settings.
    WriterRecentFilesCommand nextStart(w, nullptr);
    nextStart.setSettingsKey(recent->settingsKey());
    QCOMPARE(nextStart.getStrings(), recent->getStrings());
    recent->setStrings({});
}

NORVIK_TEST_MAIN(tst_Writer)
#include "tst_writer.moc"
