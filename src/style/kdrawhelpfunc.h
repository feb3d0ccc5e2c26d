#ifndef KDRAWHELPFUNC_H
#define KDRAWHELPFUNC_H

#include <QBrush>
#include <QColor>
#include <QFontMetrics>
#include <QGradient>
#include <QIcon>
#include <QImage>
#include <QLinearGradient>
#include <QMargins>
#include <QPainterPath>
#include <QPen>
#include <QPixmap>
#include <QPoint>
#include <QPolygon>
#include <QRect>
#include <QSize>
#include <QString>
#include <QTextOption>

#include <norvikofficeui_export.h>

class QPainter;
class QWidget;
class QStyleOption;

/**
 * The shared box of painting and geometry helpers of the styles and widgets. Every colour
 * is asked for by a class and an item name of the theme (KAppTheme); a miss gives an
 * invalid colour, an empty gradient or a null image, never a message.
 *
 * Corner masks: 1 top left, 2 top right, 4 bottom left, 8 bottom right. Outlines are built
 * in the coordinates of QRectF(rect): a path for rect runs from left to left + width.
 */
class NORVIKOFFICEUI_EXPORT KDrawHelpFunc
{
public:
    // --- theme access ---
    static QColor getColorFromTheme(const QString& className, const QString& name);
    static const QGradient& getGradientFromTheme(const QString& className, const QString& name);
    static QImage getImageFromTheme(const QString& className, const QString& name);
    /// "border" with "-disable", "-down" or "-hover" by the button's state.
    static QColor getButtonBoardColor(const QString& className, const QWidget* button);
    /// "background" by the same states: gradients for "-down" and "-hover", colours else.
    static QBrush getButtonBackground(const QString& className, const QWidget* button);
    /// The colour "theme"/"theme1".
    static QColor getBaseColor();
    /// The base colour with ds added to its saturation and dv to its value (not clamped).
    static QColor getColorByDsDv(int ds, int dv);
    /// The inverse: the saturation and value of color less those of the base colour.
    static void getDsDvByColor(const QColor& color, int& ds, int& dv);
    /// "-deep" when name ends in it, otherwise empty.
    static QString getScrollStyleName(const QString& name);

    // --- outlines ---
    static QPainterPath getBoundPath(const QRect& rect, int radius, int corners);
    static QPainterPath getBoundPath2(const QRect& rect, int radius);
    /// All four corners cut by a one-pixel step.
    static QPainterPath getBoundPath2(const QRect& rect);
    /// Open: down the left edge, along the bottom, up the right edge; bottom corners rounded.
    static QPainterPath getBoundPath3(const QRect& rect, int radius);
    /// Corners whose bit is set are cut by a one-pixel step.
    static QPainterPath getBoundPath4(const QRect& rect, int corners);
    /// The four edges as separate lines, the one-pixel corners left out.
    static QPainterPath getPopupWidgetBoundPath(const QRect& rect);
    /// A horizontal bar whose left (roundStart) and right (roundEnd) ends are half circles.
    static QPainterPath getScrollBarArc_Hor(const QRect& rect, bool roundStart, bool roundEnd);
    /// A vertical bar whose top (roundStart) and bottom (roundEnd) ends are half circles.
    static QPainterPath getScrollBarArc_Ver(const QRect& rect, bool roundStart, bool roundEnd);
    /// A bar of the given length and width slanted down to the right at 1:2 (steep).
    static QPolygon slashRect_Angle1(const QPoint& point, int length, int width);
    /// A bar slanted down to the right at 2:1 (shallow).
    static QPolygon slashRect_Angle2(const QPoint& point, int length, int width);
    /// A bar slanted down to the right at 45 degrees.
    static QPolygon slashRect_Angle45(const QPoint& point, int length, int width);
    /// The outline of rect with each corner notched by a square of size.
    static QPolygon squareCornerRect(const QRect& rect, int size);
    /// The gradient with its axis turned from vertical to horizontal (x and y swapped).
    static QLinearGradient rotateLinearGradient90(const QLinearGradient& gradient);
    /// The margins of a turned box: left and top, right and bottom exchange.
    static QMargins rotateMargins90(const QMargins& margins);

    // --- state rectangles ---
    static void drawCheckedRect(QPainter& painter, const QRect& rect, int radius);
    static void drawFocusRect(QPainter& painter, const QRect& rect, int radius);

    // --- text ---
    static void drawColorText(QPainter& painter, const QColor& color, const QRect& rect, int flags,
                              const QString& text);
    static void drawColorText(QPainter& painter, const QColor& color, const QRectF& rect, int flags,
                              const QString& text);
    static void drawColorText(QPainter& painter, const QColor& color, const QRectF& rect,
                              const QString& text, const QTextOption& option);
    /// The text in "common"/"text", left aligned and vertically centred unless flags say else.
    static void drawText(QPainter& painter, const QRect& rect, const QString& text,
                         int flags = Qt::AlignLeft | Qt::AlignVCenter);
    static void drawShadowText(QPainter& painter, const QString& text, const QRect& rect, int flags,
                               const QColor& color, const QColor& shadowColor);
    static void DrawGlowingTextWithAero(QPainter& painter, const QString& text, QRect& rect);
    /**
     * Shortens text by halving until it fits rect's width (with suffix, once shortened),
     * then appends "..." and, when the text ended in "*", that mark again. Never shorter
     * than one character.
     */
    static QString getDrawString(const QString& text, const QFontMetrics& metrics, const QRect& rect,
                                 const QString& suffix);

    // --- arrows: a triangle pointing that way, inside rect ---
    static void drawLeftArraw(QPainter& painter, const QRect& rect, const QPen& pen, const QBrush& brush);
    static void drawLeftArraw(QPainter& painter, const QRect& rect, bool enabled);
    static void drawUpArraw(QPainter& painter, const QRect& rect, const QPen& pen, const QBrush& brush);
    static void drawUpArraw(QPainter& painter, const QRect& rect, bool enabled);
    static void drawRightArraw(QPainter& painter, const QRect& rect, const QPen& pen, const QBrush& brush);
    static void drawRightArraw(QPainter& painter, const QRect& rect, bool enabled);
    static void drawDownArraw(QPainter& painter, const QRect& rect, const QPen& pen, const QBrush& brush);
    /**
     * With enabled true and a rect of exactly 4 by 2, the small drop-down arrow of the tool
     * buttons is set pixel by pixel (rows of 5, 3 and 1 pixels from rect's top left) in the
     * colours "arrow"/"downarrowr0" to "downarrowr8".
     */
    static void drawDownArraw(QPainter& painter, const QRect& rect, bool enabled);

    // --- others ---
    static void drawConnerPoints(QPainter& painter, const QRect& rect, const QPen& pen, int corners);
    static void drawSeparator(QPainter& painter, const QRect& rect);
    static void paintContextPopupButton(QPainter& painter, const QWidget* widget, const QRect& rect,
                                        bool down, bool hover);
    /// A 4x4 tile of color with a diamond of "common"/"spread".
    static QPixmap getburelage(const QColor& color);
    static QIcon getFileIcon(const QString& path);

    // --- key-tip placement ---
    /// The widget's top left in its window's coordinates, placed by modifyHotkeyPos.
    static QPoint getHotKeyShowPos(const QWidget* widget, const QSize& size, int alignment, int offset);
    static QPoint modifyHotkeyPos(const QPoint& pos, const QSize& size, int alignment, int offset,
                                  int offset2);
    /// (-1, -1): a label without a place.
    static QPoint getClassicHotKeyShowPos();
    /// Appends the automatic key-tip label of index: 1..9, 01..09, 0A..0Y, 001, ...
    static void getStringFromAutoIndex(QString& text, int index);

private:
    static void _drawArrow(QPainter& painter, const QPolygonF& triangle, const QPen& pen, const QBrush& brush);
    static QColor _arrowColor(bool enabled);
};

#endif // KDRAWHELPFUNC_H
