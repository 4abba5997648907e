// What the engine remembers of each note between its Note On and its Note Off.
#pragma once

#include "midiengine/SoundingNotes.h"
#include "values/QelMidiMessage.h"

#include <cstdint>
#include <vector>

namespace Backend::MidiEngine {

// One press: a Note On that has come in and not yet its Note Off.
struct HeldNote {
    // Who pressed it: these four find it again.
    std::int8_t input = -1;
    std::int8_t channel = 0;
    std::int8_t zone = -1;
    std::int8_t note = 0; // as it came in
    // How it was addressed, so that of two presses of the same note the right one ends.
    std::int8_t output = -1;
    bool defaultChannel = true;
    // What became of it.
    std::int8_t velocity = 0;
    std::int8_t sentNote = 0;     // after the zone's transposition
    bool rememberedByZone = true; // until the zone map is exchanged
    NotePlace place;              // where it went, when it did not go through the layers
    bool heard = false;           // it was sent to that place
};

// The presses in the order in which they began. Several presses of the same note end in that order. Room is made
// once: when more notes are held than fit, the oldest press is forgotten (a device that sends no Note Off at all
// must not use up memory, nor stop the music). [clock, under the engine lock]
class HeldNotes final {
public:
    static constexpr int capacity = 4096;

    HeldNotes();

    // Remembers a press. The reference is good until the next call.
    HeldNote& press(const QelMidiMessage& noteOn, std::int8_t sentNote);

    // Takes the oldest press that this Note Off ends into `held`; false when there is none.
    [[nodiscard]] bool release(const QelMidiMessage& noteOff, HeldNote& held);
    // The velocity that is remembered for this Note Off's input, channel, zone and note; 0 when none is.
    [[nodiscard]] std::int8_t velocityFor(const QelMidiMessage& noteOff) const;
    // Makes the zone forget its oldest press of that note, whoever made it, and gives the note that was sent;
    // -1 when it remembers none.
    [[nodiscard]] int takeFromZone(std::int8_t zone, std::int8_t note);
    // No zone remembers anything from now on.
    void forgetZones();
    // The oldest press that came from that input; null when there is none.
    [[nodiscard]] const HeldNote* oldestOf(std::int8_t input) const;
    // An output is closed: nothing was sent there.
    void forgetOutput(std::int8_t output);

    void clear();
    [[nodiscard]] int size() const { return size_; }

private:
    using Index = std::int16_t;
    static constexpr Index none = -1;
    struct Entry {
        HeldNote held;
        Index nextInBucket = none;
        Index older = none;
        Index newer = none;
    };
    struct Bucket {
        Index first = none;
        Index last = none;
    };

    [[nodiscard]] static std::size_t bucketOf(std::int8_t input, std::int8_t channel, std::int8_t zone,
                                              std::int8_t note);
    [[nodiscard]] Index find(const QelMidiMessage& noteOff) const;
    void remove(Index entry);

    std::vector<Entry> entries_;
    std::vector<Bucket> buckets_;
    Index free_ = none; // linked through nextInBucket
    Index oldest_ = none;
    Index newest_ = none;
    int size_ = 0;
};

} // namespace Backend::MidiEngine
