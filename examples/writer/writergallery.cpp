#include "writergallery.h"

#include <QApplication>
#include <QColorDialog>
#include <QFontDatabase>
#include <QPainter>
#include <QTextBlock>
#include <QTextCursor>
#include <QTextEdit>
#include <QTimer>

#include <kapplication.h>
#include <kcommandfactory.h>
#include <kdrawhelpfunc.h>
#include <kgallerymodeltextitem.h>

#include "writerwindow.h"

static KCommandFactoryItem<WriterStylesCommand, QObject>
    s_stylesItem(QStringLiteral("WriterStylesCommand"), QStringLiteral("QObject"));
static KCommandFactoryItem<WriterClearStylesCommand, QObject>
    s_clearStylesItem(QStringLiteral("WriterClearStylesCommand"), QStringLiteral("QObject"));
static KCommandFactoryItem<WriterColorCommand, QObject>
    s_colorItem(QStringLiteral("WriterColorCommand"), QStringLiteral("QObject"));
static KCommandFactoryItem<WriterFontNameCommand, QObject>
    s_fontNameItem(QStringLiteral("WriterFontNameCommand"), QStringLiteral("QObject"));

namespace {

// Where a paragraph keeps the index of its style.
constexpr int kStyleProperty = QTextFormat::UserProperty + 100;

WriterParagraphStyle makeStyle(const QString& name, qreal pointSize, int weight, bool italic,
                               const QColor& color = QColor())
{
    WriterParagraphStyle style;
    style.name = name;
    style.charFormat.setFontPointSize(pointSize);
    style.charFormat.setFontWeight(weight);
    style.charFormat.setFontItalic(italic);
    if (color.isValid())
        style.charFormat.setForeground(color);
    return style;
}

} // namespace

// --- the styles ---

QList<WriterParagraphStyle> WriterStyles::styles()
{
    // The document's colours for headings and quotations: the host's own data.
    const QColor heading(0x2f, 0x54, 0x96);
    const QColor quote(0x59, 0x59, 0x59);
    QList<WriterParagraphStyle> list;
    list << makeStyle(QObject::tr("Normal"), 11, QFont::Normal, false);
    WriterParagraphStyle title = makeStyle(QObject::tr("Title"), 26, QFont::Light, false);
    title.blockFormat.setBottomMargin(8);
    list << title;
    WriterParagraphStyle h1 = makeStyle(QObject::tr("Heading 1"), 18, QFont::Bold, false, heading);
    h1.blockFormat.setTopMargin(12);
    list << h1;
    WriterParagraphStyle h2 = makeStyle(QObject::tr("Heading 2"), 14, QFont::Bold, false, heading);
    h2.blockFormat.setTopMargin(8);
    list << h2;
    list << makeStyle(QObject::tr("Heading 3"), 12, QFont::DemiBold, false, heading);
    WriterParagraphStyle q = makeStyle(QObject::tr("Quote"), 11, QFont::Normal, true, quote);
    q.blockFormat.setLeftMargin(24);
    q.blockFormat.setRightMargin(24);
    list << q;
    WriterParagraphStyle code = makeStyle(QObject::tr("Code"), 10, QFont::Normal, false);
    code.charFormat.setFontFamilies({QFontDatabase::systemFont(QFontDatabase::FixedFont).family()});
    code.blockFormat.setBackground(QColor(0xf2, 0xf2, 0xf2));
    list << code;
    for (int i = 0; i < list.size(); ++i)
        list[i].blockFormat.setProperty(kStyleProperty, i);
    return list;
}

int WriterStyles::styleAt(const QTextEdit* editor)
{
    if (!editor)
        return -1;
    const QVariant v = editor->textCursor().blockFormat().property(kStyleProperty);
    return v.isValid() ? v.toInt() : 0;
}

void WriterStyles::apply(QTextEdit* editor, int style)
{
    const QList<WriterParagraphStyle> all = styles();
    if (!editor || style < 0 || style >= all.size())
        return;
    const WriterParagraphStyle& s = all.at(style);
    QTextCursor cursor = editor->textCursor();
    const int first = cursor.selectionStart();
    const int last = cursor.selectionEnd();
    QTextCharFormat charFormat = s.charFormat;
    if (!charFormat.hasProperty(QTextFormat::FontFamilies))
        charFormat.setFontFamilies({editor->document()->defaultFont().family()});
    cursor.beginEditBlock();
    for (QTextBlock block = editor->document()->findBlock(first); block.isValid() && block.position() <= last;
         block = block.next()) {
        QTextCursor bc(block);
        // The style's block format replaces the paragraph's, list membership aside.
        QTextBlockFormat blockFormat = s.blockFormat;
        blockFormat.setIndent(block.blockFormat().indent());
        bc.setBlockFormat(blockFormat);
        bc.setBlockCharFormat(charFormat);
        bc.movePosition(QTextCursor::EndOfBlock, QTextCursor::KeepAnchor);
        bc.setCharFormat(charFormat);
    }
    cursor.endEditBlock();
    editor->setCurrentCharFormat(charFormat);
}

QTextEdit* WriterStyles::currentEditor()
{
    KApplication* app = KApplication::instance();
    auto* window = app ? qobject_cast<WriterWindow*>(app->currentMainWindow()) : nullptr;
    return window ? window->editor() : nullptr;
}

// --- WriterStyleItem ---

WriterStyleItem::WriterStyleItem(const WriterParagraphStyle& style, KGalleryAbstractModel* model)
    : KGalleryModelAbstractItem(style.name, QIcon(), model, false)
    , m_style(style)
{
    setDetail(style.name);
    setHSpace(1);
}

bool WriterStyleItem::isExpanding(KGalleryViewType) const
{
    return false;
}

QSize WriterStyleItem::sizeHint() const
{
    return s_cellSize;
}

void WriterStyleItem::drawItem(QPainter& painter, const QRect& rect, KGalleryViewType) const
{
    drawBackGround(painter, rect);
    painter.save();
    // The sample in the style's own font, shrunk where it would not fit the cell.
    QFont font = QApplication::font();
    const QStringList families = m_style.charFormat.fontFamilies().toStringList();
    if (!families.isEmpty())
        font.setFamilies(families);
    font.setWeight(QFont::Weight(m_style.charFormat.fontWeight()));
    font.setItalic(m_style.charFormat.fontItalic());
    font.setPointSizeF(qMin<qreal>(m_style.charFormat.fontPointSize(), 16));
    const QString sampleText = QStringLiteral("AaBbCc");
    const QRect sample(rect.left() + 3, rect.top() + 3, rect.width() - 6, rect.height() - 24);
    while (font.pointSizeF() > 6 && QFontMetrics(font).horizontalAdvance(sampleText) > sample.width() - 2)
        font.setPointSizeF(font.pointSizeF() - 0.5);
    painter.setFont(font);
    const QColor ink = m_style.charFormat.foreground().style() == Qt::NoBrush
        ? QColor(Qt::black)
        : m_style.charFormat.foreground().color();
    if (m_style.blockFormat.background().style() != Qt::NoBrush)
        painter.fillRect(sample, m_style.blockFormat.background());
    painter.setPen(ink);
    painter.drawText(sample, Qt::AlignCenter, sampleText);
    painter.restore();
    const QRect name(rect.left() + 2, rect.bottom() - 19, rect.width() - 4, 18);
    KDrawHelpFunc::drawColorText(painter, Qt::black, name, Qt::AlignCenter,
                                 painter.fontMetrics().elidedText(text(), Qt::ElideRight, name.width()));
}

// --- WriterStylesCommand ---

namespace {

// The styles, made the first time a gallery shows.
class WriterStylesModel : public KGalleryAbstractModel
{
public:
    using KGalleryAbstractModel::KGalleryAbstractModel;

    QList<KGalleryModelAbstractItem*> fecthItems() override
    {
        if (count() == 0) {
            for (const WriterParagraphStyle& style : WriterStyles::styles())
                addElement(new WriterStyleItem(style, this));
        }
        return KGalleryAbstractModel::fecthItems();
    }
};

} // namespace

WriterStylesCommand::WriterStylesCommand(QObject* host, QObject* parent)
    : KGalleryCommand(host, parent)
{
    auto* model = new WriterStylesModel(this);
    setDataSource(model);
    connect(model, &KGalleryAbstractModel::indexClicked, this, &WriterStylesCommand::_apply);
}

void WriterStylesCommand::_apply(int index)
{
    if (index < 0)
        return;
    WriterStyles::apply(WriterStyles::currentEditor(), index);
}

void WriterStylesCommand::update()
{
    KGalleryCommand::update();
    KGalleryAbstractModel* model = dataSource();
    const int style = WriterStyles::styleAt(WriterStyles::currentEditor());
    if (model && model->count() > 0 && style != model->currentIndex())
        model->setCurrentIndex(style);
}

WriterClearStylesCommand::WriterClearStylesCommand(QObject* host, QObject* parent)
    : KTriggerCommand(host, parent)
{
}

void WriterClearStylesCommand::onTriggered()
{
    WriterStyles::apply(WriterStyles::currentEditor(), 0);
}

// --- WriterColorCommand ---

namespace {

// The field of a colour box in the ribbon: a letter (font colour) or a marked "ab"
// (highlight) over a bar of the current colour.
class ColorFieldDraw : public KxCustomComboEditFieldDraw
{
public:
    explicit ColorFieldDraw(bool highlight)
        : m_highlight(highlight)
    {
    }

    bool drawEditField(QPainter& painter, const QRect& rect, const KColorCtrl* ctrl) override
    {
        painter.save();
        painter.fillRect(rect, ctrl->palette().color(QPalette::Base));
        QFont font = ctrl->font();
        font.setBold(!m_highlight);
        painter.setFont(font);
        const QRect text = rect.adjusted(0, 0, 0, -5);
        painter.setPen(ctrl->palette().color(QPalette::Text));
        painter.drawText(text, Qt::AlignCenter, m_highlight ? QStringLiteral("ab") : QStringLiteral("A"));
        // A bar along the bottom; an empty frame for "no colour".
        const QRect bar(rect.left() + 3, rect.bottom() - 4, rect.width() - 6, 4);
        if (ctrl->colorState() == 1 && ctrl->currentColor().isValid()) {
            painter.fillRect(bar, ctrl->currentColor());
        } else {
            painter.setPen(ctrl->palette().color(QPalette::Mid));
            painter.drawRect(bar.adjusted(0, 0, -1, -1));
        }
        painter.restore();
        return true;
    }

private:
    bool m_highlight;
};

} // namespace

WriterColorCommand::WriterColorCommand(QObject* host, QObject* parent)
    : KApiCommand(host, parent)
{
}

QWidget* WriterColorCommand::createPocketWidget(QWidget* parent)
{
    auto* ctrl = new KColorCtrl(parent);
    ctrl->setDefaultCommand(this);
    ctrl->setFixedWidth2(52);
    ctrl->setToolTip(text());
    if (isHighlight()) {
        ctrl->getNoColor()->setVisible(true);
        ctrl->setCurrentColor(Qt::yellow, false);
    } else {
        ctrl->getAutoColorItem()->setColor(Qt::black);
        ctrl->setCurrentColor(Qt::red, false);
    }
    // The drawer lives as long as the box.
    auto* draw = new ColorFieldDraw(isHighlight());
    ctrl->setCustomDraw(draw);
    connect(ctrl, &QObject::destroyed, this, [draw] { delete draw; });
    connect(ctrl, &KColorCtrl::currentColorChanged, this, &WriterColorCommand::applyColor);
    connect(ctrl, &KGalleryGroupCombobox::groupItemClicked, this,
            [this, ctrl](KGalleryGroup* group, KGalleryModelAbstractItem*) {
                if (group != ctrl->getMoreColor())
                    return;
                // After the list has closed.
                const QPointer<KColorCtrl> guard(ctrl);
                QTimer::singleShot(0, this, [this, guard] {
                    if (guard)
                        _moreColors(guard);
                });
            });
    return ctrl;
}

void WriterColorCommand::_moreColors(KColorCtrl* ctrl)
{
    const QColor color = QColorDialog::getColor(ctrl->currentColor(), ctrl->window(), tr("Colors"));
    if (!color.isValid())
        return;
    if (!ctrl->getExtraColors()->contains(color))
        ctrl->getExtraColors()->addColor(color, color.name());
    ctrl->setCurrentColor(color, true);
}

void WriterColorCommand::applyColor(const QColor& color)
{
    QTextEdit* editor = WriterStyles::currentEditor();
    if (!editor)
        return;
    QTextCursor cursor = editor->textCursor();
    QTextCharFormat format;
    if (isHighlight()) {
        if (color.isValid())
            format.setBackground(color);
        else
            format.setBackground(Qt::NoBrush);
    } else {
        format.setForeground(color.isValid() ? QBrush(color) : QBrush(Qt::black));
    }
    if (!cursor.hasSelection())
        cursor.select(QTextCursor::WordUnderCursor);
    cursor.mergeCharFormat(format);
    editor->mergeCurrentCharFormat(format);
}

// --- WriterFontNameCommand ---

namespace {

// Every font of the system, made the first time the list opens.
class FontNameModel : public KGalleryAbstractModel
{
public:
    using KGalleryAbstractModel::KGalleryAbstractModel;

    QList<KGalleryModelAbstractItem*> fecthItems() override
    {
        if (count() == 0) {
            addHeader(QObject::tr("All Fonts"));
            for (const QString& family : QFontDatabase::families())
                addElement(new KGalleryModelFontItem(family, this));
        }
        return KGalleryAbstractModel::fecthItems();
    }
};

} // namespace

WriterFontNameCommand::WriterFontNameCommand(QObject* host, QObject* parent)
    : KApiCommand(host, parent)
{
}

QWidget* WriterFontNameCommand::createPocketWidget(QWidget* parent)
{
    auto* box = new KGalleryComboBox(parent);
    auto* model = new FontNameModel;
    box->setModel(model);
    // The names are there for typing at once; the rows are drawn when the list first opens.
    model->fecthItems();
    box->setEditable(true);
    box->setFixedWidth2(140);
    box->setDefaultCommand(this);
    box->setToolTip(text());
    if (auto* view = box->view())
        view->setMinimumWidth(260);
    connect(box, qOverload<const QString&>(&KGalleryComboBox::indexClicked), this, [](const QString& family) {
        QTextEdit* editor = WriterStyles::currentEditor();
        if (!editor || family.isEmpty())
            return;
        QTextCharFormat format;
        format.setFontFamilies({family});
        QTextCursor cursor = editor->textCursor();
        if (!cursor.hasSelection())
            cursor.select(QTextCursor::WordUnderCursor);
        cursor.mergeCharFormat(format);
        editor->mergeCurrentCharFormat(format);
    });
    m_boxes.removeAll(QPointer<KGalleryComboBox>());
    m_boxes.append(box);
    update();
    return box;
}

void WriterFontNameCommand::update()
{
    KApiCommand::update();
    QTextEdit* editor = WriterStyles::currentEditor();
    if (!editor)
        return;
    const QStringList families = editor->currentCharFormat().fontFamilies().toStringList();
    const QString family = families.isEmpty() ? editor->document()->defaultFont().family() : families.first();
    for (const QPointer<KGalleryComboBox>& box : std::as_const(m_boxes)) {
        // What a user types isn't overwritten.
        if (!box || box->hasFocus() || (box->lineEdit() && box->lineEdit()->hasFocus()))
            continue;
        const int found = box->findText(family);
        if (found >= 0) {
            if (box->currentIndex() != found)
                box->setCurrentIndex(found, false);
        } else if (box->lineEdit()) {
            box->lineEdit()->setText(family); // a font the list doesn't have
        }
    }
}
