// Not part of the public interface: painting shared by the looks' own files.
#ifndef KORBSTYLE_P_H
#define KORBSTYLE_P_H

class QColor;
class QPainter;
class QRect;

namespace KOrbPaint {
/// A tick in box, inset by a quarter of its width and three tenths of its height.
void drawCheckMark(QPainter* painter, const QRect& box, const QColor& color);
} // namespace KOrbPaint

#endif // KORBSTYLE_P_H
