// The folders below the application-data folder.
#pragma once

#include <array>

namespace Backend::FolderNames {

inline constexpr const char* computerInputPresets = "Computer Input Presets";
inline constexpr const char* controlPresets = "Control Presets";
inline constexpr const char* joystickPresets = "Joystick Presets";
inline constexpr const char* layerPresets = "Layer Presets";
inline constexpr const char* midiInputPresets = "Midi Input Presets";
inline constexpr const char* oscillatorPresets = "Oscillator Presets";
inline constexpr const char* sequences = "Sequences";
inline constexpr const char* banks = "Banks";
inline constexpr const char* retrospectiveRecord = "Retrospective Record";

// Those that the program brings content for.
inline constexpr std::array withFactoryContent = {
    computerInputPresets, controlPresets,    joystickPresets, layerPresets,
    midiInputPresets,     oscillatorPresets, sequences,       banks};

} // namespace Backend::FolderNames
