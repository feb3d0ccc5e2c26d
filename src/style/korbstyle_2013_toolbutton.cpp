// The framework's tool button in the 2013 look: measured and painted by a KOrbStyleKToolButton
// made on the stack for each call.
#include "korbstyle_2013.h"

#include <QCursor>
#include <QPainter>
#include <QWidget>

#include <kdrawhelpfunc.h>

namespace {

const QString s_buttonClass = QStringLiteral("KToolButton");

// What the caption's lines take on screen: "&&" counts as one character, since every line is
// drawn with the mnemonic rules.
int lineWidth(const QFontMetrics& metrics, const QString& line)
{
    return line.isEmpty() ? 0 : metrics.size(Qt::TextShowMnemonic, line).width();
}

// Doubles each lone "&" so that the mnemonic rules draw it as it stands; a "&&" is already
// a literal ampersand and stays.
QString escapeMnemonics(const QString& text)
{
    QString out;
    out.reserve(text.size() + 2);
    for (int i = 0; i < text.size(); ++i) {
        out += text.at(i);
        if (text.at(i) != QLatin1Char('&'))
            continue;
        if (i + 1 < text.size() && text.at(i + 1) == QLatin1Char('&'))
            out += text.at(++i);
        else
            out += QLatin1Char('&');
    }
    return out;
}

QSize grown(const QSize& size, const QMargins& margins)
{
    return QSize(size.width() + margins.left() + margins.right(), size.height() + margins.top() + margins.bottom());
}

} // namespace

// --- setting up ---

void KOrbStyleKToolButton::initFromStyleOption(const KStyleOptionToolButton* option)
{
    m_option = option;
    if (!option)
        return;
    const bool hasIcon = !option->icon.isNull();
    const bool hasText = !option->text.isEmpty();
    const int flags = option->buttonStyle;
    // A part that is the button's only content always shows, whatever the flags say.
    m_drawIcon = hasIcon && (!hasText || (flags & KStyleOptionToolButton::StyleIcon));
    if (!hasText)
        m_drawText = false;
    else if (!hasIcon)
        m_drawText = true;
    else
        m_drawText = !option->autoHideText && (flags & KStyleOptionToolButton::StyleText);
    m_drawArrow = flags & KStyleOptionToolButton::StyleArrow;

    m_iconSize = QSize(0, 0);
    if (m_drawIcon)
        m_iconSize = option->iconSize.isEmpty() ? s_standardIconSize : option->iconSize;
    // The arrow first: under an icon it rides on the caption's last line.
    m_arrowSize = m_drawArrow ? grown(s_arrowSize, s_arrowMargins) : QSize(0, 0);
    m_textSize = m_drawText ? _getTextDrawSize(Qt::Horizontal) : QSize(0, 0);
}

// --- states ---

bool KOrbStyleKToolButton::isDown() const
{
    return m_option && ((m_option->state & QStyle::State_Sunken) || m_option->isDown);
}

bool KOrbStyleKToolButton::isPressed() const
{
    return m_option && (m_option->state & QStyle::State_Sunken) && !m_option->isDown;
}

bool KOrbStyleKToolButton::isHover() const
{
    return m_option && (m_option->state & QStyle::State_MouseOver);
}

bool KOrbStyleKToolButton::isChecked() const
{
    return m_option && (m_option->state & QStyle::State_On);
}

bool KOrbStyleKToolButton::isEnabled() const
{
    return m_option && (m_option->state & QStyle::State_Enabled);
}

bool KOrbStyleKToolButton::isAutoRaise() const
{
    return m_option && (m_option->state & QStyle::State_AutoRaise);
}

bool KOrbStyleKToolButton::isTextUnderIcon() const
{
    return m_option && (m_option->buttonStyle & KStyleOptionToolButton::StyleTextUnderIcon);
}

bool KOrbStyleKToolButton::needShowHotkey() const
{
    return m_option && (m_option->buttonStyle & KStyleOptionToolButton::StyleHotKey);
}

bool KOrbStyleKToolButton::_isSplit() const
{
    // A split button (a menu button whose main part triggers) says so by the menu feature and
    // the separator flag; a plain drop-down button acts as one piece.
    return m_drawArrow && (m_option->subControls & QStyle::SC_ToolButtonMenu)
        && (m_option->features & QStyleOptionToolButton::Menu) && m_option->drawSeparator;
}

bool KOrbStyleKToolButton::needDrawSperatorLine() const
{
    if (!m_option || !(m_option->features & QStyleOptionToolButton::Menu) || !m_option->drawSeparator
        || !isEnabled())
        return false;
    return isDown() || isHover() || isChecked();
}

// --- colours ---

QString KOrbStyleKToolButton::_getProp() const
{
    if (m_option->state & QStyle::State_Sunken)
        return QStringLiteral("down");
    if (m_option->state & QStyle::State_MouseOver)
        return QStringLiteral("hover");
    // Checked, or a button that is not auto-raised at rest: the pressed look.
    return QStringLiteral("down");
}

QBrush KOrbStyleKToolButton::bgBrush() const
{
    if (!m_option)
        return QBrush();
    if (m_option->bgBrush.style() != Qt::NoBrush)
        return m_option->bgBrush;
    const QString prop = _getProp();
    const QGradient& gradient = KDrawHelpFunc::getGradientFromTheme(s_buttonClass, QStringLiteral("background-") + prop);
    // Every gradient of a theme is object-bounding; the empty one handed out for a miss is not.
    if (gradient.coordinateMode() == QGradient::ObjectBoundingMode)
        return QBrush(gradient);
    QColor fill = m_option->palette.color(QPalette::Highlight);
    fill.setAlpha(prop == QLatin1String("down") ? 110 : 60);
    return fill;
}

QColor KOrbStyleKToolButton::borderColor() const
{
    if (!m_option)
        return QColor();
    if (m_option->borderColor.isValid())
        return m_option->borderColor;
    const QColor c = KDrawHelpFunc::getColorFromTheme(s_buttonClass, QStringLiteral("border-") + _getProp());
    return c.isValid() ? c : m_option->palette.color(QPalette::Highlight);
}

QColor KOrbStyleKToolButton::textColor() const
{
    if (!m_option)
        return QColor();
    if (!isEnabled())
        return QColor(Qt::gray);
    if (m_option->textColor.isValid())
        return m_option->textColor;
    const QColor c = KDrawHelpFunc::getColorFromTheme(QStringLiteral("common"), QStringLiteral("text"));
    return c.isValid() ? c : m_option->palette.color(QPalette::ButtonText);
}

// --- measuring ---

QStringList KOrbStyleKToolButton::getDrawText() const
{
    if (!m_option || m_option->text.isEmpty())
        return {};
    const bool hotkey = needShowHotkey();
    const auto shown = [hotkey](const QString& s) { return hotkey ? s : escapeMnemonics(s); };
    const QString text = shown(m_option->text);
    if (!isTextUnderIcon())
        return {text};
    if (!m_option->text2.isEmpty())
        return {text, shown(m_option->text2)};
    const int newline = text.indexOf(QLatin1Char('\n'));
    if (newline >= 0)
        return {text.left(newline), text.mid(newline + 1)};
    // Two words or more: the break that makes the wider line narrowest, the arrow counted on
    // the second line.
    const QFontMetrics& fm = m_option->fontMetrics;
    const int arrow = m_drawArrow ? grown(s_arrowSize, s_arrowMargins).width() : 0;
    int best = -1;
    int bestWidth = 0;
    for (int i = text.indexOf(QLatin1Char(' ')); i > 0; i = text.indexOf(QLatin1Char(' '), i + 1)) {
        const int w = qMax(lineWidth(fm, text.left(i)), lineWidth(fm, text.mid(i + 1)) + arrow);
        if (best < 0 || w < bestWidth) {
            best = i;
            bestWidth = w;
        }
    }
    if (best > 0)
        return {text.left(best), text.mid(best + 1)};
    // One word: the arrow gets a line of its own.
    return m_drawArrow ? QStringList{text, QString()} : QStringList{text};
}

QSize KOrbStyleKToolButton::_getTextDrawSize(Qt::Orientation orientation) const
{
    const QStringList lines = getDrawText();
    const QFontMetrics& fm = m_option->fontMetrics;
    QSize size;
    if (isTextUnderIcon()) {
        int width = 0;
        for (int i = 0; i < lines.size(); ++i) {
            const bool last = i == lines.size() - 1;
            width = qMax(width, lineWidth(fm, lines.at(i)) + (last && m_drawArrow ? m_arrowSize.width() : 0));
        }
        // Large buttons keep two lines, so that a row of them lines up.
        size = QSize(width, 2 * fm.height());
    } else {
        size = QSize(lines.isEmpty() ? 0 : lineWidth(fm, lines.first()), fm.height());
    }
    size = QSize(size.width() + s_furtherMargins.left() + s_furtherMargins.right(), size.height());
    return orientation == Qt::Vertical ? size.transposed() : size;
}

QMargins KOrbStyleKToolButton::_margins() const
{
    return (m_option && m_option->largeMargins) ? s_wideMargins : s_normalMargins;
}

bool KOrbStyleKToolButton::_isRotated() const
{
    // A vertical bar turns a caption beside the icon; large buttons stay upright.
    return m_option && m_option->orientation == Qt::Vertical && m_drawText && !isTextUnderIcon();
}

QRect KOrbStyleKToolButton::_layoutRect() const
{
    const QRect r = m_option->rect;
    return _isRotated() ? QRect(0, 0, r.height(), r.width()) : r;
}

QRect KOrbStyleKToolButton::_toButton(const QRect& layout) const
{
    if (!_isRotated() || layout.isNull())
        return layout;
    // The painter turns by 90 degrees about the button's top right corner.
    const QRect r = m_option->rect;
    return QRect(r.left() + r.width() - layout.bottom() - 1, r.top() + layout.left(), layout.height(), layout.width());
}

QSize KOrbStyleKToolButton::contentSizeHint(Qt::Orientation orientation) const
{
    if (!m_option)
        return QSize(0, 0);
    const QSize icon = m_drawIcon ? grown(m_iconSize, s_furtherMargins) : QSize(0, 0);
    QSize size;
    if (isTextUnderIcon()) {
        size.setWidth(qMax(qMax(icon.width(), m_textSize.width()), m_arrowSize.width()));
        // Under a caption the arrow rides on its last line.
        size.setHeight(icon.height() + m_textSize.height() + (m_drawText ? 0 : m_arrowSize.height()));
    } else {
        size.setWidth(icon.width() + m_textSize.width() + m_arrowSize.width());
        size.setHeight(qMax(qMax(icon.height(), m_textSize.height()), m_arrowSize.height()));
    }
    const bool rotated = orientation == Qt::Vertical && m_drawText && !isTextUnderIcon();
    return rotated ? size.transposed() : size;
}

QSize KOrbStyleKToolButton::calcSizeHint(Qt::Orientation orientation) const
{
    if (!m_option)
        return QSize(0, 0);
    const bool rotated = orientation == Qt::Vertical && m_drawText && !isTextUnderIcon();
    const QMargins margins = rotated ? KDrawHelpFunc::rotateMargins90(_margins()) : _margins();
    QSize size = grown(contentSizeHint(orientation), margins);
    if ((m_option->buttonStyle & KStyleOptionToolButton::StyleEvenWidth) && (size.width() % 2))
        size.rwidth() += 1;
    return size;
}

// --- geometry ---

void KOrbStyleKToolButton::_parts(QRect& button, QRect& menu) const
{
    const QRect r = _layoutRect();
    button = r;
    menu = QRect();
    if (!m_drawArrow || !(m_option->subControls & QStyle::SC_ToolButtonMenu))
        return;
    const QMargins m = _margins();
    if (isTextUnderIcon() && m_drawIcon) {
        // A large button: the icon is the button part, caption and arrow the drop-down part.
        const int split = r.top() + m.top() + m_iconSize.height() + s_furtherMargins.top() + s_furtherMargins.bottom();
        button = QRect(r.left(), r.top(), r.width(), split - r.top());
        menu = QRect(r.left(), split, r.width(), r.bottom() - split + 1);
        return;
    }
    const int width = m_arrowSize.width() + m.right();
    menu = QRect(r.right() - width + 1, r.top(), width, r.height());
    button = QRect(r.left(), r.top(), r.width() - width, r.height());
}

void KOrbStyleKToolButton::getButtonArea(QRect& button, QRect& menu) const
{
    if (!m_option) {
        button = menu = QRect();
        return;
    }
    _parts(button, menu);
    button = _toButton(button);
    menu = _toButton(menu);
}

void KOrbStyleKToolButton::getDrawArea(QRect& icon, QRect& text, QRect& arrow) const
{
    icon = text = arrow = QRect();
    if (!m_option)
        return;
    const QRect content = _layoutRect().marginsRemoved(_margins());
    const QSize iconBox = m_drawIcon ? grown(m_iconSize, s_furtherMargins) : QSize(0, 0);
    if (isTextUnderIcon()) {
        int y = content.top();
        if (m_drawIcon) {
            icon = QRect(QPoint(content.left() + (content.width() - iconBox.width()) / 2, y), iconBox);
            y += iconBox.height();
        }
        if (m_drawText) {
            text = QRect(content.left(), y, content.width(), m_textSize.height());
            if (m_drawArrow) {
                // Behind the last line, the two centred together.
                const QStringList lines = getDrawText();
                const QFontMetrics& fm = m_option->fontMetrics;
                const int lw = lineWidth(fm, lines.last());
                const int left = text.left() + (text.width() - lw - m_arrowSize.width()) / 2 + lw;
                const int top = text.top() + (lines.size() - 1) * fm.height() + (fm.height() - m_arrowSize.height()) / 2;
                arrow = QRect(QPoint(left, top), m_arrowSize);
            }
        } else if (m_drawArrow) {
            arrow = QRect(QPoint(content.left() + (content.width() - m_arrowSize.width()) / 2, y), m_arrowSize);
        }
        return;
    }
    QRect area = content;
    if (m_drawArrow) {
        arrow = QRect(QPoint(content.right() - m_arrowSize.width() + 1,
                             content.top() + (content.height() - m_arrowSize.height()) / 2),
                      m_arrowSize);
        area.setRight(arrow.left() - 1);
    }
    // Icon and caption side by side from the left; a lone part is centred.
    const int groupWidth = iconBox.width() + m_textSize.width();
    int x = (m_drawIcon && m_drawText) ? area.left() : area.left() + (area.width() - groupWidth) / 2;
    if (m_drawIcon) {
        icon = QRect(QPoint(x, area.top() + (area.height() - iconBox.height()) / 2), iconBox);
        x += iconBox.width();
    }
    if (m_drawText)
        text = QRect(x, area.top() + (area.height() - m_textSize.height()) / 2, area.right() - x + 1,
                     m_textSize.height());
}

QRect KOrbStyleKToolButton::getHoverRect(const QWidget* widget) const
{
    if (!m_option)
        return QRect();
    const QRect inner = m_option->rect.adjusted(1, 1, -1, -1);
    if (!_isSplit() || isDown() || isChecked() || !isHover())
        return inner;
    QRect button, menu;
    getButtonArea(button, menu);
    QRect part;
    if (m_option->activeSubControls & QStyle::SC_ToolButtonMenu) {
        part = menu;
    } else if (m_option->activeSubControls & QStyle::SC_ToolButton) {
        part = button;
    } else if (widget) {
        const QPoint pos = widget->mapFromGlobal(QCursor::pos());
        part = menu.contains(pos) ? menu : (button.contains(pos) ? button : QRect());
    }
    if (part.isNull())
        return inner;
    // The line between the parts belongs to the frame, not to the lit part.
    if (part == menu)
        part.adjust(menu.left() == m_option->rect.left() ? 0 : 1, menu.top() == m_option->rect.top() ? 0 : 1, 0, 0);
    return part.intersected(inner);
}

QPainterPath KOrbStyleKToolButton::getHoverPath(const QWidget* widget) const
{
    const QRect outline = getHoverRect(widget).adjusted(-1, -1, 0, 0);
    const int corners = m_option ? m_option->roundCorner : 0;
    return KDrawHelpFunc::getBoundPath(outline, corners ? 2 : 0, corners);
}

// --- painting ---

void KOrbStyleKToolButton::_paintPanel(QPainter* painter, const QWidget* widget) const
{
    if (!isEnabled() || !(isDown() || isHover() || !isAutoRaise() || isChecked()))
        return;
    const int corners = m_option->roundCorner;
    const bool round = corners != 0;
    const bool customColour = m_option->bgBrush.style() != Qt::NoBrush || m_option->borderColor.isValid();
    painter->setRenderHint(QPainter::Antialiasing, round);
    // A rounded outline is stroked on the pixel centres; a square one on the pixel grid.
    const QPointF offset = round ? QPointF(0.5, 0.5) : QPointF();
    painter->setPen(borderColor());
    if (m_ongmaniStyle && !customColour) {
        const QRect frame = m_option->rect.adjusted(0, 0, -1, -1);
        const QPainterPath path = KDrawHelpFunc::getBoundPath(frame, round ? 2 : 0, corners).translated(offset);
        const QRect hover = getHoverRect(widget);
        if (hover == m_option->rect.adjusted(1, 1, -1, -1)) {
            painter->setBrush(bgBrush());
            painter->drawPath(path);
        } else {
            // A split button under the mouse: only the half under it lights.
            painter->fillRect(hover, bgBrush());
            painter->setBrush(Qt::NoBrush);
            painter->drawPath(path);
        }
        return;
    }
    painter->setBrush(bgBrush());
    painter->drawPath(getHoverPath(widget).translated(offset));
}

void KOrbStyleKToolButton::_paintCaption(QPainter* painter, const QRect& text, const QRect& arrow) const
{
    const QStringList lines = getDrawText();
    if (lines.isEmpty())
        return;
    painter->setPen(textColor());
    // The lines were escaped already when no mnemonic shows: the mnemonic rules draw them.
    const int flags = Qt::TextShowMnemonic | Qt::TextSingleLine;
    if (!isTextUnderIcon()) {
        const int align = m_drawIcon ? int(Qt::AlignLeft) : int(Qt::AlignHCenter);
        painter->drawText(text.marginsRemoved(QMargins(s_furtherMargins.left(), 0, s_furtherMargins.right(), 0)),
                          align | Qt::AlignVCenter | flags, lines.first());
        return;
    }
    const int lineHeight = m_option->fontMetrics.height();
    for (int i = 0; i < lines.size(); ++i) {
        QRect line(text.left(), text.top() + i * lineHeight, text.width(), lineHeight);
        if (i == lines.size() - 1 && arrow.isValid()) {
            // The last line ends where the arrow begins.
            line.setRight(arrow.left() - 1);
            painter->drawText(line, Qt::AlignRight | Qt::AlignVCenter | flags, lines.at(i));
        } else {
            painter->drawText(line, Qt::AlignHCenter | Qt::AlignVCenter | flags, lines.at(i));
        }
    }
}

void KOrbStyleKToolButton::paint(QPainter* painter, const QWidget* widget) const
{
    if (!m_option || !painter)
        return;
    painter->save();
    _paintPanel(painter, widget);
    if (needDrawSperatorLine()) {
        QRect button, menu;
        getButtonArea(button, menu);
        painter->setRenderHint(QPainter::Antialiasing, false);
        painter->setPen(borderColor());
        if (menu.isValid() && menu.left() == m_option->rect.left())
            painter->drawLine(menu.left() + 1, menu.top(), menu.right() - 1, menu.top());
        else if (menu.isValid())
            painter->drawLine(menu.left(), menu.top() + 1, menu.left(), menu.bottom() - 1);
    }
    if (_isRotated()) {
        const QRect r = m_option->rect;
        painter->translate(r.left() + r.width(), r.top());
        painter->rotate(90);
    }
    QRect icon, text, arrow;
    getDrawArea(icon, text, arrow);
    if (needDrawIcon()) {
        const QIcon::Mode mode = !isEnabled() ? QIcon::Disabled : QIcon::Normal;
        const QIcon::State state = isChecked() ? QIcon::On : QIcon::Off;
        m_option->icon.paint(painter, icon.marginsRemoved(s_furtherMargins), Qt::AlignCenter, mode, state);
    }
    if (needDrawText())
        _paintCaption(painter, text, arrow);
    if (needDrawArrow())
        KDrawHelpFunc::drawDownArraw(*painter, arrow.marginsRemoved(s_arrowMargins), isEnabled());
    painter->restore();
}

// --- the style's three tool-button operations ---

void KORBStyle_2013::drawComplexControl_ToolButton(const KStyleOptionToolButton* option, QPainter* painter,
                                                   const QWidget* widget) const
{
    KOrbStyleKToolButton button;
    button.setOngmaniStyle(true);
    button.initFromStyleOption(option);
    button.paint(painter, widget);
}

QSize KORBStyle_2013::sizeFromContents_ToolButton(QStyle::ContentsType, const KStyleOptionToolButton* option,
                                                  const QSize&, const QWidget*) const
{
    KOrbStyleKToolButton button;
    button.setOngmaniStyle(true);
    button.initFromStyleOption(option);
    return button.calcSizeHint(Qt::Orientation(option->orientation));
}

QRect KORBStyle_2013::subControlRect_ToolButton(QStyle::ComplexControl, const KStyleOptionToolButton* option,
                                                QStyle::SubControl subControl, const QWidget*) const
{
    KOrbStyleKToolButton button;
    button.setOngmaniStyle(true);
    button.initFromStyleOption(option);
    QRect buttonPart, menuPart;
    button.getButtonArea(buttonPart, menuPart);
    if (subControl == KSC_ToolButtonButton)
        return buttonPart;
    if (subControl == KSC_ToolButtonMenu)
        return menuPart;
    return option->rect;
}
