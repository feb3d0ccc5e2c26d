#ifndef KDRAGMENUBAR_H
#define KDRAGMENUBAR_H

#include <ktoolbar.h>

class KCommand;
class KCommandBarProp;
class KMainWindow;
class KMenuBar;

/**
 * The classic menu bar in the dock area: a tool-bar frame around a KMenuBar, spanning its
 * row, so that the bar docks and floats like the tool bars. It can't be closed.
 */
class NORVIKOFFICEUI_EXPORT KDragMenuBar : public KToolBar
{
    Q_OBJECT
public:
    KDragMenuBar(KCommand* command, KMainWindow* window);
    ~KDragMenuBar() override;

    KMenuBar* menuBar() const { return m_menuBar; }
    KCommand* menuCommand() const;
    KCommandBarProp* barProps() const { return m_prop; }
    /// A menu of the bar is open.
    bool isPopuping() const;

protected:
    bool event(QEvent* e) override;

private:
    KMenuBar* m_menuBar = nullptr;
    KCommandBarProp* m_prop = nullptr;
};

#endif // KDRAGMENUBAR_H
