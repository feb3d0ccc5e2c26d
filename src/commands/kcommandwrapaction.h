#ifndef KCOMMANDWRAPACTION_H
#define KCOMMANDWRAPACTION_H

#include <QWidgetAction>

#include <kcommandobjectbridge.h>
#include <norvikofficeui_export.h>

/**
 * Lets a KCommand stand in a QToolBar, which holds actions. The action follows the command's
 * enabled and visible state; the widget that the tool bar shows is the command's pocket
 * widget, made when the tool bar asks for it. A tool button made so shows its mnemonic
 * (button style bit 16), the form of a button in a classic tool bar.
 */
class NORVIKOFFICEUI_EXPORT KCommandWrapAction : public KCommandObjectBridge<QWidgetAction>
{
    Q_OBJECT
public:
    KCommandWrapAction(KCommand* command, QObject* parent);
    ~KCommandWrapAction() override;

public Q_SLOTS:
    void syncCommand();

protected:
    QWidget* createWidget(QWidget* parent) override;
};

#endif // KCOMMANDWRAPACTION_H
