#ifndef KRBDONOTSHOWHOTKEYCOMMAND_H
#define KRBDONOTSHOWHOTKEYCOMMAND_H

#include <ktriggercommand.h>

/**
 * A trigger command whose button keeps a place in a layout without showing anything or
 * offering a key tip (a KRbDonotShowHotKeyToolButton).
 */
class NORVIKOFFICEUI_EXPORT KRbDonotShowHotKeyCommand : public KTriggerCommand
{
    Q_OBJECT
public:
    Q_INVOKABLE KRbDonotShowHotKeyCommand(QObject* host, QObject* parent);
    ~KRbDonotShowHotKeyCommand() override;

    QWidget* createPocketWidget(QWidget* parent) override;
};

#endif // KRBDONOTSHOWHOTKEYCOMMAND_H
