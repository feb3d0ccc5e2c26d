#include "kcolorctrl.h"

#include <QApplication>
#include <QFontMetrics>
#include <QPainter>

#include <kdrawhelpfunc.h>
#include <kgallerymodeltextitem.h>
#include <kscrollgalleryview.h>

namespace {

// The palette, one 32-bit value per colour: red in the low byte, then green, blue, alpha.
constexpr quint32 kPalette[40] = {
    0xFF000000, 0xFF003399, 0xFF003333, 0xFF003300, 0xFF663300, 0xFF800000, 0xFF993333, 0xFF333333,
    0xFF000080, 0xFF0066FF, 0xFF008080, 0xFF008000, 0xFF808000, 0xFFFF0000, 0xFF996666, 0xFF808080,
    0xFF0000FF, 0xFF0099FF, 0xFF00CC99, 0xFF669933, 0xFFCCCC33, 0xFFFF6633, 0xFF800080, 0xFF969696,
    0xFFFF00FF, 0xFF00CCFF, 0xFF00FFFF, 0xFF00FF00, 0xFFFFFF00, 0xFFFFCC00, 0xFF663399, 0xFFC0C0C0,
    0xFFCC99FF, 0xFF99CCFF, 0xFF99FFFF, 0xFFCCFFCC, 0xFFFFFFCC, 0xFFFFCC99, 0xFFFF99CC, 0xFFFFFFFF,
};

QColor colorFromTable(quint32 v)
{
    return QColor(int(v & 0xFF), int((v >> 8) & 0xFF), int((v >> 16) & 0xFF), int((v >> 24) & 0xFF));
}

constexpr int kSwatch = 12;
constexpr int kTextRowHeight = 22;
constexpr int kCellSpace = 2;

// The frame of a swatch: dark enough to show a white cell on a light list.
QColor swatchFrame()
{
    return KDrawHelpFunc::getColorFromTheme(QStringLiteral("common"), QStringLiteral("border"));
}

void drawSwatch(QPainter& painter, const QRect& r, const QColor& color)
{
    painter.save();
    painter.setPen(swatchFrame());
    painter.setBrush(color);
    painter.drawRect(r.adjusted(0, 0, -1, -1));
    painter.restore();
}

} // namespace

// --- KxColorItem ---

KxColorItem::KxColorItem(const QColor& color, const QString& name, KGalleryAbstractModel* model)
    : KGalleryModelAbstractItem(name, QIcon(), model, false)
    , m_color(color)
{
    setDetail(name);
    setHSpace(kCellSpace);
    setVSpace(kCellSpace);
}

KxColorItem::~KxColorItem() = default;

bool KxColorItem::isExpanding(KGalleryViewType) const
{
    return false;
}

QSize KxColorItem::sizeHint() const
{
    return s_cellSize;
}

void KxColorItem::drawItem(QPainter& painter, const QRect& rect, KGalleryViewType) const
{
    if (isChecked() || isHovered())
        drawBackGround(painter, rect);
    const QRect swatch(rect.left() + (rect.width() - kSwatch) / 2, rect.top() + (rect.height() - kSwatch) / 2,
                       kSwatch, kSwatch);
    drawSwatch(painter, swatch, m_color);
}

// --- KxTextItem and its kinds ---

KxTextItem::KxTextItem(const QString& text, KGalleryAbstractModel* model)
    : KGalleryModelAbstractItem(text, QIcon(), model, false)
{
}

KxTextItem::~KxTextItem() = default;

void KxTextItem::setColor(const QColor& color)
{
    if (color == m_color)
        return;
    m_color = color;
    Q_EMIT statusChanged();
}

QSize KxTextItem::sizeHint() const
{
    const QFontMetrics fm(QApplication::font());
    return QSize(fm.horizontalAdvance(text()) + 3 * kTextRowHeight, kTextRowHeight);
}

void KxTextItem::drawItem(QPainter& painter, const QRect& rect, KGalleryViewType) const
{
    drawBackGround(painter, rect);
    const QRect strip(rect.left(), rect.top(), kTextRowHeight, rect.height());
    if (m_color.isValid())
        drawSwatch(painter, QRect(strip.center() - QPoint(kSwatch / 2 - 1, kSwatch / 2 - 1), QSize(kSwatch, kSwatch)),
                   m_color);
    const QRect textRect = rect.adjusted(kTextRowHeight + 4, 0, -4, 0);
    KDrawHelpFunc::drawColorText(painter, isEnabled() ? QColor(Qt::black) : QColor(Qt::gray), textRect,
                                 Qt::AlignLeft | Qt::AlignVCenter | Qt::TextShowMnemonic, text());
}

KxNoColorItem::KxNoColorItem(const QString& text, KGalleryAbstractModel* model)
    : KxTextItem(text, model)
{
}

KxNoColorItem::~KxNoColorItem() = default;

KxAutoColorItem::KxAutoColorItem(const QString& text, KGalleryAbstractModel* model)
    : KxTextItem(text, model)
{
}

KxAutoColorItem::~KxAutoColorItem() = default;

KxBackGroundColorItem::KxBackGroundColorItem(const QString& text, KGalleryAbstractModel* model)
    : KxTextItem(text, model)
{
}

KxBackGroundColorItem::~KxBackGroundColorItem() = default;

KxCustomComboEditFieldDraw::~KxCustomComboEditFieldDraw() = default;

// --- KColorGroup ---

KColorGroup::KColorGroup(KGalleryAbstractModel* model, int flag)
    : KGalleryGroup(model, flag)
{
    setGroupUnique(true);
}

KColorGroup::~KColorGroup() = default;

KxColorItem* KColorGroup::addColor(const QColor& color, const QString& tip)
{
    auto* item = new KxColorItem(color, tip, model());
    // Rows of a fixed number of cells, whatever the width of the list.
    if (itemCount() > 0 && itemCount() % s_columns == 0)
        item->setToNewLine(true);
    pushItem(item);
    return item;
}

void KColorGroup::addColors(const QVector<QColor>& colors, const QStringList& names)
{
    for (int i = 0; i < colors.size(); ++i)
        addColor(colors.at(i), names.value(i));
}

void KColorGroup::setColorSelected(const QColor& color)
{
    for (int i = 0; i < itemCount(); ++i) {
        if (colorAt(i) == color) {
            getItem(i)->setChecked(true);
            continue;
        }
        getItem(i)->setChecked(false);
    }
}

bool KColorGroup::contains(const QColor& color) const
{
    for (int i = 0; i < itemCount(); ++i) {
        if (colorAt(i) == color)
            return true;
    }
    return false;
}

QColor KColorGroup::colorAt(int index) const
{
    auto* item = qobject_cast<KxColorItem*>(getItem(index));
    return item ? item->color() : QColor();
}

// --- KColorCtrl ---

KColorCtrl::KColorCtrl(QWidget* parent)
    : KGalleryGroupCombobox(parent)
{
    initItems();
    connect(model(), &KGalleryAbstractModel::indexClicked, this, &KColorCtrl::on_indexClicked);
    // Eight cells and their spacing in a row, within the list's margins.
    if (auto* scroll = qobject_cast<KScrollGalleryView*>(view())) {
        const QMargins m = scroll->margins();
        scroll->setMinimumWidth(KColorGroup::s_columns * (KxColorItem::s_cellSize.width() + kCellSpace) + m.left()
                                + m.right());
    }
}

KColorCtrl::~KColorCtrl() = default;

QVector<QColor> KColorCtrl::defaultColors()
{
    QVector<QColor> colors;
    colors.reserve(40);
    for (quint32 v : kPalette)
        colors.append(colorFromTable(v));
    return colors;
}

QStringList KColorCtrl::defaultColorNames()
{
    return tr("Black,Brown,Olive Green,Dark Green,Dark Teal,Dark Blue,Indigo,Gray-80%,"
              "Dark Red,Orange,Dark Yellow,Green,Teal,Blue,Blue-Gray,Gray-50%,"
              "Red,Light Orange,Lime,Sea Green,Aqua,Light Blue,Violet,Gray-40%,"
              "Pink,Gold,Yellow,Bright Green,Turquoise,Sky Blue,Plum,Gray-25%,"
              "Rose,Tan,Light Yellow,Light Green,Light Turquoise,Pale Blue,Lavender,White")
        .split(QLatin1Char(','));
}

void KColorCtrl::initItems()
{
    addNoColorItem(tr("No Color"))->setVisible(false);
    addAutoFillColor(tr("Automatic"));
    addSeparator();
    m_schemeColors = addNewColorGroup();
    addSeparator();
    m_expandSchemeColors = addNewColorGroup();
    addSeparator();
    addDefaultColorGroup();
    addSeparator();
    m_extraColors = addNewColorGroup();
    addSeparator();
    m_moreColor = _addTextGroup(tr("&More Color"), true);
    m_fillEffect = _addTextGroup(tr("&Fill effects..."), false);
    m_backGround = new KGalleryGroup(model(), new KxBackGroundColorItem(tr("&Background"), model()), false);
    m_backGround->setVisible(false);
    addGroup(m_backGround);
    m_patternedLines = _addTextGroup(tr("&Patterned Lines..."), false);
}

KGalleryGroup* KColorCtrl::_addTextGroup(const QString& text, bool visible)
{
    auto* group = new KGalleryGroup(model(), new KxTextItem(text, model()), false);
    group->setVisible(visible);
    addGroup(group);
    return group;
}

KGalleryGroup* KColorCtrl::addSeparator()
{
    return addSeparatorToGroup(nullptr);
}

int KColorCtrl::getLastSeparatorIndex() const
{
    for (int g = groupCount() - 1; g >= 0; --g) {
        if (group(g)->isSeparator())
            return startInModel(g);
    }
    return -1;
}

KGalleryGroup* KColorCtrl::addAutoFillColor(const QString& text)
{
    m_autoColorItem = new KxAutoColorItem(text, model());
    auto* group = new KGalleryGroup(model(), m_autoColorItem, false);
    group->setGroupUnique(true);
    addGroup(group);
    m_autoColor = group;
    return group;
}

KGalleryGroup* KColorCtrl::addNoColorItem(const QString& text)
{
    auto* group = new KGalleryGroup(model(), new KxNoColorItem(text, model()), false);
    addGroup(group);
    m_noColor = group;
    return group;
}

KColorGroup* KColorCtrl::addNewColorGroup()
{
    auto* group = new KColorGroup(model());
    addGroup(group);
    return group;
}

KColorGroup* KColorCtrl::addDefaultColorGroup()
{
    const QStringList names = defaultColorNames();
    const QVector<QColor> colors = defaultColors();
    auto* group = new KColorGroup(model());
    for (int i = 0; i < colors.size(); ++i)
        group->addColor(colors.at(i), names.value(i));
    addGroup(group);
    if (!m_paletteColors)
        m_paletteColors = group;
    return group;
}

void KColorCtrl::uncheckNotSameColorItem(const QColor& color)
{
    KGalleryAbstractModel* m = model();
    for (int i = 0; i < m->count(); ++i) {
        auto* item = qobject_cast<KxColorItem*>(m->element(i));
        if (item && item->isChecked() && item->color() != color)
            item->setChecked(false);
    }
}

void KColorCtrl::_takeColor(const QColor& color)
{
    m_colorState = 1;
    m_currentColor = color;
    uncheckNotSameColorItem(color);
    // The same colour stays checked wherever it stands.
    KGalleryAbstractModel* m = model();
    for (int i = 0; i < m->count(); ++i) {
        auto* item = qobject_cast<KxColorItem*>(m->element(i));
        if (item && item->color() == color)
            item->setChecked(true);
    }
    update();
}

void KColorCtrl::on_indexClicked(int index)
{
    KGalleryAbstractModel* m = model();
    if (index < 0 || index >= m->count())
        return;
    KGalleryModelAbstractItem* element = m->element(index);
    if (auto* item = qobject_cast<KxNoColorItem*>(element)) {
        m_colorState = 0;
        m_currentColor = QColor();
        setCurrentText(item->text());
        update();
        Q_EMIT currentColorChanged(m_currentColor);
    } else if (auto* item = qobject_cast<KxColorItem*>(element)) {
        _takeColor(item->color());
        Q_EMIT currentColorChanged(m_currentColor);
    } else if (auto* item = qobject_cast<KxAutoColorItem*>(element)) {
        if (item->isFixedMode()) {
            setCurrentText(item->text());
            if (item->color().isValid())
                _takeColor(item->color());
            else
                m_colorState = 1;
            Q_EMIT currentColorChanged(m_currentColor);
        } else if (item->color().isValid()) {
            _takeColor(item->color());
            m_schemeColors->setColorSelected(item->color());
            m_expandSchemeColors->setColorSelected(item->color());
            Q_EMIT currentColorChanged(m_currentColor);
        }
    } else if (auto* item = qobject_cast<KxBackGroundColorItem*>(element)) {
        if (item->color().isValid()) {
            m_colorState = 1;
            m_currentColor = item->color();
            update();
        }
    }
}

void KColorCtrl::setCurrentColor(const QColor& color, bool emitSignal)
{
    if (color == m_currentColor && (color.isValid() || m_colorState == 0))
        return;
    if (!color.isValid()) {
        m_colorState = 0;
        m_currentColor = QColor();
        uncheckNotSameColorItem(QColor());
    } else {
        _takeColor(color);
        KGalleryAbstractModel* m = model();
        for (int i = 0; i < m->count(); ++i) {
            auto* item = qobject_cast<KxColorItem*>(m->element(i));
            if (item && item->color() == color) {
                m->setCurrentIndex(i);
                break;
            }
        }
    }
    update();
    if (emitSignal)
        Q_EMIT currentColorChanged(m_currentColor);
}

void KColorCtrl::stateDrawAdjust(QPainter* painter, QRect& rect) const
{
    Q_UNUSED(painter);
    // A bar along the bottom of the field, under the text when there is one.
    const int bar = currentText().isEmpty() ? rect.height() - 4 : 4;
    rect = QRect(rect.left() + 2, rect.bottom() - bar - 1, rect.width() - 4, bar);
}

void KColorCtrl::paintEvent(QPaintEvent* e)
{
    KGalleryGroupCombobox::paintEvent(e);
    QPainter painter(this);
    QRect field = getEditFieldRect();
    if (m_customDraw && m_customDraw->drawEditField(painter, field, this))
        return;
    if (m_colorState == 0 || !m_currentColor.isValid())
        return;
    stateDrawAdjust(&painter, field);
    drawSwatch(painter, field, m_currentColor);
}
