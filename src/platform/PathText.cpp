#include "platform/PathText.h"

#include "platform/Utf8.h"

namespace Platform {

std::string textOf(const std::filesystem::path& path) {
    const std::u8string text = path.u8string();
    return {text.begin(), text.end()};
}

std::filesystem::path pathOf(std::string_view utf8) {
    // Where paths are wide, only text has a path, and the conversion throws at anything else.
    if (sizeof(std::filesystem::path::value_type) > 1 && !isUtf8(utf8)) {
        return {};
    }
    return {std::u8string(utf8.begin(), utf8.end())};
}

} // namespace Platform
