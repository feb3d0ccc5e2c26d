#ifndef WRITERKEYBOARD_H
#define WRITERKEYBOARD_H

#include <QDialog>
#include <QKeySequence>

class KKeySequenceEdit;
class KShortcuts;
class QLabel;
class QTableWidget;

/**
 * The "Keyboard Shortcuts" dialog: every key the window's description declares, beside its
 * command, and a field in which the user presses a combination to learn what it does.
 */
class WriterKeyboardDialog : public QDialog
{
    Q_OBJECT
public:
    WriterKeyboardDialog(KShortcuts* shortcuts, QWidget* parent);

    QTableWidget* table() const { return m_table; }
    KKeySequenceEdit* tryField() const { return m_try; }
    /// What the answer line says for the combination in the field.
    QString answer() const;

    /// "Ctrl+B: Bold", "Ctrl+Q: not assigned", or empty for no key.
    static QString describeKey(const KShortcuts* shortcuts, const QKeySequence& key);

private:
    void _fill();
    void _updateAnswer();

    KShortcuts* m_shortcuts;
    QTableWidget* m_table;
    KKeySequenceEdit* m_try;
    QLabel* m_answer;
};

#endif // WRITERKEYBOARD_H
