// Measures one tick of the colour engine with 10 000 blinking colours in use
// (every colour changes its phase on every tick, the worst case) against the
// tick's own period of 125 ms. Prints the figure and its ratio to the target.

#include "ColorEngine.h"

#include <QCoreApplication>
#include <QElapsedTimer>
#include <QFile>
#include <QTemporaryDir>
#include <QTextStream>

#include <algorithm>

int main(int argc, char **argv)
{
    QCoreApplication app(argc, argv);
    int count = 10000;
    int repeat = 20;
    const QStringList args = app.arguments();
    for (int i = 1; i + 1 < args.size(); i += 2) {
        if (args.at(i) == QLatin1String("--colors"))
            count = qMax(10, args.at(i + 1).toInt());
        else if (args.at(i) == QLatin1String("--repeat"))
            repeat = qMax(1, args.at(i + 1).toInt());
    }
    MsgLoggingProducer::setDefaultLogThreshold(4);
    QTextStream out(stdout);
    out << QStringLiteral("Colour engine benchmark, %1 blinking colours in use, best of %2 ticks\n")
               .arg(count)
               .arg(repeat);

    // A colour database as the platform writes it.
    QTemporaryDir dir;
    const QString file = dir.filePath(QStringLiteral("colors"));
    {
        QFile db(file);
        if (!db.open(QIODevice::WriteOnly | QIODevice::Text))
            return 1;
        QTextStream lines(&db);
        for (int i = 0; i < count; ++i)
            lines << QStringLiteral("\"Blink%1\" N <{%2,%3,0} 1 [0,0,%4] 1>\n").arg(i).arg(i % 256).arg(i / 256 % 256).arg(i % 101);
    }
    MsgLoggingProducer producer;
    ColorEngine engine(&producer, nullptr);
    engine.addColorDatabase(file);
    for (int i = 0; i < count; ++i)
        engine.incrementColorUsage(QStringLiteral("Blink%1").arg(i));
    // One receiver, as a view that follows the colours has.
    int announced = 0;
    QObject::connect(&engine, &ColorEngine::colorChanged, &engine, [&announced] { ++announced; });

    double best = 1e300;
    for (int r = 0; r < repeat; ++r) {
        QElapsedTimer timer;
        timer.start();
        QMetaObject::invokeMethod(&engine, "blinkingTimeout");
        best = std::min(best, timer.nsecsElapsed() / 1e6);
    }
    const double period = 125.0;
    const double ratio = best / period;
    out << QStringLiteral("  announced %1 changes per tick\n").arg(announced / repeat);
    out << QStringLiteral("  engine tick: %1 ms = %2 of the 125 ms period (target <= 0.010) %3\n")
               .arg(best, 0, 'f', 3)
               .arg(ratio, 0, 'f', 4)
               .arg(ratio <= 0.01 ? QStringLiteral("ok") : QStringLiteral("MISSED"));
    return announced == count * repeat ? 0 : 1;
}
