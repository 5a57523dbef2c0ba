// The JSON of a filter statistics view (FilterViewConfiguration): any text is
// read or refused with an error text.

#include "FilterViewConfiguration.h"
#include "FuzzSupport.h"
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
    FilterViewConfiguration view;
    if (!view.parse(fuzz::utf8(data, size), wildcards) && view.getErrorText().isEmpty())
        std::abort();
    view.reset();
    return 0;
}
