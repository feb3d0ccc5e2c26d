#include <ktestsupport.h>

#include <QDockWidget>
#include <QListWidget>
#include <QStandardPaths>
#include <QTemporaryDir>
#include <QTextEdit>

#include <kapptheme.h>
#include <kcommands.h>
#include <kcommandwrapaction.h>
#include <kdragmenubar.h>
#include <kdrawhelpfunc.h>
#include <kmenubar.h>
#include <ksystemmenucommand.h>
#include <ksettings.h>
#include <ktoolbar.h>
#include <kmenuwidget.h>
#include <kpopupwidget.h>
#include <ktoolbutton.h>

#include "writerdocuments.h"
#include "writerpanels.h"
#include "writertestsupport.h"
#include "writerwindow.h"

// Starts Norvik Writer's main window from its real description and drives it through the
// commands the description declares. What the framework does with a description is proved by
// its own tests; here: the demo's description builds, and the demo's features work.
class tst_Writer : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void initTestCase();
    void descriptionBuildsTheWindow();
    void commandsReachTheHost();
    void changedDocumentIsMarked();
    void formatTogglesFollowTheCursor();
    void richTextRoundTrip();
    void themeColoursRetintAndPersist();
    void recentFilesSurviveARestart();
    void fullScreenToggles();
    void insertMenuThroughItsSubmenu();
    void menuBarOffersTheRibbonsCommands();

private:
    KCommand* cmd(const char* id) { return m_window->commands()->command(id); }
    QTextEdit* editor() { return m_window->editor(); }
    QScopedPointer<WriterWindow> m_window;
};

void tst_Writer::initTestCase()
{
    KApplication::instance()->setCategory(QStringLiteral("classic")); // menus and tool bars
    // The description is clean: nothing in it draws a warning.
    const QStringList warnings = WriterTest::makeWindow(m_window);
    QVERIFY2(warnings.isEmpty(), qPrintable(warnings.join('\n')));
    m_window->show();
    QVERIFY(QTest::qWaitForWindowExposed(m_window.data()));
}

void tst_Writer::descriptionBuildsTheWindow()
{
    WriterWindow* w = m_window.data();
    QCOMPARE(w->caption(), QString("Norvik Writer"));
    QCOMPARE(w->toolBarCount(), 5);
    KToolBar* file = w->findToolBar(cmd("FileBar"));
    QVERIFY(file);
    QCOMPARE(KTestSupport::actionIds(file),
             QStringList({"FileNew", "FileOpen", "FileSave", "FileSaveAs", "", "RecentFiles", "",
                          "FilePageSetup", "FileProtect"}));
    QDockWidget* outline = w->findDockWidget("OutlinePanel");
    QVERIFY(outline);
    QVERIFY(w->findDockWidget("PropertiesPanel"));
    QCOMPARE(w->dockWidgetArea(outline), Qt::LeftDockWidgetArea);
    QVERIFY(qobject_cast<WriterOutlineView*>(outline->widget()));
}

void tst_Writer::commandsReachTheHost()
{
    WriterWindow* w = m_window.data();
    QTemporaryDir dir;
    const QString path = KTestSupport::writeFile(dir.filePath("notes.txt"), "# Title\nbody\n## Part\n");
    QVERIFY(w->openFile(path));
    auto* outline = qobject_cast<WriterOutlineView*>(w->findDockWidget("OutlinePanel")->widget());
    QCOMPARE(outline->list()->count(), 2);
    QCOMPARE(outline->list()->item(1)->text().trimmed(), QString("Part"));

    editor()->append("more");
    cmd("FileSave")->trigger();
    QFile saved(path);
    QVERIFY(saved.open(QIODevice::ReadOnly));
    QVERIFY(saved.readAll().endsWith("more"));

    // The edit commands follow the document and act on it.
    cmd("FileNew")->trigger();
    QVERIFY(editor()->toPlainText().isEmpty());
    QVERIFY(w->filePath().isEmpty());
    QVERIFY(!cmd("EditUndo")->isEnabled());
    QVERIFY(!cmd("EditCopy")->isEnabled());
    QTest::keyClicks(editor(), "hello");
    QVERIFY(cmd("EditUndo")->isEnabled());
    editor()->selectAll();
    QVERIFY(cmd("EditCopy")->isEnabled());
    cmd("EditCut")->trigger();
    QVERIFY(editor()->toPlainText().isEmpty());
    cmd("EditPaste")->trigger();
    QCOMPARE(editor()->toPlainText(), QString("hello"));
}

void tst_Writer::changedDocumentIsMarked()
{
    // The title carries Qt's placeholder for the mark, and the window says whether it is due.
    WriterWindow* w = m_window.data();
    QTemporaryDir dir;
    const QString path = KTestSupport::writeFile(dir.filePath("letter.txt"), "Dear reader\n");
    QVERIFY(w->openFile(path));
    QCOMPARE(w->windowTitle(), QString("letter.txt[*] - Norvik Writer"));
    QVERIFY(!w->isWindowModified());
    QTest::keyClicks(editor(), "x");
    QVERIFY(w->isWindowModified());
    QVERIFY(w->saveFile(path));
    QVERIFY(!w->isWindowModified());
    QTest::keyClicks(editor(), "y");
    cmd("FileNew")->trigger();
    QVERIFY(!w->isWindowModified());
    QCOMPARE(w->windowTitle(), QString("Untitled[*] - Norvik Writer"));
}

void tst_Writer::formatTogglesFollowTheCursor()
{
    WriterWindow* w = m_window.data();
    KCommand* bold = cmd("FormatBold");
    KCommand* italic = cmd("FormatItalic");
    KToolBar* bar = w->findToolBar(cmd("FormatBar"));
    QVERIFY(bold);
    QVERIFY(italic);
    QVERIFY(bar);
    const int index = KTestSupport::actionIds(bar).indexOf("FormatBold");
    auto* boldButton = qobject_cast<KToolButton*>(bar->widgetForAction(bar->actions().value(index)));
    QVERIFY(boldButton);
    w->newFile();
    QTest::keyClicks(editor(), "plain ");
    QVERIFY(!bold->checkedHint());
    QTest::mouseClick(boldButton, Qt::LeftButton); // the bar's button reaches the host
    QVERIFY(bold->checkedHint());
    QVERIFY(boldButton->isChecked());
    QTest::keyClicks(editor(), "strong");
    italic->trigger();
    QTest::keyClicks(editor(), "both");

    // Bold and italic toggles as the cursor stands inside "plain", "strong" and "both".
    auto formatsAt = [&](int position) {
        QTextCursor cursor = editor()->textCursor();
        cursor.setPosition(position);
        editor()->setTextCursor(cursor);
        return QString("%1%2%3").arg(bold->checkedHint()).arg(boldButton->isChecked()).arg(italic->checkedHint());
    };
    QCOMPARE(formatsAt(3), QString("000"));
    QCOMPARE(formatsAt(9), QString("110"));
    QCOMPARE(formatsAt(editor()->toPlainText().size()), QString("111"));
    bold->trigger(); // toggling again takes the format off for what comes next
    QVERIFY(!bold->checkedHint());
}

void tst_Writer::richTextRoundTrip()
{
    WriterWindow* w = m_window.data();
    QTemporaryDir dir;
    w->newFile();
    QTest::keyClicks(editor(), "a ");
    cmd("FormatBold")->trigger();
    QTest::keyClicks(editor(), "bold");
    const QString html = dir.filePath("page.html"), text = dir.filePath("page.txt");
    QVERIFY(w->saveFile(html));
    QVERIFY(w->saveFile(text));
    QFile plain(text);
    QVERIFY(plain.open(QIODevice::ReadOnly));
    QCOMPARE(plain.readAll(), QByteArray("a bold"));

    QVERIFY(w->openFile(html));
    QTextCursor cursor = editor()->textCursor();
    cursor.setPosition(4);
    editor()->setTextCursor(cursor);
    QVERIFY(cmd("FormatBold")->checkedHint());
    // A plain text file stays plain, markup and all.
    KTestSupport::writeFile(text, "<b>not bold</b>");
    QVERIFY(w->openFile(text));
    QCOMPARE(editor()->toPlainText(), QString("<b>not bold</b>"));
}

void tst_Writer::themeColoursRetintAndPersist()
{
    KAppTheme* theme = KApplication::instance()->theme();
    KCommand* green = cmd("ThemeGreen");
    KCommand* blue = cmd("ThemeBlue");
    QVERIFY(green);
    QVERIFY(blue);
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

void tst_Writer::recentFilesSurviveARestart()
{
    WriterWindow* w = m_window.data();
    auto* recent = qobject_cast<WriterRecentFilesCommand*>(cmd("RecentFiles"));
    QVERIFY(recent);
    recent->setStrings({});
    QTemporaryDir dir;
    const QString a = QFileInfo(KTestSupport::writeFile(dir.filePath("a.txt"), "alpha")).absoluteFilePath();
    const QString b = QFileInfo(KTestSupport::writeFile(dir.filePath("b.txt"), "beta")).absoluteFilePath();
    QVERIFY(w->openFile(a));
    QVERIFY(w->openFile(b));
    QVERIFY(w->openFile(a));
    QCOMPARE(recent->getStrings(), QStringList({a, b}));
    QCOMPARE(recent->subCommand(1)->text(), QString("2 ") + b); // numbered, as the description asks

    // Choosing an entry opens its file.
    recent->subCommand(1)->trigger();
    QCOMPARE(editor()->toPlainText(), QString("beta"));
    QCOMPARE(w->filePath(), b);

    // The next start reads the same list from the settings.
    WriterRecentFilesCommand nextStart(w, nullptr);
    nextStart.setSettingsKey(recent->settingsKey());
    QCOMPARE(nextStart.getStrings(), recent->getStrings());
    recent->setStrings({});
}

void tst_Writer::fullScreenToggles()
{
    // The View bar's toggle takes the whole screen and gives it back; the close command of
    // the full-screen bar only leaves.
    WriterWindow* w = m_window.data();
    cmd("ViewFullScreen")->trigger();
    QVERIFY(w->isFullScreen());
    QVERIFY(w->windowState().testFlag(Qt::WindowFullScreen));
    QVERIFY(cmd("ViewFullScreen")->checkedHint());
    QVERIFY(w->menuBar()->isHidden()); // the document takes the menu bar's room too
    cmd("CloseFullScreen")->trigger();
    QVERIFY(!w->isFullScreen());
    QVERIFY(w->menuBar()->isVisible());
    QVERIFY(!w->windowState().testFlag(Qt::WindowFullScreen));
    QVERIFY(!cmd("ViewFullScreen")->checkedHint());
    cmd("CloseFullScreen")->trigger();
    QVERIFY(!w->isFullScreen());
}

void tst_Writer::insertMenuThroughItsSubmenu()
{
    // The Edit bar's Insert button drops the framework's menu; its Symbol submenu puts the
    // chosen character at the cursor.
    WriterWindow* w = m_window.data();
    KToolBar* edit = w->findToolBar(cmd("EditBar"));
    QVERIFY(edit);
    const QStringList ids = KTestSupport::actionIds(edit);
    const int index = ids.indexOf("InsertMenu");
    QVERIFY(index >= 0);
    auto* button = qobject_cast<KToolButton*>(edit->widgetForAction(edit->actions().at(index)));
    QVERIFY(button);
    cmd("FileNew")->trigger();
    QTest::mouseClick(button, Qt::LeftButton, {}, QPoint(4, 4));
    auto* popup = button->findChild<KPopupWidget*>();
    QVERIFY(popup);
    auto* menu = qobject_cast<KMenuWidget*>(popup->contentWidget());
    QVERIFY(menu);
    QCOMPARE(menu->count(), 3);
    auto* symbolRow = dynamic_cast<KMenuWidgetPopupItem*>(menu->itemAt(2));
    QVERIFY(symbolRow);
    symbolRow->showPopup(true);
    auto* symbols = qobject_cast<KMenuWidget*>(symbolRow->popupWidget()->contentWidget());
    QVERIFY(symbols);
    QCOMPARE(symbols->currentItem()->command(), cmd("InsertEmDash"));
    QTest::keyClick(symbols, Qt::Key_Return);
    QCOMPARE(editor()->toPlainText(), QString::fromUtf8("\u2014"));
    QVERIFY(!popup->isVisible());
}

void tst_Writer::menuBarOffersTheRibbonsCommands()
{
    KDragMenuBar* menuBar = m_window->menuBar();
    QVERIFY(menuBar);
    KMenuBar* bar = menuBar->menuBar();
    // The documents are maximised: the system menu first, the window buttons last.
    QStringList menus;
    for (int i = 0; i < bar->count(); ++i) {
        KMenuBarItem* item = bar->itemAt(i);
        if (item->isVisible() && qobject_cast<KMenuBarItem*>(item)->metaObject() == &KMenuBarItem::staticMetaObject)
            menus << item->command()->text();
    }
    QCOMPARE(menus, QStringList({"File", "Edit", "Insert", "Format", "View", "Window", "Help"}));
    QVERIFY(qobject_cast<KSystemMenuBarItem*>(bar->itemAt(0))->isVisible());

    // Every command on the ribbon's pages is in some menu (the ribbon's own collapse and
    // the font size box aside), so the classic form loses nothing.
    QSet<QString> inMenus;
    std::function<void(KCommand*)> walk = [&](KCommand* c) {
        for (int i = 0; c && i < c->count(); ++i) {
            KCommand* sub = c->subCommand(i);
            if (!sub)
                continue;
            inMenus.insert(sub->property("id").toString());
            walk(sub);
        }
    };
    walk(cmd("MainMenu"));
    QStringList missing;
    std::function<void(KCommand*)> ribbon = [&](KCommand* c) {
        for (int i = 0; c && i < c->count(); ++i) {
            KCommand* sub = c->subCommand(i);
            if (!sub)
                continue;
            const QString id = sub->property("id").toString();
            if (sub->count() > 0 && !inMenus.contains(id))
                ribbon(sub);
            else if (!id.isEmpty() && !inMenus.contains(id))
                missing << id;
        }
    };
    ribbon(cmd("Ribbon"));
    // The font boxes stand on the Format tool bar instead.
    for (const char* box : {"FormatFontSize", "FormatFontName"}) {
        QVERIFY(KTestSupport::actionIds(m_window->findToolBar(cmd("FormatBar"))).contains(QLatin1String(box)));
        missing.removeAll(QLatin1String(box));
    }
    missing.removeAll(QStringLiteral("RibbonCollapseToggle"));
    QVERIFY2(missing.isEmpty(), qPrintable(missing.join(", ")));

    // The Window menu arranges the documents, and the window items follow.
    cmd("FileNew")->trigger();
    cmd("WindowTileV")->trigger();
    QTRY_VERIFY(!bar->itemAt(0)->isVisible());
    cmd("WindowMaximize")->trigger();
    QTRY_VERIFY(bar->itemAt(0)->isVisible());
    const int before = m_window->documents()->pages().size();
    cmd("WindowNext")->trigger();
    m_window->documents()->currentPage()->document()->setModified(false);
    bar->mdiCommands().last()->trigger(); // the close button of the bar
    QCOMPARE(m_window->documents()->pages().size(), before - 1);
}

NORVIK_TEST_MAIN(tst_Writer)
#include "tst_writer.moc"
