#pragma once

#include "CtrlLibrary.h"
#include "NativeFunction.h"

#include <QMap>

// A library whose functions are C++ functions registered by the host.
class NativeCtrlLibrary : public CtrlLibrary
{
public:
    NativeCtrlLibrary(const QString &name, const QMap<QString, NativeFunction> &functions);

    bool hasFunction(const QString &function) const override;
    std::unique_ptr<Variable> call(const QString &function, const DynVar &args, int timeoutMs,
                                   QString &error) override;

private:
    QMap<QString, NativeFunction> m_functions;
};
