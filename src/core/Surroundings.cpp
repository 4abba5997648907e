#include "core/Surroundings.h"

#include "core/QelUtils.h"
#include "platform/Clocks.h"
#include "platform/Folders.h"
#include "platform/OwnModule.h"

#include <system_error>

namespace Backend {

// Beside the program, or where a system keeps what is shared; the same of the library, which an installer may load.
std::filesystem::path Surroundings::ownInstallation() {
    const std::filesystem::path shared = std::filesystem::path("share") / "tembrel";
    const std::filesystem::path program = Platform::programFile().parent_path();
    const std::filesystem::path library = Platform::moduleFile().parent_path();
    std::error_code unknown;
    for (const std::filesystem::path& folder :
         {program, program.parent_path() / shared, library, library.parent_path() / shared,
          library.parent_path().parent_path() / shared}) {
        if (folder.is_absolute() && std::filesystem::is_directory(folder / "Default", unknown)) {
            return folder;
        }
    }
    return {};
}

Surroundings Surroundings::ofSystem() {
    const std::filesystem::path data = Platform::localApplicationDataFolder();
    return {.applicationData = data / QelUtils::COMPANY_NAME / QelUtils::APPLICATION_NAME,
            .traceFolder = data,
            .settings = Platform::systemSettingsStore(),
            .milliseconds = Platform::millisecondTime,
            .reportFault = {},
            .installation = ownInstallation()};
}

Surroundings Surroundings::inFolder(const std::filesystem::path& folder) {
    return {.applicationData = folder,
            .traceFolder = folder,
            .settings = Platform::fileSettingsStore(folder),
            .milliseconds = Platform::millisecondTime,
            .reportFault = {}};
}

} // namespace Backend
