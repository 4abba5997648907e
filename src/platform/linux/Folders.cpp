#include "platform/Folders.h"

#include <array>
#include <cstdlib>
#include <pwd.h>
#include <unistd.h>

namespace Platform {
namespace {

std::filesystem::path homeFolder() {
    if (const char* home = std::getenv("HOME"); home != nullptr && *home == '/') {
        return home;
    }
    passwd entry{};
    passwd* found = nullptr;
    std::array<char, 4096> buffer{};
    if (getpwuid_r(getuid(), &entry, buffer.data(), buffer.size(), &found) == 0 && found != nullptr) {
        return found->pw_dir;
    }
    return "/";
}

// The base directory rules: a variable that is not set, or not an absolute path, counts as its default.
std::filesystem::path baseFolder(const char* variable, const char* belowHome) {
    const char* value = std::getenv(variable);
    std::filesystem::path folder = value != nullptr && *value == '/' ? value : homeFolder() / belowHome;
    // A folder that cannot be made shows at the first file that is wanted in it.
    std::error_code ignored;
    std::filesystem::create_directories(folder, ignored);
    return folder;
}

} // namespace

std::filesystem::path localApplicationDataFolder() {
    return baseFolder("XDG_DATA_HOME", ".local/share");
}

std::filesystem::path configurationFolder() {
    return baseFolder("XDG_CONFIG_HOME", ".config");
}

} // namespace Platform
