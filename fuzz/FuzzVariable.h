#pragma once

// Builds a CTRL variable tree from fuzz input: every type the platform has,
// nested dyns and mappings (keys mostly the texts the readers look for), and
// mixed wrappers, with depth and size bounded so that an input stays cheap.

#include "BitVar.h"
#include "DynVar.h"
#include "FloatVar.h"
#include "IntegerVar.h"
#include "MappingVar.h"
#include "MixedVar.h"
#include "TextVar.h"
#include "TimeVar.h"
#include "UIntegerVar.h"

#include <QDateTime>
#include <QStringList>

#include <fuzzer/FuzzedDataProvider.h>

#include <cmath>
#include <memory>

namespace fuzz {

inline std::unique_ptr<Variable> makeVariable(FuzzedDataProvider &fdp, const QStringList &keys, int depth = 0)
{
    const int kind = fdp.ConsumeIntegralInRange(0, depth >= 5 ? 6 : 9);
    switch (kind) {
    case 0: return std::make_unique<BitVar>(fdp.ConsumeBool());
    case 1: return std::make_unique<IntegerVar>(fdp.ConsumeIntegral<int>());
    case 2: return std::make_unique<UIntegerVar>(fdp.ConsumeIntegral<unsigned int>());
    case 3: {
        double d = fdp.ConsumeFloatingPoint<double>();
        return std::make_unique<FloatVar>(std::isnan(d) ? 0.0 : d);
    }
    case 4: {
        if (fdp.ConsumeBool() && !keys.isEmpty())
            return std::make_unique<TextVar>(keys.at(fdp.ConsumeIntegralInRange<int>(0, keys.size() - 1)));
        return std::make_unique<TextVar>(QString::fromStdString(fdp.ConsumeRandomLengthString(32)));
    }
    case 5:
        return std::make_unique<TimeVar>(
            QDateTime::fromMSecsSinceEpoch(fdp.ConsumeIntegralInRange<qint64>(-(1LL << 40), 1LL << 42), Qt::UTC));
    case 6: return std::make_unique<MixedVar>();
    case 7: {
        auto dyn = std::make_unique<DynVar>();
        const int n = fdp.ConsumeIntegralInRange(0, 6);
        for (int i = 0; i < n && fdp.remaining_bytes() > 0; ++i)
            dyn->append(makeVariable(fdp, keys, depth + 1));
        return dyn;
    }
    case 8: {
        auto map = std::make_unique<MappingVar>();
        const int n = fdp.ConsumeIntegralInRange(0, 6);
        for (int i = 0; i < n && fdp.remaining_bytes() > 0; ++i) {
            std::unique_ptr<Variable> key;
            if (!keys.isEmpty() && fdp.ConsumeProbability<float>() < 0.8f)
                key = std::make_unique<TextVar>(keys.at(fdp.ConsumeIntegralInRange<int>(0, keys.size() - 1)));
            else
                key = makeVariable(fdp, keys, 5);
            map->setAt(std::move(key), makeVariable(fdp, keys, depth + 1));
        }
        return map;
    }
    default: return std::make_unique<MixedVar>(makeVariable(fdp, keys, depth + 1));
    }
}

} // namespace fuzz
