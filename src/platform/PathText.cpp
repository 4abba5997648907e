#include "platform/PathText.h"

namespace Platform {

std::string textOf(const std::filesystem::path& path) {
    const std::u8string text = path.u8string();
    return {text.begin(), text.end()};
}

std::filesystem::path pathOf(std::string_view utf8) {
    return {std::u8string(utf8.begin(), utf8.end())};
}

} // namespace Platform
