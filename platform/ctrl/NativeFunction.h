#pragma once

#include <functional>

class DynVar;
class Variable;

// A CTRL function implemented in C++: receives the call's arguments and
// returns a new heap variable (the controller takes it) or null for no value.
using NativeFunction = std::function<Variable *(const DynVar &args)>;
