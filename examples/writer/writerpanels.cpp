#include "writerpanels.h"

#include <QFileInfo>
#include <QFormLayout>
#include <QLabel>
#include <QListWidget>
#include <QTextEdit>
#include <QRegularExpression>
#include <QTextBlock>
#include <QVBoxLayout>

#include <kapplication.h>
#include <kcommandfactory.h>

#include "writerwindow.h"

static KCommandFactoryItem<WriterOutlineCommand, QObject>
    s_outlineItem(QStringLiteral("WriterOutlineCommand"), QStringLiteral("QObject"));
static KCommandFactoryItem<WriterPropertiesCommand, QObject>
    s_propertiesItem(QStringLiteral("WriterPropertiesCommand"), QStringLiteral("QObject"));

static KCommandFactoryItem<WriterRecentFilesCommand, QObject>
    s_recentItem(QStringLiteral("WriterRecentFilesCommand"), QStringLiteral("QObject"));

static WriterWindow* windowOf(QWidget* w)
{
    KApplication* app = KApplication::instance();
    return app ? qobject_cast<WriterWindow*>(app->findRelativeMainWindow(w)) : nullptr;
}

WriterOutlineCommand::WriterOutlineCommand(QObject* host, QObject* parent)
    : KCommand(host, parent)
{
}

QWidget* WriterOutlineCommand::createExtendedWidget(QWidget* parent)
{
    return new WriterOutlineView(parent);
}

WriterPropertiesCommand::WriterPropertiesCommand(QObject* host, QObject* parent)
    : KCommand(host, parent)
{
}

QWidget* WriterPropertiesCommand::createExtendedWidget(QWidget* parent)
{
    return new WriterPropertiesView(parent);
}

WriterRecentFilesCommand::WriterRecentFilesCommand(QObject* host, QObject* parent)
    : KMRUCommand(host, parent)
{
}

void WriterRecentFilesCommand::addFile(const QString& path)
{
    if (path.isEmpty())
        return;
    QStringList files = getStrings();
    files.removeAll(path);
    files.prepend(path);
    setStrings(files);
}

void WriterRecentFilesCommand::onTriggered()
{
    const QString path = getStrings().value(index());
    if (!path.isEmpty())
        Q_EMIT fileChosen(path);
}

WriterOutlineView::WriterOutlineView(QWidget* parent)
    : QWidget(parent)
    , m_list(new QListWidget(this))
    , m_window(windowOf(parent))
{
    auto* layout = new QVBoxLayout(this);
    layout->setContentsMargins(2, 2, 2, 2);
    layout->addWidget(m_list);
    m_list->setFrameShape(QFrame::NoFrame);
    connect(m_list, &QListWidget::itemActivated, this, &WriterOutlineView::_jumpTo);
    connect(m_list, &QListWidget::itemClicked, this, &WriterOutlineView::_jumpTo);
    if (m_window)
        connect(m_window->editor(), &QTextEdit::textChanged, this, &WriterOutlineView::_rebuild);
    _rebuild();
}

void WriterOutlineView::_rebuild()
{
    m_list->clear();
    if (!m_window)
        return;
    static const QRegularExpression heading(QStringLiteral("^(#+)\\s*(.+)$"));
    const QTextDocument* doc = m_window->editor()->document();
    for (QTextBlock b = doc->begin(); b.isValid(); b = b.next()) {
        const QRegularExpressionMatch m = heading.match(b.text());
        if (!m.hasMatch())
            continue;
        const int level = int(m.capturedLength(1)) - 1;
        auto* item = new QListWidgetItem(QString(level * 3, QLatin1Char(' ')) + m.captured(2).trimmed(), m_list);
        item->setData(Qt::UserRole, b.position());
    }
    if (m_list->count() == 0) {
        auto* hint = new QListWidgetItem(tr("Lines starting with # appear here."), m_list);
        hint->setFlags(Qt::NoItemFlags);
    }
}

void WriterOutlineView::_jumpTo(QListWidgetItem* item)
{
    if (!m_window || !item || !item->data(Qt::UserRole).isValid())
        return;
    QTextCursor cursor(m_window->editor()->document());
    cursor.setPosition(item->data(Qt::UserRole).toInt());
    m_window->editor()->setTextCursor(cursor);
    m_window->editor()->setFocus();
}

WriterPropertiesView::WriterPropertiesView(QWidget* parent)
    : QWidget(parent)
    , m_window(windowOf(parent))
{
    auto* form = new QFormLayout(this);
    for (const QString& key : {tr("File"), tr("Folder"), tr("Characters"), tr("Words"), tr("Lines")}) {
        auto* value = new QLabel(this);
        value->setTextInteractionFlags(Qt::TextSelectableByMouse);
        form->addRow(key + QLatin1Char(':'), value);
        m_values.insert(key, value);
    }
    if (m_window) {
        connect(m_window->editor(), &QTextEdit::textChanged, this, &WriterPropertiesView::_refresh);
        connect(m_window, &WriterWindow::documentChanged, this, &WriterPropertiesView::_refresh);
    }
    _refresh();
}

QString WriterPropertiesView::valueText(const QString& key) const
{
    QLabel* label = m_values.value(key);
    return label ? label->text() : QString();
}

void WriterPropertiesView::_refresh()
{
    if (!m_window)
        return;
    const QString path = m_window->filePath();
    const QString text = m_window->editor()->toPlainText();
    static const QRegularExpression space(QStringLiteral("\\s+"));
    const int words = text.trimmed().isEmpty() ? 0 : int(text.trimmed().split(space).size());
    m_values.value(tr("File"))->setText(path.isEmpty() ? tr("Untitled") : QFileInfo(path).fileName());
    m_values.value(tr("Folder"))->setText(path.isEmpty() ? tr("(not saved)") : QFileInfo(path).absolutePath());
    m_values.value(tr("Characters"))->setText(QString::number(text.size()));
    m_values.value(tr("Words"))->setText(QString::number(words));
    m_values.value(tr("Lines"))->setText(QString::number(m_window->editor()->document()->blockCount()));
}
