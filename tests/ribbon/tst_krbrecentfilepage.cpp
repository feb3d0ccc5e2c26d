#include <ktestsupport.h>

#include <QDir>
#include <QLabel>
#include <klistcommand.h>
#include <ktriggercommand.h>
#include <QScrollBar>
#include <QTemporaryDir>

#include <krbrecentfilepage.h>
#include <krecentfilepagecommand.h>

#include "recenthost.h"

namespace {

QStringList rowNames(const KRbRecentFilePage& page)
{
    QStringList names;
    for (int i = 0; i < page.listWidget()->count(); ++i)
        names.append(page.listWidget()->item(i)->text());
    return names;
}

} // namespace

class tst_KRbRecentFilePage : public QObject
{
    Q_OBJECT
private Q_SLOTS:
    void pinnedFirstInPinOrderAskedAfreshOnShow();
    void rowsActOnTheHostsIndexes();
    void missingDocumentIsMarked();
    void fiveHundredEntriesScroll();
    void contextMenuFollowsTheRowAndActs();

private:
    QTemporaryDir m_dir;
    QString file(const char* name)
    {
        return QDir::toNativeSeparators(KTestSupport::writeFile(m_dir.filePath(QLatin1String(name)), "x"));
    }
};

void tst_KRbRecentFilePage::pinnedFirstInPinOrderAskedAfreshOnShow()
{
    QObject owner;
    const QString a = file("a.txt"), b = file("b.txt"), c = file("c.txt"), d = file("d.txt");
    auto* recent = new RecentHost({a, b, c, d}, &owner);
    recent->pinned = {c, a}; // pinned c first, then a
    KRbRecentFilePage page(recent, nullptr);
    page.resize(300, 300);
    page.show();
    QVERIFY(QTest::qWaitForWindowExposed(&page));
    QCOMPARE(rowNames(page), QStringList({"c.txt", "a.txt", "b.txt", "d.txt"}));
    const int asked = recent->listAsked;
    QVERIFY(asked >= 1);

    // The host's list changed behind the page's back: the next showing asks again.
    recent->files.append(file("e.txt"));
    page.hide();
    page.show();
    QVERIFY(recent->listAsked > asked);
    QCOMPARE(rowNames(page).last(), QStringLiteral("e.txt"));

    // Pinning through the page: the row moves behind the pinned ones, in pin order.
    page.setFixedFileItem(page.listWidget()->item(3)); // d.txt
    QCOMPARE(recent->pinned, QStringList({c, a, d}));
    QCOMPARE(rowNames(page), QStringList({"c.txt", "a.txt", "d.txt", "b.txt", "e.txt"}));
    page.setFixedFileItem(page.listWidget()->item(0)); // c.txt lets go
    QCOMPARE(rowNames(page), QStringList({"a.txt", "d.txt", "b.txt", "c.txt", "e.txt"}));
}

void tst_KRbRecentFilePage::rowsActOnTheHostsIndexes()
{
    QObject owner;
    const QString a = file("a.txt"), b = file("b.txt"), c = file("c.txt");
    auto* recent = new RecentHost({a, b, c}, &owner);
    recent->pinned = {c};
    KRbRecentFilePage page(recent, nullptr);
    page.show();
    QVERIFY(QTest::qWaitForWindowExposed(&page));
    // Row 0 is c.txt, the host's third document.
    page.on_fileList_itemActivated(page.listWidget()->item(0));
    QCOMPARE(recent->opened, QList<int>({2}));
    // Removing row 1 (a.txt) removes the host's first document, and the page reloads.
    page.on_fileList_itemRemoved(page.listWidget()->item(1));
    QCOMPARE(recent->files, QStringList({b, c}));
    QCOMPARE(rowNames(page), QStringList({"c.txt", "b.txt"}));
}

void tst_KRbRecentFilePage::missingDocumentIsMarked()
{
    QObject owner;
    const QString kept = file("kept.txt");
    const QString gone = QDir::toNativeSeparators(m_dir.filePath("gone.txt"));
    auto* recent = new RecentHost({kept, gone}, &owner);
    KRbRecentFilePage page(recent, nullptr);
    page.show();
    QVERIFY(QTest::qWaitForWindowExposed(&page));
    QCOMPARE(page.listWidget()->count(), 2);
    QVERIFY(page.listWidget()->item(1)->toolTip().contains(QStringLiteral("no longer exists")));
    QVERIFY(!page.listWidget()->item(0)->toolTip().contains(QStringLiteral("no longer exists")));
    // Opening it is the host's business: the page asks, and shows no error of its own.
    page.on_fileList_itemActivated(page.listWidget()->item(1));
    QCOMPARE(recent->opened, QList<int>({1}));
}

void tst_KRbRecentFilePage::fiveHundredEntriesScroll()
{
    QObject owner;
    QStringList many;
    for (int i = 0; i < 500; ++i)
        many.append(QDir::toNativeSeparators(m_dir.filePath(QStringLiteral("doc%1.txt").arg(i))));
    auto* recent = new RecentHost(many, &owner);
    KRbRecentFilePage page(recent, nullptr);
    page.resize(300, 300);
    page.show();
    QVERIFY(QTest::qWaitForWindowExposed(&page));
    QCOMPARE(page.listWidget()->count(), 500);
    QScrollBar* bar = page.listWidget()->verticalScrollBar();
    QTRY_VERIFY(bar->isVisible());
    bar->setValue(bar->maximum());
    // At the end of the scroll the last document is in sight, the first is not.
    const QRect sight = page.listWidget()->viewport()->rect();
    QVERIFY(sight.intersects(page.listWidget()->visualItemRect(page.listWidget()->item(499))));
    QVERIFY(!sight.intersects(page.listWidget()->visualItemRect(page.listWidget()->item(0))));
}

void tst_KRbRecentFilePage::contextMenuFollowsTheRowAndActs()
{
    QObject owner;
    const QString a = file("a.txt"), b = file("b.txt"), c = file("c.txt");
    auto* recent = new RecentHost({a, b, c}, &owner);
    recent->pinned = {b};
    KRbRecentFilePage page(recent, nullptr);
    page.resize(300, 300);
    page.show();
    QVERIFY(QTest::qWaitForWindowExposed(&page));
    KFilePageListWidget* list = page.listWidget();
    auto popups = [&page] { return page.findChildren<KRbFilePagePopupWidget*>().size(); };
    auto rightClick = [list](int row) {
        list->setCurrentItem(list->item(row));
        QTest::mousePress(list->viewport(), Qt::RightButton, {}, list->visualItemRect(list->item(row)).center());
    };

    // On the pinned row (b.txt, first): the entries speak of pinned files, and with both groups
    // filled the group entry shows. The right button does not open the document.
    rightClick(0);
    QVERIFY(page.hasPopupMenu());
    QCOMPARE(popups(), 1);
    QCOMPARE(page.fixCommand()->text(), QStringLiteral("Unfixed From The Listing"));
    QCOMPARE(page.clearGroupCommand()->text(), QStringLiteral("Clear All Fixed Files"));
    QVERIFY(page.clearGroupCommand()->isVisible());
    QVERIFY(recent->opened.isEmpty());
    // A second menu does not open over the first.
    rightClick(1);
    QCOMPARE(popups(), 1);
    page.findChild<KRbFilePagePopupWidget*>()->hide();
    QVERIFY(!page.hasPopupMenu());
    QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);

    // On an unpinned row the texts turn round; clearing its group keeps the pinned one.
    rightClick(1);
    QCOMPARE(page.fixCommand()->text(), QStringLiteral("Fixed To The Listing"));
    QCOMPARE(page.clearGroupCommand()->text(), QStringLiteral("Clear All Unfixed Files"));
    page.clearGroupCommand()->trigger();
    QCOMPARE(recent->files, QStringList({b}));
    QCOMPARE(rowNames(page), QStringList({"b.txt"}));
    page.findChild<KRbFilePagePopupWidget*>()->hide();
    QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);

    // Everything pinned: no group entry.
    rightClick(0);
    QVERIFY(!page.clearGroupCommand()->isVisible());

    // Open Folder: a folder that is there leaves the row; one that is gone drops it.
    KCommand* openFolder = page.menuCommand()->subCommand(5);
    openFolder->trigger();
    QCOMPARE(recent->foldersAsked, QStringList({b}));
    QCOMPARE(list->count(), 1);
    recent->folderExists = false;
    openFolder->trigger();
    QCOMPARE(list->count(), 0);
    QVERIFY(recent->pinned.isEmpty()); // a dropped row is unpinned too
    page.findChild<KRbFilePagePopupWidget*>()->hide();

    // Clear All asks the host once and leaves the title alone.
    recent->files = {a, c};
    page.reloadFileList();
    list->setCurrentItem(list->item(0));
    page.menuCommand()->subCommand(3)->trigger();
    QCOMPARE(recent->cleared, 1);
    QCOMPARE(list->count(), 0);
    QVERIFY(page.titleLabel()->isVisible());
}

NORVIK_TEST_MAIN(tst_KRbRecentFilePage)
#include "tst_krbrecentfilepage.moc"
