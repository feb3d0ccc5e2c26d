#ifndef KRBLOGICGROUPVISIBLETOGGLECOMMAND_H
#define KRBLOGICGROUPVISIBLETOGGLECOMMAND_H

#include <ktriggercommand.h>

class QWidget;

/**
 * Flips the ribbon of its main window between its states: shown (0), folded (1) and
 * folded but stuck open (2), and shows the icon of the next step ("iconHide",
 * "iconExtent", "iconStick"; all null until the description sets them).
 *
 * The ribbon is the header bar of the main window found for the host; it is asked for its
 * "status()" and told "setStatus(int, bool)" through its meta-object. Without a window or a
 * ribbon nothing happens.
 */
class NORVIKOFFICEUI_EXPORT KRbLogicGroupVisibleToggleCommand : public KTriggerCommand
{
    Q_OBJECT
    Q_PROPERTY(QIcon iconHide READ iconHide WRITE setIconHide)
    Q_PROPERTY(QIcon iconExtent READ iconExtent WRITE setIconExtent)
    Q_PROPERTY(QIcon iconStick READ iconStick WRITE setIconStick)
public:
    Q_INVOKABLE KRbLogicGroupVisibleToggleCommand(QObject* host, QObject* parent);
    ~KRbLogicGroupVisibleToggleCommand() override;

    QIcon iconHide() const { return m_iconHide; }
    void setIconHide(const QIcon& icon) { m_iconHide = icon; }
    QIcon iconExtent() const { return m_iconExtent; }
    void setIconExtent(const QIcon& icon) { m_iconExtent = icon; }
    QIcon iconStick() const { return m_iconStick; }
    void setIconStick(const QIcon& icon) { m_iconStick = icon; }

    /// Sets the icon by the ribbon's status, without touching the status.
    void update() override;

protected:
    void onTriggered() override;

private:
    QWidget* _ribbon() const;

    QIcon m_iconHide;
    QIcon m_iconExtent;
    QIcon m_iconStick;
};

#endif // KRBLOGICGROUPVISIBLETOGGLECOMMAND_H
