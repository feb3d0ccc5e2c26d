#ifndef KHOTKEYPOPUPASSISTANT_H
#define KHOTKEYPOPUPASSISTANT_H

#include <QPoint>
#include <QPointer>
#include <QRect>

#include <khotkeyassistant.h>
#include <norvikofficeui_export.h>

class KCommand;
class KPopupWidget;
class QWidget;

/**
 * A key-tip level inside a popup: the popup's content is the host, and the level ends when
 * the popup hides. Made on the stack by the widget that opens the popup:
 *
 *     KHotKeyPopupAssistant assistant(command, popup);
 *     assistant.show(button, pos);
 *     assistant.addHotKeyFromCollectEvent(&collect);
 *     event->execResult = assistant.exec();
 *
 * A wrong letter is dropped and the level stays.
 */
class NORVIKOFFICEUI_EXPORT KHotKeyPopupAssistant
{
public:
    /// Sets command's popup widget (purpose 2) as the popup's content and selects its first item.
    KHotKeyPopupAssistant(KCommand* command, KPopupWidget* popup);
    /// For a popup whose content is already set.
    explicit KHotKeyPopupAssistant(KPopupWidget* popup);
    KHotKeyPopupAssistant(const KHotKeyPopupAssistant&) = delete;
    KHotKeyPopupAssistant& operator=(const KHotKeyPopupAssistant&) = delete;

    KPopupWidget* getPopupWidget() const { return m_popup.data(); }
    KHotKeyAssistant* getHotKeyAssistant() { return &m_assistant; }
    void addHotKeyFromCollectEvent(KHotKeyCollectEvent* event);
    /// Collects the labels of the popup's content.
    void collectFromContent();

    void show(const QPoint& pos);
    void show(const QRect& exclude, const QPoint& pos);
    void show(QWidget* owner, const QPoint& pos);
    /// Runs the level until a label fires, Escape, or the popup hides; returns its code.
    int exec();

private:
    QPointer<KPopupWidget> m_popup;
    KHotKeyAssistant m_assistant;
};

#endif // KHOTKEYPOPUPASSISTANT_H
