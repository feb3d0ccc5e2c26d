#include "writerfilemenu.h"

#include <QApplication>
#include <QDesktopServices>
#include <QDir>
#include <QDrag>
#include <QDropEvent>
#include <QFileInfo>
#include <QMenu>
#include <QMimeData>
#include <QMdiSubWindow>
#include <QMouseEvent>
#include <QPrintPreviewDialog>
#include <QPrinter>
#include <QTextEdit>
#include <QUrl>

#include <kcombobox.h>
#include <kcommandfactory.h>
#include <kcommands.h>
#include <kmdiarea.h>
#include <krbcategory.h>
#include <krbquicktoolbar.h>
#include <krbtabbar.h>
#include <krbtabwidget.h>
#include <kseparatorcommand.h>
#include <ksettings.h>
#include <ktoolbutton.h>

#include "writerdocuments.h"
#include "writerpanels.h"
#include "writerwindow.h"

static KCommandFactoryItem<WriterRecentPageCommand, QObject>
    s_recentPageItem(QStringLiteral("WriterRecentPageCommand"), QStringLiteral("QObject"));

namespace {

const char kQuickBarKey[] = "Writer/QuickBar";
const char kDragFormat[] = "application/drag-toolbar-action";

// A list kept in the settings as a count and numbered items, which every settings format
// (the portable XML file included) reads back the same.
QStringList readList(const QString& group)
{
    KSettings settings;
    settings.beginGroup(group);
    QStringList list;
    const int count = settings.value(QStringLiteral("count"), 0).toInt();
    for (int i = 1; i <= count; ++i)
        list.append(settings.value(QStringLiteral("item%1").arg(i)).toString());
    settings.endGroup();
    return list;
}

bool hasList(const QString& group)
{
    KSettings settings;
    return settings.contains(group + QStringLiteral("/count"));
}

void writeList(const QString& group, const QStringList& list)
{
    KSettings settings;
    settings.beginGroup(group);
    settings.remove(QString());
    settings.setValue(QStringLiteral("count"), list.size());
    for (int i = 0; i < list.size(); ++i)
        settings.setValue(QStringLiteral("item%1").arg(i + 1), list.at(i));
    settings.endGroup();
}

} // namespace

// --- the recent page's data ---

WriterRecentPageCommand::WriterRecentPageCommand(QObject* host, QObject* parent)
    : KRecentFilePageCommand(host, parent)
{
}

KCommand* WriterRecentPageCommand::recentCommand() const
{
    return m_recent.data();
}

void WriterRecentPageCommand::setRecentCommand(KCommand* command)
{
    m_recent = qobject_cast<WriterRecentFilesCommand*>(command);
    if (command && !m_recent)
        qWarning("WriterRecentPageCommand: the recent command is no WriterRecentFilesCommand.");
}

void WriterRecentPageCommand::setSettingsKey(const QString& key)
{
    m_settingsKey = key;
    if (!key.isEmpty())
        m_pins = readList(key);
}

QStringList WriterRecentPageCommand::fileList()
{
    QStringList files = m_recent ? m_recent->getStrings() : QStringList();
    for (const QString& pin : qAsConst(m_pins))
        if (!files.contains(pin))
            files.append(pin);
    return files;
}

void WriterRecentPageCommand::openFile(int index)
{
    const QString path = fileList().value(index);
    if (!path.isEmpty() && m_recent)
        Q_EMIT m_recent->fileChosen(path);
}

void WriterRecentPageCommand::removeFile(int index)
{
    const QString path = fileList().value(index);
    if (path.isEmpty())
        return;
    if (m_recent) {
        QStringList files = m_recent->getStrings();
        files.removeAll(path);
        m_recent->setStrings(files);
    }
    unfixFile(path);
}

void WriterRecentPageCommand::clearFiles()
{
    if (m_recent)
        m_recent->setStrings({});
    m_pins.clear();
    _savePins();
}

bool WriterRecentPageCommand::openFolder(const QString& path)
{
    const QString folder = QFileInfo(path).absolutePath();
    if (!QDir(folder).exists())
        return false;
    Q_EMIT folderRequested(folder);
    return true;
}

void WriterRecentPageCommand::fixFile(const QString& path)
{
    if (path.isEmpty() || m_pins.contains(path))
        return;
    m_pins.append(path);
    _savePins();
}

void WriterRecentPageCommand::unfixFile(const QString& path)
{
    if (m_pins.removeAll(path) > 0)
        _savePins();
}

QStringList WriterRecentPageCommand::fixedFileList()
{
    return m_pins;
}

QStringList WriterRecentPageCommand::unfixedFileList()
{
    QStringList rest;
    for (const QString& file : fileList())
        if (!m_pins.contains(file))
            rest.append(file);
    return rest;
}

void WriterRecentPageCommand::_savePins() const
{
    if (!m_settingsKey.isEmpty())
        writeList(m_settingsKey, m_pins);
}

// --- the file menu's commands and the quick access bar ---

WriterFileMenu::WriterFileMenu(WriterWindow* window)
    : QObject(window)
    , m_window(window)
{
    auto on = [this](const char* id, auto handler) {
        if (KCommand* cmd = _command(QLatin1String(id)))
            connect(cmd, &KCommand::triggered, this, handler);
    };
    on("FilePrintPreview", [this] { _printPreview(); });
    on("FileClose", [this] {
        KMdiArea* area = m_window->documents() ? m_window->documents()->area() : nullptr;
        if (area && area->currentSubWindow())
            area->currentSubWindow()->close();
    });
    on("FileExit", [this] { m_window->close(); });
    if (auto* page = qobject_cast<WriterRecentPageCommand*>(_command(QStringLiteral("RecentPage")))) {
        connect(page, &WriterRecentPageCommand::folderRequested, this,
                [](const QString& folder) { QDesktopServices::openUrl(QUrl::fromLocalFile(folder)); });
    }

    KRbQuickToolbar* bar = nullptr;
    if (KRbTabWidget* ribbon = m_window->headerBar())
        bar = ribbon->tabBar()->findChild<KRbQuickToolbar*>();
    if (!bar)
        return;
    m_quickBarObject = bar;
    bar->setCustomizable(true);
    _restoreQuickBar();
    connect(bar, &KRbQuickToolbar::cmdOnTbChanged, this, [this] {
        if (!m_restoring)
            _saveQuickBar();
    });
    bar->installEventFilter(this);
    // Ribbon controls live in pages made on demand, some in popups of their own: the
    // application's filter sees them all.
    qApp->installEventFilter(this);
}

WriterFileMenu::~WriterFileMenu()
{
    qApp->removeEventFilter(this);
}

KRbQuickToolbar* WriterFileMenu::quickBar() const
{
    return qobject_cast<KRbQuickToolbar*>(m_quickBarObject.data());
}

KCommand* WriterFileMenu::_command(const QString& id) const
{
    return m_window->commands()->command(id);
}

void WriterFileMenu::_printPreview()
{
    QPrinter printer(QPrinter::HighResolution);
    QPrintPreviewDialog dialog(&printer, m_window);
    dialog.setWindowTitle(tr("Print Preview"));
    QTextEdit* editor = m_window->editor();
    connect(&dialog, &QPrintPreviewDialog::paintRequested, this,
            [editor](QPrinter* target) { editor->document()->print(target); });
    dialog.exec();
}

// --- quick access bar ---

QStringList WriterFileMenu::quickBarIds() const
{
    QStringList ids;
    if (!quickBar())
        return ids;
    for (int i = 0; i < quickBar()->elementCount(); ++i) {
        KCommand* cmd = quickBar()->elementCommand(i);
        if (quickBar()->isElementShown(i) && cmd && !KSeparatorCommand::isSeparator(cmd))
            ids.append(cmd->property("id").toString());
    }
    return ids;
}

void WriterFileMenu::_saveQuickBar()
{
    writeList(QLatin1String(kQuickBarKey), quickBarIds());
}

void WriterFileMenu::_restoreQuickBar()
{
    if (!hasList(QLatin1String(kQuickBarKey)))
        return; // never changed: the description's own bar
    QList<KCommand*> commands;
    for (const QString& id : readList(QLatin1String(kQuickBarKey))) {
        if (KCommand* cmd = _command(id))
            commands.append(cmd);
        else
            qWarning("Quick access bar: the saved command %s is no longer known.", qPrintable(id));
    }
    m_restoring = true;
    quickBar()->resetCommands(commands);
    m_restoring = false;
}

bool WriterFileMenu::addToQuickBar(KCommand* command, int pos)
{
    if (!quickBar() || !command || command->property("id").toString().isEmpty())
        return false;
    int index = quickBar()->toElementPos(pos);
    // An entry already on the bar leaves its place before it takes the new one.
    for (int i = 0; i < quickBar()->elementCount() && index > 0; ++i) {
        if (quickBar()->elementCommand(i) == command) {
            if (i < index)
                --index;
            break;
        }
    }
    quickBar()->showCommand(command, index);
    return true;
}

QMimeData* WriterFileMenu::dragData(KCommand* command)
{
    auto* data = new QMimeData;
    data->setData(QLatin1String(kDragFormat), command ? command->property("id").toString().toUtf8() : QByteArray());
    return data;
}

KCommand* WriterFileMenu::ribbonCommandOf(QWidget* widget)
{
    // The innermost control with a command, provided a ribbon page holds it.
    KCommand* found = nullptr;
    for (QWidget* w = widget; w; w = w->parentWidget()) {
        if (qobject_cast<KRbCategory*>(w))
            return found && !found->property("id").toString().isEmpty() ? found : nullptr;
        if (found)
            continue;
        if (auto* button = qobject_cast<KToolButton*>(w))
            found = button->command();
        else if (auto* combo = qobject_cast<KComboBox*>(w))
            found = combo->command();
    }
    return nullptr;
}

bool WriterFileMenu::_dropOnQuickBar(QEvent* e)
{
    auto* drop = static_cast<QDropEvent*>(e);
    const QMimeData* data = drop->mimeData();
    if (!data || !data->hasFormat(QLatin1String(kDragFormat)))
        return false; // not ours: the bar refuses it
    KCommand* cmd = _command(QString::fromUtf8(data->data(QLatin1String(kDragFormat))));
    if (!cmd || KSeparatorCommand::isSeparator(cmd)) {
        drop->ignore(); // another program's entry, or one this window doesn't know
        return true;
    }
    // Before the first shown entry whose middle lies right of the drop.
    const int x = drop->position().toPoint().x();
    int pos = -1;
    const QList<QWidget*> shown = quickBar()->barWidgets();
    for (int i = 0; i < shown.size(); ++i) {
        if (shown.at(i)->geometry().center().x() > x) {
            pos = i;
            break;
        }
    }
    addToQuickBar(cmd, pos);
    drop->acceptProposedAction();
    return true;
}

void WriterFileMenu::_ribbonContextMenu(QWidget* widget, const QPoint& globalPos)
{
    KCommand* cmd = ribbonCommandOf(widget);
    if (!cmd || !quickBar())
        return;
    auto* menu = new QMenu(widget);
    menu->setAttribute(Qt::WA_DeleteOnClose);
    QAction* add = menu->addAction(tr("&Add to Quick Access Toolbar"));
    add->setEnabled(!quickBarIds().contains(cmd->property("id").toString()));
    QPointer<KCommand> guard(cmd);
    connect(add, &QAction::triggered, this, [this, guard] { addToQuickBar(guard.data()); });
    menu->popup(globalPos);
}

void WriterFileMenu::_startDrag(QWidget* widget)
{
    KCommand* cmd = ribbonCommandOf(widget);
    if (!cmd)
        return;
    // The control lets go of the press: the drag, not a click, is what follows.
    QMouseEvent release(QEvent::MouseButtonRelease, QPointF(-1, -1), QPointF(-1, -1), Qt::LeftButton,
                        Qt::NoButton, Qt::NoModifier);
    QCoreApplication::sendEvent(widget, &release);
    auto* drag = new QDrag(widget);
    drag->setMimeData(dragData(cmd));
    drag->setPixmap(widget->grab());
    drag->exec(Qt::CopyAction);
}

bool WriterFileMenu::eventFilter(QObject* watched, QEvent* e)
{
    if (watched == m_quickBarObject.data()) {
        if (e->type() == QEvent::Drop)
            return _dropOnQuickBar(e);
        return false;
    }
    switch (e->type()) {
    case QEvent::ContextMenu:
        if (watched->isWidgetType() && ribbonCommandOf(static_cast<QWidget*>(watched))) {
            _ribbonContextMenu(static_cast<QWidget*>(watched), static_cast<QContextMenuEvent*>(e)->globalPos());
            return true;
        }
        break;
    case QEvent::MouseButtonPress: {
        auto* mouse = static_cast<QMouseEvent*>(e);
        m_pressed = nullptr;
        if (watched->isWidgetType() && mouse->button() == Qt::LeftButton
            && ribbonCommandOf(static_cast<QWidget*>(watched))) {
            m_pressed = static_cast<QWidget*>(watched);
            m_pressPos = mouse->globalPosition().toPoint();
        }
        break;
    }
    case QEvent::MouseMove: {
        auto* mouse = static_cast<QMouseEvent*>(e);
        if (m_pressed && watched == m_pressed.data() && (mouse->buttons() & Qt::LeftButton)) {
            // A press that leaves its control is a drag.
            const QPoint pos = m_pressed->mapFromGlobal(mouse->globalPosition().toPoint());
            if (!m_pressed->rect().contains(pos)
                && (mouse->globalPosition().toPoint() - m_pressPos).manhattanLength()
                       >= QApplication::startDragDistance()) {
                QWidget* source = m_pressed.data();
                m_pressed = nullptr;
                _startDrag(source);
                return true;
            }
        }
        break;
    }
    case QEvent::MouseButtonRelease:
        m_pressed = nullptr;
        break;
    default:
        break;
    }
    return false;
}
