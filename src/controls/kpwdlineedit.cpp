#include "kpwdlineedit.h"

#include <QDialog>
#include <QGuiApplication>
#include <QKeyEvent>
#include <QStyle>

#include <kdrawhelpfunc.h>

#include "kpwdtooltipwidget.h"

KPwdLineEdit::KPwdLineEdit(QWidget* parent)
    : QLineEdit(parent)
    , m_capsLockTip(new KPwdToolTipWidget(this))
    , m_copyTip(new KPwdToolTipWidget(this))
{
    setStyleSheet(QStringLiteral("lineedit-password-character: 42"));
    setEchoMode(QLineEdit::Password);
    setMaxLength(255);

    const QColor titleColor(0x00, 0x33, 0x99);
    QFont titleFont = font();
    titleFont.setPointSize(12);

    m_capsLockTip->setTitleText(tr("Caps Lock On."));
    m_capsLockTip->setContentText(tr("Keep the caps lock open may cause you to input error password.")
                                  + QStringLiteral("\r\n\r\n")
                                  + tr("Before entering your password,you should press the \"Caps Lock\" key "
                                       "to turn it off."));
    m_capsLockTip->setIconPixmap(QPixmap(QStringLiteral(":/icons/16x16/WaringCapsLock.png")));
    m_capsLockTip->setTitleTextColor(titleColor);
    m_capsLockTip->setTitleTextFont(titleFont);
    const QColor border = KDrawHelpFunc::getColorFromTheme(QStringLiteral("KHintBox"), QStringLiteral("border"));
    if (border.isValid())
        m_capsLockTip->setOutLineColor(border);

    m_copyTip->setTitleText(tr("Not allowed."));
    m_copyTip->setContentText(tr("You are not allowed to copy from the password field."));
    const int small = style()->pixelMetric(QStyle::PM_SmallIconSize, nullptr, this);
    m_copyTip->setIconPixmap(style()
                                 ->standardIcon(QStyle::SP_MessageBoxCritical, nullptr, this)
                                 .pixmap(small, small)
                                 .scaled(16, 16, Qt::KeepAspectRatio, Qt::SmoothTransformation));
    m_copyTip->setTitleTextColor(titleColor);
    m_copyTip->setTitleTextFont(titleFont);
    m_copyTip->setOutLineColor(Qt::black);

    if (parent)
        parent->installEventFilter(this);
}

KPwdLineEdit::~KPwdLineEdit() = default;

void KPwdLineEdit::showPoup(KPwdToolTipWidget* tip)
{
    if (!tip || tip->isVisible())
        return;
    const QPoint anchor = mapToGlobal(QPoint(cursorRect().left(), height() / 2));
    tip->setAutoHideTime(m_autoHideTime);
    tip->show(anchor);
}

void KPwdLineEdit::hidePoup()
{
    m_capsLockTip->hide();
    m_copyTip->hide();
}

void KPwdLineEdit::capsLockShowPoup()
{
    showPoup(m_capsLockTip);
}

void KPwdLineEdit::copyShowPoup()
{
    showPoup(m_copyTip);
}

void KPwdLineEdit::setTpTitleText(KPwdToolTipWidget* tip, const QString& text)
{
    if (tip)
        tip->setTitleText(text);
}

void KPwdLineEdit::setTpContentText(KPwdToolTipWidget* tip, const QString& text)
{
    if (tip)
        tip->setContentText(text);
}

void KPwdLineEdit::setTpTitleColor(KPwdToolTipWidget* tip, const QColor& color)
{
    if (tip)
        tip->setTitleTextColor(color);
}

void KPwdLineEdit::setTpContentColor(KPwdToolTipWidget* tip, const QColor& color)
{
    if (tip)
        tip->setContentTextColor(color);
}

void KPwdLineEdit::setTpTitleFont(KPwdToolTipWidget* tip, const QFont& font)
{
    if (tip)
        tip->setTitleTextFont(font);
}

void KPwdLineEdit::setTpContentFont(KPwdToolTipWidget* tip, const QFont& font)
{
    if (tip)
        tip->setContentTextFont(font);
}

void KPwdLineEdit::setTpIconPixmap(KPwdToolTipWidget* tip, const QPixmap& pixmap)
{
    if (tip)
        tip->setIconPixmap(pixmap);
}

void KPwdLineEdit::setTpAutoHideTime(KPwdToolTipWidget* tip, int ms)
{
    if (!tip)
        return;
    m_autoHideTime = ms;
    tip->setAutoHideTime(ms);
}

void KPwdLineEdit::setTpOutLineColor(KPwdToolTipWidget* tip, const QColor& color)
{
    if (tip)
        tip->setOutLineColor(color);
}

void KPwdLineEdit::installEventFilterOfDialog()
{
    if (m_dialogFilterInstalled)
        return;
    QWidget* parent = parentWidget();
    if (qobject_cast<QDialog*>(parent)) {
        m_dialogFilterInstalled = true; // the parent's filter watches it already
        return;
    }
    for (QWidget* w = parent; w; w = w->parentWidget()) {
        if (auto* dialog = qobject_cast<QDialog*>(w)) {
            dialog->installEventFilter(this);
            m_dialogFilterInstalled = true;
            return;
        }
    }
    // No dialog yet: a later show looks again.
}

bool KPwdLineEdit::eventFilter(QObject* watched, QEvent* e)
{
    // Only the parent and the dialog are watched; when they move, the tips would point at
    // nothing.
    if (watched != this
        && (e->type() == QEvent::Hide || e->type() == QEvent::Move || e->type() == QEvent::Resize))
        hidePoup();
    return QLineEdit::eventFilter(watched, e);
}

void KPwdLineEdit::keyPressEvent(QKeyEvent* e)
{
    hidePoup();
    if (e->modifiers() == Qt::ControlModifier) {
        if (e->key() == Qt::Key_X) {
            // Cutting would delete what it can't copy: refused, and told only when there
            // was something to cut.
            if (hasSelectedText())
                copyShowPoup();
            e->accept();
            return;
        }
        if (e->key() == Qt::Key_C) {
            copyShowPoup();
            e->accept();
            return;
        }
    }
    QLineEdit::keyPressEvent(e);
}

void KPwdLineEdit::keyReleaseEvent(QKeyEvent* e)
{
    if (e->modifiers() == Qt::AltModifier && (e->key() == Qt::Key_X || e->key() == Qt::Key_C))
        return;
    QLineEdit::keyReleaseEvent(e);
    if (e->key() == Qt::Key_CapsLock) {
        if (isCapsLock())
            capsLockShowPoup();
        else
            hidePoup();
    }
}

void KPwdLineEdit::focusInEvent(QFocusEvent* e)
{
    QLineEdit::focusInEvent(e);
    if (isCapsLock())
        capsLockShowPoup();
}

void KPwdLineEdit::focusOutEvent(QFocusEvent* e)
{
    QLineEdit::focusOutEvent(e);
    hidePoup();
}

void KPwdLineEdit::showEvent(QShowEvent* e)
{
    installEventFilterOfDialog();
    QLineEdit::showEvent(e);
    if (hasFocus() && isCapsLock())
        capsLockShowPoup();
}

void KPwdLineEdit::hideEvent(QHideEvent* e)
{
    QLineEdit::hideEvent(e);
    hidePoup(); // the tips are windows of their own and would stay behind
}

// The X11 headers define macros (None, Bool, KeyPress, FocusOut, ...) that clash with Qt's
// names: they come after every Qt header, and only here.
#include <X11/Xlib.h>
#include <X11/XKBlib.h>

bool KPwdLineEdit::isCapsLock() const
{
    auto* app = qGuiApp;
    auto* x11 = app ? app->nativeInterface<QNativeInterface::QX11Application>() : nullptr;
    Display* display = x11 ? x11->display() : nullptr;
    if (!display)
        return false; // another platform, or offscreen: no indicator to read
    unsigned int state = 0;
    if (XkbGetIndicatorState(display, XkbUseCoreKbd, &state) != Success)
        return false;
    return (state & 1u) != 0; // Caps Lock is the first indicator
}
