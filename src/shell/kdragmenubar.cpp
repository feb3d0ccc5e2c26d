#include "kdragmenubar.h"

#include <QLayout>

#include <kcommand.h>
#include <kcommandbarprop.h>
#include <kevent.h>
#include <kmainwindow.h>
#include <kmenubar.h>

KDragMenuBar::KDragMenuBar(KCommand* command, KMainWindow* window)
    : KToolBar(window)
{
    if (command) {
        setObjectName(command->property("id").toString());
        m_prop = new KCommandBarProp(command, window);
    }
    setFullSize(true);
    setClosable(false);
    setFocusPolicy(Qt::NoFocus);
    setWindowTitle(tr("Menu Bar"));
    if (QLayout* l = layout()) {
        l->setContentsMargins(1, 1, 1, 1);
        l->setSizeConstraint(QLayout::SetNoConstraint);
    }
    m_menuBar = new KMenuBar(command, this);
    addWidget(m_menuBar);
    connect(this, &QToolBar::orientationChanged, m_menuBar, &KMenuBar::setOrientation);
    // The bar shows while its command does (a window may keep it only while Alt is held).
    if (command) {
        connect(command, &KCommand::changed, this, [this] {
            KCommand* cmd = menuCommand();
            if (cmd && parentWidget() && parentWidget()->isVisible() && cmd->isVisible() == isHidden())
                setVisible(cmd->isVisible());
        });
    }
}

KDragMenuBar::~KDragMenuBar()
{
    delete m_prop;
}

KCommand* KDragMenuBar::menuCommand() const
{
    return m_menuBar ? m_menuBar->command() : nullptr;
}

bool KDragMenuBar::isPopuping() const
{
    return m_menuBar && m_menuBar->isPopuping();
}

bool KDragMenuBar::event(QEvent* e)
{
    const int type = int(e->type());
    if ((type == KEvent::HotKeyCollect || type == KEvent::HotKeyTrigger) && m_menuBar)
        return sendDirectEvent(m_menuBar, e);
    return KToolBar::event(e);
}
