// Helpers shared by the framework's tests: a test main that runs the test object inside a
// KApplication and fails a test on any warning it did not declare, and a catcher for the
// framework's warnings.
#ifndef KTESTSUPPORT_H
#define KTESTSUPPORT_H

#include <QtTest/QtTest>
#include <QImage>
#include <QPainter>
#include <QStringList>
#include <functional>
#include <kapplication.h>

class KCommand;
class QToolBar;

/**
 * Collects the warnings issued while it lives, and keeps them from every handler below it:
 * the way a test declares the warnings it expects and checks their texts. Other messages go
 * on to the handler that was active before, which comes back on destruction.
 *
 * Under the test main below, the active handler is QtTest's (installed after the
 * application's own, which would drop warnings), behind a guard that fails the test on any
 * warning that nobody declared; a catcher sits in front of both.
 */
class KWarningCatcher
{
public:
    KWarningCatcher();
    ~KWarningCatcher();
    KWarningCatcher(const KWarningCatcher&) = delete;
    KWarningCatcher& operator=(const KWarningCatcher&) = delete;

    QStringList messages() const { return m_messages; }
    // Messages that contain the text, in order.
    QStringList matching(const QString& text) const;
    bool contains(const QString& text) const { return !matching(text).isEmpty(); }
    int count() const { return m_messages.size(); }
    void clear() { m_messages.clear(); }

private:
    static void handler(QtMsgType type, const QMessageLogContext& ctx, const QString& msg);

    QStringList m_messages;
    QtMessageHandler m_previous = nullptr;
    KWarningCatcher* m_outer = nullptr;
    static KWarningCatcher* s_current;
};

namespace KTestSupport {
/**
 * Runs the test object as QTest::qExec() does, with one addition: a warning that the test
 * did not declare, by QTest::ignoreMessage() or a KWarningCatcher, fails the test
 * function that it comes in (QTest::failOnWarning()). On the offscreen platform its notes on
 * the window features it lacks ("This plugin does not support raise()" and the like) pass.
 */
int exec(QObject* testObject, int argc, char** argv);
// Whether the application runs on the xcb platform; prints why not when it does not.
bool requireX11();

// Writes text to path (creating folders), returns the absolute path.
QString writeFile(const QString& path, const QByteArray& text);
// Writes the files every main description must name (attribute table, theme) into dir and
// returns the elements that name them, to stand first under a main document's root.
QByteArray writeServiceFiles(const QString& dir);
// A main description in dir: the service elements followed by body, under <ui>. Returns the
// absolute path of the written file.
QString writeMainXml(const QString& dir, const QString& fileName, const QByteArray& body);
// Writes a main description "main.xml" in dir (see writeMainXml) and reads it into the
// application; false when the application refused it.
bool loadMainXml(const QString& dir, const QByteArray& body);
// Reads the theme file at path into the application's theme; false when it does not parse or
// the theme refuses it.
bool loadTheme(const QString& path);

// Runs a real event loop (the idle service works only when the loop is about to block) until
// pred holds, checked each time the loop is about to block, or the time is up.
bool runLoopUntil(const std::function<bool()>& pred, int timeoutMs = 5000);
// Runs a real event loop for ms milliseconds: the way to show that nothing happens.
void runLoopFor(int ms);

// The texts of a list command's items, in order.
QStringList texts(KCommand* list);
// The ids of the commands behind a tool bar's actions ("" for a separator, "?" for an action
// that wraps no command).
QStringList actionIds(QToolBar* bar);
// A 16 x 16 icon filled red.
QIcon redIcon();

// An image of size filled white, after paint drew on it.
QImage paint(const QSize& size, const std::function<void(QPainter&)>& paint);
// Whether some pixel of image satisfies pred.
bool anyPixel(const QImage& image, const std::function<bool(const QColor&)>& pred);
}

#define NORVIK_TEST_MAIN_IMPL(TestObject)                                                   \
    int main(int argc, char** argv)                                                       \
    {                                                                                     \
        KApplication app(argc, argv);                                                     \
        TestObject tc;                                                                    \
        QTEST_SET_MAIN_SOURCE_PATH                                                        \
        return KTestSupport::exec(&tc, argc, argv);                                       \
    }

// A test whose object runs inside a KApplication on the offscreen platform.
#define NORVIK_TEST_MAIN(TestObject) NORVIK_TEST_MAIN_IMPL(TestObject)
// The same, on a real X server (xcb platform, under xvfb-run). The build picks these tests by
// their file name, tst_<name>x11.cpp; on another platform the test refuses to run.
#define NORVIK_X11_TEST_MAIN(TestObject)                                                  \
    int main(int argc, char** argv)                                                       \
    {                                                                                     \
        KApplication app(argc, argv);                                                     \
        if (!KTestSupport::requireX11())                                                  \
            return 1;                                                                     \
        TestObject tc;                                                                    \
        QTEST_SET_MAIN_SOURCE_PATH                                                        \
        return KTestSupport::exec(&tc, argc, argv);                                       \
    }

#endif // KTESTSUPPORT_H
