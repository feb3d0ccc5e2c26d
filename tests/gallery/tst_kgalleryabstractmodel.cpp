// The gallery model: insertion and removal, the radio rule of the current element within
// groups, the click and hover rules, and elements that leave behind the model's back.
#include <ktestsupport.h>

#include <QSignalSpy>

#include <kgalleryabstractmodel.h>
#include <kgallerymodeltextitem.h>

#include "gallerytesthelpers.h"

class tst_KGalleryAbstractModel : public QObject
{
    Q_OBJECT
private Q_SLOTS:
    void insertPositions();
    void radioRuleWithGroups();
    void currentOutOfRangeKeepsChecks();
    void clickRules();
    void hoverRules();
    void removingHoveredAndCurrent();
    void indexesFollowInsertAndMove();
    void elementDeletedDirectly();
    void clearAndStatus();
    void itemSizes();
    void textIconLayout_data();
    void textIconLayout();
};

void tst_KGalleryAbstractModel::insertPositions()
{
    KGalleryAbstractModel model;
    QSignalSpy inserted(&model, &KGalleryAbstractModel::elementInserted);
    auto* a = new BoxItem(QSize(10, 10), &model, false, QStringLiteral("a"));
    auto* b = new BoxItem(QSize(10, 10), &model, false, QStringLiteral("b"));
    auto* c = new BoxItem(QSize(10, 10), &model, false, QStringLiteral("c"));
    QCOMPARE(model.insertElement(-5, a), 0);
    QCOMPARE(model.insertElement(99, b), 1);
    QCOMPARE(model.insertElement(0, c), 0);
    QCOMPARE(model.count(), 3);
    QCOMPARE(model.element(0), c);
    QCOMPARE(model.element(2), b);
    QCOMPARE(inserted.count(), 3);
    QCOMPARE(inserted.at(1).at(0).toInt(), 1);
    // The same element twice is refused.
    QCOMPARE(model.addElement(a), -1);
    QCOMPARE(model.count(), 3);

    // A header is a title element: not triggerable, so a click can't make it current.
    const int header = model.addHeader(QStringLiteral("Title"));
    QCOMPARE(header, 3);
    QVERIFY(qobject_cast<KGalleryModelTitleItem*>(model.element(header)));
    QVERIFY(!model.clickIndex(header));
    QCOMPARE(model.currentIndex(), -1);
    QCOMPARE(model.element(header)->property("KGALLERY_COMBOX_COMPLETE").toBool(), true);
}

void tst_KGalleryAbstractModel::radioRuleWithGroups()
{
    KGalleryAbstractModel model;
    fillBoxes(&model, 6, QSize(10, 10));
    model.element(0)->setGroupIndex(1);
    model.element(1)->setGroupIndex(1);
    model.element(2)->setGroupIndex(2);
    model.element(3)->setGroupIndex(2);
    // 4 and 5 stay in group 0.

    model.setCurrentIndex(0);
    model.setCurrentIndex(2);
    // Different non-zero groups leave each other alone.
    QVERIFY(model.element(0)->isChecked());
    QVERIFY(model.element(2)->isChecked());
    model.setCurrentIndex(1);
    QVERIFY(!model.element(0)->isChecked());
    QVERIFY(model.element(1)->isChecked());
    QVERIFY(model.element(2)->isChecked());

    // Group 0 is the whole list.
    model.setCurrentIndex(4);
    for (int i = 0; i < 4; ++i)
        QVERIFY2(!model.element(i)->isChecked(), qPrintable(QString::number(i)));
    QVERIFY(model.element(4)->isChecked());
    // An element of a group unchecks group 0 as well.
    model.setCurrentIndex(3);
    QVERIFY(!model.element(4)->isChecked());
    QVERIFY(model.element(3)->isChecked());
}

void tst_KGalleryAbstractModel::currentOutOfRangeKeepsChecks()
{
    KGalleryAbstractModel model;
    fillBoxes(&model, 3, QSize(10, 10));
    model.setCurrentIndex(1);
    QSignalSpy changed(&model, &KGalleryAbstractModel::currentIndexChanged);
    model.setCurrentIndex(model.count());
    QCOMPARE(model.currentIndex(), -1);
    QCOMPARE(changed.count(), 1);
    QCOMPARE(changed.at(0).at(0).toInt(), -1);
    QVERIFY(model.element(1)->isChecked());
}

void tst_KGalleryAbstractModel::clickRules()
{
    KGalleryAbstractModel model;
    fillBoxes(&model, 3, QSize(10, 10));
    QSignalSpy clicked(&model, &KGalleryAbstractModel::indexClicked);
    QSignalSpy dbl(&model, &KGalleryAbstractModel::indexDblClicked);

    model.element(1)->setEnabled(false);
    QVERIFY(!model.clickIndex(1));
    QCOMPARE(clicked.count(), 0);
    QCOMPARE(model.currentIndex(), -1);

    QVERIFY(model.clickIndex(2));
    QCOMPARE(clicked.count(), 1);
    QCOMPARE(clicked.at(0).at(0).toInt(), 2);
    QCOMPARE(model.currentIndex(), 2);
    QVERIFY(model.element(2)->isChecked());

    // Outside every cell: all status goes, and the host hears of -1.
    model.hoverIndex(0);
    QVERIFY(model.clickIndex(-1));
    QCOMPARE(clicked.count(), 2);
    QCOMPARE(clicked.at(1).at(0).toInt(), -1);
    QCOMPARE(model.currentIndex(), -1);
    QCOMPARE(model.getHoveredIndex(), -1);
    QVERIFY(!model.element(2)->isChecked());
    QVERIFY(!model.element(0)->isHovered());

    QVERIFY(model.dblClickIndex(0));
    QCOMPARE(dbl.count(), 1);
    QCOMPARE(model.currentIndex(), 0);
    QVERIFY(!model.dblClickIndex(7));
    QCOMPARE(clicked.count(), 3);
    QCOMPARE(clicked.at(2).at(0).toInt(), -1);
}

void tst_KGalleryAbstractModel::hoverRules()
{
    KGalleryAbstractModel model;
    fillBoxes(&model, 3, QSize(10, 10));
    QSignalSpy hovered(&model, &KGalleryAbstractModel::indexHovered);
    QSignalSpy status(&model, &KGalleryAbstractModel::statusChanged);
    model.hoverIndex(1);
    QCOMPARE(model.getHoveredIndex(), 1);
    QVERIFY(model.element(1)->isHovered());
    QCOMPARE(status.count(), 1);
    QCOMPARE(status.at(0).at(0).toInt(), 1);
    model.hoverIndex(1); // the same: nothing
    QCOMPARE(hovered.count(), 1);

    // A disabled element is not hovered; the signal carries the index as asked for.
    model.element(2)->setEnabled(false);
    model.hoverIndex(2);
    QCOMPARE(model.getHoveredIndex(), -1);
    QVERIFY(!model.element(1)->isHovered());
    QVERIFY(!model.element(2)->isHovered());
    QCOMPARE(hovered.last().at(0).toInt(), 2);
    model.hoverIndex(42);
    QCOMPARE(model.getHoveredIndex(), -1);
}

void tst_KGalleryAbstractModel::removingHoveredAndCurrent()
{
    KGalleryAbstractModel model;
    fillBoxes(&model, 4, QSize(10, 10));
    model.hoverIndex(2);
    model.setCurrentIndex(2);
    QStringList order;
    connect(&model, &KGalleryAbstractModel::indexHovered, this,
            [&order](int i) { order << QStringLiteral("hover %1").arg(i); });
    connect(&model, &KGalleryAbstractModel::currentIndexChanged, this,
            [&order](int i) { order << QStringLiteral("current %1").arg(i); });
    connect(&model, &KGalleryAbstractModel::elementRemoved, this,
            [&order](int i) { order << QStringLiteral("removed %1").arg(i); });
    KGalleryModelAbstractItem* taken = model.takeAt(2);
    QVERIFY(taken);
    // The status is reset while the element is still in the list.
    QCOMPARE(order, QStringList({QStringLiteral("hover -1"), QStringLiteral("current -1"), QStringLiteral("removed 2")}));
    QCOMPARE(model.count(), 3);
    QVERIFY(!model.takeAt(3));
    QVERIFY(!model.takeAt(-1));
    // Taken, not deleted: the element no longer reports to the model.
    QSignalSpy changed(&model, &KGalleryAbstractModel::changed);
    taken->setText(QStringLiteral("gone"));
    QCOMPARE(changed.count(), 0);
    delete taken;
    QCOMPARE(model.count(), 3);
}

void tst_KGalleryAbstractModel::indexesFollowInsertAndMove()
{
    KGalleryAbstractModel model;
    fillBoxes(&model, 4, QSize(10, 10));
    model.setCurrentIndex(2);
    KGalleryModelAbstractItem* current = model.element(2);
    model.insertElement(0, new BoxItem(QSize(10, 10), &model));
    QCOMPARE(model.currentIndex(), 3);
    QCOMPARE(model.element(model.currentIndex()), current);
    model.removeElement(0);
    QCOMPARE(model.currentIndex(), 2);

    QSignalSpy removed(&model, &KGalleryAbstractModel::elementRemoved);
    QSignalSpy inserted(&model, &KGalleryAbstractModel::elementInserted);
    model.moveElement(2, 0);
    QCOMPARE(removed.count(), 1);
    QCOMPARE(removed.at(0).at(0).toInt(), 2);
    QCOMPARE(inserted.count(), 1);
    QCOMPARE(inserted.at(0).at(0).toInt(), 0);
    QCOMPARE(model.element(0), current);
    QCOMPARE(model.currentIndex(), 0);
}

void tst_KGalleryAbstractModel::elementDeletedDirectly()
{
    KGalleryAbstractModel model;
    fillBoxes(&model, 3, QSize(10, 10));
    model.setCurrentIndex(2);
    QSignalSpy removed(&model, &KGalleryAbstractModel::elementRemoved);
    delete model.element(0);
    QCOMPARE(model.count(), 2);
    QCOMPARE(removed.count(), 1);
    QCOMPARE(removed.at(0).at(0).toInt(), 0);
    QCOMPARE(model.currentIndex(), 1);
    QCOMPARE(model.element(1)->text(), QStringLiteral("2"));
}

void tst_KGalleryAbstractModel::clearAndStatus()
{
    KGalleryAbstractModel model;
    fillBoxes(&model, 3, QSize(10, 10));
    model.setCurrentIndex(1);
    model.hoverIndex(0);
    model.setDirty(true);
    QSignalSpy removed(&model, &KGalleryAbstractModel::elementRemoved);
    model.clear();
    QCOMPARE(model.count(), 0);
    QCOMPARE(removed.count(), 3);
    QCOMPARE(model.currentIndex(), -1);
    QCOMPARE(model.getHoveredIndex(), -1);
    QVERIFY(!model.isDirty());
    // On an empty model every index is "none".
    QVERIFY(model.clickIndex(0));
    model.hoverIndex(0);
    QCOMPARE(model.getHoveredIndex(), -1);
    model.popupItemContextMenu(nullptr, 0);
}

void tst_KGalleryAbstractModel::itemSizes()
{
    KGalleryAbstractModel model;
    const QFontMetrics fm(QApplication::font());
    auto* text = new KGalleryModelAbstractItem(QStringLiteral("Sample"), QIcon(), &model);
    const QSize textSize = fm.boundingRect(QStringLiteral("Sample")).size();
    QCOMPARE(text->sizeHint(), QSize(textSize.width() + 10, textSize.height() + 10));
    auto* both = new KGalleryModelAbstractItem(QStringLiteral("Sample"), KTestSupport::redIcon(), &model);
    QCOMPARE(both->sizeHint().width(), textSize.width() + 10 + 16);
    auto* font = new KGalleryModelFontItem(QStringLiteral("Sans"), &model);
    QCOMPARE(font->sizeHint(), QSize(450, 26));
    auto* separator = new KxSeparatorItem(&model);
    QCOMPARE(separator->sizeHint(), QSize(0, 5));
    QVERIFY(!separator->isTriggerable());
    QVERIFY(separator->isExpanding(KGalleryViewNormal));
    auto* title = new KGalleryModelTitleItem(QStringLiteral("T"), &model);
    QVERIFY(title->isVisible(KGalleryViewNormal));
    QVERIFY(!title->isVisible(KGalleryViewCompact));
}

void tst_KGalleryAbstractModel::textIconLayout_data()
{
    QTest::addColumn<int>("mode");
    QTest::addColumn<int>("extraWidth");
    QTest::addColumn<int>("extraHeight");
    // Beside each other: widths add up, plus margins and 10; stacked: heights add, plus 3.
    QTest::newRow("icon left") << 0 << 20 << 10;
    QTest::newRow("icon right") << 1 << 20 << 10;
    QTest::newRow("icon above") << 2 << 10 << 13;
    QTest::newRow("text above") << 3 << 10 << 13;
}

void tst_KGalleryAbstractModel::textIconLayout()
{
    QFETCH(int, mode);
    QFETCH(int, extraWidth);
    QFETCH(int, extraHeight);
    KGalleryAbstractModel model;
    QPixmap pixmap(32, 24);
    pixmap.fill(Qt::red);
    const QString text = QStringLiteral("Label");
    KGalleryModelTextIconItem item(text, pixmap, mode, &model);
    const QSize t = QFontMetrics(QApplication::font()).size(Qt::TextShowMnemonic, text);
    const QSize hint = item.sizeHint();
    if (mode <= 1) {
        QCOMPARE(hint.width(), t.width() + 32 + extraWidth);
        QCOMPARE(hint.height(), qMax(t.height(), 24) + extraHeight);
    } else {
        QCOMPARE(hint.width(), qMax(t.width(), 32) + extraWidth);
        QCOMPARE(hint.height(), t.height() + 24 + extraHeight);
    }
    // In a cell of its own size the picture and the text don't overlap and stay inside.
    const QRect cell(QPoint(10, 20), hint);
    QRect pix;
    QRect txt;
    item.layoutRects(cell, pix, txt);
    QCOMPARE(pix.size(), QSize(32, 24));
    QVERIFY(!pix.intersects(txt));
    QVERIFY(cell.contains(pix));
    QVERIFY(cell.contains(txt));
    if (mode == 0)
        QCOMPARE(txt.left(), pix.right() + 9);
    if (mode == 2)
        QCOMPARE(txt.top(), pix.bottom() + 2);

    KGalleryModelTextIconItem noPixmap(text, &model);
    noPixmap.layoutRects(cell, pix, txt);
    QVERIFY(pix.isNull());
    QVERIFY(txt.isNull());
}

NORVIK_TEST_MAIN(tst_KGalleryAbstractModel)
#include "tst_kgalleryabstractmodel.moc"
