// The saved source-and-filter file (SourceAndFilter): any text is refused with
// a reason or read; what was read is written and read again, unchanged.

#include "FuzzSupport.h"
#include "SourceAndFilter.h"
#include "WildcardConfig.h"

extern "C" int LLVMFuzzerInitialize(int *, char ***)
{
    fuzz::initQuiet();
    return 0;
}

extern "C" int LLVMFuzzerTestOneInput(const uint8_t *data, size_t size)
{
    WildcardConfig wildcards;
    wildcards.setMatchAllChar(QLatin1Char('*'));
    SourceAndFilter loaded;
    QString error;
    if (!loaded.fromJsonText(fuzz::bytes(data, size), error, &wildcards)) {
        if (error.isEmpty())
            std::abort();
        return 0;
    }
    const QByteArray written = loaded.toJsonText();
    SourceAndFilter again;
    if (!again.fromJsonText(written, error, &wildcards)) {
        std::fprintf(stderr, "WRONG ANSWER: a filter it wrote is refused: %s\n%s\n", error.toUtf8().constData(),
                     written.constData());
        std::abort();
    }
    if (again.toJsonText() != written) {
        std::fprintf(stderr, "WRONG ANSWER: a filter changed when read back:\n%s\n%s\n", written.constData(),
                     again.toJsonText().constData());
        std::abort();
    }
    return 0;
}
