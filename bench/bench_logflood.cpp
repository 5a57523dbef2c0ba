// Floods the message model with log messages (1000 a second for 10 seconds
// by default) and measures how late the event loop serves a 10 ms probe
// timer: first with the model alone (the baseline: the same messages, no
// views), then with the message counter label and the history dialog shown.
// Prints the latency figures of both runs, their ratio, and the history held
// at the end.

#include "DialogLogHistory.h"
#include "MsgLoggerModel.h"
#include "MsgLoggerStatistics.h"

#include <QApplication>
#include <QCommandLineParser>
#include <QElapsedTimer>
#include <QTableView>
#include <QTextStream>
#include <QTimer>

#include <algorithm>
#include <functional>

namespace {

QTextStream out(stdout);

constexpr int ProbeIntervalMs = 10;
constexpr int FloodTickMs = 5;

struct Latency {
    double median = 0;
    double p99 = 0;
    double max = 0;
    int messages = 0;
};

// Runs the event loop for `seconds` while `addMessages(n)` is asked for the
// messages due at `rate` per second; returns how late the probe timer fired.
Latency flood(const std::function<void(int)> &addMessages, int seconds, int rate)
{
    QVector<qint64> late;
    QElapsedTimer clock;
    clock.start();
    qint64 nextProbe = ProbeIntervalMs;
    QTimer probe;
    probe.setTimerType(Qt::PreciseTimer);
    QObject::connect(&probe, &QTimer::timeout, [&] {
        const qint64 now = clock.elapsed();
        late.append(std::max<qint64>(0, now - nextProbe));
        nextProbe = now + ProbeIntervalMs;
    });
    int sent = 0;
    QTimer source;
    source.setTimerType(Qt::PreciseTimer);
    QObject::connect(&source, &QTimer::timeout, [&] {
        const int due = int(clock.elapsed() * rate / 1000) - sent;
        if (due > 0) {
            addMessages(due);
            sent += due;
        }
    });
    QEventLoop loop;
    QTimer::singleShot(seconds * 1000, &loop, &QEventLoop::quit);
    probe.start(ProbeIntervalMs);
    source.start(FloodTickMs);
    loop.exec();

    Latency result;
    result.messages = sent;
    if (late.isEmpty())
        return result;
    std::sort(late.begin(), late.end());
    result.median = double(late.at(late.size() / 2));
    result.p99 = double(late.at(std::min<int>(late.size() - 1, late.size() * 99 / 100)));
    result.max = double(late.last());
    return result;
}

std::function<void(int)> messagesInto(MsgLoggerModel &model)
{
    return [&model, counter = 0](int count) mutable {
        for (int i = 0; i < count; ++i, ++counter) {
            // Mostly traces, a warning now and then, an error rarely.
            const auto severity = counter % 100 == 0 ? MsgLoggerEnums::Error
                                  : counter % 10 == 0 ? MsgLoggerEnums::Warning
                                                      : MsgLoggerEnums::Trace;
            model.addMessage(severity, QStringLiteral("bench"),
                             QStringLiteral("flood message %1 of the alarm screen").arg(counter));
        }
    };
}

QString ratio(double value, double baseline)
{
    // Latencies of 0 ms are common; a 1 ms floor keeps the ratio meaningful.
    return QString::number(std::max(value, 1.0) / std::max(baseline, 1.0), 'f', 2);
}

void print(const char *name, const Latency &l)
{
    out << QStringLiteral("%1: %2 messages, event-loop latency median %3 ms, p99 %4 ms, max %5 ms\n")
               .arg(QLatin1String(name))
               .arg(l.messages)
               .arg(l.median)
               .arg(l.p99)
               .arg(l.max);
    out.flush();
}

} // namespace

int main(int argc, char **argv)
{
    QApplication app(argc, argv);
    QCommandLineParser parser;
    parser.setApplicationDescription(QStringLiteral("Log flood against the log views"));
    parser.addHelpOption();
    QCommandLineOption secondsOption(QStringLiteral("seconds"), QStringLiteral("length of each run"),
                                     QStringLiteral("s"), QStringLiteral("10"));
    QCommandLineOption rateOption(QStringLiteral("rate"), QStringLiteral("messages per second"),
                                  QStringLiteral("n"), QStringLiteral("1000"));
    parser.addOption(secondsOption);
    parser.addOption(rateOption);
    parser.process(app);
    const int seconds = std::max(1, parser.value(secondsOption).toInt());
    const int rate = std::max(1, parser.value(rateOption).toInt());

    out << QStringLiteral("log flood: %1 messages a second for %2 s, probe every %3 ms\n")
               .arg(rate)
               .arg(seconds)
               .arg(ProbeIntervalMs);

    MsgLoggerModel bare;
    const Latency baseline = flood(messagesInto(bare), seconds, rate);
    print("model alone (baseline)", baseline);

    auto model = QSharedPointer<MsgLoggerModel>::create();
    MsgLoggerStatistics label;
    label.setModel(model);
    label.show();
    label.grab(); // an offscreen window paints only when asked
    DialogLogHistory dialog(model, &label);
    dialog.show();
    int paints = 0;
    QTimer repaint;
    QObject::connect(&repaint, &QTimer::timeout, [&] {
        // What a screen refresh would cost: both views drawn 25 times a second.
        label.grab();
        dialog.grab();
        ++paints;
    });
    repaint.start(40);
    const Latency views = flood(messagesInto(*model), seconds, rate);
    repaint.stop();
    print("label and history dialog", views);

    out << QStringLiteral("ratio to baseline: median %1, p99 %2, max %3\n")
               .arg(ratio(views.median, baseline.median), ratio(views.p99, baseline.p99),
                    ratio(views.max, baseline.max));
    out << QStringLiteral("history held: %1 of %2 messages (bound %3); label \"%4\", dialog \"%5\"; %6 repaints\n")
               .arg(model->rowCount())
               .arg(views.messages)
               .arg(model->getMaxMessages())
               .arg(label.text(), dialog.getCounter()->text())
               .arg(paints);
    return 0;
}
