#include "platform/SettingsStore.h"

#include "platform/Folders.h"

namespace Platform {

std::unique_ptr<SettingsStore> systemSettingsStore() {
    return fileSettingsStore(configurationFolder() / "tembrel");
}

} // namespace Platform
