// The help on each function and translation, for the user.
#pragma once

#include <string_view>

namespace Backend {

// UTF-8, a few sentences; empty for a number without a text. The numbers stand in the table of actions.
[[nodiscard]] std::string_view helpText(int helpId);

} // namespace Backend
