#pragma once

#include "DpIdentList.h"
#include "MappingVar.h"
#include "MixedVar.h"
#include "TextVar.h"
#include "alarmmodel_export.h"

#include <QList>
#include <QString>
#include <QStringList>
#include <QVariant>

class DynVar;
class MsgLoggingProducer;

// Conversions between Qt values and CTRL variables, typed look-ups in CTRL
// mappings and datapoint identifiers from names.
//
// Qt -> CTRL: QString -> text, QStringList -> dyn of texts, int -> integer,
// uint -> unsigned, bool -> bool, double and float -> float, qlonglong and
// qulonglong -> integer when in its range, else float, QDateTime -> time,
// QVariantList -> dyn, QVariantMap and QVariantHash -> mapping with text keys,
// an invalid QVariant -> an empty mixed (CTRL's null). Anything else cannot be
// converted.
// CTRL -> Qt: the reverse; a mapping becomes a QVariantMap keyed by the keys'
// printed form, a mixed its held value (invalid when empty).
class ALARMMODEL_EXPORT converter
{
public:
    converter() = delete;

    // A new dyn (owned by the caller) with one element per argument, or null
    // when a value cannot be converted; the reason is logged at severity 3.
    static DynVar *nativeToCtrlArguments(const MsgLoggingProducer *logger,
                                         const QList<QVariant> &args);
    // One value; null (and logged) when it cannot be converted.
    static Variable *nativeToCtrl(const MsgLoggingProducer *logger, const QVariant &value);
    // An invalid QVariant for null.
    static QVariant ctrlToNative(const Variable *value);

    // The value of `key` in `map`, of the `expected` type, a value held in a
    // mixed taken out first; null with `error` set when the key is missing or
    // the value is of another type. `logger` is accepted and not used: logging
    // the error is the caller's choice.
    template <class ResultClass>
    static const ResultClass *getMapValue(const MsgLoggingProducer *logger, const MappingVar &map,
                                          const TextVar &key, VariableType expected,
                                          QString &error);

    // The identifiers of the named datapoint elements, in the order of the
    // names; false with `error` naming the first unknown element.
    static bool getDpIds(const MsgLoggingProducer *logger, const QStringList &names,
                         DpIdentList &ids, QString &error);

private:
    static Variable *convert(const MsgLoggingProducer *logger, const QVariant &value,
                             const QString &where);
};

template <class ResultClass>
const ResultClass *converter::getMapValue(const MsgLoggingProducer * /*logger*/,
                                          const MappingVar &map, const TextVar &key,
                                          VariableType expected, QString &error)
{
    const Variable *value = map.getAt(key);
    if (!value) {
        error = QStringLiteral("mapping doesn't contain key '%1'").arg(key.getValue());
        return nullptr;
    }
    if (value->isA(MIXED_VAR))
        value = static_cast<const MixedVar *>(value)->getValue();
    const VariableType actual = value ? value->getType() : NO_VAR;
    const auto *result = actual == expected ? dynamic_cast<const ResultClass *>(value) : nullptr;
    if (!result) {
        error = QStringLiteral("mapping value for key '%1' has a type %2, expected type %3")
                    .arg(key.getValue(), Variable::getTypeName(actual),
                         Variable::getTypeName(expected));
    }
    return result;
}
