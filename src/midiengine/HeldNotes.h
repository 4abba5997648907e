// What the engine remembers of each note between its Note On and its Note Off.
#pragma once

#include "midiengine/SoundingNotes.h"
#include "values/QelMidiMessage.h"

#include <cstdint>
#include <optional>
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

    // What the Note Off of the direct road ends.
    [[nodiscard]] Beginning beginning() const {
        return !place.exists() ? Beginning::none : heard ? Beginning::heard : Beginning::unheard;
    }
};

// The presses in the order in which they began. Several presses of the same note end in that order. Room is made
// once: a device that sends no Note Off at all must not use up memory. [clock, under the engine lock]
class HeldNotes final {
public:
    static constexpr int capacity = 4096;

    HeldNotes();

    // Remembers a press; not while full. The reference is good until the next call.
    HeldNote& press(const QelMidiMessage& noteOn, std::int8_t sentNote);

    // Takes out the oldest press that this Note Off ends, if there is one.
    [[nodiscard]] std::optional<HeldNote> release(const QelMidiMessage& noteOff);
    // The velocity that is remembered for this Note Off's input, channel, zone and note; 0 when none is.
    [[nodiscard]] std::int8_t velocityFor(const QelMidiMessage& noteOff) const;
    // Makes the zone forget its oldest press of that note, whoever made it, and gives the note that was sent;
    // -1 when it remembers none.
    [[nodiscard]] int takeFromZone(std::int8_t zone, std::int8_t note);
    // Forgets the presses for which `keep` is false; it is asked from the oldest on.
    template <typename Keep> void keepThose(Keep keep) {
        for (Index i = oldest_; i != none;) {
            const Entry& entry = entries_[static_cast<std::size_t>(i)];
            const Index newer = entry.newer;
            if (!keep(entry.held)) {
                remove(i);
            }
            i = newer;
        }
    }
    // No zone remembers anything from now on.
    void forgetZones();
    // The oldest press that came from that input; null when there is none.
    [[nodiscard]] const HeldNote* oldestOf(std::int8_t input) const;
    // The oldest press of all; null when there is none.
    [[nodiscard]] const HeldNote* oldest() const;
    // An output is closed: nothing was sent there.
    void forgetOutput(std::int8_t output);

    void clear();
    [[nodiscard]] bool isFull() const { return free_ == none; }

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
};

} // namespace Backend::MidiEngine
