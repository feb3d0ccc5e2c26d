#ifndef KNORVIKDESIGNERPLUGINS_H
#define KNORVIKDESIGNERPLUGINS_H

#include <QObject>
#include <QtUiPlugin/QDesignerCustomWidgetCollectionInterface>
#include <QtUiPlugin/QDesignerCustomWidgetInterface>
#include <functional>

/**
 * One of the framework's dialog controls as Qt Designer offers it: the group "NorvikOfficeUI",
 * the flat header named after the class, and an XML snippet with sensible first properties.
 */
class KDesignerWidgetPlugin : public QObject, public QDesignerCustomWidgetInterface
{
    Q_OBJECT
    Q_INTERFACES(QDesignerCustomWidgetInterface)
public:
    using Factory = std::function<QWidget*(QWidget*)>;
    /// properties: <property> elements for the control's first appearance on a form.
    KDesignerWidgetPlugin(const QString& className, const QString& toolTip, const QString& properties,
                          Factory factory, QObject* parent);

    QString name() const override { return m_className; }
    QString group() const override;
    QString toolTip() const override { return m_toolTip; }
    QString whatsThis() const override { return m_toolTip; }
    QString includeFile() const override;
    QIcon icon() const override;
    bool isContainer() const override { return false; }
    QWidget* createWidget(QWidget* parent) override;
    bool isInitialized() const override { return m_initialized; }
    void initialize(QDesignerFormEditorInterface* core) override;
    QString domXml() const override;

private:
    QString m_className;
    QString m_toolTip;
    QString m_properties;
    Factory m_factory;
    bool m_initialized = false;
};

/// The collection Qt Designer loads: the unit control, the spin controls, the duration field
/// and the password field.
class KNorvikDesignerPlugins : public QObject, public QDesignerCustomWidgetCollectionInterface
{
    Q_OBJECT
    Q_PLUGIN_METADATA(IID "org.qt-project.Qt.QDesignerCustomWidgetCollectionInterface")
    Q_INTERFACES(QDesignerCustomWidgetCollectionInterface)
public:
    explicit KNorvikDesignerPlugins(QObject* parent = nullptr);

    QList<QDesignerCustomWidgetInterface*> customWidgets() const override { return m_widgets; }

private:
    QList<QDesignerCustomWidgetInterface*> m_widgets;
};

#endif // KNORVIKDESIGNERPLUGINS_H
