#include "DemoRunner.h"

#include "DemoLanguage.h"
#include "DemoProject.h"
#include "MainWindow.h"
#include "MsgLoggerModel.h"

#include <QCoreApplication>
#include <QDir>
#include <QFileInfo>
#include <QPixmap>
#include <QTextStream>
#include <QTimer>

namespace {
// Time given to the window after the first alarms arrived, so that the
// picture shows a settled table and a few live changes.
constexpr int ScreenshotDelayMs = 1500;
// A project whose systems have no alarms still gets its picture.
constexpr int ScreenshotFallbackMs = 15000;
} // namespace

DemoRunner::DemoRunner(QObject *parent)
    : QObject(parent), m_log(QSharedPointer<MsgLoggerModel>::create())
{
    m_logger.setLogBuffer(m_log);
}

DemoRunner::~DemoRunner() = default;

bool DemoRunner::start(const QStringList &arguments, const QString &defaultProject)
{
    QTextStream out(stdout);
    QTextStream err(stderr);
    m_options = DemoOptions(defaultProject);
    QString error;
    if (!m_options.parse(arguments, error)) {
        err << error << '\n' << DemoOptions::helpText();
        m_exitCode = 2;
        return false;
    }
    // Before anything shows a text, the help included.
    DemoLanguage::apply(m_options.getLanguage(), &m_logger);
    if (m_options.isHelpRequested()) {
        out << DemoOptions::helpText();
        m_exitCode = 0;
        return false;
    }

    m_project = std::make_unique<DemoProject>(&m_logger);
    m_project->open(m_options.getProjectDir());
    m_window = std::make_unique<MainWindow>(*m_project, &m_logger);
    m_window->show();

    if (!m_options.getScreenshotFile().isEmpty()) {
        if (m_window->hasShownAlarms())
            scheduleScreenshot();
        else
            connect(m_window.get(), &MainWindow::firstAlarmsShown, this, &DemoRunner::scheduleScreenshot);
        QTimer::singleShot(ScreenshotFallbackMs, this, &DemoRunner::scheduleScreenshot);
    }
    if (m_options.getQuitAfterMs() > 0)
        QTimer::singleShot(m_options.getQuitAfterMs(), this, [this] { finish(0); });
    return true;
}

void DemoRunner::scheduleScreenshot()
{
    if (m_screenshotScheduled)
        return;
    m_screenshotScheduled = true;
    QTimer::singleShot(ScreenshotDelayMs, this, &DemoRunner::writeScreenshot);
}

void DemoRunner::writeScreenshot()
{
    const QString file = QFileInfo(m_options.getScreenshotFile()).absoluteFilePath();
    QDir().mkpath(QFileInfo(file).absolutePath());
    if (!m_window->grab().save(file, "PNG")) {
        QTextStream(stderr) << tr("cannot write the screenshot %1").arg(file) << '\n';
        finish(1);
        return;
    }
    QTextStream(stdout) << tr("Screenshot written to %1").arg(file) << '\n';
    emit screenshotWritten(file);
    finish(0);
}

void DemoRunner::finish(int exitCode)
{
    m_exitCode = exitCode;
    if (m_window)
        m_window->close();
    QCoreApplication::exit(exitCode);
}
