// The number rules of the value filters (ValueFilterNumbers): every part of a
// text is either a rule (with a description) or listed as failed, and matching
// any value is safe.

#include "FuzzSupport.h"
#include "ValueFilterNumbers.h"
#include "WildcardConfig.h"

#include <QVariant>

extern "C" int LLVMFuzzerInitialize(int *, char ***)
{
    fuzz::initQuiet();
    return 0;
}

extern "C" int LLVMFuzzerTestOneInput(const uint8_t *data, size_t size)
{
    FuzzedDataProvider fdp(data, size);
    const double value = fdp.ConsumeFloatingPoint<double>();
    const QString text = QString::fromStdString(fdp.ConsumeRemainingBytesAsString());
    ValueFilterNumbers filter(WildcardConfig(), QStringLiteral("prio"), Constants::ValueSourceAlarm, true);
    const bool complete = filter.setFilterText(text);
    if (complete != filter.getFailedParts().isEmpty())
        std::abort();
    // Each rule and each failed part comes from one piece between separators.
    const int pieces = text.count(QLatin1Char(';')) + text.count(QLatin1Char(',')) + 1;
    if (filter.getRuleDescriptions().size() + filter.getFailedParts().size() > pieces)
        std::abort();
    filter.describeContent();
    filter.matches(QVariant(value));
    filter.matches(QVariant(text));
    filter.matches(QVariant());
    return 0;
}
