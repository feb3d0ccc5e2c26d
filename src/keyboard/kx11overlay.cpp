#include "kx11overlay_p.h"

#include <QByteArray>
#include <QGuiApplication>

// X11 headers last: their macros clash with Qt's names.
#include <X11/Xlib.h>

bool KX11Overlay::isCompositingManagerRunning()
{
    auto* x11 = qApp ? qApp->nativeInterface<QNativeInterface::QX11Application>() : nullptr;
    Display* display = x11 ? x11->display() : nullptr;
    if (!display)
        return true;
    const QByteArray name = "_NET_WM_CM_S" + QByteArray::number(DefaultScreen(display));
    const Atom atom = XInternAtom(display, name.constData(), False);
    return XGetSelectionOwner(display, atom) != 0;
}
