#ifndef KSIZEGRIP_H
#define KSIZEGRIP_H

#include <QPoint>
#include <QRect>
#include <QWidget>

#include <norvikofficeui_export.h>

/**
 * A grip by which the user resizes the window it stands in (its parent widget): along one
 * edge (the whole grip is the handle) or at a corner (a square in that corner of the grip).
 * The parent never gets smaller than its minimum size: an edge stops there, and the
 * opposite edge stays where it is.
 */
class NORVIKOFFICEUI_EXPORT KSizeGrip : public QWidget
{
    Q_OBJECT
public:
    /// The edge or corner the grip moves. NoGrip takes no drag; AutoGrip is resolved by the
    /// owner of the grip before it reaches here (see KPopupWidget::sizeGripType()).
    enum GripType {
        Left = 0,
        Right = 1,
        Top = 2,
        Bottom = 3,
        TopLeft = 4,
        BottomLeft = 5,
        TopRight = 6,
        BottomRight = 7,
        NoGrip = 8,
        AutoGrip = 9
    };
    Q_ENUM(GripType)

    explicit KSizeGrip(QWidget* parent);

    void setSizeGripType(GripType type);
    GripType getSizeGripType() const { return m_type; }
    /// The part of the grip that takes the drag, in the grip's coordinates.
    QRect controlRect() const { return m_controlRect; }

    QSize sizeHint() const override;

protected:
    void mousePressEvent(QMouseEvent* e) override;
    void mouseMoveEvent(QMouseEvent* e) override;
    void mouseReleaseEvent(QMouseEvent* e) override;
    void resizeEvent(QResizeEvent* e) override;
    void paintEvent(QPaintEvent* e) override;

    /// Moves the edges of the grip's type to the global cursor position.
    void resizeParentWidget(const QPoint& globalPos);

private:
    void _updateControlRect();
    Qt::CursorShape _cursorShape() const;

    GripType m_type = NoGrip;
    QRect m_controlRect;
    bool m_pressed = false;
    int m_pressedOffsetX = 0; // cursor to the moved vertical edge at the press
    int m_pressedOffsetY = 0; // cursor to the moved horizontal edge at the press
};

#endif // KSIZEGRIP_H
