// Draws the pictures that some of Norvik Writer's rich tool tips show, as PNG files:
//
//   norvik-writer-tip-pictures OUTDIR    writes OUTDIR/<name>.png
//
// Each picture is a small example of what its command does to a page.
#include <QDir>
#include <QFont>
#include <QGuiApplication>
#include <QImage>
#include <QPainter>
#include <cstdio>
#include <functional>

namespace {

const QColor kInk(0x44, 0x44, 0x44);
const QColor kPaper(0xff, 0xff, 0xff);
const QColor kEdge(0xb8, 0xc4, 0xd6);
const QColor kAccent(0x2b, 0x57, 0x9a);
const QSize kSize(96, 64);

void paper(QPainter& p)
{
    p.setPen(QPen(kEdge, 1));
    p.setBrush(kPaper);
    p.drawRect(QRectF(0.5, 0.5, kSize.width() - 1, kSize.height() - 1));
}

void text(QPainter& p, const QRectF& r, const QString& s, int pixels, bool bold, Qt::Alignment align)
{
    QFont f(QStringLiteral("DejaVu Sans"));
    f.setPixelSize(pixels);
    f.setBold(bold);
    p.setFont(f);
    p.setPen(kInk);
    p.drawText(r, align, s);
}

void bold(QPainter& p)
{
    paper(p);
    text(p, QRectF(8, 6, 80, 24), QStringLiteral("Plain"), 16, false, Qt::AlignLeft | Qt::AlignVCenter);
    text(p, QRectF(8, 34, 80, 24), QStringLiteral("Bold"), 16, true, Qt::AlignLeft | Qt::AlignVCenter);
    p.setPen(QPen(kAccent, 2));
    p.drawLine(QPointF(60, 22), QPointF(60, 40));
    p.drawLine(QPointF(55, 35), QPointF(60, 41));
    p.drawLine(QPointF(65, 35), QPointF(60, 41));
}

void table(QPainter& p)
{
    paper(p);
    const QRectF r(10, 10, 76, 44);
    p.setBrush(QColor(0xdd, 0xe6, 0xf3));
    p.setPen(Qt::NoPen);
    p.drawRect(QRectF(r.x(), r.y(), r.width(), r.height() / 3));
    p.setPen(QPen(kInk, 1));
    p.setBrush(Qt::NoBrush);
    p.drawRect(r);
    for (int i = 1; i < 3; ++i) {
        p.drawLine(QPointF(r.x(), r.y() + i * r.height() / 3), QPointF(r.right(), r.y() + i * r.height() / 3));
        p.drawLine(QPointF(r.x() + i * r.width() / 3, r.y()), QPointF(r.x() + i * r.width() / 3, r.bottom()));
    }
}

void bullets(QPainter& p)
{
    paper(p);
    for (int i = 0; i < 3; ++i) {
        const qreal y = 16 + i * 16;
        p.setPen(Qt::NoPen);
        p.setBrush(kAccent);
        p.drawEllipse(QPointF(14, y), 3, 3);
        p.setPen(QPen(kInk, 2, Qt::SolidLine, Qt::FlatCap));
        p.drawLine(QPointF(24, y), QPointF(i == 2 ? 60 : 84, y));
    }
}

void fontSize(QPainter& p)
{
    paper(p);
    int x = 8;
    for (int pixels : {10, 16, 24, 34}) {
        text(p, QRectF(x, 4, 40, 56), QStringLiteral("A"), pixels, false, Qt::AlignLeft | Qt::AlignBottom);
        x += pixels * 3 / 4 + 4;
    }
}

} // namespace

int main(int argc, char** argv)
{
    QGuiApplication app(argc, argv);
    if (argc != 2) {
        std::fprintf(stderr, "usage: norvik-writer-tip-pictures OUTDIR\n");
        return 2;
    }
    const QString out = QString::fromLocal8Bit(argv[1]);
    if (!QDir().mkpath(out)) {
        std::fprintf(stderr, "cannot make %s\n", argv[1]);
        return 1;
    }
    const QList<QPair<const char*, std::function<void(QPainter&)>>> pictures = {
        {"tip-bold", bold}, {"tip-table", table}, {"tip-bullets", bullets}, {"tip-fontsize", fontSize}};
    for (const auto& [name, draw] : pictures) {
        QImage image(kSize, QImage::Format_ARGB32_Premultiplied);
        image.fill(Qt::transparent);
        QPainter p(&image);
        p.setRenderHint(QPainter::Antialiasing);
        draw(p);
        p.end();
        const QString path = out + QLatin1Char('/') + QLatin1String(name) + QStringLiteral(".png");
        if (!image.save(path)) {
            std::fprintf(stderr, "cannot write %s\n", qPrintable(path));
            return 1;
        }
    }
    return 0;
}
