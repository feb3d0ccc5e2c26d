#include "krbtabfilebutton.h"

#include <krbfilemenu.h>
#include <krbfilemenucommand.h>

#include <QMouseEvent>
#include <QStyleOptionButton>
#include <QStylePainter>
#include <QTimer>

#include <kapplication.h>
#include <kapptheme.h>
#include <kblockedmouseevent.h>
#include <kdrawhelpfunc.h>
#include <kevent.h>
#include <khotkeyevent.h>
#include <khotkeypopupassistant.h>
#include <kmainwindow.h>
#include <kmenuwidget.h>
#include <korbstyle.h>
#include <kpopupwidget.h>
#include <ksettings.h>

#include "krbpaint_p.h"

namespace {

const char kTipLightKey[] = "fileButtonTipLight";

// The user's settings of this product and interface, where the glow is remembered.
void enterUiGroups(QSettings& settings)
{
    KApplication* app = KApplication::instance();
    settings.beginGroup(app ? app->productVersion() : QCoreApplication::applicationVersion());
    settings.beginGroup(QCoreApplication::applicationName());
    settings.beginGroup(app ? app->getUiName() : QString());
}

} // namespace

KRbTabFileButton::KRbTabFileButton(KCommand* cmd, QWidget* parent)
    : KCommandWidgetBridge<QAbstractButton>(cmd, parent, false)
{
    setObjectName(QStringLiteral("RbTabFileButton"));
    setCheckable(true);
    setFocusPolicy(Qt::NoFocus);
    setMouseTracking(true);
    setSizePolicy(QSizePolicy::Fixed, QSizePolicy::Preferred);
    if (cmd)
        setIcon(cmd->icon());

    KSettings settings;
    enterUiGroups(settings);
    if (settings.value(QLatin1String(kTipLightKey)).toString().isEmpty()) {
        m_tipLight = true;
        m_light = kLightMax;
        m_lightFalling = true;
        m_timer = new QTimer(this);
        m_timer->setInterval(100);
        connect(m_timer, &QTimer::timeout, this, &KRbTabFileButton::timerUpdate);
        m_timer->start();
    }
}

KRbTabFileButton::~KRbTabFileButton()
{
    // The popup is a top-level child; its content must not outlive the menus' command.
    delete m_popup.data();
}

void KRbTabFileButton::setShowedKey()
{
    KSettings settings;
    enterUiGroups(settings);
    settings.setValue(QLatin1String(kTipLightKey), QStringLiteral("showed"));
    delete m_timer;
    m_timer = nullptr;
    m_tipLight = false;
    m_light = 0.0;
    update();
}

void KRbTabFileButton::timerUpdate()
{
    // The bounds are eight factors of 1.2 apart; the small allowance keeps rounding from
    // adding a ninth step to either half of the pulse.
    constexpr double allowance = 1e-6;
    if (m_lightFalling) {
        m_light /= 1.2;
        if (m_light <= kLightMin + allowance)
            m_lightFalling = false;
    } else {
        m_light *= 1.2;
        if (m_light >= kLightMax - allowance)
            m_lightFalling = true;
    }
    update();
}

QString KRbTabFileButton::captionText() const
{
    KCommand* cmd = command();
    auto* window = cmd ? qobject_cast<KMainWindow*>(cmd->host()) : nullptr;
    if (!window)
        window = qobject_cast<KMainWindow*>(this->window());
    if (window && !window->caption().isEmpty())
        return window->caption();
    return cmd ? cmd->text() : QString();
}

QSize KRbTabFileButton::sizeHint() const
{
    QFont font = this->font();
    if (KApplication* app = KApplication::instance())
        font = app->theme()->getFont(QStringLiteral("KWindowTitleBar"), QStringLiteral("titleFont"), font);
    const QFontMetrics metrics(font);
    const int width = metrics.horizontalAdvance(captionText()) + 56;
    const int height = qMax(qMax(metrics.height(), 16), 25);
    return QSize(width, height);
}

QSize KRbTabFileButton::minimumSizeHint() const
{
    return sizeHint();
}

bool KRbTabFileButton::isHitArrow(const QPoint& pos) const
{
    if (!KRbPaint::isFrameworkStyle(this))
        return false;
    KStyleOptionRbTabFileButton option;
    initStyleOption(&option);
    return style()->hitTestComplexControl(KORBStyle::KCC_RbTabFileButton, &option, pos, this)
        == KORBStyle::KSC_FileButtonArrow;
}

void KRbTabFileButton::initStyleOption(KStyleOptionRbTabFileButton* option) const
{
    option->initFrom(this);
    option->isDown = isDown();
    option->hitArrow = m_hitArrow;
    option->classicOpen = m_classicOpen;
    option->tipLight = m_tipLight;
    option->light = int(m_light);
    option->icon = icon();
    option->text = captionText();
    option->shadow = (isDown() || m_classicOpen) ? 0 : m_shadow;
    if (isDown())
        option->state |= QStyle::State_Sunken;
}

void KRbTabFileButton::paintEvent(QPaintEvent*)
{
    QStylePainter painter(this);
    KStyleOptionRbTabFileButton option;
    initStyleOption(&option);
    if (KRbPaint::isFrameworkStyle(this)) {
        painter.drawComplexControl(KORBStyle::KCC_RbTabFileButton, option);
        return;
    }
    // Another style: a push button with the caption.
    QStyleOptionButton button;
    button.initFrom(this);
    button.text = option.text;
    if (isDown())
        button.state |= QStyle::State_Sunken;
    painter.drawControl(QStyle::CE_PushButton, button);
}

void KRbTabFileButton::createPopupWidget(bool rainbow)
{
    if (m_popup) {
        const bool isRainbow = qobject_cast<KPopupWidgetEx*>(m_popup.data()) != nullptr;
        if (isRainbow == rainbow)
            return;
        // The menus stay: only the frame of the other kind goes.
        if (m_classicMenu && m_classicMenu->parentWidget())
            m_classicMenu->setParent(this);
        if (m_rainbowMenu && m_rainbowMenu->parentWidget())
            m_rainbowMenu->setParent(this);
        delete m_popup.data();
    }
    KPopupWidget* popup = rainbow ? new KPopupWidgetEx(this, 2) : new KPopupWidget(this, Qt::Popup);
    m_popup = popup;
    connect(popup, &KPopupWidget::aboutToHide, this, &KRbTabFileButton::on_popup_hide);
    popup->setTitleColor(KDrawHelpFunc::getColorFromTheme(QStringLiteral("KRbFileMenuWidget"),
                                                          QStringLiteral("upLineBorder")));
}

QPoint KRbTabFileButton::popupPosition() const
{
    QPoint pos = mapToGlobal(QPoint(0, 0));
    if (pos.y() < 0)
        pos.setY(0);
    return pos;
}

void KRbTabFileButton::popupClassicMenu()
{
    KCommand* cmd = command();
    if (!cmd)
        return;
    m_classicOpen = true;
    createPopupWidget(false);
    m_popup->setPopupStyle(KPopupWidget::StyleBorder | KPopupWidget::StyleTitle);
    if (!m_classicMenu) {
        // The classic menu is the list the file command holds first, or the command itself.
        KCommand* first = cmd->count() > 0 ? cmd->subCommand(0) : nullptr;
        m_classicMenu = new KMenuWidget(first && first->count() > 0 ? first : cmd, this);
    }
    m_classicMenu->clearStatus();
    m_popup->setContentWidget(m_classicMenu);
    setDown(true);
    update();
    m_popup->show(this, popupPosition());
}

void KRbTabFileButton::popupRainbowMenu()
{
    KCommand* cmd = command();
    if (!cmd)
        return;
    m_classicOpen = false;
    createPopupWidget(true);
    auto* fileMenuCommand = qobject_cast<KRbFileMenuCommand*>(cmd);
    if (!fileMenuCommand) {
        // A plain list has no panel of its own: it opens as the classic menu does.
        popupClassicMenu();
        return;
    }
    if (!m_rainbowMenu) {
        m_rainbowMenu = new KRbFileMenu(this);
        m_rainbowMenu->setDefaultKCommand(fileMenuCommand);
    }
    m_rainbowMenu->clearStatus();
    m_popup->setContentWidget(m_rainbowMenu);
    setDown(true);
    update();
    m_popup->show(this, popupPosition() + QPoint(1, 0));
}

void KRbTabFileButton::on_popup_hide()
{
    m_classicOpen = false;
    m_hitArrow = false;
    setDown(false);
    update();
    KApplication* app = KApplication::instance();
    if (!app)
        return;
    if (QWidget* window = app->currentMainWindow())
        window->setFocus(Qt::PopupFocusReason);
    app->focusInCurrentView();
}

void KRbTabFileButton::mousePressEvent(QMouseEvent* e)
{
    if (e->button() != Qt::LeftButton) {
        KCommandWidgetBridge<QAbstractButton>::mousePressEvent(e);
        return;
    }
    if (isHitArrow(e->position().toPoint())) {
        e->accept();
        popupClassicMenu();
        return;
    }
    popupRainbowMenu();
    if (m_tipLight)
        setShowedKey();
    KCommandWidgetBridge<QAbstractButton>::mousePressEvent(e);
}

void KRbTabFileButton::mouseDoubleClickEvent(QMouseEvent* e)
{
    e->accept();
    click();
}

void KRbTabFileButton::mouseMoveEvent(QMouseEvent* e)
{
    const bool hit = isHitArrow(e->position().toPoint());
    if (hit != m_hitArrow) {
        m_hitArrow = hit;
        update();
    }
    KCommandWidgetBridge<QAbstractButton>::mouseMoveEvent(e);
}

void KRbTabFileButton::leaveEvent(QEvent* e)
{
    if (m_hitArrow) {
        m_hitArrow = false;
        update();
    }
    KCommandWidgetBridge<QAbstractButton>::leaveEvent(e);
}

bool KRbTabFileButton::event(QEvent* e)
{
    if (int(e->type()) == KEvent::HotKeyCollect) {
        KCommand* cmd = command();
        if (isEnabled() && cmd) {
            const QPoint pos = KDrawHelpFunc::getHotKeyShowPos(this, size(), 2, 8);
            static_cast<KHotKeyCollectEvent*>(e)->addHotKey(pos, cmd->property("rbHotKey").toString(), this, true,
                                                            KHotKeyMarker::fileButton());
        }
        return true;
    }
    if (int(e->type()) == KEvent::HotKeyTrigger) {
        _hotKeyTrigger(static_cast<KHotKeyTriggerEvent*>(e));
        return true;
    }
    if (int(e->type()) == KEvent::BlockedMouse) {
        // A press on the button while its own popup is open belongs to the button: the
        // popup closes and the press doesn't open it again.
        auto* blocked = static_cast<KBlockedMouseEvent*>(e);
        QMouseEvent* mouse = blocked->mouseEvent();
        if (mouse && blocked->popup() == m_popup.data() && mouse->type() == QEvent::MouseButtonPress
            && mouse->button() == Qt::LeftButton
            && rect().contains(mapFromGlobal(mouse->globalPosition().toPoint()))) {
            blocked->setFirstFlag(true);
            return true;
        }
    }
    return KCommandWidgetBridge<QAbstractButton>::event(e);
}

// --- key tips ---

void KRbTabFileButton::_hotKeyTrigger(KHotKeyTriggerEvent* e)
{
    // The file menu opens with a key-tip level of its own; the button stays down meanwhile.
    popupRainbowMenu();
    if (!m_popup || !m_popup->isVisible())
        return;
    KHotKeyPopupAssistant level(m_popup.data());
    level.collectFromContent();
    QPointer<KRbTabFileButton> guard(this);
    QPointer<KPopupWidget> popup = m_popup.data();
    e->execResult = level.exec();
    // Escape in the menu's level goes back to the tabs' level, without the menu.
    if (e->execResult == -2 && popup)
        popup->hide();
    if (guard) {
        setDown(false);
        update();
    }
}
