#include "core/FactoryFiles.h"

#include "core/FolderNames.h"
#include "core/QelUtils.h"
#include "platform/SafeFiles.h"
#include "platform/TemporaryName.h"

#include <chrono>
#include <system_error>

namespace Backend {

namespace fs = std::filesystem;

namespace {

// Empty without an installation.
fs::path sourceOf(const Surroundings& surroundings, const std::string& folder) {
    const fs::path installation = QelUtils::getQelProgDir(surroundings);
    return installation.empty() ? fs::path() : installation / "Default" / folder;
}

void copyAll(const fs::path& from, const fs::path& to, std::error_code& failure) {
    fs::create_directories(to, failure);
    for (fs::directory_iterator file(from, failure), end; !failure && file != end; file.increment(failure)) {
        if (file->is_regular_file(failure)) {
            fs::copy_file(file->path(), to / file->path().filename(), fs::copy_options::skip_existing, failure);
        }
    }
}

// Copies that a killed program began: one takes moments.
void removeOldCopies(const fs::path& data, fs::file_time_type now) {
    std::error_code failure;
    for (fs::directory_iterator each(data, failure), end; !failure && each != end; each.increment(failure)) {
        std::error_code ignored;
        if (Platform::isNameForReplacement(each->path()) && fs::is_directory(each->symlink_status(ignored)) &&
            fs::last_write_time(each->path(), ignored) < now - std::chrono::hours(1)) {
            fs::remove_all(each->path(), ignored);
        }
    }
}

} // namespace

void FactoryFiles::removeLeftovers(const Surroundings& surroundings, fs::file_time_type now) {
    const fs::path data = QelUtils::getQelAppDataDir(surroundings);
    removeOldCopies(data, now);
    for (const char* const folder : FolderNames::withFactoryContent) {
        Platform::removeLeftovers(data / folder);
    }
}

void FactoryFiles::copyMissingFolders(const Surroundings& surroundings) {
    const fs::path data = QelUtils::getQelAppDataDir(surroundings);
    for (const char* const folder : FolderNames::withFactoryContent) {
        std::error_code failure;
        const fs::path source = sourceOf(surroundings, folder);
        if (source.empty() || fs::exists(data / folder, failure) || !fs::is_directory(source, failure)) {
            continue;
        }
        const fs::path unfinished = Platform::nameForReplacement(data / folder);
        copyAll(source, unfinished, failure);
        if (!failure) {
            fs::rename(unfinished, data / folder, failure);
        }
        if (failure) {
            fs::remove_all(unfinished, failure);
        }
    }
}

void FactoryFiles::copyFiles(const Surroundings& surroundings, const fs::path& target, const std::string& folder) {
    std::error_code failure;
    const fs::path source = sourceOf(surroundings, folder);
    if (!source.empty() && fs::is_directory(source, failure)) {
        copyAll(source, target / folder, failure);
    }
}

void FactoryFiles::removeFiles(const Surroundings& surroundings, const fs::path& target, const std::string& folder) {
    std::error_code failure;
    const fs::path source = sourceOf(surroundings, folder);
    if (source.empty()) {
        return;
    }
    for (fs::directory_iterator file(source, failure), end; !failure && file != end; file.increment(failure)) {
        std::error_code ignored;
        const fs::path copy = target / folder / file->path().filename();
        if (fs::is_regular_file(copy, ignored)) {
            fs::remove(copy, ignored);
        }
    }
}

} // namespace Backend
