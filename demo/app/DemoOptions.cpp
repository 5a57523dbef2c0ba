#include "DemoOptions.h"

#include <QLocale>


DemoOptions::DemoOptions(const QString &defaultProject) : m_projectDir(defaultProject) {}

bool DemoOptions::parse(const QStringList &arguments, QString &error)
{
    // Parsed by hand rather than with QCommandLineParser, which exits the
    // process on --help and on errors instead of reporting them.
    DemoOptions read(*this);
    for (int i = 1; i < arguments.size(); ++i) {
        const QString &arg = arguments.at(i);
        if (arg == QLatin1String("--help") || arg == QLatin1String("-h")) {
            read.m_helpRequested = true;
            continue;
        }
        const bool takesValue = arg == QLatin1String("--project") || arg == QLatin1String("--screenshot") ||
                                arg == QLatin1String("--quit-after") || arg == QLatin1String("--lang");
        if (!takesValue) {
            error = tr("unknown option '%1'").arg(arg);
            return false;
        }
        if (i + 1 >= arguments.size() || arguments.at(i + 1).isEmpty()) {
            error = tr("option '%1' needs a value").arg(arg);
            return false;
        }
        const QString value = arguments.at(++i);
        if (arg == QLatin1String("--project")) {
            read.m_projectDir = value;
        } else if (arg == QLatin1String("--screenshot")) {
            read.m_screenshotFile = value;
        } else if (arg == QLatin1String("--lang")) {
            // QLocale turns any name it does not know into the C locale.
            if (QLocale(value).language() == QLocale::C && value != QLatin1String("C")) {
                error = tr("'--lang' needs a language such as de or en, not '%1'").arg(value);
                return false;
            }
            read.m_language = value;
        } else {
            bool ok = false;
            const int ms = value.toInt(&ok);
            if (!ok || ms <= 0) {
                error = tr("'--quit-after' needs a positive number of "
                                                    "milliseconds, not '%1'")
                            .arg(value);
                return false;
            }
            read.m_quitAfterMs = ms;
        }
    }
    *this = read;
    return true;
}

QString DemoOptions::helpText()
{
    return tr("Usage: alarmscreen-demo [--project DIR] [--screenshot FILE] [--quit-after MS] [--lang LANGUAGE]\n"
        "  --project DIR      project directory (config/, colorDB/, scripts/libs/, bin/plugins/)\n"
        "  --screenshot FILE  write a PNG of the window once the first alarms are shown, then quit\n"
        "  --quit-after MS    quit after MS milliseconds\n"
        "  --lang LANGUAGE    operator language, e.g. de or en (default: the system's)\n");
}
