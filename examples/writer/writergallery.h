#ifndef WRITERGALLERY_H
#define WRITERGALLERY_H

#include <QTextBlockFormat>
#include <QTextCharFormat>

#include <kapicommand.h>
#include <kcolorctrl.h>
#include <kcommand.h>
#include <kgallerycombobox.h>
#include <kgallerycommand.h>
#include <ktriggercommand.h>

class QTextEdit;

/// The writer's paragraph styles: a name and the formats a paragraph takes with it.
struct WriterParagraphStyle
{
    QString name;
    QTextCharFormat charFormat;
    QTextBlockFormat blockFormat;
};

/**
 * The paragraph styles of the Home tab and their use on the editor of the window in front:
 * Normal, Title, Heading 1 to 3, Quote and Code. A paragraph remembers its style in a
 * property of its block format.
 */
namespace WriterStyles {
QList<WriterParagraphStyle> styles();
/// The style of the paragraph at the cursor; 0 (Normal) for a paragraph without one.
int styleAt(const QTextEdit* editor);
/// Gives every paragraph of the selection the style: its block format and its character
/// format, over whatever formats the text had.
void apply(QTextEdit* editor, int style);
/// The editor of the window in front, or null.
QTextEdit* currentEditor();
} // namespace WriterStyles

/// One style in the gallery: a sample of its text in its own formats, and its name.
class WriterStyleItem : public KGalleryModelAbstractItem
{
    Q_OBJECT
public:
    WriterStyleItem(const WriterParagraphStyle& style, KGalleryAbstractModel* model);

    static constexpr QSize s_cellSize{74, 58};

    bool isExpanding(KGalleryViewType viewType) const override;
    QSize sizeHint() const override;
    void drawItem(QPainter& painter, const QRect& rect, KGalleryViewType viewType) const override;

private:
    WriterParagraphStyle m_style;
};

/// The styles gallery: a band in the ribbon, the full list with "Clear formatting" below.
class WriterStylesCommand : public KGalleryCommand
{
    Q_OBJECT
public:
    Q_INVOKABLE WriterStylesCommand(QObject* host, QObject* parent);

    /// Checks the style of the paragraph at the cursor.
    void update() override;

private:
    void _apply(int index);
};

/// "Clear formatting": the paragraphs of the selection go back to Normal, plain.
class WriterClearStylesCommand : public KTriggerCommand
{
    Q_OBJECT
public:
    Q_INVOKABLE WriterClearStylesCommand(QObject* host, QObject* parent);

protected:
    void onTriggered() override;
};

/**
 * A colour control for the selection: the font colour (kind "font", the default) or the
 * highlight behind the text (kind "highlight", with "No Color" to take it away). "More
 * colours" asks with the colour dialog and keeps the answer among the extra colours.
 */
class WriterColorCommand : public KApiCommand
{
    Q_OBJECT
    Q_PROPERTY(QString kind READ kind WRITE setKind)
public:
    Q_INVOKABLE WriterColorCommand(QObject* host, QObject* parent);

    QString kind() const { return m_kind; }
    void setKind(const QString& kind) { m_kind = kind; }
    bool isHighlight() const { return m_kind == QLatin1String("highlight"); }

    QWidget* createPocketWidget(QWidget* parent) override;
    /// Colours the selection of the editor in front; an invalid colour takes the colour away.
    void applyColor(const QColor& color);

private:
    void _moreColors(KColorCtrl* ctrl);

    QString m_kind = QStringLiteral("font");
};

/// The font name box: a gallery of the system's fonts, each name in its own font.
class WriterFontNameCommand : public KApiCommand
{
    Q_OBJECT
public:
    Q_INVOKABLE WriterFontNameCommand(QObject* host, QObject* parent);

    QWidget* createPocketWidget(QWidget* parent) override;
    /// Shows the font at the cursor in the boxes that aren't being edited.
    void update() override;

private:
    QList<QPointer<KGalleryComboBox>> m_boxes;
};

#endif // WRITERGALLERY_H
