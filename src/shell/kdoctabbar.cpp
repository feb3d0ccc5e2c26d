#include "kdoctabbar.h"

#include <QApplication>
#include <QDebug>
#include <QDrag>
#include <QFileInfo>
#include <QLabel>
#include <QMdiSubWindow>
#include <QMimeData>
#include <QMouseEvent>
#include <QMovie>
#include <QPainter>
#include <QProgressBar>
#include <QStyleOptionTab>
#include <QTimer>
#include <QVariantAnimation>

#include "kdrawhelpfunc.h"
#include "kmdiarea.h"
#include "korbstyle.h"

namespace {

const int s_arrowWidth = 19;
const int s_arrowsWidth = 2 * s_arrowWidth;

QLayoutItem* itemOf(const QList<QLayoutItem*>& items, int i)
{
    return items.value(i);
}

// An item of the theme class "KTabBar", given there as a gradient or a colour; no brush
// when the theme lacks it.
QBrush themeBrush(const QString& item)
{
    const QString cls = QStringLiteral("KTabBar");
    const QGradient& gradient = KDrawHelpFunc::getGradientFromTheme(cls, item);
    if (gradient.coordinateMode() == QGradient::ObjectBoundingMode)
        return QBrush(gradient);
    const QColor c = KDrawHelpFunc::getColorFromTheme(cls, item);
    return c.isValid() ? QBrush(c) : QBrush();
}

// A thin line can't show a gradient across an area: it takes the gradient's strongest stop.
QBrush lineBrush(const QBrush& brush)
{
    const QGradient* gradient = brush.gradient();
    if (!gradient)
        return brush;
    QColor strongest;
    for (const QGradientStop& stop : gradient->stops()) {
        if (!strongest.isValid() || stop.second.alpha() > strongest.alpha())
            strongest = stop.second;
    }
    return strongest.isValid() ? QBrush(strongest) : QBrush();
}

// A widget item would bound the null rectangle by the widget's minimum size; the widget
// itself takes an empty geometry, which hides it.
void hideItem(QLayoutItem* item)
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

void placeItem(QLayoutItem* item, const QRect& rect)
{
    if (QWidget* w = item->widget())
        w->setGeometry(rect);
    else
        item->setGeometry(rect);
}

/*
 * While a tab's own handler runs (its signal may open a menu with a loop of its own, or close
 * the document), deleteWhenCan() only raises this flag; the guard deletes the tab on the way
 * out, when nothing of it is left on the stack.
 */
class DeleteGuard
{
public:
    DeleteGuard(KDocTab* tab, bool*& slot)
        : m_tab(tab), m_slot(slot), m_outer(slot)
    {
        if (!m_outer)
            m_slot = &m_deleteRequested;
    }
    ~DeleteGuard()
    {
        if (m_outer)
            return; // the outermost handler decides
        m_slot = nullptr;
        if (m_deleteRequested)
            m_tab->deleteLater();
    }

private:
    KDocTab* m_tab;
    bool*& m_slot;
    bool* m_outer;
    bool m_deleteRequested = false;
};

} // namespace

// --- KDocTabbarArrowButton ---

KDocTabbarArrowButton::KDocTabbarArrowButton(Qt::ArrowType direction, QWidget* parent)
    : QAbstractButton(parent), m_direction(direction)
{
    setFocusPolicy(Qt::NoFocus);
    setToolTip(direction == Qt::LeftArrow ? tr("Previous Document") : tr("Next Document"));
    setAttribute(Qt::WA_Hover);
}

void KDocTabbarArrowButton::paintEvent(QPaintEvent*)
{
    const QString suffix = isEnabled() ? QString() : QStringLiteral("-disabled");
    QPainter p(this);
    const QRect r = rect();
    const QBrush fill = themeBrush(QStringLiteral("ArrowBackground") + suffix);
    const QBrush outline = themeBrush(QStringLiteral("ArrowBackground-Outline") + suffix);
    const QBrush inner = themeBrush(QStringLiteral("ArrowBackground-Inline") + suffix);
    // The panel shows only under the mouse; at rest the arrow stands on the strip.
    const bool hot = isEnabled() && (underMouse() || isDown());
    if (hot && fill.style() != Qt::NoBrush)
        p.fillRect(r, fill);
    if (hot && outline.style() != Qt::NoBrush) {
        p.setPen(QPen(outline, 1));
        p.drawRect(r.adjusted(0, 0, -1, -1));
    }
    if (hot && inner.style() != Qt::NoBrush) {
        p.setPen(QPen(inner, 1));
        p.drawRect(r.adjusted(1, 1, -2, -2));
    }
    // The arrow: a chevron of two lines, the second one pixel behind as its shade.
    const int size = 4;
    if (r.width() < size + 4 || r.height() < 2 * size + 2) {
        qWarning().noquote() << "KDocTabbar::Arrow too small, can't not draw complete..";
        return;
    }
    QBrush line1 = lineBrush(themeBrush(QStringLiteral("ArrowBackgroundLine1")));
    const QBrush line2 = lineBrush(themeBrush(QStringLiteral("ArrowBackgroundLine2")));
    // A disabled arrow (the strip's end) is greyed, as any disabled control.
    if (line1.style() == Qt::NoBrush || !isEnabled())
        line1 = palette().brush(isEnabled() ? QPalette::Active : QPalette::Disabled, QPalette::WindowText);
    const QPoint c = r.center();
    const int dir = m_direction == Qt::LeftArrow ? -1 : 1;
    auto chevron = [&](const QBrush& brush, int shift) {
        if (brush.style() == Qt::NoBrush)
            return;
        p.setPen(QPen(brush, 1));
        const QPoint tip(c.x() + dir * size / 2 + shift, c.y());
        p.drawLine(tip, QPoint(tip.x() - dir * size, tip.y() - size));
        p.drawLine(tip, QPoint(tip.x() - dir * size, tip.y() + size));
    };
    if (isEnabled())
        chevron(line2, -dir);
    chevron(line1, 0);
}

void KDocTabbarArrowButton::mouseDoubleClickEvent(QMouseEvent*)
{
    setDown(false);
    Q_EMIT dblClicked();
}

// --- KDocTabbarLayout ---

KDocTabbarLayout::KDocTabbarLayout(QWidget* parent)
    : QBoxLayout(QBoxLayout::LeftToRight, parent)
{
    setContentsMargins(0, 0, 0, 0);
    setSpacing(0);
    setSizeConstraint(QLayout::SetMinAndMaxSize);
    m_leftArrow = new KDocTabbarArrowButton(Qt::LeftArrow, parent);
    m_rightArrow = new KDocTabbarArrowButton(Qt::RightArrow, parent);
    m_leftArrow->hide();
    m_rightArrow->hide();
    connect(m_leftArrow, &QAbstractButton::clicked, this, &KDocTabbarLayout::on_scrollLeft);
    connect(m_rightArrow, &QAbstractButton::clicked, this, &KDocTabbarLayout::on_scrollRight);
}

QSize KDocTabbarLayout::minimumSize() const
{
    // The strip scrolls rather than forcing its width on the window.
    return QSize(0, QBoxLayout::minimumSize().height());
}

void KDocTabbarLayout::invalidate()
{
    // Items came or went: the next setGeometry() lays out even for the same rectangle.
    m_geometry = QRect();
    QBoxLayout::invalidate();
}

void KDocTabbarLayout::setGeometry(const QRect& rect)
{
    if (rect == m_geometry)
        return;
    QLayout::setGeometry(rect);
    m_geometry = rect;
    _doLayout(rect);
    const bool scrolling = !m_leftArrow->isHidden() && !m_rightArrow->isHidden();
    if (scrolling && m_sumMinimum - rect.width() > s_arrowsWidth)
        Q_EMIT hasItemHidden(true);
    else if (!scrolling)
        Q_EMIT hasItemHidden(false);
}

void KDocTabbarLayout::_doLayout(const QRect& rect)
{
    QList<QLayoutItem*> items;
    m_sumHint = 0;
    m_sumMinimum = 0;
    for (int i = 0; i < count(); ++i) {
        QLayoutItem* item = itemAt(i);
        if (item->isEmpty())
            continue;
        items.append(item);
        m_sumHint += item->sizeHint().width();
        m_sumMinimum += item->minimumSize().width();
    }
    const int n = items.size();
    const int width = rect.width();
    if (m_firstVisible >= n)
        m_firstVisible = qMax(0, n - 1);

    if (m_sumHint > width + 1 && m_sumMinimum > width) {
        _layoutScrolled(rect, items);
        return;
    }

    m_leftArrow->hide();
    m_rightArrow->hide();
    m_firstVisible = 0;
    m_visibleCount = n;
    int x = rect.x();
    if (m_sumHint <= width + 1) {
        for (QLayoutItem* item : std::as_const(items)) {
            const int w = item->sizeHint().width();
            placeItem(item, QRect(x, rect.y(), w, rect.height()));
            x += w;
        }
        return;
    }
    // Equal shares; a tab that needs more than its share keeps its minimum, and the tabs
    // behind it are given at least as much.
    int per = width / n;
    const int rem = width % n;
    for (int i = 0; i < n; ++i) {
        QLayoutItem* item = items.at(i);
        const int minimum = item->minimumSize().width();
        const int w = qMax(per, minimum) + (i >= n - rem ? 1 : 0);
        per = qMax(per, minimum);
        placeItem(item, QRect(x, rect.y(), w, rect.height()));
        x += w;
    }
}

void KDocTabbarLayout::_layoutScrolled(const QRect& rect, const QList<QLayoutItem*>& items)
{
    const int n = items.size();
    const int width = rect.width();

    // Never leave empty room at the right end: pull the first visible item back while the
    // items behind it would all fit.
    int sum = 0;
    for (int i = n - 1; i >= 0; --i) {
        sum += items.at(i)->minimumSize().width();
        if (sum + s_arrowsWidth > width)
            break;
        if (sum + s_arrowsWidth <= width - 1 && i <= m_firstVisible)
            m_firstVisible = i;
    }
    for (int i = 0; i < m_firstVisible; ++i)
        hideItem(items.at(i));

    sum = 0;
    m_visibleCount = 0;
    for (int i = m_firstVisible; i < n; ++i) {
        sum += items.at(i)->minimumSize().width();
        if (sum + s_arrowsWidth > width)
            break;
        ++m_visibleCount;
    }

    m_leftArrow->raise();
    m_rightArrow->raise();
    m_leftArrow->setGeometry(rect.x(), rect.y(), s_arrowWidth, rect.height());
    m_rightArrow->setGeometry(rect.x() + width - s_arrowWidth, rect.y(), s_arrowWidth, rect.height());
    m_leftArrow->show();
    m_rightArrow->show();
    m_leftArrow->setEnabled(m_firstVisible != 0);
    m_rightArrow->setEnabled(m_firstVisible + m_visibleCount < n);

    if (m_visibleCount == 0) {
        for (int i = m_firstVisible; i < n; ++i)
            hideItem(items.at(i));
        return;
    }
    const int avail = width - s_arrowsWidth;
    const int per = avail / m_visibleCount;
    const int rem = avail % m_visibleCount;
    int x = rect.x() + s_arrowWidth;
    for (int j = 0; j < m_visibleCount; ++j) {
        QLayoutItem* item = itemOf(items, m_firstVisible + j);
        const int w = qMax(per + (j >= m_visibleCount - rem ? 1 : 0), item->minimumSize().width());
        placeItem(item, QRect(x, rect.y(), w, rect.height()));
        x += w;
    }
    for (int i = m_firstVisible + m_visibleCount; i < n; ++i)
        hideItem(items.at(i));
}

void KDocTabbarLayout::ensureVisible(int index)
{
    if (index < 0 || index >= count() || itemAt(index)->isEmpty())
        return;
    // Positions count only the items that take part in the layout.
    QList<QLayoutItem*> items;
    int pos = -1;
    for (int i = 0; i < count(); ++i) {
        if (itemAt(i)->isEmpty())
            continue;
        if (i == index)
            pos = items.size();
        items.append(itemAt(i));
    }
    if (pos >= m_firstVisible && pos < m_firstVisible + m_visibleCount)
        return;
    if (pos < m_firstVisible) {
        m_firstVisible = pos;
    } else {
        int sum = 0;
        int fitting = 0;
        for (int i = pos; i >= 0; --i) {
            sum += items.at(i)->minimumSize().width();
            if (sum + s_arrowsWidth - 1 > m_geometry.width() && fitting > 0)
                break;
            ++fitting;
        }
        m_firstVisible = pos + 1 - fitting;
    }
    const QRect r = geometry();
    m_geometry = QRect();
    setGeometry(r);
}

void KDocTabbarLayout::on_scrollLeft()
{
    if (m_firstVisible <= 0)
        return;
    --m_firstVisible;
    const QRect r = geometry();
    m_geometry = QRect();
    setGeometry(r);
}

void KDocTabbarLayout::on_scrollRight()
{
    int n = 0;
    for (int i = 0; i < count(); ++i)
        n += itemAt(i)->isEmpty() ? 0 : 1;
    if (m_firstVisible + m_visibleCount >= n)
        return;
    ++m_firstVisible;
    const QRect r = geometry();
    m_geometry = QRect();
    setGeometry(r);
}

void KDocTabbarLayout::on_scrollBegin()
{
    while (m_firstVisible > 0)
        on_scrollLeft();
}

void KDocTabbarLayout::on_scrollEnd()
{
    int guard = count();
    while (m_rightArrow->isVisibleTo(parentWidget()) && m_rightArrow->isEnabled() && guard-- > 0)
        on_scrollRight();
}

// --- KTabBarNewButton ---

KTabBarNewButton::KTabBarNewButton(QWidget* parent, KCommand* cmd)
    : KToolButton(parent)
{
    setDefaultCommand(cmd);
    setSizePolicy(QSizePolicy::Fixed, QSizePolicy::Fixed);
    m_clickTimer = new QTimer(this);
    m_clickTimer->setSingleShot(true);
    m_clickTimer->setInterval(300);
    connect(m_clickTimer, &QTimer::timeout, this, &KTabBarNewButton::mouseClick);
}

QSize KTabBarNewButton::sizeHint() const
{
    return isSplitButton() ? QSize(36, 25) : QSize(26, 25);
}

void KTabBarNewButton::changeToSplitButton(bool split)
{
    if (split == isSplitButton())
        return;
    setButtonStyle(split ? buttonStyle() | KStyleOptionToolButton::StyleArrow
                         : buttonStyle() & ~int(KStyleOptionToolButton::StyleArrow));
    updateGeometry();
}

bool KTabBarNewButton::isClickPending() const
{
    return m_clickTimer->isActive();
}

void KTabBarNewButton::mouseReleaseEvent(QMouseEvent* e)
{
    if (e->button() == Qt::LeftButton && rect().contains(e->position().toPoint())) {
        // The command runs a moment later, so that a double click can still cancel it.
        m_clickTimer->start();
        return;
    }
    KToolButton::mouseReleaseEvent(e);
}

void KTabBarNewButton::mouseDoubleClickEvent(QMouseEvent*)
{
    m_clickTimer->stop();
}

void KTabBarNewButton::mouseClick()
{
    setPressed(false);
    repaint();
    m_clickTimer->stop();
    Q_EMIT LButtonClicked();
}

void KTabBarNewButton::paintEvent(QPaintEvent* e)
{
    if (!KORBStyle::isFrameworkStyle(style())) {
        KToolButton::paintEvent(e);
        return;
    }
    KStyleOptionTabBarNewButton option;
    option.initFrom(this);
    option.isHover = underMouse();
    option.isDown = isPressed();
    QPainter p(this);
    style()->drawControl(KORBStyle::KCE_TabBarNewButton, &option, &p, this);
}

// --- KDocTab ---

KDocTab::KDocTab(QMdiSubWindow* subWindow, KDocTabbar* tabBar, QWidget* parent)
    : QWidget(parent), m_subWindow(subWindow), m_tabBar(tabBar)
{
    setSizePolicy(QSizePolicy::Preferred, QSizePolicy::Preferred);
    setMaximumWidth(300);
    setAcceptDrops(true);
    setMouseTracking(true);
    m_movieLabel = new QLabel(this);
    m_movieLabel->hide();
    m_progressBar = new QProgressBar(this);
    m_progressBar->setTextVisible(false);
    m_progressBar->setRange(0, 100);
    m_progressBar->hide();
    if (subWindow && subWindow->widget()) {
        m_watched = subWindow->widget();
        m_watched->installEventFilter(this);
        _syncFromWidget();
    }
    setToolTip(m_text);
}

KDocTab::~KDocTab()
{
    if (m_watched)
        m_watched->removeEventFilter(this);
}

void KDocTab::setText(const QString& text)
{
    if (text == m_text)
        return;
    m_text = text;
    updateGeometry();
    update();
}

void KDocTab::setIcon(const QIcon& icon)
{
    m_icon = icon;
    update();
}

void KDocTab::setBackGround(const QBrush& brush)
{
    if (brush == m_background)
        return;
    m_background = brush;
    update();
}

void KDocTab::setChecked(bool checked)
{
    if (checked == m_checked)
        return;
    m_checked = checked;
    update();
}

bool KDocTab::active() const
{
    return window()->isActiveWindow();
}

void KDocTab::setProgressBarVisible(bool visible)
{
    m_progressBar->setVisible(visible);
    _placeProgressBar();
    update();
}

bool KDocTab::isProgressBarVisible() const
{
    return !m_progressBar->isHidden();
}

void KDocTab::setProgressValue(int value)
{
    m_progressValue = value;
    if (value <= 99) {
        m_progressBar->setValue(qMax(0, value));
        repaint();
    } else {
        m_progressBar->hide();
        update();
    }
}

void KDocTab::setPlayImage(const QString& path)
{
    if (path == m_playImage)
        return;
    if (path.isEmpty()) {
        auto* sub = m_watched ? qobject_cast<KSubWindow*>(m_watched.data()) : nullptr;
        setToolTip(sub ? sub->filePath() : m_text);
        m_playImage.clear();
        if (QMovie* movie = m_movieLabel->movie()) {
            m_movieLabel->setMovie(nullptr);
            delete movie;
        }
        m_movieLabel->hide();
        return;
    }
    auto* movie = new QMovie(path, QByteArray(), m_movieLabel);
    if (!movie->isValid()) {
        delete movie;
        return;
    }
    if (QMovie* old = m_movieLabel->movie())
        old->deleteLater();
    m_playImage = path;
    const QSize size(15, 15); // the icon, less one
    m_movieLabel->resize(size);
    m_movieLabel->setAttribute(Qt::WA_TranslucentBackground);
    movie->setScaledSize(size);
    movie->setBackgroundColor(Qt::transparent);
    m_movieLabel->setMovie(movie);
    movie->setPaused(false);
    movie->start();
    m_movieLabel->move(6, 5);
    m_movieLabel->show();
    setToolTip(tr("File is uploading..."));
}

void KDocTab::setPlayImage(QPixmap& pixmap)
{
    if (pixmap.isNull()) {
        if (m_spin) {
            m_spin->stop();
            delete m_spin;
            m_spin = nullptr;
        }
        m_spinPixmap = QPixmap();
        update();
        return;
    }
    m_spinPixmap = pixmap;
    if (!m_spin) {
        m_spin = new QVariantAnimation(this);
        m_spin->setStartValue(0.0);
        m_spin->setEndValue(360.0);
        m_spin->setDuration(1200);
        m_spin->setLoopCount(-1);
        connect(m_spin, &QVariantAnimation::valueChanged, this, [this] { update(); });
    }
    m_spin->start();
    setToolTip(tr("File is uploading..."));
}

bool KDocTab::isPlaying() const
{
    return !m_playImage.isEmpty() || (m_spin && m_spin->state() == QAbstractAnimation::Running);
}

void KDocTab::deleteWhenCan()
{
    if (m_deleteFlag)
        *m_deleteFlag = true;
    else
        deleteLater();
}

void KDocTab::_syncFromWidget()
{
    QWidget* w = m_watched.data();
    if (!w)
        return;
    // The "[*]" placeholder of a window title stands for the changed mark, which the tab
    // draws itself.
    QString title = w->windowTitle();
    title.remove(QStringLiteral("[*]"));
    m_modified = w->isWindowModified();
    setText(title);
    if (!isPlaying())
        setToolTip(title);

    QIcon icon;
    if (auto* sub = qobject_cast<KSubWindow*>(w)) {
        const QString path = sub->filePath();
        const QFileInfo info(path);
        if (!path.isEmpty() && info.exists())
            icon = sub->iconForSuffix(info.completeSuffix());
        else if (!path.isEmpty())
            icon = KDrawHelpFunc::getFileIcon(path);
    }
    if (icon.isNull())
        icon = w->windowIcon();
    if (m_subWindow && !icon.isNull() && icon.cacheKey() != m_subWindow->windowIcon().cacheKey())
        m_subWindow->setWindowIcon(icon);
    setIcon(icon);
    update();
}

bool KDocTab::eventFilter(QObject* object, QEvent* event)
{
    if (object == m_watched
        && (event->type() == QEvent::WindowTitleChange || event->type() == QEvent::ModifiedChange))
        _syncFromWidget();
    return QWidget::eventFilter(object, event);
}

void KDocTab::initStyleOption(KStyleOptionDocTab* option) const
{
    option->initFrom(this);
    option->icon = m_icon;
    option->background = m_background;
    option->text = m_text;
    option->isChecked = m_checked;
    option->isActive = active();
    option->isHover = m_hover;
    option->isCloseHover = m_closeHover;
    option->isCloseDown = m_closeDown;
    option->showProgress = isProgressBarVisible();
    option->isModified = m_modified;
    if (m_dropTarget)
        option->state |= QStyle::State_Sunken;
    if (!m_movieLabel->isHidden() || m_spin)
        option->icon = QIcon(); // the animation stands where the icon would be
}

QSize KDocTab::minimumSizeHint() const
{
    using M = KStyleOptionDocTab;
    const QFontMetrics fm = fontMetrics();
    const int text = fm.horizontalAdvance(m_text.left(2) + QStringLiteral("..."));
    const int w = M::MarginLeft + M::IconSize + M::TextSpacingLeft + text + M::TextSpacingRight
        + M::CloseSize + M::MarginRight;
    return QSize(qMax(90, w), 22);
}

QSize KDocTab::sizeHint() const
{
    using M = KStyleOptionDocTab;
    const int text = fontMetrics().horizontalAdvance(m_text);
    int w = M::MarginLeft + M::IconSize + M::TextSpacingLeft + text + M::TextSpacingRight + M::CloseSize
        + M::MarginRight;
    w = qMax(w, minimumSizeHint().width());
    w = qMax(w, 180);
    return QSize(qMin(w, 300), 22);
}

bool KDocTab::_hitsClose(const QPoint& pos) const
{
    KStyleOptionDocTab option;
    initStyleOption(&option);
    if (KORBStyle::isFrameworkStyle(style()))
        return style()->hitTestComplexControl(KORBStyle::KCC_DocTab, &option, pos, this) == KORBStyle::KSC_DocTabClose;
    return KStyleOptionDocTab::closeRect(rect()).contains(pos);
}

void KDocTab::paintEvent(QPaintEvent*)
{
    QPainter p(this);
    KStyleOptionDocTab option;
    initStyleOption(&option);
    if (KORBStyle::isFrameworkStyle(style())) {
        style()->drawComplexControl(KORBStyle::KCC_DocTab, &option, &p, this);
    } else {
        // A host's own style knows only the stock tab and its close mark.
        QStyleOptionTab tab;
        tab.initFrom(this);
        tab.shape = QTabBar::RoundedNorth;
        tab.text = m_modified ? m_text + QStringLiteral("*") : m_text;
        tab.icon = option.icon;
        tab.iconSize = QSize(KStyleOptionDocTab::IconSize, KStyleOptionDocTab::IconSize);
        tab.rightButtonSize = QSize(KStyleOptionDocTab::CloseSize, KStyleOptionDocTab::CloseSize);
        if (m_checked)
            tab.state |= QStyle::State_Selected;
        style()->drawControl(QStyle::CE_TabBarTab, &tab, &p, this);
        QStyleOption close;
        close.initFrom(this);
        close.rect = KStyleOptionDocTab::closeRect(rect());
        if (m_closeHover)
            close.state |= QStyle::State_Raised;
        style()->drawPrimitive(QStyle::PE_IndicatorTabClose, &close, &p, this);
    }
    if (m_spin && !m_spinPixmap.isNull()) {
        const QRect iconRect(KStyleOptionDocTab::MarginLeft, (height() - KStyleOptionDocTab::IconSize) / 2,
                             KStyleOptionDocTab::IconSize, KStyleOptionDocTab::IconSize);
        p.setRenderHint(QPainter::SmoothPixmapTransform);
        p.translate(iconRect.center());
        p.rotate(m_spin->currentValue().toDouble());
        p.translate(-iconRect.center());
        p.drawPixmap(iconRect, m_spinPixmap);
    }
}

void KDocTab::mousePressEvent(QMouseEvent* e)
{
    DeleteGuard guard(this, m_deleteFlag);
    const QPoint pos = e->position().toPoint();
    m_pressPos = pos;
    if (e->button() != Qt::LeftButton)
        return;
    if (_hitsClose(pos)) {
        m_closeDown = true;
        update();
        return;
    }
    m_dragArmed = true;
    setChecked(true);
    Q_EMIT clicked();
}

void KDocTab::mouseReleaseEvent(QMouseEvent* e)
{
    DeleteGuard guard(this, m_deleteFlag);
    m_dragArmed = false;
    const bool closeWasDown = m_closeDown;
    m_closeDown = false;
    switch (e->button()) {
    case Qt::MiddleButton:
        Q_EMIT closeBtnClicked();
        break;
    case Qt::RightButton:
        m_tabBar->setCurrentTab(this);
        Q_EMIT rightClicked();
        break;
    case Qt::LeftButton:
        update();
        if (closeWasDown && _hitsClose(e->position().toPoint()))
            Q_EMIT closeBtnClicked();
        break;
    default:
        break;
    }
}

void KDocTab::mouseMoveEvent(QMouseEvent* e)
{
    const QPoint pos = e->position().toPoint();
    const bool closeHover = _hitsClose(pos);
    if (closeHover != m_closeHover) {
        m_closeHover = closeHover;
        update();
    }
    if (!(e->buttons() & Qt::LeftButton) || !m_dragArmed)
        return;
    if ((pos - m_pressPos).manhattanLength() <= QApplication::startDragDistance())
        return;
    m_dragArmed = false;
    const int index = m_tabBar->indexOf(this);
    if (index < 0)
        return;
    DeleteGuard guard(this, m_deleteFlag);
    auto* mime = new QMimeData;
    mime->setData(QStringLiteral(KDOCTAB_MIME_FORMAT), QByteArray::number(index));
    auto* drag = new QDrag(this);
    drag->setMimeData(mime);
    drag->setPixmap(grab());
    drag->setHotSpot(pos);
    drag->exec(Qt::MoveAction);
}

void KDocTab::mouseDoubleClickEvent(QMouseEvent* e)
{
    DeleteGuard guard(this, m_deleteFlag);
    if (e->button() == Qt::LeftButton && !_hitsClose(e->position().toPoint()))
        Q_EMIT dblClicked();
}

void KDocTab::enterEvent(QEnterEvent*)
{
    m_hover = true;
    update();
}

void KDocTab::leaveEvent(QEvent*)
{
    m_hover = false;
    m_closeHover = false;
    update();
}

KDocTab* KDocTab::_draggedTab(const QMimeData* mime, QObject* source) const
{
    if (!mime || !mime->hasFormat(QStringLiteral(KDOCTAB_MIME_FORMAT)))
        return nullptr;
    auto* tab = qobject_cast<KDocTab*>(source);
    if (!tab || tab->tabBar() != m_tabBar)
        return nullptr;
    bool ok = false;
    const int index = mime->data(QStringLiteral(KDOCTAB_MIME_FORMAT)).toInt(&ok);
    // The index travels as text; it must still name the dragged tab.
    if (!ok || m_tabBar->tabButton(index) != tab)
        return nullptr;
    return tab;
}

void KDocTab::dragEnterEvent(QDragEnterEvent* e)
{
    if (!_draggedTab(e->mimeData(), e->source())) {
        e->ignore();
        return;
    }
    e->acceptProposedAction();
    m_dropTarget = true;
    update();
}

void KDocTab::dragLeaveEvent(QDragLeaveEvent*)
{
    m_dropTarget = false;
    update();
}

void KDocTab::dropEvent(QDropEvent* e)
{
    m_dropTarget = false;
    update();
    KDocTab* source = _draggedTab(e->mimeData(), e->source());
    if (!source) {
        e->ignore();
        return;
    }
    const int from = m_tabBar->indexOf(source);
    const int to = m_tabBar->indexOf(this);
    e->acceptProposedAction();
    if (from >= 0 && to >= 0 && from != to)
        m_tabBar->moveTab(from, to);
}

void KDocTab::resizeEvent(QResizeEvent* e)
{
    QWidget::resizeEvent(e);
    _placeProgressBar();
}

void KDocTab::_placeProgressBar()
{
    m_progressBar->setGeometry(1, height() - 2, qMax(0, width() - 2), 2);
}

// --- KDocTabbar ---

KDocTabbar::KDocTabbar(QWidget* parent)
    : QWidget(parent)
{
    setSizePolicy(QSizePolicy::Expanding, QSizePolicy::Fixed);
    m_outerLayout = new QHBoxLayout(this);
    m_outerLayout->setContentsMargins(0, 0, 0, 0);
    m_outerLayout->setSpacing(1);
    m_viewport = new QWidget(this);
    m_viewport->setSizePolicy(QSizePolicy::Expanding, QSizePolicy::Preferred);
    m_outerLayout->addWidget(m_viewport, 1);
    m_layout = new KDocTabbarLayout(m_viewport);
    connect(m_layout, &KDocTabbarLayout::hasItemHidden, this, &KDocTabbar::onTabItemHidden);
    connect(m_layout->leftArrow(), &KDocTabbarArrowButton::dblClicked, this, [this] { onScrollRequested(false); });
    connect(m_layout->rightArrow(), &KDocTabbarArrowButton::dblClicked, this, [this] { onScrollRequested(true); });
}

KDocTabbar::~KDocTabbar()
{
    // The sub-windows outlive the bar; their destruction must not reach it any more.
    for (QObject* object : std::as_const(m_objects))
        disconnect(object, &QObject::destroyed, this, &KDocTabbar::onSubWindowDestroyed);
}

void KDocTabbar::addSubWindow(QMdiSubWindow* subWindow, bool setCurrent)
{
    insertSubWindow(-1, subWindow, setCurrent);
}

void KDocTabbar::insertSubWindow(int index, QMdiSubWindow* subWindow, bool setCurrent)
{
    if (!subWindow || m_subWindows.contains(subWindow))
        return;
    if (index < 0 || index > m_tabs.size())
        index = m_tabs.size();
    auto* tab = new KDocTab(subWindow, this, m_viewport);
    connect(tab, &KDocTab::clicked, this, &KDocTabbar::onTabClicked);
    connect(tab, &KDocTab::closeBtnClicked, this, &KDocTabbar::onTabClosed);
    connect(tab, &KDocTab::dblClicked, this, &KDocTabbar::onTabDblClicked);
    connect(tab, &KDocTab::rightClicked, this, &KDocTabbar::onTabRightClicked);
    connect(subWindow, &QObject::destroyed, this, &KDocTabbar::onSubWindowDestroyed);
    m_objects.insert(subWindow, subWindow);
    if (m_currentIndex >= 0 && index <= m_currentIndex)
        ++m_currentIndex;
    m_tabs.insert(index, tab);
    m_subWindows.insert(index, subWindow);
    m_layout->insertWidget(index, tab);
    tab->show();
    if (setCurrent)
        setCurrentIndex(index);
}

void KDocTabbar::removeTab(int index)
{
    if (index < 0 || index >= m_tabs.size())
        return;
    KDocTab* tab = m_tabs.at(index);
    if (index == m_currentIndex)
        activeLastActivedTab();
    // The handlers of the signals above may have changed the lists: go by the tab itself.
    index = m_tabs.indexOf(tab);
    if (index < 0)
        return;
    const QPointer<KDocTab> current = currentTab();
    Q_EMIT tabRemoved(index);
    index = m_tabs.indexOf(tab);
    if (index < 0)
        return;
    m_tabs.removeAt(index);
    tab->hide();
    QMdiSubWindow* subWindow = m_subWindows.takeAt(index);
    if (QObject* object = m_objects.take(subWindow))
        disconnect(object, &QObject::destroyed, this, &KDocTabbar::onSubWindowDestroyed);
    m_layout->removeWidget(tab);
    m_currentIndex = current ? m_tabs.indexOf(current.data()) : -1;
    tab->deleteWhenCan();
}

void KDocTabbar::removeTab(QMdiSubWindow* subWindow)
{
    removeTab(findSubWindow(subWindow));
}

void KDocTabbar::removeTab(KDocTab* tab)
{
    removeTab(indexOf(tab));
}

void KDocTabbar::removeSubWindow(QMdiSubWindow* subWindow)
{
    removeTab(subWindow);
    Q_EMIT subWindowRemoved(subWindow);
}

void KDocTabbar::moveTab(int from, int to)
{
    if (from < 0 || to < 0 || from == to || from >= m_tabs.size() || to >= m_tabs.size())
        return;
    KDocTab* current = currentTab();
    m_tabs.move(from, to);
    m_subWindows.move(from, to);
    QLayoutItem* item = m_layout->takeAt(from);
    m_layout->insertItem(to, item);
    m_currentIndex = m_tabs.indexOf(current);
    m_layout->invalidate();
    update();
}

KDocTab* KDocTabbar::findSubWindowTab(QMdiSubWindow* subWindow) const
{
    return m_tabs.value(findSubWindow(subWindow));
}

bool KDocTabbar::isFirstTab(KDocTab* tab) const
{
    return tab && !m_tabs.isEmpty() && m_tabs.first() == tab;
}

bool KDocTabbar::isLastTab(KDocTab* tab) const
{
    return tab && !m_tabs.isEmpty() && m_tabs.last() == tab;
}

KDocTab* KDocTabbar::nextTab(KDocTab* tab) const
{
    for (int i = m_tabs.indexOf(tab) + 1; i < m_tabs.size(); ++i) {
        if (!m_tabs.at(i)->isHidden())
            return m_tabs.at(i);
    }
    return nullptr;
}

KDocTab* KDocTabbar::prevTab(KDocTab* tab) const
{
    const int from = tab ? m_tabs.indexOf(tab) : m_tabs.size();
    for (int i = from - 1; i >= 0; --i) {
        if (!m_tabs.at(i)->isHidden())
            return m_tabs.at(i);
    }
    return nullptr;
}

void KDocTabbar::setCurrentIndex(int index)
{
    if (index < 0 || index >= m_tabs.size())
        return;
    if (KDocTab* old = currentTab())
        old->setChecked(false);
    if (index != m_currentIndex)
        m_lastActiveTab = currentTab();
    m_currentIndex = index;
    m_tabs.at(index)->setChecked(true);
    m_layout->ensureVisible(m_layout->indexOf(m_tabs.at(index)));
    Q_EMIT currentSubWindowChanged(m_subWindows.at(index));
}

void KDocTabbar::setCurrentTab(KDocTab* tab)
{
    setCurrentIndex(indexOf(tab));
}

void KDocTabbar::setCurrentSubWindow(QMdiSubWindow* subWindow)
{
    setCurrentIndex(findSubWindow(subWindow));
}

void KDocTabbar::activeNextTab(bool wrap)
{
    KDocTab* current = currentTab();
    KDocTab* next = nextTab(current);
    if (!next && wrap)
        next = nextTab(nullptr);
    if (next && next != current)
        setCurrentTab(next);
}

void KDocTabbar::activePrevTab(bool wrap)
{
    KDocTab* current = currentTab();
    KDocTab* prev = current ? prevTab(current) : nullptr;
    if (!prev && wrap)
        prev = prevTab(nullptr);
    if (prev && prev != current)
        setCurrentTab(prev);
}

void KDocTabbar::activeLastActivedTab()
{
    KDocTab* last = m_lastActiveTab.data();
    if (last && m_tabs.contains(last) && last != currentTab() && (!isVisible() || !last->isHidden())) {
        setCurrentTab(last);
        return;
    }
    const int before = m_currentIndex;
    activePrevTab(false);
    if (m_currentIndex == before)
        activeNextTab(false);
}

void KDocTabbar::setTabVisible(QMdiSubWindow* subWindow, bool visible)
{
    const int index = findSubWindow(subWindow);
    if (index < 0)
        return;
    KDocTab* tab = m_tabs.at(index);
    tab->setVisible(visible);
    if (!visible && index == m_currentIndex)
        activeLastActivedTab();
    m_layout->invalidate();
}

void KDocTabbar::setExtendButton(KCommand* cmd)
{
    delete m_extendButton.data();
    m_extendButton = new KTabBarNewButton(this, cmd);
    m_extendButton->setSizePolicy(QSizePolicy::Fixed, QSizePolicy::Fixed);
    m_outerLayout->addWidget(m_extendButton, 0, Qt::AlignLeft | Qt::AlignTop);
}

void KDocTabbar::wheelEvent(QWheelEvent* e)
{
    if (m_tabs.size() < 2) {
        QWidget::wheelEvent(e);
        return;
    }
    const int delta = e->angleDelta().y() != 0 ? e->angleDelta().y() : e->angleDelta().x();
    if (delta < 0)
        activeNextTab(false);
    else
        activePrevTab(false);
}

void KDocTabbar::resizeEvent(QResizeEvent* e)
{
    QWidget::resizeEvent(e);
    if (KDocTab* tab = currentTab())
        m_layout->ensureVisible(m_layout->indexOf(tab));
}

void KDocTabbar::onTabClicked()
{
    setCurrentTab(qobject_cast<KDocTab*>(sender()));
}

void KDocTabbar::onTabClosed()
{
    if (auto* tab = qobject_cast<KDocTab*>(sender()); tab && m_tabs.contains(tab))
        Q_EMIT subWindowRemoved(tab->subWindow());
}

void KDocTabbar::onTabDblClicked()
{
    Q_EMIT doubleClicked();
}

void KDocTabbar::onTabRightClicked()
{
    Q_EMIT rightClicked(indexOf(qobject_cast<KDocTab*>(sender())));
}

void KDocTabbar::onScrollRequested(bool forward)
{
    if (forward)
        activeNextTab(true);
    else
        activePrevTab(true);
}

void KDocTabbar::onTabItemHidden(bool hidden)
{
    if (m_extendButton)
        m_extendButton->changeToSplitButton(!hidden);
}

void KDocTabbar::onSubWindowDestroyed(QObject* object)
{
    // Only the address is compared: the object is half destroyed.
    for (auto it = m_objects.cbegin(); it != m_objects.cend(); ++it) {
        if (it.value() == object) {
            removeTab(findSubWindow(it.key()));
            return;
        }
    }
}
