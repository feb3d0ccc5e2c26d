#ifndef KBORDERWINDOW_H
#define KBORDERWINDOW_H

#include <QMainWindow>
#include <QPointer>
#include <QWidget>

#include <norvikofficeui_export.h>

class QGridLayout;
class KMainWindow;

/// The inner window of a KBorderWindow, where panels can dock around the work area.
class NORVIKOFFICEUI_EXPORT KBerthWindow : public QMainWindow
{
    Q_OBJECT
public:
    explicit KBerthWindow(QWidget* parent);
};

/**
 * A shell around a KMainWindow: a ribbon on top (row 0), the berth window in the middle
 * (row 5), a status bar at the foot (row 10). Inside the berth window a formula or edit bar
 * can stand above the work area (inner row 1), which holds the main window (inner row 5).
 * The main window is embedded: it draws no frame of its own.
 */
class NORVIKOFFICEUI_EXPORT KBorderWindow : public QWidget
{
    Q_OBJECT
    Q_PROPERTY(QObject* borderMainWindow READ mainWindowObject)
public:
    explicit KBorderWindow(KMainWindow* window);
    ~KBorderWindow() override;

    void addRbTabWidget(QWidget* widget);
    /// bar above the work area; overlay floats over bar's parent, raised.
    void addFormulaAndEditbar(QWidget* bar, QWidget* overlay);
    void addStatusBar(QWidget* widget);
    KMainWindow* getMainWindow() const;
    KBerthWindow* getBerthWindow() const { return m_berth; }
    /// The work area in the berth window ("OleClipArea").
    QWidget* clipArea() const { return m_clipArea; }

private:
    QObject* mainWindowObject() const;

    QGridLayout* m_outer = nullptr;
    QGridLayout* m_inner = nullptr;
    KBerthWindow* m_berth = nullptr;
    QPointer<QWidget> m_mainWindow;
    QWidget* m_clipArea = nullptr;
};

#endif // KBORDERWINDOW_H
