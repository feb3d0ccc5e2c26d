#include "kcommand.h"

#include <QLabel>
#include <QMetaProperty>

#include "kapplication.h"

// --- KMultiControlBool ---

bool KMultiControlBool::setValue(bool v)
{
    const bool before = isTrue();
    if (v)
        m_mask.reset();
    else
        m_mask.set(PlainControl);
    return before != isTrue();
}

bool KMultiControlBool::setValue(ControlType t, bool v)
{
    const bool before = isTrue();
    // Lifting a veto is the bitset's reset, imposing one its set: a bad bit number throws
    // with the message of the operation really done.
    if (v)
        m_mask.reset(static_cast<size_t>(t));
    else
        m_mask.set(static_cast<size_t>(t));
    return before != isTrue();
}

// --- KCommand ---

KCommand::KCommand(QObject* host, QObject* parent)
    : QObject(parent)
    , m_host(host)
{
    setVisible(true);
    setEnabled(true);
}

KCommand::~KCommand() = default;

void KCommand::setText(const QString& text)
{
    if (m_text == text)
        return;
    m_text = text;
    on_command_changed();
}

void KCommand::setIcon(const QIcon& icon)
{
    // A null icon never replaces one that was set; only a derived reset() can clear it.
    if (icon.isNull() || icon.cacheKey() == m_icon.cacheKey())
        return;
    m_icon = icon;
    on_command_changed();
}

void KCommand::setDetail(const QString& detail)
{
    if (m_detail == detail)
        return;
    m_detail = detail;
    on_command_changed();
}

void KCommand::setVisible(bool visible)
{
    if (m_visible.setValue(visible))
        on_command_changed();
}

void KCommand::setVisible(KMultiControlBool::ControlType t, bool visible)
{
    if (m_visible.setValue(t, visible))
        on_command_changed();
}

bool KCommand::isEnabled() const
{
    const QVariant force = QObject::property("forceenabled");
    if (force.canConvert<bool>())
        return force.toBool();
    return m_enabled.isTrue();
}

bool KCommand::isEnabled(KMultiControlBool::ControlType t) const
{
    const QVariant force = QObject::property("forceenabled");
    if (force.canConvert<bool>())
        return force.toBool();
    return m_enabled.isTrue(t);
}

void KCommand::setEnabled(bool enabled)
{
    if (m_enabled.setValue(enabled))
        on_command_changed();
}

void KCommand::setEnabled(KMultiControlBool::ControlType t, bool enabled)
{
    if (m_enabled.setValue(t, enabled))
        on_command_changed();
}

void KCommand::setMultiVisible(const KMultiControlBool& value)
{
    m_visible = value;
    on_command_changed();
}

void KCommand::setMultiEnabled(const KMultiControlBool& value)
{
    m_enabled = value;
    on_command_changed();
}

void KCommand::setCheckedHint(bool hint)
{
    if (m_checkedHint == hint)
        return;
    m_checkedHint = hint;
    on_command_changed();
}

void KCommand::setDialogHint(bool hint)
{
    if (m_dialogHint == hint)
        return;
    m_dialogHint = hint;
    on_command_changed();
}

void KCommand::setShortcutHint(const QString& hint)
{
    if (m_shortcutHint == hint)
        return;
    m_shortcutHint = hint;
    on_command_changed();
}

void KCommand::setCustomTip(const QString& tip)
{
    if (m_customTip == tip)
        return;
    m_customTip = tip;
    on_command_changed();
}

void KCommand::setCustomTip2(const QString& tip)
{
    if (m_customTip2 == tip)
        return;
    m_customTip2 = tip;
    on_command_changed();
}

void KCommand::setButtonStyle(int style)
{
    if (m_buttonStyle == style)
        return;
    m_buttonStyle = style;
    on_command_changed();
}

bool KCommand::isTriggerable() const
{
    return false;
}

bool KCommand::isCustomWidget() const
{
    return false;
}

bool KCommand::isExtensible() const
{
    return false;
}

void KCommand::update()
{
}

void KCommand::processUpdate()
{
}

int KCommand::count() const
{
    return 0;
}

KCommand* KCommand::subCommand(int) const
{
    return nullptr;
}

int KCommand::indexOf(KCommand*) const
{
    return -1;
}

KCommand* KCommand::clone(QObject*, QObject*)
{
    return nullptr;
}

void KCommand::reserved()
{
}

void KCommand::reset()
{
    m_visible.setValue(true);
    m_enabled.setValue(true);
    m_checkedHint = false;
    m_dialogHint = false;
    m_buttonStyle = 0;
    const QList<QByteArray> names = dynamicPropertyNames();
    for (const QByteArray& name : names)
        setProperty(name.constData(), QVariant());
    on_command_changed();
}

QString KCommand::triggerNote() const
{
    return QString();
}

void KCommand::trigger()
{
    if (!isTriggerable())
        return;
    const QString note = triggerNote();
    if (KApplication* app = KApplication::instance())
        app->onCommandTrigger(note);
    Q_EMIT triggered();
    onTriggered();
}

void KCommand::onTriggered()
{
}

QWidget* KCommand::createPocketWidget(QWidget* parent)
{
    return new QLabel(QStringLiteral("Undefined Widget"), parent);
}

QWidget* KCommand::createInlineWidget(QWidget* parent)
{
    return createPocketWidget(parent);
}

QWidget* KCommand::createExtendedWidget(QWidget* parent)
{
    return createInlineWidget(parent);
}

QWidget* KCommand::requestWidget(QWidget* parent, KCommand::WidgetPurpose purpose)
{
    QWidget* widget = nullptr;
    switch (purpose) {
    case PocketPurpose:
        widget = createPocketWidget(parent);
        break;
    case InlinePurpose:
        widget = createInlineWidget(parent);
        break;
    case ExtendedPurpose:
        widget = createExtendedWidget(parent);
        break;
    default:
        widget = new QLabel(QStringLiteral("Undefined"), parent);
        break;
    }
    if (widget)
        connect(this, &QObject::destroyed, widget, &QObject::deleteLater);
    return widget;
}

QVariant KCommand::property(const char* name, const QVariant& defaultValue) const
{
    const QVariant v = QObject::property(name);
    return v.isValid() ? v : defaultValue;
}

QString KCommand::getToolTip() const
{
    const QString detailText = property("detail", QString()).toString();
    if (!detailText.isEmpty())
        return detailText;
    QString tip = property("text", QString()).toString();
    if (property("dialogHint", false).toBool())
        tip += QStringLiteral("...");
    const QString shortcut = property("shortcutHint", QString()).toString();
    if (!shortcut.isEmpty())
        tip += QStringLiteral(" (") + shortcut + QLatin1Char(')');
    return tip;
}

QString KCommand::getDrawText() const
{
    QString s = property("text", QString()).toString();
    const QChar amp = QLatin1Char('&');
    // Only the first literal ampersand is escaped; later ones are left as they are.
    const int firstAmp = s.indexOf(amp);
    if (firstAmp >= 0)
        s.insert(firstAmp, amp);

    const QString hotKey = property("hotKey", QString()).toString().toUpper();
    if (!hotKey.isEmpty()) {
        const int p = s.indexOf(hotKey, 0, Qt::CaseInsensitive);
        if (p >= 0) {
            const int a = s.indexOf(amp);
            if (!(a >= 0 && a == p - 1))
                s.insert(p, amp);
        } else {
            s += QStringLiteral("(&") + hotKey + QLatin1Char(')');
        }
    }
    if (property("dialogHint", false).toBool() && !s.contains(QStringLiteral("...")))
        s += QStringLiteral("...");
    return s;
}

void KCommand::setDrawText(const QString& text)
{
    setProperty("dialogHint", false);
    setProperty("text", QString());
    setProperty("hotKey", QString());

    QString s = text;
    if (s.endsWith(QStringLiteral("..."))) {
        setProperty("dialogHint", true);
        s.chop(3);
    }
    const int p = s.indexOf(QStringLiteral("(&"));
    if (p >= 0) {
        const int q = s.indexOf(QLatin1Char(')'), p + 1);
        if (q - p == 3) {
            setProperty("hotKey", QString(s.at(p + 2)));
            s.truncate(p);
            s.remove(QLatin1Char('&'));
        }
    }
    const int a = s.indexOf(QLatin1Char('&'));
    if (a >= 0) {
        if (a != s.size() - 1)
            setProperty("hotKey", QString(s.at(a + 1)));
        s.remove(QLatin1Char('&'));
    }
    setProperty("text", s);
}

void KCommand::blockChanged()
{
    ++m_changedBlockCount;
}

void KCommand::endBlock()
{
    if (m_changedBlockCount > 0)
        --m_changedBlockCount;
    if (m_changedBlockCount == 0 && m_changedPending) {
        m_changedPending = false;
        Q_EMIT changed();
    }
}

void KCommand::on_command_changed()
{
    m_changedPending = true;
    if (m_changedBlockCount != 0)
        return;
    m_changedPending = false;
    Q_EMIT changed();
}

void KCommand::copyProperties(KCommand* target)
{
    if (!target)
        return;
    const QMetaObject* mo = metaObject();
    const int commandPtrType = qMetaTypeId<KCommand*>();
    for (int i = 0; i < mo->propertyCount(); ++i) {
        const QMetaProperty prop = mo->property(i);
        // Pointers to other commands cannot be shared by the clone.
        if (prop.userType() == commandPtrType)
            continue;
        target->setProperty(prop.name(), prop.read(this));
    }
    const QList<QByteArray> names = dynamicPropertyNames();
    for (const QByteArray& name : names)
        target->setProperty(name.constData(), QObject::property(name.constData()));
}

// --- KCommandChangedBlockHelpObject ---

KCommandChangedBlockHelpObject::KCommandChangedBlockHelpObject(KCommand* command)
    : m_command(command)
{
    if (m_command)
        m_command->blockChanged();
}

KCommandChangedBlockHelpObject::~KCommandChangedBlockHelpObject()
{
    if (m_command)
        m_command->endBlock();
}
