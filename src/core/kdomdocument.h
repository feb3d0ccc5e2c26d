#ifndef KDOMDOCUMENT_H
#define KDOMDOCUMENT_H

#include <QDomDocument>
#include <QMetaType>
#include <QString>

#include <kdomelement.h>
#include <norvikofficeui_export.h>

/**
 * An XML document of the framework (UI description, theme, attribute or tip file) with the
 * path it was read from. Copied by value; the DOM tree is shared. Readers reach its elements
 * only through documentElement(), so conditional elements and translation apply everywhere.
 */
class NORVIKOFFICEUI_EXPORT KDomDocument : public QDomDocument
{
public:
    KDomDocument();

    /// Reads and parses the file; on failure warns and returns false, the path unchanged.
    bool setContent(const QString& path);
    bool isNull() const { return QDomDocument::isNull(); }
    QString filePath() const { return m_filePath; }
    /// The root element, with an empty translation context.
    KDomElement documentElement() const;

private:
    QString m_filePath;
};

Q_DECLARE_METATYPE(KDomDocument)

#endif // KDOMDOCUMENT_H
