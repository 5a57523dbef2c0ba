#pragma once

#include "platform_export.h"

#include <QString>

#include <memory>

// Type codes of CTRL variables. The codes of mapping, mixed, integer and text
// are fixed by the CTRL language; the others are this platform's choice.
enum VariableType : unsigned int {
    NO_VAR = 0x0,
    BIT_VAR = 0x20000,
    INTEGER_VAR = 0x50000,
    UINTEGER_VAR = 0x60000,
    FLOAT_VAR = 0x70000,
    TEXT_VAR = 0x80000,
    TIME_VAR = 0x90000,
    DYN_VAR = 0x110000,
    MAPPING_VAR = 0x3a0000,
    MIXED_VAR = 0x3d0000
};

// A CTRL value. Variables are handed around as pointers to this base and copied
// with clone(); two variables are equal when they have the same type and value.
class PLATFORM_EXPORT Variable
{
public:
    virtual ~Variable();

    virtual VariableType getType() const = 0;
    // A deep copy; the caller owns it.
    virtual Variable *clone() const = 0;
    // The value as CTRL would print it.
    virtual QString formatValue() const = 0;

    bool isA(VariableType type) const { return getType() == type; }
    bool operator==(const Variable &other) const;
    bool operator!=(const Variable &other) const { return !(*this == other); }

    // The printable name of a type code, for example "MAPPING_VAR".
    static QString getTypeName(VariableType type);

    // clone() with the ownership made explicit.
    std::unique_ptr<Variable> cloneUnique() const { return std::unique_ptr<Variable>(clone()); }

protected:
    Variable() = default;
    Variable(const Variable &) = default;
    Variable &operator=(const Variable &) = default;
    // Called only with a variable of the same type.
    virtual bool isEqualTo(const Variable &other) const = 0;
};
