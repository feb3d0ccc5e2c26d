#include "knorvikdesignerplugins.h"

#include <QIcon>

#include <kdoublespinbox.h>
#include <kpwdlineedit.h>
#include <ksecondsedit.h>
#include <kunitctrl.h>
#include <kxdblspinboxctrl.h>
#include <kxspinboxctrl.h>

KDesignerWidgetPlugin::KDesignerWidgetPlugin(const QString& className, const QString& toolTip,
                                             const QString& properties, Factory factory, QObject* parent)
    : QObject(parent)
    , m_className(className)
    , m_toolTip(toolTip)
    , m_properties(properties)
    , m_factory(std::move(factory))
{
}

QString KDesignerWidgetPlugin::group() const
{
    return QStringLiteral("NorvikOfficeUI");
}

QString KDesignerWidgetPlugin::includeFile() const
{
    // The installed headers are flat and named after their class.
    return m_className.toLower() + QStringLiteral(".h");
}

QIcon KDesignerWidgetPlugin::icon() const
{
    return QIcon();
}

QWidget* KDesignerWidgetPlugin::createWidget(QWidget* parent)
{
    return m_factory(parent);
}

void KDesignerWidgetPlugin::initialize(QDesignerFormEditorInterface*)
{
    m_initialized = true;
}

QString KDesignerWidgetPlugin::domXml() const
{
    // The object name starts in lower case, as Designer names its own widgets.
    QString objectName = m_className;
    objectName[0] = objectName.at(0).toLower();
    return QStringLiteral("<ui language=\"c++\"><widget class=\"%1\" name=\"%2\">%3</widget></ui>")
        .arg(m_className, objectName, m_properties);
}

namespace {
template <typename T>
KDesignerWidgetPlugin::Factory make()
{
    return [](QWidget* parent) -> QWidget* { return new T(parent); };
}
} // namespace

KNorvikDesignerPlugins::KNorvikDesignerPlugins(QObject* parent)
    : QObject(parent)
{
    // A new unit control on a form offers lengths, with centimetres as the host's unit.
    const QString lengths = QStringLiteral(
        "<property name=\"units\"><stringlist><string>cm,2,55.88,0,0.1</string></stringlist></property>");
    m_widgets = {
        new KDesignerWidgetPlugin(QStringLiteral("KUnitCtrl"), tr("A measure with its unit; units may be typed"),
                                  lengths, make<KUnitCtrl>(), this),
        new KDesignerWidgetPlugin(QStringLiteral("KDoubleSpinBox"), tr("A number field without trailing zeros"),
                                  QString(), make<KDoubleSpinBox>(), this),
        new KDesignerWidgetPlugin(QStringLiteral("KxSpinBoxCtrl"),
                                  tr("An integer field that reports what is out of range"), QString(),
                                  make<KxSpinBoxCtrl>(), this),
        new KDesignerWidgetPlugin(QStringLiteral("KxDblSpinBoxCtrl"),
                                  tr("A decimal field that reports what is out of range"), QString(),
                                  make<KxDblSpinBoxCtrl>(), this),
        new KDesignerWidgetPlugin(QStringLiteral("KSecondsEdit"), tr("A duration in minutes and seconds"),
                                  QString(), make<KSecondsEdit>(), this),
        new KDesignerWidgetPlugin(QStringLiteral("KPwdLineEdit"),
                                  tr("A password field that warns of Caps Lock and refuses copying"), QString(),
                                  make<KPwdLineEdit>(), this),
    };
}
