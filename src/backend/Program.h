// One complete set-up of the controller.
#pragma once

#include "midiengine/LayerList.h"
#include "midiengine/ZoneMap.h"
#include "platform/XmlDocument.h"

#include <optional>
#include <string>

namespace Backend {

// Beats a minute that a program may ask for.
inline constexpr int minTempo = 10;
inline constexpr int maxTempo = 500;

struct Program {
    std::string name;
    int tempo = 120;     // minTempo..maxTempo
    int tempoSource = 0; // 0: internal; 1 + i: MIDI clock of input i
    Layers::LayerList layers = Layers::defaultLayers();
    Zones::ZoneMap zones;
    // Sections that are merged into what is there when the program is installed; nothing: their built-in default.
    std::optional<Platform::XmlElement> computerInput;
    std::optional<Platform::XmlElement> controls;
    std::optional<Platform::XmlElement> joystick;
};

} // namespace Backend
