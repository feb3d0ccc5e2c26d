#ifndef WRITERTIPS_H
#define WRITERTIPS_H

#include <QObject>
#include <QSet>
#include <QUrl>

class KCommand;
class WriterWindow;

/**
 * The rich tool tips of Norvik Writer's ribbon. The tip file (res/writer.tips.xml) keys its
 * tips by command id, so every command of the ribbon names the tip of its own id; a command
 * that the file has no tip for keeps its plain tool tip. The tips' help links
 * ("writerhelp:<section>") open the local help page shipped beside the program.
 */
class WriterTips : public QObject
{
    Q_OBJECT
public:
    explicit WriterTips(WriterWindow* window);
    ~WriterTips() override;

    /// The local help page and section that a "writerhelp:" link names.
    static QUrl helpPage(const QUrl& link);

public Q_SLOTS:
    /// Opens the help page of a "writerhelp:" link in the desktop's browser.
    void openHelp(const QUrl& link);

private:
    void _nameTips(KCommand* command, QSet<KCommand*>& seen);
};

#endif // WRITERTIPS_H
