#include "writerkeyboard.h"

#include <QDialogButtonBox>
#include <QHeaderView>
#include <QLabel>
#include <QTableWidget>
#include <QVBoxLayout>

#include <kcommand.h>
#include <kkeysequenceedit.h>
#include <kshortcut.h>
#include <kshortcuts.h>

namespace {
QString commandName(const KShortcut* shortcut)
{
    const KCommand* cmd = shortcut ? shortcut->command() : nullptr;
    if (!cmd)
        return shortcut ? shortcut->getCommand() : QString();
    QString text = cmd->text();
    return text.remove(QLatin1Char('&'));
}
} // namespace

WriterKeyboardDialog::WriterKeyboardDialog(KShortcuts* shortcuts, QWidget* parent)
    : QDialog(parent)
    , m_shortcuts(shortcuts)
    , m_table(new QTableWidget(this))
    , m_try(new KKeySequenceEdit(this))
    , m_answer(new QLabel(this))
{
    setWindowTitle(tr("Keyboard Shortcuts"));
    auto* layout = new QVBoxLayout(this);
    m_table->setColumnCount(2);
    m_table->setHorizontalHeaderLabels({tr("Command"), tr("Key")});
    m_table->horizontalHeader()->setSectionResizeMode(0, QHeaderView::Stretch);
    m_table->horizontalHeader()->setSectionResizeMode(1, QHeaderView::ResizeToContents);
    m_table->verticalHeader()->hide();
    m_table->setEditTriggers(QAbstractItemView::NoEditTriggers);
    m_table->setSelectionBehavior(QAbstractItemView::SelectRows);
    layout->addWidget(m_table);
    auto* prompt = new QLabel(tr("Press a combination to see what it does:"), this);
    layout->addWidget(prompt);
    m_try->setDefaultText(tr("Click here, then press keys"));
    layout->addWidget(m_try);
    m_answer->setMinimumHeight(m_answer->fontMetrics().height());
    layout->addWidget(m_answer);
    auto* buttons = new QDialogButtonBox(QDialogButtonBox::Close, this);
    connect(buttons, &QDialogButtonBox::rejected, this, &QDialog::reject);
    layout->addWidget(buttons);
    connect(m_try, &KKeySequenceEdit::keyChanged, this, &WriterKeyboardDialog::_updateAnswer);
    _fill();
    resize(420, 460);
}

void WriterKeyboardDialog::_fill()
{
    const int count = m_shortcuts ? m_shortcuts->count() : 0;
    m_table->setRowCount(count);
    for (int i = 0; i < count; ++i) {
        const KShortcut* shortcut = m_shortcuts->shortcutAt(i);
        m_table->setItem(i, 0, new QTableWidgetItem(commandName(shortcut)));
        m_table->setItem(i, 1, new QTableWidgetItem(shortcut->key().toString(QKeySequence::NativeText)));
    }
}

QString WriterKeyboardDialog::describeKey(const KShortcuts* shortcuts, const QKeySequence& key)
{
    if (key.isEmpty())
        return QString();
    const QString keyText = key.toString(QKeySequence::NativeText);
    const KShortcut* shortcut = shortcuts ? shortcuts->shortcutAt(key) : nullptr;
    if (!shortcut)
        return tr("%1: not assigned").arg(keyText);
    return tr("%1: %2").arg(keyText, commandName(shortcut));
}

QString WriterKeyboardDialog::answer() const
{
    return m_answer->text();
}

void WriterKeyboardDialog::_updateAnswer()
{
    m_answer->setText(describeKey(m_shortcuts, m_try->keySequence()));
    // The row of the key, when it has one, comes into sight.
    for (int i = 0; i < m_table->rowCount(); ++i) {
        if (m_shortcuts->shortcutAt(i)->key() == m_try->keySequence()) {
            m_table->selectRow(i);
            m_table->scrollToItem(m_table->item(i, 0));
            return;
        }
    }
    m_table->clearSelection();
}
