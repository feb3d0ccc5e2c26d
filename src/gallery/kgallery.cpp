#include "kgallery.h"

#include <QBoxLayout>
#include <QCoreApplication>
#include <QKeyEvent>
#include <QPainter>
#include <QStyleOption>

#include <kblockedmouseevent.h>
#include <kdrawhelpfunc.h>
#include <kevent.h>
#include <kgallerycommand.h>
#include <khotkeyevent.h>
#include <kmenuwidget.h>
#include <korbstyle.h>
#include <korbstyle_2013.h>
#include <kpopupwidget.h>
#include <kscrollgalleryview.h>
#include <kstyleoption.h>

namespace {

// Whether the widget's style draws the framework's gallery elements; a host's own style
// gets the stock elements instead.
bool hasGalleryLook(const QWidget* widget)
{
    return widget->style()->styleHint(QStyle::StyleHint(KORBStyle::KSH_StyleGeneration), nullptr, widget) == 2013;
}

constexpr QSize kStepButtonSize(15, 20);
constexpr QSize kExtendButtonSize(15, 21);

} // namespace

// --- KGalleryScrollButton ---

KGalleryScrollButton::KGalleryScrollButton(int type, QWidget* parent)
    : QAbstractButton(parent)
    , m_type(qBound(0, type, 2))
{
    setFocusPolicy(Qt::NoFocus);
    setAttribute(Qt::WA_Hover);
}

KGalleryScrollButton::~KGalleryScrollButton() = default;

QString KGalleryScrollButton::getButtonStateProp() const
{
    if (!isEnabled())
        return QStringLiteral("-disable");
    if (isDown())
        return QStringLiteral("-down");
    if (underMouse())
        return QStringLiteral("-hover");
    return QString();
}

QSize KGalleryScrollButton::sizeHint() const
{
    return m_type == Extend ? kExtendButtonSize : kStepButtonSize;
}

void KGalleryScrollButton::enterEvent(QEnterEvent* e)
{
    QAbstractButton::enterEvent(e);
    update();
}

void KGalleryScrollButton::leaveEvent(QEvent* e)
{
    QAbstractButton::leaveEvent(e);
    update();
}

void KGalleryScrollButton::paintEvent(QPaintEvent*)
{
    QPainter painter(this);
    KStyleOptionGalleryScrollButton option;
    option.initFrom(this);
    option.buttonType = m_type;
    if (isDown())
        option.state |= QStyle::State_Sunken;
    if (hasGalleryLook(this)) {
        style()->drawControl(KORBStyle_2013::KCE_GalleryScrollButton, &option, &painter, this);
        return;
    }
    // Under a foreign style: a plain button with the arrow.
    QStyleOptionButton button;
    button.initFrom(this);
    if (isDown())
        button.state |= QStyle::State_Sunken;
    style()->drawPrimitive(QStyle::PE_PanelButtonTool, &button, &painter, this);
    QStyleOption arrow(option);
    arrow.rect = rect().adjusted(3, 3, -3, -3);
    style()->drawPrimitive(m_type == Up ? QStyle::PE_IndicatorArrowUp : QStyle::PE_IndicatorArrowDown, &arrow,
                           &painter, this);
}

// --- KGalleryCentralWidget ---

KGalleryCentralWidget::KGalleryCentralWidget(KCommand* command, QWidget* parent)
    : KCommandWidgetBridge<QWidget>(command, parent, true)
    , m_outerLayout(new QHBoxLayout(this))
    , m_innerLayout(new QHBoxLayout)
{
    m_outerLayout->setContentsMargins(1, 1, 1, 1);
    m_outerLayout->setSpacing(0);
    m_innerLayout->setContentsMargins(2, 2, 0, 2);
    m_innerLayout->setSpacing(0);
    m_outerLayout->addLayout(m_innerLayout, 1);
    KCommandBridgeHelper::registerIdle(this, true);
    if (auto* cmd = galleryCommand()) {
        connect(cmd, &KGalleryCommand::widthChange, this, &KGalleryCentralWidget::on_fixWidthChange);
        if (cmd->gallerySmallWidth() > 0)
            setFixedWidth(cmd->gallerySmallWidth());
    }
}

KGalleryCentralWidget::~KGalleryCentralWidget()
{
    KCommandBridgeHelper::unregisterIdle(this);
}

KGalleryCommand* KGalleryCentralWidget::galleryCommand() const
{
    return qobject_cast<KGalleryCommand*>(command());
}

void KGalleryCentralWidget::onCommandConnected()
{
    KGalleryCommand* cmd = galleryCommand();
    if (!cmd)
        return;
    cmd->update();
    KGalleryAbstractModel* model = cmd->dataSource();
    m_view = new KGalleryView(model, KGalleryViewCompact, this, false);
    m_innerLayout->addWidget(m_view);
    if (model && model->isFixedSize())
        setSizePolicy(QSizePolicy::Fixed, QSizePolicy::Fixed);
    updateGeometry();
}

void KGalleryCentralWidget::on_fixWidthChange(int width)
{
    if (width > 0)
        setFixedWidth(width);
}

bool KGalleryCentralWidget::event(QEvent* e)
{
    if (int(e->type()) == KEvent::Idle) {
        if (KCommand* cmd = command()) {
            cmd->update();
            setEnabled(cmd->isEnabled());
        }
        return true;
    }
    return KCommandWidgetBridge<QWidget>::event(e);
}

void KGalleryCentralWidget::paintEvent(QPaintEvent*)
{
    QPainter painter(this);
    QStyleOption option;
    option.initFrom(this);
    if (hasGalleryLook(this)) {
        style()->drawControl(KORBStyle_2013::KCE_GalleryInlineFrame, &option, &painter, this);
        return;
    }
    QStyleOptionFrame frame;
    frame.initFrom(this);
    frame.lineWidth = 1;
    style()->drawPrimitive(QStyle::PE_Frame, &frame, &painter, this);
}

// --- KGalleryInline ---

KGalleryInline::KGalleryInline(KCommand* command, QWidget* parent)
    : KGalleryCentralWidget(command, parent)
    , m_buttonLayout(new QVBoxLayout)
    , m_upButton(new KGalleryScrollButton(KGalleryScrollButton::Up, this))
    , m_downButton(new KGalleryScrollButton(KGalleryScrollButton::Down, this))
    , m_extendButton(new KGalleryScrollButton(KGalleryScrollButton::Extend, this))
{
    m_buttonLayout->setContentsMargins(0, 0, 0, 0);
    m_buttonLayout->setSpacing(0);
    m_upButton->setAutoRepeat(true);
    m_downButton->setAutoRepeat(true);
    m_buttonLayout->addWidget(m_upButton);
    m_buttonLayout->addWidget(m_downButton);
    m_buttonLayout->addWidget(m_extendButton);
    m_buttonLayout->addSpacing(1);
    outerLayout()->addLayout(m_buttonLayout);
    const QMargins outer = outerLayout()->contentsMargins();
    setFixedHeight(m_buttonLayout->sizeHint().height() + outer.top() + outer.bottom());
    connect(m_upButton, &QAbstractButton::clicked, this, &KGalleryInline::upButtonClicked);
    connect(m_downButton, &QAbstractButton::clicked, this, &KGalleryInline::downButtonClicked);
    connect(m_extendButton, &QAbstractButton::clicked, this, &KGalleryInline::extendButtonClicked);
    m_extendButton->installEventFilter(this);
    updateButtonStatus();
}

KGalleryInline::~KGalleryInline()
{
    if (m_popup)
        delete m_popup.data();
}

void KGalleryInline::onCommandConnected()
{
    KGalleryCentralWidget::onCommandConnected();
    if (KGalleryView* v = view())
        connect(v, &KGalleryView::viewPortChanged, this, &KGalleryInline::updateButtonStatus);
    updateButtonStatus();
}

void KGalleryInline::updateButtonStatus()
{
    KGalleryView* v = view();
    const int viewPort = v ? v->viewPort() : 0;
    const int maxViewPort = v ? v->maxViewPort() : 0;
    // An auto-repeating button that reaches the end is released as well as disabled.
    if (viewPort == 0)
        m_upButton->setDown(false);
    m_upButton->setEnabled(viewPort > 0);
    if (viewPort >= maxViewPort)
        m_downButton->setDown(false);
    m_downButton->setEnabled(viewPort < maxViewPort);
}

void KGalleryInline::upButtonClicked()
{
    if (KGalleryView* v = view())
        v->setViewPort(v->viewPort() - v->step());
    updateButtonStatus();
}

void KGalleryInline::downButtonClicked()
{
    if (KGalleryView* v = view())
        v->setViewPort(v->viewPort() + v->step());
    updateButtonStatus();
}

void KGalleryInline::extendButtonClicked()
{
    KGalleryCommand* cmd = galleryCommand();
    KGalleryAbstractModel* model = cmd ? cmd->dataSource() : nullptr;
    if (!model)
        return;
    model->fecthItems();
    if (model->count() == 0)
        return;
    if (!m_popup) {
        m_popup = new KPopupWidget(this, Qt::Popup);
        m_popup->setContentWidget(new KGallery(cmd, m_popup));
    }
    const int width = cmd->galleryWidth() > 0 ? cmd->galleryWidth() : this->width();
    m_popup->setMinimumWidth(width);
    m_popup->clearSizeAttitude();
    // Over the band, from its top left.
    m_popup->show(mapToGlobal(QPoint(0, 0)), false, 0);
}

bool KGalleryInline::eventFilter(QObject* watched, QEvent* e)
{
    if (watched == m_extendButton && int(e->type()) == KEvent::BlockedMouse) {
        // The press that closes the open popup must not open it again.
        auto* blocked = static_cast<KBlockedMouseEvent*>(e);
        QMouseEvent* mouse = blocked->mouseEvent();
        if (mouse && mouse->type() == QEvent::MouseButtonPress && m_popup && blocked->popup() == m_popup.data()) {
            blocked->setFirstFlag(true);
            return true;
        }
    }
    return KGalleryCentralWidget::eventFilter(watched, e);
}

bool KGalleryInline::event(QEvent* e)
{
    switch (int(e->type())) {
    case KEvent::HotKeyCollect: {
        // One label for the gallery, at its extend button: it opens the full gallery.
        auto* collect = static_cast<KHotKeyCollectEvent*>(e);
        KCommand* cmd = command();
        if (!cmd)
            return true;
        const QString key = cmd->property(collect->useRbHotKey ? "rbHotKey" : "hotKey").toString();
        const QPoint pos = KDrawHelpFunc::getHotKeyShowPos(m_extendButton, m_extendButton->size(), 4, 0);
        collect->addHotKey(pos, key, this, isEnabled());
        return true;
    }
    case KEvent::HotKeyTrigger: {
        auto* trigger = static_cast<KHotKeyTriggerEvent*>(e);
        if (trigger->result == 0) {
            extendButtonClicked();
            trigger->result = 2;
        }
        return true;
    }
    default:
        break;
    }
    return KGalleryCentralWidget::event(e);
}

// --- KGallery ---

KGallery::KGallery(KCommand* command, QWidget* parent)
    : KCommandWidgetBridge<QWidget>(command, parent, true)
    , m_layout(new QVBoxLayout(this))
{
    m_layout->setContentsMargins(0, 0, 0, 0);
    m_layout->setSpacing(0);
}

KGallery::~KGallery() = default;

void KGallery::onCommandConnected()
{
    auto* cmd = qobject_cast<KGalleryCommand*>(command());
    if (!cmd)
        return;
    cmd->update();
    KGalleryAbstractModel* model = cmd->dataSource();
    auto* scroll = new KScrollGalleryView(model, this);
    if (cmd->galleryWidth() > 0)
        scroll->setMinimumWidth(cmd->galleryWidth());
    if (cmd->galleryHeight() > 0)
        scroll->setFixedHeight(cmd->galleryHeight());
    if (model && model->isFixedSize())
        scroll->setSizePolicy(QSizePolicy::Fixed, QSizePolicy::Fixed);
    connect(scroll, &KScrollGalleryView::reachToViewBottom, this, &KGallery::_onViewBottom);
    m_view = scroll;
    m_layout->addWidget(scroll, 1);
    setFocusProxy(scroll);
    if (cmd->count() > 0)
        _makeMenu();
    connect(cmd, &KAbstractListCommand::subCommandInsert, this, &KGallery::onCommandInserted);
    connect(cmd, &KAbstractListCommand::subCommandRemove, this, &KGallery::onCommandRemoved);
}

void KGallery::_makeMenu()
{
    if (m_menu)
        return;
    auto* menu = new KMenuWidget(command(), this);
    menu->setTabWidth(0);
    menu->installEventFilter(this);
    m_menu = menu;
    m_layout->addWidget(menu);
    // Made after the gallery may already show: a new child needs its own show.
    menu->show();
}

void KGallery::onCommandInserted(int, KCommand*)
{
    _makeMenu();
}

void KGallery::onCommandRemoved(int)
{
    KCommand* cmd = command();
    // Told while the item is still in the list: the last one is going.
    if (m_menu && cmd && cmd->count() <= 1) {
        m_menu->hide();
        m_menu->deleteLater();
        m_menu = nullptr;
    }
}

void KGallery::_onViewBottom()
{
    if (!m_menu)
        return;
    m_menu->setFocus(Qt::OtherFocusReason);
    m_menu->setCurrentItem(m_menu->getFirstEnableItem());
}

bool KGallery::matchMenuItemHotkey(const QString& text)
{
    if (!m_menu)
        return false;
    for (int i = 0; i < m_menu->count(); ++i) {
        KMenuWidgetItem* item = m_menu->itemAt(i);
        KCommand* cmd = item ? item->command() : nullptr;
        if (!cmd || !item->isEnabled())
            continue;
        if (cmd->property("hotKey").toString().compare(text, Qt::CaseInsensitive) != 0)
            continue;
        item->onHotKeyTrigger();
        return true;
    }
    return false;
}

bool KGallery::event(QEvent* e)
{
    if (int(e->type()) == KEvent::HotKeyCollect) {
        if (auto* scroll = qobject_cast<KScrollGalleryView*>(m_view))
            QCoreApplication::sendEvent(scroll->view(), e);
        if (m_menu)
            QCoreApplication::sendEvent(m_menu.data(), e);
        return true;
    }
    return KCommandWidgetBridge<QWidget>::event(e);
}

bool KGallery::eventFilter(QObject* watched, QEvent* e)
{
    auto* scroll = qobject_cast<KScrollGalleryView*>(m_view);
    // Up from the first menu row goes back into the cells, to the last one.
    if (watched == m_menu.data() && e->type() == QEvent::KeyPress && scroll
        && static_cast<QKeyEvent*>(e)->key() == Qt::Key_Up && m_menu->currentItem() == m_menu->getFirstEnableItem()) {
        m_menu->clearStatus();
        scroll->view()->setFocus(Qt::OtherFocusReason);
        scroll->view()->hoverItem(scroll->view()->getLastItem());
        return true;
    }
    return KCommandWidgetBridge<QWidget>::eventFilter(watched, e);
}

void KGallery::paintEvent(QPaintEvent*)
{
    QPainter painter(this);
    QStyleOption option;
    option.initFrom(this);
    if (hasGalleryLook(this))
        style()->drawControl(KORBStyle_2013::KCE_GalleryPanel, &option, &painter, this);
    else
        painter.fillRect(rect(), palette().color(QPalette::Window));
}
