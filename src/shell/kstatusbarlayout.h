#ifndef KSTATUSBARLAYOUT_H
#define KSTATUSBARLAYOUT_H

#include <QBoxLayout>

#include <kseparatorcommand.h>
#include <norvikofficeui_export.h>

/**
 * The short vertical line between two items of a status bar. Its colours come from the theme
 * class "KStatusBarSeparator" (keys "background" and "separator").
 */
class NORVIKOFFICEUI_EXPORT KStatusBarSeparator : public KSeparatorWidget
{
    Q_OBJECT
public:
    explicit KStatusBarSeparator(QWidget* parent = nullptr);

    QSize sizeHint() const override;

protected:
    void paintEvent(QPaintEvent* e) override;
};

/**
 * The row of a status bar, left to right. The last stretch splits it in two halves: the items
 * behind the stretch keep their place at the right edge, the items ahead of it take what room
 * is left. When the hints don't fit, every item gives up an equal share of the excess down to
 * its minimum; a left item that still doesn't fit is hidden, a right item only once the row
 * runs out at the left edge. Two separators never stand next to each other.
 */
class NORVIKOFFICEUI_EXPORT KStatusBarLayout : public QBoxLayout
{
    Q_OBJECT
public:
    explicit KStatusBarLayout(QWidget* parent = nullptr);

    /** The x position, relative to the layout's rectangle, where the right half begins. */
    int getLastStrechPos() const { return m_lastStrechPos; }

    /** A status bar never forces the window's width: the minimum width is 0. */
    QSize minimumSize() const override;
    void setGeometry(const QRect& rect) override;

private:
    int indexOfLastStrech() const;
    static bool isSepeartor(QLayoutItem* item);
    static void hideItem(QLayoutItem* item);

    int m_lastStrechPos = 0;
};

#endif // KSTATUSBARLAYOUT_H
