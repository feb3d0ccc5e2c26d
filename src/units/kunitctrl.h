#ifndef KUNITCTRL_H
#define KUNITCTRL_H

#include <QModelIndex>
#include <QStringList>
#include <QWidget>

#include <kpopupwidget.h>
#include <norvikofficeui_export.h>

class KDoubleSpinBox;
class KUnitDefine;
class KUnitLabel;
class KUnitListView;

/**
 * The popup of a unit control's list of units: a one-pixel edge around the list, and a press
 * outside it only closes it.
 */
class NORVIKOFFICEUI_EXPORT KFSPopupWidget : public KPopupWidget
{
    Q_OBJECT
public:
    explicit KFSPopupWidget(QWidget* parent);

protected:
    void mousePressEvent(QMouseEvent* e) override;
};

/**
 * A measure field: a spin box with a number and, beside it, the unit. The units on offer,
 * their ranges and steps and the rules between families come from the host as texts (units,
 * convertTos; see KUnitDefine::Add() and AddConvertTo()).
 *
 * The value a host reads and writes is always in the default unit (the first of units);
 * the field shows the current unit, which starts as the user's preferred length unit when
 * lengths are on offer. Changing the current unit converts what is shown and recomputes the
 * range, the decimals and the step.
 *
 * The user may type a unit behind the number ("2.5 in", "30mm", "12 p"): the number is
 * converted to the current unit when the text is taken. Nothing typed is refused; a text
 * that isn't a number, names a unit that can't be used here, or lies out of range is
 * reported by emitAddError() while it stands (emitRemoveError() when it is fixed), and the
 * value stays what it was.
 */
class NORVIKOFFICEUI_EXPORT KUnitCtrl : public QWidget
{
    Q_OBJECT
    Q_PROPERTY(double value READ value WRITE setValue)
    Q_PROPERTY(bool canReverse READ canReverse WRITE setCanReverse)
    Q_PROPERTY(bool reversed READ reversed WRITE setReversed NOTIFY reverseChanged)
    Q_PROPERTY(QString unitName READ unitName WRITE setUnitName)
    Q_PROPERTY(QString currentUnitName READ currentUnitName WRITE setCurrentUnitName)
    Q_PROPERTY(QStringList convertTos READ convertTos WRITE setConvertTos)
    Q_PROPERTY(QStringList units READ units WRITE setUnits)
    Q_PROPERTY(bool clearText READ clearText)
public:
    explicit KUnitCtrl(QWidget* parent = nullptr);
    ~KUnitCtrl() override;

    /// The offer, one "unit,decimal,maximum,minimum,step" text per unit; the first is the
    /// default unit. Replaces the previous offer and chooses the unit to show anew.
    void setUnits(const QStringList& units);
    QStringList units() const { return m_units; }
    /// The rules between families, one "from,to,ratio[,offset]" text each.
    void setConvertTos(const QStringList& rules);
    QStringList convertTos() const { return m_convertTos; }

    /// The shown number in the default unit.
    double value() const;
    /// Shows v (in the default unit) in the current unit; clear text ends.
    void setValue(double v);
    double getCurrentUnitValue() const;
    void setCurrentUnitValue(double v);
    QString unitName() const;
    /// Renames the default unit within its family (the numbers are not converted).
    void setUnitName(const QString& name);
    QString currentUnitName() const { return m_currentUnitName; }
    /// Shows the value in unit name; an empty or unknown name changes nothing.
    void setCurrentUnitName(const QString& name);

    bool reversed() const;
    void setReversed(bool on);
    bool canKeyEmit() const;
    void setCanKeyEmit(bool on);
    bool canReverse() const;
    void setCanReverse(bool on);
    void setClearText(bool on, bool keep);
    bool clearText() const;

    KUnitDefine* unitDefine() const { return m_unitDefine; }
    /// Whether lengths (the family "Device") are on offer.
    bool haveDeviceFamily() const;
    /**
     * For a field that offers characters: its number in the user's preferred unit with that
     * unit's name ("0.74 cm"), to show beside it. Empty when characters aren't offered, the
     * field holds no number, or no rule leads to the preferred unit.
     */
    QString getFavorUnitText() const;
    void selectAllText();
    QString cleanText() const;
    /// Hides the unit for good (also after the control is shown again).
    void hideLabel();
    /// A fixed width for the unit, to line up several controls; 0 lets the control choose.
    void setLabelFixWidth(int width);
    int labelFixWidth() const { return m_labelFixWidth; }
    void blockDoubleSpin(bool block);
    bool isDoubleSpinBlocked() const;
    QString accessibleName() const;
    void setAccessibleName(const QString& name);

    /// Whether the text in the field is reported as an error now.
    bool hasError() const { return m_hasError; }
    /// Checks the text in the field again (reporting as it changes) and returns hasError().
    bool checkError();

Q_SIGNALS:
    void reverseChanged(bool reverse);
    /// value in the default unit; unitchanged when only the shown unit changed.
    void valueChanged(double value, bool unitchanged);
    void editFocusChanged(bool hasfocus);
    /// Before a step is applied after a change of unit; a slot may change *step.
    void updateSingleStep(const QString& family, const QString& unit, double* step);
    /// Before the decimals are applied after a change of unit; a slot may change *decimal.
    void updateDecimal(const QString& family, const QString& unit, int* decimal);
    void textChanged(const QString& text);
    void doubleSpinBoxStepBy(int steps);
    void closePopup();
    /// The text in the field can't be taken, for the reason in message.
    void emitAddError(QWidget* widget, const QString& message);
    /// The text in the field can be taken again.
    void emitRemoveError(QWidget* widget);

public Q_SLOTS:
    void onLabelLeftClicked();
    void onViewItemSelected(const QModelIndex& idx);
    void onSpinValueChanged(double value);

protected:
    void showEvent(QShowEvent* e) override;

private:
    friend class KUnitSpinBox;
    void updateUi();
    void updateDefines();
    void setupListView(const QStringList& names);
    bool _readText(const QString& text, double* value) const;
    void _checkText();
    void _setError(const QString& message);
    double _exactValue() const;

    QString m_currentUnitName;
    KUnitDefine* m_unitDefine;
    KDoubleSpinBox* m_doubleSpinBox;
    KUnitLabel* m_unitLabel;
    KUnitListView* m_listView;
    int m_listWidth = 0;
    int m_labelFixWidth = 0;
    bool m_hideLabel = false;
    QStringList m_units;
    QStringList m_convertTos;
    // The value the host set, unrounded, and the number it showed as: a change of unit
    // starts from it, so that switching back and forth doesn't wear the value down.
    double m_exactValue = 0.0;
    double m_exactShown = 0.0;
    bool m_hasExact = false;
    bool m_hasError = false;
    QString m_errorText;
};

#endif // KUNITCTRL_H
