// What a ribbon costs from its description, against a floor: a plain-Qt window built eagerly
// from the same numbers (a QTabWidget of pages with tool buttons in box layouts).
//
//   bench_ribbon [--tabs T] [--groups G] [--buttons B] [--rounds N]
//
// T tabs of G groups of B buttons (default 20, 10, 10: 2,000 commands) in a 1400 by 900 window.
// Each group has one large button, three small ones with text and the rest icon-only, like a
// word processor's groups. Measured, each in a fresh process, rounds alternating between the
// two programs (default 3), the median of each printed:
//
//   construct_ms        from reading the description (setupXml) to the window constructed;
//                       the floor builds every page here
//   first_paint_ms      from show() to the first paint of the whole window done
//   tabswitch_total_ms  the first switch to every other tab, each painted
//   relayout_median_ms, relayout_max_ms
//                       a resize from 1400 px to 500 px and back in 40 steps each way with
//                       the first tab current, each step laid out and painted
//   rss_kb              VmRSS after the first paint
//
// The last two lines are the results, "norvik ..." and "floor ...". Runs on the platform that
// QT_QPA_PLATFORM names (offscreen when unset); under xvfb-run use QT_QPA_PLATFORM=xcb.
#include <QApplication>
#include <QBoxLayout>
#include <QElapsedTimer>
#include <QFile>
#include <QLabel>
#include <QProcess>
#include <QRegularExpression>
#include <QStyleFactory>
#include <QTabWidget>
#include <QTemporaryDir>
#include <QToolButton>
#include <QWindow>
#include <algorithm>
#include <cstdio>
#include <functional>

#include <kapplication.h>
#include <kmainwindow.h>
#include <korbstyle_2013.h>
#include <krbtabwidget.h>
#include <ktestsupport.h>

namespace {

struct Shape
{
    int tabs = 20;
    int groups = 10;
    int buttons = 10;
};

constexpr int kWidth = 1400;
constexpr int kHeight = 900;
constexpr int kNarrowest = 500;
constexpr int kStepsEachWay = 40;

const char* const kIcons[] = {"edit-copy", "edit-cut", "edit-paste", "document-new", "document-open",
                              "document-save", "format-text-bold", "format-text-italic",
                              "format-justify-left", "format-justify-center"};

// 3 large, 2 small with text, 0 icon only.
int spaceHintOf(int button)
{
    return button == 0 ? 3 : button <= 3 ? 2 : 0;
}

QString buttonText(int t, int g, int b)
{
    return QStringLiteral("Command %1.%2.%3").arg(t).arg(g).arg(b);
}

QByteArray description(const Shape& shape)
{
    QByteArray xml;
    xml += "<ui>\n<attributes path='" NORVIK_SOURCE_DIR "/examples/writer/ui/attributes.xml'/>\n"
           "<theme path='" NORVIK_SOURCE_DIR "/examples/writer/ui/theme/writer.theme.xml'/>\n"
           "<mainwindow caption='Bench'>\n<commands>\n<KRbTabWidgetCommand id='Ribbon'>\n";
    for (int t = 0; t < shape.tabs; ++t) {
        xml += QStringLiteral("<KListCommand id='Tab%1' text='Tab %1'>\n").arg(t).toUtf8();
        for (int g = 0; g < shape.groups; ++g) {
            xml += QStringLiteral("<KRbLogicGroupCommand id='G%1_%2' text='Group %2'>\n").arg(t).arg(g).toUtf8();
            for (int b = 0; b < shape.buttons; ++b) {
                xml += QStringLiteral("<KTriggerCommand id='C%1_%2_%3' text='%4' icon='%5' spaceHint='%6'/>\n")
                           .arg(t)
                           .arg(g)
                           .arg(b)
                           .arg(buttonText(t, g, b), QLatin1String(kIcons[b % 10]))
                           .arg(spaceHintOf(b))
                           .toUtf8();
            }
            xml += "</KRbLogicGroupCommand>\n";
        }
        xml += "</KListCommand>\n";
    }
    xml += "</KRbTabWidgetCommand>\n</commands>\n<krbtabwidget cmd='Ribbon'/>\n</mainwindow>\n</ui>\n";
    return xml;
}

QIcon tangoIcon(int b)
{
    QIcon icon;
    for (const char* size : {"16x16", "32x32"}) {
        const QString path = QStringLiteral("/usr/share/icons/Tango/%1/actions/%2.png").arg(size, kIcons[b % 10]);
        if (QFile::exists(path))
            icon.addFile(path);
    }
    return icon;
}

// The floor: every page made now, large buttons in a column of their own, the others two to
// a column (as the 2013 look stacks them), a titled box per group.
QWidget* buildFloor(const Shape& shape)
{
    auto* tabs = new QTabWidget;
    for (int t = 0; t < shape.tabs; ++t) {
        auto* page = new QWidget;
        auto* row = new QHBoxLayout(page);
        row->setContentsMargins(2, 2, 2, 2);
        row->setSpacing(4);
        for (int g = 0; g < shape.groups; ++g) {
            auto* group = new QVBoxLayout;
            auto* controls = new QHBoxLayout;
            QVBoxLayout* column = nullptr;
            for (int b = 0; b < shape.buttons; ++b) {
                auto* button = new QToolButton(page);
                button->setText(buttonText(t, g, b));
                button->setIcon(tangoIcon(b));
                button->setAutoRaise(true);
                const int hint = spaceHintOf(b);
                if (hint == 3) {
                    button->setIconSize(QSize(24, 24));
                    button->setToolButtonStyle(Qt::ToolButtonTextUnderIcon);
                    controls->addWidget(button);
                    column = nullptr;
                    continue;
                }
                button->setToolButtonStyle(hint == 2 ? Qt::ToolButtonTextBesideIcon : Qt::ToolButtonIconOnly);
                if (!column || column->count() == 2) {
                    column = new QVBoxLayout;
                    column->setSpacing(0);
                    controls->addLayout(column);
                }
                column->addWidget(button);
            }
            group->addLayout(controls);
            auto* title = new QLabel(QStringLiteral("Group %1").arg(g), page);
            title->setAlignment(Qt::AlignCenter);
            group->addWidget(title);
            row->addLayout(group);
        }
        row->addStretch();
        tabs->addTab(page, QStringLiteral("Tab %1").arg(t));
    }
    auto* window = new QWidget;
    auto* layout = new QVBoxLayout(window);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->addWidget(tabs);
    layout->addStretch();
    return window;
}

long rssKb()
{
    QFile status(QStringLiteral("/proc/self/status"));
    if (!status.open(QIODevice::ReadOnly))
        return -1;
    for (const QByteArray& line : status.readAll().split('\n')) {
        if (line.startsWith("VmRSS:"))
            return line.mid(6).trimmed().split(' ').first().toLong();
    }
    return -1;
}

double ms(const QElapsedTimer& t)
{
    return t.nsecsElapsed() / 1e6;
}

// Everything the shown window asked for (layouts, the paint of the first frame) is done.
void settle()
{
    for (int i = 0; i < 3; ++i) {
        QCoreApplication::sendPostedEvents();
        QCoreApplication::processEvents(QEventLoop::AllEvents);
    }
}

struct Result
{
    double construct = 0;
    double firstPaint = 0;
    double tabSwitch = 0;
    double relayoutMedian = 0;
    double relayoutMax = 0;
    long rss = 0;
};

// Shows the window and measures the rest; switchTo(i) makes tab i current.
void measureShown(QWidget* window, QWidget* tabsWidget, int tabs, const std::function<void(int)>& switchTo,
                  Result* r)
{
    QElapsedTimer t;
    t.start();
    window->show();
    while (!window->windowHandle() || !window->windowHandle()->isExposed())
        QCoreApplication::processEvents(QEventLoop::AllEvents, 5);
    settle();
    window->repaint(); // on a platform that paints lazily, the frame is made now at the latest
    r->firstPaint = ms(t);
    r->rss = rssKb();

    t.start();
    for (int i = 1; i < tabs; ++i) {
        switchTo(i);
        QCoreApplication::sendPostedEvents(nullptr, QEvent::LayoutRequest);
        tabsWidget->repaint();
    }
    r->tabSwitch = ms(t);

    switchTo(0);
    settle();
    QList<double> steps;
    for (int step = 0; step < 2 * kStepsEachWay; ++step) {
        const int down = step < kStepsEachWay ? step + 1 : 2 * kStepsEachWay - step - 1;
        t.start();
        window->resize(kWidth - (kWidth - kNarrowest) * down / kStepsEachWay, kHeight);
        QCoreApplication::sendPostedEvents(nullptr, QEvent::LayoutRequest);
        window->repaint();
        steps.append(ms(t));
    }
    std::sort(steps.begin(), steps.end());
    r->relayoutMedian = steps.at(steps.size() / 2);
    r->relayoutMax = steps.last();
}

QString line(const char* who, const Result& r)
{
    return QString::asprintf("%s construct_ms=%.1f first_paint_ms=%.1f tabswitch_total_ms=%.1f "
                             "relayout_median_ms=%.2f relayout_max_ms=%.2f rss_kb=%ld",
                             who, r.construct, r.firstPaint, r.tabSwitch, r.relayoutMedian, r.relayoutMax, r.rss);
}

int runNorvik(const Shape& shape)
{
    QTemporaryDir dir;
    const QString path = KTestSupport::writeFile(dir.filePath(QStringLiteral("bench.xml")), description(shape));
    Result r;
    QElapsedTimer t;
    t.start();
    if (!KApplication::instance()->setupXml(path)) {
        std::fprintf(stderr, "bench_ribbon: the description was refused\n");
        return 1;
    }
    KMainWindow window;
    window.polishXml();
    window.resize(kWidth, kHeight);
    r.construct = ms(t);
    KRbTabWidget* ribbon = window.headerBar();
    if (!ribbon) {
        std::fprintf(stderr, "bench_ribbon: no ribbon was built\n");
        return 1;
    }
    measureShown(&window, ribbon, shape.tabs, [ribbon](int i) { ribbon->setCurrentItem(i); }, &r);
    std::printf("%s\n", qPrintable(line("norvik", r)));
    return 0;
}

int runFloor(const Shape& shape)
{
    QApplication::setStyle(new KORBStyle_2013(QStyleFactory::create(QStringLiteral("Fusion"))));
    Result r;
    QElapsedTimer t;
    t.start();
    QScopedPointer<QWidget> window(buildFloor(shape));
    window->resize(kWidth, kHeight);
    r.construct = ms(t);
    auto* tabs = window->findChild<QTabWidget*>();
    measureShown(window.data(), tabs, shape.tabs, [tabs](int i) { tabs->setCurrentIndex(i); }, &r);
    std::printf("%s\n", qPrintable(line("floor", r)));
    return 0;
}

// The icon folders of the demo's theme that lie beside the demo, not beside the bench.
QtMessageHandler s_previous = nullptr;
void quietHandler(QtMsgType type, const QMessageLogContext& context, const QString& message)
{
    if (type == QtWarningMsg && message.startsWith(QLatin1String("Resource Loader: Dir")))
        return;
    s_previous(type, context, message);
}

} // namespace

int main(int argc, char** argv)
{
    if (qEnvironmentVariableIsEmpty("QT_QPA_PLATFORM"))
        qputenv("QT_QPA_PLATFORM", "offscreen");
    s_previous = qInstallMessageHandler(quietHandler);
    KApplication app(argc, argv);
    Shape shape;
    int rounds = 3;
    QString only;
    const QStringList args = app.arguments();
    for (int i = 1; i + 1 < args.size(); i += 2) {
        const QString& key = args.at(i);
        const int value = args.at(i + 1).toInt();
        if (key == QLatin1String("--tabs"))
            shape.tabs = qMax(1, value);
        else if (key == QLatin1String("--groups"))
            shape.groups = qMax(1, value);
        else if (key == QLatin1String("--buttons"))
            shape.buttons = qMax(1, value);
        else if (key == QLatin1String("--rounds"))
            rounds = qMax(1, value);
        else if (key == QLatin1String("--only"))
            only = args.at(i + 1);
    }
    if (only == QLatin1String("norvik"))
        return runNorvik(shape);
    if (only == QLatin1String("floor"))
        return runFloor(shape);

    // Each measure in a process of its own, so that neither inherits the other's caches.
    QMap<QString, QList<QStringList>> results;
    const QRegularExpression number(QStringLiteral("=([0-9.]+)"));
    for (int round = 0; round < rounds; ++round) {
        for (const char* who : {"norvik", "floor"}) {
            QProcess child;
            child.setProcessChannelMode(QProcess::ForwardedErrorChannel);
            child.start(QCoreApplication::applicationFilePath(),
                        {"--tabs", QString::number(shape.tabs), "--groups", QString::number(shape.groups),
                         "--buttons", QString::number(shape.buttons), "--only", QLatin1String(who)});
            if (!child.waitForFinished(600000) || child.exitCode() != 0) {
                std::fprintf(stderr, "bench_ribbon: the %s run failed\n", who);
                return 1;
            }
            const QString out = QString::fromUtf8(child.readAllStandardOutput()).trimmed();
            std::printf("round %d: %s\n", round + 1, qPrintable(out));
            QStringList values;
            for (auto it = number.globalMatch(out); it.hasNext();)
                values << it.next().captured(1);
            results[QLatin1String(who)].append(values);
        }
    }
    std::printf("%d tabs x %d groups x %d buttons = %d commands, %dx%d, platform %s; medians of %d rounds:\n",
                shape.tabs, shape.groups, shape.buttons, shape.tabs * shape.groups * shape.buttons, kWidth, kHeight,
                qPrintable(QGuiApplication::platformName()), rounds);
    for (const char* who : {"norvik", "floor"}) {
        const QList<QStringList>& runs = results.value(QLatin1String(who));
        Result m;
        auto median = [&runs](int field) {
            QList<double> v;
            for (const QStringList& run : runs)
                v << run.value(field).toDouble();
            std::sort(v.begin(), v.end());
            return v.at(v.size() / 2);
        };
        m.construct = median(0);
        m.firstPaint = median(1);
        m.tabSwitch = median(2);
        m.relayoutMedian = median(3);
        m.relayoutMax = median(4);
        m.rss = long(median(5));
        std::printf("%s\n", qPrintable(line(who, m)));
    }
    return 0;
}
