#ifndef KCOMMANDS_H
#define KCOMMANDS_H

#include <QHash>
#include <QMap>
#include <QObject>
#include <QPointer>
#include <QString>

#include <kabstractlistcommand.h>
#include <kcomposelistcommand.h>
#include <klistcommand.h>
#include <kseparatorcommand.h>
#include <kdomdocument.h>
#include <kdomelement.h>
#include <kscenebase.h>
#include <norvikofficeui_export.h>

class KAppAttributeParser;
class KCommand;
class KCommands;

/**
 * What a parse function needs besides the command and its element: the registry the parse
 * fills. Lives for one parse.
 */
class NORVIKOFFICEUI_EXPORT KCommandParserContext
{
public:
    explicit KCommandParserContext(KCommands* commands);
    KCommands* commands() const { return m_commands; }
    /// The application's attribute parser; null without a KApplication.
    KAppAttributeParser* attrParser() const { return m_attrParser; }

private:
    KCommands* m_commands;
    KAppAttributeParser* m_attrParser;
};

/// The signature of every function of the command parser's scenes.
using KCommandParseFunction = void (*)(KCommand* cmd, const KDomElement& element,
                                       KCommandParserContext* context);
using KCommandParseScene = KSceneBase<KCommandParseFunction>;
using KCommandParseSceneItem = KSceneItem<KCommandParseFunction>;

/**
 * The registry of commands by id, and the parser of the "commands" sections of a
 * description. The application has one (no parent registry); each main window has its own,
 * whose parent registry is the application's, so look-ups go from the window outwards.
 *
 * Top-level commands made by setupXml() are QObject children of the registry; the id map does
 * not own anything and forgets commands that are destroyed.
 *
 * A list command with a "delayloadPath" and no content in the description gets this registry
 * as its KSubCommandParser: its content is read from applicationDirPath() + "/res" the first
 * time somebody asks for its items. Each such file is read once and kept.
 */
class NORVIKOFFICEUI_EXPORT KCommands : public QObject, public KSubCommandParser
{
    Q_OBJECT
public:
    /// host is handed to every command this registry makes; parent owns the registry.
    KCommands(QObject* host, QObject* parent, KCommands* parentCommands);
    ~KCommands() override;

    /// Parses the children of a "commands" element into this scope. Never fails: faults are
    /// warnings and skip the faulty element. filtered drops the commands a shielded window
    /// must not show.
    bool setupXml(const KDomElement& element, bool filtered);

    /// This scope, then each outer scope; null when found nowhere.
    KCommand* command(const QString& id) const;
    /// Like command(), and understands dotted paths "list.sub.subsub" (by id or customTip).
    KCommand* findCommand(const QString& id) const;
    /// Sets the "id" property of cmd and files it under id, replacing an earlier entry.
    void addCommand(const QString& id, KCommand* cmd);
    /// A command made in code, with an id "customcmd N" unique in the process and the
    /// property "custom" set; null for an unknown class.
    KCommand* customCommand(const QString& className, QObject* host, QObject* parent);
    /// Reverse look-ups, in this scope only.
    bool existCmd(KCommand* cmd) const;
    QString commandId(KCommand* cmd) const;

    /// Forgets every id and destroys everything the registry owns; kept delay files stay.
    void resetXML();
    /// Re-reads one command in place from the description it came from (main-window
    /// descriptions and delay files only).
    void resetCommandXML(const QString& id);

    void setupCommandXML(KAbstractListCommand* list, const QString& path) override;

    QObject* host() const { return m_host; }
    KCommands* parentCommands() const { return m_parentCommands; }

    /// Scenes of the parser, all taking (command, element, context). See KSceneItem for how a
    /// host gives its own class an element syntax of its own.
    static KCommandParseScene& parseCommandPropertyScene();
    static KCommandParseScene& parseCommandSubElementScene();
    static KCommandParseScene& parseCommandSubElementRefScene();

private:
    KDomElement _findCommandDom(const QString& id) const;
    static KDomElement _domElement(const KDomElement& parent, const QString& id);

    // Guarded: the registry owns only its top-level commands, and a sub-command or a command
    // added by code may die first. A dead entry reads as absent.
    QHash<QString, QPointer<KCommand>> m_commands;
    KCommands* m_parentCommands;
    QObject* m_host;
    QMap<QString, KDomDocument> m_delayDocuments;
};

// --- the parser's building blocks, public so that a host's scene functions can reuse them ---

/// Sets every attribute of element on cmd: meta-properties typed, others as dynamic ones.
NORVIKOFFICEUI_EXPORT void parseCommandPropertyDefault(KCommand* cmd, const KDomElement& element,
                                                       KCommandParserContext* context);
NORVIKOFFICEUI_EXPORT void parseStaticProperty(KCommand* cmd, const QMetaProperty& property,
                                               const QString& text, KCommandParserContext* context,
                                               const KDomElement& element);
NORVIKOFFICEUI_EXPORT void parseDynamicProperty(KCommand* cmd, const QString& name,
                                                const QString& text, KCommandParserContext* context,
                                                const KDomElement& element);
/// For classes that take no content: warns when the element has children.
NORVIKOFFICEUI_EXPORT void parseCommandSubElementDefault(KCommand* cmd, const KDomElement& element,
                                                         KCommandParserContext* context);
/// A "separator" element: one of the two shared separators.
NORVIKOFFICEUI_EXPORT KCommand* parseSeparator(const KDomElement& element);
/// A "command" (or "compose") element: the existing command named by "idQ", or null.
NORVIKOFFICEUI_EXPORT KCommand* parseCmdRef(const KDomElement& element, KCommandParserContext* context);

/// Reads a sub-command element normally: a new command owned by the list.
struct NORVIKOFFICEUI_EXPORT SubCmdParser
{
    static KCommand* parse(KAbstractListCommand* list, const KDomElement& element,
                           KCommandParserContext* context);
};

/// Reads a sub-command element over commands that exist already: an element with an id
/// stands for the registered command of that id, one without is made anew.
struct NORVIKOFFICEUI_EXPORT SubCmdParserRef
{
    static KCommand* parse(KAbstractListCommand* list, const KDomElement& element,
                           KCommandParserContext* context);
};

/// A list with a delay file and no content in the description waits until its items are
/// first asked for: true when it was left to wait. Written content wins over the file.
inline bool deferToDelayFile(KAbstractListCommand* list, const KDomElement& element,
                             KCommandParserContext* context)
{
    if (list->delayloadPath().isEmpty() || !element.firstChildElement().isNull())
        return false;
    list->setSubCommandParser(context->commands());
    return true;
}

/// The children every list understands, "separator" and "command": their command (null when
/// a reference fails). *shared is false for any other tag, which the caller reads itself.
inline KCommand* parseSharedListChild(const KDomElement& child, KCommandParserContext* context,
                                      bool* shared)
{
    const QString tag = child.tagName();
    *shared = true;
    if (tag == QLatin1String("separator"))
        return parseSeparator(child);
    if (tag == QLatin1String("command"))
        return parseCmdRef(child, context);
    *shared = false;
    return nullptr;
}

/// The content of a KListCommand; P reads the elements that name a class.
template <class P>
void parseCommandSubElement_KListCommand(KCommand* cmd, const KDomElement& element,
                                         KCommandParserContext* context)
{
    auto* list = qobject_cast<KListCommand*>(cmd);
    if (!list || deferToDelayFile(list, element, context))
        return;
    for (KDomElement child = element.firstChildElement(); !child.isNull();
         child = child.nextSiblingElement()) {
        bool shared = false;
        KCommand* sub = parseSharedListChild(child, context, &shared);
        if (!shared)
            sub = P::parse(list, child, context);
        if (sub)
            list->addSubCommand(sub);
    }
}

/// The content of a KComposeListCommand, which also takes "compose" elements: the items of
/// another list spliced in at that place, following that list as it changes.
template <class P>
void parseCommandSubElement_KComposeListCommand(KCommand* cmd, const KDomElement& element,
                                                KCommandParserContext* context)
{
    auto* list = qobject_cast<KComposeListCommand*>(cmd);
    if (!list || deferToDelayFile(list, element, context))
        return;
    for (KDomElement child = element.firstChildElement(); !child.isNull();
         child = child.nextSiblingElement()) {
        bool shared = false;
        KCommand* sub = parseSharedListChild(child, context, &shared);
        if (shared) {
            // a separator or a reference, placed below
        } else if (child.tagName() == QLatin1String("compose")) {
            KCommand* ref = parseCmdRef(child, context);
            if (!ref)
                continue;
            auto* composed = qobject_cast<KAbstractListCommand*>(ref);
            if (!composed) {
                qWarning().noquote() << "Composed command must be a list command. At line:"
                                     << child.lineNumber();
                continue;
            }
            list->insertComposedSubCommandOrig(list->countOrig(), composed);
            continue;
        } else {
            sub = P::parse(list, child, context);
        }
        if (sub)
            list->insertSubCommandOrig(list->countOrig(), sub);
    }
}

#endif // KCOMMANDS_H
