#include "kgallerygroup.h"

#include <QKeyEvent>
#include <QPainter>
#include <QPointer>
#include <QShortcut>

#include <kgallerymodeltextitem.h>
#include <kpopupwidget.h>

// --- KGalleryGroup ---

KGalleryGroup::KGalleryGroup(KGalleryAbstractModel* model, int flag)
    : QObject(nullptr)
    , m_uniqueId(getUniqueId())
    , m_flag(flag)
    , m_model(model)
{
}

KGalleryGroup::KGalleryGroup(KGalleryAbstractModel* model, KGalleryModelAbstractItem* item, bool separator)
    : KGalleryGroup(model, separator ? int(SeparatorGroup) : 0)
{
    if (item)
        pushItem(item);
}

KGalleryGroup::~KGalleryGroup() = default;

int KGalleryGroup::getUniqueId()
{
    static int s_counter = 0;
    return ++s_counter;
}

int KGalleryGroup::indexOf(const KGalleryModelAbstractItem* item) const
{
    return m_items.indexOf(const_cast<KGalleryModelAbstractItem*>(item));
}

void KGalleryGroup::_adopt(KGalleryModelAbstractItem* item)
{
    if (m_unique)
        item->setGroupIndex(m_uniqueId);
}

void KGalleryGroup::pushItem(KGalleryModelAbstractItem* item)
{
    insertItem(-1, item);
}

void KGalleryGroup::insertItem(int index, KGalleryModelAbstractItem* item)
{
    if (!item || m_items.contains(item))
        return;
    if (index < 0 || index > m_items.size())
        index = m_items.size();
    _adopt(item);
    m_items.insert(index, item);
    Q_EMIT itemChange(Inserted, index);
}

void KGalleryGroup::popItem()
{
    if (m_items.isEmpty())
        return;
    const int index = m_items.size() - 1;
    // Out of the group first: the combo box deletes the element from its model when told,
    // and then looks at the groups again. The element's place in the model is unchanged.
    const QPointer<KGalleryModelAbstractItem> item = m_items.takeLast();
    Q_EMIT itemChange(Removed, index);
    if (item && (!m_model || m_model->indexOf(item) < 0))
        delete item.data();
}

void KGalleryGroup::clear()
{
    while (!m_items.isEmpty())
        popItem();
}

void KGalleryGroup::setCurrentIndex(int index)
{
    if (index < -1 || index >= m_items.size())
        return;
    Q_EMIT itemChange(CurrentIndexChanged, index);
    if (index != -1)
        return;
    for (KGalleryModelAbstractItem* item : std::as_const(m_items)) {
        if (item->isEnabled())
            item->setChecked(false);
    }
}

void KGalleryGroup::setChecked(int index, bool checked, bool makeCurrent)
{
    if (index == -1) {
        setCurrentIndex(-1);
        return;
    }
    KGalleryModelAbstractItem* item = m_items.value(index);
    if (!item || !item->isEnabled() || item->isChecked() == checked)
        return;
    item->setChecked(checked);
    if (checked && makeCurrent)
        setCurrentIndex(index);
}

void KGalleryGroup::setSubText(const QString& text, int index)
{
    if (KGalleryModelAbstractItem* item = m_items.value(index))
        item->setText(text);
}

void KGalleryGroup::setGroupUnique(bool unique)
{
    if (unique == m_unique)
        return;
    m_unique = unique;
    for (KGalleryModelAbstractItem* item : std::as_const(m_items))
        item->setGroupIndex(unique ? m_uniqueId : 0);
}

bool KGalleryGroup::isVisible() const
{
    for (const KGalleryModelAbstractItem* item : m_items) {
        if (item->isVisible(KGalleryViewNormal))
            return true;
    }
    return false;
}

void KGalleryGroup::setVisible(bool visible)
{
    for (KGalleryModelAbstractItem* item : std::as_const(m_items))
        item->setVisible(visible);
}

void KGalleryGroup::subItemClick(KGalleryModelAbstractItem* item)
{
    if (m_items.contains(item))
        Q_EMIT itemClick(item);
}

bool KGalleryGroup::DoComboEditFieldDraw(QPainter&, const QRect&, int)
{
    return false;
}

// --- KGalleryGroupCombobox ---

KGalleryGroupCombobox::KGalleryGroupCombobox(QWidget* parent)
    : KGalleryComboBox(parent, KGalleryViewBase::ScrollView)
{
    if (KGalleryAbstractModel* m = model()) {
        connect(m, &KGalleryAbstractModel::indexClicked, this, &KGalleryGroupCombobox::on_groupItemClicked);
        connect(m, &KGalleryAbstractModel::elementInserted, this, &KGalleryGroupCombobox::setViewMinHeight);
        connect(m, &KGalleryAbstractModel::elementRemoved, this, &KGalleryGroupCombobox::resetViewMinHeight);
        connect(m, &KGalleryAbstractModel::statusChanged, this, &KGalleryGroupCombobox::statusChanged);
    }
}

KGalleryGroupCombobox::~KGalleryGroupCombobox()
{
    clearShortCut();
    // The groups go without touching the model, which the combo box deletes on its own.
    for (KGalleryGroup* g : std::as_const(m_groups)) {
        disconnect(g, nullptr, this, nullptr);
        delete g;
    }
    m_groups.clear();
}

void KGalleryGroupCombobox::addGroup(KGalleryGroup* group, int index)
{
    insertGroup(index, group);
}

KGalleryGroup* KGalleryGroupCombobox::addGroup(KGalleryModelAbstractItem* item)
{
    auto* g = new KGalleryGroup(model(), item, false);
    insertGroup(-1, g);
    return g;
}

KGalleryGroup* KGalleryGroupCombobox::addSeparatorToGroup(KGalleryModelAbstractItem* item)
{
    if (!item)
        item = new KxSeparatorItem(model());
    auto* g = new KGalleryGroup(model(), item, true);
    insertGroup(-1, g);
    return g;
}

void KGalleryGroupCombobox::insertGroup(int index, KGalleryGroup* group)
{
    KGalleryAbstractModel* m = model();
    if (!group || !m || m_groups.contains(group))
        return;
    if (index < 0 || index > m_groups.size())
        index = m_groups.size();
    connect(group, &KGalleryGroup::itemChange, this, &KGalleryGroupCombobox::on_groupItemChanged);
    m_groups.insert(index, group);
    const int start = startInModel(index);
    for (int i = 0; i < group->itemCount(); ++i)
        m->insertElement(start + i, group->getItem(i));
    _groupChanged(nullptr, KGalleryGroup::Reset, -1);
}

void KGalleryGroupCombobox::removeGroup(int index)
{
    KGalleryGroup* group = m_groups.value(index);
    KGalleryAbstractModel* m = model();
    if (!group)
        return;
    disconnect(group, nullptr, this, nullptr);
    const int start = startInModel(index);
    if (m) {
        for (int i = group->itemCount() - 1; i >= 0; --i)
            m->removeElement(start + i);
    }
    m_groups.removeAt(index);
    delete group;
    separatorVisibleCheck();
    resetShortCutList();
}

void KGalleryGroupCombobox::clear()
{
    while (!m_groups.isEmpty())
        removeGroup(m_groups.size() - 1);
}

int KGalleryGroupCombobox::indexOfGroup(const KGalleryGroup* group) const
{
    return m_groups.indexOf(const_cast<KGalleryGroup*>(group));
}

int KGalleryGroupCombobox::startInModel(int group) const
{
    int start = 0;
    for (int i = 0; i < group && i < m_groups.size(); ++i)
        start += m_groups.at(i)->itemCount();
    return start;
}

KGalleryGroup* KGalleryGroupCombobox::currentGroup(int* indexInGroup) const
{
    const int current = currentIndex();
    if (current < 0)
        return nullptr;
    int start = 0;
    for (KGalleryGroup* g : m_groups) {
        if (current < start + g->itemCount()) {
            if (indexInGroup)
                *indexInGroup = current - start;
            return g;
        }
        start += g->itemCount();
    }
    return nullptr;
}

void KGalleryGroupCombobox::on_groupItemChanged(KGalleryGroup::GroupItemChangeMode mode, int indexInGroup)
{
    _groupChanged(qobject_cast<KGalleryGroup*>(sender()), mode, indexInGroup);
}

void KGalleryGroupCombobox::_groupChanged(KGalleryGroup* group, KGalleryGroup::GroupItemChangeMode mode,
                                          int indexInGroup)
{
    KGalleryAbstractModel* m = model();
    const int g = indexOfGroup(group);
    if (group && g >= 0 && m) {
        const int start = startInModel(g);
        switch (mode) {
        case KGalleryGroup::Inserted:
            m->insertElement(start + indexInGroup, group->getItem(indexInGroup));
            break;
        case KGalleryGroup::Removed:
            m->removeElement(start + indexInGroup);
            break;
        case KGalleryGroup::CurrentIndexChanged: {
            if (indexInGroup == -1) {
                int inGroup = -1;
                if (currentGroup(&inGroup) == group)
                    setCurrentIndex(-1, true);
            } else if (m->currentIndex() != start + indexInGroup) {
                setCurrentIndex(start + indexInGroup, true);
            }
            break;
        }
        default:
            break;
        }
    }
    separatorVisibleCheck();
    if (mode != KGalleryGroup::CurrentIndexChanged)
        resetShortCutList();
}

void KGalleryGroupCombobox::separatorVisibleCheck()
{
    // A separator shows only between two shown content groups, and once.
    bool contentBefore = false;
    KGalleryGroup* pending = nullptr;
    for (KGalleryGroup* g : std::as_const(m_groups)) {
        if (g->isSeparator()) {
            if (pending || !contentBefore) {
                g->setVisible(false);
                continue;
            }
            pending = g;
            continue;
        }
        if (!g->isVisible())
            continue;
        if (pending) {
            pending->setVisible(true);
            pending = nullptr;
        }
        contentBefore = true;
    }
    if (pending)
        pending->setVisible(false);
}

void KGalleryGroupCombobox::on_groupItemClicked(int index)
{
    Q_UNUSED(index);
    int inGroup = -1;
    KGalleryGroup* group = currentGroup(&inGroup);
    if (!group)
        return;
    KGalleryModelAbstractItem* item = group->getItem(inGroup);
    group->subItemClick(item);
    Q_EMIT groupItemClicked(group, item);
}

void KGalleryGroupCombobox::clearShortCut()
{
    const QList<QShortcut*> keys = m_shortcuts.keys();
    m_shortcuts.clear();
    qDeleteAll(keys);
}

void KGalleryGroupCombobox::resetShortCutList()
{
    clearShortCut();
    KGalleryAbstractModel* m = model();
    if (!m)
        return;
    for (int i = 0; i < m->count(); ++i) {
        KGalleryModelAbstractItem* item = m->element(i);
        const QString text = item->text();
        // "&" followed by a character other than another "&".
        const int amp = text.indexOf(QLatin1Char('&'));
        if (amp < 0 || amp + 1 >= text.size() || text.at(amp + 1) == QLatin1Char('&'))
            continue;
        const QKeySequence key = QKeySequence::mnemonic(text);
        if (key.isEmpty())
            continue;
        // Acts while the list is open: the shortcut lives on the popup's content.
        auto* shortcut = new QShortcut(key, view() ? static_cast<QWidget*>(view()) : static_cast<QWidget*>(this));
        shortcut->setContext(Qt::WindowShortcut);
        m_shortcuts.insert(shortcut, item);
        connect(shortcut, &QShortcut::activated, this, &KGalleryGroupCombobox::shortCutPress);
    }
    if (KGalleryViewBase* v = view()) {
        const QList<KGalleryView*> lists = v->findChildren<KGalleryView*>();
        for (KGalleryView* list : lists)
            list->installEventFilter(this);
    }
}

void KGalleryGroupCombobox::shortCutPress()
{
    auto* shortcut = qobject_cast<QShortcut*>(sender());
    _activateMnemonic(m_shortcuts.value(shortcut));
}

bool KGalleryGroupCombobox::eventFilter(QObject* watched, QEvent* e)
{
    // The list turns a plain letter into a posted Alt+letter, which no shortcut sees: the
    // mnemonics are matched here as well.
    if (e->type() == QEvent::KeyPress && qobject_cast<KGalleryView*>(watched)) {
        auto* key = static_cast<QKeyEvent*>(e);
        if (key->modifiers() == Qt::AltModifier) {
            const QKeySequence pressed(QKeyCombination(Qt::AltModifier, Qt::Key(key->key())));
            for (auto it = m_shortcuts.cbegin(); it != m_shortcuts.cend(); ++it) {
                if (it.key()->key() == pressed) {
                    _activateMnemonic(it.value());
                    return true;
                }
            }
        }
    }
    return KGalleryComboBox::eventFilter(watched, e);
}

void KGalleryGroupCombobox::_activateMnemonic(KGalleryModelAbstractItem* item)
{
    KGalleryAbstractModel* m = model();
    if (!item || !m)
        return;
    const QPointer<KGalleryGroupCombobox> guard(this);
    m->clickIndex(m->indexOf(item));
    if (!guard)
        return;
    if (auto* popup = qobject_cast<KPopupWidget*>(view() ? view()->window() : nullptr))
        popup->hide();
}

void KGalleryGroupCombobox::setViewMinHeight(int, KGalleryModelAbstractItem*)
{
    // A growing group mustn't make the open list jump.
    if (KGalleryViewBase* v = view(); v && v->isVisible())
        v->setMinimumHeight(v->sizeHint().height());
}

void KGalleryGroupCombobox::resetViewMinHeight(int)
{
    if (KGalleryViewBase* v = view())
        v->setMinimumHeight(0);
}

void KGalleryGroupCombobox::statusChanged(int)
{
    update();
}

QRect KGalleryGroupCombobox::getEditFieldRect() const
{
    return editFieldRect();
}

void KGalleryGroupCombobox::paintEvent(QPaintEvent* e)
{
    KGalleryComboBox::paintEvent(e);
    int inGroup = -1;
    if (KGalleryGroup* group = currentGroup(&inGroup)) {
        QPainter painter(this);
        group->DoComboEditFieldDraw(painter, getEditFieldRect(), inGroup);
    }
}
