// What options of the command line accept, where the parser's own checks would say it badly.
#pragma once

#include <CLI/CLI.hpp>

namespace Host {

// A whole number from `least` on.
[[nodiscard]] CLI::Validator atLeast(int least);

} // namespace Host
