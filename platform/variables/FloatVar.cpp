#include "FloatVar.h"

#include <QLocale>

FloatVar *FloatVar::clone() const
{
    return new FloatVar(*this);
}

QString FloatVar::formatValue() const
{
    return QString::number(getValue(), 'g', QLocale::FloatingPointShortest);
}
