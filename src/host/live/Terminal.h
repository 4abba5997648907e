// The standard streams where they are a terminal.
#pragma once

#include <string>

namespace Host {

[[nodiscard]] bool standardInputIsTerminal() noexcept;
[[nodiscard]] bool standardOutputIsTerminal() noexcept;
[[nodiscard]] bool standardErrorIsTerminal() noexcept;

// Of the terminal at standard error, as it is now; 80 when it does not say.
[[nodiscard]] int terminalColumns() noexcept;

// What clears the line that it is written in and leaves the cursor at its beginning.
[[nodiscard]] std::string lineEraser();

} // namespace Host
