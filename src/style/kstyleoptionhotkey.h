#ifndef KSTYLEOPTIONHOTKEY_H
#define KSTYLEOPTIONHOTKEY_H

#include <QStyleOption>

#include <norvikofficeui_export.h>

/**
 * One key-tip label for the style (control element KORBStyle::KCE_HotKeyItem): the key in
 * the option's rectangle, with the part already typed set apart from the rest. The state
 * flag State_Enabled says whether the label can still be fired.
 */
class NORVIKOFFICEUI_EXPORT KStyleOptionHotKey : public QStyleOption
{
public:
    enum StyleOptionType { Type = SO_CustomBase + 40 };
    enum StyleOptionVersion { Version = 1 };

    KStyleOptionHotKey()
        : QStyleOption(Version, Type)
    {
    }

    QString key;   ///< the whole key text
    QString typed; ///< what was typed so far (a prefix of key, without regard to case)
};

#endif // KSTYLEOPTIONHOTKEY_H
