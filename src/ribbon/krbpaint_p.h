// Not part of the public interface: shared by the ribbon's widgets for painting.
#ifndef KRBPAINT_P_H
#define KRBPAINT_P_H

#include <QWidget>

#include <korbstyle.h>

namespace KRbPaint {

/// The framework's own style draws the ribbon's custom elements; any other style gets the
/// stock elements they stand for, so a host's own style still shows something sensible.
inline bool isFrameworkStyle(const QWidget* widget)
{
    return qobject_cast<const KORBStyle*>(widget->style()) != nullptr;
}

} // namespace KRbPaint

#endif // KRBPAINT_P_H
