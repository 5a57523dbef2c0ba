#pragma once

#include "Resources.h"

#include <QDir>
#include <QFile>
#include <QTemporaryDir>

// Writes `content` to `relative` below `dir`, making directories.
inline QString writeProjectFile(const QTemporaryDir &dir, const QString &relative, const QByteArray &content)
{
    const QString file = dir.filePath(relative);
    QDir().mkpath(QFileInfo(file).absolutePath());
    QFile out(file);
    if (!out.open(QIODevice::WriteOnly | QIODevice::Truncate) || out.write(content) != content.size())
        qFatal("cannot write %s", qPrintable(file));
    return file;
}

// A throw-away project directory that is the only project path while it lives.
class TestProject
{
public:
    TestProject()
    {
        m_previous = Resources::getProjectPaths();
        Resources::setProjectPaths({m_dir.path()});
    }
    ~TestProject() { Resources::setProjectPaths(m_previous); }
    TestProject(const TestProject &) = delete;
    TestProject &operator=(const TestProject &) = delete;

    QString path() const { return m_dir.path(); }

    QString write(const QString &relative, const QByteArray &content) const
    {
        return writeProjectFile(m_dir, relative, content);
    }

private:
    QTemporaryDir m_dir;
    QStringList m_previous;
};
