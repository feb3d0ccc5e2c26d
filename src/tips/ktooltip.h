#ifndef KTOOLTIP_H
#define KTOOLTIP_H

#include <QPoint>
#include <QRect>
#include <QString>

#include <norvikofficeui_export.h>

class QWidget;

/**
 * The rich tool tip of a control: a KTipWidget that appears half a second after the call, a
 * little below and to the right of pos, and goes after ten seconds or as the mouse leaves.
 * With a rectangle of widget given, a move out of it hides the tip as well.
 *
 * An empty title shows nothing and hides a tip that is up. The same tip asked for again
 * stays as it is; another one takes its place.
 */
class NORVIKOFFICEUI_EXPORT KToolTip
{
public:
    /// The widest text, in pixels, that a tip wraps its content to.
    enum { DefaultWidth = 240 };

    static void showText(const QPoint& pos, const QString& title, const QString& content,
                         const QString& link, const QString& picture, int picturePosition,
                         const QString& url, QWidget* widget = nullptr, const QRect& rect = QRect());
    /// Whether a tip is on the screen now.
    static bool isVisible();
};

/**
 * A rich tip shown at once and held open until hide(): for tips that a control shows
 * on its own schedule rather than on hover. A second call changes the tip in place.
 */
class NORVIKOFFICEUI_EXPORT KToolTipEx
{
public:
    static void showText(const QPoint& pos, const QString& title, const QString& content,
                         const QString& link, const QString& picture, int picturePosition,
                         const QString& url, QWidget* widget = nullptr, const QRect& rect = QRect());
    static void hide();
};

#endif // KTOOLTIP_H
