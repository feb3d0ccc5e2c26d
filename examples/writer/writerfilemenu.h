#ifndef WRITERFILEMENU_H
#define WRITERFILEMENU_H

#include <QPointer>

#include <krecentfilepagecommand.h>

class QMimeData;
class KRbQuickToolbar;
class WriterRecentFilesCommand;
class WriterWindow;

/**
 * The recent documents as the file menu's page shows them: the window's recent list (its
 * "recentCommand"), with the pinned documents kept in the user's settings under
 * "settingsKey". A pinned document stays on the page even when the recent list has let it go.
 */
class WriterRecentPageCommand : public KRecentFilePageCommand
{
    Q_OBJECT
    Q_PROPERTY(KCommand* recentCommand READ recentCommand WRITE setRecentCommand)
    Q_PROPERTY(QString settingsKey READ settingsKey WRITE setSettingsKey)
public:
    Q_INVOKABLE WriterRecentPageCommand(QObject* host, QObject* parent);

    KCommand* recentCommand() const;
    void setRecentCommand(KCommand* command);
    QString settingsKey() const { return m_settingsKey; }
    /// A non-empty key loads the pins kept under it.
    void setSettingsKey(const QString& key);

    QStringList fileList() override;
    void openFile(int index) override;
    void removeFile(int index) override;
    void clearFiles() override;
    bool openFolder(const QString& path) override;
    void fixFile(const QString& path) override;
    void unfixFile(const QString& path) override;
    QStringList fixedFileList() override;
    QStringList unfixedFileList() override;

Q_SIGNALS:
    /// A folder to show; the window hands it to the desktop.
    void folderRequested(const QString& folder);

private:
    void _savePins() const;

    QPointer<WriterRecentFilesCommand> m_recent;
    QString m_settingsKey;
    QStringList m_pins;
};

/**
 * The file menu's own commands (Print Preview, Close, Exit) and the quick access bar made
 * the user's: entries are added from a ribbon control's context menu or by dragging the
 * control onto the bar, removed by the bar's context menu, and the bar is kept in the
 * settings under "Writer/QuickBar" across restarts.
 */
class WriterFileMenu : public QObject
{
    Q_OBJECT
public:
    explicit WriterFileMenu(WriterWindow* window);
    ~WriterFileMenu() override;

    KRbQuickToolbar* quickBar() const;
    /// Shows command on the quick access bar, before the shown entry at pos (-1: at the end);
    /// false when there is no bar or the command can't go there.
    bool addToQuickBar(KCommand* command, int pos = -1);
    /// The ids of the bar's shown commands, in order.
    QStringList quickBarIds() const;
    /// What a ribbon control carries when it is dragged: its command's id in the bar's format.
    static QMimeData* dragData(KCommand* command);
    /// The command of a control inside a ribbon page, or null.
    static KCommand* ribbonCommandOf(QWidget* widget);

protected:
    bool eventFilter(QObject* watched, QEvent* e) override;

private:
    KCommand* _command(const QString& id) const;
    void _printPreview();
    void _restoreQuickBar();
    void _saveQuickBar();
    bool _dropOnQuickBar(QEvent* e);
    void _ribbonContextMenu(QWidget* widget, const QPoint& globalPos);
    void _startDrag(QWidget* widget);

    WriterWindow* m_window;
    // Held as a plain object: the bar's own destruction is seen by the filter, and the
    // filter must not cast an object that is half gone.
    QPointer<QObject> m_quickBarObject;
    QPointer<QWidget> m_pressed;
    QPoint m_pressPos;
    bool m_restoring = false;
};

#endif // WRITERFILEMENU_H
