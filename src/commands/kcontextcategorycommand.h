#ifndef KCONTEXTCATEGORYCOMMAND_H
#define KCONTEXTCATEGORYCOMMAND_H

#include <klistcommand.h>

/**
 * A ribbon tab that belongs to a context (a picture, a table): "contextName" names the
 * family, by which the style colours its tab.
 */
class NORVIKOFFICEUI_EXPORT KContextCategoryCommand : public KListCommand
{
    Q_OBJECT
    Q_PROPERTY(QString contextName READ contextName WRITE setContextName)
public:
    Q_INVOKABLE KContextCategoryCommand(QObject* host, QObject* parent);
    ~KContextCategoryCommand() override;

    QString contextName() const { return m_contextName; }
    void setContextName(const QString& name);
    /// The theme tag of the context's colours; "none" here.
    virtual QString getContextThemeTag() const;

private:
    QString m_contextName;
};

#endif // KCONTEXTCATEGORYCOMMAND_H
