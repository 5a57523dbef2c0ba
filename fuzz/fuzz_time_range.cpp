// The time range JSON (TimeRange): any object is read or refused with a
// reason; what was read is written and read again, equal.

#include "FuzzSupport.h"
#include "TimeRange.h"

#include <QJsonDocument>
#include <QJsonObject>

extern "C" int LLVMFuzzerInitialize(int *, char ***)
{
    fuzz::initQuiet();
    return 0;
}

extern "C" int LLVMFuzzerTestOneInput(const uint8_t *data, size_t size)
{
    const QJsonDocument document = QJsonDocument::fromJson(fuzz::bytes(data, size));
    if (!document.isObject())
        return 0;
    TimeRange range;
    QString error;
    if (!range.fromJson(document.object(), QStringLiteral("timeRange"), error)) {
        if (error.isEmpty())
            std::abort();
        return 0;
    }
    TimeRange again;
    if (!again.fromJson(range.toJson(), QStringLiteral("timeRange"), error) || !(again == range)) {
        std::fprintf(stderr, "WRONG ANSWER: a time range changed when read back: %s\n%s\n", error.toUtf8().constData(),
                     QJsonDocument(range.toJson()).toJson().constData());
        std::abort();
    }
    range.getDescription();
    return 0;
}
