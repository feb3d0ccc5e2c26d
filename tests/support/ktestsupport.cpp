#include "ktestsupport.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>

KWarningCatcher* KWarningCatcher::s_current = nullptr;

KWarningCatcher::KWarningCatcher()
    : m_outer(s_current)
{
    s_current = this;
    m_previous = qInstallMessageHandler(&KWarningCatcher::handler);
}

KWarningCatcher::~KWarningCatcher()
{
    qInstallMessageHandler(m_previous);
    s_current = m_outer;
}

QStringList KWarningCatcher::matching(const QString& text) const
{
    QStringList result;
    for (const QString& m : m_messages) {
        if (m.contains(text))
            result.append(m);
    }
    return result;
}

void KWarningCatcher::handler(QtMsgType type, const QMessageLogContext& ctx, const QString& msg)
{
    if (type == QtWarningMsg && s_current) {
        s_current->m_messages.append(msg);
        return;
    }
    if (s_current && s_current->m_previous)
        s_current->m_previous(type, ctx, msg);
}

QString KTestSupport::writeFile(const QString& path, const QByteArray& text)
{
    QFileInfo info(path);
    QDir().mkpath(info.absolutePath());
    QFile f(info.absoluteFilePath());
    if (!f.open(QIODevice::WriteOnly | QIODevice::Truncate))
        qFatal("cannot write test file %s", qPrintable(path));
    f.write(text);
    return info.absoluteFilePath();
}
