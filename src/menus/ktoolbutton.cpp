#include "ktoolbutton.h"

#include <QApplication>
#include <QCursor>
#include <QHelpEvent>
#include <QMouseEvent>
#include <QScreen>
#include <QStylePainter>
#include <QTimer>

#include <kblockedmouseevent.h>
#include <kcommand.h>
#include <kcommandwidgetbridge.h>
#include <kevent.h>
#include <khotkeyevent.h>
#include <kdrawhelpfunc.h>
#include <korbstyle.h>
#include <ktoolbar.h>

namespace {

// The flat generation of the look has square buttons.
constexpr int kFlatGeneration = 2013;
// A screen at most this wide (right - left) has no room for captions beside icons.
constexpr int kNarrowScreenRight = 1278;
constexpr int kTipDelayMs = 300;
// Between the icon and the caption of the stock tool button.
constexpr int kStockSpacing = 4;

} // namespace

KToolButton::KToolButton(QWidget* parent)
    : QWidget(parent)
{
    if (style()->styleHint(KORBStyle::KSH_StyleGeneration, nullptr, this) == kFlatGeneration)
        m_roundCorner = 0;
    setAttribute(Qt::WA_Hover);
    setFocusPolicy(Qt::NoFocus);
    setSizePolicy(QSizePolicy::Fixed, QSizePolicy::Fixed);
}

KToolButton::~KToolButton() = default;

void KToolButton::setDefaultCommand(KCommand* cmd)
{
    if (m_command) {
        disconnect(this, &KToolButton::LButtonClicked, m_command, &KCommand::trigger);
        disconnect(m_command, &KCommand::changed, this, &KToolButton::syncCommand);
    }
    m_command = cmd;
    if (!cmd)
        return;
    syncCommand();
    // Only a left click triggers; clicked() fires for any button.
    connect(this, &KToolButton::LButtonClicked, cmd, &KCommand::trigger, Qt::UniqueConnection);
    connect(cmd, &KCommand::changed, this, &KToolButton::syncCommand, Qt::UniqueConnection);
    KCommandBridgeHelper::registerIdle(this, true);
}

QString KToolButton::_captionFromCommand(bool doubleFirstAmpersand) const
{
    if (needShowHotKey())
        return m_command->getDrawText();
    QString caption = m_command->text();
    if (doubleFirstAmpersand) {
        // Only the first "&" is doubled so that it stands as a literal; a later one keeps
        // its mnemonic meaning, as the command's authors have always relied on.
        const int amp = caption.indexOf(QLatin1Char('&'));
        if (amp >= 0)
            caption.insert(amp, QLatin1Char('&'));
    }
    return caption;
}

void KToolButton::syncCommand()
{
    KCommand* cmd = m_command.data();
    if (!cmd)
        return; // the command is going away; its destruction takes the button down too
    setText(_captionFromCommand(true));
    setIcon(cmd->icon());
    setEnabled(cmd->isEnabled());
    // Through the virtual, so that a tool bar's layout hears of it.
    setVisible(cmd->isVisible());
    setChecked(cmd->checkedHint());
    setToolTip(cmd->getToolTip());
    setCustomTip(cmd->customTip());
    syncButtonStyle(cmd->buttonStyle());
    setText2(cmd->property("text2").toString());
}

void KToolButton::syncButtonStyle(int style)
{
    // A command with no opinion leaves the style that the creator of the button gave.
    if (style != 0)
        setButtonStyle(style);
}

void KToolButton::setOrientation(Qt::Orientation orientation)
{
    m_orientation = orientation;
}

bool KToolButton::needDrawText() const
{
    if (m_text.isEmpty())
        return false;
    if (m_icon.isNull())
        return true;
    if (m_autoHideText)
        return false;
    return m_buttonStyle & StyleText;
}

QSize KToolButton::sizeHint() const
{
    return sizeHint(orientation());
}

QSize KToolButton::minimumSizeHint() const
{
    return minimumSizeHint(orientation());
}

QSize KToolButton::sizeHint(Qt::Orientation) const
{
    // The orientation travels in the option (initStyleOption reads orientation()).
    KStyleOptionToolButton option;
    initStyleOption(&option);
    if (KORBStyle::isFrameworkStyle(style()))
        return style()->sizeFromContents(KORBStyle::KCT_ToolButton, &option, QSize(20, 20), this);
    QStyleOptionToolButton stock;
    KORBStyle::_toQStyleOptionToolButton(&option, &stock);
    return _stockSizeHint(stock);
}

QSize KToolButton::_stockSizeHint(const QStyleOptionToolButton& option) const
{
    // What the stock tool button shows of the option: the icon part, the caption beside or
    // under it with a space's room on each side, and the drop-down indicator.
    const bool showIcon = !option.icon.isNull() && option.toolButtonStyle != Qt::ToolButtonTextOnly;
    const bool showText = !option.text.isEmpty() && option.toolButtonStyle != Qt::ToolButtonIconOnly;
    QSize contents = showIcon ? option.iconSize : QSize(0, 0);
    if (showText) {
        const QFontMetrics metrics = fontMetrics();
        QSize text = metrics.size(Qt::TextShowMnemonic, option.text);
        text.rwidth() += 2 * metrics.horizontalAdvance(QLatin1Char(' '));
        if (!showIcon)
            contents = text;
        else if (option.toolButtonStyle == Qt::ToolButtonTextUnderIcon)
            contents = QSize(qMax(contents.width(), text.width()), contents.height() + kStockSpacing + text.height());
        else
            contents = QSize(contents.width() + kStockSpacing + text.width(), qMax(contents.height(), text.height()));
    }
    if (option.features & QStyleOptionToolButton::MenuButtonPopup) {
        QStyleOptionToolButton measured = option;
        measured.rect.setSize(contents); // the indicator's width may follow the height
        contents.rwidth() += style()->pixelMetric(QStyle::PM_MenuButtonIndicator, &measured, this);
    }
    return style()->sizeFromContents(QStyle::CT_ToolButton, &option, contents, this);
}

QSize KToolButton::minimumSizeHint(Qt::Orientation orientation) const
{
    return sizeHint(orientation);
}

QSize KToolButton::minimumSize(Qt::Orientation orientation) const
{
    const QSize size = QWidget::minimumSize();
    return (orientation == Qt::Vertical && needDrawText()) ? size.transposed() : size;
}

QSize KToolButton::maximumSize(Qt::Orientation orientation) const
{
    const QSize size = QWidget::maximumSize();
    return (orientation == Qt::Vertical && needDrawText()) ? size.transposed() : size;
}

void KToolButton::setText(const QString& text)
{
    if (m_text == text)
        return;
    m_text = text;
    updateGeometry();
    update();
}

void KToolButton::setText2(const QString& text)
{
    if (m_text2 == text)
        return;
    m_text2 = text;
    updateGeometry();
    update();
}

void KToolButton::setIcon(const QIcon& icon)
{
    if (m_icon.cacheKey() == icon.cacheKey())
        return;
    // The icon part takes iconSize() whichever icon it shows: only gaining or losing one
    // changes the size.
    const bool sizeChanges = m_icon.isNull() != icon.isNull();
    m_icon = icon;
    if (sizeChanges)
        updateGeometry();
    update();
}

void KToolButton::setShortCutHint(const QString& hint)
{
    if (m_shortCutHint == hint)
        return;
    m_shortCutHint = hint;
    updateGeometry();
    update();
}

void KToolButton::setChecked(bool checked)
{
    if (m_checked == checked)
        return;
    m_checked = checked;
    update();
}

void KToolButton::setDown(bool down)
{
    if (m_down == down)
        return;
    m_down = down;
    update();
}

void KToolButton::setPressed(bool pressed)
{
    if (m_pressed == pressed)
        return;
    m_pressed = pressed;
    update();
}

void KToolButton::setButtonStyle(int style)
{
    if (m_buttonStyle == style)
        return;
    m_buttonStyle = style;
    // The caption follows the new hot-key bit; here the plain text stands, ampersands and all.
    if (m_command)
        setText(_captionFromCommand(false));
    updateGeometry();
    update();
}

void KToolButton::setRoundCorner(int corners)
{
    if (m_roundCorner == corners)
        return;
    m_roundCorner = corners;
    update();
}

void KToolButton::setIconSize(const QSize& size)
{
    // Unconditional on purpose: a caller uses it to make the layout ask again.
    m_iconSize = size;
    updateGeometry();
    update();
}

void KToolButton::initStyleOption(KStyleOptionToolButton* option) const
{
    if (!option)
        return;
    option->initFrom(this);
    if (m_checked)
        option->state |= QStyle::State_On;
    if (m_down || m_pressed)
        option->state |= QStyle::State_Sunken;
    if (!m_checked && !m_down && !m_pressed)
        option->state |= QStyle::State_Raised;
    option->state |= QStyle::State_AutoRaise;
    option->icon = m_icon;
    option->iconSize = m_iconSize;
    option->text = m_text;
    option->text2 = m_text2;
    option->buttonStyle = m_buttonStyle;
    option->roundCorner = m_roundCorner;
    option->orientation = orientation();
    option->isDown = m_down;
    option->subControls = QStyle::SC_ToolButton;
    if (m_buttonStyle & StyleArrow)
        option->subControls |= QStyle::SC_ToolButtonMenu;
    option->largeMargins = needLargeMargins();
    option->autoHideText = m_autoHideText;
}

void KToolButton::autoHideText()
{
    if ((m_buttonStyle & (StyleAutoHideText | StyleText)) != (StyleAutoHideText | StyleText))
        return;
    QScreen* screen = this->screen();
    if (!screen)
        return;
    const QRect geometry = screen->geometry();
    const bool hide = geometry.right() - geometry.left() <= kNarrowScreenRight;
    if (hide == m_autoHideText)
        return;
    m_autoHideText = hide;
    updateGeometry();
}

bool KToolButton::event(QEvent* e)
{
    switch (static_cast<int>(e->type())) {
    case QEvent::Paint:
        autoHideText();
        break;
    case KEvent::Idle:
        if (m_command)
            m_command->update();
        return true;
    case KEvent::BlockedMouse: {
        auto* blocked = static_cast<KBlockedMouseEvent*>(e);
        QMouseEvent* mouse = blocked->mouseEvent();
        if (!mouse)
            return true;
        const bool inside = rect().contains(mapFromGlobal(mouse->globalPosition().toPoint()));
        // The popup this button opened: a left press on the button is the button's own.
        if (blocked->popup() && blocked->popup()->parent() == this && mouse->button() == Qt::LeftButton
            && inside)
            blocked->setFirstFlag(true);
        if (mouse->type() == QEvent::MouseMove && inside && !m_blockMouseIn)
            onBlockMouseEnter();
        return true;
    }
    case KWidgetExhibitDirectChangedEvent::Type:
        // A tool bar turned: the layout asks again in the new direction.
        setOrientation(static_cast<KWidgetExhibitDirectChangedEvent*>(e)->direction() ? Qt::Vertical
                                                                                    : Qt::Horizontal);
        updateGeometry();
        return true;
    case KEvent::HotKeyCollect:
        _collectHotKey(static_cast<KHotKeyCollectEvent*>(e));
        return true;
    case KEvent::HotKeyTrigger: {
        auto* trigger = static_cast<KHotKeyTriggerEvent*>(e);
        if (trigger->result == 0) {
            if (m_command)
                m_command->trigger();
            trigger->result = 2;
        }
        return true;
    }
    case QEvent::ToolTip:
        // The button's own key first, then its command's. Without an entry in the tip
        // catalogue the plain tool tip of the command shows.
        if (m_command
            && KCommandBridgeHelper::showRichTip(this, m_command,
                                                 m_customTip.isEmpty() ? m_command->customTip() : m_customTip,
                                                 static_cast<QHelpEvent*>(e)))
            return true;
        break;
    default:
        break;
    }
    return QWidget::event(e);
}

void KToolButton::mousePressEvent(QMouseEvent* e)
{
    // Other buttons do nothing, and the press is not handed on.
    if (e->button() != Qt::LeftButton)
        return;
    Q_EMIT LButtonPressed();
    setPressed(true);
}

void KToolButton::mouseReleaseEvent(QMouseEvent* e)
{
    const QPointer<KToolButton> self(this);
    setPressed(false);
    // Every popup above the button closes before the command runs.
    KEvent dismiss(KEvent::Dismiss);
    sendPropagatedEvent(this, &dismiss, false);
    if (!self || !rect().contains(e->position().toPoint()))
        return;
    if (e->button() == Qt::LeftButton)
        Q_EMIT LButtonClicked();
    else if (e->button() == Qt::RightButton)
        Q_EMIT RButtonClicked();
    // The command may have deleted the button (closing its window, say).
    if (self)
        Q_EMIT clicked();
}

void KToolButton::enterEvent(QEnterEvent* e)
{
    update();
    QWidget::enterEvent(e);
}

void KToolButton::leaveEvent(QEvent* e)
{
    // Leaving with the button held drops the pressed look; coming back does not restore it.
    m_pressed = false;
    onBlockMouseLeave();
    update();
    QWidget::leaveEvent(e);
}

void KToolButton::paintEvent(QPaintEvent*)
{
    QStylePainter painter(this);
    KStyleOptionToolButton option;
    initStyleOption(&option);
    if (KORBStyle::isFrameworkStyle(style())) {
        painter.drawComplexControl(KORBStyle::KCC_ToolButton, option);
        return;
    }
    // A host's own style knows nothing of the framework's control: it draws the stock tool
    // button, as it would for a QToolButton with the same content.
    QStyleOptionToolButton stock;
    KORBStyle::_toQStyleOptionToolButton(&option, &stock);
    painter.drawComplexControl(QStyle::CC_ToolButton, stock);
}

void KToolButton::onBlockMouseEnter()
{
    m_blockMouseIn = true;
    // The popup holds the mouse, so no real enter comes: make the hover look by hand.
    setAttribute(Qt::WA_UnderMouse);
    const QPoint global = QCursor::pos();
    const QPointF local = mapFromGlobal(global);
    QCoreApplication::postEvent(this, new QEnterEvent(local, local, QPointF(global)));
    if (!m_tipTimer) {
        m_tipTimer = new QTimer(this);
        m_tipTimer->setSingleShot(true);
        m_tipTimer->setInterval(kTipDelayMs);
        connect(m_tipTimer, &QTimer::timeout, this, &KToolButton::showToolTip);
    }
    m_tipTimer->start();
}

void KToolButton::onBlockMouseLeave()
{
    m_blockMouseIn = false;
    if (m_tipTimer && m_tipTimer->isActive())
        m_tipTimer->stop();
}

void KToolButton::showToolTip()
{
    const QPoint local(5, 5);
    QCoreApplication::postEvent(this, new QHelpEvent(QEvent::ToolTip, local, mapToGlobal(local)));
}

// --- key tips ---

void KToolButton::_collectHotKey(KHotKeyCollectEvent* e)
{
    QPoint pos;
    if (m_buttonStyle & StyleTextUnderIcon)
        pos = KDrawHelpFunc::getHotKeyShowPos(this, size(), 2, 14) - QPoint(8, 0);
    else
        pos = KDrawHelpFunc::getHotKeyShowPos(this, size(), 4, 0);
    // On a floating tool bar the label takes part in matching but isn't drawn.
    QVariant tag;
    auto* bar = qobject_cast<QToolBar*>(window());
    if (bar && bar->isFloating())
        tag = KHotKeyMarker::doNotShow();
    if (!m_command)
        return;
    m_command->update();
    const char* name = e->useRbHotKey ? "rbHotKey" : "hotKey";
    const QString key = m_command->property(name).toString();
    e->addHotKey(pos, key, this, isEnabled(), tag);
}
