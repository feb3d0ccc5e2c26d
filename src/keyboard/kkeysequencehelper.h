#ifndef KKEYSEQUENCEHELPER_H
#define KKEYSEQUENCEHELPER_H

#include <QString>
#include <Qt>

#include <norvikofficeui_export.h>

/**
 * Turns a key with its modifiers into text and back, in two forms: the display form
 * ("Ctrl + Shift + Page Up") and the store form ("Shift+Ctrl+PgUp"), which
 * stringToKeyAndModifiers() reads back. Keys without a name give an empty text.
 */
class NORVIKOFFICEUI_EXPORT KKeySequenceHelper
{
public:
    /// A shifted sign back to its key on a United States keyboard ("!" to "1", ...).
    static void recoverFromShift(int& key);
    /// The keypad key of a native scan code (71 to 83); empty for any other.
    static QString mapRightKeyNumForDisplay(int scanCode);
    static QString mapKeyToStrForDisplay(int key);
    static QString mapKeyToStrForStore(int key);
    /// Reads the store form; false (key 0, no modifiers) when the key has no name.
    static bool stringToKeyAndModifiers(const QString& text, int& key, Qt::KeyboardModifiers& modifiers);
    /// The store form read into one combined key code; 0 when it can't be read.
    static int stringToKey(const QString& text);
    static QString mapModifiersToStrForStore(Qt::KeyboardModifiers modifiers, int key);
    static QString mapModifiersToStrForDisplay(Qt::KeyboardModifiers modifiers, int key);
    /// The store form of key with modifiers.
    static QString keyAndModifiersToString(int key, Qt::KeyboardModifiers modifiers);
    /**
     * Makes a pressed key a shortcut key: the shifted sign goes back to its key, a key with
     * neither Ctrl nor Alt (not F1 to F12, no keypad digit) takes Alt instead of Shift, and a
     * few keys that can't be shortcuts become 0.
     */
    static void processOrgKey(int& key, int& scanCode, Qt::KeyboardModifiers& modifiers);
    /// Whether "Num " stands before key with these modifiers.
    static bool isNumPadKey(int key, Qt::KeyboardModifiers modifiers);
};

#endif // KKEYSEQUENCEHELPER_H
