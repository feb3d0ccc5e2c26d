#ifndef KGALLERYCOMMAND_H
#define KGALLERYCOMMAND_H

#include <QPointer>

#include <kgalleryabstractmodel.h>
#include <klistcommand.h>

/**
 * The command behind a gallery in a bar. It holds the data source, a model that the host
 * makes and fills (lazily, in its fecthItems()) and listens to: a click on a cell reaches
 * the host as the model's indexClicked(int).
 *
 * In a ribbon group with "embedHint" it shows as a KGalleryInline, a band with up, down and
 * extend buttons; elsewhere as a button that drops the full KGallery down. Sub-commands of
 * the list stand as menu rows below the cells of the full gallery.
 *
 * The data source is not owned. Widths and height are in pixels; -1 (at first) lets the
 * widgets work them out.
 */
class NORVIKOFFICEUI_EXPORT KGalleryCommand : public KListCommand
{
    Q_OBJECT
    Q_PROPERTY(int galleryWidth READ galleryWidth WRITE setGalleryWidth)
    Q_PROPERTY(int gallerySmallWidth READ gallerySmallWidth WRITE setGallerySmallWidth)
    Q_PROPERTY(int galleryHeight READ galleryHeight WRITE setGalleryHeight)
public:
    Q_INVOKABLE KGalleryCommand(QObject* host, QObject* parent);
    ~KGalleryCommand() override;

    KGalleryAbstractModel* dataSource() const { return m_dataSource.data(); }
    /// Takes effect for widgets made afterwards.
    void setDataSource(KGalleryAbstractModel* model);

    /// The least width of the full gallery in its popup.
    int galleryWidth() const { return m_galleryWidth; }
    void setGalleryWidth(int width);
    /// The width of the band in a ribbon; emits widthChange().
    int gallerySmallWidth() const { return m_gallerySmallWidth; }
    void setGallerySmallWidth(int width);
    /// The height of the cells' part of the full gallery.
    int galleryHeight() const { return m_galleryHeight; }
    void setGalleryHeight(int height);

    bool isTriggerable() const override;
    bool isExtensible() const override;

    /// A drop-down button that opens the full gallery.
    QWidget* createPocketWidget(QWidget* parent) override;
    /// The band with up, down and extend buttons.
    QWidget* createInlineWidget(QWidget* parent) override;
    /// The full gallery with the menu rows below.
    QWidget* createExtendedWidget(QWidget* parent) override;

Q_SIGNALS:
    void widthChange(int width);

private:
    QPointer<KGalleryAbstractModel> m_dataSource;
    int m_galleryWidth = -1;
    int m_gallerySmallWidth = -1;
    int m_galleryHeight = -1;
};

#endif // KGALLERYCOMMAND_H
