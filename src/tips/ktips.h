#ifndef KTIPS_H
#define KTIPS_H

#include <QMap>
#include <QObject>
#include <QString>

#include <norvikofficeui_export.h>

class KDomDocument;
class KTip;

/**
 * The tip catalogue: rich tool tips by id. The main description names the tip file with a
 * `tips` element; the file is read the first time a tip is asked for, not at start, and only
 * once: a file that is missing or broken leaves the catalogue empty until resetXML().
 *
 * The application makes the one catalogue (KApplication::tips()). While it lives, widgets
 * whose command names a tip (customTip) show that tip instead of their plain tool tip.
 */
class NORVIKOFFICEUI_EXPORT KTips : public QObject
{
    Q_OBJECT
public:
    /// parent owns the catalogue; host is only stored and handed to the tips.
    KTips(QObject* parent, QObject* host);
    ~KTips() override;

    QObject* host() const { return m_host; }

    /**
     * Stores the path of the main document's `tips` element; reads nothing. False without
     * the element, and with a warning when it has no path. A relative path counts from the
     * folder "res" beside the program.
     */
    bool setupMainXml(const KDomDocument& doc);
    /// Adds the KToolTip entries under the document element's `tips`; false without `tips`.
    bool setupXml(const KDomDocument& doc);
    /// Reads the tip file once; a failed read is not retried.
    void ensureLoaded();
    /// The path that setupMainXml() stored, as given in the description.
    QString path() const { return m_path; }
    bool isLoaded() const { return m_loaded; }

    /// The tip of that id, reading the file first if need be; null when there is none.
    KTip* getTip(const QString& id);
    /// Puts tip in the catalogue under id, in place of an earlier tip of that id.
    void addTip(const QString& id, KTip* tip);
    /**
     * A tip made on the fly with text as its title, under the id "custom N" (N counts from
     * 1 for the whole process), which also stands in the tip's property "id". parent owns
     * it; a null parent makes the catalogue the owner.
     */
    KTip* getTipInstance(const QString& text, QObject* parent, QObject* host);
    /// Empties the catalogue and deletes every child; the next setupMainXml() starts afresh.
    void resetXML();

private:
    QObject* m_host = nullptr;
    QMap<QString, KTip*> m_tips;
    QString m_path;
    bool m_loaded = false;
};

#endif // KTIPS_H
