#include "CCodeExternData.h"

CCodeExternData::CCodeExternData(const CharString &className, const CharString &objectName)
    : m_className(className)
    , m_objectName(objectName)
    , m_description(className)
{
    m_description += "/";
    m_description += objectName;
}

const char *CCodeExternData::describe() const
{
    return m_description.c_str();
}
