#include "midiengine/HeldNotes.h"

namespace Backend::MidiEngine {

namespace {
constexpr std::size_t bucketCount = 4096;

bool isPressOf(const HeldNote& held, const QelMidiMessage& message) {
    return held.note == message.getD1() && held.input == message.getInput() && held.channel == message.getChannel() &&
           held.zone == message.getZone();
}
} // namespace

HeldNotes::HeldNotes() : entries_(capacity), buckets_(bucketCount) {
    clear();
}

void HeldNotes::clear() {
    buckets_.assign(bucketCount, {});
    for (Index i = 0; i < capacity; ++i) {
        entries_[static_cast<std::size_t>(i)].nextInBucket = i + 1 < capacity ? static_cast<Index>(i + 1) : none;
    }
    free_ = 0;
    oldest_ = newest_ = none;
}

std::size_t HeldNotes::bucketOf(std::int8_t input, std::int8_t channel, std::int8_t zone, std::int8_t note) {
    const auto key = static_cast<std::uint32_t>(static_cast<std::uint8_t>(input)) << 24 |
                     static_cast<std::uint32_t>(static_cast<std::uint8_t>(zone)) << 16 |
                     static_cast<std::uint32_t>(static_cast<std::uint8_t>(channel)) << 8 |
                     static_cast<std::uint32_t>(static_cast<std::uint8_t>(note));
    return key * 2654435761U >> 20; // the upper twelve bits of the product are well mixed
}

HeldNote& HeldNotes::press(const QelMidiMessage& noteOn, std::int8_t sentNote) {
    const Index index = free_;
    Entry& entry = entries_[static_cast<std::size_t>(index)];
    free_ = entry.nextInBucket;
    entry.nextInBucket = none;
    entry.held = {noteOn.getInput(),
                  noteOn.getChannel(),
                  noteOn.getZone(),
                  noteOn.getD1(),
                  noteOn.getOutput(),
                  noteOn.isDefaultChannel(),
                  noteOn.getD2(),
                  sentNote,
                  true,
                  {},
                  false};
    Bucket& bucket = buckets_[bucketOf(entry.held.input, entry.held.channel, entry.held.zone, entry.held.note)];
    (bucket.first == none ? bucket.first : entries_[static_cast<std::size_t>(bucket.last)].nextInBucket) = index;
    bucket.last = index;
    entry.older = newest_;
    entry.newer = none;
    (newest_ == none ? oldest_ : entries_[static_cast<std::size_t>(newest_)].newer) = index;
    newest_ = index;
    return entry.held;
}

HeldNotes::Index HeldNotes::find(const QelMidiMessage& noteOff) const {
    Index index =
        buckets_[bucketOf(noteOff.getInput(), noteOff.getChannel(), noteOff.getZone(), noteOff.getD1())].first;
    while (index != none) {
        const Entry& entry = entries_[static_cast<std::size_t>(index)];
        if (isPressOf(entry.held, noteOff) && entry.held.output == noteOff.getOutput() &&
            entry.held.defaultChannel == noteOff.isDefaultChannel()) {
            return index;
        }
        index = entry.nextInBucket;
    }
    return none;
}

std::optional<HeldNote> HeldNotes::release(const QelMidiMessage& noteOff) {
    const Index index = find(noteOff);
    if (index == none) {
        return std::nullopt;
    }
    const HeldNote held = entries_[static_cast<std::size_t>(index)].held;
    remove(index);
    return held;
}

std::int8_t HeldNotes::velocityFor(const QelMidiMessage& noteOff) const {
    Index index =
        buckets_[bucketOf(noteOff.getInput(), noteOff.getChannel(), noteOff.getZone(), noteOff.getD1())].first;
    for (; index != none; index = entries_[static_cast<std::size_t>(index)].nextInBucket) {
        if (isPressOf(entries_[static_cast<std::size_t>(index)].held, noteOff)) {
            return entries_[static_cast<std::size_t>(index)].held.velocity;
        }
    }
    return 0;
}

int HeldNotes::takeFromZone(std::int8_t zone, std::int8_t note) {
    for (Index i = oldest_; i != none; i = entries_[static_cast<std::size_t>(i)].newer) {
        HeldNote& held = entries_[static_cast<std::size_t>(i)].held;
        if (held.rememberedByZone && held.zone == zone && held.note == note) {
            held.rememberedByZone = false;
            return held.sentNote;
        }
    }
    return -1;
}

void HeldNotes::forgetZones() {
    for (Index i = oldest_; i != none; i = entries_[static_cast<std::size_t>(i)].newer) {
        entries_[static_cast<std::size_t>(i)].held.rememberedByZone = false;
    }
}

const HeldNote* HeldNotes::oldestOf(std::int8_t input) const {
    for (Index i = oldest_; i != none; i = entries_[static_cast<std::size_t>(i)].newer) {
        if (entries_[static_cast<std::size_t>(i)].held.input == input) {
            return &entries_[static_cast<std::size_t>(i)].held;
        }
    }
    return nullptr;
}

const HeldNote* HeldNotes::oldest() const {
    return oldest_ == none ? nullptr : &entries_[static_cast<std::size_t>(oldest_)].held;
}

void HeldNotes::forgetOutput(std::int8_t output) {
    for (Index i = oldest_; i != none; i = entries_[static_cast<std::size_t>(i)].newer) {
        HeldNote& held = entries_[static_cast<std::size_t>(i)].held;
        if (held.place.output == output) {
            held.place = {};
            held.heard = false;
        }
    }
}

void HeldNotes::remove(Index index) {
    Entry& entry = entries_[static_cast<std::size_t>(index)];
    Bucket& bucket = buckets_[bucketOf(entry.held.input, entry.held.channel, entry.held.zone, entry.held.note)];
    Index before = none;
    for (Index i = bucket.first; i != index; i = entries_[static_cast<std::size_t>(i)].nextInBucket) {
        before = i;
    }
    (before == none ? bucket.first : entries_[static_cast<std::size_t>(before)].nextInBucket) = entry.nextInBucket;
    if (bucket.last == index) {
        bucket.last = before;
    }
    (entry.older == none ? oldest_ : entries_[static_cast<std::size_t>(entry.older)].newer) = entry.newer;
    (entry.newer == none ? newest_ : entries_[static_cast<std::size_t>(entry.newer)].older) = entry.older;
    entry.nextInBucket = free_;
    free_ = index;
}

} // namespace Backend::MidiEngine
