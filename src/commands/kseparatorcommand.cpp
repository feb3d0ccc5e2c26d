#include "kseparatorcommand.h"

#include <QPainter>
#include <QStyle>
#include <QStyleOption>

KSeparatorCommand::KSeparatorCommand()
    : KCommand(nullptr, nullptr)
{
}

KSeparatorCommand* KSeparatorCommand::instance()
{
    static KSeparatorCommand s_instance;
    return &s_instance;
}

KSeparatorCommand* KSeparatorCommand::instance2()
{
    static KSeparatorCommand s_instance2;
    s_instance2.setStartEndTransparent(true);
    return &s_instance2;
}

bool KSeparatorCommand::isSeparator(KCommand* command)
{
    return command == instance();
}

void KSeparatorCommand::setStartEndTransparent(bool transparent)
{
    if (m_startEndTransparent == transparent)
        return;
    m_startEndTransparent = transparent;
    on_command_changed();
}

QWidget* KSeparatorCommand::createPocketWidget(QWidget* parent)
{
    return new KSeparatorWidget(parent);
}

KSeparatorWidget::KSeparatorWidget(QWidget* parent)
    : QWidget(parent)
{
    setSizePolicy(QSizePolicy::Fixed, QSizePolicy::Preferred);
}

void KSeparatorWidget::setLongSeparator(bool longSeparator)
{
    if (m_long == longSeparator)
        return;
    m_long = longSeparator;
    updateGeometry();
    update();
}

void KSeparatorWidget::setOrientation(Qt::Orientation orientation)
{
    if (m_orientation == orientation)
        return;
    m_orientation = orientation;
    setSizePolicy(orientation == Qt::Vertical ? QSizePolicy::Fixed : QSizePolicy::Preferred,
                  orientation == Qt::Vertical ? QSizePolicy::Preferred : QSizePolicy::Fixed);
    updateGeometry();
    update();
}

QSize KSeparatorWidget::sizeHint() const
{
    QStyleOption opt;
    opt.initFrom(this);
    const int extent = style()->pixelMetric(QStyle::PM_ToolBarSeparatorExtent, &opt, this);
    const int length = m_long ? 66 : 22;
    return m_orientation == Qt::Vertical ? QSize(extent, length) : QSize(length, extent);
}

void KSeparatorWidget::paintEvent(QPaintEvent*)
{
    QPainter p(this);
    QStyleOption opt;
    opt.initFrom(this);
    // The style draws a separator across the given rectangle; Horizontal state means the
    // line runs vertically, as in a horizontal tool bar.
    if (m_orientation == Qt::Vertical)
        opt.state |= QStyle::State_Horizontal;
    style()->drawPrimitive(QStyle::PE_IndicatorToolBarSeparator, &opt, &p, this);
}
