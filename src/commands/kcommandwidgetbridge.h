#ifndef KCOMMANDWIDGETBRIDGE_H
#define KCOMMANDWIDGETBRIDGE_H

#include <QEvent>
#include <QHelpEvent>
#include <QIcon>
#include <QPoint>
#include <QPointer>
#include <QString>
#include <QVariant>
#include <QWidget>

#include <kcommand.h>
#include <norvikofficeui_export.h>

/**
 * The shared pieces of the contract that every widget showing a command follows:
 *
 * 1. It passes its command to the bridge's constructor.
 * 2. It connects the command's changed() to a slot of its own, by convention syncCommand(),
 *    and calls that slot once from its constructor. In a constructor that slot must not show
 *    the widget (showing builds the children): use setVisibleFromCommand() of the bridge.
 * 3. It registers with the idle service: registerIdle(this).
 * 4. In event(), the idle event (KEvent::Idle) makes the command update(); the theme event
 *    (KEvent::ThemeChange) makes the widget re-read its colours. The bridge's
 *    handleCommandEvent() does the first and the tool tip below.
 * 5. On QEvent::ToolTip, a command with a custom tip shows the rich tip of the tip catalogue.
 *    The catalogue installs the function that does so with setRichTipHandler(); until one is
 *    installed, widgets fall back to their plain tool tips.
 */
class NORVIKOFFICEUI_EXPORT KCommandBridgeHelper
{
public:
    /// Shows the rich tip of the catalogue entry key for command at globalPos; true when an
    /// entry was found and shown.
    using RichTipHandler = bool (*)(QWidget* widget, KCommand* command, const QString& key,
                                    const QPoint& globalPos);

    /// Registers object with the application's idle service; nothing without a KApplication.
    static void registerIdle(QObject* object, bool visibleOnly = true);
    static void unregisterIdle(QObject* object);

    /// On the idle event, command->update() (when command isn't null); true for that event.
    static bool handleIdleEvent(KCommand* command, QEvent* event);

    /// The title of a rich tip: title, then " (" shortcutHint ")" when there is a hint.
    static QString richTipTitle(const QString& title, const QString& shortcutHint);

    /// Installs the function that looks up and shows rich tips; null removes it.
    static void setRichTipHandler(RichTipHandler handler);
    static RichTipHandler richTipHandler();
    /// For a command with a customTip(), asks the handler; false when nothing was shown.
    static bool showRichTip(QWidget* widget, KCommand* command, const QHelpEvent* event);
    /// The same for the entry key (a widget's own key); an empty key shows nothing.
    static bool showRichTip(QWidget* widget, KCommand* command, const QString& key,
                            const QHelpEvent* event);
};

/**
 * Ties a widget of Qt class T to a KCommand and builds the widget's children from the
 * command's sub-commands lazily: nothing happens until the widget is first shown
 * (setVisible(true)) or measured (sizeHint()). Then, once in the widget's life,
 * onCommandConnected() runs, and for each sub-command, in order, the sub-command's update()
 * and onCommandInserted(). The bridge makes no connection of its own: a derived class
 * connects the list signals in onCommandConnected() to follow later changes.
 *
 * setVisible(false) and the constructors never build. The widget never owns its command;
 * the bridge holds it through a guard, so command() becomes null once the command is gone
 * (its widgets are deleted at the next turn of the loop).
 *
 * With a null command or with autoConnect false no sub-command is ever turned into a child.
 */
template <class T>
class KCommandWidgetBridge : public T
{
public:
    /// Constructs T(parent). A non-empty text and a non-null icon of the command are set as
    /// the widget's "text" and "icon" properties (a dynamic property where T has none).
    KCommandWidgetBridge(KCommand* command, QWidget* parent, bool autoConnect)
        : T(parent)
        , m_command(command)
        , m_autoConnect(autoConnect)
    {
        if (!command)
            return;
        const QString text = command->text();
        if (!text.isEmpty())
            this->setProperty("text", text);
        const QIcon icon = command->icon();
        if (!icon.isNull())
            this->setProperty("icon", icon);
    }

    virtual KCommand* command() const { return m_command.data(); }
    /// The place to connect the command's subCommandInsert() / subCommandRemove().
    virtual void onCommandConnected() {}
    virtual void onCommandInserted(int index, KCommand* sub)
    {
        Q_UNUSED(index);
        Q_UNUSED(sub);
    }
    virtual void onCommandRemoved(int index) { Q_UNUSED(index); }

    void setVisible(bool visible) override
    {
        if (visible)
            ensureConnectCommand();
        T::setVisible(visible);
    }

    /// A layout that asks for a size needs the content to answer, so measuring builds.
    QSize sizeHint() const override
    {
        ensureConnectCommand();
        return T::sizeHint();
    }

    /**
     * Builds the children now, once. The number of sub-commands is read first (a delay-loaded
     * list loads its file there); sub-commands inserted while the children are made reach
     * the widget through the list's signal. Not re-entrant by design: the connected flag is
     * set before any callback, so a sizeHint() from inside onCommandInserted() is harmless.
     */
    void ensureConnectCommand() const
    {
        if (m_connected || !m_autoConnect)
            return;
        KCommand* cmd = command();
        if (!cmd)
            return;
        const int n = cmd->count();
        m_connected = true;
        auto* self = const_cast<KCommandWidgetBridge*>(this);
        const QPointer<KCommand> guard(cmd);
        self->onCommandConnected();
        for (int i = 0; i < n && guard; ++i) {
            KCommand* sub = guard->subCommand(i);
            if (!sub)
                continue; // the list shrank meanwhile; its signal has told the widget
            sub->update(); // fresh state before a widget is made from it
            if (guard)
                sub = guard->subCommand(i);
            if (sub && guard)
                self->onCommandInserted(i, sub);
        }
    }

    bool isCommandConnected() const { return m_connected; }

    /// A tool tip over a widget whose command names a catalogue entry shows the rich tip;
    /// without an entry the widget's plain tool tip shows.
    bool event(QEvent* event) override
    {
        if (event->type() == QEvent::ToolTip
            && KCommandBridgeHelper::showRichTip(this, command(), static_cast<QHelpEvent*>(event)))
            return true;
        return T::event(event);
    }
    bool isAutoConnect() const { return m_autoConnect; }

protected:
    /**
     * The command-related part of event(): the idle event updates the command, a tool tip
     * of a command with a custom tip shows the rich tip. True when the event was handled;
     * the caller then returns true instead of passing it on.
     */
    bool handleCommandEvent(QEvent* event)
    {
        if (KCommandBridgeHelper::handleIdleEvent(command(), event))
            return true;
        if (event->type() == QEvent::ToolTip)
            return KCommandBridgeHelper::showRichTip(this, command(),
                                                     static_cast<QHelpEvent*>(event));
        return false;
    }

    /**
     * Applies the command's visibility without building early: hiding is immediate, while
     * showing only undoes an explicit hide. A widget that was never hidden is left for its
     * parent to show, so a syncCommand() run from a constructor builds nothing.
     */
    void setVisibleFromCommand(bool visible)
    {
        const bool explicitlyHidden =
            this->isHidden() && this->testAttribute(Qt::WA_WState_ExplicitShowHide);
        if (visible == !explicitlyHidden)
            return;
        this->setVisible(visible);
    }

private:
    QPointer<KCommand> m_command;
    mutable bool m_connected = false;
    bool m_autoConnect;
};

#endif // KCOMMANDWIDGETBRIDGE_H
