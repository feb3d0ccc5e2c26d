#ifndef KCOMMAND_H
#define KCOMMAND_H

#include <QIcon>
#include <QMetaType>
#include <QObject>
#include <QString>
#include <QVariant>
#include <bitset>

#include <norvikofficeui_export.h>

class QWidget;

/**
 * A boolean made of up to 32 vetoes, one bit per controller. The value is true when no
 * controller vetoes. A plain setValue(true) drops every veto; a controller's
 * setValue(t, true) lifts only its own. Bit numbers of 32 or more throw std::out_of_range
 * (the bitset's own check).
 */
class NORVIKOFFICEUI_EXPORT KMultiControlBool
{
public:
    enum ControlType {
        FullScreenControl = 17, ///< bars hidden for full screen, see KMainWindow
        PlainControl = 31       ///< the bit set by setValue(false)
    };

    KMultiControlBool() = default;

    bool isTrue() const { return m_mask.none(); }
    bool isTrue(ControlType t) const { return !m_mask.test(static_cast<size_t>(t)); }
    explicit operator bool() const { return isTrue(); }

    /// true clears the whole mask, false sets the plain bit; true when isTrue() changed.
    bool setValue(bool v);
    /// Sets or clears only bit t; true when isTrue() changed.
    bool setValue(ControlType t, bool v);

    KMultiControlBool& operator=(bool v)
    {
        setValue(v);
        return *this;
    }

    quint32 mask() const { return static_cast<quint32>(m_mask.to_ulong()); }
    bool operator==(const KMultiControlBool& o) const { return m_mask == o.m_mask; }
    bool operator!=(const KMultiControlBool& o) const { return m_mask != o.m_mask; }

private:
    std::bitset<32> m_mask;
};

Q_DECLARE_METATYPE(KMultiControlBool)

/**
 * The model of every item a user can see in a bar. Widgets copy its properties when
 * changed() fires and call trigger() when the user acts. Every property is a meta-property
 * so that the XML parser can set it by name; unknown attributes land as dynamic properties.
 *
 * The setters of single values compare first: one that changes nothing emits nothing
 * (setVisible() and setEnabled() emit only when the overall value moves, so a second veto is
 * silent). The whole-value setters setMultiVisible() and setMultiEnabled() always emit
 * changed(), on purpose: whoever hands over a whole set of vetoes can count on every widget
 * reading it again.
 */
class NORVIKOFFICEUI_EXPORT KCommand : public QObject
{
    Q_OBJECT
    Q_PROPERTY(QObject* host READ host)
    Q_PROPERTY(QString text READ text WRITE setText)
    Q_PROPERTY(QIcon icon READ icon WRITE setIcon)
    Q_PROPERTY(QString detail READ detail WRITE setDetail)
    Q_PROPERTY(bool visible READ isVisible WRITE setVisible)
    Q_PROPERTY(bool enabled READ isEnabled WRITE setEnabled)
    Q_PROPERTY(KMultiControlBool multiVisible READ multiVisible WRITE setMultiVisible)
    Q_PROPERTY(KMultiControlBool multiEnabled READ multiEnabled WRITE setMultiEnabled)
    Q_PROPERTY(bool checkedHint READ checkedHint WRITE setCheckedHint)
    Q_PROPERTY(bool dialogHint READ dialogHint WRITE setDialogHint)
    Q_PROPERTY(QString shortcutHint READ shortcutHint WRITE setShortcutHint)
    Q_PROPERTY(QString customTip READ customTip WRITE setCustomTip)
    Q_PROPERTY(QString customTip2 READ customTip2 WRITE setCustomTip2)
    Q_PROPERTY(int buttonStyle READ buttonStyle WRITE setButtonStyle)
public:
    enum WidgetPurpose {
        PocketPurpose = 0,  ///< the small form that sits in a bar
        InlinePurpose = 1,  ///< the form that fills a page
        ExtendedPurpose = 2 ///< what opens from the item
    };

    /// parent owns the command; host (a main window or the application) is only stored.
    KCommand(QObject* host, QObject* parent);
    ~KCommand() override;

    QObject* host() const { return m_host; }

    QString text() const { return m_text; }
    void setText(const QString& text);
    QIcon icon() const { return m_icon; }
    /// A null icon is refused: it cannot clear an icon once set.
    void setIcon(const QIcon& icon);
    QString detail() const { return m_detail; }
    virtual void setDetail(const QString& detail);

    bool isVisible() const { return m_visible.isTrue(); }
    bool isVisible(KMultiControlBool::ControlType t) const { return m_visible.isTrue(t); }
    void setVisible(bool visible);
    void setVisible(KMultiControlBool::ControlType t, bool visible);
    /// The dynamic property "forceenabled", when present, overrides the vetoes.
    bool isEnabled() const;
    bool isEnabled(KMultiControlBool::ControlType t) const;
    void setEnabled(bool enabled);
    void setEnabled(KMultiControlBool::ControlType t, bool enabled);
    KMultiControlBool multiVisible() const { return m_visible; }
    void setMultiVisible(const KMultiControlBool& value);
    KMultiControlBool multiEnabled() const { return m_enabled; }
    void setMultiEnabled(const KMultiControlBool& value);

    bool checkedHint() const { return m_checkedHint; }
    void setCheckedHint(bool hint);
    bool dialogHint() const { return m_dialogHint; }
    void setDialogHint(bool hint);
    QString shortcutHint() const { return m_shortcutHint; }
    void setShortcutHint(const QString& hint);
    QString customTip() const { return m_customTip; }
    virtual void setCustomTip(const QString& tip);
    QString customTip2() const { return m_customTip2; }
    virtual void setCustomTip2(const QString& tip);
    int buttonStyle() const { return m_buttonStyle; }
    void setButtonStyle(int style);

    virtual bool isTriggerable() const;
    virtual bool isCustomWidget() const;
    virtual bool isExtensible() const;
    /// Polled by bound widgets at idle time; a derived command refreshes what it shows.
    virtual void update();
    virtual void processUpdate();
    virtual int count() const;
    virtual KCommand* subCommand(int index) const;
    virtual int indexOf(KCommand* command) const;
    /// A copy of this command for another host; null when the class cannot be copied.
    virtual KCommand* clone(QObject* host, QObject* parent);
    virtual void reserved();
    /// Drops every veto, the hints, the button style and all dynamic properties.
    virtual void reset();
    virtual QString triggerNote() const;

    /**
     * The only way the framework gets a widget for a command. The widget is a child of
     * parent and is deleted (later) when the command is destroyed. An unknown purpose gives
     * a label "Undefined".
     */
    QWidget* requestWidget(QWidget* parent, KCommand::WidgetPurpose purpose);
    QWidget* requestWidget(QWidget* parent, int purpose)
    {
        return requestWidget(parent, static_cast<WidgetPurpose>(purpose));
    }

    /// QObject::property, with defaultValue in place of an invalid result.
    QVariant property(const char* name, const QVariant& defaultValue) const;
    using QObject::property;

    /// The detail, or the text with "..." and the shortcut in brackets.
    QString getToolTip() const;
    /// The text as menus draw it, with its "&" mnemonic marker and "..." for dialogs.
    QString getDrawText() const;
    /// The reverse of getDrawText(): splits s into text, hotKey and dialogHint.
    void setDrawText(const QString& s);

    void blockChanged();
    void endBlock();

    /// Copies every meta-property (except command pointers) and dynamic property to target.
    void copyProperties(KCommand* target);

public Q_SLOTS:
    virtual void trigger();
    /// The funnel of every setter: emits changed() unless changes are blocked.
    void on_command_changed();

Q_SIGNALS:
    void changed();
    void triggered();

public:
    virtual QWidget* createPocketWidget(QWidget* parent);
    virtual QWidget* createInlineWidget(QWidget* parent);
    virtual QWidget* createExtendedWidget(QWidget* parent);

protected:
    virtual void onTriggered();

private:
    KMultiControlBool m_visible;
    KMultiControlBool m_enabled;
    bool m_checkedHint = false;
    bool m_dialogHint = false;
    int m_buttonStyle = 0;
    QString m_text;
    QIcon m_icon;
    QString m_detail;
    QString m_customTip;
    QString m_customTip2;
    QString m_shortcutHint;
    QObject* m_host = nullptr;
    int m_changedBlockCount = 0;
    bool m_changedPending = false;
};

Q_DECLARE_METATYPE(KCommand*)

/**
 * Folds the changes made while it lives into one changed() signal, emitted when the
 * outermost guard of the command ends. A null command is allowed and ignored.
 */
class NORVIKOFFICEUI_EXPORT KCommandChangedBlockHelpObject
{
public:
    explicit KCommandChangedBlockHelpObject(KCommand* command);
    ~KCommandChangedBlockHelpObject();
    KCommandChangedBlockHelpObject(const KCommandChangedBlockHelpObject&) = delete;
    KCommandChangedBlockHelpObject& operator=(const KCommandChangedBlockHelpObject&) = delete;

private:
    KCommand* m_command;
};

#endif // KCOMMAND_H
