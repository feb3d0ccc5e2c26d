#include <ktestsupport.h>

#include <QApplication>
#include <QDragEnterEvent>
#include <QMenu>
#include <QMimeData>
#include <QSignalSpy>

#include <klistcommand.h>
#include <krbquicktoolbar.h>
#include <kseparatorcommand.h>

#include "ribbontesthelpers.h"

using namespace RibbonTest;

namespace {

// Widths "100 20 |" (| is the separator), each entry 22 high.
KListCommand* bar(const QString& widths, QObject* owner)
{
    auto* list = new KListCommand(owner, owner);
    for (const QString& item : widths.split(' ', Qt::SkipEmptyParts)) {
        if (item == "|")
            list->addSeparator();
        else
            list->addSubCommand(new SizedCommand(QSize(item.toInt(), 22), QSize(item.toInt(), 22), QSize(), owner));
    }
    return list;
}

// The element indexes of the widgets, as "0 1 | 2": bar entries, a bar, panel entries.
QString placement(const KRbQuickToolbar& tb)
{
    QStringList bar, panel;
    for (QWidget* w : tb.barWidgets()) {
        for (int i = 0; i < tb.elementCount(); ++i)
            if (tb.elementWidget(i) == w)
                bar << QString::number(i);
    }
    for (QWidget* w : tb.panelWidgets()) {
        for (int i = 0; i < tb.elementCount(); ++i)
            if (tb.elementWidget(i) == w)
                panel << QString::number(i);
    }
    return (bar + QStringList{"|"} + panel).join(' ');
}

using Change = QPair<KCommand*, bool>;

QList<Change> changes(const QSignalSpy& spy)
{
    QList<Change> list;
    for (const QList<QVariant>& args : spy)
        list << Change(args.at(0).value<KCommand*>(), args.at(1).toBool());
    return list;
}

} // namespace

class tst_KRbQuickToolbar : public QObject
{
    Q_OBJECT
private Q_SLOTS:
    void initTestCase() { QApplication::setStyle(new FixedStyle); }

    void overflow_data();
    void overflow();
    void sizeHintCapsAtTheMaximum();
    void batchRenderingWaits();
    void changeSignals();
    void restoringASavedBar();
    void contextMenuRemovesAnEntry();
    void contextMenuNeedsCustomizableAndNoSeparator();
    void dragFormat_data();
    void dragFormat();
    void listChangesFollow();

private:
};

void tst_KRbQuickToolbar::overflow_data()
{
    QTest::addColumn<QString>("widths");
    QTest::addColumn<int>("maxWidth");
    QTest::addColumn<QList<int>>("hidden");
    QTest::addColumn<QString>("expected");
    QTest::addColumn<bool>("arrow");

    // 15 for the arrow, taken off again for the last entry: exactly the maximum fits.
    QTest::newRow("exact fit") << "100 100 100 100" << 400 << QList<int>{} << "0 1 2 3 |" << false;
    QTest::newRow("one pixel over") << "100 100 100 101" << 400 << QList<int>{} << "0 1 2 | 3" << true;
    // Once one has failed, every later one goes to the panel, however narrow.
    QTest::newRow("narrow after wide") << "300 200 20" << 400 << QList<int>{} << "0 | 1 2" << true;
    QTest::newRow("first too wide") << "500 10" << 400 << QList<int>{} << "| 0 1" << true;
    // A hidden entry takes no room.
    QTest::newRow("hidden skipped") << "200 300 185" << 400 << QList<int>{1} << "0 2 |" << false;
    QTest::newRow("empty") << "" << 400 << QList<int>{} << "|" << false;
    QTest::newRow("narrow maximum") << "30 30" << 40 << QList<int>{} << "| 0 1" << true;
}

void tst_KRbQuickToolbar::overflow()
{
    QFETCH(QString, widths);
    QFETCH(int, maxWidth);
    QFETCH(QList<int>, hidden);
    QFETCH(QString, expected);
    QFETCH(bool, arrow);

    QObject owner;
    QWidget host;
    KRbQuickToolbar tb(bar(widths, &owner), &host);
    tb.setMaxWidth(maxWidth);
    tb.ensureConnectCommand();
    for (int i : hidden)
        QVERIFY(tb.hideCommand(i));
    tb.renderWidgets();
    QCOMPARE(placement(tb), expected);
    QCOMPARE(tb.arrowButton()->isHidden(), !arrow);
    QCOMPARE(tb.barWidgets().contains(tb.arrowButton()), false);
}

void tst_KRbQuickToolbar::sizeHintCapsAtTheMaximum()
{
    QObject owner;
    QWidget host;
    KRbQuickToolbar tb(bar("100 100 100", &owner), &host);
    QCOMPARE(tb.sizeHint(), QSize(300, 22));
    tb.setMaxWidth(250);
    // 100 + 100 fit with the arrow's 14 under the cap; the third brings the arrow instead.
    QCOMPARE(tb.sizeHint(), QSize(215, 22));
    QVERIFY(tb.sizeHint().width() <= tb.maxWidth());
}

void tst_KRbQuickToolbar::batchRenderingWaits()
{
    QObject owner;
    QWidget host;
    KListCommand* list = bar("100", &owner);
    KRbQuickToolbar tb(list, &host);
    tb.ensureConnectCommand();
    tb.setRenderEnabled(false);
    auto* extra = new SizedCommand(QSize(50, 22), QSize(50, 22), QSize(), &owner);
    tb.insertCommand(extra, -1);
    QCOMPARE(tb.elementCount(), 2);
    QCOMPARE(placement(tb), QString("0 |"));
    tb.setRenderEnabled(true);
    QCOMPARE(placement(tb), QString("0 1 |"));
}

void tst_KRbQuickToolbar::changeSignals()
{
    QObject owner;
    QWidget host;
    KListCommand* list = bar("10 20 30", &owner);
    KRbQuickToolbar tb(list, &host);
    QSignalSpy spy(&tb, &KRbQuickToolbar::cmdOnTbChanged);
    KCommand* a = list->subCommand(0);
    KCommand* b = list->subCommand(1);
    KCommand* c = list->subCommand(2);

    QVERIFY(tb.hideCommand(b));
    QCOMPARE(changes(spy), QList<Change>{Change(b, false)});
    QCOMPARE(tb.hasCmd(b), false);
    QCOMPARE(tb.hasCmd(a), true);
    spy.clear();

    tb.showCommand(b, 0);
    QCOMPARE(changes(spy), QList<Change>{Change(b, true)});
    QCOMPARE(tb.elementCommand(0), b);
    QCOMPARE(tb.elementCommand(1), a);
    spy.clear();

    tb.hideAllCommand();
    QCOMPARE(changes(spy), (QList<Change>{Change(b, false), Change(a, false), Change(c, false)}));
    spy.clear();

    // Removal is no change of what the user sees listed: no signal, and false when absent.
    auto* stranger = new SizedCommand(QSize(5, 22), QSize(5, 22), QSize(), &owner);
    QCOMPARE(tb.removeCommand(stranger), false);
    QCOMPARE(tb.removeCommand(c), true);
    QCOMPARE(tb.elementCount(), 2);
    QCOMPARE(spy.count(), 0);
    QCOMPARE(tb.hideCommand(7), false);
    QCOMPARE(tb.hasCmd(nullptr), false);

    tb.insertCommand(stranger, 1);
    QCOMPARE(changes(spy), QList<Change>{Change(stranger, true)});
    QCOMPARE(tb.elementCommand(1), stranger);
    spy.clear();

    tb.reset();
    QCOMPARE(tb.elementCount(), 3);
    QCOMPARE(changes(spy), (QList<Change>{Change(a, true), Change(b, true), Change(c, true)}));
}

void tst_KRbQuickToolbar::restoringASavedBar()
{
    QObject owner;
    QWidget host;
    KListCommand* list = bar("10 20 |", &owner);
    KRbQuickToolbar tb(list, &host);
    KCommand* a = list->subCommand(0);
    KCommand* b = list->subCommand(1);
    auto* added = new SizedCommand(QSize(40, 22), QSize(40, 22), QSize(), &owner);

    // The saved order: b, added, a; added is not in the command's list.
    tb.setElementOrdor({b, added, a});
    QCOMPARE(tb.elementCommand(0), b);
    QCOMPARE(tb.elementCommand(1), added);
    QCOMPARE(tb.isElementShown(1), false);

    QSignalSpy spy(&tb, &KRbQuickToolbar::cmdOnTbChanged);
    tb.resetCommands({b, added});
    QCOMPARE(tb.hasCmd(b), true);
    QCOMPARE(tb.hasCmd(added), true);
    QCOMPARE(tb.hasCmd(a), false);
    QCOMPARE(tb.elementCommand(0), b);
    QCOMPARE(tb.elementCommand(1), added);
    // Only what changed is told.
    QCOMPARE(changes(spy), (QList<Change>{Change(added, true), Change(a, false), Change(KSeparatorCommand::instance(), false)}));
    QCOMPARE(tb.toElementPos(1), 1);
    QCOMPARE(tb.toElementPos(2), -1);

    const int sep = 3;
    QCOMPARE(tb.elementCommand(sep), KSeparatorCommand::instance());
    QCOMPARE(tb.showSeparator(0), false);
    QCOMPARE(tb.showSeparator(sep), true);
    QCOMPARE(tb.hasCmd(KSeparatorCommand::instance()), false);
    QCOMPARE(tb.toElementPos(2), sep);
}

void tst_KRbQuickToolbar::contextMenuRemovesAnEntry()
{
    QObject owner;
    QWidget host;
    KListCommand* list = bar("30 40", &owner);
    KRbQuickToolbar tb(list, &host);
    tb.setCustomizable(true);
    host.show();
    tb.show();
    QVERIFY(QTest::qWaitForWindowExposed(&host));
    QSignalSpy spy(&tb, &KRbQuickToolbar::cmdOnTbChanged);

    QWidget* second = tb.elementWidget(1);
    QTest::mouseClick(second, Qt::RightButton, {}, QPoint(5, 5));
    QCOMPARE(tb.clickedWidget(), second);
    QVERIFY(tb.contextMenu()->isVisible());
    QCOMPARE(tb.contextMenu()->actions().size(), 1);
    QCOMPARE(tb.contextMenu()->actions().at(0)->text(), QString("&Remove from Quick Access Toolbar"));
    tb.contextMenu()->actions().at(0)->trigger();
    tb.contextMenu()->hide();
    QCOMPARE(changes(spy), QList<Change>{Change(list->subCommand(1), false)});
    QCOMPARE(tb.hasCmd(list->subCommand(1)), false);
    QCOMPARE(placement(tb), QString("0 |"));
}

void tst_KRbQuickToolbar::contextMenuNeedsCustomizableAndNoSeparator()
{
    QObject owner;
    QWidget host;
    KRbQuickToolbar tb(bar("30 | 40", &owner), &host);
    host.show();
    tb.show();
    QVERIFY(QTest::qWaitForWindowExposed(&host));

    QTest::mouseClick(tb.elementWidget(0), Qt::RightButton, {}, QPoint(5, 5));
    QCOMPARE(tb.contextMenu()->isVisible(), false);

    tb.setCustomizable(true);
    QTest::mouseClick(tb.elementWidget(1), Qt::RightButton, {}, QPoint(1, 5));
    QCOMPARE(tb.contextMenu()->isVisible(), false);
    QCOMPARE(tb.clickedWidget(), nullptr);
}

void tst_KRbQuickToolbar::dragFormat_data()
{
    QTest::addColumn<QString>("format");
    QTest::addColumn<bool>("accepted");
    QTest::newRow("toolbar action") << "application/drag-toolbar-action" << true;
    QTest::newRow("text from another program") << "text/plain" << false;
    QTest::newRow("document tab") << "NorvikOfficeUI/KDocTab" << false;
}

void tst_KRbQuickToolbar::dragFormat()
{
    QFETCH(QString, format);
    QFETCH(bool, accepted);
    QObject owner;
    QWidget host;
    KRbQuickToolbar tb(bar("30", &owner), &host);
    QMimeData data;
    data.setData(format, "x");
    QDragEnterEvent enter(QPoint(2, 2), Qt::CopyAction, &data, Qt::LeftButton, Qt::NoModifier);
    enter.setAccepted(false);
    QCoreApplication::sendEvent(&tb, &enter);
    QCOMPARE(enter.isAccepted(), accepted);
}

void tst_KRbQuickToolbar::listChangesFollow()
{
    QObject owner;
    QWidget host;
    KListCommand* list = bar("30", &owner);
    KRbQuickToolbar tb(list, &host);
    tb.ensureConnectCommand();
    auto* added = new SizedCommand(QSize(40, 22), QSize(40, 22), QSize(), &owner);
    list->insertSubCommand(0, added);
    QCOMPARE(tb.elementCount(), 2);
    QCOMPARE(tb.elementCommand(0), added);
    list->removeSubCommand(0);
    QCOMPARE(tb.elementCount(), 1);
    QCOMPARE(tb.hasCmd(added), false);
    // A command that goes takes its element along.
    delete list->subCommand(0);
    QCOMPARE(tb.elementCount(), 0);
}

NORVIK_TEST_MAIN(tst_KRbQuickToolbar)
#include "tst_krbquicktoolbar.moc"
