#include "core/QelUtils.h"

#include "core/FactoryFiles.h"
#include "core/FolderNames.h"
#include "core/MidiPortDriver.h"
#include "core/SettingsText.h"
#include "platform/MidiDevices.h"
#include "platform/Notices.h"
#include "platform/OwnModule.h"
#include "platform/PathText.h"

#include <optional>
#include <system_error>

namespace Backend {

namespace fs = std::filesystem;

namespace {

[[nodiscard]] std::optional<std::string> readProgDir(const Surroundings& surroundings, const std::string& keyPath) {
    if (!surroundings.settings) {
        return std::nullopt;
    }
    const auto key = surroundings.settings->open(Platform::SettingsRoot::currentUser, keyPath);
    const auto value = key ? key->read("ProgDir") : std::nullopt;
    return value ? storedText(*value) : std::nullopt;
}

void removeIfEmpty(const fs::path& folder) {
    std::error_code ignored;
    if (fs::is_directory(folder, ignored)) {
        fs::remove(folder, ignored); // which a folder with anything in it withstands
    }
}

// Their names begin with "_".
void removeBufferFiles(const fs::path& folder) {
    std::error_code failure;
    for (fs::directory_iterator file(folder, failure), end; !failure && file != end; file.increment(failure)) {
        std::error_code ignored;
        if (!Platform::textOf(file->path().filename()).starts_with('_')) {
            continue;
        }
        if (fs::is_directory(file->symlink_status(ignored))) {
            removeBufferFiles(file->path()); // of the previous program, or of one that ran beside another
        }
        fs::remove(file->path(), ignored); // a folder only when it is empty
    }
}

} // namespace

std::filesystem::path QelUtils::getCompanyAppDataDir(const Surroundings& surroundings) {
    const std::filesystem::path parent = surroundings.applicationData.parent_path();
    return parent.filename() == COMPANY_NAME ? parent : surroundings.applicationData;
}

std::filesystem::path QelUtils::getQelAppDataDir(const Surroundings& surroundings) {
    return surroundings.applicationData;
}

std::filesystem::path QelUtils::getQelProgDir(const Surroundings& surroundings) {
    std::string folder = readProgDir(surroundings, getMainRegistryKey()).value_or(std::string());
    if (folder.size() > 1 && (folder.back() == '\\' || folder.back() == '/')) {
        folder.pop_back();
    }
    return folder.empty() ? surroundings.installation : std::filesystem::path(folder);
}

std::string QelUtils::getRegistryKey(const std::string& applicationName) {
    return std::string("Software\\") + COMPANY_NAME + "\\" + applicationName + "\\" + VERSION;
}

bool QelUtils::registryKeyExists(const Surroundings& surroundings, const std::string& key) {
    return readProgDir(surroundings, key).has_value();
}

void* QelUtils::getDllInstance() {
    return Platform::ownModuleHandle();
}

bool QelUtils::virtualMidiPortExists() {
    return Platform::virtualMidiInputExists(getQelPortName());
}

bool QelUtils::showManual(const Surroundings& surroundings, const std::string& page) {
    const std::filesystem::path folder = getQelProgDir(surroundings);
    return !folder.empty() && Platform::openDocument(folder / "Manual" / (page.empty() ? "index.htm" : page));
}

void QelUtils::copyFiles(const Surroundings& surroundings, const fs::path& target, const std::string& folder) {
    FactoryFiles::copyFiles(surroundings, target, folder);
}

void QelUtils::removeFiles(const Surroundings& surroundings, const fs::path& target, const std::string& folder) {
    FactoryFiles::removeFiles(surroundings, target, folder);
}

void QelUtils::install(const Surroundings& surroundings, bool withPort) {
    if (withPort) {
        installMidiPort(surroundings);
    }
}

void QelUtils::uninstall(const Surroundings& surroundings) {
    const fs::path data = getQelAppDataDir(surroundings);
    FactoryFiles::removeLeftovers(surroundings);
    for (const char* const folder : FolderNames::withFactoryContent) {
        removeFiles(surroundings, data, folder);
        removeIfEmpty(data / folder);
    }
    removeBufferFiles(data / FolderNames::retrospectiveRecord);
    removeIfEmpty(data / FolderNames::retrospectiveRecord);
    std::error_code ignored;
    for (const char* const list : {"Midi Inputs.txt", "Midi Outputs.txt"}) {
        fs::remove(data / list, ignored);
    }
    uninstallMidiPort(surroundings);
    removeIfEmpty(data);
    removeIfEmpty(getCompanyAppDataDir(surroundings));
}

void QelUtils::installMidiPort(const Surroundings& surroundings) {
    if (!virtualMidiPortExists() && surroundings.settings) {
        MidiPortDriver::install(*surroundings.settings, getQelPortName().c_str());
    }
}

void QelUtils::uninstallMidiPort(const Surroundings& surroundings) {
    if (surroundings.settings) {
        MidiPortDriver::uninstall(*surroundings.settings);
    }
}

} // namespace Backend
