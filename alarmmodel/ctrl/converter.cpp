#include "converter.h"

#include "BitVar.h"
#include "DynVar.h"
#include "FloatVar.h"
#include "IntegerVar.h"
#include "Manager.h"
#include "MsgLoggingProducer.h"
#include "TimeVar.h"
#include "UIntegerVar.h"

#include <QDateTime>

#include <limits>

namespace {
Variable *integerOrFloat(qlonglong value)
{
    if (value >= std::numeric_limits<int>::min() && value <= std::numeric_limits<int>::max())
        return new IntegerVar(static_cast<int>(value));
    return new FloatVar(static_cast<double>(value));
}
} // namespace

DynVar *converter::nativeToCtrlArguments(const MsgLoggingProducer *logger,
                                         const QList<QVariant> &args)
{
    auto *dyn = new DynVar;
    for (int i = 0; i < args.size(); ++i) {
        Variable *item = convert(logger, args.at(i), QStringLiteral("argument %1").arg(i + 1));
        if (!item) {
            delete dyn;
            return nullptr;
        }
        dyn->append(std::unique_ptr<Variable>(item));
    }
    return dyn;
}

Variable *converter::nativeToCtrl(const MsgLoggingProducer *logger, const QVariant &value)
{
    return convert(logger, value, QStringLiteral("value"));
}

Variable *converter::convert(const MsgLoggingProducer *logger, const QVariant &value,
                             const QString &where)
{
    switch (static_cast<int>(value.userType())) {
    case QMetaType::UnknownType:
        return new MixedVar;
    case QMetaType::QString:
        return new TextVar(value.toString());
    case QMetaType::Int:
        return new IntegerVar(value.toInt());
    case QMetaType::UInt:
        return new UIntegerVar(value.toUInt());
    case QMetaType::Bool:
        return new BitVar(value.toBool());
    case QMetaType::Double:
    case QMetaType::Float:
        return new FloatVar(value.toDouble());
    case QMetaType::LongLong:
        return integerOrFloat(value.toLongLong());
    case QMetaType::ULongLong:
        if (value.toULongLong() > static_cast<qulonglong>(std::numeric_limits<int>::max()))
            return new FloatVar(static_cast<double>(value.toULongLong()));
        return new IntegerVar(static_cast<int>(value.toULongLong()));
    case QMetaType::QDateTime:
        return new TimeVar(value.toDateTime());
    case QMetaType::QStringList: {
        auto *dyn = new DynVar;
        for (const QString &text : value.toStringList())
            dyn->append(std::make_unique<TextVar>(text));
        return dyn;
    }
    case QMetaType::QVariantList: {
        const QVariantList list = value.toList();
        auto dyn = std::make_unique<DynVar>();
        for (int i = 0; i < list.size(); ++i) {
            Variable *item = convert(logger, list.at(i), where + QStringLiteral("[%1]").arg(i));
            if (!item)
                return nullptr;
            dyn->append(std::unique_ptr<Variable>(item));
        }
        return dyn.release();
    }
    case QMetaType::QVariantMap:
    case QMetaType::QVariantHash: {
        const QVariantMap map = value.toMap();
        auto mapping = std::make_unique<MappingVar>();
        for (auto it = map.begin(); it != map.end(); ++it) {
            Variable *item = convert(logger, it.value(), where + QLatin1Char('.') + it.key());
            if (!item)
                return nullptr;
            mapping->setAt(std::make_unique<TextVar>(it.key()), std::unique_ptr<Variable>(item));
        }
        return mapping.release();
    }
    default:
        break;
    }
    ASLOG(logger, MsgLoggerEnums::Error,
          where + QStringLiteral(": a value of type %1 cannot be converted to a CTRL value")
                      .arg(QString::fromLatin1(value.typeName())));
    return nullptr;
}

QVariant converter::ctrlToNative(const Variable *value)
{
    if (!value)
        return QVariant();
    switch (value->getType()) {
    case TEXT_VAR:
        return static_cast<const TextVar *>(value)->getValue();
    case INTEGER_VAR:
        return static_cast<const IntegerVar *>(value)->getValue();
    case UINTEGER_VAR:
        return static_cast<const UIntegerVar *>(value)->getValue();
    case FLOAT_VAR:
        return static_cast<const FloatVar *>(value)->getValue();
    case BIT_VAR:
        return static_cast<const BitVar *>(value)->getValue();
    case TIME_VAR:
        return static_cast<const TimeVar *>(value)->getValue();
    case DYN_VAR: {
        const auto *dyn = static_cast<const DynVar *>(value);
        QVariantList list;
        list.reserve(dyn->count());
        for (int i = 0; i < dyn->count(); ++i)
            list.append(ctrlToNative(dyn->at(i)));
        return list;
    }
    case MAPPING_VAR: {
        const auto *mapping = static_cast<const MappingVar *>(value);
        QVariantMap map;
        for (int i = 0; i < mapping->count(); ++i)
            map.insert(mapping->keyAt(i)->formatValue(), ctrlToNative(mapping->valueAt(i)));
        return map;
    }
    case MIXED_VAR:
        return ctrlToNative(static_cast<const MixedVar *>(value)->getValue());
    case NO_VAR:
        break;
    }
    return QVariant();
}

bool converter::getDpIds(const MsgLoggingProducer * /*logger*/, const QStringList &names,
                         DpIdentList &ids, QString &error)
{
    ids.clear();
    for (const QString &name : names) {
        DpIdentifier id;
        if (!Manager::getId(name, id)) {
            ids.clear();
            error = QStringLiteral("datapoint element '%1' doesn't exist").arg(name);
            return false;
        }
        ids.append(id);
    }
    return true;
}
