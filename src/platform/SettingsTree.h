// All keys and values of one settings root in memory, matched without regard to the case of ASCII letters.
#pragma once

#include "platform/SettingsStore.h"

#include <map>
#include <string>
#include <string_view>
#include <vector>

namespace Platform {

// Orders texts as if all their ASCII letters were small.
struct CaselessLess {
    using is_transparent = void;
    bool operator()(std::string_view a, std::string_view b) const noexcept;
};

// A key path as its parts: empty ones are left out, so that a path has one form.
[[nodiscard]] std::vector<std::string> partsOfKeyPath(std::string_view path, char separator);
// The parts joined by backslashes.
[[nodiscard]] std::string keyPathOfParts(const std::vector<std::string>& parts);

using SettingsValues = std::map<std::string, SettingsValue, CaselessLess>;

struct SettingsTree {
    // By path in the form of keyPathOfParts. A key is there when it is listed or a longer path begins with it.
    std::map<std::string, SettingsValues, CaselessLess> keys;

    [[nodiscard]] bool hasKey(std::string_view path) const;
};

} // namespace Platform
