#ifndef KRBQUICKTOOLBAR_H
#define KRBQUICKTOOLBAR_H

#include <QAbstractButton>
#include <QList>
#include <QPair>
#include <QPointer>

#include <kcommandwidgetbridge.h>
#include <kpopupwidget.h>
#include <norvikofficeui_export.h>

class QDragEnterEvent;
class QHBoxLayout;
class QMenu;
class KHotKeyCollectEvent;
class KToolButton;

/**
 * The arrow at the end of the quick access bar, which opens the panel of the entries that
 * did not fit. A press on it while the panel is open only closes the panel.
 */
class NORVIKOFFICEUI_EXPORT KRbQuickToolbarArrowButton : public QAbstractButton
{
    Q_OBJECT
public:
    explicit KRbQuickToolbarArrowButton(QWidget* parent);
    /// The popup whose outside presses on this arrow close it without opening it again.
    void setPanel(KPopupWidget* panel) { m_panel = panel; }
    QSize sizeHint() const override { return QSize(15, 22); }

protected:
    bool event(QEvent* e) override;
    void paintEvent(QPaintEvent* e) override;

private:
    QPointer<KPopupWidget> m_panel;
};

/**
 * The popup of the quick access bar's overflow: the entries that did not fit, in a row.
 * When the row is wider than the screen, entries from m_firstIndex on show, and the left
 * and right buttons page through them.
 */
class NORVIKOFFICEUI_EXPORT KRbQuickToolbarPanel : public KPopupWidget
{
    Q_OBJECT
public:
    explicit KRbQuickToolbarPanel(QWidget* parent);

    QHBoxLayout* commandLayout() const { return m_commandLayout; }
    QWidget* content() const { return m_content; }
    int firstIndex() const { return m_firstIndex; }
    KToolButton* leftButton() const { return m_leftButton; }
    KToolButton* rightButton() const { return m_rightButton; }
    /// The widgets of the entries, in order.
    QList<QWidget*> entries() const;

public Q_SLOTS:
    void onBtnLeft();
    void onBtnRight();

protected:
    void showEvent(QShowEvent* e) override;
    void paintEvent(QPaintEvent* e) override;

private:
    /// Fits the row from the first index on into the panel and the screen.
    void _layoutEntries();

    QWidget* m_content = nullptr;
    KToolButton* m_leftButton = nullptr;
    KToolButton* m_rightButton = nullptr;
    QHBoxLayout* m_commandLayout = nullptr;
    int m_firstIndex = 0;
};

/**
 * The row of favourite commands in the corner of the ribbon's tab row. Its width is capped:
 * once the entries no longer fit, the first that fails and every one after it move to a
 * panel behind an arrow button. Entries can be hidden without being forgotten, so that a
 * host can restore a saved bar in the order the user left it; the host keeps the list and
 * hears of every change through cmdOnTbChanged().
 */
class NORVIKOFFICEUI_EXPORT KRbQuickToolbar : public KCommandWidgetBridge<QWidget>
{
    Q_OBJECT
public:
    /// Command, its widget, and whether it is shown.
    using Element = QPair<KCommand*, QPair<QWidget*, bool>>;

    KRbQuickToolbar(KCommand* cmd, QWidget* parent);
    ~KRbQuickToolbar() override;

    void insertCommand(KCommand* cmd, int index);
    /// Drops the command's element and its widget; false when there is none.
    bool removeCommand(KCommand* cmd);
    /// Shows the command's element (made when missing), at index when index >= 0.
    void showCommand(KCommand* cmd, int index);
    bool hideCommand(KCommand* cmd);
    bool hideCommand(int index);
    void hideAllCommand();
    bool hasCmd(KCommand* cmd) const;
    /// Back to the command's own list, every entry shown.
    void reset();
    /// Exactly the commands of list are shown, in that order; the others are hidden.
    void resetCommands(const QList<KCommand*>& list);
    void setElementOrdor(const QList<KCommand*>& list);
    /// The element index of the pos-th shown entry; -1 when there is none.
    int toElementPos(int pos) const;
    /// Shows the separator element at index; false when that element is no separator.
    bool showSeparator(int index);
    void setMaxWidth(int width);
    int maxWidth() const { return m_maxWidth; }
    void moveToPanel(QWidget* w);
    void moveToQuickBar(QWidget* w);
    void dragEnterEventEvent(QDragEnterEvent* event);

    bool isCustomizable() const { return m_customizable; }
    void setCustomizable(bool on) { m_customizable = on; }
    bool isRenderEnabled() const { return m_renderEnabled; }
    /// While off, changes are not rendered; turning it on renders once.
    void setRenderEnabled(bool on);

    int elementCount() const { return m_elements.size(); }
    KCommand* elementCommand(int index) const;
    QWidget* elementWidget(int index) const;
    bool isElementShown(int index) const;
    /// The widgets in the bar, in order, and those in the panel.
    QList<QWidget*> barWidgets() const;
    QList<QWidget*> panelWidgets() const;
    KRbQuickToolbarArrowButton* arrowButton() const { return m_arrowButton; }
    KRbQuickToolbarPanel* panel() const { return m_panel; }
    QMenu* contextMenu() const { return m_contextMenu; }
    QWidget* clickedWidget() const { return m_clickedWidget.data(); }

    QSize sizeHint() const override;
    QSize minimumSizeHint() const override { return sizeHint(); }
    void onCommandInserted(int index, KCommand* sub) override;
    void onCommandRemoved(int index) override;
    void onCommandConnected() override;

Q_SIGNALS:
    void cmdOnTbChanged(KCommand* cmd, bool shown);

public Q_SLOTS:
    /// The customising dialog belongs to the host; the bar itself has nothing to do here.
    void onRbCustom();
    void showQuickPanel();
    void renderWidgets(int from);
    void renderWidgets();
    void onRemoveAct();

protected:
    bool event(QEvent* e) override;
    bool eventFilter(QObject* watched, QEvent* e) override;
    void dragEnterEvent(QDragEnterEvent* e) override;
    void dragMoveEvent(QDragMoveEvent* e) override;
    void dropEvent(QDropEvent* e) override;
    void resizeEvent(QResizeEvent* e) override;

private:
    int _indexOf(KCommand* cmd) const;
    int _indexOfWidget(const QWidget* w) const;
    QWidget* _makeWidget(KCommand* cmd);
    void _insertElement(int index, KCommand* cmd, bool shown);
    void _removeElement(int index);
    bool _isEffectivelyShown(const Element& e) const;
    void _watch(QWidget* w);
    void _collectHotKey(KHotKeyCollectEvent* e);

    bool m_renderEnabled = true;
    bool m_customizable = false;
    QMenu* m_contextMenu = nullptr;
    QPointer<QWidget> m_clickedWidget;
    QList<Element> m_elements;
    KRbQuickToolbarArrowButton* m_arrowButton = nullptr;
    KRbQuickToolbarPanel* m_panel = nullptr;
    QWidget* m_panelContent = nullptr;
    QHBoxLayout* m_panelLayout = nullptr;
    QHBoxLayout* m_layout = nullptr;
    int m_maxWidth = 400;
    bool m_rendering = false;
};

#endif // KRBQUICKTOOLBAR_H
