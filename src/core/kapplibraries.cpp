#include "kapplibraries.h"

#include <QCoreApplication>
#include <QDebug>
#include <QDir>
#include <QLibrary>

#include <kdomdocument.h>

KAppLibraries::KAppLibraries() = default;

KAppLibraries::~KAppLibraries()
{
    // Unloading here could pull code out from under objects that still live (command
    // classes registered by the libraries); the libraries stay until the process ends.
    qDeleteAll(m_libraries);
}

bool KAppLibraries::setupXml(const KDomDocument& doc)
{
    const KDomElement libraries =
        doc.documentElement().firstChildElement(QStringLiteral("libraries"));
    if (libraries.isNull())
        return true;
    for (KDomElement e = libraries.firstChildElement(QStringLiteral("library")); !e.isNull();
         e = e.nextSiblingElement(QStringLiteral("library"))) {
        const QString name = e.attribute(QStringLiteral("name"));
        if (m_libraries.contains(name)) {
            qWarning().noquote() << "library: " << name << " is already loaded.";
            continue;
        }
        const QString path = e.attribute(QStringLiteral("path"), QStringLiteral("."));
        const QString dir = QDir(QCoreApplication::applicationDirPath()).absoluteFilePath(path);
        // QLibrary adds the platform's prefix and suffix ("lib", ".so") to the last part.
        const QString fileName = dir + QLatin1Char('/') + name;
        auto* library = new QLibrary(fileName);
        if (library->load()) {
            m_libraries.insert(name, library);
        } else {
            qWarning().noquote() << e.lineNumber() << ": Can't load library:" << fileName
                                 << library->errorString();
            delete library;
        }
    }
    return true;
}

void KAppLibraries::resetXml()
{
    for (QLibrary* library : std::as_const(m_libraries)) {
        library->unload();
        delete library;
    }
    m_libraries.clear();
}

QLibrary* KAppLibraries::item(const QString& name) const
{
    return m_libraries.value(name, nullptr);
}
