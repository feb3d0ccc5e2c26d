#include <ktestsupport.h>

#include <QStackedWidget>
#include <QStandardPaths>
#include <QTextEdit>
#include <QTextBlock>
#include <QTextList>
#include <QTextTable>

#include <QTableWidget>

#include <kcolorctrl.h>
#include <kcommands.h>
#include <kgallery.h>
#include <kgallerycombobox.h>
#include <kgallerycommand.h>
#include <kmenuwidget.h>
#include <kpopupwidget.h>
#include <kscrollgalleryview.h>
#include <kkeysequenceedit.h>
#include <kshortcuts.h>
#include <kdragtoolbar.h>
#include <krbcategory.h>
#include <krbtabbar.h>
#include <krbtabbutton.h>
#include <krbtabwidget.h>
#include <ksettings.h>

#include "../keyboard/keytiptesthelpers.h"
#include "writergallery.h"
#include "writerkeyboard.h"
#include "writerribbon.h"
#include "writertestsupport.h"
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
    void keyTipsOfTheRibbon();
    void keysOfTheDescription();
    void stylesGalleryStylesTheParagraph();
    void colourAndFontBoxesFormatTheSelection();
    void fullScreenTradesTheRibbonForItsBar(); // last: the platform reports its state changes late

private:
    KCommand* cmd(const char* id) { return m_window->commands()->command(id); }
    QTextEdit* editor() { return m_window->editor(); }
    KRbTabWidget* ribbon() { return m_window->headerBar(); }
    QScopedPointer<WriterWindow> m_window;
};

void tst_WriterRibbon::initTestCase()
{
    const QStringList warnings = WriterTest::makeWindow(m_window);
    QVERIFY2(warnings.isEmpty(), qPrintable(warnings.join('\n')));
    m_window->resize(1200, 700);
    KApplication::instance()->bringFrontMainWindow(m_window.data());
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

void tst_WriterRibbon::stylesGalleryStylesTheParagraph()
{
    ribbon()->setCurrentItem(0);
    cmd("FileNew")->trigger();
    editor()->setPlainText("first\nsecond");
    editor()->moveCursor(QTextCursor::Start);
    KGalleryInline* band = nullptr;
    for (KGalleryInline* candidate : m_window->findChildren<KGalleryInline*>()) {
        if (candidate->command() == cmd("FormatStyles") && candidate->isVisible())
            band = candidate;
    }
    QVERIFY(band);
    QVERIFY(band->view());
    QCOMPARE(band->view()->count(), 7);
    // A click on the "Heading 1" cell styles the paragraph at the cursor, and only it.
    QTest::mouseClick(band->view(), Qt::LeftButton, Qt::NoModifier, band->view()->item(2)->gemetry().center());
    QTextBlock first = editor()->document()->firstBlock();
    QCOMPARE(QTextCursor(first).charFormat().fontPointSize(), 18.0);
    QCOMPARE(QTextCursor(first).charFormat().fontWeight(), int(QFont::Bold));
    QCOMPARE(WriterStyles::styleAt(editor()), 2);
    editor()->moveCursor(QTextCursor::End);
    QCOMPARE(WriterStyles::styleAt(editor()), 0);
    QVERIFY(editor()->textCursor().charFormat().fontPointSize() != 18.0);
    // The gallery follows the cursor.
    auto* styles = qobject_cast<KGalleryCommand*>(cmd("FormatStyles"));
    styles->update();
    QCOMPARE(styles->dataSource()->currentIndex(), 0);
    editor()->moveCursor(QTextCursor::Start);
    styles->update();
    QCOMPARE(styles->dataSource()->currentIndex(), 2);
    QVERIFY(band->view()->item(2)->getItemModel()->isChecked());

    // The full gallery carries "Clear formatting" below the cells: back to Normal.
    band->extendButtonClicked();
    QVERIFY(band->popup());
    auto* gallery = qobject_cast<KGallery*>(band->popup()->contentWidget());
    QVERIFY(gallery);
    QVERIFY(gallery->menuWidget());
    QCOMPARE(gallery->menuWidget()->count(), 1);
    QCOMPARE(gallery->menuWidget()->itemAt(0)->command()->text(), QStringLiteral("Clear formatting"));
    KGalleryView* full = static_cast<KScrollGalleryView*>(gallery->view())->view();
    QCOMPARE(full->count(), 7);
    QVERIFY(gallery->matchMenuItemHotkey("C"));
    QCOMPARE(WriterStyles::styleAt(editor()), 0);
    QCOMPARE(QTextCursor(editor()->document()->firstBlock()).charFormat().fontWeight(), int(QFont::Normal));
    band->popup()->hide();
}

void tst_WriterRibbon::colourAndFontBoxesFormatTheSelection()
{
    ribbon()->setCurrentItem(0);
    cmd("FileNew")->trigger();
    editor()->setPlainText("colour me");
    editor()->selectAll();
    KColorCtrl* fontColor = nullptr;
    KColorCtrl* highlight = nullptr;
    for (KColorCtrl* ctrl : m_window->findChildren<KColorCtrl*>()) {
        if (ctrl->defaultCommand() == cmd("FormatFontColor"))
            fontColor = ctrl;
        if (ctrl->defaultCommand() == cmd("FormatHighlight"))
            highlight = ctrl;
    }
    QVERIFY(fontColor);
    QVERIFY(highlight);
    const auto clickColour = [](KColorCtrl* ctrl, const QString& name) {
        KGalleryAbstractModel* model = ctrl->model();
        for (int i = 0; i < model->count(); ++i) {
            if (model->element(i)->text() == name)
                return model->clickIndex(i);
        }
        return false;
    };
    QVERIFY(clickColour(fontColor, "Blue"));
    QCOMPARE(editor()->textCursor().charFormat().foreground().color(), QColor(Qt::blue));
    QVERIFY(clickColour(highlight, "Yellow"));
    QCOMPARE(editor()->textCursor().charFormat().background().color(), QColor(Qt::yellow));
    // The highlight can be taken away; the font colour has no such entry.
    QVERIFY(highlight->getNoColor()->isVisible());
    QVERIFY(!fontColor->getNoColor()->isVisible());
    QVERIFY(clickColour(highlight, "No Color"));
    QCOMPARE(editor()->textCursor().charFormat().background().style(), Qt::NoBrush);
    QCOMPARE(editor()->textCursor().charFormat().foreground().color(), QColor(Qt::blue));

    KGalleryComboBox* fontName = nullptr;
    for (KGalleryComboBox* box : m_window->findChildren<KGalleryComboBox*>()) {
        if (box->defaultCommand() == cmd("FormatFontName"))
            fontName = box;
    }
    QVERIFY(fontName);
    QVERIFY(fontName->model()->count() >= 2); // the title and at least one font
    const QString family = fontName->model()->element(1)->text();
    fontName->setCurrentIndex(1, true);
    QCOMPARE(editor()->textCursor().charFormat().fontFamilies().toStringList().value(0), family);
    QCOMPARE(fontName->currentText(), family);
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

void tst_WriterRibbon::keysOfTheDescription()
{
    // The description's keys fire their commands and show beside them.
    m_window->activateWindow();
    QVERIFY(QTest::qWaitForWindowActive(m_window.data()));
    cmd("FileNew")->trigger();
    editor()->setPlainText("centred");
    editor()->setFocus();
    QTest::keyClick(editor(), Qt::Key_E, Qt::ControlModifier);
    QCOMPARE(editor()->alignment() & Qt::AlignHorizontal_Mask, Qt::AlignHCenter);
    QCOMPARE(cmd("FormatBold")->shortcutHint(), QStringLiteral("Ctrl+B"));
    QCOMPARE(cmd("ViewFullScreen")->shortcutHint(), QStringLiteral("F11"));

    // The Keyboard dialog lists every key and answers for the one pressed in its field.
    WriterKeyboardDialog dialog(m_window->shortcuts(), m_window.data());
    QCOMPARE(dialog.table()->rowCount(), m_window->shortcuts()->count());
    QVERIFY(dialog.table()->rowCount() >= 20);
    QCOMPARE(WriterKeyboardDialog::describeKey(m_window->shortcuts(), QKeySequence("Ctrl+B")),
             QKeySequence("Ctrl+B").toString(QKeySequence::NativeText) + QStringLiteral(": Bold"));
    QVERIFY(WriterKeyboardDialog::describeKey(m_window->shortcuts(), QKeySequence("Ctrl+Q")).endsWith(": not assigned"));
    QCOMPARE(WriterKeyboardDialog::describeKey(m_window->shortcuts(), QKeySequence()), QString());
    dialog.show();
    dialog.activateWindow();
    QVERIFY(QTest::qWaitForWindowActive(&dialog));
    dialog.tryField()->setFocus();
    QTRY_VERIFY(dialog.tryField()->hasFocus());
    QTest::keyClick(dialog.tryField(), Qt::Key_I, Qt::ControlModifier);
    QVERIFY2(dialog.answer().endsWith(": Italic"), qPrintable(dialog.answer()));
    QVERIFY(dialog.table()->currentRow() >= 0);
    QCOMPARE(dialog.table()->item(dialog.table()->currentRow(), 0)->text(), QStringLiteral("Italic"));
    // Pressed in the field, the key fired nothing.
    QCOMPARE(cmd("FormatItalic")->checkedHint(), false);
}

void tst_WriterRibbon::keyTipsOfTheRibbon()
{
    using namespace KeyTipTest;
    m_window->activateWindow();
    QVERIFY(QTest::qWaitForWindowActive(m_window.data()));
    ribbon()->setCurrentItem(0);
    QStringList first, home;
    Script script({[&] {
                       first = keys(topLevel());
                       QTest::keyClick(topLevel(), Qt::Key_N); // Insert
                   },
                   [&] {
                       home = keys(topLevel());
                       QTest::keyClick(topLevel(), Qt::Key_Escape);
                   },
                   [&] { QTest::keyClick(topLevel(), Qt::Key_Escape); }});
    tapAlt(editor());
    QTRY_VERIFY(script.finished());
    QCOMPARE(first, (QStringList{"H", "N", "P", "W", "F"}));
    QCOMPARE(ribbon()->currentIndex(), 1);
    QCOMPARE(home, (QStringList{"T", "P", "I", "D", "U", "B"}));
    QVERIFY(!topLevel());
}

NORVIK_TEST_MAIN(tst_WriterRibbon)
#include "tst_writerribbon.moc"
