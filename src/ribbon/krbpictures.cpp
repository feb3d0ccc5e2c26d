#include "krbpictures_p.h"

#include <QPainter>
#include <QPainterPath>
#include <QPixmap>
#include <QWidget>

namespace {

QPixmap drawn(const QString& name, const QColor& ink, int size)
{
    QPixmap pixmap(size, size);
    pixmap.fill(Qt::transparent);
    QPainter p(&pixmap);
    p.setRenderHint(QPainter::Antialiasing);
    p.scale(size / 16.0, size / 16.0);
    if (name == QLatin1String("filepageunfixed")) {
        // A pin lying on its side: not pushed in.
        p.setPen(QPen(ink, 1.2));
        p.setBrush(Qt::NoBrush);
        p.drawRect(QRectF(4.5, 5.5, 5, 5));
        p.drawLine(QPointF(9.5, 4), QPointF(9.5, 12));
        p.drawLine(QPointF(10, 8), QPointF(14, 8));
        p.drawLine(QPointF(1.5, 8), QPointF(4.5, 8));
    } else if (name == QLatin1String("filepagefixed")) {
        // The pin upright: pushed in, holding the document.
        p.setPen(QPen(ink, 1.2));
        p.setBrush(ink);
        p.drawRect(QRectF(5.5, 2.5, 5, 5));
        p.drawLine(QPointF(4, 7.5), QPointF(12, 7.5));
        p.drawLine(QPointF(8, 8), QPointF(8, 14));
    } else if (name.startsWith(QLatin1String("DeleteRecord"))) {
        const bool hover = name == QLatin1String("DeleteRecord");
        p.setPen(QPen(ink, hover ? 2.0 : 1.4, Qt::SolidLine, Qt::RoundCap));
        p.drawLine(QPointF(4.5, 4.5), QPointF(11.5, 11.5));
        p.drawLine(QPointF(4.5, 11.5), QPointF(11.5, 4.5));
    } else if (name == QLatin1String("rb_more_left") || name == QLatin1String("rb_more_right")) {
        const bool left = name == QLatin1String("rb_more_left");
        QPainterPath arrow;
        arrow.moveTo(left ? 10 : 6, 4);
        arrow.lineTo(left ? 5 : 11, 8);
        arrow.lineTo(left ? 10 : 6, 12);
        arrow.closeSubpath();
        p.fillPath(arrow, ink);
    }
    return pixmap;
}

} // namespace

QIcon KRbPictures::icon(const QString& name, const QWidget* widget)
{
    const QIcon themed = QIcon::fromTheme(name);
    if (!themed.isNull())
        return themed;
    const QColor ink = widget ? widget->palette().color(QPalette::WindowText) : QColor(Qt::black);
    QIcon icon;
    icon.addPixmap(drawn(name, ink, 16));
    icon.addPixmap(drawn(name, ink, 32));
    return icon;
}
