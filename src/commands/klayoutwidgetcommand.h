#ifndef KLAYOUTWIDGETCOMMAND_H
#define KLAYOUTWIDGETCOMMAND_H

#include <kcommand.h>

/// A spacer in a ribbon layout: its widget is an empty widget of fixedWidth by fixedHeight.
class NORVIKOFFICEUI_EXPORT KLayoutWidgetCommand : public KCommand
{
    Q_OBJECT
    Q_PROPERTY(int fixedHeight READ fixedHeight WRITE setFixedHeight)
    Q_PROPERTY(int fixedWidth READ fixedWidth WRITE setFixedWidth)
public:
    Q_INVOKABLE KLayoutWidgetCommand(QObject* host, QObject* parent);
    ~KLayoutWidgetCommand() override;

    int fixedHeight() const { return m_fixedHeight; }
    void setFixedHeight(int height);
    int fixedWidth() const { return m_fixedWidth; }
    void setFixedWidth(int width);

    QWidget* createPocketWidget(QWidget* parent) override;

private:
    int m_fixedHeight = 0;
    int m_fixedWidth = 0;
};

#endif // KLAYOUTWIDGETCOMMAND_H
