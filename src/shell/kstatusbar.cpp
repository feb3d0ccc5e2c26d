#include "kstatusbar.h"

#include <QHBoxLayout>
#include <QMouseEvent>
#include <QPainter>
#include <QSizeGrip>
#include <QSpacerItem>

#include "kabstractlistcommand.h"
#include "kappidlesvr.h"
#include "kapplication.h"
#include "kcommandfactory.h"
#include "kcommandwidgetbridge.h"
#include "kdrawhelpfunc.h"
#include "kevent.h"
#include "korbstyle.h"
#include "kprocessupdatesvr.h"
#include "kseparatorcommand.h"

static KCommandFactoryItem<KStatusItemCommand, QObject>
    s_statusItemCommandItem(QStringLiteral("KStatusItemCommand"), QStringLiteral("QObject"));
static KCommandFactoryItem<KStatusNumLockCommand, QObject>
    s_statusNumLockCommandItem(QStringLiteral("KStatusNumLockCommand"), QStringLiteral("QObject"));
static KCommandFactoryItem<KStatusCapsLockCommand, QObject>
    s_statusCapsLockCommandItem(QStringLiteral("KStatusCapsLockCommand"), QStringLiteral("QObject"));
static KCommandFactoryItem<KStatusInsertKeyCommand, QObject>
    s_statusInsertKeyCommandItem(QStringLiteral("KStatusInsertKeyCommand"), QStringLiteral("QObject"));
static KCommandFactoryItem<KStatusStrechCommand, QObject>
    s_statusStrechCommandItem(QStringLiteral("KStatusStrechCommand"), QStringLiteral("QObject"));

// --- KStatusBar ---

KStatusBar::KStatusBar(QWidget* parent)
    : QWidget(parent)
{
    m_outerLayout = new QHBoxLayout(this);
    m_outerLayout->setContentsMargins(0, 0, 0, 0);
    m_outerLayout->setSpacing(0);
    m_layout = new KStatusBarLayout;
    m_layout->setSpacing(0);
    if (style()->styleHint(KORBStyle::KSH_StyleGeneration, nullptr, this) == 2013)
        m_layout->setContentsMargins(0, 1, 1, 1);
    else
        m_layout->setContentsMargins(0, 0, 0, 0);
    m_outerLayout->addLayout(m_layout, 1);
    m_outerLayout->addWidget(new QSizeGrip(this), 0, Qt::AlignBottom);
    KCommandBridgeHelper::registerIdle(this);
}

KStatusBar::~KStatusBar()
{
    KCommandBridgeHelper::unregisterIdle(this);
}

void KStatusBar::setStatusCommand(KCommand* cmd)
{
    if (cmd == m_command)
        return;
    if (m_command) {
        disconnect(m_command, nullptr, this, nullptr);
        _clearItems();
    }
    m_command = cmd;
    if (!cmd)
        return;
    for (int i = 0; i < cmd->count(); ++i)
        _insertCommandItem(i, cmd->subCommand(i));
    connect(cmd, &KCommand::changed, this, &KStatusBar::syncCommand);
    if (auto* list = qobject_cast<KAbstractListCommand*>(cmd)) {
        connect(list, &KAbstractListCommand::subCommandInsert, this, &KStatusBar::onSubCommandInserted);
        connect(list, &KAbstractListCommand::subCommandRemove, this, &KStatusBar::onSubCommandRemoved);
    }
    syncCommand();
}

void KStatusBar::_insertCommandItem(int index, KCommand* cmd)
{
    index = qBound(0, index, m_items.size());
    if (qobject_cast<KStatusStrechCommand*>(cmd)) {
        // The stretch keeps a null entry, so that command, list and row indexes agree.
        m_layout->insertStretch(index, 0);
        m_items.insert(index, nullptr);
        _findPermanentIndex();
        return;
    }
    QWidget* widget = nullptr;
    if (KSeparatorCommand::isSeparator(cmd) || qobject_cast<KSeparatorCommand*>(cmd))
        widget = new KStatusBarSeparator(this);
    else if (cmd)
        widget = cmd->requestWidget(this, 0);
    if (!widget) {
        // A command without a widget still holds its place in the row.
        widget = new QWidget(this);
        widget->hide();
    }
    insertWidget(index, widget, 0);
}

void KStatusBar::_clearItems()
{
    while (m_layout->count() > 0) {
        QLayoutItem* item = m_layout->takeAt(0);
        delete item->widget();
        delete item;
    }
    m_items.clear();
    m_permanentIndex = -1;
}

void KStatusBar::_findPermanentIndex()
{
    m_permanentIndex = -1;
    for (int i = m_items.size() - 1; i >= 0; --i) {
        if (!m_items.at(i)) {
            m_permanentIndex = i + 1;
            return;
        }
    }
}

void KStatusBar::onSubCommandInserted(int idx, KCommand* cmd)
{
    _insertCommandItem(idx, cmd);
}

void KStatusBar::onSubCommandRemoved(int idx)
{
    if (idx < 0 || idx >= m_items.size())
        return;
    QWidget* widget = m_items.takeAt(idx);
    QLayoutItem* item = m_layout->takeAt(idx);
    delete item;
    delete widget;
    _findPermanentIndex();
}

void KStatusBar::addWidget(QWidget* widget, int stretch)
{
    insertWidget(m_permanentIndex > 0 ? m_permanentIndex - 1 : m_items.size(), widget, stretch);
}

void KStatusBar::insertWidget(int index, QWidget* widget, int stretch)
{
    if (!widget)
        return;
    index = qBound(0, index, m_items.size());
    m_layout->insertWidget(index, widget, stretch);
    m_items.insert(index, widget);
    _findPermanentIndex();
}

void KStatusBar::addPermanentWidget(QWidget* widget, int stretch)
{
    insertPermanentWidget(m_items.size() - qMax(0, m_permanentIndex), widget, stretch);
}

void KStatusBar::insertPermanentWidget(int index, QWidget* widget, int stretch)
{
    if (!widget)
        return;
    index = qBound(0, index + qMax(0, m_permanentIndex), m_items.size());
    m_layout->insertWidget(index, widget, stretch, Qt::AlignVCenter | Qt::AlignRight);
    m_items.insert(index, widget);
    _findPermanentIndex();
}

void KStatusBar::syncCommand()
{
    KCommand* cmd = m_command.data();
    if (!cmd)
        return;
    // A bar not yet placed in a window must not turn into a window of its own.
    if (parentWidget() || !cmd->isVisible())
        setVisible(cmd->isVisible());
    setEnabled(cmd->isEnabled());
    setWindowTitle(cmd->text());
    setWindowIcon(cmd->icon());
}

bool KStatusBar::event(QEvent* e)
{
    if (e->type() == QEvent::Type(KEvent::Idle)) {
        if (m_command)
            m_command->update();
        return true;
    }
    return QWidget::event(e);
}

void KStatusBar::initStyleOption(KStyleOptionStatusBar* option) const
{
    option->initFrom(this);
}

void KStatusBar::paintEvent(QPaintEvent*)
{
    QPainter p(this);
    KStyleOptionStatusBar option;
    initStyleOption(&option);
    if (KORBStyle::isFrameworkStyle(style()))
        style()->drawComplexControl(KORBStyle::KCC_StatusBar, &option, &p, this);
    else
        style()->drawPrimitive(QStyle::PE_PanelStatusBar, &option, &p, this);
}

void KStatusBar::mouseReleaseEvent(QMouseEvent* e)
{
    // A right click on the empty left part opens the status command's menu.
    if (e->button() == Qt::RightButton && m_command && m_command->isTriggerable()
        && e->position().x() < m_layout->geometry().x() + m_layout->getLastStrechPos()) {
        m_command->trigger();
        return;
    }
    QWidget::mouseReleaseEvent(e);
}

// --- KStatusBarLabel ---

KStatusBarLabel::KStatusBarLabel(QWidget* parent)
    : QWidget(parent)
{
}

KStatusBarLabel::KStatusBarLabel(const QString& text, QWidget* parent)
    : QWidget(parent), m_text(text)
{
}

KStatusBarLabel::KStatusBarLabel(const QIcon& icon, QWidget* parent)
    : QWidget(parent), m_icon(icon)
{
}

KStatusBarLabel::KStatusBarLabel(const QString& text, const QIcon& icon, QWidget* parent)
    : QWidget(parent), m_text(text), m_icon(icon)
{
}

KStatusBarLabel::~KStatusBarLabel()
{
    if (KApplication* app = KApplication::instance()) {
        if (app->idleSvr())
            app->idleSvr()->unregisterItem(this);
        if (app->processUpdateSvr())
            app->processUpdateSvr()->unregisterItem(this);
    }
}

void KStatusBarLabel::setDefaultCommand(KCommand* cmd)
{
    if (cmd == m_command)
        return;
    if (m_command)
        disconnect(m_command, &KCommand::changed, this, &KStatusBarLabel::syncCommand);
    m_command = cmd;
    if (!cmd)
        return;
    syncCommand();
    connect(cmd, &KCommand::changed, this, &KStatusBarLabel::syncCommand);
    const QVariant minimum = cmd->property("minimumWidth");
    if (minimum.isValid() && minimum.toInt() > 0)
        setMinimumWidth(minimum.toInt());
    if (KApplication* app = KApplication::instance()) {
        if (app->idleSvr())
            app->idleSvr()->registerItem(this, true);
        if (app->processUpdateSvr())
            app->processUpdateSvr()->registerItem(this);
    }
}

void KStatusBarLabel::setText(const QString& text)
{
    if (text == m_text)
        return;
    m_text = text;
    updateGeometry();
    update();
}

void KStatusBarLabel::setIcon(const QIcon& icon)
{
    if (icon.cacheKey() == m_icon.cacheKey())
        return;
    const bool hadIcon = !m_icon.isNull();
    m_icon = icon;
    if (hadIcon != !icon.isNull())
        updateGeometry();
    update();
}

void KStatusBarLabel::setDirection(QBoxLayout::Direction direction)
{
    if (direction == m_direction)
        return;
    m_direction = direction;
    updateGeometry();
    update();
}

QSize KStatusBarLabel::sizeHint() const
{
    const QSize icon = m_icon.isNull() ? QSize(0, 0) : QSize(16, 16);
    const QSize text = m_text.isEmpty() ? QSize(0, 0) : fontMetrics().size(Qt::TextSingleLine, m_text);
    QSize size;
    const bool horizontal = m_direction == QBoxLayout::LeftToRight || m_direction == QBoxLayout::RightToLeft;
    if (horizontal)
        size = QSize(icon.width() + text.width() + 2, qMax(icon.height(), text.height()));
    else
        size = QSize(qMax(icon.width(), text.width()), icon.height() + text.height() + 2);
    const QMargins m = contentsMargins();
    return size.grownBy(m).expandedTo(minimumSize());
}

QSize KStatusBarLabel::minimumSizeHint() const
{
    return sizeHint();
}

void KStatusBarLabel::syncCommand()
{
    KCommand* cmd = m_command.data();
    if (!cmd)
        return;
    setText(cmd->text());
    setIcon(cmd->icon());
    if (parentWidget() || !cmd->isVisible())
        setVisible(cmd->isVisible());
    update();
}

void KStatusBarLabel::repaintImmediately()
{
    repaint();
}

bool KStatusBarLabel::event(QEvent* e)
{
    if (e->type() == QEvent::Type(KEvent::Idle)) {
        if (m_command)
            m_command->update();
        return true;
    }
    if (e->type() == QEvent::Type(KEvent::ProcessUpdate)) {
        if (m_command)
            m_command->processUpdate();
        return true;
    }
    return QWidget::event(e);
}

void KStatusBarLabel::paintEvent(QPaintEvent*)
{
    QPainter p(this);
    QRect r = contentsRect();
    const bool horizontal = m_direction == QBoxLayout::LeftToRight || m_direction == QBoxLayout::RightToLeft;
    const bool reversed = m_direction == QBoxLayout::RightToLeft || m_direction == QBoxLayout::BottomToTop;
    if (!m_icon.isNull()) {
        QRect iconRect(0, 0, 16, 16);
        if (horizontal) {
            iconRect.moveCenter(QPoint(0, r.center().y()));
            iconRect.moveLeft(reversed ? r.right() - 15 : r.left());
            if (reversed)
                r.setRight(iconRect.left() - 2);
            else
                r.setLeft(iconRect.right() + 3);
        } else {
            iconRect.moveCenter(QPoint(r.center().x(), 0));
            iconRect.moveTop(reversed ? r.bottom() - 15 : r.top());
            if (reversed)
                r.setBottom(iconRect.top() - 2);
            else
                r.setTop(iconRect.bottom() + 3);
        }
        m_icon.paint(&p, iconRect, Qt::AlignCenter, isEnabled() ? QIcon::Normal : QIcon::Disabled);
    }
    style()->drawItemText(&p, r, Qt::AlignCenter, palette(), isEnabled(), m_text, QPalette::WindowText);
}

void KStatusBarLabel::mousePressEvent(QMouseEvent* e)
{
    if (e->button() == Qt::LeftButton)
        Q_EMIT LButtonClicked();
    else if (e->button() == Qt::RightButton)
        Q_EMIT RButtonClicked();
    Q_EMIT clicked();
}

void KStatusBarLabel::mouseDoubleClickEvent(QMouseEvent*)
{
    Q_EMIT doubleClicked();
}

// --- KStatusButton and its kinds ---

namespace {
const int s_lightWidth = 8;
}

KStatusButton::KStatusButton(QWidget* parent)
    : KToolButton(parent)
{
    setButtonStyle(StyleIcon | StyleText);
}

bool KStatusButton::needDrawLight() const
{
    return command() && command()->property("needLight").toBool();
}

QSize KStatusButton::sizeHint() const
{
    QSize size = KToolButton::sizeHint();
    if (needDrawLight())
        size.rwidth() += s_lightWidth;
    return size;
}

QSize KStatusButton::minimumSizeHint() const
{
    QSize size = KToolButton::minimumSizeHint();
    if (needDrawLight())
        size.rwidth() += s_lightWidth;
    return size;
}

QString KStatusButton::_statusString() const
{
    return isChecked() ? QStringLiteral("check") : QStringLiteral("uncheck");
}

void KStatusButton::initStyleOption(KStyleOptionToolButton* option) const
{
    KToolButton::initStyleOption(option);
    const QColor text = KDrawHelpFunc::getColorFromTheme(QStringLiteral("common"), QStringLiteral("text"));
    if (text.isValid())
        option->textColor = text;
}

void KStatusButton::paintEvent(QPaintEvent* e)
{
    if (!needDrawLight()) {
        KToolButton::paintEvent(e);
        return;
    }
    // The button draws itself in the room behind the light.
    QPainter p(this);
    p.translate(s_lightWidth, 0);
    KStyleOptionToolButton option;
    initStyleOption(&option);
    option.rect = rect().adjusted(0, 0, -s_lightWidth, 0);
    if (KORBStyle::isFrameworkStyle(style())) {
        style()->drawComplexControl(KORBStyle::KCC_ToolButton, &option, &p, this);
    } else {
        QStyleOptionToolButton stock;
        KORBStyle::_toQStyleOptionToolButton(&option, &stock);
        style()->drawComplexControl(QStyle::CC_ToolButton, &stock, &p, this);
    }
    p.resetTransform();
    const QString state = _statusString();
    const QColor outer = KDrawHelpFunc::getColorFromTheme(QStringLiteral("KStatusBarLight"), QStringLiteral("outer-") + state);
    const QColor inner = KDrawHelpFunc::getColorFromTheme(QStringLiteral("KStatusBarLight"), QStringLiteral("inner-") + state);
    const QRect light(2, (height() - 6) / 2, 6, 6);
    p.setRenderHint(QPainter::Antialiasing);
    p.setPen(outer.isValid() ? QPen(outer) : QPen(Qt::NoPen));
    p.setBrush(inner.isValid() ? QBrush(inner) : QBrush(Qt::NoBrush));
    p.drawEllipse(QRectF(light).adjusted(0.5, 0.5, -0.5, -0.5));
}

KAutoBackupControlButton::KAutoBackupControlButton(QWidget* parent)
    : KStatusButton(parent)
{
}

void KAutoBackupControlButton::setWaitingSaveState(bool b)
{
    if (b == m_waitingSave)
        return;
    m_waitingSave = b;
    update();
}

QString KAutoBackupControlButton::_statusString() const
{
    if (isChecked() && m_waitingSave)
        return QStringLiteral("waiting-save");
    return KStatusButton::_statusString();
}

KWordCountStatusButton::KWordCountStatusButton(QWidget* parent)
    : KStatusButton(parent)
{
}

void KWordCountStatusButton::initStyleOption(KStyleOptionToolButton* option) const
{
    KStatusButton::initStyleOption(option);
    if (!isEnabled()) {
        const QColor text = KDrawHelpFunc::getColorFromTheme(QStringLiteral("KWordCountStatusButton"),
                                                             QStringLiteral("disable-text"));
        if (text.isValid())
            option->textColor = text;
    }
}

// --- status commands ---

KStatusItemCommand::KStatusItemCommand(QObject* host, QObject* parent)
    : KCommand(host, parent)
{
}

void KStatusItemCommand::setMinimumWidth(int width)
{
    if (width == m_minimumWidth)
        return;
    m_minimumWidth = width;
    Q_EMIT changed();
}

void KStatusItemCommand::setNeedLight(bool light)
{
    if (light == m_needLight)
        return;
    m_needLight = light;
    Q_EMIT changed();
}

QWidget* KStatusItemCommand::createPocketWidget(QWidget* parent)
{
    return adoptButton(new KStatusButton(parent));
}

QWidget* KStatusItemCommand::adoptButton(KStatusButton* button)
{
    button->setDefaultCommand(this);
    if (m_minimumWidth > 0)
        button->setMinimumWidth(m_minimumWidth);
    return button;
}

KStatusNumLockCommand::KStatusNumLockCommand(QObject* host, QObject* parent)
    : KStatusItemCommand(host, parent)
{
    setText(QStringLiteral("NumLock"));
}

KStatusCapsLockCommand::KStatusCapsLockCommand(QObject* host, QObject* parent)
    : KStatusItemCommand(host, parent)
{
    setText(QStringLiteral("Caps Lock"));
}

KStatusInsertKeyCommand::KStatusInsertKeyCommand(QObject* host, QObject* parent)
    : KStatusItemCommand(host, parent)
{
    setText(QStringLiteral("OverWrite"));
}

KStatusStrechCommand::KStatusStrechCommand(QObject* host, QObject* parent)
    : KCommand(host, parent)
{
}

QWidget* KStatusStrechCommand::createPocketWidget(QWidget*)
{
    return nullptr;
}
