#ifndef KUNITRENDERING_H
#define KUNITRENDERING_H

#include <QMap>
#include <QObject>
#include <QString>
#include <QStringList>

#include <norvikofficeui_export.h>

/// How one unit is shown: its display name and a short form a user may type.
struct NORVIKOFFICEUI_EXPORT UnitRenderingRec
{
    QString name;
    QString shortcut;
};

/**
 * The display names of the units. The table is one translatable text (context
 * "KUnitRendering"), so that a translation renames all units at once; getInstance() reads
 * it, through the installed translators, at first use. Unknown units give empty texts.
 */
class NORVIKOFFICEUI_EXPORT KUnitRendering : public QObject
{
    Q_OBJECT
public:
    explicit KUnitRendering(QObject* parent = nullptr);
    ~KUnitRendering() override;

    /// The shared instance, loaded on first call.
    static KUnitRendering* getInstance();

    bool loaded() const { return m_loaded; }

    /// The record of unit, or null; valid until the table is cleared or reloaded.
    const UnitRenderingRec* GetUnitRenderingRec(const QString& unit) const;
    QString GetUnitName(const QString& unit) const;
    QString GetUnitShortCut(const QString& unit) const;
    /// GetUnitName() of each unit, in order (empty texts for unknown ones).
    QStringList GetUnitNames(const QStringList& units) const;
    /// The first unit (in the order of unit names) whose display name is name, or empty.
    QString GetUnitName2(const QString& name) const;
    /**
     * The unit a user meant by typed text: the unit of that name, else the first whose
     * display name is that, else the first whose short form is that; letters compared
     * without regard to case. Empty when none.
     */
    QString GetUnitByText(const QString& text) const;

    /// Reads the (translated) table; a reload replaces what was there.
    void loadUnitRendings();
    void clearUnitRendings();

private:
    QMap<QString, UnitRenderingRec> m_renderings;
    bool m_loaded = false;
};

#endif // KUNITRENDERING_H
