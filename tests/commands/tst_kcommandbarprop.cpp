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
    // Writes a main description with body and reads it into the application.
    bool load(const QByteArray& body);
    QTemporaryDir m_dir;
};

bool tst_KCommandBarProp::load(const QByteArray& body)
{
    const QString path = KTestSupport::writeMainXml(m_dir.path(), QStringLiteral("main.xml"), body);
    return KApplication::instance()->setupXml(path);
}

void tst_KCommandBarProp::cleanup()
{
    KApplication::instance()->resetXml();
}

void tst_KCommandBarProp::readsDescriptionWithDefaults_data()
{
    QTest::addColumn<QByteArray>("attributes");
    QTest::addColumn<int>("type");
    QTest::addColumn<int>("position");
    QTest::addColumn<QRect>("rect");
    QTest::addColumn<int>("protection");
    QTest::addColumn<int>("rowIndex");
    QTest::addColumn<bool>("temp");
    QTest::addColumn<QString>("name");
    QTest::addColumn<QString>("context");

    QTest::newRow("nothing given") << QByteArray() << 2 << 1 << QRect(0, 0, 32, 32) << 0 << 0 << false
                                   << "bar" << "";
    QTest::newRow("width only") << QByteArray("width='100'") << 2 << 1 << QRect(0, 0, 100, 32) << 0 << 0
                                << false << "bar" << "";
    QTest::newRow("all given")
        << QByteArray("bartype='1' position='3' left='5' top='6' width='70' height='20' protection='32' "
                      "rowindex='2' temp='true' name='Standard' context='edit'")
        << 1 << 3 << QRect(5, 6, 70, 20) << 32 << 2 << true << "Standard" << "edit";
    // Values that do not convert read as the defaults.
    QTest::newRow("unreadable") << QByteArray("bartype='tool' position='top' width='wide' rowindex=''")
                                << 2 << 1 << QRect(0, 0, 32, 32) << 0 << 0 << false << "bar" << "";
}

void tst_KCommandBarProp::readsDescriptionWithDefaults()
{
    QFETCH(QByteArray, attributes);
    QVERIFY(load("<commands><KListCommand id='bar' " + attributes + "/></commands>"));
    KCommand* cmd = KApplication::instance()->commands()->command("bar");
    QVERIFY(cmd);

    QFETCH(int, type);
    QFETCH(int, position);
    QFETCH(QRect, rect);
    QFETCH(int, protection);
    QFETCH(int, rowIndex);
    QFETCH(bool, temp);
    QFETCH(QString, name);
    QFETCH(QString, context);

    KCommandBarProp props(cmd, nullptr);
    QCOMPARE(props.getType(), type);
    QCOMPARE(props.getPosition(), position);
    QCOMPARE(QRect(props.getLeft(), props.getTop(), props.getWidth(), props.getHeight()), rect);
    QCOMPARE(props.getProtection(), protection);
    QCOMPARE(props.getRowIndex(), rowIndex);
    QCOMPARE(props.getTemp(), temp);
    QCOMPARE(props.getName(), name);
    QCOMPARE(props.getContext(), context);
    QCOMPARE(props.getCmdID(), QString("bar"));
    QVERIFY(!props.getCustom());
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
    QCOMPARE(pos.count(), 2);
    QCOMPARE(pos.at(1).at(0).value<KCommand*>(), &cmd);
    QCOMPARE(props.getPosition(), 3);

    props.setLeft(1);
    props.setTop(2);
    props.setWidth(3);
    props.setHeight(4);
    QCOMPARE(rect.count(), 4);
    props.setRowIndex(0);
    QCOMPARE(row.count(), 1);
    props.setProtection(16);
    QCOMPARE(protection.count(), 1);
    QCOMPARE(protection.at(0).at(0).value<KCommand*>(), &cmd);

    // The properties without a signal stay quiet.
    props.setType(1);
    props.setName(QStringLiteral("n"));
    props.setTemp(true);
    props.setContext(QStringLiteral("c"));
    QCOMPARE(pos.count() + row.count() + rect.count() + protection.count(), 8);

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
    QVERIFY(load("<mainwindow><commands><KListCommand id='bar'/></commands>"
                 "<toolbar cmd='bar'/></mainwindow>"));
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
        QCOMPARE(pos.at(0).at(0).value<KCommand*>(), cmd);
        QCOMPARE(window.dockArea()->toolBarArea(bar), Qt::BottomToolBarArea);
        QVERIFY(!bar->isFloating());

        props.setPosition(4);
        QVERIFY(bar->isFloating());
        // Back from floating into a dock area: a docked bar again, not a window.
        props.setPosition(0);
        QVERIFY(!bar->isFloating());
        QVERIFY(!bar->isWindow());
        QCOMPARE(window.dockArea()->toolBarArea(bar), Qt::LeftToolBarArea);
        QVERIFY(!bar->isHidden());
    }
    // A view without a window changes the property only.
    KCommandBarProp(cmd, nullptr).setPosition(2);
    QCOMPARE(window.dockArea()->toolBarArea(bar), Qt::LeftToolBarArea);

    // The bar's own props are connected to the window for its whole life.
    KCommandBarProp* own = bar->props();
    QVERIFY(own);
    own->setProtection(32);
    QVERIFY(bar->isMovable());
    QCOMPARE(bar->allowedAreas(), Qt::TopToolBarArea | Qt::BottomToolBarArea);
    own->setProtection(64);
    QCOMPARE(bar->allowedAreas(), Qt::LeftToolBarArea | Qt::RightToolBarArea);
    own->setProtection(16);
    QCOMPARE(bar->allowedAreas(), Qt::ToolBarAreas(Qt::NoToolBarArea));
    own->setProtection(4);
    QVERIFY(!bar->isMovable());
    QCOMPARE(bar->allowedAreas(), Qt::ToolBarAreas(Qt::NoToolBarArea)); // unchanged
    own->setProtection(7);
    QVERIFY(bar->isMovable());
    QCOMPARE(bar->allowedAreas(), Qt::AllToolBarAreas);
}

void tst_KCommandBarProp::nameLocalKeepsDescriptionCaption()
{
    QVERIFY(load("<commands><KListCommand id='given' text='Given' caption='Given'/>"
                 "<KListCommand id='plain' text='Plain'/></commands>"));
    KCommands* cmds = KApplication::instance()->commands();

    KCommandBarProp given(cmds->command("given"), nullptr);
    given.setNameLocal(QStringLiteral("Renamed"));
    QCOMPARE(given.getNameLocal(), QString("Given"));

    KCommandBarProp plain(cmds->command("plain"), nullptr);
    plain.setNameLocal(QStringLiteral("Renamed"));
    QCOMPARE(plain.getNameLocal(), QString("Renamed"));
    QCOMPARE(cmds->command("plain")->text(), QString("Renamed"));

    // Visibility and enablement go to the command itself.
    plain.setVisible(false);
    QVERIFY(!cmds->command("plain")->isVisible());
    QVERIFY(!plain.getVisible());
    plain.setEnable(false);
    QVERIFY(!cmds->command("plain")->isEnabled());
    QVERIFY(!plain.getEnbale());
}

NORVIK_TEST_MAIN(tst_KCommandBarProp)
#include "tst_kcommandbarprop.moc"
