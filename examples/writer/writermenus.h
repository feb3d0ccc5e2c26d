#ifndef WRITERMENUS_H
#define WRITERMENUS_H

#include <QObject>

class WriterWindow;

/**
 * What the classic form's Window and Help menus do: walk, arrange and close the documents,
 * open the help page, show the program's name and version. The commands exist in both forms;
 * the ribbon simply doesn't show them.
 */
class WriterMenuActions : public QObject
{
    Q_OBJECT
public:
    explicit WriterMenuActions(WriterWindow* window);

    /// The text of the About box.
    static QString aboutText();

private:
    WriterWindow* m_window;
};

#endif // WRITERMENUS_H
