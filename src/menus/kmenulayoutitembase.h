#ifndef KMENULAYOUTITEMBASE_H
#define KMENULAYOUTITEMBASE_H

#include <QLayoutItem>
#include <QObject>
#include <QPointer>
#include <QRect>

#include <kcommandobjectbridge.h>
#include <norvikofficeui_export.h>

/**
 * A row of a command-driven vertical list that is not a menu (the left menu of the file
 * panel and lists like it): a layout item bound to a command. A command that brings a
 * widget of its own (KCommand::isCustomWidget()) stands in the row as that widget, and the
 * layout talks to the widget. Otherwise the row is the command's text with room around it
 * (29 wide, 13 high), as wide as the list, and paints nothing itself: the list paints it.
 *
 * The row repaints its rectangle in the parent when the command's enablement changes, and
 * asks the parent's layout again when its visibility does. The command is not owned.
 */
class NORVIKOFFICEUI_EXPORT KMenuLayoutItemBase : public KCommandObjectBridge<QObject>, public QWidgetItem
{
    Q_OBJECT
public:
    KMenuLayoutItemBase(KCommand* command, QWidget* parent);
    ~KMenuLayoutItemBase() override;

    /// The command's own widget, or null for a plain row.
    QWidget* customWidget() const { return m_customWidget.data(); }
    QWidget* parentWidget() const { return m_parent.data(); }

    bool isVisible() const;
    bool isEnabled() const;
    bool isSeparator() const;
    /// A row one can act on: no separator, enabled, visible, and triggerable or extensible.
    bool isValidItem() const;
    /// Deletes the custom widget and then the row itself.
    void deleteThorough();

    QSize sizeHint() const override;
    QSize minimumSize() const override;
    QSize maximumSize() const override;
    Qt::Orientations expandingDirections() const override;
    bool isEmpty() const override;
    void setGeometry(const QRect& rect) override;
    QRect geometry() const override;
    bool hasHeightForWidth() const override;
    int heightForWidth(int width) const override;
    QSizePolicy::ControlTypes controlTypes() const override;

protected Q_SLOTS:
    virtual void onEnabledChanged();
    virtual void onVisibleChanged();

private:
    void _onCommandChanged();

    QPointer<QWidget> m_customWidget;
    QRect m_rect;
    QPointer<QWidget> m_parent;
    bool m_lastEnabled = true;
    bool m_lastVisible = true;
};

#endif // KMENULAYOUTITEMBASE_H
