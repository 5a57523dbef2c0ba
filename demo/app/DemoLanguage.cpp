#include "DemoLanguage.h"

#include "AlarmScreenTranslations.h"

QLocale DemoLanguage::localeFor(const QString &language)
{
    return language.isEmpty() ? QLocale::system() : QLocale(language);
}

bool DemoLanguage::apply(const QString &language, const MsgLoggingProducer *logger)
{
    const QLocale locale = localeFor(language);
    const bool ok = AlarmScreenTranslations::install(locale, logger) &&
                    AlarmScreenTranslations::installCatalogue(QStringLiteral("alarmscreen_demo"), locale, logger);
    // The menus in one language around a panel in another read worse than
    // English throughout.
    if (!ok)
        AlarmScreenTranslations::removeAll();
    return ok;
}
