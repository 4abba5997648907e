// Where the system wants files of an application to be.
#pragma once

#include <filesystem>

namespace Platform {

// Both name a folder also when it could not be created: its first file will say so. [any]

// The folder for application data of the current user on this machine; created when it does not exist.
// Windows: the local application-data folder; Linux: $XDG_DATA_HOME or ~/.local/share.
[[nodiscard]] std::filesystem::path localApplicationDataFolder();

// The folder for settings of the current user; created when it does not exist.
// Linux: $XDG_CONFIG_HOME or ~/.config; Windows: as localApplicationDataFolder().
[[nodiscard]] std::filesystem::path configurationFolder();

} // namespace Platform
