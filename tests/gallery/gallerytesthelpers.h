// Elements of known size for the gallery tests: their layout does not depend on fonts, and
// they count how often they were painted.
#ifndef GALLERYTESTHELPERS_H
#define GALLERYTESTHELPERS_H

#include <QPainter>

#include <kgalleryabstractmodel.h>

class BoxItem : public KGalleryModelAbstractItem
{
public:
    BoxItem(const QSize& size, KGalleryAbstractModel* model, bool expanding = false, const QString& text = QString())
        : KGalleryModelAbstractItem(text, QIcon(), model, false)
        , m_size(size)
        , m_expanding(expanding)
    {
    }

    bool isExpanding(KGalleryViewType) const override { return m_expanding; }
    QSize sizeHint() const override { return m_size; }
    void drawItem(QPainter& painter, const QRect& rect, KGalleryViewType viewType) const override
    {
        ++paints;
        KGalleryModelAbstractItem::drawItem(painter, rect, viewType);
    }

    mutable int paints = 0;

private:
    QSize m_size;
    bool m_expanding;
};

// A model of n boxes of one size, texts "0", "1", ...
inline void fillBoxes(KGalleryAbstractModel* model, int n, const QSize& size)
{
    for (int i = 0; i < n; ++i)
        model->addElement(new BoxItem(size, model, false, QString::number(i)));
}

#endif // GALLERYTESTHELPERS_H
