#ifndef KGALLERYMODELTEXTITEM_H
#define KGALLERYMODELTEXTITEM_H

#include <QPixmap>

#include <kgalleryabstractmodel.h>

/**
 * A cell sized by its text plus margins (5,5,5,5), in a row with others. It draws nothing
 * itself: a subclass paints the text its own way.
 */
class NORVIKOFFICEUI_EXPORT KGalleryModelTextItem : public KGalleryModelAbstractItem
{
    Q_OBJECT
public:
    KGalleryModelTextItem(const QString& text, KGalleryAbstractModel* model);
    ~KGalleryModelTextItem() override;

    bool isExpanding(KGalleryViewType viewType) const override;
    QSize sizeHint() const override;
    void drawItem(QPainter& painter, const QRect& rect, KGalleryViewType viewType) const override;
};

/**
 * A title across the gallery: a full row on a band of "background" of
 * "KGalleryModelTitleItem". It can be neither checked nor clicked, is not shown in the
 * compact view, and stays out of a gallery combo box's completer.
 */
class NORVIKOFFICEUI_EXPORT KGalleryModelTitleItem : public KGalleryModelTextItem
{
    Q_OBJECT
public:
    KGalleryModelTitleItem(const QString& text, KGalleryAbstractModel* model);
    ~KGalleryModelTitleItem() override;

    bool isExpanding(KGalleryViewType viewType) const override;
    bool isCheckeable() const override;
    bool isTriggerable() const override;
    bool isVisible(KGalleryViewType viewType = KGalleryViewNormal) const override;
    void drawItem(QPainter& painter, const QRect& rect, KGalleryViewType viewType) const override;
};

/**
 * A cell of a picture and a text. The mode places the two:
 * 0 picture left, 1 picture right, 2 picture above, 3 text above.
 */
class NORVIKOFFICEUI_EXPORT KGalleryModelTextIconItem : public KGalleryModelAbstractItem
{
    Q_OBJECT
public:
    enum LayoutMode { IconLeft = 0, IconRight = 1, IconAbove = 2, TextAbove = 3 };

    KGalleryModelTextIconItem(const QString& text, KGalleryAbstractModel* model);
    KGalleryModelTextIconItem(const QString& text, const QPixmap& pixmap, int mode, KGalleryAbstractModel* model);
    KGalleryModelTextIconItem(const QPixmap& pixmap, KGalleryAbstractModel* model);
    ~KGalleryModelTextIconItem() override;

    QString itemText() const { return m_itemText; }
    QPixmap pixmap() const { return m_pixmap; }
    void setPixmap(const QPixmap& pixmap);
    int layoutMode() const { return m_mode; }

    bool isExpanding(KGalleryViewType viewType) const override;
    QSize sizeHint() const override;
    void drawItem(QPainter& painter, const QRect& rect, KGalleryViewType viewType) const override;

    /// Where the picture and the text go in a cell of rect; both empty without a picture.
    void layoutRects(const QRect& rect, QRect& pixmapRect, QRect& textRect) const;

private:
    QSize _textSize() const;

    QString m_itemText;
    QPixmap m_pixmap;
    int m_mode = IconLeft;
};

/**
 * A row 450 by 26 that shows a font's name in that font (a symbol font shows its name in
 * the application's font instead), with the element's icon at the left.
 */
class NORVIKOFFICEUI_EXPORT KGalleryModelFontItem : public KGalleryModelAbstractItem
{
    Q_OBJECT
public:
    KGalleryModelFontItem(const QString& fontName, KGalleryAbstractModel* model);
    ~KGalleryModelFontItem() override;

    /// The pixel size of the sample, which fits the row.
    static constexpr int s_samplePixelSize = 15;

    bool isExpanding(KGalleryViewType viewType) const override;
    QSize sizeHint() const override;
    void drawItem(QPainter& painter, const QRect& rect, KGalleryViewType viewType) const override;
    /// The font the name is drawn in.
    QFont sampleFont() const;

private:
    mutable int m_symbolFamily = -1; // -1 not asked yet, then 0 or 1
};

/// A thin line between parts of a gallery: a full row 5 high, neither checked nor clicked.
class NORVIKOFFICEUI_EXPORT KxSeparatorItem : public KGalleryModelAbstractItem
{
    Q_OBJECT
public:
    explicit KxSeparatorItem(KGalleryAbstractModel* model);
    ~KxSeparatorItem() override;

    bool isCheckeable() const override;
    bool isTriggerable() const override;
    QSize sizeHint() const override;
    void drawItem(QPainter& painter, const QRect& rect, KGalleryViewType viewType) const override;
};

#endif // KGALLERYMODELTEXTITEM_H
