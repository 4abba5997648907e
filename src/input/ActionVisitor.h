// Tells the classes of a family apart.
#pragma once

#include "input/ActionTable.h"

#include <cstddef>
#include <utility>

namespace Backend::Actions {

namespace Detail {

template <template <std::size_t> class Of, std::size_t LINE> class VisitsOne {
public:
    virtual ~VisitsOne() = default;
    virtual void visit(const Of<LINE>&) {}
};

template <template <std::size_t> class Of, typename Lines> class VisitsAll;
template <template <std::size_t> class Of, std::size_t... LINES>
class VisitsAll<Of, std::index_sequence<LINES...>> : public VisitsOne<Of, LINES>... {
public:
    using VisitsOne<Of, LINES>::visit...;
};

} // namespace Detail

// One operation visit(const Of<LINE>&) for each line of the table; those that are not overridden do nothing.
template <template <std::size_t> class Of>
using ActionVisitor = Detail::VisitsAll<Of, std::make_index_sequence<actions.size()>>;

} // namespace Backend::Actions
