// The files that come with the program: copied to the user on the first start, taken away again by the uninstallation.
#pragma once

#include "core/Surroundings.h"

#include <filesystem>
#include <string>

namespace Backend {

// Each of FolderNames::withFactoryContent lies below the application-data folder, the factory's below "Default" in the
// installation folder.
class FactoryFiles final {
public:
    FactoryFiles() = delete;

    // Removes what killed programs left half written in the folders and, when an hour old, beside them. [any]
    static void removeLeftovers(const Surroundings& surroundings,
                                std::filesystem::file_time_type now = std::filesystem::file_time_type::clock::now());

    // Copies each of the folders that the user does not have. A folder appears whole or, when something fails, not at
    // all. [backend]
    static void copyMissingFolders(const Surroundings& surroundings);

    // Copies the factory's files of a folder into `target`/`folder`; those that are there stay. [any]
    static void copyFiles(const Surroundings& surroundings, const std::filesystem::path& target,
                          const std::string& folder);
    // Deletes from `target`/`folder` the files that have the names of the factory's. [any]
    static void removeFiles(const Surroundings& surroundings, const std::filesystem::path& target,
                            const std::string& folder);
};

} // namespace Backend
