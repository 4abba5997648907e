// A layer as the user sets it up: which notes it takes, what it makes of them, where it sends them.
#pragma once

#include "generators/SequenceSetting.h"
#include "midiengine/ArpeggioSetting.h"
#include "values/Fraction.h"
#include "values/Note.h"
#include "values/NoteToggle.h"
#include "values/RelativeFixedValue.h"

#include <cstdint>
#include <functional>
#include <optional>
#include <string>

namespace Backend::Layers {

// A value. What plays lives in MidiEngine::PlayingLayer.
struct Layer {
    std::int32_t index = 0; // its place in the list; shown counted from 1
    bool mute = false;
    bool mono = false;
    bool solo = false;        // not stored; while any layer is soloed only soloed ones play, muted or not
    bool useNoteStack = true; // a Note Off does not end a note that another source still holds
    Note minNote{0};          // inclusive range of the notes it takes
    Note maxNote{127};
    std::int8_t minVelocity = 0; // inclusive range, 0..127
    std::int8_t maxVelocity = 127;
    std::int8_t zone = -1;        // takes this zone's events only; -1: any
    std::int8_t output = -1;      // -1: the default output
    std::int8_t channel = 0;      // 0..15
    RelativeFixedValue transpose; // semitones, or steps of the scale where a key is set; fixed: the note itself
    Note key;                     // pitch class of the scale; no note: no key
    RelativeFixedValue velocity;  // added after scaling; fixed: the velocity itself
    Fraction compress{1, 1};      // scales velocities
    NoteToggle toggle;
    std::optional<ArpeggioManagement::ArpeggioSetting> arpeggio; // plays the notes beat by beat
    std::optional<SequenceManagement::SequenceSetting> sequence; // plays a step for each of them

    [[nodiscard]] bool hasVelocityRange() const { return minVelocity != 0 || maxVelocity != 127; }

    // The note that the layer sends for `note`, folded into 0..127.
    [[nodiscard]] std::int8_t transform(std::int8_t note) const;
    // The velocity that it sends, 0..127.
    [[nodiscard]] std::int8_t transformVelocity(std::int8_t velocityIn) const;

    // One line for lists, for example "L:1  Ch:1  T:+12". `outputName` gives the name of an output.
    [[nodiscard]] std::string summary(const std::function<std::string(int output)>& outputName) const;

    bool operator==(const Layer&) const = default;
};

} // namespace Backend::Layers
