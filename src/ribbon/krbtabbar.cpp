#include "krbtabbar.h"

#include <QApplication>
#include <QBoxLayout>
#include <QStylePainter>

#include <kcommand.h>
#include <kcommandwidgetbridge.h>
#include <kevent.h>
#include <khotkeyevent.h>
#include <korbstyle.h>
#include <krbhscrollwidget.h>
#include <krbquicktoolbar.h>
#include <krbtabbutton.h>
#include <krbtabfilebutton.h>
#include <krbtabwidgetcommand.h>

#include "krbpaint_p.h"

KRbTabBar::KRbTabBar(KRbTabWidgetCommand* cmd, QWidget* parent)
    : QWidget(parent)
    , m_command(cmd)
    , m_spaceWidget(new QWidget(this))
    , m_subTabBar(new KRbSubTabBar(cmd, nullptr))
    , m_bottomLayout(new QHBoxLayout)
    , m_mainLayout(new QVBoxLayout(this))
    , m_topLayout(new QHBoxLayout)
    , m_spaceLayout(new QVBoxLayout)
    , m_fileLayout(new QHBoxLayout)
{
    setAttribute(Qt::WA_Hover);
    m_scroll = new KRbHScrollWidget(this, m_subTabBar);
    m_scroll->setWheelRate(0.4);
    m_scroll->setSizePolicy(QSizePolicy::Expanding, m_scroll->sizePolicy().verticalPolicy());

    if (cmd && cmd->rightCornerCommand())
        m_rightCorner = cmd->rightCornerCommand()->requestWidget(this, KCommand::PocketPurpose);
    if (cmd && cmd->fileCommand())
        m_fileButton = new KRbTabFileButton(cmd->fileCommand(), this);
    if (cmd && cmd->rightCornerExtentCommand())
        m_rightCornerExtBar = new KRbQuickToolbar(cmd->rightCornerExtentCommand(), this);

    m_mainLayout->setSpacing(0);
    m_mainLayout->setContentsMargins(0, 0, 0, 0);
    m_topLayout->setObjectName(QStringLiteral("RbTabBar_TopLayout"));
    m_topLayout->setSpacing(0);
    m_topLayout->setContentsMargins(0, 0, 0, 0);
    m_topLayout->setSizeConstraint(QLayout::SetNoConstraint);
    m_bottomLayout->setSpacing(4);
    m_bottomLayout->setContentsMargins(0, 0, 0, 0);
    m_spaceLayout->setContentsMargins(0, 0, 0, 0);
    m_spaceLayout->setSpacing(0);
    m_spaceLayout->addWidget(m_spaceWidget);
    m_spaceLayout->addStretch();
    m_spaceWidget->hide();
    m_fileLayout->setContentsMargins(0, 0, 0, 0);
    m_fileLayout->setSpacing(0);
    if (m_fileButton)
        m_fileLayout->addWidget(m_fileButton, 0, Qt::AlignTop);

    m_mainLayout->addLayout(m_topLayout);
    m_mainLayout->addLayout(m_bottomLayout);
    m_bottomLayout->addLayout(m_fileLayout);
    m_bottomLayout->addWidget(m_scroll, 1);
    if (m_rightCornerExtBar) {
        m_bottomLayout->addWidget(m_rightCornerExtBar, 0, Qt::AlignTop);
        m_bottomLayout->addSpacing(2);
    }

    connect(m_subTabBar, &KRbSubTabBar::currentIdxChanged, this, &KRbTabBar::on_currentIdxChanged);
    connect(m_subTabBar, &KRbSubTabBar::currentIdxChanged, this, &KRbTabBar::currentIdxChanged);
    connect(m_subTabBar, &KRbSubTabBar::statusChanged, this, &KRbTabBar::statusChanged);
    connect(m_subTabBar, &KRbSubTabBar::valueChanged, this, &KRbTabBar::onBorderBottomLineColorChanged);
    KCommandBridgeHelper::registerIdle(this);
    setSingleLine(true);
}

KRbTabBar::~KRbTabBar()
{
    KCommandBridgeHelper::unregisterIdle(this);
    // The layout of the two-line form stands in no other layout, so nothing else frees it.
    if (!m_spaceLayout->parent())
        delete m_spaceLayout;
}

KRbTabWidgetCommand* KRbTabBar::command() const
{
    return m_command;
}

bool KRbTabBar::isAloneMode() const
{
    return m_subTabBar->isAloneMode();
}

KRbTabButton* KRbTabBar::tabButtonAt(int index) const
{
    return m_subTabBar->tabButtonAt(index);
}

int KRbTabBar::currentTabIdx() const
{
    return m_subTabBar->currentIdx();
}

void KRbTabBar::setCurrentTabIdx(int index)
{
    m_subTabBar->setCurrentIdx(index);
}

KRbSubTabBar::SubTabBarStatus KRbTabBar::status() const
{
    return m_subTabBar->status();
}

void KRbTabBar::setStatus(KRbSubTabBar::SubTabBarStatus status, bool byUser)
{
    m_subTabBar->setStatus(status, byUser);
}

KRbTabFileButton* KRbTabBar::fileButton() const
{
    return m_fileButton.data();
}

QRect KRbTabBar::getFileButtonGeometry() const
{
    return m_fileButton ? m_fileButton->geometry() : QRect();
}

QSize KRbTabBar::getWidgetSizeHint(QWidget* w) const
{
    return w && !w->isHidden() ? w->sizeHint() : QSize(0, 0);
}

QSize KRbTabBar::getWidgetMinimumSizeHint(QWidget* w) const
{
    return w && !w->isHidden() ? w->minimumSizeHint() : QSize(0, 0);
}

void KRbTabBar::setCurrentTabByContext(const QString& name)
{
    m_pendingContextIdx = -1;
    if (!m_command)
        return;
    for (int i = 0; i < m_command->count(); ++i) {
        KCommand* cmd = m_command->subCommand(i);
        if (cmd && cmd->property("contextName", QString()).toString() == name) {
            m_pendingContextIdx = i;
            return;
        }
    }
}

QMargins KRbTabBar::getFileButtonMarginsFromStyle() const
{
    const QStyle* s = style();
    return QMargins(s->pixelMetric(KORBStyle::KPM_FileButtonMarginLeft, nullptr, this),
                    s->pixelMetric(KORBStyle::KPM_FileButtonMarginTop, nullptr, this),
                    s->pixelMetric(KORBStyle::KPM_FileButtonMarginRight, nullptr, this),
                    s->pixelMetric(KORBStyle::KPM_FileButtonMarginBottom, nullptr, this));
}

void KRbTabBar::setSingleLine(bool)
{
    // One arrangement is in effect: everything in one row under the window's own title.
    m_singleLine = true;
    renderLayout();
}

void KRbTabBar::renderLayout()
{
    if (m_titleMode)
        return;
    QWidget* corner = m_rightCorner.data();
    if (corner)
        m_topLayout->removeWidget(corner);
    m_bottomLayout->removeWidget(m_spaceWidget);
    m_spaceLayout->removeWidget(m_spaceWidget);
    if (corner)
        m_bottomLayout->removeWidget(corner);
    if (m_singleLine) {
        if (corner)
            m_bottomLayout->addWidget(corner, 0, Qt::AlignTop);
        m_bottomLayout->addWidget(m_spaceWidget, 0, Qt::AlignTop);
        m_fileLayout->setContentsMargins(0, 0, 0, 0);
    } else {
        if (corner)
            m_topLayout->addWidget(corner);
        m_spaceLayout->insertWidget(0, m_spaceWidget);
        m_fileLayout->setContentsMargins(getFileButtonMarginsFromStyle());
    }
    // The caption buttons stay last, at the far right.
    if (QWidget* caption = m_captionWidget.data()) {
        m_bottomLayout->removeWidget(caption);
        m_bottomLayout->addWidget(caption, 0, Qt::AlignTop);
    }
    m_mainLayout->invalidate();
    updateGeometry();
}

void KRbTabBar::setTitleMode(bool)
{
    m_titleMode = false;
    m_scroll->show();
    if (m_rightCornerExtBar)
        m_rightCornerExtBar->show();
    if (m_fileButton)
        m_fileButton->setEnabled(true);
    m_mainLayout->invalidate();
    if (KRbTabButton* current = m_subTabBar->currentButton()) {
        QEvent request(QEvent::LayoutRequest);
        QApplication::sendEvent(current, &request);
    }
    setSingleLine(true);
    updateGeometry();
}

void KRbTabBar::setDisableRightCorner()
{
    m_disableRightCorner = true;
    m_spaceWidget->hide();
    if (m_rightCorner)
        m_rightCorner->hide();
}

void KRbTabBar::setCaptionWidget(QWidget* widget)
{
    if (widget == m_captionWidget.data())
        return;
    if (QWidget* old = m_captionWidget.data())
        m_bottomLayout->removeWidget(old);
    m_captionWidget = widget;
    if (widget) {
        widget->setParent(this);
        m_bottomLayout->addWidget(widget, 0, Qt::AlignTop);
        widget->show();
    }
    updateGeometry();
}

void KRbTabBar::useSpaceWidget(bool show)
{
    if (m_disableRightCorner)
        return;
    m_spaceWidget->setVisible(show);
    if (m_rightCorner)
        m_rightCorner->setVisible(!show);
}

void KRbTabBar::onAeroEffectChanged(bool)
{
    update();
}

void KRbTabBar::on_currentIdxChanged()
{
    KRbTabButton* button = m_subTabBar->currentButton();
    if (!button)
        return;
    button->show();
    // The tab's place has to be current before the scroller can bring it into view.
    for (QWidget* w = button->parentWidget(); w; w = w->parentWidget()) {
        if (QLayout* layout = w->layout())
            layout->activate();
        if (w == this)
            break;
    }
    m_scroll->ensureWidgetVisible(button);
}

void KRbTabBar::onBorderBottomLineColorChanged()
{
    const int line = style()->pixelMetric(KORBStyle::KPM_RbTabBarBottomLine, nullptr, this);
    update(QRect(0, height() - line, width(), line));
}

QString KRbTabBar::titleOfWindowTitle(const QString& windowTitle)
{
    // "[*]" is the window's modification mark, not a bracketed part of its title.
    QString title = windowTitle;
    title.remove(QStringLiteral("[*]"));
    const int open = title.indexOf(QLatin1Char('['));
    const int close = title.lastIndexOf(QLatin1Char(']'));
    if (open >= 0 && close > open)
        return title.mid(open + 1, close - open - 1);
    return title;
}

void KRbTabBar::_setTitle(const QString& windowTitle)
{
    const QString title = titleOfWindowTitle(windowTitle);
    if (title == m_title)
        return;
    m_title = title;
    update();
}

void KRbTabBar::_watchWindow()
{
    QWidget* window = this->window();
    if (window == m_watchedWindow.data() || window == this)
        return;
    if (m_watchedWindow)
        m_watchedWindow->removeEventFilter(this);
    m_watchedWindow = window;
    window->installEventFilter(this);
    _setTitle(window->windowTitle());
}

bool KRbTabBar::eventFilter(QObject* watched, QEvent* e)
{
    if (watched == m_watchedWindow.data()) {
        switch (e->type()) {
        case QEvent::WindowStateChange:
            setSingleLine(m_watchedWindow->isMaximized());
            break;
        case QEvent::WindowTitleChange:
            _setTitle(m_watchedWindow->windowTitle());
            break;
        case QEvent::WindowActivate:
        case QEvent::WindowDeactivate:
            update();
            break;
        default:
            break;
        }
    }
    return QWidget::eventFilter(watched, e);
}

bool KRbTabBar::event(QEvent* e)
{
    switch (int(e->type())) {
    case KEvent::Idle:
        if (m_pendingContextIdx >= 0 && m_command) {
            KCommand* cmd = m_command->subCommand(m_pendingContextIdx);
            if (!cmd) {
                m_pendingContextIdx = -1;
                return true;
            }
            cmd->update();
            if (cmd->isVisible()) {
                const int index = m_pendingContextIdx;
                m_pendingContextIdx = -1;
                setCurrentTabIdx(index);
            }
        }
        return true;
    case QEvent::ParentChange:
    case QEvent::Show:
        _watchWindow();
        break;
    case KEvent::HotKeyCollect:
        if (m_titleBarWidget && m_titleBarWidget->isVisible()) {
            QCoreApplication::sendEvent(m_titleBarWidget, e);
            return true;
        }
        QCoreApplication::sendEvent(m_subTabBar, e);
        if (m_fileButton)
            QCoreApplication::sendEvent(m_fileButton, e);
        return true;
    case KEvent::HotKeyTrigger: {
        auto* trigger = static_cast<KHotKeyTriggerEvent*>(e);
        const QString tag = trigger->message ? trigger->message->tag() : QString();
        if (trigger->result != 1)
            return true;
        if (tag == KHotKeyMarker::titleBar() && m_titleBarWidget)
            QCoreApplication::sendEvent(m_titleBarWidget, &trigger->collect);
        else if (tag == KHotKeyMarker::fileButton() && m_fileButton)
            QCoreApplication::sendEvent(m_fileButton, e);
        return true;
    }
    default:
        break;
    }
    return QWidget::event(e);
}

void KRbTabBar::initStyleOption(KStyleOptionRbTabBar* option) const
{
    option->initFrom(this);
    option->title = m_title;
    option->scrollerRect = m_scroll->geometry();
    option->topLayoutRect = m_topLayout->geometry();
    option->isSingleLine = m_singleLine;
    option->isTitleMode = m_titleMode;
    option->isAloneMode = isAloneMode();
    option->status = status();
    option->fileButtonRect = getFileButtonGeometry();
    if (m_rightCorner && m_rightCorner->isVisible())
        option->rightCornerRect = m_rightCorner->geometry();
    else
        option->rightCornerRect = m_spaceWidget->geometry();
    option->slideColor = m_subTabBar->getSlideBlockColor();
}

void KRbTabBar::paintEvent(QPaintEvent*)
{
    if (!KRbPaint::isFrameworkStyle(this))
        return;
    KStyleOptionRbTabBar option;
    initStyleOption(&option);
    QStylePainter painter(this);
    painter.drawComplexControl(KORBStyle::KCC_RbTabBar, option);
}
