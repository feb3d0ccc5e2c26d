#ifndef KAPPATTRIBUTEPARSER_H
#define KAPPATTRIBUTEPARSER_H

#include <QIcon>
#include <QMap>
#include <QObject>
#include <QString>
#include <QVariant>

#include <kdomdocument.h>
#include <norvikofficeui_export.h>

class KCommand;
class KCommands;

/**
 * The types of the description's attributes. XML gives every attribute as text; this table,
 * read from the attribute file that the main description names, says which attribute names
 * carry a bool, an int, a colour, a command and so on, and converts their text.
 *
 * The static parsers are the framework's one definition of how such values are written, and
 * are used without an instance too. Bad text never fails: it gives a neutral value (-1,
 * -1.0, 0, an invalid QVariant, null) and at most a warning.
 */
class NORVIKOFFICEUI_EXPORT KAppAttributeParser : public QObject
{
    Q_OBJECT
public:
    enum Type {
        String = 0,  ///< "string", or no type at all
        Command = 1, ///< "command": a KCommand* found by id
        Bool = 2,    ///< "bool"
        Int = 3,     ///< "int"
        Icon = 4,    ///< "icon"
        Enum = 5,    ///< "enum": an int from the attribute's own item list
        Color = 6,   ///< "color": an ARGB value as uint
        Double = 7   ///< "double"
    };

    explicit KAppAttributeParser(QObject* parent);
    ~KAppAttributeParser() override;

    /// Empty and "0"-valued texts are false; otherwise true unless the trimmed, lowered text
    /// is "false". "no", "off" and anything else are true.
    static bool parseBool(const QString& text);
    /// Decimal; -1 when the text is no number.
    static int parseInt(const QString& text, bool* ok = nullptr);
    /// -1.0 when the text is no number.
    static double parseDouble(const QString& text, bool* ok = nullptr);
    /// The command of that id in commands or an outer scope; null (with a warning) if none.
    static KCommand* parseCommand(KCommands* commands, const QString& name);
    static QIcon parseIcon(const QString& text);
    /// Hexadecimal ARGB without prefix, as uint; 0 for bad text ("ff0000" has alpha 0).
    static QVariant parseColor(const QString& text);
    /// The value of a known item as int; an invalid QVariant and a warning otherwise.
    static QVariant parseEnum(const QMap<QString, int>& items, const QString& text);

    /// Reads the attribute file named by the "attributes" element of the main document.
    /// False when the element, its path or its file is missing or unreadable.
    bool setupMainXml(const KDomDocument& mainDocument);
    /// Reads the "attribute" definitions of an attribute file; always true.
    bool setupXml(const KDomDocument& attributeDocument);
    /// The Type of a keyword of the "type" attribute (case matters); -1 for an unknown one.
    int recognizedType(const QString& keyword) const;
    void resetXml();

    /// By attribute name, through the table; an invalid QVariant for an undeclared name.
    QVariant parseAttribute(const QString& name, const QString& text, KCommands* commands) const;
    /// By type; Enum and unknown types give an invalid QVariant (enums need their name).
    QVariant parseAttribute(KAppAttributeParser::Type type, const QString& text,
                            KCommands* commands) const;
    /// By meta-type id: KCommand*, bool, int, QString and QIcon; others are invalid.
    QVariant parseAttribute(int metaType, const QString& text, KCommands* commands) const;

    /// The declared type of an attribute name, or -1.
    int attributeType(const QString& name) const;
    /// The items of an enum attribute (empty for other names).
    QMap<QString, int> enumItems(const QString& name) const { return m_enums.value(name); }

private:
    QMap<QString, int> _parseEnumList(const KDomElement& element) const;

    QMap<QString, KAppAttributeParser::Type> m_types;
    QMap<QString, QMap<QString, int>> m_enums;
};

#endif // KAPPATTRIBUTEPARSER_H
