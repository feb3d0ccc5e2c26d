#ifndef KPWDTOOLTIPWIDGET_H
#define KPWDTOOLTIPWIDGET_H

#include <QColor>
#include <QFont>
#include <QPainterPath>
#include <QPixmap>
#include <QTimer>
#include <QWidget>

#include <norvikofficeui_export.h>

/**
 * A balloon tip with an arrow that points at a spot on the screen: an icon, a title and a
 * wrapped text. It is a window of its own (a tool tip window of its parent, which owns it),
 * takes no focus, and hides itself after the auto-hide time (0: never) or when clicked.
 *
 * The balloon stands below and to the right of its anchor, and flips to the other side of
 * the anchor where it would cross the right or bottom edge of the screen. It is filled with
 * the theme colour "KHintBox"/"background" (the palette's tool tip colour without a theme).
 */
class NORVIKOFFICEUI_EXPORT KPwdToolTipWidget : public QWidget
{
    Q_OBJECT
public:
    /// The height of the arrow while the balloon is shown.
    static constexpr int ArrowHeight = 17;

    explicit KPwdToolTipWidget(QWidget* parent);
    ~KPwdToolTipWidget() override;

    using QWidget::show;
    /// Shows the balloon with its arrow at anchor, in global coordinates.
    void show(const QPoint& anchor);
    /**
     * Where the balloon goes for anchor (global): its rectangle on the screen. It flips to
     * the left of the anchor, and above it, where it would cross the screen's right or bottom
     * edge, and is kept inside the screen.
     */
    QRect judgePosition(const QPoint& anchor);

    QString titleText() const { return m_titleText; }
    void setTitleText(const QString& text);
    QString contentText() const { return m_contentText; }
    void setContentText(const QString& text);
    QPixmap iconPixmap() const { return m_iconPixmap; }
    void setIconPixmap(const QPixmap& pixmap);
    int autoHideTime() const { return m_autoHideTime; }
    /// In milliseconds, from the next show on; 0 keeps the balloon until it is hidden.
    void setAutoHideTime(int ms) { m_autoHideTime = ms; }
    QColor outLineColor() const { return m_outLineColor; }
    void setOutLineColor(const QColor& color);
    QColor titleTextColor() const { return m_titleTextColor; }
    void setTitleTextColor(const QColor& color);
    void setContentTextColor(const QColor& color);
    QFont titleTextFont() const { return m_titleTextFont; }
    void setTitleTextFont(const QFont& font);
    void setContentTextFont(const QFont& font);

    /// The anchor of the last show, in global coordinates.
    QPoint anchor() const { return m_anchor; }
    int arrowHeight() const { return m_arrowHeight; }
    /// Whether the balloon stands below its anchor (arrow on top) and to its right.
    bool isBelowAnchor() const { return m_below; }
    bool isRightOfAnchor() const { return m_right; }

public Q_SLOTS:
    void timeoutslot();

protected:
    void paintEvent(QPaintEvent* e) override;
    void showEvent(QShowEvent* e) override;
    void mousePressEvent(QMouseEvent* e) override;
    void resizeEvent(QResizeEvent* e) override;

private:
    QSize _bodySize() const;
    QRect _bodyRect() const;
    QPainterPath _balloonPath() const;
    int _textWidth() const;
    void _relayout();

    QString m_titleText;
    QString m_contentText;
    QPixmap m_iconPixmap;
    QColor m_titleTextColor;
    QFont m_titleTextFont;
    QColor m_contentTextColor;
    QFont m_contentTextFont;
    QColor m_outLineColor;
    QTimer m_timer;
    int m_autoHideTime = 10000;
    int m_arrowHeight = 0;
    QPoint m_anchor;
    bool m_below = true;
    bool m_right = true;
};

#endif // KPWDTOOLTIPWIDGET_H
