#include "kapicommand.h"

#include <kcommandfactory.h>

KApiCommand::KApiCommand(QObject* host, QObject* parent)
    : KCommand(host, parent)
{
}

KApiCommand::~KApiCommand() = default;

bool KApiCommand::isTriggerable() const
{
    return true;
}

QString KApiCommand::action() const
{
    return property("action").toString();
}

QString KApiCommand::hyperlink() const
{
    return property("hyperlink").toString();
}

void KApiCommand::trigger()
{
    if (m_delegate) {
        // The host's command does the work; views still see this command fire.
        Q_EMIT triggered();
        m_delegate->trigger();
        return;
    }
    KCommand::trigger();
}

KCommand* KApiCommand::_createDelegate(const char* className)
{
    // The delegate classes belong to the host; without them the delegate stays null and
    // the command triggers as a plain one.
    return KCommandFactory::createCommand(QLatin1String(className), host(), parent());
}

void KApiCommand::setMacroAction(const QString& action)
{
    setProperty("action", action);
    m_delegate = nullptr;
    if (action.isEmpty())
        return;
    setHyperlink(QStringLiteral("none"));
    if (KCommand* delegate = _createDelegate("KxMacroActionButtonCommand")) {
        delegate->setProperty("action", action);
        m_delegate = delegate;
    }
}

void KApiCommand::setHyperlink(const QString& link)
{
    if (link == hyperlink())
        return;
    setProperty("hyperlink", link);
    m_delegate = nullptr;
    const char* className = nullptr;
    if (link == QLatin1String("insertpicture"))
        className = "KxInsertPictureButtonCommand";
    else if (link == QLatin1String("open"))
        className = "KxHyperlinkButtonCommand";
    if (!className)
        return;
    setMacroAction(QString());
    if (KCommand* delegate = _createDelegate(className)) {
        delegate->setDetail(detail());
        m_delegate = delegate;
    }
}

void KApiCommand::setDetail(const QString& text)
{
    KCommand::setDetail(text);
    if (m_delegate)
        m_delegate->setDetail(text);
}

void KApiCommand::reset()
{
    m_delegate = nullptr;
    KCommand::reset();
}
