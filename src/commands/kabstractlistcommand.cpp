#include "kabstractlistcommand.h"

#include <QMenu>
#include <QPointer>

#include <kseparatorcommand.h>
#include <ktoolbutton.h>

namespace {

// The items of list as actions of menu, sub-lists as sub-menus; each action triggers its
// command. Read afresh at each opening, with each item's update() first.
void fillStandInMenu(QMenu* menu, KCommand* list)
{
    const int n = list->count();
    for (int i = 0; i < n; ++i) {
        KCommand* sub = list->subCommand(i);
        if (!sub)
            continue;
        if (KSeparatorCommand::isSeparator(sub)) {
            menu->addSeparator();
            continue;
        }
        sub->update();
        if (!sub->isVisible())
            continue;
        if (qobject_cast<KAbstractListCommand*>(sub) && sub->count() > 0) {
            QMenu* child = menu->addMenu(sub->icon(), sub->getDrawText());
            child->setEnabled(sub->isEnabled());
            fillStandInMenu(child, sub);
            continue;
        }
        QAction* action = menu->addAction(sub->icon(), sub->getDrawText());
        action->setEnabled(sub->isEnabled());
        action->setCheckable(sub->checkedHint());
        action->setChecked(sub->checkedHint());
        if (!sub->shortcutHint().isEmpty())
            action->setShortcut(QKeySequence(sub->shortcutHint()));
        action->setShortcutVisibleInContextMenu(true);
        const QPointer<KCommand> guard(sub);
        QObject::connect(action, &QAction::triggered, sub, [guard] {
            if (guard)
                guard->trigger();
        });
    }
    if (menu->isEmpty())
        menu->addAction(QObject::tr("(Empty)"))->setEnabled(false);
}

} // namespace

KSubCommandParser::~KSubCommandParser() = default;

KAbstractListCommand::KAbstractListCommand(QObject* host, QObject* parent)
    : KCommand(host, parent)
{
}

KAbstractListCommand::~KAbstractListCommand() = default;

bool KAbstractListCommand::isExtensible() const
{
    return true;
}

void KAbstractListCommand::setTriggerEnabled(bool enabled)
{
    if (m_triggerEnabled == enabled)
        return;
    m_triggerEnabled = enabled;
    on_command_changed();
}

void KAbstractListCommand::setPopupEnabled(bool enabled)
{
    if (m_popupEnabled == enabled)
        return;
    m_popupEnabled = enabled;
    on_command_changed();
}

void KAbstractListCommand::setHideArrowHint(bool hide)
{
    if (m_hideArrowHint == hide)
        return;
    m_hideArrowHint = hide;
    on_command_changed();
}

void KAbstractListCommand::setDelayloadPath(const QString& path)
{
    if (m_delayloadPath == path)
        return;
    m_delayloadPath = path;
    on_command_changed();
}

bool KAbstractListCommand::isSubCommandsLoaded() const
{
    return !m_subCommandParser || m_delayloadPath.isEmpty();
}

void KAbstractListCommand::ensureSubCommandsLoaded()
{
    if (isSubCommandsLoaded())
        return;
    KSubCommandParser* parser = m_subCommandParser;
    m_subCommandParser = nullptr;
    parser->setupCommandXML(this, m_delayloadPath);
}

QWidget* KAbstractListCommand::createPocketWidget(QWidget* parent)
{
    auto* button = new KToolButton(parent);
    button->setButtonStyle(KToolButton::StyleIcon | KToolButton::StyleText | KToolButton::StyleArrow);
    button->setDefaultCommand(this);
    if (m_hideArrowHint)
        button->setButtonStyle(button->buttonStyle() & ~KToolButton::StyleArrow);
    QObject::connect(button, &KToolButton::LButtonClicked, button, [this, button] {
        if (!m_popupEnabled)
            return;
        auto* menu = new QMenu(button);
        menu->setAttribute(Qt::WA_DeleteOnClose);
        fillStandInMenu(menu, this);
        button->setDown(true);
        QObject::connect(menu, &QMenu::aboutToHide, button, [button] { button->setDown(false); });
        menu->popup(button->mapToGlobal(QPoint(0, button->height())));
    });
    return button;
}
