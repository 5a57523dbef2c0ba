#pragma once

#include "widgets_export.h"

#include <QLocale>
#include <QString>
#include <QStringList>

class MsgLoggingProducer;

// Operator-language catalogues of the libraries and of programs built on them.
//
// The texts are written in English; a catalogue <name>_<language>.qm (compiled
// by the build from the .ts sources in the tree) holds another language. A host
// calls install() once, before it builds the panel: widgets take their texts
// when they are built. Log lines stay English whatever the language.
//
// GUI thread only; the translators belong to the application object.
class WIDGETS_EXPORT AlarmScreenTranslations
{
public:
    // Installs the catalogues of the alarm model library and of the component
    // library for `locale`'s language into the application, replacing those of
    // an earlier call. English (and the C locale) needs no catalogue: what an
    // earlier call installed is removed and the result is true. A missing or
    // unreadable catalogue is logged through `logger` (or the default producer),
    // leaves the texts English and gives false. `directories` replaces the
    // places searched (see translationDirectories()) when it is not empty.
    static bool install(const QLocale &locale, const MsgLoggingProducer *logger = nullptr,
                        const QStringList &directories = QStringList());

    // The same for one catalogue, for example a program's own ("alarmscreen_demo").
    static bool installCatalogue(const QString &catalogue, const QLocale &locale,
                                 const MsgLoggingProducer *logger = nullptr,
                                 const QStringList &directories = QStringList());

    // Removes every catalogue installed through this class: English again.
    static void removeAll();

    // Where catalogues are looked for, first match wins: share/alarmscreen/
    // translations of the prefix the library is installed in, then the build
    // tree's translations folder while the library runs from its build tree.
    static QStringList translationDirectories();

    // True when `locale` asks for the language the texts are written in.
    static bool isSourceLanguage(const QLocale &locale);
};
