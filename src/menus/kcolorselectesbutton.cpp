#include "kcolorselectesbutton.h"

#include <QPainter>

KColorSelectesButton::KColorSelectesButton(KCommand* command, QWidget* parent)
    : KToolButton(parent)
{
    if (command)
        setDefaultCommand(command);
}

KColorSelectesButton::~KColorSelectesButton() = default;

void KColorSelectesButton::colorChange(const QColor& color)
{
    if (m_color == color)
        return;
    m_color = color;
    update();
}

void KColorSelectesButton::paintEvent(QPaintEvent* e)
{
    KToolButton::paintEvent(e);
    QPainter painter(this);
    painter.fillRect(QRect(QPoint(2, 16), QPoint(17, 19)), m_color);
}
