// Tells functions apart by class.
#pragma once

#include "input/ActionVisitor.h"

#include <cstddef>

namespace Backend::FunctionManagement {

template <std::size_t LINE> class FunctionOf;

// One operation visit(const Functions::ShowHelp&) ... for each class of functions; those that are not overridden do
// nothing.
class FunctionVisitor : public Actions::ActionVisitor<FunctionOf> {};

} // namespace Backend::FunctionManagement
