#ifndef KRBLAYOUTLISTCOMMAND_H
#define KRBLAYOUTLISTCOMMAND_H

#include <klistcommand.h>

/**
 * A plain grid, column or row of controls in a ribbon group, with an optional frame. Its
 * pocket widget is a KRbLayoutWidget. Registered in the factory as "KRbLayoutListCommand"
 * for a KMainWindow host.
 *
 * layoutName: "grid", "vbox", or anything else for a row (compared in lower case).
 * spacing sets both spacings and reads -1 while they differ. leftSpace and rightSpace widen
 * the left and right margins; layoutOnly drops the frame (the margins stay).
 */
class NORVIKOFFICEUI_EXPORT KRbLayoutListCommand : public KListCommand
{
    Q_OBJECT
    Q_PROPERTY(QString layoutName READ layoutName WRITE setLayoutName)
    Q_PROPERTY(int spacing READ spacing WRITE setSpacing)
    Q_PROPERTY(int horizontalSpacing READ horizontalSpacing WRITE setHorizontalSpacing)
    Q_PROPERTY(int verticalSpacing READ verticalSpacing WRITE setVerticalSpacing)
    Q_PROPERTY(int leftSpace READ leftSpacing WRITE setLeftSpacing)
    Q_PROPERTY(int rightSpace READ rightSpacing WRITE setRightSpacing)
    Q_PROPERTY(bool layoutOnly READ layoutOnly WRITE setLayoutOnly)
public:
    Q_INVOKABLE KRbLayoutListCommand(QObject* host, QObject* parent);
    ~KRbLayoutListCommand() override;

    QString layoutName() const { return m_layoutName; }
    void setLayoutName(const QString& name);
    /// Both spacings when they are equal, else -1.
    int spacing() const;
    void setSpacing(int spacing);
    int horizontalSpacing() const { return m_horizontalSpacing; }
    void setHorizontalSpacing(int spacing);
    int verticalSpacing() const { return m_verticalSpacing; }
    void setVerticalSpacing(int spacing);
    int leftSpacing() const { return m_leftSpacing; }
    void setLeftSpacing(int spacing);
    int rightSpacing() const { return m_rightSpacing; }
    void setRightSpacing(int spacing);
    bool layoutOnly() const { return m_layoutOnly; }
    void setLayoutOnly(bool layoutOnly);

    /// A new KRbLayoutWidget on this command.
    QWidget* createPocketWidget(QWidget* parent) override;

private:
    QString m_layoutName;
    int m_horizontalSpacing = 0;
    int m_verticalSpacing = 0;
    int m_leftSpacing = 0;
    int m_rightSpacing = 0;
    bool m_layoutOnly = false;
};

#endif // KRBLAYOUTLISTCOMMAND_H
