#ifndef TESTS_EXAMPLES_WRITERTESTSUPPORT_H
#define TESTS_EXAMPLES_WRITERTESTSUPPORT_H

#include <ktestsupport.h>

#include <QScopedPointer>
#include <QStandardPaths>

#include <kapplication.h>
#include <ksettings.h>

#include "writerwindow.h"

namespace WriterTest {

/**
 * A Norvik Writer window made from the real description, as the program makes it, with the
 * settings an earlier run may have left (recent files, pins, the quick bar) cleared first.
 * Returns the warnings the description drew: a clean description draws none.
 */
inline QStringList makeWindow(QScopedPointer<WriterWindow>& window)
{
    QStandardPaths::setTestModeEnabled(true);
    for (const char* key : {"Writer/RecentFiles", "Writer/PinnedFiles", "Writer/QuickBar"})
        KSettings().remove(QLatin1String(key));
    KWarningCatcher warnings;
    if (!KApplication::instance()->setupXml(QStringLiteral(NORVIK_WRITER_UI_DIR "/writer.xml")))
        return {QStringLiteral("the description could not be read")};
    window.reset(new WriterWindow);
    window->polishXml();
    window->bindCommands();
    return warnings.messages();
}

} // namespace WriterTest

#endif // TESTS_EXAMPLES_WRITERTESTSUPPORT_H
