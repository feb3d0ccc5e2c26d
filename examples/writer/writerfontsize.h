#ifndef WRITERFONTSIZE_H
#define WRITERFONTSIZE_H

#include <kcomboboxcommand.h>

class QTextEdit;

/**
 * The Font Size box of the Home tab: shows the size at the editor's cursor and sets the size
 * of the selection to the one picked or typed. While a user types in the box the cursor's
 * size waits; a typed text that is no size from 1 to 1638 points puts the cursor's size back.
 */
class WriterFontSizeCommand : public KComboBoxCommand
{
    Q_OBJECT
public:
    Q_INVOKABLE WriterFontSizeCommand(QObject* host, QObject* parent);

    /// Follows the cursor, unless a box of the command is being edited.
    void update() override;

    /// The point size of the text at the cursor.
    static qreal sizeAtCursor(const QTextEdit* editor);
    /// How a size shows in the box: "12", "10.5".
    static QString sizeText(qreal size);

protected:
    void onTriggered() override;

private:
    QTextEdit* _editor() const;
};

#endif // WRITERFONTSIZE_H
