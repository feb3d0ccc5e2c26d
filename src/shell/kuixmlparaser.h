#ifndef KUIXMLPARASER_H
#define KUIXMLPARASER_H

#include <kdomelement.h>
#include <norvikofficeui_export.h>

class KMainWindow;

/**
 * Reads the "mainwindow" element of a description and builds the bars of one main window.
 * Commands are made by the window's registry; each bar element names its command by "cmd",
 * which must be defined ahead of the element. A failing element is dropped with one warning.
 * A shielded window (KMainWindow::GetShieldButton()) reads a reduced set of elements.
 */
class NORVIKOFFICEUI_EXPORT KUiXmlParaser
{
public:
    bool setupUiByXml(KMainWindow* window, const KDomElement& element);

private:
    bool _ParseMainwindowEle(KMainWindow* window, const KDomElement& element);
    void _ParsePopupMenuEle(const KDomElement& element, KMainWindow* window);
    void _ParseToolBarEle(const KDomElement& element, KMainWindow* window);
    void _ParseDockEle(const KDomElement& element, KMainWindow* window);
    void _ParseMenuBarEle(const KDomElement& element, KMainWindow* window);
    void _ParseKRbWidgetEle(const KDomElement& element, KMainWindow* window);
    void _ParseStatusBar(const KDomElement& element, KMainWindow* window);
    void _ParseQuicktool(const KDomElement& element, KMainWindow* window);
    void _ParseNoTabPageCmd(const KDomElement& element, KMainWindow* window);
    void _ParseTabBarNewButton(const KDomElement& element, KMainWindow* window);
};

#endif // KUIXMLPARASER_H
