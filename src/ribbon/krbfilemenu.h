#ifndef KRBFILEMENU_H
#define KRBFILEMENU_H

#include <QPointer>
#include <QTimer>
#include <QWidget>

#include <kmenuwidget.h>
#include <krbfilemenucommand.h>
#include <krbrecentfilepage.h>
#include <ktoolbutton.h>
#include <norvikofficeui_export.h>

class QHBoxLayout;
class QVBoxLayout;
class KRbRecentFilePage;

/// The file menu's list of file commands, on a lit background, beside the recent page.
class NORVIKOFFICEUI_EXPORT KRbFileMenuLeftMenu : public KMenuWidget
{
    Q_OBJECT
public:
    KRbFileMenuLeftMenu(KCommand* command, QWidget* parent, KRbRecentFilePage* recent);
    QTimer* hideTimer() { return &m_hideTimer; }

public Q_SLOTS:
    void hideSubMenu();

protected:
    bool event(QEvent* e) override;
    void mouseMoveEvent(QMouseEvent* e) override;
    void leaveEvent(QEvent* e) override;
    void paintEvent(QPaintEvent* e) override;

private:
    QTimer m_hideTimer;
    QPointer<KRbRecentFilePage> m_recent;
};

/// A button of the file menu's bottom row, in the file menu's own colours.
class NORVIKOFFICEUI_EXPORT KRbFileMenuButton : public KToolButton
{
    Q_OBJECT
public:
    explicit KRbFileMenuButton(QWidget* parent);
    using KToolButton::sizeHint;
    QSize sizeHint() const override;

protected:
    void initStyleOption(KStyleOptionToolButton* option) const override;
};

/// The row of buttons along the bottom of the file menu: switch, custom, quit.
class NORVIKOFFICEUI_EXPORT KRbFileMenuBottomWidget : public QWidget
{
    Q_OBJECT
public:
    KRbFileMenuBottomWidget(KRbFileMenuCommand* command, QWidget* parent);
    QList<KRbFileMenuButton*> buttons() const { return m_buttons; }

protected:
    bool event(QEvent* e) override;
    void paintEvent(QPaintEvent* e) override;

private:
    QList<KRbFileMenuButton*> m_buttons;
};

/**
 * The panel that drops down from the ribbon's file button: the left menu, the recent page
 * to its right, the bottom row under both. Built from a KRbFileMenuCommand; a new command
 * replaces all three.
 */
class NORVIKOFFICEUI_EXPORT KRbFileMenu : public QWidget
{
    Q_OBJECT
public:
    explicit KRbFileMenu(QWidget* parent);
    ~KRbFileMenu() override;

    void setDefaultKCommand(KRbFileMenuCommand* command);
    KRbFileMenuCommand* command() const { return m_command.data(); }
    KRbRecentFilePage* getRecentWidget() const { return m_recent.data(); }
    KRbFileMenuLeftMenu* getLeftMenu() const { return m_leftMenu.data(); }
    KRbFileMenuBottomWidget* bottomWidget() const { return m_bottom.data(); }
    void clearStatus();

public Q_SLOTS:
    void syncCommand();

protected:
    bool event(QEvent* e) override;
    void paintEvent(QPaintEvent* e) override;
    void focusInEvent(QFocusEvent* e) override;
    void keyPressEvent(QKeyEvent* e) override;
    bool focusNextPrevChild(bool next) override;

private:
    QPointer<KRbFileMenuCommand> m_command;
    QPointer<KRbFileMenuLeftMenu> m_leftMenu;
    QHBoxLayout* m_rowLayout = nullptr;
    QVBoxLayout* m_mainLayout = nullptr;
    QPointer<KRbRecentFilePage> m_recent;
    QPointer<KRbFileMenuBottomWidget> m_bottom;
};

/// A titled menu: the title band over menuCommand's menu.
class NORVIKOFFICEUI_EXPORT KRBFileHelpMenu : public QWidget
{
    Q_OBJECT
public:
    KRBFileHelpMenu(QWidget* parent, const QString& title, KCommand* menuCommand);
    QString title() const { return m_title; }

protected:
    void paintEvent(QPaintEvent* e) override;

private:
    QString m_title;
};

#endif // KRBFILEMENU_H
