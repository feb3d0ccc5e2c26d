#ifndef KSLIDEBLOCK_H
#define KSLIDEBLOCK_H

#include <QColor>
#include <QMetaType>
#include <QObject>
#include <QPointer>
#include <QRect>

#include <kstyleoption.h>
#include <norvikofficeui_export.h>

class QPropertyAnimation;
class KRbSubTabBar;
class KRbTabButton;

/// Where the slide block stands and how it looks: its rectangle in the bar and two colours.
struct NORVIKOFFICEUI_EXPORT KSliderData
{
    QRect rect;
    QColor color;
    QColor borderColor;
    /// True once the data stands for a tab; the empty block draws nothing.
    bool valid = false;

    bool operator==(const KSliderData& other) const
    {
        return rect == other.rect && color == other.color && borderColor == other.borderColor
            && valid == other.valid;
    }
    bool operator!=(const KSliderData& other) const { return !(*this == other); }

    /// from at progress 0, to at 1: rectangle edges and colour channels in a straight line.
    static KSliderData interpolate(const KSliderData& from, const KSliderData& to, qreal progress);
};

Q_DECLARE_METATYPE(KSliderData)

/**
 * The highlight that glides from the current tab to the next when the current tab of a
 * KRbSubTabBar changes, and follows the tab when a relayout moves it (checked at idle time).
 * A glide takes 40 ms per step, at most nine steps however far it goes. The colours are the
 * current tab's theme colours ("background", "border" of its theme key, or "KRbTabButton").
 */
class NORVIKOFFICEUI_EXPORT KSlideBlock : public QObject
{
    Q_OBJECT
    Q_PROPERTY(KSliderData slideData READ getSlideData WRITE setSlideData)
public:
    KSlideBlock(QObject* parent, KRbSubTabBar* tabBar);
    ~KSlideBlock() override;

    void setSlideData(const KSliderData& data);
    KSliderData getSlideData() const { return m_current; }
    QColor getColor() const { return m_current.color; }
    QRect getTargetRect() const { return m_target.rect; }
    /// 40 ms for each step of the way from the block to its target: max(1, d / (d / 10 + 5)).
    int calculateTime() const;
    /// Puts the block on button at once, without a glide; a null button empties it.
    void reset(const KRbTabButton* button);
    bool isMoving() const;
    /// Rectangle and colours; a gliding block also has State_Sunken.
    void initOption(KStyleOptionRbSubTabBar& option) const;
    /// The current tab is visible somewhere else than where the block is going.
    bool isNeedReStartMovie() const;
    /// Glides to the current tab, unless there is none, it is hidden, or the block is there.
    void startMovie();
    KRbTabButton* curSubTabBarButton() const;

Q_SIGNALS:
    void slideDataChanged(const KSliderData& previous, const KSliderData& current);

public Q_SLOTS:
    void onValueChanged();
    void onSubTabBarCurrentIdxChanged();

protected:
    bool event(QEvent* e) override;
    bool eventFilter(QObject* watched, QEvent* e) override;

private:
    static KSliderData _dataFor(const KRbTabButton* button);
    void _watchCurrentButton();

    QPropertyAnimation* m_animation = nullptr;
    QPointer<KRbSubTabBar> m_tabBar;
    // The current tab, watched for showing and moving: a context tab becomes current while it
    // is still hidden, and the block follows it once it shows.
    QPointer<QWidget> m_watched;
    KSliderData m_current;
    KSliderData m_previous;
    KSliderData m_target;
};

#endif // KSLIDEBLOCK_H
