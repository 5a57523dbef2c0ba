#include "AlarmScreenTranslations.h"

#include "MsgLoggingProducer.h"

#include <QCoreApplication>
#include <QDir>
#include <QFileInfo>
#include <QHash>
#include <QPointer>
#include <QTranslator>

#include <dlfcn.h>

#include <memory>
#include <utility>
#include <vector>

namespace {

// The catalogues install() stands for, in the order of the layers.
const char *const LibraryCatalogues[] = {"alarmscreen_model", "alarmscreen_widgets"};

// One translator per catalogue name, owned by the application object; the
// guarded pointer notices an application that went away with it.
QHash<QString, QPointer<QTranslator>> &installed()
{
    static QHash<QString, QPointer<QTranslator>> translators;
    return translators;
}

void remove(const QString &catalogue)
{
    const QPointer<QTranslator> translator = installed().take(catalogue);
    if (translator) {
        QCoreApplication::removeTranslator(translator);
        delete translator;
    }
}

// An object inside this library: dladdr() names the file it was loaded from.
const char LibraryAnchor = 0;

QString libraryDirectory()
{
    Dl_info info{};
    if (dladdr(&LibraryAnchor, &info) == 0 || !info.dli_fname)
        return QString();
    return QFileInfo(QFile::decodeName(info.dli_fname)).canonicalPath();
}

QTranslator *loadCatalogue(const QString &catalogue, const QLocale &locale, const QStringList &dirs)
{
    auto translator = std::make_unique<QTranslator>();
    for (const QString &dir : dirs) {
        // Tries the locale's UI languages, each from the most specific name
        // (de_AT) down to the language alone (de).
        if (translator->load(locale, catalogue, QStringLiteral("_"), dir))
            return translator.release();
    }
    return nullptr;
}

// All or nothing: a panel half in one language and half in another reads worse
// than one in English.
bool installCatalogues(const QStringList &catalogues, const QLocale &locale, const MsgLoggingProducer *logger,
                       const QStringList &directories)
{
    const MsgLoggingProducer defaults;
    const MsgLoggingProducer *log = logger ? logger : &defaults;
    for (const QString &catalogue : catalogues)
        remove(catalogue);
    if (AlarmScreenTranslations::isSourceLanguage(locale))
        return true;
    if (!QCoreApplication::instance()) {
        ASLOG(log, MsgLoggerEnums::Warning,
              QStringLiteral("no application object to install the translation %1 into; the texts stay English")
                  .arg(locale.name()));
        return false;
    }

    const QStringList dirs =
        directories.isEmpty() ? AlarmScreenTranslations::translationDirectories() : directories;
    std::vector<std::pair<QString, std::unique_ptr<QTranslator>>> loaded;
    for (const QString &catalogue : catalogues) {
        std::unique_ptr<QTranslator> translator(loadCatalogue(catalogue, locale, dirs));
        if (!translator) {
            ASLOG(log, MsgLoggerEnums::Warning,
                  QStringLiteral("no translation %1 for %2 in '%3'; the texts stay English")
                      .arg(catalogue, locale.name(), dirs.join(QStringLiteral("', '"))));
            return false;
        }
        loaded.emplace_back(catalogue, std::move(translator));
    }
    for (auto &entry : loaded) {
        QTranslator *translator = entry.second.release();
        translator->setParent(QCoreApplication::instance());
        QCoreApplication::installTranslator(translator);
        installed().insert(entry.first, translator);
        ASLOG(log, MsgLoggerEnums::Trace, QStringLiteral("translation installed from %1").arg(translator->filePath()));
    }
    return true;
}

} // namespace

bool AlarmScreenTranslations::isSourceLanguage(const QLocale &locale)
{
    return locale.language() == QLocale::English || locale.language() == QLocale::C;
}

QStringList AlarmScreenTranslations::translationDirectories()
{
    QStringList result;
    const QString libDir = libraryDirectory();
    if (libDir.isEmpty())
        return result;
    result << QDir::cleanPath(QDir(libDir).filePath(QStringLiteral(AS_TRANSLATIONS_FROM_LIBDIR)));
    // The build tree's folder only for the library that was built there, so
    // that an installed copy never picks up catalogues of some old build.
    if (libDir == QFileInfo(QStringLiteral(AS_WIDGETS_BUILD_DIR)).canonicalFilePath())
        result << QStringLiteral(AS_TRANSLATIONS_BUILD_DIR);
    return result;
}

bool AlarmScreenTranslations::install(const QLocale &locale, const MsgLoggingProducer *logger,
                                      const QStringList &directories)
{
    QStringList catalogues;
    for (const char *name : LibraryCatalogues)
        catalogues << QLatin1String(name);
    return installCatalogues(catalogues, locale, logger, directories);
}

bool AlarmScreenTranslations::installCatalogue(const QString &catalogue, const QLocale &locale,
                                               const MsgLoggingProducer *logger, const QStringList &directories)
{
    return installCatalogues(QStringList{catalogue}, locale, logger, directories);
}

void AlarmScreenTranslations::removeAll()
{
    const QStringList names = installed().keys();
    for (const QString &catalogue : names)
        remove(catalogue);
}
