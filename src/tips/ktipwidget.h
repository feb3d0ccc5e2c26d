#ifndef KTIPWIDGET_H
#define KTIPWIDGET_H

#include <QBasicTimer>
#include <QPointer>
#include <QRect>
#include <QString>
#include <QWidget>

#include <norvikofficeui_export.h>

class QBoxLayout;
class QFrame;
class QLabel;
class QScreen;
class QPropertyAnimation;

/**
 * The rich tool-tip window: a title, a content text, an optional picture beside, above or
 * below the text, and an optional help link under a separator, which F1 or a click on it
 * opens through KApplication::openUrl().
 *
 * At most one exists (instance()); KToolTip and KToolTipEx make and reuse it. It appears
 * when its show timer fires, goes after ten seconds, on a mouse release, a wheel turn, a
 * leave or a deactivation, and stays while the mouse works inside it.
 *
 * Pictures are PNG files in "<program dir>/<language id>/tip/"; a picture that is missing
 * leaves its place empty.
 */
class NORVIKOFFICEUI_EXPORT KTipWidget : public QWidget
{
    Q_OBJECT
public:
    /// The timings of a tip, in milliseconds.
    enum Timing { ShowDelay = 500, ExpireTime = 10000, HideDelay = 300, NeverExpire = 0x7fffffff };

    /// A hidden tip on screen (null: the primary one); it becomes instance().
    KTipWidget(const QString& title, const QString& content, const QString& link,
               const QString& picture, int picturePosition, const QString& url, int width,
               QScreen* screen = nullptr);
    ~KTipWidget() override;

    /// The tip that exists, or null.
    static KTipWidget* instance();

    /**
     * Shows new texts in this window. The link becomes the application's pending one. With
     * width below 1 the text is 120 pixels wide; otherwise as wide as it needs up to width.
     * Restarts the expire timer.
     */
    void reuseTip(const QString& title, const QString& content, const QString& link,
                  const QString& picture, int picturePosition, const QString& url, int width);
    /// Arranges text, picture and link by the tip's data.
    void resetLayout();
    void restartExpireTimer();
    /// Hides after a short delay unless the mouse comes into the tip.
    void hideTip();
    /// Clears the pending link, closes and deletes the tip; instance() is null at once.
    void hideTipImmediately();
    /// Opens the pending link, clears it and closes the tip; nothing without a link.
    void openUrl();
    /// Bounds the tip to rect of widget: a move out of it hides the tip. A rectangle without
    /// a widget is refused with a warning.
    void setTipRect(QWidget* widget, const QRect& rect);
    /// With several screens on one desktop the screen at pos, otherwise the widget's.
    static QScreen* getTipScreen(const QPoint& pos, QWidget* widget);
    /// Whether any of the texts or the widget differ, or pos left the tip's rectangle.
    bool tipChanged(const QPoint& pos, const QString& title, const QString& content,
                    const QString& link, const QString& picture, int picturePosition,
                    const QString& url, QWidget* widget) const;
    /**
     * Moves the tip to pos plus offset (by default 2 right, 16 down). With fitToScreen it
     * stays on its screen: moved left or above pos when it would leave on the right or at
     * the bottom, never beyond the top or left edge.
     */
    void placeTip(const QPoint& pos, QWidget* widget, QPoint* offset = nullptr, bool fitToScreen = true);

    void startShowTimer(int ms);
    void stopShowTimer();
    bool isShowTimerActive() const { return m_showTimer.isActive(); }
    void startExpireTimer(int ms);
    bool isExpireTimerActive() const { return m_expireTimer.isActive(); }
    bool isHideTimerActive() const { return m_hideTimer.isActive(); }
    /// True while the tip fades or scrolls in.
    bool isFading() const { return m_fading; }

    QString title() const { return m_title; }
    QString content() const { return m_content; }
    QString link() const { return m_link; }
    QString picture() const { return m_picture; }
    int picturePosition() const { return m_picturePosition; }
    QString url() const { return m_url; }
    QWidget* tipWidget() const { return m_widget.data(); }
    QRect tipRect() const { return m_rect; }
    /// The picture file that picture names for the current language.
    static QString picturePath(const QString& picture);

protected:
    bool eventFilter(QObject* watched, QEvent* event) override;
    void timerEvent(QTimerEvent* event) override;
    void paintEvent(QPaintEvent* event) override;
    void mousePressEvent(QMouseEvent* event) override;
    void mouseMoveEvent(QMouseEvent* event) override;
    void keyPressEvent(QKeyEvent* event) override;

private:
    void _buildForm();
    void _appear();
    void _fitLabels(int width);
    bool _ownsObject(QObject* object) const;

    QBasicTimer m_hideTimer;
    QBasicTimer m_expireTimer;
    QBasicTimer m_showTimer;
    QPointer<QWidget> m_widget;
    QRect m_rect;
    bool m_fading = false;
    QString m_title;
    QString m_content;
    QString m_link;
    QString m_picture;
    int m_picturePosition = 0;
    QString m_url;

    QWidget* m_form = nullptr;
    QBoxLayout* m_verticalLayout = nullptr;
    QBoxLayout* m_contentLayout = nullptr;    // "horizontalLayout_content"
    QBoxLayout* m_picLayout = nullptr;        // "verticalLayout_pic"
    QBoxLayout* m_contentLayout2 = nullptr;   // "verticalLayout_content"
    QBoxLayout* m_picLayout2 = nullptr;       // "horizontalLayout_pic"
    QBoxLayout* m_linkLayout = nullptr;       // "horizontalLayout_link"
    QLabel* m_titleLabel = nullptr;
    QLabel* m_picWidget = nullptr;
    QLabel* m_contentLabel = nullptr;
    QLabel* m_contentLabel2 = nullptr;
    QLabel* m_picWidget2 = nullptr;
    QFrame* m_line = nullptr;
    QLabel* m_linkPicWidget = nullptr;
    QLabel* m_linkLabel = nullptr;
    QPointer<QPropertyAnimation> m_effect;
};

#endif // KTIPWIDGET_H
