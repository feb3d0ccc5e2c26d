// The Qt Designer plugin as Designer sees it: it loads, names its collection's interface, and
// each of its widgets is made as the class it announces, with a form snippet Designer can read.
#include <ktestsupport.h>

#include <QDomDocument>
#include <QPluginLoader>

#ifdef NORVIK_DESIGNER_PLUGIN
#include <QtUiPlugin/QDesignerCustomWidgetCollectionInterface>
#endif

#include <kunitctrl.h>

class tst_KDesignerPlugin : public QObject
{
    Q_OBJECT
private Q_SLOTS:
    void loadsAndMakesEachWidget();
};

void tst_KDesignerPlugin::loadsAndMakesEachWidget()
{
#ifndef NORVIK_DESIGNER_PLUGIN
    QSKIP("The Designer plugin is not built: Qt's Designer module was not found.");
#else
    QPluginLoader loader(QStringLiteral(NORVIK_DESIGNER_PLUGIN));
    QVERIFY2(loader.load(), qPrintable(loader.errorString()));
    QCOMPARE(loader.metaData().value("IID").toString(),
             QString("org.qt-project.Qt.QDesignerCustomWidgetCollectionInterface"));
    auto* collection = qobject_cast<QDesignerCustomWidgetCollectionInterface*>(loader.instance());
    QVERIFY(collection);

    QStringList names;
    for (QDesignerCustomWidgetInterface* plugin : collection->customWidgets()) {
        const QString name = plugin->name();
        names << name;
        QWidget form;
        QWidget* widget = plugin->createWidget(&form);
        QVERIFY(widget);
        QCOMPARE(QString(widget->metaObject()->className()), name);
        QCOMPARE(widget->parentWidget(), &form);
        QCOMPARE(plugin->includeFile(), name.toLower() + ".h");
        QCOMPARE(plugin->group(), QString("NorvikOfficeUI"));
        QVERIFY(!plugin->isContainer());
        QVERIFY(!plugin->toolTip().isEmpty());

        QDomDocument snippet;
        QVERIFY2(snippet.setContent(plugin->domXml()), qPrintable(plugin->domXml()));
        const QDomElement element = snippet.documentElement().firstChildElement("widget");
        QCOMPARE(element.attribute("class"), name);
        // Each property the snippet sets is one the widget has.
        for (QDomElement p = element.firstChildElement("property"); !p.isNull(); p = p.nextSiblingElement("property"))
            QVERIFY2(widget->metaObject()->indexOfProperty(qPrintable(p.attribute("name"))) >= 0,
                     qPrintable(name + "." + p.attribute("name")));
    }
    QCOMPARE(names, QStringList({"KUnitCtrl", "KDoubleSpinBox", "KxSpinBoxCtrl", "KxDblSpinBoxCtrl",
                                 "KSecondsEdit", "KPwdLineEdit"}));

    // The first units Designer gives a unit control make a working length field.
    QDesignerCustomWidgetInterface* unitPlugin = collection->customWidgets().constFirst();
    QDomDocument snippet;
    QVERIFY(snippet.setContent(unitPlugin->domXml()));
    const QString units = snippet.documentElement().firstChildElement("widget").firstChildElement("property")
                              .firstChildElement("stringlist").firstChildElement("string").text();
    QWidget form;
    auto* unit = qobject_cast<KUnitCtrl*>(unitPlugin->createWidget(&form));
    QVERIFY(unit);
    unit->setProperty("units", QStringList{units});
    QCOMPARE(unit->currentUnitName(), QString("cm"));
    unit->setValue(2.5);
    QCOMPARE(unit->cleanText(), QString("2.5"));
#endif
}

NORVIK_TEST_MAIN(tst_KDesignerPlugin)
#include "tst_kdesignerplugin.moc"
