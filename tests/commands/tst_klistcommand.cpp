#include <ktestsupport.h>

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

// A parser that fills a list from code the first time it is read.
class FillingParser : public KSubCommandParser
{
public:
    void setupCommandXML(KAbstractListCommand* list, const QString&) override
    {
        ++calls;
        auto* c = new KTriggerCommand(list, list);
        c->setText("late");
        static_cast<KListCommand*>(list)->addSubCommand(c);
    }
    int calls = 0;
};

// A host's macro class, for the delegate of KApiCommand.
class KxTestMacroCommand : public KTriggerCommand
{
    Q_OBJECT
public:
    KxTestMacroCommand(QObject* host, QObject* parent)
        : KTriggerCommand(host, parent) {}
};

using KTestSupport::texts;

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
    void apiDelegate();

private:
    KTriggerCommand* item(const QString& text, QObject* parent = nullptr)
    {
        auto* c = new KTriggerCommand(this, parent ? parent : this);
        c->setText(text);
        return c;
    }
};

void tst_KListCommand::insertIndexes_data()
{
    QTest::addColumn<int>("index");
    QTest::addColumn<int>("expected");
    QTest::newRow("negative appends") << -1 << 2;
    QTest::newRow("beyond the end appends") << 9999 << 2;
    QTest::newRow("middle") << 1 << 1;
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
    QSignalSpy removes(list, &KAbstractListCommand::subCommandRemove);
    delete list;
    QCOMPARE(removes.count(), 2);
}

void tst_KListCommand::cloneAndReset()
{
    KListCommand list(this, nullptr);
    list.setText("Edit");
    list.setProperty("id", "edit");
    KTriggerCommand* copyItem = item("Copy", &list);
    list.addSubCommand(copyItem);
    list.addSeparator();
    list.addSubCommand(new KCommand(this, &list)); // cannot be cloned

    QObject newHost;
    QScopedPointer<KCommand> copy(list.clone(&newHost, nullptr));
    QVERIFY(qobject_cast<KListCommand*>(copy.data()));
    QCOMPARE(copy->host(), &newHost);
    QCOMPARE(copy->property("id"), QVariant(QString("edit")));
    QCOMPARE(texts(copy.data()), QStringList{"Copy"}); // separator and plain command are skipped
    QCOMPARE(copy->subCommand(0)->parent(), copy.data());

    list.setCheckedHint(true);
    list.reset();
    QCOMPARE(list.count(), 0);
    QVERIFY(!list.checkedHint());
    QVERIFY(!list.property("id").isValid());
    QCOMPARE(copyItem->parent(), &list); // items it owns stay its children
}

void tst_KListCommand::composeFollowsInnerLists()
{
    KListCommand first(this, nullptr), delayed(this, nullptr);
    first.addSubCommand(item("a"));
    first.addSubCommand(item("b"));
    FillingParser parser;
    delayed.setDelayloadPath("later.xml");
    delayed.setSubCommandParser(&parser);

    KComposeListCommand compose(this, nullptr);
    KListRecorder recorder(&compose);
    compose.insertComposedSubCommandOrig(0, &first);
    compose.insertComposedSubCommandOrig(1, &delayed);
    compose.insertSubCommandOrig(-1, item("plain"));
    // The delayed list was loaded once, and its own insertions were not heard twice.
    QCOMPARE(parser.calls, 1);
    QCOMPARE(recorder.log, (QStringList{"+0", "+1", "+2", "+3"}));
    QCOMPARE(texts(&compose), (QStringList{"a", "b", "late", "plain"}));
    QCOMPARE(compose.countOrig(), 3);
    QCOMPARE(compose.calcCommandLogicIdx(1), 2);
    QCOMPARE(compose.calcCommandLogicIdx(2), 3);

    // A view hears the changes of an inner list at the flat index.
    recorder.log.clear();
    delayed.insertSubCommand(0, item("d"));
    first.removeSubCommand(1);
    QCOMPARE(recorder.log, (QStringList{"+2", "-1"}));
    QCOMPARE(texts(&compose), (QStringList{"a", "d", "late", "plain"}));
    QCOMPARE(compose.calcCommandLogicIdx(2), 3);

    // Removing an original item removes all it stands for, and the inner list is no
    // longer followed.
    compose.removeSubCommandOrig(1);
    QCOMPARE(recorder.log, (QStringList{"+2", "-1", "-1", "-1"}));
    delayed.addSubCommand(item("ignored"));
    QCOMPARE(texts(&compose), (QStringList{"a", "plain"}));
    QVERIFY(recorder.inPlace);

    compose.clear();
    QCOMPARE(compose.countOrig(), 0);
    QCOMPARE(compose.count(), 0);
}

void tst_KListCommand::composeDropsDeadReferences()
{
    auto* inner = new KListCommand(this, nullptr);
    KTriggerCommand* x = item("x", inner);
    inner->addSubCommand(x);
    inner->addSubCommand(item("y", inner));
    KTriggerCommand* plain = item("plain");

    KComposeListCommand compose(this, nullptr);
    compose.insertSubCommandOrig(0, plain);
    compose.insertComposedSubCommandOrig(1, inner);
    compose.insertSubCommandOrig(2, item("tail"));
    QCOMPARE(compose.count(), 4);

    delete x; // an item of the inner list dies: the inner list tells the composition
    QCOMPARE(texts(&compose), (QStringList{"plain", "y", "tail"}));
    delete inner;
    delete plain;
    QCOMPARE(compose.countOrig(), 1);
    QCOMPARE(texts(&compose), QStringList{"tail"});
}

void tst_KListCommand::apiDelegate()
{
    QObject owner;
    auto* cmd = new KTriggerCommand(this, &owner);
    // Without the host's class the action changes nothing about triggering.
    cmd->setMacroAction("RunMe");
    QVERIFY(!cmd->delegateCommand());

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
    QVERIFY(cmd->delegateCommand());
    QVERIFY(cmd->delegateCommand() != delegate);
    QVERIFY(cmd->action().isEmpty());
    cmd->setDetail("other");
    QCOMPARE(cmd->delegateCommand()->detail(), QString("other"));
    cmd->reset();
    QVERIFY(!cmd->delegateCommand());
}

NORVIK_TEST_MAIN(tst_KListCommand)
#include "tst_klistcommand.moc"
