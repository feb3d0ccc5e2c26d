#include "kslideblock.h"

#include <QLineF>
#include <QPropertyAnimation>
#include <QVariantAnimation>

#include <kcommandwidgetbridge.h>
#include <kdrawhelpfunc.h>
#include <kevent.h>
#include <krbsubtabbar.h>
#include <krbtabbutton.h>

namespace {

int mix(int a, int b, qreal t)
{
    return a + qRound((b - a) * t);
}

QColor mixColor(const QColor& a, const QColor& b, qreal t)
{
    if (!a.isValid() || !b.isValid())
        return t < 1 ? a : b;
    return QColor(mix(a.red(), b.red(), t), mix(a.green(), b.green(), t), mix(a.blue(), b.blue(), t),
                  mix(a.alpha(), b.alpha(), t));
}

QVariant interpolateVariant(const KSliderData& from, const KSliderData& to, qreal progress)
{
    return QVariant::fromValue(KSliderData::interpolate(from, to, progress));
}

void registerInterpolator()
{
    static const bool registered = [] {
        qRegisterMetaType<KSliderData>();
        qRegisterAnimationInterpolator<KSliderData>(interpolateVariant);
        return true;
    }();
    Q_UNUSED(registered);
}

} // namespace

KSliderData KSliderData::interpolate(const KSliderData& from, const KSliderData& to, qreal progress)
{
    KSliderData data;
    // An empty block has no place to come from: it appears where it goes.
    const QRect start = from.valid ? from.rect : to.rect;
    data.rect = QRect(QPoint(mix(start.left(), to.rect.left(), progress), mix(start.top(), to.rect.top(), progress)),
                      QPoint(mix(start.right(), to.rect.right(), progress),
                             mix(start.bottom(), to.rect.bottom(), progress)));
    data.color = mixColor(from.valid ? from.color : to.color, to.color, progress);
    data.borderColor = mixColor(from.valid ? from.borderColor : to.borderColor, to.borderColor, progress);
    data.valid = from.valid || to.valid;
    return data;
}

KSlideBlock::KSlideBlock(QObject* parent, KRbSubTabBar* tabBar)
    : QObject(parent)
    , m_tabBar(tabBar)
{
    registerInterpolator();
    if (tabBar)
        connect(tabBar, &KRbSubTabBar::currentIdxChanged, this, &KSlideBlock::onSubTabBarCurrentIdxChanged);
    KCommandBridgeHelper::registerIdle(this);
}

KSlideBlock::~KSlideBlock()
{
    KCommandBridgeHelper::unregisterIdle(this);
}

void KSlideBlock::setSlideData(const KSliderData& data)
{
    m_previous = m_current;
    m_current = data;
}

int KSlideBlock::calculateTime() const
{
    const qreal d = QLineF(m_current.rect.center(), m_target.rect.center()).length();
    const qreal step = d / 10 + 5;
    // A long way doesn't take proportionally longer: there are never more than nine steps.
    return qMax(1, int(d / step)) * 40;
}

KSliderData KSlideBlock::_dataFor(const KRbTabButton* button)
{
    KSliderData data;
    if (!button)
        return data;
    data.rect = button->frameGeometry();
    QString key = button->getTheme();
    if (key.isEmpty())
        key = QStringLiteral("KRbTabButton");
    // The block takes the colour where the tab's gradient ends. Every gradient the theme reads
    // is object-bounding; the stand-in for a missing one is not.
    const QGradient& gradient = KDrawHelpFunc::getGradientFromTheme(key, QStringLiteral("background"));
    data.color = gradient.coordinateMode() == QGradient::ObjectBoundingMode && !gradient.stops().isEmpty()
        ? gradient.stops().constLast().second
        : KDrawHelpFunc::getColorFromTheme(key, QStringLiteral("background"));
    data.borderColor = KDrawHelpFunc::getColorFromTheme(key, QStringLiteral("border"));
    data.valid = true;
    return data;
}

void KSlideBlock::reset(const KRbTabButton* button)
{
    if (m_animation)
        m_animation->stop();
    const KSliderData previous = m_current;
    m_current = _dataFor(button);
    m_previous = previous;
    m_target = m_current;
    Q_EMIT slideDataChanged(m_previous, m_current);
}

bool KSlideBlock::isMoving() const
{
    return m_animation && m_animation->state() == QAbstractAnimation::Running;
}

void KSlideBlock::initOption(KStyleOptionRbSubTabBar& option) const
{
    if (!m_current.valid)
        return;
    option.slideRect = m_current.rect;
    option.slideColor = m_current.color;
    option.slideBorderColor = m_current.borderColor;
    if (const KRbTabButton* button = curSubTabBarButton())
        option.themeKey = button->getTheme();
    if (isMoving())
        option.state |= QStyle::State_Sunken;
}

KRbTabButton* KSlideBlock::curSubTabBarButton() const
{
    return m_tabBar ? m_tabBar->currentButton() : nullptr;
}

bool KSlideBlock::isNeedReStartMovie() const
{
    const KRbTabButton* button = curSubTabBarButton();
    return button && button->isVisible() && button->frameGeometry() != m_target.rect;
}

void KSlideBlock::startMovie()
{
    if (!m_animation) {
        m_animation = new QPropertyAnimation(this, "slideData", this);
        connect(m_animation, &QVariantAnimation::valueChanged, this, &KSlideBlock::onValueChanged);
    }
    const KRbTabButton* button = curSubTabBarButton();
    if (!button || !button->isVisible() || button->frameGeometry() == m_target.rect)
        return;
    m_target = _dataFor(button);
    m_animation->stop();
    m_animation->setDuration(calculateTime());
    m_animation->setStartValue(QVariant::fromValue(m_current));
    m_animation->setKeyValueAt(0.5, QVariant::fromValue(KSliderData::interpolate(m_current, m_target, 0.5)));
    m_animation->setEndValue(QVariant::fromValue(m_target));
    m_animation->start();
}

void KSlideBlock::onValueChanged()
{
    Q_EMIT slideDataChanged(m_previous, m_current);
}

void KSlideBlock::onSubTabBarCurrentIdxChanged()
{
    _watchCurrentButton();
    startMovie();
}

void KSlideBlock::_watchCurrentButton()
{
    KRbTabButton* button = curSubTabBarButton();
    if (m_watched == button)
        return;
    if (m_watched)
        m_watched->removeEventFilter(this);
    m_watched = button;
    if (button)
        button->installEventFilter(this);
}

bool KSlideBlock::eventFilter(QObject* watched, QEvent* e)
{
    if (watched == m_watched && m_current.valid
        && (e->type() == QEvent::Show || e->type() == QEvent::Move || e->type() == QEvent::Resize)
        && isNeedReStartMovie())
        startMovie();
    return QObject::eventFilter(watched, e);
}

bool KSlideBlock::event(QEvent* e)
{
    if (e->type() == KEvent::eventType(KEvent::Idle)) {
        // A relayout that moved the current tab moves the block as well.
        if (isNeedReStartMovie())
            startMovie();
        return true;
    }
    return QObject::event(e);
}
