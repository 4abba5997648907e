#include "core/QelUtils.h"

#include "core/SettingsText.h"
#include "platform/Notices.h"

#include <optional>

namespace Backend {

namespace {

[[nodiscard]] std::optional<std::string> readProgDir(const Surroundings& surroundings, const std::string& keyPath) {
    if (!surroundings.settings) {
        return std::nullopt;
    }
    const auto key = surroundings.settings->open(Platform::SettingsRoot::currentUser, keyPath);
    const auto value = key ? key->read("ProgDir") : std::nullopt;
    return value ? storedText(*value) : std::nullopt;
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
    return folder;
}

std::string QelUtils::getRegistryKey(const std::string& applicationName) {
    return std::string("Software\\") + COMPANY_NAME + "\\" + applicationName + "\\" + VERSION;
}

bool QelUtils::registryKeyExists(const Surroundings& surroundings, const std::string& key) {
    return readProgDir(surroundings, key).has_value();
}

bool QelUtils::showManual(const Surroundings& surroundings, const std::string& page) {
    const std::filesystem::path folder = getQelProgDir(surroundings);
    return !folder.empty() && Platform::openDocument(folder / "Manual" / (page.empty() ? "index.htm" : page));
}

} // namespace Backend
