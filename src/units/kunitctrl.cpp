#include "kunitctrl.h"

#include <QHBoxLayout>
#include <QLineEdit>
#include <QMouseEvent>
#include <QPointer>
#include <QSignalBlocker>
#include <cmath>

#include "kdoublespinbox.h"
#include "kunitdefine.h"
#include "kunitfamily.h"
#include "kunitlabel.h"
#include "kunitlistview.h"
#include "kunitrendering.h"

/*
 * The unit control's number field: it reads numbers with a unit behind them through the
 * control's define, and never refuses a keystroke (the control reports what can't be taken).
 */
class KUnitSpinBox : public KDoubleSpinBox
{
public:
    explicit KUnitSpinBox(KUnitCtrl* ctrl)
        : KDoubleSpinBox(ctrl)
        , m_ctrl(ctrl)
    {
    }

    QLineEdit* edit() const { return lineEdit(); }

    QValidator::State validate(QString& text, int& pos) const override
    {
        Q_UNUSED(pos);
        // The define reads the text, not the base class: that one would take "2,5" for 25
        // where a comma groups digits.
        double v = 0.0;
        if (!m_ctrl->_readText(text, &v))
            return QValidator::Intermediate;
        // Only the reversal's own rule refuses a keystroke: a number beyond its room.
        if (canReverse() && (v < minimum() - 1 || v > maximum() + 1))
            return QValidator::Invalid;
        return v >= minimum() && v <= maximum() ? QValidator::Acceptable : QValidator::Intermediate;
    }

    double valueFromText(const QString& text) const override
    {
        double v = 0.0;
        if (!m_ctrl->_readText(text, &v))
            return value();
        // Rounded to the field's decimals, as the base class rounds what it reads.
        return QString::number(v, 'f', decimals()).toDouble();
    }

    // The base class would drop "group separators" here and so turn "2,5" into 25.
    void fixup(QString&) const override { }

    // The base class writes the field with the line edit's signals blocked; after each of
    // its ways of doing so the control looks at the text again.
    void stepBy(int steps) override
    {
        KDoubleSpinBox::stepBy(steps);
        m_ctrl->_checkText();
    }

protected:
    void keyPressEvent(QKeyEvent* e) override
    {
        KDoubleSpinBox::keyPressEvent(e);
        m_ctrl->_checkText();
    }

    void focusOutEvent(QFocusEvent* e) override
    {
        KDoubleSpinBox::focusOutEvent(e);
        m_ctrl->_checkText();
    }

private:
    KUnitCtrl* m_ctrl;
};

KFSPopupWidget::KFSPopupWidget(QWidget* parent)
    : KPopupWidget(parent, Qt::Popup)
{
    // The list has no frame of its own: one pixel of the popup's border stays visible
    // around it, so that the list does not float without an edge.
    popupLayout()->setContentsMargins(1, 1, 1, 1);
}

void KFSPopupWidget::mousePressEvent(QMouseEvent* e)
{
    if (!frameGeometry().contains(e->globalPosition().toPoint())) {
        setAttribute(Qt::WA_NoMouseReplay); // the press that closes does not reach the label again
        close();
        return;
    }
    KPopupWidget::mousePressEvent(e);
}

KUnitCtrl::KUnitCtrl(QWidget* parent)
    : QWidget(parent)
    , m_unitDefine(new KUnitDefine(this))
{
    auto* spin = new KUnitSpinBox(this);
    m_doubleSpinBox = spin;
    m_unitLabel = new KUnitLabel(this);
    m_listView = new KUnitListView(this);
    m_listView->setVisible(false); // the master list: copied into the popup, never shown

    auto* layout = new QHBoxLayout(this);
    layout->setSpacing(3);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->addWidget(m_doubleSpinBox);
    layout->addWidget(m_unitLabel);
    setFocusProxy(m_doubleSpinBox);

    connect(m_doubleSpinBox, &QDoubleSpinBox::valueChanged, this, &KUnitCtrl::onSpinValueChanged);
    connect(m_doubleSpinBox, &KDoubleSpinBox::reverseChanged, this, &KUnitCtrl::reverseChanged);
    connect(m_doubleSpinBox, &KDoubleSpinBox::editFocusChanged, this, &KUnitCtrl::editFocusChanged);
    connect(m_doubleSpinBox, &QDoubleSpinBox::textChanged, this, &KUnitCtrl::textChanged);
    connect(m_doubleSpinBox, &KDoubleSpinBox::stepByChanged, this, &KUnitCtrl::doubleSpinBoxStepBy);
    connect(m_unitLabel, &KUnitLabel::clicked, this, &KUnitCtrl::onLabelLeftClicked);
    // Every edit of the text, typed or set, is checked: the spin box's own textChanged()
    // only comes with a new value.
    connect(spin->edit(), &QLineEdit::textChanged, this, &KUnitCtrl::_checkText);
}

KUnitCtrl::~KUnitCtrl() = default;

void KUnitCtrl::setUnits(const QStringList& units)
{
    m_units = units;
    m_unitDefine->Clear();
    for (const QString& text : units)
        m_unitDefine->Add(text);
    m_hasExact = false;
    // The unit is chosen anew, even when it keeps its name: its range may have changed.
    m_currentUnitName.clear();
    updateUi();
}

void KUnitCtrl::setConvertTos(const QStringList& rules)
{
    m_convertTos = rules;
    m_unitDefine->ClearConvertTos();
    for (const QString& text : rules)
        m_unitDefine->AddConvertTo(text);
    updateDefines();
}

void KUnitCtrl::updateUi()
{
    QStringList units;
    for (int i = 0; i < m_unitDefine->Count(); ++i) {
        if (const KUnitFamily* family = m_unitDefine->GetUnitDefine(i)->family)
            units += family->GetUnitNames();
    }
    setupListView(KUnitRendering::getInstance()->GetUnitNames(units));
    m_unitLabel->setCanPopup(units.size() > 1);

    const KUnitDefine::FavorUnitState& favour = KUnitDefine::getFavorUnitState();
    QString unit;
    if (favour.chosen && units.contains(favour.unit))
        unit = favour.unit;
    else if (haveDeviceFamily())
        unit = favour.unit;
    else if (!units.isEmpty())
        unit = units.first();
    setCurrentUnitName(unit);
}

bool KUnitCtrl::haveDeviceFamily() const
{
    for (int i = 0; i < m_unitDefine->Count(); ++i) {
        const KUnitFamily* family = m_unitDefine->GetUnitDefine(i)->family;
        if (family && family->name() == QLatin1String("Device"))
            return true;
    }
    return false;
}

void KUnitCtrl::setupListView(const QStringList& names)
{
    m_listView->clear();
    m_listView->addItems(names);
    const QFontMetrics metrics(font());
    int widest = 0;
    for (const QString& name : names)
        widest = qMax(widest, metrics.horizontalAdvance(name));
    // The list's rows pad their text as item views do; the width leaves room for that.
    const int textMargin = 2 * (style()->pixelMetric(QStyle::PM_FocusFrameHMargin, nullptr, m_listView) + 1);
    const QMargins margins = m_listView->contentsMargins();
    // The view's own measure of its rows wins where it asks more (its delegate's padding
    // differs between styles); otherwise the longest name is cut short.
    widest = qMax(widest + textMargin, names.isEmpty() ? 0 : m_listView->sizeHintForColumn(0));
    m_listWidth = widest + margins.left() + margins.right();
    if (m_labelFixWidth <= 0)
        m_unitLabel->setFixedWidth(m_listWidth + 6); // the arrow in the last 6 pixels
    const int rowHeight = names.isEmpty() ? 0 : m_listView->sizeHintForRow(0);
    m_listView->setFixedSize(m_listWidth, int(names.size()) * rowHeight + margins.top() + margins.bottom());
}

void KUnitCtrl::setCurrentUnitName(const QString& name)
{
    if (name.isEmpty() || name == m_currentUnitName)
        return;
    int unit = -1;
    const int record = m_unitDefine->LocateUnit(name, &unit);
    if (record < 0)
        return;
    const bool converting = !m_currentUnitName.isEmpty();
    const double hostValue = converting ? _exactValue() : 0.0;

    m_currentUnitName = name;
    const QString shown = KUnitRendering::getInstance()->GetUnitName(name);
    m_unitLabel->setText(shown.isEmpty() ? name : shown);
    int row = unit;
    for (int i = 0; i < record; ++i) {
        if (const KUnitFamily* family = m_unitDefine->GetUnitDefine(i)->family)
            row += family->GetCount();
    }
    m_listView->setCurrentRow(row);
    {
        // The range moves before the number does; neither step is a change of the value.
        const QSignalBlocker blocker(m_doubleSpinBox);
        updateDefines();
        if (converting) {
            m_doubleSpinBox->setValue(m_unitDefine->ConvertFromDef(hostValue, name));
            if (m_hasExact)
                m_exactShown = m_doubleSpinBox->value();
        }
    }
    _checkText();
    Q_EMIT valueChanged(value(), true);
}

void KUnitCtrl::updateDefines()
{
    const UnitDefineRec* record = m_unitDefine->GetDefUnitDefine();
    if (!record)
        return;
    if (!record->family || record->family->IndexOf(m_currentUnitName) < 0) {
        record = m_unitDefine->FindUnit(m_currentUnitName);
        if (!record)
            return;
    }
    const QString& current = m_currentUnitName;
    m_doubleSpinBox->setMaximum2(m_unitDefine->Convert(record->maximum, record->unit, current));
    m_doubleSpinBox->setMinimum2(m_unitDefine->Convert(record->minimum, record->unit, current));

    // As many decimals as one unit of the record needs in the current unit, and the step
    // scaled with them: a record in pt with step 1 shown in in has 2 decimals, step 0.01.
    const double c = m_unitDefine->Convert(1.0, record->unit, current);
    int decimals = 0;
    if (c > 0 && std::isfinite(c))
        decimals = int(std::ceil(std::log(1.0 / c) / 2.302585092994046));
    double step = std::pow(10.0, -decimals) * record->step;
    decimals = qMax(decimals, record->decimal);

    const QString family = record->family ? record->family->name() : QString();
    Q_EMIT updateDecimal(family, current, &decimals);
    m_doubleSpinBox->setDecimals(qMax(0, decimals));
    Q_EMIT updateSingleStep(family, current, &step);
    m_doubleSpinBox->setSingleStep(step);
    m_doubleSpinBox->setValue(m_doubleSpinBox->value()); // drawn again in the new decimals
    _checkText();
}

double KUnitCtrl::value() const
{
    return m_unitDefine->ConvertToDef(m_doubleSpinBox->value(), m_currentUnitName);
}

void KUnitCtrl::setValue(double v)
{
    m_doubleSpinBox->setClearText(false, true);
    m_doubleSpinBox->setValue(m_unitDefine->ConvertFromDef(v, m_currentUnitName));
    m_exactValue = v;
    m_exactShown = m_doubleSpinBox->value();
    m_hasExact = true;
    _checkText();
    Q_EMIT textChanged(m_doubleSpinBox->text());
}

double KUnitCtrl::_exactValue() const
{
    // The host's own number, as long as the field still shows what it was set to.
    if (m_hasExact && m_doubleSpinBox->value() == m_exactShown)
        return m_exactValue;
    return value();
}

double KUnitCtrl::getCurrentUnitValue() const
{
    return m_doubleSpinBox->value();
}

void KUnitCtrl::setCurrentUnitValue(double v)
{
    m_doubleSpinBox->setValue(v);
    _checkText();
}

QString KUnitCtrl::unitName() const
{
    return m_unitDefine->GetUnitName();
}

void KUnitCtrl::setUnitName(const QString& name)
{
    if (name == unitName())
        return;
    m_unitDefine->SetUnitName(name);
    updateDefines();
}

void KUnitCtrl::onSpinValueChanged(double value)
{
    // With reversal the two limits only mark the turn; the spin box leaves them at once.
    if (m_doubleSpinBox->canReverse()
        && (qFuzzyCompare(value, m_doubleSpinBox->minimum()) || qFuzzyCompare(value, m_doubleSpinBox->maximum())))
        return;
    Q_EMIT valueChanged(m_unitDefine->ConvertToDef(value, m_currentUnitName), false);
}

bool KUnitCtrl::reversed() const
{
    return m_doubleSpinBox->reversed();
}

void KUnitCtrl::setReversed(bool on)
{
    m_doubleSpinBox->setReversed(on);
}

bool KUnitCtrl::canKeyEmit() const
{
    return m_doubleSpinBox->canKeyEmit();
}

void KUnitCtrl::setCanKeyEmit(bool on)
{
    m_doubleSpinBox->setCanKeyEmit(on);
}

bool KUnitCtrl::canReverse() const
{
    return m_doubleSpinBox->canReverse();
}

void KUnitCtrl::setCanReverse(bool on)
{
    if (on == canReverse())
        return;
    m_doubleSpinBox->setCanReverse(on);
    updateDefines(); // the limits gain or lose the reversal's room
}

void KUnitCtrl::setClearText(bool on, bool keep)
{
    m_doubleSpinBox->setClearText(on, keep);
    _checkText();
}

bool KUnitCtrl::clearText() const
{
    return m_doubleSpinBox->clearText();
}

QString KUnitCtrl::getFavorUnitText() const
{
    if (m_unitDefine->LocateUnit(KUnitDefine::CharUnit) < 0)
        return QString();
    const QString clean = m_doubleSpinBox->cleanText();
    bool ok = false;
    m_doubleSpinBox->locale().toDouble(clean, &ok);
    if (clean.isEmpty() || !ok)
        return QString();
    const QString favourite = KUnitDefine::getFavorUnitState().unit;
    if (!m_unitDefine->CanConvert(m_currentUnitName, favourite))
        return QString();
    const double converted = m_unitDefine->Convert(m_doubleSpinBox->value(), m_currentUnitName, favourite);
    // Six decimals at most, then the shortest form of what is left.
    QString text;
    text.setNum(converted, 'f');
    text.setNum(text.toDouble(), 'g');
    return text + QLatin1Char(' ') + KUnitRendering::getInstance()->GetUnitName(favourite);
}

void KUnitCtrl::selectAllText()
{
    m_doubleSpinBox->selectAll();
}

QString KUnitCtrl::cleanText() const
{
    return m_doubleSpinBox->cleanText();
}

void KUnitCtrl::hideLabel()
{
    m_hideLabel = true;
    m_unitLabel->hide();
}

void KUnitCtrl::setLabelFixWidth(int width)
{
    if (m_labelFixWidth == width)
        return;
    m_labelFixWidth = width;
    if (width > 0)
        m_unitLabel->setFixedWidth(width);
    else
        updateUi();
}

void KUnitCtrl::blockDoubleSpin(bool block)
{
    m_doubleSpinBox->blockSignals(block);
}

bool KUnitCtrl::isDoubleSpinBlocked() const
{
    return m_doubleSpinBox->signalsBlocked();
}

QString KUnitCtrl::accessibleName() const
{
    return m_doubleSpinBox->accessibleName();
}

void KUnitCtrl::setAccessibleName(const QString& name)
{
    m_doubleSpinBox->setAccessibleName(name);
}

void KUnitCtrl::onLabelLeftClicked()
{
    if (!m_unitLabel->canPopup())
        return;
    KFSPopupWidget popup(this);
    auto* view = new KUnitListView;
    view->copyView(m_listView);
    connect(view, &QAbstractItemView::activated, this, &KUnitCtrl::onViewItemSelected);
    connect(view, &QAbstractItemView::pressed, this, &KUnitCtrl::onViewItemSelected);
    connect(this, &KUnitCtrl::closePopup, &popup, &QWidget::close);
    connect(view, &KUnitListView::aboutToClose, &popup, &QWidget::close);
    popup.setContentWidget(view);
    const QPointer<KUnitCtrl> self(this);
    popup.exec(KPopupWidget::getWidgetGlobalBottomLeftPos(m_unitLabel), false, 0);
    if (!self)
        return; // the control went away while its list was open
    if (popup.isVisible())
        popup.close();
    update();
}

void KUnitCtrl::onViewItemSelected(const QModelIndex& idx)
{
    if (!idx.isValid())
        return;
    m_listView->setCurrentRow(idx.row());
    const QString text = idx.data(Qt::DisplayRole).toString();
    m_unitLabel->setText(text);
    m_doubleSpinBox->setFocus(Qt::PopupFocusReason);
    setCurrentUnitName(KUnitRendering::getInstance()->GetUnitName2(text));
    Q_EMIT closePopup();
}

void KUnitCtrl::showEvent(QShowEvent* e)
{
    QWidget::showEvent(e);
    updateDefines();
    if (m_hideLabel)
        m_unitLabel->hide();
}

// --- typed text ---

bool KUnitCtrl::_readText(const QString& text, double* value) const
{
    return m_unitDefine->ParseText(text, m_currentUnitName, value, m_doubleSpinBox->locale());
}

bool KUnitCtrl::checkError()
{
    _checkText();
    return m_hasError;
}

void KUnitCtrl::_checkText()
{
    const QString text = m_doubleSpinBox->text();
    const QLocale locale = m_doubleSpinBox->locale();
    if (text.trimmed().isEmpty()) {
        // With clear text on, an empty field stands for the kept value.
        _setError(clearText() ? QString() : tr("Illegal number text."));
        return;
    }
    double number = 0.0;
    QString unitText;
    if (!KUnitDefine::SplitText(text, &number, &unitText, locale)) {
        _setError(tr("Illegal number text."));
        return;
    }
    if (!unitText.isEmpty()) {
        const QString unit = m_unitDefine->ResolveUnit(unitText);
        if (unit.isEmpty() || !m_unitDefine->CanConvert(unit, m_currentUnitName)) {
            _setError(tr("\"%1\" is not a unit of this field.").arg(unitText));
            return;
        }
    }
    double v = 0.0;
    const double room = canReverse() ? 1.0 : 0.0;
    const double low = m_doubleSpinBox->minimum() + room;
    const double high = m_doubleSpinBox->maximum() - room;
    if (!_readText(text, &v) || v < low || v > high) {
        const int decimals = m_doubleSpinBox->decimals();
        _setError(tr("The input value must be between %1 and %2.")
                      .arg(m_unitDefine->FormatText(low, m_currentUnitName, decimals, locale),
                           m_unitDefine->FormatText(high, m_currentUnitName, decimals, locale)));
        return;
    }
    _setError(QString());
}

void KUnitCtrl::_setError(const QString& message)
{
    if (message.isEmpty()) {
        if (!m_hasError)
            return;
        m_hasError = false;
        m_errorText.clear();
        Q_EMIT emitRemoveError(this);
        return;
    }
    if (m_hasError && m_errorText == message)
        return;
    m_hasError = true;
    m_errorText = message;
    Q_EMIT emitAddError(this, message);
}
