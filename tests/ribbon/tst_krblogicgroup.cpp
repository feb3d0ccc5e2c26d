#include <ktestsupport.h>

#include <QGridLayout>
#include <QLabel>
#include <QSignalSpy>
#include <QStyleFactory>
#include <QTemporaryDir>

#include <kapptheme.h>
#include <kidleevent.h>
#include <korbstyle_2013.h>
#include <krblayoutlistcommand.h>
#include <krblayoutwidget.h>
#include <krblogicgroup.h>
#include <krblogicgroupcommand.h>
#include <krblogicgrouplayout.h>
#include <krbtoolbarcontainer.h>
#include <ktoolbutton.h>
#include <ktriggercommand.h>

#include "ribbontesthelpers.h"

using namespace RibbonTest;

namespace {

// A group command with a dialog behind its corner button.
class LaunchingGroupCommand : public KRbLogicGroupCommand
{
public:
    using KRbLogicGroupCommand::KRbLogicGroupCommand;
    bool isTriggerable() const override { return true; }
};

// Installs the flat look as the application's style while it lives: widgets take the
// application's style when they are made.
class FlatLook
{
public:
    FlatLook() { QApplication::setStyle(new KORBStyle_2013(QStyleFactory::create("Fusion"))); }
    ~FlatLook() { QApplication::setStyle(QStyleFactory::create("Fusion")); }
};

QRect controlGeometry(KRbLogicGroup& group, int index)
{
    group.logicLayout()->activate();
    return group.logicLayout()->itemAt(index)->widget()->geometry();
}

} // namespace

class tst_KRbLogicGroup : public QObject
{
    Q_OBJECT
private Q_SLOTS:
    void init() { m_warnings.reset(new KWarningCatcher); }
    void cleanup()
    {
        const QStringList messages = m_warnings->messages();
        m_warnings.reset();
        QCOMPARE(messages, QStringList());
    }

    void controlStyles_data();
    void controlStyles();
    void controlWidgets();
    void geometry_data();
    void geometry();
    void lineCountFromStyle();
    void titleAndCornerButton();
    void cornerButtonLaunches();
    void followsCommand();
    void titleColourFollowsTheme();

private:
    QScopedPointer<KWarningCatcher> m_warnings;
};

void tst_KRbLogicGroup::controlStyles_data()
{
    QTest::addColumn<int>("spaceHint");
    QTest::addColumn<bool>("flat"); // the 2013 look
    QTest::addColumn<int>("commandStyle");
    QTest::addColumn<int>("expectedStyle");
    QTest::addColumn<QSize>("iconSize");
    QTest::addColumn<int>("alignment");

    QTest::newRow("large") << 3 << false << 0 << 107 << QSize(32, 32) << 0;
    QTest::newRow("large, flat look: its icon size, at the top") << 3 << true << 0 << 107 << QSize(24, 24)
                                                                << int(Qt::AlignTop);
    QTest::newRow("large keeps the arrow") << 3 << false << 5 << 111 << QSize(32, 32) << 0;
    QTest::newRow("small with text") << 2 << false << 0 << 3 << QSize(16, 16) << 0;
    QTest::newRow("small keeps arrow and auto hide") << 2 << false << 133 << 135 << QSize(16, 16) << 0;
    QTest::newRow("small, text goes first") << 1 << false << 0 << 131 << QSize(16, 16) << 0;
    QTest::newRow("icon only") << 0 << false << 7 << 5 << QSize(16, 16) << 0;
}

void tst_KRbLogicGroup::controlStyles()
{
    QFETCH(int, spaceHint);
    QFETCH(bool, flat);
    QFETCH(int, commandStyle);
    QFETCH(int, expectedStyle);
    QFETCH(QSize, iconSize);
    QFETCH(int, alignment);

    QScopedPointer<FlatLook> look(flat ? new FlatLook : nullptr);
    QObject owner;
    auto* cmd = new KRbLogicGroupCommand(&owner, &owner);
    auto* button = new KTriggerCommand(&owner, &owner);
    button->setText("Paste");
    button->setButtonStyle(commandStyle);
    button->setProperty("spaceHint", spaceHint);
    cmd->addSubCommand(button);
    QWidget host;
    KRbLogicGroup group(cmd, &host);
    group.ensureConnectCommand();
    KRbLogicGroupItem* item = group.logicLayout()->logicItemAt(0);
    QVERIFY(item);
    auto* tool = qobject_cast<KToolButton*>(item->widget());
    QVERIFY(tool);
    QCOMPARE(tool->buttonStyle(), expectedStyle);
    QCOMPARE(tool->iconSize(), iconSize);
    QCOMPARE(int(item->alignment()), alignment);
    QCOMPARE(item->isLarge(), spaceHint == 3);
}

void tst_KRbLogicGroup::controlWidgets()
{
    // An embedded list is a block of small buttons, a layout list its layout widget, another
    // embedded command its inline form, the rest their pocket form.
    QObject owner;
    auto* cmd = new KRbLogicGroupCommand(&owner, &owner);
    auto* embeddedList = new KListCommand(&owner, &owner);
    embeddedList->setProperty("embedHint", true);
    auto* layoutList = new KRbLayoutListCommand(&owner, &owner);
    SizedCommand* embedded = control("S20x20", &owner);
    embedded->setProperty("embedHint", true);
    SizedCommand* plain = control("S20x20", &owner);
    for (KCommand* c : {static_cast<KCommand*>(embeddedList), static_cast<KCommand*>(layoutList),
                        static_cast<KCommand*>(embedded), static_cast<KCommand*>(plain)})
        cmd->addSubCommand(c);
    QWidget host;
    KRbLogicGroup group(cmd, &host);
    group.ensureConnectCommand();
    KRbLogicGroupLayout* layout = group.logicLayout();
    QCOMPARE(layout->count(), 4);
    QVERIFY(qobject_cast<KRbToolbarContainer*>(layout->itemAt(0)->widget()));
    QVERIFY(qobject_cast<KRbLayoutWidget*>(layout->itemAt(1)->widget()));
    QCOMPARE(layout->itemAt(2)->widget()->objectName(), QString("inline"));
    QCOMPARE(layout->itemAt(3)->widget()->objectName(), QString());
    // The block goes with its command, like any widget a command makes.
    QPointer<QWidget> blockWidget = layout->itemAt(0)->widget();
    cmd->removeSubCommand(0);
    delete embeddedList;
    QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
    QVERIFY(!blockWidget);
    QCOMPARE(layout->count(), 3);
}

void tst_KRbLogicGroup::geometry_data()
{
    QTest::addColumn<QString>("controls");
    QTest::addColumn<QSize>("size");
    QTest::addColumn<QSize>("hint");
    QTest::addColumn<QSize>("minimum");
    QTest::addColumn<QString>("expected");

    // Without a title the group is its control area within the margins 2, 2, 2, 3. At its
    // hint the controls count from the group's own corner: the margins do not move them.
    QTest::newRow("at the hint") << "L40x60 S30x20 S30x20" << QSize(74, 65) << QSize(74, 65) << QSize(74, 65)
                                 << "0,0,40,60 40,6,30,20 40,33,30,20";
    // Narrower: the large control gives its 10 of slack, placed from the margin's left.
    QTest::newRow("shrunk") << "L40x60-30x60 S30x20 S30x20" << QSize(64, 65) << QSize(74, 65) << QSize(64, 65)
                            << "2,2,30,60 32,6,30,20 32,33,30,20";
}

void tst_KRbLogicGroup::geometry()
{
    QFETCH(QString, controls);
    QFETCH(QSize, size);
    QFETCH(QSize, hint);
    QFETCH(QSize, minimum);
    QFETCH(QString, expected);

    QObject owner;
    QWidget host;
    KRbLogicGroup group(RibbonTest::group(controls, &owner), &host);
    group.setTitleVisible(false);
    QCOMPARE(group.sizeHint(), hint);
    QCOMPARE(group.minimumSizeHint(), minimum);
    group.resize(size);
    const QList<QRect> wanted = rects(expected);
    for (int i = 0; i < wanted.size(); ++i)
        QCOMPARE(controlGeometry(group, i), wanted.at(i));
}

void tst_KRbLogicGroup::lineCountFromStyle()
{
    // The flat look pairs small controls (custom hint 1 is 2); a style without the hint keeps 3.
    QObject owner;
    QWidget host;
    KRbLogicGroup plain(group("S20x20 S20x20 S20x20", &owner), &host);
    QCOMPARE(plain.logicLayout()->lineCount(), 3);
    FlatLook look;
    KRbLogicGroup flat(group("S20x20 S20x20 S20x20", &owner), &host);
    QCOMPARE(flat.logicLayout()->lineCount(), 2);
    flat.setTitleVisible(false);
    QCOMPARE(flat.sizeHint(), QSize(44, 45)); // columns of 2 and 1
}

void tst_KRbLogicGroup::titleAndCornerButton()
{
    QObject owner;
    auto* cmd = new LaunchingGroupCommand(&owner, &owner);
    cmd->setText("Clipboard");
    QWidget host;
    KRbLogicGroup group(cmd, &host);
    auto* grid = qobject_cast<QGridLayout*>(group.layout());
    QVERIFY(grid);
    QCOMPARE(group.titleLabel()->text(), QString("Clipboard"));
    QVERIFY(group.hasTitleButton());
    KRbLogicGroup_Button* button = group.titleButton();
    // With a title, the button stands behind the label in the title row.
    QLayoutItem* titleRow = grid->itemAtPosition(1, 0);
    QVERIFY(titleRow && titleRow->layout());
    QCOMPARE(titleRow->layout()->indexOf(group.titleLabel()), 0);
    QCOMPARE(titleRow->layout()->indexOf(button), 1);

    // Without, it moves up beside the controls, at the bottom.
    group.setTitleVisible(false);
    QVERIFY(group.titleLabel()->isHidden());
    QCOMPARE(grid->itemAtPosition(1, 0), nullptr);
    QLayoutItem* corner = grid->itemAtPosition(0, 1);
    QVERIFY(corner);
    QCOMPARE(corner->widget(), button);
    QCOMPARE(corner->alignment(), Qt::AlignBottom);

    group.setTitleVisible(true);
    QVERIFY(grid->itemAtPosition(1, 0));
    QCOMPARE(grid->itemAtPosition(1, 0)->layout()->indexOf(button), 1);
    QCOMPARE(grid->itemAtPosition(0, 1), nullptr);

    // Not triggerable: the button goes; back, a new one comes.
    QPointer<KRbLogicGroup_Button> old = button;
    group.setTriggerAble(false);
    QVERIFY(!old);
    QVERIFY(!group.hasTitleButton());
    group.setTriggerAble(true);
    QVERIFY(group.hasTitleButton());

    // A command that cannot be triggered never has one.
    KRbLogicGroup plain(new KRbLogicGroupCommand(&owner, &owner), &host);
    QVERIFY(!plain.hasTitleButton());
    plain.setTriggerAble(false);
    plain.setTriggerAble(true);
    QVERIFY(!plain.hasTitleButton());
}

void tst_KRbLogicGroup::cornerButtonLaunches()
{
    QObject owner;
    auto* cmd = new LaunchingGroupCommand(&owner, &owner);
    QWidget host;
    auto* group = new KRbLogicGroup(cmd, &host);
    KRbLogicGroup_Button* button = group->titleButton();
    QVERIFY(button);
    // The style sizes it once from a proposed 16 by 16; the frame's answer is that size.
    QCOMPARE(button->size(), QSize(16, 16));
    QCOMPARE(button->sizeHint(), QSize(16, 16));
    QSignalSpy triggered(cmd, &KCommand::triggered);
    host.resize(200, 100);
    host.show();
    QVERIFY(QTest::qWaitForWindowExposed(&host));
    QTest::mouseClick(button, Qt::LeftButton);
    QCOMPARE(triggered.count(), 1);

    // The flat look's launcher is 12 by 12.
    FlatLook look;
    KRbLogicGroup flat(cmd, &host);
    QCOMPARE(flat.titleButton()->size(), QSize(12, 12));
}

void tst_KRbLogicGroup::followsCommand()
{
    QObject owner;
    KRbLogicGroupCommand* cmd = group("S20x20 S20x20", &owner);
    QWidget host;
    KRbLogicGroup group(cmd, &host);
    group.ensureConnectCommand();
    cmd->setText("Font");
    QCOMPARE(group.titleLabel()->text(), QString("Font"));

    // The idle event asks the command, which hides with its last visible control.
    for (int i = 0; i < cmd->count(); ++i)
        cmd->subCommand(i)->setVisible(false);
    KIdleEvent idle(0);
    QCoreApplication::sendEvent(&group, &idle);
    QVERIFY(!cmd->isVisible());
    QVERIFY(group.isHidden());
    cmd->subCommand(1)->setVisible(true);
    QCoreApplication::sendEvent(&group, &idle);
    QVERIFY(!group.isHidden());

    // Controls follow the list.
    cmd->insertSubCommand(0, control("L40x60", &owner));
    QCOMPARE(group.logicLayout()->count(), 3);
    QVERIFY(group.logicLayout()->logicItemAt(0)->isLarge());
    QPointer<QWidget> gone = group.logicLayout()->itemAt(0)->widget();
    cmd->removeSubCommand(0);
    QCOMPARE(group.logicLayout()->count(), 2);
    QVERIFY(gone->isHidden());
    QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
    QVERIFY(!gone);
}

void tst_KRbLogicGroup::titleColourFollowsTheme()
{
    QTemporaryDir dir;
    const auto themeFile = [&](const char* colour) {
        return KTestSupport::writeFile(dir.filePath("theme.xml"),
                                       QByteArray("<t><style name='base'/><theme><style class='functionPanelName'>"
                                                  "<color name='Text' value='")
                                           + colour + "'/></style></theme></t>");
    };
    QVERIFY(KTestSupport::loadTheme(themeFile("#123456")));
    QObject owner;
    QWidget host;
    KRbLogicGroup group(new KRbLogicGroupCommand(&owner, &owner), &host);
    QCOMPARE(group.titleLabel()->palette().color(QPalette::WindowText), QColor("#123456"));

    QVERIFY(KTestSupport::loadTheme(themeFile("#654321")));
    QCOMPARE(group.titleLabel()->palette().color(QPalette::WindowText), QColor("#123456"));
    KThemeChangeEvent change;
    QCoreApplication::sendEvent(&group, &change);
    QCOMPARE(group.titleLabel()->palette().color(QPalette::WindowText), QColor("#654321"));
    KApplication::instance()->theme()->resetXml();
}

NORVIK_TEST_MAIN(tst_KRbLogicGroup)
#include "tst_krblogicgroup.moc"
