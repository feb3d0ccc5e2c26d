#ifndef KAPPTRANSLATORS_H
#define KAPPTRANSLATORS_H

#include <QVector>

#include <norvikofficeui_export.h>

class QTranslator;

/**
 * The translators of the program: "qt.qm" and "<applicationName>.qm" from the folder named
 * by the application's language number beside the program ("2052", "1033", ...). A member
 * of the application; setup() must run before the description is read for its "@" texts to
 * come up translated.
 */
class NORVIKOFFICEUI_EXPORT KAppTranslators
{
public:
    KAppTranslators();
    ~KAppTranslators();
    KAppTranslators(const KAppTranslators&) = delete;
    KAppTranslators& operator=(const KAppTranslators&) = delete;

    /// Installs every file that loads; a missing file is no error. Always true.
    bool setup();
    /// Removes and deletes the installed translators.
    void reset();
    int count() const { return m_translators.size(); }

private:
    QVector<QTranslator*> m_translators;
};

#endif // KAPPTRANSLATORS_H
