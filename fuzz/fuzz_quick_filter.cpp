// Differential target: the quick filter above the table (QuickCellFilter) in
// each mode, against the reference of the documented rules.

#include "FuzzSupport.h"
#include "QuickCellFilter.h"
#include "ReferenceMatcher.h"
#include "WildcardConfig.h"

extern "C" int LLVMFuzzerInitialize(int *, char ***)
{
    fuzz::initQuiet();
    return 0;
}

extern "C" int LLVMFuzzerTestOneInput(const uint8_t *data, size_t size)
{
    FuzzedDataProvider fdp(data, size);
    const int mode = fdp.ConsumeIntegralInRange(0, 2);
    const bool matchCase = fdp.ConsumeBool();
    const bool fullColumn = fdp.ConsumeBool();
    // Setting the string before the mode must end in the same filter.
    const bool stringFirst = fdp.ConsumeBool();
    const QString pattern = fuzz::alphabetText(fdp, 24);

    QuickCellFilter filter;
    WildcardConfig config;
    config.setMatchAllChar(QLatin1Char('*'));
    filter.setWildCardConfig(config);
    filter.setMatchCase(matchCase);
    filter.setMatchFullColumn(fullColumn);
    bool valid;
    if (stringFirst) {
        filter.setString(pattern);
        valid = filter.setMode(mode);
    } else {
        filter.setMode(mode);
        valid = filter.setString(pattern);
    }

    if (mode == QuickCellFilter::ModeWildcard && fuzz::skipKnownFaults(pattern, QString()))
        return 0;
    const bool expectValid = mode != QuickCellFilter::ModeRegularExpression || pattern.isEmpty() ||
                             reference::regexValid(pattern);
    const QString context = QStringLiteral("mode=%1 matchCase=%2 fullColumn=%3").arg(mode).arg(matchCase).arg(fullColumn);
    if (valid != expectValid || filter.isValid() != expectValid)
        fuzz::wrongAnswer("quick filter validity", pattern, QString(), expectValid, valid, context);
    const bool matchesAll = pattern.isEmpty() || (mode == QuickCellFilter::ModeWildcard && pattern == QLatin1String("*"));
    if (matchesAll && !filter.isEmpty())
        fuzz::wrongAnswer("quick filter empty", pattern, QString(), true, false, context);

    while (fdp.remaining_bytes() > 0) {
        const QString cell = fuzz::alphabetText(fdp, 24);
        if (mode != QuickCellFilter::ModeRegularExpression && fuzz::skipKnownFaults(pattern, cell))
            continue;
        bool expected;
        if (!expectValid)
            expected = false;
        else if (matchesAll)
            expected = true;
        else if (mode == QuickCellFilter::ModeLiteral)
            expected = reference::literalMatches(pattern, cell, matchCase, fullColumn);
        else if (mode == QuickCellFilter::ModeWildcard)
            expected = reference::wildcardMatches(pattern, cell, matchCase, fullColumn);
        else
            expected = reference::regexMatches(pattern, cell, matchCase, fullColumn);
        const bool actual = filter.matches(cell);
        if (expected != actual)
            fuzz::wrongAnswer("quick filter", pattern, cell, expected, actual, context);
    }
    return 0;
}
