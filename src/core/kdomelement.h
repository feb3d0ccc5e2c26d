#ifndef KDOMELEMENT_H
#define KDOMELEMENT_H

#include <QByteArray>
#include <QDomElement>
#include <QString>
#include <QStringList>

#include <norvikofficeui_export.h>

/**
 * An element of a framework XML document. Adds to QDomElement:
 * - the "filter" attribute: an element whose conditions fail does not exist for any reader,
 *   and assignments behind the last ":" rewrite attributes when the conditions hold;
 * - translation of attribute values that start with "@", in a context built from the "tc"
 *   attributes down the tree.
 * Constructing or copying a wrapper applies the filter's assignments to the shared DOM tree.
 */
class NORVIKOFFICEUI_EXPORT KDomElement
{
public:
    enum CONDITION_TYPE { CONDITION_INVALID = 0, CONDITION_EQUAL = 1, CONDITION_NOTEQUAL = 2 };

    KDomElement();
    KDomElement(const KDomElement& other);
    KDomElement(const QDomElement& element, const QByteArray& context);
    KDomElement& operator=(const KDomElement& other);

    bool isNull() const { return m_element.isNull(); }
    bool hasAttribute(const QString& name) const { return m_element.hasAttribute(name); }
    int lineNumber() const { return m_element.lineNumber(); }
    QString tagName() const { return m_element.tagName(); }

    /// The value, translated when it starts with "@" and is longer than that.
    QString attribute(const QString& name, const QString& defaultValue = QString()) const;
    /// Names of all attributes, in the order of the DOM's attribute map.
    QStringList attributes() const;

    /// The first child (of the tag, or any tag for a null string) that passes its filter.
    KDomElement firstChildElement(const QString& tagName = QString()) const;
    /// The next sibling (of the tag, or any tag for a null string) that passes its filter.
    KDomElement nextSiblingElement(const QString& tagName = QString()) const;

    QDomElement domElement() const { return m_element; }
    QByteArray context() const { return m_context; }

    // Filter internals, public for the readers that need a single step of them.
    bool needFilter(const QDomElement& element) const;
    bool isThroughFilter(const QString& text) const;
    CONDITION_TYPE condition(QString& text, QString& key, QString& value) const;
    bool dealCondition(const QString& actual, const QString& list, CONDITION_TYPE type) const;
    bool isMatch(const QString& actual, const QString& list) const;
    void setFilterAttribute();

    // Sources of the filter keys.
    QString getLang() const;
    QString getCategory() const;
    QString getPlatform() const;
    QString getOemValue(const QString& key) const;
    QString getStyleName() const;

private:
    QByteArray m_context;
    QByteArray m_parentContext;
    QDomElement m_element;
};

#endif // KDOMELEMENT_H
