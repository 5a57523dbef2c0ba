#pragma once

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QTemporaryDir>

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

    QString path() const { return m_dir.path(); }

    void write(const QString &relative, const QByteArray &content) const
    {
        const QString file = m_dir.filePath(relative);
        QDir().mkpath(QFileInfo(file).absolutePath());
        QFile out(file);
        if (!out.open(QIODevice::WriteOnly | QIODevice::Truncate) || out.write(content) != content.size())
            qFatal("cannot write %s", qPrintable(file));
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
