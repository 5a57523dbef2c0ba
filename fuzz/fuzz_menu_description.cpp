// The context menu a CTRL mouse-event function returns (MenuDescription): a
// mapping with the position and the menu as JSON text. Half the inputs give the
// JSON text directly in a well-formed mapping, half a fuzzed variable tree.

#include "FuzzSupport.h"
#include "FuzzVariable.h"
#include "MenuDescription.h"

namespace {
void walk(const MenuDescription &node, int depth)
{
    node.toString();
    node.parentHierarchy();
    if (depth > 200)
        std::abort();
    for (const auto &child : node.getItems()) {
        if (!child || child->getParent() != &node)
            std::abort();
        walk(*child, depth + 1);
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
    const bool noAnswer = fdp.ConsumeIntegralInRange(0, 15) == 0;
    std::unique_ptr<Variable> answer;
    if (fdp.ConsumeBool()) {
        auto map = std::make_unique<MappingVar>();
        map->setAt(TextVar("menuX"), IntegerVar(fdp.ConsumeIntegral<int>()));
        map->setAt(TextVar("menuY"), IntegerVar(fdp.ConsumeIntegral<int>()));
        map->setAt(TextVar("menu"), TextVar(QString::fromStdString(fdp.ConsumeRemainingBytesAsString())));
        answer = std::move(map);
    } else {
        static const QStringList keys{QStringLiteral("menuX"), QStringLiteral("menuY"), QStringLiteral("menu"),
                                      QStringLiteral("[{\"type\":3,\"label\":\"a\",\"value\":1}]")};
        answer = fuzz::makeVariable(fdp, keys);
    }
    const MsgLoggingProducer logger;
    const MenuDescription menu(&logger, QStringLiteral("fuzz"), noAnswer ? nullptr : answer.get());
    walk(menu, 0);
    return 0;
}
