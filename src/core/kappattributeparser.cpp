#include "kappattributeparser.h"

#include <QCoreApplication>
#include <QDebug>
#include <QDir>

#include <kapplication.h>
#include <kappresourceloader.h>
#include <kapptheme.h>
#include <QFileInfo>
#include <QMetaType>

#include <kcommand.h>
#include <kcommands.h>

KAppAttributeParser::KAppAttributeParser(QObject* parent)
    : QObject(parent)
{
}

KAppAttributeParser::~KAppAttributeParser() = default;

// --- static parsers ---

bool KAppAttributeParser::parseBool(const QString& text)
{
    if (text.isEmpty())
        return false;
    bool ok = false;
    const int value = text.toInt(&ok, 10);
    if (ok && value == 0)
        return false;
    // Deliberately everything but "false" is true, "no" and "off" included: descriptions
    // are written with true/false or 1/0.
    return text.trimmed().toLower() != QLatin1String("false");
}

int KAppAttributeParser::parseInt(const QString& text, bool* ok)
{
    bool parsed = false;
    const int value = text.toInt(&parsed, 10);
    if (ok)
        *ok = parsed;
    return parsed ? value : -1;
}

double KAppAttributeParser::parseDouble(const QString& text, bool* ok)
{
    bool parsed = false;
    const double value = text.toDouble(&parsed);
    if (ok)
        *ok = parsed;
    return parsed ? value : -1.0;
}

KCommand* KAppAttributeParser::parseCommand(KCommands* commands, const QString& name)
{
    KCommand* cmd = commands ? commands->command(name) : nullptr;
    if (!cmd)
        qWarning().noquote() << "can not find command named:" << name;
    return cmd;
}

QIcon KAppAttributeParser::parseIcon(const QString& text)
{
    // Icon names resolve through the theme's resource loader, lazily: nothing is read until
    // the icon is first painted or measured.
    KApplication* app = KApplication::instance();
    if (!app || !app->theme() || !app->theme()->resLoader())
        return QIcon();
    return app->theme()->resLoader()->loadIcon(text);
}

QVariant KAppAttributeParser::parseColor(const QString& text)
{
    bool ok = false;
    const uint argb = text.toUInt(&ok, 16);
    return QVariant(ok ? argb : 0u);
}

QVariant KAppAttributeParser::parseEnum(const QMap<QString, int>& items, const QString& text)
{
    const auto it = items.constFind(text);
    if (it == items.constEnd()) {
        qWarning().noquote() << "Unknown enum:" << text;
        return QVariant();
    }
    return QVariant(it.value());
}

// --- the table ---

bool KAppAttributeParser::setupMainXml(const KDomDocument& mainDocument)
{
    const KDomElement element =
        mainDocument.documentElement().firstChildElement(QStringLiteral("attributes"));
    if (element.isNull())
        return false;
    const QString path = element.attribute(QStringLiteral("path"));
    if (path.isEmpty()) {
        qWarning().noquote() << "attributes at " << element.lineNumber() << ": "
                             << " need path attribute.";
        return false;
    }
    const QFileInfo file(QFileInfo(mainDocument.filePath()).absoluteDir(), path);
    if (!file.exists()) {
        qWarning().noquote() << "KAppAttributeParser: XML: file not exist:" << path;
        return false;
    }
    KDomDocument attributeDocument;
    if (!attributeDocument.setContent(file.absoluteFilePath()))
        return false;
    return setupXml(attributeDocument);
}

bool KAppAttributeParser::setupXml(const KDomDocument& attributeDocument)
{
    const KDomElement attributes =
        attributeDocument.documentElement().firstChildElement(QStringLiteral("attributes"));
    for (KDomElement e = attributes.firstChildElement(QStringLiteral("attribute")); !e.isNull();
         e = e.nextSiblingElement(QStringLiteral("attribute"))) {
        const QString name = e.attribute(QStringLiteral("name"));
        const int type = recognizedType(e.attribute(QStringLiteral("type")));
        if (type < 0)
            continue; // an unknown keyword leaves the attribute untyped, silently
        m_types.insert(name, static_cast<Type>(type));
        if (type == Enum)
            m_enums.insert(name, _parseEnumList(e));
    }
    return true;
}

int KAppAttributeParser::recognizedType(const QString& keyword) const
{
    static const QMap<QString, int> s_keywords = {
        {QStringLiteral("string"), String}, {QStringLiteral("command"), Command},
        {QStringLiteral("bool"), Bool},     {QStringLiteral("int"), Int},
        {QStringLiteral("icon"), Icon},     {QStringLiteral("enum"), Enum},
        {QStringLiteral("color"), Color},   {QStringLiteral("double"), Double},
    };
    if (keyword.isEmpty())
        return String;
    return s_keywords.value(keyword, -1);
}

void KAppAttributeParser::resetXml()
{
    m_types.clear();
    m_enums.clear();
}

int KAppAttributeParser::attributeType(const QString& name) const
{
    const auto it = m_types.constFind(name);
    return it == m_types.constEnd() ? -1 : int(it.value());
}

QMap<QString, int> KAppAttributeParser::_parseEnumList(const KDomElement& element) const
{
    // Items number themselves as in a C enumeration: upwards from 0 and from any explicit
    // value.
    QMap<QString, int> items;
    int counter = -1;
    for (KDomElement item = element.firstChildElement(QStringLiteral("item")); !item.isNull();
         item = item.nextSiblingElement(QStringLiteral("item"))) {
        int next = counter + 1;
        const QString name = item.attribute(QStringLiteral("name"));
        if (item.hasAttribute(QStringLiteral("value"))) {
            bool ok = false;
            const int explicitValue = item.attribute(QStringLiteral("value")).toInt(&ok, 10);
            if (ok)
                next = explicitValue;
            else
                qWarning().noquote() << "bad format, at line: " << element.lineNumber();
        }
        items.insert(name, next);
        counter = next;
    }
    return items;
}

// --- conversion ---

QVariant KAppAttributeParser::parseAttribute(const QString& name, const QString& text,
                                             KCommands* commands) const
{
    const auto it = m_types.constFind(name);
    if (it == m_types.constEnd())
        return QVariant();
    if (it.value() == Enum)
        return parseEnum(m_enums.value(name), text);
    return parseAttribute(it.value(), text, commands);
}

QVariant KAppAttributeParser::parseAttribute(KAppAttributeParser::Type type, const QString& text,
                                             KCommands* commands) const
{
    switch (type) {
    case String:
        return QVariant(text);
    case Command:
        return QVariant::fromValue<KCommand*>(parseCommand(commands, text));
    case Bool:
        return QVariant(parseBool(text));
    case Int:
        return QVariant(parseInt(text));
    case Icon:
        return QVariant(parseIcon(text));
    case Color:
        return parseColor(text);
    case Double:
        return QVariant(parseDouble(text));
    case Enum:
        break; // the items are only known by the attribute's name
    }
    return QVariant();
}

QVariant KAppAttributeParser::parseAttribute(int metaType, const QString& text,
                                             KCommands* commands) const
{
    static const int s_commandType = qMetaTypeId<KCommand*>();
    if (metaType == s_commandType)
        return parseAttribute(Command, text, commands);
    switch (metaType) {
    case QMetaType::Bool:
        return parseAttribute(Bool, text, commands);
    case QMetaType::Int:
        return parseAttribute(Int, text, commands);
    case QMetaType::QString:
        return parseAttribute(String, text, commands);
    case QMetaType::QIcon:
        return parseAttribute(Icon, text, commands);
    // Command classes also declare double and colour (uint ARGB) properties; they are read
    // the way the attribute table reads those types.
    case QMetaType::Double:
        return parseAttribute(Double, text, commands);
    case QMetaType::UInt:
        return parseAttribute(Color, text, commands);
    default:
        return QVariant();
    }
}
