#include "kcontextcategorycommand.h"

KContextCategoryCommand::KContextCategoryCommand(QObject* host, QObject* parent)
    : KListCommand(host, parent)
{
}

KContextCategoryCommand::~KContextCategoryCommand() = default;

void KContextCategoryCommand::setContextName(const QString& name)
{
    if (m_contextName == name)
        return;
    m_contextName = name;
    on_command_changed();
}

QString KContextCategoryCommand::getContextThemeTag() const
{
    return QStringLiteral("none");
}
