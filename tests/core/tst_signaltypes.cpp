#include <ktestsupport.h>

#include <QMetaMethod>

// Only the headers that declare the signals, as a host includes them: whatever type their
// signals name must be complete through them.
#include <kabstractlistcommand.h>
#include <kapplication.h>
#include <kcommand.h>
#include <kcommandbarprop.h>
#include <kcommands.h>
#include <klistcommand.h>
#include <kdoctabbar.h>
#include <kmainwindow.h>
#include <kmdiarea.h>
#include <kstatusbar.h>
#include <ktoolbutton.h>

namespace {
// A pointer type as this file sees it: an object pointer only when the class is complete here.
template <class T>
bool isObjectPointerHere()
{
    return QMetaType::fromType<T*>().flags().testFlag(QMetaType::PointerToQObject);
}
} // namespace

// Every argument type in the framework's signals is known to the meta-type system, so that a
// host can record the signals with QSignalSpy and carry them over queued connections.
class tst_SignalTypes : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void signalArgumentsHaveMetaTypes_data();
    void signalArgumentsHaveMetaTypes();
    void signalTypesCompleteInTheirHeaders();
    void barPropSignalsCrossQueuedConnections();
};

void tst_SignalTypes::signalArgumentsHaveMetaTypes_data()
{
    QTest::addColumn<const QMetaObject*>("meta");
    // Every class of the framework that declares signals of its own.
    const QMetaObject* classes[] = {
        &KAbstractListCommand::staticMetaObject, &KApplication::staticMetaObject,
        &KCommand::staticMetaObject,             &KCommandBarProp::staticMetaObject,
        &KMainWindow::staticMetaObject,          &KToolButton::staticMetaObject,
        &KMdiArea::staticMetaObject,             &KDocTabbarEx::staticMetaObject,
        &KDocTabbar::staticMetaObject,           &KDocTab::staticMetaObject,
        &KDocTabbarLayout::staticMetaObject,     &KDocTabbarArrowButton::staticMetaObject,
        &KStatusBarLabel::staticMetaObject,
    };
    for (const QMetaObject* meta : classes)
        QTest::newRow(meta->className()) << meta;
}

void tst_SignalTypes::signalArgumentsHaveMetaTypes()
{
    QFETCH(const QMetaObject*, meta);
    for (int m = meta->methodOffset(); m < meta->methodCount(); ++m) {
        const QMetaMethod method = meta->method(m);
        if (method.methodType() != QMetaMethod::Signal)
            continue;
        for (int i = 0; i < method.parameterCount(); ++i) {
            const QMetaType type = method.parameterMetaType(i);
            const QByteArray what = method.methodSignature() + " argument " + QByteArray::number(i);
            QVERIFY2(type.isValid(), what.constData());
            // A pointer is either an object pointer that QVariant can hand out as a QObject*,
            // or a pointer to a value type the meta-type system knows (double*, ...). A
            // pointer to a class that was only forward declared is neither.
            const QByteArray name = type.name();
            if (!name.endsWith('*'))
                continue;
            const bool objectPointer = type.flags().testFlag(QMetaType::PointerToQObject);
            const bool valuePointer = QMetaType::fromName(name.chopped(1).trimmed()).isValid();
            QVERIFY2(objectPointer || valuePointer, (what + " of type " + name).constData());
        }
    }
}

void tst_SignalTypes::signalTypesCompleteInTheirHeaders()
{
    QVERIFY(isObjectPointerHere<QToolBar>());
    QVERIFY(isObjectPointerHere<KCommand>());
}

void tst_SignalTypes::barPropSignalsCrossQueuedConnections()
{
    KMainWindow window;
    auto* list = new KListCommand(&window, window.commands());
    KCommandBarProp props(list, &window);
    KCommand* received = nullptr;
    QObject context;
    connect(&props, &KCommandBarProp::posChanged, &context, [&](KCommand* cmd) { received = cmd; },
            Qt::QueuedConnection);
    QSignalSpy spy(&props, &KCommandBarProp::posChanged);
    props.setPosition(2);
    QTRY_COMPARE(received, static_cast<KCommand*>(list));
    QCOMPARE(spy.count(), 1);
    QCOMPARE(spy.first().at(0).value<QObject*>(), static_cast<QObject*>(list));
}

NORVIK_TEST_MAIN(tst_SignalTypes)
#include "tst_signaltypes.moc"
