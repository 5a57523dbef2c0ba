#include "JsValueConverter.h"

#include "BitVar.h"
#include "DynVar.h"
#include "FloatVar.h"
#include "IntegerVar.h"
#include "MappingVar.h"
#include "MixedVar.h"
#include "TextVar.h"
#include "TimeVar.h"
#include "UIntegerVar.h"

#include <QJSEngine>
#include <QJSValueIterator>

#include <cmath>
#include <limits>

namespace {
// Deeper than any sensible answer; reached by cyclic objects.
constexpr int MaxDepth = 64;

std::unique_ptr<Variable> numberToVariable(double number)
{
    if (std::isfinite(number) && std::trunc(number) == number
        && number >= std::numeric_limits<int>::min() && number <= std::numeric_limits<int>::max())
        return std::make_unique<IntegerVar>(static_cast<int>(number));
    return std::make_unique<FloatVar>(number);
}
} // namespace

QJSValue JsValueConverter::toJs(QJSEngine &engine, const Variable &value)
{
    switch (value.getType()) {
    case TEXT_VAR:
        return QJSValue(static_cast<const TextVar &>(value).getValue());
    case INTEGER_VAR:
        return QJSValue(static_cast<const IntegerVar &>(value).getValue());
    case UINTEGER_VAR:
        return QJSValue(static_cast<const UIntegerVar &>(value).getValue());
    case FLOAT_VAR:
        return QJSValue(static_cast<const FloatVar &>(value).getValue());
    case BIT_VAR:
        return QJSValue(static_cast<const BitVar &>(value).getValue());
    case TIME_VAR:
        return engine.toScriptValue(static_cast<const TimeVar &>(value).getValue());
    case DYN_VAR: {
        const auto &dyn = static_cast<const DynVar &>(value);
        QJSValue array = engine.newArray(static_cast<uint>(dyn.count()));
        for (int i = 0; i < dyn.count(); ++i)
            array.setProperty(static_cast<quint32>(i), toJs(engine, *dyn.at(i)));
        return array;
    }
    case MAPPING_VAR: {
        const auto &map = static_cast<const MappingVar &>(value);
        QJSValue object = engine.newObject();
        for (int i = 0; i < map.count(); ++i)
            object.setProperty(map.keyAt(i)->formatValue(), toJs(engine, *map.valueAt(i)));
        return object;
    }
    case MIXED_VAR: {
        const Variable *held = static_cast<const MixedVar &>(value).getValue();
        return held ? toJs(engine, *held) : QJSValue(QJSValue::NullValue);
    }
    case NO_VAR:
        break;
    }
    return QJSValue(QJSValue::NullValue);
}

std::unique_ptr<Variable> JsValueConverter::fromJs(const QJSValue &value, QString &error)
{
    if (value.isNull() || value.isUndefined())
        return nullptr;
    return fromJsNested(value, 0, error);
}

std::unique_ptr<Variable> JsValueConverter::fromJsNested(const QJSValue &value, int depth,
                                                         QString &error)
{
    if (depth > MaxDepth) {
        error = QStringLiteral("value nested deeper than %1 levels").arg(MaxDepth);
        return nullptr;
    }
    if (value.isBool())
        return std::make_unique<BitVar>(value.toBool());
    if (value.isNumber())
        return numberToVariable(value.toNumber());
    if (value.isString())
        return std::make_unique<TextVar>(value.toString());
    if (value.isDate())
        return std::make_unique<TimeVar>(value.toDateTime());
    if (value.isArray()) {
        auto dyn = std::make_unique<DynVar>();
        const quint32 length = value.property(QStringLiteral("length")).toUInt();
        for (quint32 i = 0; i < length; ++i) {
            std::unique_ptr<Variable> item = fromJsNested(value.property(i), depth + 1, error);
            if (!error.isEmpty())
                return nullptr;
            dyn->append(std::move(item));
        }
        return dyn;
    }
    if (value.isObject() && !value.isCallable()) {
        auto map = std::make_unique<MappingVar>();
        QJSValueIterator it(value);
        while (it.hasNext()) {
            it.next();
            std::unique_ptr<Variable> item = fromJsNested(it.value(), depth + 1, error);
            if (!error.isEmpty())
                return nullptr;
            map->setAt(std::make_unique<TextVar>(it.name()), std::move(item));
        }
        return map;
    }
    // Nothing CTRL could hold: null, undefined or a function inside a container.
    return std::make_unique<MixedVar>();
}
