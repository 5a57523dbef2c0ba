#include "IntegerVar.h"

IntegerVar *IntegerVar::clone() const
{
    return new IntegerVar(*this);
}

QString IntegerVar::formatValue() const
{
    return QString::number(getValue());
}
