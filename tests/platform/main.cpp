// Runs the tests; or, started by one of them, the part of another process.
#include "platform/OwnProgram.h"
#include "platform/ReplacingChild.h"
#include "platform/SettingsChild.h"

#include <gtest/gtest.h>

int main(int argc, char** argv) {
    if (argc > 1 && std::string(argv[1]) == settingsChildOption) {
        return runSettingsChild(argc, argv);
    }
    if (argc > 1 && std::string(argv[1]) == replacingChildOption) {
        return runReplacingChild(argc, argv);
    }
    testing::InitGoogleTest(&argc, argv);
    ownProgram() = std::filesystem::absolute(argv[0]);
    return RUN_ALL_TESTS();
}
