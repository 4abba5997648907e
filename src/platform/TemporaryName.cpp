#include "platform/TemporaryName.h"

#include <random>
#include <string>
#include <string_view>

namespace Platform {

namespace {

constexpr std::string_view letters = "abcdefghijklmnopqrstuvwxyz234567";
constexpr std::string_view replacement = ".tmp-";
constexpr std::size_t randomLetters = 16;

std::filesystem::path randomNameBeside(const std::filesystem::path& target, std::string_view prefix) {
    std::random_device random;
    std::string name(prefix);
    for (std::size_t i = 0; i < randomLetters; ++i) {
        name += letters[random() % letters.size()];
    }
    return target.parent_path() / name;
}

} // namespace

std::filesystem::path temporaryNameBeside(const std::filesystem::path& target) {
    return randomNameBeside(target, ".part-");
}

std::filesystem::path nameForReplacement(const std::filesystem::path& target) {
    return randomNameBeside(target, replacement);
}

bool isNameForReplacement(const std::filesystem::path& file) {
    const std::u8string name = file.filename().u8string();
    const std::string_view text(reinterpret_cast<const char*>(name.data()), name.size());
    return text.size() == replacement.size() + randomLetters && text.starts_with(replacement) &&
           text.find_first_not_of(letters, replacement.size()) == std::string_view::npos;
}

std::filesystem::path resolvedTarget(const std::filesystem::path& path) {
    std::error_code error;
    if (!std::filesystem::is_symlink(path, error)) {
        return path;
    }
    std::filesystem::path resolved = std::filesystem::weakly_canonical(path, error);
    return error ? path : resolved;
}

} // namespace Platform
