#include "kapptranslators.h"

#include <QCoreApplication>
#include <QTranslator>

#include <kapplication.h>

KAppTranslators::KAppTranslators() = default;

KAppTranslators::~KAppTranslators()
{
    reset();
}

bool KAppTranslators::setup()
{
    KApplication* app = KApplication::instance();
    const int language = app ? app->currentLanguage() : -1;
    const QString folder = QCoreApplication::applicationDirPath() + QLatin1Char('/')
        + QString::number(language, 10);
    const QStringList files = {QStringLiteral("qt.qm"),
                               QCoreApplication::applicationName() + QStringLiteral(".qm")};
    for (const QString& file : files) {
        auto* translator = new QTranslator;
        if (translator->load(file, folder)) {
            m_translators.append(translator);
            QCoreApplication::installTranslator(translator);
        } else {
            delete translator;
        }
    }
    return true;
}

void KAppTranslators::reset()
{
    for (QTranslator* translator : std::as_const(m_translators)) {
        QCoreApplication::removeTranslator(translator);
        delete translator;
    }
    m_translators.clear();
}
