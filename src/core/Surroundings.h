// What the backend finds around it: folders, the settings store, the millisecond clock. Handed in by the host.
#pragma once

#include "platform/Clocks.h"
#include "platform/Joysticks.h"
#include "platform/Result.h"
#include "platform/SettingsStore.h"

#include <cstdint>
#include <filesystem>
#include <functional>
#include <memory>
#include <string>

namespace Backend {

namespace MidiInput {
struct InputSteps;
}

struct Surroundings {
    std::filesystem::path applicationData; // the user's files: banks, presets, recordings
    std::filesystem::path traceFolder;     // where "qel.log" is written; empty: no trace file
    std::shared_ptr<Platform::SettingsStore> settings;
    std::function<std::uint32_t()> milliseconds; // a millisecond clock that wraps at 32 bits
    // Told of every program, bank or preset that could not be read or written; empty: a message box. [backend]
    std::function<void(const Platform::Fault&)> reportFault;
    // Told how each incoming MIDI message was handled; empty: nobody asks. [backend]
    std::function<void(const MidiInput::InputSteps&)> explainInput{};
    // Told in a sentence of what goes on without the user's doing, such as that the record pauses; empty: only the
    // trace is. Must not wait for the user. [any]
    std::function<void(const std::string&)> reportRemark{};
    // Milliseconds since 1970.
    std::function<std::int64_t()> calendar = Platform::calendarTime;
    // What is played is recorded, if the user's settings do not forbid it.
    bool records = true;
    // Opens the joysticks, on the thread that looks at them; empty: nobody looks for joysticks.
    std::function<std::unique_ptr<Platform::Joysticks>()> openJoysticks{};
    // Where the program's own files lie unless the settings name another folder; empty: nowhere.
    std::filesystem::path installation{};
    // The backend starts with the bank that the settings name, else with the built-in program.
    bool startsWithDefaultBank = false;

    // The folder with the files that came with the running program; empty when there is none.
    [[nodiscard]] static std::filesystem::path ownInstallation();
    // The system's own folders, settings and clock.
    [[nodiscard]] static Surroundings ofSystem();
    // Everything below one folder: settings and data, for tests and for running beside another instance.
    [[nodiscard]] static Surroundings inFolder(const std::filesystem::path& folder);
};

} // namespace Backend
