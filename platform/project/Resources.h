#pragma once

#include "platform_export.h"

#include <QString>
#include <QStringList>

// The project paths of the running platform project, as the host configured
// them. The list is ordered as configured: sub-projects first, the project
// itself last; searches go from the last entry to the first. The base path
// (the installation directory) is searched only where a caller says so.
class PLATFORM_EXPORT Resources
{
public:
    // Project paths; each ends with the path separator.
    static QStringList pathes_;

    static void setProjectPaths(const QStringList &paths);
    static const QStringList &getProjectPaths();
    static void setBasePath(const QString &path);
    // Takes the paths from a host's command line: every "-proj <dir>" adds a
    // project path (in the order given), "-base <dir>" sets the base path;
    // other arguments are left alone. Paths are set only when given.
    static void setFromArguments(const QStringList &arguments);
    static const QString &getBasePath();

    // Finds `relativeFile` (for example "scripts/libs/x.js") along the project
    // paths, last configured path first. Empty when not found.
    static QString findFile(const QString &relativeFile);

private:
    static QString s_basePath;
};
