#ifndef KTRIGGERCOMMAND_H
#define KTRIGGERCOMMAND_H

#include <QPointer>

#include <kapicommand.h>

#include <ktoolbutton.h>

/**
 * The ordinary clickable item of a bar or menu. Its clone is always a plain KTriggerCommand
 * that forwards its triggered() to this command's trigger(), so classes derived from it
 * keep their behaviour through the clones.
 */
class NORVIKOFFICEUI_EXPORT KTriggerCommand : public KApiCommand
{
    Q_OBJECT
public:
    Q_INVOKABLE KTriggerCommand(QObject* host, QObject* parent);
    ~KTriggerCommand() override;

    KCommand* clone(QObject* host, QObject* parent) override;

    /// A KToolButton child of parent bound to this command; remembered as lastButton().
    QWidget* createPocketWidget(QWidget* parent) override;
    /// The last button made by createPocketWidget(), null once it is gone.
    KToolButton* lastButton() const { return m_lastButton.data(); }

protected:
    /// Binds a button made by a subclass and remembers it as the last one.
    QWidget* adoptButton(KToolButton* button);

private:
    QPointer<KToolButton> m_lastButton;
};

#endif // KTRIGGERCOMMAND_H
