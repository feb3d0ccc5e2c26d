#include "kapptheme.h"

#include <QApplication>
#include <QCoreApplication>
#include <QDebug>
#include <QDir>
#include <QFileInfo>
#include <QLinearGradient>

#include <kapplication.h>
#include <kappresourceloader.h>
#include <kdomdocument.h>
#include <kdrawhelpfunc.h>
#include <korbstyle.h>
#include <korbstyle_2012.h>
#include <korbstyle_2013.h>
#include <ksettings.h>

#include <algorithm>

namespace {

// Theme imports may nest; the bound keeps a cyclic set of files from recursing forever.
constexpr int kMaxThemeImportDepth = 32;

int clampByte(int v)
{
    return std::clamp(v, 0, 255);
}

/// "#rrggbb" or "#rrggbbaa" (or a short colour name): the first seven characters name the
/// colour, a nine-character text carries the alpha in its last two.
QColor parseColorValue(const QString& value)
{
    QColor color = QColor::fromString(value.left(7));
    if (value.size() == 9) {
        bool ok = false;
        const int alpha = value.right(2).toInt(&ok, 16);
        if (ok)
            color.setAlpha(alpha);
    } else if (color.isValid()) {
        color.setAlpha(255);
    }
    return color;
}

QPointF parsePoint(const QString& text)
{
    const int comma = text.indexOf(QLatin1Char(','));
    if (comma < 0)
        return QPointF(text.toDouble(), 0.0);
    return QPointF(text.left(comma).toDouble(), text.mid(comma + 1).toDouble());
}

int transOf(const QString& text)
{
    return text.isEmpty() ? 255 : text.toInt();
}

} // namespace

// --- KColorItem ---

KColorItem::KColorItem() = default;

KColorItem::KColorItem(const QColor& color)
    : m_kind(Fixed), m_color(color)
{
}

KColorItem::KColorItem(const KColorSV& sv)
    : m_kind(Relative), m_sv(sv)
{
}

QColor KColorItem::relativeColor(const QColor& baseColor, int ds, int dv, int trans)
{
    if (!baseColor.isValid())
        return QColor();
    int h = 0, s = 0, v = 0;
    baseColor.getHsv(&h, &s, &v);
    // Handed out as RGB, like every fixed colour of a theme.
    return QColor::fromHsv(h, clampByte(s + ds), clampByte(v + dv), clampByte(trans)).toRgb();
}

QColor KColorItem::color(const QColor& baseColor)
{
    // Lookups run in every paint event: a relative colour is computed once per base colour.
    if (m_kind == Relative && baseColor != m_cachedBase) {
        m_color = relativeColor(baseColor, m_sv.ds, m_sv.dv, m_sv.trans);
        m_cachedBase = baseColor;
    }
    return m_color;
}

// --- KGradientItem ---

KGradientItem::KGradientItem()
    : m_gradient(new QLinearGradient)
{
}

KGradientItem::KGradientItem(QGradient* gradient, const QList<KGradientSV>& svStops,
                             const QList<KGradientColor>& colorStops)
    : m_gradient(gradient ? gradient : new QLinearGradient),
      m_svStops(svStops),
      m_colorStops(colorStops)
{
}

KGradientItem::~KGradientItem()
{
    delete m_gradient;
}

const QGradient& KGradientItem::gradient(const QColor& baseColor)
{
    if (m_computed && baseColor == m_cachedBase)
        return *m_gradient;
    QGradientStops stops;
    auto put = [&stops](double position, const QColor& color) {
        // Same rule as QGradient::setColorAt: a later stop on a position replaces it.
        for (QGradientStop& stop : stops) {
            if (qFuzzyCompare(stop.first + 1.0, position + 1.0)) {
                stop.second = color;
                return;
            }
        }
        stops.append(qMakePair(position, color));
    };
    // Relative stops first, so that a fixed stop on the same position wins. Without a base
    // colour relative stops have no colour and are left out.
    if (baseColor.isValid()) {
        for (const KGradientSV& sv : std::as_const(m_svStops))
            put(sv.position, KColorItem::relativeColor(baseColor, sv.ds, sv.dv, sv.trans));
    }
    for (const KGradientColor& c : std::as_const(m_colorStops))
        put(c.position, c.color);
    std::stable_sort(stops.begin(), stops.end(),
                     [](const QGradientStop& a, const QGradientStop& b) { return a.first < b.first; });
    m_gradient->setStops(stops);
    m_cachedBase = baseColor;
    m_computed = true;
    return *m_gradient;
}

// --- KImageItem ---

KImageItem::KImageItem(const QString& path)
    : href(QDir::cleanPath(QDir(QCoreApplication::applicationDirPath()).absoluteFilePath(path)))
{
    image.load(href);
}

// --- KThemeChangeEvent ---

KThemeChangeEvent::KThemeChangeEvent()
    : KEvent(KEvent::ThemeChange)
{
}

KThemeChangeEvent::~KThemeChangeEvent() = default;

// --- KShellThemeStyle ---

KAppTheme::KShellThemeStyle::KShellThemeStyle(const KDomElement& element)
{
    for (KDomElement e = element.firstChildElement(); !e.isNull(); e = e.nextSiblingElement()) {
        const QString tag = e.tagName();
        if (tag == QLatin1String("font")) {
            _readFont(e);
        } else if (tag == QLatin1String("color")) {
            _readColor(e);
        } else if (tag == QLatin1String("linearGradient") || tag == QLatin1String("conicalGradient")
                   || tag == QLatin1String("radialGradient")) {
            _readGradient(e);
        } else if (tag == QLatin1String("image")) {
            m_images.insert(e.attribute(QStringLiteral("name")),
                            KImageItem(e.attribute(QStringLiteral("href"))));
        }
        // any other tag is not part of a class and is skipped
    }
}

KAppTheme::KShellThemeStyle::~KShellThemeStyle()
{
    qDeleteAll(m_gradients);
}

void KAppTheme::KShellThemeStyle::_readFont(const KDomElement& e)
{
    QFont font(e.attribute(QStringLiteral("family")), -1, -1, false);
    const QString size = e.attribute(QStringLiteral("size"));
    if (!size.isEmpty())
        font.setPointSizeF(size.toDouble());
    const QString bold = e.attribute(QStringLiteral("bold"));
    if (!bold.isEmpty())
        font.setBold(bold == QLatin1String("true"));
    const QString italic = e.attribute(QStringLiteral("italic"));
    if (!italic.isEmpty())
        font.setItalic(italic == QLatin1String("true"));
    m_fonts.insert(e.attribute(QStringLiteral("name")), font);
}

void KAppTheme::KShellThemeStyle::_readColor(const KDomElement& e)
{
    const QString ds = e.attribute(QStringLiteral("ds"));
    const QString dv = e.attribute(QStringLiteral("dv"));
    const QString name = e.attribute(QStringLiteral("name"));
    if (!ds.isEmpty() && !dv.isEmpty()) {
        KColorSV sv;
        sv.ds = ds.toInt();
        sv.dv = dv.toInt();
        sv.trans = transOf(e.attribute(QStringLiteral("trans")));
        m_colors.insert(name, KColorItem(sv));
    } else {
        m_colors.insert(name, KColorItem(parseColorValue(e.attribute(QStringLiteral("value")))));
    }
}

void KAppTheme::KShellThemeStyle::_readGradient(const KDomElement& e)
{
    const QString tag = e.tagName();
    QGradient* gradient = nullptr;
    if (tag == QLatin1String("linearGradient")) {
        gradient = new QLinearGradient(parsePoint(e.attribute(QStringLiteral("start"))),
                                       parsePoint(e.attribute(QStringLiteral("end"))));
    } else if (tag == QLatin1String("conicalGradient")) {
        gradient = new QConicalGradient(parsePoint(e.attribute(QStringLiteral("center"))),
                                        e.attribute(QStringLiteral("arg")).toDouble());
    } else {
        const QPointF center = parsePoint(e.attribute(QStringLiteral("center")));
        const QString focal = e.attribute(QStringLiteral("focal"));
        gradient = new QRadialGradient(center, e.attribute(QStringLiteral("radius")).toDouble(),
                                       focal.isEmpty() ? center : parsePoint(focal));
    }
    // Coordinates are fractions of the painted rectangle: "0,0" to "0,1" runs top to bottom.
    gradient->setCoordinateMode(QGradient::ObjectBoundingMode);
    const QString spread = e.attribute(QStringLiteral("spread"));
    if (spread == QLatin1String("pad"))
        gradient->setSpread(QGradient::PadSpread);
    else if (spread == QLatin1String("repeat"))
        gradient->setSpread(QGradient::RepeatSpread);
    else if (spread == QLatin1String("reflect"))
        gradient->setSpread(QGradient::ReflectSpread);

    QList<KGradientSV> svStops;
    QList<KGradientColor> colorStops;
    for (KDomElement stop = e.firstChildElement(QStringLiteral("color")); !stop.isNull();
         stop = stop.nextSiblingElement(QStringLiteral("color"))) {
        // Unlike a class colour, a stop with ds and dv both 0 is a fixed colour.
        const int ds = stop.attribute(QStringLiteral("ds")).toInt();
        const int dv = stop.attribute(QStringLiteral("dv")).toInt();
        const double position = stop.attribute(QStringLiteral("position")).toDouble();
        if (ds != 0 || dv != 0) {
            KGradientSV sv;
            sv.ds = ds;
            sv.dv = dv;
            sv.trans = transOf(stop.attribute(QStringLiteral("trans")));
            sv.position = position;
            svStops.append(sv);
        } else {
            KGradientColor c;
            c.position = position;
            c.color = parseColorValue(stop.attribute(QStringLiteral("value")));
            colorStops.append(c);
        }
    }
    const QString name = e.attribute(QStringLiteral("name"));
    delete m_gradients.take(name);
    m_gradients.insert(name, new KGradientItem(gradient, svStops, colorStops));
}

QColor KAppTheme::KShellThemeStyle::getColor(const QString& name, const QColor& baseColor,
                                             const QColor& defaultValue)
{
    for (KShellThemeStyle* s = this; s; s = s->m_baseStyle) {
        auto it = s->m_colors.find(name);
        if (it != s->m_colors.end())
            return it.value().color(baseColor);
    }
    return defaultValue;
}

QFont KAppTheme::KShellThemeStyle::getFont(const QString& name, const QFont& defaultValue)
{
    for (KShellThemeStyle* s = this; s; s = s->m_baseStyle) {
        auto it = s->m_fonts.constFind(name);
        if (it != s->m_fonts.constEnd())
            return it.value();
    }
    return defaultValue;
}

const QGradient& KAppTheme::KShellThemeStyle::getGradient(const QString& name, const QColor& baseColor,
                                                          const QGradient& defaultValue)
{
    for (KShellThemeStyle* s = this; s; s = s->m_baseStyle) {
        auto it = s->m_gradients.constFind(name);
        if (it != s->m_gradients.constEnd())
            return it.value()->gradient(baseColor);
    }
    return defaultValue;
}

QImage KAppTheme::KShellThemeStyle::getImage(const QString& name, const QImage& defaultValue)
{
    for (KShellThemeStyle* s = this; s; s = s->m_baseStyle) {
        auto it = s->m_images.constFind(name);
        if (it != s->m_images.constEnd())
            return it.value().image;
    }
    return defaultValue;
}

QString KAppTheme::KShellThemeStyle::getImageHref(const QString& name, const QString& defaultValue)
{
    for (KShellThemeStyle* s = this; s; s = s->m_baseStyle) {
        auto it = s->m_images.constFind(name);
        if (it != s->m_images.constEnd())
            return it.value().href;
    }
    return defaultValue;
}

// --- KAppTheme ---

KAppTheme::KAppTheme(QObject* parent)
    : QObject(parent), m_resLoader(new KAppResourceLoader)
{
}

KAppTheme::~KAppTheme()
{
    qDeleteAll(m_allStyles);
    delete m_resLoader;
}

const QGradient& KAppTheme::defaultGradient()
{
    static const QLinearGradient s_default;
    return s_default;
}

bool KAppTheme::_loadThemeFile(const KDomElement& element, const QString& baseDir, KDomDocument& out)
{
    const QString path = element.attribute(QStringLiteral("path"));
    if (path.isEmpty()) {
        qWarning().noquote() << "theme at " << element.lineNumber() << ": "
                             << " need path attribute.";
        return false;
    }
    const QString file = QDir::cleanPath(QDir(baseDir).absoluteFilePath(path));
    if (!QFileInfo(file).isFile()) {
        qWarning().noquote() << "KAppTheme: XML: file not exist:" << file;
        return false;
    }
    return out.setContent(file);
}

bool KAppTheme::setupMainXml(const KDomDocument& mainDocument)
{
    const KDomElement theme = mainDocument.documentElement().firstChildElement(QStringLiteral("theme"));
    if (theme.isNull())
        return false;
    KDomDocument themeDocument;
    if (!_loadThemeFile(theme, QFileInfo(mainDocument.filePath()).absolutePath(), themeDocument))
        return false;
    if (!_setupStyle(themeDocument))
        return false;
    return setupXml(themeDocument);
}

bool KAppTheme::_setupStyle(const KDomDocument& doc)
{
    const KDomElement style = doc.documentElement().firstChildElement(QStringLiteral("style"));
    if (style.isNull()) {
        qWarning().noquote() << "KAppthem: must specify a style of theme.";
        return false;
    }
    const QString name = style.attribute(QStringLiteral("name"));
    if (name.isEmpty()) {
        qWarning().noquote() << "KAppthem: style missing name attribute at: " << style.lineNumber();
        return false;
    }
    if (!qobject_cast<QApplication*>(QCoreApplication::instance()))
        return true; // no widgets, no style to install
    QStyle* wrapped = QApplication::style();
    // A second set-up wraps the plain style again instead of stacking one frame on another.
    if (auto* current = qobject_cast<KORBStyle*>(wrapped))
        wrapped = current->baseStyle();
    KORBStyle* newStyle = nullptr;
    if (name == QLatin1String("rainbow") || name == QLatin1String("classics")) {
        newStyle = new KORBStyle_2012(wrapped);
    } else if (name == QLatin1String("2013")) {
        newStyle = new KORBStyle_2013(wrapped);
    } else {
        qWarning().noquote() << "KAppthem: unknown style name.";
        newStyle = new KORBStyle(wrapped);
    }
    QApplication::setStyle(newStyle);
    return true;
}

bool KAppTheme::setupXml(const KDomDocument& themeDocument)
{
    const KDomElement root = themeDocument.documentElement();
    const QString baseDir = QFileInfo(themeDocument.filePath()).absolutePath();
    m_importChain.append(QFileInfo(themeDocument.filePath()).absoluteFilePath());

    // Imported files first: the importer's classes may name theirs as "base".
    for (KDomElement imp = root.firstChildElement(QStringLiteral("import")); !imp.isNull();
         imp = imp.nextSiblingElement(QStringLiteral("import"))) {
        KDomDocument imported;
        if (!_loadThemeFile(imp, baseDir, imported))
            continue;
        const QString importedPath = QFileInfo(imported.filePath()).absoluteFilePath();
        if (m_importChain.contains(importedPath) || m_importChain.size() > kMaxThemeImportDepth) {
            qWarning().noquote() << "KAppTheme: XML: import cycle, skipped:" << importedPath;
            continue;
        }
        setupXml(imported);
    }

    const KDomElement theme = root.firstChildElement(QStringLiteral("theme"));
    // Only the first class needs the tag "style"; every element behind it is a class,
    // whatever its tag.
    for (KDomElement e = theme.isNull() ? KDomElement() : theme.firstChildElement(QStringLiteral("style"));
         !e.isNull(); e = e.nextSiblingElement()) {
        const QString className = e.attribute(QStringLiteral("class"));
        const QString base = e.attribute(QStringLiteral("base"));
        auto* style = new KShellThemeStyle(e);
        m_allStyles.append(style);
        if (!base.isEmpty()) {
            if (KShellThemeStyle* baseStyle = m_styles.value(base, nullptr))
                style->setBaseStyle(baseStyle);
        }
        m_styles.insert(className, style);
    }

    m_importChain.removeLast();
    return m_resLoader->setupXml(themeDocument);
}

void KAppTheme::resetXml()
{
    m_styles.clear();
    qDeleteAll(m_allStyles);
    m_allStyles.clear();
    m_resLoader->resetXml();
}

QColor KAppTheme::getColor(const QString& className, const QString& name, const QColor& defaultValue)
{
    KShellThemeStyle* style = m_styles.value(className, nullptr);
    return style ? style->getColor(name, m_baseColor, defaultValue) : defaultValue;
}

QFont KAppTheme::getFont(const QString& className, const QString& name, const QFont& defaultValue)
{
    KShellThemeStyle* style = m_styles.value(className, nullptr);
    return style ? style->getFont(name, defaultValue) : defaultValue;
}

const QGradient& KAppTheme::getGradient(const QString& className, const QString& name,
                                        const QGradient& defaultValue)
{
    KShellThemeStyle* style = m_styles.value(className, nullptr);
    return style ? style->getGradient(name, m_baseColor, defaultValue) : defaultValue;
}

QImage KAppTheme::getImage(const QString& className, const QString& name, const QImage& defaultValue)
{
    KShellThemeStyle* style = m_styles.value(className, nullptr);
    return style ? style->getImage(name, defaultValue) : defaultValue;
}

QString KAppTheme::getImageHref(const QString& className, const QString& name,
                                const QString& defaultValue)
{
    KShellThemeStyle* style = m_styles.value(className, nullptr);
    return style ? style->getImageHref(name, defaultValue) : defaultValue;
}

namespace {
void enterBaseColorGroups(QSettings& settings)
{
    KApplication* app = KApplication::instance();
    settings.beginGroup(app ? app->productVersion() : QCoreApplication::applicationVersion());
    settings.beginGroup(QCoreApplication::applicationName());
    settings.beginGroup(app ? app->getUiName() : QString());
}
} // namespace

void KAppTheme::setBaseColor(const QColor& color, bool save)
{
    m_baseColor = color;
    if (!save)
        return;
    KSettings settings;
    enterBaseColorGroups(settings);
    settings.setValue(QStringLiteral("Theme"), color.name());
}

void KAppTheme::readBaseColor()
{
    QString text;
    {
        KSettings settings;
        enterBaseColorGroups(settings);
        text = settings.value(QStringLiteral("Theme")).toString();
    }
    if (text.size() == 7 && text.startsWith(QLatin1Char('#'))) {
        const QColor color = QColor::fromString(text);
        if (color.isValid()) {
            setBaseColor(color, false);
            return;
        }
    }
    setBaseColor(KDrawHelpFunc::getColorFromTheme(QStringLiteral("theme"), QStringLiteral("theme1")), false);
}
