#ifndef KCOMBOBOX_H
#define KCOMBOBOX_H

#include <QComboBox>
#include <QLineEdit>
#include <QStringList>
#include <functional>

#include <kcommandwidgetbridge.h>

class KComboBoxCommand;

/// The edit field of a KComboBox. The box is its focus proxy and hands it its focus changes.
class NORVIKOFFICEUI_EXPORT KComboLineEdit : public QLineEdit
{
    Q_OBJECT
public:
    explicit KComboLineEdit(QWidget* parent = nullptr);
    ~KComboLineEdit() override;
};

/**
 * An editable combo box in a bar, bound to a command. With a KComboBoxCommand (see
 * KComboBoxCommand::initComboBox) its rows are the command's items, a choice or a typed
 * value that is confirmed with Return reaches the command, and the command's selection comes
 * back into the field, except while a user is typing there.
 *
 * Typed text selects the item that matches it (case aside); Return with a text that no item
 * has emits doTriggered(), and the items stay as they are.
 */
class NORVIKOFFICEUI_EXPORT KComboBox : public KCommandWidgetBridge<QComboBox>
{
    Q_OBJECT
public:
    KComboBox(KCommand* command, QWidget* parent);
    ~KComboBox() override;

    /// The command's text (the box's tool tip and accessible name).
    QString text() const;
    /// Whether the drop-down is open.
    bool isPopuping() const;
    /// How typed text is matched with the items.
    virtual Qt::MatchFlags matchFlags() const;
    /// Fits the drop-down's least width to content, with room for a scroll bar when needed.
    void updateViewWidth(const QStringList& content);

    /// The width of the box in a bar; -1 (at start) for the default.
    int fixedWidth2() const { return m_fixedWidth2; }
    void setFixedWidth2(int width);

    void showPopup() override;
    QSize sizeHint() const override;
    QSize minimumSizeHint() const override;

Q_SIGNALS:
    /// Return with a text that no item has.
    void doTriggered(const QString& text);

public Q_SLOTS:
    /// need is false while the user edits the field or the box has the focus.
    void isNeedUpdate(bool& need);
    /// equal is whether text is the field's text; true for a box that can't be edited.
    void isEqualWithLineEdit(const QString& text, bool& equal);
    void onAddItems(const QStringList& items);
    /// The widest of content, plus room, becomes the drop-down's least width.
    void setViewMinWidth(const QStringList& content);
    void onItemInsert(int index, const QString& text);
    void onItemRemove(int index);
    void onItemChanged(int index, const QString& text);
    void onLineEditReturnPressed();
    void onLineEditTextChanged(const QString& text);
    void onItemActivated(int index);
    void syncCommand();
    void onSetItems(const QStringList& items);

protected:
    bool event(QEvent* event) override;
    bool eventFilter(QObject* watched, QEvent* event) override;
    void focusInEvent(QFocusEvent* event) override;
    void focusOutEvent(QFocusEvent* event) override;

private:
    KComboBoxCommand* _comboCommand() const;
    void _sendDismiss();
    void _updateViewWindow();
    // Runs a change of the rows and puts the field back as it was before.
    void _keepField(const std::function<void()>& change);

    int m_fixedWidth2 = -1;
    bool m_matchingText = false;
};

#endif // KCOMBOBOX_H
