// The shared painting helpers: text shortening, key-tip placement and labels, outlines,
// theme-coloured arrows and state colours.
#include <ktestsupport.h>

#include <QPainter>
#include <QTemporaryDir>
#include <QToolButton>

#include <kapptheme.h>
#include <kdrawhelpfunc.h>

class tst_KDrawHelpFunc : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void initTestCase();
    void cleanupTestCase();
    void getDrawString_data();
    void getDrawString();
    void modifyHotkeyPos_data();
    void modifyHotkeyPos();
    void autoIndexLabels_data();
    void autoIndexLabels();
    void outlines();
    void arrowsAndTiles();
    void buttonStateColours();
    void smallHelpers();

private:
    QTemporaryDir m_dir;
};

void tst_KDrawHelpFunc::initTestCase()
{
    QByteArray arrows;
    for (int i = 0; i < 9; ++i)
        arrows += QStringLiteral("<color name='downarrowr%1' value='#%2%2%2'/>")
                      .arg(i)
                      .arg(i * 10 + 10, 2, 16, QLatin1Char('0'))
                      .toUtf8();
    const QString path = KTestSupport::writeFile(m_dir.filePath("t.xml"),
        "<r><theme>"
        "<style class='theme'><color name='theme1' value='#336699'/></style>"
        "<style class='common'><color name='text' value='#102030'/><color name='spread' value='#ff0000'/></style>"
        "<style class='arrow'><color name='arrow-enable' value='#0000ff'/><color name='arrow-disable' value='#808080'/>"
        + arrows + "</style>"
        "<style class='KRbQuickToolbarArrowButton'>"
        "<color name='border' value='#000001'/><color name='border-disable' value='#000002'/>"
        "<color name='border-down' value='#000003'/><color name='border-hover' value='#000004'/>"
        "<color name='background' value='#000005'/><color name='background-disable' value='#000006'/>"
        "<linearGradient name='background-down'><color position='0' value='#000007'/></linearGradient>"
        "<linearGradient name='background-hover'><color position='0' value='#000008'/></linearGradient>"
        "</style>"
        "<style class='button'><color name='border-down' value='#00ff00'/>"
        "<linearGradient name='background-down' start='0,0' end='0,1'><color position='0' value='#00ff00'/>"
        "<color position='1' value='#00ff00'/></linearGradient></style>"
        "</theme></r>");
    QVERIFY(KTestSupport::loadTheme(path));
    KApplication::instance()->theme()->setBaseColor(QColor("#336699"), false);
}

void tst_KDrawHelpFunc::cleanupTestCase()
{
    KApplication::instance()->theme()->resetXml();
}

void tst_KDrawHelpFunc::getDrawString_data()
{
    QTest::addColumn<QString>("text");
    QTest::addColumn<int>("width");     // the width of that many "x"
    QTest::addColumn<QString>("suffix");
    QTest::addColumn<QString>("expected");
    QTest::newRow("fits") << "xxxx" << 4 << "" << "xxxx";
    QTest::newRow("halved once") << "xxxxxxxx" << 5 << "" << "xxxx...";
    QTest::newRow("halved twice") << "xxxxxxxx" << 3 << "" << "xx...";
    QTest::newRow("suffix counts once shortened") << "xxxxxxxx" << 5 << "xx" << "xx...";
    QTest::newRow("changed mark kept") << "xxxxxxx*" << 5 << "" << "xxxx...*";
    QTest::newRow("one character stays") << "x" << 0 << "" << "x";
    QTest::newRow("never below one") << "xxxx" << 0 << "" << "x...";
}

void tst_KDrawHelpFunc::getDrawString()
{
    QFETCH(QString, text);
    QFETCH(int, width);
    QFETCH(QString, suffix);
    QFETCH(QString, expected);
    QFont font;
    font.setFamily("Monospace");
    font.setStyleHint(QFont::TypeWriter);
    const QFontMetrics metrics(font);
    const int x = metrics.horizontalAdvance(QLatin1Char('x'));
    const int star = metrics.horizontalAdvance(QLatin1Char('*'));
    QVERIFY(x > 0 && star <= x);
    const int pixels = metrics.horizontalAdvance(QString(width, QLatin1Char('x')));
    QCOMPARE(KDrawHelpFunc::getDrawString(text, metrics, QRect(0, 0, pixels, 10), suffix), expected);
}

void tst_KDrawHelpFunc::modifyHotkeyPos_data()
{
    QTest::addColumn<int>("alignment");
    QTest::addColumn<int>("offset");
    QTest::addColumn<int>("offset2");
    QTest::addColumn<QPoint>("expected");
    // From (100, 50) over a 40 x 20 rectangle.
    QTest::newRow("0 unchanged") << 0 << 7 << 0 << QPoint(100, 50);
    QTest::newRow("6 unchanged") << 6 << 7 << 0 << QPoint(100, 50);
    QTest::newRow("1") << 1 << 7 << 0 << QPoint(120, 41);
    QTest::newRow("2") << 2 << 8 << 0 << QPoint(120, 62);
    QTest::newRow("3") << 3 << 8 << 0 << QPoint(132, 42);
    QTest::newRow("4 one offset") << 4 << 5 << 0 << QPoint(127, 57);
    QTest::newRow("4 two offsets") << 4 << 5 << 11 << QPoint(127, 51);
    QTest::newRow("5") << 5 << 3 << 0 << QPoint(120, 60);
}

void tst_KDrawHelpFunc::modifyHotkeyPos()
{
    QFETCH(int, alignment);
    QFETCH(int, offset);
    QFETCH(int, offset2);
    QFETCH(QPoint, expected);
    QCOMPARE(KDrawHelpFunc::modifyHotkeyPos(QPoint(100, 50), QSize(40, 20), alignment, offset, offset2), expected);
}

void tst_KDrawHelpFunc::autoIndexLabels_data()
{
    QTest::addColumn<QString>("start");
    QTest::addColumn<int>("index");
    QTest::addColumn<QString>("expected");
    QTest::newRow("1") << "" << 1 << "1";
    QTest::newRow("9") << "" << 9 << "9";
    QTest::newRow("10") << "" << 10 << "01";
    QTest::newRow("18") << "" << 18 << "09";
    QTest::newRow("19") << "" << 19 << "0A";
    QTest::newRow("43") << "" << 43 << "0Y";
    QTest::newRow("44") << "" << 44 << "001";
    QTest::newRow("appends") << "K" << 3 << "K3";
    QTest::newRow("letters after text") << "K" << 10 << "KA";
}

void tst_KDrawHelpFunc::autoIndexLabels()
{
    QFETCH(QString, start);
    QFETCH(int, index);
    QFETCH(QString, expected);
    QString text = start;
    KDrawHelpFunc::getStringFromAutoIndex(text, index);
    QCOMPARE(text, expected);
}

void tst_KDrawHelpFunc::outlines()
{
    const QRect r(10, 20, 40, 30);
    // Rounded where the mask says: a rounded corner leaves its very corner point outside.
    const QPainterPath topLeftOnly = KDrawHelpFunc::getBoundPath(r, 6, 1);
    QVERIFY(!topLeftOnly.contains(QPointF(10.5, 20.5)));
    QVERIFY(topLeftOnly.contains(QPointF(49.5, 20.5)));
    QVERIFY(topLeftOnly.contains(QPointF(49.5, 49.5)));
    QCOMPARE(topLeftOnly.boundingRect(), QRectF(r));
    const QPainterPath all = KDrawHelpFunc::getBoundPath2(r, 6);
    QVERIFY(!all.contains(QPointF(49.5, 49.5)));
    QVERIFY(all.contains(QPointF(30, 35)));
    // One-pixel steps.
    const QPainterPath cut = KDrawHelpFunc::getBoundPath2(r);
    QVERIFY(cut.elementCount() >= 9);
    QVERIFY(!cut.contains(QPointF(10.2, 20.2)));
    const QPainterPath cutTop = KDrawHelpFunc::getBoundPath4(r, 1 | 2);
    QVERIFY(cutTop.contains(QPointF(10.2, 49.8)));
    // The popup outline is four separate lines.
    const QPainterPath popup = KDrawHelpFunc::getPopupWidgetBoundPath(r);
    int moves = 0;
    for (int i = 0; i < popup.elementCount(); ++i)
        moves += popup.elementAt(i).isMoveTo() ? 1 : 0;
    QCOMPARE(moves, 4);
    // Open bottom outline: starts and ends at the top edge.
    const QPainterPath bottom = KDrawHelpFunc::getBoundPath3(r, 4);
    QCOMPARE(bottom.elementAt(0).y, 20.0);
    QCOMPARE(bottom.currentPosition().y(), 20.0);
    QCOMPARE(KDrawHelpFunc::squareCornerRect(QRect(0, 0, 10, 10), 2).size(), 12);
    QCOMPARE(KDrawHelpFunc::rotateMargins90(QMargins(1, 2, 3, 4)), QMargins(2, 1, 4, 3));
    const QLinearGradient turned = KDrawHelpFunc::rotateLinearGradient90(QLinearGradient(0, 0, 0, 1));
    QCOMPARE(turned.finalStop(), QPointF(1, 0));
}

void tst_KDrawHelpFunc::arrowsAndTiles()
{
    using KTestSupport::paint;
    // The small drop-down mark: nine pixels, each in its own theme colour.
    QImage image = paint(QSize(10, 10), [](QPainter& p) { KDrawHelpFunc::drawDownArraw(p, QRect(2, 3, 4, 2), true); });
    const QList<QPoint> pixels = {{2, 3}, {3, 3}, {4, 3}, {5, 3}, {6, 3}, {3, 4}, {4, 4}, {5, 4}, {4, 5}};
    for (int i = 0; i < pixels.size(); ++i)
        QCOMPARE(image.pixelColor(pixels.at(i)), QColor(i * 10 + 10, i * 10 + 10, i * 10 + 10));
    QCOMPARE(image.pixelColor(2, 4), QColor(Qt::white));

    // Larger arrows: a triangle in "arrow"/"arrow-enable" or "-disable".
    image = paint(QSize(10, 10), [](QPainter& p) { KDrawHelpFunc::drawRightArraw(p, QRect(1, 1, 8, 8), true); });
    QCOMPARE(image.pixelColor(3, 5), QColor(0, 0, 255));
    QCOMPARE(image.pixelColor(8, 1), QColor(Qt::white));
    image = paint(QSize(10, 10), [](QPainter& p) { KDrawHelpFunc::drawUpArraw(p, QRect(1, 1, 8, 8), false); });
    QCOMPARE(image.pixelColor(5, 7), QColor(0x80, 0x80, 0x80));

    const QImage tile = KDrawHelpFunc::getburelage(QColor(Qt::white)).toImage();
    QCOMPARE(tile.size(), QSize(4, 4));
    QCOMPARE(tile.pixelColor(1, 0), QColor(Qt::red));
    QCOMPARE(tile.pixelColor(0, 0), QColor(Qt::white));

    // The checked rectangle fills with "button"/"background-down".
    image = paint(QSize(10, 10), [](QPainter& p) { KDrawHelpFunc::drawCheckedRect(p, QRect(0, 0, 10, 10), 2); });
    QCOMPARE(image.pixelColor(5, 5), QColor(0, 255, 0));

    // Shadow text: the text in black over its red shadow one pixel down and right.
    image = paint(QSize(60, 30), [](QPainter& p) {
        QFont big = p.font();
        big.setPixelSize(20);
        big.setBold(true);
        p.setFont(big);
        KDrawHelpFunc::drawShadowText(p, "HH", QRect(0, 0, 60, 30), Qt::AlignCenter, Qt::black, Qt::red);
    });
    QVERIFY(KTestSupport::anyPixel(image, [](const QColor& c) { return c.red() - c.green() > 100; }));
    QVERIFY(KTestSupport::anyPixel(image, [](const QColor& c) { return c.red() < 60 && c.green() < 60 && c.blue() < 60; }));
}

void tst_KDrawHelpFunc::buttonStateColours()
{
    // Border and background per state; disabled wins over every other state.
    const QString cls = QStringLiteral("KRbQuickToolbarArrowButton");
    QToolButton button;
    const auto colours = [&] {
        const QBrush bg = KDrawHelpFunc::getButtonBackground(cls, &button);
        return qMakePair(KDrawHelpFunc::getButtonBoardColor(cls, &button).name(),
                         (bg.gradient() ? bg.gradient()->stops().first().second : bg.color()).name());
    };
    QCOMPARE(colours(), qMakePair(QString("#000001"), QString("#000005")));
    button.setDown(true);
    QCOMPARE(colours(), qMakePair(QString("#000003"), QString("#000007")));
    button.setDown(false);
    button.setAttribute(Qt::WA_UnderMouse);
    QCOMPARE(colours(), qMakePair(QString("#000004"), QString("#000008")));
    button.setEnabled(false);
    QCOMPARE(colours(), qMakePair(QString("#000002"), QString("#000006")));
}

void tst_KDrawHelpFunc::smallHelpers()
{
    QCOMPARE(KDrawHelpFunc::getScrollStyleName("slider-deep"), QStringLiteral("-deep"));
    QCOMPARE(KDrawHelpFunc::getScrollStyleName("slider"), QString());
    QCOMPARE(KDrawHelpFunc::getClassicHotKeyShowPos(), QPoint(-1, -1));
    QCOMPARE(KDrawHelpFunc::getBaseColor(), QColor("#336699"));
    const QColor shifted = KDrawHelpFunc::getColorByDsDv(-20, 10);
    QCOMPARE(shifted.hsvSaturation(), QColor("#336699").hsvSaturation() - 20);
    QCOMPARE(shifted.value(), QColor("#336699").value() + 10);

    QWidget window;
    QWidget child(&window);
    child.move(30, 12);
    QCOMPARE(KDrawHelpFunc::getHotKeyShowPos(&child, QSize(20, 10), -1, -1), QPoint(30, 12));
    QCOMPARE(KDrawHelpFunc::getHotKeyShowPos(&child, QSize(20, 10), 5, 0), QPoint(40, 17));
    QCOMPARE(KDrawHelpFunc::getHotKeyShowPos(nullptr, QSize(20, 10), 5, 0), QPoint(0, 0));

    // Plain text in "common"/"text" (#102030).
    const QImage text = KTestSupport::paint(QSize(40, 20), [](QPainter& p) { KDrawHelpFunc::drawText(p, QRect(0, 0, 40, 20), "HHH"); });
    QVERIFY(KTestSupport::anyPixel(text, [](const QColor& c) { return c.red() < 128 && c.blue() - c.red() >= 24; }));
}

NORVIK_TEST_MAIN(tst_KDrawHelpFunc)
#include "tst_kdrawhelpfunc.moc"
