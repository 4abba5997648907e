// What each key of a MIDI input has started, so that its release ends just that.
#pragma once

#include "values/QelMidiMessage.h"

#include <array>
#include <cstddef>
#include <cstdint>
#include <vector>

namespace Backend::MidiInput {

// A key is an input, a channel and a note; what it starts may be other notes in other places, several or none. At most
// `capacity` notes are remembered, beyond that the oldest are forgotten. Allocates only when it is made. [backend]
class StartedNotes final {
public:
    static constexpr std::size_t capacity = 4096;

    // A note as it was sent.
    struct Note {
        std::int8_t zone;
        std::int8_t output;
        std::int8_t channel;
        std::int8_t number;
        bool defaultChannel;

        // The note of a Note On or Note Off.
        [[nodiscard]] static Note of(const MidiEngine::QelMidiMessage& message);
        // `noteOff` as the end of this note: the rest of it stays.
        [[nodiscard]] MidiEngine::QelMidiMessage ended(const MidiEngine::QelMidiMessage& noteOff) const;

        friend bool operator==(const Note&, const Note&) = default;
    };

    StartedNotes();

    // The key of an incoming Note On goes down: what is added next belongs to this press.
    void beginPress(const MidiEngine::QelMidiMessage& noteOn);
    // The press sends a Note On.
    void add(const MidiEngine::QelMidiMessage& noteOn);
    // The press itself ends a note that it has started.
    void remove(const MidiEngine::QelMidiMessage& noteOff);
    // The key of an incoming Note Off comes up: takes the notes of its latest press into `notes`, in the order in which
    // they were started; false when it has started none.
    [[nodiscard]] bool takePress(const MidiEngine::QelMidiMessage& noteOff, std::vector<Note>& notes);
    // Forgets what the keys of an input have started.
    void forget(std::int8_t input);

    [[nodiscard]] std::size_t size() const { return size_; }

private:
    using Place = std::int16_t; // in entries_; -1: none

    struct Links {
        Place newer;
        Place older;
    };
    struct Entry {
        std::uint32_t key;   // input, channel, note
        std::uint32_t press; // entries of one press have the same
        Note note;
        Links inBucket;
        Links inAge;
    };
    // Entries linked from the newest to the oldest.
    struct List {
        Place newest = -1;
        Place oldest = -1;
    };

    [[nodiscard]] List& bucketOf(std::uint32_t key);
    void link(List& list, Links Entry::*links, Place place);
    void unlink(List& list, Links Entry::*links, Place place);
    void drop(Place place);

    std::vector<Entry> entries_;
    std::vector<Place> free_;
    std::array<List, 16 * 128> buckets_; // by channel and note
    List byAge_;
    std::size_t size_ = 0;
    std::uint32_t key_ = 0; // of the press that began last
    std::uint32_t press_ = 0;
};

} // namespace Backend::MidiInput
