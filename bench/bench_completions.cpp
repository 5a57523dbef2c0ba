// Measures how long a completion answer of many values (100 000 by default)
// takes from the CTRL mapping that the controller hands over to the string
// model of an editor's completer, against a baseline measured in the same
// run: copying the same strings into a QStringList. Prints both, their ratio
// and whether the whole stays under the 100 ms an operator may wait.

#include "BenchCommon.h"
#include "DynVar.h"
#include "FilterCompletions.h"
#include "IntegerVar.h"
#include "MappingVar.h"
#include "TextVar.h"

#include <QCoreApplication>
#include <QElapsedTimer>
#include <QStringListModel>
#include <QTextStream>

#include <functional>

using BenchCommon::bestOf;

namespace {

QTextStream out(stdout);

} // namespace

int main(int argc, char **argv)
{
    QCoreApplication app(argc, argv);
    int count = 100000;
    int repeat = 5;
    const QStringList args = app.arguments();
    for (int i = 1; i + 1 < args.size(); i += 2) {
        if (args.at(i) == QLatin1String("--values"))
            count = qMax(100, args.at(i + 1).toInt());
        else if (args.at(i) == QLatin1String("--repeat"))
            repeat = qMax(1, args.at(i + 1).toInt());
    }
    MsgLoggingProducer::setDefaultLogThreshold(4);
    out << QStringLiteral("Completion benchmarks, %1 values, best of %2 runs\n").arg(count).arg(repeat);

    // Element names as a per-system master function returns them.
    QVector<QString> texts;
    texts.reserve(count);
    DynVar list;
    for (int i = 0; i < count; ++i) {
        texts.append(QStringLiteral("System%1:Area%2.Device%3.alarm").arg(i % 10).arg(i / 500 % 100).arg(i));
        list.append(TextVar(texts.last()));
    }
    MappingVar answer;
    answer.setAt(TextVar("type"), IntegerVar(1));
    answer.setAt(TextVar("list"), list);

    int copied = 0;
    const double baseline = bestOf(repeat, [&] {
        QStringList strings;
        for (const QString &text : qAsConst(texts))
            strings.append(text);
        copied = strings.size();
    });

    int handed = 0;
    const double parsed = bestOf(repeat, [&] {
        FilterCompletions completions(nullptr, QStringLiteral("dpe"), {});
        completions.applyCtrlCallReturnValue(nullptr, &answer);
        QStringListModel editorModel;
        editorModel.setStringList(completions.getList());
        handed = editorModel.rowCount();
    });

    const double ratio = parsed / baseline;
    out << QStringLiteral("  answer parsed and handed to an editor: %1 ms = %2x copying into a QStringList "
                          "(%3 ms); target <= 100 ms %4\n")
               .arg(parsed, 0, 'f', 1)
               .arg(ratio, 0, 'f', 2)
               .arg(baseline, 0, 'f', 1)
               .arg(parsed <= 100.0 ? QStringLiteral("ok") : QStringLiteral("MISSED"));
    if (handed != count || copied != count) {
        out << QStringLiteral("  ERROR: %1 values handed over, %2 copied, %3 expected\n").arg(handed).arg(copied).arg(count);
        return 1;
    }
    return 0;
}
