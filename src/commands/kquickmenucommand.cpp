#include "kquickmenucommand.h"

#include <kmenubutton.h>

#include <kcommandfactory.h>
#include <kseparatorcommand.h>

static KCommandFactoryItem<KQuickMenuCommand, QObject>
    s_quickMenuItem(QStringLiteral("KQuickMenuCommand"), QStringLiteral("QObject"));

namespace {
// What the face copies from its reference; the enablement and customTip2 are left alone.
const char* const kFaceProperties[] = {"text",         "text2",  "icon",     "detail",   "checkedHint",
                                       "dialogHint",   "shortcutHint", "hotKey", "customTip"};
} // namespace

KQuickMenuCommand::KQuickMenuCommand(QObject* host, QObject* parent)
    : KListCommand(host, parent)
{
    connect(this, &KAbstractListCommand::subCommandInsert, this, &KQuickMenuCommand::onSubCommandInserted);
    connect(this, &KAbstractListCommand::subCommandRemove, this, &KQuickMenuCommand::onSubCommandRemoved);
    syncCommand();
}

KQuickMenuCommand::~KQuickMenuCommand()
{
    // The base class announces the removals; the face need not follow them any more.
    disconnect(this, &KAbstractListCommand::subCommandRemove, this, &KQuickMenuCommand::onSubCommandRemoved);
}

bool KQuickMenuCommand::isTriggerable() const
{
    return true;
}

void KQuickMenuCommand::onSubCommandInserted(int, KCommand* cmd)
{
    if (!cmd || KSeparatorCommand::isSeparator(cmd))
        return;
    connect(cmd, &KCommand::triggered, this, &KQuickMenuCommand::onReferenceCommandChanged,
            Qt::UniqueConnection);
}

void KQuickMenuCommand::onSubCommandRemoved(int idx)
{
    // Announced while the item is still in place.
    KCommand* cmd = subCommand(idx);
    if (!cmd || KSeparatorCommand::isSeparator(cmd))
        return;
    // An item that stands in the list twice keeps its connection.
    int occurrences = 0;
    for (int i = 0; i < count(); ++i) {
        if (subCommand(i) == cmd)
            ++occurrences;
    }
    if (occurrences <= 1)
        disconnect(cmd, &KCommand::triggered, this, &KQuickMenuCommand::onReferenceCommandChanged);
}

void KQuickMenuCommand::onReferenceCommandChanged()
{
    // The item has run its own triggered() already; now it becomes the face.
    setReferenceCommand(qobject_cast<KCommand*>(sender()));
}

void KQuickMenuCommand::setReferenceCommand(KCommand* command)
{
    if (m_referenceCommand == command)
        return;
    if (m_referenceCommand)
        disconnect(m_referenceCommand, &KCommand::changed, this, &KQuickMenuCommand::syncCommand);
    m_referenceCommand = command;
    if (command)
        connect(command, &KCommand::changed, this, &KQuickMenuCommand::syncCommand, Qt::UniqueConnection);
    syncCommand();
}

void KQuickMenuCommand::syncCommand()
{
    // One changed() for the whole copy.
    KCommandChangedBlockHelpObject block(this);
    KCommand* ref = m_referenceCommand.data();
    if (ref) {
        setVisible(ref->isVisible());
        for (const char* name : kFaceProperties)
            setProperty(name, ref->property(name));
        return;
    }
    setVisible(true);
    setEnabled(false);
    for (const char* name : kFaceProperties) {
        const QVariant current = property(name);
        // An empty value of the property's own type (a dynamic one simply goes).
        setProperty(name, current.isValid() ? QVariant(current.metaType()) : QVariant());
    }
    setCustomTip2(QString());
}

void KQuickMenuCommand::onTriggered()
{
    if (m_referenceCommand)
        m_referenceCommand->trigger();
}

void KQuickMenuCommand::update()
{
    if (m_referenceCommand)
        updateSubCommand();
}

void KQuickMenuCommand::updateSubCommand()
{
    KCommand* ref = m_referenceCommand.data();
    if (!ref)
        return;
    const bool refEnabled = ref->isEnabled();
    ref->update();
    bool changed = ref->isEnabled() != refEnabled;
    const int n = count();
    for (int i = 0; i < n; ++i) {
        KCommand* sub = subCommand(i);
        if (!sub || sub == ref)
            continue;
        const bool before = sub->isEnabled();
        sub->update();
        // Compared with the reference's enablement, not with the item's own after its
        // update: that is how the face has always decided to look again.
        if (m_referenceCommand && m_referenceCommand->isEnabled() != before)
            changed = true;
    }
    if (changed)
        setEnabled(hasEnableSubCommand());
}

bool KQuickMenuCommand::hasEnableSubCommand() const
{
    const int n = count();
    for (int i = 0; i < n; ++i) {
        KCommand* sub = subCommand(i);
        if (sub && !KSeparatorCommand::isSeparator(sub) && sub->isEnabled())
            return true;
    }
    return m_referenceCommand ? m_referenceCommand->isEnabled() : false;
}

KCommand* KQuickMenuCommand::clone(QObject* host, QObject* parent)
{
    ensureSubCommandsLoaded();
    auto* copy = new KQuickMenuCommand(host, parent);
    if (KCommand* ref = m_referenceCommand.data())
        copy->setReferenceCommand(ref->clone(host, copy));
    const int n = count();
    for (int i = 0; i < n; ++i) {
        if (KCommand* subCopy = subCommand(i)->clone(host, copy))
            copy->addSubCommand(subCopy);
    }
    copyProperties(copy);
    return copy;
}

QWidget* KQuickMenuCommand::createPocketWidget(QWidget* parent)
{
    auto* button = new KQuickMenuButton(parent);
    button->setButtonStyle(KToolButton::StyleIcon | KToolButton::StyleText | KToolButton::StyleArrow);
    button->setDefaultCommand(this);
    button->setTriggerAble(isTriggerable());
    if (hideArrowHint())
        button->setButtonStyle(button->buttonStyle() & ~KToolButton::StyleArrow);
    return button;
}
