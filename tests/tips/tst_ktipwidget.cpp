// The rich tool tip on the screen: which tip a widget shows, how the window arranges its
// parts, where it stands, how long it lives and how its help link opens.
#include <ktestsupport.h>

#include <QDesktopServices>
#include <QFrame>
#include <QLabel>
#include <QPointer>
#include <QScreen>
#include <QTemporaryDir>
#include <QToolTip>

#include <kapplication.h>
#include <kcombobox.h>
#include <kcomboboxcommand.h>
#include <ktip.h>
#include <ktipwidget.h>
#include <ktips.h>
#include <ktoolbutton.h>
#include <ktooltip.h>
#include <ktriggercommand.h>

// Receives the links that the tips open.
class UrlSink : public QObject
{
    Q_OBJECT
public:
    QList<QUrl> opened;
public Q_SLOTS:
    void open(const QUrl& url) { opened << url; }
};

class tst_KTipWidget : public QObject
{
    Q_OBJECT
private Q_SLOTS:
    void initTestCase();
    void cleanupTestCase();
    void cleanup();
    void widgetShowsCatalogueTip_data();
    void widgetShowsCatalogueTip();
    void showsAfterDelay();
    void emptyTitleHides();
    void sameTipStays();
    void layoutByPicturePosition_data();
    void layoutByPicturePosition();
    void missingPicture();
    void contentLineBreaks();
    void linkOpensWithF1();
    void linkOpensWithClick();
    void releaseElsewhereEndsTip();
    void leavingTheRectangleHides();
    void useKeepsTipOpen();
    void placement_data();
    void placement();
    void tipRectNeedsWidget();
    void heldOpenTip();
    void expiry();

private:
    static void waitForNoTip();
    QTemporaryDir m_dir;
    QString m_pictureDir;
    UrlSink m_sink;
};

void tst_KTipWidget::initTestCase()
{
    QVERIFY(m_dir.isValid());
    const QString tips = KTestSupport::writeFile(
        m_dir.path() + "/tips.xml",
        "<r><tips>"
        "<KToolTip id='Bold' tipTitle='Bold' tipContent='Makes the text heavy.' tipPicUrl='tst_pic' "
        "tipPicPosition='2' tipLink='Press F1 for more help' tipLinkUrl='https://help.example/bold'/>"
        "<KToolTip id='Size' tipTitle='Font Size' tipContent='The size of the text.'/>"
        "</tips></r>");
    QVERIFY(KTestSupport::loadMainXml(m_dir.path(), "<tips path='" + tips.toUtf8() + "'/>"));
    // The base application speaks no language: its pictures stand in "-1/tip".
    m_pictureDir = QCoreApplication::applicationDirPath() + "/-1/tip";
    QVERIFY(QDir().mkpath(m_pictureDir));
    QImage picture(40, 30, QImage::Format_ARGB32);
    picture.fill(Qt::red);
    QVERIFY(picture.save(m_pictureDir + "/tst_pic.png"));
    QDesktopServices::setUrlHandler("https", &m_sink, "open");
}

void tst_KTipWidget::cleanupTestCase()
{
    QDesktopServices::unsetUrlHandler("https");
    QFile::remove(m_pictureDir + "/tst_pic.png");
    QDir(QCoreApplication::applicationDirPath()).rmpath("-1/tip");
}

void tst_KTipWidget::cleanup()
{
    if (KTipWidget* tip = KTipWidget::instance())
        tip->hideTipImmediately();
    QToolTip::hideText();
    m_sink.opened.clear();
    QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
}

void tst_KTipWidget::waitForNoTip()
{
    QTRY_VERIFY(!KTipWidget::instance());
}

void tst_KTipWidget::widgetShowsCatalogueTip_data()
{
    QTest::addColumn<QString>("widgetKind");
    QTest::addColumn<QString>("customTip");
    QTest::addColumn<QString>("shortcut");
    QTest::addColumn<QString>("title"); // empty: no rich tip, the plain one
    QTest::newRow("button") << "button" << "Bold" << "" << "Bold";
    QTest::newRow("button, shortcut") << "button" << "Bold" << "Ctrl+B" << "Bold (Ctrl+B)";
    QTest::newRow("button, unknown id") << "button" << "Nothing" << "Ctrl+B" << "";
    QTest::newRow("button, no id") << "button" << "" << "" << "";
    QTest::newRow("combo box") << "combo" << "Size" << "" << "Font Size";
    QTest::newRow("combo box, shortcut") << "combo" << "Size" << "Ctrl+Shift+P" << "Font Size (Ctrl+Shift+P)";
    QTest::newRow("combo box, unknown id") << "combo" << "Nothing" << "" << "";
}

void tst_KTipWidget::widgetShowsCatalogueTip()
{
    QFETCH(QString, widgetKind);
    QFETCH(QString, customTip);
    QFETCH(QString, shortcut);
    QFETCH(QString, title);
    QWidget window;
    window.resize(300, 200);
    KCommand* command = nullptr;
    QWidget* widget = nullptr;
    if (widgetKind == "button") {
        auto* cmd = new KTriggerCommand(this, &window);
        cmd->setText("Bold");
        command = cmd;
        widget = cmd->requestWidget(&window, KCommand::PocketPurpose);
    } else {
        auto* cmd = new KComboBoxCommand(this, &window);
        cmd->setText("Font Size");
        command = cmd;
        widget = cmd->requestWidget(&window, KCommand::PocketPurpose);
    }
    QVERIFY(widget);
    command->setCustomTip(customTip);
    command->setShortcutHint(shortcut);
    widget->setGeometry(20, 20, 80, 24);
    window.show();
    QVERIFY(QTest::qWaitForWindowExposed(&window));

    const QPoint global = widget->mapToGlobal(QPoint(5, 5));
    QHelpEvent help(QEvent::ToolTip, QPoint(5, 5), global);
    QCoreApplication::sendEvent(widget, &help);
    KTipWidget* tip = KTipWidget::instance();
    if (title.isEmpty()) {
        QVERIFY(!tip);
        // The plain tool tip of the command instead.
        QTRY_VERIFY(QToolTip::isVisible());
        QCOMPARE(QToolTip::text(), command->getToolTip());
        return;
    }
    QVERIFY(tip);
    QCOMPARE(tip->title(), title);
    QCOMPARE(tip->tipWidget(), widget);
    QCOMPARE(tip->objectName(), QString("KTipWidget"));
    const QString id = command->customTip();
    KTip* entry = KApplication::instance()->tips()->getTip(id);
    QVERIFY(entry);
    QCOMPARE(tip->content(), entry->tipContent());
    QCOMPARE(tip->url(), entry->tipLinkUrl());
    QCOMPARE(tip->picture(), entry->tipPicUrl());
    // Just below and right of the pointer.
    QCOMPARE(tip->pos(), global + QPoint(2, 16));
    QVERIFY(!QToolTip::isVisible());
}

void tst_KTipWidget::showsAfterDelay()
{
    KToolTip::showText(QPoint(100, 100), "Title", "Content", "", "", 0, "");
    KTipWidget* tip = KTipWidget::instance();
    QVERIFY(tip);
    QVERIFY(!tip->isVisible());
    QVERIFY(tip->isShowTimerActive());
    QTest::qWait(KTipWidget::ShowDelay / 2);
    QVERIFY(!tip->isVisible());
    QTRY_VERIFY(tip->isVisible());
    QVERIFY(KToolTip::isVisible());
    QVERIFY(tip->isExpireTimerActive());
}

void tst_KTipWidget::emptyTitleHides()
{
    KToolTip::showText(QPoint(100, 100), "Title", "Content", "", "", 0, "");
    QTRY_VERIFY(KToolTip::isVisible());
    // Nothing to show: the tip goes, after the short hide delay.
    KToolTip::showText(QPoint(100, 100), QString(), "Content", "", "", 0, "");
    QVERIFY(KTipWidget::instance());
    QVERIFY(KTipWidget::instance()->isHideTimerActive());
    waitForNoTip();
    // And nothing new starts.
    KToolTip::showText(QPoint(100, 100), QString(), "Content", "", "", 0, "");
    QVERIFY(!KTipWidget::instance());
}

void tst_KTipWidget::sameTipStays()
{
    KToolTip::showText(QPoint(100, 100), "Title", "Content", "", "", 0, "");
    QTRY_VERIFY(KToolTip::isVisible());
    const QPointer<KTipWidget> first = KTipWidget::instance();
    KToolTip::showText(QPoint(110, 100), "Title", "Content", "", "", 0, "");
    QCOMPARE(KTipWidget::instance(), first.data());
    QVERIFY(first->isVisible());
    // Another tip takes the place of the first: one window at a time.
    KToolTip::showText(QPoint(110, 100), "Other", "Content", "", "", 0, "");
    KTipWidget* second = KTipWidget::instance();
    QVERIFY(second);
    QVERIFY(second != first.data());
    QCOMPARE(second->title(), QString("Other"));
    QTRY_VERIFY(first.isNull());
    // Asked again while it is about to appear, it shows what was asked for last.
    KToolTip::showText(QPoint(110, 100), "Third", "Content", "", "", 0, "");
    QCOMPARE(KTipWidget::instance(), second);
    QCOMPARE(second->title(), QString("Third"));
}

void tst_KTipWidget::layoutByPicturePosition_data()
{
    QTest::addColumn<int>("position");
    QTest::addColumn<QString>("label");
    QTest::addColumn<QString>("picture");
    QTest::addColumn<QString>("where"); // of the picture, from the text
    QTest::newRow("0: left") << 0 << "contentLabel" << "picWidget" << "left";
    QTest::newRow("1: left") << 1 << "contentLabel" << "picWidget" << "left";
    QTest::newRow("2: right") << 2 << "contentLabel" << "picWidget" << "right";
    QTest::newRow("3: above") << 3 << "contentLabel2" << "picWidget2" << "above";
    QTest::newRow("4: below") << 4 << "contentLabel2" << "picWidget2" << "below";
    QTest::newRow("7: left") << 7 << "contentLabel" << "picWidget" << "left";
}

void tst_KTipWidget::layoutByPicturePosition()
{
    QFETCH(int, position);
    QFETCH(QString, label);
    QFETCH(QString, picture);
    QFETCH(QString, where);
    KToolTipEx::showText(QPoint(100, 100), "Title", "Some words of content", "", "tst_pic", position, "");
    KTipWidget* tip = KTipWidget::instance();
    QVERIFY(tip);
    QTRY_VERIFY(tip->isVisible());
    const auto shown = [tip](const char* name) {
        auto* w = tip->findChild<QWidget*>(name);
        return w && w->isVisible();
    };
    for (const char* name : {"contentLabel", "contentLabel2", "picWidget", "picWidget2"})
        QCOMPARE(shown(name), label == name || picture == name);
    QVERIFY(!shown("tipLine_solid")); // no link
    QVERIFY(!shown("linkLabel"));
    auto* text = tip->findChild<QLabel*>(label);
    auto* pic = tip->findChild<QLabel*>(picture);
    QVERIFY(text);
    QVERIFY(pic);
    QCOMPARE(pic->pixmap().size(), QSize(40, 30));
    const QRect t = text->geometry(), p = pic->geometry();
    if (where == "left")
        QVERIFY(p.right() < t.left());
    else if (where == "right")
        QVERIFY(p.left() > t.right());
    else if (where == "above")
        QVERIFY(p.bottom() < t.top());
    else
        QVERIFY(p.top() > t.bottom());
    // The whole of it fits in the window.
    QVERIFY(tip->rect().contains(tip->findChild<QWidget*>("KToolTipWidget")->geometry()));
    QVERIFY(t.bottom() < tip->height());
}

void tst_KTipWidget::missingPicture()
{
    KToolTipEx::showText(QPoint(100, 100), "Title", "Content", "", "no_such_picture", 2, "");
    KTipWidget* tip = KTipWidget::instance();
    QVERIFY(tip);
    QTRY_VERIFY(tip->isVisible());
    auto* pic = tip->findChild<QLabel*>("picWidget");
    QVERIFY(pic);
    QVERIFY(pic->pixmap().isNull()); // an empty place, nothing worse
    QVERIFY(tip->findChild<QLabel*>("contentLabel")->isVisible());
}

void tst_KTipWidget::contentLineBreaks()
{
    KToolTipEx::showText(QPoint(100, 100), "Title", "one#two", "", "", 0, "");
    KTipWidget* tip = KTipWidget::instance();
    QVERIFY(tip);
    auto* content = tip->findChild<QLabel*>("contentLabel");
    QVERIFY(content);
    QCOMPARE(content->text(), QString("one\r\ntwo"));
    QVERIFY(content->wordWrap());
    QCOMPARE(tip->content(), QString("one#two"));
    // Without a title the title label goes.
    KToolTipEx::showText(QPoint(100, 100), QString(), "Only content", "", "", 0, "");
    QCOMPARE(KTipWidget::instance(), tip);
    QTRY_VERIFY(tip->isVisible());
    QVERIFY(!tip->findChild<QLabel*>("titleLabel")->isVisible());
}

void tst_KTipWidget::linkOpensWithF1()
{
    QWidget window;
    window.resize(200, 100);
    window.show();
    QVERIFY(QTest::qWaitForWindowActive(&window));
    KToolTip::showText(window.mapToGlobal(QPoint(10, 10)), "Bold", "Heavy", "Press F1 for more help", "", 0,
                       "https://help.example/bold", &window);
    KTipWidget* tip = KTipWidget::instance();
    QVERIFY(tip);
    QCOMPARE(KApplication::instance()->getLinkUrl(), QString("https://help.example/bold"));
    // F1 before the tip is up opens nothing.
    QTest::keyClick(&window, Qt::Key_F1);
    QVERIFY(m_sink.opened.isEmpty());
    QTRY_VERIFY(tip->isVisible());
    for (const char* name : {"tipLine_solid", "linkPicWidget", "linkLabel"})
        QVERIFY2(tip->findChild<QWidget*>(name)->isVisible(), name);
    QVERIFY(!tip->findChild<QLabel*>("linkPicWidget")->pixmap().isNull());
    QCOMPARE(tip->findChild<QLabel*>("linkLabel")->text(), QString("Press F1 for more help"));
    // F1 goes to the focused window; the tip hears it there.
    QTest::keyClick(&window, Qt::Key_F1);
    QCOMPARE(m_sink.opened, QList<QUrl>({QUrl("https://help.example/bold")}));
    QVERIFY(KApplication::instance()->getLinkUrl().isEmpty());
    waitForNoTip();
    QTest::keyClick(&window, Qt::Key_F1);
    QCOMPARE(m_sink.opened.size(), 1);
}

void tst_KTipWidget::linkOpensWithClick()
{
    KToolTipEx::showText(QPoint(100, 100), "Bold", "Heavy", "More", "", 0, "https://help.example/click");
    KTipWidget* tip = KTipWidget::instance();
    QVERIFY(tip);
    QTRY_VERIFY(tip->isVisible());
    auto* link = tip->findChild<QLabel*>("linkLabel");
    QVERIFY(link);
    // A click elsewhere in the tip keeps it and opens nothing.
    QTest::mouseClick(tip->findChild<QWidget*>("contentLabel"), Qt::LeftButton);
    QCOMPARE(KTipWidget::instance(), tip);
    QVERIFY(m_sink.opened.isEmpty());
    QTest::mouseClick(link, Qt::LeftButton);
    QCOMPARE(m_sink.opened, QList<QUrl>({QUrl("https://help.example/click")}));
    waitForNoTip();
}

void tst_KTipWidget::releaseElsewhereEndsTip()
{
    QWidget window;
    window.resize(200, 100);
    window.show();
    QVERIFY(QTest::qWaitForWindowExposed(&window));
    KToolTipEx::showText(QPoint(100, 100), "Bold", "Heavy", "More", "", 0, "https://help.example/x");
    QTRY_VERIFY(KToolTip::isVisible());
    QTest::mouseClick(&window, Qt::LeftButton);
    QVERIFY(!KTipWidget::instance()); // at once
    QVERIFY(KApplication::instance()->getLinkUrl().isEmpty());
    QVERIFY(m_sink.opened.isEmpty());
}

void tst_KTipWidget::leavingTheRectangleHides()
{
    QWidget window;
    window.resize(200, 100);
    window.setMouseTracking(true);
    window.show();
    QVERIFY(QTest::qWaitForWindowExposed(&window));
    KToolTip::showText(window.mapToGlobal(QPoint(20, 20)), "T", "C", "", "", 0, "", &window, QRect(10, 10, 30, 30));
    KTipWidget* tip = KTipWidget::instance();
    QVERIFY(tip);
    QTRY_VERIFY(tip->isVisible());
    QTest::mouseMove(&window, QPoint(25, 25));
    QVERIFY(!tip->isHideTimerActive());
    QTest::mouseMove(&window, QPoint(120, 60));
    QVERIFY(tip->isHideTimerActive());
    waitForNoTip();
}

void tst_KTipWidget::useKeepsTipOpen()
{
    KToolTip::showText(QPoint(100, 100), "T", "C", "", "", 0, "");
    KTipWidget* tip = KTipWidget::instance();
    QVERIFY(tip);
    QTRY_VERIFY(tip->isVisible());
    QVERIFY(tip->isExpireTimerActive());
    QWheelEvent wheel(QPointF(1, 1), QPointF(1, 1), QPoint(), QPoint(0, 120), Qt::NoButton, Qt::NoModifier,
                      Qt::NoScrollPhase, false);
    QCoreApplication::sendEvent(&m_sink, &wheel); // a wheel anywhere starts the hide
    QVERIFY(tip->isHideTimerActive());
    QTest::mousePress(tip, Qt::LeftButton, {}, QPoint(5, 5));
    QVERIFY(!tip->isHideTimerActive());
    QVERIFY(!tip->isExpireTimerActive());
    QTest::qWait(KTipWidget::HideDelay + 100);
    QCOMPARE(KTipWidget::instance(), tip);
    QTest::mouseRelease(tip, Qt::LeftButton, {}, QPoint(5, 5)); // a release in the tip is its own
    QCOMPARE(KTipWidget::instance(), tip);
}

void tst_KTipWidget::placement_data()
{
    QTest::addColumn<QPoint>("fromBottomRight"); // the position, counted back from the corner
    QTest::newRow("corner") << QPoint(1, 1);
    QTest::newRow("right edge") << QPoint(3, 400);
    QTest::newRow("bottom edge") << QPoint(500, 2);
    QTest::newRow("middle") << QPoint(600, 500);
}

void tst_KTipWidget::placement()
{
    QFETCH(QPoint, fromBottomRight);
    const QRect screen = QGuiApplication::primaryScreen()->geometry();
    const QPoint pos = screen.bottomRight() - fromBottomRight;
    KToolTip::showText(pos, "A title", "Content long enough to give the tip some width and height.", "", "", 0, "");
    KTipWidget* tip = KTipWidget::instance();
    QVERIFY(tip);
    const QRect geometry(tip->pos(), tip->size());
    QVERIFY2(screen.contains(geometry), qPrintable(QString("%1,%2 %3x%4").arg(geometry.x()).arg(geometry.y())
                                                       .arg(geometry.width()).arg(geometry.height())));
    const bool roomRight = pos.x() + 2 + tip->width() <= screen.right() + 1;
    const bool roomBelow = pos.y() + 16 + tip->height() <= screen.bottom() + 1;
    QCOMPARE(geometry.x(), roomRight ? pos.x() + 2 : screen.right() + 1 - tip->width() - 4);
    QCOMPARE(geometry.y(), roomBelow ? pos.y() + 16 : pos.y() - tip->height() - 4);
    // Off the top left, it goes no further than the edge.
    tip->placeTip(screen.topLeft() - QPoint(50, 50), nullptr);
    QCOMPARE(tip->pos(), screen.topLeft());
}

void tst_KTipWidget::tipRectNeedsWidget()
{
    KToolTipEx::showText(QPoint(100, 100), "T", "C", "", "", 0, "");
    KTipWidget* tip = KTipWidget::instance();
    QVERIFY(tip);
    QWidget widget;
    tip->setTipRect(&widget, QRect(0, 0, 10, 10));
    KWarningCatcher catcher;
    tip->setTipRect(nullptr, QRect(1, 1, 5, 5));
    QCOMPARE(catcher.messages(), QStringList({"KTipWidget::setTipRect: Cannot pass null widget if rect is set"}));
    QCOMPARE(tip->tipWidget(), &widget); // unchanged
    QCOMPARE(tip->tipRect(), QRect(0, 0, 10, 10));
}

void tst_KTipWidget::heldOpenTip()
{
    const QPoint pos(100, 100);
    KToolTipEx::showText(pos, "First", "C", "", "", 0, "");
    KTipWidget* tip = KTipWidget::instance();
    QVERIFY(tip);
    QCOMPARE(tip->pos(), pos + QPoint(2, 16));
    QTRY_VERIFY(tip->isVisible()); // no delay to speak of
    KToolTipEx::showText(pos + QPoint(30, 0), "Second", "C", "", "", 0, "");
    QCOMPARE(KTipWidget::instance(), tip);
    QCOMPARE(tip->title(), QString("Second"));
    QCOMPARE(tip->pos(), pos + QPoint(32, 16));
    KToolTipEx::hide();
    QVERIFY(!KTipWidget::instance());
    KToolTipEx::hide(); // nothing left to hide
}

void tst_KTipWidget::expiry()
{
    // A normal tip goes after ten seconds.
    KToolTip::showText(QPoint(100, 100), "Normal", "C", "", "", 0, "");
    QPointer<KTipWidget> tip = KTipWidget::instance();
    QTRY_VERIFY(tip && tip->isVisible());
    QTest::qWait(KTipWidget::ExpireTime - 1500);
    QVERIFY(tip);
    QTRY_VERIFY_WITH_TIMEOUT(tip.isNull(), 3000);
    // A held one stays.
    KToolTipEx::showText(QPoint(100, 100), "Held", "C", "", "", 0, "");
    tip = KTipWidget::instance();
    QTest::qWait(KTipWidget::ExpireTime + 500);
    QVERIFY(tip);
    QVERIFY(tip->isVisible());
}

NORVIK_TEST_MAIN(tst_KTipWidget)
#include "tst_ktipwidget.moc"
