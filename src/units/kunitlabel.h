#ifndef KUNITLABEL_H
#define KUNITLABEL_H

#include <QLabel>

#include <norvikofficeui_export.h>

/**
 * The unit beside the number of a unit control. When it can pop up (several units on offer)
 * it shows a small down arrow at its right edge and a hover panel; a left click, Space or
 * Down emit clicked().
 */
class NORVIKOFFICEUI_EXPORT KUnitLabel : public QLabel
{
    Q_OBJECT
public:
    explicit KUnitLabel(QWidget* parent = nullptr);
    ~KUnitLabel() override;

    bool canPopup() const { return m_canPopup; }
    void setCanPopup(bool on);
    bool isHovered() const { return m_hover; }

Q_SIGNALS:
    void clicked();

protected:
    void paintEvent(QPaintEvent* e) override;
    void mouseReleaseEvent(QMouseEvent* e) override;
    void keyPressEvent(QKeyEvent* e) override;
    void enterEvent(QEnterEvent* e) override;
    void leaveEvent(QEvent* e) override;

private:
    void _drawArrow(QPainter& painter);
    QRect _getArrowRect() const;

    bool m_canPopup = false;
    bool m_hover = false;
};

#endif // KUNITLABEL_H
