#include "BitVar.h"

BitVar *BitVar::clone() const
{
    return new BitVar(*this);
}

QString BitVar::formatValue() const
{
    return getValue() ? QStringLiteral("TRUE") : QStringLiteral("FALSE");
}
