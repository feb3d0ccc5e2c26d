#include "kunitfamily.h"

#include <cmath>

KUnitFamily::KUnitFamily(const QString& name, QObject* parent)
    : QObject(parent)
    , m_name(name)
{
    setObjectName(name);
}

KUnitFamily::~KUnitFamily()
{
    qDeleteAll(m_units);
}

int KUnitFamily::IndexOf(const QString& name) const
{
    for (int i = 0; i < m_units.size(); ++i) {
        if (m_units.at(i)->name == name)
            return i;
    }
    return -1;
}

const UnitRec* KUnitFamily::GetUnit(int index) const
{
    return index >= 0 && index < m_units.size() ? m_units.at(index) : nullptr;
}

QStringList KUnitFamily::GetUnitNames() const
{
    QStringList names;
    SaveItems(&names);
    return names;
}

int KUnitFamily::Add(const QString& name, double ratio, double offset)
{
    return Insert(int(m_units.size()), name, ratio, offset);
}

int KUnitFamily::Insert(int index, const QString& name, double ratio, double offset)
{
    // A zero ratio would divide by zero in Convert(); a non-finite number would spread NaN.
    // An empty name would match every record that has no unit.
    if (name.isEmpty() || ratio == 0.0 || !std::isfinite(ratio) || !std::isfinite(offset))
        return -1;
    int at = IndexOf(name);
    if (at >= 0) {
        m_units.at(at)->ratio = ratio;
        m_units.at(at)->offset = offset;
    } else {
        at = qBound(0, index, int(m_units.size()));
        m_units.insert(at, new UnitRec{name, ratio, offset});
    }
    Q_EMIT changed();
    return at;
}

bool KUnitFamily::Remove(int index)
{
    if (index < 0 || index >= m_units.size())
        return false;
    delete m_units.takeAt(index);
    Q_EMIT changed();
    return true;
}

bool KUnitFamily::Remove(const QString& name)
{
    return Remove(IndexOf(name));
}

bool KUnitFamily::Exchange(int index1, int index2)
{
    const int n = int(m_units.size());
    if (index1 < 0 || index1 >= n || index2 < 0 || index2 >= n)
        return false;
    if (index1 != index2) {
        m_units.swapItemsAt(index1, index2);
        Q_EMIT changed();
    }
    return true;
}

void KUnitFamily::Clear()
{
    if (m_units.isEmpty())
        return;
    qDeleteAll(m_units);
    m_units.clear();
    Q_EMIT changed();
}

void KUnitFamily::LoadUnits(const QStringList& lines)
{
    // Through the virtual slot, so that a subclass that keeps more per unit clears it too.
    Clear();
    for (const QString& line : lines) {
        const QStringList parts = line.split(QLatin1Char('='), Qt::KeepEmptyParts);
        if (parts.size() != 2)
            continue;
        const QStringList numbers = parts.at(1).split(QLatin1Char(','));
        double ratio = 1.0;
        double offset = 0.0;
        if (!numbers.isEmpty()) {
            ratio = numbers.at(0).toDouble();
            offset = numbers.size() > 1 ? numbers.at(1).toDouble() : 0.0;
        }
        if (offset < 0.0)
            offset = 0.0;
        // An empty or unreadable ratio reads as 0, which stands for "the neutral measure".
        if (ratio == 0.0)
            ratio = 1.0;
        Add(parts.at(0), ratio, offset);
    }
}

void KUnitFamily::LoadUnits(const QString& text)
{
    LoadUnits(text.split(QLatin1Char('\n'), Qt::SkipEmptyParts));
}

void KUnitFamily::SaveUnits(QStringList* lines) const
{
    if (!lines)
        return;
    lines->clear();
    for (const UnitRec* u : m_units) {
        lines->append(QStringLiteral("%1=%2,%3")
                          .arg(u->name, QString::number(u->ratio, 'g'), QString::number(u->offset, 'g')));
    }
}

void KUnitFamily::SaveUnits(QString* text) const
{
    if (!text)
        return;
    QStringList lines;
    SaveUnits(&lines);
    *text = lines.join(QLatin1Char('\n'));
}

void KUnitFamily::SaveItems(QStringList* names) const
{
    if (!names)
        return;
    names->clear();
    for (const UnitRec* u : m_units)
        names->append(u->name);
}

void KUnitFamily::SaveItems(QString* text) const
{
    if (!text)
        return;
    QStringList names;
    SaveItems(&names);
    *text = names.join(QLatin1Char('\n'));
}

double KUnitFamily::Convert(double x, int from, int to) const
{
    const UnitRec* a = GetUnit(from);
    const UnitRec* b = GetUnit(to);
    if (!a || !b)
        return 0.0;
    if (from == to)
        return x;
    // In this order: the neutral measure is the middle value, rounded to a double once.
    const double neutral = (x - a->offset) / a->ratio;
    return neutral * b->ratio + b->offset;
}

double KUnitFamily::Convert(double x, const QString& from, const QString& to) const
{
    return Convert(x, IndexOf(from), IndexOf(to));
}
