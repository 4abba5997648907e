#include "core/Surroundings.h"

#include "core/QelUtils.h"
#include "platform/Clocks.h"
#include "platform/Folders.h"

namespace Backend {

Surroundings Surroundings::ofSystem() {
    const std::filesystem::path data = Platform::localApplicationDataFolder();
    return {.applicationData = data / QelUtils::COMPANY_NAME / QelUtils::APPLICATION_NAME,
            .traceFolder = data,
            .settings = Platform::systemSettingsStore(),
            .milliseconds = Platform::millisecondTime,
            .reportFault = {}};
}

Surroundings Surroundings::inFolder(const std::filesystem::path& folder) {
    return {.applicationData = folder,
            .traceFolder = folder,
            .settings = Platform::fileSettingsStore(folder),
            .milliseconds = Platform::millisecondTime,
            .reportFault = {}};
}

} // namespace Backend
