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

QByteArray KTestSupport::writeServiceFiles(const QString& dir)
{
    writeFile(dir + QStringLiteral("/test-attributes.xml"), "<r><attributes/></r>");
    // A theme without classes; "2013" installs a known style, so it warns nothing.
    writeFile(dir + QStringLiteral("/test-theme.xml"), "<t><style name='2013'/><theme/></t>");
    return "<attributes path='test-attributes.xml'/><theme path='test-theme.xml'/>";
}

QString KTestSupport::writeMainXml(const QString& dir, const QString& fileName, const QByteArray& body)
{
    return writeFile(dir + QLatin1Char('/') + fileName, "<ui>" + writeServiceFiles(dir) + body + "</ui>");
}
