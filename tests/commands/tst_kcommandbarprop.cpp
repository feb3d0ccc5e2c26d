#include <ktestsupport.h>

#include <QSignalSpy>
#include <QTemporaryDir>

#include <kcommandbarprop.h>
#include <kcommands.h>
#include <klistcommand.h>
#include <kmainwindow.h>
#include <ktoolbar.h>

// The typed view over a bar's dynamic properties: what it reads from a description, what it
// signals, and how the main window answers a position or protection written through it.
class tst_KCommandBarProp : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void cleanup();
    void readsDescriptionWithDefaults_data();
    void readsDescriptionWithDefaults();
    void writesSignalEvenWhenUnchanged();
    void positionAndProtectionReachTheBar();
    void nameLocalKeepsDescriptionCaption();

private:
    bool load(const QByteArray& body) { return KTestSupport::loadMainXml(m_dir.path(), body); }
    QTemporaryDir m_dir;
};

void tst_KCommandBarProp::cleanup()
{
    KApplication::instance()->resetXml();
}

void tst_KCommandBarProp::readsDescriptionWithDefaults_data()
{
    QTest::addColumn<QByteArray>("attributes");
    // type, position, rectangle, protection, row index, temp, name, context
    QTest::addColumn<QVariantList>("expected");
    const QVariantList defaults = {2, 1, QRect(0, 0, 32, 32), 0, 0, false, "bar", ""};
    QTest::newRow("all given") << QByteArray("bartype='1' position='3' left='5' top='6' width='70' height='20' protection='32' "
                                             "rowindex='2' temp='true' name='Standard' context='edit'")
                               << QVariantList{1, 3, QRect(5, 6, 70, 20), 32, 2, true, "Standard", "edit"};
    // Values that do not convert read as the defaults.
    QTest::newRow("unreadable") << QByteArray("bartype='tool' position='top' width='wide' rowindex=''") << defaults;
}

void tst_KCommandBarProp::readsDescriptionWithDefaults()
{
    QFETCH(QByteArray, attributes);
    QFETCH(QVariantList, expected);
    QVERIFY(load("<commands><KListCommand id='bar' " + attributes + "/></commands>"));
    KCommand* cmd = KApplication::instance()->commands()->command("bar");
    QVERIFY(cmd);
    KCommandBarProp p(cmd, nullptr);
    const QVariantList got = {p.getType(), p.getPosition(), QRect(p.getLeft(), p.getTop(), p.getWidth(), p.getHeight()),
                              p.getProtection(), p.getRowIndex(), p.getTemp(), p.getName(), p.getContext()};
    QCOMPARE(got, expected);
}

void tst_KCommandBarProp::writesSignalEvenWhenUnchanged()
{
    KListCommand cmd(nullptr, nullptr);
    KCommandBarProp props(&cmd, nullptr);
    QSignalSpy pos(&props, &KCommandBarProp::posChanged);
    QSignalSpy row(&props, &KCommandBarProp::rowIndexChanged);
    QSignalSpy rect(&props, &KCommandBarProp::rectChanged);
    QSignalSpy protection(&props, &KCommandBarProp::protectionChanged);
    props.setPosition(3);
    props.setPosition(3);
    props.setLeft(1);
    props.setHeight(4);
    props.setRowIndex(0);
    props.setProtection(16);
    QCOMPARE(QList<int>({int(pos.count()), int(rect.count()), int(row.count()), int(protection.count())}), QList<int>({2, 2, 1, 1}));
    QCOMPARE(pos.at(1).at(0).value<KCommand*>(), &cmd);

    // The name falls back to the id only when no name was written at all.
    KListCommand other(nullptr, nullptr);
    other.setProperty("id", QStringLiteral("x"));
    KCommandBarProp otherProps(&other, nullptr);
    QCOMPARE(otherProps.getName(), QString("x"));
    otherProps.setName(QString(""));
    QCOMPARE(otherProps.getName(), QString(""));
}

void tst_KCommandBarProp::positionAndProtectionReachTheBar()
{
    QVERIFY(load("<mainwindow><commands><KListCommand id='bar'/></commands><toolbar cmd='bar'/></mainwindow>"));
    KMainWindow window;
    window.polishXml();
    KCommand* cmd = window.commands()->command("bar");
    KToolBar* bar = window.findToolBar(cmd);
    QVERIFY(bar);
    QCOMPARE(window.dockArea()->toolBarArea(bar), Qt::TopToolBarArea);
    {
        // A temporary view connected to the window moves the bar while it lives.
        KCommandBarProp props(cmd, &window);
        QSignalSpy pos(&props, &KCommandBarProp::posChanged);
        props.setPosition(3);
        QCOMPARE(pos.count(), 1);
        QCOMPARE(window.dockArea()->toolBarArea(bar), Qt::BottomToolBarArea);
        props.setPosition(4);
        QVERIFY(bar->isFloating());
        // Back from floating into a dock area: a docked bar again, not a window.
        props.setPosition(0);
        QVERIFY(!bar->isFloating());
        QVERIFY(!bar->isWindow());
        QVERIFY(!bar->isHidden());
        QCOMPARE(window.dockArea()->toolBarArea(bar), Qt::LeftToolBarArea);
    }
    // A view without a window changes the property only.
    KCommandBarProp(cmd, nullptr).setPosition(2);
    QCOMPARE(window.dockArea()->toolBarArea(bar), Qt::LeftToolBarArea);

    // The bar's own props are connected to the window for its whole life. Protection 4 pins
    // the bar and leaves its areas as they were.
    KCommandBarProp* own = bar->props();
    const struct
    {
        int protection;
        bool movable;
        Qt::ToolBarAreas areas;
    } steps[] = {{32, true, Qt::TopToolBarArea | Qt::BottomToolBarArea},
                 {64, true, Qt::LeftToolBarArea | Qt::RightToolBarArea},
                 {16, true, Qt::NoToolBarArea},
                 {4, false, Qt::NoToolBarArea},
                 {7, true, Qt::AllToolBarAreas}};
    for (const auto& step : steps) {
        own->setProtection(step.protection);
        QVERIFY2(bar->isMovable() == step.movable, qPrintable(QString::number(step.protection)));
        QVERIFY2(bar->allowedAreas() == step.areas, qPrintable(QString::number(step.protection)));
    }
}

void tst_KCommandBarProp::nameLocalKeepsDescriptionCaption()
{
    QVERIFY(load("<commands><KListCommand id='given' text='Given' caption='Given'/><KListCommand id='plain' text='Plain'/></commands>"));
    KCommands* cmds = KApplication::instance()->commands();
    KCommandBarProp given(cmds->command("given"), nullptr);
    given.setNameLocal(QStringLiteral("Renamed"));
    QCOMPARE(given.getNameLocal(), QString("Given"));
    KCommandBarProp plain(cmds->command("plain"), nullptr);
    plain.setNameLocal(QStringLiteral("Renamed"));
    QCOMPARE(plain.getNameLocal(), QString("Renamed"));
    QCOMPARE(cmds->command("plain")->text(), QString("Renamed"));
}

NORVIK_TEST_MAIN(tst_KCommandBarProp)
#include "tst_kcommandbarprop.moc"
