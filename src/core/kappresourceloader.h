#ifndef KAPPRESOURCELOADER_H
#define KAPPRESOURCELOADER_H

#include <QHash>
#include <QIcon>
#include <QIconEngine>
#include <QString>
#include <QStringList>

#include <norvikofficeui_export.h>

class KDomDocument;

/**
 * Resolves icon names to image files of the theme's icon folders. Owned by the theme.
 *
 * loadIcon() touches no file: it hands out a QIcon around a KAppIconEngine that looks for
 * "<folder>/<name>.png" in every folder only when the icon is first painted or measured.
 * One QIcon is cached per name, so an icon used by many commands is read once.
 */
class NORVIKOFFICEUI_EXPORT KAppResourceLoader
{
public:
    KAppResourceLoader();

    /**
     * Appends the folders named by the "path" children of every "icon" element of the
     * document's first "resource" element. Relative folders count from the program's
     * directory; a missing folder is a warning. Always true.
     */
    bool setupXml(const KDomDocument& doc);
    /// Forgets the folders and the cache. Icons handed out stay valid; those not yet
    /// loaded then find no folders.
    void resetXml();

    /// The icon of that name; the same QIcon (same cacheKey) for every call with one name.
    QIcon loadIcon(const QString& name);
    /// The name under which the icon was handed out, or an empty text.
    QString iconName(const QIcon& icon) const;

    QStringList iconDirs() const { return m_iconDirs; }

private:
    QStringList m_iconDirs;
    QHash<QString, QIcon> m_icons;
};

/**
 * The engine behind the icons of KAppResourceLoader. It loads its files on the first
 * paint, pixmap, size or availableSizes query, from the folders of the current theme's
 * loader, in folder order; each folder that holds "<name>.png" contributes one size.
 * Until loaded, isNull() answers false; afterwards an icon whose file exists nowhere is null.
 */
class NORVIKOFFICEUI_EXPORT KAppIconEngine : public QIconEngine
{
public:
    explicit KAppIconEngine(const QString& name);

    void paint(QPainter* painter, const QRect& rect, QIcon::Mode mode, QIcon::State state) override;
    QSize actualSize(const QSize& size, QIcon::Mode mode, QIcon::State state) override;
    QPixmap pixmap(const QSize& size, QIcon::Mode mode, QIcon::State state) override;
    QPixmap scaledPixmap(const QSize& size, QIcon::Mode mode, QIcon::State state,
                         qreal scale) override;
    QString key() const override;
    QIconEngine* clone() const override;
    QList<QSize> availableSizes(QIcon::Mode mode = QIcon::Normal,
                                QIcon::State state = QIcon::Off) override;
    QString iconName() override;
    bool isNull() override;

    /// True once the files were looked up.
    bool isLoaded() const { return m_loaded; }

private:
    void _load();

    QString m_name;
    QIcon m_icon;
    bool m_loaded = false;
};

#endif // KAPPRESOURCELOADER_H
