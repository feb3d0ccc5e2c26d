#include "kborderwindow.h"

#include <QGridLayout>
#include <QVBoxLayout>

#include <kmainwindow.h>

KBerthWindow::KBerthWindow(QWidget* parent)
    : QMainWindow(parent)
{
    setWindowFlags(Qt::Widget);
}

KBorderWindow::KBorderWindow(KMainWindow* window)
    : QWidget(nullptr)
    , m_mainWindow(window)
{
    m_outer = new QGridLayout(this);
    m_outer->setContentsMargins(0, 0, 0, 0);
    m_outer->setSpacing(0);
    m_berth = new KBerthWindow(this);
    auto* central = new QWidget(m_berth);
    m_inner = new QGridLayout(central);
    m_inner->setContentsMargins(0, 0, 0, 0);
    m_inner->setSpacing(0);
    m_berth->setCentralWidget(central);
    m_clipArea = new QWidget(central);
    m_clipArea->setObjectName(QStringLiteral("OleClipArea"));
    m_inner->addWidget(m_clipArea, 5, 0);
    m_inner->setRowStretch(5, 1);
    m_outer->addWidget(m_berth, 5, 0);
    m_outer->setRowStretch(5, 1);
    if (window) {
        // The main window is a part of this shell now, framed by it.
        auto* holder = new QVBoxLayout(m_clipArea);
        holder->setContentsMargins(0, 0, 0, 0);
        window->setEmbedding(true);
        window->setParent(m_clipArea);
        holder->addWidget(window);
        window->show();
    }
}

KBorderWindow::~KBorderWindow() = default;

void KBorderWindow::addRbTabWidget(QWidget* widget)
{
    if (widget)
        m_outer->addWidget(widget, 0, 0);
}

void KBorderWindow::addFormulaAndEditbar(QWidget* bar, QWidget* overlay)
{
    if (!bar)
        return;
    m_inner->addWidget(bar, 1, 0);
    if (overlay) {
        overlay->setParent(bar->parentWidget());
        overlay->raise();
        overlay->show();
    }
}

void KBorderWindow::addStatusBar(QWidget* widget)
{
    if (widget)
        m_outer->addWidget(widget, 10, 0);
}

KMainWindow* KBorderWindow::getMainWindow() const
{
    return qobject_cast<KMainWindow*>(m_mainWindow.data());
}

QObject* KBorderWindow::mainWindowObject() const
{
    return m_mainWindow.data();
}
