#pragma once

#include "DemoOptions.h"
#include "MsgLoggingProducer.h"

#include <QObject>
#include <QSharedPointer>
#include <QStringList>

#include <memory>

class DemoProject;
class MainWindow;
class MsgLoggerModel;

// Starts the demo from a command line: reads the options, opens the project,
// shows the main window, and takes care of --screenshot and --quit-after.
// The executable's main() and the end-to-end tests go through the same steps.
class DemoRunner : public QObject
{
    Q_OBJECT
public:
    explicit DemoRunner(QObject *parent = nullptr);
    ~DemoRunner() override;

    // False when the process is to end at once (help, bad options) with
    // getExitCode(); true when the window is up and the event loop should run.
    bool start(const QStringList &arguments, const QString &defaultProject);
    int getExitCode() const { return m_exitCode; }

    const DemoOptions &getOptions() const { return m_options; }
    DemoProject *getProject() const { return m_project.get(); }
    MainWindow *getWindow() const { return m_window.get(); }
    // The messages of every component (warnings and errors).
    QSharedPointer<MsgLoggerModel> getLog() const { return m_log; }

signals:
    void screenshotWritten(const QString &file);

private:
    void scheduleScreenshot();
    void writeScreenshot();
    void finish(int exitCode);

    MsgLoggingProducer m_logger;
    QSharedPointer<MsgLoggerModel> m_log;
    DemoOptions m_options;
    std::unique_ptr<DemoProject> m_project;
    std::unique_ptr<MainWindow> m_window;
    bool m_screenshotScheduled = false;
    int m_exitCode = 0;
};
