#include "kuixmlparaser.h"

#include <QCoreApplication>
#include <QDebug>

#include "kappattributeparser.h"
#include "kcommandbarprop.h"
#include "kcommands.h"
#include "klistcommand.h"
#include "kdragmenubar.h"
#include "kmainwindow.h"
#include "kshortcuts.h"
#include "krbtabwidget.h"
#include "krbtabwidgetcommand.h"
#include "kstatusbar.h"
#include "ktoolbar.h"

namespace {

// The command named by the element's "cmd", with the warnings of a bar element.
KCommand* barCommand(const KDomElement& element, KMainWindow* window, const char* emptyText)
{
    const QString id = element.attribute(QStringLiteral("cmd"));
    if (id.isEmpty()) {
        qWarning().noquote() << emptyText;
        return nullptr;
    }
    KCommand* command = window->commands()->command(id);
    if (!command)
        qWarning().noquote() << "can not found command named:" << id;
    return command;
}

int positionOfArea(const QString& area)
{
    if (area == QLatin1String("l"))
        return KCommandBarProp::PosLeft;
    if (area == QLatin1String("r"))
        return KCommandBarProp::PosRight;
    if (area == QLatin1String("b"))
        return KCommandBarProp::PosBottom;
    return KCommandBarProp::PosTop;
}

void nameBar(KCommandBarProp& props, const QString& id)
{
    if (props.getName().isEmpty())
        props.setName(id);
}

} // namespace

bool KUiXmlParaser::setupUiByXml(KMainWindow* window, const KDomElement& element)
{
    if (!window || element.isNull())
        return false;
    return _ParseMainwindowEle(window, element);
}

bool KUiXmlParaser::_ParseMainwindowEle(KMainWindow* window, const KDomElement& element)
{
    window->blockHotkey(KAppAttributeParser::parseBool(element.attribute(QStringLiteral("blockHotkey"), QStringLiteral("false"))));
    if (KAppAttributeParser::parseBool(element.attribute(QStringLiteral("hideDocTabbarEx"), QStringLiteral("false"))))
        window->hideDocTabbarEx(true);
    const QString caption = element.attribute(QStringLiteral("caption"));
    if (!caption.isEmpty())
        window->setCaption(QCoreApplication::translate("XML::text", caption.toUtf8().constData()));

    const bool shield = window->GetShieldButton();
    for (KDomElement child = element.firstChildElement(); !child.isNull(); child = child.nextSiblingElement()) {
        const QString tag = child.tagName();
        if (tag == QLatin1String("commands")) {
            window->commands()->setupXml(child, shield);
        } else if (tag == QLatin1String("toolbar")) {
            _ParseToolBarEle(child, window);
        } else if (tag == QLatin1String("popupmenu")) {
            _ParsePopupMenuEle(child, window);
        } else if (tag == QLatin1String("krbtabwidget")) {
            _ParseKRbWidgetEle(child, window);
        } else if (tag == QLatin1String("shortcuts")) {
            // A shielded window has no accelerators for new, open, save and save as.
            if (window->shortcuts())
                window->shortcuts()->setupXml(child, shield);
        } else if (tag == QLatin1String("menubar")) {
            _ParseMenuBarEle(child, window);
        } else if (shield) {
            continue; // a reduced window passes over everything else without a word
        } else if (tag == QLatin1String("dock")) {
            _ParseDockEle(child, window);
        } else if (tag == QLatin1String("statusbar")) {
            _ParseStatusBar(child, window);
        } else if (tag == QLatin1String("KRbQuicktoolCommand")) {
            _ParseQuicktool(child, window);
        } else if (tag == QLatin1String("KNoTabPageCommand")) {
            _ParseNoTabPageCmd(child, window);
        } else if (tag == QLatin1String("KRbTabBarNewButton")) {
            _ParseTabBarNewButton(child, window);
        } else {
            qWarning().noquote() << "can't identity element " << tag;
        }
    }
    return true;
}

void KUiXmlParaser::_ParseToolBarEle(const KDomElement& element, KMainWindow* window)
{
    const bool newLine = KAppAttributeParser::parseBool(element.attribute(QStringLiteral("newLine")));
    const bool floating = KAppAttributeParser::parseBool(element.attribute(QStringLiteral("float")));
    const bool closable = KAppAttributeParser::parseBool(element.attribute(QStringLiteral("closable"), QStringLiteral("true")));
    KCommand* command = barCommand(element, window, "menubar no command given.");
    if (!command)
        return;
    const QString id = element.attribute(QStringLiteral("cmd"));
    const int position = positionOfArea(element.attribute(QStringLiteral("area")));
    {
        KCommandBarProp props(command, window);
        props.setType(KCommandBarProp::ToolBarType);
        nameBar(props, id);
        props.setPosition(position);
    }
    auto* bar = new KToolBar(qobject_cast<KListCommand*>(command), window);
    bar->setProperty("cmd", id);
    window->addToolBar(bar);
    if (newLine)
        window->insertToolBarBreak(bar);
    bar->setFloating(floating);
    bar->setClosable(closable);
}

void KUiXmlParaser::_ParseMenuBarEle(const KDomElement& element, KMainWindow* window)
{
    KCommand* command = barCommand(element, window, "menubar no command given.");
    if (!command)
        return;
    const QString id = element.attribute(QStringLiteral("cmd"));
    {
        KCommandBarProp props(command, window);
        props.setType(KCommandBarProp::MenuBarType);
        nameBar(props, id);
        props.setPosition(KCommandBarProp::PosTop);
    }
    // The bar connects to its entries as it is made: the command shows meanwhile.
    const bool visible = command->isVisible();
    command->setVisible(true);
    auto* bar = new KDragMenuBar(command, window);
    command->setVisible(visible);
    bar->setProperty("cmd", id);
    window->setMenuBar(bar);
    if (!visible)
        bar->hide();
}

void KUiXmlParaser::_ParseKRbWidgetEle(const KDomElement& element, KMainWindow* window)
{
    KCommand* command = barCommand(element, window, "menubar no command given.");
    if (!command)
        return;
    auto* ribbon = qobject_cast<KRbTabWidgetCommand*>(command);
    if (!ribbon) {
        qWarning().noquote() << "krbtabwidget: the command" << element.attribute(QStringLiteral("cmd"))
                             << "is no KRbTabWidgetCommand.";
        return;
    }
    window->setHeaderBar(new KRbTabWidget(ribbon, window));
}

void KUiXmlParaser::_ParsePopupMenuEle(const KDomElement& element, KMainWindow* window)
{
    KCommand* command = barCommand(element, window, "menubar no command given.");
    if (!command)
        return;
    KCommandBarProp props(command, window);
    props.setType(KCommandBarProp::PopupMenuType);
    nameBar(props, element.attribute(QStringLiteral("cmd")));
    props.setPosition(KCommandBarProp::PosFloating);
    window->addPopupMenu(command);
}

void KUiXmlParaser::_ParseDockEle(const KDomElement& element, KMainWindow* window)
{
    KCommand* command = barCommand(element, window, "menubar no command given.");
    if (!command)
        return;
    const Qt::DockWidgetArea area = element.attribute(QStringLiteral("dockArea")) == QLatin1String("dockArea_left")
        ? Qt::LeftDockWidgetArea
        : Qt::RightDockWidgetArea;
    window->addDockWidget(area, command);
}

void KUiXmlParaser::_ParseQuicktool(const KDomElement& element, KMainWindow* window)
{
    const QString id = element.attribute(QStringLiteral("cmd"));
    if (!id.isEmpty())
        window->addrbQuickToolBar(window->commands()->command(id));
}

void KUiXmlParaser::_ParseNoTabPageCmd(const KDomElement& element, KMainWindow* window)
{
    const QString id = element.attribute(QStringLiteral("cmd"));
    if (!id.isEmpty())
        window->addNoTabPageWidget(window->commands()->command(id));
}

void KUiXmlParaser::_ParseTabBarNewButton(const KDomElement& element, KMainWindow* window)
{
    const QString id = element.attribute(QStringLiteral("cmd"));
    if (!id.isEmpty())
        window->addrbTabbarButton(window->commands()->command(id));
}

void KUiXmlParaser::_ParseStatusBar(const KDomElement& element, KMainWindow* window)
{
    KCommand* command = barCommand(element, window, "statusbar no command given.");
    if (!command)
        return;
    auto* bar = new KStatusBar(window);
    bar->setStatusCommand(command);
    window->setStatusBar(bar);
}
