// Gallery groups on one model: where each group's elements stand, the current element by
// group, separators that hide when they separate nothing, and mnemonics in an open list.
#include <ktestsupport.h>

#include <QShortcut>
#include <QSignalSpy>

#include <kgallerygroup.h>
#include <kgallerymodeltextitem.h>
#include <kpopupwidget.h>
#include <kscrollgalleryview.h>

#include "gallerytesthelpers.h"

namespace {

KGalleryGroup* makeGroup(KGalleryAbstractModel* model, const QStringList& texts)
{
    auto* group = new KGalleryGroup(model);
    for (const QString& t : texts)
        group->pushItem(new BoxItem(QSize(20, 20), model, false, t));
    return group;
}

QStringList modelTexts(KGalleryAbstractModel* model)
{
    QStringList texts;
    for (int i = 0; i < model->count(); ++i)
        texts << model->element(i)->text();
    return texts;
}

QList<bool> separatorsShown(KGalleryGroupCombobox& box)
{
    QList<bool> shown;
    for (int g = 0; g < box.groupCount(); ++g) {
        if (box.group(g)->isSeparator())
            shown << box.group(g)->isVisible();
    }
    return shown;
}

} // namespace

class tst_KGalleryGroup : public QObject
{
    Q_OBJECT
private Q_SLOTS:
    void groupsLieEndToEnd();
    void currentByGroup();
    void groupChecks();
    void removingCurrentGroup();
    void separators();
    void mnemonicInOpenList();
};

void tst_KGalleryGroup::groupsLieEndToEnd()
{
    KGalleryGroupCombobox box;
    KGalleryAbstractModel* model = box.model();
    KGalleryGroup* a = makeGroup(model, {QStringLiteral("a0"), QStringLiteral("a1")});
    KGalleryGroup* c = makeGroup(model, {QStringLiteral("c0")});
    box.addGroup(a);
    box.addGroup(c);
    model->setCurrentIndex(2);
    // An empty group in between changes no index.
    auto* b = new KGalleryGroup(model);
    box.insertGroup(1, b);
    QCOMPARE(model->count(), 3);
    QCOMPARE(model->currentIndex(), 2);
    QCOMPARE(box.startInModel(1), 2);
    QCOMPARE(box.startInModel(2), 2);
    // Filling it puts the elements after a's.
    b->pushItem(new BoxItem(QSize(20, 20), model, false, QStringLiteral("b0")));
    b->insertItem(0, new BoxItem(QSize(20, 20), model, false, QStringLiteral("bx")));
    QCOMPARE(modelTexts(model),
             QStringList({QStringLiteral("a0"), QStringLiteral("a1"), QStringLiteral("bx"), QStringLiteral("b0"),
                          QStringLiteral("c0")}));
    QCOMPARE(model->currentIndex(), 4);
    b->popItem();
    QCOMPARE(modelTexts(model), QStringList({QStringLiteral("a0"), QStringLiteral("a1"), QStringLiteral("bx"),
                                             QStringLiteral("c0")}));
    QCOMPARE(b->itemCount(), 1);
    a->clear();
    QCOMPARE(modelTexts(model), QStringList({QStringLiteral("bx"), QStringLiteral("c0")}));
    QCOMPARE(box.startInModel(2), 1);
}

void tst_KGalleryGroup::currentByGroup()
{
    KGalleryGroupCombobox box;
    KGalleryAbstractModel* model = box.model();
    KGalleryGroup* a = makeGroup(model, {QStringLiteral("a0"), QStringLiteral("a1")});
    KGalleryGroup* b = makeGroup(model, {QStringLiteral("b0"), QStringLiteral("b1"), QStringLiteral("b2")});
    box.addGroup(a);
    box.addGroup(b);
    int inGroup = -7;
    QCOMPARE(box.currentGroup(&inGroup), nullptr);
    QSignalSpy groupClicked(&box, &KGalleryGroupCombobox::groupItemClicked);
    QSignalSpy itemClick(b, &KGalleryGroup::itemClick);
    b->setCurrentIndex(1);
    QCOMPARE(model->currentIndex(), 3);
    QCOMPARE(box.currentGroup(&inGroup), b);
    QCOMPARE(inGroup, 1);
    // The group's choice goes the click path: the host hears of it.
    QCOMPARE(groupClicked.count(), 1);
    QCOMPARE(groupClicked.at(0).at(0).value<KGalleryGroup*>(), b);
    QCOMPARE(groupClicked.at(0).at(1).value<KGalleryModelAbstractItem*>(), b->getItem(1));
    QCOMPARE(itemClick.count(), 1);
    // Asking again for the current one does nothing.
    b->setCurrentIndex(1);
    QCOMPARE(groupClicked.count(), 1);
    // -1 from another group leaves the current one alone; from its own group it clears it.
    a->setCurrentIndex(-1);
    QCOMPARE(model->currentIndex(), 3);
    b->setCurrentIndex(-1);
    QCOMPARE(model->currentIndex(), -1);
    QVERIFY(!b->getItem(1)->isChecked());
    b->setCurrentIndex(5);
    QCOMPARE(model->currentIndex(), -1);
}

void tst_KGalleryGroup::groupChecks()
{
    KGalleryAbstractModel model;
    KGalleryGroup* group = makeGroup(&model, {QStringLiteral("x"), QStringLiteral("y")});
    group->getItem(1)->setEnabled(false);
    QSignalSpy change(group, &KGalleryGroup::itemChange);
    group->setChecked(1, true, true); // disabled: nothing
    QVERIFY(!group->getItem(1)->isChecked());
    QCOMPARE(change.count(), 0);
    group->setChecked(0, true, false);
    QVERIFY(group->getItem(0)->isChecked());
    QCOMPARE(change.count(), 0);
    group->setChecked(0, true, true); // already checked: nothing
    QCOMPARE(change.count(), 0);
    group->setChecked(0, false, true);
    QVERIFY(!group->getItem(0)->isChecked());
    group->setChecked(0, true, true);
    QCOMPARE(change.count(), 1);
    QCOMPARE(change.at(0).at(0).value<KGalleryGroup::GroupItemChangeMode>(), KGalleryGroup::CurrentIndexChanged);
    QCOMPARE(change.at(0).at(1).toInt(), 0);
    group->setSubText(QStringLiteral("renamed"), 1);
    QCOMPARE(group->getItem(1)->text(), QStringLiteral("renamed"));
    // A unique group numbers its elements apart from other groups.
    group->setGroupUnique(true);
    QCOMPARE(group->getItem(0)->groupIndex(), group->uniqueId());
    QVERIFY(group->uniqueId() != 0);
    group->setVisible(false);
    QVERIFY(!group->isVisible());
    delete group;
}

void tst_KGalleryGroup::removingCurrentGroup()
{
    KGalleryGroupCombobox box;
    KGalleryAbstractModel* model = box.model();
    box.addGroup(makeGroup(model, {QStringLiteral("a")}));
    box.addGroup(makeGroup(model, {QStringLiteral("b0"), QStringLiteral("b1")}));
    box.addGroup(makeGroup(model, {QStringLiteral("c")}));
    box.group(1)->setCurrentIndex(1);
    QCOMPARE(model->currentIndex(), 2);
    box.removeGroup(1);
    QCOMPARE(box.groupCount(), 2);
    QCOMPARE(model->currentIndex(), -1);
    QCOMPARE(box.currentGroup(), nullptr);
    QCOMPARE(modelTexts(model), QStringList({QStringLiteral("a"), QStringLiteral("c")}));
    box.removeGroup(7);
    box.clear();
    QCOMPARE(model->count(), 0);
}

void tst_KGalleryGroup::separators()
{
    KGalleryGroupCombobox box;
    KGalleryAbstractModel* model = box.model();
    box.addSeparatorToGroup(); // at the start
    box.addGroup(makeGroup(model, {QStringLiteral("a")}));
    box.addSeparatorToGroup();
    box.addSeparatorToGroup(); // two in a row
    KGalleryGroup* b = makeGroup(model, {QStringLiteral("b")});
    box.addGroup(b);
    box.addSeparatorToGroup();
    KGalleryGroup* empty = new KGalleryGroup(model);
    box.addGroup(empty);
    box.addSeparatorToGroup(); // at the end, after an empty group
    QCOMPARE(separatorsShown(box), QList<bool>({false, true, false, false, false}));
    // A group filled later brings its separator back.
    empty->pushItem(new BoxItem(QSize(20, 20), model));
    QCOMPARE(separatorsShown(box), QList<bool>({false, true, false, true, false}));
    // A hidden group needs none.
    b->setVisible(false);
    box.separatorVisibleCheck();
    QCOMPARE(separatorsShown(box), QList<bool>({false, true, false, false, false}));
}

void tst_KGalleryGroup::mnemonicInOpenList()
{
    KGalleryGroupCombobox box;
    KGalleryAbstractModel* model = box.model();
    box.addGroup(makeGroup(model, {QStringLiteral("a")}));
    auto* more = new KGalleryModelTextIconItem(QStringLiteral("&More"), model);
    box.addGroup(more);
    QCOMPARE(box.shortcuts().size(), 1);
    QCOMPARE(box.shortcuts().first()->key(), QKeySequence(QStringLiteral("Alt+M")));
    box.resize(150, 24);
    box.show();
    QVERIFY(QTest::qWaitForWindowExposed(&box));
    box.popup();
    KPopupWidget* popup = box.popupWidget();
    QVERIFY(popup->isVisible());
    auto* scroll = qobject_cast<KScrollGalleryView*>(box.view());
    QVERIFY(scroll);
    QSignalSpy clicked(model, &KGalleryAbstractModel::indexClicked);
    scroll->view()->setFocus();
    QTest::keyClick(scroll->view(), Qt::Key_M, Qt::AltModifier);
    QCOMPARE(clicked.count(), 1);
    QCOMPARE(clicked.at(0).at(0).toInt(), 1);
    QVERIFY(!popup->isVisible());
    // A plain letter in the list acts as the same mnemonic.
    box.popup();
    QVERIFY(popup->isVisible());
    scroll->view()->setFocus();
    QTest::keyClick(scroll->view(), Qt::Key_M);
    QTRY_COMPARE(clicked.count(), 2);
    QVERIFY(!popup->isVisible());
}

NORVIK_TEST_MAIN(tst_KGalleryGroup)
#include "tst_kgallerygroup.moc"
