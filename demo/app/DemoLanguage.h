#pragma once

#include <QLocale>
#include <QString>

class MsgLoggingProducer;

// The demo's operator language: the component library's catalogues and the
// demo's own, installed before the window is built.
class DemoLanguage
{
public:
    // The locale `--lang` asks for; an empty value means the system's.
    static QLocale localeFor(const QString &language);

    // Installs both catalogues for `language`. A language without catalogues
    // is logged through `logger` and leaves the demo in English; false then.
    static bool apply(const QString &language, const MsgLoggingProducer *logger);
};
