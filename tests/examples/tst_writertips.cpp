#include <ktestsupport.h>

#include <QDesktopServices>
#include <QLabel>
#include <QLineEdit>
#include <QStandardPaths>
#include <QTextEdit>

#include <kcombobox.h>
#include <kcomboboxcommand.h>
#include <kappidlesvr.h>
#include <kcommands.h>
#include <kseparatorcommand.h>
#include <ksettings.h>
#include <ktip.h>
#include <ktips.h>
#include <ktipwidget.h>
#include <ktoolbutton.h>

#include "writertips.h"
#include "writertestsupport.h"
#include "writerwindow.h"

// Receives the pages that the writer's help links open.
class PageSink : public QObject
{
    Q_OBJECT
public:
    QList<QUrl> opened;
public Q_SLOTS:
    void open(const QUrl& url) { opened << url; }
};

// Norvik Writer's rich tool tips and its Font Size box, in the ribbon form.
class tst_WriterTips : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void initTestCase();
    void cleanupTestCase();
    void cleanup();
    void everyRibbonButtonHasATip();
    void boldButtonShowsItsTip();
    void f1OpensTheLocalHelpPage();
    void fontSizeFollowsTheCursor();
    void fontSizeSetsTheSelection();
    void fontSizeWaitsWhileTyping();

private:
    KCommand* cmd(const char* id) { return m_window->commands()->command(id); }
    QTextEdit* editor() { return m_window->editor(); }
    KToolButton* buttonOf(const char* id);
    KComboBox* fontSizeBox();
    QScopedPointer<WriterWindow> m_window;
    PageSink m_sink;
};

void tst_WriterTips::initTestCase()
{
    const QStringList warnings = WriterTest::makeWindow(m_window);
    QVERIFY2(warnings.isEmpty(), qPrintable(warnings.join('\n')));
    m_window->resize(1300, 700);
    m_window->show();
    QVERIFY(QTest::qWaitForWindowActive(m_window.data()));
    // Only the key of each tip was set: the file waits for the first tip.
    QVERIFY(!KApplication::instance()->tips()->isLoaded());
    KApplication::instance()->bringFrontMainWindow(m_window.data());
    // The box follows the cursor at idle time, as in the running program.
    KApplication::instance()->idleSvr()->start();
}

void tst_WriterTips::cleanupTestCase()
{
    KApplication::instance()->idleSvr()->stop();
    KApplication::instance()->removeMainWindow(m_window.data());
    m_window.reset();
}

void tst_WriterTips::cleanup()
{
    if (KTipWidget* tip = KTipWidget::instance())
        tip->hideTipImmediately();
    m_sink.opened.clear();
}

KToolButton* tst_WriterTips::buttonOf(const char* id)
{
    for (KToolButton* b : m_window->findChildren<KToolButton*>()) {
        if (b->command() == cmd(id) && b->isVisible())
            return b;
    }
    return nullptr;
}

KComboBox* tst_WriterTips::fontSizeBox()
{
    const QList<KComboBox*> boxes = m_window->findChildren<KComboBox*>();
    return boxes.size() == 1 ? boxes.first() : nullptr;
}

void tst_WriterTips::everyRibbonButtonHasATip()
{
    // The buttons of the ribbon: the items of each tab's groups, and of the blocks in them.
    KCommand* ribbon = cmd("Ribbon");
    QVERIFY(ribbon);
    QStringList missing;
    int buttons = 0;
    KTips* tips = KApplication::instance()->tips();
    for (int t = 0; t < ribbon->count(); ++t) {
        KCommand* tab = ribbon->subCommand(t);
        for (int g = 0; g < tab->count(); ++g) {
            KCommand* group = tab->subCommand(g);
            for (int i = 0; i < group->count(); ++i) {
                KCommand* item = group->subCommand(i);
                const bool block = item->property("embedHint", false).toBool();
                for (int j = 0; j < (block ? item->count() : 1); ++j) {
                    KCommand* button = block ? item->subCommand(j) : item;
                    if (qobject_cast<KSeparatorCommand*>(button))
                        continue;
                    ++buttons;
                    KTip* tip = tips->getTip(button->customTip());
                    if (!tip || tip->tipTitle().isEmpty() || tip->tipContent().isEmpty() || tip->tipLink().isEmpty())
                        missing << button->property("id").toString();
                }
            }
        }
    }
    QVERIFY(buttons > 40);
    QVERIFY2(missing.isEmpty(), qPrintable(missing.join(", ")));
}

void tst_WriterTips::boldButtonShowsItsTip()
{
    KToolButton* bold = buttonOf("FormatBold");
    QVERIFY(bold);
    QHelpEvent help(QEvent::ToolTip, QPoint(4, 4), bold->mapToGlobal(QPoint(4, 4)));
    QVERIFY(QCoreApplication::sendEvent(bold, &help));
    KTipWidget* tip = KTipWidget::instance();
    QVERIFY(tip);
    QCOMPARE(tip->title(), QString("Bold (Ctrl+B)")); // with its shortcut
    QCOMPARE(tip->content(), QString("Make the selected text bold."));
    QCOMPARE(tip->picture(), QString("tip-bold"));
    QCOMPARE(tip->link(), QString("Press F1 for more help"));
    QTRY_VERIFY(tip->isVisible());
    QCOMPARE(tip->findChild<QLabel*>("linkLabel")->text(), QString("Press F1 for more help"));

    // A button without a shortcut has a title of its own alone.
    KToolButton* strike = buttonOf("FormatStrike");
    QVERIFY(strike);
    QHelpEvent help2(QEvent::ToolTip, QPoint(4, 4), strike->mapToGlobal(QPoint(4, 4)));
    QCoreApplication::sendEvent(strike, &help2);
    QCOMPARE(KTipWidget::instance()->title(), QString("Strikethrough"));
}

void tst_WriterTips::f1OpensTheLocalHelpPage()
{
    KToolButton* paste = buttonOf("EditPaste");
    QVERIFY(paste);
    QHelpEvent help(QEvent::ToolTip, QPoint(4, 4), paste->mapToGlobal(QPoint(4, 4)));
    QCoreApplication::sendEvent(paste, &help);
    QVERIFY(KTipWidget::instance());
    QTRY_VERIFY(KTipWidget::instance()->isVisible());
    // The link of the tip goes to the writer's help scheme (caught here in its place).
    QDesktopServices::setUrlHandler("writerhelp", &m_sink, "open");
    QTest::keyClick(m_window.data(), Qt::Key_F1);
    QDesktopServices::unsetUrlHandler("writerhelp");
    QCOMPARE(m_sink.opened, QList<QUrl>({QUrl("writerhelp:clipboard")}));
    QTRY_VERIFY(!KTipWidget::instance());

    // The writer turns it into its local page, at the section the link names.
    const QUrl page = WriterTips::helpPage(m_sink.opened.first());
    QVERIFY(page.isLocalFile());
    QCOMPARE(page.fragment(), QString("clipboard"));
    QVERIFY2(QFileInfo::exists(page.toLocalFile()), qPrintable(page.toLocalFile()));
    QFile file(page.toLocalFile());
    QVERIFY(file.open(QIODevice::ReadOnly));
    QVERIFY(file.readAll().contains("id=\"clipboard\""));
}

void tst_WriterTips::fontSizeFollowsTheCursor()
{
    KComboBox* box = fontSizeBox();
    QVERIFY(box);
    QVERIFY(box->isVisible());
    QCOMPARE(box->count(), 15);
    cmd("FileNew")->trigger();
    editor()->setFocus();
    QTextCharFormat big;
    big.setFontPointSize(18);
    editor()->textCursor().insertText("large", big);
    QTextCharFormat odd;
    odd.setFontPointSize(13);
    editor()->textCursor().insertText("odd", odd);
    QVERIFY(KTestSupport::runLoopUntil([box] { return box->lineEdit()->text() == "13"; }));
    QCOMPARE(box->currentIndex(), -1); // no such item
    // Back into "large", as a user goes: the next idle round brings the size.
    for (int i = 0; i < 6; ++i)
        QTest::keyClick(editor(), Qt::Key_Left);
    QCOMPARE(editor()->textCursor().position(), 2);
    QVERIFY(KTestSupport::runLoopUntil([box] { return box->lineEdit()->text() == "18"; }));
    QCOMPARE(box->itemText(box->currentIndex()), QString("18"));
}

void tst_WriterTips::fontSizeSetsTheSelection()
{
    KComboBox* box = fontSizeBox();
    QVERIFY(box);
    cmd("FileNew")->trigger();
    editor()->insertPlainText("Some words");
    editor()->selectAll();
    box->setFocus();
    QTRY_VERIFY(box->hasFocus());
    box->lineEdit()->selectAll();
    QTest::keyClicks(box, "24");
    QTest::keyClick(box, Qt::Key_Return);
    QTextCursor c = editor()->textCursor();
    c.setPosition(3);
    QCOMPARE(c.charFormat().fontPointSize(), 24.0);
    QVERIFY(editor()->hasFocus()); // back to the text
    QVERIFY(KTestSupport::runLoopUntil([box] { return box->lineEdit()->text() == "24"; }));

    // A typed size that isn't one changes nothing, and the box shows the size again.
    editor()->selectAll();
    box->setFocus();
    QTRY_VERIFY(box->hasFocus());
    box->lineEdit()->selectAll();
    QTest::keyClicks(box, "huge");
    QTest::keyClick(box, Qt::Key_Return);
    QCOMPARE(c.charFormat().fontPointSize(), 24.0);
    QVERIFY(KTestSupport::runLoopUntil([box] { return box->lineEdit()->text() == "24"; }));
    // An odd size is taken as typed.
    editor()->selectAll();
    box->setFocus();
    QTRY_VERIFY(box->hasFocus());
    box->lineEdit()->selectAll();
    QTest::keyClicks(box, "10.5");
    QTest::keyClick(box, Qt::Key_Return);
    c = editor()->textCursor();
    c.setPosition(3);
    QCOMPARE(c.charFormat().fontPointSize(), 10.5);
}

void tst_WriterTips::fontSizeWaitsWhileTyping()
{
    KComboBox* box = fontSizeBox();
    QVERIFY(box);
    cmd("FileNew")->trigger();
    QTextCharFormat format;
    format.setFontPointSize(20);
    editor()->textCursor().insertText("twenty", format);
    QVERIFY(KTestSupport::runLoopUntil([box] { return box->lineEdit()->text() == "20"; }));
    box->setFocus();
    QTRY_VERIFY(box->hasFocus());
    box->lineEdit()->selectAll();
    QTest::keyClicks(box, "3");
    // The cursor's size changes meanwhile: the typed text stays while the box is in use.
    format.setFontPointSize(9);
    editor()->textCursor().insertText("nine", format);
    KTestSupport::runLoopFor(300);
    QCOMPARE(box->lineEdit()->text(), QString("3"));
    editor()->setFocus();
    QTest::keyClick(editor(), Qt::Key_End); // the user goes on in the text
    QVERIFY(KTestSupport::runLoopUntil([box] { return box->lineEdit()->text() == "9"; }));
}

NORVIK_TEST_MAIN(tst_WriterTips)
#include "tst_writertips.moc"
