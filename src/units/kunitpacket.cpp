#include "kunitpacket.h"

#include "kunitfamily.h"

namespace {
// The ratios are short on purpose (72 pt are 1.000008 in): documents written with them must
// keep their numbers.
const char* const kUnitsTable =
    "[Device]\npt=\nin=0.013889\ncm=0.0352778\nmm=0.352778\n\n"
    "[Percentage]\n%=\n\n"
    "[Character]\nch=\n\n"
    "[Degree]\ndegree=\n\n"
    "[Row]\nline=\n\n"
    "[Auto]\nauto=\n\n"
    "[Multiple]\nmultiple=\n";
} // namespace

KUnitPacket::KUnitPacket(QObject* parent)
    : QObject(parent)
{
}

KUnitPacket::~KUnitPacket()
{
    qDeleteAll(m_families);
}

KUnitPacket* KUnitPacket::getInstance()
{
    static KUnitPacket instance;
    if (!instance.loaded())
        instance.LoadUnitsPacket(unitsTable());
    return &instance;
}

QString KUnitPacket::unitsTable()
{
    return QString::fromLatin1(kUnitsTable);
}

bool KUnitPacket::LoadUnitsPacket(const QString& text)
{
    const QStringList blocks = text.split(QStringLiteral("\n\n"), Qt::KeepEmptyParts);
    for (const QString& block : blocks) {
        QStringList lines = block.split(QLatin1Char('\n'), Qt::KeepEmptyParts);
        const QString header = lines.takeFirst();
        // The header is the name in brackets; a block without one is not a family.
        if (header.size() < 3 || !header.startsWith(QLatin1Char('[')) || !header.endsWith(QLatin1Char(']')))
            continue;
        const QString name = header.mid(1, header.size() - 2);
        AddItem(name)->LoadUnits(lines);
    }
    m_loaded = true;
    Q_EMIT changed();
    return true;
}

void KUnitPacket::_adopt(KUnitFamily* family)
{
    family->setParent(nullptr); // the list owns it, not the object tree
}

KUnitFamily* KUnitPacket::AddItem(const QString& name)
{
    if (KUnitFamily* family = FindItem(name))
        return family;
    auto* family = new KUnitFamily(name);
    m_families.append(family);
    Q_EMIT changed();
    return family;
}

int KUnitPacket::AddItem(KUnitFamily* family)
{
    if (!family || m_families.contains(family))
        return family ? int(m_families.indexOf(family)) : -1;
    _adopt(family);
    m_families.append(family);
    Q_EMIT changed();
    return int(m_families.size()) - 1;
}

bool KUnitPacket::Insert(int index, KUnitFamily* family)
{
    if (!family || m_families.contains(family))
        return false;
    _adopt(family);
    m_families.insert(qBound(0, index, int(m_families.size())), family);
    Q_EMIT changed();
    return true;
}

bool KUnitPacket::SetItem(int index, KUnitFamily* family)
{
    if (!family || index < 0 || index >= m_families.size())
        return false;
    if (m_families.at(index) == family)
        return true;
    if (m_families.contains(family))
        return false;
    _adopt(family);
    delete m_families.at(index);
    m_families[index] = family;
    Q_EMIT changed();
    return true;
}

KUnitFamily* KUnitPacket::GetItem(int index) const
{
    return index >= 0 && index < m_families.size() ? m_families.at(index) : nullptr;
}

KUnitFamily* KUnitPacket::First() const
{
    return m_families.isEmpty() ? nullptr : m_families.first();
}

KUnitFamily* KUnitPacket::Last() const
{
    return m_families.isEmpty() ? nullptr : m_families.last();
}

KUnitFamily* KUnitPacket::FindItem(const QString& name) const
{
    return GetItem(LocateItem(name));
}

int KUnitPacket::LocateItem(const QString& name) const
{
    for (int i = 0; i < m_families.size(); ++i) {
        if (m_families.at(i)->name() == name)
            return i;
    }
    return -1;
}

KUnitFamily* KUnitPacket::FindUnit(const QString& unit, int* unitIndex) const
{
    return GetItem(LocateUnit(unit, unitIndex));
}

int KUnitPacket::LocateUnit(const QString& unit, int* unitIndex) const
{
    if (unitIndex)
        *unitIndex = -1;
    for (int i = 0; i < m_families.size(); ++i) {
        const int at = m_families.at(i)->IndexOf(unit);
        if (at >= 0) {
            if (unitIndex)
                *unitIndex = at;
            return i;
        }
    }
    return -1;
}
