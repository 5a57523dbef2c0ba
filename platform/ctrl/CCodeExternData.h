#pragma once

#include "CharString.h"
#include "ExternData.h"

// The extern data of a script checked in from C++ code: the names of the class
// and of the object that did it.
class PLATFORM_EXPORT CCodeExternData : public ExternData
{
public:
    CCodeExternData(const CharString &className, const CharString &objectName);

    const CharString &getClassName() const { return m_className; }
    const CharString &getObjectName() const { return m_objectName; }
    // "className/objectName"
    const char *describe() const override;

private:
    CharString m_className;
    CharString m_objectName;
    CharString m_description;
};
