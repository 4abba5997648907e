// Who wants to know of every message that leaves the engine.
#pragma once

#include "values/QelMidiMessage.h"

namespace Backend::MidiEngine {

// Called on the clock thread under the engine lock for each message of the final send. Must not block or allocate:
// what does not fit is dropped and counted by the tap. [clock]
class EngineTap {
public:
    // `swallowed`: a Note Off that was kept back because another source still holds the note.
    virtual void passed(const QelMidiMessage& message, bool swallowed) = 0;

protected:
    ~EngineTap() = default;
};

} // namespace Backend::MidiEngine
