// How often each note sounds on each output and channel.
#pragma once

#include <cstddef>
#include <cstdint>
#include <vector>

namespace Backend::MidiEngine {

// Where a note goes, or went: output 0..127, channel 0..15, note 0..127. No place: output -1.
struct NotePlace {
    std::int8_t output = -1;
    std::int8_t channel = 0;
    std::int8_t note = 0;

    [[nodiscard]] bool exists() const { return output >= 0; }
    bool operator==(const NotePlace&) const = default;
};

// Counts the Note Ons of each place, and apart from that those that were heard: with thru off, a note from an input
// is counted but not sent, and must not keep the end of a note that was sent from going out. [clock, under the lock]
class SoundingNotes final {
public:
    SoundingNotes();

    // A Note On for that place; `heard`: it is sent.
    void start(const NotePlace& place, bool heard);
    // A Note Off for that place; `heard`: its own Note On was sent. True when somebody still holds the note, so
    // that, where held notes are kept, this Note Off must not go out.
    [[nodiscard]] bool end(const NotePlace& place, bool heard);

    // Takes one sounding place, in the order of output, channel and note, counting it as silent; none: no place.
    // `output` -1 stands for all. Call repeatedly until it gives none.
    [[nodiscard]] NotePlace takeAny(int output = -1);
    // All notes of an output are silent from now on.
    void forget(int output);

    [[nodiscard]] int count(const NotePlace& place) const;
    // Number of places that sound.
    [[nodiscard]] int places() const { return places_; }

private:
    struct Count {
        std::int32_t all = 0;
        std::int32_t heard = 0;
    };
    [[nodiscard]] static std::size_t index(const NotePlace& place);
    void clear(std::size_t index);

    std::vector<Count> counts_;
    std::vector<std::int32_t> placesOfOutput_;
    int places_ = 0;
};

} // namespace Backend::MidiEngine
