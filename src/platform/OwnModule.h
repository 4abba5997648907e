// Where our own code was loaded from.
#pragma once

#include <filesystem>

namespace Platform {

// The file of the running program; empty when the system does not say. [any]
[[nodiscard]] std::filesystem::path programFile();
// The file of the module (library or program) that this code is part of, whatever program has loaded it; empty when the
// system does not say. [any]
[[nodiscard]] std::filesystem::path moduleFile();

// The system's handle of the module (library or program) that this code is part of; null when there is none. [any]
[[nodiscard]] void* ownModuleHandle();

} // namespace Platform
