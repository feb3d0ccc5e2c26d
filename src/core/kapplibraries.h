#ifndef KAPPLIBRARIES_H
#define KAPPLIBRARIES_H

#include <QMap>
#include <QString>

#include <norvikofficeui_export.h>

class QLibrary;
class KDomDocument;

/**
 * The table of shared libraries that the XML description names in its "libraries"
 * sections. A library is loaded and nothing else: what it contributes (typically command
 * classes registered with the factory) it does in its static initialisers. Owned by the
 * application. The destructor frees the table only; the libraries stay loaded until the
 * process ends, unless resetXml() unloads them.
 */
class NORVIKOFFICEUI_EXPORT KAppLibraries
{
public:
    KAppLibraries();
    ~KAppLibraries();
    KAppLibraries(const KAppLibraries&) = delete;
    KAppLibraries& operator=(const KAppLibraries&) = delete;

    /**
     * Loads every "library" child of the document's first "libraries" element. A name that
     * is already loaded and a library that fails to load are warnings; the walk goes on and
     * the result is always true.
     */
    bool setupXml(const KDomDocument& doc);
    /// Unloads and forgets every library.
    void resetXml();
    int count() const { return m_libraries.size(); }
    /// The library loaded under that name, or null.
    QLibrary* item(const QString& name) const;

private:
    QMap<QString, QLibrary*> m_libraries;
};

#endif // KAPPLIBRARIES_H
