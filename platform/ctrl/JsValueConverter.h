#pragma once

#include <QJSValue>
#include <QString>

#include <memory>

class QJSEngine;
class Variable;

// Converts between CTRL variables and the values of one JavaScript engine.
//
// To JavaScript: text -> string, integers and floats -> number, bool -> boolean,
// time -> Date, dyn -> array, mapping -> object (keys printed as text), mixed ->
// the held value or null.
// From JavaScript: string -> text, integral number in the 32-bit range ->
// integer, other numbers -> float, boolean -> bool, Date -> time, array -> dyn,
// object -> mapping with text keys; null, undefined and functions inside an
// array or object -> an empty mixed.
//
// A script answer is bounded: at most MaxValues values in all (each array,
// object and element counts) nested at most MaxDepth levels deep. A larger
// answer is refused before its containers are built, so that a script cannot
// keep the GUI thread busy (or fill the memory) with a huge or endlessly
// nested answer. Reading an answer runs script code (getters), so the engine
// is expected to be watched while converting: once it is interrupted, the
// conversion stops.
class JsValueConverter
{
public:
    static constexpr int MaxValues = 100000;
    static constexpr int MaxDepth = 64;

    explicit JsValueConverter(QJSEngine &engine);

    QJSValue toJs(const Variable &value) const;
    // Null for null or undefined (CTRL: no return value), and on failure, which
    // also sets `error`: too many values, nested too deeply (as a cyclic object
    // is), a member whose getter threw, or an interrupted engine.
    std::unique_ptr<Variable> fromJs(const QJSValue &value, QString &error);

private:
    std::unique_ptr<Variable> fromJsNested(const QJSValue &value, int depth, int &budget,
                                           QString &error);
    std::unique_ptr<Variable> containerFromJs(const QJSValue &value, bool isArray, int depth,
                                              int &budget, QString &error);

    QJSEngine &m_engine;
    // Reads the members of an array or object in the engine, catching what a
    // getter throws; refuses more members than the budget left.
    QJSValue m_readMembers;
};
