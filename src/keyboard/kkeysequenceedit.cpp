#include "kkeysequenceedit.h"

#include <QApplication>
#include <QKeyEvent>
#include <QPainter>
#include <QStyle>
#include <QStyleOptionFrame>

#include <kdrawhelpfunc.h>

#include "kkeysequencehelper.h"

namespace {
constexpr int kMargin = 4;
} // namespace

KKeySequenceEdit::KKeySequenceEdit(QWidget* parent)
    : QWidget(parent)
{
    setFocusPolicy(Qt::StrongFocus);
    setAttribute(Qt::WA_InputMethodEnabled, false);
}

KKeySequenceEdit::~KKeySequenceEdit()
{
    if (m_filtering)
        qApp->removeEventFilter(this);
}

void KKeySequenceEdit::setDefaultText(const QString& text)
{
    if (m_defaultText == text)
        return;
    m_defaultText = text;
    update();
}

void KKeySequenceEdit::setText(const QString& text)
{
    if (m_text == text)
        return;
    m_text = text;
    updateGeometry();
    update();
}

QKeySequence KKeySequenceEdit::keySequence() const
{
    if (!m_key)
        return QKeySequence();
    return QKeySequence(QKeyCombination(m_modifiers, Qt::Key(m_key)));
}

QString KKeySequenceEdit::toString() const
{
    return KKeySequenceHelper::keyAndModifiersToString(m_key, m_modifiers);
}

void KKeySequenceEdit::setString(const QString& text)
{
    int key = 0;
    Qt::KeyboardModifiers modifiers;
    KKeySequenceHelper::stringToKeyAndModifiers(text, key, modifiers);
    m_key = key;
    m_modifiers = modifiers;
    setText(_storedText());
}

void KKeySequenceEdit::setFollowBorderColor(bool follow)
{
    if (m_followBorderColor == follow)
        return;
    m_followBorderColor = follow;
    update();
}

QString KKeySequenceEdit::_storedText() const
{
    if (!m_key)
        return QString();
    return KKeySequenceHelper::mapModifiersToStrForDisplay(m_modifiers, m_key)
           + KKeySequenceHelper::mapKeyToStrForDisplay(m_key);
}

QSize KKeySequenceEdit::contentSizeHint() const
{
    const QFontMetrics fm = fontMetrics();
    const QString shown = m_text.isEmpty() ? m_defaultText : m_text;
    return QSize(fm.horizontalAdvance(shown) + 1, fm.height());
}

QSize KKeySequenceEdit::sizeHint() const
{
    const QFontMetrics fm = fontMetrics();
    const QSize content = contentSizeHint();
    return QSize(qMax(content.width(), fm.horizontalAdvance(QStringLiteral("Ctrl + Shift + Alt + W")))
                     + 2 * kMargin,
                 content.height() + 2 * kMargin);
}

bool KKeySequenceEdit::eventFilter(QObject* watched, QEvent* e)
{
    switch (e->type()) {
    case QEvent::KeyPress:
    case QEvent::KeyRelease:
        // Every key is ours while the field has the focus, whoever it was sent to.
        event(e);
        return true;
    case QEvent::ShortcutOverride:
        e->accept();
        return true; // no accelerator fires
    case QEvent::MouseButtonPress:
        e->accept();
        Q_EMIT mousePressed();
        break;
    default:
        break;
    }
    return QWidget::eventFilter(watched, e);
}

void KKeySequenceEdit::keyPressEvent(QKeyEvent* e)
{
    if (e->key() == Qt::Key_Escape) {
        clearFocus();
        return;
    }
    int key = e->key();
    int scanCode = int(e->nativeScanCode());
    // X reports keycodes, eight above the keyboard's scan codes.
    if (scanCode > 8)
        scanCode -= 8;
    Qt::KeyboardModifiers modifiers = e->modifiers();
    KKeySequenceHelper::processOrgKey(key, scanCode, modifiers);
    const QString modifierText = KKeySequenceHelper::mapModifiersToStrForDisplay(modifiers, key);
    if (key == Qt::Key_Shift || key == Qt::Key_Control || key == Qt::Key_Alt) {
        setText(modifierText); // nothing is stored yet
        return;
    }
    QString keyText;
    static const int s_keypad[] = {71, 72, 73, 75, 76, 77, 78, 79, 80, 81, 82, 83};
    const bool keypadScan = std::find(std::begin(s_keypad), std::end(s_keypad), scanCode) != std::end(s_keypad);
    if (keypadScan && (modifiers & Qt::KeypadModifier))
        keyText = KKeySequenceHelper::mapRightKeyNumForDisplay(scanCode);
    else
        keyText = KKeySequenceHelper::mapKeyToStrForDisplay(key);
    if (keyText.isEmpty()) {
        setText(_storedText());
    } else {
        m_key = key;
        m_modifiers = modifiers;
        setText(modifierText + keyText);
    }
    if (e->key() == Qt::Key_Return || e->key() == Qt::Key_Enter)
        Q_EMIT enterPressed();
    Q_EMIT keyChanged();
}

void KKeySequenceEdit::keyReleaseEvent(QKeyEvent*)
{
    if (!m_key)
        setText(_storedText());
    else if (m_text != _storedText())
        setText(_storedText());
    Q_EMIT keyChanged();
}

void KKeySequenceEdit::focusInEvent(QFocusEvent* e)
{
    if (!m_filtering) {
        qApp->installEventFilter(this);
        m_filtering = true;
    }
    m_cursorVisible = true;
    if (!m_cursorTimer)
        m_cursorTimer = startTimer(500);
    update();
    QWidget::focusInEvent(e);
}

void KKeySequenceEdit::focusOutEvent(QFocusEvent* e)
{
    if (m_filtering) {
        qApp->removeEventFilter(this);
        m_filtering = false;
    }
    if (m_cursorTimer) {
        killTimer(m_cursorTimer);
        m_cursorTimer = 0;
    }
    m_cursorVisible = false;
    update();
    QWidget::focusOutEvent(e);
}

void KKeySequenceEdit::timerEvent(QTimerEvent* e)
{
    if (e->timerId() != m_cursorTimer) {
        QWidget::timerEvent(e);
        return;
    }
    m_cursorVisible = !m_cursorVisible;
    update();
}

void KKeySequenceEdit::paintEvent(QPaintEvent*)
{
    QPainter painter(this);
    QStyleOptionFrame frame;
    frame.initFrom(this);
    frame.lineWidth = 1;
    style()->drawPrimitive(QStyle::PE_PanelLineEdit, &frame, &painter, this);
    if (m_followBorderColor) {
        const QColor border = KDrawHelpFunc::getColorFromTheme(QStringLiteral("common"), QStringLiteral("border"));
        if (border.isValid()) {
            painter.setPen(border);
            painter.drawRect(rect().adjusted(0, 0, -1, -1));
        }
    }
    const bool showDefault = !m_key && m_text.isEmpty();
    const QString shown = showDefault ? m_defaultText : m_text;
    QColor textColor = KDrawHelpFunc::getColorFromTheme(QStringLiteral("common"), QStringLiteral("text"));
    if (!textColor.isValid())
        textColor = palette().color(QPalette::Text);
    if (showDefault)
        textColor.setAlpha(128);
    m_layout.setText(shown);
    m_layout.setFont(font());
    m_layout.beginLayout();
    QTextLine line = m_layout.createLine();
    if (line.isValid())
        line.setLineWidth(qMax(0, width() - 2 * kMargin));
    m_layout.endLayout();
    const qreal y = (height() - fontMetrics().height()) / 2.0;
    painter.setPen(textColor);
    m_layout.draw(&painter, QPointF(kMargin, y));
    if (m_cursorVisible && hasFocus()) {
        // The cursor stands behind the shown text (none of the default text counts).
        const qreal x = kMargin + (showDefault || !line.isValid() ? 0.0 : line.cursorToX(shown.size()));
        painter.setPen(textColor.isValid() ? QColor(textColor.red(), textColor.green(), textColor.blue())
                                           : palette().color(QPalette::Text));
        painter.drawLine(QPointF(x, y), QPointF(x, y + fontMetrics().height() - 1));
    }
}
