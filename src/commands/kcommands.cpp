#include "kcommands.h"

#include <QCoreApplication>
#include <QDebug>
#include <QDir>
#include <QFileInfo>
#include <QMetaProperty>

#include <kapplibraries.h>
#include <kapplication.h>
#include <kappattributeparser.h>
#include <kcommandfactory.h>

namespace {

// Commands a shielded main window leaves out of its description.
bool isShieldedId(const QString& id)
{
    static const QStringList s_ids = {
        QStringLiteral("CT_File"),          QStringLiteral("FileMenu"),
        QStringLiteral("AcceptChangeOnTB"), QStringLiteral("RejectChangeOnTB"),
        QStringLiteral("sp_TrackChanges"),  QStringLiteral("TrackChanges"),
        QStringLiteral("TrackChangesToolBar"),
    };
    return s_ids.contains(id);
}

const QString& idKey()
{
    static const QString s_id = QStringLiteral("id");
    return s_id;
}

void runScenes(KCommandParseScene& propertyScene, KCommandParseScene& subElementScene,
               KCommand* cmd, const KDomElement& element, KCommandParserContext* context)
{
    propertyScene.match(cmd)(cmd, element, context);
    subElementScene.match(cmd)(cmd, element, context);
}

} // namespace

// --- KCommandParserContext ---

KCommandParserContext::KCommandParserContext(KCommands* commands)
    : m_commands(commands)
{
    KApplication* app = KApplication::instance();
    m_attrParser = app ? app->attrParser() : nullptr;
}

// --- KCommands ---

KCommands::KCommands(QObject* host, QObject* parent, KCommands* parentCommands)
    : QObject(parent)
    , m_parentCommands(parentCommands)
    , m_host(host)
{
}

KCommands::~KCommands() = default;

KCommandParseScene& KCommands::parseCommandPropertyScene()
{
    static KCommandParseScene s_scene(&parseCommandPropertyDefault);
    return s_scene;
}

KCommandParseScene& KCommands::parseCommandSubElementScene()
{
    // Built at first use, so that a host's items registered from static initialisers find
    // the scene whatever the order of initialisation. The items die before the scene.
    static KCommandParseScene s_scene(&parseCommandSubElementDefault);
    static KCommandParseSceneItem s_list(&s_scene, &KListCommand::staticMetaObject,
                                         &parseCommandSubElement_KListCommand<SubCmdParser>);
    static KCommandParseSceneItem s_compose(
        &s_scene, &KComposeListCommand::staticMetaObject,
        &parseCommandSubElement_KComposeListCommand<SubCmdParser>);
    return s_scene;
}

KCommandParseScene& KCommands::parseCommandSubElementRefScene()
{
    static KCommandParseScene s_scene(&parseCommandSubElementDefault);
    static KCommandParseSceneItem s_list(&s_scene, &KListCommand::staticMetaObject,
                                         &parseCommandSubElement_KListCommand<SubCmdParserRef>);
    static KCommandParseSceneItem s_compose(
        &s_scene, &KComposeListCommand::staticMetaObject,
        &parseCommandSubElement_KComposeListCommand<SubCmdParserRef>);
    return s_scene;
}

bool KCommands::setupXml(const KDomElement& element, bool filtered)
{
    KCommandParserContext context(this);
    KCommandParseScene& propertyScene = parseCommandPropertyScene();
    KCommandParseScene& subElementScene = parseCommandSubElementScene();
    for (KDomElement child = element.firstChildElement(); !child.isNull();
         child = child.nextSiblingElement()) {
        const QString id = child.attribute(idKey());
        if (filtered && isShieldedId(id))
            continue;
        const QString tag = child.tagName();
        if (id.isEmpty()) {
            qWarning().noquote() << "you must give a topmost command an id." << tag;
            continue;
        }
        // Only this scope counts: a window may shadow an application command.
        if (m_commands.value(id)) {
            qWarning().noquote() << "id repeated:" << id;
            continue;
        }
        KCommand* cmd = KCommandFactory::createCommand(tag, m_host, this);
        if (!cmd) {
            qWarning().noquote() << "can not create command named:" << tag;
            continue;
        }
        addCommand(id, cmd);
        runScenes(propertyScene, subElementScene, cmd, child, &context);
    }
    return true;
}

KCommand* KCommands::command(const QString& id) const
{
    for (const KCommands* scope = this; scope; scope = scope->m_parentCommands) {
        const auto it = scope->m_commands.constFind(id);
        if (it != scope->m_commands.constEnd() && it.value())
            return it.value();
    }
    return nullptr;
}

KCommand* KCommands::findCommand(const QString& id) const
{
    if (id.isEmpty())
        return nullptr;
    if (KCommand* direct = command(id))
        return direct;
    const QStringList parts = id.split(QLatin1Char('.'));
    KCommand* current = m_commands.value(parts.first());
    if (!current)
        return nullptr;
    for (int p = 1; p < parts.size(); ++p) {
        const QString& part = parts.at(p);
        KCommand* match = nullptr;
        const int n = current->count();
        for (int i = 0; i < n && !match; ++i) {
            KCommand* sub = current->subCommand(i);
            if (!sub)
                continue;
            // A sub-command is known by its id or, failing that, by its tip key.
            if (sub->property("id").toString() == part || sub->customTip() == part)
                match = sub;
        }
        if (!match)
            return nullptr;
        current = match;
    }
    return current;
}

void KCommands::addCommand(const QString& id, KCommand* cmd)
{
    if (!cmd)
        return;
    cmd->setProperty("id", id);
    m_commands.insert(id, cmd);
}

KCommand* KCommands::customCommand(const QString& className, QObject* host, QObject* parent)
{
    // One counter for the whole process: ids stay unique across every registry.
    static int s_counter = 0;
    KCommand* cmd = KCommandFactory::createCommand(className, host, parent);
    if (!cmd)
        return nullptr;
    ++s_counter;
    const QString id = QStringLiteral("customcmd %1").arg(s_counter);
    addCommand(id, cmd);
    cmd->setProperty("id", id);
    cmd->setProperty("custom", true);
    cmd->setVisible(true);
    cmd->setEnabled(true);
    return cmd;
}

bool KCommands::existCmd(KCommand* cmd) const
{
    return !commandId(cmd).isEmpty();
}

QString KCommands::commandId(KCommand* cmd) const
{
    if (!cmd)
        return QString();
    for (auto it = m_commands.constBegin(); it != m_commands.constEnd(); ++it) {
        if (it.value() == cmd)
            return it.key();
    }
    return QString();
}

void KCommands::resetXML()
{
    m_commands.clear();
    // Last child first, the reverse of the order of the description.
    for (;;) {
        const QObjectList& kids = children();
        if (kids.isEmpty())
            break;
        delete kids.last();
    }
}

void KCommands::resetCommandXML(const QString& id)
{
    KCommand* cmd = command(id);
    const KDomElement element = _findCommandDom(id);
    if (!cmd || element.isNull())
        return;
    cmd->reset();
    KCommandParserContext context(this);
    runScenes(parseCommandPropertyScene(), parseCommandSubElementScene(), cmd, element, &context);
}

void KCommands::setupCommandXML(KAbstractListCommand* list, const QString& path)
{
    if (!list)
        return;
    KDomDocument document = m_delayDocuments.value(path);
    if (document.isNull()) {
        qDebug().noquote() << "delay-load ui file: " << path;
        const QString absolute =
            QDir(QCoreApplication::applicationDirPath() + QStringLiteral("/res")).absoluteFilePath(path);
        // A missing file leaves the list empty without a word; the list has dropped its
        // parser already, so the attempt is not repeated.
        if (!QFileInfo::exists(absolute) || !document.setContent(absolute))
            return;
        // The file's libraries load ahead of its commands, whose classes they may register.
        if (KApplication* app = KApplication::instance())
            app->libraries()->setupXml(document);
        setupXml(document.documentElement().firstChildElement(QStringLiteral("commands")), false);
        m_delayDocuments.insert(path, document);
    }

    const QString listId = list->property("id").toString();
    const KDomElement subcommands =
        document.documentElement().firstChildElement(QStringLiteral("subcommands"));
    for (KDomElement child = subcommands.firstChildElement(); !child.isNull();
         child = child.nextSiblingElement()) {
        const QString id = child.attribute(idKey());
        if (id.isEmpty()) {
            qWarning().noquote() << "you must give a delay-loaded sub command an id."
                                 << child.lineNumber();
            continue;
        }
        if (id != listId)
            continue;
        KCommandParserContext context(this);
        parseCommandSubElementScene().match(list)(list, child, &context);
        // An empty content would hand the list this parser again and make every later
        // read of the list search the file anew; its content is final now.
        if (list->subCommandParser() == this)
            list->setSubCommandParser(nullptr);
        break;
    }
}

KDomElement KCommands::_findCommandDom(const QString& id) const
{
    if (KApplication* app = KApplication::instance()) {
        const QList<KDomDocument> docs = app->getDoms();
        for (const KDomDocument& doc : docs) {
            const KDomElement commands = doc.documentElement()
                                             .firstChildElement(QStringLiteral("mainwindow"))
                                             .firstChildElement(QStringLiteral("commands"));
            const KDomElement found = _domElement(commands, id);
            if (!found.isNull())
                return found;
        }
    }
    for (auto it = m_delayDocuments.constBegin(); it != m_delayDocuments.constEnd(); ++it) {
        const KDomElement root = it.value().documentElement();
        KDomElement found = _domElement(root.firstChildElement(QStringLiteral("commands")), id);
        if (!found.isNull())
            return found;
        const KDomElement subcommands = root.firstChildElement(QStringLiteral("subcommands"));
        for (KDomElement child = subcommands.firstChildElement(); !child.isNull();
             child = child.nextSiblingElement()) {
            found = _domElement(child, id);
            if (!found.isNull())
                return found;
        }
    }
    return KDomElement();
}

KDomElement KCommands::_domElement(const KDomElement& parent, const QString& id)
{
    if (parent.isNull())
        return KDomElement();
    for (KDomElement child = parent.firstChildElement(); !child.isNull();
         child = child.nextSiblingElement()) {
        if (child.attribute(idKey()) == id)
            return child;
        const KDomElement found = _domElement(child, id);
        if (!found.isNull())
            return found;
    }
    return KDomElement();
}

// --- parse functions ---

void parseCommandPropertyDefault(KCommand* cmd, const KDomElement& element,
                                 KCommandParserContext* context)
{
    const QMetaObject* mo = cmd->metaObject();
    const QStringList names = element.attributes();
    for (const QString& name : names) {
        const QString text = element.attribute(name);
        const int index = mo->indexOfProperty(name.toLatin1().constData());
        if (index >= 0)
            parseStaticProperty(cmd, mo->property(index), text, context, element);
        else
            parseDynamicProperty(cmd, name, text, context, element);
    }
}

void parseStaticProperty(KCommand* cmd, const QMetaProperty& property, const QString& text,
                         KCommandParserContext* context, const KDomElement& element)
{
    if (!property.isWritable()) {
        qWarning().noquote() << "Property named:" << property.name() << "is readonly. At line:"
                             << element.lineNumber();
        return;
    }
    KAppAttributeParser* parser = context ? context->attrParser() : nullptr;
    const QVariant value = parser ? parser->parseAttribute(property.userType(), text,
                                                           context->commands())
                                  : QVariant();
    if (value.isNull() || !property.write(cmd, value)) {
        qWarning().noquote() << "Failed to set property named:" << property.name()
                             << ". At line:" << element.lineNumber();
    }
}

void parseDynamicProperty(KCommand* cmd, const QString& name, const QString& text,
                          KCommandParserContext* context, const KDomElement&)
{
    KAppAttributeParser* parser = context ? context->attrParser() : nullptr;
    QVariant value;
    if (parser && parser->attributeType(name) >= 0) {
        // A declared attribute whose text does not convert is dropped: declaring a name is
        // also how a description keeps an attribute off its commands.
        value = parser->parseAttribute(name, text, context->commands());
        if (value.isNull())
            return;
    } else {
        // Undeclared attributes are plain strings.
        value = text;
    }
    cmd->setProperty(name.toLatin1().constData(), value);
}

void parseCommandSubElementDefault(KCommand* cmd, const KDomElement& element,
                                   KCommandParserContext*)
{
    if (!element.firstChildElement().isNull()) {
        qWarning().noquote() << cmd->metaObject()->className()
                             << " do not support sub elements. At line:" << element.lineNumber();
    }
}

KCommand* parseSeparator(const KDomElement& element)
{
    if (element.domElement().attributes().count() > 0) {
        // startEndTransparent still takes effect below: the warning is about the element
        // kind, which takes no attributes in general.
        qWarning().noquote() << "Separator do not support attributes. At line:"
                             << element.lineNumber();
    }
    if (!element.firstChildElement().isNull()) {
        qWarning().noquote() << "Separator element do not support sub elements. At line:"
                             << element.lineNumber();
    }
    if (element.attribute(QStringLiteral("startEndTransparent")) == QLatin1String("1"))
        return KSeparatorCommand::instance2();
    return KSeparatorCommand::instance();
}

KCommand* parseCmdRef(const KDomElement& element, KCommandParserContext* context)
{
    const QString id = element.attribute(QStringLiteral("idQ"));
    if (id.isEmpty()) {
        qWarning().noquote() << "No idQ attribute found in a command element. At line:"
                             << element.lineNumber();
        return nullptr;
    }
    KCommand* cmd = context->commands()->command(id);
    if (!cmd) {
        qWarning().noquote() << "Can not find command named:" << id << ". At line:"
                             << element.lineNumber();
        return nullptr;
    }
    const int line = element.lineNumber();
    if (element.domElement().attributes().count() != 1)
        qWarning().noquote() << line << "Command element only support idQ attribute. At line:" << line;
    if (!element.firstChildElement().isNull())
        qWarning().noquote() << line << "Command element do not support sub elements. At line:" << line;
    return cmd;
}

KCommand* SubCmdParser::parse(KAbstractListCommand* list, const KDomElement& element,
                              KCommandParserContext* context)
{
    KCommands* commands = context->commands();
    const QString tag = element.tagName();
    KCommand* cmd = KCommandFactory::createCommand(tag, commands->host(), list);
    if (!cmd) {
        qWarning().noquote() << "can not create command named:" << tag;
        return nullptr;
    }
    const QString id = element.attribute(idKey());
    if (!id.isEmpty()) {
        // Unlike a top-level id, a sub-command's id must be free in every scope. The
        // command stays in its list all the same; it is only not findable by that id.
        if (commands->command(id)) {
            qWarning().noquote() << "id repeated:" << id << ". At line:" << element.lineNumber();
        } else {
            commands->addCommand(id, cmd);
        }
    }
    runScenes(KCommands::parseCommandPropertyScene(), KCommands::parseCommandSubElementScene(),
              cmd, element, context);
    return cmd;
}

KCommand* SubCmdParserRef::parse(KAbstractListCommand* list, const KDomElement& element,
                                 KCommandParserContext* context)
{
    KCommands* commands = context->commands();
    const QString id = element.attribute(idKey());
    KCommand* cmd = nullptr;
    if (!id.isEmpty()) {
        cmd = commands->command(id);
        if (!cmd) {
            qWarning().noquote() << "Can not find command named:" << id << ". At line:"
                                 << element.lineNumber();
            return nullptr;
        }
    } else {
        const QString tag = element.tagName();
        cmd = KCommandFactory::createCommand(tag, commands->host(), list);
        if (!cmd) {
            qWarning().noquote() << "can not create command named:" << tag;
            return nullptr;
        }
    }
    runScenes(KCommands::parseCommandPropertyScene(), KCommands::parseCommandSubElementRefScene(),
              cmd, element, context);
    return cmd;
}
