// The CTRL variable converter (alarmmodel/ctrl/converter) on fuzzed variable
// trees: CTRL -> Qt -> CTRL -> Qt must give the same Qt value, and typed
// look-ups in a mapping must either find the value or say why not.

#include "FuzzSupport.h"
#include "FuzzVariable.h"
#include "converter.h"

#include <cstdio>

extern "C" int LLVMFuzzerInitialize(int *, char ***)
{
    fuzz::initQuiet();
    return 0;
}

extern "C" int LLVMFuzzerTestOneInput(const uint8_t *data, size_t size)
{
    FuzzedDataProvider fdp(data, size);
    static const QStringList keys{QStringLiteral("type"), QStringLiteral("list"), QStringLiteral("map"),
                                  QStringLiteral("1")};
    const std::unique_ptr<Variable> tree = fuzz::makeVariable(fdp, keys);
    const MsgLoggingProducer logger;

    const QVariant native = converter::ctrlToNative(tree.get());
    const std::unique_ptr<Variable> back(converter::nativeToCtrl(&logger, native));
    if (!back) {
        std::fprintf(stderr, "WRONG ANSWER: the Qt value of %s cannot be converted back\n",
                     tree->formatValue().toUtf8().constData());
        std::abort();
    }
    if (converter::ctrlToNative(back.get()) != native) {
        std::fprintf(stderr, "WRONG ANSWER: %s changed on the way back: %s\n",
                     tree->formatValue().toUtf8().constData(), back->formatValue().toUtf8().constData());
        std::abort();
    }
    const std::unique_ptr<DynVar> args(converter::nativeToCtrlArguments(&logger, {native, native}));
    if (!args || args->count() != 2)
        std::abort();

    if (tree->isA(MAPPING_VAR)) {
        const auto &map = static_cast<const MappingVar &>(*tree);
        static const VariableType types[] = {BIT_VAR, INTEGER_VAR, TEXT_VAR, DYN_VAR, MAPPING_VAR, FLOAT_VAR};
        for (const QString &key : keys) {
            const VariableType expected = types[fdp.ConsumeIntegralInRange<size_t>(0, 5)];
            QString error;
            const Variable *found =
                converter::getMapValue<Variable>(&logger, map, TextVar(key), expected, error);
            if (!found == error.isEmpty() || (found && found->getType() != expected))
                std::abort();
        }
    }
    return 0;
}
