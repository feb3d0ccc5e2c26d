#include "writerdialogs.h"

#include <QComboBox>
#include <QDialogButtonBox>
#include <QFormLayout>
#include <QGroupBox>
#include <QLabel>
#include <QPushButton>
#include <QStyle>
#include <QVBoxLayout>

#include <kpwdlineedit.h>
#include <kpwdtooltipwidget.h>
#include <ksecondsedit.h>
#include <kunitctrl.h>
#include <kunitdefine.h>
#include <kunitrendering.h>

namespace {
// The host keeps lengths in points. Steps of 10 pt show as 0.1 cm, 1 mm, 0.1 in or 10 pt.
const QString kPaperUnits = QStringLiteral("pt,1,1584,72,10");
const QString kMarginUnits = QStringLiteral("pt,1,720,0,10");
// Lines by halves, or points; one line is 12 points.
const QStringList kSpacingUnits{QStringLiteral("line,2,10,0.5,0.5"), QStringLiteral("pt,1,120,6,1")};
const QStringList kSpacingRules{QStringLiteral("line,pt,12")};
// Text needs some room between the margins: half an inch.
const double kLeastText = 36.0;
} // namespace

WriterPageSetupDialog::WriterPageSetupDialog(const WriterPageSettings& settings, QWidget* parent)
    : QDialog(parent)
{
    setWindowTitle(tr("Page Setup"));

    auto* paper = new QGroupBox(tr("Paper"));
    auto* paperForm = new QFormLayout(paper);
    paperForm->addRow(tr("&Width:"), _lengthField("paperWidth", kPaperUnits, settings.paperWidth));
    paperForm->addRow(tr("&Height:"), _lengthField("paperHeight", kPaperUnits, settings.paperHeight));

    auto* margins = new QGroupBox(tr("Margins"));
    auto* marginForm = new QFormLayout(margins);
    marginForm->addRow(tr("&Top:"), _lengthField("marginTop", kMarginUnits, settings.marginTop));
    marginForm->addRow(tr("&Bottom:"), _lengthField("marginBottom", kMarginUnits, settings.marginBottom));
    marginForm->addRow(tr("&Left:"), _lengthField("marginLeft", kMarginUnits, settings.marginLeft));
    marginForm->addRow(tr("&Right:"), _lengthField("marginRight", kMarginUnits, settings.marginRight));

    // One choice for every length at once; a unit typed behind a number works as well.
    m_unitChoice = new QComboBox;
    const QString favourite = KUnitDefine::getFavorUnitState().unit;
    for (const QString& unit : {KUnitDefine::Centimeters, KUnitDefine::Millimeters, KUnitDefine::Inches,
                                KUnitDefine::Points}) {
        m_unitChoice->addItem(KUnitRendering::getInstance()->GetUnitName(unit), unit);
        if (unit == favourite)
            m_unitChoice->setCurrentIndex(m_unitChoice->count() - 1);
    }
    connect(m_unitChoice, &QComboBox::currentIndexChanged, this,
            [this](int index) { _showLengthsIn(m_unitChoice->itemData(index).toString()); });
    auto* units = new QFormLayout;
    units->addRow(tr("Show lengths &in:"), m_unitChoice);

    auto* text = new QGroupBox(tr("Text"));
    auto* textForm = new QFormLayout(text);
    m_lineSpacing = new KUnitCtrl;
    m_lineSpacing->setObjectName(QStringLiteral("lineSpacing"));
    m_lineSpacing->setUnits(kSpacingUnits);
    m_lineSpacing->setConvertTos(kSpacingRules);
    m_lineSpacing->setCurrentUnitName(QStringLiteral("line"));
    m_lineSpacing->setValue(settings.lineSpacing);
    connect(m_lineSpacing, &KUnitCtrl::emitAddError, this, &WriterPageSetupDialog::_addError);
    connect(m_lineSpacing, &KUnitCtrl::emitRemoveError, this, &WriterPageSetupDialog::_removeError);
    textForm->addRow(tr("Line &spacing:"), m_lineSpacing);
    m_autoSave = new KSecondsEdit;
    m_autoSave->setSeconds(float(settings.autoSaveSeconds));
    auto* autoSaveRow = new QHBoxLayout;
    autoSaveRow->addWidget(m_autoSave);
    autoSaveRow->addWidget(new QLabel(tr("minutes:seconds; 00:00 never")));
    auto* autoSaveLabel = new QLabel(tr("&Save every:"));
    autoSaveLabel->setBuddy(m_autoSave); // a row of a layout gets no buddy by itself
    textForm->addRow(autoSaveLabel, autoSaveRow);

    m_buttons = new QDialogButtonBox(QDialogButtonBox::Ok | QDialogButtonBox::Cancel);
    connect(m_buttons, &QDialogButtonBox::accepted, this, &QDialog::accept);
    connect(m_buttons, &QDialogButtonBox::rejected, this, &QDialog::reject);

    auto* layout = new QVBoxLayout(this);
    auto* columns = new QHBoxLayout;
    columns->addWidget(paper);
    columns->addWidget(margins);
    layout->addLayout(columns);
    layout->addLayout(units);
    layout->addWidget(text);
    layout->addWidget(m_buttons);

    m_errorTip = new KPwdToolTipWidget(this);
    m_errorTip->setTitleText(tr("Check this value."));
    m_errorTip->setIconPixmap(style()->standardIcon(QStyle::SP_MessageBoxWarning).pixmap(16, 16));
    m_errorTip->setAutoHideTime(0); // as long as the error stands
    _showLengthsIn(m_unitChoice->currentData().toString());
    _checkMargins();
}

WriterPageSetupDialog::~WriterPageSetupDialog() = default;

KUnitCtrl* WriterPageSetupDialog::_lengthField(const char* name, const QString& units, double value)
{
    auto* field = new KUnitCtrl;
    field->setObjectName(QString::fromLatin1(name));
    field->setUnits({units});
    field->setValue(value);
    connect(field, &KUnitCtrl::emitAddError, this, &WriterPageSetupDialog::_addError);
    connect(field, &KUnitCtrl::emitRemoveError, this, &WriterPageSetupDialog::_removeError);
    connect(field, &KUnitCtrl::valueChanged, this, &WriterPageSetupDialog::_checkMargins);
    m_lengths << field;
    return field;
}

KUnitCtrl* WriterPageSetupDialog::field(const QString& name) const
{
    for (KUnitCtrl* f : m_lengths) {
        if (f->objectName() == name)
            return f;
    }
    return name == m_lineSpacing->objectName() ? m_lineSpacing : nullptr;
}

void WriterPageSetupDialog::_showLengthsIn(const QString& unit)
{
    for (KUnitCtrl* f : std::as_const(m_lengths))
        f->setCurrentUnitName(unit);
    // The choice stands for the next dialog of this run, and for every length field.
    KUnitDefine::getFavorUnitState() = KUnitDefine::FavorUnitState{unit, true};
}

WriterPageSettings WriterPageSetupDialog::settings() const
{
    WriterPageSettings s;
    s.paperWidth = field(QStringLiteral("paperWidth"))->value();
    s.paperHeight = field(QStringLiteral("paperHeight"))->value();
    s.marginTop = field(QStringLiteral("marginTop"))->value();
    s.marginBottom = field(QStringLiteral("marginBottom"))->value();
    s.marginLeft = field(QStringLiteral("marginLeft"))->value();
    s.marginRight = field(QStringLiteral("marginRight"))->value();
    s.lineSpacing = m_lineSpacing->value();
    s.autoSaveSeconds = qRound(m_autoSave->seconds());
    return s;
}

bool WriterPageSetupDialog::isAcceptable() const
{
    return m_fieldErrors.isEmpty() && m_marginError.isEmpty();
}

void WriterPageSetupDialog::_addError(QWidget* field, const QString& message)
{
    m_fieldErrors.insert(field);
    m_tipField = field;
    m_errorTip->setContentText(message);
    // Under the field, the arrow pointing at its number.
    m_errorTip->show(field->mapToGlobal(QPoint(field->width() / 4, field->height() - 2)));
    _update();
}

void WriterPageSetupDialog::_removeError(QWidget* field)
{
    m_fieldErrors.remove(field);
    if (m_tipField == field) {
        m_errorTip->hide();
        m_tipField = nullptr;
    }
    _checkMargins(); // a margin error may show again now
}

void WriterPageSetupDialog::_checkMargins()
{
    const WriterPageSettings s = settings();
    QWidget* at = nullptr;
    if (s.marginLeft + s.marginRight > s.paperWidth - kLeastText)
        at = field(QStringLiteral("marginRight"));
    else if (s.marginTop + s.marginBottom > s.paperHeight - kLeastText)
        at = field(QStringLiteral("marginBottom"));
    const QString before = m_marginError;
    m_marginError = at ? tr("The margins leave no room for text on this paper.") : QString();
    if (at && m_fieldErrors.isEmpty()) {
        m_tipField = at;
        m_errorTip->setContentText(m_marginError);
        m_errorTip->show(at->mapToGlobal(QPoint(at->width() / 4, at->height() - 2)));
    } else if (!at && !before.isEmpty() && m_fieldErrors.isEmpty()) {
        m_errorTip->hide();
        m_tipField = nullptr;
    }
    _update();
}

void WriterPageSetupDialog::_update()
{
    m_buttons->button(QDialogButtonBox::Ok)->setEnabled(isAcceptable());
}

void WriterPageSetupDialog::moveEvent(QMoveEvent* e)
{
    QDialog::moveEvent(e);
    // The balloon follows its field.
    if (m_errorTip->isVisible() && m_tipField) {
        m_errorTip->hide();
        m_errorTip->show(m_tipField->mapToGlobal(QPoint(m_tipField->width() / 4, m_tipField->height() - 2)));
    }
}

void WriterPageSetupDialog::hideEvent(QHideEvent* e)
{
    QDialog::hideEvent(e);
    m_errorTip->hide();
}

// --- Protect Document ---

WriterProtectDialog::WriterProtectDialog(Mode mode, std::function<bool(const QString&)> check, QWidget* parent)
    : QDialog(parent)
    , m_mode(mode)
    , m_check(std::move(check))
{
    setWindowTitle(tr("Protect Document"));
    auto* intro = new QLabel(mode == Protect
                                 ? tr("Keep this document from changes until its password is given.")
                                 : tr("This document is protected. Give its password to allow changes."));
    intro->setWordWrap(true);
    auto* form = new QFormLayout;
    m_password = new KPwdLineEdit;
    form->addRow(tr("&Password:"), m_password);
    if (mode == Protect) {
        m_confirm = new KPwdLineEdit;
        form->addRow(tr("&Confirm:"), m_confirm);
        connect(m_confirm, &QLineEdit::textChanged, this, &WriterProtectDialog::_update);
    }
    connect(m_password, &QLineEdit::textChanged, this, &WriterProtectDialog::_update);
    m_message = new QLabel;
    m_buttons = new QDialogButtonBox(QDialogButtonBox::Ok | QDialogButtonBox::Cancel);
    m_buttons->button(QDialogButtonBox::Ok)->setText(mode == Protect ? tr("P&rotect") : tr("&Unprotect"));
    connect(m_buttons, &QDialogButtonBox::accepted, this, &WriterProtectDialog::accept);
    connect(m_buttons, &QDialogButtonBox::rejected, this, &QDialog::reject);

    auto* layout = new QVBoxLayout(this);
    layout->addWidget(intro);
    layout->addLayout(form);
    layout->addWidget(m_message);
    layout->addWidget(m_buttons);
    setMinimumWidth(360);
    _update();
}

WriterProtectDialog::~WriterProtectDialog() = default;

QString WriterProtectDialog::password() const
{
    return m_password->text();
}

bool WriterProtectDialog::isAcceptable() const
{
    if (m_password->text().isEmpty())
        return false;
    return m_mode == Unprotect || m_confirm->text() == m_password->text();
}

void WriterProtectDialog::_update()
{
    const bool differ = m_mode == Protect && !m_confirm->text().isEmpty() && m_confirm->text() != m_password->text();
    m_message->setText(differ ? tr("The two passwords differ.") : QString());
    m_buttons->button(QDialogButtonBox::Ok)->setEnabled(isAcceptable());
}

void WriterProtectDialog::accept()
{
    if (!isAcceptable())
        return;
    if (m_mode == Unprotect && m_check && !m_check(password())) {
        m_message->setText(tr("The password is not correct."));
        m_password->selectAll();
        m_password->setFocus();
        return;
    }
    QDialog::accept();
}
