#ifndef WRITERDOCUMENTSETUP_H
#define WRITERDOCUMENTSETUP_H

#include <QByteArray>
#include <QObject>
#include <QTimer>

#include "writerdialogs.h"

class WriterWindow;

/**
 * What the writer's Page Setup and Protect Document commands change, and their dialogs.
 *
 * The margins and the line spacing belong to the document: a Page Setup is one edit of it,
 * which Undo takes back, and the dialog shows what the document has. A document that is
 * replaced (New, Open) gets the margins last chosen. Paper size and auto-save belong to the
 * window: the document is saved to its file every so often while it has unsaved changes.
 * A protected document can't be edited until its password is given; only a hash of the
 * password is kept.
 */
class WriterDocumentSetup : public QObject
{
    Q_OBJECT
public:
    /// Connects the window's FilePageSetup and FileProtect commands; call after polishXml().
    explicit WriterDocumentSetup(WriterWindow* window);
    ~WriterDocumentSetup() override;

    /// The settings as they stand: margins and line spacing as the document has them.
    WriterPageSettings pageSettings() const;
    /// Applies settings as one edit of the document, and keeps them for the next documents.
    void applyPageSettings(const WriterPageSettings& settings);
    /// Seconds between automatic saves; 0: none.
    int autoSaveInterval() const { return m_autoSave.isActive() ? m_autoSave.interval() / 1000 : 0; }

    bool isProtected() const { return !m_passwordHash.isEmpty(); }
    void protect(const QString& password);
    /// False, and still protected, for a wrong password.
    bool unprotect(const QString& password);

public Q_SLOTS:
    /// Runs the Page Setup dialog and applies what it gives.
    void pageSetup();
    /// Runs the Protect Document dialog: protects, or takes the protection off.
    void protection();
    /// Saves the document to its file if it has one and has unsaved changes.
    void autoSaveNow();

private:
    void _applyMargins(const WriterPageSettings& settings);
    void _onContentsChanged();
    QByteArray _hash(const QString& password) const;

    WriterWindow* m_window;
    WriterPageSettings m_settings;
    QTimer m_autoSave;
    QByteArray m_passwordHash;
};

#endif // WRITERDOCUMENTSETUP_H
