#include "kcomboboxcommand.h"

#include <QCompleter>

#include <kcombobox.h>
#include <kcommandfactory.h>

static KCommandFactoryItem<KComboBoxCommand, QObject>
    s_comboBoxCommandItem(QStringLiteral("KComboBoxCommand"), QStringLiteral("QObject"));

KComboBoxCommand::KComboBoxCommand(QObject* host, QObject* parent)
    : KApiCommand(host, parent)
{
}

KComboBoxCommand::~KComboBoxCommand() = default;

void KComboBoxCommand::setSelected(const QString& selected)
{
    if (selected == m_selected)
        return;
    m_selected = selected;
    on_command_changed();
}

void KComboBoxCommand::setCurrentIndex(int index)
{
    if (index == m_currentIndex)
        return;
    m_currentIndex = index;
    on_command_changed();
}

void KComboBoxCommand::setMaxVisibleItems(int count)
{
    if (count == m_maxVisibleItems)
        return;
    m_maxVisibleItems = count;
    on_command_changed();
}

void KComboBoxCommand::setViewMinWidth(int width)
{
    if (width == m_viewMinWidth)
        return;
    m_viewMinWidth = width;
    on_command_changed();
}

QString KComboBoxCommand::items() const
{
    return m_items.join(QLatin1Char(';'));
}

void KComboBoxCommand::insertItem(int i, const QString& text)
{
    if (i < 0 || i > m_items.size())
        i = m_items.size();
    m_items.insert(i, text);
    Q_EMIT itemInsert(i, text);
}

void KComboBoxCommand::removeItem(int i)
{
    if (i < 0 || i >= m_items.size())
        return;
    // The boxes hear of it while the item is still there.
    Q_EMIT itemRemove(i);
    m_items.removeAt(i);
}

void KComboBoxCommand::clearItems()
{
    while (!m_items.isEmpty())
        removeItem(0);
}

void KComboBoxCommand::setItemText(int i, const QString& text)
{
    if (i < 0 || i >= m_items.size())
        return;
    m_items[i] = text;
    Q_EMIT itemChanged(i, text);
}

void KComboBoxCommand::setItems(const QString& items)
{
    m_items.clear();
    if (!items.isEmpty())
        m_items = items.split(QLatin1Char(';'), Qt::SkipEmptyParts);
    Q_EMIT notifySetItems(m_items);
}

bool KComboBoxCommand::hasCompleter() const
{
    return false;
}

QList<KComboBox*> KComboBoxCommand::boxes() const
{
    QList<KComboBox*> live;
    for (const QPointer<KComboBox>& box : m_boxes) {
        if (box)
            live.append(box.data());
    }
    return live;
}

void KComboBoxCommand::initComboBox(KComboBox* box)
{
    if (!box)
        return;
    m_boxes.removeAll(QPointer<KComboBox>());
    m_boxes.append(box);
    box->setMaxVisibleItems(m_maxVisibleItems);
    if (!hasCompleter())
        box->setCompleter(nullptr);
    if (!m_items.isEmpty())
        box->onAddItems(m_items);
    if (box->count() == 0)
        box->onAddItems(QStringList());

    // Widget to command.
    connect(box, &QComboBox::textActivated, this, qOverload<const QString&>(&KComboBoxCommand::comboBoxTriggered));
    connect(box, &KComboBox::doTriggered, this, qOverload<const QString&>(&KComboBoxCommand::comboBoxTriggered));
    connect(box, &QComboBox::activated, this, qOverload<int>(&KComboBoxCommand::comboBoxTriggered));
    // Command to widget.
    connect(this, &KComboBoxCommand::isNeedUpdate, box, &KComboBox::isNeedUpdate);
    connect(this, &KComboBoxCommand::notifyEditLineChange, box, &QComboBox::setEditText);
    connect(this, &KComboBoxCommand::notifySelectedChange, box, &QComboBox::setCurrentIndex);
    connect(this, &KComboBoxCommand::notifyAddItems, box, &KComboBox::onAddItems);
    connect(this, &KComboBoxCommand::notifyClear, box, &QComboBox::clear);
    connect(this, &KComboBoxCommand::itemInsert, box, &KComboBox::onItemInsert);
    connect(this, &KComboBoxCommand::itemRemove, box, &KComboBox::onItemRemove);
    connect(this, &KComboBoxCommand::itemChanged, box, &KComboBox::onItemChanged);
    connect(this, &KComboBoxCommand::notifySetItems, box, &KComboBox::onSetItems);
}

QWidget* KComboBoxCommand::createPocketWidget(QWidget* parent)
{
    auto* box = new KComboBox(this, parent);
    initComboBox(box);
    return box;
}

KCommand* KComboBoxCommand::clone(QObject* host, QObject* parent)
{
    auto* copy = new KComboBoxCommand(host, parent);
    copyProperties(copy);
    // What was chosen in a copy's box is what this command triggers with.
    connect(copy, &KCommand::triggered, this, [this, copy] {
        setSelected(copy->selected());
        trigger();
    });
    return copy;
}

void KComboBoxCommand::comboBoxTriggered(const QString& selected)
{
    setSelected(selected);
    trigger();
    update();
}

void KComboBoxCommand::comboBoxTriggered(int selectedIndex)
{
    setCurrentIndex(selectedIndex);
}
