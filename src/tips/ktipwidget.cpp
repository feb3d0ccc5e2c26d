#include "ktipwidget.h"

#include <QApplication>
#include <QBoxLayout>
#include <QDebug>
#include <QFrame>
#include <QGuiApplication>
#include <QKeyEvent>
#include <QLabel>
#include <QMouseEvent>
#include <QPropertyAnimation>
#include <QScreen>
#include <QStyleOptionFrame>
#include <QStylePainter>
#include <QWindow>

#include <kapplication.h>
#include <kdrawhelpfunc.h>

namespace {

KTipWidget* s_instance = nullptr;

// The text width of a tip that is given no width.
constexpr int kNarrowTextWidth = 120;
// Room between the tip and the screen's edge when it has to move.
constexpr int kScreenGap = 4;
const QPoint kDefaultOffset(2, 16);
constexpr int kAppearMs = 150;
constexpr int kScrollDistance = 8;

QLabel* makeLabel(QWidget* parent, const char* name)
{
    auto* label = new QLabel(parent);
    label->setObjectName(QLatin1String(name));
    label->setTextFormat(Qt::PlainText);
    return label;
}

QBoxLayout* makeLayout(QBoxLayout::Direction direction, const char* name)
{
    auto* layout = new QBoxLayout(direction);
    layout->setObjectName(QLatin1String(name));
    layout->setContentsMargins(0, 0, 0, 0);
    return layout;
}

// Takes a sub-layout out of whatever layout holds it, so that it can be inserted again.
void detachLayout(QBoxLayout* from, QLayout* sub)
{
    from->removeItem(sub);
    sub->setParent(nullptr);
}

} // namespace

KTipWidget::KTipWidget(const QString& title, const QString& content, const QString& link,
                       const QString& picture, int picturePosition, const QString& url, int width,
                       QScreen* screen)
    : QWidget(nullptr, Qt::ToolTip | Qt::BypassGraphicsProxyWidget)
{
    s_instance = this;
    if (screen)
        setScreen(screen);
    setMouseTracking(true);
    _buildForm();
    qApp->installEventFilter(this);
    setForegroundRole(QPalette::ToolTipText);
    setBackgroundRole(QPalette::ToolTipBase);
    setWindowOpacity(style()->styleHint(QStyle::SH_ToolTipLabel_Opacity, nullptr, this) / 255.0);
    reuseTip(title, content, link, picture, picturePosition, url, width);
}

KTipWidget::~KTipWidget()
{
    if (s_instance == this)
        s_instance = nullptr;
    // The sub-layouts that resetLayout() left out belong to nobody.
    for (QLayout* sub : {static_cast<QLayout*>(m_picLayout), static_cast<QLayout*>(m_picLayout2)}) {
        if (sub && !sub->parent())
            delete sub;
    }
}

KTipWidget* KTipWidget::instance()
{
    return s_instance;
}

void KTipWidget::_buildForm()
{
    auto* outer = new QVBoxLayout(this);
    outer->setContentsMargins(0, 0, 0, 0);
    m_form = new QWidget(this);
    m_form->setObjectName(QStringLiteral("KToolTipWidget"));
    outer->addWidget(m_form);

    m_verticalLayout = makeLayout(QBoxLayout::TopToBottom, "verticalLayout");
    m_verticalLayout->setContentsMargins(8, 6, 8, 6);
    m_verticalLayout->setSpacing(6);
    m_form->setLayout(m_verticalLayout);

    m_titleLabel = makeLabel(m_form, "titleLabel");
    QFont bold = m_titleLabel->font();
    bold.setBold(true);
    m_titleLabel->setFont(bold);
    m_verticalLayout->addWidget(m_titleLabel);

    m_contentLayout = makeLayout(QBoxLayout::LeftToRight, "horizontalLayout_content");
    m_contentLayout->setSpacing(8);
    m_verticalLayout->addLayout(m_contentLayout);
    m_picLayout = makeLayout(QBoxLayout::TopToBottom, "verticalLayout_pic");
    m_picWidget = makeLabel(m_form, "picWidget");
    m_picLayout->addWidget(m_picWidget);
    m_picLayout->addStretch();
    m_contentLabel = makeLabel(m_form, "contentLabel");

    m_contentLayout2 = makeLayout(QBoxLayout::TopToBottom, "verticalLayout_content");
    m_contentLayout2->setSpacing(6);
    m_verticalLayout->addLayout(m_contentLayout2);
    m_contentLabel2 = makeLabel(m_form, "contentLabel2");
    m_picLayout2 = makeLayout(QBoxLayout::LeftToRight, "horizontalLayout_pic");
    m_picWidget2 = makeLabel(m_form, "picWidget2");
    m_picLayout2->addStretch();
    m_picLayout2->addWidget(m_picWidget2);
    m_picLayout2->addStretch();

    for (QLabel* label : {m_contentLabel, m_contentLabel2}) {
        label->setWordWrap(true);
        label->setAlignment(Qt::AlignLeft | Qt::AlignTop);
        label->setStyleSheet(QStringLiteral("\ncolor: rgb(76, 76, 76);"));
    }

    m_line = new QFrame(m_form);
    m_line->setObjectName(QStringLiteral("line"));
    m_line->setFrameShape(QFrame::HLine);
    // The style draws a frame of this name as the two-line separator.
    m_line->setObjectName(QStringLiteral("tipLine_solid"));
    m_verticalLayout->addWidget(m_line);

    m_linkLayout = makeLayout(QBoxLayout::LeftToRight, "horizontalLayout_link");
    m_linkLayout->setSpacing(4);
    m_verticalLayout->addLayout(m_linkLayout);
    m_linkPicWidget = makeLabel(m_form, "linkPicWidget");
    m_linkLabel = makeLabel(m_form, "linkLabel");
    m_linkLabel->setCursor(Qt::PointingHandCursor);
    m_linkPicWidget->setCursor(Qt::PointingHandCursor);
    const QColor linkColor = KDrawHelpFunc::getColorFromTheme(QStringLiteral("KTipWidget"), QStringLiteral("linkText"));
    m_linkLabel->setStyleSheet(QStringLiteral("color: rgb(%1, %2, %3)")
                                   .arg(linkColor.red())
                                   .arg(linkColor.green())
                                   .arg(linkColor.blue()));
    m_linkLayout->addWidget(m_linkPicWidget);
    m_linkLayout->addWidget(m_linkLabel);
    m_linkLayout->addStretch();
}

QString KTipWidget::picturePath(const QString& picture)
{
    KApplication* app = KApplication::instance();
    const int language = app ? app->currentLanguage() : -1;
    return QStringLiteral("%1/%2/tip/").arg(QCoreApplication::applicationDirPath(), QString::number(language))
        + picture + QStringLiteral(".png");
}

void KTipWidget::reuseTip(const QString& title, const QString& content, const QString& link,
                          const QString& picture, int picturePosition, const QString& url, int width)
{
    m_title = title;
    m_content = content;
    m_link = link;
    m_picture = picture;
    m_picturePosition = picturePosition;
    m_url = url;
    if (KApplication* app = KApplication::instance())
        app->setLinkUrl(url);

    m_titleLabel->setVisible(!title.isEmpty());
    m_titleLabel->setText(title);
    // Without a title the content moves up into its place.
    m_verticalLayout->setContentsMargins(8, title.isEmpty() ? 4 : 6, 8, 6);

    const QString shown = QString(content).replace(QLatin1Char('#'), QStringLiteral("\r\n"));
    m_contentLabel->setText(shown);
    m_contentLabel2->setText(shown);

    const QPixmap pixmap = picture.isEmpty() ? QPixmap() : QPixmap(picturePath(picture));
    m_picWidget->setPixmap(pixmap);
    m_picWidget2->setPixmap(pixmap);

    m_linkLabel->setText(link);
    resetLayout();
    _fitLabels(width);

    m_form->layout()->activate();
    layout()->activate();
    QSize size = sizeHint() + QSize(1, 0);
    const QFontMetrics fm(font());
    if (fm.descent() == 2 && fm.ascent() > 10)
        size += QSize(0, 1);
    resize(size);
    restartExpireTimer();
}

void KTipWidget::_fitLabels(int width)
{
    int textWidth = kNarrowTextWidth;
    if (width >= 1) {
        textWidth = m_contentLabel->fontMetrics()
                        .boundingRect(QRect(0, 0, width, 0x7fffffff), Qt::TextWordWrap, m_contentLabel->text())
                        .width();
    }
    for (QLabel* label : {m_contentLabel, m_contentLabel2}) {
        label->setMinimumHeight(0);
        label->setFixedWidth(textWidth);
        // A wrapped label asks its height for its width; a window's size hint doesn't.
        label->setMinimumHeight(label->heightForWidth(textWidth));
    }
}

void KTipWidget::resetLayout()
{
    for (QWidget* w : std::initializer_list<QWidget*>{m_picWidget, m_contentLabel, m_contentLabel2, m_picWidget2,
                                                      m_line, m_linkPicWidget, m_linkLabel})
        w->hide();
    m_contentLayout->removeWidget(m_contentLabel);
    detachLayout(m_contentLayout, m_picLayout);
    m_contentLayout2->removeWidget(m_contentLabel2);
    detachLayout(m_contentLayout2, m_picLayout2);
    m_contentLabel->setSizePolicy(QSizePolicy::Preferred, QSizePolicy::Preferred);
    m_contentLabel2->setSizePolicy(QSizePolicy::Preferred, QSizePolicy::Preferred);

    QLabel* label = m_contentLabel;
    QWidget* picture = nullptr;
    if (m_picture.isEmpty()) {
        m_contentLayout->addWidget(m_contentLabel);
    } else {
        switch (m_picturePosition) {
        case 2: // right of the text
            m_contentLayout->addWidget(m_contentLabel);
            m_contentLayout->addLayout(m_picLayout);
            picture = m_picWidget;
            label->setSizePolicy(QSizePolicy::Expanding, QSizePolicy::Expanding);
            break;
        case 3: // above the text
            m_contentLayout2->addLayout(m_picLayout2);
            m_contentLayout2->addWidget(m_contentLabel2);
            label = m_contentLabel2;
            picture = m_picWidget2;
            label->setSizePolicy(QSizePolicy::Expanding, QSizePolicy::Expanding);
            break;
        case 4: // below the text
            m_contentLayout2->addWidget(m_contentLabel2);
            m_contentLayout2->addLayout(m_picLayout2);
            label = m_contentLabel2;
            picture = m_picWidget2;
            break;
        default: // left of the text
            m_contentLayout->addLayout(m_picLayout);
            m_contentLayout->addWidget(m_contentLabel);
            picture = m_picWidget;
            break;
        }
    }
    label->show();
    if (picture)
        picture->show();

    if (!m_link.isEmpty()) {
        m_line->show();
        m_linkPicWidget->setPixmap(QPixmap(QStringLiteral(":/icons/16x16/Help.png")));
        m_linkPicWidget->show();
        m_linkLabel->show();
    }
}

void KTipWidget::restartExpireTimer()
{
    m_expireTimer.start(ExpireTime, this);
    m_hideTimer.stop();
}

void KTipWidget::startShowTimer(int ms)
{
    m_showTimer.start(ms, this);
}

void KTipWidget::stopShowTimer()
{
    m_showTimer.stop();
}

void KTipWidget::startExpireTimer(int ms)
{
    m_expireTimer.start(ms, this);
}

void KTipWidget::hideTip()
{
    if (!m_hideTimer.isActive())
        m_hideTimer.start(HideDelay, this);
}

void KTipWidget::hideTipImmediately()
{
    if (KApplication* app = KApplication::instance())
        app->setLinkUrl(QString());
    m_showTimer.stop();
    m_hideTimer.stop();
    m_expireTimer.stop();
    if (s_instance == this)
        s_instance = nullptr;
    qApp->removeEventFilter(this);
    close();
    deleteLater();
}

void KTipWidget::openUrl()
{
    KApplication* app = KApplication::instance();
    if (!app || app->getLinkUrl().isEmpty())
        return;
    app->openUrl();
    app->setLinkUrl(QString());
    // The help opens elsewhere; the tip has done its work.
    hideTipImmediately();
}

void KTipWidget::setTipRect(QWidget* widget, const QRect& rect)
{
    if (!widget && !rect.isNull()) {
        qWarning("KTipWidget::setTipRect: Cannot pass null widget if rect is set");
        return;
    }
    m_widget = widget;
    m_rect = rect;
}

QScreen* KTipWidget::getTipScreen(const QPoint& pos, QWidget* widget)
{
    QScreen* screen = widget ? widget->screen() : QGuiApplication::primaryScreen();
    if (screen && screen->virtualSiblings().size() > 1) {
        if (QScreen* at = QGuiApplication::screenAt(pos))
            return at;
    }
    return screen ? screen : QGuiApplication::primaryScreen();
}

bool KTipWidget::tipChanged(const QPoint& pos, const QString& title, const QString& content,
                            const QString& link, const QString& picture, int picturePosition,
                            const QString& url, QWidget* widget) const
{
    if (title != m_title || content != m_content || link != m_link || picture != m_picture
        || picturePosition != m_picturePosition || url != m_url || widget != m_widget.data())
        return true;
    if (!m_rect.isNull() && m_widget)
        return !m_rect.contains(m_widget->mapFromGlobal(pos));
    return false;
}

void KTipWidget::placeTip(const QPoint& pos, QWidget* widget, QPoint* offset, bool fitToScreen)
{
    QPoint p = pos + (offset ? *offset : kDefaultOffset);
    QScreen* screen = getTipScreen(pos, widget);
    if (fitToScreen && screen) {
        const QRect area = screen->geometry();
        if (p.x() + width() > area.x() + area.width())
            p.setX(area.x() + area.width() - width() - kScreenGap);
        if (p.y() + height() > area.y() + area.height())
            p.setY(pos.y() - height() - kScreenGap);
        p.setX(qMax(p.x(), area.x()));
        p.setY(qMax(p.y(), area.y()));
    }
    move(p);
}

void KTipWidget::_appear()
{
    const bool fade = QApplication::isEffectEnabled(Qt::UI_FadeTooltip);
    const bool scroll = !fade && QApplication::isEffectEnabled(Qt::UI_AnimateTooltip);
    if (!fade && !scroll) {
        show();
        return;
    }
    m_fading = true;
    auto* effect = new QPropertyAnimation(this, fade ? QByteArrayLiteral("windowOpacity") : QByteArrayLiteral("pos"), this);
    effect->setDuration(kAppearMs);
    if (fade) {
        const qreal opacity = windowOpacity();
        effect->setStartValue(0.0);
        effect->setEndValue(opacity);
        setWindowOpacity(0.0);
    } else {
        effect->setStartValue(pos() - QPoint(0, kScrollDistance)); // comes down into place
        effect->setEndValue(pos());
    }
    connect(effect, &QPropertyAnimation::finished, this, [this] { m_fading = false; });
    m_effect = effect;
    show();
    effect->start(QAbstractAnimation::DeleteWhenStopped);
}

bool KTipWidget::_ownsObject(QObject* object) const
{
    if (auto* window = qobject_cast<QWindow*>(object))
        return window == windowHandle();
    if (!object->isWidgetType())
        return false;
    auto* w = static_cast<QWidget*>(object);
    return w == this || isAncestorOf(w);
}

bool KTipWidget::eventFilter(QObject* watched, QEvent* event)
{
    switch (event->type()) {
    case QEvent::MouseButtonRelease:
        if (!_ownsObject(watched)) {
            hideTipImmediately();
        } else if ((watched == m_linkLabel || watched == m_linkPicWidget)
                   && static_cast<QMouseEvent*>(event)->button() == Qt::LeftButton) {
            openUrl();
        }
        break;
    case QEvent::MouseButtonPress:
    case QEvent::MouseMove:
        if (_ownsObject(watched)) {
            // The tip stays while it is in use.
            m_hideTimer.stop();
            m_expireTimer.stop();
        } else if (event->type() == QEvent::MouseMove && watched == m_widget && !m_rect.isNull()
                   && !m_rect.contains(static_cast<QMouseEvent*>(event)->position().toPoint())) {
            hideTip();
        }
        break;
    case QEvent::Leave:
        // Moving between the tip's own parts is no leave.
        if (watched == this || !_ownsObject(watched))
            hideTip();
        break;
    case QEvent::WindowDeactivate:
    case QEvent::Wheel:
        hideTip();
        break;
    case QEvent::KeyPress:
        // The tip never has the focus: F1 reaches it from whichever widget has.
        if (isVisible() && static_cast<QKeyEvent*>(event)->key() == Qt::Key_F1)
            openUrl();
        break;
    default:
        break;
    }
    return false;
}

void KTipWidget::timerEvent(QTimerEvent* event)
{
    if (event->timerId() == m_showTimer.timerId()) {
        m_showTimer.stop();
        _appear();
        return;
    }
    if (event->timerId() == m_hideTimer.timerId() || event->timerId() == m_expireTimer.timerId()) {
        m_hideTimer.stop();
        m_expireTimer.stop();
        hideTipImmediately();
        return;
    }
    QWidget::timerEvent(event);
}

void KTipWidget::paintEvent(QPaintEvent*)
{
    QStylePainter painter(this);
    QStyleOptionFrame option;
    option.initFrom(this);
    painter.drawPrimitive(QStyle::PE_PanelTipLabel, option);
}

void KTipWidget::mousePressEvent(QMouseEvent* event)
{
    m_hideTimer.stop();
    m_expireTimer.stop();
    QWidget::mousePressEvent(event);
}

void KTipWidget::mouseMoveEvent(QMouseEvent* event)
{
    m_hideTimer.stop();
    m_expireTimer.stop();
    QWidget::mouseMoveEvent(event);
}

void KTipWidget::keyPressEvent(QKeyEvent* event)
{
    if (event->key() == Qt::Key_F1) {
        openUrl();
        return;
    }
    QWidget::keyPressEvent(event);
}
