#ifndef KRBPICTURES_P_H
#define KRBPICTURES_P_H

#include <QIcon>

class QWidget;

/**
 * The small pictures the ribbon's own controls carry: the pin of a recent document
 * ("filepagefixed", "filepageunfixed"), the cross that drops one ("DeleteRecord",
 * "DeleteRecordNormal"), and the paging arrows of the quick access panel ("rb_more_left",
 * "rb_more_right"). The icon theme's picture of that name wins; otherwise the picture is
 * drawn in the widget's text colour, so that it follows the theme.
 */
namespace KRbPictures {
QIcon icon(const QString& name, const QWidget* widget);
}

#endif // KRBPICTURES_P_H
