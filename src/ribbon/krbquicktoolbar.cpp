#include "krbquicktoolbar.h"

#include <QApplication>
#include <QBoxLayout>
#include <QDragEnterEvent>
#include <QMenu>
#include <QMimeData>
#include <QPainter>
#include <QScreen>
#include <QScrollArea>
#include <QStyleOption>

#include <kabstractlistcommand.h>
#include <kblockedmouseevent.h>
#include <kcommand.h>
#include <kevent.h>
#include <khotkeyevent.h>
#include <korbstyle_2013.h>
#include <kdrawhelpfunc.h>
#include <kseparatorcommand.h>
#include <ktoolbutton.h>

#include "krbpictures_p.h"

namespace {
const int kArrowWidth = 15;
const int kBarHeight = 22;
const char kDragFormat[] = "application/drag-toolbar-action";
} // namespace

// --- arrow ---

KRbQuickToolbarArrowButton::KRbQuickToolbarArrowButton(QWidget* parent)
    : QAbstractButton(parent)
{
    setToolTip(tr("More commands"));
    setFixedSize(kArrowWidth, kBarHeight);
    setFocusPolicy(Qt::NoFocus);
    setAttribute(Qt::WA_Hover);
}

bool KRbQuickToolbarArrowButton::event(QEvent* e)
{
    if (int(e->type()) == KEvent::BlockedMouse) {
        // The press that closes the open panel must not open it again.
        auto* blocked = static_cast<KBlockedMouseEvent*>(e);
        QMouseEvent* mouse = blocked->mouseEvent();
        if (mouse && mouse->type() == QEvent::MouseButtonPress && blocked->popup() == m_panel.data()) {
            blocked->setFirstFlag(true);
            return true;
        }
    }
    return QAbstractButton::event(e);
}

void KRbQuickToolbarArrowButton::paintEvent(QPaintEvent*)
{
    QPainter painter(this);
    QStyleOption option;
    option.initFrom(this);
    if (isDown())
        option.state |= QStyle::State_Sunken;
    style()->drawControl(KORBStyle_2013::KCE_QuickToolbarArrow, &option, &painter, this);
}

// --- panel ---

KRbQuickToolbarPanel::KRbQuickToolbarPanel(QWidget* parent)
    : KPopupWidget(parent, Qt::Popup)
{
    setPopupStyle(0);
    m_content = new QWidget(this);
    m_content->setObjectName(QStringLiteral("RbQuickToolbarPanel_Content"));
    auto* row = new QHBoxLayout(m_content);
    row->setContentsMargins(2, 2, 2, 2);
    row->setSpacing(0);
    m_leftButton = new KToolButton(m_content);
    m_leftButton->setIcon(KRbPictures::icon(QStringLiteral("rb_more_left"), this));
    m_leftButton->setFixedWidth(16);
    m_rightButton = new KToolButton(m_content);
    m_rightButton->setIcon(KRbPictures::icon(QStringLiteral("rb_more_right"), this));
    m_rightButton->setFixedWidth(16);
    m_commandLayout = new QHBoxLayout;
    m_commandLayout->setContentsMargins(0, 0, 0, 0);
    m_commandLayout->setSpacing(0);
    row->addWidget(m_leftButton);
    row->addLayout(m_commandLayout);
    row->addWidget(m_rightButton);
    row->addStretch();
    m_leftButton->hide();
    m_rightButton->hide();
    connect(m_leftButton, &KToolButton::LButtonClicked, this, &KRbQuickToolbarPanel::onBtnLeft);
    connect(m_rightButton, &KToolButton::LButtonClicked, this, &KRbQuickToolbarPanel::onBtnRight);
    setContentWidget(m_content);
}

QList<QWidget*> KRbQuickToolbarPanel::entries() const
{
    QList<QWidget*> list;
    for (int i = 0; i < m_commandLayout->count(); ++i) {
        if (QWidget* w = m_commandLayout->itemAt(i)->widget())
            list.append(w);
    }
    return list;
}

void KRbQuickToolbarPanel::_layoutEntries()
{
    const QList<QWidget*> list = entries();
    if (m_firstIndex >= list.size())
        m_firstIndex = 0;
    int width = 4;
    if (m_firstIndex > 0) {
        m_leftButton->show();
        width = 16 + 5;
    } else {
        m_leftButton->hide();
    }
    const QRect screen = getAvailScreenRect(pos());
    const int room = screen.width() > 0 ? screen.width() : QWIDGETSIZE_MAX;
    int tallest = 0;
    bool cut = false;
    for (int i = 0; i < list.size(); ++i) {
        QWidget* w = list.at(i);
        if (i < m_firstIndex || cut) {
            w->hide();
            continue;
        }
        const QSize hint = w->sizeHint();
        // What would leave the screen waits behind the right button; the first entry
        // always shows.
        if (i > m_firstIndex && width + hint.width() + 16 > room) {
            cut = true;
            w->hide();
            continue;
        }
        w->show();
        width += hint.width();
        tallest = qMax(tallest, hint.height());
    }
    m_rightButton->setVisible(cut);
    if (cut)
        width += 16;
    setFixedHeight(tallest + 4 + 2 * layoutMargin());
    m_content->setFixedSize(width, tallest + 4);
    setFixedWidth(width + 2 * layoutMargin());
}

void KRbQuickToolbarPanel::showEvent(QShowEvent* e)
{
    KPopupWidget::showEvent(e);
    if (QScrollArea* area = scrollArea()) {
        area->setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
        area->setVerticalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
    }
    _layoutEntries();
}

void KRbQuickToolbarPanel::onBtnLeft()
{
    m_firstIndex = 0;
    _layoutEntries();
}

void KRbQuickToolbarPanel::onBtnRight()
{
    // The next page starts with the first entry that the present page had to leave out.
    const QList<QWidget*> list = entries();
    for (int i = m_firstIndex + 1; i < list.size(); ++i) {
        if (list.at(i)->isHidden()) {
            m_firstIndex = i;
            break;
        }
    }
    _layoutEntries();
}

void KRbQuickToolbarPanel::paintEvent(QPaintEvent*)
{
    QPainter painter(this);
    QStyleOption option;
    option.initFrom(this);
    style()->drawControl(KORBStyle_2013::KCE_QuickToolbarPanel, &option, &painter, this);
}

// --- bar ---

KRbQuickToolbar::KRbQuickToolbar(KCommand* cmd, QWidget* parent)
    : KCommandWidgetBridge<QWidget>(cmd, parent, true)
{
    setObjectName(QStringLiteral("RbTabBar_RightCornerExtBar"));
    m_contextMenu = new QMenu(this);
    QAction* remove = m_contextMenu->addAction(tr("&Remove from Quick Access Toolbar"));
    connect(remove, &QAction::triggered, this, &KRbQuickToolbar::onRemoveAct);

    m_layout = new QHBoxLayout(this);
    m_layout->setSpacing(0);
    m_layout->setContentsMargins(0, 0, 0, 0);
    m_layout->setSizeConstraint(QLayout::SetFixedSize);

    m_arrowButton = new KRbQuickToolbarArrowButton(this);
    m_arrowButton->hide();
    m_panel = new KRbQuickToolbarPanel(this);
    m_panelContent = m_panel->content();
    m_panelLayout = m_panel->commandLayout();
    m_arrowButton->setPanel(m_panel);
    connect(m_arrowButton, &QAbstractButton::clicked, this, &KRbQuickToolbar::showQuickPanel);

    setFixedHeight(kBarHeight);
    setSizePolicy(QSizePolicy::Preferred, QSizePolicy::Fixed);
    setAcceptDrops(true);
    KCommandBridgeHelper::registerIdle(this);
}

KRbQuickToolbar::~KRbQuickToolbar()
{
    KCommandBridgeHelper::unregisterIdle(this);
}

void KRbQuickToolbar::onCommandConnected()
{
    // Later changes of the list follow the list; the initial build comes from the bridge.
    if (auto* list = qobject_cast<KAbstractListCommand*>(command())) {
        connect(list, &KAbstractListCommand::subCommandInsert, this,
                [this](int index, KCommand* sub) { onCommandInserted(index, sub); });
        connect(list, &KAbstractListCommand::subCommandRemove, this,
                [this](int index) { onCommandRemoved(index); });
    }
}

void KRbQuickToolbar::onCommandInserted(int index, KCommand* sub)
{
    if (!sub || (_indexOf(sub) >= 0 && !KSeparatorCommand::isSeparator(sub)))
        return;
    _insertElement(qBound(0, index, int(m_elements.size())), sub, true);
    renderWidgets();
}

void KRbQuickToolbar::onCommandRemoved(int index)
{
    KCommand* cmd = command();
    KCommand* sub = cmd ? cmd->subCommand(index) : nullptr;
    const int at = _indexOf(sub);
    if (at < 0)
        return;
    _removeElement(at);
    renderWidgets();
}

int KRbQuickToolbar::_indexOf(KCommand* cmd) const
{
    if (!cmd)
        return -1;
    for (int i = 0; i < m_elements.size(); ++i) {
        if (m_elements.at(i).first == cmd)
            return i;
    }
    return -1;
}

int KRbQuickToolbar::_indexOfWidget(const QWidget* w) const
{
    for (int i = 0; i < m_elements.size(); ++i) {
        if (m_elements.at(i).second.first == w)
            return i;
    }
    return -1;
}

QWidget* KRbQuickToolbar::_makeWidget(KCommand* cmd)
{
    QWidget* w = cmd->requestWidget(this, KCommand::PocketPurpose);
    w->hide();
    _watch(w);
    return w;
}

void KRbQuickToolbar::_watch(QWidget* w)
{
    w->installEventFilter(this);
    const QList<QWidget*> children = w->findChildren<QWidget*>();
    for (QWidget* child : children)
        child->installEventFilter(this);
}

void KRbQuickToolbar::_insertElement(int index, KCommand* cmd, bool shown)
{
    QWidget* w = _makeWidget(cmd);
    // A command gone takes its element with it; its widget goes the command's way.
    connect(cmd, &QObject::destroyed, this, [this, w]() {
        const int at = _indexOfWidget(w);
        if (at >= 0) {
            m_elements.removeAt(at);
            renderWidgets();
        }
    });
    m_elements.insert(index, Element(cmd, qMakePair(w, shown)));
}

void KRbQuickToolbar::_removeElement(int index)
{
    QWidget* w = m_elements.at(index).second.first;
    KCommand* cmd = m_elements.at(index).first;
    m_elements.removeAt(index);
    if (cmd)
        disconnect(cmd, &QObject::destroyed, this, nullptr);
    // The same command may stand again elsewhere (a separator): keep its watch there.
    for (int i = 0; i < m_elements.size(); ++i) {
        if (m_elements.at(i).first == cmd) {
            QWidget* other = m_elements.at(i).second.first;
            connect(cmd, &QObject::destroyed, this, [this, other]() {
                const int at = _indexOfWidget(other);
                if (at >= 0) {
                    m_elements.removeAt(at);
                    renderWidgets();
                }
            });
        }
    }
    if (m_clickedWidget == w)
        m_clickedWidget = nullptr;
    delete w;
}

bool KRbQuickToolbar::_isEffectivelyShown(const Element& e) const
{
    return e.second.second && e.first && e.first->isVisible();
}

KCommand* KRbQuickToolbar::elementCommand(int index) const
{
    return index >= 0 && index < m_elements.size() ? m_elements.at(index).first : nullptr;
}

QWidget* KRbQuickToolbar::elementWidget(int index) const
{
    return index >= 0 && index < m_elements.size() ? m_elements.at(index).second.first : nullptr;
}

bool KRbQuickToolbar::isElementShown(int index) const
{
    return index >= 0 && index < m_elements.size() && m_elements.at(index).second.second;
}

QList<QWidget*> KRbQuickToolbar::barWidgets() const
{
    QList<QWidget*> list;
    for (int i = 0; i < m_layout->count(); ++i) {
        QWidget* w = m_layout->itemAt(i)->widget();
        if (w && w != m_arrowButton)
            list.append(w);
    }
    return list;
}

QList<QWidget*> KRbQuickToolbar::panelWidgets() const
{
    return m_panel->entries();
}

void KRbQuickToolbar::insertCommand(KCommand* cmd, int index)
{
    if (!cmd)
        return;
    ensureConnectCommand();
    const int at = KSeparatorCommand::isSeparator(cmd) ? -1 : _indexOf(cmd);
    const int size = int(m_elements.size());
    if (at >= 0) {
        // Already known: it moves to its new place and shows.
        Element e = m_elements.takeAt(at);
        e.second.second = true;
        m_elements.insert(index < 0 || index > size - 1 ? size - 1 : index, e);
    } else {
        _insertElement(index < 0 || index > size ? size : index, cmd, true);
    }
    renderWidgets();
    Q_EMIT cmdOnTbChanged(cmd, true);
}

bool KRbQuickToolbar::removeCommand(KCommand* cmd)
{
    ensureConnectCommand();
    const int at = _indexOf(cmd);
    if (at < 0)
        return false;
    _removeElement(at);
    renderWidgets();
    return true;
}

void KRbQuickToolbar::showCommand(KCommand* cmd, int index)
{
    if (!cmd)
        return;
    insertCommand(cmd, index);
}

bool KRbQuickToolbar::hideCommand(KCommand* cmd)
{
    ensureConnectCommand();
    return hideCommand(_indexOf(cmd));
}

bool KRbQuickToolbar::hideCommand(int index)
{
    ensureConnectCommand();
    if (index < 0 || index >= m_elements.size())
        return false;
    Element& e = m_elements[index];
    e.second.second = false;
    renderWidgets();
    Q_EMIT cmdOnTbChanged(e.first, false);
    return true;
}

void KRbQuickToolbar::hideAllCommand()
{
    ensureConnectCommand();
    QList<KCommand*> hidden;
    for (Element& e : m_elements) {
        if (e.second.second) {
            e.second.second = false;
            hidden.append(e.first);
        }
    }
    renderWidgets();
    for (KCommand* cmd : hidden)
        Q_EMIT cmdOnTbChanged(cmd, false);
}

bool KRbQuickToolbar::hasCmd(KCommand* cmd) const
{
    if (!cmd || KSeparatorCommand::isSeparator(cmd))
        return false;
    for (const Element& e : m_elements) {
        if (e.first == cmd && e.second.second)
            return true;
    }
    return false;
}

void KRbQuickToolbar::reset()
{
    ensureConnectCommand();
    const bool render = m_renderEnabled;
    m_renderEnabled = false;
    while (!m_elements.isEmpty())
        _removeElement(int(m_elements.size()) - 1);
    QList<KCommand*> shown;
    if (KCommand* cmd = command()) {
        for (int i = 0; i < cmd->count(); ++i) {
            if (KCommand* sub = cmd->subCommand(i)) {
                _insertElement(int(m_elements.size()), sub, true);
                shown.append(sub);
            }
        }
    }
    m_renderEnabled = render;
    renderWidgets();
    for (KCommand* cmd : shown)
        Q_EMIT cmdOnTbChanged(cmd, true);
}

void KRbQuickToolbar::resetCommands(const QList<KCommand*>& list)
{
    ensureConnectCommand();
    QList<QPair<KCommand*, bool>> changes;
    QList<Element> ordered;
    // The commands of the list first, in its order; a separator takes the next free one.
    for (KCommand* cmd : list) {
        if (!cmd)
            continue;
        int at = -1;
        for (int i = 0; i < m_elements.size(); ++i) {
            if (m_elements.at(i).first == cmd) {
                at = i;
                break;
            }
        }
        if (at < 0) {
            _insertElement(int(m_elements.size()), cmd, false);
            at = int(m_elements.size()) - 1;
        }
        Element e = m_elements.takeAt(at);
        if (!e.second.second)
            changes.append(qMakePair(cmd, true));
        e.second.second = true;
        ordered.append(e);
    }
    for (Element e : m_elements) {
        if (e.second.second)
            changes.append(qMakePair(e.first, false));
        e.second.second = false;
        ordered.append(e);
    }
    m_elements = ordered;
    renderWidgets();
    for (const auto& change : changes)
        Q_EMIT cmdOnTbChanged(change.first, change.second);
}

void KRbQuickToolbar::setElementOrdor(const QList<KCommand*>& list)
{
    ensureConnectCommand();
    int at = 0;
    for (KCommand* cmd : list) {
        if (!cmd)
            continue;
        if (at < m_elements.size() && m_elements.at(at).first == cmd) {
            ++at;
            continue;
        }
        // Known further on: it moves here as it is; unknown: it comes in hidden.
        int found = -1;
        for (int i = at + 1; i < m_elements.size() && !KSeparatorCommand::isSeparator(cmd); ++i) {
            if (m_elements.at(i).first == cmd) {
                found = i;
                break;
            }
        }
        if (found >= 0)
            m_elements.move(found, at);
        else
            _insertElement(at, cmd, false);
        ++at;
    }
    renderWidgets();
}

int KRbQuickToolbar::toElementPos(int pos) const
{
    if (pos < 0)
        return -1;
    int shown = 0;
    for (int i = 0; i < m_elements.size(); ++i) {
        if (!m_elements.at(i).second.second)
            continue;
        if (shown == pos)
            return i;
        ++shown;
    }
    return -1;
}

bool KRbQuickToolbar::showSeparator(int index)
{
    ensureConnectCommand();
    if (index < 0 || index >= m_elements.size() || !KSeparatorCommand::isSeparator(m_elements.at(index).first))
        return false;
    m_elements[index].second.second = true;
    renderWidgets();
    Q_EMIT cmdOnTbChanged(m_elements.at(index).first, true);
    return true;
}

void KRbQuickToolbar::setMaxWidth(int width)
{
    if (width == m_maxWidth)
        return;
    m_maxWidth = width;
    renderWidgets();
}

void KRbQuickToolbar::setRenderEnabled(bool on)
{
    m_renderEnabled = on;
    if (on)
        renderWidgets();
}

void KRbQuickToolbar::moveToQuickBar(QWidget* w)
{
    if (!w)
        return;
    m_panelLayout->removeWidget(w);
    if (w->parentWidget() != this)
        w->setParent(this);
    w->show();
    m_layout->addWidget(w);
}

void KRbQuickToolbar::moveToPanel(QWidget* w)
{
    if (!w)
        return;
    m_layout->removeWidget(w);
    if (w->parentWidget() != m_panelContent)
        w->setParent(m_panelContent);
    w->show();
    m_panelLayout->addWidget(w);
}

void KRbQuickToolbar::renderWidgets(int from)
{
    Q_UNUSED(from);
    renderWidgets();
}

void KRbQuickToolbar::renderWidgets()
{
    if (!m_renderEnabled || m_rendering)
        return;
    m_rendering = true;
    int last = -1;
    for (int i = 0; i < m_elements.size(); ++i) {
        if (_isEffectivelyShown(m_elements.at(i)))
            last = i;
    }
    // Where each shown widget goes: the bar while the sum fits, the panel from the first
    // that fails on, however narrow the later ones are.
    QList<QWidget*> toBar;
    QList<QWidget*> toPanel;
    int used = kArrowWidth;
    bool overflow = false;
    for (int i = 0; i < m_elements.size(); ++i) {
        const Element& e = m_elements.at(i);
        QWidget* w = e.second.first;
        if (!_isEffectivelyShown(e)) {
            w->hide();
            continue;
        }
        used += w->sizeHint().width();
        if (i == last)
            used -= kArrowWidth;
        if (used <= m_maxWidth && !overflow) {
            toBar.append(w);
        } else {
            toPanel.append(w);
            overflow = true;
        }
    }
    if (toBar != barWidgets() || toPanel != panelWidgets()) {
        for (QWidget* w : barWidgets())
            m_layout->removeWidget(w);
        for (QWidget* w : panelWidgets())
            m_panelLayout->removeWidget(w);
        m_layout->removeWidget(m_arrowButton);
        for (QWidget* w : toBar)
            moveToQuickBar(w);
        for (QWidget* w : toPanel)
            moveToPanel(w);
    }
    const bool arrowInLayout = m_layout->indexOf(m_arrowButton) >= 0;
    if (overflow && !arrowInLayout)
        m_layout->addWidget(m_arrowButton);
    else if (!overflow && arrowInLayout)
        m_layout->removeWidget(m_arrowButton);
    m_arrowButton->setVisible(overflow);
    if (!overflow && m_panel->isVisible())
        m_panel->hide();
    updateGeometry();
    m_rendering = false;
}

QSize KRbQuickToolbar::sizeHint() const
{
    ensureConnectCommand();
    int sum = 0;
    for (const Element& e : m_elements) {
        if (!_isEffectivelyShown(e))
            continue;
        const int w = e.second.first->sizeHint().width();
        if (sum + w + 14 >= m_maxWidth) {
            // From here on the arrow stands in for the rest.
            return QSize(qMin(m_maxWidth, sum + w + 14 > m_maxWidth ? sum + kArrowWidth : sum + w), kBarHeight);
        }
        sum += w;
    }
    return QSize(sum, kBarHeight);
}

void KRbQuickToolbar::showQuickPanel()
{
    const QPoint at = m_arrowButton->mapToGlobal(QPoint(0, m_arrowButton->height()));
    m_renderEnabled = true;
    renderWidgets();
    m_panelContent->setAttribute(Qt::WA_Resized, false);
    m_panel->show(m_arrowButton, at);
}

void KRbQuickToolbar::onRbCustom()
{
}

void KRbQuickToolbar::onRemoveAct()
{
    const int at = _indexOfWidget(m_clickedWidget.data());
    if (at >= 0)
        hideCommand(at);
    m_clickedWidget = nullptr;
}

bool KRbQuickToolbar::eventFilter(QObject* watched, QEvent* e)
{
    if (m_customizable && e->type() == QEvent::MouseButtonRelease && watched->isWidgetType()) {
        auto* mouse = static_cast<QMouseEvent*>(e);
        if (mouse->button() == Qt::RightButton) {
            auto* w = static_cast<QWidget*>(watched);
            QWidget* target = w->parentWidget() == this || w->parentWidget() == m_panelContent ? w : w->parentWidget();
            const int at = _indexOfWidget(target);
            if (at >= 0) {
                if (KSeparatorCommand::isSeparator(m_elements.at(at).first))
                    return true;
                m_clickedWidget = target;
                m_contextMenu->popup(mouse->globalPosition().toPoint());
                return true;
            }
        }
    }
    return KCommandWidgetBridge<QWidget>::eventFilter(watched, e);
}

void KRbQuickToolbar::dragEnterEventEvent(QDragEnterEvent* event)
{
    if (event->mimeData() && event->mimeData()->hasFormat(QLatin1String(kDragFormat)))
        event->acceptProposedAction();
    else
        event->ignore();
}

void KRbQuickToolbar::dragEnterEvent(QDragEnterEvent* e)
{
    dragEnterEventEvent(e);
}

void KRbQuickToolbar::dragMoveEvent(QDragMoveEvent* e)
{
    e->acceptProposedAction();
}

void KRbQuickToolbar::dropEvent(QDropEvent* e)
{
    // What a dropped entry means belongs to the host, which watches the bar's events.
    Q_UNUSED(e);
}

void KRbQuickToolbar::resizeEvent(QResizeEvent* e)
{
    KCommandWidgetBridge<QWidget>::resizeEvent(e);
    renderWidgets();
}

void KRbQuickToolbar::_collectHotKey(KHotKeyCollectEvent* e)
{
    e->useAutoIndex = true;
    for (const Element& el : m_elements) {
        QWidget* w = el.second.first;
        if (!_isEffectivelyShown(el) || KSeparatorCommand::isSeparator(el.first) || w->parentWidget() != this
            || !w->isVisible())
            continue;
        const QPoint pos = KDrawHelpFunc::getHotKeyShowPos(w, w->size(), 5, 0);
        e->addHotKey(pos, QString(), w, w->isEnabled());
    }
    e->useAutoIndex = false;
}

bool KRbQuickToolbar::event(QEvent* e)
{
    switch (int(e->type())) {
    case QEvent::LayoutRequest:
        renderWidgets(0);
        break;
    case KEvent::Idle:
        if (KCommand* cmd = command())
            cmd->update();
        break;
    case KEvent::HotKeyCollect:
        _collectHotKey(static_cast<KHotKeyCollectEvent*>(e));
        e->accept();
        return true;
    default:
        break;
    }
    return KCommandWidgetBridge<QWidget>::event(e);
}
