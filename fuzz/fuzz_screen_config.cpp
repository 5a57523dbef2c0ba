// The alarm screen configuration file (AlarmScreenConfiguration): any text is
// refused with a reason or read; what was read is written and read again.

#include "AlarmScreenConfiguration.h"
#include "FuzzSupport.h"

#include <QJsonDocument>

extern "C" int LLVMFuzzerInitialize(int *, char ***)
{
    fuzz::initQuiet();
    return 0;
}

extern "C" int LLVMFuzzerTestOneInput(const uint8_t *data, size_t size)
{
    AlarmScreenConfiguration config;
    QString error;
    if (!config.fromJsonText(fuzz::bytes(data, size), error)) {
        if (error.isEmpty())
            std::abort(); // refused without saying why
        return 0;
    }
    AlarmScreenConfiguration again;
    if (!again.fromJson(config.toJson(), error)) {
        std::fprintf(stderr, "WRONG ANSWER: a configuration it wrote is refused: %s\n", error.toUtf8().constData());
        std::abort();
    }
    return 0;
}
