#include "core/SettingsText.h"

#include <algorithm>
#include <cstddef>
#include <iterator>

namespace Backend {

std::optional<std::string> storedText(const Platform::SettingsValue& stored) {
    constexpr std::size_t longest = 1000;
    if (stored.data.size() > longest) {
        return std::nullopt;
    }
    std::string text;
    std::transform(stored.data.begin(), std::ranges::find(stored.data, std::byte{0}), std::back_inserter(text),
                   [](std::byte each) { return static_cast<char>(each); });
    return text;
}

} // namespace Backend
