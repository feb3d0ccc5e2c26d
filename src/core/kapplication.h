#ifndef KAPPLICATION_H
#define KAPPLICATION_H

#include <QApplication>
#include <QColor>
#include <QList>
#include <QPointer>
#include <QWidget>
#include <QString>

#include <kapptranslators.h>
#include <kdomdocument.h>
#include <norvikofficeui_export.h>

class KAppAttributeParser;
class KCommands;
class KMainWindow;
class KAppIdleSvr;
class KProcessUpdateSvr;
class KAppTheme;
class KAppLibraries;
class KTips;

/**
 * The root object of every program built on the framework. A host creates exactly one,
 * before any widget, calls setupXml() with its main description, creates its main windows
 * and calls exec(). Anywhere in the framework the instance is reached by casting
 * QCoreApplication::instance(); there is no other accessor.
 *
 * The constructor installs a message handler that drops debug and warning messages, so all
 * of the framework's diagnostics (qWarning texts) are silent unless the host installs its
 * own handler after construction.
 */
class NORVIKOFFICEUI_EXPORT KApplication : public QApplication
{
    Q_OBJECT
public:
    KApplication(int& argc, char** argv);
    ~KApplication() override;

    /// The application object, or null when none or another kind exists.
    static KApplication* instance();

    // --- XML set-up ---
    /// Loads the main description and its imports; false when the main document fails.
    bool setupXml(const QString& path);
    /// The recursive loader; a relative path counts from the program's directory.
    bool _setupXml(const QString& path, int depth);
    /// Takes back everything setupXml built and clears the document list.
    void resetXml();
    /// Every document loaded with success, imported ones before their importer.
    QList<KDomDocument> getDoms() const;

    /// Starts the idle service, runs the event loop, stops the idle service.
    int exec();

    // --- services ---
    /// The application's command registry, the outermost scope of every look-up.
    KCommands* commands() const { return m_commands; }
    /// The attribute types of the description.
    KAppAttributeParser* attrParser() const { return m_attrParser; }
    KAppIdleSvr* idleSvr() const { return m_idleSvr; }
    KProcessUpdateSvr* processUpdateSvr() const { return m_processUpdateSvr; }
    KAppTheme* theme() const { return m_theme; }
    /// The tip catalogue, filled from the description's tip file on first use.
    KTips* tips() const { return m_tips; }
    KAppLibraries* libraries() const { return m_libraries; }
    KAppTranslators* translator() { return &m_translators; }
    /// Installs the translators of currentLanguage(); call it before setupXml().
    bool setupTranslator();
    /// The icon of that name from the theme's icon folders; loaded on first paint.
    QIcon loadIcon(const QString& name);
    /// The name under which loadIcon() handed out the icon, or an empty text.
    QString iconName(const QIcon& icon);

    // --- names and flags the host keeps here ---
    QString getUiName() const { return m_uiName; }
    void setUiName(const QString& name) { m_uiName = name; }
    QString category() const { return m_category; }
    void setCategory(const QString& category) { m_category = category; }
    QString getLinkUrl() const { return m_linkUrl; }
    void setLinkUrl(const QString& url) { m_linkUrl = url; }
    QString productName() const { return m_productName; }
    void setProductName(const QString& name) { m_productName = name; }
    QString productVersion() const { return QCoreApplication::applicationVersion(); }
    void setProductVersion(const QString& v) { QCoreApplication::setApplicationVersion(v); }
    bool usingDelphi() const { return m_usingDelphi; }
    void usingDelphi(bool b) { m_usingDelphi = b; }

    /// Opens the pending tip hyperlink, when there is one; the link is not cleared.
    void openUrl();

    // --- language ---
    /// A Windows-style locale identifier; the base answers -1 and hosts override it.
    virtual int currentLanguage();
    /// "zh_TW", "en_US", "jp_JP", "vi", "zh_CN" or "Unknow_Language".
    QString currentLanguageName();

    /// Called by KCommand::trigger() before triggered() is emitted; empty here.
    virtual void onCommandTrigger(const QString& note);

    // --- the main-window stack (index 0 is the current window) ---
    void bringFrontMainWindow(QWidget* w);
    void sentBackMainWindow(QWidget* w);
    void removeMainWindow(QWidget* w);
    void addFreeMainWindow(QWidget* w);
    void removeFreeMainWindow(QWidget* w);
    void keepMainWindowStackTopVaild();
    QWidget* currentMainWindow();
    /// The live windows of the stack, from the top; an entry that is no KMainWindow is null.
    void getMainWindows(QList<KMainWindow*>& windows);
    virtual void cleanUpMainWindow();
    /// The main window obj stands in, walking up its parents; null when there is none.
    virtual KMainWindow* findRelativeMainWindow(QObject* obj);

    /// Hides (false) or shows again (true) the modeless dialogs of the current main window
    /// around the modal widget.
    void setOtherModalessDlgVisible(bool visible, QWidget* modalWidget);

    virtual void focusInCurrentView();

    /**
     * Re-tints the interface: the theme's base colour (saved in the settings when save is
     * true), the palette's Window colour, a KThemeChangeEvent to each registered widget, and
     * an update of the current main window.
     */
    void setThemeBaseColor(const QColor& color, bool save);
    /// Registers a widget that keeps colours of its own; it receives the theme-change event.
    void addThemeChangeWidget(QWidget* w);

    bool notify(QObject* receiver, QEvent* e) override;

    /// Event types of the modal notifications that notify() reacts to.
    enum { ModalEnteredEvent = 250, ModalLeftEvent = 251 };

Q_SIGNALS:
    void xmlSetuped(const KDomDocument& doc);
    void xmlReseted();
    void lastMainWindowClosed();

protected:
    bool event(QEvent* e) override;
    virtual bool onSetupMainXml(const KDomDocument& doc);
    virtual bool onXmlSetuped(const KDomDocument& doc);
    /// Called once by the constructor; empty.
    virtual void verifyQtLibrary();

private:
    void _removeFromFreeOrStack(QList<QPointer<QWidget>>& list, QWidget* w);

    QList<KDomDocument> m_doms;
    KAppTheme* m_theme = nullptr;
    KTips* m_tips = nullptr;
    KCommands* m_commands = nullptr;
    KAppLibraries* m_libraries = nullptr;
    KAppTranslators m_translators;
    KAppAttributeParser* m_attrParser = nullptr;
    KAppIdleSvr* m_idleSvr = nullptr;                 // owned through the parent relation
    KProcessUpdateSvr* m_processUpdateSvr = nullptr;  // owned
    QString m_uiName;
    QString m_category;
    QString m_linkUrl;
    QString m_productName;
    bool m_usingDelphi = false;
    QList<QPointer<QWidget>> m_mainWindows;
    QList<QPointer<QWidget>> m_freeMainWindows;
    QList<QPointer<QWidget>> m_themeChangeWidgets;
    QStringList m_importChain;
};

/**
 * The modal notification that KApplication::notify() looks for: type 250 when a modal window
 * starts, 251 when it ends, each carrying the modal widget. The framework raises them itself
 * from an application event filter.
 */
class NORVIKOFFICEUI_EXPORT KModalEvent : public QEvent
{
public:
    KModalEvent(int type, QWidget* widget)
        : QEvent(static_cast<QEvent::Type>(type)), m_widget(widget) {}
    QWidget* widget() const { return m_widget; }

private:
    QPointer<QWidget> m_widget;
};

/// Loads every *.ttc and *.ttf of the "fonts" folder beside the program.
NORVIKOFFICEUI_EXPORT void loadPrivateFonts();

#endif // KAPPLICATION_H
