#ifndef KTOOLBUTTON_H
#define KTOOLBUTTON_H

#include <QIcon>
#include <QPointer>
#include <QSize>
#include <QString>
#include <QWidget>

#include <kstyleoption.h>
#include <norvikofficeui_export.h>
#include <qtoolbaritemwidget.h>

#include <kcommand.h>
class QTimer;
class KHotKeyCollectEvent;

/**
 * The push button of every bar: tool bars, ribbon groups, the status bar, menu and file
 * buttons all derive from it. It is a plain widget that keeps its own checked, down and
 * pressed flags, lets the style measure and draw it (custom contents type and complex
 * control of KORBStyle), and takes all its content from a KCommand once one is bound with
 * setDefaultCommand(). Without a command it works as a plain widget. Under a style that is
 * not the framework's (see KORBStyle::isFrameworkStyle) it measures and draws itself as the
 * stock tool button.
 *
 * The button style is a flag word that reaches the style unchanged: see ButtonStyleFlag.
 * A press and a release on the button send the dismiss event (KEvent::Dismiss) up the
 * parents, so every popup above it closes, and then emit the click signals; a release
 * outside the button only dismisses.
 */
class NORVIKOFFICEUI_EXPORT KToolButton : public QWidget, public QToolBarItemWidget
{
    Q_OBJECT
    Q_PROPERTY(QString text READ text WRITE setText)
    Q_PROPERTY(QString text2 READ text2 WRITE setText2)
    Q_PROPERTY(QIcon icon READ icon WRITE setIcon)
    Q_PROPERTY(int buttonStyle READ buttonStyle WRITE setButtonStyle)
    Q_PROPERTY(bool checked READ isChecked WRITE setChecked)
public:
    // The button-style word is named on the style option, which carries it to the style.
    using ButtonStyleFlag = KStyleOptionToolButton::ButtonStyleFlag;
    static constexpr ButtonStyleFlag StyleIcon = KStyleOptionToolButton::StyleIcon;
    static constexpr ButtonStyleFlag StyleText = KStyleOptionToolButton::StyleText;
    static constexpr ButtonStyleFlag StyleArrow = KStyleOptionToolButton::StyleArrow;
    static constexpr ButtonStyleFlag StyleTextUnderIcon = KStyleOptionToolButton::StyleTextUnderIcon;
    static constexpr ButtonStyleFlag StyleHotKey = KStyleOptionToolButton::StyleHotKey;
    static constexpr ButtonStyleFlag StyleLargeMargins = KStyleOptionToolButton::StyleLargeMargins;
    static constexpr ButtonStyleFlag StyleEvenWidth = KStyleOptionToolButton::StyleEvenWidth;
    /// No text on a screen narrower than 1279 pixels (with StyleText).
    static constexpr ButtonStyleFlag StyleAutoHideText = KStyleOptionToolButton::StyleAutoHideText;

    explicit KToolButton(QWidget* parent = nullptr);
    ~KToolButton() override;

    /**
     * Binds the button to cmd (not owned): copies its state now, triggers it on a left
     * click, follows its changed() and asks its update() at idle time. A null command only
     * unbinds.
     */
    virtual void setDefaultCommand(KCommand* cmd);
    KCommand* command() const { return m_command.data(); }

    // QToolBarItemWidget
    Qt::Orientation orientation() const override { return m_orientation; }
    /// Stored only: the layout sees it at its next size query.
    void setOrientation(Qt::Orientation orientation) override;
    QSize sizeHint(Qt::Orientation orientation) const override;
    /// The widget's limits, turned for a vertical bar when the caption is drawn.
    QSize minimumSize(Qt::Orientation orientation) const override;
    QSize maximumSize(Qt::Orientation orientation) const override;
    QSize minimumSizeHint(Qt::Orientation orientation) const override;
    using QWidget::maximumSize;
    using QWidget::minimumSize;

    QSize sizeHint() const override;
    QSize minimumSizeHint() const override;

    QString text() const { return m_text; }
    QString text2() const { return m_text2; }
    QIcon icon() const { return m_icon; }
    QString shortCutHint() const { return m_shortCutHint; }
    bool isChecked() const { return m_checked; }
    /// The button's popup is open (set by whoever opens it).
    bool isDown() const { return m_down; }
    /// The left mouse button went down on the button and has not come up.
    bool isPressed() const { return m_pressed; }
    int buttonStyle() const { return m_buttonStyle; }
    int roundCorner() const { return m_roundCorner; }
    QSize iconSize() const { return m_iconSize; }
    bool isTextAutoHidden() const { return m_autoHideText; }
    void setCustomTip(const QString& tip) { m_customTip = tip; }
    QString getCustomTip() const { return m_customTip; }

    bool needShowHotKey() const { return m_buttonStyle & StyleHotKey; }
    bool needLargeMargins() const { return m_buttonStyle & StyleLargeMargins; }
    /// False without text; true without icon; else the text bit, unless the text auto-hid.
    bool needDrawText() const;

public Q_SLOTS:
    /// Copies the bound command's state; must not run without a command.
    virtual void syncCommand();
    void setText(const QString& text);
    void setText2(const QString& text);
    void setIcon(const QIcon& icon);
    void setShortCutHint(const QString& hint);
    void setChecked(bool checked);
    void setDown(bool down);
    void setPressed(bool pressed);
    void setButtonStyle(int style);
    void setRoundCorner(int corners);
    void setIconSize(const QSize& size);
    /// Asks for the tool tip at (5, 5), as if the mouse had rested there.
    void showToolTip();

Q_SIGNALS:
    void clicked();
    /// Never emitted by this class; kept for subclasses.
    void doubleClicked();
    void LButtonClicked();
    void RButtonClicked();
    void LButtonPressed();

protected:
    virtual void initStyleOption(KStyleOptionToolButton* option) const;

    bool event(QEvent* e) override;
    void mousePressEvent(QMouseEvent* e) override;
    void mouseReleaseEvent(QMouseEvent* e) override;
    void enterEvent(QEnterEvent* e) override;
    void leaveEvent(QEvent* e) override;
    void paintEvent(QPaintEvent* e) override;

    void onBlockMouseEnter();
    void onBlockMouseLeave();
    /// Hides or shows the text by the width of the button's screen (StyleAutoHideText with StyleText).
    void autoHideText();
    /// Takes the command's button style over, unless the command has none (0).
    void syncButtonStyle(int style);
    /// Whether the cursor rests inside the button while a popup holds the mouse.
    bool isBlockMouseIn() const { return m_blockMouseIn; }

private:
    QString _captionFromCommand(bool doubleFirstAmpersand) const;
    /// The size of the stock tool button for option, under a style that is not the framework's.
    QSize _stockSizeHint(const QStyleOptionToolButton& option) const;

    QPointer<KCommand> m_command;
    int m_buttonStyle = StyleIcon;
    bool m_autoHideText = false;
    int m_roundCorner = 15;
    bool m_checked = false;
    bool m_down = false;
    bool m_pressed = false;
    Qt::Orientation m_orientation = Qt::Horizontal;
    QString m_shortCutHint;
    QSize m_iconSize = QSize(16, 16);
    QIcon m_icon;
    QString m_text;
    QString m_text2;
    QString m_customTip;
    bool m_blockMouseIn = false;
    QTimer* m_tipTimer = nullptr;

    // key tips
    void _collectHotKey(KHotKeyCollectEvent* e);
};

#endif // KTOOLBUTTON_H
