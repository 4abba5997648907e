#include "platform/SettingsChild.h"

#include "platform/OwnProgram.h"
#include "platform/SettingsStore.h"

#include <cstdlib>

int runSettingsChild(int argc, char** argv) {
    if (argc != 5) {
        return 2;
    }
    const auto store = Platform::fileSettingsStore(argv[2]);
    const auto key = store->openOrCreate(Platform::SettingsRoot::currentUser, "Software\\Shared");
    if (key == nullptr) {
        return 3;
    }
    for (int i = 0; i < std::atoi(argv[4]); ++i) {
        if (key->write(argv[3] + std::to_string(i), Platform::SettingsValue::ofNumber(static_cast<unsigned>(i))) != 0) {
            return 4;
        }
    }
    return 0;
}

int startSettingsChild(const std::filesystem::path& folder, const std::string& prefix, unsigned count) {
    std::string arguments(settingsChildOption);
    arguments.append(" \"").append(folder.string()).append("\" ").append(prefix).append(" ");
    return startOwnProgram(arguments + std::to_string(count));
}
