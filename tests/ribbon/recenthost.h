#ifndef TESTS_RIBBON_RECENTHOST_H
#define TESTS_RIBBON_RECENTHOST_H

#include <QStringList>

#include <krecentfilepagecommand.h>

// A host's recent documents for the tests: a list with pinned paths, and a log of what the
// page asked of it.
class RecentHost : public KRecentFilePageCommand
{
public:
    RecentHost(const QStringList& files, QObject* owner)
        : KRecentFilePageCommand(owner, owner)
        , files(files)
    {
    }
    QStringList fileList() override
    {
        ++listAsked;
        return files;
    }
    void openFile(int index) override { opened.append(index); }
    void removeFile(int index) override { files.removeAt(index); }
    void clearFiles() override
    {
        ++cleared;
        files.clear();
    }
    bool openFolder(const QString& path) override
    {
        foldersAsked.append(path);
        return folderExists;
    }
    void fixFile(const QString& path) override { pinned.append(path); }
    void unfixFile(const QString& path) override { pinned.removeAll(path); }
    QStringList fixedFileList() override { return pinned; }
    QStringList unfixedFileList() override
    {
        QStringList rest;
        for (const QString& f : files)
            if (!pinned.contains(f))
                rest.append(f);
        return rest;
    }

    QStringList files;
    QStringList pinned;
    QList<int> opened;
    QStringList foldersAsked;
    bool folderExists = true;
    int listAsked = 0;
    int cleared = 0;
};

#endif // TESTS_RIBBON_RECENTHOST_H
