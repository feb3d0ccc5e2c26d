#ifndef KUNITDEFINE_H
#define KUNITDEFINE_H

#include <QList>
#include <QLocale>
#include <QObject>
#include <QString>

#include <norvikofficeui_export.h>

class KUnitFamily;

/**
 * One unit on offer in a control. The numbers are written in unit; family is the family
 * that holds unit (null when no family does), filled in when the record is added.
 */
struct NORVIKOFFICEUI_EXPORT UnitDefineRec
{
    KUnitFamily* family = nullptr;
    QString unit;
    int decimal = 0;
    double maximum = 0.0;
    double minimum = 0.0;
    double step = 0.0;
};

/// A rule between two families: a value in from times ratio plus offset is a value in to.
struct NORVIKOFFICEUI_EXPORT UnitConverToRec
{
    QString from;
    QString to;
    double ratio = 1.0;
    double offset = 0.0;
};

/**
 * The units one control offers, each with its range, step and least number of decimals, and
 * the rules that pass from one family to another. The first record added is the default
 * one: a host reads and writes values in its unit, whatever unit the screen shows.
 *
 * Records and rules are owned. Bad input gives a neutral result and no message: a value
 * comes back unchanged, an index as -1, a record as null.
 *
 * Besides the conversions, the define reads what a user types into a field: a number in the
 * notation of a locale, optionally followed by one of the offered units (see ParseText()).
 */
class NORVIKOFFICEUI_EXPORT KUnitDefine : public QObject
{
    Q_OBJECT
public:
    /// The user's preferred unit for lengths: Centimeters and not chosen, at first.
    struct FavorUnitState
    {
        QString unit;
        bool chosen = false;
    };

    static const QString Centimeters; // "cm"
    static const QString Inches;      // "in"
    static const QString Millimeters; // "mm"
    static const QString Points;      // "pt"
    static const QString CharUnit;    // "ch"

    explicit KUnitDefine(QObject* parent = nullptr);
    ~KUnitDefine() override;

    /// The process-wide preferred unit; a host changes it in place.
    static FavorUnitState& getFavorUnitState();
    /// A shared define whose one record is in the preferred unit.
    static KUnitDefine* getInstance();

    int Count() const { return int(m_records.size()); }
    /// The unit of the default record, or empty.
    QString GetUnitName() const;
    /**
     * Gives the default record the unit name when its family holds that unit. The record's
     * numbers are reinterpreted in the new unit, not converted.
     */
    void SetUnitName(const QString& name);
    int GetDefUnitIndex() const { return m_defUnitIndex; }
    /// Takes an index of a record, or -1; anything else is refused.
    void SetDefUnitIndex(int index);
    UnitDefineRec* GetUnitDefine(int index) const;
    UnitDefineRec* GetDefUnitDefine() const;

    /// Appends a copy of record, with its family looked up; returns its index.
    int Add(const UnitDefineRec& record);
    /**
     * Appends a record read from "unit,decimal,maximum,minimum,step" (fields trimmed). With
     * fewer than five fields an empty record (no unit, no family, numbers zero) is appended.
     */
    int Add(const QString& text);
    /// Appends a rule read from "from,to,ratio" or "from,to,ratio,offset"; with fewer than
    /// three fields an empty rule (ratio 1) is appended.
    int AddConvertTo(const QString& text);
    int AddConvertTo(const QString& from, const QString& to, double ratio, double offset = 0.0);
    int ConverttoCount() const { return int(m_rules.size()); }
    UnitConverToRec* GetConvertTo(int index) const;
    /**
     * The first rule that leads from the family of record from to that of record to. A rule
     * that fits backward is written to out inverted (from and to swapped, ratio 1 / ratio,
     * offset -offset). True with nothing written when from equals to; false for an index out
     * of range or when no rule fits. With out null, only whether one fits.
     */
    bool GetConvertTo(int from, int to, UnitConverToRec* out) const;
    /// The first record whose family holds unit, with *unitIndex the unit's index in it.
    UnitDefineRec* FindUnit(const QString& unit, int* unitIndex = nullptr) const;
    int LocateUnit(const QString& unit, int* unitIndex = nullptr) const;

    /// x in unit from as a value in unit to; unchanged when either is unknown or no rule
    /// leads from one family to the other.
    double Convert(double x, const QString& from, const QString& to) const;
    double ConvertFromDef(double x, const QString& to) const;
    double ConvertToDef(double x, const QString& from) const;
    /// Whether Convert() really leads from one unit to the other (both offered, and one
    /// family or a rule between them).
    bool CanConvert(const QString& from, const QString& to) const;

    // --- typed text ---
    /**
     * Splits what a user typed into a finite number and the text behind it. The number is
     * read in the notation of locale: its decimal point and signs, an optional exponent, no
     * group separators. A point is taken as the decimal point as well, unless the locale
     * groups digits with it. Blanks around the parts are dropped; the text behind the number
     * must start with neither a digit nor a sign or separator. False, with the outputs
     * untouched, when there is no such number (empty text, only a unit, "nan", "inf", a
     * number too large for a double, "1,5" where the comma groups digits).
     */
    static bool SplitText(const QString& text, double* number, QString* unitText,
                          const QLocale& locale = QLocale());
    /// The offered unit a user meant by typed text: see KUnitRendering::GetUnitByText(),
    /// limited to the families of this define. Empty when none.
    QString ResolveUnit(const QString& typed) const;
    /**
     * Reads typed text as a value in unit: a bare number is in unit; a number followed by an
     * offered unit is converted to unit. False, with *value untouched, when the number can't
     * be read, the unit is unknown, or nothing leads from it to unit.
     */
    bool ParseText(const QString& text, const QString& unit, double* value,
                   const QLocale& locale = QLocale()) const;
    /// value with at most decimals decimals (0 to 15) in the notation of locale, without
    /// group separators or trailing zeros; never "-0".
    static QString FormatValue(double value, int decimals, const QLocale& locale = QLocale());
    /// FormatValue() followed by a blank and the display name of unit (its name when it has
    /// none); ParseText() reads it back.
    QString FormatText(double value, const QString& unit, int decimals,
                       const QLocale& locale = QLocale()) const;

public Q_SLOTS:
    /// Removes every record; the default index goes back to -1.
    virtual void Clear();
    /// Removes every rule.
    virtual void ClearConvertTos();

private:
    QList<UnitDefineRec*> m_records;
    QList<UnitConverToRec*> m_rules;
    int m_defUnitIndex = -1;
};

#endif // KUNITDEFINE_H
