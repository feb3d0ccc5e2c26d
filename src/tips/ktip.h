#ifndef KTIP_H
#define KTIP_H

#include <QObject>
#include <QString>

#include <norvikofficeui_export.h>

/**
 * One entry of the tip catalogue: the title, content, picture and help link that a rich tool
 * tip shows. In the content "#" stands for a line break. The picture is a base name without
 * extension, looked up per language when the tip shows (see KTipWidget).
 */
class NORVIKOFFICEUI_EXPORT KTip : public QObject
{
    Q_OBJECT
public:
    /// The kinds of tip that getTipType() tells apart.
    enum TipType {
        IncompleteTip = 0, ///< title or content missing
        TextTip = 1,       ///< title and content
        LinkTip = 2,       ///< with a help link
        PictureTip = 3,    ///< with a picture
        FullTip = 4        ///< with a link and a picture
    };

    /// parent owns the tip; host is only stored.
    KTip(QObject* parent, QObject* host);
    ~KTip() override;

    QObject* host() const { return m_host; }
    /// 0 without title or content; otherwise 1 to 4 by link and picture (TipType).
    int getTipType() const;

    QString tipTitle() const { return m_tipTitle; }
    void setTipTitle(const QString& title) { m_tipTitle = title; }
    QString tipContent() const { return m_tipContent; }
    void setTipContent(const QString& content) { m_tipContent = content; }
    QString tipLink() const { return m_tipLink; }
    void setTipLink(const QString& link) { m_tipLink = link; }
    QString tipLinkUrl() const { return m_tipLinkUrl; }
    void setTipLinkUrl(const QString& url) { m_tipLinkUrl = url; }
    QString tipPicUrl() const { return m_tipPicUrl; }
    void setTipPicUrl(const QString& picture) { m_tipPicUrl = picture; }
    int tipPicPosition() const { return m_tipPicPosition; }
    /// Decimal text; anything that is no number gives 0 (the picture stands to the left).
    void setTipPicPosition(const QString& position);

private:
    QObject* m_host = nullptr;
    QString m_tipTitle;
    QString m_tipContent;
    QString m_tipLink;
    QString m_tipLinkUrl;
    QString m_tipPicUrl;
    int m_tipPicPosition = 0;
};

#endif // KTIP_H
