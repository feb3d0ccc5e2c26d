#include <ktestsupport.h>

#include <QPointer>
#include <QSignalSpy>

#include <kevent.h>
#include <klistcommand.h>
#include <kmenubutton.h>
#include <kmenuwidget.h>
#include <kpopupwidget.h>
#include <kquickmenucommand.h>
#include <kstyleoption.h>
#include <ktriggercommand.h>

namespace {

// A list that also triggers: its button is split into a main part and a drop-down part.
class SplitList : public KListCommand
{
public:
    using KListCommand::KListCommand;
    bool isTriggerable() const override { return true; }
};

// Shows what the button hands the style.
class Probe : public KMenuButton
{
public:
    using KMenuButton::KMenuButton;
    KStyleOptionToolButton option() const
    {
        KStyleOptionToolButton o;
        initStyleOption(&o);
        return o;
    }
};

// Notes the dismiss events that pass on their way up.
class Holder : public QWidget
{
public:
    int dismissed = 0;

protected:
    bool event(QEvent* e) override
    {
        if (int(e->type()) == KEvent::Dismiss)
            ++dismissed;
        return QWidget::event(e);
    }
};

void fill(KListCommand* list, QObject* owner)
{
    auto* entry = new KTriggerCommand(owner, owner);
    entry->setText(QStringLiteral("Entry"));
    list->addSubCommand(entry);
}

} // namespace

class tst_KMenuButton : public QObject
{
    Q_OBJECT
private Q_SLOTS:
    void plainListDropsDownFromItsWholeFace();
    void splitButtonParts();
    void quickMenuButtonWithItsCommandDisabled();
};

void tst_KMenuButton::plainListDropsDownFromItsWholeFace()
{
    QObject owner;
    auto* list = new KListCommand(&owner, &owner);
    list->setText(QStringLiteral("Insert"));
    Holder holder;
    auto* button = qobject_cast<KMenuButton*>(list->requestWidget(&holder, KCommand::PocketPurpose));
    QVERIFY(button);
    QVERIFY(!button->isTriggerAble());
    button->resize(button->sizeHint());
    holder.show();
    QVERIFY(QTest::qWaitForWindowExposed(&holder));

    // Empty: nothing opens.
    QTest::mousePress(button, Qt::LeftButton, {}, QPoint(3, 3));
    QVERIFY(!button->popupWidget());
    QTest::mouseRelease(button, Qt::LeftButton, {}, QPoint(3, 3));

    fill(list, &owner);
    // The press on the main area opens the menu, at once, under the button.
    QTest::mousePress(button, Qt::LeftButton, {}, QPoint(3, 3));
    QPointer<KPopupWidget> popup = button->popupWidget();
    QVERIFY(popup);
    QVERIFY(popup->isVisible());
    QVERIFY(button->isDown());
    QCOMPARE(popup->geometry().topLeft(), KPopupWidget::getWidgetGlobalBottomLeftPos(button));
    auto* menu = qobject_cast<KMenuWidget*>(popup->contentWidget());
    QVERIFY(menu);
    QCOMPARE(menu->command(), static_cast<KCommand*>(list));
    // Its release is nobody's: no dismiss goes up, and the menu stays.
    QTest::mouseRelease(button, Qt::LeftButton, {}, QPoint(3, 3));
    QCOMPARE(holder.dismissed, 0);
    QVERIFY(popup->isVisible());
    // Closed, the menu goes, and the button comes up.
    popup->hide();
    QVERIFY(!button->isDown());
    QTRY_VERIFY(!popup);

    // With the arrow hidden the whole face still drops the menu down.
    list->setHideArrowHint(true);
    auto* bare = qobject_cast<KMenuButton*>(list->requestWidget(&holder, KCommand::PocketPurpose));
    bare->resize(bare->sizeHint());
    bare->show();
    QVERIFY(!(bare->buttonStyle() & KToolButton::StyleArrow));
    QTest::mousePress(bare, Qt::LeftButton, {}, QPoint(3, 3));
    QVERIFY(bare->popupWidget());
    bare->popupWidget()->hide();
}

void tst_KMenuButton::splitButtonParts()
{
    QObject owner;
    auto* list = new SplitList(&owner, &owner);
    list->setText(QStringLiteral("Paste"));
    fill(list, &owner);
    QSignalSpy runs(list, &KCommand::triggered);
    Holder holder;
    auto* button = qobject_cast<KMenuButton*>(list->requestWidget(&holder, KCommand::PocketPurpose));
    QVERIFY(button);
    QVERIFY(button->isTriggerAble());
    button->resize(button->sizeHint());
    holder.show();
    QVERIFY(QTest::qWaitForWindowExposed(&holder));
    QRect main, drop;
    button->getButtonArea(main, drop);
    QVERIFY(main.isValid());
    QVERIFY(drop.isValid());
    QVERIFY(!main.intersects(drop));
    QSignalSpy triggers(button, &KMenuButton::trigger);

    // The main part is a button: press and release there trigger, with a dismiss.
    QTest::mousePress(button, Qt::LeftButton, {}, main.center());
    QVERIFY(!button->popupWidget());
    QTest::mouseRelease(button, Qt::LeftButton, {}, main.center());
    QCOMPARE(runs.count(), 1);
    QCOMPARE(triggers.count(), 1);
    QCOMPARE(holder.dismissed, 1);

    // Pressed on the main part, released on the drop-down part: nothing at all.
    QTest::mousePress(button, Qt::LeftButton, {}, main.center());
    QTest::mouseRelease(button, Qt::LeftButton, {}, drop.center());
    QCOMPARE(runs.count(), 1);
    QCOMPARE(holder.dismissed, 1);
    QVERIFY(!button->isPressed());

    // The drop-down part opens the menu on the press; its release triggers nothing.
    QTest::mousePress(button, Qt::LeftButton, {}, drop.center());
    QVERIFY(button->popupWidget());
    QTest::mouseRelease(button, Qt::LeftButton, {}, drop.center());
    QCOMPARE(runs.count(), 1);
    QCOMPARE(triggers.count(), 1);
    button->popupWidget()->hide();

    // The line between the parts: a split button's only.
    Probe plain(nullptr);
    plain.setDefaultCommand(list);
    plain.setTriggerAble(false);
    QVERIFY(!plain.option().drawSeparator);
    plain.setTriggerAble(true);
    QVERIFY(plain.option().drawSeparator);
    QVERIFY(plain.option().features & QStyleOptionToolButton::Menu);
}

void tst_KMenuButton::quickMenuButtonWithItsCommandDisabled()
{
    QObject owner;
    auto* reference = new KTriggerCommand(&owner, &owner);
    reference->setText(QStringLiteral("Bold"));
    auto* quick = new KQuickMenuCommand(&owner, &owner);
    quick->setReferenceCommand(reference);
    fill(quick, &owner);
    QWidget holder;
    auto* button = qobject_cast<KQuickMenuButton*>(quick->requestWidget(&holder, KCommand::PocketPurpose));
    QVERIFY(button);
    button->resize(button->sizeHint());
    holder.show();
    QVERIFY(QTest::qWaitForWindowExposed(&holder));
    QRect main, drop;
    button->getButtonArea(main, drop);
    QVERIFY(main.isValid());
    QSignalSpy runs(reference, &KCommand::triggered);

    reference->setEnabled(false);
    quick->update(); // the idle round: its entry is enabled, so the list stays enabled
    QVERIFY(button->isEnabled());
    QTest::mousePress(button, Qt::LeftButton, {}, main.center());
    QVERIFY(!button->isPressed());
    QTest::mouseRelease(button, Qt::LeftButton, {}, main.center());
    QCOMPARE(runs.count(), 0);
    QVERIFY(!button->popupWidget());
    // The drop-down part still opens.
    QTest::mousePress(button, Qt::LeftButton, {}, drop.center());
    QVERIFY(button->popupWidget());
    button->popupWidget()->hide();

    // Enabled again, the main part runs the command.
    reference->setEnabled(true);
    quick->update();
    QTest::mousePress(button, Qt::LeftButton, {}, main.center());
    QTest::mouseRelease(button, Qt::LeftButton, {}, main.center());
    QCOMPARE(runs.count(), 1);
}

NORVIK_TEST_MAIN(tst_KMenuButton)
#include "tst_kmenubutton.moc"
