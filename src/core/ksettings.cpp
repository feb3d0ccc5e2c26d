#include "ksettings.h"

#include <QCoreApplication>
#include <QDomDocument>
#include <QIODevice>
#include <QTextStream>

#include <kapplication.h>

QSettings::Format KSettings::XmlFormat = QSettings::InvalidFormat;

bool _Version::IsUsbVersion()
{
    static bool s_read = false;
    static bool s_usb = false;
    if (!s_read) {
        QSettings setup(QCoreApplication::applicationDirPath() + QStringLiteral("/cfgs/setup.cfg"),
                        QSettings::IniFormat);
        setup.beginGroup(QStringLiteral("Local"));
        s_usb = setup.value(QStringLiteral("USBVersion"), false).toBool();
        setup.endGroup();
        s_read = true;
    }
    return s_usb;
}

namespace {

void readElement(const QDomElement& element, const QString& prefix, QSettings::SettingsMap& map)
{
    const QDomNamedNodeMap attributes = element.attributes();
    for (int i = 0; i < attributes.count(); ++i) {
        const QDomAttr attr = attributes.item(i).toAttr();
        if (attr.name() == QLatin1String("id"))
            continue; // the group's own name, never a value
        map.insert(prefix + attr.name(), QVariant(attr.value()));
    }
    for (QDomElement child = element.firstChildElement(); !child.isNull();
         child = child.nextSiblingElement()) {
        if (child.tagName() != QLatin1String("key"))
            continue;
        readElement(child, prefix + child.attribute(QStringLiteral("id")) + QLatin1Char('/'), map);
    }
}

void placeValue(QDomDocument& doc, QDomElement current, QString key, const QVariant& value)
{
    for (;;) {
        const int slash = key.indexOf(QLatin1Char('/'));
        if (slash < 0) {
            current.setAttribute(key, value.toString());
            return;
        }
        const QString group = key.left(slash);
        // Deliberately a search through all descendants: files written by earlier releases
        // nest keys this way, and reading them back must give the same paths.
        QDomElement next = _Xml::_findElement(current, group);
        if (next.isNull()) {
            next = doc.createElement(QStringLiteral("key"));
            next.setAttribute(QStringLiteral("id"), group);
            current.appendChild(next);
        }
        current = next;
        key = key.mid(slash + 1);
    }
}

} // namespace

QDomElement _Xml::_findElement(const QDomElement& element, const QString& id)
{
    const QDomNodeList keys = element.elementsByTagName(QStringLiteral("key"));
    for (int i = 0; i < keys.count(); ++i) {
        const QDomElement e = keys.item(i).toElement();
        if (e.attribute(QStringLiteral("id")) == id)
            return e;
    }
    return QDomElement();
}

bool _Xml::readXmlFile(QIODevice& device, QSettings::SettingsMap& map)
{
    QDomDocument doc;
    if (!doc.setContent(&device))
        return false;
    const QDomElement root = doc.documentElement();
    if (root.tagName() != QLatin1String("registry"))
        return false;
    readElement(root, QString(), map);
    return true;
}

bool _Xml::writeXmlFile(QIODevice& device, const QSettings::SettingsMap& map)
{
    QDomDocument doc;
    QDomElement root = doc.createElement(QStringLiteral("registry"));
    doc.appendChild(root);
    for (auto it = map.constBegin(); it != map.constEnd(); ++it)
        placeValue(doc, root, it.key(), it.value());
    doc.insertBefore(doc.createProcessingInstruction(QStringLiteral("xml"),
                                                     QStringLiteral("version=\"1.0\" encoding=\"UTF-8\"")),
                     root);
    QTextStream stream(&device);
    stream.setEncoding(QStringConverter::Utf8);
    doc.save(stream, 4);
    return true;
}

namespace {
bool readFunc(QIODevice& device, QSettings::SettingsMap& map)
{
    return _Xml::readXmlFile(device, map);
}

bool writeFunc(QIODevice& device, const QSettings::SettingsMap& map)
{
    return _Xml::writeXmlFile(device, map);
}
} // namespace

KSettings::KSettings()
    : QSettings(_format(), QSettings::UserScope, _organizationName(), _productName(), nullptr)
{
}

KSettings::~KSettings() = default;

QString KSettings::_productName()
{
    if (_Version::IsUsbVersion())
        return QStringLiteral("shell");
    KApplication* app = KApplication::instance();
    return app ? app->productName() : QCoreApplication::applicationName();
}

QString KSettings::_organizationName()
{
    if (_Version::IsUsbVersion())
        return QStringLiteral("cfgs");
    return QCoreApplication::organizationName();
}

QSettings::Format KSettings::_format()
{
    return _Version::IsUsbVersion() ? _registerXmlFormat() : QSettings::NativeFormat;
}

QSettings::Format KSettings::_registerXmlFormat()
{
    if (XmlFormat != QSettings::InvalidFormat)
        return XmlFormat;
    const QSettings::Format format =
        QSettings::registerFormat(QStringLiteral("cfg"), readFunc, writeFunc, Qt::CaseSensitive);
    if (format == QSettings::InvalidFormat)
        return QSettings::NativeFormat;
    // The file then lies at "<program dir>/cfgs/shell.cfg": beside the program on the drive.
    QSettings::setPath(format, QSettings::UserScope, QCoreApplication::applicationDirPath());
    XmlFormat = format;
    return XmlFormat;
}
