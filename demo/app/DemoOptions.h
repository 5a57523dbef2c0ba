#pragma once

#include <QCoreApplication>
#include <QString>
#include <QStringList>

// The demo's command line:
//   --project DIR      the project directory (config/, colorDB/, scripts/libs/, bin/plugins/)
//   --screenshot FILE  write a picture of the window once the first alarms are shown, then quit
//   --quit-after MS    quit after that many milliseconds
//   --lang LANGUAGE    the operator language (de, en, ...); the system's by default
class DemoOptions
{
    Q_DECLARE_TR_FUNCTIONS(DemoOptions)

public:
    // `defaultProject` is used when the command line names none.
    explicit DemoOptions(const QString &defaultProject = QString());

    // Reads the arguments (the first one is the program name). False with
    // `error` for an unknown option, a missing value or a bad number; --help
    // sets isHelpRequested() and succeeds.
    bool parse(const QStringList &arguments, QString &error);

    QString getProjectDir() const { return m_projectDir; }
    QString getScreenshotFile() const { return m_screenshotFile; }
    // 0: no limit.
    int getQuitAfterMs() const { return m_quitAfterMs; }
    // Empty: follow the system locale.
    QString getLanguage() const { return m_language; }
    bool isHelpRequested() const { return m_helpRequested; }

    static QString helpText();

private:
    QString m_projectDir;
    QString m_screenshotFile;
    int m_quitAfterMs = 0;
    QString m_language;
    bool m_helpRequested = false;
};
