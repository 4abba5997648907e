// Functions in words, as keys and menus show them.
#pragma once

#include "input/Function.h"

#include <QString>

namespace Desktop {

// For the face of a key: a note by its name ("C4"), a controller with its value ("CC1 127"), a word for the rest.
[[nodiscard]] QString shortTextOf(const Backend::FunctionManagement::Function& function);
// In full: "Midi Note On C4, velocity 100, zone 1".
[[nodiscard]] QString longTextOf(const Backend::FunctionManagement::Function& function);
// The name in lists.
[[nodiscard]] QString displayNameOf(const std::string& keyword);

} // namespace Desktop
