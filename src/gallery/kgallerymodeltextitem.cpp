#include "kgallerymodeltextitem.h"

#include <QApplication>
#include <QFontDatabase>
#include <QFontMetrics>
#include <QPainter>
#include <QPainterPath>

#include <kdrawhelpfunc.h>

namespace {

constexpr QMargins kMargins(5, 5, 5, 5);
constexpr QMargins kIconMargins(5, 5, 5, 1);
constexpr int kFontIconStrip = 22;
constexpr int kTitleTextIndent = 9;
constexpr int kStateRadius = 2;

const char* const kCompleteProperty = "KGALLERY_COMBOX_COMPLETE";

} // namespace

// --- KGalleryModelTextItem ---

KGalleryModelTextItem::KGalleryModelTextItem(const QString& text, KGalleryAbstractModel* model)
    : KGalleryModelAbstractItem(text, QIcon(), model, false)
{
}

KGalleryModelTextItem::~KGalleryModelTextItem() = default;

bool KGalleryModelTextItem::isExpanding(KGalleryViewType) const
{
    return false;
}

QSize KGalleryModelTextItem::sizeHint() const
{
    const QFontMetrics fm(QApplication::font());
    return fm.boundingRect(text()).size().grownBy(kMargins);
}

void KGalleryModelTextItem::drawItem(QPainter&, const QRect&, KGalleryViewType) const
{
}

// --- KGalleryModelTitleItem ---

KGalleryModelTitleItem::KGalleryModelTitleItem(const QString& text, KGalleryAbstractModel* model)
    : KGalleryModelTextItem(text, model)
{
    // A title is no choice: a gallery combo box leaves it out of its completer.
    setProperty(kCompleteProperty, true);
}

KGalleryModelTitleItem::~KGalleryModelTitleItem() = default;

bool KGalleryModelTitleItem::isExpanding(KGalleryViewType) const
{
    return true;
}

bool KGalleryModelTitleItem::isCheckeable() const
{
    return false;
}

bool KGalleryModelTitleItem::isTriggerable() const
{
    return false;
}

bool KGalleryModelTitleItem::isVisible(KGalleryViewType viewType) const
{
    if (viewType == KGalleryViewCompact)
        return false;
    return KGalleryModelTextItem::isVisible(viewType);
}

void KGalleryModelTitleItem::drawItem(QPainter& painter, const QRect& rect, KGalleryViewType) const
{
    painter.save();
    painter.setRenderHint(QPainter::Antialiasing);
    painter.setPen(Qt::NoPen);
    painter.setBrush(KDrawHelpFunc::getColorFromTheme(QStringLiteral("KGalleryModelTitleItem"),
                                                      QStringLiteral("background")));
    QPainterPath path;
    path.addRoundedRect(QRectF(rect.adjusted(0, 0, -1, -1)), kStateRadius, kStateRadius);
    painter.drawPath(path);
    painter.setFont(QApplication::font());
    KDrawHelpFunc::drawColorText(painter, Qt::black, rect.adjusted(kTitleTextIndent, 0, 0, 0),
                                 Qt::AlignLeft | Qt::AlignVCenter, text());
    painter.restore();
}

// --- KGalleryModelTextIconItem ---

KGalleryModelTextIconItem::KGalleryModelTextIconItem(const QString& text, KGalleryAbstractModel* model)
    : KGalleryModelTextIconItem(text, QPixmap(), IconLeft, model)
{
}

KGalleryModelTextIconItem::KGalleryModelTextIconItem(const QString& text, const QPixmap& pixmap, int mode,
                                                     KGalleryAbstractModel* model)
    : KGalleryModelAbstractItem(text, QIcon(), model, false)
    , m_itemText(text)
    , m_pixmap(pixmap)
    , m_mode(qBound(0, mode, 3))
{
}

KGalleryModelTextIconItem::KGalleryModelTextIconItem(const QPixmap& pixmap, KGalleryAbstractModel* model)
    : KGalleryModelTextIconItem(QString(), pixmap, IconLeft, model)
{
}

KGalleryModelTextIconItem::~KGalleryModelTextIconItem() = default;

void KGalleryModelTextIconItem::setPixmap(const QPixmap& pixmap)
{
    m_pixmap = pixmap;
    Q_EMIT changed();
}

bool KGalleryModelTextIconItem::isExpanding(KGalleryViewType) const
{
    return false;
}

QSize KGalleryModelTextIconItem::_textSize() const
{
    if (m_itemText.isEmpty())
        return QSize(-1, -1);
    return QFontMetrics(QApplication::font()).size(Qt::TextShowMnemonic, m_itemText);
}

QSize KGalleryModelTextIconItem::sizeHint() const
{
    const QSize t = _textSize();
    const QSize p = m_pixmap.isNull() ? QSize(-1, -1) : m_pixmap.deviceIndependentSize().toSize();
    const int mw = kMargins.left() + kMargins.right();
    const int mh = kMargins.top() + kMargins.bottom();
    if (m_mode == IconLeft || m_mode == IconRight)
        return QSize(t.width() + p.width() + mw + 10, qMax(t.height(), p.height()) + mh);
    return QSize(qMax(t.width(), p.width()) + mw, t.height() + p.height() + mh + 3);
}

void KGalleryModelTextIconItem::layoutRects(const QRect& rect, QRect& pixmapRect, QRect& textRect) const
{
    pixmapRect = QRect();
    textRect = QRect();
    if (m_pixmap.isNull())
        return;
    const QRect r = rect - kMargins;
    const QSize p = m_pixmap.deviceIndependentSize().toSize();
    const QSize t = _textSize().expandedTo(QSize(0, 0));
    switch (m_mode) {
    case IconLeft:
        pixmapRect = QRect(QPoint(r.left() + 1, r.top() + (r.height() - p.height()) / 2), p);
        textRect = QRect(QPoint(pixmapRect.right() + 9, r.top() + (r.height() - t.height()) / 2), t);
        break;
    case IconRight: {
        textRect = QRect(QPoint(r.left(), r.top() + (r.height() - t.height()) / 2), t);
        const int restLeft = textRect.right() + 8;
        const int rest = r.right() - restLeft + 1;
        pixmapRect = QRect(QPoint(restLeft + (rest - p.width()) / 2, r.top() + (r.height() - p.height()) / 2), p);
        break;
    }
    case IconAbove:
        pixmapRect = QRect(QPoint(r.left() + (r.width() - p.width()) / 2, r.top() + 1), p);
        textRect = QRect(QPoint(r.left() + (r.width() - t.width()) / 2, pixmapRect.bottom() + 2), t);
        break;
    default: {
        textRect = QRect(QPoint(r.left() + (r.width() - t.width()) / 2, r.top()), t);
        const int restTop = textRect.bottom() + 1;
        const int rest = r.bottom() - restTop + 1;
        pixmapRect = QRect(QPoint(r.left() + (r.width() - p.width()) / 2, restTop + (rest - p.height()) / 2), p);
        break;
    }
    }
}

void KGalleryModelTextIconItem::drawItem(QPainter& painter, const QRect& rect, KGalleryViewType) const
{
    QRect pixmapRect;
    QRect textRect;
    layoutRects(rect, pixmapRect, textRect);
    if (isHovered())
        KDrawHelpFunc::drawFocusRect(painter, rect.adjusted(0, 0, -1, -1), kStateRadius);
    if (isChecked() && !pixmapRect.isNull())
        KDrawHelpFunc::drawCheckedRect(painter, pixmapRect.adjusted(-1, -1, 1, 1), 0);
    if (!pixmapRect.isNull())
        painter.drawPixmap(pixmapRect, m_pixmap);
    if (!m_itemText.isEmpty() && !textRect.isNull())
        KDrawHelpFunc::drawColorText(painter, Qt::black, textRect, Qt::TextShowMnemonic, m_itemText);
}

// --- KGalleryModelFontItem ---

KGalleryModelFontItem::KGalleryModelFontItem(const QString& fontName, KGalleryAbstractModel* model)
    : KGalleryModelAbstractItem(fontName, QIcon(), model, false)
{
}

KGalleryModelFontItem::~KGalleryModelFontItem() = default;

bool KGalleryModelFontItem::isExpanding(KGalleryViewType) const
{
    return true;
}

QSize KGalleryModelFontItem::sizeHint() const
{
    return QSize(450, 26);
}

QFont KGalleryModelFontItem::sampleFont() const
{
    QFont font = QApplication::font();
    font.setPixelSize(s_samplePixelSize);
    // Asked once per element: the font database is slow to answer for thousands of rows.
    if (m_symbolFamily < 0)
        m_symbolFamily = QFontDatabase::writingSystems(text()).contains(QFontDatabase::Symbol) ? 1 : 0;
    // A symbol font would show its own name as unreadable signs.
    if (m_symbolFamily == 0)
        font.setFamily(text());
    return font;
}

void KGalleryModelFontItem::drawItem(QPainter& painter, const QRect& rect, KGalleryViewType) const
{
    drawBackGround(painter, rect);
    const QRect strip(rect.left(), rect.top(), kFontIconStrip, rect.height());
    if (!icon().isNull())
        icon().paint(&painter, strip - kIconMargins, Qt::AlignCenter, isEnabled() ? QIcon::Normal : QIcon::Disabled);
    painter.save();
    painter.setFont(sampleFont());
    const QRect textRect = rect.adjusted(kFontIconStrip, 0, 0, 0) - QMargins(2, 0, 5, 0);
    KDrawHelpFunc::drawColorText(painter, isEnabled() ? QColor(Qt::black) : QColor(Qt::gray), textRect,
                                 Qt::AlignLeft | Qt::AlignVCenter, text());
    painter.restore();
}

// --- KxSeparatorItem ---

KxSeparatorItem::KxSeparatorItem(KGalleryAbstractModel* model)
    : KGalleryModelAbstractItem(model)
{
}

KxSeparatorItem::~KxSeparatorItem() = default;

bool KxSeparatorItem::isCheckeable() const
{
    return false;
}

bool KxSeparatorItem::isTriggerable() const
{
    return false;
}

QSize KxSeparatorItem::sizeHint() const
{
    return QSize(0, 5);
}

void KxSeparatorItem::drawItem(QPainter& painter, const QRect& rect, KGalleryViewType) const
{
    // A horizontal line across the row, in the colour of the framework's other separators.
    painter.save();
    painter.setPen(KDrawHelpFunc::getColorFromTheme(QStringLiteral("common"), QStringLiteral("border")));
    const int y = rect.top() + rect.height() / 2;
    painter.drawLine(rect.left() + 2, y, rect.right() - 2, y);
    painter.restore();
}
