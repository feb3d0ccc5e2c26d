#ifndef KRBTABFILEBUTTON_H
#define KRBTABFILEBUTTON_H

#include <QAbstractButton>
#include <QPointer>

#include <kcommandwidgetbridge.h>
#include <kmenuwidget.h>
#include <kpopupwidget.h>
#include <kstyleoption.h>
#include <norvikofficeui_export.h>

class QTimer;
class KHotKeyTriggerEvent;
class KRbFileMenu;

/**
 * The file button at the head of the ribbon's tab row. A press on its main part drops down
 * the file menu; a press on its arrow part opens the classic menu, a menu of the file
 * command's first sub-command.
 *
 * Until the user has opened the menu once, the button glows in a slow pulse that invites the
 * first use. The first press on the main part ends it for good: it is kept in the user's
 * settings under "fileButtonTipLight".
 */
class NORVIKOFFICEUI_EXPORT KRbTabFileButton : public KCommandWidgetBridge<QAbstractButton>
{
    Q_OBJECT
public:
    /// The brightest and the dimmest glow of the pulse.
    static constexpr double kLightMax = 34.39853568;
    static constexpr double kLightMin = 8.0;

    KRbTabFileButton(KCommand* cmd, QWidget* parent);
    ~KRbTabFileButton() override;

    /// The glow is on: the user has not opened the file menu yet.
    bool isTipLight() const { return m_tipLight; }
    double light() const { return m_light; }
    bool isLightFalling() const { return m_lightFalling; }
    /// Ends the glow and remembers that the menu has been seen.
    void setShowedKey();
    /// The cursor is over the arrow part.
    bool isHitArrow() const { return m_hitArrow; }
    bool isHitArrow(const QPoint& pos) const;
    bool isClassicOpen() const { return m_classicOpen; }
    /// The popup in use, the classic or the file menu's, or null before the first opening.
    KPopupWidget* popup() const { return m_popup.data(); }
    /// The caption on the button: its main window's caption, or the command's text.
    QString captionText() const;

    QSize sizeHint() const override;
    QSize minimumSizeHint() const override;

public Q_SLOTS:
    void popupClassicMenu();
    void popupRainbowMenu();
    void on_popup_hide();
    /// One step of the glow's pulse.
    void timerUpdate();

protected:
    virtual void initStyleOption(KStyleOptionRbTabFileButton* option) const;
    bool event(QEvent* e) override;
    void paintEvent(QPaintEvent* e) override;
    void mousePressEvent(QMouseEvent* e) override;
    void mouseDoubleClickEvent(QMouseEvent* e) override;
    void mouseMoveEvent(QMouseEvent* e) override;
    void leaveEvent(QEvent* e) override;

private:
    void createPopupWidget(bool rainbow);
    QPoint popupPosition() const;

    bool m_hitArrow = false;
    bool m_classicOpen = false;
    int m_shadow = 12;
    QTimer* m_timer = nullptr;
    double m_light = 0.0;
    bool m_lightFalling = false;
    QPointer<KPopupWidget> m_popup;
    QPointer<KMenuWidget> m_classicMenu;
    QPointer<KRbFileMenu> m_rainbowMenu;
    bool m_tipLight = false;

    // key tips
    void _hotKeyTrigger(KHotKeyTriggerEvent* e);
};

#endif // KRBTABFILEBUTTON_H
