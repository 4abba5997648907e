// Whether the standard streams are a terminal.
#pragma once

namespace Host {

[[nodiscard]] bool standardInputIsTerminal() noexcept;
[[nodiscard]] bool standardErrorIsTerminal() noexcept;

} // namespace Host
