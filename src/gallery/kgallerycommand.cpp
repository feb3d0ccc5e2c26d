#include "kgallerycommand.h"

#include <kcommandfactory.h>
#include <kgallery.h>
#include <kpopupwidget.h>
#include <ktoolbutton.h>

static KCommandFactoryItem<KGalleryCommand, QObject>
    s_galleryCommandItem(QStringLiteral("KGalleryCommand"), QStringLiteral("QObject"));

KGalleryCommand::KGalleryCommand(QObject* host, QObject* parent)
    : KListCommand(host, parent)
{
}

KGalleryCommand::~KGalleryCommand() = default;

void KGalleryCommand::setDataSource(KGalleryAbstractModel* model)
{
    if (model == m_dataSource)
        return;
    m_dataSource = model;
    on_command_changed();
}

void KGalleryCommand::setGalleryWidth(int width)
{
    if (width == m_galleryWidth)
        return;
    m_galleryWidth = width;
    on_command_changed();
}

void KGalleryCommand::setGallerySmallWidth(int width)
{
    if (width == m_gallerySmallWidth)
        return;
    m_gallerySmallWidth = width;
    Q_EMIT widthChange(width);
    on_command_changed();
}

void KGalleryCommand::setGalleryHeight(int height)
{
    if (height == m_galleryHeight)
        return;
    m_galleryHeight = height;
    on_command_changed();
}

bool KGalleryCommand::isTriggerable() const
{
    return true;
}

bool KGalleryCommand::isExtensible() const
{
    return true;
}

QWidget* KGalleryCommand::createPocketWidget(QWidget* parent)
{
    auto* button = new KToolButton(parent);
    button->setButtonStyle(KToolButton::StyleIcon | KToolButton::StyleText | KToolButton::StyleArrow);
    button->setDefaultCommand(this);
    connect(button, &KToolButton::LButtonClicked, button, [this, button] {
        KGalleryAbstractModel* model = dataSource();
        if (!model)
            return;
        model->fecthItems();
        if (model->count() == 0 && count() == 0)
            return; // nothing to show
        // One popup per button, kept between openings; the gallery follows its model.
        auto* popup = button->findChild<KPopupWidget*>(QString(), Qt::FindDirectChildrenOnly);
        if (!popup) {
            popup = new KPopupWidget(button, Qt::Popup);
            popup->setContentWidget(requestWidget(popup, KCommand::ExtendedPurpose));
            const QPointer<KToolButton> guard(button);
            connect(popup, &KPopupWidget::aboutToHide, button, [guard] {
                if (guard)
                    guard->setDown(false);
            });
        }
        popup->clearSizeAttitude();
        button->setDown(true);
        popup->show(button, KPopupWidget::getWidgetGlobalBottomLeftPos(button));
    });
    return button;
}

QWidget* KGalleryCommand::createInlineWidget(QWidget* parent)
{
    return new KGalleryInline(this, parent);
}

QWidget* KGalleryCommand::createExtendedWidget(QWidget* parent)
{
    return new KGallery(this, parent);
}
