#include "kcommandwidgetbridge.h"

#include <kapplication.h>
#include <kappidlesvr.h>
#include <kevent.h>

namespace {
KCommandBridgeHelper::RichTipHandler s_richTipHandler = nullptr;

KAppIdleSvr* applicationIdleSvr()
{
    KApplication* app = KApplication::instance();
    return app ? app->idleSvr() : nullptr;
}
} // namespace

void KCommandBridgeHelper::registerIdle(QObject* object, bool visibleOnly)
{
    if (KAppIdleSvr* svr = applicationIdleSvr())
        svr->registerItem(object, visibleOnly);
}

void KCommandBridgeHelper::unregisterIdle(QObject* object)
{
    if (KAppIdleSvr* svr = applicationIdleSvr())
        svr->unregisterItem(object);
}

bool KCommandBridgeHelper::handleIdleEvent(KCommand* command, QEvent* event)
{
    if (!event || event->type() != KEvent::eventType(KEvent::Idle))
        return false;
    if (command)
        command->update();
    return true;
}

QString KCommandBridgeHelper::richTipTitle(const QString& title, const QString& shortcutHint)
{
    if (shortcutHint.isEmpty())
        return title;
    return title + QStringLiteral(" (") + shortcutHint + QStringLiteral(")");
}

void KCommandBridgeHelper::setRichTipHandler(RichTipHandler handler)
{
    s_richTipHandler = handler;
}

KCommandBridgeHelper::RichTipHandler KCommandBridgeHelper::richTipHandler()
{
    return s_richTipHandler;
}

bool KCommandBridgeHelper::showRichTip(QWidget* widget, KCommand* command, const QHelpEvent* event)
{
    return showRichTip(widget, command, command ? command->customTip() : QString(), event);
}

bool KCommandBridgeHelper::showRichTip(QWidget* widget, KCommand* command, const QString& key,
                                       const QHelpEvent* event)
{
    if (!s_richTipHandler || !widget || !command || !event || key.isEmpty())
        return false;
    return s_richTipHandler(widget, command, key, event->globalPos());
}
