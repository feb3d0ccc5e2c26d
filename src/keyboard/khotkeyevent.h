#ifndef KHOTKEYEVENT_H
#define KHOTKEYEVENT_H

#include <QList>
#include <QPoint>
#include <QPointer>
#include <QString>
#include <QVariant>
#include <QWidget>

#include <kevent.h>
#include <norvikofficeui_export.h>

/**
 * One key-tip label: where it stands (in the coordinates of the overlay, which covers the
 * host's window), the text to type, who gets the trigger, and a free tag. The tag holds a
 * void* to an item inside the target, or one of the marker strings below.
 *
 * The position (-1,-1) marks a label without a place (KDrawHelpFunc::getClassicHotKeyShowPos).
 */
struct NORVIKOFFICEUI_EXPORT hotkey_message
{
    QPoint pos;
    QString key;
    QPointer<QWidget> target;
    bool enabled = true;
    QVariant prop;

    /// The tag's text; empty when the tag is no string.
    QString tag() const;
    /// The tag as an item pointer; null when the tag is no pointer.
    void* item() const;
};

namespace KHotKeyMarker {
/// The level is driven by a classic menu bar: navigation keys and leaving go to its target.
inline QString classicMenu() { return QStringLiteral("Spacel"); }
/// The label takes part in matching but is not drawn.
inline QString doNotShow() { return QStringLiteral("DoNotShowHotKey"); }
inline QString fileButton() { return QStringLiteral("filebutton"); }
inline QString titleBar() { return QStringLiteral("KWindowTitleBar"); }
} // namespace KHotKeyMarker

/**
 * Walks the widget tree and gathers labels (type 32772). A widget that takes part adds its
 * labels through addHotKey(), or hands the event to its visible children, and accepts it.
 */
class NORVIKOFFICEUI_EXPORT KHotKeyCollectEvent : public KEvent
{
public:
    KHotKeyCollectEvent();
    ~KHotKeyCollectEvent() override;

    /**
     * Adds one label. An empty key gets the next automatic number while useAutoIndex is set
     * (the number is used up even when the label is then dropped); a label at (0,0) is
     * dropped, and so is one whose key is still empty, unless its tag is "Spacel".
     */
    void addHotKey(const QPoint& pos, const QString& key, QWidget* target, bool enabled,
                   const QVariant& prop = QVariant());

    QList<hotkey_message> messages;
    int autoIndex = 1;
    bool useAutoIndex = false;
    bool useRbHotKey = false;
};

/**
 * Fires one label (type 32773). The target acts and answers in result:
 * 0 not handled, 1 the host is to be asked for the next level, 2 fired, 3 the selection moved.
 * A widget that opens a further level leaves its labels in collect, or runs the level itself
 * and puts its exit code in execResult.
 */
class NORVIKOFFICEUI_EXPORT KHotKeyTriggerEvent : public KEvent
{
public:
    KHotKeyTriggerEvent();
    ~KHotKeyTriggerEvent() override;

    KHotKeyCollectEvent collect;
    int result = 0;
    hotkey_message* message = nullptr;
    int execResult = 0;
    bool quick = false;
    bool execute = true;
};

/// Posted to a popup's content widget, which then selects its first item (type 32774).
class NORVIKOFFICEUI_EXPORT KHotKeyPopupSelectEvent : public KEvent
{
public:
    KHotKeyPopupSelectEvent();
    ~KHotKeyPopupSelectEvent() override;
};

/**
 * Carries another event (type 32775). A running key-tip level that sees it in its filter
 * handles the inner event as its own. The inner event is not owned.
 */
class NORVIKOFFICEUI_EXPORT KHotKeyInnerEvent : public KEvent
{
public:
    explicit KHotKeyInnerEvent(QEvent* inner);
    ~KHotKeyInnerEvent() override;
    QEvent* innerEvent() const { return m_inner; }

private:
    QEvent* m_inner;
};

class QLayout;

/**
 * Sends a key-tip event to the widget of every item of layout, in order, going into nested
 * layouts; with visibleOnly, hidden widgets are passed over. Returns true when any took it.
 */
NORVIKOFFICEUI_EXPORT bool sendHotKeyEventToLayout(QLayout* layout, QEvent* e, bool visibleOnly);

#endif // KHOTKEYEVENT_H
