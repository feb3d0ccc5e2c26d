#ifndef KCOMMANDFACTORY_H
#define KCOMMANDFACTORY_H

#include <QDebug>
#include <QObject>
#include <QString>

#include <norvikofficeui_export.h>

class KCommand;

/**
 * One class of the command factory: makes a command of its class by name. Items are
 * file-level statics (see KCommandFactoryItem), so the factory is filled before a host's
 * main() runs.
 */
class NORVIKOFFICEUI_EXPORT KCommandFactoryItemBase
{
public:
    explicit KCommandFactoryItemBase(const QString& className);
    virtual ~KCommandFactoryItemBase();
    KCommandFactoryItemBase(const KCommandFactoryItemBase&) = delete;
    KCommandFactoryItemBase& operator=(const KCommandFactoryItemBase&) = delete;

    QString className() const { return m_className; }
    /// A new command owned by parent, or null when the host does not fit the class.
    virtual KCommand* create(QObject* host, QObject* parent) = 0;

private:
    QString m_className;
};

/**
 * Registers class T under a name for the lifetime of the item. T is built as
 * T(host, parent) and only for a host that is an H (a null host never is):
 *
 *     static KCommandFactoryItem<KMyCommand, QObject> s_item("KMyCommand", "QObject");
 *
 * A second item of the same name replaces the first, so a host may swap a framework class.
 */
template <class T, class H>
class KCommandFactoryItem : public KCommandFactoryItemBase
{
public:
    KCommandFactoryItem(const QString& className, const QString& hostClassName)
        : KCommandFactoryItemBase(className)
        , m_hostClassName(hostClassName)
    {
        registerSelf();
    }
    ~KCommandFactoryItem() override { unregisterSelf(); }

    QString hostClassName() const { return m_hostClassName; }

    KCommand* create(QObject* host, QObject* parent) override
    {
        if (H* h = qobject_cast<H*>(host))
            return new T(h, parent);
        qWarning().noquote() << className() << "need a host" << m_hostClassName;
        return nullptr;
    }

private:
    void registerSelf();
    void unregisterSelf();
    QString m_hostClassName;
};

/**
 * The process-wide table of command classes by name. The framework's classes register
 * themselves; a host adds its own (with a KCommandFactoryItem) before the description is
 * read.
 */
class NORVIKOFFICEUI_EXPORT KCommandFactory
{
public:
    /// Replaces an earlier item of the same class name.
    static void registerCommand(KCommandFactoryItemBase* item);
    /// Removes the entry of the item's name only while it still is this item.
    static void unregisterCommand(KCommandFactoryItemBase* item);
    /// Null for an unknown name or a host that does not fit the class.
    static KCommand* createCommand(const QString& className, QObject* host, QObject* parent);
    /// The item registered under the name, or null.
    static KCommandFactoryItemBase* item(const QString& className);
};

template <class T, class H>
void KCommandFactoryItem<T, H>::registerSelf()
{
    KCommandFactory::registerCommand(this);
}

template <class T, class H>
void KCommandFactoryItem<T, H>::unregisterSelf()
{
    KCommandFactory::unregisterCommand(this);
}

#endif // KCOMMANDFACTORY_H
