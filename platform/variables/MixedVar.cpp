#include "MixedVar.h"

MixedVar::MixedVar(const Variable &value)
    : m_value(value.cloneUnique())
{
}

MixedVar::MixedVar(std::unique_ptr<Variable> value)
    : m_value(std::move(value))
{
}

MixedVar::MixedVar(const MixedVar &other)
    : Variable(other)
    , m_value(other.m_value ? other.m_value->cloneUnique() : nullptr)
{
}

MixedVar &MixedVar::operator=(const MixedVar &other)
{
    if (this != &other)
        m_value = other.m_value ? other.m_value->cloneUnique() : nullptr;
    return *this;
}

MixedVar::~MixedVar() = default;

MixedVar *MixedVar::clone() const
{
    return new MixedVar(*this);
}

QString MixedVar::formatValue() const
{
    return m_value ? m_value->formatValue() : QString();
}

bool MixedVar::isEqualTo(const Variable &other) const
{
    const Variable *held = static_cast<const MixedVar &>(other).m_value.get();
    if (!m_value || !held)
        return !m_value && !held;
    return *m_value == *held;
}
