#ifndef KAPPTHEME_H
#define KAPPTHEME_H

#include <QColor>
#include <QFont>
#include <QGradient>
#include <QImage>
#include <QList>
#include <QMap>
#include <QObject>
#include <QString>
#include <QStringList>

#include <kevent.h>
#include <norvikofficeui_export.h>

class KAppResourceLoader;
class KDomDocument;
class KDomElement;

/// Deltas of a colour relative to the base colour: saturation, value, and the result's alpha.
struct KColorSV
{
    int ds = 0;
    int dv = 0;
    int trans = 255;
};

/**
 * One named colour of a theme class: fixed, or relative to the application's base colour.
 * A relative colour is computed once per base colour and cached.
 */
class NORVIKOFFICEUI_EXPORT KColorItem
{
public:
    enum Kind { Fixed = 0, Relative = 1 };

    KColorItem();
    KColorItem(const QColor& color);
    KColorItem(const KColorSV& sv);

    /// The colour for that base colour; an invalid base gives an invalid relative colour.
    QColor color(const QColor& baseColor);
    int kind() const { return m_kind; }

    /**
     * The relative rule: the base's hue, its saturation and value moved by ds and dv (each
     * clamped to 0..255), and trans as alpha. Invalid for an invalid base.
     */
    static QColor relativeColor(const QColor& baseColor, int ds, int dv, int trans);

private:
    int m_kind = Fixed;
    QColor m_color;
    KColorSV m_sv;
    QColor m_cachedBase;
};

/// A gradient stop relative to the base colour.
struct KGradientSV
{
    int ds = 0;
    int dv = 0;
    int trans = 255;
    double position = 0.0;
};

/// A fixed gradient stop.
struct KGradientColor
{
    double position = 0.0;
    QColor color;
};

/**
 * One named gradient. Its stops are rewritten in place when the base colour changes, so
 * the reference handed out stays the same object; a QBrush made from it takes its own copy.
 */
class NORVIKOFFICEUI_EXPORT KGradientItem
{
public:
    KGradientItem();
    /// Takes ownership of gradient.
    KGradientItem(QGradient* gradient, const QList<KGradientSV>& svStops,
                  const QList<KGradientColor>& colorStops);
    ~KGradientItem();
    KGradientItem(const KGradientItem&) = delete;
    KGradientItem& operator=(const KGradientItem&) = delete;

    const QGradient& gradient(const QColor& baseColor);

private:
    QColor m_cachedBase;
    bool m_computed = false;
    QGradient* m_gradient = nullptr;
    QList<KGradientSV> m_svStops;
    QList<KGradientColor> m_colorStops;
};

/// A named image, loaded once when the theme is read; a file that fails gives a null image.
class NORVIKOFFICEUI_EXPORT KImageItem
{
public:
    KImageItem() = default;
    /// href counts from the program's directory when relative.
    explicit KImageItem(const QString& href);

    QImage image;
    QString href;
};

/// Sent synchronously to the widgets registered with KApplication::addThemeChangeWidget when
/// the base colour changes. Type KEvent::ThemeChange (0x800A).
class NORVIKOFFICEUI_EXPORT KThemeChangeEvent : public KEvent
{
public:
    KThemeChangeEvent();
    ~KThemeChangeEvent() override;
};

/**
 * The theme model: for each theme class, named fonts, colours, gradients and images, read
 * from the theme file that the main description names. Drawing code asks by class and item
 * name and gets the item, or the default it passed in; a class falls back on the class named
 * by its "base". Setting up the main description also installs the style that the theme
 * file names. Owned by the application; it owns the icon loader.
 */
class NORVIKOFFICEUI_EXPORT KAppTheme : public QObject
{
    Q_OBJECT
public:
    /// One theme class: its items and the class it falls back on. Not a QObject.
    class NORVIKOFFICEUI_EXPORT KShellThemeStyle
    {
    public:
        explicit KShellThemeStyle(const KDomElement& element);
        ~KShellThemeStyle();
        KShellThemeStyle(const KShellThemeStyle&) = delete;
        KShellThemeStyle& operator=(const KShellThemeStyle&) = delete;

        void setBaseStyle(KShellThemeStyle* base) { m_baseStyle = base; }
        KShellThemeStyle* baseStyle() const { return m_baseStyle; }

        QColor getColor(const QString& name, const QColor& baseColor, const QColor& defaultValue);
        QFont getFont(const QString& name, const QFont& defaultValue);
        const QGradient& getGradient(const QString& name, const QColor& baseColor,
                                     const QGradient& defaultValue);
        QImage getImage(const QString& name, const QImage& defaultValue);
        QString getImageHref(const QString& name, const QString& defaultValue);

    private:
        void _readFont(const KDomElement& e);
        void _readColor(const KDomElement& e);
        void _readGradient(const KDomElement& e);

        QMap<QString, QFont> m_fonts;
        QMap<QString, KColorItem> m_colors;
        QMap<QString, KGradientItem*> m_gradients;
        QMap<QString, KImageItem> m_images;
        KShellThemeStyle* m_baseStyle = nullptr;
    };

    explicit KAppTheme(QObject* parent);
    ~KAppTheme() override;

    /**
     * Reads the "theme" element of the main description: loads the file its "path" names
     * (relative to the description), installs the style that the file's "style" names, and
     * reads its classes and icon folders. False when any of that is missing.
     */
    bool setupMainXml(const KDomDocument& mainDocument);
    /// Reads the imports, the classes and the icon folders of a theme file. A failed import
    /// is only a warning; the result is the icon loader's (always true).
    bool setupXml(const KDomDocument& themeDocument);
    /// Deletes every class and forgets the icon folders. The base colour and style stay.
    void resetXml();

    KAppResourceLoader* resLoader() const { return m_resLoader; }

    QColor getColor(const QString& className, const QString& name, const QColor& defaultValue);
    QFont getFont(const QString& className, const QString& name, const QFont& defaultValue);
    /// The gradient, or defaultValue itself on a miss.
    const QGradient& getGradient(const QString& className, const QString& name,
                                 const QGradient& defaultValue);
    QImage getImage(const QString& className, const QString& name, const QImage& defaultValue);
    QString getImageHref(const QString& className, const QString& name,
                         const QString& defaultValue);

    QColor getBaseColor() const { return m_baseColor; }
    /// Sets the base colour; with save true it is written to the settings under
    /// productVersion / applicationName / uiName, key "Theme".
    void setBaseColor(const QColor& color, bool save);
    /// Reads the saved base colour, or falls back to "theme"/"theme1" of the theme.
    void readBaseColor();

    /// Whether a class of that name is loaded.
    bool hasClass(const QString& className) const { return m_styles.contains(className); }
    QStringList classNames() const { return m_styles.keys(); }

    static const QGradient& defaultGradient();

private:
    bool _setupStyle(const KDomDocument& doc);
    bool _loadThemeFile(const KDomElement& element, const QString& baseDir, KDomDocument& out);

    QMap<QString, KShellThemeStyle*> m_styles;
    QColor m_baseColor;
    KAppResourceLoader* m_resLoader = nullptr;
    // Every class ever read since the last reset: a replaced class lives on as the base of
    // the classes that were linked to it.
    QList<KShellThemeStyle*> m_allStyles;
    QStringList m_importChain;
};

#endif // KAPPTHEME_H
