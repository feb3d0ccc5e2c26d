#ifndef KMAINWINDOWSHADOWBORDER_H
#define KMAINWINDOWSHADOWBORDER_H

#include <QPointer>
#include <QWidget>

#include <norvikofficeui_export.h>

/**
 * The soft shadow around a window that draws its own frame, and its resize border: a
 * frameless tool window just under the host, as much larger than it as the style's shadow is
 * thick. It follows the host's geometry and visibility, and is gone while the host is
 * maximised. Pressing on it and dragging moves the host's edge or corner under the cursor.
 */
class NORVIKOFFICEUI_EXPORT KMainWindowShadowBorder : public QWidget
{
    Q_OBJECT
public:
    /// The edges and corners of the border; 0 is none.
    enum Zone {
        NoZone = 0,
        Left = 61441,
        Right = 61442,
        Top = 61443,
        TopLeft = 61444,
        TopRight = 61445,
        Bottom = 61446,
        BottomLeft = 61447,
        BottomRight = 61448
    };

    KMainWindowShadowBorder(QWidget* host, QWidget* parent = nullptr);
    ~KMainWindowShadowBorder() override;

    QWidget* host() const { return m_host.data(); }
    int borderThickness() const { return m_thickness; }
    /// The zone at pos (in this widget), and the zone a drag moves now.
    int zoneAt(const QPoint& pos) const;
    int dragZone() const { return m_dragZone; }
    static Qt::CursorShape cursorOf(int zone);
    /// The host's geometry with the edges of zone moved to the cursor, no smaller than minimum:
    /// an edge that would pass the minimum stops there, the opposite edge staying.
    static QRect resized(const QRect& geometry, int zone, const QPoint& cursor, const QSize& minimum);
    /// Whether a shadow goes with style (the 2013 look has one).
    static bool isWanted(const QStyle* style);

protected:
    bool eventFilter(QObject* watched, QEvent* e) override;
    void paintEvent(QPaintEvent* e) override;
    void mousePressEvent(QMouseEvent* e) override;
    void mouseMoveEvent(QMouseEvent* e) override;
    void mouseReleaseEvent(QMouseEvent* e) override;

private:
    void _follow();

    int m_dragZone = NoZone;
    int m_hoverZone = NoZone;
    QPointer<QWidget> m_host;
    int m_thickness = 0;
};

#endif // KMAINWINDOWSHADOWBORDER_H
