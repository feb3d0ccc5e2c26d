#include "kkeysequencehelper.h"

#include <QStringList>

namespace {

struct KeyName
{
    int key;
    const char* display;
    const char* store;
};

// Named keys, in the order of Qt's key codes.
const KeyName s_names[] = {
    {Qt::Key_Delete, "Del", "Del"},
    {Qt::Key_Insert, "Insert", "Ins"},
    {Qt::Key_Pause, "Pause", "Pause"},
    {Qt::Key_Clear, "Clear", "Clear"},
    {Qt::Key_Home, "Home", "Home"},
    {Qt::Key_End, "End", "End"},
    {Qt::Key_Left, "Left", "Left"},
    {Qt::Key_Up, "Up", "Up"},
    {Qt::Key_Right, "Right", "Right"},
    {Qt::Key_Down, "Down", "Down"},
    {Qt::Key_PageUp, "Page Up", "PgUp"},
    {Qt::Key_PageDown, "Page Down", "PgDn"},
    {Qt::Key_CapsLock, "Caps Lock", "Caps Lock"},
    {Qt::Key_NumLock, "Num Lock", "Num Lock"},
    {Qt::Key_ScrollLock, "Scroll Lock", "Scroll Lock"},
    {Qt::Key_Cancel, nullptr, "Cancel"},
};

// Printable keys name themselves: signs, digits and capital letters (Qt's codes are ASCII).
bool isSign(int key)
{
    return key >= 0x21 && key <= 0x7e && !(key >= 'a' && key <= 'z');
}

bool isFunctionKey(int key)
{
    return key >= Qt::Key_F1 && key <= Qt::Key_F12;
}

bool isNavigationKey(int key)
{
    return key >= Qt::Key_Clear && key <= Qt::Key_PageDown;
}

QString nameOf(int key, bool store)
{
    for (const KeyName& n : s_names) {
        if (n.key == key) {
            const char* text = store ? n.store : n.display;
            return text ? QString::fromLatin1(text) : QString();
        }
    }
    if (isFunctionKey(key))
        return QLatin1Char('F') + QString::number(key - Qt::Key_F1 + 1);
    if (isSign(key))
        return QString(QChar(key));
    return QString();
}

} // namespace

void KKeySequenceHelper::recoverFromShift(int& key)
{
    // The United States layout. The pairs of '"' with the backquote and of '~' with the
    // apostrophe are crossed against a real keyboard; existing stored keys rely on them.
    static const struct
    {
        int from;
        int to;
    } s_shifted[] = {{'!', '1'}, {'"', '`'}, {'#', '3'}, {'$', '4'}, {'%', '5'}, {'&', '7'}, {'(', '9'},
                     {')', '0'}, {'*', '8'}, {'+', '='}, {':', ';'}, {'<', ','}, {'>', '.'}, {'?', '/'},
                     {'@', '2'}, {'^', '6'}, {'_', '-'}, {'{', '['}, {'|', '\\'}, {'}', ']'}, {'~', '\''}};
    for (const auto& pair : s_shifted) {
        if (pair.from == key) {
            key = pair.to;
            return;
        }
    }
}

QString KKeySequenceHelper::mapRightKeyNumForDisplay(int scanCode)
{
    switch (scanCode) {
    case 71: return QStringLiteral("7");
    case 72: return QStringLiteral("8");
    case 73: return QStringLiteral("9");
    case 75: return QStringLiteral("4");
    case 76: return QStringLiteral("5");
    case 77: return QStringLiteral("6");
    case 78: return QStringLiteral("+");
    case 79: return QStringLiteral("1");
    case 80: return QStringLiteral("2");
    case 81: return QStringLiteral("3");
    case 82: return QStringLiteral("0");
    case 83: return QStringLiteral("Del");
    default: return QString();
    }
}

QString KKeySequenceHelper::mapKeyToStrForDisplay(int key)
{
    return nameOf(key, false);
}

QString KKeySequenceHelper::mapKeyToStrForStore(int key)
{
    return nameOf(key, true);
}

bool KKeySequenceHelper::isNumPadKey(int key, Qt::KeyboardModifiers modifiers)
{
    if (!(modifiers & Qt::KeypadModifier))
        return false;
    return (key >= Qt::Key_0 && key <= Qt::Key_9) || key == Qt::Key_Plus || key == Qt::Key_Minus
           || key == Qt::Key_Asterisk || key == Qt::Key_Slash || key == Qt::Key_Period || key == Qt::Key_Delete;
}

QString KKeySequenceHelper::mapModifiersToStrForStore(Qt::KeyboardModifiers modifiers, int key)
{
    QString text;
    const QString ctrl = (modifiers & Qt::ControlModifier) ? QStringLiteral("Ctrl+") : QString();
    const QString shift = (modifiers & Qt::ShiftModifier) ? QStringLiteral("Shift+") : QString();
    if (isNavigationKey(key))
        text = shift + ctrl;
    else
        text = ctrl + shift;
    if (modifiers & Qt::AltModifier)
        text += QStringLiteral("Alt+");
    if (isNumPadKey(key, modifiers))
        text += QStringLiteral("Num ");
    return text;
}

QString KKeySequenceHelper::mapModifiersToStrForDisplay(Qt::KeyboardModifiers modifiers, int key)
{
    QString text;
    if (modifiers & Qt::ControlModifier)
        text += QStringLiteral("Ctrl + ");
    if (modifiers & Qt::ShiftModifier)
        text += QStringLiteral("Shift + ");
    if (modifiers & Qt::AltModifier)
        text += QStringLiteral("Alt + ");
    if (isNumPadKey(key, modifiers))
        text += QStringLiteral("Num ");
    return text;
}

QString KKeySequenceHelper::keyAndModifiersToString(int key, Qt::KeyboardModifiers modifiers)
{
    return mapModifiersToStrForStore(modifiers, key) + mapKeyToStrForStore(key);
}

bool KKeySequenceHelper::stringToKeyAndModifiers(const QString& text, int& key, Qt::KeyboardModifiers& modifiers)
{
    key = 0;
    modifiers = Qt::NoModifier;
    QString rest = text;
    Qt::KeyboardModifiers mods;
    for (;;) {
        if (rest.startsWith(QLatin1String("Ctrl+"))) {
            mods |= Qt::ControlModifier;
            rest.remove(0, 5);
        } else if (rest.startsWith(QLatin1String("Shift+"))) {
            mods |= Qt::ShiftModifier;
            rest.remove(0, 6);
        } else if (rest.startsWith(QLatin1String("Alt+"))) {
            mods |= Qt::AltModifier;
            rest.remove(0, 4);
        } else if (rest.startsWith(QLatin1String("Num ")) && !rest.startsWith(QLatin1String("Num Lock"))) {
            mods |= Qt::KeypadModifier;
            rest.remove(0, 4);
        } else {
            break;
        }
    }
    if (rest.isEmpty())
        return false;
    if (rest == QLatin1String("PgDown"))
        rest = QStringLiteral("PgDn");
    int found = 0;
    for (const KeyName& n : s_names) {
        if (rest == QLatin1String(n.store)) {
            found = n.key;
            break;
        }
    }
    if (!found && rest.size() > 1 && rest.at(0) == QLatin1Char('F')) {
        bool ok = false;
        const int n = rest.mid(1).toInt(&ok);
        if (ok && n >= 1 && n <= 12)
            found = Qt::Key_F1 + n - 1;
    }
    if (!found && rest.size() == 1 && isSign(rest.at(0).unicode()))
        found = rest.at(0).unicode();
    if (!found)
        return false;
    key = found;
    modifiers = mods;
    return true;
}

int KKeySequenceHelper::stringToKey(const QString& text)
{
    int key = 0;
    Qt::KeyboardModifiers modifiers;
    if (!stringToKeyAndModifiers(text, key, modifiers))
        return 0;
    return key | int(modifiers);
}

void KKeySequenceHelper::processOrgKey(int& key, int& scanCode, Qt::KeyboardModifiers& modifiers)
{
    Q_UNUSED(scanCode);
    const bool keypad = modifiers & Qt::KeypadModifier;
    if (!keypad)
        recoverFromShift(key);
    // A shortcut needs a modifier: a bare key is taken as Alt and the key.
    const bool keypadDigit = keypad && key >= Qt::Key_0 && key <= Qt::Key_9;
    if (!(modifiers & (Qt::ControlModifier | Qt::AltModifier)) && !isFunctionKey(key) && !keypadDigit) {
        modifiers &= ~Qt::ShiftModifier;
        modifiers |= Qt::AltModifier;
    }
    const bool ctrl = modifiers & Qt::ControlModifier;
    if (key == Qt::Key_Cancel && ctrl)
        key = Qt::Key_ScrollLock;
    if (key == Qt::Key_Pause) {
        if (ctrl && (modifiers & (Qt::ShiftModifier | Qt::AltModifier)))
            key = Qt::Key_ScrollLock;
        else
            key = 0;
    }
    if (key == Qt::Key_Delete && !keypad)
        key = 0;
    if (keypad && ((key >= Qt::Key_Clear && key <= Qt::Key_PageDown) || key == Qt::Key_Insert))
        modifiers &= ~Qt::KeypadModifier;
}
