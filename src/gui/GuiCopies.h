// What the user interface is told, as values that travel in copies.
#pragma once

#include "midiengine/LayerList.h"
#include "values/RelativeFixedValue.h"

#include <map>
#include <string>
#include <vector>

namespace Gui {

struct ProgramInfo {
    std::string name;
    int slot = 0; // of the bank, 0-based

    friend bool operator==(const ProgramInfo&, const ProgramInfo&) = default;
};

struct BankInfo {
    std::string path;                  // empty: it has no file
    std::vector<std::string> programs; // names, by slot

    friend bool operator==(const BankInfo&, const BankInfo&) = default;
};

struct LayersInfo {
    Backend::Layers::LayerList layers;
    int dataSelected = 0; // index
    int editSelected = 0;
    std::string presetName = {}; // what they were last loaded from or saved as; may be empty

    friend bool operator==(const LayersInfo&, const LayersInfo&) = default;
};

struct WindowMove {
    RelativeFixedValue x; // points to the right
    RelativeFixedValue y; // points downward
};

// The files that a kind of preset has, and which of them a section was loaded from.
struct PresetsInfo {
    int panel = 0; // Panel
    std::vector<std::string> names;
    std::string current;

    friend bool operator==(const PresetsInfo&, const PresetsInfo&) = default;
};

// Step sequences by name, each as its XML text.
using SequencePresetList = std::map<std::string, std::string>;

// How the host is, for the status line.
struct HostStatus {
    std::string system; // "JACK", "ALSA", "WinMM", "none"
    int tempo = 120;    // as it is played
    int heldNotes = 0;
    double latencyMs = -1; // of the way through the program; negative: not known
    double jitterMs = 0;   // by how much that differs from one event to the next
};

} // namespace Gui
