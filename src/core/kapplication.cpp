#include "kapplication.h"

#include <QDebug>
#include <QDesktopServices>
#include <QDialog>
#include <QDir>
#include <QFileInfo>
#include <QFontDatabase>
#include <QSet>
#include <QUrl>
#include <QVariant>

#include <kappattributeparser.h>
#include <kappidlesvr.h>
#include <kapplibraries.h>
#include <kappresourceloader.h>
#include <kapptheme.h>
#include <kcommands.h>
#include <kdrawhelpfunc.h>
#include <kprocessupdatesvr.h>
#include <ktips.h>
#include "kmainwindow.h"

#include <cstdio>
#include <cstdlib>

namespace {

// Deeper import chains than this are refused; a description never needs that many levels
// and the bound keeps a runaway description from exhausting the stack.
constexpr int kMaxImportDepth = 32;

void frameworkMessageHandler(QtMsgType type, const QMessageLogContext&, const QString& msg)
{
    switch (type) {
    case QtDebugMsg:
    case QtInfoMsg:
    case QtWarningMsg:
        // Deliberately silent: every framework diagnostic is a warning, and a released
        // program says nothing unless its host installs a handler of its own.
        break;
    case QtCriticalMsg:
        fprintf(stderr, "Critical: %s\n", msg.toLocal8Bit().constData());
        break;
    case QtFatalMsg:
        fprintf(stderr, "Fatal: %s\n", msg.toLocal8Bit().constData());
        abort();
    }
}

/**
 * Raises the modal notifications: one "entered" event when a modal window is shown and one
 * "left" event when it goes away, each carrying the modal widget.
 */
class KModalWatcher : public QObject
{
public:
    explicit KModalWatcher(KApplication* app)
        : QObject(app), m_app(app) {}

protected:
    bool eventFilter(QObject* obj, QEvent* e) override
    {
        const QEvent::Type t = e->type();
        if ((t == QEvent::Show || t == QEvent::Hide) && obj->isWidgetType()) {
            QWidget* w = static_cast<QWidget*>(obj);
            if (t == QEvent::Show && w->isWindow() && w->isModal() && !m_shown.contains(w)) {
                m_shown.insert(w);
                connect(w, &QObject::destroyed, this, &KModalWatcher::onDestroyed,
                        Qt::UniqueConnection);
                KModalEvent entered(KApplication::ModalEnteredEvent, w);
                QCoreApplication::sendEvent(m_app, &entered);
            } else if (t == QEvent::Hide && m_shown.remove(w)) {
                KModalEvent left(KApplication::ModalLeftEvent, w);
                QCoreApplication::sendEvent(m_app, &left);
            }
        }
        return false;
    }

private:
    void onDestroyed(QObject* obj)
    {
        // A modal window destroyed while shown without a hide event still ends its modality.
        if (m_shown.remove(obj)) {
            KModalEvent left(KApplication::ModalLeftEvent, nullptr);
            QCoreApplication::sendEvent(m_app, &left);
        }
    }

    KApplication* m_app;
    QSet<QObject*> m_shown;
};

// The dialogs hidden around modal windows. Guarded: a dialog destroyed while hidden drops out.
QList<QPointer<QDialog>>& hiddenDialogs()
{
    static QList<QPointer<QDialog>> s_hidden;
    return s_hidden;
}

} // namespace

void loadPrivateFonts()
{
    const QDir dir(QCoreApplication::applicationDirPath() + QDir::separator() + QStringLiteral("fonts"));
    if (!dir.exists())
        return;
    const QStringList entries = dir.entryList({QStringLiteral("*.ttc"), QStringLiteral("*.ttf")},
                                              QDir::Files, QDir::NoSort);
    for (const QString& entry : entries) {
        const QString path = dir.absoluteFilePath(entry);
        if (QFontDatabase::addApplicationFont(path) == -1)
            qWarning().noquote() << "Could not load" << path;
    }
}

KApplication::KApplication(int& argc, char** argv)
    : QApplication(argc, argv)
{
    qInstallMessageHandler(frameworkMessageHandler);
    verifyQtLibrary();
    loadPrivateFonts();
    QCoreApplication::setAttribute(Qt::AA_DontCreateNativeWidgetSiblings, true);
    QCoreApplication::setAttribute(Qt::AA_DontShowIconsInMenus, false);
    m_theme = new KAppTheme(this); // creates the icon loader
    m_tips = new KTips(this, this);
    m_commands = new KCommands(this, this, nullptr);
    m_libraries = new KAppLibraries;
    m_attrParser = new KAppAttributeParser(this);
    m_idleSvr = new KAppIdleSvr(this);
    m_processUpdateSvr = new KProcessUpdateSvr;
    m_usingDelphi = false;
    installEventFilter(new KModalWatcher(this));
}

KApplication::~KApplication()
{
    delete m_tips;
    m_tips = nullptr;
    delete m_commands;
    m_commands = nullptr;
    delete m_theme;
    m_theme = nullptr;
    // The library table goes after the services whose objects may come from its libraries.
    delete m_libraries;
    m_libraries = nullptr;
    delete m_processUpdateSvr;
    m_processUpdateSvr = nullptr;
}

KApplication* KApplication::instance()
{
    return qobject_cast<KApplication*>(QCoreApplication::instance());
}

void KApplication::verifyQtLibrary()
{
}

void KApplication::focusInCurrentView()
{
}

int KApplication::currentLanguage()
{
    return -1;
}

QString KApplication::currentLanguageName()
{
    switch (currentLanguage()) {
    case 1028:
        return QStringLiteral("zh_TW");
    case 1033:
        return QStringLiteral("en_US");
    case 1041:
        return QStringLiteral("jp_JP");
    case 1066:
        return QStringLiteral("vi");
    case 2052:
        return QStringLiteral("zh_CN");
    default:
        // Descriptions compare against this exact text in their "lang" filters.
        return QStringLiteral("Unknow_Language");
    }
}

void KApplication::onCommandTrigger(const QString&)
{
}

void KApplication::openUrl()
{
    if (!m_linkUrl.isEmpty())
        QDesktopServices::openUrl(QUrl(m_linkUrl));
}

// --- XML set-up ---

bool KApplication::setupXml(const QString& path)
{
    m_importChain.clear();
    return _setupXml(path, 0);
}

bool KApplication::_setupXml(const QString& path, int depth)
{
    const QFileInfo info(QDir(QCoreApplication::applicationDirPath()), path);
    if (!info.exists())
        qWarning().noquote() << "KApplication: XML: file not exist:" << path;

    KDomDocument doc;
    if (!doc.setContent(info.absoluteFilePath()))
        return false;

    if (depth == 0 && !onSetupMainXml(doc))
        return false;

    const KDomElement root = doc.documentElement();
    const QString absPath = info.absoluteFilePath();
    m_importChain.append(absPath);
    for (KDomElement imp = root.firstChildElement(QStringLiteral("import")); !imp.isNull();
         imp = imp.nextSiblingElement(QStringLiteral("import"))) {
        const QString subRel = imp.attribute(QStringLiteral("path"));
        if (subRel.isEmpty()) {
            qWarning().noquote() << "KApplication: XML(" << absPath << ")" << root.lineNumber()
                                 << ": " << "import node need path attribute.";
            continue;
        }
        const QString subPath = QFileInfo(info.absoluteDir(), subRel).absoluteFilePath();
        bool ok = false;
        if (m_importChain.contains(subPath)) {
            qWarning().noquote() << "KApplication: XML(" << absPath << ")" << root.lineNumber()
                                 << ": " << "import cycle:" << subPath << "is already being loaded.";
        } else if (depth + 1 > kMaxImportDepth) {
            qWarning().noquote() << "KApplication: XML(" << absPath << ")" << root.lineNumber()
                                 << ": " << "imports nested deeper than" << kMaxImportDepth
                                 << "documents:" << subPath;
        } else {
            ok = _setupXml(subPath, depth + 1);
        }
        if (!ok) {
            qWarning().noquote() << "KApplication: XML(" << absPath << ")" << root.lineNumber()
                                 << ": " << "Can not import sub xml.";
        }
    }
    m_importChain.removeLast();

    m_doms.append(doc);
    onXmlSetuped(doc); // its result does not change the outcome of the load
    return true;
}

bool KApplication::onSetupMainXml(const KDomDocument& doc)
{
    // The services that read the main document's own sections hook in here, in the order
    // attributes, theme, tips.
    if (!m_attrParser->setupMainXml(doc))
        return false;
    if (!m_theme->setupMainXml(doc))
        return false;
    m_tips->setupMainXml(doc); // a description without tips is fine
    return true;
}

bool KApplication::onXmlSetuped(const KDomDocument& doc)
{
    // The libraries of a document are loaded before its commands are parsed.
    if (!m_libraries->setupXml(doc))
        return false;
    if (!m_commands->setupXml(doc.documentElement().firstChildElement(QStringLiteral("commands")), false))
        return false;
    Q_EMIT xmlSetuped(doc);
    return true;
}

void KApplication::resetXml()
{
    m_commands->resetXML();
    m_attrParser->resetXml();
    m_tips->resetXML();
    m_theme->resetXml();
    m_libraries->resetXml();
    m_doms.clear();
    Q_EMIT xmlReseted();
}

QList<KDomDocument> KApplication::getDoms() const
{
    return m_doms;
}

int KApplication::exec()
{
    m_idleSvr->start();
    const int result = QApplication::exec();
    m_idleSvr->stop();
    return result;
}

// --- the main-window stack ---

void KApplication::keepMainWindowStackTopVaild()
{
    while (!m_mainWindows.isEmpty() && m_mainWindows.first().isNull())
        m_mainWindows.removeFirst();
}

QWidget* KApplication::currentMainWindow()
{
    keepMainWindowStackTopVaild();
    return m_mainWindows.isEmpty() ? nullptr : m_mainWindows.first().data();
}

void KApplication::bringFrontMainWindow(QWidget* w)
{
    keepMainWindowStackTopVaild();
    if (!m_mainWindows.isEmpty() && m_mainWindows.first() == w)
        return;
    const int i = m_mainWindows.indexOf(w);
    if (i >= 0)
        m_mainWindows.removeAt(i);
    m_mainWindows.prepend(w);
}

void KApplication::sentBackMainWindow(QWidget* w)
{
    if (!m_mainWindows.isEmpty() && m_mainWindows.last() == w)
        return;
    const int i = m_mainWindows.indexOf(w);
    if (i >= 0)
        m_mainWindows.removeAt(i);
    m_mainWindows.append(w);
}

void KApplication::_removeFromFreeOrStack(QList<QPointer<QWidget>>& list, QWidget* w)
{
    if (list.isEmpty())
        return;
    const int i = list.indexOf(w);
    if (i >= 0)
        list.removeAt(i);
    if (m_mainWindows.isEmpty() && m_freeMainWindows.isEmpty())
        Q_EMIT lastMainWindowClosed();
}

void KApplication::removeMainWindow(QWidget* w)
{
    _removeFromFreeOrStack(m_mainWindows, w);
}

void KApplication::removeFreeMainWindow(QWidget* w)
{
    _removeFromFreeOrStack(m_freeMainWindows, w);
}

void KApplication::addFreeMainWindow(QWidget* w)
{
    const int i = m_freeMainWindows.indexOf(w);
    if (i >= 0)
        m_freeMainWindows.removeAt(i);
    m_freeMainWindows.append(w);
}

void KApplication::cleanUpMainWindow()
{
    for (int i = m_mainWindows.size() - 1; i >= 0; --i) {
        if (i >= m_mainWindows.size())
            continue; // closing a window may have shortened the stack
        QPointer<QWidget> w = m_mainWindows.at(i);
        if (!w)
            continue;
        w->close();
        if (w)
            delete w.data();
    }
}

void KApplication::getMainWindows(QList<KMainWindow*>& windows)
{
    for (const QPointer<QWidget>& w : std::as_const(m_mainWindows)) {
        if (w)
            windows.append(qobject_cast<KMainWindow*>(w.data()));
    }
}

KMainWindow* KApplication::findRelativeMainWindow(QObject* obj)
{
    for (QObject* o = obj; o; o = o->parent()) {
        if (auto* window = qobject_cast<KMainWindow*>(o))
            return window;
        // A border window stands for the main window it embeds.
        if (o->inherits("KBorderWindow"))
            return qobject_cast<KMainWindow*>(o->property("borderMainWindow").value<QObject*>());
    }
    return nullptr;
}

// --- modal handling ---

bool KApplication::notify(QObject* receiver, QEvent* e)
{
    const int type = e->type();
    if (type == ModalEnteredEvent || type == ModalLeftEvent) {
        if (auto* modal = dynamic_cast<KModalEvent*>(e))
            setOtherModalessDlgVisible(type == ModalLeftEvent, modal->widget());
    }
    return QApplication::notify(receiver, e);
}

bool KApplication::event(QEvent* e)
{
    return QApplication::event(e);
}

void KApplication::setOtherModalessDlgVisible(bool visible, QWidget* modalWidget)
{
    static const char* const kExempt = "SelectRangeDialog";
    static const char* const kCount = "NoModalDilogCount";
    QList<QPointer<QDialog>>& hidden = hiddenDialogs();
    hidden.removeAll(QPointer<QDialog>());

    auto exempt = [modalWidget](QDialog* d) {
        if (modalWidget && modalWidget->parent() == d)
            return true;
        const QVariant v = d->property(kExempt);
        return v.isValid() && v.toBool();
    };

    if (!visible) {
        auto* mainWindow = qobject_cast<KMainWindow*>(currentMainWindow());
        if (!mainWindow)
            return;
        const QList<QDialog*> dialogs = mainWindow->findChildren<QDialog*>();
        for (QDialog* d : dialogs) {
            if (exempt(d))
                continue;
            if (hidden.contains(d)) {
                d->setProperty(kCount, d->property(kCount).toInt() + 1);
                continue;
            }
            if (d->windowModality() != Qt::NonModal || !d->isVisible())
                continue;
            hidden.append(d);
            d->setProperty(kCount, 1);
            d->setVisible(false);
        }
        return;
    }

    const QList<QPointer<QDialog>> copy = hidden;
    for (const QPointer<QDialog>& d : copy) {
        if (!d || exempt(d))
            continue;
        const int count = d->property(kCount).toInt() - 1;
        d->setProperty(kCount, count);
        if (count == 0) {
            if (!d->testAttribute(Qt::WA_ShowWithoutActivating))
                d->setAttribute(Qt::WA_ShowWithoutActivating);
            d->setVisible(true);
            hidden.removeAll(d);
        }
    }
}

void KApplication::addThemeChangeWidget(QWidget* w)
{
    m_themeChangeWidgets.append(w);
}

void KApplication::setThemeBaseColor(const QColor& color, bool save)
{
    m_theme->setBaseColor(color, save);
    const QColor window = KDrawHelpFunc::getColorFromTheme(QStringLiteral("common"), QStringLiteral("window"));
    if (window.isValid()) {
        QPalette palette = QApplication::palette();
        palette.setColor(QPalette::Window, window);
        QApplication::setPalette(palette);
    }
    // Synchronous, in registration order: these widgets keep colours of their own and must
    // have them refreshed before the repaint below.
    KThemeChangeEvent event;
    const QList<QPointer<QWidget>> widgets = m_themeChangeWidgets;
    for (const QPointer<QWidget>& w : widgets) {
        if (w)
            QCoreApplication::sendEvent(w, &event);
    }
    if (QWidget* mainWindow = currentMainWindow()) {
        QEvent update(QEvent::UpdateRequest);
        QCoreApplication::sendEvent(mainWindow, &update);
        mainWindow->update();
    }
}

bool KApplication::setupTranslator()
{
    return m_translators.setup();
}

QIcon KApplication::loadIcon(const QString& name)
{
    return m_theme->resLoader()->loadIcon(name);
}

QString KApplication::iconName(const QIcon& icon)
{
    return m_theme->resLoader()->iconName(icon);
}
