#include <ktestsupport.h>

#include <QSpacerItem>
#include <QWidget>

#include <kstatusbarlayout.h>

namespace {
// A status item whose hint and minimum widths the test decides; both 20 high.
class FixedItem : public QWidget
{
public:
    FixedItem(int hint, int minimum, QWidget* parent)
        : QWidget(parent), m_hint(hint), m_minimum(minimum) {}
    QSize sizeHint() const override { return QSize(m_hint, 20); }
    QSize minimumSizeHint() const override { return QSize(m_minimum, 20); }

private:
    int m_hint;
    int m_minimum;
};

// A separator 4 wide (its hint is also its minimum: the width is fixed).
class FixedSeparator : public KStatusBarSeparator
{
public:
    using KStatusBarSeparator::KStatusBarSeparator;
    QSize sizeHint() const override { return QSize(4, 22); }
};
}

// The status bar's row: widths in, positions out. Items are written "name:hint/minimum",
// "|" for a separator and "~" for the stretch; the result lists each widget as
// "name:x+width", or "name:-" when it was hidden.
class tst_KStatusBarLayout : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void layout_data();
    void layout();
    void itemsAreCentredVertically();
    void neverForcesTheWindowWidth();
    void keepsInsideTheMargins();
};

void tst_KStatusBarLayout::layout_data()
{
    QTest::addColumn<QString>("items");
    QTest::addColumn<int>("width");
    QTest::addColumn<QString>("expected");
    QTest::addColumn<int>("lastStrech");

    // Hints 140 in 200: the left half from 0, the right half against the right edge.
    QTest::newRow("fits") << "a:50/10 b:30/10 ~ c:40/10 d:20/10" << 200
                          << "a:0+50 b:50+30 c:140+40 d:180+20" << 140;
    // Hints 140 in 120: excess 20 over 5 items, 4 each; b then gets only the 22 left to x.
    QTest::newRow("squeezed") << "a:50/10 b:30/10 ~ c:40/10 d:20/10" << 120
                              << "a:0+46 b:46+22 c:68+36 d:104+16" << 68;
    // Minimums 90 in 80: excess 40 over 4, 10 each; c keeps 30 at 50..80, a takes 40 and
    // b (30 at least, 10 left) goes.
    QTest::newRow("left item hidden") << "a:50/30 b:30/30 ~ c:40/30" << 80
                                      << "a:0+40 b:- c:50+30" << 50;
    // Excess 70 over 4, 17 each, but c and d can't go below 60: d takes 40..100, c would
    // start below 0 and is hidden; a gets 33 of the 40 ahead.
    QTest::newRow("right item hidden below 0") << "a:50/30 ~ c:60/60 d:60/60" << 100
                                               << "a:0+33 c:- d:40+60" << 40;
    // Of two separators side by side only the one nearer the edge stays.
    QTest::newRow("double separator") << "a:40/10 | ~ c:30/10 | | d:30/10" << 200
                                      << "a:0+40 |0:40+4 c:136+30 |1:- |2:166+4 d:170+30"
                                      << 136;
    // No stretch: everything is the left half.
    QTest::newRow("no stretch") << "a:30/10 b:30/10" << 100 << "a:0+30 b:30+30" << 100;
    // Only a right half: nothing left of it.
    QTest::newRow("only right half") << "~ c:30/10" << 100 << "c:70+30" << 70;
    // An empty bar.
    QTest::newRow("empty") << "" << 100 << "" << 100;
}

void tst_KStatusBarLayout::layout()
{
    QFETCH(QString, items);
    QFETCH(int, width);
    QFETCH(QString, expected);
    QFETCH(int, lastStrech);

    QWidget host;
    auto* layout = new KStatusBarLayout(&host);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->setSpacing(0);
    QList<QPair<QString, QWidget*>> widgets;
    int separators = 0;
    for (const QString& item : items.split(QLatin1Char(' '), Qt::SkipEmptyParts)) {
        if (item == QLatin1String("~")) {
            layout->addStretch(0);
        } else if (item == QLatin1String("|")) {
            auto* sep = new FixedSeparator(&host);
            layout->addWidget(sep);
            widgets.append({QStringLiteral("|%1").arg(separators++), sep});
        } else {
            const QStringList parts = item.split(QLatin1Char(':'));
            const QStringList sizes = parts.at(1).split(QLatin1Char('/'));
            auto* item = new FixedItem(sizes.at(0).toInt(), sizes.at(1).toInt(), &host);
            layout->addWidget(item);
            widgets.append({parts.at(0), item});
        }
    }

    layout->setGeometry(QRect(0, 0, width, 24));

    QStringList placed;
    for (const auto& entry : widgets) {
        const QRect g = entry.second->geometry();
        placed << (g.width() > 0 ? QStringLiteral("%1:%2+%3").arg(entry.first).arg(g.x()).arg(g.width())
                                 : QStringLiteral("%1:-").arg(entry.first));
    }
    QCOMPARE(placed.join(QLatin1Char(' ')), expected);
    QCOMPARE(layout->getLastStrechPos(), lastStrech);
}

void tst_KStatusBarLayout::itemsAreCentredVertically()
{
    QWidget host;
    auto* layout = new KStatusBarLayout(&host);
    layout->setContentsMargins(0, 0, 0, 0);
    auto* item = new FixedItem(30, 10, &host);
    auto* sep = new FixedSeparator(&host);
    layout->addWidget(item);
    layout->addWidget(sep);
    layout->setGeometry(QRect(0, 0, 100, 30));
    QCOMPARE(item->geometry().y(), 5);
    QCOMPARE(item->geometry().height(), 20);
    QCOMPARE(sep->geometry().y(), 4);
}

void tst_KStatusBarLayout::neverForcesTheWindowWidth()
{
    QWidget host;
    auto* layout = new KStatusBarLayout(&host);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->addWidget(new FixedItem(300, 200, &host));
    QCOMPARE(layout->minimumSize().width(), 0);
    QCOMPARE(host.minimumSizeHint().width(), 0);
}

void tst_KStatusBarLayout::keepsInsideTheMargins()
{
    QWidget host;
    auto* layout = new KStatusBarLayout(&host);
    layout->setContentsMargins(0, 0, 0, 0);
    auto* left = new FixedItem(30, 10, &host);
    auto* right = new FixedItem(20, 10, &host);
    layout->addWidget(left);
    layout->addStretch(0);
    layout->addWidget(right);
    layout->setContentsMargins(2, 1, 3, 1);
    layout->setGeometry(QRect(10, 3, 105, 26));
    QCOMPARE(left->geometry().x(), 12);
    QCOMPARE(left->geometry().y(), 6);
    QCOMPARE(right->geometry().x(), 92);
    QCOMPARE(layout->getLastStrechPos(), 80);
}

NORVIK_TEST_MAIN(tst_KStatusBarLayout)
#include "tst_kstatusbarlayout.moc"
