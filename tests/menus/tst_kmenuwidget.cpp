#include <ktestsupport.h>

#include <QCheckBox>
#include <QPointer>

#include <kblockedmouseevent.h>
#include <kidleevent.h>
#include <klistcommand.h>
#include <kmenulayoutitembase.h>
#include <kmenuwidget.h>
#include <kpopupwidget.h>
#include <kseparatorcommand.h>
#include <ktriggercommand.h>

namespace {

// A list that also triggers: its row is split into a part that triggers and an arrow strip.
class SplitList : public KListCommand
{
public:
    using KListCommand::KListCommand;
    bool isTriggerable() const override { return true; }
};

// A command that stands in a menu as a check box of its own.
class CheckCommand : public KCommand
{
public:
    using KCommand::KCommand;
    QWidget* createPocketWidget(QWidget* parent) override { return new QCheckBox(QStringLiteral("Option"), parent); }
};

// A command that brings a widget of its own into lists.
class CustomWidgetCommand : public KTriggerCommand
{
public:
    using KTriggerCommand::KTriggerCommand;
    bool isCustomWidget() const override { return true; }
    QWidget* createPocketWidget(QWidget* parent) override
    {
        auto* w = new QWidget(parent);
        w->setFixedSize(70, 33);
        return w;
    }
};

// Counts the idle updates it is asked for.
class CountingCommand : public KTriggerCommand
{
public:
    using KTriggerCommand::KTriggerCommand;
    void update() override { ++updates; }
    int updates = 0;
};

} // namespace

// The framework's menu: rows by command class, separators, mouse, keys and submenus.
class tst_KMenuWidget : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init();
    void cleanup();
    void rowsFollowTheList();
    void separators_data();
    void separators();
    void keyboard();
    void mouseStayOpensSubmenus();
    void pressOpensAtOnceAndSplitRows();
    void clickTriggersAndClosesTheChain();
    void blockedPressOnTheParentMenuKeepsTheChain();
    void idleUpdatesItemsWhileVisible();
    void thousandItemsScroll();
    void layoutItemBaseRows();

private:
    KTriggerCommand* trigger(const QString& text, KListCommand* list = nullptr);
    KListCommand* sublist(const QString& text, int items, KListCommand* list = nullptr);
    // The list's menu, open in a popup under a host window.
    KMenuWidget* open(KListCommand* list);

    QScopedPointer<QWidget> m_host;
    KListCommand* m_list = nullptr;
};

void tst_KMenuWidget::init()
{
    m_host.reset(new QWidget);
    m_host->resize(600, 400);
    m_host->show();
    QVERIFY(QTest::qWaitForWindowExposed(m_host.data()));
    m_list = new KListCommand(m_host.data(), m_host.data());
}

void tst_KMenuWidget::cleanup()
{
    while (QWidget* popup = QApplication::activePopupWidget())
        popup->close();
    m_host.reset();
}

KTriggerCommand* tst_KMenuWidget::trigger(const QString& text, KListCommand* list)
{
    list = list ? list : m_list;
    auto* cmd = new KTriggerCommand(m_host.data(), list);
    cmd->setText(text);
    list->addSubCommand(cmd);
    return cmd;
}

KListCommand* tst_KMenuWidget::sublist(const QString& text, int items, KListCommand* list)
{
    list = list ? list : m_list;
    auto* sub = new KListCommand(m_host.data(), list);
    sub->setText(text);
    for (int i = 0; i < items; ++i)
        trigger(text + QString::number(i), sub);
    list->addSubCommand(sub);
    return sub;
}

KMenuWidget* tst_KMenuWidget::open(KListCommand* list)
{
    auto* popup = new KPopupWidget(m_host.data(), Qt::Popup);
    popup->setAttribute(Qt::WA_DeleteOnClose);
    auto* menu = qobject_cast<KMenuWidget*>(list->requestWidget(popup, KCommand::ExtendedPurpose));
    popup->setContentWidget(menu);
    popup->show(m_host.data(), m_host->mapToGlobal(QPoint(10, 10)));
    return menu;
}

void tst_KMenuWidget::rowsFollowTheList()
{
    auto* check = new CheckCommand(m_host.data(), m_list);
    trigger("Open");
    auto* empty = new KTriggerCommand(m_host.data(), m_list); // no text, no icon: no row
    m_list->addSubCommand(empty);
    m_list->addSeparator();
    sublist("More", 2);
    m_list->addSubCommand(check);
    KMenuWidget* menu = open(m_list);
    QVERIFY(menu);
    QCOMPARE(menu->count(), 4);
    QVERIFY(dynamic_cast<KMenuWidgetTriggerItem*>(menu->itemAt(0)));
    QVERIFY(dynamic_cast<KMenuWidgetSeparatorItem*>(menu->itemAt(1)));
    QVERIFY(dynamic_cast<KMenuWidgetPopupItem*>(menu->itemAt(2)));
    auto* embed = dynamic_cast<KMenuWidgetEmbedWidgetItem*>(menu->itemAt(3));
    QVERIFY(embed);
    // The check box lines up with the text column.
    QVERIFY(embed->widget()->findChild<QCheckBox*>());
    QCOMPARE(embed->widget()->layout()->contentsMargins(), QMargins(30, 2, 0, 2));

    // Insertions and removals after the command without a row land at the right place.
    auto* late = new KTriggerCommand(m_host.data(), m_list);
    late->setText("Late");
    m_list->insertSubCommand(2, late); // after Open and the empty command
    QCOMPARE(menu->count(), 5);
    QCOMPARE(menu->itemAt(1)->command(), static_cast<KCommand*>(late));
    m_list->removeSubCommand(1); // the empty one: no row goes
    QCOMPARE(menu->count(), 5);
    m_list->removeSubCommand(0);
    QCOMPARE(menu->count(), 4);
    QCOMPARE(menu->itemAt(0)->command(), static_cast<KCommand*>(late));
    m_list->removeSubCommand(42); // out of range: ignored
    QCOMPARE(menu->count(), 4);

    // A row reads its command at paint time: a new text changes the menu's width.
    const int before = menu->sizeHint().width();
    late->setText("A much longer text than before");
    QVERIFY(menu->sizeHint().width() > before);
}

void tst_KMenuWidget::separators_data()
{
    // "i" an item, "h" a hidden item, "-" a separator; the separators that show, by index.
    QTest::addColumn<QString>("rows");
    QTest::addColumn<QList<int>>("shown");
    QTest::newRow("between items") << "i-i" << QList<int>({1});
    QTest::newRow("leading and trailing") << "-i-" << QList<int>();
    QTest::newRow("doubled") << "i--i" << QList<int>({1});
    QTest::newRow("around a hidden run") << "i-h-i" << QList<int>({1});
    QTest::newRow("only hidden after") << "i-h" << QList<int>();
    QTest::newRow("nothing visible") << "-i-h-" << QList<int>();
}

void tst_KMenuWidget::separators()
{
    QFETCH(QString, rows);
    QFETCH(QList<int>, shown);
    QList<KTriggerCommand*> items;
    for (const QChar c : rows) {
        if (c == QLatin1Char('-')) {
            m_list->addSeparator();
            continue;
        }
        KTriggerCommand* cmd = trigger(QStringLiteral("item"));
        cmd->setVisible(c != QLatin1Char('h'));
    }
    KMenuWidget* menu = open(m_list);
    QList<int> visibleSeparators;
    for (int i = 0; i < menu->count(); ++i) {
        if (dynamic_cast<KMenuWidgetSeparatorItem*>(menu->itemAt(i)) && menu->itemAt(i)->isVisible())
            visibleSeparators << i;
    }
    QCOMPARE(visibleSeparators, shown);
}

void tst_KMenuWidget::keyboard()
{
    KTriggerCommand* a = trigger("A");
    trigger("B")->setEnabled(false);
    m_list->addSeparator();
    KTriggerCommand* c = trigger("C");
    KListCommand* more = sublist("More", 2);
    KMenuWidget* menu = open(m_list);
    auto current = [menu] { return menu->currentItem() ? menu->currentItem()->command() : nullptr; };

    // Down skips the disabled row and the separator and goes round; Up the reverse.
    QTest::keyClick(menu, Qt::Key_Down);
    QCOMPARE(current(), static_cast<KCommand*>(a));
    QTest::keyClick(menu, Qt::Key_Down);
    QCOMPARE(current(), static_cast<KCommand*>(c));
    QTest::keyClick(menu, Qt::Key_Tab);
    QCOMPARE(current(), static_cast<KCommand*>(more));
    QTest::keyClick(menu, Qt::Key_Down);
    QCOMPARE(current(), static_cast<KCommand*>(a));
    QTest::keyClick(menu, Qt::Key_Up);
    QCOMPARE(current(), static_cast<KCommand*>(more));
    QTest::keyClick(menu, Qt::Key_Home);
    QCOMPARE(current(), static_cast<KCommand*>(a));
    QTest::keyClick(menu, Qt::Key_End);
    QCOMPARE(current(), static_cast<KCommand*>(more));

    // Right opens the submenu with its first row current; Left closes that level only.
    QTest::keyClick(menu, Qt::Key_Right);
    auto* popupItem = dynamic_cast<KMenuWidgetPopupItem*>(menu->itemAt(4));
    QVERIFY(popupItem);
    QVERIFY(popupItem->isPopupItem());
    KPopupWidget* sub = popupItem->popupWidget();
    QVERIFY(sub);
    auto* subMenu = qobject_cast<KMenuWidget*>(sub->contentWidget());
    QVERIFY(subMenu);
    QCOMPARE(subMenu->currentItem(), subMenu->itemAt(0));
    QTest::keyClick(subMenu, Qt::Key_Left);
    QVERIFY(!sub->isVisible());
    QVERIFY(!popupItem->isPopupItem());
    QVERIFY(menu->isVisible());

    // Return triggers the current row and closes the menu.
    QSignalSpy runs(c, &KCommand::triggered);
    menu->setCurrentItem(menu->itemAt(3));
    QTest::keyClick(menu, Qt::Key_Return);
    QCOMPARE(runs.count(), 1);
    QVERIFY(!menu->window()->isVisible());

    // With nothing enabled, Up and Down leave the highlight alone and Home clears it.
    a->setEnabled(false);
    c->setEnabled(false);
    more->setEnabled(false);
    KMenuWidget* dead = open(m_list);
    dead->setCurrentItem(dead->itemAt(1));
    QTest::keyClick(dead, Qt::Key_Down);
    QCOMPARE(dead->currentItem(), dead->itemAt(1));
    QTest::keyClick(dead, Qt::Key_Home);
    QVERIFY(!dead->currentItem());
}

void tst_KMenuWidget::mouseStayOpensSubmenus()
{
    trigger("Plain");
    sublist("First", 2);
    sublist("Second", 2);
    KMenuWidget* menu = open(m_list);
    auto* first = dynamic_cast<KMenuWidgetPopupItem*>(menu->itemAt(1));
    auto* second = dynamic_cast<KMenuWidgetPopupItem*>(menu->itemAt(2));
    QVERIFY(first);
    QVERIFY(second);

    // Resting on a list row opens its submenu after a pause, beside the row.
    QTest::mouseMove(menu, first->geometry().center());
    QCOMPARE(menu->currentItem(), static_cast<KMenuWidgetItem*>(first));
    QVERIFY(!first->isPopupItem());
    QTRY_VERIFY(first->isPopupItem());
    KPopupWidget* popup = first->popupWidget();
    QVERIFY(popup->isVisible());
    QCOMPARE(popup->geometry().topLeft(), first->getTopRight());

    // Leaving the menu for its margin: the row with the open submenu stays highlighted.
    QTest::mouseMove(menu, menu->itemAt(0)->geometry().center());
    QEvent leave(QEvent::Leave);
    QCoreApplication::sendEvent(menu, &leave);
    QCOMPARE(menu->currentItem(), static_cast<KMenuWidgetItem*>(first));

    // Resting on the other list row swaps the submenus; on a plain row closes the open one.
    QPointer<KPopupWidget> firstPopup = popup;
    QTest::mouseMove(menu, second->geometry().center());
    QTRY_VERIFY(second->isPopupItem());
    QTRY_VERIFY(!firstPopup);
    QTest::mouseMove(menu, menu->itemAt(0)->geometry().center());
    QTRY_VERIFY(!menu->popupItem());
    QCOMPARE(menu->currentItem(), menu->itemAt(0));
}

void tst_KMenuWidget::pressOpensAtOnceAndSplitRows()
{
    auto* split = new SplitList(m_host.data(), m_list);
    split->setText("Split");
    trigger("Inner", split);
    m_list->addSubCommand(split);
    sublist("Plain", 1);
    KMenuWidget* menu = open(m_list);
    auto* splitRow = dynamic_cast<KMenuWidgetPopupItem*>(menu->itemAt(0));
    auto* plainRow = dynamic_cast<KMenuWidgetPopupItem*>(menu->itemAt(1));
    QVERIFY(splitRow);
    QVERIFY(plainRow);

    // A press opens at once; the release on the same row then does nothing more.
    QTest::mousePress(menu, Qt::LeftButton, {}, plainRow->geometry().center());
    QVERIFY(plainRow->isPopupItem());
    KPopupWidget* opened = plainRow->popupWidget();
    QTest::mouseRelease(menu, Qt::LeftButton, {}, plainRow->geometry().center());
    QCOMPARE(plainRow->popupWidget(), opened);
    QVERIFY(opened->isVisible());

    // A split row: the release on the arrow strip opens, the release left of it triggers.
    QSignalSpy runs(split, &KCommand::triggered);
    const QRect r = splitRow->geometry();
    QTest::mouseRelease(menu, Qt::LeftButton, {}, QPoint(r.right() - 3, r.center().y()));
    QVERIFY(splitRow->isPopupItem());
    QCOMPARE(runs.count(), 0);
    QTest::mouseRelease(menu, Qt::LeftButton, {}, QPoint(r.left() + 20, r.center().y()));
    QCOMPARE(runs.count(), 1);
    QVERIFY(!menu->window()->isVisible());
}

void tst_KMenuWidget::clickTriggersAndClosesTheChain()
{
    KListCommand* more = sublist("More", 2);
    KMenuWidget* menu = open(m_list);
    auto* row = dynamic_cast<KMenuWidgetPopupItem*>(menu->itemAt(0));
    row->showPopup(false);
    auto* subMenu = qobject_cast<KMenuWidget*>(row->popupWidget()->contentWidget());
    QVERIFY(subMenu);
    QSignalSpy hided(subMenu, &KMenuWidget::hided);
    QPointer<KPopupWidget> outer = qobject_cast<KPopupWidget*>(menu->window());
    QPointer<KPopupWidget> inner = row->popupWidget();

    // The click on a row deep in the cascade closes every popup before the command runs.
    bool popupsGoneFirst = false;
    KCommand* target = more->subCommand(1);
    connect(target, &KCommand::triggered, this, [&] { popupsGoneFirst = !outer->isVisible() && !inner->isVisible(); });
    QTest::mouseClick(subMenu, Qt::LeftButton, {}, subMenu->itemAt(1)->geometry().center());
    QVERIFY(popupsGoneFirst);
    QCOMPARE(hided.count(), 1);
    QTRY_VERIFY(!outer); // both delete themselves once closed
    QTRY_VERIFY(!inner);
}

void tst_KMenuWidget::blockedPressOnTheParentMenuKeepsTheChain()
{
    sublist("First", 1);
    sublist("Second", 1);
    KMenuWidget* menu = open(m_list);
    auto* first = dynamic_cast<KMenuWidgetPopupItem*>(menu->itemAt(0));
    auto* second = dynamic_cast<KMenuWidgetPopupItem*>(menu->itemAt(1));
    first->showPopup(false);
    KPopupWidget* sub = first->popupWidget();

    // The submenu holds the mouse; a press on the parent menu's other row comes to the parent
    // as a blocked event: the chain stays, and the other submenu opens at once.
    const QPoint global = menu->mapToGlobal(second->geometry().center());
    QTest::mousePress(sub, Qt::LeftButton, {}, sub->mapFromGlobal(global));
    QVERIFY(menu->isVisible());
    QVERIFY(second->isPopupItem());
    QVERIFY(!first->isPopupItem());

    // A move over the parent menu moves its highlight, as if no popup held the mouse.
    KPopupWidget* secondSub = second->popupWidget();
    QTest::mouseMove(secondSub, secondSub->mapFromGlobal(menu->mapToGlobal(first->geometry().center())));
    QCOMPARE(menu->currentItem(), static_cast<KMenuWidgetItem*>(first));
}

void tst_KMenuWidget::idleUpdatesItemsWhileVisible()
{
    auto* counting = new CountingCommand(m_host.data(), m_list);
    counting->setText("Counting");
    m_list->addSubCommand(counting);
    KMenuWidget* menu = open(m_list);
    const int before = counting->updates;
    KIdleEvent idle(0);
    QCoreApplication::sendEvent(menu, &idle);
    QCOMPARE(counting->updates, before + 1);
    menu->window()->hide();
    QCoreApplication::sendEvent(menu, &idle);
    QCOMPARE(counting->updates, before + 1);
}

void tst_KMenuWidget::thousandItemsScroll()
{
    for (int i = 0; i < 1000; ++i)
        trigger(QStringLiteral("Item %1").arg(i));
    KMenuWidget* menu = open(m_list);
    auto* popup = qobject_cast<KPopupWidget*>(menu->window());
    QVERIFY(popup);
    QVERIFY(popup->scrollArea());
    const QRect screen = KPopupWidget::getAvailScreenRect(popup->geometry().topLeft());
    QVERIFY(screen.contains(popup->geometry()));
    QCOMPARE(menu->count(), 1000);
}

void tst_KMenuWidget::layoutItemBaseRows()
{
    QWidget list;
    KTriggerCommand* open = trigger("Open");
    KMenuLayoutItemBase row(open, &list);
    QVERIFY(!row.customWidget());
    const QSize text = list.fontMetrics().boundingRect(open->getDrawText()).size();
    QCOMPARE(row.sizeHint(), text + QSize(29, 13));
    QCOMPARE(row.minimumSize(), row.sizeHint());
    QCOMPARE(row.maximumSize(), QSize(0x7FFFF, row.sizeHint().height()));
    QCOMPARE(row.expandingDirections(), Qt::Horizontal);
    QVERIFY(row.isValidItem());
    open->setEnabled(false);
    QVERIFY(!row.isValidItem());
    open->setVisible(false);
    QVERIFY(row.isEmpty());
    QCOMPARE(row.sizeHint(), QSize(0, 0));
    QCOMPARE(row.maximumSize(), QSize(0, 0));

    KMenuLayoutItemBase line(KSeparatorCommand::instance(), &list);
    QCOMPARE(line.sizeHint(), QSize(3, 3));
    QVERIFY(!line.isValidItem());

    // A command with a widget of its own: the layout talks to that widget.
    auto* custom = new CustomWidgetCommand(m_host.data(), m_list);
    auto* own = new KMenuLayoutItemBase(custom, &list);
    QVERIFY(own->customWidget());
    QCOMPARE(own->widget(), own->customWidget());
    QCOMPARE(own->sizeHint(), QSize(70, 33));
    own->setGeometry(QRect(5, 6, 70, 33));
    QCOMPARE(own->customWidget()->geometry(), QRect(5, 6, 70, 33));
    QPointer<QWidget> widget = own->customWidget();
    own->deleteThorough();
    QVERIFY(!widget);
}

NORVIK_TEST_MAIN(tst_KMenuWidget)
#include "tst_kmenuwidget.moc"
