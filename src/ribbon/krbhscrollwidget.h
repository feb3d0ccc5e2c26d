#ifndef KRBHSCROLLWIDGET_H
#define KRBHSCROLLWIDGET_H

#include <QAbstractButton>
#include <QPointer>
#include <QWidget>

#include <kstyleoption.h>
#include <norvikofficeui_export.h>

class QHBoxLayout;
class QPropertyAnimation;

/**
 * A narrow arrow button at one end of a KRbHScrollWidget: 15 pixels wide, as tall as the
 * scroller, never focused; it repeats while held. The style draws it.
 */
class NORVIKOFFICEUI_EXPORT KRbHScrollWidgetArrow : public QAbstractButton
{
    Q_OBJECT
public:
    KRbHScrollWidgetArrow(Qt::ArrowType type, QWidget* parent);
    ~KRbHScrollWidgetArrow() override;

    Qt::ArrowType arrowType() const { return m_arrowType; }
    QSize sizeHint() const override;

protected:
    virtual void initStyleOption(KStyleOptionRbHScrollWidget* option) const;
    void hideEvent(QHideEvent* e) override;
    void paintEvent(QPaintEvent* e) override;

private:
    Qt::ArrowType m_arrowType;
};

/**
 * A horizontal scroller for a row that may be wider than the space it gets. The content
 * keeps at least its minimum width; once it no longer fits, arrows appear at the ends (each
 * takes 15 pixels of the view) and the content slides in an animation to where an arrow
 * press or the wheel sends it. The arrows move by step() pixels; with a step of 0 they only
 * announce scrollRequested() and leave the distance to the owner.
 *
 * The offset is the content's x in the view: 0 at the left end, negative further right,
 * never below the view's width less the content's width at rest. One wheel notch (120)
 * moves 120 pixels times wheelRate(); a notch that cannot move the content goes on to the
 * parent.
 */
class NORVIKOFFICEUI_EXPORT KRbHScrollWidget : public QWidget
{
    Q_OBJECT
    // Named after the member: the animation drives it by this name.
    Q_PROPERTY(int m_contentOffset READ contentOffset WRITE setContentOffset)
public:
    /// Takes content over as the child of its view.
    KRbHScrollWidget(QWidget* parent, QWidget* content);
    ~KRbHScrollWidget() override;

    QWidget* contentWidget() const { return m_content; }
    /// The content's sizeHint() width.
    int contentWidth() const;
    /// The content's minimumSizeHint() width.
    int minimumContentWidth() const;
    void ignoreWheelEvent(bool ignore);
    bool isIgnoreWheelEvent() const { return m_ignoreWheelEvent; }
    void setStep(int step);
    int step() const { return m_step; }
    void setWheelRate(double rate);
    double wheelRate() const { return m_wheelRate; }

    int contentOffset() const { return m_contentOffset; }
    /// One animation step: the offset held in range, the arrows updated, the content moved.
    void setContentOffset(int offset);
    /**
     * offset held to the range the view allows, corrected by an arrow's width where an arrow
     * is about to appear or go, so that the content does not jump as the view changes.
     */
    int fixedOffset(int offset) const;
    /// Animates the offset from where it is to target.
    void scrollTo(int target);
    /// Moves the offset at once so that w, a descendant of the content, lies in the view.
    void ensureWidgetVisible(const QWidget* w);
    /// The right arrow while content lies beyond the right edge, the left one off offset 0.
    void updateArrowDisplay();

    KRbHScrollWidgetArrow* leftArrow() const { return m_leftArrow; }
    KRbHScrollWidgetArrow* rightArrow() const { return m_rightArrow; }
    QWidget* viewport() const { return m_viewport; }

    QSize sizeHint() const override;
    /// 30 wide, as tall as the content's minimum.
    QSize minimumSizeHint() const override;

Q_SIGNALS:
    /// An arrow was pressed; forward is the right arrow.
    void scrollRequested(bool forward);

public Q_SLOTS:
    void leftButtonClicked();
    void rightButtonClicked();
    /// At the end of an animation: back into range, animated, if the offset left it.
    void scrollBack();

protected:
    bool eventFilter(QObject* watched, QEvent* e) override;
    void resizeEvent(QResizeEvent* e) override;
    void showEvent(QShowEvent* e) override;
    void wheelEvent(QWheelEvent* e) override;

private:
    int _viewportWidth(bool leftShown, bool rightShown) const;
    int _contentExtent() const;
    int _lowestOffset() const;
    void _applyOffset(int offset);
    void _fitContent();

    int m_step = 15;
    int m_contentOffset = 0;
    bool m_ignoreWheelEvent = false;
    double m_wheelRate = 1.0;
    QPropertyAnimation* m_animation;
    QWidget* m_viewport;
    QPointer<QWidget> m_content;
    QHBoxLayout* m_layout;
    KRbHScrollWidgetArrow* m_leftArrow;
    KRbHScrollWidgetArrow* m_rightArrow;
};

#endif // KRBHSCROLLWIDGET_H
