#ifndef KGALLERY_H
#define KGALLERY_H

#include <QAbstractButton>
#include <QPointer>
#include <QWidget>

#include <kcommandwidgetbridge.h>
#include <kgalleryview.h>
#include <kmenuwidget.h>

class QHBoxLayout;
class QVBoxLayout;
class KGalleryCommand;
class KHotKeyCollectEvent;
class KHotKeyTriggerEvent;
class KPopupWidget;

/**
 * A small button of the gallery band: up (type 0), down (type 1) or extend (type 2). It is
 * drawn by the style, with the theme class "KGalleryScrollButton".
 */
class NORVIKOFFICEUI_EXPORT KGalleryScrollButton : public QAbstractButton
{
    Q_OBJECT
public:
    enum ButtonType { Up = 0, Down = 1, Extend = 2 };

    KGalleryScrollButton(int type, QWidget* parent = nullptr);
    ~KGalleryScrollButton() override;

    int buttonType() const { return m_type; }
    /// "-disable", "-down", "-hover" or empty, by the button's state.
    QString getButtonStateProp() const;
    QSize sizeHint() const override;

protected:
    void paintEvent(QPaintEvent* e) override;
    void enterEvent(QEnterEvent* e) override;
    void leaveEvent(QEvent* e) override;

private:
    int m_type;
};

/**
 * The gallery of a command in a band: its cells in the compact view (no titles), in a
 * frame. It follows the command's enabled state on the idle update.
 */
class NORVIKOFFICEUI_EXPORT KGalleryCentralWidget : public KCommandWidgetBridge<QWidget>
{
    Q_OBJECT
public:
    KGalleryCentralWidget(KCommand* command, QWidget* parent);
    ~KGalleryCentralWidget() override;

    KGalleryCommand* galleryCommand() const;
    /// Null until the widget is first shown or measured.
    KGalleryView* view() const { return m_view; }
    void onCommandConnected() override;

public Q_SLOTS:
    void on_fixWidthChange(int width);

protected:
    bool event(QEvent* e) override;
    void paintEvent(QPaintEvent* e) override;

    QHBoxLayout* outerLayout() const { return m_outerLayout; }

private:
    QHBoxLayout* m_outerLayout;
    KGalleryView* m_view = nullptr;
    QHBoxLayout* m_innerLayout;
};

/**
 * The band of a gallery in a ribbon: one row (or a few) of the cells, the up and down
 * buttons that step through the rows, and the extend button that opens the full KGallery
 * over the band.
 */
class NORVIKOFFICEUI_EXPORT KGalleryInline : public KGalleryCentralWidget
{
    Q_OBJECT
public:
    KGalleryInline(KCommand* command, QWidget* parent);
    ~KGalleryInline() override;

    KGalleryScrollButton* upButton() const { return m_upButton; }
    KGalleryScrollButton* downButton() const { return m_downButton; }
    KGalleryScrollButton* extendButton() const { return m_extendButton; }
    /// Null until the extend button first opened it.
    KPopupWidget* popup() const { return m_popup.data(); }
    void onCommandConnected() override;

public Q_SLOTS:
    void upButtonClicked();
    void downButtonClicked();
    void extendButtonClicked();
    void updateButtonStatus();

protected:
    bool event(QEvent* e) override;
    bool eventFilter(QObject* watched, QEvent* e) override;

private:
    QPointer<KPopupWidget> m_popup;
    QVBoxLayout* m_buttonLayout;
    KGalleryScrollButton* m_upButton;
    KGalleryScrollButton* m_downButton;
    KGalleryScrollButton* m_extendButton;
};

/**
 * The full gallery, as it drops down: all cells in a scrolling view, with the command's
 * sub-commands as menu rows below. Down past the last row goes on into the menu.
 */
class NORVIKOFFICEUI_EXPORT KGallery : public KCommandWidgetBridge<QWidget>
{
    Q_OBJECT
public:
    KGallery(KCommand* command, QWidget* parent);
    ~KGallery() override;

    KGalleryViewBase* view() const { return m_view; }
    /// Null while the command has no sub-commands.
    KMenuWidget* menuWidget() const { return m_menu.data(); }
    /// Triggers the menu row whose command's "hotKey" is text (case aside); false if none.
    bool matchMenuItemHotkey(const QString& text);

    void onCommandConnected() override;
    void onCommandInserted(int index, KCommand* sub) override;
    void onCommandRemoved(int index) override;

protected:
    bool event(QEvent* e) override;
    bool eventFilter(QObject* watched, QEvent* e) override;
    void paintEvent(QPaintEvent* e) override;

private:
    void _makeMenu();
    void _onViewBottom();

    KGalleryViewBase* m_view = nullptr;
    QPointer<KMenuWidget> m_menu;
    QVBoxLayout* m_layout;
};

#endif // KGALLERY_H
