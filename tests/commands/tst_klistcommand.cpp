#include <ktestsupport.h>

#include <QPointer>
#include <QSignalSpy>

#include <kcommandfactory.h>
#include <kcomposelistcommand.h>
#include <klistcommand.h>
#include <kseparatorcommand.h>
#include <ktriggercommand.h>

// Records every change a view would see, with what stood at the index at that moment.
class KListRecorder : public QObject
{
public:
    explicit KListRecorder(KAbstractListCommand* list)
        : m_list(list)
    {
        connect(list, &KAbstractListCommand::subCommandInsert, this, [this](int idx, KCommand* cmd) {
            // On insert the item is already in place.
            log << QString("+%1").arg(idx);
            inPlace = inPlace && m_list->subCommand(idx) == cmd;
        });
        connect(list, &KAbstractListCommand::subCommandRemove, this, [this](int idx) {
            // On remove it is still there.
            log << QString("-%1").arg(idx);
            inPlace = inPlace && m_list->subCommand(idx) != nullptr;
        });
    }
    QStringList log;
    bool inPlace = true;

private:
    KAbstractListCommand* m_list;
};

// A host's macro class, for the delegate of KApiCommand.
class KxTestMacroCommand : public KTriggerCommand
{
    Q_OBJECT
public:
    KxTestMacroCommand(QObject* host, QObject* parent)
        : KTriggerCommand(host, parent) {}
};

class tst_KListCommand : public QObject
{
    Q_OBJECT
private Q_SLOTS:
    void insertIndexes_data();
    void insertIndexes();
    void removalAndDestruction();
    void cloneAndReset();
    void composeFollowsInnerLists();
    void composeDropsDeadReferences();
    void triggerClone();
    void apiDelegate();
};

void tst_KListCommand::insertIndexes_data()
{
    QTest::addColumn<int>("index");
    QTest::addColumn<int>("expected");
    QTest::newRow("negative appends") << -1 << 2;
    QTest::newRow("beyond the end appends") << 9999 << 2;
    QTest::newRow("front") << 0 << 0;
    QTest::newRow("middle") << 1 << 1;
    QTest::newRow("end") << 2 << 2;
}

void tst_KListCommand::insertIndexes()
{
    QFETCH(int, index);
    QFETCH(int, expected);
    KListCommand list(this, nullptr);
    KTriggerCommand a(this, nullptr), b(this, nullptr), c(this, nullptr);
    list.addSubCommand(&a);
    list.addSubCommand(&b);
    QSignalSpy spy(&list, &KAbstractListCommand::subCommandInsert);
    QCOMPARE(list.insertSubCommand(index, &c), expected);
    QCOMPARE(spy.count(), 1);
    QCOMPARE(spy.at(0).at(0).toInt(), expected);
    QCOMPARE(list.subCommand(expected), &c);
    QCOMPARE(list.indexOf(&c), expected);
    QCOMPARE(list.insertSubCommand(0, nullptr), -1);
    QCOMPARE(list.count(), 3);
}

void tst_KListCommand::removalAndDestruction()
{
    auto* list = new KListCommand(this, nullptr);
    KListRecorder recorder(list);
    auto* twice = new KTriggerCommand(this, nullptr);
    KTriggerCommand keeper(this, nullptr);
    list->addSubCommand(twice);
    list->addSeparator();
    list->addSubCommand(&keeper);
    list->insertSubCommand(0, twice);
    QCOMPARE(list->subCommand(2), KSeparatorCommand::instance());

    // A command that stands twice leaves entirely when it dies.
    delete twice;
    QCOMPARE(list->count(), 2);
    QCOMPARE(list->subCommand(0), KSeparatorCommand::instance());
    QCOMPARE(list->subCommand(1), &keeper);

    // Removing does not delete; a removed command's death no longer concerns the list.
    list->removeSubCommand(1);
    list->removeSubCommand(5);
    QCOMPARE(list->count(), 1);
    QCOMPARE(keeper.parent(), nullptr);

    list->addSubCommand(&keeper);
    list->clear();
    QCOMPARE(list->count(), 0);
    QVERIFY(recorder.inPlace);
    QCOMPARE(recorder.log, (QStringList{"+0", "+1", "+2", "+0", "-0", "-0", "-1", "+1", "-1", "-0"}));

    // The destructor takes each item out in view of its views.
    list->addSubCommand(&keeper);
    list->addSeparator();
    recorder.log.clear();
    QSignalSpy removes(list, &KAbstractListCommand::subCommandRemove);
    delete list;
    QCOMPARE(removes.count(), 2);
}

void tst_KListCommand::cloneAndReset()
{
    KListCommand list(this, nullptr);
    list.setText("Edit");
    list.setProperty("id", "edit");
    auto* item = new KTriggerCommand(this, &list);
    item->setText("Copy");
    list.addSubCommand(item);
    list.addSeparator();
    auto* plain = new KCommand(this, &list); // cannot be cloned
    list.addSubCommand(plain);

    QObject newHost;
    QScopedPointer<KCommand> copy(list.clone(&newHost, nullptr));
    QVERIFY(qobject_cast<KListCommand*>(copy.data()));
    QCOMPARE(copy->host(), &newHost);
    QCOMPARE(copy->text(), QString("Edit"));
    QCOMPARE(copy->property("id"), QVariant(QString("edit")));
    QCOMPARE(copy->count(), 1); // separator and plain command are skipped
    QCOMPARE(copy->subCommand(0)->text(), QString("Copy"));
    QCOMPARE(copy->subCommand(0)->parent(), copy.data());

    list.setCheckedHint(true);
    list.reset();
    QCOMPARE(list.count(), 0);
    QVERIFY(!list.checkedHint());
    QVERIFY(!list.property("id").isValid());
    QCOMPARE(item->parent(), &list); // items it owns stay its children
}

void tst_KListCommand::composeFollowsInnerLists()
{
    KListCommand first(this, nullptr), second(this, nullptr);
    KTriggerCommand a(this, nullptr), b(this, nullptr), c(this, nullptr), d(this, nullptr),
        plain(this, nullptr);
    first.addSubCommand(&a);
    first.addSubCommand(&b);
    second.addSubCommand(&c);

    KComposeListCommand compose(this, nullptr);
    KListRecorder recorder(&compose);
    compose.insertComposedSubCommandOrig(0, &first);
    compose.insertComposedSubCommandOrig(1, &second);
    compose.insertSubCommandOrig(-1, &plain);
    QCOMPARE(compose.countOrig(), 3);
    QCOMPARE(compose.count(), 4);
    QCOMPARE(compose.calcCommandLogicIdx(1), 2);
    QCOMPARE(compose.calcCommandLogicIdx(2), 3);

    // A view hears insertions of an inner list at the flat index.
    recorder.log.clear();
    second.insertSubCommand(0, &d);
    QCOMPARE(recorder.log, QStringList{"+2"});
    QCOMPARE(compose.subCommand(2), &d);
    QCOMPARE(compose.subCommand(3), &c);
    QCOMPARE(compose.calcCommandLogicIdx(2), 4);

    first.removeSubCommand(1);
    QCOMPARE(recorder.log, (QStringList{"+2", "-1"}));
    QCOMPARE(compose.count(), 4);
    QCOMPARE(compose.subCommand(1), &d);

    // Removing an original item removes all it stands for, and the inner list is no
    // longer followed.
    compose.removeSubCommandOrig(1);
    QCOMPARE(recorder.log, (QStringList{"+2", "-1", "-1", "-1"}));
    QCOMPARE(compose.count(), 2);
    second.addSubCommand(&b);
    QCOMPARE(compose.count(), 2);
    QCOMPARE(compose.subCommand(1), &plain);
    QVERIFY(recorder.inPlace);

    compose.clear();
    QCOMPARE(compose.countOrig(), 0);
    QCOMPARE(compose.count(), 0);
}

void tst_KListCommand::composeDropsDeadReferences()
{
    auto* inner = new KListCommand(this, nullptr);
    auto* x = new KTriggerCommand(this, inner);
    auto* y = new KTriggerCommand(this, inner);
    inner->addSubCommand(x);
    inner->addSubCommand(y);
    auto* plain = new KTriggerCommand(this, nullptr);
    KTriggerCommand tail(this, nullptr);

    KComposeListCommand compose(this, nullptr);
    compose.insertSubCommandOrig(0, plain);
    compose.insertComposedSubCommandOrig(1, inner);
    compose.insertSubCommandOrig(2, &tail);
    QCOMPARE(compose.count(), 4);

    delete x; // an item of the inner list dies: the inner list tells the composition
    QCOMPARE(compose.count(), 3);
    QCOMPARE(compose.subCommand(1), y);

    delete inner;
    QCOMPARE(compose.countOrig(), 2);
    QCOMPARE(compose.count(), 2);
    delete plain;
    QCOMPARE(compose.countOrig(), 1);
    QCOMPARE(compose.subCommand(0), &tail);
}

void tst_KListCommand::triggerClone()
{
    KTriggerCommand source(this, nullptr);
    source.setText("Save");
    source.setProperty("hotKey", "S");
    QSignalSpy sourceTriggered(&source, &KCommand::triggered);
    QScopedPointer<KCommand> copy(source.clone(this, nullptr));
    QCOMPARE(copy->metaObject(), &KTriggerCommand::staticMetaObject);
    QCOMPARE(copy->text(), QString("Save"));
    QCOMPARE(copy->property("hotKey"), QVariant(QString("S")));
    copy->trigger();
    QCOMPARE(sourceTriggered.count(), 1);
    source.trigger();
    QCOMPARE(sourceTriggered.count(), 2);
}

void tst_KListCommand::apiDelegate()
{
    QObject owner;
    auto* cmd = new KTriggerCommand(this, &owner);
    // Without the host's class the action changes nothing about triggering.
    cmd->setMacroAction("RunMe");
    QVERIFY(!cmd->delegateCommand());
    QCOMPARE(cmd->action(), QString("RunMe"));
    QCOMPARE(cmd->hyperlink(), QString("none"));

    KCommandFactoryItem<KxTestMacroCommand, QObject> macro("KxMacroActionButtonCommand", "QObject");
    KCommandFactoryItem<KxTestMacroCommand, QObject> link("KxHyperlinkButtonCommand", "QObject");
    cmd->setMacroAction("RunMe");
    KCommand* delegate = cmd->delegateCommand();
    QVERIFY(delegate);
    QCOMPARE(delegate->parent(), &owner);
    QCOMPARE(delegate->property("action"), QVariant(QString("RunMe")));
    QSignalSpy ownTriggered(cmd, &KCommand::triggered);
    QSignalSpy delegateTriggered(delegate, &KCommand::triggered);
    cmd->trigger();
    QCOMPARE(ownTriggered.count(), 1);
    QCOMPARE(delegateTriggered.count(), 1);

    cmd->setDetail("http://example.invalid");
    cmd->setHyperlink("open");
    QVERIFY(cmd->delegateCommand() && cmd->delegateCommand() != delegate);
    QCOMPARE(cmd->delegateCommand()->detail(), QString("http://example.invalid"));
    QCOMPARE(cmd->action(), QString());
    cmd->setDetail("other");
    QCOMPARE(cmd->delegateCommand()->detail(), QString("other"));
    cmd->reset();
    QVERIFY(!cmd->delegateCommand());
}

NORVIK_TEST_MAIN(tst_KListCommand)
#include "tst_klistcommand.moc"
