#include "kdomdocument.h"

#include <QDebug>
#include <QFile>

KDomDocument::KDomDocument() = default;

bool KDomDocument::setContent(const QString& path)
{
    QFile file(path);
    if (!file.open(QIODevice::ReadOnly)) {
        qWarning().noquote() << "KApplication: Can not load ui xml file! path:" << path;
        return false;
    }
    QString errorMessage;
    int errorLine = 0;
    if (!QDomDocument::setContent(&file, &errorMessage, &errorLine, nullptr)) {
        qWarning().noquote() << "KDomDocument:" << errorLine << ":" << errorMessage;
        return false;
    }
    m_filePath = path;
    return true;
}

KDomElement KDomDocument::documentElement() const
{
    return KDomElement(QDomDocument::documentElement(), QByteArray());
}
