#include <ktestsupport.h>

#include <QMdiSubWindow>
#include <QMessageBox>
#include <QTimer>
#include <QStandardPaths>
#include <QTemporaryDir>
#include <QTextEdit>

#include <kcommands.h>
#include <ksettings.h>

#include "writerdocuments.h"
#include "writertestsupport.h"
#include "writerwindow.h"

// Norvik Writer with several documents: tabs, the one editor following the current one, the
// status bar following the typing.
class tst_WriterDocuments : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void initTestCase();
    void tabsFollowNewOpenAndClose();
    void statusFollowsTheCurrentDocument();
    void closingAChangedDocumentAsks();

private:
    KCommand* cmd(const char* id) { return m_window->commands()->command(id); }
    QScopedPointer<WriterWindow> m_window;
    QTemporaryDir m_dir;
};

void tst_WriterDocuments::initTestCase()
{
    const QStringList warnings = WriterTest::makeWindow(m_window);
    QVERIFY2(warnings.isEmpty(), qPrintable(warnings.join('\n')));
    m_window->show();
    QVERIFY(QTest::qWaitForWindowExposed(m_window.data()));
}

void tst_WriterDocuments::tabsFollowNewOpenAndClose()
{
    WriterDocuments* docs = m_window->documents();
    KMdiArea* area = docs->area();
    QCOMPARE(area->tabBarEx()->count(), 1);
    // Open fills the untouched first document.
    const QString letter = KTestSupport::writeFile(m_dir.filePath("letter.txt"), "Dear reader\n");
    QVERIFY(m_window->openFile(letter));
    QCOMPARE(area->tabBarEx()->count(), 1);
    QCOMPARE(area->tabBarEx()->tabAt(0)->text(), QStringLiteral("letter.txt"));
    // New adds a tab and the editor shows the new, empty text.
    cmd("FileNew")->trigger();
    QCOMPARE(area->tabBarEx()->count(), 2);
    QVERIFY(m_window->editor()->toPlainText().isEmpty());
    QVERIFY(m_window->filePath().isEmpty());
    QTest::keyClicks(m_window->editor(), "draft");
    QVERIFY(area->tabBarEx()->tabAt(1)->isModified());
    QVERIFY(!area->tabBarEx()->tabAt(0)->isModified());

    // Back to the letter: its text and its file come back.
    QTest::mouseClick(area->tabBarEx()->tabAt(0), Qt::LeftButton, {}, QPoint(20, 10));
    QCOMPARE(m_window->editor()->toPlainText(), QStringLiteral("Dear reader\n"));
    QCOMPARE(m_window->filePath(), QFileInfo(letter).absoluteFilePath());
    QCOMPARE(area->currentSubWindow(), area->tabBarEx()->currentSubWindow());

    // Closing the unchanged letter leaves the draft, in the editor.
    KDocTab* tab = area->tabBarEx()->tabAt(0);
    QTest::mouseClick(tab, Qt::LeftButton, {}, KStyleOptionDocTab::closeRect(tab->rect()).center());
    QCOMPARE(area->tabBarEx()->count(), 1);
    QCOMPARE(m_window->editor()->toPlainText(), QStringLiteral("draft"));
    QCOMPARE(docs->pages().size(), 1);

    // The last one, unchanged, closes to the no-tab page.
    docs->currentPage()->document()->setModified(false);
    area->closeAllSubWindows();
    QCOMPARE(area->tabBarEx()->count(), 0);
    QVERIFY(area->noTabPageWidget());
    QTRY_VERIFY(area->noTabPageWidget()->isVisible());
    QVERIFY(!m_window->editor()->isVisible());
    // And New brings the editor back.
    cmd("FileNew")->trigger();
    QCOMPARE(area->tabBarEx()->count(), 1);
    QTRY_VERIFY(m_window->editor()->isVisible());
}

void tst_WriterDocuments::statusFollowsTheCurrentDocument()
{
    cmd("FileNew")->trigger();
    QTest::keyClicks(m_window->editor(), "one two three");
    KCommand* words = cmd("StatusWords");
    KCommand* position = cmd("StatusPosition");
    QVERIFY(words);
    QVERIFY(position);
    words->update();
    position->update();
    QCOMPARE(words->text(), QStringLiteral("3 words"));
    QCOMPARE(position->text(), QStringLiteral("Page 1   Line 1   Col 14"));
    cmd("FileNew")->trigger();
    words->update();
    QCOMPARE(words->text(), QStringLiteral("0 words"));
}

void tst_WriterDocuments::closingAChangedDocumentAsks()
{
    KMdiArea* area = m_window->documents()->area();
    cmd("FileNew")->trigger();
    QTest::keyClicks(m_window->editor(), "keep me");
    const int tabs = area->tabBarEx()->count();
    // Answers the question that closing asks, and notes that it was asked.
    int asked = 0;
    auto answer = [&](QMessageBox::StandardButton button) {
        QTimer::singleShot(0, this, [&asked, button] {
            if (auto* box = qobject_cast<QMessageBox*>(QApplication::activeModalWidget())) {
                ++asked;
                box->button(button)->click();
            }
        });
    };
    answer(QMessageBox::Cancel);
    KDocTab* tab = area->tabBarEx()->tabAt(tabs - 1);
    QTest::mouseClick(tab, Qt::LeftButton, {}, KStyleOptionDocTab::closeRect(tab->rect()).center());
    QCOMPARE(asked, 1);
    QCOMPARE(area->tabBarEx()->count(), tabs);
    QCOMPARE(m_window->editor()->toPlainText(), QStringLiteral("keep me"));

    answer(QMessageBox::Discard);
    tab = area->tabBarEx()->tabAt(tabs - 1);
    QTest::mouseClick(tab, Qt::LeftButton, {}, KStyleOptionDocTab::closeRect(tab->rect()).center());
    QCOMPARE(asked, 2);
    QCOMPARE(area->tabBarEx()->count(), tabs - 1);
    QVERIFY(m_window->editor()->toPlainText() != QStringLiteral("keep me"));
}

NORVIK_TEST_MAIN(tst_WriterDocuments)
#include "tst_writerdocuments.moc"
