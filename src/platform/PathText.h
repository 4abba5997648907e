// Paths as the UTF-8 text that settings hold, and faults and messages show.
#pragma once

#include <filesystem>
#include <string>
#include <string_view>

namespace Platform {

[[nodiscard]] std::string textOf(const std::filesystem::path& path);
// Bytes that are no UTF-8 are a name like others on Linux; on Windows they name nothing, and the path is empty.
[[nodiscard]] std::filesystem::path pathOf(std::string_view utf8);

} // namespace Platform
