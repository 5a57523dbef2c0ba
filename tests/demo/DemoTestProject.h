#pragma once

#include "TestProject.h"

#include <memory>

// A copy of the demo project in a temporary directory, to be spoilt by a test.
class DemoTestProject
{
public:
    // `from`: the project to copy (empty: start from nothing).
    explicit DemoTestProject(const QString &from)
    {
        if (!from.isEmpty())
            copyTree(QDir(from), QDir(m_dir.path()));
    }

    // A copy of the demo project without its datapoints, which the
    // process-wide datapoint store accepts only once.
    static std::unique_ptr<DemoTestProject> withoutDatapoints()
    {
        auto project = std::make_unique<DemoTestProject>(qEnvironmentVariable("AS_DEMO_PROJECT"));
        project->remove(QStringLiteral("config/datapoints.json"));
        return project;
    }

    QString path() const { return m_dir.path(); }

    void write(const QString &relative, const QByteArray &content) const { writeProjectFile(m_dir, relative, content); }

    // Replaces the screen configuration by one of the current format with `keys`.
    void writeConfiguration(const QByteArray &keys) const
    {
        write(QStringLiteral("config/alarmscreen.json"),
              "{\"format\": \"AlarmScreen.Configuration\", \"version\": 1, " + keys + "}");
    }

    void remove(const QString &relative) const
    {
        const QFileInfo info(m_dir.filePath(relative));
        if (info.isDir())
            QDir(info.filePath()).removeRecursively();
        else
            QFile::remove(info.filePath());
    }

private:
    static void copyTree(const QDir &from, const QDir &to)
    {
        to.mkpath(QStringLiteral("."));
        for (const QFileInfo &entry : from.entryInfoList(QDir::AllEntries | QDir::NoDotAndDotDot | QDir::Hidden)) {
            if (entry.isDir())
                copyTree(QDir(entry.filePath()), QDir(to.filePath(entry.fileName())));
            else
                QFile::copy(entry.filePath(), to.filePath(entry.fileName()));
        }
    }

    QTemporaryDir m_dir;
};
