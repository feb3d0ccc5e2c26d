#include <ktestsupport.h>

#include <QDropEvent>
#include <QMenu>
#include <QMessageBox>
#include <QMimeData>
#include <QSignalBlocker>
#include <QStandardPaths>
#include <QTemporaryDir>
#include <QTextEdit>
#include <QTimer>

#include <kcommands.h>
#include <kmdiarea.h>
#include <kmenuwidget.h>
#include <kpopupwidget.h>
#include <krbfilemenu.h>
#include <krbquicktoolbar.h>
#include <krbrecentfilepage.h>
#include <krbtabbar.h>
#include <krbtabfilebutton.h>
#include <krbtabwidget.h>
#include <ksettings.h>
#include <ktoolbutton.h>

#include "../keyboard/keytiptesthelpers.h"
#include "writerdocuments.h"
#include "writerfilemenu.h"
#include "writerpanels.h"
#include "writertestsupport.h"
#include "writerwindow.h"

// Norvik Writer's file menu with its recent documents, and its quick access bar as the user
// makes it their own.
class tst_WriterFileMenu : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void initTestCase();
    void fileButtonOpensTheFileMenu();
    void keyTipsOfTheFileMenu();
    void pinsOutliveTheRecentListAndARestart();
    void openingARecentDocument();
    void quickBarTakesCommandsFromTheRibbon();
    void quickBarRefusesForeignDrops();
    void quickBarIsKeptAcrossRestarts();
    void closeCommandClosesTheDocument();

private:
    KCommand* cmd(const char* id) { return m_window->commands()->command(QLatin1String(id)); }
    KRbTabFileButton* fileButton() { return m_window->headerBar()->tabBar()->findChild<KRbTabFileButton*>(); }
    KRbQuickToolbar* bar() { return m_window->fileMenu()->quickBar(); }
    WriterRecentFilesCommand* recent() { return qobject_cast<WriterRecentFilesCommand*>(cmd("RecentFiles")); }
    KToolButton* ribbonButton(const char* id);
    void drop(const QByteArray& format, const QByteArray& payload, int x);
    static QString answerNextBox(int* asked);

    QScopedPointer<WriterWindow> m_window;
    QTemporaryDir m_dir;
};

void tst_WriterFileMenu::initTestCase()
{
    const QStringList warnings = WriterTest::makeWindow(m_window);
    QVERIFY2(warnings.isEmpty(), qPrintable(warnings.join('\n')));
    m_window->resize(1200, 700);
    KApplication::instance()->bringFrontMainWindow(m_window.data());
    m_window->show();
    QVERIFY(QTest::qWaitForWindowExposed(m_window.data()));
    QVERIFY(bar());
}

KToolButton* tst_WriterFileMenu::ribbonButton(const char* id)
{
    for (KToolButton* button : m_window->headerBar()->findChildren<KToolButton*>())
        if (button->command() == cmd(id) && WriterFileMenu::ribbonCommandOf(button))
            return button;
    return nullptr;
}

void tst_WriterFileMenu::drop(const QByteArray& format, const QByteArray& payload, int x)
{
    QMimeData data;
    data.setData(QLatin1String(format), payload);
    const QPointF at(x, bar()->height() / 2);
    QDragEnterEvent enter(at.toPoint(), Qt::CopyAction, &data, Qt::LeftButton, Qt::NoModifier);
    QCoreApplication::sendEvent(bar(), &enter);
    if (!enter.isAccepted())
        return;
    QDropEvent dropEvent(at, Qt::CopyAction, &data, Qt::LeftButton, Qt::NoModifier);
    QCoreApplication::sendEvent(bar(), &dropEvent);
}

void tst_WriterFileMenu::fileButtonOpensTheFileMenu()
{
    const QString a = KTestSupport::writeFile(m_dir.filePath("a.txt"), "A\n");
    const QString b = KTestSupport::writeFile(m_dir.filePath("b.txt"), "B\n");
    QVERIFY(m_window->openFile(a));
    QVERIFY(m_window->openFile(b));

    fileButton()->popupRainbowMenu();
    QTRY_VERIFY(fileButton()->popup()->isVisible());
    auto* menu = qobject_cast<KRbFileMenu*>(fileButton()->popup()->contentWidget());
    QVERIFY(menu);
    QStringList left;
    for (int i = 0; i < menu->getLeftMenu()->count(); ++i)
        if (KCommand* sub = menu->getLeftMenu()->command()->subCommand(i))
            left << sub->text();
    QCOMPARE(left, QStringList({"New", "Open", "Save", "Save As", "", "Print Preview", "Page Setup",
                                "Protect Document", "", "Close"}));
    // The page shows the documents of this session, the last one first.
    KRbRecentFilePage* page = menu->getRecentWidget();
    QVERIFY(page);
    QCOMPARE(page->listWidget()->count(), 2);
    QCOMPARE(page->listWidget()->item(0)->text(), QStringLiteral("b.txt"));
    QStringList bottom;
    for (KRbFileMenuButton* button : menu->bottomWidget()->buttons())
        bottom << button->text();
    QCOMPARE(bottom, QStringList({"Keyboard Shortcuts", "Exit Writer"}));
    fileButton()->popup()->hide();
}

void tst_WriterFileMenu::keyTipsOfTheFileMenu()
{
    using namespace KeyTipTest;
    m_window->activateWindow();
    QVERIFY(QTest::qWaitForWindowActive(m_window.data()));
    const QString first = KTestSupport::writeFile(m_dir.filePath("first.txt"), "1\n");
    const QString second = KTestSupport::writeFile(m_dir.filePath("second.txt"), "2\n");
    recent()->setStrings({first, second});
    // Alt, F: the recent documents numbered, the file menu's keys; 2 opens the second one.
    // The documents opened before left a maximized document whose resizing must not end it.
    QStringList fileKeys;
    Script script({[&] { QTest::keyClick(topLevel(), Qt::Key_F); },
                   [&] {
                       fileKeys = keys(topLevel());
                       QTest::keyClick(topLevel(), Qt::Key_2);
                   }});
    tapAlt(m_window->editor());
    QTRY_VERIFY(script.finished());
    QCOMPARE(fileKeys, QStringList({"1", "2", "N", "O", "S", "A", "V", "G", "D", "C", "K", "X"}));
    QTRY_VERIFY(!fileButton()->popup()->isVisible());
    QCOMPARE(m_window->filePath(), QFileInfo(second).absoluteFilePath());
}

void tst_WriterFileMenu::pinsOutliveTheRecentListAndARestart()
{
    auto* page = qobject_cast<WriterRecentPageCommand*>(cmd("RecentPage"));
    QVERIFY(page);
    QStringList files;
    for (const char* name : {"one.txt", "two.txt", "three.txt"})
        files << KTestSupport::writeFile(m_dir.filePath(QLatin1String(name)), "x\n");
    recent()->setStrings(files);
    page->fixFile(files.at(2));
    page->fixFile(files.at(0));
    QCOMPARE(page->fixedFileList(), QStringList({files.at(2), files.at(0)}));
    QCOMPARE(page->unfixedFileList(), QStringList({files.at(1)}));

    // The recent list lets a pinned document go: the page still has it.
    recent()->setStrings({files.at(1)});
    QCOMPARE(page->fileList(), QStringList({files.at(1), files.at(2), files.at(0)}));
    // Removing it from the page unpins it.
    page->removeFile(1);
    QCOMPARE(page->fixedFileList(), QStringList({files.at(0)}));

    // Next start: a page made afresh reads the pins back, in order.
    page->fixFile(files.at(1));
    WriterRecentPageCommand restarted(nullptr, nullptr);
    restarted.setRecentCommand(recent());
    restarted.setSettingsKey(QStringLiteral("Writer/PinnedFiles"));
    QCOMPARE(restarted.fixedFileList(), QStringList({files.at(0), files.at(1)}));

    // Clear All empties both lists, in the settings too.
    page->clearFiles();
    QVERIFY(page->fileList().isEmpty());
    WriterRecentPageCommand afterClear(nullptr, nullptr);
    afterClear.setSettingsKey(QStringLiteral("Writer/PinnedFiles"));
    QVERIFY(afterClear.fixedFileList().isEmpty());
}

QString tst_WriterFileMenu::answerNextBox(int* asked)
{
    QTimer::singleShot(0, [asked] {
        if (auto* box = qobject_cast<QMessageBox*>(QApplication::activeModalWidget())) {
            ++*asked;
            box->accept();
        }
    });
    return QString();
}

void tst_WriterFileMenu::openingARecentDocument()
{
    auto* page = qobject_cast<WriterRecentPageCommand*>(cmd("RecentPage"));
    const QString kept = KTestSupport::writeFile(m_dir.filePath("kept.txt"), "Kept text\n");
    const QString gone = m_dir.filePath("gone.txt");
    recent()->setStrings({kept, gone});

    page->openFile(0);
    QCOMPARE(m_window->filePath(), QFileInfo(kept).absoluteFilePath());
    QCOMPARE(m_window->editor()->toPlainText(), QStringLiteral("Kept text\n"));

    // A document that is gone: the writer says so, and drops it from the list.
    int asked = 0;
    answerNextBox(&asked);
    page->openFile(1);
    QCOMPARE(asked, 1);
    QVERIFY(!page->fileList().contains(gone));
    QCOMPARE(m_window->filePath(), QFileInfo(kept).absoluteFilePath());
}

void tst_WriterFileMenu::quickBarTakesCommandsFromTheRibbon()
{
    const QStringList start{"FileSave", "EditUndo", "EditRedo"};
    QCOMPARE(m_window->fileMenu()->quickBarIds(), start);
    m_window->headerBar()->setCurrentItem(0);
    KToolButton* bold = ribbonButton("FormatBold");
    QVERIFY(bold);

    // The ribbon control's context menu adds it at the end, once.
    QContextMenuEvent menuEvent(QContextMenuEvent::Mouse, QPoint(4, 4), bold->mapToGlobal(QPoint(4, 4)));
    QCoreApplication::sendEvent(bold, &menuEvent);
    QMenu* menu = bold->findChild<QMenu*>();
    QVERIFY(menu);
    QTRY_VERIFY(menu->isVisible());
    QAction* add = menu->actions().value(0);
    QVERIFY(add);
    QCOMPARE(add->text(), QStringLiteral("&Add to Quick Access Toolbar"));
    add->trigger();
    menu->close();
    QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
    QVERIFY(!bold->findChild<QMenu*>()); // the menu goes when it closes
    QCOMPARE(m_window->fileMenu()->quickBarIds(), start + QStringList("FormatBold"));
    QCoreApplication::sendEvent(bold, &menuEvent);
    QMenu* again = bold->findChild<QMenu*>();
    QVERIFY(again);
    QVERIFY(!again->actions().value(0)->isEnabled());
    again->close();
    QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);

    // Dragged from the ribbon and dropped on the first entry: it goes first.
    QVERIFY(!WriterFileMenu::ribbonCommandOf(bar()->barWidgets().value(0))); // the bar is no ribbon page
    QScopedPointer<QMimeData> data(WriterFileMenu::dragData(cmd("FormatItalic")));
    drop("application/drag-toolbar-action", data->data("application/drag-toolbar-action"),
         bar()->barWidgets().value(0)->geometry().left() + 1);
    QCOMPARE(m_window->fileMenu()->quickBarIds(),
             QStringList({"FormatItalic", "FileSave", "EditUndo", "EditRedo", "FormatBold"}));
    // Dropping an entry of the bar further right moves it there.
    drop("application/drag-toolbar-action", "FormatItalic", bar()->barWidgets().value(3)->geometry().right() - 1);
    QCOMPARE(m_window->fileMenu()->quickBarIds(),
             QStringList({"FileSave", "EditUndo", "EditRedo", "FormatItalic", "FormatBold"}));

    // The bar's own context menu removes one.
    QWidget* undo = bar()->barWidgets().value(1);
    QTest::mouseRelease(undo, Qt::RightButton, {}, QPoint(3, 3));
    QTRY_VERIFY(bar()->contextMenu()->isVisible());
    bar()->contextMenu()->actions().value(0)->trigger();
    bar()->contextMenu()->close();
    QCOMPARE(m_window->fileMenu()->quickBarIds(), QStringList({"FileSave", "EditRedo", "FormatItalic", "FormatBold"}));
}

void tst_WriterFileMenu::quickBarRefusesForeignDrops()
{
    const QStringList before = m_window->fileMenu()->quickBarIds();
    {
        KWarningCatcher warnings;
        drop("text/plain", "FormatUnderline", 2); // another program's text
        drop("application/drag-toolbar-action", "NoSuchCommand", 2);
        drop("application/drag-toolbar-action", "", 2);
        QVERIFY(warnings.messages().isEmpty());
    }
    QCOMPARE(m_window->fileMenu()->quickBarIds(), before);
}

void tst_WriterFileMenu::quickBarIsKeptAcrossRestarts()
{
    // Every change so far went to the settings as it happened.
    const QStringList saved = m_window->fileMenu()->quickBarIds();
    QVERIFY(saved.contains(QStringLiteral("FormatBold")));
    // A fresh start: the description's bar, until the user's list is read back.
    {
        const QSignalBlocker quiet(bar());
        bar()->reset();
    }
    QCOMPARE(m_window->fileMenu()->quickBarIds(), QStringList({"FileSave", "EditUndo", "EditRedo"}));
    // Meanwhile a command the user had put there left the program.
    {
        KSettings settings;
        settings.setValue(QStringLiteral("Writer/QuickBar/count"), saved.size() + 1);
        settings.setValue(QStringLiteral("Writer/QuickBar/item%1").arg(saved.size() + 1),
                          QStringLiteral("RetiredCommand"));
    }
    KWarningCatcher warnings;
    QScopedPointer<WriterFileMenu> restarted(new WriterFileMenu(m_window.data()));
    QCOMPARE(warnings.messages(),
             QStringList("Quick access bar: the saved command RetiredCommand is no longer known."));
    QCOMPARE(restarted->quickBarIds(), saved);
}

void tst_WriterFileMenu::closeCommandClosesTheDocument()
{
    KMdiArea* area = m_window->documents()->area();
    cmd("FileNew")->trigger();
    const int tabs = area->tabBarEx()->count();
    m_window->editor()->document()->setModified(false);
    cmd("FileClose")->trigger();
    QCOMPARE(area->tabBarEx()->count(), tabs - 1);
}

NORVIK_TEST_MAIN(tst_WriterFileMenu)
#include "tst_writerfilemenu.moc"
