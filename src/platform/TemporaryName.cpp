#include "platform/TemporaryName.h"

#include <random>
#include <string>

namespace Platform {

std::filesystem::path temporaryNameBeside(const std::filesystem::path& target) {
    static constexpr char letters[] = "abcdefghijklmnopqrstuvwxyz234567";
    std::random_device random;
    std::string name = ".tmp-";
    for (int i = 0; i < 16; ++i) {
        name += letters[random() % 32];
    }
    return target.parent_path() / name;
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
