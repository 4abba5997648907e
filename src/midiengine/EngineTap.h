// Who wants to know of every message that leaves the engine.
#pragma once

#include "values/QelMidiMessage.h"

namespace Backend::MidiEngine {

// What a tap is told of.
enum class TapKind {
    all,  // every message of the final send, also those that thru or another holder of the note keeps back
    sent, // what was handed to the player
};

// Called on the clock thread under the engine lock for messages of the final send. Must not block or allocate:
// what does not fit is dropped and counted by the tap. [clock]
class EngineTap {
public:
    // `swallowed`: a Note Off that was kept back because another source still holds the note.
    virtual void passed(const QelMidiMessage& message, bool swallowed) = 0;

protected:
    ~EngineTap() = default;
};

} // namespace Backend::MidiEngine
