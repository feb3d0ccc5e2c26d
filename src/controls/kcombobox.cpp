#include "kcombobox.h"

#include <QAbstractItemView>
#include <QFocusEvent>
#include <QKeyEvent>
#include <QStyledItemDelegate>

#include <kcomboboxcommand.h>
#include <kevent.h>

namespace {

// The width of a box in a bar that is given none.
constexpr int kDefaultWidth = 60;
// Room around the widest item of the drop-down.
constexpr int kViewPadding = 8;
constexpr int kViewMinPadding = 10;
// Rows of the drop-down are at least this high, so that they are easy to hit.
constexpr int kRowHeight = 22;

QStringList itemTexts(const QComboBox* box)
{
    QStringList texts;
    texts.reserve(box->count());
    for (int i = 0; i < box->count(); ++i)
        texts << box->itemText(i);
    return texts;
}

int widestText(const QFontMetrics& fm, const QStringList& texts)
{
    int widest = 0;
    for (const QString& t : texts)
        widest = qMax(widest, fm.horizontalAdvance(t));
    return widest;
}

} // namespace

KComboLineEdit::KComboLineEdit(QWidget* parent)
    : QLineEdit(parent)
{
}

KComboLineEdit::~KComboLineEdit() = default;

KComboBox::KComboBox(KCommand* command, QWidget* parent)
    : KCommandWidgetBridge<QComboBox>(command, parent, true)
{
    class KComboBoxDelegate : public QStyledItemDelegate
    {
    public:
        using QStyledItemDelegate::QStyledItemDelegate;
        QSize sizeHint(const QStyleOptionViewItem& option, const QModelIndex& index) const override
        {
            QSize size = QStyledItemDelegate::sizeHint(option, index);
            size.setHeight(qMax(size.height(), kRowHeight));
            return size;
        }
    };
    setItemDelegate(new KComboBoxDelegate(this));

    setEditable(true);
    setLineEdit(new KComboLineEdit(this));
    connect(lineEdit(), &QLineEdit::returnPressed, this, &KComboBox::onLineEditReturnPressed);
    connect(this, &QComboBox::activated, this, &KComboBox::onItemActivated);
    connect(this, &QComboBox::editTextChanged, this, &KComboBox::onLineEditTextChanged);

    setToolTip(text());
    setAccessibleName(text());
    setInsertPolicy(QComboBox::NoInsert);
    if (command)
        connect(command, &KCommand::changed, this, &KComboBox::syncCommand);
    syncCommand();

    setContextMenuPolicy(Qt::NoContextMenu);
    lineEdit()->setContextMenuPolicy(Qt::NoContextMenu);
    view()->installEventFilter(this);
    KCommandBridgeHelper::registerIdle(this);
}

KComboBox::~KComboBox() = default;

KComboBoxCommand* KComboBox::_comboCommand() const
{
    return qobject_cast<KComboBoxCommand*>(command());
}

QString KComboBox::text() const
{
    KCommand* cmd = command();
    return cmd ? cmd->text() : QString();
}

bool KComboBox::isPopuping() const
{
    return view() && view()->isVisible();
}

Qt::MatchFlags KComboBox::matchFlags() const
{
    return Qt::MatchFixedString; // the whole text, case aside
}

void KComboBox::setFixedWidth2(int width)
{
    if (width == m_fixedWidth2)
        return;
    m_fixedWidth2 = width;
    updateGeometry();
}

QSize KComboBox::sizeHint() const
{
    QSize size = KCommandWidgetBridge<QComboBox>::sizeHint(); // builds the rows first
    size.setWidth(m_fixedWidth2 > 0 ? m_fixedWidth2 : kDefaultWidth);
    return size;
}

QSize KComboBox::minimumSizeHint() const
{
    QSize size = QComboBox::minimumSizeHint();
    if (m_fixedWidth2 > 0)
        size.setWidth(m_fixedWidth2);
    return size;
}

void KComboBox::syncCommand()
{
    KCommand* cmd = command();
    if (!cmd)
        return;
    setVisibleFromCommand(cmd->isVisible());
    setEnabled(cmd->isEnabled());
    setToolTip(cmd->getToolTip());
    KComboBoxCommand* combo = _comboCommand();
    if (!combo)
        return;
    setMaxVisibleItems(combo->maxVisibleItems());
    if (view() && combo->viewMinWidth() != -1)
        view()->setMinimumWidth(combo->viewMinWidth());
    // What a user is typing is never overwritten; the host's value comes at the next sync
    // after the focus has left.
    if (lineEdit() && lineEdit()->isModified() && hasFocus())
        return;
    setCurrentIndex(combo->currentIndex());
    if (lineEdit())
        lineEdit()->setText(combo->selected());
}

void KComboBox::isNeedUpdate(bool& need)
{
    const bool mine = lineEdit() ? !lineEdit()->isModified() && !hasFocus() : !hasFocus();
    // Through the command's signal every box of the command answers in turn: the first one
    // gives the answer, the others can only turn it to false.
    KComboBoxCommand* combo = _comboCommand();
    if (combo && sender() == combo) {
        const QList<KComboBox*> boxes = combo->boxes();
        if (!boxes.isEmpty() && boxes.first() != this) {
            need = need && mine;
            return;
        }
    }
    need = mine;
}

void KComboBox::isEqualWithLineEdit(const QString& text, bool& equal)
{
    equal = lineEdit() ? lineEdit()->text() == text : true;
}

void KComboBox::_keepField(const std::function<void()>& change)
{
    if (!lineEdit()) {
        change();
        return;
    }
    const QString text = lineEdit()->text();
    const bool modified = lineEdit()->isModified();
    const int cursor = lineEdit()->cursorPosition();
    const bool wasMatching = m_matchingText;
    m_matchingText = true;
    change();
    if (lineEdit()->text() != text || (currentIndex() >= 0 && findText(text, matchFlags()) != currentIndex())) {
        setCurrentIndex(findText(text, matchFlags()));
        lineEdit()->setText(text);
        lineEdit()->setCursorPosition(cursor);
    }
    lineEdit()->setModified(modified);
    m_matchingText = wasMatching;
}

void KComboBox::onAddItems(const QStringList& items)
{
    _keepField([&] { addItems(items); });
    updateViewWidth(itemTexts(this));
}

void KComboBox::onSetItems(const QStringList& items)
{
    _keepField([&] {
        clear();
        addItems(items);
    });
    updateViewWidth(itemTexts(this));
}

void KComboBox::onItemInsert(int index, const QString& text)
{
    // An insert must not change what the field shows.
    _keepField([&] { insertItem(index, text); });
}

void KComboBox::onItemRemove(int index)
{
    _keepField([&] { removeItem(index); });
}

void KComboBox::onItemChanged(int index, const QString& text)
{
    _keepField([&] { setItemText(index, text); });
}

void KComboBox::setViewMinWidth(const QStringList& content)
{
    if (!view() || content.isEmpty())
        return;
    view()->setMinimumWidth(widestText(view()->fontMetrics(), content) + kViewMinPadding);
}

void KComboBox::updateViewWidth(const QStringList& content)
{
    if (!view())
        return;
    KComboBoxCommand* combo = _comboCommand();
    if (combo && combo->viewMinWidth() != -1)
        return; // the command sets the width
    int width = widestText(view()->fontMetrics(), content);
    if (count() > maxVisibleItems())
        width += style()->pixelMetric(QStyle::PM_ScrollBarExtent, nullptr, view());
    view()->setMinimumWidth(width + kViewPadding);
}

void KComboBox::onLineEditReturnPressed()
{
    QLineEdit* edit = lineEdit();
    if (!edit)
        return;
    edit->setModified(false);
    const QString text = edit->text();
    const int index = findText(text, matchFlags());
    if (index < 0) {
        Q_EMIT doTriggered(text); // a typed value for the host; the items stay as they are
        _sendDismiss();
        return;
    }
    // A typed item is chosen as though it was picked from the list; the field takes the
    // item's own spelling, so that the end of the edit doesn't choose it a second time.
    m_matchingText = true;
    setCurrentIndex(index);
    edit->setText(itemText(index));
    m_matchingText = false;
    Q_EMIT activated(index); // onItemActivated() sends the dismiss event
    Q_EMIT textActivated(itemText(index));
}

void KComboBox::onItemActivated(int)
{
    _sendDismiss();
}

void KComboBox::_sendDismiss()
{
    // Up the parents: the focus leaves the field and the popups above the box close.
    KEvent dismiss(KEvent::Dismiss);
    sendPropagatedEvent(this, &dismiss, false);
}

void KComboBox::onLineEditTextChanged(const QString& text)
{
    if (m_matchingText)
        return;
    const int index = findText(text, matchFlags());
    if (index < 0)
        return;
    QLineEdit* edit = lineEdit();
    const bool modified = edit && edit->isModified();
    m_matchingText = true;
    if (index != currentIndex())
        setCurrentIndex(index);
    // Choosing the item writes its spelling into the field; the user's spelling stays.
    if (edit && edit->text() != text) {
        edit->setText(text);
        edit->setCursorPosition(0);
    }
    if (edit)
        edit->setModified(modified);
    m_matchingText = false;
}

void KComboBox::showPopup()
{
    QLineEdit* edit = lineEdit();
    if (!edit) {
        QComboBox::showPopup();
        return;
    }
    const QString text = edit->text();
    const int selectionStart = edit->selectionStart();
    const int selectionLength = edit->selectedText().size();
    const int cursor = edit->cursorPosition();
    const bool modified = edit->isModified();
    const int index = findText(text, matchFlags());
    m_matchingText = true;
    setCurrentIndex(index);
    m_matchingText = false;
    QComboBox::showPopup();
    if (index >= 0)
        return;
    // The change of index cleared the field, and the opening list took the selection:
    // what was typed comes back as it was.
    m_matchingText = true;
    if (edit->text() != text)
        edit->setText(text);
    if (selectionStart >= 0)
        edit->setSelection(selectionStart, selectionLength);
    else
        edit->setCursorPosition(cursor);
    edit->setModified(modified);
    m_matchingText = false;
}

void KComboBox::focusInEvent(QFocusEvent* event)
{
    if (lineEdit())
        lineEdit()->end(false);
    QComboBox::focusInEvent(event);
    // While the box has the focus the field counts as edited: the host doesn't write to it.
    if (lineEdit())
        lineEdit()->setModified(true);
}

void KComboBox::focusOutEvent(QFocusEvent* event)
{
    QComboBox::focusOutEvent(event);
    if (lineEdit())
        lineEdit()->setModified(false);
}

bool KComboBox::eventFilter(QObject* watched, QEvent* event)
{
    if (watched == view() && event->type() == QEvent::KeyPress
        && static_cast<QKeyEvent*>(event)->key() == Qt::Key_Tab) {
        hidePopup();
        return true;
    }
    return KCommandWidgetBridge<QComboBox>::eventFilter(watched, event);
}

void KComboBox::_updateViewWindow()
{
    if (QWidget* popup = view() ? view()->window() : nullptr) {
        if (popup != window())
            popup->update();
    }
}

bool KComboBox::event(QEvent* event)
{
    switch (int(event->type())) {
    case KEvent::Idle:
        if (KCommand* cmd = command())
            cmd->update();
        _updateViewWindow();
        return true;
    case KEvent::Dismiss:
        _updateViewWindow();
        break; // not accepted: it goes on up to the popups
    default:
        break;
    }
    // The bridge shows the command's rich tip on a tool tip event.
    return KCommandWidgetBridge<QComboBox>::event(event);
}
