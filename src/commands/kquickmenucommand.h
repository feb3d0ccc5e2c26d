#ifndef KQUICKMENUCOMMAND_H
#define KQUICKMENUCOMMAND_H

#include <QPointer>

#include <klistcommand.h>

/**
 * A split button whose face is always one of its items: the item triggered last becomes
 * the "referenceCommand", whose text, icon and hints the list then shows, and a click on
 * the face triggers it again. Without a reference the list shows disabled (but visible)
 * and a click does nothing.
 */
class NORVIKOFFICEUI_EXPORT KQuickMenuCommand : public KListCommand
{
    Q_OBJECT
    Q_PROPERTY(KCommand* referenceCommand READ referenceCommand WRITE setReferenceCommand)
public:
    Q_INVOKABLE KQuickMenuCommand(QObject* host, QObject* parent);
    ~KQuickMenuCommand() override;

    bool isTriggerable() const override;
    /// A KQuickMenuButton, made as a list's menu button is.
    QWidget* createPocketWidget(QWidget* parent) override;
    KCommand* referenceCommand() const { return m_referenceCommand.data(); }
    void setReferenceCommand(KCommand* command);

    /// Updates the items when there is a reference, and follows their enablement.
    void update() override;
    /// A KQuickMenuCommand with clones of the items, and a clone of the reference.
    KCommand* clone(QObject* host, QObject* parent) override;

    /// Whether any item is enabled; else the reference's enablement.
    bool hasEnableSubCommand() const;

public Q_SLOTS:
    void syncCommand();

protected:
    void onTriggered() override;
    void updateSubCommand();

private Q_SLOTS:
    void onSubCommandInserted(int idx, KCommand* cmd);
    void onSubCommandRemoved(int idx);
    void onReferenceCommandChanged();

private:
    QPointer<KCommand> m_referenceCommand;
};

#endif // KQUICKMENUCOMMAND_H
