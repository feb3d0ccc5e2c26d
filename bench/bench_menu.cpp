// Opening the framework's menu and moving its highlight, against a plain QMenu of the same
// items in the same run (the floor):
//  (a) open: a click on the list's button to the first paint of the menu, 50 rows with icon,
//      text and shortcut, 5 of them submenus of 5 rows;
//  (b) browse: the highlight moved by the mouse over all 50 rows, each move painted.
//  (c) the first opening, when the popup and its rows are made, against a QMenu made then;
//  (d) a list of 1,000 rows, which opens scrolling.
// Each figure is the median of many rounds; the summary prints both and their ratio.
// Runs on the offscreen platform unless QT_QPA_PLATFORM says otherwise; under callgrind,
// run one function (e.g. "bench_menu openFramework") and compare instruction counts.
#include <QElapsedTimer>
#include <QMenu>
#include <QPainter>
#include <QPushButton>
#include <QtTest/QtTest>
#include <algorithm>
#include <cstdio>
#include <functional>
#include <vector>

#include <kapplication.h>
#include <klistcommand.h>
#include <kmenubutton.h>
#include <kmenuwidget.h>
#include <kpopupwidget.h>
#include <ktoolbutton.h>
#include <ktriggercommand.h>

#include "benchsupport.h"

namespace {

constexpr int kRows = 50;
constexpr int kSubmenus = 5;
constexpr int kSubRows = 5;
constexpr int kRounds = 60;

QIcon benchIcon()
{
    QPixmap pm(16, 16);
    pm.fill(Qt::darkCyan);
    return QIcon(pm);
}

using BenchSupport::median;
using BenchSupport::PaintWatch;
using BenchSupport::processUntil;

} // namespace

class BenchMenu : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void initTestCase();
    void cleanupTestCase();
    void openFramework();
    void openQMenu();
    void browseFramework();
    void browseQMenu();
    void summary();

private:
    // One opening through the list's button; returns the menu, painted once.
    KMenuWidget* _openFramework();
    QMenu* _openQMenu();
    void _browse(QWidget* menu, const std::vector<QPoint>& rows);
    std::vector<QPoint> _frameworkRows(KMenuWidget* menu) const;
    std::vector<QPoint> _qmenuRows(QMenu* menu) const;
    QMenu* _copyOfQMenu() const;

    QWidget* m_window = nullptr;
    KListCommand* m_list = nullptr;
    KToolButton* m_button = nullptr;
    QPushButton* m_plainButton = nullptr;
    QMenu* m_qmenu = nullptr;
};

void BenchMenu::initTestCase()
{
    m_window = new QWidget;
    m_window->resize(600, 400);
    m_list = new KListCommand(m_window, m_window);
    m_qmenu = new QMenu(m_window);
    const QIcon icon = benchIcon();
    for (int i = 0; i < kRows; ++i) {
        const QString text = QStringLiteral("Command number %1").arg(i);
        if (i % (kRows / kSubmenus) == 3) {
            auto* sub = new KListCommand(m_window, m_list);
            sub->setText(text);
            sub->setIcon(icon);
            QMenu* plainSub = m_qmenu->addMenu(icon, text);
            for (int j = 0; j < kSubRows; ++j) {
                auto* cmd = new KTriggerCommand(m_window, sub);
                cmd->setText(QStringLiteral("Inner %1").arg(j));
                sub->addSubCommand(cmd);
                plainSub->addAction(QStringLiteral("Inner %1").arg(j));
            }
            m_list->addSubCommand(sub);
            continue;
        }
        auto* cmd = new KTriggerCommand(m_window, m_list);
        cmd->setText(text);
        cmd->setIcon(icon);
        cmd->setShortcutHint(QStringLiteral("Ctrl+Shift+%1").arg(QChar('A' + i % 26)));
        m_list->addSubCommand(cmd);
        QAction* action = m_qmenu->addAction(icon, text);
        action->setShortcut(QKeySequence(QStringLiteral("Ctrl+Shift+%1").arg(QChar('A' + i % 26))));
    }
    m_button = qobject_cast<KToolButton*>(m_list->requestWidget(m_window, KCommand::PocketPurpose));
    m_button->move(10, 10);
    m_plainButton = new QPushButton(QStringLiteral("Plain"), m_window);
    m_plainButton->move(200, 10);
    connect(m_plainButton, &QPushButton::clicked, this,
            [this] { m_qmenu->popup(m_plainButton->mapToGlobal(QPoint(0, m_plainButton->height()))); });
    m_window->show();
    QVERIFY(QTest::qWaitForWindowExposed(m_window));
}

void BenchMenu::cleanupTestCase()
{
    delete m_window;
}

KMenuWidget* BenchMenu::_openFramework()
{
    // The menu button makes its menu at each opening; the one of the last opening may still
    // wait for its deletion.
    QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
    QTest::mouseClick(m_button, Qt::LeftButton, {}, QPoint(3, 3));
    auto* menuButton = qobject_cast<KMenuButton*>(m_button);
    KPopupWidget* popup = menuButton ? menuButton->popupWidget() : nullptr;
    auto* menu = popup ? qobject_cast<KMenuWidget*>(popup->contentWidget()) : nullptr;
    if (!menu)
        return nullptr;
    PaintWatch watch;
    menu->installEventFilter(&watch);
    processUntil([&] { return watch.painted; });
    menu->removeEventFilter(&watch);
    return menu;
}

QMenu* BenchMenu::_openQMenu()
{
    QTest::mouseClick(m_plainButton, Qt::LeftButton);
    PaintWatch watch;
    m_qmenu->installEventFilter(&watch);
    processUntil([&] { return watch.painted; });
    m_qmenu->removeEventFilter(&watch);
    return m_qmenu;
}

std::vector<QPoint> BenchMenu::_frameworkRows(KMenuWidget* menu) const
{
    std::vector<QPoint> rows;
    for (int i = 0; i < menu->count(); ++i)
        rows.push_back(menu->itemAt(i)->geometry().center());
    return rows;
}

QMenu* BenchMenu::_copyOfQMenu() const
{
    auto* copy = new QMenu(m_window);
    for (QAction* a : m_qmenu->actions()) {
        if (QMenu* sub = a->menu()) {
            QMenu* subCopy = copy->addMenu(a->icon(), a->text());
            for (QAction* inner : sub->actions())
                subCopy->addAction(inner->text());
            continue;
        }
        copy->addAction(a->icon(), a->text())->setShortcut(a->shortcut());
    }
    return copy;
}

std::vector<QPoint> BenchMenu::_qmenuRows(QMenu* menu) const
{
    std::vector<QPoint> rows;
    for (QAction* a : menu->actions())
        rows.push_back(menu->actionGeometry(a).center());
    return rows;
}

void BenchMenu::_browse(QWidget* menu, const std::vector<QPoint>& rows)
{
    for (const QPoint& p : rows) {
        QMouseEvent move(QEvent::MouseMove, QPointF(p), QPointF(menu->mapToGlobal(p)), Qt::NoButton, Qt::NoButton,
                         Qt::NoModifier);
        QCoreApplication::sendEvent(menu, &move);
        QCoreApplication::processEvents(); // paints what the move changed
    }
}

void BenchMenu::openFramework()
{
    QBENCHMARK {
        KMenuWidget* menu = _openFramework();
        QVERIFY(menu);
        menu->window()->close();
    }
}

void BenchMenu::openQMenu()
{
    QBENCHMARK {
        _openQMenu()->close();
    }
}

void BenchMenu::browseFramework()
{
    KMenuWidget* menu = _openFramework();
    QVERIFY(menu);
    const std::vector<QPoint> rows = _frameworkRows(menu);
    QCOMPARE(int(rows.size()), kRows);
    QBENCHMARK {
        _browse(menu, rows);
    }
    menu->window()->close();
}

void BenchMenu::browseQMenu()
{
    QMenu* menu = _openQMenu();
    const std::vector<QPoint> rows = _qmenuRows(menu);
    QBENCHMARK {
        _browse(menu, rows);
    }
    menu->close();
}

void BenchMenu::summary()
{
    std::vector<double> openK, openQ, browseK, browseQ;
    QElapsedTimer t;
    // Interleaved rounds, so that both sides see the same machine.
    for (int round = 0; round < kRounds; ++round) {
        t.start();
        KMenuWidget* menu = _openFramework();
        openK.push_back(t.nsecsElapsed() / 1e6);
        const std::vector<QPoint> rows = _frameworkRows(menu);
        t.start();
        _browse(menu, rows);
        browseK.push_back(t.nsecsElapsed() / 1e6);
        menu->window()->close();

        t.start();
        QMenu* plain = _openQMenu();
        openQ.push_back(t.nsecsElapsed() / 1e6);
        const std::vector<QPoint> plainRows = _qmenuRows(plain);
        t.start();
        _browse(plain, plainRows);
        browseQ.push_back(t.nsecsElapsed() / 1e6);
        plain->close();
    }
    // The first opening: the button makes its popup and menu, against a QMenu made and
    // filled for the occasion.
    std::vector<double> coldK, coldQ;
    for (int round = 0; round < kRounds; ++round) {
        delete m_button->findChild<KPopupWidget*>();
        t.start();
        KMenuWidget* menu = _openFramework();
        coldK.push_back(t.nsecsElapsed() / 1e6);
        menu->window()->close();

        QMenu* fresh = _copyOfQMenu();
        t.start();
        fresh->popup(m_plainButton->mapToGlobal(QPoint(0, m_plainButton->height())));
        PaintWatch watch;
        fresh->installEventFilter(&watch);
        processUntil([&] { return watch.painted; });
        coldQ.push_back(t.nsecsElapsed() / 1e6);
        fresh->close();
        delete fresh;
    }
    const double ck = median(coldK), cq = median(coldQ);
    std::printf("menu first opening (new popup), median of %d: framework %.3f ms, QMenu %.3f ms, ratio %.2f\n",
                kRounds, ck, cq, cq > 0 ? ck / cq : 0.0);

    const double ok = median(openK), oq = median(openQ), bk = median(browseK), bq = median(browseQ);
    std::printf("menu open (click to first paint), median of %d: framework %.3f ms, QMenu %.3f ms, ratio %.2f\n",
                kRounds, ok, oq, oq > 0 ? ok / oq : 0.0);
    std::printf("menu browse (%d rows, each painted), median of %d: framework %.3f ms, QMenu %.3f ms, ratio %.2f\n",
                kRows, kRounds, bk, bq, bq > 0 ? bk / bq : 0.0);

    // A long list: 1,000 rows open (scrolling, since they cannot fit) without a stall.
    KListCommand big(m_window, m_window);
    for (int i = 0; i < 1000; ++i) {
        auto* cmd = new KTriggerCommand(m_window, &big);
        cmd->setText(QStringLiteral("Row %1").arg(i));
        big.addSubCommand(cmd);
    }
    std::vector<double> openBig;
    for (int round = 0; round < 5; ++round) {
        t.start();
        auto* popup = new KPopupWidget(m_window, Qt::Popup);
        popup->setAttribute(Qt::WA_DeleteOnClose);
        auto* menu = qobject_cast<KMenuWidget*>(big.requestWidget(popup, KCommand::ExtendedPurpose));
        popup->setContentWidget(menu);
        popup->show(m_button, KPopupWidget::getWidgetGlobalBottomLeftPos(m_button));
        PaintWatch watch;
        menu->installEventFilter(&watch);
        processUntil([&] { return watch.painted; });
        openBig.push_back(t.nsecsElapsed() / 1e6);
        popup->close();
    }
    std::printf("menu of 1000 rows (scrolls), open to first paint, median of 5: %.3f ms\n", median(openBig));
    std::fflush(stdout);
}

int main(int argc, char** argv)
{
    KApplication app(argc, argv);
    BenchMenu bench;
    return QTest::qExec(&bench, argc, argv);
}

#include "bench_menu.moc"
