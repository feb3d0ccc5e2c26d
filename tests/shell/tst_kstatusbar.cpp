#include <ktestsupport.h>

#include <klistcommand.h>
#include <kevent.h>
#include <kidleevent.h>
#include <kapptheme.h>
#include <kmainwindow.h>
#include <kstatusbar.h>
#include <ktriggercommand.h>

namespace {
// A status command whose trigger the test counts; triggerable only when told so.
class MenuCommand : public KListCommand
{
public:
    MenuCommand() : KListCommand(nullptr, nullptr) {}
    bool triggerable = false;
    int triggers = 0;
    bool isTriggerable() const override { return triggerable; }
    void trigger() override { ++triggers; }
};

// A command that counts its refreshes.
class CountingCommand : public KCommand
{
public:
    CountingCommand() : KCommand(nullptr, nullptr) {}
    int updates = 0;
    int processUpdates = 0;
    void update() override { ++updates; }
    void processUpdate() override { ++processUpdates; }
};
}

class tst_KStatusBar : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void halvesFollowTheCommand();
    void rightClickOnTheEmptyLeftPart();
    void lightWidensTheButton();
    void parserPlacesTheStatusBar();
    void labelSize_data();
    void labelSize();
    void labelRefreshesItsCommand();
    void fullScreenHidesTheBarThroughItsCommand();
    void lightShowsTheState();
    void idleUpdatesTheStatusCommand();
};

void tst_KStatusBar::halvesFollowTheCommand()
{
    MenuCommand list;
    auto* left = new KStatusItemCommand(nullptr, &list);
    left->setText(QStringLiteral("Page 1 of 1"));
    auto* strech = new KStatusStrechCommand(nullptr, &list);
    auto* right = new KStatusCapsLockCommand(nullptr, &list);
    list.addSubCommand(left);
    list.addSubCommand(strech);
    list.addSubCommand(right);

    KStatusBar bar;
    bar.setStatusCommand(&list);
    QCOMPARE(bar.items().size(), 3);
    QVERIFY(!bar.items().at(1));
    QCOMPARE(bar.permanentIndex(), 2);
    auto* caps = qobject_cast<KStatusButton*>(bar.items().at(2));
    QVERIFY(caps);
    QCOMPARE(caps->text(), QStringLiteral("Caps Lock"));

    bar.resize(500, 24);
    bar.show();
    QVERIFY(QTest::qWaitForWindowExposed(&bar));
    QWidget* leftButton = bar.items().at(0);
    QCOMPARE(leftButton->x(), 0);
    QVERIFY(caps->geometry().right() < bar.width());
    QVERIFY(caps->x() > bar.width() / 2);

    // A permanent widget goes to the right half; a plain one to the end of the left half.
    auto* zoom = new QWidget;
    zoom->setFixedSize(40, 20);
    bar.insertPermanentWidget(0, zoom, 0);
    QCOMPARE(bar.items().indexOf(zoom), 2);
    auto* words = new QWidget;
    words->setFixedSize(30, 20);
    bar.addWidget(words);
    QCOMPARE(bar.items().indexOf(words), 1);
    QCOMPARE(bar.permanentIndex(), 3);

    // Items follow the list.
    list.removeSubCommand(0);
    QCOMPARE(bar.items().size(), 4);
    QCOMPARE(bar.items().first(), words);

    // A narrow bar hides the left half first.
    // Room for the right half and the size grip, not for the left item too.
    bar.resize(caps->sizeHint().width() + zoom->width() + 20, 24);
    QTRY_VERIFY(words->geometry().right() < 0);
    QVERIFY(caps->width() > 0);
    QVERIFY(zoom->geometry().left() >= 0);
}

void tst_KStatusBar::rightClickOnTheEmptyLeftPart()
{
    MenuCommand list;
    list.addSubCommand(new KStatusStrechCommand(nullptr, &list));
    list.addSubCommand(new KStatusNumLockCommand(nullptr, &list));
    KStatusBar bar;
    bar.setStatusCommand(&list);
    bar.resize(400, 24);
    bar.show();
    QVERIFY(QTest::qWaitForWindowExposed(&bar));
    QTest::mouseClick(&bar, Qt::RightButton, {}, QPoint(10, 10));
    QCOMPARE(list.triggers, 0);
    list.triggerable = true;
    QTest::mouseClick(&bar, Qt::RightButton, {}, QPoint(10, 10));
    QCOMPARE(list.triggers, 1);
    // Over the right half it does nothing.
    QTest::mouseClick(&bar, Qt::RightButton, {}, QPoint(bar.statusLayout()->getLastStrechPos() + 2, 10));
    QCOMPARE(list.triggers, 1);
}

void tst_KStatusBar::lightWidensTheButton()
{
    KStatusItemCommand plain(nullptr, nullptr);
    KStatusItemCommand lit(nullptr, nullptr);
    plain.setText(QStringLiteral("Auto save"));
    lit.setText(QStringLiteral("Auto save"));
    lit.setNeedLight(true);
    QWidget host;
    QWidget* a = plain.requestWidget(&host, 0);
    QWidget* b = lit.requestWidget(&host, 0);
    QVERIFY(a);
    QVERIFY(b);
    QCOMPARE(b->sizeHint().width(), a->sizeHint().width() + 8);
}

void tst_KStatusBar::parserPlacesTheStatusBar()
{
    const QByteArray commands = "<commands><KListCommand id='status'>"
                                "<KStatusItemCommand id='page' text='Page 1'/>"
                                "<KStatusStrechCommand id='split'/>"
                                "<KStatusInsertKeyCommand id='ovr'/>"
                                "</KListCommand></commands>";
    const QList<QPair<QByteArray, QString>> cases = {
        {"<statusbar/>", QStringLiteral("statusbar no command given.")},
        {"<statusbar cmd='nothing'/>", QStringLiteral("can not found command named:")},
        {"<statusbar cmd='status'/>", QString()},
    };
    for (const auto& c : cases) {
        QTemporaryDir dir;
        QVERIFY(KTestSupport::loadMainXml(dir.path(), "<mainwindow>" + commands + c.first + "</mainwindow>"));
        KMainWindow window;
        KWarningCatcher warnings;
        window.polishXml();
        if (c.second.isEmpty()) {
            QCOMPARE(warnings.count(), 0);
            QVERIFY(window.statusBar());
            QCOMPARE(window.statusBar()->items().size(), 3);
            QCOMPARE(window.statusBar()->permanentIndex(), 2);
            QCOMPARE(window.statusBar()->parentWidget(), &window);
        } else {
            QCOMPARE(warnings.count(), 1);
            QVERIFY(warnings.contains(c.second));
            QVERIFY(!window.statusBar());
        }
        KApplication::instance()->resetXml();
    }
}

void tst_KStatusBar::labelSize_data()
{
    QTest::addColumn<int>("direction");
    QTest::addColumn<bool>("withIcon");
    QTest::newRow("text only") << int(QBoxLayout::LeftToRight) << false;
    QTest::newRow("left to right") << int(QBoxLayout::LeftToRight) << true;
    QTest::newRow("right to left") << int(QBoxLayout::RightToLeft) << true;
    QTest::newRow("top to bottom") << int(QBoxLayout::TopToBottom) << true;
}

void tst_KStatusBar::labelSize()
{
    QFETCH(int, direction);
    QFETCH(bool, withIcon);
    KStatusBarLabel label(QStringLiteral("Ready"));
    if (withIcon)
        label.setIcon(KTestSupport::redIcon());
    label.setDirection(QBoxLayout::Direction(direction));
    const QSize text = label.fontMetrics().size(Qt::TextSingleLine, QStringLiteral("Ready"));
    const bool horizontal = direction == QBoxLayout::LeftToRight || direction == QBoxLayout::RightToLeft;
    const QSize icon = withIcon ? QSize(16, 16) : QSize(0, 0);
    const QSize expected = horizontal ? QSize(icon.width() + text.width() + 2, qMax(icon.height(), text.height()))
                                      : QSize(qMax(icon.width(), text.width()), icon.height() + text.height() + 2);
    QCOMPARE(label.sizeHint(), expected);
}

void tst_KStatusBar::labelRefreshesItsCommand()
{
    CountingCommand cmd;
    cmd.setText(QStringLiteral("Saving"));
    KStatusBarLabel label;
    label.setDefaultCommand(&cmd);
    QCOMPARE(label.text(), QStringLiteral("Saving"));
    KIdleEvent idle(0);
    QCoreApplication::sendEvent(&label, &idle);
    QCOMPARE(cmd.updates, 1);
    KEvent process(KEvent::ProcessUpdate);
    QCoreApplication::sendEvent(&label, &process);
    QCOMPARE(cmd.processUpdates, 1);
    cmd.setText(QStringLiteral("Saved"));
    QTRY_COMPARE(label.text(), QStringLiteral("Saved"));
}

void tst_KStatusBar::fullScreenHidesTheBarThroughItsCommand()
{
    MenuCommand list;
    list.addSubCommand(new KStatusNumLockCommand(nullptr, &list));
    KMainWindow window;
    auto* bar = new KStatusBar;
    bar->setStatusCommand(&list);
    window.setStatusBar(bar);
    window.show();
    QVERIFY(QTest::qWaitForWindowExposed(&window));
    QVERIFY(bar->isVisible());
    window.setFullScreen(true);
    QVERIFY(!list.isVisible(KMultiControlBool::FullScreenControl));
    QTRY_VERIFY(!bar->isVisible());
    window.setFullScreen(false);
    QVERIFY(list.isVisible());
    QTRY_VERIFY(bar->isVisible());
    // Replacing the bar takes the old one away.
    QPointer<KStatusBar> old = bar;
    window.setStatusBar(new KStatusBar);
    QTRY_VERIFY(old.isNull());
}

void tst_KStatusBar::lightShowsTheState()
{
    QTemporaryDir dir;
    QVERIFY(KTestSupport::loadTheme(KTestSupport::writeFile(
        dir.filePath("theme.xml"),
        "<t><style name='base'/><theme><style class='KStatusBarLight'>"
        "<color name='inner-check' value='#00c000'/><color name='inner-uncheck' value='#c0c0c0'/>"
        "<color name='inner-waiting-save' value='#f0a000'/></style></theme></t>")));
    KStatusItemCommand cmd(nullptr, nullptr);
    cmd.setText(QStringLiteral("Auto-save"));
    cmd.setNeedLight(true);
    KAutoBackupControlButton button;
    button.setDefaultCommand(&cmd);
    button.resize(button.sizeHint());
    // The light's middle, left of the caption.
    auto light = [&] { return button.grab().toImage().pixelColor(5, button.height() / 2); };
    QCOMPARE(light(), QColor("#c0c0c0"));
    button.setChecked(true);
    QCOMPARE(light(), QColor("#00c000"));
    button.setWaitingSaveState(true);
    QCOMPARE(light(), QColor("#f0a000"));
    button.setChecked(false);
    QCOMPARE(light(), QColor("#c0c0c0"));
    KApplication::instance()->theme()->resetXml();
}

void tst_KStatusBar::idleUpdatesTheStatusCommand()
{
    CountingCommand cmd;
    KStatusBar bar;
    bar.setStatusCommand(&cmd);
    KIdleEvent idle(0);
    QVERIFY(QCoreApplication::sendEvent(&bar, &idle));
    QCOMPARE(cmd.updates, 1);
    // The bar follows its command's state.
    QWidget window;
    bar.setParent(&window);
    cmd.setEnabled(false);
    QTRY_VERIFY(!bar.isEnabled());
    cmd.setText(QStringLiteral("Status"));
    QTRY_COMPARE(bar.windowTitle(), QStringLiteral("Status"));
    bar.setParent(nullptr);
}

NORVIK_TEST_MAIN(tst_KStatusBar)
#include "tst_kstatusbar.moc"
