#include "kdomelement.h"

#include <QApplication>
#include <QCoreApplication>
#include <QDebug>
#include <QDomNamedNodeMap>
#include <QSettings>
#include <QStyle>

#include "kapplication.h"
#include <korbstyle.h>

KDomElement::KDomElement()
{
    setFilterAttribute();
}

KDomElement::KDomElement(const KDomElement& other)
    : m_context(other.m_context)
    , m_parentContext(other.m_parentContext)
    , m_element(other.m_element)
{
    setFilterAttribute();
}

KDomElement::KDomElement(const QDomElement& element, const QByteArray& context)
    : m_context(context)
    , m_parentContext(context)
    , m_element(element)
{
    if (m_element.hasAttribute(QStringLiteral("tc"))) {
        const QByteArray tc = m_element.attribute(QStringLiteral("tc")).toUtf8();
        if (!m_context.isEmpty())
            m_context.append('.');
        m_context.append(tc);
    }
    setFilterAttribute();
}

KDomElement& KDomElement::operator=(const KDomElement& other)
{
    m_context = other.m_context;
    m_parentContext = other.m_parentContext;
    m_element = other.m_element;
    return *this;
}

QString KDomElement::attribute(const QString& name, const QString& defaultValue) const
{
    const QString value = m_element.attribute(name, defaultValue);
    if (value.size() < 2 || value.at(0) != QLatin1Char('@'))
        return value;
    const QByteArray source = value.mid(1).toUtf8();
    return QCoreApplication::translate(m_context.constData(), source.constData());
}

QStringList KDomElement::attributes() const
{
    QStringList names;
    const QDomNamedNodeMap map = m_element.attributes();
    names.reserve(map.count());
    for (int i = 0; i < map.count(); ++i)
        names.append(map.item(i).nodeName());
    return names;
}

KDomElement KDomElement::firstChildElement(const QString& tagName) const
{
    QDomElement e = m_element.firstChildElement(tagName);
    while (!e.isNull() && needFilter(e))
        e = e.nextSiblingElement(tagName);
    return KDomElement(e, m_context);
}

KDomElement KDomElement::nextSiblingElement(const QString& tagName) const
{
    QDomElement e = m_element.nextSiblingElement(tagName);
    while (!e.isNull() && needFilter(e))
        e = e.nextSiblingElement(tagName);
    return KDomElement(e, m_parentContext);
}

bool KDomElement::needFilter(const QDomElement& element) const
{
    if (!element.hasAttribute(QStringLiteral("filter")))
        return false;
    const QString value = element.attribute(QStringLiteral("filter"));
    // A filter with assignments never hides its element: only the assignments depend on it.
    const bool hasAssignments = value.split(QLatin1Char(':')).size() > 1;
    return !isThroughFilter(value) && !hasAssignments;
}

bool KDomElement::isThroughFilter(const QString& text) const
{
    const QStringList parts = text.split(QLatin1Char(':'));
    const QStringList conditions = parts.first().split(QLatin1Char(';'));
    for (QString cond : conditions) {
        QString key;
        QString value;
        const CONDITION_TYPE type = condition(cond, key, value);
        if (type == CONDITION_INVALID)
            return true; // a malformed condition lets the element through
        QString actual;
        if (key == QLatin1String("lang")) {
            actual = getLang();
        } else if (key == QLatin1String("category")) {
            actual = getCategory();
        } else if (key == QLatin1String("platform")) {
            actual = getPlatform();
        } else if (key.startsWith(QLatin1String("oem_"))) {
            actual = getOemValue(key.mid(4));
        } else if (key == QLatin1String("kstyle")) {
            actual = getStyleName();
        } else {
            qWarning() << "filter format error!";
            continue;
        }
        if (!dealCondition(actual, value, type))
            return false;
    }
    return true;
}

KDomElement::CONDITION_TYPE KDomElement::condition(QString& text, QString& key, QString& value) const
{
    CONDITION_TYPE type = CONDITION_INVALID;
    QStringList parts = text.split(QStringLiteral("!="));
    if (parts.size() == 2) {
        type = CONDITION_NOTEQUAL;
    } else if (parts.size() == 1) {
        parts = text.split(QLatin1Char('='));
        if (parts.size() == 2)
            type = CONDITION_EQUAL;
    }
    if (type != CONDITION_INVALID) {
        key = parts.at(0).trimmed();
        value = parts.at(1).trimmed();
    }
    return type;
}

bool KDomElement::dealCondition(const QString& actual, const QString& list, CONDITION_TYPE type) const
{
    if (type == CONDITION_EQUAL)
        return isMatch(actual, list);
    if (type == CONDITION_NOTEQUAL)
        return !isMatch(actual, list);
    return true;
}

bool KDomElement::isMatch(const QString& actual, const QString& list) const
{
    const QStringList values = list.split(QLatin1Char(','));
    for (const QString& v : values) {
        if (v.trimmed() == actual)
            return true;
    }
    return false;
}

void KDomElement::setFilterAttribute()
{
    if (!m_element.hasAttribute(QStringLiteral("filter")))
        return;
    const QString value = m_element.attribute(QStringLiteral("filter"));
    const QStringList parts = value.split(QLatin1Char(':'));
    if (parts.size() <= 1 || !isThroughFilter(value))
        return;
    // Only the part behind the last ":" holds assignments; text between the first and the
    // last ":" is ignored.
    const QStringList pieces = parts.last().split(QLatin1Char(';'));
    for (const QString& piece : pieces) {
        const QStringList fields = piece.split(QLatin1Char('='));
        if (fields.size() >= 2)
            m_element.setAttribute(fields.first(), fields.last());
    }
}

QString KDomElement::getLang() const
{
    if (KApplication* app = KApplication::instance())
        return app->currentLanguageName();
    return QString();
}

QString KDomElement::getCategory() const
{
    if (KApplication* app = KApplication::instance())
        return app->category();
    return QString();
}

QString KDomElement::getPlatform() const
{
    return QStringLiteral("unix");
}

QString KDomElement::getOemValue(const QString& key) const
{
    // Read afresh each time: conditions are evaluated only while descriptions load.
    QSettings oem(QCoreApplication::applicationDirPath() + QStringLiteral("/cfgs/oem.ini"),
                  QSettings::IniFormat);
    oem.beginGroup(QStringLiteral("Setup"));
    return oem.value(key).toString();
}

QString KDomElement::getStyleName() const
{
    if (!qobject_cast<QApplication*>(QCoreApplication::instance()))
        return QString();
    // Only the framework's own styles answer the "kstyle" key; any other style reads empty.
    auto* style = qobject_cast<KORBStyle*>(QApplication::style());
    return style ? style->styleName() : QString();
}
