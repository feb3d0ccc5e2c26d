// Draws the pictures of Norvik Writer's own commands (those no installed icon set has) as
// PNG files, in 16 and 32 pixels:
//
//   norvik-writer-icons OUTDIR       writes OUTDIR/16/<name>.png and OUTDIR/32/<name>.png
//
// Each picture is drawn on a 32 by 32 grid and scaled, so both sizes show the same thing.
#include <QDir>
#include <QFont>
#include <QGuiApplication>
#include <QImage>
#include <QPainter>
#include <QPainterPath>
#include <cstdio>
#include <functional>

namespace {

const QColor kInk(0x44, 0x44, 0x44);
const QColor kPaper(0xff, 0xff, 0xff);
const QColor kAccent(0x2b, 0x57, 0x9a);
const QColor kWarn(0xc0, 0x39, 0x2b);
const QColor kGreen(0x21, 0x73, 0x46);

void page(QPainter& p, const QRectF& r)
{
    p.setPen(QPen(kInk, 1.5));
    p.setBrush(kPaper);
    p.drawRect(r);
}

void lines(QPainter& p, qreal x, qreal y, qreal width, int count, qreal step)
{
    p.setPen(QPen(kInk, 2, Qt::SolidLine, Qt::FlatCap));
    for (int i = 0; i < count; ++i)
        p.drawLine(QPointF(x, y + i * step), QPointF(x + width, y + i * step));
}

void grid(QPainter& p, const QRectF& r, int rows, int columns)
{
    page(p, r);
    p.setPen(QPen(kInk, 1.2));
    for (int i = 1; i < rows; ++i)
        p.drawLine(QPointF(r.left(), r.top() + i * r.height() / rows), QPointF(r.right(), r.top() + i * r.height() / rows));
    for (int i = 1; i < columns; ++i)
        p.drawLine(QPointF(r.left() + i * r.width() / columns, r.top()), QPointF(r.left() + i * r.width() / columns, r.bottom()));
}

void band(QPainter& p, const QRectF& r, const QColor& colour)
{
    QColor fill = colour;
    fill.setAlpha(150);
    p.fillRect(r, fill);
}

void triangle(QPainter& p, QPointF tip, qreal size, bool up, const QColor& colour)
{
    QPainterPath path;
    const qreal dy = up ? size : -size;
    path.moveTo(tip);
    path.lineTo(tip.x() - size, tip.y() + dy);
    path.lineTo(tip.x() + size, tip.y() + dy);
    path.closeSubpath();
    p.fillPath(path, colour);
}

void letterA(QPainter& p, const QRectF& r)
{
    QFont font(QStringLiteral("DejaVu Sans"));
    font.setPixelSize(int(r.height()));
    font.setBold(true);
    p.setFont(font);
    p.setPen(kInk);
    p.drawText(r, Qt::AlignCenter, QStringLiteral("A"));
}

void magnifier(QPainter& p, const QString& sign)
{
    p.setPen(QPen(kInk, 2.5));
    p.setBrush(kPaper);
    p.drawEllipse(QPointF(13, 13), 9, 9);
    p.setPen(QPen(kInk, 5, Qt::SolidLine, Qt::RoundCap));
    p.drawLine(QPointF(20, 20), QPointF(28, 28));
    QFont font(QStringLiteral("DejaVu Sans"));
    font.setPixelSize(14);
    font.setBold(true);
    p.setFont(font);
    p.setPen(kAccent);
    p.drawText(QRectF(4, 4, 18, 18), Qt::AlignCenter, sign);
}

void chevron(QPainter& p, bool up)
{
    p.setPen(QPen(kInk, 3.5, Qt::SolidLine, Qt::RoundCap, Qt::RoundJoin));
    const qreal y0 = up ? 20 : 12;
    const qreal y1 = up ? 11 : 21;
    p.drawPolyline(QPolygonF({QPointF(7, y0), QPointF(16, y1), QPointF(25, y0)}));
}

void cross(QPainter& p, QPointF centre)
{
    p.setPen(QPen(kWarn, 3, Qt::SolidLine, Qt::RoundCap));
    p.drawLine(centre + QPointF(-4, -4), centre + QPointF(4, 4));
    p.drawLine(centre + QPointF(-4, 4), centre + QPointF(4, -4));
}

const QList<QPair<const char*, std::function<void(QPainter&)>>>& pictures()
{
    static const QList<QPair<const char*, std::function<void(QPainter&)>>> all = {
        {"format-list-unordered", [](QPainter& p) {
             for (int i = 0; i < 3; ++i) {
                 p.setPen(Qt::NoPen);
                 p.setBrush(kAccent);
                 p.drawEllipse(QPointF(6, 8 + i * 8), 2.8, 2.8);
             }
             lines(p, 12, 8, 17, 3, 8);
         }},
        {"format-list-ordered", [](QPainter& p) {
             QFont font(QStringLiteral("DejaVu Sans"));
             font.setPixelSize(8);
             font.setBold(true);
             p.setFont(font);
             p.setPen(kAccent);
             for (int i = 0; i < 3; ++i)
                 p.drawText(QRectF(1, 3 + i * 8, 9, 10), Qt::AlignCenter, QString::number(i + 1));
             lines(p, 12, 8, 17, 3, 8);
         }},
        {"format-font-grow", [](QPainter& p) {
             letterA(p, QRectF(0, 6, 22, 24));
             triangle(p, QPointF(26, 6), 4.5, true, kAccent);
         }},
        {"format-font-shrink", [](QPainter& p) {
             letterA(p, QRectF(0, 10, 20, 18));
             triangle(p, QPointF(26, 16), 4.5, false, kAccent);
         }},
        {"zoom-in", [](QPainter& p) { magnifier(p, QStringLiteral("+")); }},
        {"zoom-out", [](QPainter& p) { magnifier(p, QStringLiteral("\u2212")); }},
        {"zoom-original", [](QPainter& p) {
             page(p, QRectF(5, 2, 22, 28));
             QFont font(QStringLiteral("DejaVu Sans"));
             font.setPixelSize(11);
             font.setBold(true);
             p.setFont(font);
             p.setPen(kAccent);
             p.drawText(QRectF(5, 2, 22, 28), Qt::AlignCenter, QStringLiteral("1:1"));
         }},
        {"insert-link", [](QPainter& p) {
             p.setBrush(Qt::NoBrush);
             p.setPen(QPen(kAccent, 3.2));
             p.translate(16, 16);
             p.rotate(-45);
             p.drawRoundedRect(QRectF(-14, -5, 16, 10), 5, 5);
             p.drawRoundedRect(QRectF(-2, -5, 16, 10), 5, 5);
         }},
        {"insert-table", [](QPainter& p) {
             grid(p, QRectF(3, 5, 26, 22), 3, 3);
             band(p, QRectF(3.8, 5.8, 24.4, 6.5), kAccent);
         }},
        {"insert-image", [](QPainter& p) {
             page(p, QRectF(3, 5, 26, 22));
             QPainterPath hills;
             hills.moveTo(4, 26);
             hills.lineTo(12, 15);
             hills.lineTo(17, 21);
             hills.lineTo(21, 17);
             hills.lineTo(28, 26);
             hills.closeSubpath();
             p.fillPath(hills, kGreen);
             p.setPen(Qt::NoPen);
             p.setBrush(QColor(0xe8, 0xa3, 0x17));
             p.drawEllipse(QPointF(22, 11), 3, 3);
         }},
        {"document-close", [](QPainter& p) {
             page(p, QRectF(5, 2, 18, 25));
             lines(p, 8, 8, 12, 3, 5);
             cross(p, QPointF(23, 24));
         }},
        {"insert-page-break", [](QPainter& p) {
             page(p, QRectF(6, 1, 20, 11));
             page(p, QRectF(6, 20, 20, 11));
             p.setPen(QPen(kAccent, 2, Qt::DashLine));
             p.drawLine(QPointF(1, 16), QPointF(31, 16));
         }},
        {"table-row-above", [](QPainter& p) {
             grid(p, QRectF(3, 12, 26, 17), 2, 3);
             band(p, QRectF(3, 3, 26, 7), kAccent);
         }},
        {"table-row-below", [](QPainter& p) {
             grid(p, QRectF(3, 3, 26, 17), 2, 3);
             band(p, QRectF(3, 22, 26, 7), kAccent);
         }},
        {"table-column-left", [](QPainter& p) {
             grid(p, QRectF(12, 3, 17, 26), 3, 2);
             band(p, QRectF(3, 3, 7, 26), kAccent);
         }},
        {"table-column-right", [](QPainter& p) {
             grid(p, QRectF(3, 3, 17, 26), 3, 2);
             band(p, QRectF(22, 3, 7, 26), kAccent);
         }},
        {"table-delete-row", [](QPainter& p) {
             grid(p, QRectF(3, 3, 26, 20), 3, 3);
             band(p, QRectF(3.8, 9.8, 24.4, 5.5), kWarn);
             cross(p, QPointF(24, 26));
         }},
        {"table-delete-column", [](QPainter& p) {
             grid(p, QRectF(3, 3, 20, 26), 3, 3);
             band(p, QRectF(9.8, 3.8, 5.5, 24.4), kWarn);
             cross(p, QPointF(26, 24));
         }},
        {"table-delete", [](QPainter& p) {
             grid(p, QRectF(3, 3, 22, 22), 3, 3);
             cross(p, QPointF(25, 25));
         }},
        {"table-merge", [](QPainter& p) {
             grid(p, QRectF(3, 5, 26, 22), 2, 1);
             p.setPen(QPen(kAccent, 2.5, Qt::SolidLine, Qt::RoundCap, Qt::RoundJoin));
             p.drawLine(QPointF(6, 10), QPointF(13, 10));
             p.drawPolyline(QPolygonF({QPointF(10, 7), QPointF(13, 10), QPointF(10, 13)}));
             p.drawLine(QPointF(26, 10), QPointF(19, 10));
             p.drawPolyline(QPolygonF({QPointF(22, 7), QPointF(19, 10), QPointF(22, 13)}));
         }},
        {"ribbon-collapse", [](QPainter& p) { chevron(p, true); }},
        {"ribbon-expand", [](QPainter& p) { chevron(p, false); }},
        {"view-status-bar", [](QPainter& p) {
             page(p, QRectF(3, 4, 26, 24));
             band(p, QRectF(3.8, 22, 24.4, 5.2), kAccent);
         }},
    };
    return all;
}

} // namespace

int main(int argc, char** argv)
{
    qputenv("QT_QPA_PLATFORM", "offscreen");
    QGuiApplication app(argc, argv);
    if (argc != 2) {
        std::fprintf(stderr, "usage: norvik-writer-icons OUTDIR\n");
        return 2;
    }
    const QDir out(QString::fromLocal8Bit(argv[1]));
    for (int size : {16, 32}) {
        const QString dir = out.filePath(QString::number(size));
        if (!QDir().mkpath(dir)) {
            std::fprintf(stderr, "norvik-writer-icons: cannot make %s\n", qPrintable(dir));
            return 1;
        }
        for (const auto& picture : pictures()) {
            QImage image(size, size, QImage::Format_ARGB32_Premultiplied);
            image.fill(Qt::transparent);
            QPainter painter(&image);
            painter.setRenderHint(QPainter::Antialiasing);
            painter.setRenderHint(QPainter::TextAntialiasing);
            painter.scale(size / 32.0, size / 32.0);
            picture.second(painter);
            painter.end();
            const QString path = dir + QLatin1Char('/') + QLatin1String(picture.first) + QStringLiteral(".png");
            if (!image.save(path)) {
                std::fprintf(stderr, "norvik-writer-icons: cannot write %s\n", qPrintable(path));
                return 1;
            }
        }
    }
    return 0;
}
