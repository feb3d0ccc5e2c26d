#include "kwindowtitlebar.h"

#include <QMouseEvent>
#include <QPainter>
#include <QWindow>

#include <kapplication.h>
#include <kapptheme.h>
#include <kcommandfactory.h>
#include <kdrawhelpfunc.h>
#include <kevent.h>
#include <kmainwindow.h>
#include <krbtabbar.h>

static KCommandFactoryItem<KWindowTitleBarCommand, KMainWindow>
    s_titleBarItem(QStringLiteral("KWindowTitleBarCommand"), QStringLiteral("KMainWindow"));
static KCommandFactoryItem<KWindowTitleBarButtonCommand, KMainWindow>
    s_titleBarButtonItem(QStringLiteral("KWindowTitleBarButtonCommand"), QStringLiteral("KMainWindow"));

namespace {
const int kIconBox = 25;
} // namespace

KWindowTitleBar::KWindowTitleBar(KCommand* command, QWidget* parent)
    : KCommandWidgetBridge<QWidget>(command, parent, false)
{
    if (command && command->count() > 0) {
        if (KCommand* first = command->subCommand(0))
            m_child = first->requestWidget(this, KCommand::PocketPurpose);
    }
    setSizePolicy(QSizePolicy::Expanding, QSizePolicy::Fixed);
    (new KWindowMover(this))->watch(this);
}

KWindowTitleBar::~KWindowTitleBar() = default;

QFont KWindowTitleBar::_titleFont() const
{
    QFont f = font();
    if (KApplication* app = KApplication::instance(); app && app->theme())
        f = app->theme()->getFont(QStringLiteral("KWindowTitleBar"), QStringLiteral("titleFont"), f);
    return f;
}

QString KWindowTitleBar::caption() const
{
    return KRbTabBar::titleOfWindowTitle(window()->windowTitle());
}

QSize KWindowTitleBar::sizeHint() const
{
    const QFontMetrics fm(_titleFont());
    const int child = m_child ? m_child->sizeHint().width() : 0;
    const int height = qMax(fm.height() + 10, m_child ? m_child->sizeHint().height() : 0);
    return QSize(fm.horizontalAdvance(caption()) + child + 53, qMax(height, kIconBox));
}

QSize KWindowTitleBar::minimumSizeHint() const
{
    return QSize(kIconBox + 10, sizeHint().height());
}

void KWindowTitleBar::resizeEvent(QResizeEvent* e)
{
    KCommandWidgetBridge<QWidget>::resizeEvent(e);
    if (QWidget* child = m_child.data()) {
        const QFontMetrics fm(_titleFont());
        const QSize s = child->sizeHint();
        child->setGeometry(fm.horizontalAdvance(caption()) + 50, (height() - s.height()) / 2, s.width(), s.height());
    }
}

void KWindowTitleBar::paintEvent(QPaintEvent*)
{
    QPainter painter(this);
    QRect r = rect().adjusted(5, 0, 0, 0);
    const QRect iconBox(r.left(), (height() - kIconBox) / 2, kIconBox, kIconBox);
    window()->windowIcon().paint(&painter, iconBox.adjusted(4, 4, -4, -4));
    r.setLeft(iconBox.right() + 6);
    QColor text = KDrawHelpFunc::getColorFromTheme(QStringLiteral("KWindowTitleBar"), QStringLiteral("titleTextColor"));
    if (!text.isValid())
        text = palette().color(QPalette::WindowText);
    if (!window()->isActiveWindow())
        text = palette().color(QPalette::Disabled, QPalette::WindowText);
    painter.setFont(_titleFont());
    const QString shown = painter.fontMetrics().elidedText(caption(), Qt::ElideRight, qMax(0, r.width()));
    KDrawHelpFunc::drawColorText(painter, text, r, int(Qt::AlignLeft | Qt::AlignVCenter), shown);
}

bool KWindowTitleBar::event(QEvent* e)
{
    if (int(e->type()) == KEvent::HotKeyTrigger && m_child)
        sendDirectEvent(m_child, e);
    if (e->type() == QEvent::WindowTitleChange || e->type() == QEvent::WindowIconChange) {
        updateGeometry();
        update();
    }
    return KCommandWidgetBridge<QWidget>::event(e);
}

KWindowTitleBarButton::KWindowTitleBarButton(QWidget* parent)
    : KMenuButton(parent)
{
}

KWindowTitleBarCommand::KWindowTitleBarCommand(QObject* host, QObject* parent)
    : KListCommand(host, parent)
{
}

QWidget* KWindowTitleBarCommand::createPocketWidget(QWidget* parent)
{
    return new KWindowTitleBar(this, parent);
}

KWindowTitleBarButtonCommand::KWindowTitleBarButtonCommand(QObject* host, QObject* parent)
    : KListCommand(host, parent)
{
}

QWidget* KWindowTitleBarButtonCommand::createPocketWidget(QWidget* parent)
{
    auto* button = new KWindowTitleBarButton(parent);
    button->setDefaultCommand(this);
    button->setTriggerAble(isTriggerable());
    return button;
}

// --- moving a window by its title ---

KWindowMover::KWindowMover(QObject* parent)
    : QObject(parent)
{
}

void KWindowMover::watch(QWidget* handle)
{
    if (handle)
        handle->installEventFilter(this);
}

bool KWindowMover::eventFilter(QObject* watched, QEvent* e)
{
    auto* handle = qobject_cast<QWidget*>(watched);
    if (!handle)
        return false;
    QWidget* window = handle->window();
    switch (e->type()) {
    case QEvent::MouseButtonPress: {
        auto* mouse = static_cast<QMouseEvent*>(e);
        if (mouse->button() != Qt::LeftButton || window->isFullScreen())
            return false;
        // A child of the handle (a tab, a button) keeps its own presses.
        QWidget* under = handle->childAt(mouse->position().toPoint());
        if (under && under->isVisible() && !under->testAttribute(Qt::WA_TransparentForMouseEvents))
            return false;
        m_dragging = window;
        m_offset = mouse->globalPosition().toPoint() - window->frameGeometry().topLeft();
        // A window manager moves the window itself, snapping and all; without one, by hand.
        m_byHand = !(window->windowHandle() && !window->isMaximized() && window->windowHandle()->startSystemMove());
        return false;
    }
    case QEvent::MouseMove: {
        auto* mouse = static_cast<QMouseEvent*>(e);
        if (!m_byHand || m_dragging.data() != window || !(mouse->buttons() & Qt::LeftButton))
            return false;
        if (window->isMaximized())
            return false; // a maximised window stays where it is
        window->move(mouse->globalPosition().toPoint() - m_offset);
        return true;
    }
    case QEvent::MouseButtonRelease:
        m_dragging = nullptr;
        return false;
    case QEvent::MouseButtonDblClick: {
        auto* mouse = static_cast<QMouseEvent*>(e);
        QWidget* under = handle->childAt(mouse->position().toPoint());
        if (mouse->button() != Qt::LeftButton || (under && under->isVisible()))
            return false;
        if (window->isMaximized())
            window->showNormal();
        else
            window->showMaximized();
        return true;
    }
    default:
        return false;
    }
}
