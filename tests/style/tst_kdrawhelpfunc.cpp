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
    void arrowsAndTiles();
    void buttonStateColours();
    void smallHelpers();

private:
    QTemporaryDir m_dir;
};

void tst_KDrawHelpFunc::initTestCase()
{
    // The drop-down mark's first and last pixel colours.
    const QByteArray arrows = "<color name='downarrowr0' value='#0a0a0a'/><color name='downarrowr8' value='#5a5a5a'/>";
    const QString path = KTestSupport::writeFile(m_dir.filePath("t.xml"),
        "<r><theme>"
        "<style class='theme'><color name='theme1' value='#336699'/></style>"
        "<style class='common'><color name='text' value='#102030'/></style>"
        "<style class='arrow'><color name='arrow-enable' value='#0000ff'/><color name='arrow-disable' value='#808080'/>"
        + arrows + "</style>"
        "<style class='KRbQuickToolbarArrowButton'>"
        "<color name='border' value='#000001'/><color name='border-disable' value='#000002'/>"
        "<color name='border-down' value='#000003'/><color name='background' value='#000005'/>"
        "<color name='background-disable' value='#000006'/>"
        "<linearGradient name='background-down'><color position='0' value='#000007'/></linearGradient></style>"
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
    QVERIFY(x > 0);
    QVERIFY(star <= x);
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
    QTest::newRow("6 unchanged") << 6 << 7 << 0 << QPoint(100, 50);
    QTest::newRow("1") << 1 << 7 << 0 << QPoint(120, 41);
    QTest::newRow("4 one offset") << 4 << 5 << 0 << QPoint(127, 57);
    QTest::newRow("4 two offsets") << 4 << 5 << 11 << QPoint(127, 51);
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
    QTest::newRow("9") << "" << 9 << "9";
    QTest::newRow("10") << "" << 10 << "01";
    QTest::newRow("19") << "" << 19 << "0A";
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

void tst_KDrawHelpFunc::arrowsAndTiles()
{
    using KTestSupport::paint;
    const auto has = [](const QImage& image, const QColor& colour) {
        return KTestSupport::anyPixel(image, [&](const QColor& c) { return c == colour; });
    };
    // The small drop-down mark takes its pixels' colours from the theme.
    QImage image = paint(QSize(10, 10), [](QPainter& p) { KDrawHelpFunc::drawDownArraw(p, QRect(2, 3, 4, 2), true); });
    QVERIFY(has(image, QColor(10, 10, 10)));
    QVERIFY(has(image, QColor(90, 90, 90)));
    // Larger arrows: a triangle in "arrow"/"arrow-enable" or "-disable".
    image = paint(QSize(10, 10), [](QPainter& p) { KDrawHelpFunc::drawRightArraw(p, QRect(1, 1, 8, 8), true); });
    QVERIFY(has(image, QColor(0, 0, 255)));
    image = paint(QSize(10, 10), [](QPainter& p) { KDrawHelpFunc::drawUpArraw(p, QRect(1, 1, 8, 8), false); });
    QVERIFY(has(image, QColor(0x80, 0x80, 0x80)));
    // The checked rectangle fills with "button"/"background-down".
    image = paint(QSize(10, 10), [](QPainter& p) { KDrawHelpFunc::drawCheckedRect(p, QRect(0, 0, 10, 10), 2); });
    QCOMPARE(image.pixelColor(5, 5), QColor(0, 255, 0));
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
    button.setEnabled(false);
    QCOMPARE(colours(), qMakePair(QString("#000002"), QString("#000006")));
}

void tst_KDrawHelpFunc::smallHelpers()
{
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
