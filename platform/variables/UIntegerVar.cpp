#include "UIntegerVar.h"

UIntegerVar *UIntegerVar::clone() const
{
    return new UIntegerVar(*this);
}

QString UIntegerVar::formatValue() const
{
    return QString::number(getValue());
}
