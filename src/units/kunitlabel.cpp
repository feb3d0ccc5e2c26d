#include "kunitlabel.h"

#include <QKeyEvent>
#include <QMouseEvent>
#include <QPainter>
#include <QStyle>
#include <QStyleOption>

#include <kdrawhelpfunc.h>

KUnitLabel::KUnitLabel(QWidget* parent)
    : QLabel(parent)
{
    setAlignment(Qt::AlignLeft | Qt::AlignVCenter);
}

KUnitLabel::~KUnitLabel() = default;

void KUnitLabel::setCanPopup(bool on)
{
    if (m_canPopup == on)
        return;
    m_canPopup = on;
    update();
}

QRect KUnitLabel::_getArrowRect() const
{
    // The tool buttons' small drop-down mark: 5 pixels wide, 3 high, from this rect's corner.
    return QRect(width() - 6, (height() - 3) / 2, 4, 2);
}

void KUnitLabel::_drawArrow(QPainter& painter)
{
    KDrawHelpFunc::drawDownArraw(painter, _getArrowRect(), isEnabled());
}

void KUnitLabel::paintEvent(QPaintEvent* e)
{
    if (m_canPopup && m_hover && isEnabled()) {
        QStyleOption opt;
        opt.initFrom(this);
        opt.state |= QStyle::State_MouseOver | QStyle::State_Raised;
        QPainter painter(this);
        style()->drawPrimitive(QStyle::PE_PanelButtonTool, &opt, &painter, this);
    }
    QLabel::paintEvent(e);
    if (m_canPopup) {
        QPainter painter(this);
        _drawArrow(painter);
    }
}

void KUnitLabel::mouseReleaseEvent(QMouseEvent* e)
{
    QLabel::mouseReleaseEvent(e);
    if (e->button() == Qt::LeftButton && rect().contains(e->position().toPoint()))
        Q_EMIT clicked();
}

void KUnitLabel::keyPressEvent(QKeyEvent* e)
{
    if (e->key() == Qt::Key_Space || e->key() == Qt::Key_Down) {
        Q_EMIT clicked();
        return;
    }
    QLabel::keyPressEvent(e);
}

void KUnitLabel::enterEvent(QEnterEvent* e)
{
    QLabel::enterEvent(e);
    m_hover = true;
    update();
}

void KUnitLabel::leaveEvent(QEvent* e)
{
    QLabel::leaveEvent(e);
    m_hover = false;
    update();
}
