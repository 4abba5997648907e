// The one entry through which a host creates the backend.
#pragma once

#include "core/QelIF.h"
#include "core/Surroundings.h"

#include <memory>
#include <string>

namespace Backend {

namespace MidiEngine {
class MidiPlayer;
}

class QelFactory final {
public:
    // Creates the backend with its message thread running. `name` is the application's name in the settings key;
    // `player` outlives the backend. `traceToFile`: trace lines also go to a file. The caller then sends, each
    // blocking, through getQelMessageManager(): sendInitialize, sendSetMidiInputPorts, sendSetMidiOutputPorts,
    // sendEndInitialize, and, for a user interface, sendCreateQelGui; in the end sendEnd, stops
    // getMessageManagerMaster() and deletes the facade. [host]
    [[nodiscard]] static std::unique_ptr<QelIF> createQel(const std::string& name, MidiEngine::MidiPlayer& player,
                                                          bool traceToFile,
                                                          const Surroundings& surroundings = Surroundings::ofSystem());
};

} // namespace Backend
