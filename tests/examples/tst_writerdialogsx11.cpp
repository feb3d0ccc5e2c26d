// Norvik Writer's Page Setup and Protect Document, from its real description: the commands
// open the dialogs, and what the dialogs give changes the document. On a real X server, where
// the balloons of the dialogs are shaped windows.
#include <ktestsupport.h>

#include <QComboBox>
#include <QDialogButtonBox>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QStandardPaths>
#include <QTemporaryDir>
#include <QTextBlock>
#include <QTextEdit>
#include <QTextFrame>
#include <functional>

#include <kcommands.h>
#include <kdoublespinbox.h>
#include <kpwdlineedit.h>
#include <kpwdtooltipwidget.h>
#include <ksecondsedit.h>
#include <ksettings.h>
#include <kunitctrl.h>
#include <kunitdefine.h>

#include "writerdialogs.h"
#include "writerdocumentsetup.h"
#include "writertestsupport.h"
#include "writerwindow.h"

namespace {

const double kPointsPerCm = 1 / 0.0352778;

// Runs handler on the modal dialog that a command opens, once it is up.
template <typename Dialog>
bool onDialog(KCommand* command, const std::function<void(Dialog*)>& handler)
{
    bool seen = false;
    QTimer::singleShot(0, qApp, [&] {
        if (auto* dialog = qobject_cast<Dialog*>(QApplication::activeModalWidget())) {
            seen = true;
            handler(dialog);
            if (QTest::currentTestFailed() && dialog->isVisible())
                dialog->reject(); // a failed check must not leave the test waiting
        }
    });
    command->trigger();
    return seen;
}

// Types text into a unit field as a user would, replacing what it shows.
void typeInto(KUnitCtrl* field, const QString& text)
{
    auto* edit = field->findChild<QLineEdit*>();
    edit->selectAll();
    QTest::keyClicks(field->findChild<KDoubleSpinBox*>(), text);
}

QPushButton* okButton(QDialog* dialog)
{
    return dialog->findChild<QDialogButtonBox*>()->button(QDialogButtonBox::Ok);
}

} // namespace

class tst_WriterDialogs : public QObject
{
    Q_OBJECT
private Q_SLOTS:
    void initTestCase();
    void init();
    void pageSetupChangesTheMargins();
    void pageSetupReportsWhatItCantTake();
    void lengthsInAnotherUnit();
    void autoSave();
    void protectDocument();

private:
    KCommand* cmd(const char* id) { return m_window->commands()->command(id); }
    QTextEdit* editor() { return m_window->editor(); }
    double leftMarginPoints() const
    {
        const QTextEdit* e = m_window->editor();
        return e->document()->rootFrame()->frameFormat().leftMargin() * 72.0 / e->logicalDpiX();
    }
    QScopedPointer<WriterWindow> m_window;
};

void tst_WriterDialogs::initTestCase()
{
    const QStringList warnings = WriterTest::makeWindow(m_window);
    QVERIFY2(warnings.isEmpty(), qPrintable(warnings.join('\n')));
    QVERIFY(m_window->documentSetup());
    m_window->show();
    QVERIFY(QTest::qWaitForWindowExposed(m_window.data()));
}

void tst_WriterDialogs::init()
{
    KUnitDefine::getFavorUnitState() = KUnitDefine::FavorUnitState{KUnitDefine::Centimeters, false};
    m_window->newFile();
}

void tst_WriterDialogs::pageSetupChangesTheMargins()
{
    // A new document has the page's margins, and that is no change of it.
    QCoreApplication::processEvents();
    QVERIFY(qAbs(leftMarginPoints() - 56.7) < 0.01);
    QVERIFY(!editor()->document()->isModified());
    QVERIFY(!editor()->document()->isUndoAvailable());

    QTest::keyClicks(editor(), "Some text");
    const bool seen = onDialog<WriterPageSetupDialog>(cmd("FilePageSetup"), [](WriterPageSetupDialog* d) {
        QCOMPARE(d->field("marginLeft")->cleanText(), QString("2"));
        QCOMPARE(d->field("marginLeft")->currentUnitName(), QString("cm"));
        typeInto(d->field("marginLeft"), "1 in");
        typeInto(d->field("lineSpacing"), "18pt");
        // Return takes the text and goes on to OK.
        QTest::keyClick(d->field("lineSpacing")->findChild<KDoubleSpinBox*>(), Qt::Key_Return);
    });
    QVERIFY(seen);
    // One inch, as the field rounded it in cm (2.54), in points.
    QVERIFY(qAbs(leftMarginPoints() - 2.54 * kPointsPerCm) < 0.01);
    const QTextBlockFormat block = editor()->document()->firstBlock().blockFormat();
    QCOMPARE(block.lineHeightType(), int(QTextBlockFormat::ProportionalHeight));
    QCOMPARE(block.lineHeight(), 150.0);
    QVERIFY(editor()->document()->isModified());
    QCOMPARE(m_window->documentSetup()->pageSettings().lineSpacing, 1.5);

    // One step of Undo takes the page setup back; the text stays.
    cmd("EditUndo")->trigger();
    QVERIFY(qAbs(leftMarginPoints() - 56.7) < 0.01);
    QCOMPARE(editor()->toPlainText(), QString("Some text"));
    cmd("EditUndo")->trigger(); // the typing before is still there to take back
    QVERIFY(editor()->toPlainText().size() < 9);
    QVERIFY(qAbs(leftMarginPoints() - 56.7) < 0.01);

    // The next document gets the margins last chosen.
    QTemporaryDir dir;
    QVERIFY(m_window->openFile(KTestSupport::writeFile(dir.filePath("a.txt"), "alpha")));
    QCoreApplication::processEvents();
    QVERIFY(qAbs(leftMarginPoints() - 2.54 * kPointsPerCm) < 0.01);
    QVERIFY(!editor()->document()->isModified());
}

void tst_WriterDialogs::pageSetupReportsWhatItCantTake()
{
    WriterPageSetupDialog dialog(m_window->documentSetup()->pageSettings(), m_window.data());
    dialog.show();
    QVERIFY(QTest::qWaitForWindowExposed(&dialog));
    KPwdToolTipWidget* tip = dialog.errorTip();
    KUnitCtrl* top = dialog.field("marginTop");
    QVERIFY(okButton(&dialog)->isEnabled());

    typeInto(top, "99 cm");
    QVERIFY(tip->isVisible());
    QCOMPARE(tip->contentText(), QString("The input value must be between 0 cm and 25.4 cm."));
    QVERIFY(!okButton(&dialog)->isEnabled());
    typeInto(top, "3 furlongs");
    QCOMPARE(tip->contentText(), QString("\"furlongs\" is not a unit of this field."));
    typeInto(top, "3");
    QVERIFY(!tip->isVisible());
    QVERIFY(okButton(&dialog)->isEnabled());

    // Margins that leave no room on the paper.
    dialog.field("marginLeft")->setValue(12 * kPointsPerCm);
    dialog.field("marginRight")->setValue(12 * kPointsPerCm);
    QVERIFY(tip->isVisible());
    QCOMPARE(tip->contentText(), QString("The margins leave no room for text on this paper."));
    QVERIFY(!okButton(&dialog)->isEnabled());
    dialog.field("paperWidth")->setValue(42 * kPointsPerCm);
    QVERIFY(!tip->isVisible());
    QVERIFY(okButton(&dialog)->isEnabled());
}

void tst_WriterDialogs::lengthsInAnotherUnit()
{
    WriterPageSetupDialog dialog(m_window->documentSetup()->pageSettings(), m_window.data());
    QComboBox* units = dialog.unitChoice();
    units->setCurrentIndex(units->findData(QString("in")));
    for (const char* name : {"paperWidth", "paperHeight", "marginTop", "marginBottom", "marginLeft", "marginRight"})
        QCOMPARE(dialog.field(name)->currentUnitName(), QString("in"));
    QCOMPARE(dialog.field("lineSpacing")->currentUnitName(), QString("line")); // not a length
    QCOMPARE(dialog.field("paperWidth")->cleanText(), QString("8.27"));
    // The settings stay in points, whatever is shown.
    QVERIFY(qAbs(dialog.settings().paperWidth - 595.3) < 0.5);
    // The choice is remembered for the next dialog.
    QCOMPARE(KUnitDefine::getFavorUnitState().unit, QString("in"));
    QVERIFY(KUnitDefine::getFavorUnitState().chosen);
    WriterPageSetupDialog next(m_window->documentSetup()->pageSettings(), m_window.data());
    QCOMPARE(next.field("marginTop")->currentUnitName(), QString("in"));
}

void tst_WriterDialogs::autoSave()
{
    WriterDocumentSetup* setup = m_window->documentSetup();
    QVERIFY(onDialog<WriterPageSetupDialog>(cmd("FilePageSetup"), [](WriterPageSetupDialog* d) {
        KSecondsEdit* every = d->autoSaveField();
        every->findChild<QLineEdit*>()->setText("1:30");
        every->checkAndSetText();
        d->accept();
    }));
    QCOMPARE(setup->autoSaveInterval(), 90);

    // Only a document with a file and unsaved changes is saved.
    QTemporaryDir dir;
    const QString path = KTestSupport::writeFile(dir.filePath("notes.txt"), "old");
    QVERIFY(m_window->openFile(path));
    setup->autoSaveNow();
    QVERIFY(!editor()->document()->isModified());
    editor()->setPlainText("new text");
    editor()->document()->setModified(true);
    setup->autoSaveNow();
    QVERIFY(!editor()->document()->isModified());
    QFile saved(path);
    QVERIFY(saved.open(QIODevice::ReadOnly));
    QCOMPARE(saved.readAll(), QByteArray("new text"));
    m_window->newFile();
    QTest::keyClicks(editor(), "untitled");
    setup->autoSaveNow(); // nowhere to save: stays unsaved
    QVERIFY(editor()->document()->isModified());

    WriterPageSettings off = setup->pageSettings();
    off.autoSaveSeconds = 0;
    setup->applyPageSettings(off);
    QCOMPARE(setup->autoSaveInterval(), 0);
}

void tst_WriterDialogs::protectDocument()
{
    WriterDocumentSetup* setup = m_window->documentSetup();
    QTest::keyClicks(editor(), "draft");
    QVERIFY(onDialog<WriterProtectDialog>(cmd("FileProtect"), [](WriterProtectDialog* d) {
        QCOMPARE(d->mode(), WriterProtectDialog::Protect);
        QTest::keyClicks(d->passwordField(), "s3cret");
        QTest::keyClicks(d->confirmField(), "s3cre");
        QCOMPARE(d->messageLabel()->text(), QString("The two passwords differ."));
        QVERIFY(!okButton(d)->isEnabled());
        QTest::keyClicks(d->confirmField(), "t");
        QVERIFY(d->messageLabel()->text().isEmpty());
        QTest::mouseClick(okButton(d), Qt::LeftButton);
    }));
    QVERIFY(setup->isProtected());
    QVERIFY(editor()->isReadOnly());
    QVERIFY(cmd("FileProtect")->checkedHint());
    QVERIFY(!cmd("FormatBold")->isEnabled());
    QTest::keyClicks(editor(), "more");
    cmd("EditUndo")->trigger();
    QCOMPARE(editor()->toPlainText(), QString("draft"));

    // A wrong password keeps the dialog open and the document protected.
    QVERIFY(onDialog<WriterProtectDialog>(cmd("FileProtect"), [](WriterProtectDialog* d) {
        QCOMPARE(d->mode(), WriterProtectDialog::Unprotect);
        QVERIFY(!d->confirmField());
        QTest::keyClicks(d->passwordField(), "guess");
        QTest::mouseClick(okButton(d), Qt::LeftButton);
        QVERIFY(d->isVisible());
        QCOMPARE(d->messageLabel()->text(), QString("The password is not correct."));
        d->passwordField()->setText("s3cret");
        QTest::mouseClick(okButton(d), Qt::LeftButton);
        QVERIFY(!d->isVisible());
    }));
    QVERIFY(!setup->isProtected());
    QVERIFY(!editor()->isReadOnly());
    QVERIFY(cmd("FormatBold")->isEnabled());
    QVERIFY(!cmd("FileProtect")->checkedHint());
    QVERIFY(!setup->unprotect("s3cret")); // nothing to take off
}

NORVIK_X11_TEST_MAIN(tst_WriterDialogs)
#include "tst_writerdialogsx11.moc"
