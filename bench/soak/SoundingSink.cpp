#include "SoundingSink.h"

#include "values/QelMidiMessage.h"

namespace Soak {

void SoundingSink::play(std::int32_t tick, const Backend::MidiEngine::QelMidiMessage& message) {
    ++messages_;
    for (const std::uint32_t part : {static_cast<std::uint32_t>(tick), static_cast<std::uint32_t>(message.getOutput()),
                                     message.getMidiOutShortMsg()}) {
        fingerprint_ = (fingerprint_ ^ part) * 1099511628211ULL;
    }
    if (message.isNote()) {
        const auto place =
            (static_cast<std::size_t>(message.getOutput()) * 16 + static_cast<std::size_t>(message.getChannel())) *
                128 +
            static_cast<std::size_t>(message.getD1());
        sounding_[place] = message.isNoteOn() && message.getD2() > 0;
    }
}

void SoundingSink::forget(int output) {
    for (std::size_t place = 0; place < std::size_t{16} * 128; ++place) {
        sounding_[static_cast<std::size_t>(output) * 16 * 128 + place] = false;
    }
}

std::string SoundingSink::text() const {
    std::string text;
    int places = 0;
    for (std::size_t place = 0; place < sounding_.size() && places < 8; ++place) {
        if (sounding_[place]) {
            text += " output " + std::to_string(place / 2048) + " channel " + std::to_string(place / 128 % 16) +
                    " note " + std::to_string(place % 128) + ";";
            ++places;
        }
    }
    return text;
}

} // namespace Soak
