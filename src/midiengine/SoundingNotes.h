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

// What is known of the Note On that a Note Off ends.
enum class Beginning : std::uint8_t {
    heard,   // it was sent
    unheard, // it was counted but not sent: it came in while thru was off
    none,    // it went nowhere, or where it went is gone: nothing is counted for it
    unknown, // there was none, or nobody remembers
};

// Counts the Note Ons of each place, those that were heard apart from those that were not: who was not heard neither
// holds a note nor ends somebody else's. What sounds is always counted as heard. [clock, under the lock]
class SoundingNotes final {
public:
    SoundingNotes();

    // A Note On for that place; `heard`: it is sent.
    void start(const NotePlace& place, bool heard);
    // A Note Off for that place; `audible`: it is sent unless it is kept back. True when somebody still holds the
    // note, so that, where held notes are kept, this Note Off must not go out.
    [[nodiscard]] bool end(const NotePlace& place, Beginning beginning, bool audible);

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
        std::int32_t heard = 0;
        std::int32_t unheard = 0;

        [[nodiscard]] bool isSilent() const { return heard == 0 && unheard == 0; }
    };
    [[nodiscard]] static std::size_t index(const NotePlace& place);
    void silence(std::size_t index);

    std::vector<Count> counts_;
    std::vector<std::int32_t> placesOfOutput_;
    int places_ = 0;
};

} // namespace Backend::MidiEngine
