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

#include <cmath>
#include <limits>

namespace {
// Answers an array: the values of an array's elements, or key and value of
// each member of an object in turn. A problem is answered with an object
// instead: {tooMany: length} when the container has more members than
// `limit` (length null for an object), {failed: key, error: thrown} when
// reading a member threw. Keys are listed with for-in, as the engine's
// Object.keys runs the getters. The built-ins it needs are taken before any
// library runs, which might replace them.
const char ReadMembersSource[] =
    "(function (isArray, hasOwn) {\n"
    "    return function (o, limit) {\n"
    "        var key = null, out = [];\n"
    "        try {\n"
    "            if (isArray(o)) {\n"
    "                var length = o.length;\n"
    "                if (length > limit) return { tooMany: length };\n"
    "                for (key = 0; key < length; ++key) out.push(o[key]);\n"
    "            } else {\n"
    "                var keys = [];\n"
    "                for (var k in o) {\n"
    "                    if (hasOwn(o, k) && keys.push(k) > limit) return { tooMany: null };\n"
    "                }\n"
    "                for (var i = 0; i < keys.length; ++i) { key = keys[i]; out.push(key, o[key]); }\n"
    "            }\n"
    "        } catch (e) { return { failed: key === null ? null : String(key), error: e }; }\n"
    "        return out;\n"
    "    };\n"
    "})(Array.isArray, Function.prototype.call.bind(Object.prototype.hasOwnProperty))";

std::unique_ptr<Variable> numberToVariable(double number)
{
    if (std::isfinite(number) && std::trunc(number) == number
        && number >= std::numeric_limits<int>::min() && number <= std::numeric_limits<int>::max())
        return std::make_unique<IntegerVar>(static_cast<int>(number));
    return std::make_unique<FloatVar>(number);
}
} // namespace

JsValueConverter::JsValueConverter(QJSEngine &engine)
    : m_engine(engine), m_readMembers(engine.evaluate(QString::fromLatin1(ReadMembersSource)))
{
}

QJSValue JsValueConverter::toJs(const Variable &value) const
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
        return m_engine.toScriptValue(static_cast<const TimeVar &>(value).getValue());
    case DYN_VAR: {
        const auto &dyn = static_cast<const DynVar &>(value);
        QJSValue array = m_engine.newArray(static_cast<uint>(dyn.count()));
        for (int i = 0; i < dyn.count(); ++i)
            array.setProperty(static_cast<quint32>(i), toJs(*dyn.at(i)));
        return array;
    }
    case MAPPING_VAR: {
        const auto &map = static_cast<const MappingVar &>(value);
        QJSValue object = m_engine.newObject();
        for (int i = 0; i < map.count(); ++i)
            object.setProperty(map.keyAt(i)->formatValue(), toJs(*map.valueAt(i)));
        return object;
    }
    case MIXED_VAR: {
        const Variable *held = static_cast<const MixedVar &>(value).getValue();
        return held ? toJs(*held) : QJSValue(QJSValue::NullValue);
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
    int budget = MaxValues;
    return fromJsNested(value, 0, budget, error);
}

std::unique_ptr<Variable> JsValueConverter::fromJsNested(const QJSValue &value, int depth, int &budget,
                                                         QString &error)
{
    if (m_engine.isInterrupted()) {
        error = QStringLiteral("interrupted while reading the value");
        return nullptr;
    }
    if (--budget < 0) {
        error = QStringLiteral("more than %1 values").arg(MaxValues);
        return nullptr;
    }
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
    if (value.isArray() || (value.isObject() && !value.isCallable()))
        return containerFromJs(value, value.isArray(), depth, budget, error);
    // Nothing CTRL could hold: null, undefined or a function inside a container.
    return std::make_unique<MixedVar>();
}

std::unique_ptr<Variable> JsValueConverter::containerFromJs(const QJSValue &value, bool isArray, int depth,
                                                            int &budget, QString &error)
{
    const QJSValue members = m_readMembers.call({value, QJSValue(budget)});
    if (m_engine.isInterrupted()) {
        error = QStringLiteral("interrupted while reading the value");
        return nullptr;
    }
    if (members.isError()) {
        error = QStringLiteral("reading the members failed: %1").arg(members.toString());
        return nullptr;
    }
    if (!members.isArray()) {
        if (members.hasOwnProperty(QStringLiteral("tooMany"))) {
            const QJSValue length = members.property(QStringLiteral("tooMany"));
            error = QStringLiteral("more than %1 values").arg(MaxValues);
            if (!length.isNull())
                error += QStringLiteral(" (an array of %1 elements)").arg(length.toString());
        } else {
            const QJSValue key = members.property(QStringLiteral("failed"));
            const QString what = key.isNull() ? QStringLiteral("the members")
                                              : QStringLiteral("member '%1'").arg(key.toString());
            error = QStringLiteral("reading %1 threw: %2")
                        .arg(what, members.property(QStringLiteral("error")).toString());
        }
        return nullptr;
    }
    const quint32 length = members.property(QStringLiteral("length")).toUInt();
    if (isArray) {
        auto dyn = std::make_unique<DynVar>();
        for (quint32 i = 0; i < length; ++i) {
            std::unique_ptr<Variable> item = fromJsNested(members.property(i), depth + 1, budget, error);
            if (!item)
                return nullptr;
            dyn->append(std::move(item));
        }
        return dyn;
    }
    auto map = std::make_unique<MappingVar>();
    for (quint32 i = 0; i + 1 < length; i += 2) {
        std::unique_ptr<Variable> item = fromJsNested(members.property(i + 1), depth + 1, budget, error);
        if (!item)
            return nullptr;
        map->setAt(std::make_unique<TextVar>(members.property(i).toString()), std::move(item));
    }
    return map;
}
