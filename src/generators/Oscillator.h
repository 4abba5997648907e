// A generator of values that a program holds: what it plays and how.
#pragma once

#include "values/MidiMessage.h"
#include "values/QelMidiMessage.h"

#include <cstdint>

namespace Backend::Oscillators {

// Unknown plays as a sine.
enum class OscillatorType : std::int32_t { unknown = -1, sine = 0, triangle = 1, saw = 2, pulse = 3, random = 4 };

// A plain record, copied by value. How far a playing one has got is the business of RunningOscillator.
struct Oscillator {
    std::int32_t id = -1; // its place in the list, 0-based
    bool selected = false;
    OscillatorType type = OscillatorType::sine;
    std::int32_t speed = 480; // the period in ticks; below 1 counts as 1
    std::int32_t min = 0;
    std::int32_t max = 127;      // below min: the wave is mirrored
    bool steppedSpeed = false;   // speedMode "ppq": relative changes step through note lengths
    std::int32_t stopValue = -1; // sent when it stops; -1: nothing is
    std::int32_t detail = 10;    // of sine, triangle and saw every so manieth change is sent; below 1 counts as 1
    MidiEngine::MidiMessage midiMessage; // whose data the values are; an invalid one sends nothing
    std::int8_t output = MidiEngine::QelMidiMessage::DEFAULT_OUTPUT;
    std::int8_t channel = MidiEngine::QelMidiMessage::DEFAULT_CHANNEL;
    std::int8_t zone = MidiEngine::QelMidiMessage::DEFAULT_ZONE;
    bool playing = false;

    friend bool operator==(const Oscillator&, const Oscillator&) = default;
};

} // namespace Backend::Oscillators
