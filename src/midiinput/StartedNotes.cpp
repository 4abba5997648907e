#include "midiinput/StartedNotes.h"

#include <algorithm>

namespace Backend::MidiInput {

using MidiEngine::QelMidiMessage;

namespace {

std::uint32_t keyOf(const QelMidiMessage& message) {
    const auto byte = [](std::int8_t value) { return static_cast<std::uint32_t>(static_cast<std::uint8_t>(value)); };
    return byte(message.getInput()) << 16 | byte(message.getChannel()) << 8 | byte(message.getD1());
}

} // namespace

StartedNotes::Note StartedNotes::Note::of(const QelMidiMessage& message) {
    return {message.getZone(), message.getOutput(), message.getChannel(), message.getD1(), message.isDefaultChannel()};
}

QelMidiMessage StartedNotes::Note::ended(const QelMidiMessage& noteOff) const {
    QelMidiMessage end = noteOff;
    end.setZone(zone);
    end.setOutput(output);
    end.setChannel(channel);
    end.setDefaultChannel(defaultChannel);
    end.setD1(number);
    return end;
}

StartedNotes::StartedNotes() : entries_(capacity) {
    free_.reserve(capacity);
    for (std::size_t place = capacity; place > 0; --place) {
        free_.push_back(static_cast<Place>(place - 1));
    }
}

void StartedNotes::beginPress(const QelMidiMessage& noteOn) {
    key_ = keyOf(noteOn);
    ++press_;
}

void StartedNotes::add(const QelMidiMessage& noteOn) {
    if (free_.empty()) {
        drop(byAge_.oldest);
    }
    const Place place = free_.back();
    free_.pop_back();
    Entry& entry = entries_[static_cast<std::size_t>(place)];
    entry.key = key_;
    entry.press = press_;
    entry.note = Note::of(noteOn);
    link(bucketOf(key_), &Entry::inBucket, place);
    link(byAge_, &Entry::inAge, place);
    ++size_;
}

void StartedNotes::remove(const QelMidiMessage& noteOff) {
    const Note note = Note::of(noteOff);
    Place place = byAge_.newest;
    while (place >= 0) {
        const Entry& entry = entries_[static_cast<std::size_t>(place)];
        if (entry.press != press_ || entry.key != key_) {
            return;
        }
        if (entry.note == note) {
            drop(place);
            return;
        }
        place = entry.inAge.older;
    }
}

bool StartedNotes::takePress(const QelMidiMessage& noteOff, std::vector<Note>& notes) {
    notes.clear();
    const std::uint32_t key = keyOf(noteOff);
    std::uint32_t press = 0;
    Place place = bucketOf(key).newest;
    while (place >= 0) {
        const Entry& entry = entries_[static_cast<std::size_t>(place)];
        const Place older = entry.inBucket.older;
        if (entry.key == key) {
            if (!notes.empty() && entry.press != press) {
                break;
            }
            press = entry.press;
            notes.push_back(entry.note);
            drop(place);
        }
        place = older;
    }
    std::reverse(notes.begin(), notes.end());
    return !notes.empty();
}

void StartedNotes::forget(std::int8_t input) {
    Place place = byAge_.newest;
    while (place >= 0) {
        const Entry& entry = entries_[static_cast<std::size_t>(place)];
        const Place older = entry.inAge.older;
        if (entry.key >> 16 == static_cast<std::uint8_t>(input)) {
            drop(place);
        }
        place = older;
    }
}

StartedNotes::List& StartedNotes::bucketOf(std::uint32_t key) {
    return buckets_[(key >> 8 & 0x0F) << 7 | (key & 0x7F)];
}

void StartedNotes::link(List& list, Links Entry::*links, Place place) {
    entries_[static_cast<std::size_t>(place)].*links = {-1, list.newest};
    if (list.newest >= 0) {
        (entries_[static_cast<std::size_t>(list.newest)].*links).newer = place;
    } else {
        list.oldest = place;
    }
    list.newest = place;
}

void StartedNotes::unlink(List& list, Links Entry::*links, Place place) {
    const Links gone = entries_[static_cast<std::size_t>(place)].*links;
    (gone.newer >= 0 ? (entries_[static_cast<std::size_t>(gone.newer)].*links).older : list.newest) = gone.older;
    (gone.older >= 0 ? (entries_[static_cast<std::size_t>(gone.older)].*links).newer : list.oldest) = gone.newer;
}

void StartedNotes::drop(Place place) {
    unlink(bucketOf(entries_[static_cast<std::size_t>(place)].key), &Entry::inBucket, place);
    unlink(byAge_, &Entry::inAge, place);
    free_.push_back(place);
    --size_;
}

} // namespace Backend::MidiInput
