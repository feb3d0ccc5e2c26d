#ifndef KCOLORCTRL_H
#define KCOLORCTRL_H

#include <QColor>
#include <QStringList>
#include <QVector>

#include <kgallerygroup.h>

class KColorCtrl;

/// A cell of one colour; its tool tip is the colour's name.
class NORVIKOFFICEUI_EXPORT KxColorItem : public KGalleryModelAbstractItem
{
    Q_OBJECT
public:
    KxColorItem(const QColor& color, const QString& name, KGalleryAbstractModel* model);
    ~KxColorItem() override;

    /// The cell, swatch and frame included.
    static constexpr QSize s_cellSize{18, 18};

    QColor color() const { return m_color; }
    bool isExpanding(KGalleryViewType viewType) const override;
    QSize sizeHint() const override;
    void drawItem(QPainter& painter, const QRect& rect, KGalleryViewType viewType) const override;

private:
    QColor m_color;
};

/// A row of text across the colour list, with a small swatch for a colour of its own.
class NORVIKOFFICEUI_EXPORT KxTextItem : public KGalleryModelAbstractItem
{
    Q_OBJECT
public:
    KxTextItem(const QString& text, KGalleryAbstractModel* model);
    ~KxTextItem() override;

    QColor color() const { return m_color; }
    void setColor(const QColor& color);
    QSize sizeHint() const override;
    void drawItem(QPainter& painter, const QRect& rect, KGalleryViewType viewType) const override;

private:
    QColor m_color;
};

/// "No Color": the choice of no colour at all.
class NORVIKOFFICEUI_EXPORT KxNoColorItem : public KxTextItem
{
    Q_OBJECT
public:
    KxNoColorItem(const QString& text, KGalleryAbstractModel* model);
    ~KxNoColorItem() override;
};

/**
 * "Automatic": the colour the document would use by itself. In fixed mode the field shows
 * the entry's text rather than the colour.
 */
class NORVIKOFFICEUI_EXPORT KxAutoColorItem : public KxTextItem
{
    Q_OBJECT
public:
    KxAutoColorItem(const QString& text, KGalleryAbstractModel* model);
    ~KxAutoColorItem() override;

    bool isFixedMode() const { return m_fixedMode; }
    void setFixedMode(bool fixed) { m_fixedMode = fixed; }

private:
    bool m_fixedMode = false;
};

/// "Background": a colour that is stored without a change signal.
class NORVIKOFFICEUI_EXPORT KxBackGroundColorItem : public KxTextItem
{
    Q_OBJECT
public:
    KxBackGroundColorItem(const QString& text, KGalleryAbstractModel* model);
    ~KxBackGroundColorItem() override;
};

/// A group of colour cells of which one at a time is checked.
class NORVIKOFFICEUI_EXPORT KColorGroup : public KGalleryGroup
{
    Q_OBJECT
public:
    explicit KColorGroup(KGalleryAbstractModel* model, int flag = 0);
    ~KColorGroup() override;

    /// Cells per row.
    static constexpr int s_columns = 8;

    KxColorItem* addColor(const QColor& color, const QString& tip);
    /// Pairs colours and names in order; missing names stay empty.
    void addColors(const QVector<QColor>& colors, const QStringList& names);
    /// Checks the cell of that colour, or unchecks all when there is none.
    void setColorSelected(const QColor& color);
    bool contains(const QColor& color) const;
    /// The colour of the cell at index; invalid out of range.
    QColor colorAt(int index) const;
};

/// Draws the field of a colour control instead of the control itself.
class NORVIKOFFICEUI_EXPORT KxCustomComboEditFieldDraw
{
public:
    virtual ~KxCustomComboEditFieldDraw();
    /// Draws into rect (the field); false leaves the field to the control.
    virtual bool drawEditField(QPainter& painter, const QRect& rect, const KColorCtrl* ctrl) = 0;
};

/**
 * A colour picker as a gallery combo box. Its list, from the top: "No Color" (hidden at
 * first), "Automatic", scheme colours, expanded scheme colours, the palette of forty named
 * colours, extra colours, and the entries "&More Color", "&Fill effects...", "&Background"
 * and "&Patterned Lines..." (all but the first hidden at first), with separators between the
 * parts. A choice sets currentColor() and emits currentColorChanged(); an invalid colour
 * means "no colour".
 *
 * The entries that open something (more colours, fill effects, patterns) are the host's:
 * it listens to groupItemClicked() for their groups.
 */
class NORVIKOFFICEUI_EXPORT KColorCtrl : public KGalleryGroupCombobox
{
    Q_OBJECT
public:
    explicit KColorCtrl(QWidget* parent = nullptr);
    ~KColorCtrl() override;

    /// The forty colours of the palette and their names, in order.
    static QVector<QColor> defaultColors();
    static QStringList defaultColorNames();

    KGalleryGroup* getNoColor() const { return m_noColor; }
    KGalleryGroup* getAutoColor() const { return m_autoColor; }
    KColorGroup* getSchemeColors() const { return m_schemeColors; }
    KColorGroup* getExpandSchemeColors() const { return m_expandSchemeColors; }
    KColorGroup* getPaletteColors() const { return m_paletteColors; }
    KColorGroup* getExtraColors() const { return m_extraColors; }
    KGalleryGroup* getMoreColor() const { return m_moreColor; }
    KGalleryGroup* getFillEffect() const { return m_fillEffect; }
    KGalleryGroup* getBackGround() const { return m_backGround; }
    KGalleryGroup* getPatternedLines() const { return m_patternedLines; }
    KxAutoColorItem* getAutoColorItem() const { return m_autoColorItem; }

    QColor currentColor() const { return m_currentColor; }
    /// 0 for no colour, 1 for a colour.
    int colorState() const { return m_colorState; }
    /// Checks the cells of that colour; emits currentColorChanged() when emitSignal is set.
    void setCurrentColor(const QColor& color, bool emitSignal = false);
    using KGalleryComboBox::setCurrentText;

    KGalleryGroup* addSeparator();
    /// The model index of the last separator; -1 with none.
    int getLastSeparatorIndex() const;
    KGalleryGroup* addAutoFillColor(const QString& text);
    KGalleryGroup* addNoColorItem(const QString& text);
    KColorGroup* addNewColorGroup();
    /// The palette of forty named colours.
    KColorGroup* addDefaultColorGroup();
    /// Not owned; null for the control's own drawing.
    void setCustomDraw(KxCustomComboEditFieldDraw* draw) { m_customDraw = draw; update(); }
    /// Where the current colour goes in the field rect (a bar along its bottom, or the
    /// whole field without text); rect is adjusted in place.
    void stateDrawAdjust(QPainter* painter, QRect& rect) const;
    /// Unchecks every checked colour cell of another colour, across groups.
    void uncheckNotSameColorItem(const QColor& color);

Q_SIGNALS:
    void currentColorChanged(const QColor& color);

public Q_SLOTS:
    void on_indexClicked(int index);

protected:
    void paintEvent(QPaintEvent* e) override;

private:
    void initItems();
    KGalleryGroup* _addTextGroup(const QString& text, bool visible);
    void _takeColor(const QColor& color);

    QColor m_currentColor;
    int m_colorState = 0;
    KxAutoColorItem* m_autoColorItem = nullptr;
    KGalleryGroup* m_noColor = nullptr;
    KGalleryGroup* m_autoColor = nullptr;
    KColorGroup* m_schemeColors = nullptr;
    KColorGroup* m_expandSchemeColors = nullptr;
    KColorGroup* m_paletteColors = nullptr;
    KColorGroup* m_extraColors = nullptr;
    KGalleryGroup* m_moreColor = nullptr;
    KGalleryGroup* m_fillEffect = nullptr;
    KGalleryGroup* m_backGround = nullptr;
    KGalleryGroup* m_patternedLines = nullptr;
    KxCustomComboEditFieldDraw* m_customDraw = nullptr;
};

#endif // KCOLORCTRL_H
