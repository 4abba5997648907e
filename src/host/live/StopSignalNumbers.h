// Which signals ask the program to end.
#pragma once

#include <span>

namespace Host {

// Ctrl-C, the end of the session, the end of the terminal.
[[nodiscard]] std::span<const int> stopSignalNumbers() noexcept; // [any]

} // namespace Host
