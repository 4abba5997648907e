// A second process that writes to a settings store: this test program, started again.
#pragma once

#include <filesystem>
#include <string>

inline constexpr const char* settingsChildOption = "--settings-child";

// Arguments behind the option: folder, name prefix, number of values to write.
int runSettingsChild(int argc, char** argv);

// Starts the child and waits for its end; its exit code.
int startSettingsChild(const std::filesystem::path& folder, const std::string& prefix, unsigned count);
