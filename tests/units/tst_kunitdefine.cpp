// The unit definitions: families, the packet of families and a control's offer, with the
// conversions, typed text and formatting built on them. Expected numbers are worked out from
// the conversion rule (x - offset_from) / ratio_from * ratio_to + offset_to and the table's
// ratios (pt 1, in 0.013889, cm 0.0352778, mm 0.352778).
#include <ktestsupport.h>

#include <QRandomGenerator>
#include <QSignalSpy>
#include <cmath>
#include <limits>

#include <kunitdefine.h>
#include <kunitfamily.h>
#include <kunitpacket.h>
#include <kunitrendering.h>

namespace {

// The offer of a paragraph dialog: lengths in cm (the default), characters, lines,
// percentages and degrees, with rules cm -> ch, line -> pt and % -> degree (with an offset).
void fillParagraphDefine(KUnitDefine& define)
{
    define.Add(QStringLiteral("cm,2,55.88,0,0.1"));
    define.Add(QStringLiteral("ch,1,100,0,0.5"));
    define.Add(QStringLiteral("line,2,10,0,0.5"));
    define.Add(QStringLiteral("%,0,500,0,1"));
    define.Add(QStringLiteral("degree,0,360,0,1"));
    define.AddConvertTo(QStringLiteral("cm,ch,0.5"));
    define.AddConvertTo(QStringLiteral("line, pt, 12"));
    define.AddConvertTo(QStringLiteral("%,degree,2,10"));
}

QLocale localeNamed(const QString& name)
{
    return name == QLatin1String("C") ? QLocale::c() : QLocale(name);
}

} // namespace

class tst_KUnitDefine : public QObject
{
    Q_OBJECT
private Q_SLOTS:
    void packetTable();
    void packetLoadAndLookups();
    void familyLoadUnits_data();
    void familyLoadUnits();
    void familyEditing();
    void familyConvert_data();
    void familyConvert();
    void defineRecordsFromText();
    void defineConvert_data();
    void defineConvert();
    void convertToRules();
    void defaultUnitAndFavourite();
    void parseText_data();
    void parseText();
    void splitTextKeepsTheUnitText();
    void formatValue_data();
    void formatValue();
    void parseFormatRoundTrip();
};

void tst_KUnitDefine::packetTable()
{
    KUnitPacket* packet = KUnitPacket::getInstance();
    QVERIFY(packet->loaded());
    QCOMPARE(packet->GetCount(), 7);
    QStringList names;
    for (int i = 0; i < packet->GetCount(); ++i)
        names << packet->GetItem(i)->name();
    QCOMPARE(names, QStringList({"Device", "Percentage", "Character", "Degree", "Row", "Auto", "Multiple"}));
    KUnitFamily* device = packet->First();
    QCOMPARE(device->objectName(), QString("Device"));
    QStringList lines;
    device->SaveUnits(&lines);
    QCOMPARE(lines, QStringList({"pt=1,0", "in=0.013889,0", "cm=0.0352778,0", "mm=0.352778,0"}));
    QCOMPARE(packet->Last()->GetUnitNames(), QStringList({"multiple"}));
    // The same packet every time; a second call doesn't load again.
    QSignalSpy changes(packet, &KUnitPacket::changed);
    QCOMPARE(KUnitPacket::getInstance(), packet);
    QCOMPARE(changes.count(), 0);
}

void tst_KUnitDefine::packetLoadAndLookups()
{
    KUnitPacket packet;
    QVERIFY(!packet.loaded());
    QVERIFY(packet.LoadUnitsPacket(KUnitPacket::unitsTable()));
    QVERIFY(packet.loaded());

    int unit = 99;
    QCOMPARE(packet.LocateUnit("mm", &unit), 0);
    QCOMPARE(unit, 3);
    QCOMPARE(packet.FindUnit("line"), packet.FindItem("Row"));
    QCOMPARE(packet.LocateUnit("px", &unit), -1);
    QCOMPARE(unit, -1);
    QVERIFY(!packet.FindUnit("px"));
    QCOMPARE(packet.LocateItem("Degree"), 3);
    QVERIFY(!packet.GetItem(7));
    QVERIFY(!packet.GetItem(-1));

    // A second load replaces the units of a family it names and keeps the others; blocks
    // without a bracketed name make no family.
    KUnitFamily* device = packet.FindItem("Device");
    QVERIFY(packet.LoadUnitsPacket("[Device]\npt=\nin=2\n\nNoBrackets\na=1\n\n[]\nb=1\n\n[Extra]\nx=3"));
    QCOMPARE(packet.FindItem("Device"), device);
    QCOMPARE(device->GetUnitNames(), QStringList({"pt", "in"}));
    QCOMPARE(packet.GetCount(), 8);
    QCOMPARE(packet.Last()->name(), QString("Extra"));
    QCOMPARE(packet.AddItem("Extra"), packet.Last());

    // Families handed in are owned; one put in place of another deletes that one.
    auto* own = new KUnitFamily("Own");
    QCOMPARE(packet.AddItem(own), 8);
    QVERIFY(packet.Insert(0, new KUnitFamily("Front")));
    QCOMPARE(packet.First()->name(), QString("Front"));
    QPointer<KUnitFamily> replaced = packet.GetItem(1);
    QVERIFY(packet.SetItem(1, new KUnitFamily("Device2")));
    QVERIFY(replaced.isNull());
    QVERIFY(!packet.SetItem(42, own));
    QCOMPARE(packet.AddItem(static_cast<KUnitFamily*>(nullptr)), -1);
}

void tst_KUnitDefine::familyLoadUnits_data()
{
    QTest::addColumn<QString>("text");
    QTest::addColumn<QStringList>("saved");

    QTest::newRow("ratio and offset") << "a=2,3" << QStringList{"a=2,3"};
    QTest::newRow("empty ratio is 1") << "a=" << QStringList{"a=1,0"};
    QTest::newRow("no offset") << "a=0.5" << QStringList{"a=0.5,0"};
    QTest::newRow("negative offset clamped") << "a=2,-3" << QStringList{"a=2,0"};
    QTest::newRow("zero ratio is 1") << "a=0,5" << QStringList{"a=1,5"};
    QTest::newRow("unreadable ratio is 1") << "a=x" << QStringList{"a=1,0"};
    QTest::newRow("negative ratio kept") << "a=-2" << QStringList{"a=-2,0"};
    QTest::newRow("two equals signs skipped") << "a=b=2\nc=3" << QStringList{"c=3,0"};
    QTest::newRow("no equals sign skipped") << "abc\nd=4" << QStringList{"d=4,0"};
    QTest::newRow("empty name refused") << "=2\ne=1" << QStringList{"e=1,0"};
    QTest::newRow("not a number refused") << "a=nan\nb=inf\nc=1" << QStringList{"c=1,0"};
    QTest::newRow("repeated name replaces") << "a=2\nb=3\na=4" << QStringList{"a=4,0", "b=3,0"};
    QTest::newRow("empty lines") << "\n\na=2\n\n" << QStringList{"a=2,0"};
}

void tst_KUnitDefine::familyLoadUnits()
{
    QFETCH(QString, text);
    QFETCH(QStringList, saved);
    KUnitFamily family("F");
    family.Add("old", 3); // a load replaces what was there
    family.LoadUnits(text);
    QStringList lines;
    family.SaveUnits(&lines);
    QCOMPARE(lines, saved);
    QString joined;
    family.SaveUnits(&joined);
    QCOMPARE(joined, saved.join('\n'));
}

void tst_KUnitDefine::familyEditing()
{
    KUnitFamily family("F");
    QSignalSpy changes(&family, &KUnitFamily::changed);
    QCOMPARE(family.Add("pt", 0, 0), -1);
    QCOMPARE(changes.count(), 0);
    QCOMPARE(family.Add("a", 1), 0);
    QCOMPARE(family.Add("b", 2, 1), 1);
    QCOMPARE(family.Insert(0, "c", 4), 0);
    QCOMPARE(family.Insert(99, "d", 5), 3);
    QCOMPARE(family.GetUnitNames(), QStringList({"c", "a", "b", "d"}));
    // An existing name keeps its place and takes the new numbers.
    QCOMPARE(family.Insert(0, "b", 7, 2), 2);
    QCOMPARE(family.GetUnit(2)->ratio, 7.0);
    QCOMPARE(family.GetUnit(2)->offset, 2.0);
    QCOMPARE(changes.count(), 5);

    QVERIFY(family.Exchange(0, 3));
    QCOMPARE(family.GetUnitNames(), QStringList({"d", "a", "b", "c"}));
    QVERIFY(!family.Exchange(0, 4));
    QVERIFY(family.Remove("a"));
    QVERIFY(!family.Remove("a"));
    QVERIFY(family.Remove(0));
    QVERIFY(!family.Remove(5));
    QVERIFY(!family.GetUnit(-1));
    QString items;
    family.SaveItems(&items);
    QCOMPARE(items, QString("b\nc"));
    family.Clear();
    QCOMPARE(family.GetCount(), 0);
    QCOMPARE(changes.count(), 9);
}

void tst_KUnitDefine::familyConvert_data()
{
    QTest::addColumn<QString>("family"); // "Device" from the table, or "Temp": C; F 1.8,32; K 1,273.15
    QTest::addColumn<double>("x");
    QTest::addColumn<QString>("from");
    QTest::addColumn<QString>("to");
    QTest::addColumn<double>("expected");

    QTest::newRow("72 pt in in, short by design") << "Device" << 72.0 << "pt" << "in" << 1.000008;
    QTest::newRow("1 in in pt") << "Device" << 1.0 << "in" << "pt" << 71.99942400460796;
    QTest::newRow("2.54 cm in mm") << "Device" << 2.54 << "cm" << "mm" << 25.4;
    QTest::newRow("2.54 cm in in") << "Device" << 2.54 << "cm" << "in" << 1.0000073700740977;
    QTest::newRow("10 mm in pt") << "Device" << 10.0 << "mm" << "pt" << 28.34643883688892;
    QTest::newRow("negative") << "Device" << -36.0 << "pt" << "in" << -0.500004;
    QTest::newRow("same unit") << "Device" << 5.0 << "cm" << "cm" << 5.0;
    QTest::newRow("unknown unit gives 0") << "Device" << 5.0 << "px" << "cm" << 0.0;
    QTest::newRow("offset forward") << "Temp" << 100.0 << "C" << "F" << 212.0;
    QTest::newRow("offset backward") << "Temp" << 212.0 << "F" << "C" << 100.0;
    QTest::newRow("offset on both sides") << "Temp" << 212.0 << "F" << "K" << 373.15;
}

void tst_KUnitDefine::familyConvert()
{
    QFETCH(QString, family);
    QFETCH(double, x);
    QFETCH(QString, from);
    QFETCH(QString, to);
    QFETCH(double, expected);
    KUnitFamily temp("Temp");
    temp.LoadUnits(QStringLiteral("C=\nF=1.8,32\nK=1,273.15"));
    const KUnitFamily* f = family == QLatin1String("Temp") ? &temp : KUnitPacket::getInstance()->FindItem(family);
    QVERIFY(f);
    QCOMPARE(f->Convert(x, from, to), expected);
}

void tst_KUnitDefine::defineRecordsFromText()
{
    KUnitDefine define;
    QCOMPARE(define.GetDefUnitIndex(), -1);
    QVERIFY(!define.GetDefUnitDefine());
    QCOMPARE(define.Add(" in , 2 , 22 , -1.5 , 0.25 "), 0);
    const UnitDefineRec* rec = define.GetUnitDefine(0);
    QCOMPARE(rec->unit, QString("in"));
    QCOMPARE(rec->family, KUnitPacket::getInstance()->FindItem("Device"));
    QCOMPARE(rec->decimal, 2);
    QCOMPARE(rec->maximum, 22.0);
    QCOMPARE(rec->minimum, -1.5);
    QCOMPARE(rec->step, 0.25);
    QCOMPARE(define.GetDefUnitIndex(), 0);

    // Fewer than five fields: an empty record, still added, with no family.
    QCOMPARE(define.Add("cm,2,100"), 1);
    const UnitDefineRec* empty = define.GetUnitDefine(1);
    QVERIFY(empty->unit.isEmpty());
    QVERIFY(!empty->family);
    QCOMPARE(empty->maximum, 0.0);
    // A unit no family holds is kept, without a family.
    define.Add("px,0,10,0,1");
    QVERIFY(!define.GetUnitDefine(2)->family);
    QCOMPARE(define.LocateUnit("px"), -1);

    QCOMPARE(define.AddConvertTo("cm,ch"), 0);
    QCOMPARE(define.GetConvertTo(0)->ratio, 1.0);
    QVERIFY(define.GetConvertTo(0)->from.isEmpty());
    define.AddConvertTo(" cm , ch , 0.5 , 3 ");
    QCOMPARE(define.GetConvertTo(1)->to, QString("ch"));
    QCOMPARE(define.GetConvertTo(1)->offset, 3.0);
    define.AddConvertTo("cm,ch,zero");
    QCOMPARE(define.GetConvertTo(2)->ratio, 1.0); // unreadable: not given
    QCOMPARE(define.ConverttoCount(), 3);
    define.ClearConvertTos();
    QCOMPARE(define.ConverttoCount(), 0);
    define.Clear();
    QCOMPARE(define.Count(), 0);
    QCOMPARE(define.GetDefUnitIndex(), -1);
}

void tst_KUnitDefine::defineConvert_data()
{
    QTest::addColumn<double>("x");
    QTest::addColumn<QString>("from");
    QTest::addColumn<QString>("to");
    QTest::addColumn<double>("expected");

    QTest::newRow("same name") << 5.0 << "cm" << "cm" << 5.0;
    QTest::newRow("one family") << 1.0 << "in" << "cm" << 2.5399812801497585;
    QTest::newRow("rule forward") << 4.0 << "cm" << "ch" << 2.0;
    QTest::newRow("rule forward from another unit") << 1.0 << "in" << "ch" << 1.2699906400748793;
    QTest::newRow("rule backward") << 3.0 << "ch" << "cm" << 6.0;
    QTest::newRow("rule backward then family") << 3.0 << "ch" << "mm" << 60.0;
    QTest::newRow("line to pt") << 2.0 << "line" << "pt" << 24.0;
    QTest::newRow("pt to line") << 36.0 << "pt" << "line" << 3.0;
    QTest::newRow("in to line") << 1.0 << "in" << "line" << 5.999952000383996;
    QTest::newRow("offset forward") << 5.0 << "%" << "degree" << 20.0;
    // The inverse negates the offset instead of dividing it: 20 * 0.5 - 10.
    QTest::newRow("offset backward") << 20.0 << "degree" << "%" << 0.0;
    QTest::newRow("no rule: unchanged") << 7.0 << "%" << "pt" << 7.0;
    QTest::newRow("unknown unit: unchanged") << 7.0 << "px" << "cm" << 7.0;
    QTest::newRow("unknown target: unchanged") << 7.0 << "cm" << "furlong" << 7.0;
}

void tst_KUnitDefine::defineConvert()
{
    QFETCH(double, x);
    QFETCH(QString, from);
    QFETCH(QString, to);
    QFETCH(double, expected);
    KUnitDefine define;
    fillParagraphDefine(define);
    QCOMPARE(define.Convert(x, from, to), expected);
    // An empty define knows no unit and passes values through.
    KUnitDefine none;
    QCOMPARE(none.Convert(x, from, to), x);
    QCOMPARE(none.ConvertToDef(x, from), x);
}

void tst_KUnitDefine::convertToRules()
{
    KUnitDefine define;
    fillParagraphDefine(define);
    UnitConverToRec out{"untouched", "untouched", 42, 42};
    // cm (record 0) and ch (record 1): the first rule, forward.
    QVERIFY(define.GetConvertTo(0, 1, &out));
    QCOMPARE(out.from, QString("cm"));
    QCOMPARE(out.ratio, 0.5);
    // Backward: from and to swapped, ratio inverted, offset negated.
    QVERIFY(define.GetConvertTo(1, 0, &out));
    QCOMPARE(out.from, QString("ch"));
    QCOMPARE(out.to, QString("cm"));
    QCOMPARE(out.ratio, 2.0);
    QVERIFY(define.GetConvertTo(4, 3, &out));
    QCOMPARE(out.ratio, 0.5);
    QCOMPARE(out.offset, -10.0);
    // The same record: true, nothing written.
    out = UnitConverToRec{"untouched", "untouched", 42, 42};
    QVERIFY(define.GetConvertTo(2, 2, &out));
    QCOMPARE(out.ratio, 42.0);
    QVERIFY(define.GetConvertTo(0, 1, nullptr));
    QVERIFY(!define.GetConvertTo(0, 3, &out)); // cm and %: no rule
    QVERIFY(!define.GetConvertTo(0, 5, &out));
    QVERIFY(!define.GetConvertTo(-1, 0, &out));

    QVERIFY(define.CanConvert("in", "ch"));
    QVERIFY(define.CanConvert("pt", "mm"));
    QVERIFY(!define.CanConvert("%", "cm"));
    QVERIFY(!define.CanConvert("px", "cm"));
    QVERIFY(define.CanConvert("px", "px")); // nothing to do
}

void tst_KUnitDefine::defaultUnitAndFavourite()
{
    KUnitDefine define;
    fillParagraphDefine(define);
    QCOMPARE(define.GetUnitName(), QString("cm"));
    // The default record's numbers are reinterpreted, not converted.
    define.SetUnitName("in");
    QCOMPARE(define.GetUnitName(), QString("in"));
    QCOMPARE(define.GetDefUnitDefine()->maximum, 55.88);
    define.SetUnitName("ch"); // not in the default record's family
    QCOMPARE(define.GetUnitName(), QString("in"));
    QCOMPARE(define.ConvertToDef(2.54, "cm"), 1.0000073700740977);
    QCOMPARE(define.ConvertFromDef(2.0, "ch"), 2.0 / 0.013889 * 0.0352778 * 0.5);
    define.SetDefUnitIndex(1);
    QCOMPARE(define.GetUnitName(), QString("ch"));
    define.SetDefUnitIndex(9);
    QCOMPARE(define.GetDefUnitIndex(), 1);

    KUnitDefine::FavorUnitState& favour = KUnitDefine::getFavorUnitState();
    QCOMPARE(favour.unit, KUnitDefine::Centimeters);
    QVERIFY(!favour.chosen);
    QCOMPARE(KUnitDefine::getInstance()->GetUnitName(), QString("cm"));
    favour.unit = KUnitDefine::Inches;
    QCOMPARE(KUnitDefine::getInstance()->GetUnitName(), QString("in"));
    QCOMPARE(KUnitDefine::getInstance()->Count(), 1);
    favour.unit = KUnitDefine::Centimeters;
    QCOMPARE(KUnitDefine::getInstance()->GetUnitName(), QString("cm"));
}

void tst_KUnitDefine::parseText_data()
{
    QTest::addColumn<QString>("locale");
    QTest::addColumn<QString>("text");
    QTest::addColumn<bool>("ok");
    QTest::addColumn<double>("value"); // in cm

    auto good = [](const char* name, const char* locale, const QString& text, double v) {
        QTest::newRow(name) << QString(locale) << text << true << v;
    };
    auto bad = [](const char* name, const char* locale, const QString& text) {
        QTest::newRow(name) << QString(locale) << text << false << 0.0;
    };
    good("bare number", "en_US", "2.5", 2.5);
    good("unit glued", "en_US", "2.5cm", 2.5);
    good("blanks around", "en_US", "  2.5 cm ", 2.5);
    good("unit in capitals", "en_US", "2.5 CM", 2.5);
    good("inches by name", "en_US", "1 in", 2.5399812801497585);
    good("inches by display name", "en_US", "1 inch", 2.5399812801497585);
    good("inches by short form", "en_US", "1i", 2.5399812801497585);
    good("points", "en_US", "72 pt", 2.5400016);
    good("millimetres by short form", "en_US", "10m", 1.0);
    good("characters through the rule", "en_US", "3 ch", 6.0);
    good("lines through the rule to points", "en_US", "1 line", 12 * 0.0352778);
    good("negative", "en_US", "-3", -3.0);
    good("plus sign", "en_US", "+3", 3.0);
    good("leading point", "en_US", ".5", 0.5);
    good("trailing point", "en_US", "5.", 5.0);
    good("exponent", "en_US", "1e3", 1000.0);
    good("huge but finite", "en_US", "1e300", 1e300);
    good("C locale", "C", "2.25 mm", 0.225);
    good("German comma", "de_DE", "2,5", 2.5);
    good("German comma with unit", "de_DE", "-0,5 cm", -0.5);
    good("French comma", "fr_FR", "2,5", 2.5);
    good("French also takes a point", "fr_FR", "2.5", 2.5);
    bad("empty", "en_US", "");
    bad("blanks", "en_US", "   ");
    bad("only a unit", "en_US", "cm");
    bad("unknown unit", "en_US", "5 furlongs");
    bad("unit split by a blank", "en_US", "5 c m");
    bad("unit without a rule", "en_US", "5 %");
    bad("comma groups in English", "en_US", "2,5");
    bad("thousands", "en_US", "1,000");
    bad("point groups in German", "de_DE", "2.5");
    bad("two points", "en_US", "5..0");
    bad("two numbers", "en_US", "2.5.3");
    bad("range", "en_US", "3-4");
    bad("double sign", "en_US", "--5");
    bad("hexadecimal", "en_US", "0x10");
    bad("too large for a double", "en_US", "1e400");
    bad("too large negative", "en_US", "-1e400");
    bad("too large after conversion", "en_US", "1e308 in");
    bad("nan", "en_US", "nan");
    bad("NaN", "en_US", "NaN");
    bad("inf", "en_US", "inf");
    bad("minus inf", "en_US", "-inf");
    bad("infinity", "en_US", "Infinity");
    bad("infinity sign", "en_US", QString(QChar(0x221E)));
    bad("lone sign", "en_US", "-");
    bad("lone point", "en_US", ".");
}

void tst_KUnitDefine::parseText()
{
    QFETCH(QString, locale);
    QFETCH(QString, text);
    QFETCH(bool, ok);
    QFETCH(double, value);
    KUnitDefine define;
    fillParagraphDefine(define);
    define.Add(QStringLiteral("pt,0,1000,0,1")); // a second Device record changes nothing
    double out = -12345.0;
    QCOMPARE(define.ParseText(text, "cm", &out, localeNamed(locale)), ok);
    QCOMPARE(out, ok ? value : -12345.0); // untouched on failure
}

void tst_KUnitDefine::splitTextKeepsTheUnitText()
{
    double number = 0;
    QString unit = "untouched";
    QVERIFY(KUnitDefine::SplitText(" -1.5E2  Furlongs ", &number, &unit, QLocale::c()));
    QCOMPARE(number, -150.0);
    QCOMPARE(unit, QString("Furlongs"));
    QVERIFY(KUnitDefine::SplitText("7", &number, &unit, QLocale::c()));
    QVERIFY(unit.isEmpty());
    // A locale's own minus sign (U+2212 in Swedish) is a sign.
    QVERIFY(KUnitDefine::SplitText(QString(QChar(0x2212)) + "2,5", &number, &unit, QLocale("sv_SE")));
    QCOMPARE(number, -2.5);

    KUnitDefine define;
    define.Add("cm,2,10,0,1");
    QCOMPARE(define.ResolveUnit(" INCH "), QString("in"));
    QCOMPARE(define.ResolveUnit("p"), QString("pt"));
    QVERIFY(define.ResolveUnit("ch").isEmpty()); // not offered here
    QVERIFY(define.ResolveUnit("").isEmpty());
}

void tst_KUnitDefine::formatValue_data()
{
    QTest::addColumn<double>("value");
    QTest::addColumn<int>("decimals");
    QTest::addColumn<QString>("locale");
    QTest::addColumn<QString>("text");

    QTest::newRow("trailing zero cut") << 2.5 << 2 << "en_US" << "2.5";
    QTest::newRow("point cut") << 2.0 << 2 << "en_US" << "2";
    QTest::newRow("zeros of a whole number kept") << 100.0 << 0 << "en_US" << "100";
    QTest::newRow("rounded") << 2.346 << 2 << "en_US" << "2.35";
    QTest::newRow("no minus zero") << -0.001 << 2 << "en_US" << "0";
    QTest::newRow("no group separator") << 1234.5 << 1 << "en_US" << "1234.5";
    QTest::newRow("German comma") << 2.5 << 2 << "de_DE" << "2,5";
    QTest::newRow("negative") << -0.75 << 3 << "en_US" << "-0.75";
    QTest::newRow("decimals clamped") << 0.1 << 40 << "C" << "0.1";
    QTest::newRow("negative decimals") << 2.6 << -3 << "C" << "3";
    QTest::newRow("huge") << 1e20 << 2 << "C" << "100000000000000000000";
    QTest::newRow("nan gives nothing") << std::numeric_limits<double>::quiet_NaN() << 2 << "C" << "";
    QTest::newRow("infinity gives nothing") << std::numeric_limits<double>::infinity() << 2 << "C" << "";
}

void tst_KUnitDefine::formatValue()
{
    QFETCH(double, value);
    QFETCH(int, decimals);
    QFETCH(QString, locale);
    QFETCH(QString, text);
    QCOMPARE(KUnitDefine::FormatValue(value, decimals, localeNamed(locale)), text);

    KUnitDefine define;
    define.Add("cm,2,10,0,1");
    QCOMPARE(define.FormatText(2.5, "in", 2, QLocale::c()), QString("2.5 inch"));
    QCOMPARE(define.FormatText(3, "ch", 0, QLocale::c()), QString("3 char"));
    QCOMPARE(define.FormatText(3, "px", 0, QLocale::c()), QString("3 px"));
    QCOMPARE(define.FormatText(1, QString(), 2, QLocale::c()), QString("1"));
}

// A few thousand generated texts: whatever parses, formatted and parsed again, gives the same
// value within the rounding of the format, and formats to the same text again.
void tst_KUnitDefine::parseFormatRoundTrip()
{
    KUnitDefine define;
    fillParagraphDefine(define);
    const QStringList locales{"C", "en_US", "de_DE", "fr_FR", "sv_SE"};
    const QStringList targets{"cm", "in", "mm", "pt", "ch", "line"};
    const QStringList pieces{"0", "1", "2", "5", "9", "00", "123", ".", ",", "-", "+", "e", "E", "e-", " ",
                             "cm", "in", "inch", "mm", "pt", "p", "i", "c", "m", "ch", "char", "line", "%",
                             "degree", "nan", "inf", "x", "\xe2\x88\x92", "\xc2\xa0", "\xe2\x80\xaf", "1e308",
                             "999999999999999999999"};
    QRandomGenerator random(19);
    int parsed = 0;
    for (int i = 0; i < 4000; ++i) {
        // Half of the texts are shaped like a number with a unit, the others are any mix.
        QString text;
        if (i % 2 == 0) {
            const char* const signs[] = {"", "", "-", "+", "\xe2\x88\x92"};
            const char* const points[] = {".", ",", ""};
            const char* const blanks[] = {"", " ", "  "};
            text = QString::fromUtf8(signs[random.bounded(5)]) + QString::number(random.bounded(100000))
                + QString::fromUtf8(points[random.bounded(3)]) + QString::number(random.bounded(1000))
                + (random.bounded(8) == 0 ? QStringLiteral("e%1").arg(random.bounded(-320, 320)) : QString())
                + QString::fromUtf8(blanks[random.bounded(3)]) + pieces.at(15 + random.bounded(13));
        } else {
            const int n = 1 + random.bounded(6);
            for (int k = 0; k < n; ++k)
                text += pieces.at(random.bounded(int(pieces.size())));
        }
        const QLocale locale = localeNamed(locales.at(random.bounded(int(locales.size()))));
        const QString unit = targets.at(random.bounded(int(targets.size())));
        const int decimals = random.bounded(7);

        double first = -777.0;
        if (!define.ParseText(text, unit, &first, locale)) {
            QCOMPARE(first, -777.0);
            continue;
        }
        ++parsed;
        QVERIFY2(std::isfinite(first), qPrintable(text));
        const QString shown = define.FormatText(first, unit, decimals, locale);
        double second = 0.0;
        QVERIFY2(define.ParseText(shown, unit, &second, locale), qPrintable(text + " -> " + shown));
        const double bound = 0.5 * std::pow(10.0, -decimals) + std::abs(first) * 1e-15;
        QVERIFY2(std::abs(second - first) <= bound, qPrintable(text + " -> " + shown));
        QCOMPARE(define.FormatText(second, unit, decimals, locale), shown);
    }
    // The generator must reach both branches for the check to mean anything.
    QVERIFY2(parsed > 1000, qPrintable(QString::number(parsed)));
    QVERIFY2(parsed < 3000, qPrintable(QString::number(parsed)));
}

NORVIK_TEST_MAIN(tst_KUnitDefine)
#include "tst_kunitdefine.moc"
