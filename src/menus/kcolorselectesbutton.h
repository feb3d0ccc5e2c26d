#ifndef KCOLORSELECTESBUTTON_H
#define KCOLORSELECTESBUTTON_H

#include <QColor>

#include <ktoolbutton.h>

/**
 * A tool button with a strip of colour under its icon: the current colour of a colour
 * command (font colour, highlight). The strip lies at fixed coordinates under a 16-pixel
 * icon, (2, 16) to (17, 19), whatever the button's size. Opaque blue until told otherwise.
 */
class NORVIKOFFICEUI_EXPORT KColorSelectesButton : public KToolButton
{
    Q_OBJECT
public:
    /// Binds command (may be null) as setDefaultCommand() does.
    KColorSelectesButton(KCommand* command, QWidget* parent);
    ~KColorSelectesButton() override;

    QColor color() const { return m_color; }

public Q_SLOTS:
    void colorChange(const QColor& color);

protected:
    void paintEvent(QPaintEvent* e) override;

private:
    QColor m_color = QColor(0, 0, 255, 255);
};

#endif // KCOLORSELECTESBUTTON_H
