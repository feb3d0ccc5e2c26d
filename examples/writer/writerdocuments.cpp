#include "writerdocuments.h"

#include <QCloseEvent>
#include <QFile>
#include <QFileDialog>
#include <QFileInfo>
#include <QMdiSubWindow>
#include <QMessageBox>
#include <QTextDocument>
#include <QTextEdit>
#include <QVBoxLayout>

#include <kcommands.h>
#include <kdrawhelpfunc.h>

#include "writerwindow.h"

// --- WriterDocumentPage ---

WriterDocumentPage::WriterDocumentPage(WriterWindow* window, QWidget* parent)
    : KSubWindow(parent), m_window(window), m_document(new QTextDocument(this))
{
    m_layout = new QVBoxLayout(this);
    m_layout->setContentsMargins(0, 0, 0, 0);
    connect(m_document, &QTextDocument::modificationChanged, this, [this](bool modified) {
        setWindowModified(modified);
        if (m_window->documents() && m_window->documents()->currentPage() == this)
            m_window->setWindowModified(modified);
    });
    _updateTitle();
}

void WriterDocumentPage::setPath(const QString& path)
{
    if (path == m_path)
        return;
    m_path = path;
    _updateTitle();
}

void WriterDocumentPage::_updateTitle()
{
    // The tab shows the "[*]" as its changed mark.
    setWindowTitle((m_path.isEmpty() ? tr("Untitled") : QFileInfo(m_path).fileName()) + QStringLiteral("[*]"));
}

bool WriterDocumentPage::isPristine() const
{
    return m_path.isEmpty() && m_document->isEmpty() && !m_document->isModified()
        && !m_document->isUndoAvailable();
}

void WriterDocumentPage::holdEditor(QTextEdit* editor)
{
    m_layout->addWidget(editor);
    editor->show();
}

QIcon WriterDocumentPage::iconForSuffix(const QString& suffix) const
{
    const QString s = suffix.toLower();
    const QString name = s == QLatin1String("html") || s == QLatin1String("htm") ? QStringLiteral("text-html")
                                                                                 : QStringLiteral("text-x-generic");
    const QString path = QStringLiteral("/usr/share/icons/Tango/16x16/mimetypes/%1.png").arg(name);
    return QFile::exists(path) ? QIcon(path) : KDrawHelpFunc::getFileIcon(m_path);
}

void WriterDocumentPage::closeEvent(QCloseEvent* e)
{
    if (m_document->isModified()) {
        WriterDocuments* documents = m_window->documents();
        // Saving goes through the window's editor: this document must be the current one.
        if (auto* sub = qobject_cast<QMdiSubWindow*>(parentWidget()))
            documents->area()->setActiveSubWindow(sub);
        const QString name = m_path.isEmpty() ? tr("Untitled") : QFileInfo(m_path).fileName();
        const auto answer = QMessageBox::question(m_window, tr("Close"), tr("Save the changes to %1?").arg(name),
                                                  QMessageBox::Save | QMessageBox::Discard | QMessageBox::Cancel,
                                                  QMessageBox::Save);
        if (answer == QMessageBox::Cancel) {
            e->ignore();
            return;
        }
        if (answer == QMessageBox::Save) {
            QString path = m_path;
            if (path.isEmpty())
                path = QFileDialog::getSaveFileName(m_window, tr("Save As"), QString(),
                                                    tr("Text files (*.txt *.md);;Web pages (*.html *.htm);;All files (*)"));
            if (path.isEmpty() || !m_window->saveFile(path)) {
                e->ignore();
                return;
            }
        }
    }
    // The editor stays with the window; the page and its text go.
    m_window->documents()->release(this);
    e->accept();
}

// --- WriterDocuments ---

WriterDocuments::WriterDocuments(WriterWindow* window, QTextEdit* editor)
    : QObject(window), m_window(window), m_editor(editor)
{
    m_area = new KMdiArea(window);
    m_area->setObjectName(QStringLiteral("WriterDocuments"));
    // A window announces its end before its widgets go.
    connect(window, &QObject::destroyed, this, &WriterDocuments::_detach);
    // The area goes inactive (null) when its window hides or closes: the document stays.
    connect(m_area->qMdiArea(), &QMdiArea::subWindowActivated, this, [this](QMdiSubWindow* w) {
        if (w)
            _makeCurrent(w);
    });
    connect(m_area, &KMdiArea::subWindowRemoved, this, [this] {
        if (m_area->subWindowList().isEmpty() || !m_area->hasVisibleSubWindow())
            _makeCurrent(nullptr);
    });
}

WriterDocuments::~WriterDocuments()
{
    _detach();
}

void WriterDocuments::_detach()
{
    // The window is going: nothing of the editor or the texts may reach it any more.
    if (m_editor)
        m_editor->disconnect();
    if (m_area) {
        for (WriterDocumentPage* page : pages())
            page->document()->disconnect();
    }
}

QList<WriterDocumentPage*> WriterDocuments::pages() const
{
    QList<WriterDocumentPage*> result;
    KDocTabbarEx* tabs = m_area->tabBarEx();
    for (int i = 0; i < tabs->count(); ++i) {
        if (auto* page = qobject_cast<WriterDocumentPage*>(tabs->subWindowAt(i)->widget()))
            result << page;
    }
    return result;
}

WriterDocumentPage* WriterDocuments::newDocument()
{
    auto* page = new WriterDocumentPage(m_window);
    // Documents fill the area, one at a time, without a frame of their own: the tabs are
    // their frame.
    QMdiSubWindow* sub = m_area->addSubWindow(page, Qt::FramelessWindowHint);
    sub->showMaximized();
    _makeCurrent(sub);
    return page;
}

WriterDocumentPage* WriterDocuments::pageForOpen()
{
    if (m_current && m_current->isPristine())
        return m_current;
    return newDocument();
}

void WriterDocuments::syncCurrentPath()
{
    if (m_current)
        m_current->setPath(m_window->filePath());
}

void WriterDocuments::bindCommands()
{
    if (KCommand* cmd = m_window->commands()->command(QStringLiteral("FileNew")))
        m_area->addrbTabbarButton(cmd);
    if (KCommand* cmd = m_window->commands()->command(QStringLiteral("NoTabPage")))
        m_area->addNoTabPageWidget(cmd);
}

void WriterDocuments::release(WriterDocumentPage* page)
{
    if (page && page == m_current)
        _makeCurrent(nullptr);
}

void WriterDocuments::_makeCurrent(QMdiSubWindow* subWindow)
{
    auto* page = subWindow ? qobject_cast<WriterDocumentPage*>(subWindow->widget()) : nullptr;
    if (page == m_current && (page || !m_editor->isVisible()))
        return;
    if (m_current) {
        m_current->setCursorPosition(m_editor->textCursor().position());
        m_current->setPath(m_window->filePath());
    }
    m_current = page;
    if (!page) {
        // No document: the editor waits, hidden, on a text of its own.
        m_editor->hide();
        m_editor->setParent(m_area);
        if (!m_spare)
            m_spare = new QTextDocument(this);
        m_spare->clear();
        m_editor->setDocument(m_spare);
        m_window->setCurrentPath(QString());
        return;
    }
    page->holdEditor(m_editor);
    m_editor->setDocument(page->document());
    QTextCursor cursor(page->document());
    cursor.setPosition(qMin(page->cursorPosition(), page->document()->characterCount() - 1));
    m_editor->setTextCursor(cursor);
    m_window->setCurrentPath(page->path());
    // What hangs on the editor learns of the other text.
    Q_EMIT m_editor->undoAvailable(page->document()->isUndoAvailable());
    Q_EMIT m_editor->redoAvailable(page->document()->isRedoAvailable());
    Q_EMIT m_editor->copyAvailable(false);
    Q_EMIT m_editor->textChanged();
    m_editor->setFocus();
}
