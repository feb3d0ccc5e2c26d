#ifndef KSCENEBASE_H
#define KSCENEBASE_H

#include <QList>
#include <QMetaObject>
#include <QObject>

template <typename Func> class KSceneItem;

/**
 * A table of functions keyed by class. match() walks the class chain of an object from its
 * most derived class up to QObject and returns the function of the first registered class
 * it meets; an object of no registered class gets the default function.
 *
 * Items register themselves (see KSceneItem) and may die before or after their scene: the
 * scene clears the owner of every remaining item when it goes, so the destruction order of
 * static tables does not matter.
 */
template <typename Func>
class KSceneBase
{
public:
    explicit KSceneBase(Func defaultFunc)
        : m_default(defaultFunc)
    {
    }
    ~KSceneBase() { _reset(); }
    KSceneBase(const KSceneBase&) = delete;
    KSceneBase& operator=(const KSceneBase&) = delete;

    void registerItem(KSceneItem<Func>* item) { m_items.append(item); }
    void unregisterItem(KSceneItem<Func>* item) { m_items.removeAll(item); }

    Func defaultFunction() const { return m_default; }

    /// The function of the most derived registered class of obj; the default otherwise.
    Func match(const QObject* obj) const
    {
        if (!obj)
            return m_default;
        for (const QMetaObject* mo = obj->metaObject(); mo; mo = mo->superClass()) {
            // Within one class the earliest registration wins.
            for (const KSceneItem<Func>* item : m_items) {
                if (item->metaObject() == mo)
                    return item->function();
            }
        }
        return m_default;
    }

private:
    void _reset()
    {
        for (KSceneItem<Func>* item : m_items)
            item->m_scene = nullptr;
        m_items.clear();
    }

    QList<KSceneItem<Func>*> m_items;
    Func m_default;
};

/**
 * One entry of a KSceneBase: the class it stands for and its function. It registers itself
 * in its scene on construction and leaves it on destruction. A host gives a class of its own
 * a behaviour of its own with a static item.
 */
template <typename Func>
class KSceneItem
{
public:
    KSceneItem(KSceneBase<Func>* scene, const QMetaObject* metaObject, Func func)
        : m_metaObject(metaObject)
        , m_func(func)
        , m_scene(scene)
    {
        if (m_scene)
            m_scene->registerItem(this);
    }
    ~KSceneItem()
    {
        if (m_scene)
            m_scene->unregisterItem(this);
    }
    KSceneItem(const KSceneItem&) = delete;
    KSceneItem& operator=(const KSceneItem&) = delete;

    const QMetaObject* metaObject() const { return m_metaObject; }
    Func function() const { return m_func; }
    KSceneBase<Func>* scene() const { return m_scene; }

private:
    friend class KSceneBase<Func>;
    const QMetaObject* m_metaObject;
    Func m_func;
    KSceneBase<Func>* m_scene;
};

#endif // KSCENEBASE_H
