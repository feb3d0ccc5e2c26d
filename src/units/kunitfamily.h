#ifndef KUNITFAMILY_H
#define KUNITFAMILY_H

#include <QList>
#include <QObject>
#include <QString>
#include <QStringList>

#include <norvikofficeui_export.h>

/**
 * One unit of a family: a value in this unit is ratio * x + offset, with x the value in the
 * family's neutral measure.
 */
struct NORVIKOFFICEUI_EXPORT UnitRec
{
    QString name;
    double ratio = 1.0;
    double offset = 0.0;
};

/**
 * The units of one kind of measure (lengths, percentages, ...) that convert among themselves
 * by a linear rule. The family's name is also its object name. Units keep the order in which
 * they were added. Bad indexes and unknown names give neutral results (-1, null, 0.0 or
 * false) and no message.
 */
class NORVIKOFFICEUI_EXPORT KUnitFamily : public QObject
{
    Q_OBJECT
public:
    explicit KUnitFamily(const QString& name, QObject* parent = nullptr);
    ~KUnitFamily() override;

    QString name() const { return m_name; }

    int GetCount() const { return int(m_units.size()); }
    /// The index of the unit of that name (exact match), or -1.
    int IndexOf(const QString& name) const;
    /// The unit at index, or null.
    const UnitRec* GetUnit(int index) const;
    QStringList GetUnitNames() const;

    /**
     * Adds a unit, or gives an existing unit of that name the new numbers. An empty name, a
     * ratio of 0, or a ratio or offset that is not a finite number, is refused with -1.
     * Returns the unit's index.
     */
    int Add(const QString& name, double ratio, double offset = 0.0);
    /// As Add(), but a new unit goes to index (clamped to the list); an existing one stays put.
    int Insert(int index, const QString& name, double ratio, double offset = 0.0);
    bool Remove(int index);
    bool Remove(const QString& name);
    bool Exchange(int index1, int index2);

    /**
     * Replaces the units by lines of the form "name=ratio,offset". The text behind "=" may be
     * empty (ratio 1) and the offset may be left out (0); a negative offset counts as 0. A line
     * without exactly one "=" is skipped.
     */
    void LoadUnits(const QStringList& lines);
    /// The same for a text of such lines separated by "\n".
    void LoadUnits(const QString& text);
    /// One line "name=ratio,offset" per unit; the list is cleared first.
    void SaveUnits(QStringList* lines) const;
    void SaveUnits(QString* text) const;
    /// The unit names; the list is cleared first.
    void SaveItems(QStringList* names) const;
    void SaveItems(QString* text) const;

    /**
     * x in unit from, converted to unit to: (x - offset_from) / ratio_from * ratio_to
     * + offset_to. An index out of range gives 0.0; equal indexes give x. Nothing is rounded.
     */
    double Convert(double x, int from, int to) const;
    double Convert(double x, const QString& from, const QString& to) const;

public Q_SLOTS:
    /// Removes every unit.
    virtual void Clear();

Q_SIGNALS:
    void changed();

private:
    QList<UnitRec*> m_units;
    QString m_name;
};

#endif // KUNITFAMILY_H
