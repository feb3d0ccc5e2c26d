#ifndef KHOTKEYEVENTHANDLE_H
#define KHOTKEYEVENTHANDLE_H

#include <QObject>
#include <QTimer>

#include <khotkeyassistant.h>
#include <norvikofficeui_export.h>

class KMainWindow;

/**
 * Decides when the key tips of one main window start: an event filter on the whole
 * application, acting only while its window is the current main window. Tapping Alt alone
 * shows the first level when Alt is released; Alt together with a letter fires a unique
 * label at once without drawing anything; with the focus in a popup or menu a plain letter
 * is matched against the popup's labels.
 *
 * Its assistant lives as long as the window; a 100 ms watch notices a window moved by the
 * window manager while the labels show, and takes them down.
 */
class NORVIKOFFICEUI_EXPORT KHotKeyEventHandle : public QObject
{
    Q_OBJECT
public:
    explicit KHotKeyEventHandle(KMainWindow* window);
    ~KHotKeyEventHandle() override;

    bool isHotKeyShown() const;
    KHotKeyAssistant* assistant() { return &m_assistant; }
    void setMenuBarVisible(bool visible);
    /// True when m holds Shift, Control or Meta (the name says the reverse; kept).
    static bool isOnlyAltModifiersPress(int m);
    /// True when m holds Shift or Control.
    static bool isModefiersPressExpandsAlt(int m);

    bool isAltAlone() const { return m_altAlone; }
    bool isAltReleased() const { return m_altReleased; }
    void setAltState(bool altAlone, bool altReleased);

Q_SIGNALS:
    void windowMove();

public Q_SLOTS:
    void hideHotKeyAssistant();
    void hideMenuBar();
    void mainWindowDeactivated();
    void checkMainWindowMove();
    void setTimerState(bool start);

protected:
    bool eventFilter(QObject* watched, QEvent* e) override;

private:
    bool _keyPress(QKeyEvent* e);
    bool _keyRelease(QKeyEvent* e);
    static bool _isSpecialKey(int key);

    bool m_altAlone = false;
    KHotKeyAssistant m_assistant;
    QTimer m_hideMenuBarTimer;
    bool m_altReleased = true;
    bool m_firstTick = false;
    QTimer m_watchTimer;
    int m_lastX = 0;
    int m_lastY = 0;
};

#endif // KHOTKEYEVENTHANDLE_H
