// One complete set-up of the controller, as files hold it.
#pragma once

#include "platform/XmlDocument.h"

#include <string>
#include <vector>

namespace Backend {

// Beats a minute that a program may ask for.
inline constexpr int minTempo = 10;
inline constexpr int maxTempo = 500;

struct Program {
    std::string name;
    int tempo = 120;     // minTempo..maxTempo
    int tempoSource = 0; // 0: internal; 1 + i: MIDI clock of input i
    // Its sections as they were read, each read again by whoever it belongs to when the program is installed.
    std::vector<Platform::XmlElement> sections;
    // What a newer version may have written; it is kept for saving.
    std::vector<Platform::XmlAttribute> furtherAttributes;
};

} // namespace Backend
