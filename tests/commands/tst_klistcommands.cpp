#include <ktestsupport.h>

#include <QSignalSpy>
#include <QStandardPaths>

#include <kcommandfactory.h>
#include <klayoutwidgetcommand.h>
#include <kmenucommand.h>
#include <kmenuwidget.h>
#include <kmrucommand.h>
#include <kpopupwidget.h>
#include <kquickmenucommand.h>
#include <krbdonotshowhotkeycommand.h>
#include <krbdonotshowhotkeytoolbutton.h>
#include <krblogicgroupcommand.h>
#include <krblogicgroupvisibletogglecommand.h>
#include <kseparatorcommand.h>
#include <ksettings.h>
#include <ktoolbarpopupmenucommand.h>
#include <ktoolbartoggleviewcommand.h>
#include <ktoolbutton.h>
#include <ktriggercommand.h>
#include <kvisibletogglecommand.h>

namespace {

// A host's recent-file list: records which entry was chosen.
class RecordingMru : public KMRUCommand
{
public:
    using KMRUCommand::KMRUCommand;
    QList<int> chosen;

protected:
    void onTriggered() override { chosen << index(); }
};

// What a list shows after the idle round asked it to update.
bool shownAfterUpdate(KCommand& cmd)
{
    cmd.update();
    return cmd.isVisible();
}

} // namespace

using KTestSupport::texts;

class tst_KListCommands : public QObject
{
    Q_OBJECT
private Q_SLOTS:
    void initTestCase();
    void factoryRegistrations();
    void mruItemsFollowStrings();
    void mruAutoShortCutAndTrigger();
    void mruKeepsStringsInSettings();
    void quickMenuFace();
    void quickMenuEnablement();
    void visibilityFollowers();
    void menuCommandBuildsFromCode();
    void clones();
    void pocketWidgets();
};

void tst_KListCommands::initTestCase()
{
    QStandardPaths::setTestModeEnabled(true);
    QCoreApplication::setOrganizationName(QStringLiteral("NorvikTest"));
    KApplication::instance()->setProductName(QStringLiteral("ListCommandsTest"));
}

void tst_KListCommands::factoryRegistrations()
{
    QObject host;
    for (const char* name : {"KTriggerCommand", "KListCommand", "KRbLogicGroupCommand", "KComposeListCommand",
                             "KQuickMenuCommand", "KVisibleToggleCommand", "KRbLogicGroupVisibleToggleCommand",
                             "KRbDonotShowHotKeyCommand", "KLayoutWidgetCommand", "KToolBarToggleViewCommand",
                             "KToolBarPopupMenuCommand"}) {
        QScopedPointer<KCommand> cmd(KCommandFactory::createCommand(name, &host, nullptr));
        QVERIFY2(cmd, name);
        QVERIFY2(cmd->host() == &host, name);
        QVERIFY2(QLatin1String(cmd->metaObject()->className()) == QLatin1String(name), name);
    }
}

void tst_KListCommands::mruItemsFollowStrings()
{
    KMRUCommand mru(this, nullptr);
    QSignalSpy inserted(&mru, &KAbstractListCommand::subCommandInsert);
    QSignalSpy removed(&mru, &KAbstractListCommand::subCommandRemove);
    mru.setStrings({"a", "b", "c"});
    QCOMPARE(inserted.count(), 3);
    auto* first = qobject_cast<KMRUItemCommand*>(mru.subCommand(0));
    QVERIFY(first);
    QCOMPARE(first->parent(), &mru);

    // Fewer strings: the surplus goes from the last down; the rest are renamed.
    mru.setStrings({"x"});
    QCOMPARE(removed.count(), 2);
    QCOMPARE(removed.at(0).at(0).toInt(), 2);
    QCOMPARE(mru.subCommand(0), first);
    QCOMPARE(first->text(), QString("x"));

    // A limit cuts; lowering the limit to 0 brings nothing back, -1 is no limit.
    mru.setMaxItems(3);
    mru.setStrings({"1", "2", "3", "4", "5"});
    QCOMPARE(mru.getStrings(), QStringList({"1", "2", "3"}));
    mru.setMaxItems(2);
    QCOMPARE(texts(&mru), QStringList({"1", "2"}));
    mru.setMaxItems(0);
    QCOMPARE(mru.count(), 2);
    mru.setMaxItems(-1);
    mru.setStrings({"1", "2", "3", "4", "5"});
    QCOMPARE(mru.count(), 5);

    // The list's enablement reaches the items on request.
    mru.setEnabled(false);
    QVERIFY(mru.subCommand(4)->isEnabled());
    mru.updateAllItems();
    QVERIFY(!mru.subCommand(4)->isEnabled());
}

void tst_KListCommands::mruAutoShortCutAndTrigger()
{
    RecordingMru mru(this, nullptr);
    mru.setAutoShortCut(true);
    mru.setStrings({"f0", "f1", "f2", "f3", "f4", "f5", "f6", "f7", "f8", "f9"});
    QCOMPARE(mru.subCommand(9)->text() + "/" + mru.subCommand(9)->property("hotKey").toString(), QString("10 f9/10")); // no cap at 9
    mru.subCommand(3)->trigger();
    QCOMPARE(mru.chosen, QList<int>({3}));

    // Turning numbering off renames the items at once.
    mru.setAutoShortCut(false);
    QCOMPARE(mru.subCommand(0)->text(), QString("f0"));
}

void tst_KListCommands::mruKeepsStringsInSettings()
{
    const QString key = QStringLiteral("Test/Recent");
    KSettings().remove(key);
    {
        KMRUCommand mru(this, nullptr);
        mru.setSettingsKey(key);
        mru.setStrings({"/a/one.txt", "/b/two.html", "/c/three.txt"});
        mru.setStrings({"/b/two.html", "/a/one.txt"}); // a shorter list leaves nothing stale
    }
    QCOMPARE(KSettings().value(key + "/count").toInt(), 2);
    QVERIFY(!KSettings().contains(key + "/item3"));
    // The next start: a list with the same key and a smaller limit.
    KMRUCommand again(this, nullptr);
    again.setMaxItems(1);
    again.setSettingsKey(key);
    QCOMPARE(again.getStrings(), QStringList({"/b/two.html"}));

    // Without a key nothing is written.
    KMRUCommand loose(this, nullptr);
    loose.setStrings({"/elsewhere"});
    QCOMPARE(KSettings().value(key + "/item1").toString(), QString("/b/two.html"));
}

void tst_KListCommands::quickMenuFace()
{
    KQuickMenuCommand quick(this, nullptr);
    QVERIFY(!quick.isEnabled()); // no reference yet: disabled, and a click does nothing

    KTriggerCommand red(this, nullptr), blue(this, nullptr);
    red.setText("Red");
    blue.setCustomTip("tipBlue");
    blue.setCustomTip2("second");
    // A handler of the item that was connected before the item joined the list.
    QStringList order;
    connect(&blue, &KCommand::triggered, this, [&] { order << (quick.referenceCommand() == &blue ? "late" : "first"); });
    quick.addSubCommand(&red);
    quick.addSeparator();
    quick.addSubCommand(&blue);
    quick.trigger(); // nothing to run

    // The triggered item becomes the face, after the item's own handlers have run.
    blue.trigger();
    QCOMPARE(order, QStringList({"first"}));
    QCOMPARE(quick.referenceCommand(), &blue);
    QCOMPARE(quick.customTip() + quick.customTip2(), QString("tipBlue")); // the second tip is not copied

    // The face follows its reference, and a click on it runs the reference.
    blue.setText("Navy");
    QCOMPARE(quick.text(), QString("Navy"));
    QSignalSpy blueRuns(&blue, &KCommand::triggered);
    quick.trigger();
    QCOMPARE(blueRuns.count(), 1);

    red.trigger();
    blue.setText("Sky");
    QCOMPARE(quick.text(), QString("Red")); // the old face is no longer followed

    // An item taken out no longer becomes the face.
    quick.removeSubCommand(2);
    blue.trigger();
    QCOMPARE(quick.referenceCommand(), &red);

    // A reference that dies leaves the empty face.
    {
        KTriggerCommand temp(this, nullptr);
        quick.setReferenceCommand(&temp);
    }
    QVERIFY(!quick.referenceCommand());
    quick.syncCommand();
    QVERIFY(quick.text().isEmpty());
    QVERIFY(!quick.isEnabled());
}

void tst_KListCommands::quickMenuEnablement()
{
    KQuickMenuCommand quick(this, nullptr);
    KTriggerCommand a(this, nullptr), b(this, nullptr);
    quick.addSubCommand(&a);
    quick.addSubCommand(&b);
    a.trigger();
    quick.setEnabled(false);
    // No item differs from the reference's noted state: nothing is looked at again.
    quick.update();
    QVERIFY(!quick.isEnabled());
    // An item that stands apart from the reference makes the face look again: one is enabled.
    b.setEnabled(false);
    quick.update();
    QVERIFY(quick.isEnabled());
}

void tst_KListCommands::visibilityFollowers()
{
    // A visible toggle flips its command and shows its state.
    KTriggerCommand panel(this, nullptr);
    KVisibleToggleCommand toggle(this, nullptr);
    toggle.setDefaultCommand(&panel);
    QVERIFY(toggle.checkedHint());
    toggle.trigger();
    QVERIFY(!panel.isVisible());
    QVERIFY(!toggle.checkedHint());
    panel.setVisible(true);
    QVERIFY(toggle.checkedHint());

    // A ribbon group shows while any item shows, without updating them.
    KRbLogicGroupCommand group(this, nullptr);
    KTriggerCommand x(this, nullptr), y(this, nullptr);
    group.addSubCommand(&x);
    group.addSubCommand(&y);
    x.setVisible(false);
    QVERIFY(shownAfterUpdate(group));
    y.setVisible(false);
    QVERIFY(!shownAfterUpdate(group));

    // A tool-bar drop-down hides with all its items hidden and does not come back.
    KToolBarPopupMenuCommand popup(this, nullptr);
    KTriggerCommand p(this, nullptr);
    popup.addSubCommand(&p);
    QVERIFY(shownAfterUpdate(popup));
    p.setVisible(false);
    QVERIFY(!shownAfterUpdate(popup));
    p.setVisible(true);
    QVERIFY(!shownAfterUpdate(popup));

    // A tool-bar toggle without a bar to toggle hides; with a fixed action it follows it.
    KToolBarToggleViewCommand barToggle(this, nullptr);
    QVERIFY(!shownAfterUpdate(barToggle));
    QAction action("Standard", nullptr);
    action.setCheckable(true);
    action.setChecked(true);
    barToggle.setAction(&action);
    barToggle.update();
    QCOMPARE(barToggle.text(), QString("Standard"));
    QVERIFY(barToggle.checkedHint());
    barToggle.trigger();
    QVERIFY(!action.isChecked());

    // The ribbon toggle without a window does nothing, quietly.
    KRbLogicGroupVisibleToggleCommand ribbonToggle(this, nullptr);
    ribbonToggle.trigger();
    ribbonToggle.update();
}

void tst_KListCommands::menuCommandBuildsFromCode()
{
    QObject host;
    auto* menu = new KMenuCommand(&host);
    KMenuCommand* sub = menu->addMenu("&Recent");
    KTriggerCommand* open = menu->addMenuItem("&Open");
    menu->addSeparator();
    QCOMPARE(menu->count(), 3);
    QCOMPARE(sub->host(), &host);
    QCOMPARE(open->parent(), &host);
    QCOMPARE(open->text() + open->property("hotKey").toString(), QString("OpenO")); // the mnemonic read off
    QVERIFY(KSeparatorCommand::isSeparator(menu->subCommand(2)));
}

void tst_KListCommands::clones()
{
    QObject newHost;
    // Every trigger-command family clones to a plain trigger command that forwards.
    KTriggerCommand panel(this, nullptr);
    auto* visible = new KVisibleToggleCommand(this, this);
    visible->setDefaultCommand(&panel);
    RecordingMru mru(this, nullptr);
    mru.setStrings({"only"});
    const QList<KTriggerCommand*> sources = {new KTriggerCommand(this, this), visible,
                                             new KRbDonotShowHotKeyCommand(this, this),
                                             new KToolBarToggleViewCommand(this, this),
                                             new KRbLogicGroupVisibleToggleCommand(this, this),
                                             static_cast<KTriggerCommand*>(mru.subCommand(0))};
    for (KTriggerCommand* source : sources) {
        source->setText(QString("src-") + source->metaObject()->className());
        QScopedPointer<KCommand> copy(source->clone(&newHost, nullptr));
        QVERIFY(copy);
        QCOMPARE(copy->metaObject(), &KTriggerCommand::staticMetaObject);
        QCOMPARE(copy->text(), source->text());
        QSignalSpy sourceRuns(source, &KCommand::triggered);
        copy->trigger();
        QCOMPARE(sourceRuns.count(), 1);
    }
    QVERIFY(!panel.isVisible()); // the visible toggle's own behaviour ran through its clone
    QCOMPARE(mru.chosen, QList<int>({0}));

    // A quick menu clones to a quick menu, with a clone of its reference; a list without a
    // clone of its own gives none.
    KQuickMenuCommand quick(this, nullptr);
    KTriggerCommand item(this, nullptr);
    item.setText("item");
    quick.addSubCommand(&item);
    item.trigger();
    QScopedPointer<KCommand> quickCopy(quick.clone(&newHost, nullptr));
    auto* quickClone = qobject_cast<KQuickMenuCommand*>(quickCopy.data());
    QVERIFY(quickClone);
    QVERIFY(quickClone->referenceCommand());
    QVERIFY(quickClone->referenceCommand() != &item);
    QCOMPARE(quickClone->text(), QString("item"));
    QSignalSpy itemRuns(&item, &KCommand::triggered);
    quickClone->trigger();
    QCOMPARE(itemRuns.count(), 1);
    QVERIFY(!KMRUCommand(this, nullptr).clone(&newHost, nullptr));
}

void tst_KListCommands::pocketWidgets()
{
    QWidget parent;
    KTriggerCommand trigger(this, nullptr);
    auto* button = qobject_cast<KToolButton*>(trigger.requestWidget(&parent, KCommand::PocketPurpose));
    QVERIFY(button);
    QCOMPARE(button->command(), &trigger);
    QCOMPARE(trigger.lastButton(), button);
    KRbDonotShowHotKeyCommand hidden(this, nullptr);
    QVERIFY(qobject_cast<KRbDonotShowHotKeyToolButton*>(hidden.requestWidget(&parent, KCommand::PocketPurpose)));

    // A list gives a button with the drop-down arrow, unless told to hide it. A click opens
    // the list's menu under the button; a row's click triggers its command and closes it.
    KListCommand list(this, nullptr);
    auto* listButton = qobject_cast<KToolButton*>(list.requestWidget(&parent, KCommand::PocketPurpose));
    QVERIFY(listButton);
    QVERIFY(listButton->buttonStyle() & KToolButton::StyleArrow);
    parent.show();
    QVERIFY(QTest::qWaitForWindowExposed(&parent));
    QTest::mouseClick(listButton, Qt::LeftButton, {}, QPoint(3, 3));
    QVERIFY(!listButton->findChild<KPopupWidget*>()); // no items: nothing opens
    KTriggerCommand first(this, nullptr), hiddenItem(this, nullptr);
    first.setText("First");
    hiddenItem.setText("Hidden");
    hiddenItem.setVisible(false);
    list.addSubCommand(&first);
    list.addSeparator();
    list.addSubCommand(&hiddenItem);
    QTest::mouseClick(listButton, Qt::LeftButton, {}, QPoint(3, 3));
    auto* popup = listButton->findChild<KPopupWidget*>();
    QVERIFY(popup);
    QVERIFY(popup->isVisible());
    QVERIFY(listButton->isDown());
    QCOMPARE(popup->geometry().topLeft(), KPopupWidget::getWidgetGlobalBottomLeftPos(listButton));
    auto* menu = qobject_cast<KMenuWidget*>(popup->contentWidget());
    QVERIFY(menu);
    QCOMPARE(menu->command(), static_cast<KCommand*>(&list));
    QCOMPARE(menu->count(), 3);
    QVERIFY(menu->itemAt(0)->isVisible());
    QVERIFY(!menu->itemAt(1)->isVisible()); // nothing shown after it
    QVERIFY(!menu->itemAt(2)->isVisible());
    QSignalSpy runs(&first, &KCommand::triggered);
    QTest::mouseClick(menu, Qt::LeftButton, {}, menu->itemAt(0)->geometry().center());
    QCOMPARE(runs.count(), 1);
    QVERIFY(!popup->isVisible());
    QVERIFY(!listButton->isDown());
    list.setHideArrowHint(true);
    auto* bare = qobject_cast<KToolButton*>(list.requestWidget(&parent, KCommand::PocketPurpose));
    QVERIFY(!(bare->buttonStyle() & KToolButton::StyleArrow));
}

NORVIK_TEST_MAIN(tst_KListCommands)
#include "tst_klistcommands.moc"
