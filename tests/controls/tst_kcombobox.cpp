// The combo box command and its boxes: the item list, the two-way binding of several boxes,
// the rules for typed text, and changes of the items while the drop-down is open.
#include <ktestsupport.h>

#include <QAbstractItemView>
#include <QLineEdit>
#include <QSignalSpy>
#include <QTemporaryDir>

#include <kcombobox.h>
#include <kcomboboxcommand.h>
#include <kcommandfactory.h>
#include <kcommands.h>

namespace {

KComboBox* makeBox(KComboBoxCommand* cmd, QWidget* parent)
{
    return qobject_cast<KComboBox*>(cmd->requestWidget(parent, KCommand::PocketPurpose));
}

QStringList rows(const QComboBox* box)
{
    QStringList texts;
    for (int i = 0; i < box->count(); ++i)
        texts << box->itemText(i);
    return texts;
}

} // namespace

class tst_KComboBox : public QObject
{
    Q_OBJECT
private Q_SLOTS:
    void cleanup();
    void fromDescription();
    void itemsText_data();
    void itemsText();
    void itemOperations();
    void boxesFollowTheCommand();
    void choiceReachesCommandAndOtherBoxes();
    void returnWithUnknownText();
    void returnWithItemText();
    void typedTextSelects();
    void needUpdateWhileTyping();
    void popupKeepsTypedText();
    void viewWidth();
    void itemsChangeWhilePopupOpen();
    void cloneTriggersOriginal();
    void sizes();

private:
    QTemporaryDir m_dir;
};

void tst_KComboBox::cleanup()
{
    KApplication::instance()->resetXml();
}

void tst_KComboBox::fromDescription()
{
    QVERIFY(m_dir.isValid());
    QVERIFY(KTestSupport::loadMainXml(m_dir.path(),
                                      "<commands><KComboBoxCommand id='size' text='Font Size' items='8;;10;12' "
                                      "maxVisibleItems='5' customTip='Size'/></commands>"));
    auto* cmd = qobject_cast<KComboBoxCommand*>(KApplication::instance()->commands()->command("size"));
    QVERIFY(cmd);
    QCOMPARE(cmd->itemsList(), QStringList({"8", "10", "12"}));
    QCOMPARE(cmd->maxVisibleItems(), 5);
    QCOMPARE(cmd->currentIndex(), -1);
    QCOMPARE(cmd->viewMinWidth(), -1);
    QVERIFY(cmd->selected().isEmpty());
    QVERIFY(KCommandFactory::item("KComboBoxCommand"));
}

void tst_KComboBox::itemsText_data()
{
    QTest::addColumn<QString>("text");
    QTest::addColumn<QStringList>("items");
    QTest::newRow("two") << "a;;b" << QStringList({"a", "b"});
    QTest::newRow("one") << "x" << QStringList({"x"});
    QTest::newRow("empty") << "" << QStringList();
    QTest::newRow("only separators") << ";;;" << QStringList();
    QTest::newRow("edges") << ";8;9.5;" << QStringList({"8", "9.5"});
    QTest::newRow("spaces kept") << " a ; b" << QStringList({" a ", " b"});
}

void tst_KComboBox::itemsText()
{
    QFETCH(QString, text);
    QFETCH(QStringList, items);
    KComboBoxCommand cmd(this, nullptr);
    cmd.setItems("old;list");
    QSignalSpy set(&cmd, &KComboBoxCommand::notifySetItems);
    QWidget parent;
    KComboBox* box = makeBox(&cmd, &parent);
    QVERIFY(box);
    cmd.setProperty("items", text); // as the description writes it
    QCOMPARE(cmd.itemsList(), items);
    QCOMPARE(cmd.itemsCount(), items.size());
    QCOMPARE(cmd.items(), items.join(';'));
    QCOMPARE(set.size(), 1);
    QCOMPARE(set.first().first().toStringList(), items);
    QCOMPARE(rows(box), items);
}

void tst_KComboBox::itemOperations()
{
    KComboBoxCommand cmd(this, nullptr);
    cmd.setItems("a;b;c");
    QSignalSpy inserted(&cmd, &KComboBoxCommand::itemInsert);
    QSignalSpy changed(&cmd, &KComboBoxCommand::itemChanged);
    // The boxes hear of a removal while the item is still in the list.
    QStringList seenAtRemove;
    connect(&cmd, &KComboBoxCommand::itemRemove, this,
            [&](int i) { seenAtRemove << QString("%1:%2").arg(i).arg(cmd.itemsAt(i)); });

    cmd.insertItem(1, "x");
    cmd.insertItem(-1, "end1");
    cmd.insertItem(99, "end2");
    cmd.insertItem(6, "end3"); // exactly the count: still a plain insert
    QCOMPARE(cmd.itemsList(), QStringList({"a", "x", "b", "c", "end1", "end2", "end3"}));
    QCOMPARE(inserted.size(), 4);
    QCOMPARE(inserted.at(1), QVariantList({4, QString("end1")}));
    QCOMPARE(inserted.at(2), QVariantList({5, QString("end2")}));
    QCOMPARE(inserted.at(3), QVariantList({6, QString("end3")}));

    cmd.setItemText(1, "y");
    cmd.setItemText(7, "out");
    cmd.setItemText(-1, "out");
    QCOMPARE(cmd.itemsAt(1), QString("y"));
    QCOMPARE(changed.size(), 1);
    QCOMPARE(changed.first(), QVariantList({1, QString("y")}));

    cmd.removeItem(1);
    cmd.removeItem(9);
    QCOMPARE(seenAtRemove, QStringList({"1:y"}));
    cmd.clearItems();
    QCOMPARE(cmd.itemsCount(), 0);
    QCOMPARE(seenAtRemove.mid(1), QStringList({"0:a", "0:b", "0:c", "0:end1", "0:end2", "0:end3"}));
}

void tst_KComboBox::boxesFollowTheCommand()
{
    KComboBoxCommand cmd(this, nullptr);
    cmd.setItems("8;10;12");
    QWidget parent;
    KComboBox* a = makeBox(&cmd, &parent);
    KComboBox* b = makeBox(&cmd, &parent);
    QVERIFY(a);
    QVERIFY(b);
    QCOMPARE(cmd.boxes(), QList<KComboBox*>({a, b}));
    // Nothing chosen yet: the boxes show nothing, though they have rows.
    QCOMPARE(rows(a), QStringList({"8", "10", "12"}));
    QCOMPARE(a->currentIndex(), -1);
    QVERIFY(a->lineEdit()->text().isEmpty());

    cmd.setCurrentIndex(1);
    cmd.setSelected("10");
    for (KComboBox* box : {a, b}) {
        QCOMPARE(box->currentIndex(), 1);
        QCOMPARE(box->lineEdit()->text(), QString("10"));
    }
    // A value that no item has: the field shows it, no row is current.
    cmd.setSelected("11");
    cmd.setCurrentIndex(-1);
    for (KComboBox* box : {a, b}) {
        QCOMPARE(box->lineEdit()->text(), QString("11"));
        QCOMPARE(box->currentIndex(), -1);
    }
    // The list changes reach every box, and the field stays.
    cmd.insertItem(0, "6");
    cmd.setItemText(3, "14");
    cmd.removeItem(1);
    for (KComboBox* box : {a, b}) {
        QCOMPARE(rows(box), QStringList({"6", "10", "14"}));
        QCOMPARE(box->lineEdit()->text(), QString("11"));
    }
    cmd.setEnabled(false);
    QVERIFY(!a->isEnabled());
    cmd.setMaxVisibleItems(3);
    QCOMPARE(b->maxVisibleItems(), 3);
}

void tst_KComboBox::choiceReachesCommandAndOtherBoxes()
{
    KComboBoxCommand cmd(this, nullptr);
    cmd.setItems("Arial;Courier;Times");
    QWidget window;
    KComboBox* a = makeBox(&cmd, &window);
    KComboBox* b = makeBox(&cmd, &window);
    a->setGeometry(0, 0, 100, 24);
    b->setGeometry(0, 30, 100, 24);
    window.show();
    QVERIFY(QTest::qWaitForWindowExposed(&window));
    QStringList seen;
    connect(&cmd, &KCommand::triggered, this, [&] { seen << cmd.selected(); });

    // A pick from the list, as the view reports it.
    a->showPopup();
    QTRY_VERIFY(a->isPopuping());
    const QModelIndex row = a->view()->model()->index(2, 0);
    a->view()->setCurrentIndex(row);
    QTest::keyClick(a->view(), Qt::Key_Return);
    QTRY_VERIFY(!a->isPopuping());
    QCOMPARE(seen, QStringList({"Times"}));
    QCOMPARE(cmd.selected(), QString("Times"));
    QCOMPARE(cmd.currentIndex(), 2);
    QCOMPARE(b->currentIndex(), 2);
    QCOMPARE(b->lineEdit()->text(), QString("Times"));
    QCOMPARE(a->lineEdit()->text(), QString("Times"));
}

void tst_KComboBox::returnWithUnknownText()
{
    KComboBoxCommand cmd(this, nullptr);
    cmd.setItems("8;10;12");
    QWidget window;
    KComboBox* box = makeBox(&cmd, &window);
    window.show();
    QVERIFY(QTest::qWaitForWindowActive(&window));
    QSignalSpy typed(box, &KComboBox::doTriggered);
    QSignalSpy triggered(&cmd, &KCommand::triggered);
    box->setFocus();
    QTest::keyClicks(box, "11");
    QTest::keyClick(box, Qt::Key_Return); // keys go to the box, which hands them to its field
    QCOMPARE(typed.size(), 1);
    QCOMPARE(typed.first().first().toString(), QString("11"));
    QCOMPARE(triggered.size(), 1);
    QCOMPARE(cmd.selected(), QString("11"));
    // The value goes to the host, not into the list.
    QCOMPARE(rows(box), QStringList({"8", "10", "12"}));
    QCOMPARE(cmd.itemsCount(), 3);
    QVERIFY(!box->lineEdit()->isModified());
}

void tst_KComboBox::returnWithItemText()
{
    KComboBoxCommand cmd(this, nullptr);
    cmd.setItems("Arial;Courier");
    QWidget window;
    KComboBox* box = makeBox(&cmd, &window);
    window.show();
    QVERIFY(QTest::qWaitForWindowActive(&window));
    QSignalSpy typed(box, &KComboBox::doTriggered);
    QSignalSpy triggered(&cmd, &KCommand::triggered);
    box->setFocus();
    QTest::keyClicks(box, "courier");
    QTest::keyClick(box, Qt::Key_Return); // keys go to the box, which hands them to its field
    QCOMPARE(typed.size(), 0);
    QCOMPARE(triggered.size(), 1); // once, though the field is also left
    QCOMPARE(cmd.currentIndex(), 1);
    QCOMPARE(cmd.selected(), QString("Courier"));
    QCOMPARE(box->currentIndex(), 1);
}

void tst_KComboBox::typedTextSelects()
{
    KComboBoxCommand cmd(this, nullptr);
    cmd.setItems("Arial;Courier;Times");
    QWidget window;
    KComboBox* box = makeBox(&cmd, &window);
    window.show();
    QVERIFY(QTest::qWaitForWindowActive(&window));
    box->setFocus();
    QTest::keyClicks(box, "Cour");
    QCOMPARE(box->currentIndex(), -1);
    QTest::keyClicks(box, "ier");
    QCOMPARE(box->currentIndex(), 1);
    QCOMPARE(box->lineEdit()->text(), QString("Courier"));
    // Another spelling selects the item and stays as typed, the cursor at the start.
    box->lineEdit()->clear();
    QTest::keyClicks(box, "TIMES");
    QCOMPARE(box->currentIndex(), 2);
    QCOMPARE(box->lineEdit()->text(), QString("TIMES"));
    QCOMPARE(box->lineEdit()->cursorPosition(), 0);
    // Typing chose nothing for the command yet.
    QCOMPARE(cmd.currentIndex(), -1);
    QVERIFY(cmd.selected().isEmpty());
}

void tst_KComboBox::needUpdateWhileTyping()
{
    KComboBoxCommand cmd(this, nullptr);
    cmd.setItems("8;10;12");
    cmd.setSelected("10");
    QWidget window;
    KComboBox* a = makeBox(&cmd, &window);
    KComboBox* b = makeBox(&cmd, &window);
    auto* other = new QLineEdit(&window);
    a->move(0, 0);
    b->move(0, 30);
    other->move(0, 60);
    window.show();
    QVERIFY(QTest::qWaitForWindowActive(&window));
    const auto ask = [&cmd] {
        bool need = true;
        Q_EMIT cmd.isNeedUpdate(need);
        return need;
    };
    other->setFocus();
    QVERIFY(ask());

    // The second box is being typed in: no box may be written now.
    b->setFocus();
    QTRY_VERIFY(b->hasFocus());
    QVERIFY(!ask());
    QTest::keyClicks(b, "1");
    QVERIFY(!ask());
    bool direct = true;
    b->isNeedUpdate(direct);
    QVERIFY(!direct);
    direct = false;
    a->isNeedUpdate(direct);
    QVERIFY(direct);
    // A change of the command meanwhile leaves the typed text alone.
    const QString typing = b->lineEdit()->text();
    cmd.setSelected("12");
    QCOMPARE(b->lineEdit()->text(), typing);
    QCOMPARE(a->lineEdit()->text(), QString("12"));

    other->setFocus();
    QTRY_VERIFY(!b->hasFocus());
    QVERIFY(ask());
    // The host's next write reaches the box.
    cmd.setSelected("8");
    QCOMPARE(b->lineEdit()->text(), QString("8"));

    bool equal = false;
    a->isEqualWithLineEdit("8", equal);
    QVERIFY(equal);
    a->isEqualWithLineEdit("80", equal);
    QVERIFY(!equal);
}

void tst_KComboBox::popupKeepsTypedText()
{
    KComboBoxCommand cmd(this, nullptr);
    cmd.setItems("10;12;14");
    cmd.setCurrentIndex(1);
    cmd.setSelected("12");
    QWidget window;
    KComboBox* box = makeBox(&cmd, &window);
    window.show();
    QVERIFY(QTest::qWaitForWindowActive(&window));
    box->setFocus();
    box->lineEdit()->selectAll();
    QTest::keyClicks(box, "13");
    box->lineEdit()->setSelection(1, 1);
    box->showPopup();
    QTRY_VERIFY(box->isPopuping());
    QCOMPARE(box->lineEdit()->text(), QString("13"));
    QCOMPARE(box->lineEdit()->selectedText(), QString("3"));
    QCOMPARE(box->currentIndex(), -1);
    box->hidePopup();
    // With a text that an item has, that item is current in the list.
    box->lineEdit()->setText("14");
    box->showPopup();
    QTRY_VERIFY(box->isPopuping());
    QCOMPARE(box->currentIndex(), 2);
    QCOMPARE(box->view()->currentIndex().row(), 2);
    box->hidePopup();
}

void tst_KComboBox::viewWidth()
{
    QWidget parent;
    for (int n : {12, 13}) {
        KComboBoxCommand cmd(this, nullptr);
        QStringList items;
        for (int i = 0; i < n; ++i)
            items << QString("Item number %1").arg(i);
        cmd.setItems(items.join(';'));
        KComboBox* box = makeBox(&cmd, &parent);
        QVERIFY(box);
        QCOMPARE(box->maxVisibleItems(), 12);
        int widest = 0;
        for (const QString& t : items)
            widest = qMax(widest, box->view()->fontMetrics().horizontalAdvance(t));
        const int scrollBar = n > 12 ? box->style()->pixelMetric(QStyle::PM_ScrollBarExtent, nullptr, box->view()) : 0;
        QCOMPARE(box->view()->minimumWidth(), widest + scrollBar + 8);
    }
    // A width from the command wins.
    KComboBoxCommand cmd(this, nullptr);
    cmd.setItems("a;b");
    cmd.setViewMinWidth(300);
    KComboBox* box = makeBox(&cmd, &parent);
    QCOMPARE(box->view()->minimumWidth(), 300);
    box->setViewMinWidth(QStringList({"wwwwwwwwwwwwwwwwwwwwwwwwwwwwwwwwwwwwwwwwwwwwwwwwwwwwwwww"}));
    QCOMPARE(box->view()->minimumWidth(),
             box->view()->fontMetrics().horizontalAdvance("wwwwwwwwwwwwwwwwwwwwwwwwwwwwwwwwwwwwwwwwwwwwwwwwwwwwwwww") + 10);
}

void tst_KComboBox::itemsChangeWhilePopupOpen()
{
    KComboBoxCommand cmd(this, nullptr);
    cmd.setItems("a;b;c;d");
    cmd.setCurrentIndex(2);
    cmd.setSelected("c");
    QWidget window;
    KComboBox* box = makeBox(&cmd, &window);
    window.show();
    QVERIFY(QTest::qWaitForWindowExposed(&window));
    box->showPopup();
    QTRY_VERIFY(box->isPopuping());
    cmd.removeItem(2); // the current one
    cmd.insertItem(0, "z");
    cmd.setItemText(1, "A");
    QCOMPARE(rows(box), QStringList({"z", "A", "b", "d"}));
    QCOMPARE(box->lineEdit()->text(), QString("c"));
    QCOMPARE(box->view()->model()->rowCount(), 4);
    cmd.setItems("x;y");
    QCOMPARE(rows(box), QStringList({"x", "y"}));
    cmd.clearItems();
    QCOMPARE(box->count(), 0);
    QCOMPARE(box->lineEdit()->text(), QString("c"));
    cmd.setItems("p;c");
    QCOMPARE(box->currentIndex(), 1); // the field's text finds its item again
    box->hidePopup();
    QTRY_VERIFY(!box->isPopuping());
    QCOMPARE(cmd.selected(), QString("c"));
}

void tst_KComboBox::cloneTriggersOriginal()
{
    KComboBoxCommand cmd(this, nullptr);
    cmd.setItems("8;10");
    cmd.setText("Size");
    cmd.setMaxVisibleItems(4);
    QStringList seen;
    connect(&cmd, &KCommand::triggered, this, [&] { seen << cmd.selected(); });
    QObject other;
    auto* copy = qobject_cast<KComboBoxCommand*>(cmd.clone(&other, &other));
    QVERIFY(copy);
    QCOMPARE(copy->itemsList(), cmd.itemsList());
    QCOMPARE(copy->text(), QString("Size"));
    QCOMPARE(copy->maxVisibleItems(), 4);
    QCOMPARE(copy->host(), &other);
    copy->comboBoxTriggered(QString("10"));
    QCOMPARE(copy->selected(), QString("10"));
    QCOMPARE(seen, QStringList({"10"}));
}

void tst_KComboBox::sizes()
{
    KComboBoxCommand cmd(this, nullptr);
    cmd.setItems("a;b");
    QWidget parent;
    KComboBox* box = makeBox(&cmd, &parent);
    QCOMPARE(box->fixedWidth2(), -1);
    QCOMPARE(box->sizeHint().width(), 60);
    box->setFixedWidth2(90);
    QCOMPARE(box->sizeHint().width(), 90);
    QCOMPARE(box->minimumSizeHint().width(), 90);
    QVERIFY(box->isEditable());
    QCOMPARE(box->insertPolicy(), QComboBox::NoInsert);
    QVERIFY(!box->completer());
}

NORVIK_TEST_MAIN(tst_KComboBox)
#include "tst_kcombobox.moc"
