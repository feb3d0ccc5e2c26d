#include <ktestsupport.h>

#include <QBoxLayout>
#include <QGridLayout>

#include <kcommandfactory.h>
#include <kidleevent.h>
#include <kmainwindow.h>
#include <korbstyle.h>
#include <krblayoutlistcommand.h>
#include <krblayoutwidget.h>

#include "ribbontesthelpers.h"

using namespace RibbonTest;

namespace {

// Writes down the frames the layout widgets ask for.
class FrameRecorder : public KORBStyle
{
public:
    mutable QList<QRect> frames;
    mutable QList<int> layoutOnly;
    void drawComplexControl_KRbLayoutWidget(const KStyleOptionRbLayoutWidget* option, QPainter*,
                                            const QWidget*) const override
    {
        frames << option->rect;
        layoutOnly << option->layoutOnly;
    }
};

} // namespace

class tst_KRbLayoutWidget : public QObject
{
    Q_OBJECT
private Q_SLOTS:
    void init() { m_warnings.reset(new KWarningCatcher); }
    void cleanup()
    {
        const QStringList messages = m_warnings->messages();
        m_warnings.reset();
        QCOMPARE(messages, QStringList());
    }

    void layoutKinds_data();
    void layoutKinds();
    void itemsArriveInOrder();
    void frame();
    void commandProperties();

private:
    QScopedPointer<KWarningCatcher> m_warnings;
};

void tst_KRbLayoutWidget::layoutKinds_data()
{
    QTest::addColumn<QString>("name");
    QTest::addColumn<QString>("layoutClass");
    QTest::addColumn<int>("spacing"); // the spacing the layout reports

    // Horizontal spacing 3, vertical 5: a column takes the vertical one, a row the other.
    QTest::newRow("grid") << "grid" << "QGridLayout" << -1;
    QTest::newRow("grid in capitals") << "GRID" << "QGridLayout" << -1;
    QTest::newRow("vbox") << "vbox" << "QVBoxLayout" << 5;
    QTest::newRow("empty name is a row") << "" << "QHBoxLayout" << 3;
    QTest::newRow("unknown name is a row") << "hbox" << "QHBoxLayout" << 3;
}

void tst_KRbLayoutWidget::layoutKinds()
{
    QFETCH(QString, name);
    QFETCH(QString, layoutClass);
    QFETCH(int, spacing);

    KRbLayoutListCommand cmd(nullptr, nullptr);
    cmd.setLayoutName(name);
    cmd.setHorizontalSpacing(3);
    cmd.setVerticalSpacing(5);
    cmd.setLeftSpacing(4);
    cmd.setRightSpacing(6);
    QWidget host;
    auto* widget = qobject_cast<KRbLayoutWidget*>(cmd.requestWidget(&host, KCommand::PocketPurpose));
    QVERIFY(widget);
    QCOMPARE(QString(widget->itemLayout()->metaObject()->className()), layoutClass);
    QCOMPARE(widget->itemLayout()->spacing(), spacing);
    if (auto* grid = qobject_cast<QGridLayout*>(widget->itemLayout())) {
        QCOMPARE(grid->horizontalSpacing(), 3);
        QCOMPARE(grid->verticalSpacing(), 5);
    }
    QCOMPARE(widget->itemLayout()->contentsMargins(), QMargins(5, 1, 7, 1));
}

void tst_KRbLayoutWidget::itemsArriveInOrder()
{
    QObject owner;
    KRbLayoutListCommand cmd(nullptr, nullptr);
    cmd.addSubCommand(control("S20x20", &owner));
    cmd.addSubCommand(control("S30x20", &owner));
    QWidget host;
    auto* widget = new KRbLayoutWidget(&cmd, &host);
    // A row of 20 and 30 within margins of 1: built when measured.
    QCOMPARE(widget->sizeHint(), QSize(52, 22));
    QCOMPARE(widget->minimumSizeHint(), QSize(52, 22));

    // The index is ignored: a new item goes to the end.
    cmd.insertSubCommand(0, control("S40x20", &owner));
    QCOMPARE(widget->itemLayout()->count(), 3);
    QCOMPARE(widget->itemLayout()->itemAt(2)->widget()->sizeHint(), QSize(40, 20));

    QPointer<QWidget> first = widget->itemLayout()->itemAt(0)->widget();
    cmd.removeSubCommand(0);
    QCOMPARE(widget->itemLayout()->count(), 2);
    QVERIFY(first->isHidden());
    QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
    QVERIFY(!first);

    // Idle time asks the command; visibility and enablement follow it.
    KIdleEvent idle(0);
    QVERIFY(QCoreApplication::sendEvent(widget, &idle));
    cmd.setEnabled(false);
    QVERIFY(!widget->isEnabled());
}

void tst_KRbLayoutWidget::frame()
{
    // The frame hugs the content: just outside the left and right spaces.
    FrameRecorder style;
    KRbLayoutListCommand cmd(nullptr, nullptr);
    cmd.setLeftSpacing(4);
    cmd.setRightSpacing(6);
    KRbLayoutWidget widget(&cmd, nullptr);
    widget.setStyle(&style);
    widget.resize(100, 30);
    widget.grab();
    QCOMPARE(style.frames, QList<QRect>({QRect(QPoint(4, 0), QPoint(93, 29))}));
    QCOMPARE(style.layoutOnly, QList<int>({0}));

    // layoutOnly: no frame, and the margins stay.
    cmd.setLayoutOnly(true);
    style.frames.clear();
    widget.grab();
    QCOMPARE(style.frames, QList<QRect>());
    QCOMPARE(widget.itemLayout()->contentsMargins(), QMargins(5, 1, 7, 1));
}

void tst_KRbLayoutWidget::commandProperties()
{
    KRbLayoutListCommand cmd(nullptr, nullptr);
    QCOMPARE(cmd.spacing(), 0);
    cmd.setHorizontalSpacing(2);
    QCOMPARE(cmd.spacing(), -1); // the spacings differ
    cmd.setSpacing(7);
    QCOMPARE(cmd.horizontalSpacing(), 7);
    QCOMPARE(cmd.verticalSpacing(), 7);
    // The XML names of the side spaces.
    QVERIFY(cmd.setProperty("leftSpace", 3));
    QCOMPARE(cmd.leftSpacing(), 3);
    QVERIFY(cmd.setProperty("rightSpace", 8));
    QCOMPARE(cmd.rightSpacing(), 8);

    // Registered for a main window as its host, and for nothing else.
    KMainWindow window;
    QScopedPointer<KCommand> made(KCommandFactory::createCommand("KRbLayoutListCommand", &window, nullptr));
    QVERIFY(qobject_cast<KRbLayoutListCommand*>(made.data()));
    QObject plainHost;
    QCOMPARE(KCommandFactory::createCommand("KRbLayoutListCommand", &plainHost, nullptr), nullptr);
    QCOMPARE(m_warnings->count(), 1); // the factory's "need a host"
    m_warnings->clear();
}

NORVIK_TEST_MAIN(tst_KRbLayoutWidget)
#include "tst_krblayoutwidget.moc"
