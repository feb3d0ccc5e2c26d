#include <ktestsupport.h>

#include <QDir>
#include <QScrollBar>
#include <QTemporaryDir>

#include <krbrecentfilepage.h>
#include <krecentfilepagecommand.h>

namespace {

// A host's recent documents: a list with pinned paths, and a log of what the page asked.
class Recent : public KRecentFilePageCommand
{
public:
    Recent(const QStringList& files, QObject* owner)
        : KRecentFilePageCommand(owner, owner)
        , files(files)
    {
    }
    QStringList fileList() override
    {
        ++listAsked;
        return files;
    }
    void openFile(int index) override { opened.append(index); }
    void removeFile(int index) override { files.removeAt(index); }
    void clearFiles() override { files.clear(); }
    bool openFolder(const QString&) override { return true; }
    void fixFile(const QString& path) override { pinned.append(path); }
    void unfixFile(const QString& path) override { pinned.removeAll(path); }
    QStringList fixedFileList() override { return pinned; }
    QStringList unfixedFileList() override
    {
        QStringList rest;
        for (const QString& f : files)
            if (!pinned.contains(f))
                rest.append(f);
        return rest;
    }

    QStringList files;
    QStringList pinned;
    QList<int> opened;
    int listAsked = 0;
};

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
    auto* recent = new Recent({a, b, c, d}, &owner);
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
    auto* recent = new Recent({a, b, c}, &owner);
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
    auto* recent = new Recent({kept, gone}, &owner);
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
    auto* recent = new Recent(many, &owner);
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

NORVIK_TEST_MAIN(tst_KRbRecentFilePage)
#include "tst_krbrecentfilepage.moc"
