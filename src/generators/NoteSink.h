// Where a machine's notes go.
#pragma once

#include "values/QelMidiMessage.h"

#include <cstdint>

namespace Backend::SequenceManagement {

// What became of a Note On.
enum class NoteBegun : std::uint8_t {
    nowhere, // its output is closed: it needs no end
    unheard, // it was kept back, and its end is to be as well
    heard,
};

// Messages have output, channel and data; the sink gives them their time. [clock]
class NoteSink {
public:
    [[nodiscard]] virtual NoteBegun begin(const MidiEngine::QelMidiMessage& noteOn) = 0;
    // The end of a note that began.
    virtual void end(const MidiEngine::QelMidiMessage& noteOff, NoteBegun begun) = 0;

protected:
    ~NoteSink() = default;
};

} // namespace Backend::SequenceManagement
