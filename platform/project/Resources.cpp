#include "Resources.h"

#include "FileSysSlim.h"

#include <QDir>
#include <QFileInfo>

QStringList Resources::pathes_;
QString Resources::s_basePath;

namespace {
QString withTrailingSeparator(const QString &path)
{
    if (path.isEmpty() || path.endsWith(QLatin1Char(FileSysSlim::PATH_CHAR)))
        return path;
    return path + QLatin1Char(FileSysSlim::PATH_CHAR);
}
} // namespace

void Resources::setProjectPaths(const QStringList &paths)
{
    pathes_.clear();
    for (const QString &p : paths) {
        if (!p.isEmpty())
            pathes_.append(withTrailingSeparator(QDir::fromNativeSeparators(p)));
    }
}

const QStringList &Resources::getProjectPaths()
{
    return pathes_;
}

void Resources::setBasePath(const QString &path)
{
    s_basePath = withTrailingSeparator(QDir::fromNativeSeparators(path));
}

const QString &Resources::getBasePath()
{
    return s_basePath;
}

QString Resources::findFile(const QString &relativeFile)
{
    for (int i = pathes_.size() - 1; i >= 0; --i) {
        const QFileInfo info(pathes_.at(i) + relativeFile);
        if (info.isFile())
            return info.absoluteFilePath();
    }
    return QString();
}

void Resources::setFromArguments(const QStringList &arguments)
{
    QStringList projects;
    for (int i = 0; i + 1 < arguments.size(); ++i) {
        if (arguments.at(i) == QLatin1String("-proj"))
            projects.append(arguments.at(++i));
        else if (arguments.at(i) == QLatin1String("-base"))
            setBasePath(arguments.at(++i));
    }
    if (!projects.isEmpty())
        setProjectPaths(projects);
}
