#pragma once

#include <QString>

#include <memory>

class DynVar;
class Variable;

// One library of CTRL functions that a checked-in script uses: either native
// functions registered by the host, or a script file run by a JavaScript engine.
class CtrlLibrary
{
public:
    explicit CtrlLibrary(const QString &name) : m_name(name) {}
    virtual ~CtrlLibrary() = default;
    CtrlLibrary(const CtrlLibrary &) = delete;
    CtrlLibrary &operator=(const CtrlLibrary &) = delete;

    const QString &name() const { return m_name; }
    virtual bool hasFunction(const QString &function) const = 0;
    // Runs a function with the given arguments. A null result with an empty
    // `error` is a function that returned nothing; a failure sets `error`.
    // Script functions are interrupted after `timeoutMs`.
    virtual std::unique_ptr<Variable> call(const QString &function, const DynVar &args,
                                           int timeoutMs, QString &error) = 0;

private:
    QString m_name;
};
