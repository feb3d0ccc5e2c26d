#include "krblogicgroupvisibletogglecommand.h"

#include <QWidget>

#include <kapplication.h>
#include <kcommandfactory.h>
#include <kmainwindow.h>

static KCommandFactoryItem<KRbLogicGroupVisibleToggleCommand, QObject>
    s_logicGroupVisibleToggleItem(QStringLiteral("KRbLogicGroupVisibleToggleCommand"), QStringLiteral("QObject"));

namespace {
// The fold state of the ribbon, or -1 when there is no ribbon that can tell.
int ribbonStatus(QWidget* ribbon)
{
    int status = 0;
    if (!ribbon || !QMetaObject::invokeMethod(ribbon, "status", Qt::DirectConnection, Q_RETURN_ARG(int, status)))
        return -1;
    return status;
}
} // namespace

KRbLogicGroupVisibleToggleCommand::KRbLogicGroupVisibleToggleCommand(QObject* host, QObject* parent)
    : KTriggerCommand(host, parent)
{
}

KRbLogicGroupVisibleToggleCommand::~KRbLogicGroupVisibleToggleCommand() = default;

QWidget* KRbLogicGroupVisibleToggleCommand::_ribbon() const
{
    KApplication* app = KApplication::instance();
    KMainWindow* window = app ? app->findRelativeMainWindow(host()) : nullptr;
    if (!window)
        return nullptr;
    // The ribbon lives in the ribbon area of the framework; the main window hands it out
    // as its header bar.
    QWidget* ribbon = nullptr;
    if (!QMetaObject::invokeMethod(window, "headerBar", Qt::DirectConnection, Q_RETURN_ARG(QWidget*, ribbon)))
        return nullptr;
    return ribbon;
}

void KRbLogicGroupVisibleToggleCommand::onTriggered()
{
    QWidget* ribbon = _ribbon();
    const int status = ribbonStatus(ribbon);
    if (status < 0)
        return;
    // Shown folds; folded shows; stuck open folds for good.
    const int next = status == 1 ? 0 : 1;
    QMetaObject::invokeMethod(ribbon, "setStatus", Qt::DirectConnection, Q_ARG(int, next), Q_ARG(bool, true));
    setIcon(status == 1 ? m_iconExtent : m_iconHide);
}

void KRbLogicGroupVisibleToggleCommand::update()
{
    const int status = ribbonStatus(_ribbon());
    if (status < 0)
        return;
    switch (status) {
    case 0:
        setIcon(m_iconExtent);
        break;
    case 1:
        setIcon(m_iconHide);
        break;
    case 2:
        setIcon(m_iconStick);
        break;
    default:
        break;
    }
}
