// The alarm simulation file (SimulationConfig): any text is read or refused
// with a reason.

#include "FuzzSupport.h"
#include "SimulationConfig.h"

extern "C" int LLVMFuzzerInitialize(int *, char ***)
{
    fuzz::initQuiet();
    return 0;
}

extern "C" int LLVMFuzzerTestOneInput(const uint8_t *data, size_t size)
{
    SimulationConfig config = SimulationConfig::defaults();
    QString error;
    if (!SimulationConfig::parse(fuzz::bytes(data, size), config, error) && error.isEmpty())
        std::abort();
    return 0;
}
