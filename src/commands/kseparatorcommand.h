#ifndef KSEPARATORCOMMAND_H
#define KSEPARATORCOMMAND_H

#include <QWidget>

#include <kcommand.h>

/**
 * The separator between items of a bar. There are exactly two shared instances, never owned
 * by a list: instance() and instance2(), whose ends are transparent.
 */
class NORVIKOFFICEUI_EXPORT KSeparatorCommand : public KCommand
{
    Q_OBJECT
    Q_PROPERTY(bool startEndTransparent READ getStartEndTransparent WRITE setStartEndTransparent)
public:
    static KSeparatorCommand* instance();
    /// The second separator; its startEndTransparent is set true at each call.
    static KSeparatorCommand* instance2();
    /// True only for instance(), not for instance2().
    static bool isSeparator(KCommand* command);

    bool getStartEndTransparent() const { return m_startEndTransparent; }
    void setStartEndTransparent(bool transparent);

    QWidget* createPocketWidget(QWidget* parent) override;

private:
    KSeparatorCommand();
    bool m_startEndTransparent = false;
};

/**
 * The line between items of a bar. It is vertical in a horizontal bar and horizontal in a
 * vertical one; a long separator spans the whole height of a ribbon group row.
 */
class NORVIKOFFICEUI_EXPORT KSeparatorWidget : public QWidget
{
    Q_OBJECT
public:
    explicit KSeparatorWidget(QWidget* parent = nullptr);

    bool isLongSeparator() const { return m_long; }
    void setLongSeparator(bool longSeparator);
    Qt::Orientation orientation() const { return m_orientation; }
    void setOrientation(Qt::Orientation orientation);

    QSize sizeHint() const override;

protected:
    void paintEvent(QPaintEvent* e) override;

private:
    bool m_long = false;
    Qt::Orientation m_orientation = Qt::Vertical;
};

#endif // KSEPARATORCOMMAND_H
