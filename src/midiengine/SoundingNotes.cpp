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
    if (count.isSilent()) {
        ++places_;
        ++placesOfOutput_[static_cast<std::size_t>(place.output)];
    }
    ++(heard ? count.heard : count.unheard);
}

bool SoundingNotes::end(const NotePlace& place, Beginning beginning, bool audible) {
    const std::size_t i = index(place);
    Count& count = counts_[i];
    if (count.isSilent()) {
        return false;
    }
    if (beginning == Beginning::none) {
        return true;
    }
    if (beginning == Beginning::unknown) { // it counts for the others
        beginning = audible && count.heard > 0 ? Beginning::heard : Beginning::unheard;
    }
    const bool heard = beginning == Beginning::heard;
    std::int32_t& own = heard ? count.heard : count.unheard;
    own -= own > 0 ? 1 : 0;
    if (count.isSilent()) {
        silence(i);
    }
    return count.heard > 0 || (!heard && count.unheard > 0);
}

void SoundingNotes::silence(std::size_t index) {
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
    while (counts_[i].isSilent()) {
        ++i;
    }
    silence(i);
    return placeOf(i);
}

void SoundingNotes::forget(int output) {
    while (takeAny(output).exists()) {
    }
}

int SoundingNotes::count(const NotePlace& place) const {
    const Count& count = counts_[index(place)];
    return count.heard + count.unheard;
}

} // namespace Backend::MidiEngine
