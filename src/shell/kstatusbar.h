#ifndef KSTATUSBAR_H
#define KSTATUSBAR_H

#include <QBoxLayout>
#include <QIcon>
#include <QList>
#include <QPointer>
#include <QWidget>

#include <kcommand.h>
#include <kstatusbarlayout.h>
#include <ktoolbutton.h>
#include <norvikofficeui_export.h>

class QHBoxLayout;
class KStyleOptionStatusBar;

/**
 * The bar at the foot of a main window. It shows the sub-commands of one list command as
 * small widgets in two halves split by a KStatusStrechCommand: the items ahead of it stand
 * at the left, the items behind it at the right edge. When space runs out the left half is
 * squeezed first (see KStatusBarLayout). A right click on the empty left part triggers the
 * status command, when it can be triggered (its menu, say).
 */
class NORVIKOFFICEUI_EXPORT KStatusBar : public QWidget
{
    Q_OBJECT
public:
    explicit KStatusBar(QWidget* parent = nullptr);
    ~KStatusBar() override;

    /// Shows cmd's sub-commands (replacing the items of an earlier command); not owned.
    void setStatusCommand(KCommand* cmd);
    KCommand* statusCommand() const { return m_command.data(); }
    KStatusBarLayout* statusLayout() const { return m_layout; }

    /// A widget at the end of the left half.
    void addWidget(QWidget* widget, int stretch = 0);
    /// A widget at index of the whole row.
    void insertWidget(int index, QWidget* widget, int stretch = 0);
    /// A widget at the end of the right half.
    void addPermanentWidget(QWidget* widget, int stretch = 0);
    /// A widget at index of the right half (of the whole row when there is no stretch).
    void insertPermanentWidget(int index, QWidget* widget, int stretch = 0);
    /// The items in row order; null stands for the stretch.
    QList<QWidget*> items() const { return m_items; }
    int permanentIndex() const { return m_permanentIndex; }

    void initStyleOption(KStyleOptionStatusBar* option) const;

public Q_SLOTS:
    void syncCommand();
    void onSubCommandInserted(int idx, KCommand* cmd);
    void onSubCommandRemoved(int idx);

protected:
    bool event(QEvent* e) override;
    void paintEvent(QPaintEvent* e) override;
    void mouseReleaseEvent(QMouseEvent* e) override;

private:
    void _insertCommandItem(int index, KCommand* cmd);
    void _clearItems();
    void _findPermanentIndex();

    KStatusBarLayout* m_layout = nullptr;
    QHBoxLayout* m_outerLayout = nullptr;
    QList<QWidget*> m_items;
    QPointer<KCommand> m_command;
    int m_permanentIndex = -1;
};

/**
 * A text with an icon for the status bar, bound to a command or set by the host. It
 * refreshes its command at idle time and on the process-update event, and can paint at once
 * during a long operation (repaintImmediately()).
 */
class NORVIKOFFICEUI_EXPORT KStatusBarLabel : public QWidget
{
    Q_OBJECT
public:
    explicit KStatusBarLabel(QWidget* parent = nullptr);
    KStatusBarLabel(const QString& text, QWidget* parent = nullptr);
    KStatusBarLabel(const QIcon& icon, QWidget* parent = nullptr);
    KStatusBarLabel(const QString& text, const QIcon& icon, QWidget* parent = nullptr);
    ~KStatusBarLabel() override;

    KCommand* defaultCommand() const { return m_command.data(); }
    /// Binds cmd (not owned); its "minimumWidth" property, when set, is the label's minimum.
    void setDefaultCommand(KCommand* cmd);
    QString text() const { return m_text; }
    void setText(const QString& text);
    QIcon icon() const { return m_icon; }
    void setIcon(const QIcon& icon);
    QBoxLayout::Direction direction() const { return m_direction; }
    void setDirection(QBoxLayout::Direction direction);

    QSize sizeHint() const override;
    QSize minimumSizeHint() const override;

public Q_SLOTS:
    void syncCommand();
    void repaintImmediately();

Q_SIGNALS:
    void clicked();
    void doubleClicked();
    void LButtonClicked();
    void RButtonClicked();

protected:
    bool event(QEvent* e) override;
    void paintEvent(QPaintEvent* e) override;
    void mousePressEvent(QMouseEvent* e) override;
    void mouseDoubleClickEvent(QMouseEvent* e) override;

private:
    QString m_text;
    QIcon m_icon;
    QBoxLayout::Direction m_direction = QBoxLayout::LeftToRight;
    QPointer<KCommand> m_command;
};

/**
 * The button of a status item. With the command's "needLight" property it draws a small
 * light ahead of its caption, coloured by its state (theme class "KStatusBarLight").
 */
class NORVIKOFFICEUI_EXPORT KStatusButton : public KToolButton
{
    Q_OBJECT
public:
    explicit KStatusButton(QWidget* parent = nullptr);

    bool needDrawLight() const;
    using KToolButton::minimumSizeHint;
    using KToolButton::sizeHint;
    QSize sizeHint() const override;
    QSize minimumSizeHint() const override;

protected:
    /// The state key of the light: "check" when checked, else "uncheck".
    virtual QString _statusString() const;
    void initStyleOption(KStyleOptionToolButton* option) const override;
    void paintEvent(QPaintEvent* e) override;
};

/// The auto-save switch: its light shows "waiting-save" while a save is due.
class NORVIKOFFICEUI_EXPORT KAutoBackupControlButton : public KStatusButton
{
    Q_OBJECT
public:
    explicit KAutoBackupControlButton(QWidget* parent = nullptr);
    bool isWaitingSave() const { return m_waitingSave; }

public Q_SLOTS:
    void setWaitingSaveState(bool b);

protected:
    QString _statusString() const override;

private:
    bool m_waitingSave = false;
};

/// The word count of a document; disabled (no document) it greys its text from the theme.
class NORVIKOFFICEUI_EXPORT KWordCountStatusButton : public KStatusButton
{
    Q_OBJECT
public:
    explicit KWordCountStatusButton(QWidget* parent = nullptr);

protected:
    void initStyleOption(KStyleOptionToolButton* option) const override;
};

/**
 * An item of a status bar, shown as a KStatusButton. Its "minimumWidth" is the button's
 * least width; "needLight" gives the button its light.
 */
class NORVIKOFFICEUI_EXPORT KStatusItemCommand : public KCommand
{
    Q_OBJECT
    Q_PROPERTY(int minimumWidth READ minimumWidth WRITE setMinimumWidth)
    Q_PROPERTY(bool needLight READ needLight WRITE setNeedLight)
public:
    Q_INVOKABLE KStatusItemCommand(QObject* host, QObject* parent);

    int minimumWidth() const { return m_minimumWidth; }
    void setMinimumWidth(int width);
    bool needLight() const { return m_needLight; }
    void setNeedLight(bool light);

protected:
    QWidget* createPocketWidget(QWidget* parent) override;
    /// Binds a button made by a subclass (the same set-up as the plain one).
    QWidget* adoptButton(KStatusButton* button);

private:
    int m_minimumWidth = 0;
    bool m_needLight = false;
};

/// "NumLock". Reads no key state: a host that wants a live state overrides update().
class NORVIKOFFICEUI_EXPORT KStatusNumLockCommand : public KStatusItemCommand
{
    Q_OBJECT
public:
    Q_INVOKABLE KStatusNumLockCommand(QObject* host, QObject* parent);
    void update() override {}
    void trigger() override {}
};

/// "Caps Lock". Reads no key state: a host that wants a live state overrides update().
class NORVIKOFFICEUI_EXPORT KStatusCapsLockCommand : public KStatusItemCommand
{
    Q_OBJECT
public:
    Q_INVOKABLE KStatusCapsLockCommand(QObject* host, QObject* parent);
    void update() override {}
    void trigger() override {}
};

/// "OverWrite". Reads no key state: a host that wants a live state overrides update().
class NORVIKOFFICEUI_EXPORT KStatusInsertKeyCommand : public KStatusItemCommand
{
    Q_OBJECT
public:
    Q_INVOKABLE KStatusInsertKeyCommand(QObject* host, QObject* parent);
    void update() override {}
    void trigger() override {}
};

/// Marks the split between the two halves of a status bar; it makes no widget.
class NORVIKOFFICEUI_EXPORT KStatusStrechCommand : public KCommand
{
    Q_OBJECT
public:
    Q_INVOKABLE KStatusStrechCommand(QObject* host, QObject* parent);

protected:
    QWidget* createPocketWidget(QWidget* parent) override;
};

#endif // KSTATUSBAR_H
