#include "kunitdefine.h"

#include <QRegularExpression>
#include <cmath>

#include "kunitfamily.h"
#include "kunitpacket.h"
#include "kunitrendering.h"

const QString KUnitDefine::Centimeters = QStringLiteral("cm");
const QString KUnitDefine::Inches = QStringLiteral("in");
const QString KUnitDefine::Millimeters = QStringLiteral("mm");
const QString KUnitDefine::Points = QStringLiteral("pt");
const QString KUnitDefine::CharUnit = QStringLiteral("ch");

KUnitDefine::KUnitDefine(QObject* parent)
    : QObject(parent)
{
}

KUnitDefine::~KUnitDefine()
{
    qDeleteAll(m_records);
    qDeleteAll(m_rules);
}

KUnitDefine::FavorUnitState& KUnitDefine::getFavorUnitState()
{
    static FavorUnitState state{Centimeters, false};
    return state;
}

KUnitDefine* KUnitDefine::getInstance()
{
    static KUnitDefine instance;
    const QString favourite = getFavorUnitState().unit;
    if (instance.Count() == 0) {
        UnitDefineRec record;
        record.unit = favourite;
        instance.Add(record);
    } else if (instance.GetUnitName() != favourite) {
        instance.SetUnitName(favourite); // follows a favourite the host changed since
    }
    return &instance;
}

QString KUnitDefine::GetUnitName() const
{
    const UnitDefineRec* rec = GetDefUnitDefine();
    return rec ? rec->unit : QString();
}

void KUnitDefine::SetUnitName(const QString& name)
{
    UnitDefineRec* rec = GetDefUnitDefine();
    if (rec && rec->family && rec->family->IndexOf(name) >= 0)
        rec->unit = name;
}

void KUnitDefine::SetDefUnitIndex(int index)
{
    if (index >= -1 && index < m_records.size())
        m_defUnitIndex = index;
}

UnitDefineRec* KUnitDefine::GetUnitDefine(int index) const
{
    return index >= 0 && index < m_records.size() ? m_records.at(index) : nullptr;
}

UnitDefineRec* KUnitDefine::GetDefUnitDefine() const
{
    return GetUnitDefine(m_defUnitIndex);
}

int KUnitDefine::Add(const UnitDefineRec& record)
{
    auto* rec = new UnitDefineRec(record);
    rec->family = KUnitPacket::getInstance()->FindUnit(rec->unit);
    m_records.append(rec);
    if (m_defUnitIndex < 0)
        m_defUnitIndex = 0;
    return int(m_records.size()) - 1;
}

int KUnitDefine::Add(const QString& text)
{
    const QStringList fields = text.split(QLatin1Char(','));
    UnitDefineRec record;
    if (fields.size() >= 5) {
        record.unit = fields.at(0).trimmed();
        record.decimal = fields.at(1).trimmed().toInt();
        record.maximum = fields.at(2).trimmed().toDouble();
        record.minimum = fields.at(3).trimmed().toDouble();
        record.step = fields.at(4).trimmed().toDouble();
    }
    return Add(record);
}

int KUnitDefine::AddConvertTo(const QString& text)
{
    const QStringList fields = text.split(QLatin1Char(','));
    if (fields.size() < 3)
        return AddConvertTo(QString(), QString(), 1.0, 0.0);
    return AddConvertTo(fields.at(0).trimmed(), fields.at(1).trimmed(), fields.at(2).trimmed().toDouble(),
                        fields.size() > 3 ? fields.at(3).trimmed().toDouble() : 0.0);
}

int KUnitDefine::AddConvertTo(const QString& from, const QString& to, double ratio, double offset)
{
    // A ratio that can't be read (0) counts as not given; a rule must stay invertible.
    if (ratio == 0.0 || !std::isfinite(ratio))
        ratio = 1.0;
    if (!std::isfinite(offset))
        offset = 0.0;
    m_rules.append(new UnitConverToRec{from, to, ratio, offset});
    return int(m_rules.size()) - 1;
}

UnitConverToRec* KUnitDefine::GetConvertTo(int index) const
{
    return index >= 0 && index < m_rules.size() ? m_rules.at(index) : nullptr;
}

bool KUnitDefine::GetConvertTo(int from, int to, UnitConverToRec* out) const
{
    const UnitDefineRec* a = GetUnitDefine(from);
    const UnitDefineRec* b = GetUnitDefine(to);
    if (!a || !b)
        return false;
    if (from == to)
        return true;
    auto holds = [](const UnitDefineRec* rec, const QString& unit) {
        return rec->family && rec->family->IndexOf(unit) >= 0;
    };
    for (const UnitConverToRec* rule : m_rules) {
        if (holds(a, rule->from) && holds(b, rule->to)) {
            if (out)
                *out = *rule;
            return true;
        }
        if (holds(a, rule->to) && holds(b, rule->from)) {
            // The offset is negated, not -offset / ratio: values written with this inverse
            // must keep their numbers. The rules in use have no offset.
            if (out)
                *out = UnitConverToRec{rule->to, rule->from, 1.0 / rule->ratio, -rule->offset};
            return true;
        }
    }
    return false;
}

UnitDefineRec* KUnitDefine::FindUnit(const QString& unit, int* unitIndex) const
{
    return GetUnitDefine(LocateUnit(unit, unitIndex));
}

int KUnitDefine::LocateUnit(const QString& unit, int* unitIndex) const
{
    if (unitIndex)
        *unitIndex = -1;
    for (int i = 0; i < m_records.size(); ++i) {
        const KUnitFamily* family = m_records.at(i)->family;
        const int at = family ? family->IndexOf(unit) : -1;
        if (at >= 0) {
            if (unitIndex)
                *unitIndex = at;
            return i;
        }
    }
    return -1;
}

double KUnitDefine::Convert(double x, const QString& from, const QString& to) const
{
    if (from == to)
        return x;
    const int a = LocateUnit(from);
    const int b = LocateUnit(to);
    if (a < 0 || b < 0)
        return x;
    const KUnitFamily* familyA = m_records.at(a)->family;
    const KUnitFamily* familyB = m_records.at(b)->family;
    if (a == b)
        return familyA->Convert(x, from, to);
    UnitConverToRec rule;
    if (!GetConvertTo(a, b, &rule))
        return x;
    const double y = familyA->Convert(x, from, rule.from);
    const double z = y * rule.ratio + rule.offset;
    return familyB->Convert(z, rule.to, to);
}

double KUnitDefine::ConvertFromDef(double x, const QString& to) const
{
    const UnitDefineRec* rec = GetDefUnitDefine();
    return rec ? Convert(x, rec->unit, to) : x;
}

double KUnitDefine::ConvertToDef(double x, const QString& from) const
{
    const UnitDefineRec* rec = GetDefUnitDefine();
    return rec ? Convert(x, from, rec->unit) : x;
}

bool KUnitDefine::CanConvert(const QString& from, const QString& to) const
{
    if (from == to)
        return true;
    const int a = LocateUnit(from);
    const int b = LocateUnit(to);
    if (a < 0 || b < 0)
        return false;
    return a == b || GetConvertTo(a, b, nullptr);
}

void KUnitDefine::Clear()
{
    qDeleteAll(m_records);
    m_records.clear();
    m_defUnitIndex = -1;
}

void KUnitDefine::ClearConvertTos()
{
    qDeleteAll(m_rules);
    m_rules.clear();
}

// --- typed text ---

namespace {

QString alternatives(QStringList texts)
{
    texts.removeAll(QString());
    texts.removeDuplicates();
    for (QString& t : texts)
        t = QRegularExpression::escape(t);
    return texts.join(QLatin1Char('|'));
}

} // namespace

bool KUnitDefine::SplitText(const QString& text, double* number, QString* unitText, const QLocale& locale)
{
    const QString point = locale.decimalPoint();
    const QString group = locale.groupSeparator();
    // Many users type a point whatever their locale; it is taken unless it groups digits there.
    const bool pointToo = point != QLatin1String(".") && group != QLatin1String(".");
    QStringList points{point};
    if (pointToo)
        points << QStringLiteral(".");
    const QString dp = alternatives(points);
    const QString sign = alternatives({QStringLiteral("+"), QStringLiteral("-"), locale.negativeSign(),
                                       locale.positiveSign()});
    const QString exp = alternatives({QStringLiteral("e"), QStringLiteral("E"), locale.exponential()});
    const QRegularExpression re(
        QStringLiteral("^((?:%1)?(?:\\d+(?:(?:%2)\\d*)?|(?:%2)\\d+)(?:(?:%3)(?:%1)?\\d+)?)(.*)$")
            .arg(sign, dp, exp),
        QRegularExpression::UseUnicodePropertiesOption | QRegularExpression::DotMatchesEverythingOption);
    const QRegularExpressionMatch m = re.match(text.trimmed());
    if (!m.hasMatch())
        return false;
    const QString numberText = m.captured(1);
    const QString rest = m.captured(2).trimmed();
    if (!rest.isEmpty()) {
        // What follows must be a unit, not the remains of a number ("1,5" with a grouping
        // comma, "2.5.3", "3-4").
        const QChar c = rest.at(0);
        static const QString separators = QStringLiteral(".,+-");
        auto startsWith = [&rest](const QString& s) { return !s.isEmpty() && rest.startsWith(s); };
        if (c.isDigit() || separators.contains(c) || startsWith(point) || startsWith(group)
            || startsWith(locale.negativeSign()) || startsWith(locale.positiveSign()))
            return false;
    }
    QLocale strict(locale);
    strict.setNumberOptions(QLocale::RejectGroupSeparator | QLocale::OmitGroupSeparator);
    bool ok = false;
    double value = strict.toDouble(numberText, &ok);
    if (!ok && pointToo) {
        QLocale c = QLocale::c();
        c.setNumberOptions(QLocale::RejectGroupSeparator | QLocale::OmitGroupSeparator);
        value = c.toDouble(numberText, &ok);
    }
    if (!ok || !std::isfinite(value))
        return false;
    if (number)
        *number = value;
    if (unitText)
        *unitText = rest;
    return true;
}

QString KUnitDefine::ResolveUnit(const QString& typed) const
{
    const QString t = typed.trimmed();
    if (t.isEmpty())
        return QString();
    for (const UnitDefineRec* rec : m_records) {
        if (!rec->family)
            continue;
        for (const QString& name : rec->family->GetUnitNames()) {
            if (name.compare(t, Qt::CaseInsensitive) == 0)
                return name;
        }
    }
    const QString unit = KUnitRendering::getInstance()->GetUnitByText(t);
    return !unit.isEmpty() && LocateUnit(unit) >= 0 ? unit : QString();
}

bool KUnitDefine::ParseText(const QString& text, const QString& unit, double* value, const QLocale& locale) const
{
    double number = 0.0;
    QString unitText;
    if (!SplitText(text, &number, &unitText, locale))
        return false;
    if (!unitText.isEmpty()) {
        const QString typedUnit = ResolveUnit(unitText);
        if (typedUnit.isEmpty() || !CanConvert(typedUnit, unit))
            return false;
        number = Convert(number, typedUnit, unit);
        if (!std::isfinite(number))
            return false;
    }
    if (value)
        *value = number;
    return true;
}

QString KUnitDefine::FormatValue(double value, int decimals, const QLocale& locale)
{
    if (!std::isfinite(value))
        return QString();
    QLocale loc(locale);
    loc.setNumberOptions(QLocale::OmitGroupSeparator);
    QString text = loc.toString(value, 'f', qBound(0, decimals, 15));
    const QString point = loc.decimalPoint();
    if (text.contains(point)) {
        while (text.endsWith(loc.zeroDigit()))
            text.chop(loc.zeroDigit().size());
        if (text.endsWith(point))
            text.chop(point.size());
    }
    // A negative number that rounds to nothing is shown as plain zero.
    if (text == loc.negativeSign() + loc.zeroDigit())
        text = loc.zeroDigit();
    return text;
}

QString KUnitDefine::FormatText(double value, const QString& unit, int decimals, const QLocale& locale) const
{
    const QString number = FormatValue(value, decimals, locale);
    if (number.isEmpty() || unit.isEmpty())
        return number;
    const QString shown = KUnitRendering::getInstance()->GetUnitName(unit);
    return number + QLatin1Char(' ') + (shown.isEmpty() ? unit : shown);
}
