#include <ktestsupport.h>

#include <QApplication>

#include <kevent.h>
#include <kidleevent.h>
#include <klistcommand.h>
#include <krbtoolbarcontainer.h>
#include <kseparatorcommand.h>
#include <ktoolbutton.h>
#include <ktriggercommand.h>

#include "ribbontesthelpers.h"

using namespace RibbonTest;

namespace {

// A list that counts its update() calls.
class PolledList : public KListCommand
{
public:
    using KListCommand::KListCommand;
    int updates = 0;
    void update() override { ++updates; }
};

// Items "WxH" or "|" (the separator, 4 x 22 in the test style), separated by spaces.
KListCommand* block(const QString& items, QObject* owner)
{
    auto* list = new KListCommand(owner, owner);
    for (const QString& item : items.split(' ', Qt::SkipEmptyParts)) {
        if (item == "|")
            list->addSeparator();
        else
            list->addSubCommand(new SizedCommand(parseSize(item), parseSize(item), QSize(), owner));
    }
    return list;
}

} // namespace

class tst_KRbToolbarContainer : public QObject
{
    Q_OBJECT
private Q_SLOTS:
    void initTestCase() { QApplication::setStyle(new FixedStyle); }
    void init() { m_warnings.reset(new KWarningCatcher); }
    void cleanup()
    {
        const QStringList messages = m_warnings->messages();
        m_warnings.reset();
        QCOMPARE(messages, QStringList());
    }

    void packing_data();
    void packing();
    void tryLayoutRows_data();
    void tryLayoutRows();
    void buttonStyles_data();
    void buttonStyles();
    void followsItsList();
    void idleUpdatesTheCommand();

private:
    QScopedPointer<KWarningCatcher> m_warnings;
};

void tst_KRbToolbarContainer::packing_data()
{
    QTest::addColumn<QString>("items");
    QTest::addColumn<double>("waste");
    QTest::addColumn<QSize>("hint");
    QTest::addColumn<QRect>("rect");
    QTest::addColumn<QString>("expected"); // "-" for an item placed nowhere (a null rectangle)

    // Total 64: the separator break gives A B (40) over C; 0.5 * 64 * 1.3 = 41.6 keeps it. The
    // separator that ends the first row is not drawn; the free height (6) falls into three gaps.
    QTest::newRow("separator break kept") << "20x22 20x22 | 20x22" << 1.3 << QSize(40, 44)
                                          << QRect(0, 0, 40, 50) << "0,2,20,22 20,2,20,22 - 0,26,20,22";
    // Total 84: the separator break gives A over B C D (60) > 54.6, so rows break anywhere:
    // the narrowest is A | B (44) over C D (40).
    QTest::newRow("separator break too wasteful") << "20x22 | 20x22 20x22 20x22" << 1.3 << QSize(44, 44)
                                                  << QRect(0, 0, 44, 44)
                                                  << "0,0,20,22 20,0,4,22 24,0,20,22 0,22,20,22 20,22,20,22";
    QTest::newRow("more waste allowed keeps the separator break")
        << "20x22 | 20x22 20x22 20x22" << 2.0 << QSize(60, 44) << QRect(0, 0, 60, 44)
        << "0,0,20,22 - 0,22,20,22 20,22,20,22 40,22,20,22";
    QTest::newRow("empty") << "" << 1.3 << QSize(0, 0) << QRect(0, 0, 10, 10) << "";
    // The first row holds the single item once the search reaches its width. The empty second
    // row still measures the first row's item, so no free height is left above the first.
    QTest::newRow("single item") << "30x22" << 1.3 << QSize(30, 22) << QRect(0, 0, 30, 44) << "0,0,30,22";
    // The second row's height also measures the first row's items (30 here, not 22).
    QTest::newRow("row heights count from the first item")
        << "20x22 20x30 | 20x22" << 1.3 << QSize(40, 52) << QRect(0, 0, 40, 60)
        << "0,0,20,30 20,0,20,30 - 0,30,20,30";
    // Given more width, the rows are filled as far as they go.
    QTest::newRow("wider than the hint") << "20x22 20x22 20x22 20x22" << 1.3 << QSize(40, 44)
                                         << QRect(0, 0, 60, 44) << "0,0,20,22 20,0,20,22 40,0,20,22 0,22,20,22";
}

void tst_KRbToolbarContainer::packing()
{
    QFETCH(QString, items);
    QFETCH(double, waste);
    QFETCH(QSize, hint);
    QFETCH(QRect, rect);
    QFETCH(QString, expected);

    QObject owner;
    KListCommand* list = block(items, &owner);
    list->setProperty("WasteProportion", waste);
    QWidget host;
    KRbToolbarContainer container(list, &host);
    QCOMPARE(container.sizeHint(), hint);
    KRbToolbarContainerLayout* layout = container.containerLayout();
    QCOMPARE(layout->minimumSize(), hint);
    QCOMPARE(layout->maximumSize(), hint);

    layout->setGeometry(rect);
    const QList<QRect> wanted = rects(expected);
    QCOMPARE(layout->count(), wanted.size());
    for (int i = 0; i < layout->count(); ++i) {
        const QRect r = layout->itemAt(i)->widget()->geometry();
        if (wanted.at(i).isNull())
            QVERIFY2(r.isEmpty(), qPrintable(QString("item %1").arg(i)));
        else
            QCOMPARE(r, wanted.at(i));
    }
}

void tst_KRbToolbarContainer::tryLayoutRows_data()
{
    QTest::addColumn<QString>("items");
    QTest::addColumn<int>("width");
    QTest::addColumn<bool>("atSeparator");
    QTest::addColumn<int>("firstEnd");
    QTest::addColumn<int>("secondEnd");

    // A breaking separator closes its row; any other breaking item steps back to just after
    // a separator, or to 0, which makes the attempt fail.
    QTest::newRow("separator closes the row") << "20x22 20x22 | 20x22" << 40 << true << 3 << 4;
    QTest::newRow("steps back to the separator") << "20x22 | 20x22 20x22 20x22" << 60 << true << 2 << 5;
    QTest::newRow("no separator: back to 0") << "20x22 20x22 20x22" << 50 << true << 0 << 0;
    QTest::newRow("free break") << "20x22 20x22 20x22" << 50 << false << 2 << 3;
    QTest::newRow("an item wider than the row") << "60x22 20x22" << 50 << false << 0 << 0;
}

void tst_KRbToolbarContainer::tryLayoutRows()
{
    QFETCH(QString, items);
    QFETCH(int, width);
    QFETCH(bool, atSeparator);
    QFETCH(int, firstEnd);
    QFETCH(int, secondEnd);

    QObject owner;
    QWidget host;
    KRbToolbarContainer container(block(items, &owner), &host);
    container.ensureConnectCommand();
    KRbToolbarContainerLayout* layout = container.containerLayout();
    QVector<QSize> sizes;
    for (int i = 0; i < layout->count(); ++i)
        sizes << layout->itemSizeHint(i);
    const QVector<int> ends = layout->tryLayout(sizes, width, atSeparator);
    QCOMPARE(ends.size(), 2);
    QCOMPARE(ends.at(0), firstEnd);
    QCOMPARE(ends.at(1), secondEnd);
}

void tst_KRbToolbarContainer::buttonStyles_data()
{
    QTest::addColumn<QString>("property");
    QTest::addColumn<int>("initialStyle");
    QTest::addColumn<int>("expectedStyle");

    QTest::newRow("no wish: the button's own style") << "" << 1 << 1;
    QTest::newRow("showIconAndText: text hides on a narrow screen") << "showIconAndText" << 1 << 131;
    QTest::newRow("forceShowIconAndText: never hidden") << "forceShowIconAndText" << 131 << 3;
    QTest::newRow("force keeps the arrow") << "forceShowIconAndText" << 5 << 7;
}

void tst_KRbToolbarContainer::buttonStyles()
{
    QFETCH(QString, property);
    QFETCH(int, initialStyle);
    QFETCH(int, expectedStyle);

    QObject owner;
    auto* list = new KListCommand(&owner, &owner);
    auto* cmd = new KTriggerCommand(&owner, &owner);
    cmd->setText("Bold");
    cmd->setButtonStyle(initialStyle);
    if (!property.isEmpty())
        cmd->setProperty(property.toLatin1().constData(), true);
    list->addSubCommand(cmd);
    QWidget host;
    KRbToolbarContainer container(list, &host);
    container.ensureConnectCommand();
    auto* button = qobject_cast<KToolButton*>(container.containerLayout()->itemAt(0)->widget());
    QVERIFY(button);
    QCOMPARE(button->buttonStyle(), expectedStyle);
}

void tst_KRbToolbarContainer::followsItsList()
{
    QObject owner;
    KListCommand* list = block("20x22 20x22", &owner);
    QWidget host;
    KRbToolbarContainer container(list, &host);
    // Nothing is built before the block is shown or measured.
    QCOMPARE(container.containerLayout()->count(), 0);
    QCOMPARE(container.sizeHint(), QSize(20, 44));

    list->insertSubCommand(1, new SizedCommand(QSize(30, 22), QSize(30, 22), QSize(), &owner));
    QCOMPARE(container.containerLayout()->count(), 3);
    QCOMPARE(container.containerLayout()->itemAt(1)->widget()->sizeHint(), QSize(30, 22));
    QCOMPARE(container.sizeHint(), QSize(50, 44)); // 20 30 over 20: no packing is narrower

    QPointer<QWidget> removed = container.containerLayout()->itemAt(0)->widget();
    list->removeSubCommand(0);
    QCOMPARE(container.containerLayout()->count(), 2);
    QVERIFY(removed->isHidden());
    QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
    QVERIFY(!removed);

    // Hidden and disabled with its command.
    list->setEnabled(false);
    QVERIFY(!container.isEnabled());
    list->setVisible(false);
    QVERIFY(container.isHidden());
}

void tst_KRbToolbarContainer::idleUpdatesTheCommand()
{
    QObject owner;
    auto* list = new PolledList(&owner, &owner);
    QWidget host;
    KRbToolbarContainer container(list, &host);
    KIdleEvent idle(0);
    QVERIFY(QCoreApplication::sendEvent(&container, &idle));
    QCOMPARE(list->updates, 1);
}

NORVIK_TEST_MAIN(tst_KRbToolbarContainer)
#include "tst_krbtoolbarcontainer.moc"
