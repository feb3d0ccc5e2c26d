#ifndef WRITERPANELS_H
#define WRITERPANELS_H

#include <QPointer>
#include <QWidget>
#include <kcommand.h>
#include <kmrucommand.h>

class QLabel;
class QListWidget;
class QListWidgetItem;
class WriterWindow;

/**
 * The writer's own command classes, registered in the framework's factory so that the
 * description can name them: each brings the panel of a dock as its extended widget.
 */
class WriterOutlineCommand : public KCommand
{
    Q_OBJECT
public:
    Q_INVOKABLE WriterOutlineCommand(QObject* host, QObject* parent);
    QWidget* createExtendedWidget(QWidget* parent) override;
};

class WriterPropertiesCommand : public KCommand
{
    Q_OBJECT
public:
    Q_INVOKABLE WriterPropertiesCommand(QObject* host, QObject* parent);
    QWidget* createExtendedWidget(QWidget* parent) override;
};

/**
 * The recently used files. The framework keeps the list in the user's settings (its
 * "settingsKey"); the window adds each file it opens or saves, and a chosen entry comes
 * back through fileChosen().
 */
class WriterRecentFilesCommand : public KMRUCommand
{
    Q_OBJECT
public:
    Q_INVOKABLE WriterRecentFilesCommand(QObject* host, QObject* parent);

    /// Puts path at the head of the list (once).
    void addFile(const QString& path);

Q_SIGNALS:
    void fileChosen(const QString& path);

protected:
    void onTriggered() override;
};

/// The headings of the document (lines that start with "#"); a click moves the cursor there.
class WriterOutlineView : public QWidget
{
    Q_OBJECT
public:
    explicit WriterOutlineView(QWidget* parent);
    QListWidget* list() const { return m_list; }

private:
    void _rebuild();
    void _jumpTo(QListWidgetItem* item);
    QListWidget* m_list;
    QPointer<WriterWindow> m_window;
};

/// File name, size and counts of the open document.
class WriterPropertiesView : public QWidget
{
    Q_OBJECT
public:
    explicit WriterPropertiesView(QWidget* parent);
    QString valueText(const QString& key) const;

private:
    void _refresh();
    QPointer<WriterWindow> m_window;
    QMap<QString, QLabel*> m_values;
};

#endif // WRITERPANELS_H
