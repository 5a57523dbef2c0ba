// Loaded into the demo executable with LD_PRELOAD by the end-to-end test:
// once the application runs, it plays DemoScenario in it as a QtTest run and
// ends the application with the number of failed checks as exit code.

#include "DemoScenario.h"

#include <QApplication>
#include <QTest>
#include <QTimer>
#include <QWidget>

#include <algorithm>

namespace {

void runScenarioWhenShown()
{
    // Polls until the demo has put up its main window.
    const QWidgetList tops = QApplication::topLevelWidgets();
    const bool shown = std::any_of(tops.begin(), tops.end(), [](QWidget *w) { return w->isVisible(); });
    if (!shown) {
        QTimer::singleShot(50, qApp, runScenarioWhenShown);
        return;
    }
    DemoScenario scenario;
    const int failures = QTest::qExec(&scenario, QStringList{QStringLiteral("demo-scenario")});
    QCoreApplication::exit(failures == 0 ? 0 : 100 + failures);
}

void installScenario()
{
    if (!qobject_cast<QApplication *>(QCoreApplication::instance()))
        return;
    QTimer::singleShot(0, qApp, runScenarioWhenShown);
}

} // namespace

Q_COREAPP_STARTUP_FUNCTION(installScenario)
