#include "kunitrendering.h"

KUnitRendering::KUnitRendering(QObject* parent)
    : QObject(parent)
{
}

KUnitRendering::~KUnitRendering() = default;

KUnitRendering* KUnitRendering::getInstance()
{
    static KUnitRendering instance;
    if (!instance.loaded())
        instance.loadUnitRendings();
    return &instance;
}

const UnitRenderingRec* KUnitRendering::GetUnitRenderingRec(const QString& unit) const
{
    const auto it = m_renderings.constFind(unit);
    return it == m_renderings.constEnd() ? nullptr : &it.value();
}

QString KUnitRendering::GetUnitName(const QString& unit) const
{
    const UnitRenderingRec* rec = GetUnitRenderingRec(unit);
    return rec ? rec->name : QString();
}

QString KUnitRendering::GetUnitShortCut(const QString& unit) const
{
    const UnitRenderingRec* rec = GetUnitRenderingRec(unit);
    return rec ? rec->shortcut : QString();
}

QStringList KUnitRendering::GetUnitNames(const QStringList& units) const
{
    QStringList names;
    names.reserve(units.size());
    for (const QString& unit : units)
        names.append(GetUnitName(unit));
    return names;
}

QString KUnitRendering::GetUnitName2(const QString& name) const
{
    for (auto it = m_renderings.constBegin(); it != m_renderings.constEnd(); ++it) {
        if (it.value().name == name)
            return it.key();
    }
    return QString();
}

QString KUnitRendering::GetUnitByText(const QString& text) const
{
    if (text.isEmpty())
        return QString();
    auto same = [&text](const QString& s) { return s.compare(text, Qt::CaseInsensitive) == 0; };
    for (auto it = m_renderings.constBegin(); it != m_renderings.constEnd(); ++it) {
        if (same(it.key()))
            return it.key();
    }
    for (auto it = m_renderings.constBegin(); it != m_renderings.constEnd(); ++it) {
        if (same(it.value().name))
            return it.key();
    }
    for (auto it = m_renderings.constBegin(); it != m_renderings.constEnd(); ++it) {
        if (!it.value().shortcut.isEmpty() && same(it.value().shortcut))
            return it.key();
    }
    return QString();
}

void KUnitRendering::loadUnitRendings()
{
    // One text for the whole table, so that a translator sees every unit together.
    const QString table = tr("[Device]\npt=pt;p\nin=inch;i\ncm=cm;c\nmm=mm;m\n\n"
                             "[Percentage]\n%=%\n\n"
                             "[Character]\nch=char\n\n"
                             "[Degree]\ndegree=degree\n\n"
                             "[Row]\nline=line\n\n"
                             "[Auto]\nauto=auto\n\n"
                             "[Multiple]\nmultiple=multiple\n");
    m_renderings.clear();
    const QStringList blocks = table.split(QStringLiteral("\n\n"));
    for (const QString& block : blocks) {
        QStringList lines = block.split(QLatin1Char('\n'));
        lines.removeFirst(); // the family's header
        for (const QString& line : std::as_const(lines)) {
            const QStringList parts = line.split(QLatin1Char('='));
            if (parts.size() != 2)
                continue;
            const QStringList names = parts.at(1).split(QLatin1Char(';'));
            m_renderings.insert(parts.at(0), UnitRenderingRec{names.at(0), names.value(1)});
        }
    }
    m_loaded = true;
}

void KUnitRendering::clearUnitRendings()
{
    m_renderings.clear();
    m_loaded = false;
}
