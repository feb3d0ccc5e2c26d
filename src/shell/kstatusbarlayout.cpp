#include "kstatusbarlayout.h"

#include <QPainter>
#include <QSpacerItem>
#include <QWidget>

#include "kdrawhelpfunc.h"

namespace {
// An item of the separator's theme class, given there as a gradient or a colour; no brush
// when the theme lacks it.
QBrush themeBrush(const QString& item)
{
    const QString cls = QStringLiteral("KStatusBarSeparator");
    const QGradient& gradient = KDrawHelpFunc::getGradientFromTheme(cls, item);
    if (gradient.coordinateMode() == QGradient::ObjectBoundingMode)
        return QBrush(gradient);
    const QColor c = KDrawHelpFunc::getColorFromTheme(cls, item);
    return c.isValid() ? QBrush(c) : QBrush();
}
}

KStatusBarSeparator::KStatusBarSeparator(QWidget* parent)
    : KSeparatorWidget(parent)
{
}

QSize KStatusBarSeparator::sizeHint() const
{
    return QSize(KSeparatorWidget::sizeHint().width(), 22);
}

void KStatusBarSeparator::paintEvent(QPaintEvent*)
{
    QPainter p(this);
    const QBrush background = themeBrush(QStringLiteral("background"));
    const QBrush line = themeBrush(QStringLiteral("separator"));
    if (background.style() != Qt::NoBrush)
        p.fillRect(rect(), background);
    if (line.style() != Qt::NoBrush)
        p.fillRect(QRect(width() / 2, 3, 1, qMax(0, height() - 6)), line);
}

KStatusBarLayout::KStatusBarLayout(QWidget* parent)
    : QBoxLayout(QBoxLayout::LeftToRight, parent)
{
}

QSize KStatusBarLayout::minimumSize() const
{
    return QSize(0, QBoxLayout::minimumSize().height());
}

int KStatusBarLayout::indexOfLastStrech() const
{
    for (int i = count() - 1; i >= 0; --i) {
        if (itemAt(i)->spacerItem())
            return i;
    }
    return count();
}

bool KStatusBarLayout::isSepeartor(QLayoutItem* item)
{
    return item && qobject_cast<KStatusBarSeparator*>(item->widget());
}

void KStatusBarLayout::hideItem(QLayoutItem* item)
{
    // A widget item would bound the null rectangle by the widget's minimum size; the widget
    // itself takes an empty geometry, or, when it has a minimum size of its own, a place
    // wholly left of its parent.
    if (QWidget* w = item->widget()) {
        const QSize least = w->minimumSize();
        w->setGeometry(least.isNull() ? QRect(0, 0, -1, -1) : QRect(QPoint(-least.width() - 1, 0), least));
    } else {
        item->setGeometry(QRect(0, 0, -1, -1));
    }
}

void KStatusBarLayout::setGeometry(const QRect& outer)
{
    if (outer == geometry())
        return;

    const QRect rect = outer.marginsRemoved(contentsMargins());
    const int n = count();
    const int last = indexOfLastStrech();
    const int available = rect.width();
    int sumHint = 0;
    int sumMinimum = 0;
    for (int i = 0; i < n; ++i) {
        sumHint += itemAt(i)->sizeHint().width();
        sumMinimum += itemAt(i)->minimumSize().width();
    }
    const bool squeeze = sumHint > available;
    const int share = squeeze && n > 0 ? (sumHint - available) / n : 0;
    const bool minimumsOverflow = sumMinimum > available;

    auto widthOf = [share](QLayoutItem* item) {
        return qMax(item->sizeHint().width() - share, item->minimumSize().width());
    };
    auto place = [&rect](QLayoutItem* item, int x, int width) {
        const int height = item->sizeHint().height();
        item->setGeometry(QRect(rect.x() + x, rect.y() + (rect.height() - height) / 2, width, height));
    };

    // The right half, from the right edge leftwards.
    int x = available;
    bool lastPlacedIsSeparator = false;
    for (int i = n - 1; i > last; --i) {
        QLayoutItem* item = itemAt(i);
        const bool separator = isSepeartor(item);
        const int width = widthOf(item);
        if (x - width < 0 || (separator && lastPlacedIsSeparator)) {
            hideItem(item);
            continue;
        }
        x -= width;
        place(item, x, width);
        lastPlacedIsSeparator = separator;
    }
    m_lastStrechPos = x;

    // The left half, from the left edge up to the right half.
    int x0 = 0;
    lastPlacedIsSeparator = false;
    for (int i = 0; i < last && i < n; ++i) {
        QLayoutItem* item = itemAt(i);
        const bool separator = isSepeartor(item);
        const int width = widthOf(item);
        const int room = qMax(0, x - x0);
        if ((minimumsOverflow && width > room) || (separator && lastPlacedIsSeparator)) {
            hideItem(item);
            continue;
        }
        const int placed = qMin(width, room);
        if (placed <= 0) {
            hideItem(item);
            continue;
        }
        place(item, x0, placed);
        x0 += placed;
        lastPlacedIsSeparator = separator;
    }

    // The stretch takes the gap between the halves.
    if (last < n)
        itemAt(last)->setGeometry(QRect(rect.x() + x0, rect.y(), qMax(0, x - x0), rect.height()));

    QLayout::setGeometry(outer);
}
