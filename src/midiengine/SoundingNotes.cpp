#include "midiengine/SoundingNotes.h"

namespace Backend::MidiEngine {

namespace {
constexpr std::size_t outputs = 128;
constexpr std::size_t placesAnOutput = std::size_t{16} * 128;

NotePlace placeOf(std::size_t index) {
    return {static_cast<std::int8_t>(index / placesAnOutput), static_cast<std::int8_t>(index / 128 % 16),
            static_cast<std::int8_t>(index % 128)};
}
} // namespace

SoundingNotes::SoundingNotes() : counts_(outputs * placesAnOutput), placesOfOutput_(outputs) {}

std::size_t SoundingNotes::index(const NotePlace& place) {
    return static_cast<std::size_t>(place.output) * placesAnOutput + static_cast<std::size_t>(place.channel) * 128 +
           static_cast<std::size_t>(place.note);
}

void SoundingNotes::start(const NotePlace& place, bool heard) {
    Count& count = counts_[index(place)];
    if (count.all++ == 0) {
        ++places_;
        ++placesOfOutput_[static_cast<std::size_t>(place.output)];
    }
    count.heard += heard ? 1 : 0;
}

bool SoundingNotes::end(const NotePlace& place, bool heard) {
    const std::size_t i = index(place);
    Count& count = counts_[i];
    if (count.all == 0) {
        return false;
    }
    if (heard && count.heard > 0) {
        --count.heard;
    }
    if (--count.all == 0) {
        clear(i);
        return false;
    }
    return !(heard && count.heard == 0);
}

void SoundingNotes::clear(std::size_t index) {
    counts_[index] = {};
    --places_;
    --placesOfOutput_[index / placesAnOutput];
}

NotePlace SoundingNotes::takeAny(int output) {
    if (places_ == 0) {
        return {};
    }
    if (output < 0) {
        output = 0;
        while (placesOfOutput_[static_cast<std::size_t>(output)] == 0) {
            ++output;
        }
    } else if (placesOfOutput_[static_cast<std::size_t>(output)] == 0) {
        return {};
    }
    std::size_t i = static_cast<std::size_t>(output) * placesAnOutput;
    while (counts_[i].all == 0) {
        ++i;
    }
    clear(i);
    return placeOf(i);
}

void SoundingNotes::forget(int output) {
    while (takeAny(output).exists()) {
    }
}

int SoundingNotes::count(const NotePlace& place) const {
    return counts_[index(place)].all;
}

} // namespace Backend::MidiEngine
