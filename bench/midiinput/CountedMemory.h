// Counts what a benchmark allocates.
#pragma once

#include <cstdint>

// Calls of operator new in this program. [any]
[[nodiscard]] std::uint64_t allocationsSoFar();
