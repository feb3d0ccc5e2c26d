#ifndef KUNITPACKET_H
#define KUNITPACKET_H

#include <QList>
#include <QObject>
#include <QString>

#include <norvikofficeui_export.h>

class KUnitFamily;

/**
 * All unit families of the program. getInstance() is the shared packet, filled at first use
 * from the program's table of families:
 *
 *   Device: pt (the base), in, cm, mm; Percentage: %; Character: ch; Degree: degree;
 *   Row: line; Auto: auto; Multiple: multiple.
 *
 * The packet owns its families. Bad indexes and unknown names give null or -1, no message.
 * GUI thread only; the shared packet is not locked.
 */
class NORVIKOFFICEUI_EXPORT KUnitPacket : public QObject
{
    Q_OBJECT
public:
    explicit KUnitPacket(QObject* parent = nullptr);
    ~KUnitPacket() override;

    /// The shared packet, loaded with the program's table on first call.
    static KUnitPacket* getInstance();
    /// The program's table of families, as LoadUnitsPacket() reads it.
    static QString unitsTable();

    bool loaded() const { return m_loaded; }

    /**
     * Reads families from text: blocks separated by a blank line, each starting with its name
     * in square brackets, followed by lines "unit=ratio,offset" (see KUnitFamily::LoadUnits).
     * A family that exists already is reloaded in place. A block without a bracketed, non-empty
     * name is passed over. Always true.
     */
    bool LoadUnitsPacket(const QString& text);

    int GetCount() const { return int(m_families.size()); }
    /// The family of that name, or a new one appended.
    KUnitFamily* AddItem(const QString& name);
    /// Appends family and takes it over; returns its index, or -1 for null.
    int AddItem(KUnitFamily* family);
    /// Inserts family at index (clamped) and takes it over; false for null.
    bool Insert(int index, KUnitFamily* family);
    /// Puts family at index in place of the family there, which is deleted; false for a bad
    /// index or null.
    bool SetItem(int index, KUnitFamily* family);
    KUnitFamily* GetItem(int index) const;
    KUnitFamily* First() const;
    KUnitFamily* Last() const;
    KUnitFamily* FindItem(const QString& name) const;
    int LocateItem(const QString& name) const;
    /// The first family that holds unit, with *unitIndex its index there (-1 when none).
    KUnitFamily* FindUnit(const QString& unit, int* unitIndex = nullptr) const;
    int LocateUnit(const QString& unit, int* unitIndex = nullptr) const;

Q_SIGNALS:
    void changed();

private:
    void _adopt(KUnitFamily* family);

    QList<KUnitFamily*> m_families;
    bool m_loaded = false;
};

#endif // KUNITPACKET_H
