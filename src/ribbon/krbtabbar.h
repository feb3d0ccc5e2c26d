#ifndef KRBTABBAR_H
#define KRBTABBAR_H

#include <QPointer>
#include <QWidget>

#include <krbsubtabbar.h>
#include <kstyleoption.h>
#include <norvikofficeui_export.h>

class QBoxLayout;
class QHBoxLayout;
class QVBoxLayout;
class KRbHScrollWidget;
class KRbQuickToolbar;
class KRbTabButton;
class KRbTabFileButton;
class KRbTabWidgetCommand;

/**
 * The strip above the ribbon's body: the file button, the row of tabs (scrolling when the
 * window is too narrow for them), the bar of the right corner and the right corner widget.
 *
 * It follows its window: the text between the brackets of the window's title is its title,
 * and it repaints when the window is activated. A context tab asked for by name becomes
 * current at the first idle round in which its command is visible.
 */
class NORVIKOFFICEUI_EXPORT KRbTabBar : public QWidget
{
    Q_OBJECT
public:
    KRbTabBar(KRbTabWidgetCommand* cmd, QWidget* parent);
    ~KRbTabBar() override;

    KRbTabWidgetCommand* command() const;
    /// Always true: the bar has one arrangement, the file button, tabs and corner in one row.
    bool isSingleLine() const { return m_singleLine; }
    bool isTitleMode() const { return m_titleMode; }
    bool isAloneMode() const;
    KRbTabButton* tabButtonAt(int index) const;
    int currentTabIdx() const;
    void setCurrentTabIdx(int index);
    KRbSubTabBar::SubTabBarStatus status() const;
    void setStatus(KRbSubTabBar::SubTabBarStatus status, bool byUser);
    /// Raises the first tab whose command has "contextName" name, as soon as it is visible.
    void setCurrentTabByContext(const QString& name);
    int pendingContextIdx() const { return m_pendingContextIdx; }
    KRbTabFileButton* fileButton() const;
    KRbSubTabBar* subTabBar() const { return m_subTabBar; }
    KRbHScrollWidget* scrollWidget() const { return m_scroll; }
    /// The bar of the right corner's extent command, or null without one.
    KRbQuickToolbar* rightCornerExtBar() const { return m_rightCornerExtBar; }
    QWidget* rightCorner() const { return m_rightCorner.data(); }
    QWidget* spaceWidget() const { return m_spaceWidget; }
    /// The file button's geometry, a null rectangle without one.
    QRect getFileButtonGeometry() const;
    QSize getWidgetSizeHint(QWidget* w) const;
    QSize getWidgetMinimumSizeHint(QWidget* w) const;
    /// The text between the brackets of the window's title, or the whole title.
    QString title() const { return m_title; }
    /// The part of a window title that the bar shows.
    static QString titleOfWindowTitle(const QString& windowTitle);

    void setDisableRightCorner();
    void useSpaceWidget(bool show);
    /// The window's caption buttons, at the far right of the tab row (null takes them away;
    /// the widget is not owned).
    void setCaptionWidget(QWidget* widget);
    QWidget* captionWidget() const { return m_captionWidget.data(); }
    void onAeroEffectChanged(bool enable);
    /// Ends the title mode whatever the argument: the tabs, corner bar and file button return.
    void setTitleMode(bool on);

Q_SIGNALS:
    void currentIdxChanged();
    void statusChanged(bool byUser);

public Q_SLOTS:
    void on_currentIdxChanged();
    void onBorderBottomLineColorChanged();
    /// Keeps the single-line arrangement whatever the argument.
    void setSingleLine(bool singleLine);
    void renderLayout();

protected:
    virtual void initStyleOption(KStyleOptionRbTabBar* option) const;
    bool event(QEvent* e) override;
    bool eventFilter(QObject* watched, QEvent* e) override;
    void paintEvent(QPaintEvent* e) override;

private:
    QMargins getFileButtonMarginsFromStyle() const;
    void _watchWindow();
    void _setTitle(const QString& windowTitle);

    bool m_disableRightCorner = false;
    KRbTabWidgetCommand* m_command;
    QPointer<QWidget> m_rightCorner;
    QPointer<QWidget> m_captionWidget;
    QWidget* m_spaceWidget;
    KRbHScrollWidget* m_scroll;
    QPointer<KRbTabFileButton> m_fileButton;
    KRbSubTabBar* m_subTabBar;
    QHBoxLayout* m_bottomLayout;
    QVBoxLayout* m_mainLayout;
    QHBoxLayout* m_topLayout;
    QPointer<QWidget> m_titleBarWidget;
    int m_pendingContextIdx = -1;
    KRbQuickToolbar* m_rightCornerExtBar = nullptr;
    QString m_title;
    bool m_singleLine = false;
    bool m_titleMode = false;
    QVBoxLayout* m_spaceLayout;
    QHBoxLayout* m_fileLayout;
    QPointer<QWidget> m_watchedWindow;
};

#endif // KRBTABBAR_H
