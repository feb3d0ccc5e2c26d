#ifndef KHOTKEYASSISTANT_H
#define KHOTKEYASSISTANT_H

#include <QList>
#include <QPointer>
#include <QTimer>
#include <QWidget>

#include <khotkeyevent.h>
#include <norvikofficeui_export.h>

class QEventLoop;
class QKeyEvent;

/**
 * The key-tip overlay of one level: a transparent top-level window laid exactly over the
 * host's window, with a small label beside every control that collected one. The user types
 * the letters of a label; the labels thin out as the letters come, and a full match sends
 * the label's target a KHotKeyTriggerEvent. A target that opens a further level makes a new
 * assistant for it, which runs nested in its own event loop.
 *
 * showHotKey() blocks in the level's loop until exit(); the codes are -1 cancelled (click,
 * deactivation, move, Ctrl), -2 Escape (or the popup hid), -3 a command fired, -4 Alt again.
 * The keyboard is grabbed while a level shows.
 */
class NORVIKOFFICEUI_EXPORT KHotKeyAssistant : public QWidget
{
    Q_OBJECT
    Q_PROPERTY(bool isVisible READ isVisible)
public:
    /// isTopLevel: the level of the whole window; isPopup: a level shown inside a popup.
    KHotKeyAssistant(QWidget* host, bool isTopLevel, bool isPopup);
    ~KHotKeyAssistant() override;

    void setVisible(bool visible) override;

    int exec();
    int showHotKey();
    void hideHotKey();
    void addHotKey(const QPoint& pos, const QString& key);
    void addHotKeyFromCollectEvent(KHotKeyCollectEvent* event);
    /// Asks the host for its labels afresh (a KHotKeyCollectEvent) and keeps them.
    void collectHotkeyMessage();
    void clearMessage();
    /// Fires a unique label of the focus widget's for text at once, with nothing drawn.
    bool quickMatch(const QString& text);
    bool isRunning() const { return !m_loops.isEmpty(); }
    bool isMessageEmpty() const { return m_messages.isEmpty(); }
    QList<hotkey_message> messages() const { return m_messages; }
    QString typedText() const { return m_text; }
    QWidget* hostWidget() const { return m_host.data(); }
    void setHostWidget(QWidget* host);
    void timerStart(int ms);
    void timerStop();
    bool isTimerActive() const { return m_timer.isActive(); }
    bool isHotKeyShown() const { return m_shown; }
    void setHotKetShownFlag(bool shown) { m_shown = shown; }
    bool isTopLevelAssistant() const { return m_isTopLevel; }
    bool isPopupAssistant() const { return m_isPopup; }

    /// 2 for a combo box with the focus, 1 for a popup or menu, 3 for anything else, 0 for none.
    static int checkAppFocus();
    /// Every level that is visible now, innermost last.
    static QList<KHotKeyAssistant*> assistants() { return m_assistants; }
    /// The text a key adds to what was typed: digits, and letters by their physical key.
    static QString getInputTextFormKey(const QKeyEvent* event);
    /// 0 nothing, 1 partial, 2 one full match, 3 several; found gets the one to fire.
    int searchHotKey(const QString& text, hotkey_message& found, void* item);
    /// The navigation keys a level hands on: arrows, Return, Enter, Home, End, Page keys, Tab.
    static bool isSpacelKeys(int key);
    /// The size of a label with that text in the overlay's font.
    QSize itemSizeHint(const QString& key) const;

Q_SIGNALS:
    void hotKeyVisibleChage(bool visible);

public Q_SLOTS:
    void hidePopupSlot();
    void exit(int code);
    void exit();
    void timeoutShow();

protected:
    bool event(QEvent* e) override;
    bool eventFilter(QObject* watched, QEvent* e) override;
    void paintEvent(QPaintEvent* e) override;
    void mousePressEvent(QMouseEvent* e) override;
    void showEvent(QShowEvent* e) override;
    void hideEvent(QHideEvent* e) override;

private:
    void handleMousePressEvent(bool install);
    void handleKeyPress(QKeyEvent* e);
    void handleKeyRelease(QKeyEvent* e);
    bool handleSpacelKeys(QKeyEvent* e);
    void handleBackSpaceKey();
    void collectNextLevel(QKeyEvent* e);
    void handleFullSearched(const hotkey_message& message, bool execute);
    void handleNullSearched(const QString& text);
    bool checkHotkeyTiggerEventResult(KHotKeyTriggerEvent* e);
    bool checkHotkeyPopExecResult(KHotKeyTriggerEvent* e);
    void showNextLevelAssistant(KHotKeyTriggerEvent* e);
    void preExit(int code);
    void drawHotKeyItem(QPainter& painter, const hotkey_message& message);
    void _updateMask();
    void _watchHost();
    void _hostDestroyed();
    bool _isFirstClassic() const;

    QList<hotkey_message> m_messages;
    QString m_text;
    int m_reserved = -1;
    QList<QEventLoop*> m_loops;
    bool m_isTopLevel;
    bool m_isPopup;
    bool m_shown = false;
    QTimer m_timer;
    QPointer<QWidget> m_focusWidget;
    QPointer<QWidget> m_host;
    bool m_filterInstalled = false;

    static QList<KHotKeyAssistant*> m_assistants;
};

#endif // KHOTKEYASSISTANT_H
