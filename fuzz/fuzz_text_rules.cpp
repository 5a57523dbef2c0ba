// Differential target: the rule table of the text filters (ValueFilterText with
// its ValueFilterTextItem rules) against the reference of the documented rules.

#include "FuzzSupport.h"
#include "ReferenceMatcher.h"
#include "ValueFilterText.h"
#include "ValueFilterTextItem.h"
#include "WildcardConfig.h"

namespace {

bool referenceAccepts(const ValueFilterTextItem &item)
{
    if (item.getText().isEmpty())
        return false;
    if (item.getMethod() < 0 || item.getMethod() > 2)
        return false;
    return item.getMethod() != 2 || reference::regexValid(item.getText());
}

bool referenceItemMatches(const ValueFilterTextItem &item, const QString &value, bool matchCase)
{
    switch (item.getMethod()) {
    case 0: return reference::literalMatches(item.getText(), value, matchCase, true);
    case 1: return reference::wildcardMatches(item.getText(), value, matchCase, true);
    default: return reference::regexMatches(item.getText(), value, matchCase, false);
    }
}

} // namespace

extern "C" int LLVMFuzzerInitialize(int *, char ***)
{
    fuzz::initQuiet();
    return 0;
}

extern "C" int LLVMFuzzerTestOneInput(const uint8_t *data, size_t size)
{
    FuzzedDataProvider fdp(data, size);
    const bool matchCase = fdp.ConsumeBool();
    ValueFilterText filter(WildcardConfig(), QStringLiteral("text"), Constants::ValueSourceAlarm, matchCase);
    QList<ValueFilterTextItem> accepted;
    const int count = fdp.ConsumeIntegralInRange(0, 4);
    for (int i = 0; i < count; ++i) {
        const int method = fdp.ConsumeIntegralInRange(-1, 3);
        const bool exclude = fdp.ConsumeBool();
        const ValueFilterTextItem item(fuzz::alphabetText(fdp, 16), method, exclude);
        if (method == 1 && fuzz::skipKnownFaults(item.getText(), QString()))
            continue;
        const bool expected = referenceAccepts(item);
        QString error;
        const bool actual = filter.addItem(item, &error);
        if (expected != actual)
            fuzz::wrongAnswer("text rule refused", item.getText(), QString(), expected, actual,
                              QStringLiteral("method=%1").arg(method));
        if (actual && error.size())
            fuzz::wrongAnswer("text rule error on success", item.getText(), error, false, true);
        if (!actual && error.isEmpty())
            fuzz::wrongAnswer("text rule refused without a reason", item.getText(), QString(), true, false);
        if (actual)
            accepted << item;
    }
    // Switching the case rule must recompile every rule.
    const bool finalCase = fdp.ConsumeBool();
    filter.setMatchCase(finalCase);
    while (fdp.remaining_bytes() > 0) {
        const QString value = fuzz::alphabetText(fdp, 24);
        bool known = false;
        for (const ValueFilterTextItem &item : qAsConst(accepted))
            known = known || (item.getMethod() == 1 && fuzz::skipKnownFaults(item.getText(), value));
        if (known)
            continue;
        bool hasInclude = false;
        bool included = false;
        bool excluded = false;
        for (const ValueFilterTextItem &item : qAsConst(accepted)) {
            const bool m = referenceItemMatches(item, value, finalCase);
            if (item.isExclude()) {
                excluded = excluded || m;
            } else {
                hasInclude = true;
                included = included || m;
            }
        }
        const bool expected = !excluded && (!hasInclude || included);
        const bool actual = filter.matches(value);
        if (expected != actual) {
            QStringList rules;
            for (const ValueFilterTextItem &item : qAsConst(accepted))
                rules << QStringLiteral("%1%2:%3").arg(item.isExclude() ? "!" : "").arg(item.getMethod()).arg(item.getText());
            fuzz::wrongAnswer("text rules", rules.join(QLatin1String(" | ")), value, expected, actual,
                              QStringLiteral("matchCase=%1").arg(finalCase));
        }
    }
    return 0;
}
