#ifndef KSETTINGS_H
#define KSETTINGS_H

#include <QDomElement>
#include <QSettings>

#include <norvikofficeui_export.h>

class QIODevice;

/**
 * The QSettings of the framework; every user setting goes through it.
 *
 * On a normal installation it is a native QSettings named by the application's organisation
 * and KApplication::productName(). On a portable installation ("USBVersion=true" in the group
 * "Local" of "<program dir>/cfgs/setup.cfg") everything lies in the XML file
 * "<program dir>/cfgs/shell.cfg" instead. The host sets the organisation and product names
 * before the first KSettings is made. Use it as a short-lived object on the stack.
 */
class NORVIKOFFICEUI_EXPORT KSettings : public QSettings
{
    Q_OBJECT
public:
    KSettings();
    ~KSettings() override;

    /// The registered XML format; QSettings::InvalidFormat until the first portable KSettings.
    static QSettings::Format XmlFormat;

private:
    // Static: they compute the base class's constructor arguments, before the object exists.
    static QString _productName();
    static QString _organizationName();
    static QSettings::Format _format();
    static QSettings::Format _registerXmlFormat();
};

namespace _Version {
/// Whether this installation is portable; read once per process from "cfgs/setup.cfg".
NORVIKOFFICEUI_EXPORT bool IsUsbVersion();
}

/**
 * The portable settings file: a "registry" root, groups as nested "key" elements named by
 * their "id", values as attributes of their group's element. All values read back as strings.
 */
namespace _Xml {
NORVIKOFFICEUI_EXPORT bool readXmlFile(QIODevice& device, QSettings::SettingsMap& map);
NORVIKOFFICEUI_EXPORT bool writeXmlFile(QIODevice& device, const QSettings::SettingsMap& map);
/// The first "key" element below element (at any depth, in document order) with that id.
NORVIKOFFICEUI_EXPORT QDomElement _findElement(const QDomElement& element, const QString& id);
}

#endif // KSETTINGS_H
