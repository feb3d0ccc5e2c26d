// The gallery command and its widgets: the band in a ribbon with its up, down and extend
// buttons, the full gallery in a popup with menu rows below, the lazy filling at first show
// and the click that travels back to the host; models that change or go while shown.
#include <ktestsupport.h>

#include <QSignalSpy>

#include <kblockedmouseevent.h>
#include <kcommandfactory.h>
#include <kevent.h>
#include <kgallery.h>
#include <kgallerycommand.h>
#include <kgallerymodeltextitem.h>
#include <kmenuwidget.h>
#include <kpopupwidget.h>
#include <kscrollgalleryview.h>
#include <ktriggercommand.h>

#include "gallerytesthelpers.h"

namespace {

// A host's model that builds its cells only when a view first asks.
class LazyModel : public KGalleryAbstractModel
{
public:
    explicit LazyModel(int n, QObject* parent = nullptr)
        : KGalleryAbstractModel(parent)
        , m_n(n)
    {
    }

    QList<KGalleryModelAbstractItem*> fecthItems() override
    {
        ++fetches;
        if (count() == 0 && m_n > 0) {
            addHeader(QStringLiteral("Styles"));
            for (int i = 0; i < m_n; ++i)
                addElement(new BoxItem(QSize(50, 50), this, false, QStringLiteral("s%1").arg(i)));
        }
        return KGalleryAbstractModel::fecthItems();
    }

    int fetches = 0;

private:
    int m_n;
};

struct Fixture
{
    explicit Fixture(int cells)
        : model(cells)
        , command(&host, nullptr)
    {
        command.setDataSource(&model);
        command.setGallerySmallWidth(3 * 50 + 30);
        window.resize(400, 200);
    }

    KGalleryInline* makeInline()
    {
        auto* band = qobject_cast<KGalleryInline*>(command.requestWidget(&window, KCommand::InlinePurpose));
        if (band)
            band->move(10, 10);
        return band;
    }

    QObject host;
    LazyModel model;
    KGalleryCommand command;
    QWidget window;
};

} // namespace

class tst_KGalleryCommand : public QObject
{
    Q_OBJECT
private Q_SLOTS:
    void factory();
    void inlineFillsAtFirstShow();
    void stepButtons();
    void extendOpensFullGallery();
    void clickInPopupReachesHostAndCloses();
    void extendPressWhileOpenOnlyCloses();
    void emptyGalleryDoesNotExtend();
    void menuRowsFollowSubCommands();
    void followsCommandEnabled();
    void modelChangesWhilePopupOpen();
    void modelDeletedBeforeWidgets();
    void scrollButtonStates();
};

void tst_KGalleryCommand::factory()
{
    {
        KWarningCatcher warnings;
        QScopedPointer<KCommand> none(KCommandFactory::createCommand(QStringLiteral("KGalleryCommand"), nullptr, nullptr));
        QVERIFY(!none);
        QCOMPARE(warnings.count(), 1);
        QVERIFY(warnings.contains(QStringLiteral("need a host")));
    }
    QObject host;
    QScopedPointer<KCommand> cmd(KCommandFactory::createCommand(QStringLiteral("KGalleryCommand"), &host, nullptr));
    auto* gallery = qobject_cast<KGalleryCommand*>(cmd.data());
    QVERIFY(gallery);
    QVERIFY(gallery->isTriggerable());
    QVERIFY(gallery->isExtensible());
    QCOMPARE(gallery->galleryWidth(), -1);
    QCOMPARE(gallery->dataSource(), nullptr);
    // Without a data source the widgets are empty, not broken.
    QWidget parent;
    QWidget* band = gallery->requestWidget(&parent, KCommand::InlinePurpose);
    QVERIFY(qobject_cast<KGalleryInline*>(band));
    band->show();
    static_cast<KGalleryInline*>(band)->extendButtonClicked();
    QVERIFY(!static_cast<KGalleryInline*>(band)->popup());
}

void tst_KGalleryCommand::inlineFillsAtFirstShow()
{
    Fixture f(7);
    KGalleryInline* band = f.makeInline();
    QVERIFY(band);
    QCOMPARE(f.model.fetches, 0);
    QCOMPARE(f.model.count(), 0);
    f.window.show();
    QVERIFY(QTest::qWaitForWindowExposed(&f.window));
    QVERIFY(f.model.fetches >= 1);
    QCOMPARE(f.model.count(), 8);
    QVERIFY(band->view());
    QCOMPARE(band->view()->viewType(), KGalleryViewCompact);
    // The title is left out of the band: the first cell starts at the top left.
    QVERIFY(band->view()->item(0)->gemetry().isEmpty());
    QCOMPARE(band->view()->item(1)->gemetry().topLeft(), QPoint(0, 0));
    QCOMPARE(band->width(), 180);
    // The height is the button column's.
    QCOMPARE(band->height(), band->upButton()->height() + band->downButton()->height()
                                 + band->extendButton()->height() + 1 + 2);
}

void tst_KGalleryCommand::stepButtons()
{
    Fixture f(7); // three cells a row: three rows
    KGalleryInline* band = f.makeInline();
    f.window.show();
    QVERIFY(QTest::qWaitForWindowExposed(&f.window));
    KGalleryView* view = band->view();
    QTRY_VERIFY(view->maxViewPort() > 0);
    QCOMPARE(view->step(), 50);
    QVERIFY(!band->upButton()->isEnabled());
    QVERIFY(band->downButton()->isEnabled());
    QTest::mouseClick(band->downButton(), Qt::LeftButton);
    QCOMPARE(view->viewPort(), 50);
    QVERIFY(band->upButton()->isEnabled());
    QTest::mouseClick(band->downButton(), Qt::LeftButton);
    QTest::mouseClick(band->downButton(), Qt::LeftButton);
    QCOMPARE(view->viewPort(), view->maxViewPort());
    QVERIFY(!band->downButton()->isEnabled());
    band->upButtonClicked();
    QVERIFY(band->downButton()->isEnabled());
    // A current cell out of sight scrolls the band to it.
    view->setViewPort(0);
    f.model.setCurrentIndex(7);
    QCOMPARE(view->viewPort(), view->maxViewPort());
}

void tst_KGalleryCommand::extendOpensFullGallery()
{
    Fixture f(7);
    f.command.setGalleryWidth(260);
    KGalleryInline* band = f.makeInline();
    f.window.show();
    QVERIFY(QTest::qWaitForWindowExposed(&f.window));
    band->extendButtonClicked();
    KPopupWidget* popup = band->popup();
    QVERIFY(popup);
    QVERIFY(popup->isVisible());
    auto* gallery = qobject_cast<KGallery*>(popup->contentWidget());
    QVERIFY(gallery);
    auto* scroll = qobject_cast<KScrollGalleryView*>(gallery->view());
    QVERIFY(scroll);
    // The full gallery shows the title and takes the command's width.
    QCOMPARE(scroll->view()->viewType(), KGalleryViewNormal);
    QVERIFY(!scroll->view()->item(0)->gemetry().isEmpty());
    QVERIFY(popup->width() >= 260);
    // It opens over the band.
    QCOMPARE(popup->geometry().topLeft(), band->mapToGlobal(QPoint(0, 0)));
    QVERIFY(!gallery->menuWidget());
}

void tst_KGalleryCommand::clickInPopupReachesHostAndCloses()
{
    Fixture f(4);
    KGalleryInline* band = f.makeInline();
    f.window.show();
    QVERIFY(QTest::qWaitForWindowExposed(&f.window));
    band->extendButtonClicked();
    KPopupWidget* popup = band->popup();
    QVERIFY(QTest::qWaitForWindowExposed(popup));
    auto* gallery = qobject_cast<KGallery*>(popup->contentWidget());
    QVERIFY(gallery);
    KGalleryView* view = static_cast<KScrollGalleryView*>(gallery->view())->view();
    QSignalSpy clicked(&f.model, &KGalleryAbstractModel::indexClicked);
    // The title doesn't take a click: the popup stays.
    QTest::mouseClick(view, Qt::LeftButton, Qt::NoModifier, view->item(0)->gemetry().center());
    QCOMPARE(clicked.count(), 0);
    QVERIFY(popup->isVisible());
    QTest::mouseClick(view, Qt::LeftButton, Qt::NoModifier, view->item(3)->gemetry().center());
    QCOMPARE(clicked.count(), 1);
    QCOMPARE(clicked.at(0).at(0).toInt(), 3);
    QVERIFY(!popup->isVisible());
    // The band shows the choice as checked.
    QVERIFY(f.model.element(3)->isChecked());
    QCOMPARE(f.model.currentIndex(), 3);
}

void tst_KGalleryCommand::extendPressWhileOpenOnlyCloses()
{
    Fixture f(4);
    KGalleryInline* band = f.makeInline();
    f.window.show();
    QVERIFY(QTest::qWaitForWindowExposed(&f.window));
    band->extendButtonClicked();
    KPopupWidget* popup = band->popup();
    QVERIFY(popup);
    // The open popup hands the press on the extend button over as a blocked event: the
    // button claims it, so that the popup only closes.
    QMouseEvent press(QEvent::MouseButtonPress, QPointF(2, 2), QPointF(2, 2), Qt::LeftButton, Qt::LeftButton,
                      Qt::NoModifier);
    KBlockedMouseEvent blocked(&press, popup);
    QApplication::sendEvent(band->extendButton(), &blocked);
    QVERIFY(blocked.firstFlag());
    // From another popup the press is not claimed.
    KPopupWidget other;
    KBlockedMouseEvent foreign(&press, &other);
    QApplication::sendEvent(band->extendButton(), &foreign);
    QVERIFY(!foreign.firstFlag());
}

void tst_KGalleryCommand::emptyGalleryDoesNotExtend()
{
    Fixture f(0);
    KGalleryInline* band = f.makeInline();
    f.window.show();
    QVERIFY(QTest::qWaitForWindowExposed(&f.window));
    band->extendButtonClicked();
    QVERIFY(!band->popup());
    QVERIFY(!band->upButton()->isEnabled());
    QVERIFY(!band->downButton()->isEnabled());
}

void tst_KGalleryCommand::menuRowsFollowSubCommands()
{
    Fixture f(3);
    QWidget parent;
    auto* gallery = qobject_cast<KGallery*>(f.command.requestWidget(&parent, KCommand::ExtendedPurpose));
    QVERIFY(gallery);
    gallery->show();
    QVERIFY(!gallery->menuWidget());
    auto* clear = new KTriggerCommand(&f.host, &f.command);
    clear->setText(QStringLiteral("Clear formatting"));
    clear->setProperty("hotKey", QStringLiteral("C"));
    f.command.addSubCommand(clear);
    QVERIFY(gallery->menuWidget());
    QCOMPARE(gallery->menuWidget()->count(), 1);
    QSignalSpy triggered(clear, &KCommand::triggered);
    QVERIFY(!gallery->matchMenuItemHotkey(QStringLiteral("x")));
    QVERIFY(gallery->matchMenuItemHotkey(QStringLiteral("c")));
    QCOMPARE(triggered.count(), 1);
    f.command.removeSubCommand(0);
    QTRY_VERIFY(!gallery->menuWidget());
}

void tst_KGalleryCommand::followsCommandEnabled()
{
    Fixture f(3);
    KGalleryInline* band = f.makeInline();
    f.window.show();
    QVERIFY(QTest::qWaitForWindowExposed(&f.window));
    f.command.setEnabled(false);
    KEvent idle(KEvent::Idle);
    QApplication::sendEvent(band, &idle);
    QVERIFY(!band->isEnabled());
    f.command.setEnabled(true);
    QApplication::sendEvent(band, &idle);
    QVERIFY(band->isEnabled());
}

void tst_KGalleryCommand::modelChangesWhilePopupOpen()
{
    Fixture f(4);
    KGalleryInline* band = f.makeInline();
    f.window.show();
    QVERIFY(QTest::qWaitForWindowExposed(&f.window));
    band->extendButtonClicked();
    auto* gallery = qobject_cast<KGallery*>(band->popup()->contentWidget());
    KGalleryView* view = static_cast<KScrollGalleryView*>(gallery->view())->view();
    f.model.setCurrentIndex(2);
    f.model.hoverIndex(2);
    // Elements go and come while the popup shows them.
    f.model.removeElement(2);
    QCOMPARE(f.model.currentIndex(), -1);
    QCOMPARE(view->count(), 4);
    QCOMPARE(band->view()->count(), 4);
    for (int i = 0; i < 30; ++i)
        f.model.addElement(new BoxItem(QSize(50, 50), &f.model));
    QCOMPARE(view->count(), 34);
    QTest::keyClick(view, Qt::Key_End);
    QCOMPARE(f.model.getHoveredIndex(), 33);
    f.model.clear();
    QCOMPARE(view->count(), 0);
    QCOMPARE(band->view()->count(), 0);
    QTest::keyClick(view, Qt::Key_Return);
    view->grab();
    band->grab();
}

void tst_KGalleryCommand::modelDeletedBeforeWidgets()
{
    QObject host;
    auto* model = new LazyModel(5);
    KGalleryCommand command(&host, nullptr);
    command.setDataSource(model);
    QWidget window;
    auto* band = qobject_cast<KGalleryInline*>(command.requestWidget(&window, KCommand::InlinePurpose));
    window.show();
    QVERIFY(QTest::qWaitForWindowExposed(&window));
    delete model;
    QCOMPARE(command.dataSource(), nullptr);
    QCOMPARE(band->view()->count(), 0);
    band->extendButtonClicked();
    QVERIFY(!band->popup());
    QTest::mouseClick(band->view(), Qt::LeftButton, Qt::NoModifier, QPoint(5, 5));
    band->downButtonClicked();
    band->grab();
}

void tst_KGalleryCommand::scrollButtonStates()
{
    KGalleryScrollButton up(KGalleryScrollButton::Up);
    KGalleryScrollButton extend(KGalleryScrollButton::Extend);
    QCOMPARE(up.getButtonStateProp(), QString());
    up.setDown(true);
    QCOMPARE(up.getButtonStateProp(), QStringLiteral("-down"));
    up.setEnabled(false);
    QCOMPARE(up.getButtonStateProp(), QStringLiteral("-disable"));
    QCOMPARE(KGalleryScrollButton(7).buttonType(), int(KGalleryScrollButton::Extend));
    // Up and extend draw different marks of the same size.
    up.setEnabled(true);
    up.setDown(false);
    up.resize(up.sizeHint());
    extend.resize(up.sizeHint());
    const QImage a = up.grab().toImage();
    const QImage b = extend.grab().toImage();
    QCOMPARE(a.size(), b.size());
    QVERIFY(a != b);
    QVERIFY(KTestSupport::anyPixel(a, [&a](const QColor& c) { return c != a.pixelColor(0, 0); }));
}

NORVIK_TEST_MAIN(tst_KGalleryCommand)
#include "tst_kgallerycommand.moc"
