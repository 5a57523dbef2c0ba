#pragma once

#include <QJSValue>
#include <QString>

#include <memory>

class QJSEngine;
class Variable;

// Converts between CTRL variables and the values of a JavaScript engine.
//
// To JavaScript: text -> string, integers and floats -> number, bool -> boolean,
// time -> Date, dyn -> array, mapping -> object (keys printed as text), mixed ->
// the held value or null.
// From JavaScript: string -> text, integral number in the 32-bit range ->
// integer, other numbers -> float, boolean -> bool, Date -> time, array -> dyn,
// object -> mapping with text keys; null, undefined and functions inside an
// array or object -> an empty mixed.
class JsValueConverter
{
public:
    static QJSValue toJs(QJSEngine &engine, const Variable &value);
    // Null for null or undefined (CTRL: no return value), and on failure, which
    // also sets `error` (values nested too deeply, as a cyclic object is).
    static std::unique_ptr<Variable> fromJs(const QJSValue &value, QString &error);

private:
    static std::unique_ptr<Variable> fromJsNested(const QJSValue &value, int depth,
                                                  QString &error);
};
