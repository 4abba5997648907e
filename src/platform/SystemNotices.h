// What each system does for Notices while no handler stands in for it.
#pragma once

#include <filesystem>
#include <string>

namespace Platform {

void systemDebugOutput(const std::string& line) noexcept;
void systemMessageBox(const std::string& text, const std::string& caption);
// `document` is absolute and exists.
bool systemOpenDocument(const std::filesystem::path& document);

} // namespace Platform
