#include "krbsubtabbar.h"

#include <QBoxLayout>
#include <QStylePainter>
#include <QWheelEvent>

#include <kabstractlistcommand.h>
#include <kdrawhelpfunc.h>
#include <khotkeyevent.h>
#include <korbstyle.h>
#include <krbtabbutton.h>

#include "krbpaint_p.h"

KRbSubTabBar::KRbSubTabBar(KCommand* cmd, QWidget* parent)
    : KCommandWidgetBridge<QWidget>(cmd, parent, true)
    , m_layout(new QHBoxLayout)
{
    auto* outer = new QVBoxLayout(this);
    outer->setContentsMargins(0, 0, 0, 0);
    outer->setSpacing(0);
    outer->addSpacing(1);
    outer->addLayout(m_layout);
    m_layout->setContentsMargins(0, 0, 0, 0);
    m_layout->setSpacing(0);
    m_layout->setSizeConstraint(QLayout::SetMinimumSize);
    m_layout->addStretch(); // the tabs go in before it
    if (style()->styleHint(KORBStyle::KSH_SlideBlock, nullptr, this) != 0) {
        m_slideBlock = new KSlideBlock(this, this);
        connect(m_slideBlock, &KSlideBlock::slideDataChanged, this, &KRbSubTabBar::onValueChanged);
    }
}

KRbSubTabBar::~KRbSubTabBar() = default;

KRbTabButton* KRbSubTabBar::tabButtonAt(int index) const
{
    if (index < 0 || index >= itemCount())
        return nullptr;
    return qobject_cast<KRbTabButton*>(m_layout->itemAt(index)->widget());
}

int KRbSubTabBar::itemCount() const
{
    return m_layout->count() - 1;
}

int KRbSubTabBar::getIndex(const QWidget* w) const
{
    if (!w)
        return -1;
    for (int i = 0; i < itemCount(); ++i) {
        if (m_layout->itemAt(i)->widget() == w)
            return i;
    }
    return -1;
}

void KRbSubTabBar::syncButtonStatus()
{
    KRbTabButton* button = currentButton();
    if (!button)
        return;
    switch (m_status) {
    case Expanded:
        button->setCheckStatus(KRbTabButton::Selected);
        break;
    case Popup:
        button->setCheckStatus(KRbTabButton::Popup);
        break;
    default:
        button->setCheckStatus(KRbTabButton::Normal);
        break;
    }
}

void KRbSubTabBar::setStatus(SubTabBarStatus status, bool byUser)
{
    m_status = status;
    syncButtonStatus();
    Q_EMIT statusChanged(byUser);
}

void KRbSubTabBar::setCurrentIdx(int index)
{
    if (KRbTabButton* old = currentButton())
        old->setCheckStatus(KRbTabButton::Normal);
    m_currentIdx = index;
    m_lastIdx = index;
    Q_EMIT currentIdxChanged();
    syncButtonStatus();
}

void KRbSubTabBar::onCommandConnected()
{
    if (auto* list = qobject_cast<KAbstractListCommand*>(command())) {
        connect(list, &KAbstractListCommand::subCommandInsert, this, &KRbSubTabBar::onCommandInserted);
        connect(list, &KAbstractListCommand::subCommandRemove, this, &KRbSubTabBar::onCommandRemoved);
    }
}

void KRbSubTabBar::onCommandInserted(int index, KCommand* cmd)
{
    if (!cmd)
        return;
    if (index < 0 || index > itemCount())
        index = itemCount();
    KRbTabButton* current = currentButton();
    connect(cmd, &KCommand::changed, this, &KRbSubTabBar::on_subCommand_changed, Qt::UniqueConnection);
    auto* button = new KRbTabButton(cmd, this);
    connect(button, &QAbstractButton::clicked, this, &KRbSubTabBar::tabButtonClicked);
    connect(button, &KRbTabButton::dblClicked, this, &KRbSubTabBar::tabButtonDoubleClicked);
    m_layout->insertWidget(index, button);
    if (!cmd->isVisible())
        button->hide();
    if (current)
        m_currentIdx = getIndex(current);
    // The remembered tab keeps its place in the row.
    if (m_lastIdx >= index)
        ++m_lastIdx;
    updateGeometry();
    if (index == 0) {
        setStatus(m_status, false);
        setCurrentIdx(0);
    }
}

void KRbSubTabBar::onCommandRemoved(int index)
{
    if (index < 0 || index >= itemCount())
        return;
    if (index == m_currentIdx)
        setCurrentIdx(-1);
    KRbTabButton* current = currentButton();
    QLayoutItem* item = m_layout->takeAt(index);
    auto* button = qobject_cast<KRbTabButton*>(item->widget());
    delete item;
    if (button) {
        KCommand* cmd = button->command();
        button->hide();
        button->deleteLater();
        bool stillShown = false;
        for (int i = 0; i < itemCount(); ++i)
            stillShown = stillShown || (tabButtonAt(i) && tabButtonAt(i)->command() == cmd);
        if (cmd && !stillShown)
            disconnect(cmd, &KCommand::changed, this, &KRbSubTabBar::on_subCommand_changed);
    }
    if (current)
        m_currentIdx = getIndex(current);
    if (m_lastIdx == index)
        m_lastIdx = -1;
    else if (m_lastIdx > index)
        --m_lastIdx;
    updateGeometry();
}

void KRbSubTabBar::tabButtonClicked()
{
    Q_EMIT subTabBarClicked();
    auto* button = qobject_cast<KRbTabButton*>(sender());
    if (!button)
        return;
    if (button == currentButton() && m_status == Expanded)
        return;
    if (m_status != Expanded)
        setStatus(Popup, true);
    setCurrentIdx(getIndex(button));
    update();
}

void KRbSubTabBar::tabButtonDoubleClicked()
{
    Q_EMIT subTabBarClicked();
    setStatus(m_status != Expanded ? Expanded : Collapsed, true);
}

void KRbSubTabBar::on_subCommand_changed()
{
    auto* cmd = qobject_cast<KCommand*>(sender());
    if (!cmd)
        return;
    int index = -1;
    for (int i = 0; i < itemCount() && index < 0; ++i) {
        if (tabButtonAt(i) && tabButtonAt(i)->command() == cmd)
            index = i;
    }
    if (index < 0)
        return;
    KRbTabButton* button = tabButtonAt(index);
    const bool visible = cmd->isVisible();
    const bool usable = visible && cmd->isEnabled();
    const bool raise = cmd->property("visibleRaise", false).toBool();
    const bool alone = cmd->property("visibleAlone", false).toBool();
    // The tab's own visibility still is the one before this change.
    const bool appears = visible && !button->isVisibleTo(this);

    if (index == m_currentIdx && !usable) {
        // The first tab takes over, and the bar remembers where the user was.
        setCurrentIdx(0);
        m_lastIdx = index;
    } else if (usable && index != m_currentIdx && ((raise && appears) || m_lastIdx == index)) {
        setCurrentIdx(index);
    }
    if (alone && visible) {
        if (!m_aloneMode || m_currentIdx != index)
            setVisibleAlone(index);
    } else if (alone) {
        updateButtonsVisible();
    }
    setMinimumWidth(minimumSizeHint().width());
}

void KRbSubTabBar::setVisibleAlone(int index)
{
    m_aloneMode = true;
    for (int i = 0; i < itemCount(); ++i) {
        KRbTabButton* button = tabButtonAt(i);
        if (button && i != index)
            button->hide();
        else if (button)
            button->show();
    }
    setCurrentIdx(index);
    _enableFileButton(false);
}

void KRbSubTabBar::updateButtonsVisible()
{
    for (int i = 0; i < itemCount(); ++i) {
        KRbTabButton* button = tabButtonAt(i);
        if (button && button->command())
            button->setVisible(button->command()->isVisible());
    }
    m_aloneMode = false;
    _enableFileButton(true);
}

void KRbSubTabBar::_enableFileButton(bool enabled)
{
    // The file button stands beside the tabs in the same bar, under this fixed name.
    for (QWidget* w = parentWidget(); w; w = w->parentWidget()) {
        if (auto* fileButton = w->findChild<QWidget*>(QStringLiteral("RbTabFileButton"))) {
            fileButton->setEnabled(enabled);
            return;
        }
        if (w->isWindow())
            return;
    }
}

int KRbSubTabBar::_adjacentVisible(int index, int direction) const
{
    for (int i = index + direction; i >= 0 && i < itemCount(); i += direction) {
        const KRbTabButton* button = tabButtonAt(i);
        if (button && button->isVisibleTo(this))
            return i;
    }
    return -1;
}

void KRbSubTabBar::activePrevTab()
{
    const int index = _adjacentVisible(m_currentIdx, -1);
    if (index >= 0)
        setCurrentIdx(index);
}

void KRbSubTabBar::activeNextTab()
{
    const int index = _adjacentVisible(m_currentIdx, 1);
    if (index >= 0)
        setCurrentIdx(index);
}

int KRbSubTabBar::getLastButtonEndPos() const
{
    const int last = _adjacentVisible(itemCount(), -1);
    const KRbTabButton* button = tabButtonAt(last);
    return button ? button->geometry().right() + 1 : 0;
}

bool KRbSubTabBar::isNextSelected(const QWidget* w) const
{
    const KRbTabButton* current = currentButton();
    const int index = getIndex(w);
    return current && index >= 0 && current->checkStatus() == KRbTabButton::Selected
        && _adjacentVisible(index, 1) == m_currentIdx;
}

bool KRbSubTabBar::isBeforeSelected(const QWidget* w) const
{
    const KRbTabButton* current = currentButton();
    const int index = getIndex(w);
    return current && index >= 0 && current->checkStatus() == KRbTabButton::Selected
        && _adjacentVisible(index, -1) == m_currentIdx;
}

bool KRbSubTabBar::isContentTab(int index) const
{
    const KRbTabButton* button = tabButtonAt(index);
    return button && button->command() && button->command()->property("rbContextTableButton", false).toBool();
}

int KRbSubTabBar::contentIndex() const
{
    for (int i = 0; i < itemCount(); ++i) {
        if (isContentTab(i) && tabButtonAt(i)->isVisibleTo(this))
            return i;
    }
    return -1;
}

bool KRbSubTabBar::isNextContent(const QWidget* w) const
{
    const int index = getIndex(w);
    const int context = contentIndex();
    return index >= 0 && context >= 0 && _adjacentVisible(index, 1) == context;
}

bool KRbSubTabBar::isBeforeContent(const QWidget* w) const
{
    const int index = getIndex(w);
    const int context = contentIndex();
    return index >= 0 && context >= 0 && _adjacentVisible(index, -1) == context;
}

QColor KRbSubTabBar::getSlideBlockColor() const
{
    return m_slideBlock ? m_slideBlock->getColor() : QColor();
}

bool KRbSubTabBar::isHideGradient() const
{
    return m_slideBlock && m_slideBlock->isMoving();
}

QSize KRbSubTabBar::_buttonsSize(bool minimum) const
{
    int width = 0;
    int height = 0;
    for (int i = 0; i < itemCount(); ++i) {
        const KRbTabButton* button = tabButtonAt(i);
        if (!button || !button->isVisibleTo(this))
            continue;
        const QSize s = minimum ? button->minimumSizeHint() : button->sizeHint();
        width += s.width();
        height = qMax(height, s.height());
    }
    return QSize(width, height + 1);
}

QSize KRbSubTabBar::sizeHint() const
{
    ensureConnectCommand();
    return _buttonsSize(false);
}

QSize KRbSubTabBar::minimumSizeHint() const
{
    ensureConnectCommand();
    return _buttonsSize(true);
}

void KRbSubTabBar::onValueChanged(const KSliderData& previous, const KSliderData& current)
{
    update(previous.rect.united(current.rect));
    Q_EMIT valueChanged();
}

void KRbSubTabBar::paintEvent(QPaintEvent*)
{
    if (!m_slideBlock || !KRbPaint::isFrameworkStyle(this))
        return;
    KStyleOptionRbSubTabBar option;
    option.initFrom(this);
    m_slideBlock->initOption(option);
    QStylePainter painter(this);
    painter.drawComplexControl(KORBStyle::KCC_RbSubTabBar, option);
}

void KRbSubTabBar::showEvent(QShowEvent* e)
{
    KCommandWidgetBridge<QWidget>::showEvent(e);
    if (m_slideBlock)
        m_slideBlock->reset(currentButton());
}

void KRbSubTabBar::wheelEvent(QWheelEvent* e)
{
    if (itemCount() == 0) {
        KCommandWidgetBridge<QWidget>::wheelEvent(e);
        return;
    }
    int delta = e->angleDelta().y();
    if (delta == 0)
        delta = e->angleDelta().x();
    if (delta < 0)
        activeNextTab();
    else
        activePrevTab();
    e->accept();
}

// --- key tips ---

bool KRbSubTabBar::event(QEvent* e)
{
    if (int(e->type()) != KEvent::HotKeyCollect)
        return KCommandWidgetBridge<QWidget>::event(e);
    auto* collect = static_cast<KHotKeyCollectEvent*>(e);
    for (int i = 0; i < itemCount(); ++i) {
        KRbTabButton* button = tabButtonAt(i);
        if (!button || !button->isVisible())
            continue;
        const QPoint pos = KDrawHelpFunc::getHotKeyShowPos(button, button->size(), 2, 8) - QPoint(0, 8);
        collect->addHotKey(pos, button->hotkey(), button, true);
    }
    return true;
}
