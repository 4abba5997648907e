// Tells functions apart by class.
#pragma once

#include "input/ActionTable.h"

#include <cstddef>
#include <utility>

namespace Backend::FunctionManagement {

template <std::size_t LINE> class FunctionOf;

namespace Detail {

template <std::size_t LINE> class VisitsFunction {
public:
    virtual ~VisitsFunction() = default;
    virtual void visit(const FunctionOf<LINE>&) {}
};

template <typename Lines> class VisitsFunctions;
template <std::size_t... LINES> class VisitsFunctions<std::index_sequence<LINES...>> : public VisitsFunction<LINES>... {
public:
    using VisitsFunction<LINES>::visit...;
};

} // namespace Detail

// One operation visit(const Functions::ShowHelp&) ... for each class of functions; those that are not overridden do
// nothing.
class FunctionVisitor : public Detail::VisitsFunctions<std::make_index_sequence<Actions::actions.size()>> {};

} // namespace Backend::FunctionManagement
