#ifndef WRITERSTATUS_H
#define WRITERSTATUS_H

#include <kstatusbar.h>

class QTextEdit;
class WriterWindow;

/**
 * The writer's status items. Each reads the window's editor when the status bar asks it at
 * idle time, so they follow the user's typing without a connection of their own.
 */
class WriterStatusItem : public KStatusItemCommand
{
    Q_OBJECT
public:
    Q_INVOKABLE WriterStatusItem(QObject* host, QObject* parent);

protected:
    WriterWindow* window() const;
    QTextEdit* editor() const;
};

/// "Page 2  Line 14  Col 3" at the cursor; pages of A4 height at the editor's resolution.
class WriterPositionCommand : public WriterStatusItem
{
    Q_OBJECT
public:
    Q_INVOKABLE WriterPositionCommand(QObject* host, QObject* parent);
    void update() override;
};

/// "123 words"; counted again only when the text changed.
class WriterWordCountCommand : public WriterStatusItem
{
    Q_OBJECT
public:
    Q_INVOKABLE WriterWordCountCommand(QObject* host, QObject* parent);
    void update() override;

protected:
    QWidget* createPocketWidget(QWidget* parent) override;

private:
    const void* m_document = nullptr;
    int m_revision = -1;
};

/**
 * The auto-save state: checked while the document is saved every so often, its light
 * waiting while changes are yet to be saved. A click saves now.
 */
class WriterAutoSaveCommand : public WriterStatusItem
{
    Q_OBJECT
public:
    Q_INVOKABLE WriterAutoSaveCommand(QObject* host, QObject* parent);
    void update() override;

protected:
    QWidget* createPocketWidget(QWidget* parent) override;
    void onTriggered() override;

private:
    QPointer<KAutoBackupControlButton> m_button;
};

#endif // WRITERSTATUS_H
