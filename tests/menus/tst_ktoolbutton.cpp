#include <ktestsupport.h>

#include <QHBoxLayout>
#include <QMouseEvent>
#include <QProxyStyle>
#include <QSignalSpy>
#include <QStyleFactory>
#include <QToolButton>
#include <QVBoxLayout>

#include <kappidlesvr.h>
#include <kblockedmouseevent.h>
#include <kcolorselectesbutton.h>
#include <kcommandwidgetbridge.h>
#include <kevent.h>
#include <korbstyle.h>
#include <krbdonotshowhotkeytoolbutton.h>
#include <ktoolbutton.h>
#include <ktriggercommand.h>

namespace {

// A command whose state only moves when it is asked (update()), as a host's commands do.
class PolledCommand : public KTriggerCommand
{
public:
    using KTriggerCommand::KTriggerCommand;
    bool wanted = false;
    int updates = 0;
    void update() override
    {
        ++updates;
        setCheckedHint(wanted);
    }
};

// A parent that writes down every event of interest, and accepts none of them.
class Recorder : public QWidget
{
public:
    QStringList* log = nullptr;
    bool acceptDismiss = false;

protected:
    bool event(QEvent* e) override
    {
        if (e->type() == KEvent::eventType(KEvent::Dismiss)) {
            *log << objectName() + ":dismiss";
            if (acceptDismiss) {
                e->accept();
                return true;
            }
        }
        return QWidget::event(e);
    }
};

int paintedPixels(QWidget* w)
{
    QImage image(w->size(), QImage::Format_ARGB32_Premultiplied);
    image.fill(Qt::transparent);
    w->render(&image, QPoint(), QRegion(), QWidget::RenderFlags());
    int n = 0;
    for (int y = 0; y < image.height(); ++y)
        for (int x = 0; x < image.width(); ++x)
            n += qAlpha(image.pixel(x, y)) != 0;
    return n;
}

QStringList s_tips;
bool recordTip(QWidget*, KCommand*, const QString& key, const QPoint&)
{
    s_tips << key;
    return true;
}

} // namespace

using KTestSupport::redIcon;

class tst_KToolButton : public QObject
{
    Q_OBJECT
private Q_SLOTS:
    void initTestCase();
    void followsCommandChanges();
    void captionAndStyleWord();
    void clicks_data();
    void clicks();
    void pressedLook();
    void sizesAndAutoHide();
    void gainingAnIconRelaysOut();
    void hoverUnderPopup();
    void painting();
    void hostStyles_data();
    void hostStyles();
};

void tst_KToolButton::initTestCase()
{
    // The framework's style frame over the stock one, as an application with a theme has.
    QApplication::setStyle(new KORBStyle(QStyleFactory::create("Fusion")));
}

void tst_KToolButton::followsCommandChanges()
{
    PolledCommand cmd(this, nullptr);
    cmd.setText("Bold");
    cmd.setIcon(redIcon());
    cmd.setCheckedHint(true);
    cmd.setEnabled(false);
    KToolButton button;
    button.setDefaultCommand(&cmd);
    QCOMPARE(button.icon().cacheKey(), cmd.icon().cacheKey());
    QVERIFY(button.isChecked());
    QVERIFY(!button.isEnabled());
    cmd.setText("Heavy");
    cmd.setVisible(false);
    QCOMPARE(button.text(), QString("Heavy"));
    QVERIFY(button.isHidden());

    // At idle time the button asks its command, and the change comes back to it.
    QVERIFY(KApplication::instance()->idleSvr()->isRegistered(&button));
    cmd.wanted = false;
    KEvent idle(KEvent::Idle);
    QVERIFY(QCoreApplication::sendEvent(&button, &idle));
    QVERIFY(cmd.updates > 0);
    QVERIFY(!button.isChecked());

    // A second command replaces the first entirely.
    KTriggerCommand other(this, nullptr);
    other.setText("Other");
    button.setDefaultCommand(&other);
    cmd.setText("Ignored");
    QCOMPARE(button.text(), QString("Other"));
    QSignalSpy firstRuns(&cmd, &KCommand::triggered);
    QTest::mouseClick(&button, Qt::LeftButton);
    QCOMPARE(firstRuns.count(), 0);

    // A command that dies leaves a button that no longer touches it.
    auto* doomed = new KTriggerCommand(this, nullptr);
    button.setDefaultCommand(doomed);
    delete doomed;
    QVERIFY(!button.command());
    QTest::mouseClick(&button, Qt::LeftButton);
    QVERIFY(QCoreApplication::sendEvent(&button, &idle));
}

void tst_KToolButton::captionAndStyleWord()
{
    KTriggerCommand cmd(this, nullptr);
    cmd.setText("Save & Close & Exit");
    const int iconText = KToolButton::StyleIcon | KToolButton::StyleText;
    const int iconArrow = KToolButton::StyleIcon | KToolButton::StyleArrow;
    KToolButton button;
    button.setButtonStyle(iconText);
    button.setDefaultCommand(&cmd);
    // Only the first ampersand is doubled.
    QCOMPARE(button.text(), QString("Save && Close & Exit"));
    // A command without a style of its own leaves the button's; one with a style gives it.
    QCOMPARE(button.buttonStyle(), iconText);
    cmd.setButtonStyle(iconArrow);
    QCOMPARE(button.buttonStyle(), iconArrow);
    // A new style word sets the caption again, now without the doubling.
    QCOMPARE(button.text(), QString("Save & Close & Exit"));
    cmd.setText("Open");
    cmd.setProperty("hotKey", "O");
    cmd.setDialogHint(true);
    button.setButtonStyle(iconArrow | KToolButton::StyleHotKey);
    QCOMPARE(button.text(), cmd.getDrawText());
}

void tst_KToolButton::clicks_data()
{
    QTest::addColumn<int>("mouseButton");
    QTest::addColumn<bool>("inside");
    QTest::addColumn<bool>("innerAccepts"); // the inner parent stops the dismiss
    QTest::addColumn<int>("left");
    QTest::addColumn<int>("right");
    QTest::addColumn<QStringList>("log");
    // Every release dismisses the popups above the button, click or not, parents first and
    // before the command runs.
    const QStringList both = {"inner:dismiss", "outer:dismiss"};
    QTest::newRow("left inside") << int(Qt::LeftButton) << true << false << 1 << 0 << both + QStringList{"command", "clicked"};
    QTest::newRow("right inside") << int(Qt::RightButton) << true << false << 0 << 1 << both + QStringList{"clicked"};
    QTest::newRow("middle inside") << int(Qt::MiddleButton) << true << false << 0 << 0 << both + QStringList{"clicked"};
    QTest::newRow("left released outside") << int(Qt::LeftButton) << false << false << 0 << 0 << both;
    QTest::newRow("inner parent accepts") << int(Qt::LeftButton) << true << true << 1 << 0
                                          << QStringList{"inner:dismiss", "command", "clicked"};
}

void tst_KToolButton::clicks()
{
    QFETCH(int, mouseButton);
    QFETCH(bool, inside);
    QFETCH(bool, innerAccepts);
    KTriggerCommand cmd(this, nullptr);
    QStringList log;
    Recorder outer;
    auto* inner = new Recorder;
    for (Recorder* r : {&outer, inner})
        r->log = &log;
    outer.setObjectName("outer");
    inner->setObjectName("inner");
    inner->acceptDismiss = innerAccepts;
    (new QVBoxLayout(&outer))->addWidget(inner);
    auto* button = new KToolButton(inner);
    button->setDefaultCommand(&cmd);
    button->resize(30, 24);
    outer.resize(100, 100);
    outer.show();
    QVERIFY(QTest::qWaitForWindowExposed(&outer));

    QSignalSpy left(button, &KToolButton::LButtonClicked);
    QSignalSpy right(button, &KToolButton::RButtonClicked);
    QSignalSpy pressed(button, &KToolButton::LButtonPressed);
    connect(&cmd, &KCommand::triggered, this, [&] { log << "command"; });
    connect(button, &KToolButton::clicked, this, [&] { log << "clicked"; });
    const auto b = Qt::MouseButton(mouseButton);
    QTest::mousePress(button, b, {}, QPoint(5, 5));
    QTest::mouseRelease(button, b, {}, inside ? QPoint(10, 10) : QPoint(150, 150));

    QTEST(int(left.count()), "left");
    QTEST(int(right.count()), "right");
    QTEST(log, "log");
    QCOMPARE(pressed.count(), b == Qt::LeftButton ? 1 : 0);
    QVERIFY(!button->isPressed());
}

void tst_KToolButton::pressedLook()
{
    KToolButton button;
    button.resize(30, 24);
    button.show();
    QVERIFY(QTest::qWaitForWindowExposed(&button));
    QTest::mousePress(&button, Qt::LeftButton, {}, QPoint(4, 4));
    QVERIFY(button.isPressed());
    // Leaving with the button held drops the pressed look; nothing brings it back.
    QEvent leave(QEvent::Leave);
    QCoreApplication::sendEvent(&button, &leave);
    QVERIFY(!button.isPressed());
    QTest::mouseMove(&button, QPoint(6, 6));
    QVERIFY(!button.isPressed());
    QTest::mouseRelease(&button, Qt::LeftButton, {}, QPoint(6, 6));
    QTest::mousePress(&button, Qt::RightButton, {}, QPoint(4, 4)); // a right press leaves the look
    QVERIFY(!button.isPressed());
    QTest::mouseRelease(&button, Qt::RightButton, {}, QPoint(4, 4));
}

void tst_KToolButton::sizesAndAutoHide()
{
    KToolButton button;
    button.setIcon(redIcon());
    button.setText("A long caption");
    const QSize iconOnly = button.sizeHint();
    const int iconText = KToolButton::StyleIcon | KToolButton::StyleText;
    button.setButtonStyle(iconText);
    const QSize beside = button.sizeHint();
    QVERIFY(beside.width() > iconOnly.width() + 40);
    button.setButtonStyle(iconText | KToolButton::StyleArrow);
    QVERIFY(button.sizeHint().width() > beside.width());

    // The offscreen screen is narrower than 1279 pixels: the caption goes at the next paint,
    // and the size drops with it; without the text bit the flag is never touched.
    button.setButtonStyle(iconText | KToolButton::StyleAutoHideText);
    QVERIFY(button.screen()->geometry().width() < 1279);
    const QSize withText = button.sizeHint();
    KToolButton plain;
    plain.setIcon(redIcon());
    plain.setText("Caption");
    plain.setButtonStyle(KToolButton::StyleIcon | KToolButton::StyleAutoHideText);
    for (KToolButton* b : {&button, &plain}) {
        b->show();
        QVERIFY(QTest::qWaitForWindowExposed(b));
    }
    QTRY_VERIFY(button.isTextAutoHidden());
    QVERIFY(!button.needDrawText());
    QVERIFY(button.sizeHint().width() < withText.width());
    QVERIFY(!plain.isTextAutoHidden());
}

void tst_KToolButton::gainingAnIconRelaysOut()
{
    // A text button in a host's box layout: the layout gives it the room of its new size.
    QWidget window;
    auto* layout = new QHBoxLayout(&window);
    auto* button = new KToolButton;
    button->setButtonStyle(KToolButton::StyleIcon | KToolButton::StyleText);
    button->setText("Caption");
    layout->addWidget(button);
    layout->addStretch();
    window.show();
    QVERIFY(QTest::qWaitForWindowExposed(&window));
    const int textOnly = button->width();

    button->setIcon(redIcon());
    QTRY_COMPARE(button->width(), button->sizeHint().width());
    QVERIFY(button->width() > textOnly);
    button->setIcon(QIcon());
    QTRY_COMPARE(button->width(), textOnly);
}

void tst_KToolButton::hoverUnderPopup()
{
    QWidget window;
    auto* button = new KToolButton(&window);
    KTriggerCommand cmd(this, nullptr);
    cmd.setCustomTip("tip");
    button->setDefaultCommand(&cmd);
    button->setGeometry(10, 10, 30, 24);
    window.resize(100, 100);
    window.show();
    QVERIFY(QTest::qWaitForWindowExposed(&window));
    QWidget popup(button, Qt::Popup); // a popup the button opened
    QWidget stranger(&window);
    // The tips that reach the button go to the rich tip handler, which counts them.
    s_tips.clear();
    const auto catalogueHandler = KCommandBridgeHelper::richTipHandler();
    KCommandBridgeHelper::setRichTipHandler(&recordTip);

    const QPoint inside = button->mapToGlobal(QPoint(5, 5)), outside = button->mapToGlobal(QPoint(60, 60));
    auto blocked = [&](QEvent::Type type, Qt::MouseButton b, const QPoint& global, QWidget* from = nullptr) {
        QMouseEvent mouse(type, QPointF(0, 0), QPointF(global), QPointF(global), b, b, {});
        KBlockedMouseEvent e(&mouse, from ? from : &popup);
        const bool handled = QCoreApplication::sendEvent(button, &e);
        return handled && e.firstFlag();
    };
    // Only a left press on the button from its own popup is the button's own click.
    QVERIFY(blocked(QEvent::MouseButtonPress, Qt::LeftButton, inside));
    QVERIFY(!blocked(QEvent::MouseButtonPress, Qt::RightButton, inside));
    QVERIFY(!blocked(QEvent::MouseButtonPress, Qt::LeftButton, outside));
    QVERIFY(!blocked(QEvent::MouseButtonPress, Qt::LeftButton, inside, &stranger));

    // A blocked move inside gives the hover look and, after 300 ms, the tool tip.
    blocked(QEvent::MouseMove, Qt::NoButton, outside);
    QVERIFY(!button->testAttribute(Qt::WA_UnderMouse));
    blocked(QEvent::MouseMove, Qt::NoButton, inside);
    QVERIFY(button->testAttribute(Qt::WA_UnderMouse));
    QTest::qWait(100);
    QCOMPARE(s_tips.size(), 0);
    QTRY_COMPARE(s_tips.size(), 1);
    // Further moves start nothing; a real leave ends it, and stops a pending tip.
    blocked(QEvent::MouseMove, Qt::NoButton, inside);
    QEvent leave(QEvent::Leave);
    QCoreApplication::sendEvent(button, &leave);
    blocked(QEvent::MouseMove, Qt::NoButton, inside);
    QCoreApplication::sendEvent(button, &leave);
    QTest::qWait(400);
    QCOMPARE(s_tips, QStringList({"tip"}));
    // The button's own key comes before its command's.
    button->setCustomTip("own");
    button->showToolTip();
    QTRY_COMPARE(s_tips, QStringList({"tip", "own"}));
    KCommandBridgeHelper::setRichTipHandler(catalogueHandler);
}

void tst_KToolButton::painting()
{
    // An idle auto-raised button draws only its icon; checked and pressed draw a background.
    KToolButton button;
    button.resize(28, 24);
    button.setIcon(redIcon());
    QCOMPARE(paintedPixels(&button), 16 * 16);
    button.setChecked(true);
    QVERIFY(paintedPixels(&button) > 26 * 22);

    // The invisible button paints nothing at all, and never offers a key tip.
    KRbDonotShowHotKeyToolButton invisible;
    invisible.resize(28, 24);
    invisible.setIcon(redIcon());
    invisible.setChecked(true);
    QCOMPARE(paintedPixels(&invisible), 0);
    KEvent collect(KEvent::HotKeyCollect);
    QVERIFY(QCoreApplication::sendEvent(&invisible, &collect));

    // The colour button shows its colour.
    KColorSelectesButton colour(nullptr, nullptr);
    colour.resize(40, 30);
    colour.colorChange(QColor(0, 200, 0));
    QVERIFY(KTestSupport::anyPixel(colour.grab().toImage(), [](const QColor& c) { return c == QColor(0, 200, 0); }));
}

namespace {

// A host's own styles, which know nothing of the framework: one on top of a stock style, one
// built on the common style itself.
class HostProxyStyle : public QProxyStyle
{
public:
    using QProxyStyle::QProxyStyle;
};
class HostCommonStyle : public QCommonStyle
{
};

// The framework's style, counting the tool buttons it draws.
class CountingStyle : public KORBStyle
{
public:
    CountingStyle() : KORBStyle(QStyleFactory::create("Fusion")) {}
    mutable int toolButtons = 0;
    void drawComplexControl_ToolButton(const KStyleOptionToolButton*, QPainter*, const QWidget*) const override
    {
        ++toolButtons;
    }
};

} // namespace

void tst_KToolButton::hostStyles_data()
{
    QTest::addColumn<QString>("host"); // the host's style class
    QTest::addColumn<int>("buttonStyle");
    QTest::addColumn<bool>("icon");
    const int iconText = KToolButton::StyleIcon | KToolButton::StyleText;
    QTest::newRow("proxy, text beside icon") << "proxy" << iconText << true;
    QTest::newRow("proxy, text under icon") << "proxy" << (iconText | KToolButton::StyleTextUnderIcon) << true;
    QTest::newRow("proxy, split") << "proxy" << (iconText | KToolButton::StyleArrow) << true;
    QTest::newRow("proxy, text only") << "proxy" << iconText << false;
    QTest::newRow("common, icon only") << "common" << int(KToolButton::StyleIcon) << true;
}

void tst_KToolButton::hostStyles()
{
    // A host sets a style of its own on the button: it looks and measures as the stock tool
    // button of that style, and the style warns of nothing it cannot draw.
    QFETCH(QString, host);
    QFETCH(int, buttonStyle);
    QFETCH(bool, icon);
    std::unique_ptr<QStyle> style;
    if (host == QLatin1String("proxy"))
        style.reset(new HostProxyStyle(QStyleFactory::create("Fusion")));
    else
        style.reset(new HostCommonStyle);

    KWarningCatcher warnings;
    KToolButton button;
    button.setStyle(style.get());
    button.setButtonStyle(buttonStyle);
    button.setText("Save");
    if (icon)
        button.setIcon(redIcon());
    QToolButton stock;
    stock.setStyle(style.get());
    stock.setAutoRaise(true);
    stock.setText("Save");
    stock.setIcon(button.icon());
    stock.setIconSize(button.iconSize());
    if (buttonStyle & KToolButton::StyleArrow)
        stock.setPopupMode(QToolButton::MenuButtonPopup);
    stock.setToolButtonStyle(!(buttonStyle & KToolButton::StyleText) ? Qt::ToolButtonIconOnly
                             : (buttonStyle & KToolButton::StyleTextUnderIcon) ? Qt::ToolButtonTextUnderIcon
                                                                               : Qt::ToolButtonTextBesideIcon);

    QCOMPARE(button.sizeHint(), stock.sizeHint());
    button.resize(button.sizeHint());
    stock.resize(button.size());
    const QImage drawn = button.grab().toImage();
    QCOMPARE(drawn, stock.grab().toImage());
    const QColor background = drawn.pixelColor(0, 0);
    QVERIFY(KTestSupport::anyPixel(drawn, [&](const QColor& c) { return c != background; }));
    QCOMPARE(warnings.messages(), QStringList());

    // The framework's style under a host's proxy is still the framework's style.
    auto* framework = new CountingStyle;
    HostProxyStyle wrapped(framework);
    button.setStyle(&wrapped);
    button.grab();
    QCOMPARE(framework->toolButtons, 1);
    button.setStyle(nullptr);
}

NORVIK_TEST_MAIN(tst_KToolButton)
#include "tst_ktoolbutton.moc"
