#ifndef KPROCESSUPDATESVR_H
#define KPROCESSUPDATESVR_H

#include <QList>
#include <QObject>
#include <QPointer>

#include <norvikofficeui_export.h>

/**
 * Sends one process-update event (KEvent::ProcessUpdate) to each registered object when
 * the host calls onProcessUpdate(); the framework never calls it itself. Objects that die
 * while registered are skipped and dropped. Owned by the application
 * (KApplication::processUpdateSvr()); GUI thread only.
 */
class NORVIKOFFICEUI_EXPORT KProcessUpdateSvr : public QObject
{
    Q_OBJECT
public:
    struct puItem
    {
        QPointer<QObject> object;
    };

    KProcessUpdateSvr();
    ~KProcessUpdateSvr() override;

    /// Adds the object once; registering it again changes nothing. Null is ignored.
    void registerItem(QObject* object);
    void unregisterItem(QObject* object);
    bool isRegistered(QObject* object) const;

public Q_SLOTS:
    /// Sends the event synchronously to every live registered object, in registration order.
    /// Objects registered or unregistered by a receiver take effect at the next call.
    void onProcessUpdate();

private:
    QList<puItem> m_items;
};

#endif // KPROCESSUPDATESVR_H
