#ifndef WRITERDIALOGS_H
#define WRITERDIALOGS_H

#include <QDialog>
#include <QSet>
#include <functional>

class QComboBox;
class QDialogButtonBox;
class QLabel;
class KPwdLineEdit;
class KPwdToolTipWidget;
class KSecondsEdit;
class KUnitCtrl;

/// The page of a document: lengths in points, line spacing in lines, auto-save in seconds.
struct WriterPageSettings
{
    double paperWidth = 595.3;  // A4: 21 cm
    double paperHeight = 841.9; // 29.7 cm
    double marginTop = 56.7;    // 2 cm
    double marginBottom = 56.7;
    double marginLeft = 56.7;
    double marginRight = 56.7;
    double lineSpacing = 1.0;
    int autoSaveSeconds = 0; // never
};

/**
 * Page Setup: paper size and margins in cm, mm, in or pt (typed behind the number, or all at
 * once by "Show lengths in"), line spacing in lines or points, and how often to save.
 * A value that can't be taken shows a balloon beside its field and keeps OK off.
 */
class WriterPageSetupDialog : public QDialog
{
    Q_OBJECT
public:
    explicit WriterPageSetupDialog(const WriterPageSettings& settings, QWidget* parent = nullptr);
    ~WriterPageSetupDialog() override;

    WriterPageSettings settings() const;
    /// The length fields by name: "paperWidth", "paperHeight", "marginTop", ... "lineSpacing".
    KUnitCtrl* field(const QString& name) const;
    KSecondsEdit* autoSaveField() const { return m_autoSave; }
    QComboBox* unitChoice() const { return m_unitChoice; }
    KPwdToolTipWidget* errorTip() const { return m_errorTip; }
    bool isAcceptable() const;

protected:
    void moveEvent(QMoveEvent* e) override;
    void hideEvent(QHideEvent* e) override;

private:
    KUnitCtrl* _lengthField(const char* name, const QString& units, double value);
    void _showLengthsIn(const QString& unit);
    void _addError(QWidget* field, const QString& message);
    void _removeError(QWidget* field);
    void _checkMargins();
    void _update();

    QList<KUnitCtrl*> m_lengths;
    KUnitCtrl* m_lineSpacing = nullptr;
    KSecondsEdit* m_autoSave = nullptr;
    QComboBox* m_unitChoice = nullptr;
    QDialogButtonBox* m_buttons = nullptr;
    KPwdToolTipWidget* m_errorTip = nullptr;
    QWidget* m_tipField = nullptr;
    QSet<QWidget*> m_fieldErrors;
    QString m_marginError;
};

/**
 * Protect Document: with the document open, a password typed twice protects it; with the
 * document protected, its password takes the protection off. The password fields warn of
 * Caps Lock and refuse copying.
 */
class WriterProtectDialog : public QDialog
{
    Q_OBJECT
public:
    enum Mode { Protect, Unprotect };
    /// check (Unprotect only) answers whether a password is the right one.
    WriterProtectDialog(Mode mode, std::function<bool(const QString&)> check, QWidget* parent = nullptr);
    ~WriterProtectDialog() override;

    Mode mode() const { return m_mode; }
    QString password() const;
    KPwdLineEdit* passwordField() const { return m_password; }
    KPwdLineEdit* confirmField() const { return m_confirm; }
    QLabel* messageLabel() const { return m_message; }
    bool isAcceptable() const;

public Q_SLOTS:
    void accept() override;

private:
    void _update();

    Mode m_mode;
    std::function<bool(const QString&)> m_check;
    KPwdLineEdit* m_password = nullptr;
    KPwdLineEdit* m_confirm = nullptr;
    QLabel* m_message = nullptr;
    QDialogButtonBox* m_buttons = nullptr;
};

#endif // WRITERDIALOGS_H
