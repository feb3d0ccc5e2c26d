#ifndef KCOMMANDBARPROP_H
#define KCOMMANDBARPROP_H

#include <QObject>
#include <QString>

#include <kcommand.h>
#include <norvikofficeui_export.h>

class KMainWindow;

/**
 * A typed view over the bar properties of a command (kind, position, size, protection,
 * name), which live on the command as dynamic properties so that the description can set
 * them and clones copy them. Holds nothing but the command; writes to position, row, size and
 * protection are signalled to the main window given at construction, changed or not.
 */
class NORVIKOFFICEUI_EXPORT KCommandBarProp : public QObject
{
    Q_OBJECT
public:
    enum KCommandBarType { MenuBarType = 0, ToolBarType = 1, PopupMenuType = 2 };
    enum KCommandBarPosition { PosLeft = 0, PosTop = 1, PosRight = 2, PosBottom = 3, PosFloating = 4 };
    enum KCommandBarProtection { NotMovable = 4, DockNowhere = 16, DockTopBottom = 32, DockLeftRight = 64 };

    /// The window is not stored; its slots receive the signals while this object lives.
    KCommandBarProp(KCommand* cmd, KMainWindow* window);

    KCommand* command() const { return m_command; }

    void setType(int type);
    int getType() const;
    void setTemp(bool temp);
    bool getTemp() const;
    void setContext(const QString& context);
    QString getContext() const;
    void setName(const QString& name);
    /// The "name" property, or the command's id when there is none.
    QString getName() const;
    void setRowIndex(int row);
    int getRowIndex() const;
    void setPosition(int position);
    int getPosition() const;
    void setProtection(int protection);
    int getProtection() const;
    void setLeft(int left);
    int getLeft() const;
    void setTop(int top);
    int getTop() const;
    void setWidth(int width);
    int getWidth() const;
    void setHeight(int height);
    int getHeight() const;
    bool getCustom() const;

    void setVisible(bool visible);
    bool getVisible() const;
    void setEnable(bool enable);
    bool getEnbale() const;
    /// Sets the command's text, unless the description gave the bar a "caption".
    void setNameLocal(const QString& text);
    QString getNameLocal() const;
    QString getCmdID() const;

Q_SIGNALS:
    void posChanged(KCommand* cmd);
    void rowIndexChanged(KCommand* cmd);
    void rectChanged(KCommand* cmd);
    void protectionChanged(KCommand* cmd);

private:
    int _int(const char* name, int defaultValue) const;
    bool _bool(const char* name, bool defaultValue) const;
    QString _string(const char* name) const;
    /// Stores the property on the command and emits notify with it; nothing without a command.
    void _setAndNotify(const char* name, int value, void (KCommandBarProp::*notify)(KCommand*));

    KCommand* m_command;
};

#endif // KCOMMANDBARPROP_H
