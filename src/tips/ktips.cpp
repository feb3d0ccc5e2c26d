#include "ktips.h"

#include <QCoreApplication>
#include <QDebug>
#include <QDir>
#include <QFileInfo>
#include <QRect>
#include <QVariant>
#include <QWidget>

#include <kapplication.h>
#include <kcommand.h>
#include <kcommandwidgetbridge.h>
#include <kdomdocument.h>
#include <ktip.h>
#include <ktooltip.h>

namespace {

// Shows the catalogue's tip key for a widget of command: the title carries the command's
// shortcut. Installed while a catalogue exists.
bool showCatalogueTip(QWidget* widget, KCommand* command, const QString& key, const QPoint& globalPos)
{
    KApplication* app = KApplication::instance();
    KTips* tips = app ? app->tips() : nullptr;
    KTip* tip = tips ? tips->getTip(key) : nullptr;
    if (!tip)
        return false;
    KToolTip::showText(globalPos,
                       KCommandBridgeHelper::richTipTitle(tip->tipTitle(), command->shortcutHint()),
                       tip->tipContent(), tip->tipLink(), tip->tipPicUrl(), tip->tipPicPosition(),
                       tip->tipLinkUrl(), widget, QRect());
    return true;
}

int s_customTipCounter = 0;

} // namespace

KTips::KTips(QObject* parent, QObject* host)
    : QObject(parent)
    , m_host(host)
{
    KCommandBridgeHelper::setRichTipHandler(&showCatalogueTip);
}

KTips::~KTips()
{
    if (KCommandBridgeHelper::richTipHandler() == &showCatalogueTip)
        KCommandBridgeHelper::setRichTipHandler(nullptr);
}

bool KTips::setupMainXml(const KDomDocument& doc)
{
    const KDomElement element = doc.documentElement().firstChildElement(QStringLiteral("tips"));
    if (element.isNull())
        return false;
    const QString path = element.attribute(QStringLiteral("path"));
    if (path.isEmpty()) {
        qWarning().noquote() << "tips at " << element.lineNumber() << ": " << " need path attribute.";
        return false;
    }
    if (path != m_path) {
        m_path = path;
        m_loaded = false; // a new file is read at the next look-up
    }
    return true;
}

bool KTips::setupXml(const KDomDocument& doc)
{
    const KDomElement tips = doc.documentElement().firstChildElement(QStringLiteral("tips"));
    if (tips.isNull())
        return false;
    for (KDomElement e = tips.firstChildElement(QStringLiteral("KToolTip")); !e.isNull();
         e = e.nextSiblingElement(QStringLiteral("KToolTip"))) {
        const QString id = e.attribute(QStringLiteral("id"));
        if (id.isEmpty()) // still stored, under the empty id
            qWarning().noquote() << e.tagName() << "you must give a topmost tip an id.";
        else if (m_tips.contains(id))
            qWarning().noquote() << "id repeated:" << id;

        auto* tip = new KTip(this, m_host);
        tip->setTipTitle(e.attribute(QStringLiteral("tipTitle")));
        tip->setTipContent(e.attribute(QStringLiteral("tipContent")));
        tip->setTipPicUrl(e.attribute(QStringLiteral("tipPicUrl")));
        tip->setTipPicPosition(e.attribute(QStringLiteral("tipPicPosition")));
        // "#" is how a tip says that it has no link, whatever its link text.
        const QString url = e.attribute(QStringLiteral("tipLinkUrl"));
        if (url != QLatin1String("#")) {
            tip->setTipLink(e.attribute(QStringLiteral("tipLink")));
            tip->setTipLinkUrl(url);
        }
        addTip(id, tip);
    }
    return true;
}

void KTips::ensureLoaded()
{
    if (m_loaded)
        return;
    // Set first and kept whatever happens: a file that fails is not read again.
    m_loaded = true;
    if (m_path.isEmpty())
        return; // the description names no tip file
    const QFileInfo file(QDir(QCoreApplication::applicationDirPath() + QStringLiteral("/res")), m_path);
    if (!file.exists()) {
        qWarning().noquote() << "KApplication: XML: file not exist:" << m_path;
        return;
    }
    KDomDocument doc;
    if (!doc.setContent(file.absoluteFilePath()))
        return;
    setupXml(doc);
}

KTip* KTips::getTip(const QString& id)
{
    ensureLoaded();
    return m_tips.value(id, nullptr);
}

void KTips::addTip(const QString& id, KTip* tip)
{
    if (!tip)
        return;
    m_tips.insert(id, tip);
    // A tip owned elsewhere may die first; its entry goes with it.
    connect(tip, &QObject::destroyed, this, [this](QObject* gone) {
        for (auto it = m_tips.begin(); it != m_tips.end();)
            it = it.value() == gone ? m_tips.erase(it) : std::next(it);
    });
}

KTip* KTips::getTipInstance(const QString& text, QObject* parent, QObject* host)
{
    const QString id = QStringLiteral("custom %1").arg(++s_customTipCounter);
    auto* tip = new KTip(parent ? parent : this, host);
    tip->setTipTitle(text);
    tip->setProperty("id", id);
    addTip(id, tip);
    return tip;
}

void KTips::resetXML()
{
    m_tips.clear();
    const QObjectList kids = children();
    for (int i = kids.size() - 1; i >= 0; --i)
        delete kids.at(i);
    m_path.clear();
    m_loaded = false;
}
