#include "kdockwidget.h"

#include <QCloseEvent>
#include <QPainter>

#include "kdrawhelpfunc.h"

#include "kcommand.h"

KDockWidget::KDockWidget(KCommand* command, QWidget* parent)
    : KCommandWidgetBridge<QDockWidget>(command, parent, true)
{
    if (parent)
        parent->installEventFilter(this);
    if (!command)
        return;
    setObjectName(command->property("id").toString());
    setWidget(command->requestWidget(this, KCommand::ExtendedPurpose));
    connect(command, &KCommand::changed, this, &KDockWidget::syncCommand);
    syncCommand();
}

void KDockWidget::syncCommand()
{
    KCommand* cmd = command();
    if (!cmd)
        return;
    setWindowTitle(cmd->text());
    setWindowIcon(cmd->icon());
    setEnabled(cmd->isEnabled());
    setVisibleFromCommand(cmd->isVisible());
}

void KDockWidget::_setFloatingHide(bool hidden)
{
    setAttribute(Qt::WA_WState_Visible, hidden);
    setAttribute(Qt::WA_WState_Hidden, !hidden);
    m_floatingHidden = hidden;
}

void KDockWidget::setVisible(bool visible)
{
    QWidget* parent = parentWidget();
    if (visible && isFloating() && parent && !parent->isVisible()) {
        _setFloatingHide(true);
        return;
    }
    m_floatingHidden = false;
    KCommandWidgetBridge<QDockWidget>::setVisible(visible);
}

bool KDockWidget::event(QEvent* e)
{
    if (e->type() == QEvent::ParentChange && parentWidget())
        parentWidget()->installEventFilter(this);
    else if (e->type() == QEvent::ParentAboutToChange && parentWidget())
        parentWidget()->removeEventFilter(this);
    return KCommandWidgetBridge<QDockWidget>::event(e);
}

bool KDockWidget::eventFilter(QObject* watched, QEvent* e)
{
    if (watched == parentWidget()) {
        if (e->type() == QEvent::Show && m_floatingHidden) {
            _setFloatingHide(false);
            QDockWidget::setVisible(true);
        } else if (e->type() == QEvent::Hide && isFloating() && QDockWidget::isVisible()) {
            QDockWidget::setVisible(false);
            _setFloatingHide(true);
        }
    }
    return KCommandWidgetBridge<QDockWidget>::eventFilter(watched, e);
}

void KDockWidget::closeEvent(QCloseEvent* e)
{
    // Closing the dock hides its command, so toggles and menus show the dock as hidden.
    if (KCommand* cmd = command()) {
        if (cmd->isVisible())
            cmd->setVisible(false);
    }
    KCommandWidgetBridge<QDockWidget>::closeEvent(e);
}

void KDockWidget::paintEvent(QPaintEvent* e)
{
    // The dock's background comes from the theme: a colour, or a gradient spread over the
    // dock (theme gradients are given in the dock's own 0..1 coordinates).
    QPainter painter(this);
    const QColor color = KDrawHelpFunc::getColorFromTheme(QStringLiteral("KDockWidget"), QStringLiteral("background"));
    if (color.isValid()) {
        painter.fillRect(rect(), color);
    } else {
        QGradient gradient = KDrawHelpFunc::getGradientFromTheme(QStringLiteral("KDockWidget"), QStringLiteral("background"));
        if (!gradient.stops().isEmpty()) {
            gradient.setCoordinateMode(QGradient::ObjectBoundingMode);
            painter.fillRect(rect(), QBrush(gradient));
        }
    }
    painter.end();
    KCommandWidgetBridge<QDockWidget>::paintEvent(e);
}
