#include <ktestsupport.h>

#include <QSignalSpy>
#include <QLayout>
#include <QStyleFactory>
#include <QWheelEvent>

#include <kblockedmouseevent.h>
#include <kcontextcategorycommand.h>
#include <korbstyle.h>
#include <korbstyle_2013.h>
#include <krbsubtabbar.h>
#include <krbtabbutton.h>
#include <kslideblock.h>

#include "ribbontesthelpers.h"

using namespace RibbonTest;

namespace {

// A category that counts the presses that trigger it.
class Category : public KListCommand
{
public:
    using KListCommand::KListCommand;
    bool isTriggerable() const override { return true; }
};

// The tab bar's list: categories named by texts; "ctx:" makes a hidden context category.
KListCommand* tabs(const QStringList& names, QObject* owner)
{
    auto* list = new KListCommand(owner, owner);
    for (const QString& name : names) {
        KListCommand* cmd = nullptr;
        if (name.startsWith("ctx:")) {
            auto* context = new KContextCategoryCommand(owner, owner);
            context->setText(name.mid(4));
            context->setProperty("rbContextTableButton", true);
            context->setVisible(false);
            cmd = context;
        } else {
            cmd = new Category(owner, owner);
            cmd->setText(name);
        }
        list->addSubCommand(cmd);
    }
    return list;
}

// The flat look, which asks for the slide block, as the application's style while it lives.
class FlatLook
{
public:
    FlatLook() { QApplication::setStyle(new KORBStyle_2013(QStyleFactory::create("Fusion"))); }
    ~FlatLook() { QApplication::setStyle(new KORBStyle(QStyleFactory::create("Fusion"))); }
};

void press(QWidget* w)
{
    QTest::mousePress(w, Qt::LeftButton);
    QTest::mouseRelease(w, Qt::LeftButton);
}

void sendWheel(QWidget* w, int delta)
{
    QWheelEvent e(QPointF(5, 5), w->mapToGlobal(QPointF(5, 5)), QPoint(), QPoint(0, delta), Qt::NoButton,
                  Qt::NoModifier, Qt::NoScrollPhase, false);
    QCoreApplication::sendEvent(w, &e);
}

} // namespace

class tst_KRbSubTabBar : public QObject
{
    Q_OBJECT
private Q_SLOTS:
    void initTestCase() { QApplication::setStyle(new KORBStyle(QStyleFactory::create("Fusion"))); }
    void init() { m_warnings.reset(new KWarningCatcher); }
    void cleanup()
    {
        m_window.reset();
        m_owner.reset();
        const QStringList messages = m_warnings->messages();
        m_warnings.reset();
        QCOMPARE(messages, QStringList());
    }

    void clicks_data();
    void clicks();
    void pressTriggersAHiddenPage();
    void blockedPressOfAPoppedUpTab();
    void contextTabs();
    void visibleAlone();
    void wheelWalksWithoutWrapping();
    void tabsComeAndGo();
    void sizeAndNeighbours();
    void slideBlock_data();
    void slideBlock();
    void noSlideBlockWithoutTheHint();
    void slideBlockFollowsAContextTabThatShowsLate();

private:
    KRbSubTabBar* show(const QStringList& names)
    {
        m_owner.reset(new QObject);
        m_window.reset(new QWidget);
        m_list = tabs(names, m_owner.data());
        auto* bar = new KRbSubTabBar(m_list, m_window.data());
        bar->setGeometry(0, 0, 600, 40);
        m_window->resize(600, 40);
        m_window->show();
        if (!QTest::qWaitForWindowExposed(m_window.data()))
            return nullptr;
        return bar;
    }

    QScopedPointer<KWarningCatcher> m_warnings;
    QScopedPointer<QObject> m_owner;
    QScopedPointer<QWidget> m_window;
    KListCommand* m_list = nullptr;
};

void tst_KRbSubTabBar::clicks_data()
{
    QTest::addColumn<int>("status");
    QTest::addColumn<QString>("actions"); // "c1": press tab 1; "d1": double press on tab 1
    QTest::addColumn<int>("expectedStatus");
    QTest::addColumn<int>("expectedCurrent");
    QTest::addColumn<int>("statusSignals");
    QTest::addColumn<QList<int>>("buttonStatus");

    QTest::newRow("expanded: another tab") << 1 << "c1" << 1 << 1 << 0 << QList<int>{0, 1, 0};
    QTest::newRow("expanded: the current tab does nothing") << 1 << "c0" << 1 << 0 << 0 << QList<int>{1, 0, 0};
    QTest::newRow("expanded: double press collapses") << 1 << "d0" << 0 << 0 << 1 << QList<int>{0, 0, 0};
    QTest::newRow("collapsed: a press pops the page up") << 0 << "c2" << 2 << 2 << 1 << QList<int>{0, 0, 2};
    QTest::newRow("popup: a press changes the page") << 2 << "c1" << 2 << 1 << 1 << QList<int>{0, 2, 0};
    QTest::newRow("collapsed: double press pins it open") << 0 << "d1" << 1 << 1 << 2 << QList<int>{0, 1, 0};
    QTest::newRow("expanded: double press on another tab") << 1 << "d2" << 0 << 2 << 1 << QList<int>{0, 0, 0};
}

void tst_KRbSubTabBar::clicks()
{
    QFETCH(int, status);
    QFETCH(QString, actions);
    QFETCH(int, expectedStatus);
    QFETCH(int, expectedCurrent);
    QFETCH(int, statusSignals);
    QFETCH(QList<int>, buttonStatus);

    KRbSubTabBar* bar = show({"Home", "Insert", "View"});
    QVERIFY(bar);
    QCOMPARE(bar->currentIdx(), 0); // the first category inserted became current
    bar->setStatus(KRbSubTabBar::SubTabBarStatus(status), false);
    QSignalSpy statusChanged(bar, &KRbSubTabBar::statusChanged);
    QSignalSpy clicked(bar, &KRbSubTabBar::subTabBarClicked);
    for (int i = 0; i + 1 < actions.size(); i += 2) {
        KRbTabButton* tab = bar->tabButtonAt(actions.at(i + 1).digitValue());
        QVERIFY(tab);
        press(tab);
        if (actions.at(i) == 'd')
            press(tab);
    }
    QCOMPARE(int(bar->status()), expectedStatus);
    QCOMPARE(bar->currentIdx(), expectedCurrent);
    QCOMPARE(statusChanged.count(), statusSignals);
    for (const QList<QVariant>& args : statusChanged)
        QCOMPARE(args.at(0).toBool(), true); // every change here is the user's
    QVERIFY(clicked.count() >= 1);
    for (int i = 0; i < buttonStatus.size(); ++i)
        QCOMPARE(int(bar->tabButtonAt(i)->checkStatus()), buttonStatus.at(i));
}

void tst_KRbSubTabBar::pressTriggersAHiddenPage()
{
    // A press on a tab whose page is not showing is an action of the category too.
    KRbSubTabBar* bar = show({"Home", "Insert"});
    QVERIFY(bar);
    QSignalSpy home(m_list->subCommand(0), &KCommand::triggered);
    QSignalSpy insert(m_list->subCommand(1), &KCommand::triggered);
    press(bar->tabButtonAt(1));
    QCOMPARE(insert.count(), 1);
    QTest::qWait(310); // no double click
    press(bar->tabButtonAt(1)); // now it is current
    QCOMPARE(insert.count(), 1);
    QCOMPARE(home.count(), 0);
}

void tst_KRbSubTabBar::blockedPressOfAPoppedUpTab()
{
    KRbSubTabBar* bar = show({"Home", "Insert"});
    QVERIFY(bar);
    bar->setStatus(KRbSubTabBar::Popup, false);
    KRbTabButton* current = bar->tabButtonAt(0);
    QCOMPARE(current->checkStatus(), KRbTabButton::Popup);
    QWidget popup;
    QMouseEvent pressEvent(QEvent::MouseButtonPress, QPointF(3, 3), QPointF(3, 3), Qt::LeftButton,
                           Qt::LeftButton, Qt::NoModifier);
    KBlockedMouseEvent blocked(&pressEvent, &popup);
    QSignalSpy clicked(bar, &KRbSubTabBar::subTabBarClicked);
    QVERIFY(QCoreApplication::sendEvent(current, &blocked));
    QVERIFY(blocked.firstFlag());
    QCOMPARE(clicked.count(), 1);
    // Another tab is not in the popup's business.
    KBlockedMouseEvent other(&pressEvent, &popup);
    QCoreApplication::sendEvent(bar->tabButtonAt(1), &other);
    QVERIFY(!other.firstFlag());
}

void tst_KRbSubTabBar::contextTabs()
{
    KRbSubTabBar* bar = show({"Home", "Insert", "ctx:Picture"});
    QVERIFY(bar);
    KCommand* picture = m_list->subCommand(2);
    QVERIFY(bar->tabButtonAt(2)->isHidden());
    QVERIFY(bar->tabButtonAt(2)->isContextTab());

    // "visibleRaise": the tab comes to the front when it appears.
    picture->setProperty("visibleRaise", true);
    picture->setVisible(true);
    QCOMPARE(bar->currentIdx(), 2);
    QVERIFY(!bar->tabButtonAt(2)->isHidden());

    // Hidden while current: the first tab takes over, and the place is remembered.
    picture->setVisible(false);
    QCOMPARE(bar->currentIdx(), 0);
    QCOMPARE(bar->lastIdx(), 2);
    // Back without "visibleRaise": it is current again.
    picture->setProperty("visibleRaise", false);
    picture->setVisible(true);
    QCOMPARE(bar->currentIdx(), 2);

    // The user chose another tab in between: its return changes nothing.
    picture->setVisible(false);
    bar->setCurrentIdx(1);
    picture->setVisible(true);
    QCOMPARE(bar->currentIdx(), 1);

    // A disabled current tab loses its place like a hidden one, and comes back enabled.
    bar->setCurrentIdx(2);
    picture->setEnabled(false);
    QCOMPARE(bar->currentIdx(), 0);
    QCOMPARE(bar->lastIdx(), 2);
    picture->setEnabled(true);
    QCOMPARE(bar->currentIdx(), 2);
}

void tst_KRbSubTabBar::visibleAlone()
{
    QWidget* fileButton = nullptr;
    KRbSubTabBar* bar = show({"Home", "Insert", "ctx:Print Preview", "ctx:Review"});
    QVERIFY(bar);
    fileButton = new QWidget(m_window.data());
    fileButton->setObjectName("RbTabFileButton");
    KCommand* preview = m_list->subCommand(2);
    KCommand* review = m_list->subCommand(3);
    preview->setProperty("visibleAlone", true);
    review->setProperty("visibleAlone", true);

    preview->setVisible(true);
    QVERIFY(bar->isAloneMode());
    QCOMPARE(bar->currentIdx(), 2);
    QVERIFY(bar->tabButtonAt(0)->isHidden());
    QVERIFY(bar->tabButtonAt(1)->isHidden());
    QVERIFY(!bar->tabButtonAt(2)->isHidden());
    QVERIFY(!fileButton->isEnabled());

    // A second alone category hides the first.
    review->setVisible(true);
    QCOMPARE(bar->currentIdx(), 3);
    QVERIFY(bar->tabButtonAt(2)->isHidden());
    QVERIFY(!bar->tabButtonAt(3)->isHidden());

    // Hiding it brings every tab back as its command says, and the file button.
    preview->setVisible(false);
    review->setVisible(false);
    QVERIFY(!bar->isAloneMode());
    QVERIFY(!bar->tabButtonAt(0)->isHidden());
    QVERIFY(!bar->tabButtonAt(1)->isHidden());
    QVERIFY(bar->tabButtonAt(2)->isHidden());
    QVERIFY(bar->tabButtonAt(3)->isHidden());
    QVERIFY(fileButton->isEnabled());
    QCOMPARE(bar->currentIdx(), 0);
}

void tst_KRbSubTabBar::wheelWalksWithoutWrapping()
{
    KRbSubTabBar* bar = show({"Home", "Insert", "ctx:Picture", "View"});
    QVERIFY(bar);
    sendWheel(bar, -120);
    QCOMPARE(bar->currentIdx(), 1);
    sendWheel(bar, -120); // the hidden context tab is passed over
    QCOMPARE(bar->currentIdx(), 3);
    sendWheel(bar, -120); // no wrap at the end
    QCOMPARE(bar->currentIdx(), 3);
    sendWheel(bar, 120);
    sendWheel(bar, 120);
    sendWheel(bar, 120);
    QCOMPARE(bar->currentIdx(), 0);
}

void tst_KRbSubTabBar::tabsComeAndGo()
{
    KRbSubTabBar* bar = show({"Home", "Insert"});
    QVERIFY(bar);
    bar->setCurrentIdx(1);
    auto* added = new Category(m_owner.data(), m_owner.data());
    added->setText("Design");
    // A tab inserted before the current one keeps the current tab current.
    m_list->insertSubCommand(1, added);
    QCOMPARE(bar->itemCount(), 3);
    QCOMPARE(bar->currentIdx(), 2);
    QCOMPARE(bar->currentButton()->text(), QString("Insert"));
    // Inserted at 0, the first category becomes current, the status kept.
    bar->setStatus(KRbSubTabBar::Collapsed, false);
    auto* first = new Category(m_owner.data(), m_owner.data());
    first->setText("File");
    m_list->insertSubCommand(0, first);
    QCOMPARE(bar->currentIdx(), 0);
    QCOMPARE(bar->status(), KRbSubTabBar::Collapsed);
    // Removing the current tab leaves none current; removing one before it moves the index.
    bar->setCurrentIdx(3);
    m_list->removeSubCommand(3);
    QCOMPARE(bar->currentIdx(), -1);
    QCOMPARE(bar->currentButton(), nullptr);
    bar->setCurrentIdx(2);
    m_list->removeSubCommand(0);
    QCOMPARE(bar->currentIdx(), 1);
    QCOMPARE(bar->currentButton()->text(), QString("Design"));
}

void tst_KRbSubTabBar::sizeAndNeighbours()
{
    KRbSubTabBar* bar = show({"Home", "Insert", "ctx:Picture", "View"});
    QVERIFY(bar);
    // The visible tabs side by side: each the width of its text and a space plus 28.
    const QFontMetrics fm = bar->tabButtonAt(0)->fontMetrics();
    int width = 0;
    int minimum = 0;
    for (const QString& text : QStringList{"Home", "Insert", "View"}) {
        width += fm.horizontalAdvance(text + QString(" ")) + 28;
        minimum += fm.horizontalAdvance(text) + 10;
    }
    QCOMPARE(bar->sizeHint(), QSize(width, fm.height() + 13 + 1));
    QCOMPARE(bar->minimumSizeHint(), QSize(minimum, fm.height() + 13 + 1));
    QCOMPARE(bar->getLastButtonEndPos(), bar->tabButtonAt(3)->geometry().right() + 1);

    // Neighbours of the selected tab 1; the hidden context tab does not count.
    bar->setCurrentIdx(1);
    QVERIFY(bar->isNextSelected(bar->tabButtonAt(0)));
    QVERIFY(bar->isBeforeSelected(bar->tabButtonAt(3)));
    QVERIFY(!bar->isNextSelected(bar->tabButtonAt(3)));
    QVERIFY(!bar->isNextContent(bar->tabButtonAt(1)));
    m_list->subCommand(2)->setVisible(true);
    QVERIFY(bar->isNextContent(bar->tabButtonAt(1)));
    QVERIFY(bar->isBeforeContent(bar->tabButtonAt(3)));
    // Collapsed, no tab is selected in place.
    bar->setStatus(KRbSubTabBar::Collapsed, false);
    QVERIFY(!bar->isNextSelected(bar->tabButtonAt(0)));
    QCOMPARE(bar->getIndex(bar->tabButtonAt(3)), 3);
    QCOMPARE(bar->getIndex(bar), -1);
}

void tst_KRbSubTabBar::slideBlock_data()
{
    QTest::addColumn<int>("to");
    QTest::addColumn<int>("milliseconds");

    // Tabs 100 wide: the distance between centres d, steps max(1, d / (d / 10 + 5)), 40 ms each.
    QTest::newRow("next tab: 100 px, 6 steps") << 1 << 240;
    QTest::newRow("200 px, 8 steps") << 2 << 320;
    QTest::newRow("500 px, 9 steps at most") << 5 << 360;
}

void tst_KRbSubTabBar::slideBlock()
{
    QFETCH(int, to);
    QFETCH(int, milliseconds);

    FlatLook look;
    KRbSubTabBar* bar = show({"A", "B", "C", "D", "E", "F"});
    QVERIFY(bar);
    KSlideBlock* block = bar->slideBlock();
    QVERIFY(block);
    for (int i = 0; i < bar->itemCount(); ++i)
        bar->tabButtonAt(i)->setFixedWidth(100);
    bar->layout()->activate();
    block->reset(bar->currentButton());
    QCOMPARE(block->getSlideData().rect, bar->tabButtonAt(0)->geometry());
    QVERIFY(!block->isMoving());

    bar->setCurrentIdx(to);
    QVERIFY(block->isMoving());
    QVERIFY(bar->isHideGradient());
    QCOMPARE(block->getTargetRect(), bar->tabButtonAt(to)->geometry());
    QCOMPARE(block->calculateTime(), milliseconds);
    QTRY_VERIFY(!block->isMoving());
    QCOMPARE(block->getSlideData().rect, bar->tabButtonAt(to)->geometry());
    // The colours are the tab's theme colours; a theme without them gives none.
    QVERIFY(!block->getColor().isValid());
    m_window.reset(); // before the look goes
}

void tst_KRbSubTabBar::noSlideBlockWithoutTheHint()
{
    KRbSubTabBar* bar = show({"Home"});
    QVERIFY(bar);
    QCOMPARE(bar->slideBlock(), nullptr);
    QVERIFY(!bar->isHideGradient());
    QCOMPARE(bar->getSlideBlockColor(), QColor());
    bar->grab(); // paints nothing, and says nothing
}

void tst_KRbSubTabBar::slideBlockFollowsAContextTabThatShowsLate()
{
    // A context tab is raised while its button is still hidden (its command's change arrives
    // before the button shows); no idle round need follow for the block to find it.
    FlatLook look;
    KRbSubTabBar* bar = show({"Home", "Insert", "ctx:Table"});
    QVERIFY(bar);
    KSlideBlock* block = bar->slideBlock();
    QVERIFY(block);
    block->reset(bar->currentButton());
    m_list->subCommand(2)->setProperty("visibleRaise", true);
    m_list->subCommand(2)->setVisible(true);
    QCOMPARE(bar->currentIdx(), 2);
    QTRY_VERIFY(bar->tabButtonAt(2)->isVisible());
    bar->layout()->activate();
    QTRY_COMPARE(block->getSlideData().rect, bar->tabButtonAt(2)->geometry());
    m_window.reset();
}

NORVIK_TEST_MAIN(tst_KRbSubTabBar)
#include "tst_krbsubtabbar.moc"
