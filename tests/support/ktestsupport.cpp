#include "ktestsupport.h"

#include <QAbstractEventDispatcher>
#include <QDir>
#include <QEventLoop>
#include <QFile>
#include <QFileInfo>
#include <QRegularExpression>
#include <QThread>
#include <QTimer>
#include <QToolBar>
#include <cstdio>
#include <kapptheme.h>
#include <kcommand.h>
#include <kcommandwrapaction.h>
#include <kdomdocument.h>

namespace {

// What the offscreen platform says of the window features it lacks: noise, not a fault.
const char* const kOffscreenNoise[] = {
    "This plugin does not support setParent!",
    "This plugin does not support raise()",
    "This plugin does not support lower()",
    "This plugin does not support propagateSizeHints()",
    "This plugin does not support setting window opacity",
    "This plugin does not support setting window masks",
    "This plugin does not support grabbing the keyboard",
    "This plugin does not support grabbing the mouse",
    "This plugin does not support QCursor::setPos(); emulating movement within the application.",
};

// The warnings that fail a test: all of them, but the platform's noise.
const QRegularExpression& strayWarning()
{
    static const QRegularExpression pattern = [] {
        if (QGuiApplication::platformName() != QLatin1String("offscreen"))
            return QRegularExpression(QStringLiteral("^"));
        QStringList noise;
        for (const char* text : kOffscreenNoise)
            noise << QRegularExpression::escape(QLatin1String(text));
        return QRegularExpression(QStringLiteral("^(?!(?:%1)$)").arg(noise.join(QLatin1Char('|'))));
    }();
    return pattern;
}

QtMessageHandler s_testLogHandler = nullptr;

void strayWarningGuard(QtMsgType type, const QMessageLogContext& context, const QString& message)
{
    // QtTest forgets its fail-on-warning patterns when a test function ends and gives the
    // support no hook at the start of the next one. So the pattern is handed over with each
    // warning, just before QtTest's handler looks at it; that handler still lets declared
    // (ignored) messages through first. QtTest keeps the patterns without a lock: only the
    // GUI thread adds to them.
    if (type == QtWarningMsg && QTest::currentTestFunction() && QThread::currentThread() == qApp->thread())
        QTest::failOnWarning(strayWarning());
    s_testLogHandler(type, context, message);
}

} // namespace

int KTestSupport::exec(QObject* testObject, int argc, char** argv)
{
    // qExec() in its three steps, so that the guard can stand in front of QtTest's handler.
    QTest::qInit(testObject, argc, argv);
    s_testLogHandler = qInstallMessageHandler(&strayWarningGuard);
    const int result = QTest::qRun();
    qInstallMessageHandler(s_testLogHandler);
    QTest::qCleanup();
    return result;
}

bool KTestSupport::requireX11()
{
    if (QGuiApplication::platformName() == QLatin1String("xcb"))
        return true;
    std::fprintf(stderr, "This test needs a real X server (the xcb platform), not \"%s\"; its file name must "
                         "end in x11 for the build to run it so.\n",
                 qPrintable(QGuiApplication::platformName()));
    return false;
}

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

bool KTestSupport::loadMainXml(const QString& dir, const QByteArray& body)
{
    return KApplication::instance()->setupXml(writeMainXml(dir, QStringLiteral("main.xml"), body));
}

bool KTestSupport::loadTheme(const QString& path)
{
    KDomDocument doc;
    return doc.setContent(path) && KApplication::instance()->theme()->setupXml(doc);
}

bool KTestSupport::runLoopUntil(const std::function<bool()>& pred, int timeoutMs)
{
    if (pred())
        return true;
    QEventLoop loop;
    QTimer::singleShot(timeoutMs, &loop, &QEventLoop::quit);
    const QMetaObject::Connection c = QObject::connect(
        QAbstractEventDispatcher::instance(), &QAbstractEventDispatcher::aboutToBlock, &loop, [&] {
            if (pred())
                loop.quit();
        });
    loop.exec();
    QObject::disconnect(c);
    return pred();
}

void KTestSupport::runLoopFor(int ms)
{
    QEventLoop loop;
    QTimer::singleShot(ms, &loop, &QEventLoop::quit);
    loop.exec();
}

QStringList KTestSupport::texts(KCommand* list)
{
    QStringList out;
    for (int i = 0; i < list->count(); ++i)
        out << list->subCommand(i)->text();
    return out;
}

QStringList KTestSupport::actionIds(QToolBar* bar)
{
    QStringList ids;
    for (QAction* a : bar->actions()) {
        auto* wrap = qobject_cast<KCommandWrapAction*>(a);
        ids << (wrap && wrap->command() ? wrap->command()->property("id").toString() : QStringLiteral("?"));
    }
    return ids;
}

QIcon KTestSupport::redIcon()
{
    QPixmap p(16, 16);
    p.fill(Qt::red);
    return QIcon(p);
}

QImage KTestSupport::paint(const QSize& size, const std::function<void(QPainter&)>& paint)
{
    QImage image(size, QImage::Format_ARGB32);
    image.fill(Qt::white);
    {
        QPainter painter(&image);
        paint(painter);
    }
    return image;
}

bool KTestSupport::anyPixel(const QImage& image, const std::function<bool(const QColor&)>& pred)
{
    for (int y = 0; y < image.height(); ++y) {
        for (int x = 0; x < image.width(); ++x) {
            if (pred(image.pixelColor(x, y)))
                return true;
        }
    }
    return false;
}
