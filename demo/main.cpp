#include "DemoRunner.h"

#include <QApplication>
#include <QDir>
#include <QFileInfo>

int main(int argc, char *argv[])
{
    QApplication app(argc, argv);
    QApplication::setApplicationName(QStringLiteral("alarmscreen-demo"));

    // The build puts a copy of the demo project beside the executable.
    QString project = QDir(QApplication::applicationDirPath()).filePath(QStringLiteral("project"));
    if (!QFileInfo::exists(project))
        project = QStringLiteral(AS_DEMO_DEFAULT_PROJECT);

    DemoRunner runner;
    if (!runner.start(QApplication::arguments(), project))
        return runner.getExitCode();
    return QApplication::exec();
}
