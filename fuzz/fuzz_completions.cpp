// The answers of the CTRL completion functions (FilterCompletions): any
// variable tree is taken or refused; a refused answer changes nothing.

#include "FilterCompletions.h"
#include "FuzzSupport.h"
#include "FuzzVariable.h"

extern "C" int LLVMFuzzerInitialize(int *, char ***)
{
    fuzz::initQuiet();
    return 0;
}

extern "C" int LLVMFuzzerTestOneInput(const uint8_t *data, size_t size)
{
    FuzzedDataProvider fdp(data, size);
    static const QStringList keys{QStringLiteral("type"), QStringLiteral("list"), QStringLiteral("map"),
                                  QStringLiteral("System1"), QStringLiteral("System2")};
    const MsgLoggingProducer logger;
    FilterCompletions completions(&logger, QStringLiteral("dp"), {QStringLiteral("System1"), QStringLiteral("System2")});
    completions.setFunction(QStringLiteral("fuzz"));
    // A master answer, then the answers that may follow it.
    for (int i = 0; i < 3 && fdp.remaining_bytes() > 0; ++i) {
        const std::unique_ptr<Variable> answer = fuzz::makeVariable(fdp, keys);
        completions.requestStarted();
        completions.applyCtrlCallReturnValue(nullptr, fdp.ConsumeBool() ? answer.get() : nullptr);
        completions.getCompletionsForSystems({QStringLiteral("System1"), QStringLiteral("System3")});
        completions.findMissingSystems({QStringLiteral("System1"), QStringLiteral("System2")});
        const int type = completions.getType();
        if (type != FilterCompletions::NoCompletions && type != FilterCompletions::SingleList &&
            type != FilterCompletions::DependentList && type != FilterCompletions::PerSystem &&
            type != FilterCompletions::UnknownType)
            std::abort();
    }
    return 0;
}
