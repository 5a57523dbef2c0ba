#include "Variable.h"

Variable::~Variable() = default;

bool Variable::operator==(const Variable &other) const
{
    return getType() == other.getType() && isEqualTo(other);
}

QString Variable::getTypeName(VariableType type)
{
    switch (type) {
    case NO_VAR:
        return QStringLiteral("NO_VAR");
    case BIT_VAR:
        return QStringLiteral("BIT_VAR");
    case INTEGER_VAR:
        return QStringLiteral("INTEGER_VAR");
    case UINTEGER_VAR:
        return QStringLiteral("UINTEGER_VAR");
    case FLOAT_VAR:
        return QStringLiteral("FLOAT_VAR");
    case TEXT_VAR:
        return QStringLiteral("TEXT_VAR");
    case TIME_VAR:
        return QStringLiteral("TIME_VAR");
    case DYN_VAR:
        return QStringLiteral("DYN_VAR");
    case MAPPING_VAR:
        return QStringLiteral("MAPPING_VAR");
    case MIXED_VAR:
        return QStringLiteral("MIXED_VAR");
    }
    return QStringLiteral("UNKNOWN_VAR(0x%1)").arg(static_cast<unsigned int>(type), 0, 16);
}
