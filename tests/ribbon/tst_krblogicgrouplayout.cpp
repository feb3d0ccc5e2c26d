#include <ktestsupport.h>

#include <krblogicgrouplayout.h>

#include "ribbontesthelpers.h"

using namespace RibbonTest;

class tst_KRbLogicGroupLayout : public QObject
{
    Q_OBJECT
private Q_SLOTS:
    // No test may leave a warning behind.
    void init() { m_warnings.reset(new KWarningCatcher); }
    void cleanup()
    {
        const QStringList messages = m_warnings->messages();
        m_warnings.reset();
        QCOMPARE(messages, QStringList());
    }

    void geometry_data();
    void geometry();
    void emptyLayoutHasNoSize();
    void visibilityFollowsCommand();
    void itemsComeAndGo();

private:
    QScopedPointer<KWarningCatcher> m_warnings;
};

void tst_KRbLogicGroupLayout::geometry_data()
{
    QTest::addColumn<QString>("items");
    QTest::addColumn<int>("lineCount");
    QTest::addColumn<int>("hSpacing");
    QTest::addColumn<int>("vSpacing");
    QTest::addColumn<QRect>("rect");
    QTest::addColumn<QSize>("hint");
    QTest::addColumn<QSize>("minimum");
    QTest::addColumn<QString>("expected");

    // Columns of three and one; the lone control stands in the middle of the height, the free
    // height of a column falls into count + 1 equal gaps.
    QTest::newRow("four small: columns of 3 and 1")
        << "S30x20 S40x20 S30x20 S20x20" << 3 << 0 << 0 << QRect(0, 0, 60, 80) << QSize(60, 60)
        << QSize(60, 60) << "0,5,30,20 0,30,40,20 0,55,30,20 40,30,20,20";
    QTest::newRow("a large control ends the column before it")
        << "S30x20 S30x20 L50x60 S20x20" << 3 << 0 << 0 << QRect(0, 0, 100, 70) << QSize(100, 60)
        << QSize(100, 60) << "0,10,30,20 0,40,30,20 30,0,50,70 80,25,20,20";
    // A hidden control belongs to the column without counting, so the fourth stays in it.
    QTest::newRow("hidden control does not count")
        << "S30x20 H40x20 S30x20 S20x20 S25x20" << 3 << 0 << 0 << QRect(0, 0, 55, 80) << QSize(55, 60)
        << QSize(55, 60) << "0,4,30,20 - 0,32,30,20 0,56,20,20 30,30,25,20";
    // At exactly the hint the layout grows by nothing and places from its own origin.
    QTest::newRow("exactly the hint: from the origin")
        << "S30x20 S30x20" << 3 << 0 << 0 << QRect(5, 7, 30, 60) << QSize(30, 40) << QSize(30, 40)
        << "0,6,30,20 0,33,30,20";
    // Slack 10 and 30, need 20: they give 5 and 15, and place from the rectangle's left.
    QTest::newRow("shrink in proportion to slack")
        << "S50x20-40x20 S60x20-30x20" << 1 << 0 << 0 << QRect(3, 4, 90, 30) << QSize(110, 20)
        << QSize(70, 20) << "3,5,45,20 48,5,45,20";
    QTest::newRow("below the minimum: all at minimum, overflowing")
        << "S50x20-40x20 S60x20-30x20" << 1 << 0 << 0 << QRect(0, 0, 50, 30) << QSize(110, 20)
        << QSize(70, 20) << "0,5,40,20 40,5,30,20";
    // Need 10 from three slacks of 10: 3.8 rounds to 3, the carried 7 of 20 gives 4, then 3.
    QTest::newRow("rounding is carried to the next column")
        << "S30x20-20x20 S30x20-20x20 S30x20-20x20" << 1 << 0 << 0 << QRect(0, 0, 80, 20)
        << QSize(90, 20) << QSize(60, 20) << "0,0,27,20 27,0,26,20 53,0,27,20";
    // Spare 20 and 40 up to the maxima, extra 30: they take 10 and 20. A large control keeps
    // its maximum height, centred.
    QTest::newRow("grow in proportion to what can be taken")
        << "L40x60-40x60-60x60 L40x60-40x60-80x60" << 3 << 0 << 0 << QRect(0, 0, 110, 70)
        << QSize(80, 60) << QSize(80, 60) << "0,5,50,60 50,5,60,60";
    QTest::newRow("short column: heights give in proportion")
        << "S30x30-30x20 S30x30-30x10" << 3 << 0 << 0 << QRect(0, 0, 30, 45) << QSize(30, 60)
        << QSize(30, 30) << "0,0,30,25 0,25,30,20";
    QTest::newRow("line count 2 pairs the small controls")
        << "S20x20 S20x20 S20x20" << 2 << 0 << 0 << QRect(0, 0, 40, 50) << QSize(40, 40) << QSize(40, 40)
        << "0,3,20,20 0,26,20,20 20,15,20,20";
    QTest::newRow("spacings between columns and controls")
        << "S20x20 S20x20 L30x50" << 3 << 5 << 2 << QRect(0, 0, 55, 52) << QSize(55, 50) << QSize(55, 50)
        << "0,3,20,20 0,28,20,20 25,0,30,52";
    QTest::newRow("columns keep their controls' own widths")
        << "S20x20 S50x20" << 3 << 0 << 0 << QRect(0, 0, 50, 40) << QSize(50, 40) << QSize(50, 40)
        << "0,0,20,20 0,20,50,20";
}

void tst_KRbLogicGroupLayout::geometry()
{
    QFETCH(QString, items);
    QFETCH(int, lineCount);
    QFETCH(int, hSpacing);
    QFETCH(int, vSpacing);
    QFETCH(QRect, rect);
    QFETCH(QSize, hint);
    QFETCH(QSize, minimum);
    QFETCH(QString, expected);

    QObject owner;
    QWidget host;
    auto* layout = new KRbLogicGroupLayout(&host);
    layout->setLineCount(lineCount);
    layout->setHorizontalSpacing(hSpacing);
    layout->setVerticalSpacing(vSpacing);
    const QStringList specs = items.split(' ');
    for (const QString& spec : specs)
        layout->insertItem(-1, new KRbLogicGroupItem(control(spec, &owner), &host));

    QCOMPARE(layout->sizeHint(), hint);
    QCOMPARE(layout->minimumSize(), minimum);
    layout->setGeometry(rect);
    const QList<QRect> wanted = rects(expected);
    QCOMPARE(wanted.size(), layout->count());
    for (int i = 0; i < layout->count(); ++i) {
        if (wanted.at(i).isNull())
            continue;
        QCOMPARE(layout->itemAt(i)->widget()->geometry(), wanted.at(i));
    }
}

void tst_KRbLogicGroupLayout::emptyLayoutHasNoSize()
{
    QWidget host;
    auto* layout = new KRbLogicGroupLayout(&host);
    QCOMPARE(layout->sizeHint(), QSize(-1, -1));
    QCOMPARE(layout->minimumSize(), QSize(-1, -1));
    layout->setGeometry(QRect(0, 0, 10, 10)); // nothing to place, nothing breaks
    QCOMPARE(layout->count(), 0);
}

void tst_KRbLogicGroupLayout::visibilityFollowsCommand()
{
    // A size query carries the command's visibility to the control, even without changed().
    QObject owner;
    QWidget window; // the host is no window: a window's layout would bound the window's size
    QWidget host(&window);
    auto* layout = new KRbLogicGroupLayout(&host);
    SizedCommand* first = control("S30x20", &owner);
    SizedCommand* second = control("S40x20", &owner);
    layout->insertItem(0, new KRbLogicGroupItem(first, &host));
    layout->insertItem(1, new KRbLogicGroupItem(second, &host));
    window.show();
    QWidget* secondWidget = layout->itemAt(1)->widget();
    QVERIFY(secondWidget->isVisible());

    QSignalBlocker quiet(second);
    second->setVisible(false);
    QCOMPARE(layout->sizeHint(), QSize(30, 20));
    QVERIFY(secondWidget->isHidden());
    QVERIFY(layout->itemAt(1)->isEmpty());

    second->setVisible(true);
    QCOMPARE(layout->sizeHint(), QSize(40, 40));
    QVERIFY(!secondWidget->isHidden());
}

void tst_KRbLogicGroupLayout::itemsComeAndGo()
{
    QObject owner;
    QWidget host;
    auto* layout = new KRbLogicGroupLayout(&host);
    layout->insertItem(0, new KRbLogicGroupItem(control("S30x20", &owner), &host));
    layout->insertItem(-1, new KRbLogicGroupItem(control("L50x60", &owner), &host));
    layout->insertItem(0, new KRbLogicGroupItem(control("S20x20", &owner), &host));
    QCOMPARE(layout->count(), 3);
    QCOMPARE(layout->logicItemAt(0)->widget()->sizeHint(), QSize(20, 20));
    QCOMPARE(layout->countOfVertLayout(0), 2);
    QCOMPARE(layout->countOfVertLayout(2), 0);

    // addItem takes nothing: a control comes with its command.
    QWidgetItem stray(&host);
    layout->addItem(&stray);
    QCOMPARE(layout->count(), 3);

    // Taking an item hands it over and deletes its widget later.
    QPointer<QWidget> taken = layout->itemAt(0)->widget();
    delete layout->takeAt(0);
    QCOMPARE(layout->count(), 2);
    QVERIFY(taken);
    QTest::qWait(0);
    QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
    QVERIFY(!taken);
    QCOMPARE(layout->takeAt(5), nullptr);

    // A control deleted by someone else leaves the layout with it.
    delete layout->itemAt(0)->widget();
    QCOMPARE(layout->count(), 1);
    QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
    QCOMPARE(layout->count(), 1);
}

NORVIK_TEST_MAIN(tst_KRbLogicGroupLayout)
#include "tst_krblogicgrouplayout.moc"
