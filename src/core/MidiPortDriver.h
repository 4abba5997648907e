// The entries that make the system load the driver of the virtual MIDI port. They lie in the settings of the machine.
#pragma once

#include "platform/SettingsStore.h"

namespace Backend {

class MidiPortDriver final {
public:
    static constexpr const char* FILE_NAME = "qelmidiport.dll";

    // Registers the driver under the next free number, and says so in a message box. Each key that does not open and
    // each value that cannot be written is said in a message box, too. [any]
    static void install(Platform::SettingsStore& settings, const char* portName);
    // Removes what any installation registered. Without a word. [any]
    static void uninstall(Platform::SettingsStore& settings);

    MidiPortDriver() = delete;
};

} // namespace Backend
