#include "NativeCtrlLibrary.h"

#include "DynVar.h"

NativeCtrlLibrary::NativeCtrlLibrary(const QString &name,
                                     const QMap<QString, NativeFunction> &functions)
    : CtrlLibrary(name)
    , m_functions(functions)
{
}

bool NativeCtrlLibrary::hasFunction(const QString &function) const
{
    return m_functions.contains(function) && m_functions.value(function);
}

std::unique_ptr<Variable> NativeCtrlLibrary::call(const QString &function, const DynVar &args,
                                                  int /*timeoutMs*/, QString &error)
{
    const NativeFunction fn = m_functions.value(function);
    if (!fn) {
        error = QStringLiteral("no function %1 in native library %2").arg(function, name());
        return nullptr;
    }
    return std::unique_ptr<Variable>(fn(args));
}
