// Paths as the UTF-8 text that faults and messages show.
#pragma once

#include <filesystem>
#include <string>

namespace Platform {

[[nodiscard]] std::string textOf(const std::filesystem::path& path);

} // namespace Platform
