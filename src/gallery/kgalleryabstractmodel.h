#ifndef KGALLERYABSTRACTMODEL_H
#define KGALLERYABSTRACTMODEL_H

#include <QColor>
#include <QIcon>
#include <QList>
#include <QObject>
#include <QPointer>
#include <QRect>
#include <QSize>
#include <QString>

#include <norvikofficeui_export.h>

class QPainter;
class QWidget;
class KCommand;
class KListCommand;
class KGalleryAbstractModel;

/**
 * How a view shows its cells; handed to the elements so that they can draw or hide
 * themselves accordingly. KGalleryView::ViewType names the same values.
 */
enum KGalleryViewType {
    KGalleryViewNormal = 0, ///< a popup or a list: every element
    KGalleryViewCompact = 1 ///< the band in a ribbon: titles are left out
};

/**
 * One element of a gallery: it knows its size, paints itself and keeps its own checked,
 * hovered, enabled and visible states. Its parent (and owner) is the model.
 *
 * Changes of the layout (size, text, visibility) emit changed(); changes of the state
 * (hover, check, enabled) emit statusChanged(), which a view answers by repainting the one
 * cell.
 */
class NORVIKOFFICEUI_EXPORT KGalleryModelAbstractItem : public QObject
{
    Q_OBJECT
public:
    explicit KGalleryModelAbstractItem(KGalleryAbstractModel* model);
    KGalleryModelAbstractItem(const QString& text, const QIcon& icon, KGalleryAbstractModel* model,
                              bool newLine = false);
    ~KGalleryModelAbstractItem() override;

    KGalleryAbstractModel* model() const;

    bool isFixed() const { return m_fixed; }
    void setFixed(bool fixed);
    bool isNewLine() const { return m_newLine; }
    void setToNewLine(bool newLine);
    bool isHovered() const { return m_hovered; }
    void setHovered(bool hovered);
    bool isContextShown() const { return m_contextShown; }
    bool isChecked() const { return m_checked; }
    void setChecked(bool checked);
    void setVisible(bool visible);
    void setEnabled(bool enabled);
    int hSpace() const { return m_hSpace; }
    void setHSpace(int space);
    int vSpace() const { return m_vSpace; }
    void setVSpace(int space);
    /// Check marks are exclusive within a non-zero group; 0 is the whole list.
    int groupIndex() const { return m_groupIndex; }
    void setGroupIndex(int index) { m_groupIndex = index; }
    /// The cell's tool tip.
    QString detail() const { return m_detail; }
    void setDetail(const QString& detail) { m_detail = detail; }
    QString text() const { return m_text; }
    void setText(const QString& text);
    QIcon icon() const { return m_icon; }
    void setIcon(const QIcon& icon);
    /// The menu a right click on the cell opens; not owned, null (at first) for none.
    KListCommand* contextMenuCommand() const;
    void setContextMenuCommand(KListCommand* command);

    /// An expanding element takes a row of the view for itself.
    virtual bool isExpanding(KGalleryViewType viewType) const;
    /// Text plus margins (5,5,5,5) beside a 16 by 16 icon, in the application's font.
    virtual QSize sizeHint() const;
    /// Runs before drawItem() for a visible cell; nothing here.
    virtual void prepareDrawItem(QPainter& painter, const QRect& rect, KGalleryViewType viewType);
    /// The state background, the icon in a strip at the left, the text.
    virtual void drawItem(QPainter& painter, const QRect& rect, KGalleryViewType viewType) const;
    virtual bool isVisible(KGalleryViewType viewType = KGalleryViewNormal) const;
    virtual bool isEnabled() const;
    virtual bool isCheckeable() const;
    virtual bool isTriggerable() const;
    /// Opens the context menu at the cursor (only with a contextMenuCommand()).
    virtual void popupContextMenu(QWidget* widget);
    /// Drops painted caches (after a theme change); nothing here.
    virtual void resetImage();
    /// The command this element stands for; null here.
    virtual KCommand* command() const;

public Q_SLOTS:
    void contextMenuHided();

Q_SIGNALS:
    void changed();
    void statusChanged();

protected:
    /// The hovered, checked or context-menu background, on rect less one pixel right and
    /// bottom; nothing in the plain state.
    void drawBackGround(QPainter& painter, const QRect& rect) const;

private:
    bool m_fixed = false;
    bool m_newLine = false;
    bool m_hovered = false;
    bool m_contextShown = false;
    bool m_checked = false;
    bool m_visible = true;
    bool m_enabled = true;
    int m_hSpace = 0;
    int m_vSpace = 0;
    int m_groupIndex = 0;
    QString m_detail;
    QString m_text;
    QIcon m_icon;
    QPointer<KListCommand> m_contextMenuCommand;
};

/**
 * The ordered list of a gallery's elements, with the one current (checked by the radio
 * rule of setCurrentIndex()), the one hovered and the rule for clicking. Several views may
 * show one model; they follow it by its signals. The elements are owned.
 *
 * Out-of-range indexes mean "none" throughout and give no message.
 */
class NORVIKOFFICEUI_EXPORT KGalleryAbstractModel : public QObject
{
    Q_OBJECT
public:
    explicit KGalleryAbstractModel(QObject* parent = nullptr);
    ~KGalleryAbstractModel() override;

    int count() const { return m_items.size(); }
    /// No bounds check: index must be in 0..count()-1.
    KGalleryModelAbstractItem* element(int index) const { return m_items.at(index); }
    int indexOf(const KGalleryModelAbstractItem* item) const;
    QList<KGalleryModelAbstractItem*> elements() const { return m_items; }

    int addElement(KGalleryModelAbstractItem* item);
    int addHeader(const QString& text);
    /// An index below 0 or above count() appends; returns the index used.
    int insertElement(int index, KGalleryModelAbstractItem* item);
    int insertHeader(int index, const QString& text);
    /// Tells the views as a removal at from and an insertion at to.
    void moveElement(int from, int to);
    /// Takes the element out without deleting it (the caller owns it); null out of range.
    KGalleryModelAbstractItem* takeAt(int index);
    KGalleryModelAbstractItem* takeAt(KGalleryModelAbstractItem* item);
    void removeElement(int index);
    void removeElement(KGalleryModelAbstractItem* item);

    /// Unchecks and unhovers every element; no current and no hovered index.
    void clearStatus();
    bool isDirty() const { return m_dirty; }
    void setDirty(bool dirty) { m_dirty = dirty; }
    void setFixedSize(bool fixed);
    int getHoveredIndex() const { return m_hoveredIndex; }

public Q_SLOTS:
    /// Where a lazy model fills its list, at the first showing of a view; returns the list.
    virtual QList<KGalleryModelAbstractItem*> fecthItems();
    virtual void on_galleryView_show();
    virtual void on_galleryView_hide();
    /// All cells of one size: a fixed-size gallery never wraps a row by itself.
    virtual bool isFixedSize() const;
    virtual void setCurrentIndex(int index);
    virtual void setCurrentIndex(const QString& text);
    virtual int currentIndex() const;
    /// The click of a cell; false for a disabled or untriggerable element. Out of range it
    /// clears every status and tells indexClicked(-1).
    virtual bool clickIndex(int index);
    virtual bool dblClickIndex(int index);
    virtual void hoverIndex(int index);
    /// The view's background: "background" of "KGalleryModel", "background-disable" when false.
    virtual QColor getBackColor(bool enabled);
    virtual void popupItemContextMenu(QWidget* widget, int index);
    virtual void clear();
    virtual bool isEnable();
    /// Runs before a view paints; nothing here.
    virtual void prepareItems();

    void on_elementStatusChanged();

Q_SIGNALS:
    void elementInserted(int idx, KGalleryModelAbstractItem* item);
    void elementRemoved(int idx);
    void indexClicked(int index);
    void indexDblClicked(int index);
    void indexHovered(int index);
    void currentIndexChanged(int index);
    void statusChanged(int index);
    void changed();

private:
    void _detach(KGalleryModelAbstractItem* item);
    void _onElementDestroyed(QObject* object);

    int m_hoveredIndex = -1;
    int m_currentIndex = -1;
    bool m_dirty = false;
    bool m_fixedSize = false;
    QList<KGalleryModelAbstractItem*> m_items;
};

#endif // KGALLERYABSTRACTMODEL_H
