#include "writerribbon.h"

#include <QDialog>
#include <QDialogButtonBox>
#include <QFileDialog>
#include <QFormLayout>
#include <QImageReader>
#include <QInputDialog>
#include <QLineEdit>
#include <QPushButton>
#include <QMessageBox>
#include <QTextBlock>
#include <QTextCursor>
#include <QTextEdit>
#include <QTextList>
#include <QTextTable>
#include <QUrl>

#include <kapplication.h>
#include <kcommand.h>
#include <kcommandfactory.h>
#include <kcommands.h>
#include <kcontextcategorycommand.h>
#include <krbtabwidget.h>
#include <kstatusbar.h>

#include "writerwindow.h"

// Context tabs are the host's to declare: the Table tab is one.
static KCommandFactoryItem<KContextCategoryCommand, QObject>
    s_contextCategoryItem(QStringLiteral("KContextCategoryCommand"), QStringLiteral("QObject"));

namespace {
enum TableEdit { RowAbove, RowBelow, ColumnLeft, ColumnRight, DeleteRow, DeleteColumn, DeleteTable, Merge };
constexpr int kMaxPictureWidth = 480;
} // namespace

WriterRibbonActions::WriterRibbonActions(WriterWindow* window)
    : QObject(window)
    , m_window(window)
{
    auto on = [this](const char* id, auto handler) {
        if (KCommand* cmd = _command(id))
            connect(cmd, &KCommand::triggered, this, handler);
    };
    on("FormatStrike", [this] { _strike(); });
    on("FormatGrow", [this] { _changeFontSize(+1); });
    on("FormatShrink", [this] { _changeFontSize(-1); });
    on("FormatClear", [this] { _clearFormatting(); });
    on("ParaBullets", [this] { _toggleList(QTextListFormat::ListDisc); });
    on("ParaNumbering", [this] { _toggleList(QTextListFormat::ListDecimal); });
    on("ParaIndentLess", [this] { _indent(-1); });
    on("ParaIndentMore", [this] { _indent(+1); });
    on("ParaAlignLeft", [this] { _setAlignment(Qt::AlignLeft | Qt::AlignAbsolute); });
    on("ParaAlignCenter", [this] { _setAlignment(Qt::AlignHCenter); });
    on("ParaAlignRight", [this] { _setAlignment(Qt::AlignRight | Qt::AlignAbsolute); });
    on("ParaJustify", [this] { _setAlignment(Qt::AlignJustify); });
    on("EditFind", [this] { _find(); });
    on("EditReplace", [this] { _replace(); });
    on("InsertTable", [this] { insertTable(3, 3); });
    on("InsertPicture", [this] { _pictureDialog(); });
    on("InsertLink", [this] { _linkDialog(); });
    on("InsertPageBreak", [this] { _pageBreak(); });
    on("ViewZoomIn", [this] { _zoomBy(+1); });
    on("ViewZoomOut", [this] { _zoomBy(-1); });
    on("ViewZoomReset", [this] { _zoomBy(-m_zoom); });
    on("ViewStatusBar", [this] { _toggleStatusBar(); });
    on("RibbonCollapse", [this] { _toggleRibbonCollapse(); });
    on("RibbonCollapseToggle", [this] { _toggleRibbonCollapse(); });
    on("TableRowAbove", [this] { _tableEdit(RowAbove); });
    on("TableRowBelow", [this] { _tableEdit(RowBelow); });
    on("TableColumnLeft", [this] { _tableEdit(ColumnLeft); });
    on("TableColumnRight", [this] { _tableEdit(ColumnRight); });
    on("TableDeleteRow", [this] { _tableEdit(DeleteRow); });
    on("TableDeleteColumn", [this] { _tableEdit(DeleteColumn); });
    on("TableDelete", [this] { _tableEdit(DeleteTable); });
    on("TableMerge", [this] { _tableEdit(Merge); });

    QTextEdit* editor = _editor();
    connect(editor, &QTextEdit::cursorPositionChanged, this, &WriterRibbonActions::_updateChecks);
    connect(editor, &QTextEdit::cursorPositionChanged, this, &WriterRibbonActions::_updateTableTab);
    connect(editor, &QTextEdit::currentCharFormatChanged, this, &WriterRibbonActions::_updateChecks);
    connect(editor, &QTextEdit::textChanged, this, &WriterRibbonActions::_updateTableTab);
    if (KRbTabWidget* ribbon = m_window->headerBar())
        connect(ribbon, &KRbTabWidget::statusChanged, this, &WriterRibbonActions::_updateCollapseCommands);
    _updateChecks();
    _updateTableTab();
    _updateCollapseCommands();
    if (KCommand* cmd = _command("ViewStatusBar"))
        cmd->setCheckedHint(m_window->statusBar() && !m_window->statusBar()->isHidden());
}

KCommand* WriterRibbonActions::_command(const char* id) const
{
    return m_window->commands()->command(QString::fromLatin1(id));
}

QTextEdit* WriterRibbonActions::_editor() const
{
    return m_window->editor();
}

void WriterRibbonActions::_strike()
{
    QTextCharFormat format;
    format.setFontStrikeOut(!_editor()->currentCharFormat().fontStrikeOut());
    _editor()->mergeCurrentCharFormat(format);
    _updateChecks();
}

void WriterRibbonActions::_changeFontSize(int delta)
{
    // The sizes an office user picks from, walked one at a time.
    static const QList<qreal> sizes = {8, 9, 10, 11, 12, 14, 16, 18, 20, 24, 28, 32, 36, 48, 72};
    qreal size = _editor()->currentCharFormat().fontPointSize();
    if (size <= 0)
        size = _editor()->document()->defaultFont().pointSizeF();
    qreal next = size;
    if (delta > 0) {
        auto it = std::upper_bound(sizes.begin(), sizes.end(), size);
        next = it == sizes.end() ? sizes.last() : *it;
    } else {
        auto it = std::lower_bound(sizes.begin(), sizes.end(), size);
        next = it == sizes.begin() ? sizes.first() : *(it - 1);
    }
    QTextCharFormat format;
    format.setFontPointSize(next);
    _editor()->mergeCurrentCharFormat(format);
}

void WriterRibbonActions::_clearFormatting()
{
    QTextCursor cursor = _editor()->textCursor();
    if (!cursor.hasSelection())
        cursor.select(QTextCursor::WordUnderCursor);
    cursor.setCharFormat(QTextCharFormat());
    _editor()->setCurrentCharFormat(QTextCharFormat());
    _updateChecks();
}

void WriterRibbonActions::_setAlignment(Qt::Alignment alignment)
{
    _editor()->setAlignment(alignment);
    _updateChecks();
}

void WriterRibbonActions::_toggleList(int style)
{
    QTextCursor cursor = _editor()->textCursor();
    QTextList* list = cursor.currentList();
    cursor.beginEditBlock();
    if (list && list->format().style() == style) {
        // The same list again: the paragraphs leave it.
        const int first = cursor.selectionStart();
        const int last = cursor.selectionEnd();
        for (QTextBlock block = _editor()->document()->findBlock(first); block.isValid() && block.position() <= last;
             block = block.next()) {
            if (QTextList* owner = block.textList())
                owner->remove(block);
            QTextCursor blockCursor(block);
            QTextBlockFormat format = block.blockFormat();
            format.setIndent(0);
            blockCursor.setBlockFormat(format);
        }
    } else if (list) {
        QTextListFormat format = list->format();
        format.setStyle(static_cast<QTextListFormat::Style>(style));
        list->setFormat(format);
    } else {
        cursor.createList(static_cast<QTextListFormat::Style>(style));
    }
    cursor.endEditBlock();
    _updateChecks();
}

void WriterRibbonActions::_indent(int delta)
{
    QTextCursor cursor = _editor()->textCursor();
    if (QTextList* list = cursor.currentList()) {
        QTextListFormat format = list->format();
        format.setIndent(qMax(1, format.indent() + delta));
        list->setFormat(format);
        return;
    }
    QTextBlockFormat format = cursor.blockFormat();
    format.setIndent(qMax(0, format.indent() + delta));
    cursor.setBlockFormat(format);
}

bool WriterRibbonActions::findNext(const QString& text)
{
    if (text.isEmpty())
        return false;
    QTextEdit* editor = _editor();
    if (editor->find(text))
        return true;
    // Once round from the start, then give up.
    QTextCursor start(editor->document());
    const QTextCursor before = editor->textCursor();
    editor->setTextCursor(start);
    if (editor->find(text))
        return true;
    editor->setTextCursor(before);
    return false;
}

int WriterRibbonActions::replaceAll(const QString& text, const QString& replacement)
{
    if (text.isEmpty())
        return 0;
    QTextDocument* document = _editor()->document();
    QTextCursor edit(document);
    edit.beginEditBlock();
    int count = 0;
    QTextCursor found = document->find(text, 0);
    while (!found.isNull()) {
        found.insertText(replacement);
        ++count;
        found = document->find(text, found.position());
    }
    edit.endEditBlock();
    return count;
}

void WriterRibbonActions::_find()
{
    bool ok = false;
    const QString selected = _editor()->textCursor().selectedText();
    const QString text = QInputDialog::getText(m_window, tr("Find"), tr("Find what:"), QLineEdit::Normal,
                                               selected, &ok);
    if (ok && !text.isEmpty() && !findNext(text))
        QMessageBox::information(m_window, tr("Find"), tr("\"%1\" is not in the document.").arg(text));
}

void WriterRibbonActions::_replace()
{
    QDialog dialog(m_window);
    dialog.setWindowTitle(tr("Replace"));
    auto* form = new QFormLayout(&dialog);
    auto* what = new QLineEdit(_editor()->textCursor().selectedText(), &dialog);
    auto* with = new QLineEdit(&dialog);
    form->addRow(tr("Find what:"), what);
    form->addRow(tr("Replace with:"), with);
    auto* buttons = new QDialogButtonBox(QDialogButtonBox::Ok | QDialogButtonBox::Cancel, &dialog);
    buttons->button(QDialogButtonBox::Ok)->setText(tr("Replace All"));
    form->addRow(buttons);
    connect(buttons, &QDialogButtonBox::accepted, &dialog, &QDialog::accept);
    connect(buttons, &QDialogButtonBox::rejected, &dialog, &QDialog::reject);
    if (dialog.exec() != QDialog::Accepted || what->text().isEmpty())
        return;
    const int count = replaceAll(what->text(), with->text());
    QMessageBox::information(m_window, tr("Replace"), tr("%n replacement(s) made.", nullptr, count));
}

void WriterRibbonActions::insertTable(int rows, int columns)
{
    QTextTableFormat format;
    format.setCellPadding(4);
    format.setCellSpacing(0);
    format.setBorder(1);
    format.setBorderStyle(QTextFrameFormat::BorderStyle_Solid);
    format.setBorderCollapse(true);
    format.setWidth(QTextLength(QTextLength::PercentageLength, 100));
    QTextCursor cursor = _editor()->textCursor();
    QTextTable* table = cursor.insertTable(rows, columns, format);
    _editor()->setTextCursor(table->cellAt(0, 0).firstCursorPosition());
}

void WriterRibbonActions::insertLink(const QString& url)
{
    const QUrl link = QUrl::fromUserInput(url);
    if (!link.isValid())
        return;
    QTextCursor cursor = _editor()->textCursor();
    const QString text = cursor.hasSelection() ? cursor.selectedText() : url;
    QTextCharFormat format = cursor.charFormat();
    format.setAnchor(true);
    format.setAnchorHref(link.toString());
    format.setFontUnderline(true);
    format.setForeground(_editor()->palette().link());
    cursor.insertText(text, format);
    // What is typed next is plain text again.
    _editor()->setCurrentCharFormat(QTextCharFormat());
}

bool WriterRibbonActions::insertPicture(const QString& path)
{
    QImageReader reader(path);
    const QSize size = reader.size();
    if (!reader.canRead() || !size.isValid())
        return false;
    QTextImageFormat format;
    format.setName(QUrl::fromLocalFile(path).toString());
    if (size.width() > kMaxPictureWidth) {
        format.setWidth(kMaxPictureWidth);
        format.setHeight(size.height() * kMaxPictureWidth / size.width());
    }
    _editor()->document()->addResource(QTextDocument::ImageResource, QUrl(format.name()), reader.read());
    _editor()->textCursor().insertImage(format);
    return true;
}

void WriterRibbonActions::_pictureDialog()
{
    const QString path = QFileDialog::getOpenFileName(m_window, tr("Insert Picture"), QString(),
                                                      tr("Pictures (*.png *.jpg *.jpeg *.gif *.bmp *.svg)"));
    if (!path.isEmpty() && !insertPicture(path))
        QMessageBox::warning(m_window, tr("Insert Picture"), tr("%1 is no picture that can be shown.").arg(path));
}

void WriterRibbonActions::_linkDialog()
{
    bool ok = false;
    const QString url = QInputDialog::getText(m_window, tr("Insert Link"), tr("Address:"), QLineEdit::Normal,
                                              QStringLiteral("https://"), &ok);
    if (ok && !url.trimmed().isEmpty())
        insertLink(url.trimmed());
}

void WriterRibbonActions::_pageBreak()
{
    QTextCursor cursor = _editor()->textCursor();
    QTextBlockFormat format = cursor.blockFormat();
    cursor.insertBlock();
    format.setPageBreakPolicy(QTextFormat::PageBreak_AlwaysBefore);
    cursor.setBlockFormat(format);
}

void WriterRibbonActions::_zoomBy(int steps)
{
    // The editor zooms by whole points; ten steps either way are enough.
    const int target = qBound(-5, m_zoom + steps, 10);
    _editor()->zoomIn(target - m_zoom);
    m_zoom = target;
}

void WriterRibbonActions::_toggleStatusBar()
{
    QWidget* bar = m_window->statusBar();
    if (!bar)
        return;
    bar->setVisible(bar->isHidden());
    if (KCommand* cmd = _command("ViewStatusBar"))
        cmd->setCheckedHint(!bar->isHidden());
}

void WriterRibbonActions::_toggleRibbonCollapse()
{
    KRbTabWidget* ribbon = m_window->headerBar();
    if (!ribbon)
        return;
    ribbon->setStatus(ribbon->status() == KRbSubTabBar::Expanded ? KRbSubTabBar::Collapsed : KRbSubTabBar::Expanded,
                      true);
}

void WriterRibbonActions::_updateCollapseCommands()
{
    KRbTabWidget* ribbon = m_window->headerBar();
    const bool collapsed = ribbon && ribbon->status() != KRbSubTabBar::Expanded;
    if (KCommand* toggle = _command("RibbonCollapseToggle"))
        toggle->setCheckedHint(collapsed);
    if (KCommand* corner = _command("RibbonCollapse")) {
        corner->setText(collapsed ? tr("Pin the Ribbon") : tr("Collapse the Ribbon"));
        corner->setIcon(KApplication::instance()->loadIcon(collapsed ? QStringLiteral("ribbon-expand")
                                                                     : QStringLiteral("ribbon-collapse")));
    }
}

void WriterRibbonActions::_tableEdit(int what)
{
    QTextCursor cursor = _editor()->textCursor();
    QTextTable* table = cursor.currentTable();
    if (!table)
        return;
    const QTextTableCell cell = table->cellAt(cursor);
    const int row = cell.row();
    const int column = cell.column();
    switch (what) {
    case RowAbove:
        table->insertRows(row, 1);
        break;
    case RowBelow:
        table->insertRows(row + cell.rowSpan(), 1);
        break;
    case ColumnLeft:
        table->insertColumns(column, 1);
        break;
    case ColumnRight:
        table->insertColumns(column + cell.columnSpan(), 1);
        break;
    case DeleteRow:
        if (table->rows() == 1)
            table->removeRows(0, 1); // the last row takes the table with it
        else
            table->removeRows(row, 1);
        break;
    case DeleteColumn:
        if (table->columns() == 1)
            table->removeColumns(0, 1);
        else
            table->removeColumns(column, 1);
        break;
    case DeleteTable:
        table->removeRows(0, table->rows());
        break;
    case Merge:
        if (cursor.hasComplexSelection() || cursor.hasSelection())
            table->mergeCells(cursor);
        else if (column + 1 < table->columns())
            table->mergeCells(row, column, 1, 2); // with the cell on the right
        break;
    }
    _updateTableTab();
}

void WriterRibbonActions::_updateTableTab()
{
    if (KCommand* tab = _command("table")) {
        const bool inTable = _editor()->textCursor().currentTable() != nullptr;
        if (tab->isVisible() != inTable)
            tab->setVisible(inTable);
    }
}

void WriterRibbonActions::_updateChecks()
{
    QTextEdit* editor = _editor();
    const Qt::Alignment alignment = editor->alignment() & Qt::AlignHorizontal_Mask;
    auto check = [this](const char* id, bool on) {
        if (KCommand* cmd = _command(id))
            cmd->setCheckedHint(on);
    };
    check("ParaAlignLeft", alignment.testFlag(Qt::AlignLeft) || alignment == Qt::AlignLeading);
    check("ParaAlignCenter", alignment.testFlag(Qt::AlignHCenter));
    check("ParaAlignRight", alignment.testFlag(Qt::AlignRight) || alignment == Qt::AlignTrailing);
    check("ParaJustify", alignment.testFlag(Qt::AlignJustify));
    QTextList* list = editor->textCursor().currentList();
    const int style = list ? list->format().style() : 0;
    check("ParaBullets", style == QTextListFormat::ListDisc);
    check("ParaNumbering", style == QTextListFormat::ListDecimal);
    check("FormatStrike", editor->currentCharFormat().fontStrikeOut());
}
