#include "platform/SettingsTree.h"

#include <algorithm>

namespace Platform {
namespace {

// Not std::tolower: the order must not change with the locale.
constexpr unsigned char smallLetter(char letter) noexcept {
    const auto code = static_cast<unsigned char>(letter);
    return code >= 'A' && code <= 'Z' ? static_cast<unsigned char>(code + ('a' - 'A')) : code;
}

} // namespace

bool CaselessLess::operator()(std::string_view a, std::string_view b) const noexcept {
    return std::lexicographical_compare(a.begin(), a.end(), b.begin(), b.end(),
                                        [](char x, char y) { return smallLetter(x) < smallLetter(y); });
}

std::vector<std::string> partsOfKeyPath(std::string_view path, char separator) {
    std::vector<std::string> parts;
    while (!path.empty()) {
        const std::size_t length = std::min(path.find(separator), path.size());
        if (length > 0) {
            parts.emplace_back(path.substr(0, length));
        }
        path.remove_prefix(std::min(length + 1, path.size()));
    }
    return parts;
}

std::string keyPathOfParts(const std::vector<std::string>& parts) {
    std::string path;
    for (const std::string& part : parts) {
        path += path.empty() ? part : '\\' + part;
    }
    return path;
}

bool SettingsTree::hasKey(std::string_view path) const {
    if (path.empty() || keys.contains(path)) {
        return true;
    }
    // The paths below this one stand together, directly where it would stand with a backslash behind it.
    const std::string prefix = std::string(path) + '\\';
    const auto next = keys.lower_bound(prefix);
    return next != keys.end() && next->first.size() > prefix.size() &&
           !CaselessLess()(prefix, std::string_view(next->first).substr(0, prefix.size()));
}

} // namespace Platform
