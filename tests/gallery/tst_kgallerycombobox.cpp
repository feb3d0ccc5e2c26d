// The gallery combo box: its completer, the choice by click, by text and by index with the
// order of its signals, the edit field's keys, and swapping or emptying its model.
#include <ktestsupport.h>

#include <QCompleter>
#include <QSignalSpy>
#include <QStringListModel>

#include <kgallerycombobox.h>
#include <kgallerymodeltextitem.h>
#include <kpopupwidget.h>
#include <kscrollgalleryview.h>

namespace {

void fillFonts(KGalleryAbstractModel* model, const QStringList& names)
{
    model->addHeader(QStringLiteral("Recent"));
    for (const QString& name : names)
        model->addElement(new KGalleryModelFontItem(name, model));
}

QStringList completions(QCompleter* completer)
{
    auto* list = qobject_cast<QStringListModel*>(completer->model());
    return list ? list->stringList() : QStringList();
}

KGalleryView* innerView(KGalleryComboBox& box)
{
    auto* scroll = qobject_cast<KScrollGalleryView*>(box.view());
    return scroll ? scroll->view() : nullptr;
}

} // namespace

class tst_KGalleryComboBox : public QObject
{
    Q_OBJECT
private Q_SLOTS:
    void completerLeavesTitlesOut();
    void clickInListEmitsInOrder();
    void currentByIndexAndText();
    void editFieldKeys();
    void emptyAndReplacedModel();
    void lineWidgetShowsElement();
};

void tst_KGalleryComboBox::completerLeavesTitlesOut()
{
    KGalleryComboBox box;
    QSignalSpy changed(&box, &KGalleryComboBox::completerChanged);
    box.setEditable(true);
    fillFonts(box.model(), {QStringLiteral("Serif"), QStringLiteral("Sans")});
    QVERIFY(changed.count() >= 3); // one per element inserted
    QVERIFY(box.completer());
    QCOMPARE(box.completer()->caseSensitivity(), Qt::CaseInsensitive);
    QCOMPARE(completions(box.completer()), QStringList({QStringLiteral("Serif"), QStringLiteral("Sans")}));
    QCOMPARE(box.lineEdit()->completer(), box.completer());
    // Any element can opt out by the property.
    auto* hidden = new KGalleryModelFontItem(QStringLiteral("Mono"), box.model());
    hidden->setProperty(KGalleryComboBox::KGALLERY_COMBOX_COMPLETE, true);
    box.model()->addElement(hidden);
    QVERIFY(!completions(box.completer()).contains(QStringLiteral("Mono")));
}

void tst_KGalleryComboBox::clickInListEmitsInOrder()
{
    KGalleryComboBox box;
    box.setEditable(true);
    fillFonts(box.model(), {QStringLiteral("Serif"), QStringLiteral("Sans"), QStringLiteral("Mono")});
    box.resize(200, 24);
    box.show();
    QVERIFY(QTest::qWaitForWindowExposed(&box));
    box.popup();
    KPopupWidget* popup = box.popupWidget();
    QVERIFY(popup->isVisible());
    QVERIFY(box.view()->width() >= 200);

    QStringList order;
    connect(&box, qOverload<int>(&KGalleryComboBox::indexClicked), this,
            [&order](int i) { order << QStringLiteral("int %1").arg(i); });
    connect(&box, qOverload<KGalleryModelAbstractItem*>(&KGalleryComboBox::indexClicked), this,
            [&order](KGalleryModelAbstractItem* item) { order << QStringLiteral("item ") + item->text(); });
    connect(&box, &KGalleryComboBox::currentTextChanged, this,
            [&order](const QString& t) { order << QStringLiteral("current ") + t; });
    connect(&box, qOverload<const QString&>(&KGalleryComboBox::indexClicked), this,
            [&order](const QString& t) { order << QStringLiteral("text ") + t; });
    KGalleryView* view = innerView(box);
    QVERIFY(view);
    QTest::mouseClick(view, Qt::LeftButton, Qt::NoModifier, view->item(2)->gemetry().center());
    QCOMPARE(order, QStringList({QStringLiteral("int 2"), QStringLiteral("item Sans"), QStringLiteral("current Sans"),
                                 QStringLiteral("text Sans")}));
    QVERIFY(!popup->isVisible());
    QCOMPARE(box.currentText(), QStringLiteral("Sans"));
    QCOMPARE(box.lineEdit()->text(), QStringLiteral("Sans"));
    QCOMPARE(box.currentIndex(), 2);
}

void tst_KGalleryComboBox::currentByIndexAndText()
{
    KGalleryComboBox box;
    fillFonts(box.model(), {QStringLiteral("Serif"), QStringLiteral("Sans")});
    QSignalSpy text(&box, &KGalleryComboBox::currentTextChanged);
    QSignalSpy clicked(&box, qOverload<int>(&KGalleryComboBox::indexClicked));
    box.setCurrentIndex(1, false);
    QCOMPARE(text.count(), 1);
    QCOMPARE(text.at(0).at(0).toString(), QStringLiteral("Serif"));
    QCOMPARE(clicked.count(), 0);
    box.setCurrentIndex(-1, false);
    QCOMPARE(text.count(), 2);
    QCOMPARE(text.at(1).at(0).toString(), QString());
    QCOMPARE(box.currentIndex(), -1);

    // By text, case aside, with the click path.
    box.setCurrentText(QStringLiteral("sans"), true);
    QCOMPARE(clicked.count(), 1);
    QCOMPARE(clicked.at(0).at(0).toInt(), 2);
    QCOMPARE(box.currentText(), QStringLiteral("Sans"));
    // The title can't be chosen by its text.
    box.setCurrentText(QStringLiteral("Recent"), true);
    QCOMPARE(clicked.count(), 1);
    QCOMPARE(box.findText(QStringLiteral("nothing")), -1);
    // Out of range by index, with the click path: nothing is chosen, nothing emitted.
    box.setCurrentIndex(10, true);
    QCOMPARE(clicked.count(), 1);
}

void tst_KGalleryComboBox::editFieldKeys()
{
    KGalleryComboBox box;
    box.setEditable(true);
    fillFonts(box.model(), {QStringLiteral("Serif"), QStringLiteral("Sans")});
    box.resize(200, 24);
    box.show();
    QVERIFY(QTest::qWaitForWindowExposed(&box));
    box.setCurrentIndex(1, false);
    KGalleryComboBoxLineEdit* edit = box.lineEdit();
    edit->setFocus();
    edit->setText(QStringLiteral("Typed"));
    QTest::keyClick(edit, Qt::Key_Escape);
    QCOMPARE(edit->text(), QStringLiteral("Serif"));

    // Return with the text of an element chooses it.
    QSignalSpy clicked(&box, qOverload<const QString&>(&KGalleryComboBox::indexClicked));
    edit->setText(QStringLiteral("SANS"));
    QTest::keyClick(edit, Qt::Key_Return);
    QCOMPARE(clicked.count(), 1);
    QCOMPARE(clicked.at(0).at(0).toString(), QStringLiteral("Sans"));
    QCOMPARE(edit->text(), QStringLiteral("Sans"));

    // Down opens the list.
    QVERIFY(!box.popupWidget()->isVisible());
    QTest::keyClick(edit, Qt::Key_Down);
    QVERIFY(box.popupWidget()->isVisible());
    box.popupWidget()->hide();
    QTest::keyClick(edit, Qt::Key_F4);
    QVERIFY(box.popupWidget()->isVisible());
    box.popupWidget()->hide();

    // The first press after the focus came selects all.
    QVERIFY(edit->selectOnNextPress());
    QTest::mouseClick(edit, Qt::LeftButton, Qt::NoModifier, QPoint(3, 5));
    QCOMPARE(edit->selectedText(), QStringLiteral("Sans"));
    QVERIFY(!edit->selectOnNextPress());
}

void tst_KGalleryComboBox::emptyAndReplacedModel()
{
    KGalleryComboBox box;
    box.setEditable(true);
    QSignalSpy text(&box, &KGalleryComboBox::currentTextChanged);
    // An empty list: the text is taken as it is.
    box.setCurrentText(QStringLiteral("Anything"));
    QCOMPARE(text.count(), 1);
    QCOMPARE(box.currentText(), QStringLiteral("Anything"));
    box.popup();
    box.popupWidget()->hide();

    const QPointer<KGalleryAbstractModel> old = box.model();
    const QPointer<KGalleryViewBase> oldView = box.view();
    auto* fresh = new KGalleryAbstractModel;
    fillFonts(fresh, {QStringLiteral("Serif")});
    box.setModel(fresh, KGalleryViewBase::FixedScrollView);
    QVERIFY(!old);
    QVERIFY(!oldView);
    QCOMPARE(box.model(), fresh);
    QVERIFY(qobject_cast<KFixedScrollGalleryView*>(box.view()));
    QCOMPARE(completions(box.completer()), QStringList({QStringLiteral("Serif")}));
    // A model emptied under the box.
    fresh->setCurrentIndex(1);
    fresh->clear();
    QCOMPARE(box.currentIndex(), -1);
    box.setCurrentIndex(0, true);
    box.setCurrentText(QStringLiteral("Serif"), true);
    box.popup();
    QVERIFY(box.popupWidget()->isVisible());
}

void tst_KGalleryComboBox::lineWidgetShowsElement()
{
    KGalleryComboBox box;
    fillFonts(box.model(), {QStringLiteral("Serif"), QStringLiteral("Sans")});
    auto* field = new KGalleryComboBoxLineWidget;
    box.setLineWidget(field);
    QCOMPARE(field->getItem(), nullptr);
    box.setCurrentIndex(2, false);
    QCOMPARE(field->getItem(), box.model()->element(2));
    box.resize(220, 26);
    box.show();
    QVERIFY(QTest::qWaitForWindowExposed(&box));
    QCOMPARE(field->geometry(), box.editFieldRect());
    // Without an edit field a press anywhere opens the list.
    QTest::mouseClick(field, Qt::LeftButton, Qt::NoModifier, QPoint(4, 4));
    QVERIFY(box.popupWidget()->isVisible());
    box.popupWidget()->hide();
    box.model()->removeElement(2);
    QCOMPARE(field->getItem(), nullptr);
}

NORVIK_TEST_MAIN(tst_KGalleryComboBox)
#include "tst_kgallerycombobox.moc"
