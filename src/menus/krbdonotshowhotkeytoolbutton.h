#ifndef KRBDONOTSHOWHOTKEYTOOLBUTTON_H
#define KRBDONOTSHOWHOTKEYTOOLBUTTON_H

#include <ktoolbutton.h>

/**
 * A button that keeps its place in a layout and shows nothing: it paints nothing and never
 * offers a key tip. It is the widget of KRbDonotShowHotKeyCommand.
 */
class NORVIKOFFICEUI_EXPORT KRbDonotShowHotKeyToolButton : public KToolButton
{
    Q_OBJECT
public:
    explicit KRbDonotShowHotKeyToolButton(QWidget* parent = nullptr);
    ~KRbDonotShowHotKeyToolButton() override;

protected:
    bool event(QEvent* e) override;
    void paintEvent(QPaintEvent* e) override;
};

#endif // KRBDONOTSHOWHOTKEYTOOLBUTTON_H
