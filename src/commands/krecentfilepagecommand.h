#ifndef KRECENTFILEPAGECOMMAND_H
#define KRECENTFILEPAGECOMMAND_H

#include <QStringList>

#include <kcommand.h>

/**
 * The host's recent documents, as the recent file page shows them. The framework keeps no
 * list of its own: the page asks these operations afresh each time it shows and after each
 * change it makes. Indexes are those of fileList().
 */
class NORVIKOFFICEUI_EXPORT KRecentFilePageCommand : public KCommand
{
    Q_OBJECT
public:
    KRecentFilePageCommand(QObject* host, QObject* parent);
    ~KRecentFilePageCommand() override;

    bool isTriggerable() const override;
    QWidget* createExtendedWidget(QWidget* parent) override;

public Q_SLOTS:
    /// All documents, in the host's order.
    virtual QStringList fileList() = 0;
    virtual void openFile(int index) = 0;
    virtual void removeFile(int index) = 0;
    virtual void clearFiles() = 0;
    /// Shows the document's folder; false when the folder is gone.
    virtual bool openFolder(const QString& path) = 0;
    /// Pins the document to the head of the list.
    virtual void fixFile(const QString& path) = 0;
    virtual void unfixFile(const QString& path) = 0;
    /// Whether the document is pinned; by default, whether fixedFileList() holds it.
    virtual bool isFileFixed(const QString& path);
    /// The pinned documents, in pin order.
    virtual QStringList fixedFileList() = 0;
    /// The others, in the host's order.
    virtual QStringList unfixedFileList() = 0;
};

#endif // KRECENTFILEPAGECOMMAND_H
