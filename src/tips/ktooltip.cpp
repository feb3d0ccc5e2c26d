#include "ktooltip.h"

#include <QWidget>

#include <ktipwidget.h>

void KToolTip::showText(const QPoint& pos, const QString& title, const QString& content, const QString& link,
                        const QString& picture, int picturePosition, const QString& url, QWidget* widget,
                        const QRect& rect)
{
    KTipWidget* tip = KTipWidget::instance();
    if (tip && tip->isVisible()) {
        if (title.isEmpty()) {
            tip->stopShowTimer();
            tip->hideTip();
            return;
        }
        if (tip->isFading() || !tip->tipChanged(pos, title, content, link, picture, picturePosition, url, widget)) {
            // A tip on its way in, or the same one again: it stays and takes the texts.
            tip->reuseTip(title, content, link, picture, picturePosition, url, DefaultWidth);
            tip->setTipRect(widget, rect);
            tip->placeTip(pos, widget, nullptr, true);
            return;
        }
        tip->stopShowTimer();
        tip->hideTipImmediately();
        tip = nullptr;
    }
    if (tip && tip->isShowTimerActive()) {
        // One is about to appear; it shows what was asked for last.
        if (!title.isEmpty()
            && tip->tipChanged(pos, title, content, link, picture, picturePosition, url, widget)) {
            tip->reuseTip(title, content, link, picture, picturePosition, url, DefaultWidth);
            tip->setTipRect(widget, rect);
            tip->placeTip(pos, widget, nullptr, true);
        }
        return;
    }
    if (title.isEmpty())
        return;
    if (tip)
        tip->hideTipImmediately(); // a hidden one on its way out: one tip at a time

    tip = new KTipWidget(title, content, link, picture, picturePosition, url, DefaultWidth,
                         KTipWidget::getTipScreen(pos, widget));
    tip->setTipRect(widget, rect);
    tip->placeTip(pos, widget, nullptr, true);
    tip->setObjectName(QStringLiteral("KTipWidget"));
    tip->startShowTimer(KTipWidget::ShowDelay);
}

bool KToolTip::isVisible()
{
    KTipWidget* tip = KTipWidget::instance();
    return tip && tip->isVisible();
}

void KToolTipEx::showText(const QPoint& pos, const QString& title, const QString& content, const QString& link,
                          const QString& picture, int picturePosition, const QString& url, QWidget* widget,
                          const QRect& rect)
{
    QPoint offset(2, 16);
    KTipWidget* tip = KTipWidget::instance();
    if (!tip) {
        tip = new KTipWidget(title, content, link, picture, picturePosition, url, KToolTip::DefaultWidth,
                             KTipWidget::getTipScreen(pos, widget));
        tip->setObjectName(QStringLiteral("KTipWidget"));
        tip->setTipRect(widget, rect);
        tip->placeTip(pos, widget, &offset, true);
        tip->startShowTimer(0);
    } else {
        tip->reuseTip(title, content, link, picture, picturePosition, url, KToolTip::DefaultWidth);
        tip->setTipRect(widget, rect);
        tip->placeTip(pos, widget, &offset, true);
    }
    // Held open: it goes with hide(), not with time.
    tip->startExpireTimer(KTipWidget::NeverExpire);
}

void KToolTipEx::hide()
{
    if (KTipWidget* tip = KTipWidget::instance())
        tip->hideTipImmediately();
}
