#include "kappresourceloader.h"

#include <QCoreApplication>
#include <QDebug>
#include <QDir>
#include <QFileInfo>
#include <QPainter>

#include <kapplication.h>
#include <kapptheme.h>
#include <kdomdocument.h>

KAppResourceLoader::KAppResourceLoader() = default;

bool KAppResourceLoader::setupXml(const KDomDocument& doc)
{
    const KDomElement resource = doc.documentElement().firstChildElement(QStringLiteral("resource"));
    if (resource.isNull())
        return true;
    const QDir appDir(QCoreApplication::applicationDirPath());
    for (KDomElement section = resource.firstChildElement(); !section.isNull();
         section = section.nextSiblingElement()) {
        if (section.tagName() != QLatin1String("icon"))
            continue;
        for (KDomElement p = section.firstChildElement(QStringLiteral("path")); !p.isNull();
             p = p.nextSiblingElement(QStringLiteral("path"))) {
            const QString dir = QDir::cleanPath(appDir.absoluteFilePath(p.attribute(QStringLiteral("path"))));
            if (!QFileInfo(dir).isDir()) {
                qWarning().noquote() << "Resource Loader: Dir " << dir << " is not exist";
                continue;
            }
            m_iconDirs.append(dir);
        }
    }
    return true;
}

void KAppResourceLoader::resetXml()
{
    m_iconDirs.clear();
    m_icons.clear();
}

QIcon KAppResourceLoader::loadIcon(const QString& name)
{
    const auto it = m_icons.constFind(name);
    if (it != m_icons.constEnd())
        return it.value();
    // No file is looked at here: a description with many commands reads no image until
    // one of them is shown.
    const QIcon icon(new KAppIconEngine(name));
    m_icons.insert(name, icon);
    return icon;
}

QString KAppResourceLoader::iconName(const QIcon& icon) const
{
    const qint64 key = icon.cacheKey();
    for (auto it = m_icons.constBegin(); it != m_icons.constEnd(); ++it) {
        if (it.value().cacheKey() == key)
            return it.key();
    }
    return QString();
}

// --- KAppIconEngine ---

KAppIconEngine::KAppIconEngine(const QString& name)
    : m_name(name)
{
}

void KAppIconEngine::_load()
{
    if (m_loaded)
        return;
    m_loaded = true;
    KApplication* app = KApplication::instance();
    if (!app || !app->theme() || !app->theme()->resLoader())
        return;
    const QStringList dirs = app->theme()->resLoader()->iconDirs();
    for (const QString& dir : dirs) {
        const QString path = dir + QLatin1Char('/') + m_name + QStringLiteral(".png");
        if (QFileInfo::exists(path))
            m_icon.addFile(path, QSize(), QIcon::Normal, QIcon::Off);
    }
}

void KAppIconEngine::paint(QPainter* painter, const QRect& rect, QIcon::Mode mode, QIcon::State state)
{
    _load();
    m_icon.paint(painter, rect, Qt::AlignCenter, mode, state);
}

QSize KAppIconEngine::actualSize(const QSize& size, QIcon::Mode mode, QIcon::State state)
{
    _load();
    return m_icon.actualSize(size, mode, state);
}

QPixmap KAppIconEngine::pixmap(const QSize& size, QIcon::Mode mode, QIcon::State state)
{
    _load();
    return m_icon.pixmap(size, mode, state);
}

QPixmap KAppIconEngine::scaledPixmap(const QSize& size, QIcon::Mode mode, QIcon::State state,
                                     qreal scale)
{
    _load();
    return m_icon.pixmap(size, scale, mode, state);
}

QString KAppIconEngine::key() const
{
    return QStringLiteral("KAppIconEngine");
}

QIconEngine* KAppIconEngine::clone() const
{
    auto* engine = new KAppIconEngine(m_name);
    engine->m_icon = m_icon;
    engine->m_loaded = m_loaded;
    return engine;
}

QList<QSize> KAppIconEngine::availableSizes(QIcon::Mode mode, QIcon::State state)
{
    _load();
    return m_icon.availableSizes(mode, state);
}

QString KAppIconEngine::iconName()
{
    return m_name;
}

bool KAppIconEngine::isNull()
{
    // Asking whether an icon exists must not read files of a command that is never shown.
    return m_loaded && m_icon.isNull();
}
