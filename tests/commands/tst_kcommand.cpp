#include <ktestsupport.h>

#include <QLabel>
#include <QPixmap>
#include <QSignalSpy>
#include <functional>
#include <kseparatorcommand.h>
#include <stdexcept>

// A host that records what KCommand::trigger() tells the application, and in which order
// relative to the command's own signal and hook.
class RecordingApp : public KApplication
{
public:
    using KApplication::KApplication;
    QStringList log;
    void onCommandTrigger(const QString& note) override { log << "app:" + note; }
};

static RecordingApp* recordingApp()
{
    return static_cast<RecordingApp*>(QCoreApplication::instance());
}

class ClickCommand : public KCommand
{
    Q_OBJECT
    Q_PROPERTY(KCommand* partner READ partner WRITE setPartner)
public:
    using KCommand::KCommand;
    bool isTriggerable() const override { return true; }
    QString triggerNote() const override { return "note"; }
    KCommand* partner() const { return m_partner; }
    void setPartner(KCommand* c) { m_partner = c; }

protected:
    void onTriggered() override { recordingApp()->log << "hook"; }

private:
    KCommand* m_partner = nullptr;
};

class tst_KCommand : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void multiControlBool();
    void settersEmitOnlyOnChange();
    void vetoesAndForceEnabled();
    void blockGuardFoldsChanges();
    void triggerOrder();
    void drawText_data();
    void drawText();
    void setDrawText_data();
    void setDrawText();
    void toolTip();
    void requestWidget();
    void copyPropertiesAndReset();
    void separators();
};

void tst_KCommand::multiControlBool()
{
    KMultiControlBool b;
    QVERIFY(b.isTrue());
    const auto fs = KMultiControlBool::FullScreenControl;
    QVERIFY(b.setValue(fs, false));
    QVERIFY(!b.isTrue());
    QVERIFY(!b.isTrue(fs));
    QVERIFY(b.isTrue(KMultiControlBool::PlainControl));
    QVERIFY(!b.setValue(false)); // a second veto: the overall value does not change
    QVERIFY(!b.setValue(fs, true)); // lifts only its own veto
    QVERIFY(!b.isTrue());
    QVERIFY(b.setValue(true)); // a plain true drops every veto
    QCOMPARE(b.mask(), 0u);

    // A bit number past the word throws the bitset's message of the operation done: lifting
    // a veto resets the bit, imposing one sets it.
    const auto outOfRange = [&b](int t, bool v) -> QString {
        try {
            b.setValue(static_cast<KMultiControlBool::ControlType>(t), v);
        } catch (const std::out_of_range& e) {
            return QString::fromLatin1(e.what());
        }
        return QStringLiteral("no exception");
    };
    QVERIFY2(outOfRange(32, true).startsWith(QLatin1String("bitset::reset")), qPrintable(outOfRange(32, true)));
    QVERIFY2(outOfRange(40, false).startsWith(QLatin1String("bitset::set")), qPrintable(outOfRange(40, false)));
}

void tst_KCommand::settersEmitOnlyOnChange()
{
    KCommand cmd(nullptr, nullptr);
    QSignalSpy spy(&cmd, &KCommand::changed);
    QPixmap pm(8, 8);
    pm.fill(Qt::red);
    const QIcon icon(pm);
    // Each setter, called twice with the same value, notifies once. The last one sets by
    // name, as the XML parser does.
    const QList<std::function<void()>> setters = {
        [&] { cmd.setText("Save"); },          [&] { cmd.setDetail("d"); },
        [&] { cmd.setCheckedHint(true); },     [&] { cmd.setButtonStyle(3); },
        [&] { cmd.setShortcutHint("Ctrl+S"); }, [&] { cmd.setCustomTip("tip"); },
        [&] { cmd.setCustomTip2("tip2"); },    [&] { cmd.setDialogHint(true); },
        [&] { cmd.setEnabled(false); },        [&] { cmd.setVisible(false); },
        [&] { cmd.setIcon(icon); },            [&] { cmd.setProperty("text", "Open"); }};
    for (int i = 0; i < setters.size(); ++i) {
        spy.clear();
        setters.at(i)();
        setters.at(i)();
        QVERIFY2(spy.count() == 1, qPrintable(QString("setter %1 notified %2 times").arg(i).arg(spy.count())));
    }
    QCOMPARE(cmd.text(), QString("Open"));
    cmd.setIcon(QIcon()); // a null icon never clears one
    QCOMPARE(cmd.icon().cacheKey(), icon.cacheKey());
    QCOMPARE(spy.count(), 1);
}

void tst_KCommand::vetoesAndForceEnabled()
{
    KCommand cmd(nullptr, nullptr);
    QSignalSpy spy(&cmd, &KCommand::changed);
    const auto fs = KMultiControlBool::FullScreenControl;
    cmd.setEnabled(fs, false);
    cmd.setEnabled(false);
    cmd.setEnabled(fs, true);
    QVERIFY(!cmd.isEnabled());
    QCOMPARE(spy.count(), 1); // only the first veto changed the overall value

    // "forceenabled" overrides the vetoes both ways; removed, the vetoes count again.
    cmd.setProperty("forceenabled", true);
    QVERIFY(cmd.isEnabled());
    QVERIFY(cmd.isEnabled(fs));
    cmd.setProperty("forceenabled", QVariant());
    QVERIFY(!cmd.isEnabled());
    cmd.setEnabled(true);
    cmd.setProperty("forceenabled", false);
    QVERIFY(!cmd.isEnabled());

    // Whole values always notify.
    spy.clear();
    cmd.setMultiEnabled(cmd.multiEnabled());
    QCOMPARE(spy.count(), 1);
}

void tst_KCommand::blockGuardFoldsChanges()
{
    KCommand cmd(nullptr, nullptr);
    QSignalSpy spy(&cmd, &KCommand::changed);
    {
        KCommandChangedBlockHelpObject guard(&cmd);
        cmd.setText("a");
        cmd.setDetail("b");
        {
            KCommandChangedBlockHelpObject inner(&cmd);
            cmd.setCheckedHint(true);
        }
        QCOMPARE(spy.count(), 0); // the inner guard does not end the block
    }
    QCOMPARE(spy.count(), 1);
    {
        KCommandChangedBlockHelpObject guard(&cmd);
        cmd.setText("a"); // no change
    }
    QCOMPARE(spy.count(), 1);
    KCommandChangedBlockHelpObject nullGuard(nullptr); // allowed
}

void tst_KCommand::triggerOrder()
{
    RecordingApp* app = recordingApp();
    app->log.clear();
    KCommand plain(nullptr, nullptr);
    QSignalSpy plainSpy(&plain, &KCommand::triggered);
    plain.trigger();
    QCOMPARE(plainSpy.count(), 0);
    QVERIFY(app->log.isEmpty());

    ClickCommand click(app, nullptr);
    connect(&click, &KCommand::triggered, this, [app] { app->log << "signal"; });
    click.setEnabled(false); // the command itself does not look at enabled
    click.trigger();
    QCOMPARE(app->log, QStringList({"app:note", "signal", "hook"}));
}

void tst_KCommand::drawText_data()
{
    QTest::addColumn<QString>("text");
    QTest::addColumn<QString>("hotKey");
    QTest::addColumn<bool>("dialog");
    QTest::addColumn<QString>("expected");
    QTest::newRow("hot key in text") << "Print" << "n" << false << "Pri&nt";
    QTest::newRow("dialog appended") << "Save" << "x" << true << "Save(&X)...";
    QTest::newRow("dialog already dotted") << "More..." << "" << true << "More...";
    QTest::newRow("first ampersand escaped") << "A&B&C" << "" << false << "A&&B&C";
}

void tst_KCommand::drawText()
{
    QFETCH(QString, text);
    QFETCH(QString, hotKey);
    QFETCH(bool, dialog);
    KCommand cmd(nullptr, nullptr);
    cmd.setText(text);
    if (!hotKey.isEmpty())
        cmd.setProperty("hotKey", hotKey);
    cmd.setDialogHint(dialog);
    QTEST(cmd.getDrawText(), "expected");
}

void tst_KCommand::setDrawText_data()
{
    QTest::addColumn<QString>("drawText");
    QTest::addColumn<QString>("text");
    QTest::addColumn<QString>("hotKey");
    QTest::addColumn<bool>("dialog");
    QTest::newRow("bracketed key and dots") << "Save(&X)..." << "Save" << "X" << true;
    QTest::newRow("inline marker") << "Sa&ve" << "Save" << "v" << false;
    QTest::newRow("trailing marker") << "Save&" << "Save" << "" << false;
    QTest::newRow("long bracket is text") << "Go(&XY)" << "Go(XY)" << "X" << false;
}

void tst_KCommand::setDrawText()
{
    QFETCH(QString, drawText);
    KCommand cmd(nullptr, nullptr);
    cmd.setProperty("hotKey", "Q");
    cmd.setDialogHint(true);
    cmd.setDrawText(drawText);
    QTEST(cmd.text(), "text");
    QTEST(cmd.property("hotKey").toString(), "hotKey");
    QTEST(cmd.dialogHint(), "dialog");
}

void tst_KCommand::toolTip()
{
    KCommand cmd(nullptr, nullptr);
    cmd.setText("&Find");
    QCOMPARE(cmd.getToolTip(), QString("&Find"));
    cmd.setDialogHint(true);
    cmd.setShortcutHint("Ctrl+F");
    QCOMPARE(cmd.getToolTip(), QString("&Find... (Ctrl+F)"));
    cmd.setDetail("Finds text in the document");
    QCOMPARE(cmd.getToolTip(), QString("Finds text in the document"));
}

void tst_KCommand::requestWidget()
{
    QWidget parent;
    auto* cmd = new KCommand(nullptr, nullptr);
    auto labelText = [&](int purpose) {
        auto* label = qobject_cast<QLabel*>(cmd->requestWidget(&parent, purpose));
        return label && label->parentWidget() == &parent ? label->text() : QString("<no label>");
    };
    QCOMPARE(labelText(KCommand::PocketPurpose), QString("Undefined Widget"));
    QCOMPARE(labelText(7), QString("Undefined"));

    // The command takes its widgets down with it, one event-loop turn later.
    QPointer<QWidget> guard(parent.findChild<QLabel*>());
    QVERIFY(guard);
    delete cmd;
    QVERIFY(guard);
    QTRY_COMPARE(parent.findChildren<QLabel*>().size(), 0);
}

void tst_KCommand::copyPropertiesAndReset()
{
    QObject hostA, hostB;
    KCommand other(nullptr, nullptr);
    ClickCommand source(&hostA, nullptr);
    source.setText("Bold");
    source.setCheckedHint(true);
    source.setEnabled(false);
    source.setPartner(&other);
    source.setProperty("id", "bold");
    source.setProperty("hotKey", "B");

    ClickCommand target(&hostB, nullptr);
    source.copyProperties(&target);
    QCOMPARE(target.text(), QString("Bold"));
    QVERIFY(target.checkedHint());
    QVERIFY(!target.isEnabled());
    QCOMPARE(target.property("hotKey").toString(), QString("B")); // dynamic properties too
    QCOMPARE(target.host(), &hostB); // read-only, kept
    QVERIFY(!target.partner());      // command pointers are not shared

    source.setDialogHint(true);
    source.setButtonStyle(5);
    QSignalSpy spy(&source, &KCommand::changed);
    source.reset();
    QCOMPARE(spy.count(), 1);
    QVERIFY(source.isEnabled());
    QVERIFY(!source.checkedHint());
    QVERIFY(!source.dialogHint());
    QCOMPARE(source.buttonStyle(), 0);
    QVERIFY(source.dynamicPropertyNames().isEmpty());
    QCOMPARE(source.text(), QString("Bold")); // text stays
}

void tst_KCommand::separators()
{
    KSeparatorCommand* one = KSeparatorCommand::instance();
    KSeparatorCommand* two = KSeparatorCommand::instance2();
    QVERIFY(KSeparatorCommand::isSeparator(one));
    QVERIFY(!KSeparatorCommand::isSeparator(two));
    two->setStartEndTransparent(false);
    QVERIFY(KSeparatorCommand::instance2()->getStartEndTransparent()); // set again at each call

    QWidget parent;
    QVERIFY(qobject_cast<KSeparatorWidget*>(one->requestWidget(&parent, KCommand::PocketPurpose)));
}

int main(int argc, char** argv)
{
    RecordingApp app(argc, argv);
    tst_KCommand tc;
    QTEST_SET_MAIN_SOURCE_PATH
    return QTest::qExec(&tc, argc, argv);
}

#include "tst_kcommand.moc"
