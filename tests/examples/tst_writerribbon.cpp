#include <ktestsupport.h>

#include <QStackedWidget>
#include <QStandardPaths>
#include <QTextEdit>
#include <QTextList>
#include <QTextTable>

#include <kcommands.h>
#include <kdragtoolbar.h>
#include <krbcategory.h>
#include <krbtabbar.h>
#include <krbtabbutton.h>
#include <krbtabwidget.h>
#include <ksettings.h>

#include "writerribbon.h"
#include "writerwindow.h"

// Norvik Writer in its ribbon form (the form it starts in): the tabs its description declares,
// the Table tab that follows the cursor, and the editor's actions behind the ribbon.
class tst_WriterRibbon : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void initTestCase();
    void ribbonReplacesTheToolBars();
    void tableTabFollowsTheCursor();
    void tableCommandsEditTheTable();
    void collapseCommandsFollowTheRibbon();
    void findAndReplace();
    void paragraphCommandsShowTheParagraph();
    void fullScreenTradesTheRibbonForItsBar();

private:
    KCommand* cmd(const char* id) { return m_window->commands()->command(id); }
    QTextEdit* editor() { return m_window->editor(); }
    KRbTabWidget* ribbon() { return m_window->headerBar(); }
    QScopedPointer<WriterWindow> m_window;
};

void tst_WriterRibbon::initTestCase()
{
    QStandardPaths::setTestModeEnabled(true);
    KSettings().remove(QStringLiteral("Writer/RecentFiles"));
    KWarningCatcher warnings;
    QVERIFY(KApplication::instance()->setupXml(QStringLiteral(NORVIK_WRITER_UI_DIR "/writer.xml")));
    m_window.reset(new WriterWindow);
    m_window->polishXml();
    m_window->bindCommands();
    QVERIFY2(warnings.messages().isEmpty(), qPrintable(warnings.messages().join('\n')));
    m_window->resize(1200, 700);
    m_window->show();
    QVERIFY(QTest::qWaitForWindowExposed(m_window.data()));
}

void tst_WriterRibbon::ribbonReplacesTheToolBars()
{
    QVERIFY(ribbon());
    QCOMPARE(m_window->toolBarCount(), 0);
    QStringList tabs;
    for (int i = 0; ribbon()->tabBar()->tabButtonAt(i); ++i)
        tabs << ribbon()->tabBar()->tabButtonAt(i)->text();
    QCOMPARE(tabs, QStringList({"Home", "Insert", "Layout", "View", "Table"}));
    QVERIFY(ribbon()->tabBar()->tabButtonAt(4)->isHidden());
    QVERIFY(ribbon()->tabBar()->fileButton());
    // Only the page in sight was made; its groups are the Home tab's.
    QCOMPARE(ribbon()->findChildren<KRbCategory*>().size(), 1);
    QCOMPARE(ribbon()->stack()->count(), 1);
    QCOMPARE(ribbon()->pageOf(cmd("TabHome")), ribbon()->currentPage());
}

void tst_WriterRibbon::tableTabFollowsTheCursor()
{
    cmd("FileNew")->trigger();
    editor()->insertPlainText("Before the table");
    KCommand* table = cmd("table");
    QVERIFY(table);
    QVERIFY(!table->isVisible());
    cmd("InsertTable")->trigger();
    QVERIFY(editor()->textCursor().currentTable());
    QVERIFY(table->isVisible());
    QCOMPARE(ribbon()->currentIndex(), 4); // the tab comes forward as it appears
    QTRY_VERIFY(ribbon()->tabBar()->tabButtonAt(4)->isVisible());
    // Out of the table: the tab goes, and the first tab takes over.
    editor()->moveCursor(QTextCursor::Start);
    QVERIFY(!table->isVisible());
    QCOMPARE(ribbon()->currentIndex(), 0);
    QTRY_VERIFY(ribbon()->tabBar()->tabButtonAt(4)->isHidden());
}

void tst_WriterRibbon::tableCommandsEditTheTable()
{
    cmd("FileNew")->trigger();
    m_window->ribbonActions()->insertTable(2, 2);
    QTextTable* table = editor()->textCursor().currentTable();
    QVERIFY(table);
    cmd("TableRowBelow")->trigger();
    QCOMPARE(table->rows(), 3);
    cmd("TableColumnRight")->trigger();
    QCOMPARE(table->columns(), 3);
    cmd("TableDeleteColumn")->trigger();
    QCOMPARE(table->columns(), 2);
    cmd("TableMerge")->trigger(); // no selection: the cell and the one at its right
    QCOMPARE(table->cellAt(0, 0).columnSpan(), 2);
    cmd("TableDelete")->trigger();
    QVERIFY(!editor()->textCursor().currentTable());
    QVERIFY(!cmd("table")->isVisible());
}

void tst_WriterRibbon::collapseCommandsFollowTheRibbon()
{
    QCOMPARE(ribbon()->status(), KRbSubTabBar::Expanded);
    const int expandedHeight = ribbon()->sizeHint().height();
    cmd("RibbonCollapse")->trigger();
    QCOMPARE(ribbon()->status(), KRbSubTabBar::Collapsed);
    QVERIFY(ribbon()->sizeHint().height() < expandedHeight);
    QVERIFY(cmd("RibbonCollapseToggle")->checkedHint());
    QCOMPARE(cmd("RibbonCollapse")->text(), QStringLiteral("Pin the Ribbon"));
    // A double click on a tab pins it again, and the commands follow.
    ribbon()->setStatus(KRbSubTabBar::Expanded, true);
    QVERIFY(!cmd("RibbonCollapseToggle")->checkedHint());
    QCOMPARE(cmd("RibbonCollapse")->text(), QStringLiteral("Collapse the Ribbon"));
    cmd("RibbonCollapseToggle")->trigger();
    QCOMPARE(ribbon()->status(), KRbSubTabBar::Collapsed);
    cmd("RibbonCollapseToggle")->trigger();
    QCOMPARE(ribbon()->status(), KRbSubTabBar::Expanded);
}

void tst_WriterRibbon::findAndReplace()
{
    cmd("FileNew")->trigger();
    editor()->setPlainText("one two one three one");
    WriterRibbonActions* actions = m_window->ribbonActions();
    editor()->moveCursor(QTextCursor::End);
    QVERIFY(actions->findNext("two")); // round from the start
    QCOMPARE(editor()->textCursor().selectedText(), QStringLiteral("two"));
    QVERIFY(!actions->findNext("four"));
    QCOMPARE(editor()->textCursor().selectedText(), QStringLiteral("two")); // the cursor stays
    QCOMPARE(actions->replaceAll("one", "1"), 3);
    QCOMPARE(editor()->toPlainText(), QStringLiteral("1 two 1 three 1"));
    editor()->undo(); // one step takes back every replacement
    QCOMPARE(editor()->toPlainText(), QStringLiteral("one two one three one"));
    QCOMPARE(actions->replaceAll("", "x"), 0);
}

void tst_WriterRibbon::paragraphCommandsShowTheParagraph()
{
    cmd("FileNew")->trigger();
    editor()->setPlainText("first\nsecond");
    editor()->moveCursor(QTextCursor::Start);
    QVERIFY(cmd("ParaAlignLeft")->checkedHint());
    cmd("ParaAlignCenter")->trigger();
    QCOMPARE(editor()->alignment() & Qt::AlignHorizontal_Mask, Qt::AlignHCenter);
    QVERIFY(cmd("ParaAlignCenter")->checkedHint());
    QVERIFY(!cmd("ParaAlignLeft")->checkedHint());
    cmd("ParaBullets")->trigger();
    QVERIFY(editor()->textCursor().currentList());
    QVERIFY(cmd("ParaBullets")->checkedHint());
    cmd("ParaNumbering")->trigger(); // the list changes its style
    QCOMPARE(editor()->textCursor().currentList()->format().style(), QTextListFormat::ListDecimal);
    QVERIFY(!cmd("ParaBullets")->checkedHint());
    cmd("ParaNumbering")->trigger(); // and the same list again ends it
    QVERIFY(!editor()->textCursor().currentList());
    // The second line never changed.
    editor()->moveCursor(QTextCursor::End);
    QVERIFY(cmd("ParaAlignLeft")->checkedHint());
}

void tst_WriterRibbon::fullScreenTradesTheRibbonForItsBar()
{
    cmd("ViewFullScreen")->trigger();
    QVERIFY(m_window->isFullScreen());
    QVERIFY(ribbon()->isHidden());
    QVERIFY(m_window->fullScreenBar());
    QVERIFY(m_window->fullScreenBar()->isVisibleTo(m_window.data()));
    cmd("CloseFullScreen")->trigger();
    QVERIFY(!m_window->isFullScreen());
    QVERIFY(ribbon()->isVisibleTo(m_window.data()));
    QVERIFY(m_window->fullScreenBar()->isHidden());
}

NORVIK_TEST_MAIN(tst_WriterRibbon)
#include "tst_writerribbon.moc"
