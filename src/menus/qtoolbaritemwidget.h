#ifndef QTOOLBARITEMWIDGET_H
#define QTOOLBARITEMWIDGET_H

#include <QSize>
#include <Qt>

#include <norvikofficeui_export.h>

/**
 * The interface of anything a tool bar may orient. A tool bar that turns vertical tells its
 * items through setOrientation() and then asks them for their sizes in that orientation; an
 * item that draws its caption rotated answers with width and height exchanged.
 */
class NORVIKOFFICEUI_EXPORT QToolBarItemWidget
{
public:
    virtual ~QToolBarItemWidget();

    virtual Qt::Orientation orientation() const = 0;
    virtual void setOrientation(Qt::Orientation orientation) = 0;
    virtual QSize sizeHint(Qt::Orientation orientation) const = 0;
    virtual QSize minimumSize(Qt::Orientation orientation) const = 0;
    virtual QSize maximumSize(Qt::Orientation orientation) const = 0;
    virtual QSize minimumSizeHint(Qt::Orientation orientation) const = 0;
};

#endif // QTOOLBARITEMWIDGET_H
