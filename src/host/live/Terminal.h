// The standard streams where they are a terminal.
#pragma once

namespace Host {

[[nodiscard]] bool standardInputIsTerminal() noexcept;
[[nodiscard]] bool standardOutputIsTerminal() noexcept;
[[nodiscard]] bool standardErrorIsTerminal() noexcept;

// Of the terminal at standard error, as it is now; 80 when it does not say.
[[nodiscard]] int terminalColumns() noexcept;

// Lets the terminal at standard output and error obey escape sequences, where it has to be told.
void enableEscapeSequences() noexcept;

} // namespace Host
