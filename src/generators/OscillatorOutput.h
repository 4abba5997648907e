// Where oscillators send their values.
#pragma once

#include "generators/OscillatorWatcher.h"
#include "values/QelMidiMessage.h"

namespace Backend::Oscillators {

class OscillatorOutput : public OscillatorWatcher {
public:
    // The message has no time: it is played now. Must not block, allocate or throw. [clock; any thread under the engine
    // lock]
    virtual void playFromOscillator(const MidiEngine::QelMidiMessage& message) = 0;

protected:
    ~OscillatorOutput() = default;
};

} // namespace Backend::Oscillators
