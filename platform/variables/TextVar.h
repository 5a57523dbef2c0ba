#pragma once

#include "CharString.h"
#include "ScalarVar.h"

// A CTRL text (string).
//
// A text carries its own validity: it is valid unless it was built from a null
// C string or from bytes that are not well-formed UTF-8. Such a text holds what
// could be decoded (nothing for a null pointer) and tells consumers that the
// value did not arrive intact. Setting a new value makes it valid again.
class PLATFORM_EXPORT TextVar : public ScalarVar<QString, TEXT_VAR>
{
public:
    TextVar() = default;
    explicit TextVar(const QString &value);
    // Decodes Latin-1, as CharString always does.
    explicit TextVar(const CharString &value);
    // Decodes UTF-8; a null pointer or ill-formed bytes give an invalid text.
    explicit TextVar(const char *utf8);

    bool isValid() const { return m_valid; }
    void setValue(const QString &value);
    // The text as the platform's 8-bit string (Latin-1).
    CharString getString() const;

    TextVar *clone() const override;
    QString formatValue() const override;

private:
    bool m_valid = true;
};
