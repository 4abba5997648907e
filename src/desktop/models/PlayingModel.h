// What sounds, for everything that lights up, and what comes in.
#pragma once

#include "desktop/models/Model.h"
#include "values/QelMidiMessage.h"

#include <array>
#include <bitset>
#include <cstdint>

namespace Desktop {

class PlayingModel final : public Model {
    Q_OBJECT

public:
    PlayingModel();

    // The channel, 0..15, that the note sounds on (the lowest of several), on whatever output; -1: it does not sound.
    [[nodiscard]] int channelOf(int note) const;
    // True when something sounds on the channel of that output; -1: of any.
    [[nodiscard]] bool isChannelBusy(int channel, int output) const;
    [[nodiscard]] int count() const { return count_; } // of notes that sound

    void clear();

signals:
    void noteChanged(int note);
    void received(const Backend::MidiEngine::QelMidiMessage& message); // on a MIDI input
    void controllerSent(const Backend::MidiEngine::QelMidiMessage& message);
    void cleared();

private:
    void sent(const Backend::MidiEngine::QelMidiMessage& message);

    static constexpr int outputs = 128;
    std::array<std::array<std::bitset<128>, 16>, outputs> sounding_{}; // by output and channel
    std::array<std::array<std::uint16_t, 16>, 128> places_{};          // by note and channel: on how many outputs
    int count_ = 0;
};

} // namespace Desktop
