// The flat look's key-tip labels: the same parts as the base look, with the small corner
// radius of the look's other flat panels.
#include "korbstyle_2013.h"

#include "kstyleoptionhotkey.h"

void KORBStyle_2013::drawControl_KHotKeyItem(const KStyleOptionHotKey* option, QPainter* painter,
                                            const QWidget*) const
{
    paintHotKeyItem(option, painter, 1);
}
