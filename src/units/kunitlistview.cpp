#include "kunitlistview.h"

#include <QKeyEvent>

KUnitListView::KUnitListView(QWidget* parent)
    : QListWidget(parent)
{
    setFrameShape(QFrame::NoFrame);
    setUniformItemSizes(true);
    setSelectionMode(QAbstractItemView::SingleSelection);
    setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
    setVerticalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
    setMouseTracking(true);
    connect(this, &QAbstractItemView::entered, this, &KUnitListView::onMouseEnter);
}

KUnitListView::~KUnitListView() = default;

void KUnitListView::copyView(const KUnitListView* other)
{
    if (!other)
        return;
    clear();
    for (int i = 0; i < other->count(); ++i)
        addItem(other->item(i)->text());
    setCurrentRow(other->currentRow());
    setFixedSize(other->minimumSize() == other->maximumSize() ? other->minimumSize() : other->sizeHint());
}

void KUnitListView::onEnterPressed(const QModelIndex& index)
{
    if (index.isValid())
        Q_EMIT activated(index);
}

void KUnitListView::onMouseEnter(const QModelIndex& index)
{
    if (index.isValid() && index != currentIndex())
        setCurrentIndex(index);
}

bool KUnitListView::event(QEvent* e)
{
    // Tab would move the focus before keyPressEvent() sees it; in a list of units it closes.
    if (e->type() == QEvent::KeyPress) {
        const int key = static_cast<QKeyEvent*>(e)->key();
        if (key == Qt::Key_Tab || key == Qt::Key_Backtab) {
            Q_EMIT aboutToClose();
            return true;
        }
    }
    return QListWidget::event(e);
}

void KUnitListView::keyPressEvent(QKeyEvent* e)
{
    switch (e->key()) {
    case Qt::Key_Return:
    case Qt::Key_Enter:
        onEnterPressed(currentIndex());
        return;
    case Qt::Key_Escape:
        Q_EMIT aboutToClose();
        return;
    default:
        QListWidget::keyPressEvent(e);
    }
}
